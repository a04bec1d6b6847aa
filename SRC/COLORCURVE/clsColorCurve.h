// From one scalar to a colour: a constant, or four curves of keys over a scaled axis.
#pragma once

#include <array>
#include <istream>
#include <memory>
#include <vector>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class KeyFrame_cls;
class ParamGroup_cls;
class wxDC;
class wxImage;
class wxRect;

/// All of a curve but its keys.
struct ColorSettings_st {
    bool mbUseCurve = false;
    std::array<float, 4> mConstant = {0, 0, 0, 0}; ///< RGBA
    float mScalingMin = 0.0f;
    float mScalingMax = 1.0f;
    unsigned mDependType = 0;
    bool operator==(const ColorSettings_st& other) const;
};

/// The curves are those of an animated setting, with the scalar, scaled to 0..1, in the place of time: red,
/// green, blue and alpha, each with keys and kinds of its own.
class ColorCurve_cls {
public:
    using Key = std::array<double, 5>;  ///< position on the axis, red, green, blue, alpha
    static const long long kUpdateMask; ///< what an edit makes stale (COMMON/UpdateBits.h)

    /// `id` begins all keys of the text form; `constantColor` is text such as "1 0.8 0.2 1". Without keys
    /// the curve goes from green at 0 to red at 1.
    ColorCurve_cls(const wxString& id, const wxString& label, const wxString& constantColor, int keyCount = 0,
                   const double (*pKeys)[5] = nullptr);
    ~ColorCurve_cls();
    ColorCurve_cls(const ColorCurve_cls&) = delete;
    ColorCurve_cls& operator=(const ColorCurve_cls&) = delete;

    /// Run before any batch of GetColor4fScaled; mends an empty range by raising its upper end.
    void PreCalcScaleFactor();
    /// RGBA at x on the user's scale. Reads only: several threads may ask at once.
    void GetColor4fScaled(float* pOut, float x) const;
    /// RGBA at x, already scaled to 0..1; outside the keys the end colours hold.
    void GetColor4fNormal(float* pOut, float x) const;
    /// The same from the keys, whether the curve is in use or not.
    void GetCurveColor(float* pOut, float x) const;
    bool IsConstant() const { return !mbUseColorCurve.mValue; }

    // Edits, one step of the undo list each.
    /// Mirror the colours along the axis.
    void Flip();
    /// Red takes green's curve, green blue's, blue red's; three times is none.
    void SwapRGB();
    /// Take another curve's colours, and unless `bCurveOnly` its settings as well.
    void CopyColorFromP(const ColorCurve_cls* pSrc, bool bCurveOnly);

    ColorSettings_st GetSettings() const;
    void SetSettings(const ColorSettings_st& settings); ///< no step
    /// These settings, as one step that undo answers with `before`.
    void SetSettingsCommand(const ColorSettings_st& settings, const ColorSettings_st& before);
    /// Expired when the curve is gone: for windows and steps that may outlive it.
    std::weak_ptr<const bool> GetLife() const { return mpLife; }

    /// The keys of one channel (0 red to 3 alpha), in any order; no step. None changes nothing.
    void SetChannelKeys(int channel, const std::vector<KeyFrame_cls>& keys);
    /// Linear keys at the same places in all four curves; no step. An empty list changes nothing.
    void SetKeys(std::vector<Key> keys);
    float GetScaleOffset() const { return mScaleOffset; }
    float GetScaleRange() const { return mScaleRange; }

    // Pictures: they stand with the editor (EDITOR/clsColorCurveDraw.cpp), and who shows them links it.
    /// The colours from 0 at the left edge to 1 at the right one, with an alpha channel unless opaque.
    wxImage GetColorImage(int width, int height, bool bOpaque) const;
    /// The same over a checkerboard of squares of `square` pixels.
    void DrawOnDC(wxDC& dc, const wxRect& rect, int square) const;
    /// The keys' colours, even while the constant one is in use.
    void DrawCurveOnDC(wxDC& dc, const wxRect& rect, int square) const;

    wxString Serialize() const;
    /// True if the line was taken, with the lines behind it that belong to it.
    bool ReadStrLine(std::wistream& stream, const wxString& line);

    wxString mID;
    wxString mLabel; ///< the curve in the editor's title
    ConfItemList_cls mConfList;
    ConfItemBOOL_cls mbUseColorCurve;
    ConfItemFLOATARRAY_cls mConstantColor; ///< RGBA, 0..1
    ConfItemFLOAT_cls mScalingMin;
    ConfItemFLOAT_cls mScalingMax;
    /// Which of the data's scalars drives the curve; the owner of the data knows them.
    ConfItemUINT_cls mDependType;
    const std::unique_ptr<ParamGroup_cls> mpCParamGroup;

private:
    const std::shared_ptr<const bool> mpLife = std::make_shared<const bool>(true);
    float mScaleOffset = 0.0f;
    float mScaleRange = 1.0f;
};
