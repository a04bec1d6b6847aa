#include "GL/BASE/clsPositionAndDirection.h"

#include <algorithm>
#include <cmath>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/MouseSpeed.h"

const bool PositionAndDirection_cls::msbMatrixMove[5][3] = {
    {true, false, false}, {false, true, false}, {false, false, true}, {true, true, true}, {true, true, true}};

namespace {

void AddScaled(double* v, const double* w, double factor) {
    for (int i = 0; i < 3; ++i)
        v[i] += w[i] * factor;
}

void Subtract(const double* a, const double* b, double* out) {
    for (int i = 0; i < 3; ++i)
        out[i] = a[i] - b[i];
}

} // namespace

void PositionAndDirection_cls::SetAncPos(const double* p) { std::copy(p, p + 3, mAnc); }

double PositionAndDirection_cls::GetDistanceToAnc() const { return MyVector::GetNormRelative(mPos, mAnc); }

double PositionAndDirection_cls::GetProjectedDistance(const double* p) const {
    double way[3];
    Subtract(p, mPos, way);
    return std::fabs(MyVector::GetScalarProduct(way, mFront));
}

void PositionAndDirection_cls::TrackBall(double prevX, double prevY, double curX, double curY) {
    constexpr double kTurn = MouseSpeed::kLongestTurn;
    const double dx = std::clamp((curX - prevX) * mSensitivity, -kTurn, kTurn);
    const double dy = std::clamp((curY - prevY) * mSensitivity, -kTurn, kTurn);
    const double wy = std::max(0.0, 1.0 - curY * curY);
    const double wx = std::max(0.0, 1.0 - curX * curX);
    double arm[3];
    Subtract(mPos, mAnc, arm);
    const double length = MyVector::GetNorm(arm);

    AddScaled(arm, mRight, -dx * wy * length);
    AddScaled(mFront, mRight, dx * wy);
    AddScaled(arm, mUp, -dy * wx * length);
    AddScaled(mFront, mUp, dy * wx);
    AddScaled(mUp, mRight, dy * curX - dx * curY);

    MyVector::Normalize(arm, length);
    for (int i = 0; i < 3; ++i)
        mPos[i] = mAnc[i] + arm[i];
    NormalizeAndOrthogonalize();
}

void PositionAndDirection_cls::Zoom(double dx, double dy) {
    // A fast wheel must not carry the camera through its anchor, nor onto it, whence no zoom leads away.
    const double factor =
        std::max(MouseSpeed::kLeastZoom, 1.0 + (dy - MouseSpeed::kSideways * dx) * mSensitivity);
    const double closest = 1e-9 * (1.0 + MyVector::GetNorm(mAnc));
    if (factor < 1.0 && GetDistanceToAnc() * factor < closest) return;
    for (int i = 0; i < 3; ++i)
        mPos[i] = mAnc[i] + (mPos[i] - mAnc[i]) * factor;
}

void PositionAndDirection_cls::Translate(double dx, double dy, int mode,
                                         const PositionAndDirection_cls* pOther) {
    double m[3] = {1, 1, 1};
    const bool bKnown = mode >= 0 && mode < 5;
    if (pOther && mode >= 0 && mode < 3) {
        const double* axes[3] = {pOther->mFront, pOther->mRight, pOther->mUp};
        for (int i = 0; i < 3; ++i)
            m[i] = std::fabs(axes[mode][i]);
    } else if (bKnown) {
        std::copy(msbMatrixMove[mode], msbMatrixMove[mode] + 3, m);
    }
    for (int i = 0; i < 3; ++i)
        mPos[i] -= (mRight[i] * dx * mAspectRatio + mUp[i] * dy) * mSensitivity * m[i] * mMove[i];
}

void PositionAndDirection_cls::PointAt(const double* p) {
    Subtract(p, mPos, mFront);
    RejectInvalidDirection();
    NormalizeAndOrthogonalize();
}

void PositionAndDirection_cls::GetGLMatrix(double* matrix) const {
    for (int i = 0; i < 3; ++i) {
        matrix[i] = mFront[i];
        matrix[4 + i] = -mRight[i];
        matrix[8 + i] = mUp[i];
        matrix[12 + i] = mPos[i];
    }
    matrix[3] = matrix[7] = matrix[11] = 0.0;
    matrix[15] = 1.0;
}
