#include "APP/clsMain.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include <wx/display.h>
#include <wx/filename.h>
#include <wx/utils.h>

#include "APP/ColorCurveLinks.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFollowRun.h"
#include "APP/clsFrameMain.h"
#include "APP/clsRecentFiles.h"
#include "APP/clsRecorder.h"
#include "APP/clsRecovery.h"
#include "APP/clsScene.h"
#include "COLORCURVE/EDITOR/clsColorCurveBtn.h"
#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "COMMON/ThreadStates.h"
#include "COMMON/UpdateBits.h"
#include "FILTER/PANEL/clsTexPropertyCtrl.h"
#include "FILTER/clsBondFollower.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/clsPreference.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/clsCameraPathCtrl.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsOverlay.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GL/VIEW/clsViewFitCtrl.h"
#include "IMAGE/clsImgSequence.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/EDITOR/DataDialogs.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSnap.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFontProvider.h"
#include "WIDGET/clsMyArtProvider.h"

namespace {

// More than this many files are cut to kKeptFiles; the store has 10000 slots.
constexpr int kMaxLastIndex = 9999;
constexpr int kKeptFiles = 8000;

/// Where the window stands at first: most of the screen, not more than a desk needs.
wxRect FirstWindowRect(int displayHeight) {
    wxRect rect = wxGetClientDisplayRect();
    if (rect.x + rect.width >= 1210) {
        rect.x = 10;
        rect.width = 1200;
    }
    const bool bHigh = displayHeight > 1050;
    if (rect.y + rect.height >= (bHigh ? 1010 : 910)) {
        rect.y = 10;
        rect.height = bHigh ? 1000 : 900;
    }
    return rect;
}

} // namespace

Main_cls::Main_cls(int filmView) {
    const bool bWindow = filmView < 0;
    mStrExeDir = GetExecutableDir();
    mPid = static_cast<unsigned long>(getpid());
    wxDisplaySize(&mDisplayWidth, &mDisplayHeight);

    MyArtProvider::Install();
    FontProvider_cls::InitializeStatic();

    // Later objects take earlier ones as arguments, and the frame's panels reach back to the hub.
    mpCDrawOption = new DrawOption_cls;
    mpCFilters = new FilterLists_cls;
    GLDrawData_cls::mspCFilterCtrlBooleanLink = &mpCFilters->GetBoolean();
    mpCExposure = new Exposure_cls;
    mpCInformation = new Information_cls;
    mpCOverlay = new Overlay_cls;
    mpCPDataSeqCtrl = new PDataSeqCtrl_cls(GLSequence_cls::GetMaker(mpCDrawOption), false);
    mpCDataLoader = new DataLoader_cls(this);
    mpCDataExporter = new DataExporter_cls(mpCDataLoader);
    mpCPeriodicBoundary = new PeriodicBoundary_cls;
    mpCFilters->mpCPeriodic = mpCPeriodicBoundary;
    mpCDataLoader->mpCPeriodic = mpCPeriodicBoundary;
    LinkDataDialogs(*mpCDataLoader, *mpCDataExporter, *mpCPeriodicBoundary);
    PDataBlock_cls::mspCDataLoaderLink = mpCDataLoader;
    mpCCameraPath = new CameraPath_cls;
    mpCAnchorPath = new AnchorPath_cls;
    mpCLightSRCCtrl = new LightSRCCtrl_cls;
    mpCStereoGram = new StereoGram_cls;
    mpCTimeCtrl = new TimeCtrl_cls(this);
    mpCParticles = new ParticleWatch_cls(*mpCPDataSeqCtrl, *mpCTimeCtrl, *mpCFilters, *mpCPeriodicBoundary);
    mpCAnchorPath->mFollow = [this](double time, double out[3]) {
        return mpCParticles->GetFollowed(time, out);
    };
    mpCAnchorPath->mFollowState = [this] { return mpCParticles->GetFollowState(); };
    mpCFilters->mpCBonds = std::make_unique<BondFollower_cls>(*mpCFilters, *mpCPDataSeqCtrl, *mpCTimeCtrl);
    mpCImgSequence = new ImgSequence_cls(mpCTimeCtrl);
    mpCPovRayCtrl = new PovRayCtrl_cls;
    mpCColorCurveCtrl = new ColorCurveCtrl_cls;
    ColorCurveBtn_cls::mspCColorCurveCtrlLinked = mpCColorCurveCtrl;
    LinkColorCurveCtrl(*this, *mpCColorCurveCtrl);
    LinkParamHooks();
    mpCInformation->Connect([this]() -> const PDataBlock_cls* {
        // As paints have it: steps of a frame may pass several snapshots.
        const int index = static_cast<int>(mpCTimeCtrl->GetRemappedIndexDouble(-1, -1));
        return IsTheIndexLoaded(index) ? mpCPDataSeqCtrl->GetPCActiveFileSequence()->GetPCBlock(index)
                                       : nullptr;
    });
    mpCInformation->Connect(mpCParticles);
    mpCInformation->ConnectPlace([this](float* pPos) {
        FilterDataBoxData_cls* box = mpCFilters->GetObject().GetPCDataBox();
        if (box) box->PlaceNow(pPos);
    });
    mpCScene = new Scene_cls(mpCTimeCtrl);
    mpCTexPropertyCtrl = new TexPropertyCtrl_cls;
    mpCRecentFiles = new RecentFiles_cls;
    mpCFrameMain = new FrameMain_cls("Morentis 3 v 0.80", this, FirstWindowRect(mDisplayHeight), filmView);
    mpCCameraPathCtrl =
        new CameraPathCtrl_cls(*mpCFrameMain, *mpCFrameMain->GetPCSharedView(), mpCStereoGram);
    mpCCameraPathCtrl->mGetRate = [this] { return double(mpCImgSequence->mVideoRate); };
    MakeCameraPathGroup();
    MakeTimeLines();
    mpCFrameMain->GetPCTopHalf()->ConnectFilters();
    if (bWindow) ReadProjectFile(GetConfigureFilePath());
    mpCFrameMain->GetPCViewFit()->NoteUntouched();
    mpCRecovery =
        new Recovery_cls(wxFileName(GetConfigureFilePath()).GetPath(), [this] { return MakeProjectText(); });
    mpCFrameMain->GetPCFileMenu()->FillRecentMenus();
    PostMenuEvent(ID_REFRESH_TL);
    PostMenuEvent(ID_REFRESH_GL);
    if (bWindow) mpCRecorder = new Recorder_cls(*this);
}

Main_cls::~Main_cls() {
    delete mpCRecorder;
    WaitThreadFinish();
    UnlinkParamHooks();
    GLDrawData_cls::mspCFilterCtrlBooleanLink = nullptr;
    mpCAnchorPath->mFollow = nullptr;
    delete mpCParticles;
    delete mpCTexPropertyCtrl;
    delete mpCFilters;
    delete mpCDrawOption;
    delete mpCOverlay;
    delete mpCPDataSeqCtrl;
    delete mpCPeriodicBoundary;
    delete mpCDataLoader;
    delete mpCExposure;
    delete mpCInformation;
    delete mpCDataExporter;
    delete mpCParamGroupCameraPath;
    delete mpCCameraPath;
    delete mpCPovRayCtrl;
    delete mpCAnchorPath;
    delete mpCLightSRCCtrl;
    ColorCurveBtn_cls::mspCColorCurveCtrlLinked = nullptr;
    delete mpCColorCurveCtrl;
    delete mpCImgSequence;
    delete mpCTimeCtrl;
    delete mpCCameraPathCtrl;
    delete mpCScene;
    delete mpCStereoGram;
    delete mpCRecentFiles;
    delete mpCRecovery;
    PDataBlock_cls::mspCDataLoaderLink = nullptr;
}

// Camera and anchor share one line of the time line, without the scales, which nobody sees.
void Main_cls::MakeCameraPathGroup() {
    mpCCameraPath->DeleteObjectGroup();
    mpCAnchorPath->DeleteObjectGroup();
    mpCParamGroupCameraPath =
        new ParamGroup_cls("Camera Path", 0, nullptr, UPDATE_FILTER_REFRESH | UPDATE_TL | UPDATE_GL, false);
    mpCParamGroupCameraPath->mVpCChilds = {mpCCameraPath->mpCTranslate, mpCCameraPath->mpCRotate,
                                           mpCAnchorPath->mpCTranslate};
    mpCParamGroupCameraPath->mpCSceneObj = mpCCameraPath;
}

int Main_cls::GetUsedTotalMemoryMB() const { return mpCPDataSeqCtrl->mUsedMB; }

int Main_cls::GetMemoryLimitMB() const { return mpCPDataSeqCtrl->mLimitMB; }

int Main_cls::GetAverageMemoryMB() const {
    const int loaded = mpCPDataSeqCtrl->GetLoadedFrameNumber();
    return loaded > 0 ? GetUsedTotalMemoryMB() / loaded : -1;
}

bool Main_cls::IsTheIndexReady(int index, double frac) const {
    return mpCPDataSeqCtrl->IsTheIndexReady(index, frac, mpCTimeCtrl->IsForceInterpolation());
}

bool Main_cls::IsTheIndexLoaded(int index) const { return mpCPDataSeqCtrl->IsTheIndexLoaded(index); }

void Main_cls::WaitThreadFinish() {
    while (IsReaderBusy())
        wxMilliSleep(10);
    ForgetReader();
    while (IsInterpolatorBusy())
        wxMilliSleep(10);
    ForgetInterpolator();
}

void Main_cls::OpenDataFile(const wxString& path) {
    mpCFrameMain->StopRun();
    mpCParticles->End();
    mpCPDataSeqCtrl->OpenDataFile(path);
    int last = std::max(mpCPDataSeqCtrl->GetActiveFileSequenceLength() - 1, 0);
    if (last > kMaxLastIndex) {
        MsgBox(_("Max file sequence number is 8000"), _("Warning"));
        mpCPDataSeqCtrl->GetPCActiveFileSequence()->SetSeqLength(kKeptFiles);
        last = kKeptFiles - 1;
    }
    mpCTimeCtrl->SetMaxFrameNative(last);
    CheckAreas();
    if (FollowRun_cls* follow = mpCFrameMain->GetPCFileMenu()->GetFollow()) follow->OnData();
    if (mpCFrameMain->GetPCPreference()->mCFitFirst.mValue) mpCFrameMain->GetPCViewFit()->ExpectData();
    PostMenuEvent(ID_REFRESH_GL);
}

void Main_cls::CheckAreas() {
    // An area behind the end of the film would leave a single frame of it: then the whole film plays.
    if (mpCTimeCtrl->GetWAMin() > mpCTimeCtrl->GetMaxFrame()) mpCTimeCtrl->SetWAMinNative(0);
    if (mpCTimeCtrl->GetAAMin() > mpCTimeCtrl->GetMaxFrame()) mpCTimeCtrl->SetAAMinNative(0);
    mpCTimeCtrl->CheckWorkingArea();
}

void Main_cls::CloseData() {
    mpCFrameMain->StopRun();
    WaitThreadFinish();
    mpCPDataSeqCtrl->ClearData(-1, -2, true);
    if (FollowRun_cls* follow = mpCFrameMain->GetPCFileMenu()->GetFollow()) follow->OnData();
    if (GbGLLockDrawing.load()) return; // a paint that let this through is reading it; the next one drops it
    delete GLDrawData_cls::mspCSnapShot;
    GLDrawData_cls::mspCSnapShot = nullptr;
}

void Main_cls::OpenColorCurveDialog() { mpCColorCurveCtrl->OpenCurve(nullptr, mpCFrameMain); }

void Main_cls::Special() {
    const int index = mpCTimeCtrl->GetRemappedIndex(-1);
    if (index > 0) mpCPDataSeqCtrl->GetPCActiveFileSequence()->Special_Copy(index, index - 1);
    GbSnapDataRefresh.store(true);
    PostMenuEvent(ID_REFRESH_GL);
}
