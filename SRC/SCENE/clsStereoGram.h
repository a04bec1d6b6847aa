// Two eyes in place of one camera: where they stand, and how their pictures share what is shown or written.
// The views run the loop over the eyes and ask here.
#pragma once

#include <functional>
#include <istream>
#include <vector>

#include "COMMON/Eye.h"
#include "COMMON/clsDialogControl.h"
#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class ParamGroup_cls;
class Parameters_cls;
class PositionAndDirection_cls;

/// An `eye` is an Eye, a `pass` is 0 for the first picture of a paint and 1 for the second. Lengths are those
/// of the scene, angles degrees. Main thread only.
class StereoGram_cls : public DialogControl_cls {
public:
    enum Type { TYPE_MONOGRAM = 0, TYPE_OFF_AXIS, TYPE_TOE_IN };
    /// The numbers stand in files.
    enum Output {
        OUTPUT_NO_PARALLAX = 0,
        OUTPUT_LEFT,
        OUTPUT_RIGHT,
        OUTPUT_LINE_BY_LINE, ///< every second line of the window
        OUTPUT_RED_CYAN,
        OUTPUT_YELLOW_BLUE,
        OUTPUT_SIDE_BY_SIDE, ///< each eye squeezed to half the width
        OUTPUT_TOP_BOTTOM,   ///< to half the height, the left one on top
        OUTPUT_SIDE_BY_SIDE_FULL,
        OUTPUT_TOP_BOTTOM_FULL,
        OUTPUT_RED_CYAN_DUBOIS, ///< in colours that both eyes agree about
        OUTPUT_NUMBER
    };
    /// Where an eye's picture stands in that of both: shares of its sides, from the lower left corner.
    struct Part_st {
        double mX = 0.0;
        double mY = 0.0;
        double mW = 1.0;
        double mH = 1.0;
    };
    static constexpr int kStored = -1; ///< for an eye: the one that the stored output shows

    StereoGram_cls();
    ~StereoGram_cls() override;

    int GetType() const { return mCType.mValue; }
    int GetOutput() const { return mCEye.mValue; }
    /// Does a paint draw two eyes?
    bool IsStereo() const;
    /// Do image files show an eye each? Lines of two eyes don't survive a change of size: they always do.
    bool IsDualOutput() const;

    /// Are the eyes side by side or one above the other in full size? Files of both are twice as large.
    bool IsFull() const;
    bool IsAbove() const;
    /// Do images of the two eyes know nothing of each other while they are drawn?
    bool KeepsEyesApart() const { return IsDualOutput() || IsFull(); }
    /// Is each pixel made of both eyes?
    bool MixesEyes() const { return IsStereo() && mCEye.mValue == OUTPUT_RED_CYAN_DUBOIS; }
    /// Of a picture of both eyes. The window shows those in full size at half their scale.
    Part_st GetPart(int pass) const;

    int GetStereoEye(int pass) const;
    /// 1 left half, 2 right half, 0 the whole.
    int GetModeSideBySide(int pass) const;
    double GetStereogramYawAngle(int eye) const;
    double GetOffsetRight(int eye) const;
    /// From the camera to where the eyes of a toe-in look; infinite where they look straight ahead.
    double GetDistanceToFocus(double time) const;
    /// Distance of the eyes; 0 where the curve says what is no number.
    double GetParallax(double time) const;
    /// From here on the distance of this time counts.
    void UpdateCurrent(double time) { mParallax = GetParallax(time); }
    /// To the place and direction of an eye, as UpdateCurrent has found it.
    void ModifyByStereogram(PositionAndDirection_cls* pCamera, int eye) const;

    /// The settings with which somebody who looks at what is this far away sees depth without strain: a
    /// thirtieth of it between the eyes, which meet there. One step.
    void Fit(double distance);
    /// One step.
    void SetToDefault();
    /// The same without a step: projects that don't speak of it have none.
    void Reset();
    /// Is that what SetCombined would refuse?
    bool IsRefused() const { return mCEye.mValue == OUTPUT_LINE_BY_LINE && mCDualOutput.mValue == 0; }

    // These need a current OpenGL context (clsStereoGramDraw.cpp).

    /// The eyes of a camera and where they look, for other views. Lighting and textures are off.
    void DrawFocus(const PositionAndDirection_cls& camera) const;
    /// Let through the colours of one eye. `bSwap` exchanges the eyes. Without `bLastStep` lines of two eyes
    /// only get their weight.
    void SetColorMaskBegin(int pass, bool bSwap, bool bLastStep) const;
    void SetColorMaskEnd() const;
    /// Let through the lines of one eye, in a window of w by h pixels; for the scope of attributes around it.
    void SetStencilMaskBegin(int w, int h, int pass, bool bSwap) const;
    /// Ones in the stencil on every second line, from the lowest one or the one above it; else zeros.
    static void MakeStripePatternOnStencil(int w, int h, bool bOdd);

    /// The row of the time lines is there while the setting is.
    void UpdateTLShown();
    wxString Serialize();
    /// Reads on from the stream when `line` is the block's marker.
    void ReadStrLine(std::wistream& stream, const wxString& line);
    Parameters_cls* GetPCParamFromID(const wxString& id) const;

    /// Names of the outputs, in their order.
    static std::vector<wxString> GetOutputNames();

    static const long long kUpdateMask;
    ConfItemList_cls mConfItemList;
    ConfItemINT_cls mCType;         ///< a Type
    ConfItemINT_cls mCEye;          ///< an Output
    ConfItemFLOAT_cls mCToeInAngle; ///< of each eye
    ConfItemINT_cls mCDualOutput;   ///< 1: an image file for each eye
    ParamGroup_cls* mpCParallax;    ///< distance of the eyes; owned

    std::function<void()> mOnRows;               ///< other rows of the time lines are to be shown
    std::function<double()> mGetDistanceToFocus; ///< how far the active view's camera is from its anchor

protected:
    OwnedDialog_cls* MakeDialog(wxWindow* pParent) override;

private:
    void RepairItems();

    double mParallax = 0.0;
};
