// Moving keys in time and value.
#include "PARAM/clsParameters.h"

#include <algorithm>
#include <cmath>

#include "PARAM/clsParamCommand.h"
#include "PARAM/clsUndoManager.h"

namespace {

/// Whole steps of a resolution, where 1 / (1 / 55) must be 55 and not a hair less.
unsigned GridSteps(double resolution) {
    const double steps = 1.0 / resolution;
    if (!(steps >= 1.0 && steps < 4e9)) return 1;
    return unsigned(steps * (1.0 + 1e-12));
}

} // namespace

int Parameters_cls::MoveKey(int i, double delta, unsigned frames) {
    int where = i;
    return MoveKeyTo(i, delta, frames, &where);
}

int Parameters_cls::MoveKeyTo(int i, double delta, unsigned frames, int* pWhere) {
    if (!IsIndex(i) || !std::isfinite(delta) || frames == 0) return 0;
    const double tolerance = frames == kFilmGrid ? msResolution : 1.0 / frames;
    KeyFrame_cls moved = KeyAt(i);
    const double from = moved.mDoubleIndex;
    moved.mDoubleIndex = std::clamp(Quantize(from + delta, frames), 0.0, 1.0);
    if (Quantize(from, frames) == moved.mDoubleIndex) return 0;
    int occupant = -1;
    for (int k = 0; k < GetKeyNumber(); ++k)
        if (k != i && std::fabs(KeyAt(k).mDoubleIndex - moved.mDoubleIndex) < tolerance / 2) occupant = k;
    const UndoBlock_cls block(msbUndoCommandMake);
    if (occupant >= 0) {
        *pWhere = ReplaceKeyByMove(i, occupant, moved);
        return 3;
    }
    Perform(new ComParamMoveKey_cls(this, from, moved.mDoubleIndex, tolerance),
            new ComParamMoveKey_cls(this, moved.mDoubleIndex, from, tolerance));
    const auto there = std::find_if(mVKeys.begin(), mVKeys.end(), [&](const KeyFrame_cls& key) {
        return key.mDoubleIndex == moved.mDoubleIndex;
    });
    *pWhere = there == mVKeys.end() ? i : int(there - mVKeys.begin());
    return 1;
}

int Parameters_cls::ReplaceKeyByMove(int i, int occupant, const KeyFrame_cls& moved) {
    const KeyFrame_cls old = KeyAt(i);
    Perform(new ComParamOvwtKeyC_cls(this, occupant, moved),
            new ComParamOvwtKeyC_cls(this, occupant, KeyAt(occupant)));
    Perform(new ComParamDelKey_cls(this, i),
            new ComParamSetKey_cls(this, old.mDoubleIndex, old.mValue, old.mValueD1, old.mValueD2,
                                   old.mInterpType));
    const int where = i >= occupant ? occupant : occupant - 1;
    SelectKey(where, true);
    return where;
}

bool Parameters_cls::MoveSelectedKeyByXY(double dT, double dV, double resolution, double tMin, double tMax,
                                         double vMin, double vMax) {
    const double r = Resolution(resolution);
    const bool bTimeFixed = !(std::fabs(dT) >= r / 2);
    if ((bTimeFixed && dV == 0.0) || GetSelectedKeyNum() == 0) return false;
    // When nothing moves the block stays empty and leaves no step.
    const UndoBlock_cls block(msbUndoCommandMake);
    const unsigned frames = GridSteps(r);
    bool bMoved = MoveSelected(dT, dV, frames, bTimeFixed);
    if (tMin != 0.0 || tMax != 0.0) bMoved |= ForceTimes(tMin, tMax, frames);
    if (vMin != 0.0 || vMax != 0.0) bMoved |= ForceValues(vMin, vMax);
    return bMoved;
}

bool Parameters_cls::MoveSelected(double dT, double dV, unsigned frames, bool bTimeFixed) {
    bool bMoved = false;
    // The walk goes against the movement, so that no moved key is met again.
    const bool bFront = dT < 0.0;
    for (int i = bFront ? 0 : GetKeyNumber() - 1; IsIndex(i); i += bFront ? 1 : -1) {
        if (!KeyAt(i).mbSelected) continue;
        int where = i;
        const int result = bTimeFixed ? 0 : MoveKeyTo(i, dT, frames, &where);
        bMoved |= result != 0;
        if (bFront && (result & 2)) --i;
        if (dV == 0.0) continue;
        SetValueOfKey(where, KeyAt(where).mValue + dV);
        bMoved = true;
    }
    return bMoved;
}

// By number: another key may stand within half a frame.
void Parameters_cls::SetValueOfKey(int i, double value) {
    mCurrentValue = value;
    if (!mbTimeDepend.mValue) return SetChangedValueKey(KeyAt(i).mDoubleIndex, 0.0, 0.0, kCurrent);
    if (!std::isfinite(value)) return;
    KeyFrame_cls key = KeyAt(i);
    key.SetValue(value, 0.0, 0.0);
    Perform(new ComParamOvwtKeyC_cls(this, i, key), new ComParamOvwtKeyC_cls(this, i, KeyAt(i)));
    GetInterpolatedValue(key.mDoubleIndex);
}

bool Parameters_cls::ForceTimes(double tMin, double tMax, unsigned frames) {
    bool bMoved = false;
    // Keys closer together than the grid may take turns; each needs few moves.
    int budget = 4 * GetKeyNumber();
    for (int i = 0; i < GetKeyNumber() && budget > 0; ++i) {
        const double at = KeyAt(i).mDoubleIndex;
        const double target = std::min(std::max(at, tMin), tMax);
        if (target == at || MoveKey(i, target - at, frames) == 0) continue;
        bMoved = true;
        --budget;
        i = -1;
    }
    return bMoved;
}

bool Parameters_cls::ForceValues(double vMin, double vMax) {
    bool bMoved = false;
    for (int i = 0; i < GetKeyNumber(); ++i) {
        const double value = KeyAt(i).mValue;
        const double target = std::min(std::max(value, vMin), vMax);
        if (target == value) continue;
        SetValueOfKey(i, target);
        bMoved = true;
    }
    return bMoved;
}
