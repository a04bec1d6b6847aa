// From the faces to the picture: in the window, or in the buffer of an image.
#include "GL/VIEW/clsMainGLCanvas.h"

#include <cmath>

#include <wx/intl.h>

#include "APP/clsFrameMain.h"
#include "COMMON/MsgBox.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLTexture.h"
#include "GL/VIEW/clsDistortion.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsFishEye.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kDomeSize = 2048; // pixels of the dome picture

void MakeSquare(std::unique_ptr<FBO_cls>& pBuffer, int w, int h) {
    if (!pBuffer || pBuffer->GetWidth() != w || pBuffer->GetHeight() != h)
        pBuffer = std::make_unique<FBO_cls>(w, h);
    pBuffer->MakeFBO(false);
}

/// State in which a texture simply replaces what is there.
void SetPlainTexturing() {
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glColor4f(1, 1, 1, 1);
}

} // namespace

void MainGLCanvas_cls::GatherFBOImages(int w, int h, bool bToImage) {
    const bool bAdditive = bToImage && mpCFrame->GetPCTimeCtrl()->mCMotionBlur.mbBlur;
    SetGLBGColor(1);
    if (GetMultiPanelMode() != FishEye_cls::MODE_FLAT) {
        GatherFBOMultiPanel(w, h, bAdditive);
    } else {
        mspCExposureLink->Begin();
        // The masks of a stereogram stand around these two.
        FBO_cls::DrawOnScreenSet(mCGLPerspective, w, h, bAdditive);
        FBO_cls::DrawOnScreenDraw(mspCFishEyeCtrl->GetFace(0), 0);
        mspCExposureLink->End();
    }
    CheckGLErrors("composition");
}

// The grid and the mask change what is there already: a picture must be whole before it is added to others.
void MainGLCanvas_cls::GatherFBOMultiPanel(int w, int h, bool bAdditive) {
    if (bAdditive) {
        const float alpha = mspCExposureLink->GetAlpha();
        mspCExposureLink->EndAccumulation();
        MakeSquare(mspCStage, w, h);
        {
            const FBOScope_cls target(*mspCStage, true);
            SetGLBGColor(1);
            GatherFBOMultiPanel(w, h, false);
        }
        AddStage(w, h, alpha * alpha);
        mspCExposureLink->SetAccumulation(alpha);
    } else if (IsFishEye()) {
        GatherDome(w, h);
    } else {
        mspCExposureLink->Begin();
        mspCFishEyeCtrl->GatherCylinder(mCGLPerspective.mAngle, false, w, h);
        mspCExposureLink->End();
    }
}

void MainGLCanvas_cls::AddStage(int w, int h, float weight) {
    const GLAttribScope_cls attributes;
    glViewport(0, 0, w, h);
    SetPlainTexturing();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    glColor4f(1, 1, 1, weight);
    mspCStage->DrawOnScreen2D(w, h, w, h, 0, 0, true);
}

void MainGLCanvas_cls::GatherDome(int w, int h) {
    MakeSquare(mspCDome, kDomeSize, kDomeSize);
    {
        const FBOScope_cls target(*mspCDome, true);
        mspCFishEyeCtrl->GatherFishEye(mCGLPerspective.mAngle, false, kDomeSize, kDomeSize);
    }
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    const GLAttribScope_cls attributes;
    glViewport(0, 0, w, h);
    SetPlainTexturing();
    mspCExposureLink->Begin();
    if (mDistortion.mValue)
        DrawDistorted(w, h);
    else
        DrawDomeSquare(w, h);
    mspCExposureLink->End();
}

// Half of what is drawn there gives way to reddish lines.
void MainGLCanvas_cls::DrawFisheyeGrid(const std::function<void()>& draw) {
    if (!mFisheyeGrid.mValue || !mspCFisheyeGrid) return;
    glEnable(GL_BLEND);
    glBlendColor(1.0f, 0.5f, 0.5f, 1.0f);
    glBlendFunc(GL_CONSTANT_COLOR, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1, 1, 1, 0.5f);
    mspCFisheyeGrid->BindTexture();
    draw();
    glColor4f(1, 1, 1, 1);
}

void MainGLCanvas_cls::DrawDomeSquare(int w, int h) {
    const auto draw = [w, h](const TextureBase_cls& texture) {
        texture.DrawOnScreen2D(w, h, h, h, (w - h) / 2, 0, true);
    };
    draw(*mspCDome);
    DrawFisheyeGrid([&draw] { draw(*mspCFisheyeGrid); });
}

void MainGLCanvas_cls::DrawDistorted(int w, int h) {
    if (!mspCDistortion->IsReady()) {
        mWXStrMessage += mspCDistortion->GetProblem() + "\n";
        Notice("distortion", mspCDistortion->GetProblem());
        return;
    }
    const GLMatrixScope_cls projection(GL_PROJECTION);
    const GLMatrixScope_cls model;
    Distortion_cls::SetGLSetting(w, h);
    const auto draw = [w, h] {
        mspCDistortion->GLDrawDistortedTexture(double(w) / h, 1.0, !mspCDistortion->IsDefault(), 1);
    };
    mspCDome->BindTexture();
    draw();
    DrawFisheyeGrid(draw);
    if (!mspCMask || mspCMask->mTexture == 0) {
        const wxString text = _("The mask Resource/DefaultMask.png can't be read as an image: the distorted "
                                "picture has hard edges.");
        mWXStrMessage += text + "\n";
        Notice("mask", text);
        return;
    }
    glEnable(GL_BLEND);
    glBlendFunc(GL_ZERO, GL_SRC_COLOR);
    mspCMask->BindTexture();
    draw();
}
