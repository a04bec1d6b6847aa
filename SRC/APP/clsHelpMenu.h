// The frame's "Help" menu.
#pragma once

#include <memory>

class FrameMain_cls;
class GLInfo_cls;
class Main_cls;
class wxCommandEvent;

class HelpMenu_cls {
public:
    /// Takes the frame's commands about help from here on. A part of the frame.
    explicit HelpMenu_cls(FrameMain_cls& frame);
    ~HelpMenu_cls();
    HelpMenu_cls(const HelpMenu_cls&) = delete;
    HelpMenu_cls& operator=(const HelpMenu_cls&) = delete;

private:
    void OnMenuUnlock(wxCommandEvent& event);
    void OnMenuSpecial(wxCommandEvent& event);
    void OnAbout(wxCommandEvent& event);
    void OnMenuSaveReport(wxCommandEvent& event);
    void OnMenuAboutGL(wxCommandEvent& event);

    Main_cls& mHub;
    std::unique_ptr<GLInfo_cls> mpCGLInfo;
};
