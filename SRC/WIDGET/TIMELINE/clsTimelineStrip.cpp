#include "WIDGET/TIMELINE/clsTimelineStrip.h"

#include <algorithm>

#include <wx/settings.h>

#include "TIME/clsTimeCtrl.h"

namespace {
constexpr int kMargin = 16; // room for the numbers at the ends
}

TimelineStrip_cls::TimelineStrip_cls(wxWindow* pParent, TimeCtrl_cls* pTime, int height) : mpCTime(pTime) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_NONE);
    SetMinSize(wxSize(-1, FromDIP(height)));
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        Refresh();
        event.Skip();
    });
}

FrameScale TimelineStrip_cls::GetScale() const {
    FrameScale scale;
    scale.mFirst = mpCTime->GetAAMin();
    scale.mLast = std::max(mpCTime->GetAAMax(), scale.mFirst);
    scale.mLeft = FromDIP(kMargin);
    scale.mWidth = std::max(GetClientSize().x - 2 * scale.mLeft, 0);
    return scale;
}

wxColour TimelineStrip_cls::Mix(wxSystemColour a, wxSystemColour b, double share) const {
    const wxColour from = wxSystemSettings::GetColour(a);
    const wxColour to = wxSystemSettings::GetColour(b);
    return wxColour(wxColour::AlphaBlend(to.Red(), from.Red(), share),
                    wxColour::AlphaBlend(to.Green(), from.Green(), share),
                    wxColour::AlphaBlend(to.Blue(), from.Blue(), share));
}
