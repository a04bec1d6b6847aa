// One paint of a view, from the gate to the swap of the buffers. The order of the steps is the contract
// with playing, output and the dialogs.
#include "GL/VIEW/clsMainGLCanvas.h"

#include <cmath>

#include <wx/dcclient.h>
#include <wx/intl.h>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/ThreadStates.h"
#include "FILTER/clsBondFollower.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/ShownPart.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLInfo.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/DrawnCounts.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewPick.h"
#include "IMAGE/clsImgSequence.h"
#include "PDATA/clsPDataSequence.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

namespace {

// Only one canvas draws at a time, and a finished paint lets playing go on.
class PaintLock_cls {
public:
    explicit PaintLock_cls(bool& bPainting) : mbPainting(bPainting) {
        mbPainting = true;
        GbGLLockDrawing.store(true);
    }
    ~PaintLock_cls() {
        mbPainting = false;
        GbGLLockDrawing.store(false);
        GbGLLockPlayWait.store(false);
    }
    PaintLock_cls(const PaintLock_cls&) = delete;
    PaintLock_cls& operator=(const PaintLock_cls&) = delete;

private:
    bool& mbPainting;
};

} // namespace

// The toolkit holds all input back while it paints, and with it the abort button: so the picture is drawn
// right behind the paint event, where long drawing can let events through.
void MainGLCanvas_cls::OnPaint(wxPaintEvent&) {
    wxPaintDC dc(this); // the toolkit wants one, whatever happens
    if (!mExport.IsRunning() && (!mpCGLContext || !FBO_cls::msbSupported)) {
        if (IsPaintAllowed()) IsFrameLoading(); // data are read all the same
        DrawTextOnDC(dc);
    } else {
        QueuePaint();
    }
}

void MainGLCanvas_cls::QueuePaint() {
    if (mbPaintQueued) return;
    mbPaintQueued = true;
    CallAfter(&MainGLCanvas_cls::Paint);
}

void MainGLCanvas_cls::Paint() {
    mbPaintQueued = false;
    if (!IsPaintAllowed()) {
        if (!mbPainting) MarkStale(); // the idle loop brings the paint back
        return;
    }
    const PaintLock_cls lock(mbPainting);
    mbLoading = IsFrameLoading() || LacksFollowed();
    if (mbLoading) {
        MarkStale();
        if (WritesOutput() || mShownSize == GetPixelSize()) return; // the last picture stays
        mMessage.Add("Loading ...\n");
    } else if (mShowData.mValue && !IsReaderBusy()) {
        mpCHost->PrepareFramesAhead(mpCHost->GetPCTimeCtrl()->GetPrefetch());
    }
    if (!mbLoading && !WritesOutput()) mpCHost->OnDataReady();
    ReadTime();
    if (mExport.IsRunning()) {
        ExportFrame();
        return;
    }
    // Tags are emptied and lights brought to the double index here.
    if (!BeginGL()) {
        Refresh(false); // for the text that tells why
        return;
    }
    mImage.DropIfOver();
    SetViewFromSettings();
    PlaceCamera();
    mMoment.fboSize = mpCShared->GetFBOSize();
    SetItemsFromWindow();
    mCStopWatch.Start();
    DrawProgress_cls::ForgetCut();
    mpCShared->mspCFishEyeCtrl->MakeFishEyeBegin(mCGLPerspective.mClipW, mCGLPerspective.mClipH,
                                                 mMoment.fboSize, GetShownPart());
    DrawEyes();
    EndFaces();
    mImage.FinishImage(GetPixelSize());
    CountPaint();
    if (mMoment.bHidden) return;
    DrawOnWindow();
    if (mpCShared->msbKeepPicture) mKeptPicture.Read(GetPixelSize());
    SwapBuffers();
    mShownSize = GetPixelSize();
    NotePaintTime();
    // Of the picked particle, in a picture that is of the window alone from now on.
    const ParticleWatch_cls* watch = mpCShared->mspCParticles;
    if (mMoment.bWritten && !WritesOutput() && watch && watch->IsForWindow()) RefreshEX();
    if (mpCShared->mspCInformationLink) mpCShared->mspCInformationLink->Update();
    TellDrawnCounts(*mpCHost->GetPCActiveFileSequence(), mMoment.dataFrame, mMoment.dt);
    if (!mbLoading) mPov.OnShown();
    if (GpCurrentGLPanel != this) return;
    PostMenuEvent(ID_REFRESH_CAM_CONF);
    PostMenuEvent(ID_REFRESH_STEREO);
}

bool MainGLCanvas_cls::IsPaintAllowed() const {
    return (IsShownOnScreen() || WritesOutput()) && !GbGLLockDrawing.load() &&
           !GbGLLockForLoadingData.load() && !GbGLLockForInterplateData.load() &&
           !GbGLLockProjectLoading.load() && !GbGLLockModalDialog.load();
}

bool MainGLCanvas_cls::IsFrameLoading() {
    if (!mShowData.mValue && !mExport.IsRunning()) return false;
    return mWait.WaitForFrame(mMoment.bHidden) == FrameWait_cls::DataState::Loading;
}

/// What is written waits for the bonds that it shows, and for the particle that is followed through the film;
/// the window shows them when they are known.
bool MainGLCanvas_cls::LacksFollowed() {
    constexpr long kMillis = 50;
    const bool bBefore = mbWaits;
    mbWaits = !mExport.IsRunning() && (WritesOutput() || mImage.TakesWindow());
    if (!mbWaits) return false;
    ParticleWatch_cls* watch = mpCShared->mspCParticles;
    if (watch && !bBefore) watch->Resume();
    const auto track =
        watch ? watch->Learn(kMillis, ParticleWatch_cls::Source::Memory) : ParticleWatch_cls::State::Known;
    if (track == ParticleWatch_cls::State::More || track == ParticleWatch_cls::State::Reading) return true;
    FilterLists_cls* filters = mpCHost->GetPCFilters();
    if (!filters || !filters->mpCBonds || !mShowData.mValue) return false;
    const auto state = filters->mpCBonds->Follow(kMillis, BondFollower_cls::Source::Memory);
    return state == BondFollower_cls::State::More || state == BondFollower_cls::State::Reading;
}

void MainGLCanvas_cls::ReadTime() {
    const TimeCtrl_cls& time = *mpCHost->GetPCTimeCtrl();
    mFrameFrame = time.GetFrame();
    mFrameStep = time.GetInterpStep();
    mFrameBlurFactor = time.mCMotionBlur.GetFactor();
    mMoment.bData = !mbLoading;
    mMoment.frame = mFrameFrame;
    mMoment.doubleIndex = time.GetDoubleIndex();
    mMoment.remappedIndex = time.GetRemappedIndexDouble(-1, -1);
    mMoment.dataFrame = static_cast<int>(mMoment.remappedIndex);
    // Here the step of a motion blur counts; what must be read is the same for all steps of a frame.
    const double step =
        time.GetRemappedIndex(-1) - mMoment.dataFrame + time.GetRemappedInterpStepDouble(-1, -1);
    mMoment.dt = mpCHost->GetPCActiveFileSequence()->GetDT(mMoment.dataFrame, step);
    GLDrawData_cls::msCurrentDoubleIndex = mMoment.doubleIndex;
    mCamera.EvaluatePaths(mMoment.doubleIndex);
}

void MainGLCanvas_cls::DrawTextOnDC(wxDC& dc) {
    const wxString text =
        mpCGLContext
            ? _("Your OpenGL version is ") + GLInfo_cls::GetGLVersionStr() +
                  _("\nFBO is NOT supported. Plase upgrade your OpenGL environment.\nYou can not use "
                    "most advanced openGL functions on remote desktop.")
            : _("OpenGL is missing: nothing can be drawn here.");
    dc.SetBackground(wxBrush(wxColour(212, 212, 212)));
    dc.Clear();
    dc.SetTextForeground(*wxBLACK);
    dc.SetFont(GetFont());
    dc.DrawLabel(text, GetClientRect().Deflate(8));
    mPaintedFrame = mpCHost->GetPCTimeCtrl()->GetFrame();
    mPaintedStep = mpCHost->GetPCTimeCtrl()->GetInterpStep();
    GbGLLockPlayWait.store(false);
}

bool MainGLCanvas_cls::BeginGL() {
    if (!MakeContextCurrent()) return false;
    InitializeGLIfNot();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    return FBO_cls::msbSupported;
}

void MainGLCanvas_cls::InitializeGLIfNot() {
    if (mbGLInitialized) return;
    GLStrings2D_cls::InitializeGLUT();
    glClearColor(0, 0, 0, 1);
    glClearStencil(0);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_LIGHTING);
    glDisable(GL_COLOR_MATERIAL);
    glLineStipple(2, 43690);
    {
        const GLAttribScope_cls attributes;
        GLInfo_cls::Initialize();
        GLSequence_cls::Of(*mpCHost->GetPCActiveFileSequence()).RefreshGLAttribTex();
    }
    FBO_cls::Initialize();
    if (FBO_cls::msbSupported) {
        GLAttribute_cls::InitializeShader(this, true);
        mpCShared->InitializeGL();
    }
    glDepthFunc(GL_LEQUAL);
    mbGLInitialized = true;
    CheckGLErrors("initialisation");
}

void MainGLCanvas_cls::SetViewFromSettings() {
    const wxSize size = GetPixelSize();
    mCGLPerspective.SetWindowSize(size.x, size.y);
    MainGLCanvas_cls* pFirst = GetOther(0);
    if (mDisplayMode.mValue == DISPLAY_COPY && pFirst) {
        pFirst->mCamera.UpdateCameraPos(); // which of the two paints first isn't ours to say
        mCamera.mCCamPos = pFirst->mCamera.mCCamPos;
    }
    // An image has a shape of its own; the faces of wide views are square whatever the picture's shape is.
    const wxSize shape = mImage.IsRequested() && GetMultiPanelMode() == 0 ? mImage.GetImageSize(size) : size;
    mCGLPerspective.mbPerspective = mGLGeometry.mValue != GEOMETRY_ORTHOGRAPHIC;
    mCGLPerspective.SetClipSize(shape.x, shape.y);
    mCGLPerspective.mNear = static_cast<double>(mGLDepthMin.mValue);
    mCGLPerspective.mFar = static_cast<double>(mGLDepthMax.mValue);
    mMessage.SetWindowGeometry(size.x, size.y);
}

void MainGLCanvas_cls::PlaceCamera() {
    mCamera.UpdateCameraPos();
    mMoment.distanceToAnchor = mCamera.GetDistanceToAnchor();
    if (!mbLoading) NotePainted();
    mMessage.Add(mCamera.SetAngleIfLinked(&mCGLPerspective));
    ImgSequence_cls* pSequence = mpCShared->mspCImgSeqLinked;
    if (!pSequence || GpCurrentGLPanel != this) return;
    const wxSize size = GetPixelSize();
    pSequence->SetGeom(size.x, size.y, static_cast<float>(mCGLPerspective.mAngle), false);
}

void MainGLCanvas_cls::NotePainted() {
    mPaintedFrame = mFrameFrame;
    mPaintedStep = mFrameStep;
    mPaintedBlurFactor = mFrameBlurFactor;
}

// A view along an axis has one eye.
void MainGLCanvas_cls::SetEye(int pass) {
    const StereoGram_cls* stereo = IsAlongAxis() ? nullptr : mpCShared->mspCStereogramLink;
    mMoment.passes = stereo && stereo->IsStereo() ? 2 : 1;
    mMoment.pass = pass;
    mMoment.eye = stereo ? stereo->GetStereoEye(pass) : EYE_NONE;
}

/// What window and image show of a face. Those of wide views are put together by meshes, which look anywhere.
ShownPart_st MainGLCanvas_cls::GetShownPart() const {
    const int side = mMoment.fboSize;
    if (GetMultiPanelMode() != FishEye_cls::MODE_FLAT) return {0, 0, side, side};
    const wxSize window = GetPixelSize();
    const ShownPart_st image = mImage.GetShownPart(side, window);
    return mMoment.bHidden ? image : JoinParts(GetPartInWindow(side, window.x, window.y), image);
}

// Two eyes with a stereogram; each is drawn, kept for an image if one is wanted, and shown.
void MainGLCanvas_cls::DrawEyes() {
    const wxSize size = GetPixelSize();
    mImage.BeginPaint();
    SetEye(0);
    for (int pass = 0; pass < mMoment.passes; SetEye(++pass)) {
        const double angle = mCGLPerspective.mAngle;
        mScene.DrawOnFBO();
        if (pass == 0 && !mMoment.bHidden) {
            PositionAndDirection_cls camera = mCamera.mCCamPos; // between the eyes
            mScene.ModifyByDomeTilt(&camera);
            mpCPick->GetGLMatrixInfo(camera, angle, size, GetContentScaleFactor());
        }
        mCGLPerspective.SetModelOrProjectionViewOnGL(mCamera.mCCamPos, GL_MODELVIEW);
        mCGLPerspective.SetClipSize(size.x, size.y);
        mCGLPerspective.mAngle = static_cast<int>(angle); // the rest of the paint knows whole degrees only
        mImage.TakeFaces({mFrameFrame, mFrameStep, mFrameBlurFactor}, mbLoading, angle, size);
        if (mMoment.bHidden) continue;
        mImage.TakeWindowEye(size, mbLoading);
        mGather.GatherFBOImages(size.x, size.y, GatherTarget::Window);
    }
    SetEye(0);
}

// The memory of wide views is kept while there are any: fresh memory costs a paint several times what drawing
// into old memory does.
void MainGLCanvas_cls::EndFaces() {
    const bool bKeep = IsAnyMultiPanel();
    mpCShared->mspCFishEyeCtrl->MakeFishEyeEnd(bKeep);
    if (!bKeep) mpCShared->mspCDome.reset();
    if (mMoment.passes == 1) mpCShared->mspCLeftEye[size_t(GatherTarget::Window)].reset();
}

void MainGLCanvas_cls::CountPaint() {
    if (mCStopWatch.Time() > 200) PostMenuEvent(ID_REFRESH_SB); // which tells of the drawing still
    if (mbLoading) return;
    ++mPaintCount;
}

void MainGLCanvas_cls::DrawOnWindow() {
    const wxSize size = GetPixelSize();
    mOverlay.DrawOverlays(size.x, size.y, false);
    mImage.TakeWindowPicture(size, mbLoading);
    mCGLPerspective.SetWindowSize(size.x, size.y);
    mCGLPerspective.SetViewportOnGL();
    const double scale = GetContentScaleFactor();
    if (mShowItems.mValue) mNavigators.Show(mCamera.mCCamPos, size.x, size.y, scale);
    const GLAttribScope_cls attributes;
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_BLEND);
    mImage.DrawFrameBox(size.x, size.y);
    mMouse.DrawGuide(size.x, size.y);
    mMessage.DrawMessage(GetFacts(), mShowMessage.mValue, size.x, size.y);
    if (mMouse.HasButtons()) Navigators_cls::DrawButton(size.x, size.y, scale);
    CheckGLErrors("messages");
}

// Pictures that are written don't depend on the window, nor on what the hand is about to do.
void MainGLCanvas_cls::SetItemsFromWindow() {
    constexpr double kWritten = 1000.0; // a window of usual width
    const bool bWritten = mMoment.bHidden || WritesOutput();
    const wxSize window =
        bWritten ? wxSize(int(kWritten), int(std::lround(kWritten / mCGLPerspective.GetClipAspectRatio())))
                 : GetPixelSize();
    mMoment.bHandles = !bWritten;
    mMoment.bWritten = bWritten || mImage.TakesWindow();
    mMoment.pixelsAcross = ViewPick_cls::GetPixelsAcross(GetMultiPanelMode(), mCGLPerspective.mAngle, window,
                                                         bWritten ? 1.0 : GetContentScaleFactor());
    GLDrawData_cls::msThinning = mMoment.bWritten ? 1 : mpCShared->mThinning.GetFactor();
    mLastPaint.mbThinned = GLDrawData_cls::msThinning > 1;
}

void MainGLCanvas_cls::NotePaintTime() {
    mLastPaint.mMillis = double(mCStopWatch.TimeInMicro().ToDouble()) / 1000.0;
    if (mbLoading || WritesOutput()) return;
    int views = 0;
    for (int view = 0; view < kViewNumber; ++view)
        views += GetOther(view) && GetOther(view)->IsShownOnScreen();
    mpCShared->mThinning.NotePaint(mLastPaint.mMillis,
                                   GLDrawData_cls::msDownsizedAtFBO0 * GLDrawData_cls::msThinning, views);
}

void MainGLCanvas_cls::ExportFrame() {
    if (mExport.ExportFrame(mFrameFrame))
        NotePainted();
    else
        MarkStale();
}
