// The graph: the curves of animated settings as they are evaluated, with their keys to be moved by hand.
//
// Mouse: click, Shift and Ctrl select keys, a drag moves them (Shift: one axis only), a drag from the
// ground selects by a rubber band, a drag on a tangent's handle turns it, a double click inserts a key.
// Wheel: scrolls values; Ctrl: zooms the time, Shift or Alt: the values around the pointer. The middle
// button pans. Keys: F fits, Delete deletes, Ctrl-A selects all, Ctrl-C copies, Ctrl-V pastes at the clock,
// Escape takes a drag back. Alt drags copies.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <wx/image.h>

#include "PARAM/KeyGesture.h"
#include "WIDGET/TIMELINE/GraphEdit.h"
#include "WIDGET/TIMELINE/GraphModel.h"
#include "WIDGET/TIMELINE/GraphRaster.h"
#include "WIDGET/TIMELINE/clsTimelineStrip.h"

class wxGraphicsContext;

class GraphPanel_cls : public TimelineStrip_cls {
public:
    GraphPanel_cls(wxWindow* pParent, TimeCtrl_cls* pTime);

    /// The curves to show; deleted ones drop out by themselves. Other curves than before are fitted.
    void SetCurves(const std::vector<Parameters_cls*>& curves);
    std::vector<Parameters_cls*> GetCurves() const;
    /// Draw again if curves or clock show something else than what was drawn.
    void RefreshIfChanged();
    /// All values of the shown time, with room around them.
    void FitToView();
    const ValueRange& GetValues() const { return mCValues; }
    GraphScale GetGraphScale() const { return ScaleFor(GetClientSize()); }
    /// Where the handle of a key's tangent lies: `side` -1 left, 1 right. False when it has none.
    bool GetHandle(const Parameters_cls& param, int key, int side, wxPoint2DDouble* pPoint) const;
    wxRect GetFitButton() const;
    /// What a paint shows.
    void Draw(wxDC& dc, const wxSize& size);
    bool AcceptsFocus() const override { return true; }

    std::function<void()> mOnEdited; ///< after each edit by hand

private:
    using State = KeyGesture_cls::State;
    /// A key, or with a side the handle of its tangent.
    struct Hit_st {
        Parameters_cls* mpCParam = nullptr;
        int mKey = -1;
        int mSide = 0;
        bool operator==(const Hit_st& o) const {
            return mpCParam == o.mpCParam && mKey == o.mKey && mSide == o.mSide;
        }
    };
    struct Look_st; // the theme's colours

    // clsGraphPanel.cpp
    GraphScale ScaleFor(const wxSize& size) const;
    uint64_t Fingerprint() const;
    void ZoomTime(int x, double factor);
    void SetActiveArea(int first, int last);
    void OnKey(wxKeyEvent& event);
    bool HandleKey(int key, int modifiers);
    void SelectAll();
    void Copy() const;
    void Edited();
    // clsGraphPanelMouse.cpp
    void OnMouse(wxMouseEvent& event);
    void OnWheel(wxMouseEvent& event);
    void OnLeftDown(const wxMouseEvent& event);
    void OnDoubleClick(const wxPoint& point);
    void OnDrag(const wxMouseEvent& event);
    void OnRelease();
    void OnHover(const wxPoint& point);
    void OnMenu(const wxPoint& point);
    void BeginDrag();
    void EndGesture();
    void CancelGesture();
    void DragKeys(bool bOneAxis);
    void DragHandle(const wxPoint& point);
    void DragView();
    void SelectBand();
    void Pick(KeyGesture_cls::Pick pick);
    void DeselectAll();
    KeyPicker_cls PickAt(const wxPoint& point, bool bHandles) const;
    Hit_st FindKey(const wxPoint& point) const;
    Hit_st ToHit(const KeyHit& hit) const;
    Parameters_cls* FindCurve(const wxPoint& point) const;
    // clsGraphPanelDraw.cpp
    Look_st GetLook() const;
    uint32_t CurveColour(size_t i, bool bDark) const;
    void PaintGround(const GraphScale& scale, const Look_st& look);
    void PaintCurves(const GraphScale& scale, const Look_st& look);
    void PaintKeys(const GraphScale& scale, const Look_st& look, size_t i);
    void DrawAxis(wxDC& dc, const GraphScale& scale, const Look_st& look);
    void DrawHandles(wxGraphicsContext& gc, const GraphScale& scale, const Look_st& look);
    void DrawCurrent(wxGraphicsContext& gc, const GraphScale& scale, const Look_st& look);
    void DrawLegend(wxGraphicsContext& gc, const wxSize& size, const Look_st& look);
    void DrawReadout(wxGraphicsContext& gc, const wxSize& size, const Look_st& look);
    wxString FrameText(double t) const;
    wxString NameOf(const Parameters_cls& param) const;

    std::vector<Parameters_cls*> mVCurves;
    ValueRange mCValues;
    bool mbFitPending = true; ///< when there is a size to fit into
    uint64_t mShown = 0;      ///< what was drawn last

    KeyGesture_cls mGesture;
    KeyBand_cls mCBand;
    CurveGesture_cls mCGesture;
    Hit_st mHit;          ///< under the press
    Hit_st mHover;        ///< under the pointer
    KeyFrame_cls mHitKey; ///< as it was at the press
    wxPoint mPointer;
    ValueRange mPanValues;
    int mPanFirst = 0;
    int mPanLast = 0;
    wxString mReadout; ///< beside the pointer

    GraphRaster_cls mCRaster;
    CurveSampler_cls mCSampler;
    CurveColumns mCColumns;
    std::vector<unsigned char> mVPicture;
};
