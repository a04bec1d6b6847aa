// The scene of a view, once for each face.
#include "GL/VIEW/clsMainGLCanvas.h"

#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGrid.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"

// Into the face that is begun.
void MainGLCanvas_cls::DrawFace(double gridUnit) {
    const GLAttribScope_cls attributes;
    SetGLBGColor(0); // or the fog's
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    SetLights();
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
