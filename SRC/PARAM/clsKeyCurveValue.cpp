// The curve that the keys make: its value, its tangents and its text in scene language.
#include "PARAM/clsKeyCurve.h"

#include <algorithm>
#include <cmath>

#include "CONFITEM/ConfNumber.h"

namespace {

bool IsHermite(const KeyFrame_cls& key) {
    return key.mInterpType >= INTERP_HERMITE_AUTO && key.mInterpType <= INTERP_HERMITE;
}

double Tangent(const KeyFrame_cls& key) {
    return key.mInterpType == INTERP_HERMITE_SEMIAUTO ? key.mValueD1 * key.mValueD2 : key.mValueD1;
}

/// Coefficients of the cubic between two keys, y1 being the value to arrive at.
struct Cubic_st {
    Cubic_st(const KeyFrame_cls& left, const KeyFrame_cls& right, double y1) {
        const double dt = right.mDoubleIndex - left.mDoubleIndex;
        const double y0 = left.mValue;
        mC1 = dt * Tangent(left);
        const double b = dt * Tangent(right);
        mC2 = -3 * y0 - 2 * mC1 + 3 * y1 - b;
        mC3 = 2 * y0 - 2 * y1 + mC1 + b;
    }
    double mC1;
    double mC2;
    double mC3;
};

constexpr double kFewPeriods = 4.0;

double PeriodsBetween(double y0, double y1, double period) { return std::trunc((y1 - y0) / period); }

/// Takes whole periods off a distance that no loop should have to walk. What the digits of a huge value lose
/// in one go is many periods again.
double NearTo(double y0, double y1, double period) {
    for (int round = 0; round < 64; ++round) {
        const double periods = PeriodsBetween(y0, y1, period);
        if (!(std::fabs(periods) > kFewPeriods)) break;
        y1 -= period * periods;
    }
    return y1;
}

} // namespace

double KeyCurve_cls::GetValue1Periodic(double y0, double y1, double period) {
    if (!(period > 0.0) || !std::isfinite(y0) || !std::isfinite(y1)) return y1;
    const bool bAbove = y1 > y0;
    y1 = NearTo(y0, y1, period);
    // Beyond the reach of a double's digits a period changes nothing.
    if (y1 - period == y1 || y0 - period == y0) return y0;
    if (!(std::fabs(PeriodsBetween(y0, y1, period)) <= kFewPeriods)) return y0;
    if (bAbove) {
        double low = y1;
        while (low > y0)
            low -= period;
        const double high = low + period;
        return y0 - low > high - y0 ? high : low;
    }
    double high = y1;
    while (y0 > high)
        high += period;
    return high - y0 > y0 - high + period ? high - period : high;
}

double KeyCurve_cls::ValueFor(double y0, double y1) const {
    return mPeriodic.mValue > 0 ? GetValue1Periodic(y0, y1, mPeriodic.mValue) : y1;
}

double KeyCurve_cls::Evaluate(double doubleIndex, double resolution) const {
    const size_t n = mVKeys.size();
    if (n == 0) return 0.0;
    const KeyFrame_cls* keys = mVKeys.data();
    if (!mbTimeDepend.mValue || doubleIndex <= keys[0].mDoubleIndex) return keys[0].mValue;
    if (n == 1 || doubleIndex >= keys[n - 1].mDoubleIndex) return keys[n - 1].mValue;
    const KeyFrame_cls* pLeft = FindSegment(doubleIndex, resolution / 2);
    return pLeft ? InSegment(pLeft, doubleIndex) : keys[n - 1].mValue;
}

// The left key of the segment behind key 0; null behind the last key.
const KeyFrame_cls* KeyCurve_cls::FindSegment(double doubleIndex, double half) const {
    // The right end of the segment: the first key, not counting key 0, that lies more than half a
    // resolution ahead. So the last bit before a key already belongs to the segment behind it.
    const KeyFrame_cls* keys = mVKeys.data();
    const size_t n = mVKeys.size();
    size_t right = 1;
    for (size_t length = n - 1; length > 0;) {
        const size_t middle = length / 2;
        const bool bAhead = keys[right + middle].mDoubleIndex - half > doubleIndex;
        right = bAhead ? right : right + middle + 1;
        length = bAhead ? middle : length - middle - 1;
    }
    return right == n ? nullptr : keys + right - 1;
}

void KeyCurve_cls::GetPolynomial(double doubleIndex, double* pC) const {
    std::fill_n(pC, 4, 0.0);
    const size_t n = mVKeys.size();
    const bool bConstant = n < 2 || !mbTimeDepend.mValue || doubleIndex < mVKeys[0].mDoubleIndex ||
                           doubleIndex >= mVKeys[n - 1].mDoubleIndex;
    const KeyFrame_cls* pLeft = bConstant ? nullptr : FindSegment(doubleIndex, 0.0);
    if (!pLeft || pLeft->mInterpType == INTERP_STEP) {
        pC[0] = pLeft ? pLeft->mValue : Evaluate(doubleIndex, 0.0);
        return;
    }
    const double dt = pLeft[1].mDoubleIndex - pLeft[0].mDoubleIndex;
    const double rate = (doubleIndex - pLeft[0].mDoubleIndex) / dt;
    const double y0 = pLeft[0].mValue;
    const double y1 = ValueFor(y0, pLeft[1].mValue);
    if (!IsHermite(*pLeft)) {
        pC[0] = y0 + rate * (y1 - y0);
        pC[1] = (y1 - y0) / dt;
        return;
    }
    // The same cubic, developed around another place.
    const Cubic_st cubic(pLeft[0], pLeft[1], y1);
    pC[0] = y0 + rate * (cubic.mC1 + rate * (cubic.mC2 + rate * cubic.mC3));
    pC[1] = (cubic.mC1 + rate * (2 * cubic.mC2 + rate * 3 * cubic.mC3)) / dt;
    pC[2] = (cubic.mC2 + 3 * rate * cubic.mC3) / (dt * dt);
    pC[3] = cubic.mC3 / (dt * dt * dt);
}

void KeyCurve_cls::EvaluateMany(const double* pTimes, size_t count, double resolution, double* pOut) const {
    const size_t n = mVKeys.size();
    const KeyFrame_cls* keys = mVKeys.data();
    const double half = resolution / 2;
    size_t i = 0;
    if (n < 2 || !mbTimeDepend.mValue) {
        std::fill(pOut, pOut + count, n == 0 ? 0.0 : keys[0].mValue);
        return;
    }
    for (; i < count && pTimes[i] <= keys[0].mDoubleIndex; ++i)
        pOut[i] = keys[0].mValue;
    size_t right = 1;
    while (i < count && pTimes[i] < keys[n - 1].mDoubleIndex) {
        while (right < n && !(keys[right].mDoubleIndex - half > pTimes[i]))
            ++right;
        if (right == n) break;
        // All times of one segment share what is worked out from its two keys.
        const KeyFrame_cls& left = keys[right - 1];
        const double end = keys[right].mDoubleIndex - half;
        const double dt = keys[right].mDoubleIndex - left.mDoubleIndex;
        const double y0 = left.mValue;
        const double y1 = ValueFor(y0, keys[right].mValue);
        const Cubic_st cubic(left, keys[right], y1);
        const bool bStep = left.mInterpType == INTERP_STEP;
        const bool bHermite = IsHermite(left);
        for (; i < count && end > pTimes[i] && pTimes[i] < keys[n - 1].mDoubleIndex; ++i) {
            const double rate = (pTimes[i] - left.mDoubleIndex) / dt;
            const double line = y0 + rate * (y1 - y0);
            const double curve =
                y0 + cubic.mC1 * rate + cubic.mC2 * rate * rate + cubic.mC3 * rate * rate * rate;
            pOut[i] = bStep ? y0 : bHermite ? curve : line;
        }
    }
    for (; i < count; ++i)
        pOut[i] = keys[n - 1].mValue;
}

double KeyCurve_cls::InSegment(const KeyFrame_cls* pKey, double doubleIndex) const {
    const KeyFrame_cls& left = pKey[0];
    const KeyFrame_cls& right = pKey[1];
    const double y0 = left.mValue;
    if (left.mInterpType == INTERP_STEP) return y0;
    const double rate = (doubleIndex - left.mDoubleIndex) / (right.mDoubleIndex - left.mDoubleIndex);
    const double y1 = ValueFor(y0, right.mValue);
    if (!IsHermite(left)) return y0 + rate * (y1 - y0);
    const Cubic_st cubic(left, right, y1);
    return y0 + cubic.mC1 * rate + cubic.mC2 * rate * rate + cubic.mC3 * rate * rate * rate;
}

unsigned int KeyCurve_cls::GetInterpTypeFromDouble(double doubleIndex) const {
    return KeyAt(GetKeyFrameIndexFromDouble(doubleIndex, kCurrent, true)).mInterpType;
}

double KeyCurve_cls::GetHermiteVelocity(int i) const { return Tangent(KeyAt(i)); }

double KeyCurve_cls::CalcVelocity(int i, int j) const {
    if (i == j || !IsIndex(i) || !IsIndex(j)) return 0.0;
    const double dt = KeyAt(j).mDoubleIndex - KeyAt(i).mDoubleIndex;
    if (dt == 0.0) return 0.0;
    return (ValueFor(KeyAt(i).mValue, KeyAt(j).mValue) - KeyAt(i).mValue) / dt;
}

void KeyCurve_cls::SortKey() {
    if (!std::is_sorted(mVKeys.begin(), mVKeys.end(), [](const auto& a, const auto& b) { return b > a; }))
        std::stable_sort(mVKeys.begin(), mVKeys.end(), [](const auto& a, const auto& b) { return b > a; });
}

void KeyCurve_cls::AdjustAutoControl() {
    const int n = GetKeyNumber();
    if (n < 2) return;
    for (int i = 0; i < n; ++i) {
        KeyFrame_cls& key = mVKeys[size_t(i)];
        if (key.mInterpType != INTERP_HERMITE_AUTO && key.mInterpType != INTERP_HERMITE_SEMIAUTO) continue;
        key.mValueD1 = CalcVelocity(std::max(i - 1, 0), std::min(i + 1, n - 1));
        if (key.mInterpType == INTERP_HERMITE_AUTO) key.mValueD2 = key.mValueD1;
    }
}

wxString KeyCurve_cls::GetStrExpression(wxString name) const {
    const int n = GetKeyNumber();
    if (!mbTimeDepend.mValue || n < 2)
        return "#declare " + name + " = " + ConfNumberToText(KeyAt(0).mValue) + ";\n";
    wxString text;
    for (int i = 0; i < n - 1; ++i)
        text += GetStrSegment(i, &name);
    if (KeyAt(n - 1).mDoubleIndex != 1.0)
        text += "#else\n\t#declare " + name + " = " +
                ConfNumberToText(ValueFor(KeyAt(n - 2).mValue, KeyAt(n - 1).mValue)) + ";\n";
    return text + "#end\n";
}

wxString KeyCurve_cls::GetStrSegment(int i, wxString* pName) const {
    const auto number = [](double value) { return ConfNumberToText(value); };
    const KeyFrame_cls& left = KeyAt(i);
    const KeyFrame_cls& right = KeyAt(i + 1);
    const double y1 = ValueFor(left.mValue, right.mValue);
    wxString text = i == 0 ? "#if " : "#elseif ";
    if (i == 0 && left.mDoubleIndex != 0.0)
        text += "(t0 <= " + number(left.mDoubleIndex) + ")\n\t#declare " + *pName + " = " +
                number(left.mValue) + ";\n#elseif ";
    text += "(t0 <= " + number(right.mDoubleIndex) + ")\n";
    text += "\t#declare rate = (t0 - " + number(left.mDoubleIndex) + ")/" +
            number(right.mDoubleIndex - left.mDoubleIndex) + ";\n";
    text += "\t#declare " + *pName + " = ";
    if (left.mInterpType == INTERP_LINEAR) {
        // The pieces of a line go to the name and not to the text: files are expected to look like this.
        *pName += number(left.mValue) + "+ rate * " + number(y1 - left.mValue);
        return text;
    }
    const Cubic_st cubic(left, right, y1);
    return text + number(left.mValue) + " + " + number(cubic.mC1) + "*rate + " + number(cubic.mC2) +
           "*rate*rate + " + number(cubic.mC3) + "*rate*rate*rate;\n";
}
