#include "COLORCURVE/clsColorCurve.h"

#include <algorithm>
#include <cmath>

#include <wx/tokenzr.h>

#include "CONFITEM/ConfNumber.h"

namespace {

constexpr size_t kKeySize = std::tuple_size<ColorCurve_cls::Key>::value;

unsigned char ToByte(double value) {
    return value > 0.0 ? static_cast<unsigned char>(std::min(value, 255.0)) : 0; // nothing for a NaN
}

} // namespace

ColorCurve_cls::ColorCurve_cls(const wxString& id, const wxString& label, const wxString& constantColor,
                               int keyCount, const double (*pKeys)[5])
    : mID(id), mLabel(label) {
    mConfList.Add(&mbUseColorCurve, mID + "UseColorCurve=", "0");
    mConfList.Add(&mConstantColor, mID + "ConstantColor=", constantColor);
    mConfList.Add(&mScalingMin, mID + "ScalingMin=", "0");
    mConfList.Add(&mScalingMax, mID + "ScalingMax=", "1");
    mConfList.Add(&mDependType, mID + "DependType=", "0");
    std::vector<Key> keys;
    for (int k = 0; k < keyCount; ++k)
        keys.push_back({pKeys[k][0], pKeys[k][1], pKeys[k][2], pKeys[k][3], pKeys[k][4]});
    if (keys.empty()) keys = {{0, 0, 1, 0, 1}, {1, 1, 0, 0, 1}};
    SetKeys(std::move(keys));
}

void ColorCurve_cls::SetKeys(std::vector<Key> keys) {
    keys.erase(
        std::remove_if(keys.begin(), keys.end(), [](const Key& key) { return !std::isfinite(key[0]); }),
        keys.end());
    if (keys.empty()) return;
    std::stable_sort(keys.begin(), keys.end(), [](const Key& a, const Key& b) { return a[0] < b[0]; });
    mKeys = std::move(keys);
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
        std::copy_n(mConstantColor.mValue, 4, pOut);
        return;
    }
    const auto after = std::find_if(mKeys.begin(), mKeys.end(), [x](const Key& key) { return key[0] > x; });
    if (after == mKeys.begin() || after == mKeys.end()) {
        const Key& end = after == mKeys.end() ? mKeys.back() : mKeys.front();
        for (size_t c = 0; c < 4; ++c)
            pOut[c] = static_cast<float>(end[c + 1]);
        return;
    }
    const Key& low = *(after - 1);
    const double t = (x - low[0]) / ((*after)[0] - low[0]);
    for (size_t c = 1; c <= 4; ++c)
        pOut[c - 1] = static_cast<float>(low[c] + t * ((*after)[c] - low[c]));
}

wxColour ColorCurve_cls::GetWXColor(const wxColour& background, double x, bool bOpaque) const {
    float color[4];
    GetColor4fNormal(color, static_cast<float>(x));
    const double alpha = bOpaque ? 1.0 : static_cast<double>(color[3]);
    const auto mix = [&](unsigned char back, float value) {
        return ToByte(back + (255.0 * static_cast<double>(value) - back) * alpha);
    };
    return wxColour(mix(background.Red(), color[0]), mix(background.Green(), color[1]),
                    mix(background.Blue(), color[2]));
}

void ColorCurve_cls::Flip() {
    std::vector<Key> keys = mKeys;
    for (Key& key : keys)
        key[0] = 1.0 - key[0];
    std::reverse(keys.begin(), keys.end());
    SetKeys(std::move(keys));
}

void ColorCurve_cls::SwapRGB() {
    for (Key& key : mKeys)
        std::rotate(key.begin() + 1, key.begin() + 2, key.begin() + 4);
}

void ColorCurve_cls::CopyColorFromP(const ColorCurve_cls* pSrc, bool bCurveOnly) {
    SetKeys(pSrc->mKeys);
    if (bCurveOnly) return;
    // The keys of the items carry the owner's prefix and so stay; only values go over.
    mbUseColorCurve.mValue = pSrc->mbUseColorCurve.mValue;
    std::copy_n(pSrc->mConstantColor.mValue, 4, mConstantColor.mValue);
    mScalingMin.mValue = pSrc->mScalingMin.mValue;
    mScalingMax.mValue = pSrc->mScalingMax.mValue;
    mDependType.mValue = pSrc->mDependType.mValue;
}

wxString ColorCurve_cls::Serialize() const {
    ConfItemList_cls list = mConfList;
    wxString text = list.SerializeAll() + mID + "ColorKeys=";
    for (const Key& key : mKeys)
        for (const double number : key) {
            if (text.Last() != '=') text += ' ';
            text += ConfNumberToText(number);
        }
    return text + "\n";
}

bool ColorCurve_cls::ReadStrLine(std::wistream& /*stream*/, const wxString& line) {
    wxString keys;
    if (line.StartsWith(mID + "ColorKeys=", &keys)) return ReadKeys(keys);
    return mConfList.ReadStrLineAll(line);
}

bool ColorCurve_cls::ReadKeys(const wxString& text) {
    std::vector<double> numbers;
    wxStringTokenizer words(text);
    while (words.HasMoreTokens())
        numbers.push_back(ConfNumberFromText<double>(words.GetNextToken()));
    std::vector<Key> keys;
    for (size_t k = 0; k + kKeySize <= numbers.size(); k += kKeySize) {
        Key key;
        std::copy_n(numbers.begin() + static_cast<std::ptrdiff_t>(k), kKeySize, key.begin());
        keys.push_back(key);
    }
    SetKeys(std::move(keys));
    return true;
}
