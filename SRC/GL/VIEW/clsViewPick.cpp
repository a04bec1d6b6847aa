#include "GL/VIEW/clsViewPick.h"

#include <algorithm>
#include <cmath>

#include "COMMON/Globals.h"
#include "COMMON/clsMyVector.h"
#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsFilterLists.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewScene.h"
#include "GL/VIEW/clsViewSettings.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

constexpr double kFaceAngle = 90.0;

double ToRadians(double degrees) { return degrees * M_PI / 180.0; }

double GetAspect(wxSize window) { return double(std::max(window.x, 1)) / double(std::max(window.y, 1)); }

} // namespace

int ViewPick_cls::msHitObject = -1;
int ViewPick_cls::msHitSub = -1;

double ViewPick_cls::GetPixelsAcross(int multiPanelMode, double angle, wxSize window, double scale) {
    const double width = std::max(window.x, 1) / scale;
    const double radians = ToRadians(FishEye_cls::LimitAngle(angle));
    if (multiPanelMode == FishEye_cls::MODE_PANORAMA) return width / radians;
    if (multiPanelMode == FishEye_cls::MODE_FISHEYE)
        return 2.0 * std::max(std::min(window.x, window.y), 1) / scale / radians;
    return width;
}

void ViewPick_cls::GetGLMatrixInfo(const PositionAndDirection_cls& camera, double angle, wxSize window,
                                   double scale) {
    mCamera = camera;
    mPerspective = mContext.mCGLPerspective;
    mPerspective.mAngle = angle;
    mPerspective.SetClipSize(window.x, window.y);
    mPerspective.SetWindowSize(1, 1); // the buffer is square
    mWindow = window;
    mMode = mContext.mSettings.GetMultiPanelMode();
    mScale = scale;
    mBufferSize = mContext.mMoment.fboSize;
    mbData = mContext.mMoment.bData && mContext.mSettings.mShowData.mValue;
    TakeEyes();
    mbWarped = mMode == FishEye_cls::MODE_FISHEYE && mContext.mSettings.mDistortion.mValue;
}

// A wide view puts the ways from the eye onto the window as its faces' meshes do.
bool ViewPick_cls::Project(const double place[3], double out[2]) const {
    if (!HasParts()) return Project(mEyes.size() == 1 ? mEyes[0].mCamera : mCamera, place, out);
    const Eye_st& eye = mEyes[mEye];
    if (!Project(eye.mCamera, place, out)) return false;
    out[0] = 2.0 * eye.mPart.mX - 1.0 + (out[0] + 1.0) * eye.mPart.mW;
    out[1] = 2.0 * eye.mPart.mY - 1.0 + (out[1] + 1.0) * eye.mPart.mH;
    return true;
}

bool ViewPick_cls::HasParts() const {
    return mEye < mEyes.size() && (mEyes[mEye].mPart.mW < 1.0 || mEyes[mEye].mPart.mH < 1.0);
}

void ViewPick_cls::GetPart(double out[2]) const {
    const bool bParts = HasParts();
    out[0] = bParts ? mEyes[mEye].mPart.mW : 1.0;
    out[1] = bParts ? mEyes[mEye].mPart.mH : 1.0;
}

// Eyes that share the window each have a part of it; two pictures over each other count as one, seen from
// between the eyes.
PositionAndDirection_cls ViewPick_cls::TakeEyeAt(double* pX, double* pY) const {
    if (mEyes.size() == 1) return mEyes[0].mCamera;
    for (mEye = 0; mEye < mEyes.size() && HasParts(); ++mEye) {
        const StereoGram_cls::Part_st& part = mEyes[mEye].mPart;
        const double x = (*pX - part.mX) / part.mW;
        const double y = 1.0 - (1.0 - *pY - part.mY) / part.mH;
        if (x < 0.0 || x > 1.0 || y < 0.0 || y > 1.0) continue;
        *pX = x;
        *pY = y;
        return mEyes[mEye].mCamera;
    }
    mEye = 0;
    return mCamera;
}

bool ViewPick_cls::Project(const PositionAndDirection_cls& camera, const double place[3],
                           double out[2]) const {
    if (mWindow.x < 1) return false;
    if (mMode == FishEye_cls::MODE_FLAT) {
        double square[3];
        if (!mPerspective.Project(camera, place, square)) return false;
        out[0] = square[0];
        out[1] = square[1] * GetAspect(mWindow);
        return true;
    }
    double way[3];
    for (int i = 0; i < 3; ++i)
        way[i] = place[i] - camera.mPos[i];
    const double right = MyVector::GetScalarProduct<double>(way, camera.mRight);
    const double up = MyVector::GetScalarProduct<double>(way, camera.mUp);
    const double front = MyVector::GetScalarProduct<double>(way, camera.mFront);
    const double angle = ToRadians(FishEye_cls::LimitAngle(mPerspective.mAngle));
    const double w = mWindow.x, h = mWindow.y;
    if (mMode == FishEye_cls::MODE_FISHEYE) {
        const double across = std::hypot(right, up);
        const double radius = std::atan2(across, front) / angle * std::min(w, h);
        out[0] = across > 0.0 ? 2.0 * radius * right / across / w : 0.0;
        out[1] = across > 0.0 ? 2.0 * radius * up / across / h : 0.0;
    } else {
        out[0] = std::atan2(right, front) / angle;
        out[1] = std::atan2(up, std::hypot(right, front)) / angle * w / h;
    }
    return std::isfinite(out[0]) && std::isfinite(out[1]);
}

/// The camera turned to what a place of a wide view shows.
PositionAndDirection_cls ViewPick_cls::AimAt(const PositionAndDirection_cls& camera,
                                             const double mouse[2]) const {
    const double angle = ToRadians(FishEye_cls::LimitAngle(mPerspective.mAngle));
    const double w = mWindow.x, h = mWindow.y;
    double right, up, front;
    if (mMode == FishEye_cls::MODE_FISHEYE) {
        const double x = mouse[0] * w / 2.0, y = mouse[1] * h / 2.0;
        const double radius = std::hypot(x, y);
        const double polar = radius * angle / std::min(w, h);
        const double share = radius > 0.0 ? std::sin(polar) / radius : 0.0;
        right = share * x;
        up = share * y;
        front = std::cos(polar);
    } else {
        const double longitude = mouse[0] * angle, height = mouse[1] * angle * h / w;
        right = std::sin(longitude) * std::cos(height);
        up = std::sin(height);
        front = std::cos(longitude) * std::cos(height);
    }
    PositionAndDirection_cls aimed = camera;
    double way[3];
    for (int i = 0; i < 3; ++i)
        way[i] = right * camera.mRight[i] + up * camera.mUp[i] + front * camera.mFront[i];
    aimed.Setv(way, camera.mUp);
    return aimed;
}

HitTest_cls ViewPick_cls::MakeHitTest(wxPoint place, PickRegion_st* pRegion) const {
    double x = double(place.x) / std::max(mWindow.x, 1), y = double(place.y) / std::max(mWindow.y, 1);
    PositionAndDirection_cls camera = TakeEyeAt(&x, &y);
    const double across = GetPixelsAcross(mMode, mPerspective.mAngle, mWindow, mScale);
    *pRegion = PickRegion_st::Of(x, y, GetAspect(mWindow), mContext.mShared.GetFBOSize());
    GLPerspective_cls perspective = mPerspective;
    if (mMode != FishEye_cls::MODE_FLAT) {
        const double mouse[2] = {2.0 * x - 1.0, 1.0 - 2.0 * y};
        camera = AimAt(camera, mouse);
        perspective.mbPerspective = true;
        perspective.mAngle = kFaceAngle;
        perspective.SetClipSize(1, 1);
        // As many pixels of the window as in a flat view.
        const double share = mWindow.x / mScale / across;
        for (int i = 0; i < 2; ++i) {
            pRegion->mMiddle[i] = 0.0;
            pRegion->mHalf[i] *= share;
        }
    }
    double view[16], projection[16];
    GLPerspective_cls::GetModelViewMatrix(camera, view);
    perspective.GetProjectionMatrix(camera, projection);
    return HitTest_cls(view, projection, across);
}

HitTest_cls ViewPick_cls::Pick(wxPoint place) const {
    PickRegion_st region{};
    HitTest_cls test = MakeHitTest(place, &region);
    if (mWindow.x < 1 || mbWarped || !mContext.mSettings.mShowItems.mValue) return test;
    FollowCamera();
    test.StartHitTest(region);
    mScene.PickItems(test);
    test.EndHitTest();
    return test;
}

// Another view may have been painted since this one, and lights may follow the camera of a view. In the
// middle of a paint they are that view's.
void ViewPick_cls::FollowCamera() const {
    if (GbGLLockDrawing.load()) return;
    if (LightSRCCtrl_cls* lights = mContext.mHost.GetPCLightSRCCtrl()) lights->SetCamera(mCamera);
}

MoveItem_cls::View_st ViewPick_cls::GetView(bool bSnap) const {
    FollowCamera();
    MoveItem_cls::View_st view;
    view.mCamera = mCamera;
    // A wide view shows items beside and behind its camera: hands move them as if it looked at them.
    const SceneObj_cls* item = MoveItem_cls::mspCSelectedObject;
    if (mMode != FishEye_cls::MODE_FLAT && item) {
        double place[3];
        item->GetTranslation(SceneObj_cls::kCurrent, place);
        item->ToScene(place);
        view.mCamera.PointAt(place);
    }
    view.mAspect = GetAspect(mWindow);
    GetPart(view.mPart);
    view.mProject = [this](const double place[3], double out[2]) { return Project(place, out); };
    view.mGridUnit = ViewScene_cls::GetGridUnit(mContext.mMoment.distanceToAnchor);
    view.mbSnap = bSnap;
    return view;
}

SceneObj_cls* ViewPick_cls::FindObject(int name) const {
    if (name == CameraPath_cls::kPickName) return mContext.mSettings.GetPLinkedCameraPath();
    if (name == AnchorPath_cls::kPickName) return mContext.mSettings.GetPLinkedAnchorPath();
    LightSRCCtrl_cls* lights = mContext.mHost.GetPCLightSRCCtrl();
    for (int i = 0; lights && i < lights->GetLightNumber(); ++i)
        if (lights->GetLight(i).mPickName == name) return &lights->GetLight(i);
    FilterLists_cls* filters = mContext.mHost.GetPCFilters();
    FilterBase_cls* filter = filters ? filters->FindByPickName(name) : nullptr;
    return filter ? filter->mpCData.get() : nullptr;
}
