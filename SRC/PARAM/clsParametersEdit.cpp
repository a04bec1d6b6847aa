// Editing a curve: each operation here is a step of the undo list, or direct while command making is off.
#include "PARAM/clsParameters.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "PARAM/ParamHooks.h"
#include "PARAM/clsParamCommand.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"

namespace {

// Where a key goes to be deleted: behind all others.
constexpr double kSentinel = 255.0;

bool IsLinked(const ParamGroup_cls* pGroup) { return pGroup && pGroup->mbLinked; }

} // namespace

void Parameters_cls::Perform(ComParamBase_cls* pRedo, ComParamBase_cls* pUndo) {
    if (!msbUndoCommandMake) {
        pRedo->Run(*this);
        delete pRedo;
        delete pUndo;
        return;
    }
    Parameters_cls* target = pRedo->GetTarget();
    if (!target) target = this;
    const std::vector<KeyFrame_cls> before = target->mVKeys;
    GCUndoList.PushNewCommand(pRedo, pUndo);
    GCUndoList.ExecCurrent();
    // Try the way back on a copy, to learn what it would leave different.
    Parameters_cls trial(*target);
    trial.mpCParamTL = nullptr;
    pUndo->Run(trial);
    pUndo->NoteDifferences(before, trial.mVKeys);
}

void Parameters_cls::InsertKey(double doubleIndex, double value, double d1, double d2) {
    if (doubleIndex == kCurrent) {
        doubleIndex = msCurrentDoubleIndex;
        value = GetInterpolatedValue(doubleIndex);
    }
    KeyFrame_cls key;
    SetKeyToValueAt(&key, doubleIndex);
    key.SetValue(value, d1, d2);
    SetKey(key, kCurrent);
}

void Parameters_cls::SetChangedValueKey(double doubleIndex, double d1, double d2, double resolution) {
    const double t = mbTimeDepend.mValue ? Time(doubleIndex) : 0.0;
    const int over = CheckOverWrite(t, kCurrent); // the one that SetKey replaces
    const int there = over >= 0 ? over : GetKeyFrameIndexFromDouble(t, resolution, false);
    const bool bSelected = KeyAt(there).mbSelected;
    InsertKey(t, mCurrentValue, d1, d2);
    if (there >= 0)
        SelectKey(over >= 0 ? CheckOverWrite(t, kCurrent) : GetKeyFrameIndexFromDouble(t, resolution, false),
                  bSelected);
    GetInterpolatedValue(t);
}

void Parameters_cls::SetKeyToValueAt(KeyFrame_cls* pKey, double doubleIndex) const {
    const double t = Time(doubleIndex);
    const double velocity = CalcVelocity(GetAdjacentKey(t, -1), GetAdjacentKey(t, 1));
    pKey->Set(t, GetInterpTypeFromDouble(t), Evaluate(t, msResolution), velocity, 0.0, false);
}

void Parameters_cls::SetKey(const KeyFrame_cls& key, double resolution) {
    if (!std::isfinite(key.mDoubleIndex) || !std::isfinite(key.mValue)) return;
    const int there = CheckOverWrite(key.mDoubleIndex, resolution);
    if (there >= 0) {
        Perform(new ComParamOvwtKeyC_cls(this, there, key),
                new ComParamOvwtKeyC_cls(this, there, KeyAt(there)));
        return;
    }
    const int place = GetKeyFrameIndexToInsert(key.mDoubleIndex, msResolution);
    Perform(new ComParamSetKeyC_cls(this, key), new ComParamDelKey_cls(this, place));
}

bool Parameters_cls::DeleteKey(double doubleIndex, double resolution) {
    const int i = GetKeyNumber() == 1 ? 0 : GetKeyFrameIndexFromDouble(doubleIndex, resolution, false);
    if (!IsIndex(i)) return false;
    if (GetKeyNumber() == 1) {
        // A curve keeps its last key, but at the start and with no step to take back.
        mVKeys[0].mDoubleIndex = 0.0;
        return false;
    }
    const KeyFrame_cls key = KeyAt(i);
    Perform(new ComParamDelKey_cls(this, i),
            new ComParamSetKey_cls(this, key.mDoubleIndex, key.mValue, key.mValueD1, key.mValueD2,
                                   key.mInterpType));
    return true;
}

void Parameters_cls::InsertKeyQueue(double doubleIndex) {
    if (IsLinked(mpCParamGroup))
        mpCParamGroup->InsertKey(-1, doubleIndex, ParamGroup_cls::kNoValue);
    else
        InsertKey(doubleIndex, 0.0, 0.0, 0.0);
}

bool Parameters_cls::DeleteKeyQueue(double doubleIndex) {
    if (!IsLinked(mpCParamGroup)) return DeleteKey(doubleIndex, kCurrent);
    const UndoBlock_cls block(msbUndoCommandMake);
    bool bAny = false;
    for (Parameters_cls& param : mpCParamGroup->mVParams)
        bAny |= param.DeleteKey(doubleIndex, kCurrent);
    return bAny;
}

void Parameters_cls::Flip() {
    if (mVKeys.empty()) return;
    Parameters_cls mirror(*this);
    std::reverse(mirror.mVKeys.begin(), mirror.mVKeys.end());
    for (KeyFrame_cls& key : mirror.mVKeys)
        key.mDoubleIndex = 1.0 - key.mDoubleIndex;
    mirror.AdjustAutoControl();
    CopyParameterFromP(&mirror);
}

void Parameters_cls::CopyParameterFromP(const Parameters_cls* pSrc) {
    const UndoBlock_cls block(msbUndoCommandMake);
    Perform(new ComParamMemento_cls(this, pSrc), new ComParamMemento_cls(this));
}

void Parameters_cls::SetTimeDependent(bool bTimeDepend) {
    const UndoBlock_cls block(msbUndoCommandMake);
    Perform(new ComParamClearKey_cls(this, mCurrentValue, msCurrentDoubleIndex),
            new ComParamMemento_cls(this));
    Perform(new ComParamSetTimeDependent_cls(this, bTimeDepend),
            new ComParamSetTimeDependent_cls(this, !bTimeDepend));
}

void Parameters_cls::ExecCommandSetKey(const KeyFrame_cls& key) {
    mVKeys.push_back(key);
    SortKey();
    AdjustAutoControl();
}

void Parameters_cls::ExecCommandOvwtKey(int i, const KeyFrame_cls& key) {
    if (!IsIndex(i)) return;
    mVKeys[size_t(i)] = key;
    SortKey();
    AdjustAutoControl();
}

void Parameters_cls::ExecCommandDeleteKey(int i) {
    if (!IsIndex(i)) return;
    std::rotate(mVKeys.begin() + i, mVKeys.begin() + i + 1, mVKeys.end());
    // The tangents are worked out while the key still stands, far away: its neighbour keeps looking
    // there until the next edit. A file may hold keys further out.
    mVKeys.back().mDoubleIndex = std::max(kSentinel, KeyAt(GetKeyNumber() - 2).mDoubleIndex);
    AdjustAutoControl();
    mVKeys.pop_back();
}

void Parameters_cls::ExecCommandSetKeys(std::vector<KeyFrame_cls> keys) {
    mVKeys = std::move(keys);
    SortKey();
    AdjustAutoControl();
}

void Parameters_cls::ExecCommandInitSet(double value, double doubleIndex) {
    mVKeys.assign(1, KeyFrame_cls());
    mVKeys[0].Set(doubleIndex, INTERP_HERMITE_AUTO, value, 0.0, 0.0, false);
}

void Parameters_cls::ExecCommandTimeDependent(bool bTimeDepend) {
    mbTimeDepend.mValue = bTimeDepend;
    if (mpCParamTL && GParamHooks.mStripTimeDepend) GParamHooks.mStripTimeDepend(mpCParamTL, bTimeDepend);
}

void Parameters_cls::RestoreKey(int i, const KeyFrame_cls& key) {
    if (!IsIndex(i)) return;
    const bool bSelected = KeyAt(i).mbSelected;
    mVKeys[size_t(i)] = key;
    mVKeys[size_t(i)].mbSelected = bSelected;
}
