// The scene of a view, once for each face.
#include "GL/VIEW/clsMainGLCanvas.h"

#include "APP/clsFrameMain.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGrid.h"
#include "PDATA/clsPDataSequence.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"

// Into the face that is begun.
void MainGLCanvas_cls::DrawFace(double gridUnit) {
    const GLAttribScope_cls attributes;
    SetGLBGColor(0); // or the fog's
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    // Lights are set here.
    SetLineWidth();
    DrawDataMain();
    CheckGLErrors("data");
    DrawOtherObjects(gridUnit);
    CheckGLErrors("other objects");
    // Tags of the grids come last.
}

void MainGLCanvas_cls::SetLineWidth() {
    const float width = msCLineWidth.mValue * FBO_cls::GetLineWidthFactor(mMoment.fboSize);
    glLineWidth(width > 0.0f ? width : 1.0f);
}

void MainGLCanvas_cls::DrawDataMain() {
    // Fog is set here.
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    const GLMatrixScope_cls matrix;
    // A scene box moves the data, and the camera's copy into its coordinates.
    mpCFrame->GetPCActiveFileSequence()->SetCameraInfo(mCFaceCam);
    // Mesh objects are drawn first.
    if (mShowData.mValue && mMoment.bData) DrawDataCopyLoop(false);
    // Shadow volumes follow: once into the stencil, once over what they hide.
}

// A Copy filter repeats this; sticks follow.
void MainGLCanvas_cls::DrawDataCopyLoop(bool bShadowPass) {
    float light[3] = {0, 0, 0};
    mpCFrame->GetPCActiveFileSequence()->GLDrawData(mMoment.face, mMoment.dataFrame, mMoment.dt, 0, light,
                                                    0.0, 0.0, bShadowPass, mPanelIndex);
}

void MainGLCanvas_cls::DrawOtherObjects(double gridUnit) {
    glPointSize(6);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDepthMask(GL_TRUE);
    if (mShowGrid.mValue) {
        glColor3f(0.3f, 0.3f, 0.3f);
        SetLineWidth();
        Grid_cls::DrawGridFlat(gridUnit, 3);
    }
    if (mShowItems.mValue) DrawCameraPath(false);
    // Lights and filters with "ShowItems="; real grids always; then a click picks among them.
    glDisable(GL_DEPTH_TEST);
    if (mShowItems.mValue) DrawAnchor();
}

// Not for the eye that looks through that camera, which would sit in its own path.
void MainGLCanvas_cls::DrawCameraPath(bool bPick) {
    const CameraPath_cls& camera = *GetPLinkedCameraPath();
    const bool bInside = mCCamPos.Position_cls::operator==(camera.mCCurrent) &&
                         mCCamPos.Direction_cls::operator==(camera.mCCurrent);
    if (bInside) return;
    camera.GLDraw(bPick);
    GetPLinkedAnchorPath()->GLDraw(bPick);
}

void MainGLCanvas_cls::DrawAnchor() {
    static const GLfloat kCross[6][3] = {{-1, 0, 0}, {1, 0, 0}, {0, -1, 0}, {0, 1, 0}, {0, 0, -1}, {0, 0, 1}};
    const double* anchor = GetPCAnchorPosition();
    const double size = 0.02 * mMoment.distanceToAnchor;
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
