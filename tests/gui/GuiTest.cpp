#include "GuiTest.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdlib>

#include <cairo.h>

#include <wx/app.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/evtloop.h>
#include <wx/image.h>
#include <wx/stattext.h>
#include <wx/stopwatch.h>
#include <wx/utils.h>
#include <wx/window.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsMyApp.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "GL/BASE/clsPreference.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsOverlay.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GuiEvents.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsNumField.h"

int Picture_st::Brightness(int x, int y) const {
    if (x < 0 || y < 0 || x >= mW || y >= mH) return 0;
    const unsigned char* pixel = &mRGB[3 * (size_t(y) * size_t(mW) + size_t(x))];
    return std::max({pixel[0], pixel[1], pixel[2]});
}

bool Picture_st::IsLit(double x, double y, int radius, int level) const {
    for (int dy = -radius; dy <= radius; ++dy)
        for (int dx = -radius; dx <= radius; ++dx)
            if (Brightness(int(x) + dx, int(y) + dy) > level) return true;
    return false;
}

int Picture_st::CountLit(int level) const {
    int count = 0;
    for (int y = 0; y < mH; ++y)
        for (int x = 0; x < mW; ++x)
            count += Brightness(x, y) > level;
    return count;
}

namespace {

constexpr int kIdleMillis = 20; ///< between two idle passes where nothing comes

} // namespace

std::string GuiTest::Root() { return std::string(MORENTIS_TEST_ROOT) + "/"; }

Main_cls* GuiTest::Hub() { return wxGetApp().GetPCMain(); }

FrameMain_cls* GuiTest::Frame() { return Hub()->mpCFrameMain; }

MainGLCanvas_cls* GuiTest::Canvas(int view) { return Frame()->GetPCGLCanvas(view); }

SharedView_cls& GuiTest::Shared() { return *Frame()->GetPCSharedView(); }

TimeCtrl_cls* GuiTest::Time() { return Hub()->mpCTimeCtrl; }

void GuiTest::SetUp() {
    SetMessageHandler([this](MessageKind kind, const wxString& text, const wxString& title) -> int {
        mVMessages.push_back({kind, text, title});
        if (kind == MessageKind::Save) {
            const MessageAnswer answer = mSaveAnswers.empty() ? MESSAGE_NO : mSaveAnswers.front();
            if (!mSaveAnswers.empty()) mSaveAnswers.pop_front();
            return answer;
        }
        if (kind != MessageKind::Question || mAnswers.empty()) return true;
        const bool bAnswer = mAnswers.front();
        mAnswers.pop_front();
        return bAnswer;
    });
    Shared().msCFBOSizeIndex.mValue = 0; // 256 pixels: software rendering
    Shared().msbKeepPicture = true;
    Hub()->mpCOverlay->mShowLegend.mValue[0] = false;      // tests count what is lit
    Frame()->GetPCPreference()->mCFitFirst.mValue = false; // tests know where the cameras stand
    ForgetNotices();
    Frame()->Raise();
    Settle();
}

void GuiTest::TearDown() {
    TimeCtrl_cls* time = Hub()->mpCTimeCtrl;
    if (time->IsPlaying()) time->StartPlayCommand(1);
    time->SetRepeatNative(0);
    time->SetAnimStepNative(1);
    time->SetAnimInterpNative(1);
    time->SetFrameNative(0, 0);
    Hub()->CloseData();
    Settle();
}

bool GuiTest::PumpUntil(const std::function<bool()>& done, int millis) {
    wxEventLoopBase* loop = wxEventLoopBase::GetActive();
    const wxStopWatch watch;
    wxStopWatch sinceIdle;
    bool bIdle = true; // for what the test has changed by hand
    while (true) {
        GuiEvents_cls::Watch();
        for (; loop->Pending(); bIdle = true)
            loop->Dispatch();
        wxTheApp->ProcessPendingEvents();
        // As the program's own loop: after events, and while someone asks for more. It asks every window.
        if (bIdle || sinceIdle.Time() >= kIdleMillis) {
            bIdle = loop->ProcessIdle();
            sinceIdle.Start();
        }
        if (done()) return true;
        if (watch.Time() > millis) return false;
        wxMilliSleep(2);
    }
}

bool GuiTest::Settle(int millis) {
    int quiet = 0;
    return PumpUntil(
        [&quiet] {
            const TimeCtrl_cls* time = Hub()->mpCTimeCtrl;
            bool bDone = !GpCThreadReader.load() && !GpCThreadInterpolate.load() && !GbGLLockPlayWait.load();
            for (int view = 0; view < 4; ++view)
                bDone = Canvas(view)->CheckGLRefresh(time->GetFrame(), time->GetInterpStep()) && bDone;
            GuiEvents_cls::RoundTrip();
            quiet = bDone && !wxEventLoopBase::GetActive()->Pending() ? quiet + 1 : 0;
            if (quiet == 1) GuiEvents_cls::AskForFrame();
            return quiet > 2 && GuiEvents_cls::HadFrame(); // nothing came after it either
        },
        millis);
}

void GuiTest::Menu(int id, bool bChecked) {
    wxCommandEvent event(wxEVT_MENU, id);
    event.SetInt(bChecked ? 1 : 0);
    Frame()->ProcessWindowEvent(event);
    Settle();
}

bool GuiTest::OpenAndPaint(const std::string& path) {
    Hub()->mpCDataLoader->OpenDataFile(wxString::FromUTF8(path));
    return Settle();
}

bool GuiTest::OpenProjectAndPaint(const std::string& path) {
    Frame()->OpenProject(wxString::FromUTF8(path));
    Shared().msCFBOSizeIndex.mValue = 0;
    Hub()->mpCOverlay->mShowLegend.mValue[0] = false;
    return Settle();
}

void GuiTest::OpenMelt(int last) {
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    Time()->SetAnimStepNative(1);
    Time()->SetAnimInterpNative(1);
    Time()->SetRepeatNative(0);
    Time()->SetWAMinNative(0);
    Time()->SetWAMaxNative(last);
}

Picture_st GuiTest::Grab(int view) {
    Picture_st picture;
    picture.mRGB = Canvas(view)->GetShownPicture(&picture.mW, &picture.mH);
    return picture;
}

bool GuiTest::ProjectToWindow(int view, const double (&pos)[3], double* pX, double* pY) {
    MainGLCanvas_cls* canvas = Canvas(view);
    double square[3];
    GLPerspective_cls perspective = canvas->mCGLPerspective;
    perspective.SetWindowSize(1, 1); // the scene is drawn into a square
    if (!perspective.Project(canvas->mCamera.mCCamPos, pos, square)) return false;
    // The square picture is scaled to the width of the window and centred.
    const wxSize size = canvas->GetClientSize() * canvas->GetContentScaleFactor();
    const double side = size.x;
    *pX = size.x / 2.0 + square[0] * side / 2.0;
    *pY = size.y / 2.0 - square[1] * side / 2.0;
    return true;
}

void GuiTest::PlayAll(int last) {
    Time()->SetWAMinNative(0);
    Time()->SetWAMaxNative(last);
    Time()->SetAAMinNative(0);
    Time()->SetAAMaxNative(last);
}

void GuiTest::HideAllButData(int view) {
    MainGLCanvas_cls* canvas = Canvas(view);
    canvas->mShowMessage.mValue = canvas->mShowItems.mValue = canvas->mShowGrid.mValue = false;
}

double GuiTest::ShareLit(int view, int snapshot, int* pInside, int radius) {
    const Picture_st picture = Grab(view);
    const PDataSequence_cls& sequence = *Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence();
    const PDataBlock_cls& block = *sequence.mpCSnap[size_t(snapshot)]->mpCBlock;
    int inside = 0;
    int lit = 0;
    for (int i = 0; i < block.mParticleNumber; ++i) {
        const double pos[3] = {block.mpPos[i][0], block.mpPos[i][1], block.mpPos[i][2]};
        double x = 0.0;
        double y = 0.0;
        if (!ProjectToWindow(view, pos, &x, &y)) continue;
        if (x < 4 || y < 4 || x > picture.mW - 5 || y > picture.mH - 5) continue;
        ++inside;
        lit += picture.IsLit(x, y, radius, 60);
    }
    if (pInside) *pInside = inside;
    return inside > 0 ? double(lit) / inside : 0.0;
}

TempDir_cls::TempDir_cls() {
    std::string name = (std::filesystem::temp_directory_path() / "morentisXXXXXX").string();
    mPath = mkdtemp(name.data());
}

TempDir_cls::~TempDir_cls() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

namespace {

wxWindow* Find(wxWindow* root, const std::function<bool(wxWindow*)>& fits) {
    for (wxWindow* child : root->GetChildren()) {
        if (child->IsTopLevel() || !child->IsShown()) continue;
        if (fits(child)) return child;
        if (wxWindow* found = Find(child, fits)) return found;
    }
    return nullptr;
}

} // namespace

wxWindow* GuiTest::FindByLabel(wxWindow* root, const wxString& label) {
    const wxString text = wxControl::RemoveMnemonics(label);
    return Find(root,
                [&text](wxWindow* window) { return wxControl::RemoveMnemonics(window->GetLabel()) == text; });
}

wxWindow* GuiTest::FindByTip(wxWindow* root, const wxString& tip) {
    return Find(root, [&tip](wxWindow* window) {
        return window->GetToolTipText().StartsWith(tip) && !dynamic_cast<wxStaticText*>(window);
    });
}

NumField_cls* GuiTest::FindField(wxWindow* root, const wxString& tip) {
    // The tip stands on the parts of the field.
    wxWindow* found = Find(root, [&tip](wxWindow* window) {
        return window->GetToolTipText().StartsWith(tip) && dynamic_cast<NumField_cls*>(window->GetParent());
    });
    return found ? dynamic_cast<NumField_cls*>(found->GetParent()) : nullptr;
}

wxTopLevelWindow* GuiTest::WaitForWindow(const wxString& title, int millis) {
    wxTopLevelWindow* found = nullptr;
    PumpUntil(
        [&] {
            for (wxWindow* window : wxTopLevelWindows)
                if (window->IsShown() && window->GetLabel() == title)
                    found = dynamic_cast<wxTopLevelWindow*>(window);
            return found != nullptr;
        },
        millis);
    // Most are given the keys, too.
    constexpr int kActivationMillis = 1000;
    if (found) PumpUntil([found] { return found->IsActive(); }, kActivationMillis);
    Settle();
    return found;
}

wxPoint GuiTest::Middle(const wxWindow* window) {
    const wxSize size = window->GetClientSize();
    return wxPoint(size.x / 2, size.y / 2);
}

Picture_st GuiTest::Shoot(wxWindow* window) {
    Settle();
    const wxRect rect = window->GetScreenRect();
    wxBitmap bitmap(rect.width, rect.height, 24);
    {
        wxMemoryDC memory(bitmap);
        wxScreenDC screen;
        // The drawing library keeps what it once read of the screen until it is told that others draw there
        // too.
        auto* root = static_cast<cairo_t*>(screen.GetImpl()->GetCairoContext());
        cairo_surface_mark_dirty(cairo_get_target(root));
        memory.Blit(0, 0, rect.width, rect.height, &screen, rect.x, rect.y);
    }
    const wxImage image = bitmap.ConvertToImage();
    Picture_st picture;
    picture.mW = image.GetWidth();
    picture.mH = image.GetHeight();
    picture.mRGB.assign(image.GetData(), image.GetData() + size_t(3) * size_t(picture.mW * picture.mH));
    return picture;
}

void GuiTest::Snap(const std::string& name) {
    const char* folder = std::getenv("MORENTIS_GUI_PICTURES");
    if (!folder) return;
    const std::string command = "import -window root " + std::string(folder) + "/" + name + ".png";
    if (std::system(command.c_str()) != 0) ADD_FAILURE() << command;
}

bool GuiTest::WasTold(const wxString& text) const {
    return std::any_of(mVMessages.begin(), mVMessages.end(),
                       [&text](const ShownMessage_st& message) { return message.mText.Contains(text); });
}

void GuiTest::ResetViews() {
    static const int kModes[MainGLCanvas_cls::kViewNumber] = {0, 6, 1, 3, 0};
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        MainGLCanvas_cls* canvas = Canvas(view);
        canvas->SetDisplayMode(kModes[view]);
        canvas->SetGeometry(kModes[view] == 0 ? 0 : 1);
        canvas->mCamera.SetCameraToDefaultPos();
        canvas->mGLOrthoScale.mValue = 1.0f;
        canvas->mShowMessage.mValue = canvas->mShowItems.mValue = canvas->mShowGrid.mValue =
            canvas->mShowData.mValue = true;
        canvas->mPivotMode.mValue = false;
        for (int i = 0; i < 3; ++i)
            Shared().msCAnchorPos[i] = Shared().msCAnchorPosOrtho[i] = 0.0;
    }
    Menu(ID_SYNC_GL_CTRL);
    Menu(ID_VIEW_PANEL_TYPE_0);
    Canvas(0)->SetThisToBeActiveGL();
    Canvas(0)->SetFocus();
    Menu(ID_REFRESH_GL);
}
