#include "GuiTest.h"

#include <epoxy/gl.h>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/stopwatch.h>
#include <wx/uiaction.h>
#include <wx/utils.h>
#include <wx/window.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsMyApp.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "TIME/clsTimeCtrl.h"

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

std::string GuiTest::Root() { return std::string(MORENTIS_TEST_ROOT) + "/"; }

Main_cls* GuiTest::Hub() { return wxGetApp().GetPCMain(); }

FrameMain_cls* GuiTest::Frame() { return Hub()->mpCFrameMain; }

MainGLCanvas_cls* GuiTest::Canvas(int view) { return Frame()->GetPCGLCanvas(view); }

void GuiTest::SetUp() {
    SetMessageHandler([this](MessageKind kind, const wxString& text, const wxString& title) {
        mVMessages.push_back({kind, text, title});
        if (kind != MessageKind::Question || mAnswers.empty()) return true;
        const bool bAnswer = mAnswers.front();
        mAnswers.pop_front();
        return bAnswer;
    });
    MainGLCanvas_cls::msCFBOSizeIndex.mValue = 0; // 256 pixels: software rendering
    MainGLCanvas_cls::msbKeepPicture = true;
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
    while (true) {
        while (loop->Pending())
            loop->Dispatch();
        wxTheApp->ProcessPendingEvents();
        loop->ProcessIdle();
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
            quiet = bDone ? quiet + 1 : 0;
            return quiet > 8; // nothing came after it either
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
    MainGLCanvas_cls::msCFBOSizeIndex.mValue = 0;
    return Settle();
}

Picture_st GuiTest::Grab(int view) {
    Picture_st picture;
    picture.mRGB = Canvas(view)->GetShownPicture(&picture.mW, &picture.mH);
    return picture;
}

bool GuiTest::ProjectToWindow(int view, const double (&pos)[3], double* pX, double* pY) {
    MainGLCanvas_cls* canvas = Canvas(view);
    double square[3];
    if (!canvas->mCGLPerspective.Project(canvas->mCCamPos, pos, square)) return false;
    // The square picture is scaled to the width of the window and centred.
    const wxSize size = canvas->GetClientSize() * canvas->GetContentScaleFactor();
    const double side = size.x;
    *pX = size.x / 2.0 + square[0] * side / 2.0;
    *pY = size.y / 2.0 - square[1] * side / 2.0;
    return true;
}

void GuiTest::MoveTo(wxWindow* window, wxPoint point) {
    wxUIActionSimulator simulator;
    simulator.MouseMove(window->ClientToScreen(point));
    PumpUntil([] { return true; });
}

namespace {

int WxButton(int button) {
    if (button == 2) return wxMOUSE_BTN_MIDDLE;
    return button == 3 ? wxMOUSE_BTN_RIGHT : wxMOUSE_BTN_LEFT;
}

/// A few passes of the loop, for events to travel through the X server.
void Breathe(const std::function<bool(const std::function<bool()>&, int)>& pump) {
    const wxStopWatch watch;
    pump([&watch] { return watch.Time() > 30; }, 1000);
}

} // namespace

void GuiTest::Click(wxWindow* window, wxPoint point, int button) {
    MoveTo(window, point);
    wxUIActionSimulator simulator;
    simulator.MouseClick(WxButton(button));
    Breathe(PumpUntil);
}

void GuiTest::Drag(wxWindow* window, wxPoint from, wxPoint to, int button, int steps) {
    wxUIActionSimulator simulator;
    MoveTo(window, from);
    simulator.MouseDown(WxButton(button));
    Breathe(PumpUntil);
    for (int k = 1; k <= steps; ++k) {
        MoveTo(window, from + wxPoint((to.x - from.x) * k / steps, (to.y - from.y) * k / steps));
        Breathe(PumpUntil);
    }
    simulator.MouseUp(WxButton(button));
    Breathe(PumpUntil);
}

void GuiTest::Key(int keycode, int modifiers) {
    wxUIActionSimulator simulator;
    simulator.Char(keycode, modifiers);
    Breathe(PumpUntil);
}

void GuiTest::Type(const std::string& text) {
    wxUIActionSimulator simulator;
    simulator.Text(text.c_str());
    Breathe(PumpUntil);
}

wxWindow* GuiTest::FindByLabel(wxWindow* root, const wxString& label) {
    for (wxWindow* child : root->GetChildren()) {
        if (child->IsShown() &&
            wxControl::RemoveMnemonics(child->GetLabel()) == wxControl::RemoveMnemonics(label))
            return child;
        if (wxWindow* found = FindByLabel(child, label)) return found;
    }
    return nullptr;
}
