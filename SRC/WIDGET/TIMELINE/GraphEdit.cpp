#include "WIDGET/TIMELINE/GraphEdit.h"

#include <algorithm>
#include <cmath>

#include "COMMON/UpdateBits.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"

namespace {

using Keys = std::vector<KeyFrame_cls>;

bool SameKey(const KeyFrame_cls& a, const KeyFrame_cls& b) {
    const auto same = [](double p, double q) { return p == q || (std::isnan(p) && std::isnan(q)); };
    return a.mInterpType == b.mInterpType && same(a.mDoubleIndex, b.mDoubleIndex) &&
           same(a.mValue, b.mValue) && same(a.mValueD1, b.mValueD1) && same(a.mValueD2, b.mValueD2);
}

bool SameKeys(const Keys& a, const Keys& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), SameKey);
}

/// Is one of these ascending positions within half a step?
bool IsNear(const std::vector<double>& sorted, double t) {
    const double half = Parameters_cls::msResolution / 2;
    const auto next = std::lower_bound(sorted.begin(), sorted.end(), t);
    return (next != sorted.end() && *next - t < half) || (next != sorted.begin() && t - *(next - 1) < half);
}

std::vector<double> SelectedTimes(const Parameters_cls& param) {
    std::vector<double> times;
    for (const KeyFrame_cls& key : param.GetKeys())
        if (key.mbSelected) times.push_back(key.mDoubleIndex);
    return times;
}

void SetKeysAndCache(Parameters_cls* pParam, Keys keys) {
    pParam->ExecCommandSetKeys(std::move(keys));
    pParam->GetInterpolatedValue(Parameters_cls::kCurrent); // or the old value would count as an edit
}

void MoveKeys(Keys* pKeys, const std::vector<unsigned char>& moving, double dT, double dV, bool bCopies) {
    Keys moved;
    Keys rest;
    std::vector<double> times;
    for (size_t i = 0; i < pKeys->size(); ++i) {
        KeyFrame_cls key = (*pKeys)[i];
        if (!moving[i]) {
            rest.push_back(key);
            continue;
        }
        if (bCopies && dT != 0.0) {
            rest.push_back(key);
            rest.back().mbSelected = false;
        }
        if (dT != 0.0) key.mDoubleIndex = std::clamp(ToFilmGrid(key.mDoubleIndex + dT), 0.0, 1.0);
        if (key.mbSelected && std::isfinite(key.mValue + dV)) key.mValue += dV;
        // Of several that come to one place the last stays.
        if (dT != 0.0 && !times.empty() &&
            std::fabs(times.back() - key.mDoubleIndex) < Parameters_cls::msResolution / 2) {
            moved.back() = key;
            continue;
        }
        times.push_back(key.mDoubleIndex);
        moved.push_back(key);
    }
    pKeys->clear();
    for (const KeyFrame_cls& key : rest)
        if (dT == 0.0 || !IsNear(times, key.mDoubleIndex)) pKeys->push_back(key);
    pKeys->insert(pKeys->end(), moved.begin(), moved.end());
}

} // namespace

double ToFilmGrid(double t) {
    const double steps = std::max(1.0, std::round(1.0 / Parameters_cls::msResolution));
    return std::isfinite(t) ? std::round(t * steps) / steps : 0.0;
}

int CountSelectedKeys(const std::vector<Parameters_cls*>& curves) {
    int count = 0;
    for (const Parameters_cls* param : curves)
        if (Parameters_cls::IsAlive(param)) count += param->GetSelectedKeyNum();
    return count;
}

void CurveGesture_cls::Begin(const std::vector<Parameters_cls*>& curves, bool bLinked) {
    mVEntries.clear();
    const auto add = [this](Parameters_cls* pParam, bool bFollows) {
        if (!Parameters_cls::IsAlive(pParam) || !pParam->mbTimeDepend.mValue) return;
        for (const Entry_st& entry : mVEntries)
            if (entry.mpCParam == pParam) return;
        mVEntries.push_back(
            {pParam, bFollows, std::make_unique<Parameters_cls>(*pParam), pParam->GetKeys(), {}});
    };
    for (Parameters_cls* param : curves)
        add(param, false);
    mbLinked = bLinked;
    mbCopies = false;
    const size_t own = mVEntries.size();
    for (size_t i = 0; bLinked && i < own; ++i) {
        ParamGroup_cls* group = mVEntries[i].mpCParam->mpCParamGroup;
        if (!group || !group->mbLinked || mVEntries[i].mpCParam->GetSelectedKeyNum() == 0) continue;
        for (Parameters_cls& param : group->mVParams)
            add(&param, true);
    }
    MarkMoving();
}

void CurveGesture_cls::MarkMoving() {
    for (Entry_st& entry : mVEntries) {
        const ParamGroup_cls* group = entry.mpCParam->mpCParamGroup;
        std::vector<double> times;
        for (const Entry_st& other : mVEntries) {
            if (!mbLinked || !group || !group->mbLinked || other.mbFollows ||
                other.mpCParam->mpCParamGroup != group)
                continue;
            const std::vector<double> more = SelectedTimes(*other.mpBefore);
            times.insert(times.end(), more.begin(), more.end());
        }
        std::sort(times.begin(), times.end());
        for (const KeyFrame_cls& key : entry.mpBefore->GetKeys())
            entry.mVMoving.push_back((key.mbSelected && !entry.mbFollows) || IsNear(times, key.mDoubleIndex));
    }
}

bool CurveGesture_cls::IsOurs(const Entry_st& entry) const {
    return Parameters_cls::IsAlive(entry.mpCParam) && SameKeys(entry.mpCParam->GetKeys(), entry.mVShown);
}

void CurveGesture_cls::Show(const Change& change, bool bTell) {
    long long mask = 0;
    for (Entry_st& entry : mVEntries) {
        if (!IsOurs(entry)) continue;
        Keys keys = entry.mpBefore->GetKeys();
        change(entry, &keys);
        if (SameKeys(keys, entry.mpBefore->GetKeys()))
            entry.mpCParam->CopyCurveFromP(*entry.mpBefore);
        else
            SetKeysAndCache(entry.mpCParam, std::move(keys));
        entry.mVShown = entry.mpCParam->GetKeys();
        mask |= entry.mpCParam->mUpdateBit;
    }
    if (bTell) PostUpdateEvents(mask);
}

double CurveGesture_cls::LimitTime(double dT) const {
    double low = -1e9;
    double high = 1e9;
    for (const Entry_st& entry : mVEntries) {
        const Keys& keys = entry.mpBefore->GetKeys();
        for (size_t i = 0; i < keys.size(); ++i) {
            if (!entry.mVMoving[i]) continue;
            low = std::max(low, std::min(-keys[i].mDoubleIndex, 0.0));
            high = std::min(high, std::max(1.0 - keys[i].mDoubleIndex, 0.0));
        }
    }
    dT = std::isfinite(dT) ? std::clamp(dT, low, high) : 0.0;
    return std::fabs(dT) < Parameters_cls::msResolution / 2 ? 0.0 : dT;
}

double CurveGesture_cls::Move(double dT, double dV) {
    return MoveAnd(dT, dV, [](const Entry_st&, Keys*) {});
}

double CurveGesture_cls::MoveAnd(double dT, double dV, const Change& before) {
    const double limited = LimitTime(dT);
    Show([&](const Entry_st& entry, Keys* pKeys) {
        before(entry, pKeys);
        MoveKeys(pKeys, entry.mVMoving, limited, entry.mbFollows ? 0.0 : dV, mbCopies);
    });
    return limited;
}

bool CurveGesture_cls::Commit() {
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    bool bChanged = false;
    for (Entry_st& entry : mVEntries) {
        if (!IsOurs(entry) || SameKeys(entry.mVShown, entry.mpBefore->GetKeys())) continue;
        const Parameters_cls after(*entry.mpCParam);
        entry.mpCParam->CopyCurveFromP(*entry.mpBefore);
        entry.mpCParam->CopyParameterFromP(&after);
        bChanged = true;
    }
    mVEntries.clear();
    return bChanged;
}

void CurveGesture_cls::Cancel() {
    long long mask = 0;
    for (const Entry_st& entry : mVEntries) {
        if (!IsOurs(entry)) continue;
        entry.mpCParam->CopyCurveFromP(*entry.mpBefore);
        mask |= entry.mpCParam->mUpdateBit;
    }
    mVEntries.clear();
    PostUpdateEvents(mask);
}

bool EditCurves(const std::vector<Parameters_cls*>& curves, bool bLinked,
                const CurveGesture_cls::Change& change) {
    CurveGesture_cls gesture;
    gesture.Begin(curves, bLinked);
    gesture.Show(change, false);
    return gesture.Commit();
}

bool DeleteSelectedKeys(const std::vector<Parameters_cls*>& curves) {
    return EditCurves(curves, true, [](const CurveGesture_cls::Entry_st& entry, Keys* pKeys) {
        Keys rest;
        for (size_t i = 0; i < pKeys->size(); ++i)
            if (!entry.mVMoving[i]) rest.push_back((*pKeys)[i]);
        if (rest.empty() && !pKeys->empty()) {
            rest.push_back(pKeys->front());
            rest[0].mDoubleIndex = 0.0;
        }
        *pKeys = rest;
    });
}

bool InsertKeyAt(Parameters_cls* pParam, double t, const std::vector<Parameters_cls*>& shown) {
    if (!Parameters_cls::IsAlive(pParam) || !pParam->mbTimeDepend.mValue) return false;
    const double at = std::clamp(ToFilmGrid(t), 0.0, 1.0);
    std::vector<Parameters_cls*> curves = {pParam};
    ParamGroup_cls* group = pParam->mpCParamGroup;
    if (group && group->mbLinked)
        for (Parameters_cls& param : group->mVParams)
            if (&param != pParam) curves.push_back(&param);
    for (Parameters_cls* param : shown)
        if (Parameters_cls::IsAlive(param)) param->DeselectAll();
    const bool bChanged =
        EditCurves(curves, false, [&](const CurveGesture_cls::Entry_st& entry, Keys* pKeys) {
            if (entry.mpBefore->IsKeyFrame(at)) return;
            KeyFrame_cls key;
            entry.mpBefore->SetKeyToValueAt(&key, at);
            if (key.mInterpType == INTERP_HERMITE_SEMIAUTO) key.mValueD2 = 1.0;
            pKeys->push_back(key);
        });
    pParam->SelectKey(pParam->GetKeyFrameIndexFromDouble(at, Parameters_cls::kCurrent, false), true);
    return bChanged;
}

void ChangeKinds(Keys* pKeys, const Parameters_cls& before, unsigned kind) {
    Parameters_cls automatic(before);
    for (KeyFrame_cls& key : *pKeys)
        if (key.mbSelected) key.mInterpType = INTERP_HERMITE_AUTO;
    automatic.mpCParamTL = nullptr;
    automatic.ExecCommandSetKeys(*pKeys); // for the slopes
    for (size_t i = 0; i < pKeys->size(); ++i) {
        KeyFrame_cls& key = (*pKeys)[i];
        const unsigned old = before.GetKeys()[i].mInterpType;
        key.mInterpType = old;
        if (!key.mbSelected || old == kind) continue;
        key.mInterpType = kind;
        const bool bSlope = old != INTERP_LINEAR && old != INTERP_STEP;
        if (kind == INTERP_HERMITE_SEMIAUTO) key.mValueD2 = 1.0;
        if (kind == INTERP_HERMITE)
            key.mValueD1 = bSlope ? before.GetHermiteVelocity(int(i)) : automatic.GetKeyFrameValueD1(int(i));
    }
}

bool SetSelectedKinds(const std::vector<Parameters_cls*>& curves, unsigned kind) {
    return EditCurves(curves, false, [kind](const CurveGesture_cls::Entry_st& entry, Keys* pKeys) {
        ChangeKinds(pKeys, *entry.mpBefore, kind);
    });
}
