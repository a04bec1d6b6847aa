// Editing a curve: each operation here is a step of the undo list, or direct while command making is off.
#include "PARAM/clsParameters.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "PARAM/ParamHooks.h"
#include "PARAM/clsParamCommand.h"
#include "PARAM/clsUndoManager.h"

namespace {
// Where a key goes to be deleted: behind all others.
constexpr double kSentinel = 255.0;
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

void Parameters_cls::InitSet(double value) {
    Perform(new ComParamClearKey_cls(this, value, 0.0), new ComParamMemento_cls(this));
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

void Parameters_cls::SetKeyType(int i, int kind) {
    if (!IsIndex(i) || KeyAt(i).mInterpType == unsigned(kind)) return;
    Perform(new ComParamSetKeyType_cls(this, i, unsigned(kind)),
            new ComParamSetKeyType_cls(this, i, KeyAt(i).mInterpType));
}

void Parameters_cls::SetKeyTypeMulti(unsigned kind) {
    std::vector<int> indices;
    std::vector<unsigned> oldKinds;
    for (int i = 0; i < GetKeyNumber(); ++i) {
        if (!KeyAt(i).mbSelected) continue;
        indices.push_back(i);
        oldKinds.push_back(KeyAt(i).mInterpType);
    }
    if (indices.empty()) return;
    const std::vector<unsigned> newKinds(indices.size(), kind);
    Perform(new ComParamSetKeyTypeMulti_cls(this, indices, newKinds),
            new ComParamSetKeyTypeMulti_cls(this, indices, oldKinds));
}

bool Parameters_cls::DeleteKey(double doubleIndex, double resolution) {
    const int i = GetKeyFrameIndexFromDouble(doubleIndex, resolution, false);
    return DeleteKeyNumber(GetKeyNumber() == 1 ? 0 : i);
}

bool Parameters_cls::DeleteKeyNumber(int i) {
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

bool Parameters_cls::DeleteSelectedKey() {
    const UndoBlock_cls block(msbUndoCommandMake);
    bool bAny = false;
    for (int i = 0; i < GetKeyNumber();) {
        // By number: in a film made shorter another key may stand at the same place.
        const bool bGone = KeyAt(i).mbSelected && GetKeyNumber() > 1 && DeleteKeyNumber(i);
        bAny |= bGone;
        if (!bGone) ++i;
    }
    if (GetKeyNumber() != 1 || !KeyAt(0).mbSelected) return bAny;
    if (!bAny) return DeleteKeyNumber(0);
    // The last of several goes to the start as part of the step, or undo would bring the others back
    // around a key in the wrong place.
    KeyFrame_cls atStart = KeyAt(0);
    atStart.mDoubleIndex = 0.0;
    Perform(new ComParamOvwtKeyC_cls(this, 0, atStart), new ComParamOvwtKeyC_cls(this, 0, KeyAt(0)));
    return bAny;
}

void Parameters_cls::RemapKeys(double factor) {
    const UndoBlock_cls block(msbUndoCommandMake);
    const bool bFront = factor < 1.0;
    for (int i = bFront ? 0 : GetKeyNumber() - 1; IsIndex(i);) {
        const double at = KeyAt(i).mDoubleIndex;
        const int result = at == 0.0 ? 0 : MoveKey(i, at * (factor - 1.0));
        // Walking from the front, a key that went leaves the next one in its place.
        if (!bFront)
            --i;
        else if (!(result & 2))
            ++i;
    }
}

void Parameters_cls::RemapKeyFrame(int a, int b) {
    const double factor = b == 0 ? -1.0 : double(a) / b;
    if (factor < 0.0) return; // would turn the order round
    for (KeyFrame_cls& key : mVKeys)
        key.mDoubleIndex *= factor;
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

void Parameters_cls::ExecCommandMoveKey(double from, double to, double resolution) {
    // The key itself rather than one that merely lies near.
    const auto exact = std::find_if(mVKeys.begin(), mVKeys.end(),
                                    [from](const KeyFrame_cls& key) { return key.mDoubleIndex == from; });
    const int i = exact == mVKeys.end() ? GetKeyFrameIndexFromDouble(from, resolution, false)
                                        : int(exact - mVKeys.begin());
    if (i < 0) return;
    mVKeys[size_t(i)].mDoubleIndex = to;
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

void Parameters_cls::ExecCommandSetKeyType(int i, unsigned kind) {
    if (!IsIndex(i)) return;
    mVKeys[size_t(i)].mInterpType = kind;
    AdjustAutoControl();
}

void Parameters_cls::ExecCommandSetKeyTypeMulti(const std::vector<int>& indices,
                                                const std::vector<unsigned>& kinds) {
    for (size_t k = 0; k < indices.size() && k < kinds.size(); ++k)
        if (IsIndex(indices[k])) mVKeys[size_t(indices[k])].mInterpType = kinds[k];
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
