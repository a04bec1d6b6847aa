#include "WIDGET/TIMELINE/clsParamTree.h"

#include <wx/dcbuffer.h>
#include <wx/textctrl.h>

#include "PARAM/clsParamGroup.h"
#include "PARAM/clsParameters.h"
#include "WIDGET/NumberText.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"

namespace {

NumSpec TypedSpec() {
    NumSpec spec;
    spec.mbDouble = true;
    return spec;
}

} // namespace

ParamTree_cls::ParamTree_cls(ParamGUICtrl_cls* pCtrl) : mpCCtrl(pCtrl) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(pCtrl, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxWANTS_CHARS);
    Bind(wxEVT_PAINT, &ParamTree_cls::OnPaint, this);
    for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP, wxEVT_MOTION,
                             wxEVT_RIGHT_DOWN, wxEVT_MOUSEWHEEL, wxEVT_LEAVE_WINDOW})
        Bind(type, &ParamTree_cls::OnMouse, this);
    Bind(wxEVT_CHAR_HOOK, &ParamTree_cls::OnKey, this);
}

TreeLayout ParamTree_cls::GetLayout() const {
    return TreeLayout(this, GetClientSize().x, mpCCtrl->GetLook().mRow);
}

wxRect ParamTree_cls::GetZoneRect(int row, TreeZone zone) const {
    return GetLayout().GetRect(zone, mpCCtrl->GetRowScale().ToPixel(row),
                               mpCCtrl->GetRows()[size_t(row)].mDepth);
}

TreeZone ParamTree_cls::ZoneAt(const wxPoint& point, int* pRow) const {
    *pRow = mpCCtrl->GetRowScale().ToRow(point.y);
    if (*pRow < 0) return TreeZone::NONE;
    const TimelineRow& row = mpCCtrl->GetRows()[size_t(*pRow)];
    const TreeZone zone = GetLayout().HitTest(point.x, row.mDepth, row.mDim < 0);
    // A group of one curve has nothing to link.
    if (zone == TreeZone::LINK && row.mpCGroup->GetDimension() < 2) return TreeZone::NAME;
    return zone;
}

void ParamTree_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    Draw(dc, GetClientSize());
}

void ParamTree_cls::Draw(wxDC& dc, const wxSize& size) {
    const TimelineLook& look = mpCCtrl->GetLook();
    dc.SetBackground(wxBrush(look.mBack));
    dc.Clear();
    const RowScale rows = mpCCtrl->GetRowScale();
    const TreeLayout layout(this, size.x, look.mRow);
    const int last = rows.LastSeen();
    for (int i = rows.FirstSeen(); i <= last; ++i) {
        const TimelineRow& row = mpCCtrl->GetRows()[size_t(i)];
        const int y = rows.ToPixel(i);
        const bool bSelected = mpCCtrl->IsRowSelected(i);
        if (bSelected || row.mDim < 0) {
            dc.SetPen(*wxTRANSPARENT_PEN);
            dc.SetBrush(wxBrush(bSelected ? look.mSelectedBack : look.mGroupBack));
            dc.DrawRectangle(0, y, size.x, rows.mHeight);
        }
        dc.SetPen(wxPen(look.mLine));
        dc.DrawLine(0, y + rows.mHeight - 1, size.x, y + rows.mHeight - 1);
        const bool bHover = i == mpCCtrl->GetHoverRow();
        dc.SetFont(row.mDim < 0 ? look.mCaption : look.mFont);
        if (row.mDim < 0)
            row.mpCGroup->Draw(dc, layout, look, y, row.mDepth, bHover);
        else
            row.mpCGroup->GetPanel(row.mDim).Draw(dc, layout, look, y, row.mDepth, bHover);
    }
    dc.SetPen(wxPen(look.mHold));
    dc.DrawLine(size.x - 1, 0, size.x - 1, size.y);
}

void ParamTree_cls::MakeEditor() {
    mpCEditor = new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                               wxTE_PROCESS_ENTER | wxTE_RIGHT | wxBORDER_NONE);
    mpCEditor->SetFont(mpCCtrl->GetLook().mFont);
    mpCEditor->Hide();
    mpCEditor->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { CloseEditor(true); });
    mpCEditor->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        CloseEditor(true);
        event.Skip();
    });
    mpCEditor->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const int key = event.GetKeyCode();
        if (key == WXK_ESCAPE) {
            CloseEditor(false);
            SetFocus();
        } else if (key == WXK_TAB) {
            // To the next curve, over the rows of groups.
            int row = mEditedRow;
            CloseEditor(true);
            const int dir = event.ShiftDown() ? -1 : 1;
            const auto& rows = mpCCtrl->GetRows();
            for (row += dir; row >= 0 && row < int(rows.size()); row += dir)
                if (rows[size_t(row)].mDim >= 0) return OpenEditor(row);
            SetFocus();
        } else if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) {
            CloseEditor(true);
            SetFocus();
        } else {
            event.Skip();
        }
    });
}

void ParamTree_cls::OpenEditor(int row) {
    if (row < 0 || row >= int(mpCCtrl->GetRows().size()) || mpCCtrl->GetRows()[size_t(row)].mDim < 0) return;
    CloseEditor(true);
    mpCCtrl->SelectRow(row, false, false);
    mpCCtrl->ScrollTo(mpCCtrl->GetRowScale().TopToShow(row));
    if (!mpCEditor) MakeEditor();
    mpCEdited = mpCCtrl->GetRows()[size_t(row)].mpCGroup->GetPCParam(mpCCtrl->GetRows()[size_t(row)].mDim);
    mEditedRow = row;
    wxRect cell = GetZoneRect(row, TreeZone::VALUE);
    cell.x -= FromDIP(24); // digits want room while they are typed
    cell.width += FromDIP(24);
    mpCEditor->SetSize(cell);
    mpCEditor->ChangeValue(FormatNumber(ValueNow(*mpCEdited), TypedSpec()));
    mpCEditor->Show();
    mpCEditor->SetFocus();
    mpCEditor->SelectAll();
}

void ParamTree_cls::CloseEditor(bool bCommit) {
    if (!mpCEdited) return;
    Parameters_cls* edited = mpCEdited;
    mpCEdited = nullptr; // hiding takes the focus, which would commit again
    mEditedRow = -1;
    const wxString text = mpCEditor->GetValue();
    const bool bTyped = mpCEditor->IsModified();
    mpCEditor->Hide();
    double value = 0.0;
    if (bCommit && bTyped && Parameters_cls::IsAlive(edited) && ParseNumber(text, TypedSpec(), &value))
        SetValueNow(*edited, value);
    mpCCtrl->RefreshAll();
}
