#include "GL/VIEW/clsMainGLCanvas.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <wx/intl.h>
#include <wx/toplevel.h>

#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/ThreadStates.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/clsXErrorScope.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewPick.h"
#include "PDATA/clsPDataSequence.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsMoveItem.h"
#include "TIME/clsTimeCtrl.h"

namespace {

// The toolkit takes a display without any OpenGL for a mistake of ours: it would put a box on the screen, or
// end the process over what the X server refuses. From here on both are quiet, until EndQuietly.
wxAssertHandler_t sOuterAssert = nullptr;
std::unique_ptr<XErrorScope_cls> spErrors;

wxGLAttributes BeginQuietly(bool bWanted) {
    sOuterAssert = wxSetAssertHandler(nullptr);
    spErrors = std::make_unique<XErrorScope_cls>();
    wxGLAttributes attributes; // empty ones are refused before they are looked for, which takes long
    if (bWanted) attributes.PlatformDefaults().RGBA().DoubleBuffer().Depth(24).Stencil(8).EndList();
    return attributes;
}

void EndQuietly() {
    spErrors.reset();
    wxSetAssertHandler(sOuterAssert);
}

wxGLContextAttrs MakeContextAttributes() {
    wxGLContextAttrs attributes;
    attributes.PlatformDefaults().CompatibilityProfile().EndList();
    return attributes;
}

} // namespace

MainGLCanvas_cls::MainGLCanvas_cls(wxWindow* pParent, GLCanvasCtrl_cls* pCtrl, const ViewLinks_st& links,
                                   int panelIndex, int displayMode, std::shared_ptr<wxGLContext> pContext)
    : wxGLCanvas(pParent, BeginQuietly(links.IsDrawn(panelIndex)), wxID_ANY, wxDefaultPosition, wxDefaultSize,
                 wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE, wxString::Format("View %d", panelIndex)),
      ViewSettings_cls(*links.mpCHost, panelIndex), mCamera(*this, *links.mpCShared, *links.mpCHost),
      mPov(*this, *links.mpCHost), mpCCtrl(pCtrl), mpCHost(links.mpCHost), mpCShared(links.mpCShared),
      mpCDrawOption(links.mpCDrawOption), mpCGLContext(std::move(pContext)),
      mWait(*mpCHost), mContext{*mpCHost, *mpCShared, *this, mCamera, mCGLPerspective, mMoment, mMessage},
      mScene(mContext), mGather(mContext), mOverlay(mContext), mImage(mContext, mScene, mGather, mOverlay),
      mExport(mContext), mpCPick(std::make_unique<ViewPick_cls>(mContext, mScene)), mMenu(*this, *pCtrl),
      mMouse(*this, mMenu, *mpCPick, *mpCHost, links.mpCPreference, *mpCShared) {
    // A window that GL can't draw into still stands in its place and says why it is empty.
    const bool bGL = GetHandle() != nullptr;
    if (!bGL) mpCGLContext.reset();
    if (bGL && !mpCGLContext) MakeContext();
    EndQuietly();
    if (!bGL) {
        m_noExpose = m_nativeSizeEvent = false; // which the failed attempt has left as a GL window needs them
        wxWindow::Create(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS);
    }
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    if (!mpCGLContext && links.IsDrawn(panelIndex)) TellNoGL();
    SetDisplayMode(displayMode);
    Bind(wxEVT_PAINT, &MainGLCanvas_cls::OnPaint, this);
}

MainGLCanvas_cls::~MainGLCanvas_cls() {
    if (HasCapture()) ReleaseMouse();
    if (GpCurrentGLPanel == this) GpCurrentGLPanel = nullptr;
}

// One for all views: a driver of software compiles each way of drawing once for each context, and keeps it.
void MainGLCanvas_cls::MakeContext() {
    const wxGLContextAttrs attributes = MakeContextAttributes();
    mpCGLContext = std::make_shared<wxGLContext>(this, nullptr, &attributes);
    if (!mpCGLContext->IsOK()) mpCGLContext = std::make_shared<wxGLContext>(this);
    if (!mpCGLContext->IsOK()) mpCGLContext.reset();
}

void MainGLCanvas_cls::TellNoGL() {
    static bool sbTold = false;
    if (sbTold) return;
    sbTold = true;
    const wxString text =
        _("The views stay empty: this display offers no OpenGL of version 2.0 or higher with a "
          "compatibility profile.\nInstall the OpenGL driver of your graphics card, or the "
          "packages libgl1 and libgl1-mesa-dri, and start again.");
    CallAfter([text] { MsgBox(text, _("No OpenGL")); });
}

// A context may be made and yet be refused when it is first used: the server answers late.
bool MainGLCanvas_cls::MakeContextCurrent() {
    if (!mpCGLContext) return false;
    if (mbGLInitialized) return SetCurrent(*mpCGLContext);
    const XErrorScope_cls errors;
    if (SetCurrent(*mpCGLContext) && !errors.HasFailed()) return true;
    mpCGLContext.reset();
    TellNoGL();
    return false;
}

wxString MainGLCanvas_cls::Serialize() { return mConfList.SerializeAll(); }

void MainGLCanvas_cls::ReadStrLine(const wxString& line) {
    if (!ReadSettings(line)) return;
    mCamera.ForceUpdateCameraPos();
    MarkStale();
}

MainGLCanvas_cls* MainGLCanvas_cls::GetOther(int view) const { return mpCHost->GetPCGLCanvas(view); }

void MainGLCanvas_cls::SetDisplayMode(int mode) {
    TakeDisplayMode(mode);
    MarkStale();
}

void MainGLCanvas_cls::SetGeometry(int geometry) {
    TakeGeometry(geometry);
    MarkStale();
}

void MainGLCanvas_cls::ChooseDisplayMode(int mode) {
    mpCCtrl->ChangeBy([this, mode] { SetDisplayMode(mode); });
    mpCCtrl->UpdateWindow();
    RefreshEX();
}

void MainGLCanvas_cls::TogglePerspective() {
    const int other =
        mGLGeometry.mValue == GEOMETRY_PERSPECTIVE ? GEOMETRY_ORTHOGRAPHIC : GEOMETRY_PERSPECTIVE;
    mpCCtrl->ChangeBy([this, other] { SetGeometry(other); });
    mpCCtrl->UpdateWindow();
    RefreshEX();
}

void MainGLCanvas_cls::LinkageConnect() {
    mCamera.LinkageConnect();
    MarkStale();
}

void MainGLCanvas_cls::SetThisToBeActiveGL() {
    if (GpCurrentGLPanel == this) return;
    GpCurrentGLPanel = this;
    mpCHost->ReconnectCameraPathGUI();
}

void MainGLCanvas_cls::RequestImage(ViewImage_cls::ImageTaker taker, wxSize size, bool bTransparent) {
    mImage.RequestImage(std::move(taker), size, bTransparent);
    MarkStale();
    RefreshEX();
}

bool MainGLCanvas_cls::DrawImage() {
    if (!mpCGLContext) return false;
    mMoment.bHidden = true;
    Paint();
    mMoment.bHidden = false;
    return mImage.HasBaked();
}

void MainGLCanvas_cls::RequestWindowPicture(ViewImage_cls::WindowTaker taker, bool bEyes) {
    mImage.RequestWindowPicture(std::move(taker), bEyes);
    MarkStale();
    RefreshEX();
}

void MainGLCanvas_cls::StartSaveImgSeqProcess(ImgSequence_cls* pSequence) {
    mImage.StartSaveImgSeqProcess(pSequence);
    MarkStale();
    RefreshEX();
}

void MainGLCanvas_cls::StopSaveImgSeqProcess() {
    if (!mImage.StopSaveImgSeqProcess()) return;
    MarkStale(); // the window shows its own shape again
    RefreshEX();
}

void MainGLCanvas_cls::StartExportDataProcess(DataExporter_cls* pExporter) {
    mExport.Start(pExporter);
    MarkStale();
}

void MainGLCanvas_cls::StopExportDataProcess() {
    if (mExport.Stop()) MarkStale(); // the picture shows another frame
}

wxSize MainGLCanvas_cls::GetPixelSize() const {
    const wxSize size = GetClientSize() * GetContentScaleFactor();
    return wxSize(std::max(size.x, 1), std::max(size.y, 1));
}

void MainGLCanvas_cls::RefreshEX() {
    // Drawing happens in paint events only. One that comes while a paint lets events through would be
    // refused: the idle loop brings it later.
    if (GbGLLockDrawing.load())
        MarkStale();
    else
        RefreshForOutput();
    if (mPanelIndex != 0) return;
    MainGLCanvas_cls* pExtra = GetOther(kExtraPanel);
    if (pExtra && pExtra->IsShownOnScreen() && pExtra->GetDisplayMode() == DISPLAY_COPY) pExtra->RefreshEX();
}

bool MainGLCanvas_cls::CheckGLRefresh(int frame, int step) {
    if (!IsSeen() && !WritesOutput()) return true;
    const MotionBlurCtrl_cls& blur = mpCHost->GetPCTimeCtrl()->mCMotionBlur;
    const bool bBlurDone = !blur.mbBlur || blur.GetFactor() == mPaintedBlurFactor;
    if (frame == mPaintedFrame && step == mPaintedStep && bBlurDone) return true;
    if (mbPaintQueued) return false;
    if (mbLoading && IsReaderBusy() && mWait.IsWaitingFor(frame, step)) return false; // its end will wake us
    RefreshForOutput();
    return false;
}

// The toolkit paints nothing in a window that is put away.
bool MainGLCanvas_cls::IsSeen() const {
    const auto* window = dynamic_cast<const wxTopLevelWindow*>(wxGetTopLevelParent(mpCCtrl));
    return IsShownOnScreen() && !(window && window->IsIconized());
}

// What is written doesn't wait for a window that nobody sees.
void MainGLCanvas_cls::RefreshForOutput() {
    if (WritesOutput())
        QueuePaint();
    else
        Refresh(false);
}

void MainGLCanvas_cls::MarkStale() { mPaintedFrame = mPaintedStep = -1; }

bool MainGLCanvas_cls::IsAnyMultiPanel() const {
    for (int view = 0; view < kViewNumber; ++view) {
        const MainGLCanvas_cls* pOther = GetOther(view);
        if (pOther && pOther->IsShownOnScreen() && pOther->GetMultiPanelMode() != 0) return true;
    }
    return false;
}

ViewMessage_cls::Facts_st MainGLCanvas_cls::GetFacts() const {
    ViewMessage_cls::Facts_st facts;
    if (!mShowMessage.mValue) return facts;
    const PDataSequence_cls& sequence = *mpCHost->GetPCActiveFileSequence();
    facts.mFile = sequence.GetFilename(mMoment.dataFrame);
    facts.mFileStatus = sequence.GetFilenameStatus(mMoment.dataFrame);
    facts.mDisplayMode = mDisplayMode.mValue;
    facts.mbLookAnchor = GetPLinkedCameraPath()->mCLookAnchor.mValue;
    facts.mTime = sequence.GetTime(mMoment.dataFrame);
    facts.mParticles = sequence.GetParticleNumber(mMoment.dataFrame);
    if (FilterLists_cls* filters = mpCHost->GetPCFilters())
        if (const FilterCopy_cls* copies = filters->GetWorld().GetPCCopy())
            facts.mCopies = mpCHost->MayDrawCopies(copies->GetNumber()) ? copies->GetNumber() : 1;
    facts.mMillis = mCStopWatch.Time();
    facts.mHitObject = ViewPick_cls::msHitObject;
    facts.mHitSub = ViewPick_cls::msHitSub;
    facts.mSelected = static_cast<long long>(reinterpret_cast<intptr_t>(MoveItem_cls::mspCSelectedObject));
    facts.mScale = GetContentScaleFactor();
    constexpr int kBesideButtons = 34;
    facts.mLeft = int((mMouse.HasButtons() ? kBesideButtons : 5) * facts.mScale);
    return facts;
}
