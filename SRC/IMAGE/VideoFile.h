// A film of image files as a video, H.264, made by the program ffmpeg where it is installed.
#pragma once

#include <string>
#include <vector>

#include <wx/string.h>

class StereoGram_cls;

/// Path of the program that makes videos; empty where it isn't installed.
wxString FindVideoTool();
/// What to say where it is missing.
wxString GetVideoToolHint();

/// Endings of videos, for messages, and whether a path has one of them.
wxString GetVideoEndings();
bool IsVideoEnding(const wxString& path);
/// Pictures a second: a decimal number or a fraction of two whole ones, more than 0 and up to 1000.
bool IsVideoRate(const wxString& text);
/// A setting as such a text.
wxString MakeVideoRate(float rate);
/// Name of the video of a film whose pictures bear this name: "run/Preview%04d.png" gives "run/Preview.mp4".
wxString MakeVideoPath(const wxString& pictures);
/// Name of an Eye's file where each has its own: "film.mp4" gives "filmL.mp4".
wxString GetEyePath(const wxString& path, int eye);

/// How two eyes share the pictures of a video, for players that can show them apart.
enum class VideoStereo { None, SideBySide, TopBottom, RedCyan };

/// What the files of a film hold with these settings.
VideoStereo GetVideoStereo(const StereoGram_cls& stereo);

struct VideoJob_st {
    std::vector<wxString> mFrames; ///< image files of one format and size, in their order
    wxString mPath;                ///< of the video; its ending chooses the container
    wxString mRate = "25";
    bool mbTransparent = false; ///< the pictures have alpha: they are laid over black
    VideoStereo mStereo = VideoStereo::None;
};

/// Command line for pictures that stand in `folder` as 00000000.png and so on. Sizes become even by a black
/// row or column; colours are told as what they are (BT.709). Two eyes are told in the stream (frame packing)
/// and, by Matroska files alone, in the container too; of red and cyan only those know.
std::vector<std::string> MakeVideoCommand(const std::string& tool, const std::string& folder,
                                          const std::string& ending, const std::string& target,
                                          const std::string& rate, bool bTransparent,
                                          VideoStereo stereo = VideoStereo::None);
