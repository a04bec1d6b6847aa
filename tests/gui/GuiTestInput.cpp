// A test's mouse and keys, through the X server.
#include <cstdlib>

#include <wx/app.h>
#include <wx/ctrlsub.h>
#include <wx/stopwatch.h>
#include <wx/textctrl.h>
#include <wx/timer.h>
#include <wx/uiaction.h>
#include <wx/window.h>

#include "GuiTest.h"
#include "WIDGET/clsNumField.h"

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

namespace {

/// Does its acts one at a time, whatever loop runs, and is gone after the last.
class Acts_cls : public wxTimer {
public:
    explicit Acts_cls(std::vector<std::function<void()>> acts) : mActs(std::move(acts)) {
        ++sRunning;
        Start(kGapMillis);
    }
    ~Acts_cls() override { --sRunning; }
    void Notify() override {
        if (mNext < mActs.size()) {
            mActs[mNext++]();
            return;
        }
        Stop();
        wxTheApp->CallAfter([this] { delete this; });
    }
    static int sRunning;

private:
    static constexpr int kGapMillis = 70; // a popup needs a moment to grab the keys
    std::vector<std::function<void()>> mActs;
    size_t mNext = 0;
};

int Acts_cls::sRunning = 0;

} // namespace

void GuiTest::Later(std::vector<std::function<void()>> acts) { new Acts_cls(std::move(acts)); }

void GuiTest::KeyNow(int keycode, int modifiers) {
    wxUIActionSimulator simulator;
    simulator.Char(keycode, modifiers);
}

void GuiTest::ClickPopup(wxWindow* window, wxPoint point, const std::vector<int>& keys) {
    static bool sReturned;
    sReturned = false;
    std::vector<std::function<void()>> acts(2, [] {});
    for (const int key : keys)
        acts.push_back([key] {
            if (!sReturned) KeyNow(key); // else the key would go elsewhere
        });
    acts.push_back([] {});
    // A popup that is still up would hold the test for ever.
    for (int k = 0; k < 3; ++k)
        acts.push_back([] {
            if (!sReturned) KeyNow(WXK_ESCAPE);
        });
    Later(std::move(acts));
    Click(window, point, 3);
    sReturned = true;
    PumpUntil([] { return Acts_cls::sRunning == 0; });
    Settle();
}

void GuiTest::Wheel(wxWindow* window, wxPoint point, int clicks) {
    MoveTo(window, point);
    const std::string command =
        "xdotool click --repeat " + std::to_string(std::abs(clicks)) + (clicks > 0 ? " 4" : " 5");
    if (std::system(command.c_str()) != 0) ADD_FAILURE() << "xdotool is needed for the wheel";
    Breathe(PumpUntil);
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
    std::vector<std::function<void()>> acts(2, [] {});
    for (int k = 0; k < std::abs(rows); ++k)
        acts.push_back([rows] { KeyNow(rows > 0 ? WXK_DOWN : WXK_UP); });
    acts.push_back([] { KeyNow(WXK_RETURN); });
    Later(std::move(acts));
    PumpUntil([] { return Acts_cls::sRunning == 0; });
    Settle();
    EXPECT_EQ(list->GetSelection(), row);
}
