// The strips right of the tree: the keys of every row over the film.
#pragma once

#include <vector>

#include "PARAM/KeyGesture.h"
#include "WIDGET/TIMELINE/GraphEdit.h"
#include "WIDGET/TIMELINE/KeyEdits.h"
#include "WIDGET/TIMELINE/clsTimelineStrip.h"

class ParamGUICtrl_cls;
class wxDC;

class ParamStrips_cls : public TimelineStrip_cls {
public:
    explicit ParamStrips_cls(ParamGUICtrl_cls* pCtrl);

    bool AcceptsFocus() const override { return true; }
    /// What a paint draws; the window's own part of a benchmark.
    void Draw(wxDC& dc, const wxSize& size);
    /// Let go of a drag under way, back to where it began.
    void EndGesture();
    /// What the label beside the key under the pointer says; empty without one and during a drag.
    wxString GetHint() const;

private:
    using State = KeyGesture_cls::State;

    void OnPaint(wxPaintEvent& event);
    void DrawRows(wxDC& dc, const wxSize& size, const FrameScale& scale) const;
    void DrawGrid(wxDC& dc, const wxSize& size, const FrameScale& scale) const;
    void DrawTime(wxDC& dc, const wxSize& size, const FrameScale& scale) const;
    void DrawLabel(wxDC& dc, const wxSize& size, const wxString& text, double at, int y) const;

    void OnMouse(wxMouseEvent& event);
    void OnKey(wxKeyEvent& event);
    void OnWheel(const wxMouseEvent& event);
    void OnDown(const wxMouseEvent& event);
    void OnDoubleClick(const wxMouseEvent& event);
    void OnRightDown(const wxMouseEvent& event);
    void OnDrag(const wxMouseEvent& event);
    void OnUp();
    void Hover(const wxPoint& point);
    void LeaveKey();
    void Pick(KeyGesture_cls::Pick pick, const Curves& curves, double at);
    void MoveKeys(int x);
    void SelectBand();
    void Pan(const wxPoint& point);
    void Insert(const wxPoint& point);
    void Finish(State state, bool bCommit);
    /// The key under a point: its position, negative when there is none; `pCurves` takes the row's curves.
    double KeyUnder(const wxPoint& point, Curves* pCurves) const;
    /// The nearest step of the film.
    double Snapped(int x) const;
    double SelectionTolerance() const;

    ParamGUICtrl_cls* mpCCtrl;
    KeyGesture_cls mGesture;
    Curves mVPressed;         ///< curves of the row that was pressed
    double mPressedKey = 0.0; ///< position of the key that was pressed
    double mDelta = 0.0;      ///< how far the keys are moved
    bool mbDouble = false;    ///< the second press of a double click
    int mPanTop = 0;
    FrameArea mPanFrom;
    CurveGesture_cls mCGesture;
    KeyBand_cls mCBand;
    double mHintAt = -1.0; ///< the key under the pointer
    wxPoint mHintPoint;
};
