#include "GL/VIEW/clsViewGather.h"

#include <algorithm>
#include <cmath>

#include <wx/intl.h>

#include "COMMON/MsgBox.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLTexture.h"
#include "GL/VIEW/clsAnaglyph.h"
#include "GL/VIEW/clsDistortion.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewMessage.h"
#include "GL/VIEW/clsViewSettings.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kDomeSize = 2048; // pixels of the dome picture

void MakeBuffer(std::unique_ptr<FBO_cls>& pBuffer, int w, int h) {
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

/// State in which a picture goes to a place of the target: in place of what is there, or added with a weight.
void SetTarget(const wxRect& place, float weight, bool bBlend) {
    glViewport(place.x, place.y, place.width, place.height);
    SetPlainTexturing();
    if (bBlend) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    }
    glColor4f(1, 1, 1, weight);
}

bool IsImage(GatherTarget target) {
    return target == GatherTarget::Image || target == GatherTarget::OnBlack ||
           target == GatherTarget::OnWhite;
}

} // namespace

/// Null: the picture has one eye.
const StereoGram_cls* ViewGather_cls::GetStereo() const {
    return mContext.mMoment.passes > 1 ? mContext.mShared.mspCStereogramLink : nullptr;
}

void ViewGather_cls::GatherFBOImages(int w, int h, GatherTarget target) {
    const bool bBlur = IsImage(target) && mContext.mHost.GetPCTimeCtrl()->mCMotionBlur.mbBlur;
    const StereoGram_cls* stereo = GetStereo();
    mContext.mShared.SetGLBGColor(1, mContext.mMoment.plainGrey);
    if (stereo && stereo->MixesEyes() && !IsEyeAlone(*stereo, target) &&
        mContext.mShared.mspCAnaglyph->Initialize())
        GatherMixed(w, h, bBlur, target);
    else if (mContext.mSettings.GetMultiPanelMode() == FishEye_cls::MODE_FLAT)
        GatherFlat(w, h, bBlur, target);
    else if (stereo)
        GatherWideEye(*stereo, w, h, bBlur, target);
    else
        GatherFBOMultiPanel(w, h, bBlur);
    CheckGLErrors("composition");
}

// Does the target hold nothing of the other eye?
bool ViewGather_cls::IsEyeAlone(const StereoGram_cls& stereo, GatherTarget target) const {
    return target == GatherTarget::WindowEye || (IsImage(target) && stereo.KeepsEyesApart());
}

bool ViewGather_cls::JoinsFirstEye(GatherTarget target) const {
    const StereoGram_cls* stereo = GetStereo();
    return stereo && mContext.mMoment.pass > 0 && !IsEyeAlone(*stereo, target);
}

// State of the target that the present eye's picture is drawn with.
void ViewGather_cls::BeginMasks(const StereoGram_cls& stereo, int w, int h, GatherTarget target) const {
    stereo.SetColorMaskBegin(mContext.mMoment.pass, false, true);
    if (target == GatherTarget::Window) stereo.SetStencilMaskBegin(w, h, mContext.mMoment.pass, false);
}

// Of the present eye. One that has a file of its own fills it, but for its half of what was meant to be laid
// side by side with the other's.
StereoGram_cls::Part_st ViewGather_cls::GetPart(const StereoGram_cls& stereo, GatherTarget target) const {
    if (IsEyeAlone(stereo, target) && stereo.GetModeSideBySide(0) == 0) return {};
    return stereo.GetPart(mContext.mMoment.pass);
}

wxRect ViewGather_cls::GetPlace(const StereoGram_cls& stereo, int w, int h, GatherTarget target) const {
    const StereoGram_cls::Part_st part = GetPart(stereo, target);
    const auto pixel = [](double share, int side) { return int(std::lround(share * side)); };
    const int x = pixel(part.mX, w), y = pixel(part.mY, h);
    return wxRect(x, y, pixel(part.mX + part.mW, w) - x, pixel(part.mY + part.mH, h) - y);
}

// An image is cut out of the middle of its square: that middle is what an eye's place is a part of, and what
// of the eye lies outside of it must not reach into the other's.
void ViewGather_cls::SetEyeViewport(const StereoGram_cls& stereo, int w, int h, GatherTarget target) const {
    double cutX = 0.0, cutY = 0.0; // on each side
    if (IsImage(target)) {
        const double aspect = mContext.mShared.mspCFishEyeCtrl->GetClipAspectRatio();
        cutX = aspect < 1.0 ? w * (1.0 - aspect) / 2.0 : 0.0;
        cutY = aspect > 1.0 ? h * (1.0 - 1.0 / aspect) / 2.0 : 0.0;
    }
    const auto pixel = [](double place) { return int(std::lround(place)); };
    const StereoGram_cls::Part_st part = GetPart(stereo, target);
    const double seenW = w - 2.0 * cutX, seenH = h - 2.0 * cutY;
    const double x = cutX + part.mX * seenW, y = cutY + part.mY * seenH;
    const double shiftX = x - part.mW * cutX, shiftY = y - part.mH * cutY;
    glViewport(pixel(shiftX), pixel(shiftY), pixel(shiftX + part.mW * w) - pixel(shiftX),
               pixel(shiftY + part.mH * h) - pixel(shiftY));
    if (part.mW == 1.0 && part.mH == 1.0) return;
    glEnable(GL_SCISSOR_TEST);
    glScissor(pixel(x), pixel(y), pixel(x + part.mW * seenW) - pixel(x),
              pixel(y + part.mH * seenH) - pixel(y));
}

// Two eyes share no pixel's channel, so the second one replaces what is there. The face fills an image's
// square, pixel on pixel, and a window that isn't higher than wide.
void ViewGather_cls::GatherFlat(int w, int h, bool bBlur, GatherTarget target) {
    const StereoGram_cls* stereo = GetStereo();
    const bool bJoins = JoinsFirstEye(target);
    const bool bFills = !stereo && (IsImage(target) || w >= h);
    if (!bBlur && !bJoins && !bFills) FBO_cls::ClearTarget(GL_COLOR_BUFFER_BIT);
    FBO_cls::DrawOnScreenSet(mContext.mCGLPerspective, w, h, bBlur || bJoins);
    if (bJoins && !bBlur) glDisable(GL_BLEND);
    if (stereo) BeginMasks(*stereo, w, h, target);
    if (stereo) SetEyeViewport(*stereo, w, h, target);
    DrawExposedFace(!stereo && IsImage(target));
}

void ViewGather_cls::DrawExposedFace(bool bPixelOnPixel) {
    const FBO_cls* pFace = mContext.mShared.mspCFishEyeCtrl->GetFace(0);
    mContext.mShared.mspCExposureLink->Begin();
    FBO_cls::DrawOnScreenDraw(pFace, bPixelOnPixel ? GL_NEAREST : GL_LINEAR);
    mContext.mShared.mspCExposureLink->End();
}

void ViewGather_cls::GatherWideEye(const StereoGram_cls& stereo, int w, int h, bool bBlur,
                                   GatherTarget target) {
    const float alpha = bBlur ? mContext.mShared.mspCExposureLink->GetAlpha() : 1.0f;
    FillPicture(mContext.mShared.mspCStage, w, h, IsImage(target));
    mContext.mShared.SetGLBGColor(1, mContext.mMoment.plainGrey);
    if (!bBlur && !JoinsFirstEye(target)) FBO_cls::ClearTarget(GL_COLOR_BUFFER_BIT);
    {
        const GLAttribScope_cls attributes;
        BeginMasks(stereo, w, h, target);
        AddStage(GetPlace(stereo, w, h, target), alpha * alpha, bBlur);
    }
    if (bBlur) mContext.mShared.mspCExposureLink->SetAccumulation(alpha);
}

// The first eye waits for the second one.
void ViewGather_cls::GatherMixed(int w, int h, bool bBlur, GatherTarget target) {
    SharedView_cls& shared = mContext.mShared;
    const float alpha = bBlur ? shared.mspCExposureLink->GetAlpha() : 1.0f;
    std::unique_ptr<FBO_cls>& pLeft = shared.mspCLeftEye[size_t(target)];
    FillPicture(mContext.mMoment.pass == 0 ? pLeft : shared.mspCStage, w, h, IsImage(target));
    if (mContext.mMoment.pass > 0 && pLeft) {
        const GLAttribScope_cls attributes;
        SetTarget(wxRect(0, 0, w, h), alpha * alpha, bBlur);
        shared.mspCAnaglyph->Draw(*pLeft, *shared.mspCStage);
    }
    if (bBlur) shared.mspCExposureLink->SetAccumulation(alpha);
}

// The grid and the mask change what is there already: a picture must be whole before it is added to others.
void ViewGather_cls::GatherFBOMultiPanel(int w, int h, bool bAdditive) {
    if (bAdditive) {
        const float alpha = mContext.mShared.mspCExposureLink->GetAlpha();
        FillPicture(mContext.mShared.mspCStage, w, h, true);
        AddStage(wxRect(0, 0, w, h), alpha * alpha, true);
        mContext.mShared.mspCExposureLink->SetAccumulation(alpha);
    } else if (mContext.mSettings.IsFishEye()) {
        GatherDome(w, h);
    } else {
        mContext.mShared.mspCExposureLink->Begin();
        mContext.mShared.mspCFishEyeCtrl->GatherCylinder(mContext.mCGLPerspective.mAngle, false, w, h);
        mContext.mShared.mspCExposureLink->End();
    }
}

// The present eye's whole picture with its exposure, of full weight. No steps of a blur add up from here on.
void ViewGather_cls::FillPicture(std::unique_ptr<FBO_cls>& pPicture, int w, int h, bool bImage) {
    mContext.mShared.mspCExposureLink->EndAccumulation();
    MakeBuffer(pPicture, w, h);
    pPicture->SetShown(FBO_cls::GetTargetShown());
    const FBOScope_cls target(*pPicture, false);
    mContext.mShared.SetGLBGColor(1, mContext.mMoment.plainGrey);
    if (mContext.mSettings.GetMultiPanelMode() != FishEye_cls::MODE_FLAT) {
        GatherFBOMultiPanel(w, h, false);
        return;
    }
    if (!bImage && w < h) FBO_cls::ClearTarget(GL_COLOR_BUFFER_BIT);
    FBO_cls::DrawOnScreenSet(mContext.mCGLPerspective, w, h, false);
    DrawExposedFace(bImage);
}

void ViewGather_cls::AddStage(const wxRect& place, float weight, bool bBlend) {
    const GLAttribScope_cls attributes;
    SetTarget(place, weight, bBlend);
    mContext.mShared.mspCStage->DrawOnScreen2D(place.width, place.height, place.width, place.height, 0, 0,
                                               true);
}

void ViewGather_cls::GatherDome(int w, int h) {
    MakeBuffer(mContext.mShared.mspCDome, kDomeSize, kDomeSize);
    {
        const FBOScope_cls target(*mContext.mShared.mspCDome, false); // cleared by the gathering
        mContext.mShared.mspCFishEyeCtrl->GatherFishEye(mContext.mCGLPerspective.mAngle, false, kDomeSize,
                                                        kDomeSize);
    }
    FBO_cls::ClearTarget(GL_COLOR_BUFFER_BIT);
    const GLAttribScope_cls attributes;
    glViewport(0, 0, w, h);
    SetPlainTexturing();
    mContext.mShared.mspCExposureLink->Begin();
    if (mContext.mSettings.mDistortion.mValue)
        DrawDistorted(w, h);
    else
        DrawDomeSquare(w, h);
    mContext.mShared.mspCExposureLink->End();
}

// Half of what is drawn there gives way to reddish lines.
void ViewGather_cls::DrawFisheyeGrid(const std::function<void()>& draw) {
    if (!mContext.mSettings.mFisheyeGrid.mValue) return;
    const GLTexture_cls* grid = mContext.mShared.GetFisheyeGrid();
    if (!grid) return;
    glEnable(GL_BLEND);
    glBlendColor(1.0f, 0.5f, 0.5f, 1.0f);
    glBlendFunc(GL_CONSTANT_COLOR, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1, 1, 1, 0.5f);
    grid->BindTexture();
    draw();
    glColor4f(1, 1, 1, 1);
}

// The whole dome, whatever the target's shape is.
void ViewGather_cls::DrawDomeSquare(int w, int h) {
    const auto draw = [w, h, side = std::min(w, h)](const TextureBase_cls& texture) {
        texture.DrawOnScreen2D(w, h, side, side, (w - side) / 2, (h - side) / 2, true);
    };
    draw(*mContext.mShared.mspCDome);
    DrawFisheyeGrid([this, &draw] { draw(*mContext.mShared.GetFisheyeGrid()); });
}

void ViewGather_cls::DrawDistorted(int w, int h) {
    if (!mContext.mShared.mspCDistortion->IsReady()) {
        mContext.mMessage.Add(mContext.mShared.mspCDistortion->GetProblem() + "\n");
        Notice("distortion", mContext.mShared.mspCDistortion->GetProblem());
        return;
    }
    const GLMatrixScope_cls projection(GL_PROJECTION);
    const GLMatrixScope_cls model;
    Distortion_cls::SetGLSetting(w, h);
    const auto draw = [this, w, h] {
        mContext.mShared.mspCDistortion->GLDrawDistortedTexture(
            double(w) / h, 1.0, !mContext.mShared.mspCDistortion->IsDefault(), 1);
    };
    mContext.mShared.mspCDome->BindTexture();
    draw();
    DrawFisheyeGrid(draw);
    if (!mContext.mShared.mspCMask || mContext.mShared.mspCMask->mTexture == 0) {
        const wxString text = _("The mask Resource/DefaultMask.png can't be read as an image: the distorted "
                                "picture has hard edges.");
        mContext.mMessage.Add(text + "\n");
        Notice("mask", text);
        return;
    }
    glEnable(GL_BLEND);
    glBlendFunc(GL_ZERO, GL_SRC_COLOR);
    mContext.mShared.mspCMask->BindTexture();
    draw();
}
