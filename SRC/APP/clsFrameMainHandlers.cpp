// What events and commands do that no menu or run takes.
#include "APP/clsFrameMain.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/listbase.h>
#include <wx/listctrl.h>
#include <wx/splitter.h>
#include <wx/textentry.h>

#include "APP/BindMenu.h"
#include "APP/clsShortcut.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "GL/VIEW/clsGLExtraFrame.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/ShortcutKeys.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/clsMultiInputPanel.h"

// The books hold hundreds of fields; what is asked of every window in every idle moment costs milliseconds.
void FrameMain_cls::LimitIdleEvents() {
    wxIdleEvent::SetMode(wxIDLE_PROCESS_SPECIFIED);
    wxUpdateUIEvent::SetMode(wxUPDATE_UI_PROCESS_SPECIFIED);
    SetExtraStyle(GetExtraStyle() | wxWS_EX_PROCESS_IDLE | wxWS_EX_PROCESS_UI_UPDATES);
}

void FrameMain_cls::BindHandlers() {
    LimitIdleEvents();
    BindMenu(*this, this, ID_RESIZED_TL, &FrameMain_cls::OnMenuResizedTL);
    BindMenu(*this, this, ID_SHORTCUT, &FrameMain_cls::OnMenuShortcut);
    Bind(wxEVT_IDLE, &FrameMain_cls::OnIdle, this);
    Bind(wxEVT_TIMER, &FrameMain_cls::OnTimer, this);
    Bind(wxEVT_CHAR_HOOK, &FrameMain_cls::OnCharHook, this);
    mpCSplitter->Bind(wxEVT_SPLITTER_SASH_POS_CHANGED, &FrameMain_cls::OnSash, this);
}

void FrameMain_cls::RefreshGL() {
    MainGLCanvas_cls* extra = GetPCGLCanvas(MainGLCanvas_cls::kExtraPanel);
    if (extra && (mpCExtraFrame->IsShown() || extra->WritesOutput())) {
        extra->MarkStale();
        extra->RefreshEX();
    }
    mpCTopHalf->RefreshGLPanels();
}

void FrameMain_cls::RefreshTL() {
    mpCBtmHalf->RefreshGUI();
    mpCBtmHalf->RefreshTLPanels();
    if (!GetPCTimeCtrl()->IsPlaying()) GetPCTimeCtrl()->UpdateSnippingTag(); // keys may have changed
    MultiInputPanel_cls::UpdateAllParams();
    UpdateStatusText();
}

void FrameMain_cls::OnMenuResizedTL(wxCommandEvent&) {
    // A sash that nobody has moved follows what the bottom half needs; one that was moved gives way only.
    const int now = mpCBtmHalf->GetSize().y;
    const int needed = mpCBtmHalf->GetMinHeight();
    if (now == mBtmFitted || now < needed) FitSplitterWindow(true);
    mpCBtmHalf->RecheckSize();
}

void FrameMain_cls::OnMenuShortcut(wxCommandEvent&) {
    mpCShortcut->ProcShortcutKey(GShortcutModifier, GShortcutKeycode);
}

void FrameMain_cls::OnCharHook(wxKeyEvent& event) {
    // Whoever edits text, or picks from a list by keys, has the key first.
    wxWindow* focus = FindKeyTarget();
    const bool bNeedsKeys = dynamic_cast<wxTextEntryBase*>(focus) || dynamic_cast<wxChoice*>(focus) ||
                            (dynamic_cast<wxCheckBox*>(focus) && event.GetKeyCode() != WXK_ESCAPE) ||
                            dynamic_cast<wxListCtrl*>(focus);
    const int modifier = (event.AltDown() ? 1 : 0) + (event.ControlDown() ? 2 : 0) +
                         (event.ShiftDown() ? 4 : 0) + (event.MetaDown() ? 8 : 0);
    if (bNeedsKeys || !mpCShortcut->ProcShortcutKey(modifier, event.GetKeyCode())) event.Skip();
}

void FrameMain_cls::OnSash(wxSplitterEvent& event) {
    event.Skip();
    mpCBtmHalf->RecheckSize();
}
