// The commands by which objects and threads have something shown anew. They are posted, since none of them
// touches another's widgets.
#pragma once

class FrameMain_cls;
class wxCommandEvent;

class RefreshCommands_cls {
public:
    /// Takes the frame's commands of this kind from here on. A part of the frame.
    explicit RefreshCommands_cls(FrameMain_cls& frame);
    RefreshCommands_cls(const RefreshCommands_cls&) = delete;
    RefreshCommands_cls& operator=(const RefreshCommands_cls&) = delete;

private:
    void OnMenuRefreshGL(wxCommandEvent& event);
    void OnMenuRefreshTL(wxCommandEvent& event);
    void OnMenuRefreshSB(wxCommandEvent& event);
    void OnMenuRefreshAttrib(wxCommandEvent& event);
    void OnMenuRefreshDrawOptions(wxCommandEvent& event);
    void OnMenuRefreshExposure(wxCommandEvent& event);

    FrameMain_cls& mFrame;
};
