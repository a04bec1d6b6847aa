#include "APP/clsFrameMain.h"

#include <utility>

#include <wx/evtloop.h>
#include <wx/filename.h>
#include <wx/infobar.h>
#include <wx/sizer.h>
#include <wx/splitter.h>
#include <wx/textentry.h>

#include "APP/clsCopyQuestion.h"
#include "APP/clsDropTarget.h"
#include "APP/UnaskedEnd.h"
#include "APP/clsEditMenu.h"
#include "APP/clsExportRun.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFilterMenu.h"
#include "APP/clsFollowRun.h"
#include "APP/clsHelpMenu.h"
#include "APP/clsImageRun.h"
#include "APP/clsMain.h"
#include "APP/clsPovExport.h"
#include "APP/clsRefreshCommands.h"
#include "APP/clsShortcut.h"
#include "APP/clsToolBar.h"
#include "APP/clsViewsMenu.h"
#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "COMMON/clsUpdateStatusBar.h"
#include "FILTER/clsBondFollower.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/DrawWay.h"
#include "GL/BASE/clsPreference.h"
#include "GL/VIEW/clsCameraPathCtrl.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsGLExtraFrame.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GL/VIEW/clsViewFitCtrl.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/MessageBoxes.h"
#include "WIDGET/MenuQueue.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/clsColourDialogEX.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsStatusBar.h"

FrameMain_cls* FrameMain_cls::mspCThis = nullptr;

namespace {
constexpr int kTimerMillis = 500;
constexpr int kMinPane = 80;
constexpr long kStartMillis = 300; // by then the window stands
constexpr int kHighDisplay = 1050;
} // namespace

FrameMain_cls::FrameMain_cls(const wxString& title, Main_cls* pMain, const wxRect& rect, int filmView)
    : wxFrame(nullptr, wxID_ANY, title, rect.GetPosition(), rect.GetSize()), mpCMain(pMain),
      mFilmView(filmView), mTimer(this) {
    const bool bShown = filmView < 0;
    mspCThis = GpCMainFrameCLS = this;
    QueueMenuEventsTo(this);
    // Without a screen somebody else takes the words.
    if (!HasMessageHandler()) InstallMessageBoxes([this](const wxString& text) { ShowNotice(text); });
    const wxString icon = FindRuntimeFile("ICONS/morentis.png");
    if (wxFileName::FileExists(icon)) SetIcon(wxIcon(icon, wxBITMAP_TYPE_PNG));

    mpCShortcut = new Shortcut_cls(this);
    mpCPreference = new Preference_cls;
    mpCUserPreference = new Preference_cls;
    SetDrawPreference(&mpCPreference->mCDrawWay.mValue);
    mTimer.Start(kTimerMillis);
    mpCFileMenu = std::make_unique<FileMenu_cls>(*this, mCConfList);
    mpCImageRun = std::make_unique<ImageRun_cls>(*this, mCConfList);
    mpCExportRun = std::make_unique<ExportRun_cls>(*this);
    mpCPovExport = std::make_unique<PovExport_cls>(*this);
    mpCEditMenu = std::make_unique<EditMenu_cls>(*this);
    mpCFilterMenu = std::make_unique<FilterMenu_cls>(*this);
    mpCHelpMenu = std::make_unique<HelpMenu_cls>(*this);
    mpCViewsMenu = std::make_unique<ViewsMenu_cls>(*this);
    mpCRefreshCommands = std::make_unique<RefreshCommands_cls>(*this);

    mpCSharedView = new SharedView_cls(pMain->mpCOverlay, pMain->mpCExposure, pMain->mpCInformation);
    mpCSharedView->mspCStereogramLink = pMain->mpCStereoGram;
    mpCSharedView->mspCParticles = pMain->mpCParticles;
    pMain->mpCStereoGram->mGetDistanceToFocus = [this] {
        return GetPCOutputCanvas()->mCamera.GetDistanceToAnchor();
    };
    mpCViewFit = std::make_unique<ViewFitCtrl_cls>(*this, *mpCSharedView);
    mpCCopyQuestion = std::make_unique<CopyQuestion_cls>(*this);
    mBtmHeight = pMain->mDisplayHeight > kHighDisplay ? 210 : 150;
    CreateHalves(bShown);
    CreateMenus();
    if (bShown) mpCToolBar = std::make_unique<ToolBar_cls>(*this);
    if (bShown) mpCFileMenu->MakeFollow();
    const int widths[] = {-1, -1, 180, 180};
    auto* bar = new StatusBar_cls(this);
    bar->SetFieldsCount(4, widths);
    SetStatusBar(bar);
    for (int field = 0; field < 4; ++field)
        SetStatusText(wxString::Format("field_%d", field), field);

    GpCFileDialog = new wxFileDialogEX(this);
    GpCClrDialog = new wxColourDialogEX(this);
    mpCMainCanvas = GetPCGLCanvas(0);
    GpCurrentGLPanel = mpCMainCanvas;
    mpCExtraFrame = new GLExtraFrame_cls(this, GetViewLinks(), mpCMainCanvas->GetContext());
    SetDropTarget(new DropTarget_cls(this));
    BindHandlers();
    UpdateStatusBar_cls::Connect([this] {
        UpdateStatusText();
        GetStatusBar()->Update(); // long work goes on behind it
        if (!UpdateStatusBar_cls::sbAllowDispach) return;
        if (wxEventLoopBase* loop = wxEventLoopBase::GetActive())
            loop->YieldFor(wxEVT_CATEGORY_UI | wxEVT_CATEGORY_USER_INPUT);
    });
    UpdateStatusText();
}

FrameMain_cls::~FrameMain_cls() {
    ForgetUnaskedEnds();
    mTimer.Stop();
    GCImgIO.Finish();
    UpdateStatusBar_cls::Connect({});
    SetMessageHandler({});
    QueueMenuEventsTo(nullptr);
    mpCToolBar.reset();
    mpCRefreshCommands.reset();
    mpCViewsMenu.reset();
    mpCHelpMenu.reset();
    mpCFilterMenu.reset();
    mpCEditMenu.reset();
    mpCPovExport.reset();
    mpCExportRun.reset();
    mpCImageRun.reset();
    mpCFileMenu.reset();
    SetDrawPreference(nullptr);
    delete mpCPreference;
    delete mpCUserPreference;
    delete mpCShortcut;
    delete GpCFileDialog;
    delete GpCClrDialog;
    GpCFileDialog = nullptr;
    GpCClrDialog = nullptr;
    delete mpCSharedView;
    mpCSharedView = nullptr;
    mspCThis = GpCMainFrameCLS = nullptr;
    GpCurrentGLPanel = nullptr;
}

ViewLinks_st FrameMain_cls::GetViewLinks() {
    return {this, mpCSharedView, mpCMain->mpCDrawOption, mpCPreference, mFilmView};
}

void FrameMain_cls::CreateHalves(bool bShown) {
    mpCInfoBar = new wxInfoBar(this);
    // A splitter of no size would squeeze what is made in it.
    mpCSplitter =
        new wxSplitterWindow(this, wxID_ANY, wxDefaultPosition, GetSize(), wxSP_LIVE_UPDATE | wxSP_3DSASH);
    mpCSplitter->SetSashGravity(1.0); // the bottom half keeps its height
    mpCSplitter->SetMinimumPaneSize(kMinPane);
    const TopHalfPanel_cls::Pages_st pages = {mpCMain->mpCDrawOption, mpCMain->mpCOverlay,
                                              mpCMain->mpCExposure,   mpCMain->mpCInformation,
                                              mpCMain->mpCFilters,    bShown};
    mpCTopHalf = new TopHalfPanel_cls(mpCSplitter, GetViewLinks(), GetPCActiveFileSequence(), pages);
    mpCBtmHalf = new BtmHalfPanel_cls(mpCSplitter, mpCMain->mpCTimeCtrl, mpCMain->mpCPDataSeqCtrl);
    mpCSplitter->SplitHorizontally(mpCTopHalf, mpCBtmHalf, -mBtmHeight);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCInfoBar, 0, wxEXPAND);
    sizer->Add(mpCSplitter, 1, wxEXPAND);
    SetSizer(sizer);
    SetMinClientSize(wxSize(640, 400));
}

PDataSequence_cls* FrameMain_cls::GetPCActiveFileSequence() const {
    return mpCMain->mpCPDataSeqCtrl->GetPCActiveFileSequence();
}

GLCanvasCtrl_cls* FrameMain_cls::GetPCGLCanvasCtrl(int view) const {
    if (view == MainGLCanvas_cls::kExtraPanel)
        return mpCExtraFrame ? mpCExtraFrame->GetPCCanvasCtrl() : nullptr;
    return view >= 0 && view < 4 ? mpCTopHalf->GetPCGLCanvasCtrl(view) : nullptr;
}

MainGLCanvas_cls* FrameMain_cls::GetPCGLCanvas(int view) const {
    GLCanvasCtrl_cls* ctrl = GetPCGLCanvasCtrl(view);
    return ctrl ? ctrl->GetPCCanvas() : nullptr;
}

TimeCtrl_cls* FrameMain_cls::GetPCTimeCtrl() const { return mpCMain->mpCTimeCtrl; }

CameraPath_cls* FrameMain_cls::GetPCCameraPath() const { return mpCMain->mpCCameraPath; }

AnchorPath_cls* FrameMain_cls::GetPCAnchorPath() const { return mpCMain->mpCAnchorPath; }

// The camera dialog follows the active view.
void FrameMain_cls::ReconnectCameraPathGUI() {
    if (mpCMain->mpCCameraPathCtrl && GpCurrentGLPanel)
        mpCMain->mpCCameraPathCtrl->ShowView(GpCurrentGLPanel->mPanelIndex);
}

LightSRCCtrl_cls* FrameMain_cls::GetPCLightSRCCtrl() const { return mpCMain->mpCLightSRCCtrl; }
FilterLists_cls* FrameMain_cls::GetPCFilters() const { return mpCMain->mpCFilters; }

PDataSeqCtrl_cls* FrameMain_cls::GetPCDataSeqCtrl() const { return mpCMain->mpCPDataSeqCtrl; }

wxString FrameMain_cls::GetStandstill() const {
    const TimeCtrl_cls* time = mpCMain->mpCTimeCtrl;
    const int stuck = time->GetStuckDirection();
    if (stuck != 0 && time->GetWAMin() == time->GetWAMax())
        return _("Nothing plays: the work area is one frame");
    if (stuck > 0) return _("At the end: go back, play backward, or switch Repeat on");
    if (stuck < 0) return _("At the start: go on, play forward, or switch Repeat on");
    const Parameters_cls& remap = time->mpCTimeRemapGroup->mVParams.front();
    if (time->mbUseTimeRemap.mValue && (!remap.mbTimeDepend.mValue || remap.GetKeys().size() < 2))
        return _("The picture stands still: Time Remap has less than two keys");
    return wxString();
}

void FrameMain_cls::UpdateStatusText() {
    static const char* const kStages[] = {wxTRANSLATE("Drawing "), wxTRANSLATE("Shadow "),
                                          wxTRANSLATE("Drawing LH")};
    const PDataSequence_cls* sequence = GetPCActiveFileSequence();
    wxString text[4];
    if (!sequence->GetStrPath().empty() && sequence->GetSeqLength() > 0) {
        text[0] = sequence->mCFileSequence.GetInfoStr();
        text[1] = wxString::Format(_("%d particles, %d of %d MB in use"),
                                   sequence->GetParticleNumber(mpCMain->mpCTimeCtrl->GetRemappedIndex(-1)),
                                   mpCMain->GetUsedTotalMemoryMB(), mpCMain->GetMemoryLimitMB());
        if (mpCMain->mpCTimeCtrl->GetRemappedIndexDouble(-1, -1) > double(sequence->GetSeqLength() - 1))
            text[1] += _(", past the data: the last snapshot again");
    } else {
        text[0] = _("No data: load particle data, or drop a file or a project here");
    }
    const auto& bonds = mpCMain->mpCFilters->mpCBonds;
    const FollowRun_cls* follow = mpCFileMenu->GetFollow();
    for (const wxString& run : {follow ? follow->GetStatus() : wxString(), GetStandstill(),
                                bonds ? bonds->GetStatus() : wxString(), mpCMain->mpCParticles->GetStatus(),
                                mpCImageRun->GetVideoStatus(), mpCMain->mpCImgSequence->GetProgressText(),
                                mpCExportRun->GetExportStatus(), mpCPovExport->GetStatus()})
        if (!run.empty()) text[0] = run;
    if (!mStrPointed.empty()) text[0] = mStrPointed;
    const int drawing = GDrawingPercentage.load();
    if (drawing != 100)
        text[2] = wxGetTranslation(kStages[GDrawingStage.load() % 3]) + wxString::Format("%d%%", drawing);
    const int reading = GThreadReaderPercentage.load();
    if (reading != 100)
        text[3] = wxString::Format(_("index:%d- Loading%d%%"), GThreadReaderIndex.load(), reading);
    for (int field = 0; field < 4; ++field)
        if (GetStatusBar()->GetStatusText(field) != text[field]) SetStatusText(text[field], field);
}

void FrameMain_cls::OpenProject(const wxString& path) { mpCFileMenu->OpenProject(path); }

void FrameMain_cls::StopRun() { mpCImageRun->StopRun(); }

bool FrameMain_cls::MayDrawCopies(long long number) { return mpCCopyQuestion->MayDraw(number); }

void FrameMain_cls::OnDataReady() { mpCViewFit->OnDataReady(); }

void FrameMain_cls::EndExport() {
    CallAfter([this] { mpCExportRun->EndExport(); });
}

MainGLCanvas_cls* FrameMain_cls::GetPCOutputCanvas() const {
    const bool bSeen = GpCurrentGLPanel && GpCurrentGLPanel->IsShownOnScreen();
    return bSeen ? GpCurrentGLPanel : mpCMainCanvas;
}

void FrameMain_cls::FitSplitterWindow(bool bForce) {
    const int height = mpCSplitter->GetClientSize().y;
    const int fitting = height - mBtmHeight - mpCSplitter->GetSashSize();
    if (fitting <= kMinPane) return;
    const int least = std::min(mpCBtmHalf->GetMinHeight(), 120);
    if (!bForce && mpCSplitter->GetSashPosition() <= height - least) return;
    mpCSplitter->SetSashPosition(fitting);
    mBtmFitted = mpCBtmHalf->GetSize().y;
    mpCBtmHalf->RecheckSize();
    Refresh();
}

// The toolkit gives menu, status bar and fonts their sizes bit by bit in the first moments.
void FrameMain_cls::PlaceAtStart() {
    const wxSize client = GetClientSize();
    const wxSize inner = mpCSplitter->GetSize();
    if (!IsShownOnScreen() || inner.x + 4 < client.x || inner.y < client.y / 2) {
        mStartWatch.Start();
        return;
    }
    if (mpCBtmHalf->GetSize().y != mBtmHeight) FitSplitterWindow(true);
    if (mStartWatch.Time() < kStartMillis) return;
    mbPlaced = true;
    // The toolkit begins in the first field; keys are to act on the film from the first moment.
    if (auto* pField = dynamic_cast<wxTextEntry*>(wxWindow::FindFocus())) pField->SelectNone();
    mpCMainCanvas->SetFocus();
}

void FrameMain_cls::OnExtraFrameClosed() {
    if (wxMenuBar* bar = GetMenuBar()) bar->Check(ID_VIEW_EXTRA, false);
    LeaveHiddenView(*this);
}

void FrameMain_cls::ShowNotice(const wxString& text) {
    // Notices may come from inside a paint: show them when it is over. Those that come together stay
    // together.
    const bool bFirst = mNotices.empty();
    mNotices += (bFirst ? "" : "\n") + text;
    if (bFirst)
        CallAfter([this] { mpCInfoBar->ShowMessage(std::exchange(mNotices, wxString()), wxICON_WARNING); });
}

void FrameMain_cls::ApplySettings() {
    mpCMain->CheckAreas(); // a file may hold anything
    mpCTopHalf->SplitPanel(mpCTopHalf->GetSplit());
    LeaveHiddenView(*this);
    if (wxMenuBar* bar = GetMenuBar()) bar->Check(ID_VIEW_PANEL_TYPE_0 + mpCTopHalf->GetSplit(), true);
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view)
        if (GLCanvasCtrl_cls* ctrl = GetPCGLCanvasCtrl(view)) ctrl->UpdateWindow();
    mpCTopHalf->RefreshAttrib();
    mpCTopHalf->RefreshDrawOptions();
    mpCBtmHalf->RefreshGUI();
    PostMenuEvent(ID_FILTER_REFRESH);
    mpCMain->mpCColorCurveCtrl->UpdateItems(true);
    mpCMain->mpCLightSRCCtrl->UpdateItems(true);
    mpCMain->mpCStereoGram->UpdateItems(true);
    if (mpCMain->mpCCameraPathCtrl) mpCMain->mpCCameraPathCtrl->UpdateItems(true);
    mpCEditMenu->UpdatePreference();
}

wxString FrameMain_cls::Serialize() {
    wxString text = mpCTopHalf->Serialize();
    return text + GetPCGLCanvasCtrl(MainGLCanvas_cls::kExtraPanel)->Serialize();
}

wxString FrameMain_cls::SerializeForConfigure() { return mCConfList.SerializeAll(); }

void FrameMain_cls::ReadStrLine(const wxString& line) {
    mCConfList.ReadStrLineAll(line);
    mpCTopHalf->ReadStrLine(line);
    GetPCGLCanvasCtrl(MainGLCanvas_cls::kExtraPanel)->ReadStrLine(line);
}
