// The fifth view in a window of its own, for a second monitor or a projector.
#pragma once

#include <memory>

#include <wx/frame.h>

class GLCanvasCtrl_cls;
class ViewHost_cls;
class wxGLContext;
struct ViewLinks_st;

class GLExtraFrame_cls : public wxFrame {
public:
    GLExtraFrame_cls(wxWindow* pParent, const ViewLinks_st& links, std::shared_ptr<wxGLContext> pContext);
    GLCanvasCtrl_cls* GetPCCanvasCtrl() const { return mpCCtrl; }

private:
    void OnCharHook(wxKeyEvent& event);
    void OnClose(wxCloseEvent& event);
    void OnShow(wxShowEvent& event);

    ViewHost_cls* mpCHost;
    GLCanvasCtrl_cls* mpCCtrl = nullptr;
};
