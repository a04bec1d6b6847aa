// Particles of a view, lit.
#include "GL/VIEW/clsMainGLCanvas.h"

#include "APP/clsFrameMain.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "SCENE/clsLightSRCCtrl.h"

// The camera stands in the model-view matrix. Lights that throw shadows are left to passes of their own
// when there are several.
void MainGLCanvas_cls::SetLights() {
    LightSRCCtrl_cls& lights = *mpCFrame->GetPCLightSRCCtrl();
    lights.UpdateCurrentObj(mMoment.doubleIndex);
    lights.SetNonShadowLight(mMoment.doubleIndex);
    glClear(GL_DEPTH_BUFFER_BIT);
}

void MainGLCanvas_cls::DrawDataMain() {
    // Fog is set here.
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    const GLMatrixScope_cls matrix;
    // A scene box moves the data, and the camera's copy into its coordinates.
    GLSequence_cls::Of(*mpCFrame->GetPCActiveFileSequence()).SetCameraInfo(mCFaceCam);
    // Mesh objects are drawn first.
    if (mShowData.mValue && mMoment.bData) DrawDataCopyLoop(false);
    // Shadow volumes follow: once into the stencil, once over what they hide.
    mWXStrMessage += GLDrawData_cls::msStrMessage;
    GLDrawData_cls::msStrMessage.clear();
}

// One light alone, to be added to the picture of the others; what its shadows hide is blacked out here.
void MainGLCanvas_cls::DrawDataLitDiffuse(int lightIndex) {
    mpCFrame->GetPCLightSRCCtrl()->GLSetSingleDiffuse(lightIndex, mMoment.doubleIndex);
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    const GLMatrixScope_cls matrix;
    GLSequence_cls::Of(*mpCFrame->GetPCActiveFileSequence()).SetCameraInfo(mCFaceCam);
    if (mShowData.mValue && mMoment.bData) DrawDataCopyLoop(false);
}

// A Copy filter repeats this; sticks follow.
void MainGLCanvas_cls::DrawDataCopyLoop(bool bShadowPass) {
    const LightSRCCtrl_cls& lights = *mpCFrame->GetPCLightSRCCtrl();
    float light[4];
    float angles[2];
    lights.GetLightInfo(mMoment.doubleIndex, light, angles, lights.GetFirstShadowedLight(), true, nullptr);
    GLSequence_cls::Of(*mpCFrame->GetPCActiveFileSequence())
        .GLDrawData(mMoment.face, mMoment.dataFrame, mMoment.dt, lights.GetLightNumber(), light, 0.0, 0.0,
                    bShadowPass, mPanelIndex);
}
