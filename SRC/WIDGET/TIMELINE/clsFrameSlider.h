// The slider over the film: ruler, work area and current frame. Press or drag to go to a frame, turn the
// wheel to step.
#pragma once

#include "WIDGET/TIMELINE/clsTimelineStrip.h"

class wxDC;

class FrameSlider_cls : public TimelineStrip_cls {
public:
    FrameSlider_cls(wxWindow* pParent, TimeCtrl_cls* pTime);
    /// Draw again if the clock shows something else than what was drawn.
    void RefreshIfChanged();

private:
    /// What the picture depends on.
    struct Shown {
        int mFrame = -1, mStep = -1, mInterp = -1, mFirst = -1, mLast = -1, mLow = -1, mHigh = -1, mMax = -1;
        bool operator==(const Shown& o) const;
    };
    Shown Current() const;
    void OnPaint(wxPaintEvent& event);
    void OnMouse(wxMouseEvent& event);
    void DrawRuler(wxDC& dc, const FrameScale& scale);
    void DrawMarker(wxDC& dc, const FrameScale& scale);
    void GoTo(int pixel);

    Shown mShown;
};
