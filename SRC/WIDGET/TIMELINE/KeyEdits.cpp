#include "WIDGET/TIMELINE/KeyEdits.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "PARAM/ParamText.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsParameters.h"
#include "PARAM/clsUndoManager.h"
#include "WIDGET/TIMELINE/GraphEdit.h"

namespace {

void AddOnce(Curves& curves, Parameters_cls* pCurve) {
    if (std::find(curves.begin(), curves.end(), pCurve) == curves.end()) curves.push_back(pCurve);
}

double Half() { return Parameters_cls::msResolution / 2; }

/// A key that leaves the curve's run as it is, as far as its kind can.
void InsertOnCurve(Parameters_cls& curve, double t) {
    KeyFrame_cls key;
    curve.SetKeyToValueAt(&key, t);
    if (key.mInterpType == INTERP_HERMITE_SEMIAUTO) key.mValueD2 = 1.0;
    curve.SetKey(key, Parameters_cls::kCurrent);
}

/// The value on show counts, not what the curve was last asked for.
void SwitchTimeDependence(Parameters_cls& curve, bool bTimeDepend) {
    if (curve.mbTimeDepend.mValue == bTimeDepend) return;
    curve.mCurrentValue = ValueNow(curve);
    curve.SetTimeDependent(bTimeDepend);
}

void RemoveKey(Parameters_cls& curve, double t) {
    const int i = KeyAt(curve, t);
    if (i < 0) return;
    if (curve.GetKeyNumber() == 1)
        SwitchTimeDependence(curve, false);
    else
        curve.DeleteKey(curve.GetKeyFrameDoubleIndex(i), Parameters_cls::kCurrent);
}

} // namespace

Curves CurvesOf(ParamGroup_cls& group) {
    Curves curves;
    for (Parameters_cls& param : group.mVParams)
        curves.push_back(&param);
    for (ParamGroup_cls* child : group.mVpCChilds)
        for (Parameters_cls* param : CurvesOf(*child))
            AddOnce(curves, param);
    return curves;
}

Curves LinkedCurves(Parameters_cls& curve) {
    ParamGroup_cls* group = curve.mpCParamGroup;
    if (!group || !group->mbLinked) return {&curve};
    return CurvesOf(*group);
}

Curves WithLinked(const Curves& curves) {
    Curves all;
    for (Parameters_cls* curve : curves)
        for (Parameters_cls* linked : LinkedCurves(*curve))
            AddOnce(all, linked);
    return all;
}

bool IsAnimated(const Parameters_cls& curve) { return curve.mbTimeDepend.mValue; }

int KeyAt(const Parameters_cls& curve, double doubleIndex) {
    if (!IsAnimated(curve)) return -1;
    return curve.OnWhichKeyFrame(doubleIndex, Half());
}

bool HasKeyAt(const Curves& curves, double doubleIndex) {
    return std::any_of(curves.begin(), curves.end(), [doubleIndex](const Parameters_cls* curve) {
        return KeyAt(*curve, doubleIndex) >= 0;
    });
}

double NeighbourKey(const Curves& curves, double doubleIndex, int dir) {
    double best = doubleIndex;
    bool bFound = false;
    for (const Parameters_cls* curve : curves) {
        if (!IsAnimated(*curve)) continue;
        for (const KeyFrame_cls& key : curve->GetKeys()) {
            const double ahead = (key.mDoubleIndex - doubleIndex) * dir;
            if (ahead < Half() || (bFound && ahead >= (best - doubleIndex) * dir)) continue;
            best = key.mDoubleIndex;
            bFound = true;
        }
    }
    return best;
}

std::vector<double> KeyPlaces(const Curves& curves) {
    std::vector<double> places;
    for (const Parameters_cls* curve : curves) {
        if (!IsAnimated(*curve)) continue;
        for (const KeyFrame_cls& key : curve->GetKeys())
            places.push_back(key.mDoubleIndex);
    }
    std::sort(places.begin(), places.end());
    const auto same = [](double a, double b) { return b - a < Half(); };
    places.erase(std::unique(places.begin(), places.end(), same), places.end());
    return places;
}

void DeselectKeys(const Curves& curves) {
    for (Parameters_cls* curve : curves)
        curve->DeselectAll();
}

void SelectKeys(const Curves& curves, double from, double to, SelectMode mode) {
    if (mode == SelectMode::SET) DeselectKeys(curves);
    for (Parameters_cls* curve : curves)
        if (IsAnimated(*curve)) curve->SelectKeyFrameRegion(from, to, 0.0, 0.0, mode == SelectMode::TOGGLE);
}

Curves WithSelectedKeys(const Curves& curves) {
    Curves some;
    for (Parameters_cls* curve : curves)
        if (IsAnimated(*curve) && curve->GetSelectedKeyNum() > 0) some.push_back(curve);
    return some;
}

int CommonKind(const Curves& curves) {
    int kind = -1;
    for (const Parameters_cls* curve : WithSelectedKeys(curves)) {
        for (const KeyFrame_cls& key : curve->GetKeys()) {
            if (!key.mbSelected) continue;
            if (kind >= 0 && kind != int(key.mInterpType)) return -1;
            kind = int(key.mInterpType);
        }
    }
    return kind;
}

void InsertKeys(const Curves& curves, double doubleIndex) {
    const double t = std::clamp(Parameters_cls::Time(doubleIndex), 0.0, 1.0);
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (Parameters_cls* curve : curves) {
        SwitchTimeDependence(*curve, true);
        if (KeyAt(*curve, t) < 0) InsertOnCurve(*curve, t);
    }
}

void RemoveKeys(const Curves& curves, double doubleIndex) {
    const double t = Parameters_cls::Time(doubleIndex);
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (Parameters_cls* curve : curves)
        RemoveKey(*curve, t);
}

void ToggleKeys(const Curves& curves, double doubleIndex) {
    const double t = Parameters_cls::Time(doubleIndex);
    const bool bAll = std::all_of(curves.begin(), curves.end(),
                                  [t](const Parameters_cls* curve) { return KeyAt(*curve, t) >= 0; });
    if (bAll)
        RemoveKeys(curves, t);
    else
        InsertKeys(curves, t);
}

void SetTimeDependent(const Curves& curves, bool bTimeDepend) {
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (Parameters_cls* curve : curves)
        SwitchTimeDependence(*curve, bTimeDepend);
}

double ValueNow(const Parameters_cls& curve) {
    return curve.Evaluate(Parameters_cls::msCurrentDoubleIndex, Parameters_cls::msResolution);
}

void SetValueNow(Parameters_cls& curve, double value) {
    if (!std::isfinite(value) || value == ValueNow(curve)) return;
    const double now = Parameters_cls::msCurrentDoubleIndex;
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    KeyFrame_cls key;
    const int there = IsAnimated(curve) ? KeyAt(curve, now) : 0;
    if (there >= 0 && there < curve.GetKeyNumber())
        key = curve.GetKeys()[size_t(there)];
    else
        curve.SetKeyToValueAt(&key, IsAnimated(curve) ? now : 0.0);
    key.mValue = value;
    curve.SetKey(key, Parameters_cls::kCurrent);
    curve.GetInterpolatedValue(now);
    if (!IsAnimated(curve)) return;
    for (Parameters_cls* linked : LinkedCurves(curve))
        if (IsAnimated(*linked) && KeyAt(*linked, now) < 0) InsertOnCurve(*linked, now);
}

void FlipCurves(const Curves& curves) {
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (Parameters_cls* curve : curves)
        if (IsAnimated(*curve)) curve->Flip();
}

wxString CopiedKeys(const Curves& curves) {
    wxString text;
    for (const Parameters_cls* curve : WithSelectedKeys(curves))
        text += curve->GetClipboardText();
    return text;
}

namespace {

struct CopiedCurve_st {
    wxString mName;
    std::vector<KeyFrame_cls> mVKeys;
};

std::vector<CopiedCurve_st> ReadCopiedKeys(const wxString& text) {
    std::vector<CopiedCurve_st> copied;
    std::wistringstream stream(text.ToStdWstring());
    wxString line;
    while (ReadParamLine(stream, &line)) {
        wxString rest;
        if (line.StartsWith("Parameter_", &rest)) {
            copied.push_back({rest, {}});
            continue;
        }
        KeyFrame_cls key;
        key.mDoubleIndex = key.mValue = std::numeric_limits<double>::quiet_NaN();
        if (copied.empty() || line.StartsWith("itemnum")) continue;
        key.ReadStrLine(line);
        if (key.mInterpType >= KeyFrame_cls::INTERP_COUNT) key.mInterpType = INTERP_LINEAR;
        if (std::isfinite(key.mDoubleIndex) && std::isfinite(key.mValue)) copied.back().mVKeys.push_back(key);
    }
    copied.erase(
        std::remove_if(copied.begin(), copied.end(), [](const auto& one) { return one.mVKeys.empty(); }),
        copied.end());
    return copied;
}

const CopiedCurve_st* CopiedFor(const std::vector<CopiedCurve_st>& copied, const Parameters_cls& curve) {
    if (copied.size() == 1) return &copied[0];
    const auto found =
        std::find_if(copied.begin(), copied.end(), [&](const auto& one) { return one.mName == curve.mName; });
    return found == copied.end() ? nullptr : &*found;
}

} // namespace

bool PasteKeys(const Curves& curves, const wxString& text, double doubleIndex) {
    const std::vector<CopiedCurve_st> copied = ReadCopiedKeys(text);
    double first = std::numeric_limits<double>::infinity();
    for (const CopiedCurve_st& one : copied)
        for (const KeyFrame_cls& key : one.mVKeys)
            first = std::min(first, key.mDoubleIndex);
    Curves into;
    for (Parameters_cls* curve : curves)
        if (CopiedFor(copied, *curve)) into.push_back(curve);
    if (into.empty()) return false;
    const double at = Parameters_cls::Time(doubleIndex);
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    for (Parameters_cls* curve : into)
        SwitchTimeDependence(*curve, true);
    DeselectKeys(into);
    return EditCurves(
        into, false, [&](const CurveGesture_cls::Entry_st& entry, std::vector<KeyFrame_cls>* pKeys) {
            for (KeyFrame_cls key : CopiedFor(copied, *entry.mpCParam)->mVKeys) {
                key.mDoubleIndex = ToFilmGrid(key.mDoubleIndex - first + at);
                if (key.mDoubleIndex < 0.0 || key.mDoubleIndex > 1.0) continue;
                pKeys->erase(std::remove_if(pKeys->begin(), pKeys->end(),
                                            [&](const KeyFrame_cls& old) {
                                                return std::fabs(old.mDoubleIndex - key.mDoubleIndex) <
                                                       Half();
                                            }),
                             pKeys->end());
                key.mbSelected = true;
                pKeys->push_back(key);
            }
        });
}
