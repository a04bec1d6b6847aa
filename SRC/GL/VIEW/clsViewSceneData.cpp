// Particles of a view, lit.
#include "GL/VIEW/clsViewScene.h"

#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewMessage.h"
#include "GL/VIEW/clsViewSettings.h"
#include "SCENE/clsLightSRCCtrl.h"

// The camera stands in the model-view matrix. Lights that throw shadows are left to passes of their own
// when there are several.
void ViewScene_cls::SetLights() {
    LightSRCCtrl_cls& lights = *mContext.mHost.GetPCLightSRCCtrl();
    lights.UpdateCurrentObj(mContext.mMoment.doubleIndex);
    lights.SetNonShadowLight(mContext.mMoment.doubleIndex);
    glClear(GL_DEPTH_BUFFER_BIT);
}

void ViewScene_cls::SetFog() {
    FilterLists_cls* filters = mContext.mHost.GetPCFilters();
    const FilterFog_cls* fog = filters ? filters->GetWorld().GetPCFog() : nullptr;
    if (fog)
        fog->SetGLFog(mContext.mMoment.doubleIndex);
    else
        glDisable(GL_FOG);
}

void ViewScene_cls::DrawDataMain() {
    SetFog();
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    const GLMatrixScope_cls matrix;
    // A scene box moves the data, and the camera's copy into its coordinates.
    GLSequence_cls::Of(*mContext.mHost.GetPCActiveFileSequence()).SetCameraInfo(mCFaceCam);
    // Mesh objects are drawn first.
    if (mContext.mSettings.mShowData.mValue && mContext.mMoment.bData) DrawDataCopyLoop(false);
    // Shadow volumes follow: once into the stencil, once over what they hide.
    mContext.mMessage.Add(GLDrawData_cls::msStrMessage);
    GLDrawData_cls::msStrMessage.clear();
}

// One light alone, to be added to the picture of the others; what its shadows hide is blacked out here.
void ViewScene_cls::DrawDataLitDiffuse(int lightIndex) {
    mContext.mHost.GetPCLightSRCCtrl()->GLSetSingleDiffuse(lightIndex, mContext.mMoment.doubleIndex);
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    const GLMatrixScope_cls matrix;
    GLSequence_cls::Of(*mContext.mHost.GetPCActiveFileSequence()).SetCameraInfo(mCFaceCam);
    if (mContext.mSettings.mShowData.mValue && mContext.mMoment.bData) DrawDataCopyLoop(false);
}

// A Copy filter repeats this; sticks follow.
void ViewScene_cls::DrawDataCopyLoop(bool bShadowPass) {
    const LightSRCCtrl_cls& lights = *mContext.mHost.GetPCLightSRCCtrl();
    float light[4];
    float angles[2];
    lights.GetLightInfo(mContext.mMoment.doubleIndex, light, angles, lights.GetFirstShadowedLight(), true,
                        nullptr);
    GLSequence_cls::Of(*mContext.mHost.GetPCActiveFileSequence())
        .GLDrawData(mContext.mMoment.face, mContext.mMoment.dataFrame, mContext.mMoment.dt,
                    lights.GetLightNumber(), light, 0.0, 0.0, bShadowPass, mContext.mSettings.mPanelIndex);
}
