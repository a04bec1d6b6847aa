// What lies at a place of a view's window, for clicks on particles: by eye and geometry.
#include "GL/VIEW/clsViewPick.h"

#include <algorithm>
#include <cmath>

#include "GL/DRAW/clsParticlePicker.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewCamera.h"
#include "GL/VIEW/clsViewScene.h"
#include "GL/VIEW/clsViewSettings.h"

namespace {

double ToRadians(double degrees) { return degrees * M_PI / 180.0; }

void TakeCamera(const PositionAndDirection_cls& camera, PickRay_st* pRay) {
    std::copy_n(camera.mPos, 3, pRay->mEye);
    std::copy_n(camera.mRight, 3, pRay->mBasis[0]);
    std::copy_n(camera.mUp, 3, pRay->mBasis[1]);
    std::copy_n(camera.mFront, 3, pRay->mBasis[2]);
}

} // namespace

// As the paint has placed them (ViewScene_cls::DrawOnFBO).
void ViewPick_cls::TakeEyes() {
    const StereoGram_cls* stereo =
        mContext.mSettings.IsAlongAxis() ? nullptr : mContext.mShared.mspCStereogramLink;
    mEyes.assign(size_t(std::max(mContext.mMoment.passes, 1)), Eye_st());
    for (size_t pass = 0; pass < mEyes.size(); ++pass) {
        Eye_st& eye = mEyes[pass];
        eye.mCamera = mContext.mCamera.mCCamPos;
        if (stereo) {
            stereo->ModifyByStereogram(&eye.mCamera, stereo->GetStereoEye(int(pass)));
            if (mEyes.size() > 1) eye.mPart = stereo->GetPart(int(pass));
        }
        mScene.ModifyByDomeTilt(&eye.mCamera);
    }
}

double ViewPick_cls::GetPixelsOfBuffer() const {
    const double across = GetPixelsAcross(mMode, mPerspective.mAngle, mWindow, mScale);
    // A face of a wide view shows a quarter of a turn, and what is `across` wide an angle whose half's
    // tangent is half as much.
    const double face = mMode == FishEye_cls::MODE_FLAT ? across : across * M_PI / 4.0;
    return face / std::max(mBufferSize, 1);
}

std::vector<PickRay_st> ViewPick_cls::GetRays(wxPoint place) const {
    std::vector<PickRay_st> rays;
    if (mWindow.x < 1 || mbWarped || !mbData) return rays;
    for (const Eye_st& eye : mEyes) {
        PickRay_st ray;
        if (MakeRay(eye, place, &ray)) rays.push_back(std::move(ray));
    }
    return rays;
}

/// False: the eye's picture isn't there.
bool ViewPick_cls::MakeRay(const Eye_st& eye, wxPoint place, PickRay_st* pRay) const {
    const double x = ((place.x + 0.5) / mWindow.x - eye.mPart.mX) / eye.mPart.mW;
    const double y = (1.0 - (place.y + 0.5) / mWindow.y - eye.mPart.mY) / eye.mPart.mH;
    if (x < 0.0 || x > 1.0 || y < 0.0 || y > 1.0) return false;
    const double mouse[2] = {2.0 * x - 1.0, 2.0 * y - 1.0};
    const double w = mWindow.x, h = mWindow.y;
    if (mMode == FishEye_cls::MODE_FISHEYE && std::hypot(mouse[0] * w, mouse[1] * h) > std::min(w, h))
        return false; // beside the dome
    if (mMode == FishEye_cls::MODE_FLAT)
        SetFlatRay(eye.mCamera, mouse, pRay);
    else
        SetWideRay(eye.mCamera, mouse, pRay);
    // Pixels of the window, where the eye's picture is a smaller one of the whole.
    for (double& pixel : pRay->mPixel)
        pixel *= mScale / std::max(eye.mPart.mW, eye.mPart.mH);
    return true;
}

void ViewPick_cls::SetFlatRay(const PositionAndDirection_cls& camera, const double mouse[2],
                              PickRay_st* pRay) const {
    double m[16];
    mPerspective.GetProjectionMatrix(camera, m);
    TakeCamera(camera, pRay);
    const bool bPerspective = m[11] != 0.0;
    const double right = mouse[0] / m[0];
    const double up = mouse[1] * mWindow.y / mWindow.x / m[5];
    const double pixel = 2.0 / m[0] / mWindow.x;
    double* pWay = bPerspective ? pRay->mSlope : pRay->mOffset;
    pWay[0] = right;
    pWay[1] = up;
    pRay->mPixel[0] = bPerspective ? 0.0 : pixel;
    pRay->mPixel[1] = bPerspective ? pixel : 0.0;
    pRay->mNear = bPerspective ? m[14] / (m[10] - 1.0) : 1.0 / m[10];
    pRay->mFar = bPerspective ? m[14] / (m[10] + 1.0) : -1.0 / m[10];
}

// Each face has planes of its own; those of the face that looks to the place are near enough to these.
void ViewPick_cls::SetWideRay(const PositionAndDirection_cls& camera, const double mouse[2],
                              PickRay_st* pRay) const {
    TakeCamera(AimAt(camera, mouse), pRay);
    const double angle = ToRadians(FishEye_cls::LimitAngle(mPerspective.mAngle));
    const double w = mWindow.x, h = mWindow.y;
    pRay->mPixel[0] = 0.0;
    pRay->mPixel[1] = mMode == FishEye_cls::MODE_FISHEYE ? angle / std::min(w, h) : 2.0 * angle / w;
    pRay->mNear = std::max(mPerspective.mNear, 0.0);
    pRay->mFar = mPerspective.mFar;
    pRay->mDistance = [this, camera, x = mouse[0], y = mouse[1], w, h](const double point[3]) {
        double seen[2];
        if (!Project(camera, point, seen)) return HUGE_VAL;
        return std::hypot((seen[0] - x) * w, (seen[1] - y) * h) / 2.0 / mScale;
    };
}
