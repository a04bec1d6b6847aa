// A test's mouse and keys, through the X server.
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <wx/app.h>
#include <wx/ctrlsub.h>
#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/scrolwin.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>
#include <wx/timer.h>
#include <wx/toplevel.h>
#include <wx/weakref.h>

#include "GuiEvents.h"
#include "GuiTest.h"
#include "WIDGET/clsNumField.h"

namespace {

constexpr int kPatienceMillis = 10000;
constexpr int kDoubleClickMillis = 1500; // longer and farther than the clicks of one may be apart
constexpr int kDoubleClickPixels = 10;
wxPoint sLastClick;
wxStopWatch sSinceClick;

/// The keyboard belongs to none of our windows while the window manager hands it on.
bool HasFocus() {
    return std::any_of(wxTopLevelWindows.begin(), wxTopLevelWindows.end(), [](const wxWindow* window) {
        const auto* top = dynamic_cast<const wxTopLevelWindow*>(window);
        return top && top->IsShown() && const_cast<wxTopLevelWindow*>(top)->IsActive();
    });
}

using TopRef = wxWeakRef<wxTopLevelWindow>;

/// The window manager makes a window active that was clicked into, but for a list that opened there.
std::function<bool()> ActiveOrGone(const TopRef& top) {
    return [top] { return !top || !top->IsShown() || top->IsActive() || GuiEvents_cls::HasPopup(); };
}

/// A page that is higher than its book shows the point, as the user would turn it there.
void ScrollTo(wxWindow* window, wxPoint point) {
    for (wxWindow* parent = window->GetParent(); parent && !parent->IsTopLevel();
         parent = parent->GetParent()) {
        auto* page = dynamic_cast<wxScrolledWindow*>(parent);
        if (!page) continue;
        constexpr int kMargin = 12;
        const int y = page->ScreenToClient(window->ClientToScreen(point)).y;
        const int height = page->GetClientSize().y;
        if (y >= kMargin && y < height - kMargin) continue;
        int stepX = 0, stepY = 0, left = 0, top = 0;
        page->GetScrollPixelsPerUnit(&stepX, &stepY);
        if (stepY <= 0) continue;
        page->GetViewStart(&left, &top);
        page->Scroll(-1, std::max(top + (y - height / 2) / stepY, 0));
    }
}

} // namespace

void GuiTest::Await(const std::function<bool()>& done, const char* what) {
    if (!PumpUntil(done, kPatienceMillis)) std::printf("waited in vain for %s\n", what);
}

void GuiTest::Arrive(bool bFrame) {
    const bool bArrived = PumpUntil(GuiEvents_cls::AllArrived, kPatienceMillis);
    if (!bArrived) GuiEvents_cls::Tell();
    GuiEvents_cls::GiveUp();
    if (bFrame) GuiEvents_cls::AskForFrame();
    // Work that goes on by itself, such as an export, is not waited for.
    int passes = 0;
    Await(
        [&passes] {
            GuiEvents_cls::RoundTrip();
            return ++passes > 2 && GuiEvents_cls::HadFrame();
        },
        "a frame");
}

void GuiTest::MoveTo(wxWindow* window, wxPoint point) {
    ScrollTo(window, point);
    GuiEvents_cls::Move(window->ClientToScreen(point));
    Arrive(false);
}

void GuiTest::Click(wxWindow* window, wxPoint point, int button) {
    const TopRef top = dynamic_cast<wxTopLevelWindow*>(wxGetTopLevelParent(window));
    const bool bWasActive = !top || top->IsActive();
    MoveTo(window, point);
    sLastClick = window->ClientToScreen(point);
    GuiEvents_cls::SetDoubleClickMillis(0); // two of these at one place are no double one
    GuiEvents_cls::Button(button, true);
    GuiEvents_cls::Button(button, false);
    Arrive();
    sSinceClick.Start();
    if (!bWasActive) Await(ActiveOrGone(top), "the window that was clicked into");
}

// Both clicks are sent at once: what comes between them would make two single ones of them.
void GuiTest::DoubleClick(wxWindow* window, wxPoint point) {
    MoveTo(window, point);
    const wxPoint place = window->ClientToScreen(point), way = place - sLastClick;
    if (std::abs(way.x) < kDoubleClickPixels && std::abs(way.y) < kDoubleClickPixels)
        PumpUntil([] { return sSinceClick.Time() > kDoubleClickMillis; }); // else it could be the third click
    sLastClick = place;
    GuiEvents_cls::SetDoubleClickMillis(kDoubleClickMillis);
    for (int click = 0; click < 2; ++click)
        for (const bool bDown : {true, false})
            GuiEvents_cls::Button(1, bDown);
    Arrive();
    sSinceClick.Start();
}

void GuiTest::Press(bool bDown, int button) {
    GuiEvents_cls::Button(button, bDown);
    Arrive();
}

void GuiTest::Hold(int modifier, bool bDown) {
    GuiEvents_cls::Modifier(modifier, bDown);
    Arrive(false);
}

void GuiTest::Drag(wxWindow* window, wxPoint from, wxPoint to, int button, int steps) {
    const TopRef top = dynamic_cast<wxTopLevelWindow*>(wxGetTopLevelParent(window));
    MoveTo(window, from);
    GuiEvents_cls::Button(button, true);
    Arrive();
    Await(ActiveOrGone(top), "the window that was pressed into");
    for (int k = 1; k <= steps; ++k)
        MoveTo(window, from + wxPoint((to.x - from.x) * k / steps, (to.y - from.y) * k / steps));
    GuiEvents_cls::Button(button, false);
    Arrive();
}

void GuiTest::Key(int keycode, int modifiers) {
    Await(HasFocus, "the keyboard");
    GuiEvents_cls::Char(keycode, modifiers);
    Arrive();
}

void GuiTest::Type(const std::string& text) {
    Await(HasFocus, "the keyboard");
    GuiEvents_cls::Text(text);
    Arrive();
}

namespace {

/// Does its acts one at a time, whatever loop runs, and is gone after the last.
class Acts_cls : public wxTimer {
public:
    explicit Acts_cls(std::vector<GuiTest::Act_st> acts) : mActs(std::move(acts)) {
        ++sRunning;
        Start(3);
    }
    ~Acts_cls() override { --sRunning; }
    void Notify() override {
        GuiEvents_cls::Watch();
        if (mNext == mActs.size()) {
            Stop();
            wxTheApp->CallAfter([this] { delete this; });
            return;
        }
        const GuiTest::Act_st& act = mActs[mNext];
        // Once more after it holds: what arrived has been handled then.
        GuiEvents_cls::RoundTrip();
        mReady = GuiEvents_cls::AllArrived() && GuiEvents_cls::HadFrame() && (!act.mReady || act.mReady())
                     ? mReady + 1
                     : 0;
        if (mReady < 2 && mWatch.Time() < kPatienceMillis) return;
        if (mReady == 0) {
            std::printf("waited in vain for what act %zu needs\n", mNext);
            GuiEvents_cls::Tell();
            GuiEvents_cls::GiveUp();
        }
        mReady = 0;
        ++mNext;
        act.mDo();
        // What opened is on the screen, and has told the pointer over it, before the next key.
        GuiEvents_cls::AskForFrame();
        mWatch.Start();
    }
    static int sRunning;

private:
    std::vector<GuiTest::Act_st> mActs;
    size_t mNext = 0;
    int mReady = 0;
    wxStopWatch mWatch;
};

int Acts_cls::sRunning = 0;

} // namespace

void GuiTest::Later(std::vector<Act_st> acts) { new Acts_cls(std::move(acts)); }

void GuiTest::KeyNow(int keycode, int modifiers) { GuiEvents_cls::Char(keycode, modifiers); }

bool GuiTest::HasDialog() {
    return std::any_of(wxTopLevelWindows.begin(), wxTopLevelWindows.end(), [](wxWindow* window) {
        auto* dialog = dynamic_cast<wxDialog*>(window);
        return dialog && dialog->IsModal() && dialog->IsActive();
    });
}

void GuiTest::ClickPopup(wxWindow* window, wxPoint point, const std::vector<int>& keys) {
    std::vector<Act_st> acts = {{GuiEvents_cls::HasPopup, [] {}}};
    for (const int key : keys)
        acts.push_back({nullptr, [key] {
                            if (GuiEvents_cls::HasPopup()) KeyNow(key); // else the key would go elsewhere
                        }});
    // A popup that is still up would hold the test for ever.
    for (int k = 0; k < 3; ++k)
        acts.push_back({[] { return !GuiEvents_cls::HasPopup(); },
                        [] {
                            if (GuiEvents_cls::HasPopup()) KeyNow(WXK_ESCAPE);
                        }});
    Later(std::move(acts));
    Click(window, point, 3);
    PumpUntil([] { return Acts_cls::sRunning == 0; });
    Settle();
}

void GuiTest::Wheel(wxWindow* window, wxPoint point, int clicks) {
    MoveTo(window, point);
    for (int k = 0; k < std::abs(clicks); ++k) {
        GuiEvents_cls::Button(clicks > 0 ? 4 : 5, true);
        GuiEvents_cls::Button(clicks > 0 ? 4 : 5, false);
    }
    GuiEvents_cls::GiveUp(); // they arrive as turns of the wheel
    Arrive();
}

void GuiTest::TypeInto(NumField_cls* field, const std::string& text) {
    wxTextCtrl* edit = field->GetPCText();
    ClickOn(edit);
    Key('A', wxMOD_CONTROL);
    Type(text);
    Key(WXK_RETURN);
}

void GuiTest::Choose(wxWindow* choice, int row) {
    auto* list = dynamic_cast<wxItemContainer*>(choice);
    ASSERT_TRUE(list);
    const int rows = row - list->GetSelection();
    // A combo box opens by its arrow.
    Click(choice, wxPoint(choice->GetClientSize().x - 10, choice->GetClientSize().y / 2));
    std::vector<Act_st> acts = {{GuiEvents_cls::HasPopup, [] {}}};
    for (int k = 0; k < std::abs(rows); ++k)
        acts.push_back({nullptr, [rows] { KeyNow(rows > 0 ? WXK_DOWN : WXK_UP); }});
    acts.push_back({nullptr, [] { KeyNow(WXK_RETURN); }});
    acts.push_back({[] { return !GuiEvents_cls::HasPopup(); }, [] {}});
    Later(std::move(acts));
    PumpUntil([] { return Acts_cls::sRunning == 0; });
    Settle();
    EXPECT_EQ(list->GetSelection(), row);
}
