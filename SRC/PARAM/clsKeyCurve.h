// A curve of key frames over the film's time axis: its value, finding keys and selecting them. What changes
// keys is Parameters_cls; nothing here leaves a step in the undo list.
#pragma once

#include <vector>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "PARAM/clsFilmAxis.h"
#include "PARAM/clsKeyFrame.h"

class KeyCurve_cls : public FilmAxis_cls {
public:
    KeyCurve_cls& operator=(const KeyCurve_cls&) = delete;

    // The curve's value. Nothing here allocates.
    /// Also kept as the cached current value.
    double GetInterpolatedValue(double doubleIndex, double resolution = kCurrent) {
        return mCurrentValue = Evaluate(Time(doubleIndex), Resolution(resolution));
    }
    /// The same without the cache; both arguments as they stand.
    double Evaluate(double doubleIndex, double resolution) const;
    /// The curve from `doubleIndex` to the next key, without snapping to keys: the value at doubleIndex + u
    /// is pC[0] + u (pC[1] + u (pC[2] + u pC[3])). For loops that evaluate a curve many times.
    void GetPolynomial(double doubleIndex, double* pC) const;
    /// The same numbers for many ascending times, in one walk over the keys.
    void EvaluateMany(const double* pTimes, size_t count, double resolution, double* pOut) const;
    unsigned int GetInterpTypeFromDouble(double doubleIndex) const;
    double GetHermiteVelocity(int i) const;  ///< tangent in use
    double CalcVelocity(int i, int j) const; ///< slope from key i to key j; 0.0 where there is none
    /// The representative of y1 nearest to y0; on a tie the lower one if y1 > y0, else the upper one.
    static double GetValue1Periodic(double y0, double y1, double period);
    /// The curve in scene language, as a declaration of `name` over the variable t0.
    wxString GetStrExpression(wxString name) const;

    // Finding keys; -1 where there is none.
    const std::vector<KeyFrame_cls>& GetKeys() const { return mVKeys; }
    int GetKeyNumber() const { return int(mVKeys.size()); }
    bool IsKeyFrame(double doubleIndex, double resolution = kCurrent) const;
    int CheckOverWrite(double doubleIndex, double resolution) const; ///< last key strictly near
    /// First key at the position; if none and `bNearest`, the key in force there.
    int GetKeyFrameIndexFromDouble(double doubleIndex, double resolution, bool bNearest) const;
    int GetKeyFrameIndexToInsert(double doubleIndex, double resolution) const;
    int GetAdjacentKey(double doubleIndex, int dir) const;
    double GetKeyFrameDoubleIndex(int i) const { return KeyAt(i).mDoubleIndex; }
    double GetKeyFrameValue(int i) const { return KeyAt(i).mValue; }
    double GetKeyFrameValueD1(int i) const { return KeyAt(i).mValueD1; }
    double GetKeyFrameValueD2(int i) const { return KeyAt(i).mValueD2; }
    bool IsValueChanged(double doubleIndex) const; ///< cached value differs from the curve

    // Selection. Regions include their bounds.
    bool SelectKeyFrameRegion(double t0, double t1, double v0, double v1, bool bToggle);
    int OnWhichKeyFrame(double doubleIndex, double tolerance) const;
    void SelectKey(int i, bool bSelected);
    void DeselectAll();
    int GetSelectedKeyNum() const;

    void SortKey();
    void AdjustAutoControl(); ///< automatic tangents

    ConfItemBOOL_cls mbTimeDepend;
    ConfItemINT_cls mPeriodic;  ///< the value's period, 0 none
    double mCurrentValue = 0.0; ///< last result, or the value just edited

protected:
    /// One all-zero key at 0.0.
    explicit KeyCurve_cls(bool bTimeDepend);
    KeyCurve_cls(const KeyCurve_cls&) = default;
    ~KeyCurve_cls() = default;

    const KeyFrame_cls& KeyAt(int i) const;
    bool IsIndex(int i) const { return i >= 0 && i < GetKeyNumber(); }

    std::vector<KeyFrame_cls> mVKeys; ///< ascending positions

private:
    double ValueFor(double y0, double y1) const;
    const KeyFrame_cls* FindSegment(double doubleIndex, double half) const;
    double InSegment(const KeyFrame_cls* pKey, double doubleIndex) const;
    wxString GetStrSegment(int i, wxString* pName) const;
};
