// Base of the own-drawn strips over the film: one scale for all, so that they stand in line.
#pragma once

#include <wx/settings.h>
#include <wx/window.h>

#include "WIDGET/TIMELINE/TimelineModel.h"

class TimeCtrl_cls;

class TimelineStrip_cls : public wxWindow {
public:
    TimelineStrip_cls(wxWindow* pParent, TimeCtrl_cls* pTime, int height);
    /// The active area over the strip's width.
    FrameScale GetScale() const;
    bool AcceptsFocus() const override { return false; }

protected:
    wxColour Mix(wxSystemColour a, wxSystemColour b, double share) const;

    TimeCtrl_cls* mpCTime;
};
