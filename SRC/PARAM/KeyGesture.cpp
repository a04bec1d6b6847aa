#include "PARAM/KeyGesture.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "PARAM/clsParameters.h"

namespace {

constexpr double kSamePlace = 1.0; // pixels that no hand tells apart

} // namespace

void KeyPicker_cls::OfferKey(int curve, int key, double x, double y, bool bSelected) {
    const double pixels = std::hypot(x - mX, y - mY);
    const double away = pixels - (bSelected ? kSamePlace : 0.0);
    if (!(pixels <= mReach) || (mKey.IsAny() && away > mKeyAway)) return;
    mKey = {curve, key, 0};
    mKeyAway = away;
    mKeyPixels = pixels;
}

void KeyPicker_cls::OfferHandle(int curve, int key, int side, double x, double y) {
    const double pixels = std::hypot(x - mX, y - mY);
    if (!(pixels <= mReach) || (mHandle.IsAny() && pixels > mHandleAway)) return;
    mHandle = {curve, key, side};
    mHandleAway = pixels;
}

KeyHit KeyPicker_cls::GetHit(bool bKeyFirst) const {
    if (!mHandle.IsAny() || !mKey.IsAny()) return mKey.IsAny() ? mKey : mHandle;
    return bKeyFirst || mKeyPixels < mHandleAway - kSamePlace ? mKey : mHandle;
}

KeyGesture_cls::Pick KeyGesture_cls::Press(const KeyPoint& at, const KeyHit& hit, bool bSelected, bool bShift,
                                           bool bCtrl, bool bAlt) {
    mFrom = mTo = at;
    mHit = hit;
    mbSelected = bSelected;
    mbToggle = bCtrl;
    mbAdd = bShift || bCtrl;
    mbCopy = bAlt;
    mState = !hit.IsAny() ? State::GROUND : hit.mSide != 0 ? State::HANDLE : State::KEY;
    if (mState != State::KEY) return Pick::KEEP;
    if (mbToggle) return Pick::TOGGLE;
    if (mbAdd) return Pick::ADD;
    return bSelected ? Pick::KEEP : Pick::ALONE; // a drag moves all that is selected
}

void KeyGesture_cls::Grip(const KeyPoint& at) {
    mFrom = mTo = at;
    mHit = KeyHit();
    mState = State::GRIP;
}

bool KeyGesture_cls::Drag(const KeyPoint& to, int threshold) {
    mTo = to;
    State drag = State::NONE;
    switch (mState) {
    case State::KEY:
        drag = State::MOVE;
        break;
    case State::HANDLE:
        drag = State::TURN;
        break;
    case State::GROUND:
        drag = State::BAND;
        break;
    case State::GRIP:
        drag = State::PAN;
        break;
    default:
        return false;
    }
    if (std::max(std::abs(to.mX - mFrom.mX), std::abs(to.mY - mFrom.mY)) < threshold) return false;
    mState = drag;
    return true;
}

KeyGesture_cls::State KeyGesture_cls::Release(Pick* pPick) {
    *pPick = Pick::KEEP;
    if (mState == State::KEY && !mbAdd && mbSelected) *pPick = Pick::ALONE;
    if (mState == State::GROUND && !mbAdd) *pPick = Pick::CLEAR;
    return Cancel();
}

KeyGesture_cls::State KeyGesture_cls::Cancel() { return std::exchange(mState, State::NONE); }

KeyPoint KeyGesture_cls::GetWay(bool bOneAxis) const {
    KeyPoint way = {mTo.mX - mFrom.mX, mTo.mY - mFrom.mY};
    if (bOneAxis) (std::abs(way.mX) >= std::abs(way.mY) ? way.mY : way.mX) = 0;
    return way;
}

void KeyBand_cls::Begin(const std::vector<Parameters_cls*>& curves) {
    mVKept.clear();
    for (Parameters_cls* curve : curves) {
        std::vector<bool> bits;
        for (const KeyFrame_cls& key : curve->GetKeys())
            bits.push_back(key.mbSelected);
        mVKept.emplace_back(curve, std::move(bits));
    }
}

void KeyBand_cls::Select(const KeyGesture_cls& gesture, const Inside& inside) const {
    for (const auto& [curve, bits] : mVKept) {
        if (!Parameters_cls::IsAlive(curve)) continue;
        const int count = std::min(int(bits.size()), curve->GetKeyNumber());
        for (int i = 0; i < count; ++i) {
            const bool bWas = gesture.IsAdding() && bits[size_t(i)];
            curve->SelectKey(i, inside(*curve, i) ? !(gesture.IsToggling() && bWas) : bWas);
        }
    }
}

void KeyBand_cls::Restore() const {
    for (const auto& [curve, bits] : mVKept)
        for (int i = 0; Parameters_cls::IsAlive(curve) && i < int(bits.size()); ++i)
            curve->SelectKey(i, bits[size_t(i)]);
}
