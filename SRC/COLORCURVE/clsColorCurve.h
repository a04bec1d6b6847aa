// From one scalar to a colour: a constant, or four linear curves over a scaled axis.
#pragma once

#include <array>
#include <istream>
#include <vector>

#include <wx/colour.h>
#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class ColorCurve_cls {
public:
    using Key = std::array<double, 5>; ///< position on the axis, red, green, blue, alpha

    /// `id` begins all keys; `constantColor` is text such as "1 0.8 0.2 1". Without keys the curve goes
    /// from green at 0 to red at 1.
    ColorCurve_cls(const wxString& id, const wxString& label, const wxString& constantColor, int keyCount = 0,
                   const double (*pKeys)[5] = nullptr);
    ColorCurve_cls(const ColorCurve_cls&) = delete;
    ColorCurve_cls& operator=(const ColorCurve_cls&) = delete;

    /// Run before any batch of GetColor4fScaled; mends an empty range by raising its upper end.
    void PreCalcScaleFactor();
    /// RGBA at x on the user's scale. Reads only: several threads may ask at once.
    void GetColor4fScaled(float* pOut, float x) const;
    /// RGBA at x, already scaled to 0..1; outside, the end colours hold.
    void GetColor4fNormal(float* pOut, float x) const;
    /// Swatch colour, over `background` unless opaque.
    wxColour GetWXColor(const wxColour& background, double x, bool bOpaque) const;
    bool IsConstant() const { return !mbUseColorCurve.mValue; }
    /// Mirror the colours along the axis.
    void Flip();
    /// Red takes green's curve, green blue's, blue red's; three times is none.
    void SwapRGB();
    /// Take another curve's colours, and unless `bCurveOnly` its settings as well.
    void CopyColorFromP(const ColorCurve_cls* pSrc, bool bCurveOnly);
    /// Keys in ascending order of their position; an empty list changes nothing.
    void SetKeys(std::vector<Key> keys);
    const std::vector<Key>& GetKeys() const { return mKeys; }
    float GetScaleOffset() const { return mScaleOffset; }
    float GetScaleRange() const { return mScaleRange; }

    wxString Serialize() const;
    /// True if the line was taken.
    bool ReadStrLine(std::wistream& stream, const wxString& line);

    wxString mID;
    wxString mLabel;
    ConfItemList_cls mConfList;
    ConfItemBOOL_cls mbUseColorCurve;
    ConfItemFLOATARRAY_cls mConstantColor; ///< RGBA, 0..1
    ConfItemFLOAT_cls mScalingMin;
    ConfItemFLOAT_cls mScalingMax;
    /// 0 value, 1 radius, 2 |position|, 3-5 x y z, 6 |velocity|, 7-9 vx vy vz, 10 ID.
    ConfItemUINT_cls mDependType;

private:
    bool ReadKeys(const wxString& text);

    float mScaleOffset = 0.0f;
    float mScaleRange = 1.0f;
    std::vector<Key> mKeys; ///< ascending
};
