// The project in a picture: what pictures are given of it, and what is taken out of one that is opened.
#pragma once

#include <memory>
#include <string>

#include <wx/string.h>

class OriginPack_cls;
class TimeCtrl_cls;

/// What all pictures of a run carry. `text`: the bytes of a project file.
std::shared_ptr<const OriginPack_cls> PackProject(const std::string& text);

struct PictureProject_st {
    std::wstring mText;
    wxString mFolder;        ///< where data are looked for that don't stand where the text says
    std::string mFrame;      ///< as the picture has it
    wxString mSuggestedPath; ///< for a project of its own, beside the picture
};

/// Is there a project in this file, were it a broken one?
bool IsPictureWithProject(const wxString& path);
/// False, told, when there is none that can be read.
bool LoadPictureProject(const wxString& path, PictureProject_st* pProject);
/// Go to the picture's frame; one that the film hasn't is told.
void GoToPictureFrame(const wxString& path, const std::string& frame, TimeCtrl_cls* pTime);
