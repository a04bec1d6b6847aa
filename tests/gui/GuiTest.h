// Base of all tests of the real program: hub and frame as the program makes them, messages recorded and
// answered, the event loop pumped until a condition holds.
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <wx/gdicmn.h>
#include <wx/string.h>

#include "COMMON/MsgBox.h"

class FrameMain_cls;
class Main_cls;
class MainGLCanvas_cls;
class SharedView_cls;
class TimeCtrl_cls;
class MultiInputPanel_cls;
class NumField_cls;
class wxDialog;
class wxTopLevelWindow;
class wxWindow;

/// A message that the program showed.
struct ShownMessage_st {
    MessageKind mKind;
    wxString mText;
    wxString mTitle;
};

/// A picture of a view: RGB, top row first.
struct Picture_st {
    int mW = 0;
    int mH = 0;
    std::vector<unsigned char> mRGB;
    /// Largest channel at a pixel; 0 outside.
    int Brightness(int x, int y) const;
    /// True if any pixel within `radius` of (x, y) is brighter than `level`.
    bool IsLit(double x, double y, int radius, int level) const;
    int CountLit(int level) const;
};

/// A folder of its own that is gone with the object.
class TempDir_cls {
public:
    TempDir_cls();
    ~TempDir_cls();
    TempDir_cls(const TempDir_cls&) = delete;
    TempDir_cls& operator=(const TempDir_cls&) = delete;
    std::string operator/(const std::string& name) const { return (mPath / name).string(); }

    std::filesystem::path mPath;
};

class GuiTest : public ::testing::Test {
public:
    /// Something to do once all keys so far have arrived and `mReady`, if any, holds.
    struct Act_st {
        std::function<bool()> mReady;
        std::function<void()> mDo;
    };

protected:
    void SetUp() override;
    void TearDown() override;

    static Main_cls* Hub();
    static FrameMain_cls* Frame();
    static MainGLCanvas_cls* Canvas(int view);
    static SharedView_cls& Shared(); ///< of all views
    static TimeCtrl_cls* Time();

    /// No limit of speed: the machine may be busy with something else.
    static constexpr int kPatience = 30000;
    /// Let events run until `done` holds; false after `millis`.
    static bool PumpUntil(const std::function<bool()>& done, int millis = kPatience);
    /// The same for what the server or the window manager does, named in a message if it never comes.
    static void Await(const std::function<bool()>& done, const char* what);
    /// Let events run until nothing is pending and every shown view is painted.
    static bool Settle(int millis = kPatience);
    /// Post a menu command as the menu would, and settle.
    static void Menu(int id, bool bChecked = false);
    /// Open the sequence of a file with the present grammar and wait for its first picture.
    static bool OpenAndPaint(const std::string& path);
    static bool OpenProjectAndPaint(const std::string& path);
    /// The example of a melt in 20 snapshots, a frame each; frames 0 to `last` are worked on.
    static void OpenMelt(int last = 19);
    static Picture_st Grab(int view);
    /// Animation and work area: frames 0 to `last`.
    static void PlayAll(int last);
    /// No texts, items and ground grid in a view; the next paint shows it.
    static void HideAllButData(int view);
    /// Of the particles of a snapshot that lie inside a view's window, the share that is lit within `radius`
    /// pixels of where the projection puts them; 0 where none is inside.
    static double ShareLit(int view, int snapshot, int* pInside = nullptr, int radius = 4);
    /// Where a data point (loader's coordinates) lies in a view's window, in pixels from the top left.
    static bool ProjectToWindow(int view, const double (&pos)[3], double* pX, double* pY);

    // The user's hands. Positions are in the window's client pixels.
    static void MoveTo(wxWindow* window, wxPoint point);
    static void Click(wxWindow* window, wxPoint point, int button = 1); ///< 1 left, 2 middle, 3 right
    static void DoubleClick(wxWindow* window, wxPoint point);
    /// Where the pointer is.
    static void Press(bool bDown, int button = 1);
    /// Shift, Ctrl or Alt (WXK_...), until it is let go.
    static void Hold(int modifier, bool bDown);
    static void Drag(wxWindow* window, wxPoint from, wxPoint to, int button = 1, int steps = 8);
    static void Key(int keycode, int modifiers = 0);
    static void Type(const std::string& text);
    static void Wheel(wxWindow* window, wxPoint point, int clicks); ///< positive: away from the user
    /// Click a field, put a text in place of its own, press Enter.
    static void TypeInto(NumField_cls* field, const std::string& text);
    /// Open a choice or combo box with the mouse and go to a row with the keys.
    static void Choose(wxWindow* choice, int row);
    /// For loops that don't return, such as popups and modal dialogs: acts that a timer does one after
    /// another. They may press keys with KeyNow alone.
    static void Later(std::vector<Act_st> acts);
    /// Does a modal dialog have the keyboard?
    static bool HasDialog();
    static void KeyNow(int keycode, int modifiers = 0);
    /// Wait until the program has handled what mouse and keys sent, and painted.
    static void Arrive(bool bFrame = true);
    /// Right click, then go through the popup with these keys.
    static void ClickPopup(wxWindow* window, wxPoint point, const std::vector<int>& keys);

    /// The shown descendant with this label, else null.
    static wxWindow* FindByLabel(wxWindow* root, const wxString& label);
    /// The shown descendant whose tooltip begins so, else null.
    static wxWindow* FindByTip(wxWindow* root, const wxString& tip);
    /// The numeric field under a tooltip that begins so.
    static NumField_cls* FindField(wxWindow* root, const wxString& tip);
    /// The shown window with this title, waited for; null when none comes.
    static wxTopLevelWindow* WaitForWindow(const wxString& title, int millis = kPatience);
    static wxPoint Middle(const wxWindow* window);
    static void ClickOn(wxWindow* window) { Click(window, Middle(window)); }
    /// What the screen shows of a window.
    static Picture_st Shoot(wxWindow* window);
    /// A picture of the whole screen into the folder that MORENTIS_GUI_PICTURES names, if it is set.
    static void Snap(const std::string& name);
    /// True if one of the messages so far holds this text.
    bool WasTold(const wxString& text) const;
    /// Back to the state of a fresh start: one view, default cameras and settings.
    static void ResetViews();

    std::vector<ShownMessage_st> mVMessages; ///< since the test began
    std::deque<bool> mAnswers;               ///< to questions, in order; true when empty
    std::deque<MessageAnswer> mSaveAnswers;  ///< whether to save, in order; MESSAGE_NO when empty

    static std::string Root(); ///< of the checkout, with a trailing slash
};
