// The strip of one curve: its keys over the film.
#pragma once

#include <vector>

#include "WIDGET/TIMELINE/TimelineLook.h"
#include "WIDGET/TIMELINE/TimelineModel.h"

class Parameters_cls;
class TimeCtrl_cls;
class wxDC;

class ParamTL_cls {
public:
    explicit ParamTL_cls(Parameters_cls* pCurve);
    ~ParamTL_cls();
    ParamTL_cls(const ParamTL_cls&) = delete;
    ParamTL_cls& operator=(const ParamTL_cls&) = delete;

    /// Keys of a curve, and bars where the value stands still; `y` is the middle of the row.
    static void DrawKeys(wxDC& dc, const Parameters_cls& curve, const FrameScale& scale, int y,
                         const TimelineLook& look);
    /// The keys of several curves on one line.
    static void DrawSummary(wxDC& dc, const std::vector<Parameters_cls*>& curves, const FrameScale& scale,
                            int y, const TimelineLook& look);
    /// Position of the key nearest to a pixel, at most `reach` pixels away; negative when there is none.
    static double FindKey(const std::vector<Parameters_cls*>& curves, const FrameScale& scale, int pixel,
                          int reach);
    static double ToPixel(const FrameScale& scale, double doubleIndex);
    /// Beyond the ends of the strip too.
    static double ToDoubleIndex(const FrameScale& scale, int pixel);

    static TimeCtrl_cls* mspCTimeCtrlLink;

private:
    Parameters_cls* mpCParam;
};
