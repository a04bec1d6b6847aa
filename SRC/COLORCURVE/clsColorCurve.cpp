#include "COLORCURVE/clsColorCurve.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "COMMON/UpdateBits.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"

const long long ColorCurve_cls::kUpdateMask = UPDATE_SNAPDATA | UPDATE_COLOR | UPDATE_GL | UPDATE_ATTRIB;

namespace {

constexpr int kChannelNumber = 4;
const wxString kSuffix[kChannelNumber] = {"R", "G", "B", "A"};

/// Edits leave no steps for the length of a scope.
class NoSteps_cls {
public:
    NoSteps_cls() : mbWas(std::exchange(Parameters_cls::msbUndoCommandMake, false)) {}
    ~NoSteps_cls() { Parameters_cls::msbUndoCommandMake = mbWas; }
    NoSteps_cls(const NoSteps_cls&) = delete;
    NoSteps_cls& operator=(const NoSteps_cls&) = delete;

private:
    bool mbWas;
};

} // namespace

ColorCurve_cls::ColorCurve_cls(const wxString& id, const wxString& label, const wxString& constantColor,
                               int keyCount, const double (*pKeys)[5])
    : mID(id), mLabel(label), mpCParamGroup(std::make_unique<ParamGroup_cls>(
                                  id + " ColorCurve", kChannelNumber, kSuffix, kUpdateMask, true)) {
    mConfList.Add(&mbUseColorCurve, mID + "UseColorCurve=", "0");
    mConfList.Add(&mConstantColor, mID + "ConstantColor=", constantColor);
    mConfList.Add(&mScalingMin, mID + "ScalingMin=", "0");
    mConfList.Add(&mScalingMax, mID + "ScalingMax=", "1");
    mConfList.Add(&mDependType, mID + "DependType=", "0");
    std::vector<Key> keys;
    for (int k = 0; k < keyCount; ++k)
        keys.push_back({pKeys[k][0], pKeys[k][1], pKeys[k][2], pKeys[k][3], pKeys[k][4]});
    if (!keys.empty()) {
        SetKeys(std::move(keys));
        return;
    }
    const NoSteps_cls quiet;
    const double green[kChannelNumber] = {0, 1, 0, 1};
    const double red[kChannelNumber] = {1, 0, 0, 1};
    mpCParamGroup->SetKeyFrame(green, true, ParamGroup_cls::kCurrent);
    mpCParamGroup->SetKeyFrame(red, true, 1.0);
}

ColorCurve_cls::~ColorCurve_cls() = default;

// Straight to the curves: the film's grid, on which keys of a short film would fall together, has nothing to
// say here.
void ColorCurve_cls::SetKeys(std::vector<Key> keys) {
    keys.erase(
        std::remove_if(keys.begin(), keys.end(), [](const Key& key) { return !std::isfinite(key[0]); }),
        keys.end());
    if (keys.empty()) return;
    for (size_t c = 0; c < kChannelNumber; ++c) {
        std::vector<KeyFrame_cls> channel(keys.size());
        for (size_t k = 0; k < keys.size(); ++k)
            channel[k].Set(keys[k][0], INTERP_LINEAR, keys[k][c + 1], 0.0, 0.0, false);
        SetChannelKeys(static_cast<int>(c), channel);
    }
}

void ColorCurve_cls::SetChannelKeys(int channel, const std::vector<KeyFrame_cls>& keys) {
    if (keys.empty() || channel < 0 || channel >= kChannelNumber) return;
    Parameters_cls& param = mpCParamGroup->mVParams[static_cast<size_t>(channel)];
    param.ExecCommandInitSet(0.0);
    for (size_t k = 0; k < keys.size(); ++k)
        k == 0 ? param.ExecCommandOvwtKey(0, keys[k]) : param.ExecCommandSetKey(keys[k]);
}

void ColorCurve_cls::PreCalcScaleFactor() {
    mScaleOffset = mScalingMin.mValue;
    mScaleRange = mScalingMax.mValue - mScalingMin.mValue;
    if (mScaleRange == 0.0f) {
        mScalingMax.mValue = mScalingMin.mValue + 1.0f;
        mScaleRange = 1.0f;
    }
}

void ColorCurve_cls::GetColor4fScaled(float* pOut, float x) const {
    GetColor4fNormal(pOut, (x - mScaleOffset) / mScaleRange);
}

void ColorCurve_cls::GetColor4fNormal(float* pOut, float x) const {
    if (IsConstant()) {
        std::copy_n(mConstantColor.mValue, kChannelNumber, pOut);
        return;
    }
    GetCurveColor(pOut, x);
}

void ColorCurve_cls::GetCurveColor(float* pOut, float x) const {
    // Resolution 0: a scalar is never drawn to a key that lies near.
    for (const Parameters_cls& param : mpCParamGroup->mVParams)
        *pOut++ = static_cast<float>(param.Evaluate(x, 0.0));
}

void ColorCurve_cls::Flip() { mpCParamGroup->Flip(); }

void ColorCurve_cls::SwapRGB() { mpCParamGroup->Swap(3); }

void ColorCurve_cls::CopyColorFromP(const ColorCurve_cls* pSrc, bool bCurveOnly) {
    const UndoBlock_cls block(Parameters_cls::msbUndoCommandMake);
    mpCParamGroup->CopyFromP(pSrc->mpCParamGroup.get());
    if (bCurveOnly) return;
    if (Parameters_cls::msbUndoCommandMake)
        SetSettingsCommand(pSrc->GetSettings(), GetSettings());
    else
        SetSettings(pSrc->GetSettings());
}

bool ColorSettings_st::operator==(const ColorSettings_st& other) const {
    return mbUseCurve == other.mbUseCurve && mConstant == other.mConstant &&
           mScalingMin == other.mScalingMin && mScalingMax == other.mScalingMax &&
           mDependType == other.mDependType;
}

ColorSettings_st ColorCurve_cls::GetSettings() const {
    ColorSettings_st settings;
    settings.mbUseCurve = mbUseColorCurve.mValue;
    std::copy_n(mConstantColor.mValue, kChannelNumber, settings.mConstant.begin());
    settings.mScalingMin = mScalingMin.mValue;
    settings.mScalingMax = mScalingMax.mValue;
    settings.mDependType = mDependType.mValue;
    return settings;
}

// The keys of the items carry the owner's prefix and so stay; only values go over.
void ColorCurve_cls::SetSettings(const ColorSettings_st& settings) {
    mbUseColorCurve.mValue = settings.mbUseCurve;
    std::copy(settings.mConstant.begin(), settings.mConstant.end(), mConstantColor.mValue);
    mScalingMin.mValue = settings.mScalingMin;
    mScalingMax.mValue = settings.mScalingMax;
    mDependType.mValue = settings.mDependType;
}

void ColorCurve_cls::SetSettingsCommand(const ColorSettings_st& settings, const ColorSettings_st& before) {
    const auto make = [this](const ColorSettings_st& value) {
        return new CommandCall_cls(
            [this, value, life = GetLife()] {
                if (!life.expired()) SetSettings(value);
            },
            kUpdateMask);
    };
    GCUndoList.PushNewCommand(make(settings), make(before));
    GCUndoList.ExecCurrent();
}

wxString ColorCurve_cls::Serialize() const {
    ConfItemList_cls list = mConfList;
    return list.SerializeAll() + mpCParamGroup->Serialize();
}

bool ColorCurve_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    return mConfList.ReadStrLineAll(line) || mpCParamGroup->ReadStrLine(stream, line);
}
