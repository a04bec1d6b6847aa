// The command line of the film maker: what it asks for, and what is wrong with it.
#pragma once

#include <vector>

#include <wx/string.h>

#include "GL/BASE/DrawWay.h"

/// What the film maker ends with.
enum class FilmStatus {
    Done = 0,           ///< every frame is written
    NotOpened = 1,      ///< the project, its data, a display or a tool isn't there
    WrongArguments = 2, ///< nothing was begun
    SomeFailed = 3      ///< some frames, or the video, are missing, or of damaged data
};

struct FilmArgs_st {
    wxString mProject;
    bool mbHelp = false;
    bool mbVersion = false;
    bool mbFrames = false; ///< the next three count
    int mFirst = 0;
    int mLast = 0;
    int mStep = 0; ///< 0: the project's stepping
    int mW = 0;    ///< pixels; 0: the project's size
    int mH = 0;
    wxString mOutput; ///< with a number field; empty: the project's
    int mView = 0;
    bool mbBlur = false;          ///< the next two count; else the project's motion blur
    float mBlurLength = 0.5f;     ///< share of a step that the shutter is open, 0 to 1
    int mBlurSteps = 4;           ///< pictures that are added up to one
    int mStereo = kProjectStereo; ///< a StereoGram_cls::Output, or one of these two
    static constexpr int kProjectStereo = -1;
    static constexpr int kStereoOff = -2;
    bool mbStereoSeparate = false; ///< a file for each eye
    bool mbTransparent = false;
    bool mbResume = false;
    bool mbProvenance = false;     ///< pictures carry the project
    wxString mVideo;               ///< empty: none
    wxString mRate;                ///< pictures a second, "25" or "30000/1001"; empty: the project's
    wxString mWriteProject;        ///< file for the whole project; empty: a film is made
    wxString mExport;              ///< name of data files with a number field; empty: none
    wxString mPovExport;           ///< folder for scenes of POV-Ray; empty: none
    wxString mPovRender;           ///< the same, and they are rendered there
    int mJobs = 1;                 ///< frames that POV-Ray renders at a time
    bool mbDamagedOk = false;      ///< damaged data are no failure
    int mMemoryMB = 0;             ///< limit of the snapshots in memory; 0: the default
    int mThreads = 0;              ///< that read a text file; 0: the default
    DrawWay mDraw = DrawWay::Auto; ///< who draws particles
    bool mbQuiet = false;
    bool mbTiming = false;
};

/// Does the film go through POV-Ray?
inline bool IsPovFilm(const FilmArgs_st& args) {
    return !args.mPovExport.empty() || !args.mPovRender.empty();
}

/// Read the words behind the program's name. Empty on success, else what is wrong, in one line.
wxString ParseFilmArgs(const std::vector<wxString>& words, FilmArgs_st* pArgs);

/// Bring the name of the pictures into the form with a number field, giving it one where it has none. Empty
/// on success, else what is wrong with it: an ending that no picture can have, or none that holds what
/// `args` want in it, or a folder that neither is there nor can be made in one that is.
wxString CheckFilmOutput(wxString* pOutput, const FilmArgs_st& args);
/// The same for data files, whatever their ending.
wxString CheckFilmExport(wxString* pOutput);

/// Make the folder of a file if it isn't there yet. Empty on success.
wxString MakeFilmFolder(const wxString& path);
