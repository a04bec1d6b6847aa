// The colour bar of a curve, its stops, and the four channel curves with their keys, to be moved by hand.
//
// Mouse: click, Shift and Ctrl select keys, a drag moves them (Shift: one axis only), a drag from the ground
// selects by a rubber band, a drag on a tangent's handle turns it. A double click inserts a key, on the bar a
// stop; on a stop it asks for its colour. Keys: Delete, Ctrl-A, arrows move, Escape takes a drag back.
#pragma once

#include <functional>
#include <vector>

#include <wx/geometry.h>
#include <wx/panel.h>

#include "PARAM/KeyGesture.h"

class ColorCurveEdit_cls;
class wxDC;
class wxGraphicsContext;

class ColorCurveGraph_cls : public wxPanel {
public:
    static constexpr int kChannelNumber = 4;

    ColorCurveGraph_cls(wxWindow* pParent, ColorCurveEdit_cls* pEdit);

    /// How often each part of the scale occurs in the data, any unit; empty: unknown.
    void SetHistogram(std::vector<float> bins);
    /// Hidden channels can't be edited here.
    void ShowChannel(int channel, bool bShow);
    bool IsChannelShown(int channel) const;
    /// Keys of all channels at one place keep together.
    void SetLinked(bool bLinked) { mbLinked = bLinked; }
    bool IsLinked() const { return mbLinked; }
    /// A change of the selection, or of a key: fields beside the graph are stale.
    void SetOnEdited(std::function<void()> handler) { mOnEdited = std::move(handler); }
    void AskStopColor(double position);

    // Where things lie, in client pixels.
    wxRect GetBar() const;
    wxRect GetStopStrip() const;
    wxRect GetPlot() const;
    double ToX(double position) const;
    double ToY(double value) const;
    double ToPosition(double x) const;
    double ToValue(double y) const;
    /// The end of a key's tangent handle; false when it has none. `side` -1 left, 1 right.
    bool GetHandle(int channel, int key, int side, wxPoint2DDouble* pPoint) const;

    static wxColour GetChannelColour(int channel, bool bDark);
    bool AcceptsFocus() const override { return true; }

private:
    using State = KeyGesture_cls::State;
    struct Hit_st {
        int mChannel = -1; ///< of a key or handle
        int mKey = -1;
        int mSide = 0;
        double mStop = -1.0; ///< a stop under the bar
        bool mbStop = false;
        bool IsAny() const { return mKey >= 0 || mbStop; }
        bool operator==(const Hit_st& o) const {
            return mChannel == o.mChannel && mKey == o.mKey && mSide == o.mSide && mbStop == o.mbStop &&
                   mStop == o.mStop;
        }
    };
    struct Look_st; // the theme's colours

    // clsColorCurveGraphMouse.cpp
    void BindMouse();
    void OnLeftDown(wxMouseEvent& event);
    void OnDoubleClick(wxMouseEvent& event);
    void OnMotion(wxMouseEvent& event);
    void OnLeftUp(wxMouseEvent& event);
    void OnRightUp(wxMouseEvent& event);
    void OnKey(wxKeyEvent& event);
    bool HandleKey(int key, int modifiers);
    void DragTo(const wxPoint& point, bool bOneAxis);
    void BeginDrag();
    void SelectBand();
    void Pick(KeyGesture_cls::Pick pick);
    void CancelGesture();
    void Nudge(double dPosition, double dValue);
    void OnHover(const wxPoint& point);
    /// With `bKeyFirst` a key rather than a handle at its place.
    Hit_st FindHit(const wxPoint& point, bool bKeyFirst = false) const;
    bool IsHitSelected() const;
    int FindCurve(const wxPoint& point) const;
    void Edited();
    wxString Readout(const wxPoint& point) const;
    // clsColorCurveGraphDraw.cpp
    void OnPaint(wxPaintEvent& event);
    Look_st GetLook() const;
    void DrawGround(wxGraphicsContext& gc, const Look_st& look);
    void DrawCurves(wxGraphicsContext& gc, const Look_st& look);
    void DrawKeys(wxGraphicsContext& gc, const Look_st& look);
    void DrawHandles(wxGraphicsContext& gc, const Look_st& look);
    void DrawStops(wxGraphicsContext& gc, const Look_st& look);
    void DrawAxes(wxDC& dc, const Look_st& look);
    void DrawReadout(wxGraphicsContext& gc, const Look_st& look);

    ColorCurveEdit_cls* mpCEdit;
    bool mbLinked = true;
    std::vector<float> mVHistogram;
    std::function<void()> mOnEdited;

    KeyGesture_cls mGesture;
    KeyBand_cls mCBand;
    Hit_st mHit;   ///< under the press
    Hit_st mHover; ///< under the pointer
    wxPoint mPointer;
    wxString mStrReadout; ///< beside the pointer
};
