#include "APP/FilmHelp.h"

wxString GetFilmHelp() {
    return R"(Usage: morentis-film [option...] PROJECT.mrp

Draws the film of a project, without a window, and writes a numbered picture of each of its steps: pixel for
pixel what "Render Anim" in the window's dialog "Save Image Sequence" writes. Needs no screen.
The first frame of the work area bears its own number, as after opening that dialog; its "Initial sequence"
isn't asked. Each step counts one.

  --frames FIRST-LAST[:STEP]
                   only these frames; STEP counts frames and is the project's stepping without it. Files are
                   numbered as in the whole film, so parts of it can be made on several machines at once.
  --size WxH       of the pictures in pixels, 1 to 16384 each; else the project's
  --output NAME    path of the pictures with %04d where the number goes; a name without a number gets one.
                   The ending chooses the format: png (without one, too), jpg, tif or bmp. Else the
                   project's name.
  --view N         the view to look through: 0 (the default) to 3, 4 is the extra one
  --blur LENGTH/STEPS
                   motion blur: the shutter is open for LENGTH (0 to 1) of a step, and STEPS pictures are
                   added up; else as the project has it
  --stereo OUTPUT  two eyes, whatever the project has: red-cyan, red-cyan-dubois, yellow-blue, side-by-side,
                   top-bottom (each eye squeezed to half), side-by-side-full, top-bottom-full (pictures twice
                   as wide or high), separate (two files a picture, with L and R before the number), left,
                   right, or off. A project that has one camera gets two that look the same way; eyes at one
                   place are set apart by a thirtieth of the camera's distance from its anchor at the start of
                   the work area.
  --transparent    no background: png or tif with an alpha channel
  --resume         keep pictures that are there already, whole, of this size, and with or without alpha
                   as this film; with --provenance, those that carry a project
  --provenance     png and tif pictures carry the project's text, their frame, the names of the data and the
                   program's version: dropped on the window they open the project at their frame. The text
                   holds the paths of the data as the project file does
  --video FILE     make a video (H.264) of the pictures too: mp4, mov or mkv; needs ffmpeg
  --fps N          pictures a second of the video, such as 25, 23.976 or 30000/1001; else the project's
  --export-data NAME
                   write the particles of each frame too, in the layout of the project's "Export Particle
                   Data", with %04d where the number goes
  --pov-export FOLDER
                   draw no pictures; write the scene of each frame for POV-Ray there (a .pov and an .ini), with
                   the names that the project has for animations. Without --frames the frames are those of the
                   project's "Region to render"
  --pov-render FOLDER
                   write the scenes there and render them, a process a frame; needs POV-Ray. --size, --blur,
                   --transparent, --resume, --video and --fps act on these pictures
  --jobs N         frames that are rendered at a time, 1 without it; one with radiosity or photons uses one
                   processor
  --write-project FILE
                   make no film; write the project as the window saves it, with all settings that it doesn't say
  --damaged ok     frames of damaged data (a file that is cut off, lines without numbers, meshes or bonds that
                   can't be read) are no failure, and those of a file that is no snapshot show no particles
  --draw WAY       who draws particles: gl or auto (OpenGL), or cpu (the processor, which is faster where OpenGL
                   is a software driver; what it can't draw OpenGL does)
  --memory MB      limit of the snapshots that are kept in memory, 768 without it
  --threads N      that read a text file, 4 without it
  --quiet          say nothing but what went wrong
  --help, --version

What the window would ask before a film is settled: items such as cameras and the anchor's cross are hidden,
stepping, downsizing and the view's camera stay as the project has them. What the project doesn't say has the
program's default: the window's settings on this machine have no part in it. Where DISPLAY is not set, or leads
nowhere, a virtual display is started (the package xvfb). Ctrl-C ends the film; written pictures stay.

Ends with 0: every picture is written, of whole data; 1: the project, its data or a display can't be opened;
2: wrong arguments, or files that can't go where they shall (they would replace what the film reads or each
other, the folder is closed or full), and nothing was begun; 3: some pictures failed, each named on stderr with
its reason, or the data in some were damaged (these are written; what is damaged is told once a file, the
frames are named at the end, and pictures that --resume keeps aren't looked at again), or the film ended early;
stopped by a signal: as the shell expects, 130 for Ctrl-C.
)";
}
