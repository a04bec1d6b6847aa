// Editing one colour curve by hand: its keys and settings, each gesture one step of the undo list.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "COLORCURVE/clsColorCurve.h"

class Parameters_cls;

/// While a gesture is under way the curve itself changes, without steps, so that the pictures follow; its end
/// leaves the step. Positions are those of the curve, 0 to 1. The selection is the keys' own.
class ColorCurveEdit_cls {
public:
    static constexpr int kChannelNumber = 4;
    static constexpr double kGrid = 1e-3; ///< moved keys stand on multiples of it, in place and value
    static constexpr double kSame = 1e-6; ///< keys nearer to each other stand at one place

    ColorCurveEdit_cls();
    ~ColorCurveEdit_cls();
    /// Ends what is under way. Null: none.
    void SetCurve(ColorCurve_cls* pCurve);
    /// Null when there is none or it is gone.
    ColorCurve_cls* GetPCCurve() const;

    void SetSettings(const ColorSettings_st& settings, bool bFinal);

    // A gesture on keys.
    void Begin();
    bool IsUnderWay() const { return !mVBefore.empty(); }
    /// All selected keys from where they were at Begin; a key that is met goes. `bLinked`: the other
    /// channels' keys at the same places come along in position. `channel`: values of this one alone.
    void MoveSelected(double dPosition, double dValue, bool bLinked, int channel = -1);
    /// The tangent of one key: slope of the value over the position, both in units of the curve.
    void SetTangent(int channel, int key, double slope);
    void Commit();
    void Cancel();
    bool IsGesture() const { return IsUnderWay() || mSettingsBefore.has_value(); }
    /// Commits, settings too: undo is about to look at the list.
    void EndGesture();

    // One step each; false when nothing changed.
    /// A key at the curve's own value; channel -1: in all.
    bool InsertKey(int channel, double position);
    /// All keys of a channel can't go: the last one stays.
    bool DeleteSelected();
    bool SetKind(unsigned kind);
    /// The first selected key goes there, the others keep their distance.
    bool SetSelectedPosition(double position, bool bLinked);
    /// Of all selected keys of a channel.
    bool SetSelectedValue(int channel, double value);
    /// A key in every channel at the stop.
    bool SetStopColor(double position, const float* pColor, bool bAlpha);

    /// Keys of a hidden channel are never selected; they come along in position where channels are linked.
    void ShowChannel(int channel, bool bShow);
    bool IsChannelShown(int channel) const { return mbShown[channel]; }

    // Stops: places where any channel has a key, ascending.
    std::vector<double> GetStops() const;
    bool IsStopSelected(double position) const;
    void SelectStop(double position, bool bAdd, bool bToggle);
    void SelectKey(int channel, int key, bool bAdd, bool bToggle);
    void SelectAll(bool bSelect);
    int GetSelectedCount() const;
    /// Of the first selected key; false when none is.
    bool GetSelected(double* pPosition, double* pValue, unsigned* pKind) const;
    /// Value of the first selected key of a channel; false when none is.
    bool GetSelectedValue(int channel, double* pValue) const;

private:
    using Keys = std::vector<KeyFrame_cls>;
    using AllKeys = std::array<Keys, kChannelNumber>;

    Parameters_cls& Channel(int c) const;
    AllKeys GetKeys() const;
    void Show(const AllKeys& keys);
    bool Perform(const AllKeys& keys);

    ColorCurve_cls* mpCCurve = nullptr;
    bool mbShown[kChannelNumber] = {true, true, true, true};
    std::weak_ptr<const bool> mpLife;
    std::vector<std::unique_ptr<Parameters_cls>> mVBefore; ///< the channels, while a gesture is under way
    std::optional<ColorSettings_st> mSettingsBefore;
};
