#include "GL/VIEW/clsViewScene.h"

#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGrid.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewCamera.h"
#include "GL/VIEW/clsViewSettings.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"

namespace {

// Cells of the ground grid: the power of ten that isn't below a tenth of the distance.
double GetGridUnit(double distance) {
    double unit = 0.0001;
    while (distance > unit * 10.0 && unit < 1e30)
        unit *= 10.0;
    return unit;
}

} // namespace

void ViewScene_cls::DrawOnFBO() {
    FishEye_cls& faces = *mContext.mShared.mspCFishEyeCtrl;
    const double gridUnit = GetGridUnit(mContext.mMoment.distanceToAnchor);
    const int mode = mContext.mSettings.GetMultiPanelMode();
    for (int face = 0; face < FishEye_cls::GetFaceNumber(mode); ++face) {
        mContext.mMoment.face = face;
        mCFaceCam = mContext.mCamera.mCCamPos; // which the stereogram shifts for the eye
        ModifyByDomeTilt(&mCFaceCam);
        faces.MakeFishEyeProcessFH(face, &mCFaceCam, &mContext.mCGLPerspective, mode);
        DrawFace(gridUnit);
        faces.MakeFishEyeProcessLH(face);
        // Each further light with shadows adds a picture of its own here.
    }
}

void ViewScene_cls::ModifyByDomeTilt(PositionAndDirection_cls* pCamera) const {
    const ViewSettings_cls& settings = mContext.mSettings;
    const bool bPath = settings.GetDisplayMode() == DISPLAY_PATH || settings.GetDisplayMode() == DISPLAY_COPY;
    if (!bPath || !settings.IsFishEye()) return;
    pCamera->RotateYPR(0.0, double(settings.GetPLinkedCameraPath()->mCFishEyeOffset.mValue), 0.0);
}

// Into the face that is begun.
void ViewScene_cls::DrawFace(double gridUnit) {
    const GLAttribScope_cls attributes;
    mContext.mShared.SetGLBGColor(0, mContext.mMoment.plainGrey); // or the fog's
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    SetLights();
    SetLineWidth();
    DrawDataMain();
    CheckGLErrors("data");
    DrawOtherObjects(gridUnit);
    CheckGLErrors("other objects");
    // Tags of the grids come last.
}

void ViewScene_cls::SetLineWidth() {
    const float width =
        mContext.mShared.msCLineWidth.mValue * FBO_cls::GetLineWidthFactor(mContext.mMoment.fboSize);
    glLineWidth(width > 0.0f ? width : 1.0f);
}

void ViewScene_cls::DrawOtherObjects(double gridUnit) {
    glPointSize(6);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDepthMask(GL_TRUE);
    if (mContext.mSettings.mShowGrid.mValue) {
        glColor3f(0.3f, 0.3f, 0.3f);
        SetLineWidth();
        Grid_cls::DrawGridFlat(gridUnit, 3);
    }
    if (mContext.mSettings.mShowItems.mValue) DrawCameraPath(false);
    if (mContext.mSettings.mShowItems.mValue) DrawFilters(); // behind the lights
    // Real grids always; then a click picks among them.
    glDisable(GL_DEPTH_TEST);
    if (mContext.mSettings.mShowItems.mValue) DrawAnchor();
}

// Not for the eye that looks through that camera, which would sit in its own path.
void ViewScene_cls::DrawCameraPath(bool bPick) {
    const CameraPath_cls& camera = *mContext.mSettings.GetPLinkedCameraPath();
    const PositionAndDirection_cls& eye = mContext.mCamera.mCCamPos;
    const bool bInside =
        eye.Position_cls::operator==(camera.mCCurrent) && eye.Direction_cls::operator==(camera.mCCurrent);
    if (bInside) return;
    camera.GLDraw(bPick);
    mContext.mSettings.GetPLinkedAnchorPath()->GLDraw(bPick);
}

void ViewScene_cls::DrawAnchor() {
    static const GLfloat kCross[6][3] = {{-1, 0, 0}, {1, 0, 0}, {0, -1, 0}, {0, 1, 0}, {0, 0, -1}, {0, 0, 1}};
    const double* anchor = mContext.mCamera.GetPCAnchorPosition();
    const double size = 0.02 * mContext.mMoment.distanceToAnchor;
    const GLMatrixScope_cls matrix;
    const GLClientScope_cls client;
    glTranslated(anchor[0], anchor[1], anchor[2]);
    glScaled(size, size, size);
    glColor3f(0.2f, 1.0f, 1.0f);
    SetLineWidth();
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, kCross);
    glDrawArrays(GL_LINES, 0, 6);
}
