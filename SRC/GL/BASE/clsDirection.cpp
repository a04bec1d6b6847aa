#include "GL/BASE/clsDirection.h"

#include <algorithm>
#include <cmath>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/DisplayMode.h"

namespace {

void Set3(double* v, double x, double y, double z) {
    v[0] = x;
    v[1] = y;
    v[2] = z;
}

double Clamp1(double value) { return std::clamp(value, -1.0, 1.0); }

bool AreParallel(const double* a, const double* b) {
    double unit[3] = {a[0], a[1], a[2]}, rest[3] = {b[0], b[1], b[2]};
    return !MyVector::Normalize(unit) || !MyVector::Normalize(rest) || !MyVector::Orthogonalize(unit, rest);
}

// Counts a jump of an angle across its seam and gives the angle with its full turns.
double CountTurns(double angle, double& previous, int& turns, bool bTrack) {
    if (bTrack && angle - previous > 180.0) --turns;
    if (bTrack && angle - previous < -180.0) ++turns;
    previous = angle;
    return angle + 360.0 * turns;
}

} // namespace

void Direction_cls::NormalizeAndOrthogonalize() {
    // Up is brought to unit length first, so that what counts as parallel does not depend on its size.
    const bool bValid = MyVector::Normalize(mFront) && MyVector::Normalize(mUp) &&
                        MyVector::Orthogonalize(mFront, mUp) && MyVector::Normalize(mUp);
    if (!bValid) {
        Set3(mFront, 0, 0, -1);
        Set3(mUp, 0, 1, 0);
    }
    MyVector::GetCrossedVector(mFront, mUp, mRight);
}

void Direction_cls::Setv(const double* front, const double* up) {
    std::copy(front, front + 3, mFront);
    std::copy(up, up + 3, mUp);
    NormalizeAndOrthogonalize();
}

void Direction_cls::SetDirection(int mode) {
    if (!IsAxisMode(mode)) return;
    const int way = mode - DISPLAY_TO_PLUS_X;
    const int axis = way / 2;
    double front[3] = {0, 0, 0};
    front[axis] = way % 2 == 0 ? 1 : -1;
    const double upZ[3] = {0, 0, 1}, upY[3] = {0, 1, 0};
    Setv(front, axis == 2 ? upY : upZ);
}

void Direction_cls::RejectInvalidDirection() {
    if (!AreParallel(mFront, mUp)) return;
    Set3(mUp, 1, 0, 0);
    if (AreParallel(mFront, mUp)) Set3(mUp, 0, 1, 0);
}

void Direction_cls::UpdateYPR(bool bTrack) {
    const double pitch = std::asin(Clamp1(-mFront[2]));
    // Looking straight up or down leaves roll undefined: none then.
    const double level = std::cos(pitch);
    const double tilt = level > 1e-9 ? std::asin(Clamp1(mRight[2] / level)) : 0.0;
    const double roll = mUp[2] < 0 ? tilt + MyVector::PI : -tilt;
    const double yaw = std::atan2(-mFront[1], -mFront[0]) + MyVector::PI;
    mYaw = CountTurns(MyVector::ToDegrees(yaw), mPrevYaw, mTurnYaw, bTrack);
    mPitch = mPrevPitch = MyVector::ToDegrees(pitch);
    mRoll = CountTurns(MyVector::ToDegrees(roll), mPrevRoll, mTurnRoll, bTrack);
}

void Direction_cls::RotateYaw(double angle) {
    MyVector::RotateAround(mFront, mUp, angle);
    MyVector::RotateAround(mRight, mUp, angle);
    NormalizeAndOrthogonalize();
}

void Direction_cls::RotatePitch(double angle) {
    MyVector::RotateAround(mFront, mRight, -angle);
    MyVector::RotateAround(mUp, mRight, -angle);
    NormalizeAndOrthogonalize();
}

void Direction_cls::RotateRoll(double angle) {
    MyVector::RotateAround(mUp, mFront, angle);
    MyVector::RotateAround(mRight, mFront, angle);
    NormalizeAndOrthogonalize();
}

void Direction_cls::RotateYPR(double yaw, double pitch, double roll) {
    RotateYaw(yaw);
    RotatePitch(pitch);
    RotateRoll(roll);
}

bool Direction_cls::operator==(const Direction_cls& other) const {
    return std::equal(mFront, mFront + 3, other.mFront) && std::equal(mUp, mUp + 3, other.mUp) &&
           std::equal(mRight, mRight + 3, other.mRight);
}
