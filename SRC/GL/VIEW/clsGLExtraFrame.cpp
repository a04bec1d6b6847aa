#include "GL/VIEW/clsGLExtraFrame.h"

#include <utility>

#include <wx/sizer.h>

#include "COMMON/clsUpdateStatusBar.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsViewHost.h"
#include "SCENE/clsMoveItem.h"

GLExtraFrame_cls::GLExtraFrame_cls(wxWindow* pParent, const ViewLinks_st& links,
                                   std::shared_ptr<wxGLContext> pContext)
    : wxFrame(pParent, wxID_ANY, "Extra", wxDefaultPosition, wxSize(640, 520),
              wxDEFAULT_FRAME_STYLE | wxFRAME_NO_TASKBAR),
      mpCHost(links.mpCHost) {
    mpCCtrl = new GLCanvasCtrl_cls(this, links, "Extra", MainGLCanvas_cls::kExtraPanel, DISPLAY_FREE,
                                   std::move(pContext));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCCtrl, 1, wxEXPAND);
    SetSizer(sizer);
    Bind(wxEVT_CHAR_HOOK, &GLExtraFrame_cls::OnCharHook, this);
    Bind(wxEVT_CLOSE_WINDOW, &GLExtraFrame_cls::OnClose, this);
    Bind(wxEVT_SHOW, &GLExtraFrame_cls::OnShow, this);
}

// Alt and Return fills the screen with the picture alone, Escape brings the frame back.
void GLExtraFrame_cls::OnCharHook(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (event.GetModifiers() == wxMOD_ALT && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER)) {
        mpCCtrl->OnMenuHide();
        ShowFullScreen(true, wxFULLSCREEN_ALL);
    } else if (key == WXK_ESCAPE && !MoveItem_cls::IsDragging() &&
               (IsFullScreen() || !mpCCtrl->IsPanelShown())) {
        ShowFullScreen(false);
        mpCCtrl->ShowPanel();
    } else {
        event.Skip(); // and on to the main frame
    }
}

void GLExtraFrame_cls::OnClose(wxCloseEvent& event) {
    if (!event.CanVeto()) {
        event.Skip();
        return;
    }
    event.Veto(); // the frame lives as long as the program
    Hide();
    mpCHost->OnExtraFrameClosed();
}

void GLExtraFrame_cls::OnShow(wxShowEvent& event) {
    UpdateStatusBar_cls::sbAllowDispach = !event.IsShown();
    event.Skip();
}
