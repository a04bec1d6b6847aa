#include "COLORCURVE/EDITOR/clsColorCurveTemplate.h"

#include <algorithm>

#include <wx/dcbuffer.h>
#include <wx/intl.h>
#include <wx/settings.h>

#include "COLORCURVE/EDITOR/ColorTables.h"

namespace {
constexpr int kBarHeight = 22;
constexpr int kGap = 4;
constexpr int kLeastWidth = 36;
} // namespace

ColorCurveTemplate_cls::ColorCurveTemplate_cls(wxWindow* pParent) {
    for (const auto* tables : {&GetClassicTables(), &GetEvenTables()})
        for (const ColorTable_st& table : *tables) {
            mVCurves.push_back(std::make_unique<ColorCurve_cls>("Template", wxGetTranslation(table.mStrName),
                                                                "1 0.8 0.6 1"));
            mVCurves.back()->SetKeys(table.mVKeys);
            mVCurves.back()->mbUseColorCurve.mValue = true;
        }
    mFirstRow = static_cast<int>(GetClassicTables().size());
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxWANTS_CHARS);
    SetMinSize(FromDIP(wxSize(mFirstRow * (kLeastWidth + kGap) - kGap, 2 * kBarHeight + kGap)));
    SetCursor(wxCursor(wxCURSOR_HAND));
    Bind(wxEVT_PAINT, &ColorCurveTemplate_cls::OnPaint, this);
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        mPressed = FindCell(event.GetPosition());
        if (mPressed >= 0) mFocus = mPressed;
        SetFocus();
        Refresh();
    });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
        if (mPressed >= 0 && FindCell(event.GetPosition()) == mPressed) Choose(mPressed);
        mPressed = -1;
        Refresh();
    });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
        const int cell = FindCell(event.GetPosition());
        if (cell == mHover) return;
        mHover = cell;
        if (cell < 0)
            UnsetToolTip();
        else
            SetToolTip(GetCurve(cell).mLabel);
        Refresh();
    });
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) {
        mHover = -1;
        Refresh();
    });
    const auto refresh = [this](auto& event) {
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_SIZE, [refresh](wxSizeEvent& event) { refresh(event); });
    Bind(wxEVT_SET_FOCUS, [refresh](wxFocusEvent& event) { refresh(event); });
    Bind(wxEVT_KILL_FOCUS, [refresh](wxFocusEvent& event) { refresh(event); });
    Bind(wxEVT_KEY_DOWN, &ColorCurveTemplate_cls::OnKey, this);
}

ColorCurveTemplate_cls::~ColorCurveTemplate_cls() = default;

wxRect ColorCurveTemplate_cls::GetCell(int index) const {
    const bool bUpper = index < mFirstRow;
    const int count = bUpper ? mFirstRow : GetCount() - mFirstRow;
    const int place = bUpper ? index : index - mFirstRow;
    const int gap = FromDIP(kGap);
    const int width = GetClientSize().x + gap;
    const int left = width * place / count;
    const int right = width * (place + 1) / count - gap;
    return wxRect(left, bUpper ? 0 : FromDIP(kBarHeight) + gap, std::max(right - left, 1),
                  FromDIP(kBarHeight));
}

int ColorCurveTemplate_cls::FindCell(const wxPoint& point) const {
    for (int i = 0; i < GetCount(); ++i)
        if (GetCell(i).Contains(point)) return i;
    return -1;
}

void ColorCurveTemplate_cls::Choose(int index) {
    if (mOnChoose && IsEnabled()) mOnChoose(GetCurve(index));
}

void ColorCurveTemplate_cls::OnKey(wxKeyEvent& event) {
    const int last = GetCount() - 1;
    switch (event.GetKeyCode()) {
    case WXK_LEFT:
        mFocus = std::max(mFocus - 1, 0);
        break;
    case WXK_RIGHT:
        mFocus = std::min(mFocus + 1, last);
        break;
    case WXK_UP:
        mFocus = mFocus >= mFirstRow ? mFocus - mFirstRow : mFocus;
        break;
    case WXK_DOWN:
        mFocus = mFocus < mFirstRow ? std::min(mFocus + mFirstRow, last) : mFocus;
        break;
    case WXK_SPACE:
    case WXK_RETURN:
        Choose(mFocus);
        break;
    case WXK_TAB:
        Navigate(event.ShiftDown() ? 0 : wxNavigationKeyEvent::IsForward);
        break;
    default:
        event.Skip();
        return;
    }
    Refresh();
}

void ColorCurveTemplate_cls::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
    dc.Clear();
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    for (int i = 0; i < GetCount(); ++i) {
        const wxRect cell = GetCell(i);
        GetCurve(i).DrawOnDC(dc, cell, FromDIP(5));
        const bool bMarked = i == mHover || (HasFocus() && i == mFocus);
        dc.SetPen(
            wxPen(wxSystemSettings::GetColour(bMarked ? wxSYS_COLOUR_HIGHLIGHT : wxSYS_COLOUR_BTNSHADOW),
                  bMarked ? FromDIP(2) : 1));
        dc.DrawRectangle(cell);
    }
}
