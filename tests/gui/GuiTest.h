// Base of all tests of the real program: hub and frame as the program makes them, messages recorded and
// answered, the event loop pumped until a condition holds.
#pragma once

#include <deque>
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

class GuiTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    static Main_cls* Hub();
    static FrameMain_cls* Frame();
    static MainGLCanvas_cls* Canvas(int view);

    /// Let events run until `done` holds; false after `millis`.
    static bool PumpUntil(const std::function<bool()>& done, int millis = 10000);
    /// Let events run until nothing is pending and every shown view is painted.
    static bool Settle(int millis = 10000);
    /// Post a menu command as the menu would, and settle.
    static void Menu(int id, bool bChecked = false);
    /// Open the sequence of a file with the present grammar and wait for its first picture.
    static bool OpenAndPaint(const std::string& path);
    static bool OpenProjectAndPaint(const std::string& path);
    static Picture_st Grab(int view);
    /// Where a data point (loader's coordinates) lies in a view's window, in pixels from the top left.
    static bool ProjectToWindow(int view, const double (&pos)[3], double* pX, double* pY);

    // The user's hands. Positions are in the window's client pixels.
    static void MoveTo(wxWindow* window, wxPoint point);
    static void Click(wxWindow* window, wxPoint point, int button = 1); ///< 1 left, 2 middle, 3 right
    static void Drag(wxWindow* window, wxPoint from, wxPoint to, int button = 1, int steps = 8);
    static void Key(int keycode, int modifiers = 0);
    static void Type(const std::string& text);
    /// The shown descendant with this label, else null.
    static wxWindow* FindByLabel(wxWindow* root, const wxString& label);

    std::vector<ShownMessage_st> mVMessages; ///< since the test began
    std::deque<bool> mAnswers;               ///< to questions, in order; true when empty

    static std::string Root(); ///< of the checkout, with a trailing slash
};
