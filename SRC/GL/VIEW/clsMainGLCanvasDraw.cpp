// The scene of a view into its off-screen buffer, and from there to the window.
#include "GL/VIEW/clsMainGLCanvas.h"

#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGrid.h"
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

// Fisheye and panorama draw four faces here, one each otherwise.
void MainGLCanvas_cls::DrawOnFBO() {
    const double gridUnit = GetGridUnit(mMoment.distanceToAnchor);
    // The stereogram shifts a copy of the camera for the eye, and a dome tilts it.
    BeginFace();
    {
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
    mspCFace->End();
    // Each further light with shadows adds a picture of its own here.
}

void MainGLCanvas_cls::BeginFace() {
    const int size = mMoment.fboSize;
    if (!mspCFace || mspCFace->GetWidth() != size) mspCFace = std::make_unique<FBO_cls>(size, size);
    mspCFace->MakeFBO(false);
    mspCFace->Begin(false); // cleared with its background in a moment
    mCGLPerspective.SetWindowSize(size, size);
    mCGLPerspective.SetViewportOnGL();
    mCGLPerspective.SetPerspectiveOnGL(mCCamPos);
    mCGLPerspective.SetModelOrProjectionViewOnGL(mCCamPos, GL_MODELVIEW);
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

void MainGLCanvas_cls::GatherFBOImages(int w, int h, bool) {
    SetGLBGColor(1);
    // Fisheye and panorama put their faces together here.
    // Exposure and the masks of a stereogram stand around the two calls.
    FBO_cls::DrawOnScreenSet(mCGLPerspective, w, h, false);
    FBO_cls::DrawOnScreenDraw(mspCFace.get(), 0);
    CheckGLErrors("composition");
}
