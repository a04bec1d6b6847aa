// Shadows in a view. One light that throws them: all is lit by all lights, what of it lies in its shadows is
// drawn once more without it. Several: each but the others' picture has a buffer of its own, in which its
// shadows are black, and is added.
#include "GL/VIEW/clsViewScene.h"

#include <epoxy/gl.h>

#include "COMMON/Globals.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/UnlitBlend.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsShadowStencil.h"
#include "GL/DRAW/clsShadowVolume.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewSettings.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

/// The word of the status bar.
class StageScope_cls {
public:
    explicit StageScope_cls(int stage) : mBefore(GDrawingStage.exchange(stage)) {}
    ~StageScope_cls() { GDrawingStage.store(mBefore); }
    StageScope_cls(const StageScope_cls&) = delete;
    StageScope_cls& operator=(const StageScope_cls&) = delete;

private:
    int mBefore;
};

/// The buffer's picture on top of what is there, pixel by pixel.
void AddPicture(const FBO_cls& picture) {
    const GLAttribScope_cls attributes;
    const GLMatrixScope_cls projection(GL_PROJECTION);
    glLoadIdentity();
    const GLMatrixScope_cls model;
    glLoadIdentity();
    picture.BindTexture();
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glDisable(GL_LIGHTING);
    glDisable(GL_FOG);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glDepthMask(GL_FALSE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    glBegin(GL_QUADS);
    for (const auto& corner : {std::pair(0, 0), std::pair(1, 0), std::pair(1, 1), std::pair(0, 1)}) {
        glTexCoord2i(corner.first, corner.second);
        glVertex2i(2 * corner.first - 1, 2 * corner.second - 1);
    }
    glEnd();
}

} // namespace

const DrawOption_cls& ViewScene_cls::GetOption() const {
    return *GLSequence_cls::Of(*mContext.mHost.GetPCActiveFileSequence()).mpCGLAttribute[0]->mpCDrawOption;
}

// A light with shadows that is switched off has a picture of its own as well, in which nothing is.
int ViewScene_cls::CountShadows() const {
    const LightSRCCtrl_cls& lights = *mContext.mHost.GetPCLightSRCCtrl();
    if (GetOption().mShadow.mValue == SHADOW_NONE) return 0;
    return lights.IsShadowed(lights.GetFirstShadowedLight()) ? lights.GetNumberLightWithShadow() : 0;
}

// Behind a picture whose depths stand. False: the user has stopped it.
bool ViewScene_cls::DrawVolumes(int lightIndex) {
    const StageScope_cls stage(1);
    const ShadowStencil_cls stencil(GetOption().mShadow.mValue == SHADOW_SHOW_VOLUMES);
    float place[4], view[16];
    mContext.mHost.GetPCLightSRCCtrl()->GetPosition(lightIndex, mContext.mMoment.doubleIndex, place);
    glGetFloatv(GL_MODELVIEW_MATRIX, view);
    for (int i = 0; i < 4; ++i)
        mPass.light[i] =
            view[i] * place[0] + view[4 + i] * place[1] + view[8 + i] * place[2] + view[12 + i] * place[3];
    mPass.bAgain = mPass.bVolumes = true;
    DrawData();
    mPass.bVolumes = false;
    return !DrawProgress_cls::WasCut();
}

// What lies in shadow goes back to the background, with whatever was blended there, and is drawn anew.
void ViewScene_cls::DrawShadowed() {
    LightSRCCtrl_cls& lights = *mContext.mHost.GetPCLightSRCCtrl();
    if (DrawProgress_cls::WasCut() || !DrawVolumes(lights.GetFirstShadowedLight())) return;
    const StageScope_cls stage(2);
    const GLAttribScope_cls attributes;
    ShadowStencil_cls::SelectShadowed();
    float background[4];
    glGetFloatv(GL_COLOR_CLEAR_VALUE, background);
    background[3] = 1.0f;
    ShadowStencil_cls::Fill(background, true);
    lights.SetBasicLight(mContext.mMoment.doubleIndex, true, 1.0f - ShadowVolume_cls::GetDarkness());
    DrawDataLit();
}

// Before lines and marks are drawn, which no light shines through.
void ViewScene_cls::AddShadowedLights() {
    if (mShadows < 2) return;
    const LightSRCCtrl_cls& lights = *mContext.mHost.GetPCLightSRCCtrl();
    for (int i = 0; i < lights.GetLightNumber() && !DrawProgress_cls::WasCut(); ++i) {
        if (!lights.IsShadowed(i)) continue;
        if (!mpCLight) {
            mpCLight = std::make_unique<FBO_cls>(mContext.mMoment.fboSize, mContext.mMoment.fboSize);
            mpCLight->MakeFBO(false);
            mpCLight->SetShown(FBO_cls::GetTargetShown());
        }
        {
            const FBOScope_cls target(*mpCLight, true);
            DrawDataLitDiffuse(i);
        }
        AddPicture(*mpCLight);
    }
}

void ViewScene_cls::DrawDataLitDiffuse(int lightIndex) {
    const StageScope_cls stage(2);
    constexpr float kNone[4] = {0, 0, 0, 1};
    const GLAttribScope_cls attributes;
    const LightAloneScope_cls alone;
    mContext.mHost.GetPCLightSRCCtrl()->GLSetSingleDiffuse(lightIndex, mContext.mMoment.doubleIndex);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, kNone); // the other picture has it
    SetFog();
    glFogfv(GL_FOG_COLOR, kNone);
    mPass.lights = 1;
    mPass.bAgain = true;
    DrawDataLit();
    if (DrawProgress_cls::WasCut() || !DrawVolumes(lightIndex)) return;
    ShadowStencil_cls::SelectShadowed();
    const float dark[4] = {0, 0, 0, ShadowVolume_cls::GetDarkness()};
    ShadowStencil_cls::Fill(dark, false);
}
