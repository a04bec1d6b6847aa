// One paint of a view, from the gate to the swap of the buffers. The order of the steps is the contract
// with playing, output and the dialogs.
#include "GL/VIEW/clsMainGLCanvas.h"

#include <wx/dcclient.h>
#include <wx/intl.h>
#include <wx/utils.h>

#include "APP/clsFrameMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLInfo.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsInformation.h"
#include "IMAGE/clsImgSequence.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kReadyTries = 10;
constexpr long kWaitMillis = 250; // what a user doesn't feel as a halt
constexpr unsigned long kPollMillis = 2;

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

bool IsReaderBusy() {
    return GpCThreadReader.load() && !GbThreadReaderFinished.load(std::memory_order_acquire);
}

bool IsInterpolatorBusy() {
    return GpCThreadInterpolate.load() && !GbThreadInterpolateFinished.load(std::memory_order_acquire);
}

} // namespace

// The toolkit holds all input back while it paints, and with it the abort button: so the picture is drawn
// right behind the paint event, where long drawing can let events through.
void MainGLCanvas_cls::OnPaint(wxPaintEvent&) {
    wxPaintDC dc(this); // the toolkit wants one, whatever happens
    if (!mpCDataExporter && (!mpCGLContext || !FBO_cls::msbSupported)) {
        if (IsPaintAllowed()) WaitForFrame(); // data are read all the same
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
    mbLoading = WaitForFrame() == DataState::Loading;
    if (mbLoading) {
        MarkStale();
        if (WritesOutput() || KeepsLastPicture()) return;
        mWXStrMessage += _("Loading ...") + wxString("\n");
    } else if (mShowData.mValue && !IsReaderBusy()) {
        mpCFrame->PrepareFramesAhead(mpCFrame->GetPCTimeCtrl()->GetPrefetch());
    }
    ReadTime();
    if (mpCDataExporter) {
        ExportFrame();
        return;
    }
    // Tags are emptied and lights brought to the double index here.
    if (!BeginGL()) {
        Refresh(false); // for the text that tells why
        return;
    }
    if (mbDropImage && !mbImageRequest) DropImage();
    SetViewFromSettings();
    PlaceCamera();
    mMoment.fboSize = GetFBOSize();
    mCStopWatch.Start();
    DrawProgress_cls::ForgetCut();
    mspCFishEyeCtrl->MakeFishEyeBegin(mCGLPerspective.mClipW, mCGLPerspective.mClipH, mMoment.fboSize);
    DrawEyes();
    EndFaces();
    FinishImage();
    CountPaint();
    if (mbHiddenPaint) return;
    DrawOnWindow();
    if (msbKeepPicture) KeepPicture();
    SwapBuffers();
    mShownSize = GetPixelSize();
    if (mspCInformationLink) mspCInformationLink->Update();
    // POV-Ray export takes its step; the dialogs of camera, lights and stereo follow the active view.
}

bool MainGLCanvas_cls::IsPaintAllowed() const {
    return (IsShownOnScreen() || WritesOutput()) && !GbGLLockDrawing.load() &&
           !GbGLLockForLoadingData.load() && !GbGLLockForInterplateData.load() &&
           !GbGLLockProjectLoading.load() && !GbGLLockModalDialog.load();
}

// Reading is started without waiting in the store, so that the window stays alive: a read that takes longer
// is left alone, and its end wakes the idle loop. A paint without a window waits for as long as it takes.
MainGLCanvas_cls::DataState MainGLCanvas_cls::WaitForFrame() {
    const TimeCtrl_cls& time = *mpCFrame->GetPCTimeCtrl();
    if (!mShowData.mValue && !mpCDataExporter) return DataState::Ready;
    if (mWaitFrame != time.GetFrame() || mWaitStep != time.GetInterpStep()) {
        mWaitFrame = time.GetFrame();
        mWaitStep = time.GetInterpStep();
        mCWaitWatch.Start();
    }
    mpCFrame->TellPresent();
    const double index = time.GetRemappedIndexDouble(-1, -1);
    const int whole = static_cast<int>(index);
    for (int tries = 0; tries < kReadyTries && !mpCFrame->IsTheFrameReady(-1); ++tries) {
        if (mbHiddenPaint) {
            mpCFrame->PrepareTheFrame(-1);
            continue;
        }
        if (!IsReaderBusy() && !IsInterpolatorBusy())
            mpCFrame->GetPCDataSeqCtrl()->PrepareIndex(whole, index - whole, time.IsForceInterpolation(),
                                                       false);
        while ((IsReaderBusy() || IsInterpolatorBusy()) && !mpCFrame->IsTheFrameReady(-1)) {
            if (mCWaitWatch.Time() > kWaitMillis) return DataState::Loading;
            wxMilliSleep(kPollMillis);
        }
    }
    mWaitFrame = mWaitStep = -1;
    return DataState::Ready; // or what there is: nothing more will come
}

bool MainGLCanvas_cls::KeepsLastPicture() const { return mShownSize == GetPixelSize(); }

void MainGLCanvas_cls::ReadTime() {
    const TimeCtrl_cls& time = *mpCFrame->GetPCTimeCtrl();
    mFrameFrame = time.GetFrame();
    mFrameStep = time.GetInterpStep();
    mFrameBlurFactor = time.mCMotionBlur.GetFactor();
    mMoment.bData = !mbLoading;
    mMoment.doubleIndex = time.GetDoubleIndex();
    mMoment.remappedIndex = time.GetRemappedIndexDouble(-1, -1);
    mMoment.dataFrame = static_cast<int>(mMoment.remappedIndex);
    // Here the step of a motion blur counts; what must be read is the same for all steps of a frame.
    const double step =
        time.GetRemappedIndex(-1) - mMoment.dataFrame + time.GetRemappedInterpStepDouble(-1, -1);
    mMoment.dt = mpCFrame->GetPCActiveFileSequence()->GetDT(mMoment.dataFrame, step);
    GLDrawData_cls::msCurrentDoubleIndex = mMoment.doubleIndex;
    EvaluatePaths(mMoment.doubleIndex);
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
    mPaintedFrame = mpCFrame->GetPCTimeCtrl()->GetFrame();
    mPaintedStep = mpCFrame->GetPCTimeCtrl()->GetInterpStep();
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
        mpCFrame->GetPCActiveFileSequence()->RefreshGLAttribTex();
        // Shapes come here.
    }
    FBO_cls::Initialize();
    if (FBO_cls::msbSupported) {
        GLAttribute_cls::InitializeShader(this, true);
        InitializeShared();
    }
    glDepthFunc(GL_LEQUAL);
    mbGLInitialized = true;
    CheckGLErrors("initialisation");
}

void MainGLCanvas_cls::SetViewFromSettings() {
    const wxSize size = GetPixelSize();
    mCGLPerspective.SetWindowSize(size.x, size.y);
    MainGLCanvas_cls* pFirst = GetOther(0);
    if (mDisplayMode.mValue == 8 && pFirst) {
        pFirst->UpdateCameraPos(); // which of the two paints first isn't ours to say
        mCCamPos = pFirst->mCCamPos;
    }
    SetPerspective();
    mCGLPerspective.mNear = static_cast<double>(mGLDepthMin.mValue);
    mCGLPerspective.mFar = static_cast<double>(mGLDepthMax.mValue);
    mCStrings.SetWindowGeometry(size.x, size.y);
}

void MainGLCanvas_cls::PlaceCamera() {
    UpdateCameraPos();
    mMoment.distanceToAnchor = IsCameraLinked()
                                   ? MyVector::GetNormRelative<double>(mCCamPos.mPos, msCAnchorPos)
                                   : mCCamPos.GetDistanceToAnc();
    if (!mbLoading) {
        mPaintedFrame = mFrameFrame;
        mPaintedStep = mFrameStep;
        mPaintedBlurFactor = mFrameBlurFactor;
    }
    SetAngleIfLinked();
    if (!mspCImgSeqLinked || GpCurrentGLPanel != this) return;
    const wxSize size = GetPixelSize();
    mspCImgSeqLinked->SetGeom(size.x, size.y, static_cast<float>(mCGLPerspective.mAngle), false);
}

// Two eyes with a stereogram; each is drawn, kept for an image if one is wanted, and shown.
void MainGLCanvas_cls::DrawEyes() {
    const wxSize size = GetPixelSize();
    const double angle = mCGLPerspective.mAngle;
    mPlainGrey.reset();
    if (mbImageRequest && mImageOrder.bTransparent) mPlainGrey = 0.0f;
    DrawOnFBO();
    mCGLPerspective.SetModelOrProjectionViewOnGL(mCCamPos, GL_MODELVIEW);
    mCGLPerspective.SetClipSize(size.x, size.y);
    mCGLPerspective.mAngle = static_cast<int>(angle); // the rest of the paint knows whole degrees only
    if (BeginImage()) BakeImage(angle);
    if (!mbHiddenPaint) GatherFBOImages(size.x, size.y, false);
}

void MainGLCanvas_cls::CountPaint() {
    if (mCStopWatch.Time() > 200) PostMenuEvent(ID_REFRESH_SB); // which tells of the drawing still
    if (mbLoading) return;
    if (mPaintCount++ == 0) mFirstPaintMillis = static_cast<float>(mCStopWatch.Time());
}

void MainGLCanvas_cls::DrawOnWindow() {
    const wxSize size = GetPixelSize();
    DrawOverlays(size.x, size.y, false);
    TakeWindowPicture();
    mCGLPerspective.SetWindowSize(size.x, size.y);
    mCGLPerspective.SetViewportOnGL();
    // The orientation gizmo comes here with "ShowItems=", and its buttons after the message.
    const GLAttribScope_cls attributes;
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_BLEND);
    DrawFrameBox(size.x, size.y);
    DrawMessage(size.x, size.y);
    CheckGLErrors("messages");
}
