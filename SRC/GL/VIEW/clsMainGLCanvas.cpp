#include "GL/VIEW/clsMainGLCanvas.h"

#include <algorithm>

#include <wx/toplevel.h>

#include "APP/clsFrameMain.h"
#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "COMMON/ThreadStates.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLTexture.h"
#include "GL/BASE/clsXErrorScope.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/VIEW/clsDistortion.h"
#include "GL/VIEW/clsDrawClrLegend.h"
#include "GL/VIEW/clsDrawTimeIndex.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "TIME/clsTimeCtrl.h"

bool MainGLCanvas_cls::msbKeepPicture = false;
const int MainGLCanvas_cls::msAFBOSize[5] = {256, 512, 1024, 2048, 4096};
ConfItemUINT_cls MainGLCanvas_cls::msCFBOSizeIndex;
ConfItemFLOAT_cls MainGLCanvas_cls::msCLineWidth;
ConfItemUINT_cls MainGLCanvas_cls::msCTagFontIndex;
ConfItemList_cls MainGLCanvas_cls::msCConfListStatic;
ColorCurve_cls* MainGLCanvas_cls::mspCClrCurveBG = nullptr;
ColorCurve_cls* MainGLCanvas_cls::mspCClrCurveOut = nullptr;
ColorCurve_cls* MainGLCanvas_cls::mspCClrCurveTag = nullptr;
double MainGLCanvas_cls::msCAnchorPos[3] = {0, 0, 0};
double MainGLCanvas_cls::msCAnchorPosOrtho[3] = {0, 0, 0};
FishEye_cls* MainGLCanvas_cls::mspCFishEyeCtrl = nullptr;
Distortion_cls* MainGLCanvas_cls::mspCDistortion = nullptr;
GLTexture_cls* MainGLCanvas_cls::mspCMask = nullptr;
GLTexture_cls* MainGLCanvas_cls::mspCFisheyeGrid = nullptr;
DrawTimeIndex_cls* MainGLCanvas_cls::mspCDrawTimeIndex = nullptr;
DrawClrLegend_cls* MainGLCanvas_cls::mspCDrawClrLegend = nullptr;
Exposure_cls* MainGLCanvas_cls::mspCExposureLink = nullptr;
Information_cls* MainGLCanvas_cls::mspCInformationLink = nullptr;
ImgSequence_cls* MainGLCanvas_cls::mspCImgSeqLinked = nullptr;
std::unique_ptr<FBO_cls> MainGLCanvas_cls::mspCDome;
std::unique_ptr<FBO_cls> MainGLCanvas_cls::mspCStage;

namespace {

// The toolkit takes a display without any OpenGL for a mistake of ours: it would put a box on the screen, or
// end the process over what the X server refuses. From here on both are quiet, until EndQuietly.
wxAssertHandler_t sOuterAssert = nullptr;
std::unique_ptr<XErrorScope_cls> spErrors;

wxGLAttributes BeginQuietly() {
    sOuterAssert = wxSetAssertHandler(nullptr);
    spErrors = std::make_unique<XErrorScope_cls>();
    wxGLAttributes attributes;
    attributes.PlatformDefaults().RGBA().DoubleBuffer().Depth(24).Stencil(8).EndList();
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

MainGLCanvas_cls::MainGLCanvas_cls(wxWindow* pParent, GLCanvasCtrl_cls* pCtrl, FrameMain_cls* pFrame,
                                   DrawOption_cls* pDrawOption, Preference_cls* pPreference, int panelIndex,
                                   int displayMode, wxGLContext* pShare)
    : wxGLCanvas(pParent, BeginQuietly(), wxID_ANY, wxDefaultPosition, wxDefaultSize,
                 wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE, wxString::Format("View %d", panelIndex)),
      mPanelIndex(panelIndex), mpCCtrl(pCtrl), mpCFrame(pFrame), mpCDrawOption(pDrawOption),
      mCDolly(pPreference), mCMouse(pPreference) {
    // A window that GL can't draw into still stands in its place and says why it is empty.
    const bool bGL = GetHandle() != nullptr;
    if (bGL) MakeContext(pShare);
    EndQuietly();
    if (!bGL) {
        m_noExpose = m_nativeSizeEvent = false; // which the failed attempt has left as a GL window needs them
        wxWindow::Create(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS);
    }
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    if (!mpCGLContext) TellNoGL();
    AddItems();
    SetDisplayMode(displayMode);
    SetCameraToDefaultPos();
    Bind(wxEVT_PAINT, &MainGLCanvas_cls::OnPaint, this);
    BindMouse();
}

MainGLCanvas_cls::~MainGLCanvas_cls() {
    if (HasCapture()) ReleaseMouse();
    if (GpCurrentGLPanel == this) GpCurrentGLPanel = nullptr;
}

void MainGLCanvas_cls::MakeContext(wxGLContext* pShare) {
    const wxGLContextAttrs attributes = MakeContextAttributes();
    mpCGLContext = std::make_unique<wxGLContext>(this, pShare, &attributes);
    if (!mpCGLContext->IsOK()) mpCGLContext = std::make_unique<wxGLContext>(this, pShare);
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

void MainGLCanvas_cls::AddItems() {
    const wxString prefix = wxString::Format("Panel%d", mPanelIndex);
    mConfList.Add(&mShowMessage, prefix + "ShowMessage=", mPanelIndex == kExtraPanel ? "0" : "1");
    mConfList.Add(&mShowItems, prefix + "ShowItems=", "1");
    mConfList.Add(&mShowGrid, prefix + "ShowGrid=", "1");
    mConfList.Add(&mShowData, prefix + "ShowData=", "1");
    mConfList.Add(&mPivotMode, prefix + "PivotMode=", "0");
    mConfList.Add(&mGLDepthMin, prefix + "GLDepthMin=", "0.03");
    mConfList.Add(&mGLDepthMax, prefix + "GLDepthMax=", "5000");
    mConfList.Add(&mGLPersAngle, prefix + "GLPersAngle=", "35");
    mConfList.Add(&mGLOrthoScale, prefix + "GLOrthoScale=", "1");
    mConfList.Add(&mDisplayMode, prefix + "DisplayMode=", "0");
    mConfList.Add(&mGLGeometry, prefix + "GLGeometry=", "0");
    mConfList.Add(&mGLPathIndex, prefix + "GLPathIndex=", "0");
    mConfList.Add(&mGridType, prefix + "GridType=", "0");
    mConfList.Add(&mShowOtherCam, prefix + "ShowOtherCam=", "0");
    mConfList.Add(&mDrawItemByXOR, prefix + "DrawItemByXOR=", "0");
    mConfList.Add(&mGridAntialias, prefix + "GridAntialias=", "0");
    mConfList.Add(&mGridShowTag, prefix + "GridShowTag=", "0");
    mConfList.Add(&mDistortion, prefix + "Distortion", "0"); // files know these two without "="
    mConfList.Add(&mFisheyeGrid, prefix + "FisheyeGrid", "0");
}

void MainGLCanvas_cls::InitializeStaticMembers(Overlay_cls* pOverlay, Exposure_cls* pExposure,
                                               Information_cls* pInformation) {
    mspCClrCurveBG = new ColorCurve_cls("BGColor", _("Background"), "0 0 0 0");
    mspCClrCurveOut = new ColorCurve_cls("OutColor", _("Around the picture"), "0 0 0 0");
    mspCClrCurveTag = new ColorCurve_cls("TagColor", _("Tags"), "1 1 1 1");
    msCConfListStatic.Clear();
    msCConfListStatic.Add(&msCFBOSizeIndex, "FBOBufferSize=", "3");
    msCConfListStatic.Add(&msCTagFontIndex, "TagFontIndex=", "4");
    msCConfListStatic.Add(&msCLineWidth, "LineWidth=", "5");
    mspCExposureLink = pExposure;
    mspCInformationLink = pInformation;
    mspCDrawTimeIndex = new DrawTimeIndex_cls(pOverlay);
    mspCDrawClrLegend = new DrawClrLegend_cls(pOverlay);
    mspCFishEyeCtrl = new FishEye_cls;
    mspCDistortion = new Distortion_cls;
    mspCDistortion->ReadWavefrontObject(FindRuntimeFile("Resource/distortion.obj"));
}

namespace {

template <class T>
void DeleteAndForget(T*& pObject) {
    delete pObject;
    pObject = nullptr;
}

} // namespace

void MainGLCanvas_cls::DestructStaticMembers() {
    GLAttribute_cls::DestructStaticMembers();
    mspCDome.reset();
    mspCStage.reset();
    DeleteAndForget(mspCDistortion);
    DeleteAndForget(mspCFishEyeCtrl);
    DeleteAndForget(mspCDrawClrLegend);
    DeleteAndForget(mspCDrawTimeIndex);
    DeleteAndForget(mspCFisheyeGrid);
    DeleteAndForget(mspCMask);
    DeleteAndForget(mspCClrCurveBG);
    DeleteAndForget(mspCClrCurveOut);
    DeleteAndForget(mspCClrCurveTag);
    mspCExposureLink = nullptr;
    mspCInformationLink = nullptr;
    mspCImgSeqLinked = nullptr;
    msCConfListStatic.Clear();
}

wxString MainGLCanvas_cls::SerializeStaticMember() {
    return msCConfListStatic.SerializeAll() + mspCClrCurveBG->Serialize() + mspCClrCurveOut->Serialize() +
           mspCClrCurveTag->Serialize();
}

void MainGLCanvas_cls::ReadStrLineStaticMember(std::wistream& stream, const wxString& line) {
    msCConfListStatic.ReadStrLineAll(line);
    for (ColorCurve_cls* pCurve : {mspCClrCurveBG, mspCClrCurveOut, mspCClrCurveTag})
        pCurve->ReadStrLine(stream, line);
}

wxString MainGLCanvas_cls::Serialize() { return mConfList.SerializeAll(); }

void MainGLCanvas_cls::ReadStrLine(const wxString& line) {
    if (!mConfList.ReadStrLineAll(line)) return;
    mDisplayMode.mValue = std::clamp(mDisplayMode.mValue, 0, mPanelIndex == kExtraPanel ? 8 : 7);
    mGLGeometry.mValue = std::clamp(mGLGeometry.mValue, 0, 3);
    ForceUpdateCameraPos();
    MarkStale();
}

int MainGLCanvas_cls::GetFBOSize() { return msAFBOSize[std::min(msCFBOSizeIndex.mValue, 4u)]; }

MainGLCanvas_cls* MainGLCanvas_cls::GetOther(int view) const { return mpCFrame->GetPCGLCanvas(view); }

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
    if (pExtra && pExtra->IsShownOnScreen() && pExtra->GetDisplayMode() == 8) pExtra->RefreshEX();
}

bool MainGLCanvas_cls::CheckGLRefresh(int frame, int step) {
    if (!IsSeen() && !WritesOutput()) return true;
    const MotionBlurCtrl_cls& blur = mpCFrame->GetPCTimeCtrl()->mCMotionBlur;
    const bool bBlurDone = !blur.mbBlur || blur.GetFactor() == mPaintedBlurFactor;
    if (frame == mPaintedFrame && step == mPaintedStep && bBlurDone) return true;
    if (mbPaintQueued) return false;
    if (mbLoading && IsReaderBusy() && frame == mWaitFrame && step == mWaitStep)
        return false; // its end will wake us
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

void MainGLCanvas_cls::SetGLBGColor(int which) {
    if (mPlainGrey) {
        glClearColor(*mPlainGrey, *mPlainGrey, *mPlainGrey, *mPlainGrey);
        return;
    }
    float color[4];
    (which == 0 ? mspCClrCurveBG : mspCClrCurveOut)->GetColor4fScaled(color, 0.0f);
    glClearColor(color[0], color[1], color[2], color[3]);
}

void MainGLCanvas_cls::KeepPicture() {
    const wxSize size = GetPixelSize();
    const size_t row = static_cast<size_t>(size.x) * 3;
    std::vector<unsigned char> upward(row * static_cast<size_t>(size.y));
    const GLClientScope_cls client;
    glReadBuffer(GL_BACK); // the front buffer of a window can't be read everywhere
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, size.x, size.y, GL_RGB, GL_UNSIGNED_BYTE, upward.data());
    mVPicture.resize(upward.size());
    for (size_t y = 0, last = static_cast<size_t>(size.y) - 1; y <= last; ++y)
        std::copy_n(upward.data() + (last - y) * row, row, mVPicture.data() + y * row);
    mPictureSize = size;
}

const std::vector<unsigned char>& MainGLCanvas_cls::GetShownPicture(int* pW, int* pH) const {
    *pW = mPictureSize.x;
    *pH = mPictureSize.y;
    return mVPicture;
}
