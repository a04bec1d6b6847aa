// The fifth view in a window of its own, for a second monitor or a projector.
#pragma once

#include <wx/frame.h>

class DrawOption_cls;
class FrameMain_cls;
class GLCanvasCtrl_cls;
class Preference_cls;
class wxGLContext;

class GLExtraFrame_cls : public wxFrame {
public:
    GLExtraFrame_cls(FrameMain_cls* pFrame, wxWindow* pParent, DrawOption_cls* pDrawOption,
                     Preference_cls* pPreference, wxGLContext* pShare);
    GLCanvasCtrl_cls* GetPCCanvasCtrl() const { return mpCCtrl; }

private:
    void OnCharHook(wxKeyEvent& event);
    void OnClose(wxCloseEvent& event);
    void OnShow(wxShowEvent& event);

    GLCanvasCtrl_cls* mpCCtrl = nullptr;
};
