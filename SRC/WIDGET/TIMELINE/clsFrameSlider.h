// The slider over the film. From the top: the film as a whole with the part that the strips show; the ruler,
// where pressing or dragging goes to a frame or one of its steps, with Shift to whole frames; the work area,
// which plays. Parts are dragged by their ends or as a whole. The wheel steps, with Ctrl it zooms around the
// pointer.
#pragma once

#include "WIDGET/TIMELINE/clsTimelineStrip.h"

class wxDC;

class FrameSlider_cls : public TimelineStrip_cls {
public:
    FrameSlider_cls(wxWindow* pParent, TimeCtrl_cls* pTime);
    /// Draw again if the clock shows something else than what was drawn.
    void RefreshIfChanged();
    /// Where keys stand, 0 to 1 over the film, ascending.
    void SetMarks(std::vector<double> marks);
    const std::vector<double>& GetMarks() const { return mVMarks; }
    /// The whole film over the strip's width: where the part shown is dragged.
    FrameScale GetFilmScale() const;
    /// Middle of the bands from the top, for tests of the mouse: 0 film, 1 ruler, 2 work area.
    int GetBandY(int band) const;

private:
    enum class Act { NONE, FRAME, ACTIVE, WORK };
    /// What the picture depends on.
    struct Shown {
        int mFrame = -1, mStep = -1, mAnimStep = -1, mInterp = -1, mFirst = -1, mLast = -1, mLow = -1,
            mHigh = -1, mMax = -1;
        bool operator==(const Shown& o) const;
    };
    /// A band that can be dragged, where a pixel is: -1 its lower end, 0 its middle, 1 its upper end, else
    /// kNone.
    static constexpr int kNone = 9;

    Shown Current() const;
    void OnPaint(wxPaintEvent& event);
    void DrawFilm(wxDC& dc) const;
    void DrawWorkArea(wxDC& dc, const FrameScale& scale) const;
    void DrawRuler(wxDC& dc, const FrameScale& scale);
    void DrawMarks(wxDC& dc, const FrameScale& scale) const;
    void DrawMarker(wxDC& dc, const FrameScale& scale);
    void DrawHandle(wxDC& dc, int x, int top, int height, const wxColour& colour) const;

    void OnMouse(wxMouseEvent& event);
    void OnDown(const wxMouseEvent& event);
    void OnDrag(const wxMouseEvent& event);
    void OnWheel(const wxMouseEvent& event);
    void Finish();
    static wxString GetFramesTip();
    void Hover(const wxPoint& point);
    void GoTo(int pixel, bool bWholeFrames);
    Act ActAt(const wxPoint& point, int* pEnd) const;
    int EndAt(const FrameScale& scale, const FrameArea& area, int pixel) const;
    void SetArea(Act act, const FrameArea& area);

    Shown mShown;
    std::vector<double> mVMarks;
    Act mAct = Act::NONE;
    int mEnd = kNone;
    int mPressed = 0;    ///< pixel
    FrameArea mDragFrom; ///< the area when it was pressed
    FrameScale mDragScale;
    bool mbMoved = false;
    bool mbWholeFrames = false; ///< Shift at the press
};
