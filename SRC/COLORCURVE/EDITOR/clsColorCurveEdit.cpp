#include "COLORCURVE/EDITOR/clsColorCurveEdit.h"

#include <algorithm>
#include <cmath>

#include "COMMON/UpdateBits.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"

namespace {

bool IsNear(double a, double b) { return std::fabs(a - b) < ColorCurveEdit_cls::kSame; }

bool IsSameKey(const KeyFrame_cls& a, const KeyFrame_cls& b) {
    return a.mInterpType == b.mInterpType && a.mDoubleIndex == b.mDoubleIndex && a.mValue == b.mValue &&
           a.mValueD1 == b.mValueD1 && a.mValueD2 == b.mValueD2;
}

double ToGrid(double position) {
    return std::round(position / ColorCurveEdit_cls::kGrid) * ColorCurveEdit_cls::kGrid;
}

/// Within 0..1, unless it stood outside before.
double Bound(double value, double before) {
    return std::clamp(value, std::min(0.0, before), std::max(1.0, before));
}

} // namespace

ColorCurveEdit_cls::ColorCurveEdit_cls() = default;
ColorCurveEdit_cls::~ColorCurveEdit_cls() = default;

void ColorCurveEdit_cls::SetCurve(ColorCurve_cls* pCurve) {
    if (pCurve == GetPCCurve()) return;
    EndGesture();
    mpCCurve = pCurve;
    mpLife = pCurve ? pCurve->GetLife() : std::weak_ptr<const bool>();
}

ColorCurve_cls* ColorCurveEdit_cls::GetPCCurve() const { return mpLife.expired() ? nullptr : mpCCurve; }

Parameters_cls& ColorCurveEdit_cls::Channel(int c) const {
    return mpCCurve->mpCParamGroup->mVParams[static_cast<size_t>(c)];
}

ColorCurveEdit_cls::AllKeys ColorCurveEdit_cls::GetKeys() const {
    AllKeys keys;
    for (int c = 0; GetPCCurve() && c < kChannelNumber; ++c)
        keys[static_cast<size_t>(c)] = Channel(c).GetKeys();
    return keys;
}

void ColorCurveEdit_cls::SetSettings(const ColorSettings_st& settings, bool bFinal) {
    ColorCurve_cls* pCurve = GetPCCurve();
    if (!pCurve) return;
    if (!mSettingsBefore) mSettingsBefore = pCurve->GetSettings();
    pCurve->SetSettings(settings);
    PostUpdateEvents(ColorCurve_cls::kUpdateMask);
    if (!bFinal) return;
    const ColorSettings_st before = *mSettingsBefore;
    mSettingsBefore.reset();
    if (!(before == settings)) pCurve->SetSettingsCommand(settings, before);
}

void ColorCurveEdit_cls::Begin() {
    EndGesture();
    for (int c = 0; GetPCCurve() && c < kChannelNumber; ++c)
        mVBefore.push_back(std::make_unique<Parameters_cls>(Channel(c)));
}

void ColorCurveEdit_cls::Show(const AllKeys& keys) {
    for (int c = 0; c < kChannelNumber; ++c)
        mpCCurve->SetChannelKeys(c, keys[static_cast<size_t>(c)]);
    PostUpdateEvents(ColorCurve_cls::kUpdateMask);
}

void ColorCurveEdit_cls::MoveSelected(double dPosition, double dValue, bool bLinked, int channel) {
    if (!GetPCCurve() || !IsUnderWay()) return;
    // All keys that move keep their distances.
    std::vector<double> places;
    for (const auto& before : mVBefore)
        for (const KeyFrame_cls& key : before->GetKeys())
            if (key.mbSelected) places.push_back(key.mDoubleIndex);
    if (places.empty()) return;
    const auto range = std::minmax_element(places.begin(), places.end());
    dPosition = std::clamp(dPosition, std::min(0.0, -*range.first), std::max(0.0, 1.0 - *range.second));
    const bool bMoves = std::fabs(dPosition) >= kGrid / 2;
    AllKeys keys;
    for (size_t c = 0; c < kChannelNumber; ++c) {
        Keys moved;
        Keys still;
        for (KeyFrame_cls key : mVBefore[c]->GetKeys()) {
            const bool bAlong = bLinked && std::any_of(places.begin(), places.end(), [&](double place) {
                                    return IsNear(place, key.mDoubleIndex);
                                });
            if (!key.mbSelected && !bAlong) {
                still.push_back(key);
                continue;
            }
            if (bMoves) key.mDoubleIndex = ToGrid(key.mDoubleIndex + dPosition);
            const bool bValue = channel < 0 || channel == static_cast<int>(c);
            if (key.mbSelected && bValue && dValue != 0.0)
                key.mValue = Bound(ToGrid(key.mValue + dValue), key.mValue);
            moved.push_back(key);
        }
        for (const KeyFrame_cls& key : still)
            if (std::none_of(moved.begin(), moved.end(), [&](const KeyFrame_cls& other) {
                    return std::fabs(other.mDoubleIndex - key.mDoubleIndex) < kGrid / 2;
                }))
                keys[c].push_back(key);
        keys[c].insert(keys[c].end(), moved.begin(), moved.end());
    }
    Show(keys);
}

void ColorCurveEdit_cls::SetTangent(int channel, int key, double slope) {
    if (!GetPCCurve() || !IsUnderWay() || !std::isfinite(slope)) return;
    AllKeys keys = GetKeys();
    Keys& of = keys[static_cast<size_t>(channel)];
    if (key < 0 || key >= static_cast<int>(of.size())) return;
    KeyFrame_cls& turned = of[static_cast<size_t>(key)];
    // What is worked out would not stay; a straight segment behind the key stays straight.
    if (turned.mInterpType == INTERP_HERMITE_AUTO || turned.mInterpType == INTERP_HERMITE_SEMIAUTO)
        turned.mInterpType = INTERP_HERMITE;
    turned.mValueD1 = slope;
    Show(keys);
}

void ColorCurveEdit_cls::Commit() {
    if (!IsUnderWay()) return;
    const auto before = std::move(mVBefore);
    mVBefore.clear();
    if (!GetPCCurve()) return;
    const AllKeys keys = GetKeys();
    for (int c = 0; c < kChannelNumber; ++c)
        Channel(c).CopyCurveFromP(*before[static_cast<size_t>(c)]);
    Perform(keys);
}

void ColorCurveEdit_cls::Cancel() {
    for (int c = 0; GetPCCurve() && IsUnderWay() && c < kChannelNumber; ++c)
        Channel(c).CopyCurveFromP(*mVBefore[static_cast<size_t>(c)]);
    mVBefore.clear();
    PostUpdateEvents(ColorCurve_cls::kUpdateMask);
}

void ColorCurveEdit_cls::EndGesture() {
    Commit();
    ColorCurve_cls* pCurve = GetPCCurve();
    if (pCurve && mSettingsBefore) SetSettings(pCurve->GetSettings(), true);
    mSettingsBefore.reset();
}

// A memento for each channel that changes: keys of a curve don't keep to the film's grid, by which steps on
// single keys find them again.
bool ColorCurveEdit_cls::Perform(const AllKeys& keys) {
    if (!GetPCCurve()) return false;
    const UndoBlock_cls block;
    bool bAny = false;
    for (int c = 0; c < kChannelNumber; ++c) {
        Parameters_cls& param = Channel(c);
        const Parameters_cls before(param);
        mpCCurve->SetChannelKeys(c, keys[static_cast<size_t>(c)]);
        const auto& now = param.GetKeys();
        const auto& old = before.GetKeys();
        if (now.size() == old.size() && std::equal(now.begin(), now.end(), old.begin(), IsSameKey)) continue;
        const Parameters_cls after(param);
        param.CopyCurveFromP(before);
        param.CopyParameterFromP(&after);
        bAny = true;
    }
    return bAny;
}

bool ColorCurveEdit_cls::InsertKey(int channel, double position) {
    EndGesture();
    if (!GetPCCurve() || !std::isfinite(position)) return false;
    AllKeys keys = GetKeys();
    const double place = std::clamp(ToGrid(position), 0.0, 1.0);
    bool bAny = false;
    for (int c = 0; c < kChannelNumber; ++c) {
        Keys& of = keys[static_cast<size_t>(c)];
        for (KeyFrame_cls& key : of)
            key.mbSelected = false;
        if (channel >= 0 && channel != c) continue;
        const auto same = std::find_if(of.begin(), of.end(), [place](const KeyFrame_cls& key) {
            return std::fabs(key.mDoubleIndex - place) < kGrid / 2;
        });
        if (same != of.end()) {
            same->mbSelected = mbShown[c];
            continue;
        }
        // A new key splits its segment and takes over its kind.
        KeyFrame_cls key;
        double terms[4];
        Channel(c).GetPolynomial(place, terms);
        const int left = Channel(c).GetKeyFrameIndexToInsert(place, 0.0) - 1;
        const unsigned kind = of.empty() ? INTERP_LINEAR : of[size_t(std::max(left, 0))].mInterpType;
        key.Set(place, kind, Channel(c).Evaluate(place, 0.0), terms[1], kind == INTERP_HERMITE_SEMIAUTO,
                mbShown[c]);
        of.push_back(key);
        bAny = true;
    }
    Perform(keys);
    return bAny;
}

bool ColorCurveEdit_cls::DeleteSelected() {
    EndGesture();
    AllKeys keys = GetKeys();
    for (Keys& of : keys) {
        Keys left;
        std::copy_if(of.begin(), of.end(), std::back_inserter(left),
                     [](const KeyFrame_cls& key) { return !key.mbSelected; });
        if (left.empty() && !of.empty()) left.push_back(of.front());
        of = std::move(left);
    }
    return Perform(keys);
}

bool ColorCurveEdit_cls::SetKind(unsigned kind) {
    EndGesture();
    AllKeys keys = GetKeys();
    for (Keys& of : keys)
        for (KeyFrame_cls& key : of)
            if (key.mbSelected) {
                // An ease factor of 0 would make all semiautomatic tangents flat.
                if (kind == INTERP_HERMITE_SEMIAUTO && key.mInterpType != kind) key.mValueD2 = 1.0;
                key.mInterpType = kind;
            }
    return Perform(keys);
}

bool ColorCurveEdit_cls::SetSelectedPosition(double position, bool bLinked) {
    double place = 0.0;
    if (!GetSelected(&place, nullptr, nullptr)) return false;
    Begin();
    MoveSelected(position - place, 0.0, bLinked);
    Commit();
    return true;
}

bool ColorCurveEdit_cls::SetSelectedValue(int channel, double value) {
    EndGesture();
    AllKeys keys = GetKeys();
    for (KeyFrame_cls& key : keys[static_cast<size_t>(channel)])
        if (key.mbSelected) key.mValue = value;
    return Perform(keys);
}

bool ColorCurveEdit_cls::SetStopColor(double position, const float* pColor, bool bAlpha) {
    EndGesture();
    if (!GetPCCurve()) return false;
    AllKeys keys = GetKeys();
    for (size_t c = 0; c < (bAlpha ? 4u : 3u); ++c) {
        if (!mbShown[c]) continue; // what isn't seen isn't meant
        Keys& of = keys[c];
        const double value = static_cast<double>(pColor[c]);
        const auto same = std::find_if(of.begin(), of.end(), [position](const KeyFrame_cls& key) {
            return IsNear(key.mDoubleIndex, position);
        });
        if (same != of.end()) {
            same->mValue = value;
            continue;
        }
        KeyFrame_cls key;
        const int left = Channel(static_cast<int>(c)).GetKeyFrameIndexToInsert(position, 0.0) - 1;
        key.Set(position, of[size_t(std::max(left, 0))].mInterpType, value, 0.0, 1.0, false);
        of.push_back(key);
    }
    return Perform(keys);
}

void ColorCurveEdit_cls::ShowChannel(int channel, bool bShow) {
    mbShown[channel] = bShow;
    if (!bShow && GetPCCurve()) Channel(channel).DeselectAll();
}

std::vector<double> ColorCurveEdit_cls::GetStops() const {
    std::vector<double> stops;
    for (const Keys& of : GetKeys())
        for (const KeyFrame_cls& key : of)
            stops.push_back(key.mDoubleIndex);
    std::sort(stops.begin(), stops.end());
    stops.erase(std::unique(stops.begin(), stops.end(), IsNear), stops.end());
    return stops;
}

bool ColorCurveEdit_cls::IsStopSelected(double position) const {
    for (const Keys& of : GetKeys())
        for (const KeyFrame_cls& key : of)
            if (key.mbSelected && IsNear(key.mDoubleIndex, position)) return true;
    return false;
}

void ColorCurveEdit_cls::SelectStop(double position, bool bAdd, bool bToggle) {
    if (!GetPCCurve()) return;
    const bool bSelect = !(bToggle && IsStopSelected(position));
    if (!bAdd && !bToggle) SelectAll(false);
    for (int c = 0; c < kChannelNumber; ++c)
        for (int k = 0; k < Channel(c).GetKeyNumber(); ++k)
            if (IsNear(Channel(c).GetKeyFrameDoubleIndex(k), position))
                Channel(c).SelectKey(k, bSelect && mbShown[c]);
}

void ColorCurveEdit_cls::SelectKey(int channel, int key, bool bAdd, bool bToggle) {
    if (!GetPCCurve() || key < 0 || key >= Channel(channel).GetKeyNumber()) return;
    const bool bSelected = Channel(channel).GetKeys()[static_cast<size_t>(key)].mbSelected;
    if (!bAdd && !bToggle) SelectAll(false);
    Channel(channel).SelectKey(key, !(bToggle && bSelected));
}

void ColorCurveEdit_cls::SelectAll(bool bSelect) {
    for (int c = 0; GetPCCurve() && c < kChannelNumber; ++c)
        for (int k = 0; k < Channel(c).GetKeyNumber(); ++k)
            Channel(c).SelectKey(k, bSelect && mbShown[c]);
}

int ColorCurveEdit_cls::GetSelectedCount() const {
    int count = 0;
    for (const Keys& of : GetKeys())
        count += static_cast<int>(
            std::count_if(of.begin(), of.end(), [](const KeyFrame_cls& key) { return key.mbSelected; }));
    return count;
}

bool ColorCurveEdit_cls::GetSelected(double* pPosition, double* pValue, unsigned* pKind) const {
    const KeyFrame_cls* pFirst = nullptr;
    const AllKeys keys = GetKeys();
    for (const Keys& of : keys)
        for (const KeyFrame_cls& key : of)
            if (key.mbSelected && (!pFirst || key.mDoubleIndex < pFirst->mDoubleIndex - kSame)) pFirst = &key;
    if (!pFirst) return false;
    if (pPosition) *pPosition = pFirst->mDoubleIndex;
    if (pValue) *pValue = pFirst->mValue;
    if (pKind) *pKind = pFirst->mInterpType;
    return true;
}

bool ColorCurveEdit_cls::GetSelectedValue(int channel, double* pValue) const {
    if (!GetPCCurve()) return false;
    const Keys& keys = Channel(channel).GetKeys();
    const auto first =
        std::find_if(keys.begin(), keys.end(), [](const KeyFrame_cls& key) { return key.mbSelected; });
    if (first != keys.end()) *pValue = first->mValue;
    return first != keys.end();
}
