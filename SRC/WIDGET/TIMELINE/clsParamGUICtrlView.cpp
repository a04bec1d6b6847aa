// What the time lines show of the film and of the rows, and their keyboard.
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"

#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/TimeGesture.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"
#include "WIDGET/TIMELINE/clsParamTree.h"

void ParamGUICtrl_cls::SetShyMode(bool bShy) {
    mpCTime->mbShyMode = bShy;
    HideAndShow();
    ResizeTL();
}

void ParamGUICtrl_cls::SetActiveArea(const FrameArea& area) {
    const TimeGesture_cls gesture(mpCTime);
    if (area.mFirst != mpCTime->GetAAMin()) mpCTime->SetAAMinCommand(area.mFirst);
    if (area.mLast != mpCTime->GetAAMax()) mpCTime->SetAAMaxCommand(area.mLast);
}

void ParamGUICtrl_cls::Zoom(double anchor, double factor) {
    const FrameArea now = {mpCTime->GetAAMin(), mpCTime->GetAAMax()};
    SetActiveArea(ZoomArea(now, anchor, factor, mpCTime->GetMaxFrame()));
}

void ParamGUICtrl_cls::ZoomTo(bool bWorkArea) {
    if (bWorkArea && mpCTime->GetWAMax() > mpCTime->GetWAMin())
        SetActiveArea({mpCTime->GetWAMin(), mpCTime->GetWAMax()});
    else
        SetActiveArea({0, mpCTime->GetMaxFrame()});
}

bool ParamGUICtrl_cls::OnKey(const wxKeyEvent& event) {
    if (event.AltDown()) return false;
    switch (event.GetKeyCode()) {
    case WXK_DELETE:
    case WXK_NUMPAD_DELETE:
    case WXK_BACK:
        mKeyActions.Delete();
        return true;
    case 'A':
        if (!event.ControlDown()) return false;
        mKeyActions.SelectAll();
        return true;
    case 'C':
        if (!event.ControlDown()) return false;
        mKeyActions.Copy();
        return true;
    case 'V':
        if (!event.ControlDown()) return false;
        mKeyActions.Paste();
        return true;
    case WXK_ESCAPE:
        DeselectKeys(AllCurves());
        RefreshAll();
        return true;
    case WXK_UP:
    case WXK_DOWN:
        MoveFocusRow(event.GetKeyCode() == WXK_UP ? -1 : 1, event.ShiftDown());
        return true;
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
        if (mFocusRow < 0 || mFocusRow >= int(mVRows.size())) return false;
        if (!ToggleFold(mFocusRow)) mpCTree->OpenEditor(mFocusRow);
        return true;
    default:
        return false;
    }
}

void ParamGUICtrl_cls::SetHoverRow(int row) {
    if (row == mHoverRow) return;
    const RowScale rows = GetRowScale();
    for (const int one : {mHoverRow, row})
        if (one >= 0)
            mpCTree->RefreshRect(wxRect(0, rows.ToPixel(one), mpCTree->GetClientSize().x, rows.mHeight),
                                 false);
    mHoverRow = row;
}
