// The frame's "View" menu, and what else is done to its views by commands.
#pragma once

class FrameMain_cls;
class wxCommandEvent;

class ViewsMenu_cls {
public:
    /// Takes the frame's commands about views from here on. A part of the frame.
    explicit ViewsMenu_cls(FrameMain_cls& frame);
    ViewsMenu_cls(const ViewsMenu_cls&) = delete;
    ViewsMenu_cls& operator=(const ViewsMenu_cls&) = delete;

private:
    void OnMenuViewPanelType(wxCommandEvent& event);
    void OnMenuViewExtra(wxCommandEvent& event);
    void OnMenuFitView(wxCommandEvent& event);
    void OnMenuSetCameraKey(wxCommandEvent& event);
    void OnMenuSyncGLCtrl(wxCommandEvent& event);

    FrameMain_cls& mFrame;
};

/// Makes the first view the active one where that went out of sight.
void LeaveHiddenView(const FrameMain_cls& frame);
