#include "GL/VIEW/clsViewPage.h"

#include <algorithm>
#include <cmath>

#include <wx/button.h>
#include <wx/intl.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "COMMON/clsMyVector.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsCameraPath.h"

namespace {

constexpr int kLabelWidth = 110;
constexpr double kMaxAngle = 180.0;
constexpr double kWidest = 179.0; // of a flat picture

/// The other angle of a flat picture: `aspect` is its side over the present one.
float GetOtherAngle(float angle, double aspect) {
    const double half = std::tan(MyVector::ToRadians(std::clamp(double(angle), 0.0, kWidest)) / 2.0);
    return static_cast<float>(MyVector::ToDegrees(2.0 * std::atan(half * aspect)));
}

/// As many digits as anybody reads.
void ToField(const double* from, float* to) {
    for (int i = 0; i < 3; ++i)
        to[i] = static_cast<float>(from[i]);
}

/// What the user hasn't touched keeps the digits that aren't shown.
void FromField(const float* from, double* to) {
    for (int i = 0; i < 3; ++i)
        if (static_cast<float>(to[i]) != from[i]) to[i] = double(from[i]);
}

} // namespace

ViewPage_cls::ViewPage_cls(wxWindow* pParent, MainGLCanvas_cls& canvas)
    : MultiInputPanel_cls(pParent, kLabelWidth), mCanvas(canvas) {
    AddRows();
    SetOnChange([this](int row, bool bFinal) { OnEdit(row, bFinal); });
    ShowView();
}

void ViewPage_cls::AddRows() {
    const int geometry = AddChoice(
        _("Geometry"), &mGeometry, {_("Point of View"), _("Orthographic"), _("Fisheye"), _("Panoramic")},
        _("What the picture shows of the scene; a view that follows the camera has its geometry"));
    wxButton* button = AddButtonTo(geometry, _("Default"), _("The camera back to where it is at the start"),
                                   [this] { SetViewToDefault(); });
    button->SetId(ID_VIEW_DEFAULT);
    const NumSpec place = RangeSpec(-1e30, 1e30, 0.01);
    AddNumber(_("Translate"), mTranslate, 3, place, _("Place of the view's camera, x, y and z"));
    AddNumber(_("Rotate"), mRotate, 3, RangeSpec(-1e30, 1e30, 1),
              _("Rotation of the camera around x, y and z in degrees.\nThe pivot goes with it, or with Pivot "
                "Follows Anchor the camera goes around it."));
    AddNumber(_("Pivot"), mPivot, 3, place, _("What the camera looks at and turns around"));
    AddNumber(_("View Angle"), mAngle, 2, RangeSpec(0, kMaxAngle, 1),
              _("Angle of the picture's height and of its width, degrees; of a fisheye from rim to rim, of a "
                "panorama half of what its width shows"));
    AddNumber(_("DepthMIN/MAX"), mDepth, 2, RangeSpec(0, 1e30, 0.01),
              _("Nothing nearer than the first and farther than the second is drawn"));
    const int fisheye = AddCheck(_("Fisheye"), &mbDistortion, _("Distortion"),
                                 _("Warp the picture for a projector on a ball mirror"));
    AddCheckTo(fisheye, &mbGrid, _("Fisheye Grid"), _("Circles and spokes over the picture"));
}

bool ViewPage_cls::State_st::operator==(const State_st& o) const {
    return mMode == o.mMode && mGeometry == o.mGeometry && mCamera.Position_cls::operator==(o.mCamera) &&
           mCamera.Direction_cls::operator==(o.mCamera) && std::equal(mPivot, mPivot + 3, o.mPivot) &&
           mAngle == o.mAngle && std::equal(mDepth, mDepth + 2, o.mDepth) && mbDistortion == o.mbDistortion &&
           mbGrid == o.mbGrid;
}

ViewPage_cls::State_st ViewPage_cls::GetState(MainGLCanvas_cls& canvas) {
    State_st state;
    state.mMode = canvas.GetDisplayMode();
    state.mGeometry = canvas.GetGeometry();
    state.mCamera = *canvas.mCamera.GetPCCameraPosition();
    std::copy_n(canvas.mCamera.GetPCAnchorPosition(), 3, state.mPivot);
    state.mAngle = canvas.mGLPersAngle.mValue;
    state.mDepth[0] = canvas.mGLDepthMin.mValue;
    state.mDepth[1] = canvas.mGLDepthMax.mValue;
    state.mbDistortion = canvas.mDistortion.mValue;
    state.mbGrid = canvas.mFisheyeGrid.mValue;
    return state;
}

// The camera is that of a mode: in another one it stays.
void ViewPage_cls::SetState(MainGLCanvas_cls& canvas, const State_st& state) {
    if (canvas.GetGeometry() != state.mGeometry) canvas.SetGeometry(state.mGeometry);
    if (canvas.GetDisplayMode() == state.mMode) {
        *canvas.mCamera.GetPCCameraPosition() = state.mCamera;
        std::copy_n(state.mPivot, 3, canvas.mCamera.GetPCAnchorPosition());
        canvas.mCamera.UpdateAnc();
    }
    canvas.mGLPersAngle.mValue = state.mAngle;
    canvas.mGLDepthMin.mValue = state.mDepth[0];
    canvas.mGLDepthMax.mValue = state.mDepth[1];
    canvas.mDistortion.mValue = state.mbDistortion;
    canvas.mFisheyeGrid.mValue = state.mbGrid;
    canvas.MarkStale();
    PostMenuEvent(ID_SYNC_GL_CTRL);
}

double ViewPage_cls::GetAspect() const {
    const wxSize size = mCanvas.GetPixelSize();
    return double(size.x) / size.y;
}

void ViewPage_cls::ShowView() {
    PositionAndDirection_cls camera = *mCanvas.mCamera.GetPCCameraPosition();
    camera.UpdateYPR(true);
    mGeometry = mCanvas.IsCameraLinked() ? mCanvas.GetEffectiveGeometry() : mCanvas.GetGeometry();
    const double angles[3] = {camera.mRoll, camera.mPitch, camera.mYaw};
    ToField(camera.mPos, mTranslate);
    ToField(angles, mRotate);
    ToField(mCanvas.mCamera.GetPCAnchorPosition(), mPivot);
    mAngle[0] = mCanvas.IsCameraLinked() ? static_cast<float>(mCanvas.GetPLinkedCameraPath()->mCVAngle.mValue)
                                         : mCanvas.mGLPersAngle.mValue;
    mShownWidth = mAngle[1] = GetOtherAngle(mAngle[0], GetAspect());
    mDepth[0] = mCanvas.mGLDepthMin.mValue;
    mDepth[1] = mCanvas.mGLDepthMax.mValue;
    mbDistortion = mCanvas.mDistortion.mValue;
    mbGrid = mCanvas.mFisheyeGrid.mValue;
    const bool bCopy = mCanvas.GetDisplayMode() == DISPLAY_COPY;
    const bool bPath = mCanvas.IsCameraLinked();
    const bool bFlat = mCanvas.GetMultiPanelMode() == 0;
    EnableRow(ROW_GEOMETRY, !bPath);
    for (const int row : {ROW_TRANSLATE, ROW_ROTATE})
        EnableRow(row, !mCanvas.IsAlongAxis() && !bCopy);
    EnableRow(ROW_PIVOT, !bCopy);
    EnableRow(ROW_ANGLE, !bPath && !mCanvas.IsOrthographic());
    GetField(ROW_ANGLE, 1)->Enable(!bPath && bFlat && !mCanvas.IsOrthographic());
    UpdateValues();
}

bool ViewPage_cls::HideAndShowView() {
    const bool bFisheye = mCanvas.IsFishEye();
    if (bFisheye == mbWasFisheye) return false;
    mbWasFisheye = bFisheye;
    ShowRow(ROW_FISHEYE, bFisheye);
    return true;
}

void ViewPage_cls::SetViewToDefault() {
    if (mCanvas.IsCameraLinked()) return;
    // The free camera, also while the view looks along an axis.
    const PositionAndDirection_cls before = mCanvas.mCamera.GetFreeCamera();
    mCanvas.mCamera.SetCameraToDefaultPos();
    PositionAndDirection_cls& now = mCanvas.mCamera.GetFreeCamera();
    now.UpdateYPR(true);
    const auto command = [&canvas = mCanvas](const PositionAndDirection_cls& camera) {
        const auto set = [&canvas, camera] {
            canvas.mCamera.GetFreeCamera() = camera;
            canvas.mCamera.UpdateAnc();
            canvas.MarkStale();
            PostMenuEvent(ID_SYNC_GL_CTRL);
        };
        return new CommandCall_cls(set, UPDATE_CAM_CONF | UPDATE_GL);
    };
    if (now.Position_cls::operator!=(before) || !now.Direction_cls::operator==(before)) {
        GCUndoList.PushNewCommand(command(now), command(before));
        GCUndoList.ExecCurrent();
    }
    mCanvas.MarkStale();
    PostMenuEvent(ID_REFRESH_CAM_CONF);
    PostMenuEvent(ID_REFRESH_GL);
}

void ViewPage_cls::OnEdit(int row, bool bFinal) {
    if (!mBefore) mBefore = GetState(mCanvas);
    TakeRow(row);
    mCanvas.MarkStale();
    if (bFinal) {
        const State_st before = *mBefore;
        mBefore.reset();
        LeaveStep(before);
        ShowView();
        PostMenuEvent(ID_REFRESH_CAM_CONF);
    }
    PostMenuEvent(ID_REFRESH_GL);
}

void ViewPage_cls::LeaveStep(const State_st& before) {
    const State_st now = GetState(mCanvas);
    if (now == before) return;
    const auto command = [&canvas = mCanvas](const State_st& state) {
        return new CommandCall_cls([&canvas, state] { SetState(canvas, state); },
                                   UPDATE_CAM_CONF | UPDATE_GL);
    };
    GCUndoList.PushNewCommand(command(now), command(before));
    GCUndoList.ExecCurrent();
}

void ViewPage_cls::TakeRow(int row) {
    PositionAndDirection_cls& camera = *mCanvas.mCamera.GetPCCameraPosition();
    switch (row) {
    case ROW_GEOMETRY:
        mCanvas.SetGeometry(mGeometry);
        PostMenuEvent(ID_SYNC_GL_CTRL);
        break;
    case ROW_TRANSLATE:
        FromField(mTranslate, camera.mPos);
        camera.PointAt(mCanvas.mCamera.GetPCAnchorPosition());
        break;
    case ROW_ROTATE:
        TurnCamera();
        break;
    case ROW_PIVOT:
        FromField(mPivot, mCanvas.mCamera.GetPCAnchorPosition());
        if (!mCanvas.IsAlongAxis()) camera.PointAt(mCanvas.mCamera.GetPCAnchorPosition());
        mCanvas.mCamera.UpdateAnc();
        break;
    case ROW_ANGLE:
        if (mAngle[1] != mShownWidth) mAngle[0] = GetOtherAngle(mAngle[1], 1.0 / GetAspect());
        mShownWidth = mAngle[1] = GetOtherAngle(mAngle[0], GetAspect());
        mCanvas.mGLPersAngle.mValue = mAngle[0];
        break;
    case ROW_DEPTH:
        mCanvas.mGLDepthMin.mValue = mDepth[0];
        mCanvas.mGLDepthMax.mValue = mDepth[1];
        break;
    default:
        mCanvas.mDistortion.mValue = mbDistortion;
        mCanvas.mFisheyeGrid.mValue = mbGrid;
        break;
    }
}

// A camera that its user moves always looks at the pivot.
void ViewPage_cls::TurnCamera() {
    static const double kFront[3] = {1, 0, 0}, kUp[3] = {0, 0, 1};
    PositionAndDirection_cls& camera = *mCanvas.mCamera.GetPCCameraPosition();
    double* pivot = mCanvas.mCamera.GetPCAnchorPosition();
    const double far = MyVector::GetNormRelative<double>(camera.mPos, pivot);
    camera.Setv(kFront, kUp);
    camera.RotateYPR(double(mRotate[2]), double(mRotate[1]), double(mRotate[0]));
    for (int i = 0; i < 3; ++i) {
        if (mCanvas.mPivotMode.mValue)
            camera.mPos[i] = pivot[i] - camera.mFront[i] * far;
        else
            pivot[i] = camera.mPos[i] + camera.mFront[i] * far;
    }
    mCanvas.mCamera.UpdateAnc();
}
