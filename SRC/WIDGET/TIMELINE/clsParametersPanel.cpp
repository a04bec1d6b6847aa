#include "WIDGET/TIMELINE/clsParametersPanel.h"

#include <cmath>

#include <wx/control.h>
#include <wx/dc.h>

#include "PARAM/clsParameters.h"
#include "WIDGET/KeyMark.h"
#include "WIDGET/TIMELINE/KeyEdits.h"

wxString ParametersPanel_cls::GetValueText(double value) {
    if (value == 0.0) return "0"; // never "-0"
    const double size = std::fabs(value);
    if (size >= 1e6 || size < 1e-3) return wxString::Format("%.3g", value);
    wxString text = wxString::Format("%.*f", size >= 1000.0 ? 1 : size >= 10.0 ? 3 : 4, value);
    while (text.EndsWith("0"))
        text.RemoveLast();
    if (text.EndsWith(".")) text.RemoveLast();
    return text;
}

void DrawRowIcon(wxDC& dc, const TimelineLook& look, TimelineIcon icon, const wxRect& cell, bool bFaint) {
    look.DrawIcon(dc, icon, cell.x + (cell.width - look.mIcon) / 2, cell.y + (cell.height - look.mIcon) / 2,
                  bFaint);
}

void DrawRowText(wxDC& dc, const wxString& text, const wxRect& cell, bool bRight) {
    wxCoord width = 0;
    wxCoord height = 0;
    dc.GetTextExtent(text, &width, &height);
    if (width > cell.width) {
        dc.DrawText(wxControl::Ellipsize(text, dc, wxELLIPSIZE_END, cell.width), cell.x,
                    cell.y + (cell.height - height) / 2);
        return;
    }
    dc.DrawText(text, bRight ? cell.GetRight() + 1 - width : cell.x, cell.y + (cell.height - height) / 2);
}

void DrawKeyButtons(wxDC& dc, const TreeLayout& layout, const TimelineLook& look, int y, int state,
                    bool bHover) {
    const bool bConstant = state == int(KeyState::CONSTANT);
    if (bConstant && !bHover) return;
    if (!bConstant) {
        DrawRowIcon(dc, look, TimelineIcon::PREVIOUS_KEY, layout.GetRect(TreeZone::PREVIOUS, y, 0), !bHover);
        DrawRowIcon(dc, look, TimelineIcon::NEXT_KEY, layout.GetRect(TreeZone::NEXT, y, 0), !bHover);
    }
    const wxRect cell = layout.GetRect(TreeZone::KEY, y, 0);
    DrawKeyMark(dc, cell.x + cell.width / 2, cell.y + cell.height / 2, layout.mNav / 2 - 2,
                bConstant ? KeyState::ANIMATED : KeyState(state), bConstant ? look.mFaint : look.mText);
}

void ParametersPanel_cls::Draw(wxDC& dc, const TreeLayout& layout, const TimelineLook& look, int y, int depth,
                               bool bHover) const {
    const bool bAnimated = IsAnimated(*mpCParam);
    DrawRowIcon(dc, look, bAnimated ? TimelineIcon::TICKED : TimelineIcon::UNTICKED,
                layout.GetRect(TreeZone::CHECK, y, depth), !bAnimated && !bHover);
    dc.SetTextForeground(look.mText);
    DrawRowText(dc, mpCParam->mName, layout.GetRect(TreeZone::NAME, y, depth), false);
    wxRect cell = layout.GetRect(TreeZone::VALUE, y, depth);
    if (bHover) {
        dc.SetPen(wxPen(look.mFaint));
        dc.DrawLine(cell.x + layout.mPad, cell.GetBottom() - 2, cell.GetRight(), cell.GetBottom() - 2);
    }
    cell.width -= layout.mPad;
    dc.SetTextForeground(bAnimated ? look.mAccent : look.mText);
    DrawRowText(dc, GetValueText(ValueNow(*mpCParam)), cell, true);
    DrawKeyButtons(dc, layout, look, y, int(GetKeyState(*mpCParam, Parameters_cls::kCurrent)), bHover);
}
