#include "WIDGET/TIMELINE/TimelineLook.h"

#include <algorithm>
#include <cmath>

#include <wx/dc.h>
#include <wx/settings.h>
#include <wx/window.h>

#include "WIDGET/clsFontProvider.h"

namespace {

wxColour Blend(const wxColour& from, const wxColour& to, double share) {
    return wxColour(wxColour::AlphaBlend(to.Red(), from.Red(), share),
                    wxColour::AlphaBlend(to.Green(), from.Green(), share),
                    wxColour::AlphaBlend(to.Blue(), from.Blue(), share));
}

} // namespace

void TimelineLook::Update(const wxWindow* pWindow) {
    const wxColour back = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE);
    const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNTEXT);
    const wxColour accent = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
    const double scale = pWindow->GetContentScaleFactor();
    if (scale == mScale && back == mMadeBack && text == mMadeText && accent == mMadeAccent) return;
    mScale = scale;
    mMadeBack = back;
    mMadeText = text;
    mMadeAccent = accent;
    mRow = pWindow->FromDIP(20);
    mMark = kMarkSize;
    mIcon = kIconSize;
    mBack = back;
    mGroupBack = Blend(back, text, 0.07);
    mSelectedBack = Blend(back, accent, 0.25);
    mOutside = Blend(back, text, 0.10);
    mLine = Blend(back, text, 0.10);
    mGrid = Blend(back, text, 0.08);
    mText = text;
    mFaint = Blend(back, text, 0.45);
    mAccent = accent;
    mHold = Blend(back, text, 0.28);
    mTime = accent;
    mFont = FontProvider_cls::GetFont(FontProvider_cls::FONT_LABEL).Scaled(0.9f);
    mCaption = mFont.Bold();
    const wxColour fills[] = {Blend(back, text, 0.62), accent, Blend(back, text, 0.30)};
    const wxColour edges[] = {Blend(back, text, 0.90), Blend(accent, text, 0.55), Blend(back, text, 0.42)};
    for (unsigned kind = 0; kind < KeyFrame_cls::INTERP_COUNT; ++kind)
        for (size_t look = 0; look < size_t(MarkLook::COUNT); ++look)
            mMarks[kind][look] = MakeKeyBitmap(kind, fills[look], edges[look], scale);
    for (size_t icon = 0; icon < size_t(TimelineIcon::COUNT); ++icon) {
        mIcons[icon][0] = MakeTimelineIcon(TimelineIcon(icon), Blend(back, text, 0.85), scale);
        mIcons[icon][1] = MakeTimelineIcon(TimelineIcon(icon), Blend(back, text, 0.32), scale);
    }
}

void TimelineLook::DrawMark(wxDC& dc, double x, int y, unsigned kind, MarkLook look) const {
    const wxBitmap& mark = mMarks[std::min(kind, unsigned(KeyFrame_cls::INTERP_COUNT - 1))][size_t(look)];
    dc.DrawBitmap(mark, int(std::lround(x)) - mMark / 2, y - mMark / 2, true);
}

void TimelineLook::DrawIcon(wxDC& dc, TimelineIcon icon, int x, int y, bool bFaint) const {
    dc.DrawBitmap(mIcons[size_t(icon)][bFaint ? 1 : 0], x, y, true);
}
