// A bar under the slider that shows which snapshots are in memory.
#pragma once

#include "WIDGET/TIMELINE/clsTimelineStrip.h"

class PDataSeqCtrl_cls;

class CacheBar_cls : public TimelineStrip_cls {
public:
    CacheBar_cls(wxWindow* pParent, TimeCtrl_cls* pTime, PDataSeqCtrl_cls* pStore);
    /// Draw again if any column changed.
    void RefreshIfChanged();
    /// State of the snapshot that a frame shows.
    CacheState GetState(int frame) const;

private:
    void OnPaint(wxPaintEvent& event);
    void OnMotion(wxMouseEvent& event);
    wxColour ColourOf(CacheState state) const;
    std::vector<CacheState> Columns() const;

    PDataSeqCtrl_cls* mpCStore;
    std::vector<CacheState> mShown;
    int mTipFrame = -1;
};
