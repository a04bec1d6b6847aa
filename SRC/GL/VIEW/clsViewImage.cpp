#include "GL/VIEW/clsViewImage.h"

#include <algorithm>
#include <cmath>

#include <wx/intl.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewGather.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewOverlay.h"
#include "GL/VIEW/clsViewScene.h"
#include "GL/VIEW/clsViewSettings.h"
#include "GL/VIEW/WideImageSize.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

int GWideImageSize = 4096;

namespace {

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

/// Of a picture of `shape`: as large as the longer side allows.
wxSize GetWideSize(wxSize shape) {
    const double scale = double(GWideImageSize) / std::max({shape.x, shape.y, 1});
    const auto side = [scale](int pixels) { return std::max(int(std::lround(pixels * scale)), 1); };
    return wxSize(side(shape.x), side(shape.y));
}

} // namespace

ViewImage_cls::ViewImage_cls(const ViewContext_st& context, ViewScene_cls& scene, ViewGather_cls& gather,
                             ViewOverlay_cls& overlay)
    : mContext(context), mScene(scene), mGather(gather), mOverlay(overlay) {}

ViewImage_cls::~ViewImage_cls() = default;

void ViewImage_cls::RequestImage(ImageTaker taker, wxSize size, bool bTransparent) {
    mImageOrder = {std::move(taker), size, bTransparent};
    mBake.RequestOne();
}

void ViewImage_cls::StartSaveImgSeqProcess(ImgSequence_cls* pSequence) {
    mContext.mShared.mspCImgSeqLinked = pSequence;
    mImageOrder = ImageOrder_st();
    mBake.RequestSequence();
    pSequence->ForgetWritten();
}

bool ViewImage_cls::StopSaveImgSeqProcess() {
    if (!mBake.StopSequence()) return false;
    mContext.mShared.mspCImgSeqLinked->OutputFinish();
    return true;
}

wxSize ViewImage_cls::GetImageSize(wxSize window) const {
    const ImgSequence_cls* pSequence = mContext.mShared.mspCImgSeqLinked;
    if (mBake.IsSequence()) return wxSize(pSequence->mOutW, pSequence->mOutH);
    const wxSize size = mImageOrder.size;
    return size.x > 0 && size.y > 0 ? size : window;
}

ShownPart_st ViewImage_cls::GetShownPart(int side, wxSize window) const {
    if (!mBake.IsRequested()) return ShownPart_st();
    const wxSize size = GetImageSize(window);
    return GetMiddleOfSquare(side, size.x, size.y);
}

void ViewImage_cls::BeginPaint() {
    mContext.mMoment.plainGrey.reset();
    if (mBake.IsRequested() && mImageOrder.bTransparent) mContext.mMoment.plainGrey = 0.0f;
}

void ViewImage_cls::TakeFaces(const ImageBake_cls::Moment_st& moment, bool bLoading, double angle,
                              wxSize window) {
    const MotionBlurCtrl_cls& blur = mContext.mHost.GetPCTimeCtrl()->mCMotionBlur;
    const ImageBake_cls::Paint_st paint = {
        moment,         bLoading,       DrawProgress_cls::WasCut(), mContext.mMoment.bHidden, blur.mbBlur,
        blur.mBlurStep, blur.mBlurSteps};
    const ImageBake_cls::Step step = mContext.mMoment.pass == 0 ? mBake.Begin(paint) : mBake.GoOn(paint);
    if (step == ImageBake_cls::Step::Stop) PostMenuEvent(ID_PLAY_STOP);
    if (step == ImageBake_cls::Step::Bake) BakeImage(angle, window);
}

/// Two eyes, each in a file of its own?
bool ViewImage_cls::IsDual() const {
    return mContext.mMoment.passes > 1 && mContext.mShared.mspCStereogramLink->IsDualOutput();
}

/// Two eyes, each in buffers of its own?
bool ViewImage_cls::IsApart() const {
    return mContext.mMoment.passes > 1 && mContext.mShared.mspCStereogramLink->KeepsEyesApart();
}

/// Is an image the face of its view, pixel for pixel?
bool ViewImage_cls::ShowsFace() const {
    return mContext.mSettings.GetMultiPanelMode() == FishEye_cls::MODE_FLAT && mContext.mMoment.passes == 1 &&
           !mContext.mHost.GetPCTimeCtrl()->mCMotionBlur.mbBlur;
}

// The faces are drawn. A face that is the image is taken as it is, its exposure by bytes.
void ViewImage_cls::BakeImage(double angle, wxSize window) {
    EyeBuffers_st& eye = mEyes[IsApart() ? mContext.mMoment.pass : 0];
    mbByBytes = ShowsFace() && mContext.mShared.mspCExposureLink->IsByChannel();
    if (!mbByBytes) BakeResultToFBOForImage(eye.mpCFBOForImage, GatherTarget::Image, window);
    if (!mImageOrder.bTransparent) return;
    // The same scene over black, as it is drawn already, and over white tell what covers the background.
    if (mbByBytes)
        mContext.mShared.mspCFishEyeCtrl->SwapFace(eye.mpCFBOOnBlack);
    else
        BakeResultToFBOForImage(eye.mpCFBOOnBlack, GatherTarget::OnBlack, window);
    mContext.mMoment.plainGrey = 1.0f;
    mContext.mCGLPerspective.mAngle = angle;
    mScene.DrawOnFBO();
    mContext.mCGLPerspective.mAngle = static_cast<int>(angle);
    if (!mbByBytes) BakeResultToFBOForImage(eye.mpCFBOOnWhite, GatherTarget::OnWhite, window);
    mContext.mMoment.plainGrey = 0.0f;
}

// Steps of a motion blur add up, each with its share. Weight and blending both take the program's alpha, so
// it is the root of that share. A flat view fills the square of its face, whose middle is written; a wide one
// is put together in the picture's shape.
void ViewImage_cls::BakeResultToFBOForImage(std::unique_ptr<FBO_cls>& pTarget, GatherTarget what,
                                            wxSize window) {
    const MotionBlurCtrl_cls& blur = mContext.mHost.GetPCTimeCtrl()->mCMotionBlur;
    const bool bJoins = mContext.mMoment.pass > 0 && !IsApart();        // the eye that is there already
    const bool bClear = !bJoins && blur.mbBlur && blur.IsInitBluring(); // else the picture covers all of it
    const int side = mContext.mMoment.fboSize;
    const bool bFlat = mContext.mSettings.GetMultiPanelMode() == FishEye_cls::MODE_FLAT;
    const wxSize size = bFlat ? wxSize(side, side) : GetWideSize(GetImageSize(window));
    if (!pTarget || pTarget->GetWidth() != size.x || pTarget->GetHeight() != size.y)
        pTarget = std::make_unique<FBO_cls>(size.x, size.y);
    pTarget->MakeFBO(false);
    pTarget->SetShown(bFlat ? GetShownPart(side, window) : ShownPart_st());
    mContext.mShared.mspCExposureLink->SetBypassed(what != GatherTarget::Image);
    mContext.mShared.mspCExposureLink->SetAccumulation(blur.mbBlur ? float(std::sqrt(blur.GetAlpha()))
                                                                   : 1.0f);
    {
        const FBOScope_cls target(*pTarget, bClear);
        mGather.GatherFBOImages(size.x, size.y, what);
    }
    mContext.mShared.mspCExposureLink->EndAccumulation();
    mContext.mShared.mspCExposureLink->SetBypassed(false);
}

ImageBuffers_st ViewImage_cls::GetBuffers(int pass) const {
    ImageBuffers_st buffers;
    const EyeBuffers_st& eye = mEyes[pass];
    const FBO_cls* pFace = mContext.mShared.mspCFishEyeCtrl->GetFace(0);
    const FBO_cls* pOnBlack = mImageOrder.bTransparent ? eye.mpCFBOOnBlack.get() : nullptr;
    buffers.mpColor = !mbByBytes ? eye.mpCFBOForImage.get() : pOnBlack ? pOnBlack : pFace;
    if (mbByBytes) buffers.mColorBytes = mContext.mShared.mspCExposureLink->GetBytes(false);
    if (pOnBlack) {
        buffers.mpOnBlack = pOnBlack;
        buffers.mpOnWhite = mbByBytes ? pFace : eye.mpCFBOOnWhite.get();
        if (mbByBytes) buffers.mCoverBytes = mContext.mShared.mspCExposureLink->GetBytes(true);
    }
    if (mContext.mMoment.passes == 1) return buffers;
    const StereoGram_cls& stereo = *mContext.mShared.mspCStereogramLink;
    if (stereo.GetModeSideBySide(0) != 0 || stereo.IsFull()) buffers.mHalves = HALVES_BESIDE;
    if (stereo.IsAbove()) buffers.mHalves = HALVES_ABOVE;
    if (!stereo.IsDualOutput()) return buffers;
    buffers.mEye = stereo.GetStereoEye(pass);
    if (buffers.mHalves == HALVES_ABOVE || stereo.IsFull()) buffers.mHalves = HALVES_NONE;
    return buffers;
}

// Two eyes may bring an image each.
void ViewImage_cls::FinishImage(wxSize window) {
    const TimeCtrl_cls& time = *mContext.mHost.GetPCTimeCtrl();
    if (!mBake.IsComplete(time.mCMotionBlur.IsOutputConditionOK())) return;
    const wxSize size = GetImageSize(window);
    std::unique_ptr<FBO_cls> pOverlay = mOverlay.HasOverlays() ? MakeOverlayBuffer(size) : nullptr;
    if (pOverlay) {
        const FBOScope_cls target(*pOverlay, true);
        mOverlay.DrawOverlays(size.x, size.y, true);
    }
    const ImageTaker taker = mBake.IsSequence() ? nullptr : std::move(mImageOrder.taker);
    for (int pass = 0; pass < (IsDual() ? 2 : 1); ++pass) {
        ImageBuffers_st buffers = GetBuffers(pass);
        buffers.mpOverlay = pOverlay.get();
        const ImageBuffers_st right = GetBuffers(1);
        if (IsApart() && !IsDual()) buffers.mpRight = &right;
        if (mBake.IsSequence()) {
            const int offset = time.GetOffsetForImgSeq(-1, -1);
            mContext.mShared.mspCImgSeqLinked->SaveImageFromTexture(&GCImgIO, buffers, offset, buffers.mEye);
        } else if (taker) {
            taker(buffers, size);
        }
    }
    if (mBake.IsSequence()) return;
    mBake.FinishOne();
    mImageOrder.taker = nullptr;
    if (!mContext.mMoment.bHidden) DropImage(); // else the next one is made of them
}

// What one image leaves must not come into another. With this view's context.
void ViewImage_cls::DropImage() {
    mBake.ForgetDrop();
    for (EyeBuffers_st& eye : mEyes)
        eye = EyeBuffers_st();
    mContext.mShared.mspCStage.reset();
    for (const GatherTarget what : {GatherTarget::Image, GatherTarget::OnBlack, GatherTarget::OnWhite})
        mContext.mShared.mspCLeftEye[size_t(what)].reset();
}

void ViewImage_cls::DropIfOver() {
    if (mBake.MustDrop()) DropImage();
}

void ViewImage_cls::TakeWindowPicture(wxSize window, bool bLoading) {
    if (!mWindowTaker || bLoading) return;
    const WindowTaker taker = std::move(mWindowTaker);
    mWindowTaker = nullptr;
    glReadBuffer(GL_BACK); // the front buffer of a window can't be read everywhere
    taker(window, EYE_NONE);
}

// Beside the window, where the two eyes may share every pixel.
void ViewImage_cls::TakeWindowEye(wxSize window, bool bLoading) {
    if (!mWindowTaker || !mbWindowEyes || !IsDual() || bLoading) return;
    FBO_cls picture(window.x, window.y);
    picture.SetDepth(8);
    picture.MakeFBO(false);
    {
        const FBOScope_cls target(picture, true);
        mGather.GatherFBOImages(window.x, window.y, GatherTarget::WindowEye);
        mOverlay.DrawOverlays(window.x, window.y, false);
        mWindowTaker(window, mContext.mMoment.eye);
    }
    if (mContext.mMoment.pass > 0) mWindowTaker = nullptr;
}

// What the output keeps of what the window shows.
void ViewImage_cls::DrawFrameBox(int w, int h) {
    if (!mBake.IsSequence() || mContext.mSettings.GetMultiPanelMode() != FishEye_cls::MODE_FLAT) return;
    TextureBase_cls::Push2DMatrix(w, h);
    mContext.mShared.mspCImgSeqLinked->RenderFrameBoxInRender(w, h);
    TextureBase_cls::Pop2DMatrix();
}
