// The one shared editor of colour curves.
#pragma once

#include <functional>
#include <vector>

#include "COLORCURVE/EDITOR/clsColorCurveEdit.h"
#include "COMMON/clsDialogControl.h"

class ColorCurve_cls;

/// What the editor asks of the data; the hub sets these. An empty one: there is nothing to know.
struct ColorCurveHooks_st {
    /// All curves that can be chosen, in the order of the list.
    std::function<std::vector<ColorCurve_cls*>()> mCurves;
    /// The texts of "Depend on", by value.
    std::function<std::vector<wxString>()> mDependLabels;
    /// Does a scalar of the particles drive this curve?
    std::function<bool(const ColorCurve_cls&)> mIsDriven;
    /// Extremes of the driving scalar, of the frame on show or the whole sequence; false (told to the user)
    /// when there are none.
    std::function<bool(const ColorCurve_cls&, bool bSequence, float* pLow, float* pHigh)> mRange;
    /// How often the parts of the curve's scale occur in the frame on show.
    std::function<std::vector<float>(const ColorCurve_cls&, int bins)> mHistogram;
    /// Another number whenever other particles are on show.
    std::function<size_t()> mStamp;
};

class ColorCurveCtrl_cls : public DialogControl_cls {
public:
    /// Open the editor with this curve; null: with the one it had, else the first of the list.
    void OpenCurve(ColorCurve_cls* pCurve, wxWindow* pParent);
    ColorCurve_cls* GetPCCurve() const { return mCEdit.GetPCCurve(); }
    /// What a hand still holds becomes a step.
    void EndGesture() { mCEdit.EndGesture(); }
    bool IsGesture() const { return mCEdit.IsGesture(); }
    /// Scaling of a curve to the extremes of its driving scalar, in the frame on show or the whole sequence;
    /// one step. False, and told, when there are none.
    bool FitRange(ColorCurve_cls* pCurve, bool bSequence);
    /// Is there a range to fit?
    bool IsDriven(const ColorCurve_cls& curve) const { return mHooks.mIsDriven && mHooks.mIsDriven(curve); }
    /// Its colours, in one step; a curve that particles drive is put to use with them.
    void TakeTemplate(const ColorCurve_cls& chosen);
    /// The texts of "Depend on", by value.
    std::vector<wxString> GetDependLabels() const;
    /// The curves that can be chosen, the linked one among them.
    std::vector<ColorCurve_cls*> GetCurves() const;

    ColorCurveHooks_st mHooks;
    ColorCurveEdit_cls mCEdit;

protected:
    OwnedDialog_cls* MakeDialog(wxWindow* pParent) override;

private:
    void PlaceBeside(const wxWindow* pParent);
};
