#include "WIDGET/TIMELINE/clsParamStrips.h"

#include <algorithm>
#include <cmath>

#include <wx/dcbuffer.h>

#include "PARAM/clsParamGroup.h"
#include "PARAM/clsParameters.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"

namespace {
constexpr int kGridGap = 56; // pixels between two lines of the grid, at least
} // namespace

ParamStrips_cls::ParamStrips_cls(ParamGUICtrl_cls* pCtrl)
    : TimelineStrip_cls(pCtrl, pCtrl->GetPCTime(), 0), mpCCtrl(pCtrl) {
    SetCanFocus(true); // the base made the window without
    Bind(wxEVT_PAINT, &ParamStrips_cls::OnPaint, this);
    for (const auto& type :
         {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP, wxEVT_MOTION, wxEVT_RIGHT_DOWN,
          wxEVT_MIDDLE_DOWN, wxEVT_MIDDLE_UP, wxEVT_MOUSEWHEEL, wxEVT_LEAVE_WINDOW})
        Bind(type, &ParamStrips_cls::OnMouse, this);
    Bind(wxEVT_CHAR_HOOK, &ParamStrips_cls::OnKey, this);
}

void ParamStrips_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    Draw(dc, GetClientSize());
}

void ParamStrips_cls::Draw(wxDC& dc, const wxSize& size) {
    const TimelineLook& look = mpCCtrl->GetLook();
    const FrameScale scale = GetScale();
    dc.SetBackground(wxBrush(look.mBack));
    dc.Clear();
    DrawGrid(dc, size, scale);
    DrawRows(dc, size, scale);
    DrawTime(dc, size, scale);
    if (mGesture.Get() == State::BAND) {
        const wxColour& accent = look.mAccent;
        dc.SetPen(wxPen(accent));
        dc.SetBrush(wxBrush(wxColour(accent.Red(), accent.Green(), accent.Blue(), 48)));
        dc.DrawRectangle(wxRect(wxPoint(mGesture.GetLeft(), mGesture.GetTop()),
                                wxPoint(mGesture.GetRight(), mGesture.GetBottom())));
    }
    const wxString hint = GetHint();
    if (!hint.empty()) DrawLabel(dc, size, hint, mHintAt, mHintPoint.y);
    if (mGesture.Get() != State::MOVE) return;
    // Where the key under the hand stands now, and how far it went.
    const auto frames = [](double at) {
        return std::round(at * Parameters_cls::msFrameNumber * 100.0) / 100.0;
    };
    DrawLabel(dc, size, wxString::Format("%g  (%+g)", frames(mPressedKey + mDelta), frames(mDelta)),
              mPressedKey + mDelta, mGesture.GetFrom().mY);
}

/// Rows of groups and of what is selected, frames outside the work area, and lines where the ruler has
/// numbers.
void ParamStrips_cls::DrawGrid(wxDC& dc, const wxSize& size, const FrameScale& scale) const {
    const TimelineLook& look = mpCCtrl->GetLook();
    const RowScale rows = mpCCtrl->GetRowScale();
    dc.SetPen(*wxTRANSPARENT_PEN);
    const int last = rows.LastSeen();
    for (int i = rows.FirstSeen(); i <= last; ++i) {
        const bool bSelected = mpCCtrl->IsRowSelected(i);
        if (!bSelected && mpCCtrl->GetRows()[size_t(i)].mDim >= 0) continue;
        dc.SetBrush(wxBrush(bSelected ? look.mSelectedBack : look.mGroupBack));
        dc.DrawRectangle(0, rows.ToPixel(i), size.x, rows.mHeight);
    }
    const int low = int(std::lround(scale.ToPixelExact(std::min(mpCTime->GetWAMin(), scale.mLast + 1))));
    const int high = int(std::lround(scale.ToPixelExact(std::max(mpCTime->GetWAMax(), scale.mFirst - 1))));
    const wxColour& text = look.mText;
    dc.SetBrush(wxBrush(wxColour(text.Red(), text.Green(), text.Blue(), 22)));
    if (low > 0) dc.DrawRectangle(0, 0, std::min(low, size.x), size.y);
    if (high < size.x) dc.DrawRectangle(std::max(high, 0), 0, size.x - std::max(high, 0), size.y);
    const int gap =
        TickLabelSpacing(scale, TimeCtrl_cls::GetInterval(mpCTime->GetMaxFrame()), FromDIP(kGridGap));
    dc.SetPen(wxPen(look.mGrid));
    for (int frame = (scale.mFirst + gap - 1) / gap * gap; frame <= scale.mLast; frame += gap)
        dc.DrawLine(scale.ToPixel(frame), 0, scale.ToPixel(frame), size.y);
}

void ParamStrips_cls::DrawRows(wxDC& dc, const wxSize& size, const FrameScale& scale) const {
    const TimelineLook& look = mpCCtrl->GetLook();
    const RowScale rows = mpCCtrl->GetRowScale();
    const int last = rows.LastSeen();
    dc.SetPen(wxPen(look.mLine));
    for (int i = rows.FirstSeen(); i <= last; ++i)
        dc.DrawLine(0, rows.ToPixel(i + 1) - 1, size.x, rows.ToPixel(i + 1) - 1);
    for (int i = rows.FirstSeen(); i <= last; ++i) {
        const TimelineRow& row = mpCCtrl->GetRows()[size_t(i)];
        const int y = rows.ToPixel(i) + rows.mHeight / 2;
        if (row.mDim >= 0)
            ParamTL_cls::DrawKeys(dc, *row.mpCGroup->GetPCParam(row.mDim), scale, y, look);
        else
            ParamTL_cls::DrawSummary(dc, row.mpCGroup->GetCurves(), scale, y, look);
    }
}

void ParamStrips_cls::DrawTime(wxDC& dc, const wxSize& size, const FrameScale& scale) const {
    const double frame =
        mpCTime->GetFrame() + double(mpCTime->GetInterpStep()) / std::max(mpCTime->GetAnimInterp(), 1);
    if (frame < scale.mFirst || frame > scale.mLast) return;
    dc.SetPen(wxPen(mpCCtrl->GetLook().mTime, FromDIP(1)));
    const int x = int(std::lround(scale.ToPixelExact(frame)));
    dc.DrawLine(x, 0, x, size.y);
}

/// A label beside a place of the film, over the row at `y` or under it.
void ParamStrips_cls::DrawLabel(wxDC& dc, const wxSize& size, const wxString& text, double at, int y) const {
    const TimelineLook& look = mpCCtrl->GetLook();
    dc.SetFont(look.mFont);
    const wxSize extent = dc.GetTextExtent(text);
    const int pad = FromDIP(4);
    const int x = int(std::lround(ParamTL_cls::ToPixel(GetScale(), at)));
    const HintBox_st box = PlaceHint(extent.x, extent.y, x, y, look.mRow, pad, size.x);
    dc.SetPen(wxPen(look.mHold));
    dc.SetBrush(wxBrush(look.mBack));
    dc.DrawRoundedRectangle(box.mLeft, box.mTop, box.mWidth, box.mHeight, 3);
    dc.SetTextForeground(look.mText);
    dc.DrawText(text, box.mLeft + pad, box.mTop + pad / 4);
}
