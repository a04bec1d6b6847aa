// Images of a view: of a size of their own, added up over the steps of a motion blur, one or a whole film of
// them; and the picture of the window as it is.
#include "GL/VIEW/clsMainGLCanvas.h"

#include <cmath>

#include <wx/intl.h>

#include "APP/clsFrameMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsFishEye.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kWideImageSize = 4096; // of a fisheye's or panorama's image, whatever the faces' size

/// A buffer for what is written on top; null where it can't be had.
std::unique_ptr<FBO_cls> MakeOverlayBuffer(wxSize size) {
    GLint limit = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limit);
    if (size.x > limit || size.y > limit) {
        Notice("image overlay",
               wxString::Format(_("Pictures of more than %d pixels are written without time and legend: the "
                                  "graphics driver has no larger buffers."),
                                int(limit)));
        return nullptr;
    }
    auto pOverlay = std::make_unique<FBO_cls>(size.x, size.y);
    pOverlay->SetDepth(8);
    pOverlay->MakeFBO(true);
    return pOverlay;
}

} // namespace

void MainGLCanvas_cls::RequestImage(ImageTaker taker, wxSize size, bool bTransparent) {
    mImageOrder = {std::move(taker), size, bTransparent};
    mBaked = BakedMoment_st();
    mbImageRequest = true;
    MarkStale();
    RefreshEX();
}

bool MainGLCanvas_cls::DrawImage() {
    if (!mpCGLContext) return false;
    mbHiddenPaint = true;
    Paint();
    mbHiddenPaint = false;
    return mbBaked;
}

void MainGLCanvas_cls::StartSaveImgSeqProcess(ImgSequence_cls* pSequence) {
    mspCImgSeqLinked = pSequence;
    mImageOrder = ImageOrder_st();
    mBaked = BakedMoment_st();
    mbImageRequest = mbImageSequence = true;
    pSequence->ForgetWritten();
    MarkStale();
    RefreshEX();
}

void MainGLCanvas_cls::StopSaveImgSeqProcess() {
    if (!mbImageSequence) return;
    mbImageRequest = mbImageSequence = false;
    mbDropImage = true; // not here: another view may be in the middle of a paint
    mspCImgSeqLinked->OutputFinish();
    MarkStale(); // the window shows its own shape again
    RefreshEX();
}

wxSize MainGLCanvas_cls::GetImageSize() const {
    if (mbImageSequence) return wxSize(mspCImgSeqLinked->mOutW, mspCImgSeqLinked->mOutH);
    const wxSize size = mImageOrder.size;
    return size.x > 0 && size.y > 0 ? size : GetPixelSize();
}

// A blur that hasn't begun yet adds nothing, and a window that was uncovered doesn't add a step twice.
bool MainGLCanvas_cls::BeginImage() {
    mbBaked = false;
    if (!mbImageRequest || mbLoading) return false;
    if (DrawProgress_cls::WasCut() && !mbHiddenPaint) {
        if (mbImageSequence) PostMenuEvent(ID_PLAY_STOP); // half a picture is none
        return false;
    }
    const MotionBlurCtrl_cls& blur = mpCFrame->GetPCTimeCtrl()->mCMotionBlur;
    if (blur.mbBlur && (blur.mBlurStep < 0 || blur.mBlurStep >= blur.mBlurSteps)) return false;
    const BakedMoment_st now = {mFrameFrame, mFrameStep, mFrameBlurFactor};
    if (now == mBaked) return false;
    mBaked = now;
    mbBaked = true;
    return true;
}

// The faces are drawn.
void MainGLCanvas_cls::BakeImage(double angle) {
    BakeResultToFBOForImage(mpCFBOForImage[0], true);
    if (!mImageOrder.bTransparent) return;
    // The same scene over black, as it is drawn already, and over white tell what covers the background.
    BakeResultToFBOForImage(mpCFBOOnBlack, false);
    mPlainGrey = 1.0f;
    mCGLPerspective.mAngle = angle;
    DrawOnFBO();
    mCGLPerspective.mAngle = static_cast<int>(angle);
    BakeResultToFBOForImage(mpCFBOOnWhite, false);
    mPlainGrey = 0.0f;
}

// Steps of a motion blur add up, each with its share. Weight and blending both take the program's alpha, so
// it is the root of that share.
void MainGLCanvas_cls::BakeResultToFBOForImage(std::unique_ptr<FBO_cls>& pTarget, bool bExposed) {
    const MotionBlurCtrl_cls& blur = mpCFrame->GetPCTimeCtrl()->mCMotionBlur;
    const bool bClear = !blur.mbBlur || blur.IsInitBluring();
    const int size = GetMultiPanelMode() == FishEye_cls::MODE_FLAT ? mMoment.fboSize : kWideImageSize;
    if (!pTarget || pTarget->GetWidth() != size) pTarget = std::make_unique<FBO_cls>(size, size);
    pTarget->MakeFBO(false);
    mspCExposureLink->SetBypassed(!bExposed);
    mspCExposureLink->SetAccumulation(blur.mbBlur ? float(std::sqrt(blur.GetAlpha())) : 1.0f);
    {
        const FBOScope_cls target(*pTarget, bClear);
        GatherFBOImages(size, size, true);
    }
    mspCExposureLink->EndAccumulation();
    mspCExposureLink->SetBypassed(false);
}

// The second eye of a stereogram brings an image of its own.
void MainGLCanvas_cls::FinishImage() {
    if (!mbBaked || !mpCFrame->GetPCTimeCtrl()->mCMotionBlur.IsOutputConditionOK()) return;
    const wxSize size = GetImageSize();
    std::unique_ptr<FBO_cls> pOverlay = HasOverlays() ? MakeOverlayBuffer(size) : nullptr;
    if (pOverlay) {
        const FBOScope_cls target(*pOverlay, true);
        DrawOverlays(size.x, size.y, true);
    }
    ImageBuffers_st buffers;
    buffers.mpColor = mpCFBOForImage[0].get();
    buffers.mpOverlay = pOverlay.get();
    if (mImageOrder.bTransparent) {
        buffers.mpOnBlack = mpCFBOOnBlack.get();
        buffers.mpOnWhite = mpCFBOOnWhite.get();
    }
    if (mbImageSequence) {
        const int offset = mpCFrame->GetPCTimeCtrl()->GetOffsetForImgSeq(-1, -1);
        mspCImgSeqLinked->SaveImageFromTexture(&GCImgIO, buffers, offset, 0, false);
        return;
    }
    mbImageRequest = false;
    const ImageTaker taker = std::move(mImageOrder.taker);
    mImageOrder.taker = nullptr;
    if (taker) taker(buffers, size);
    if (!mbHiddenPaint) DropImage(); // else the next one is made of them
}

// What one image leaves must not come into another. With this view's context.
void MainGLCanvas_cls::DropImage() {
    mbDropImage = false;
    for (std::unique_ptr<FBO_cls>* pBuffer :
         {&mpCFBOForImage[0], &mpCFBOForImage[1], &mpCFBOOnBlack, &mpCFBOOnWhite, &mspCStage})
        pBuffer->reset();
}

void MainGLCanvas_cls::RequestWindowPicture(std::function<void(wxSize)> taker) {
    mWindowTaker = std::move(taker);
    MarkStale();
    RefreshEX();
}

void MainGLCanvas_cls::TakeWindowPicture() {
    if (!mWindowTaker || mbLoading) return;
    const std::function<void(wxSize)> taker = std::move(mWindowTaker);
    mWindowTaker = nullptr;
    glReadBuffer(GL_BACK); // the front buffer of a window can't be read everywhere
    taker(GetPixelSize());
}

// What the output keeps of what the window shows.
void MainGLCanvas_cls::DrawFrameBox(int w, int h) {
    if (!mbImageSequence || GetMultiPanelMode() != FishEye_cls::MODE_FLAT) return;
    TextureBase_cls::Push2DMatrix(w, h);
    mspCImgSeqLinked->RenderFrameBoxInRender(w, h);
    TextureBase_cls::Pop2DMatrix();
}
