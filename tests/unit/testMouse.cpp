#include "GL/BASE/clsDolly.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsMouseCtrl.h"
#include "GL/BASE/clsMouseNormalized.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/BASE/clsPreference.h"

#include <string>

#include <gtest/gtest.h>
#include <wx/event.h>

namespace {

const wxSize kSize(400, 200);

enum { SHIFT = 1, CTRL = 2, ALT = 4 };

wxMouseEvent Press(int button, int keys, int x = 0, int y = 0) {
    const wxEventType types[3] = {wxEVT_LEFT_DOWN, wxEVT_MIDDLE_DOWN, wxEVT_RIGHT_DOWN};
    wxMouseEvent event(types[button]);
    event.SetX(x);
    event.SetY(y);
    event.SetShiftDown(keys & SHIFT);
    event.SetControlDown(keys & CTRL);
    event.SetAltDown(keys & ALT);
    return event;
}

// Every gesture that a press means, one letter each.
std::string Meaning(Preference_cls& preference, int button, int keys) {
    MouseCtrl_cls mouse(&preference);
    mouse.SetMouseInformation(Press(button, keys), 1, kSize);
    std::string text;
    if (mouse.IsGyration()) text += 'G';
    if (mouse.IsZoom()) text += 'Z';
    if (mouse.IsMoveCenter()) text += 'C';
    if (mouse.IsMoveItem()) text += 'I';
    if (mouse.IsShowMenu()) text += 'M';
    if (mouse.IsHitTest()) text += 'H';
    return text;
}

std::string AllMeanings(Preference_cls& preference) {
    std::string text;
    for (int button = 0; button < 3; ++button)
        for (int keys = 0; keys < 8; ++keys)
            text += Meaning(preference, button, keys) + (keys == 7 ? "|" : ",");
    return text;
}

} // namespace

TEST(Preference, everyButtonAndKeyOfTheDefaults) {
    Preference_cls preference;
    // Keys in the order none, S, C, SC, A, SA, CA, SCA. Alt makes left the middle button and is
    // forgotten everywhere.
    EXPECT_EQ(AllMeanings(preference), "G,I,,C,Z,,,|Z,,,,Z,,,|M,H,,,M,H,,|");
}

TEST(Preference, pickingHasKeysInFilesWhereTheyAreNotTheDefaults) {
    Preference_cls preference;
    const bool ctrl[4] = {false, true, false, false}, none[4] = {};
    const bool left[4] = {true, false, false, false};
    EXPECT_TRUE(preference.IsMouse4Pick(ctrl, left));
    EXPECT_FALSE(preference.IsMouse4Pick(none, left));
    const wxString plain = preference.Serialize();
    EXPECT_FALSE(plain.Contains("GUI_PICK"));
    preference.mCPick.mValue = 1;
    EXPECT_EQ(preference.Serialize(), plain + "GUI_PICK=1\nGUI_PICK_MOD=0 1 0\n");
    Preference_cls other;
    other.ReadStrLine("GUI_PICK=1");
    other.ReadStrLine("GUI_PICK_MOD=1 0 0");
    EXPECT_EQ(other.mCPick.mValue, 1u);
    EXPECT_TRUE(other.mCPickMod.mValue[0]);
    other.SetToDefaultMouse(0);
    EXPECT_EQ(other.Serialize(), plain);
    other.CopyFrom(preference);
    EXPECT_EQ(other.mCPick.mValue, 1u);
}

TEST(Preference, emulationByShiftTakesShiftOutOfAllTriples) {
    Preference_cls preference;
    EXPECT_TRUE(preference.ReadStrLine("GUI_MBUTTON_EMULATE=0"));
    // Moving an item is now what turning is; moving the centre wants Ctrl alone; shift and left zoom.
    EXPECT_EQ(AllMeanings(preference), "GI,Z,C,,,,,|Z,Z,,,,,,|MH,MH,,,,,,|");
}

TEST(Preference, withoutEmulationAltIsAModifierLikeOthers) {
    Preference_cls preference;
    for (const char* line : {"GUI_MBUTTON_EMULATE=3", "GUI_MBUTTON_EMULATE=9", "GUI_MBUTTON_EMULATE=-1"}) {
        EXPECT_TRUE(preference.ReadStrLine(line));
        EXPECT_TRUE(preference.ReadStrLine("GUI_ITEM_MOD=0 0 1"));
        EXPECT_EQ(AllMeanings(preference), "G,,,C,I,,,|Z,,,,,,,|M,H,,,,,,|") << line;
    }
}

TEST(Preference, buttonsOutOfRangeAreNotAssigned) {
    Preference_cls preference;
    for (const char* line : {"GUI_GYRATION=7", "GUI_ZOOM=3", "GUI_MENU=-2", "GUI_HITTEST=4000000000"})
        EXPECT_TRUE(preference.ReadStrLine(line));
    EXPECT_EQ(AllMeanings(preference), ",I,,C,,,,|,,,,,,,|,,,,,,,|");
}

TEST(Preference, writesItsKeysInOrder) {
    Preference_cls preference;
    preference.mCZoomInvert.mValue = true;
    EXPECT_EQ(preference.Serialize(),
              "GUI_GYRATION=0\nGUI_GYRATION_MOD=0 0 0\nGUI_GYRATION_INVERT=0\n"
              "GUI_ZOOM=1\nGUI_ZOOM_MOD=0 0 0\nGUI_ZOOM_INVERT=1\n"
              "GUI_CENTER=0\nGUI_CENTER_MOD=1 1 0\nGUI_ITEM=0\nGUI_ITEM_MOD=1 0 0\n"
              "GUI_MENU=2\nGUI_MENU_MOD=0 0 0\nGUI_HITTEST=2\nGUI_HITTEST_MOD=1 0 0\n"
              "GUI_MBUTTON_EMULATE=2\nPREF_SORT_TYPE=0\nPREF_FIT_FIRST=1\nPREF_THIN_DRAGS=1\n");
    EXPECT_TRUE(preference.ReadStrLine("PREF_SORT_TYPE=2"));
    EXPECT_EQ(preference.mCSortType.mValue, 2u);
    EXPECT_FALSE(preference.ReadStrLine("PREF_OTHER=2"));
    preference.SetToDefaultMouse(1);
    EXPECT_EQ(preference.Serialize(), "PREF_SORT_TYPE=2\nPREF_FIT_FIRST=1\nPREF_THIN_DRAGS=1\n");
    EXPECT_TRUE(preference.ReadStrLine("PREF_DRAW_WAY=2"));
    EXPECT_EQ(preference.Serialize(),
              "PREF_SORT_TYPE=2\nPREF_FIT_FIRST=1\nPREF_THIN_DRAGS=1\nPREF_DRAW_WAY=2\n");
}

TEST(Mouse, placesArePhysicalPixelsAndUnitsOfTheHalfWindow) {
    Preference_cls preference;
    MouseCtrl_cls mouse(&preference);
    mouse.SetMouseInformation(Press(0, 0, 50, 20), 2, kSize);
    mouse.SetPreviousPosition();
    EXPECT_EQ(mouse.mCurX, 100);
    EXPECT_EQ(mouse.mCurY, 40);
    EXPECT_TRUE(mouse.IsButton() && mouse.IsButtonDown() && !mouse.IsButtonUp());
    wxMouseEvent move(wxEVT_MOTION);
    move.SetLeftDown(true);
    move.SetX(200);
    move.SetY(100);
    mouse.SetMouseInformation(move, 2, kSize);
    EXPECT_TRUE(mouse.IsMouseDragging() && mouse.IsGyration() && !mouse.IsButton());
    MouseNormalized_cls normal(mouse, kSize);
    EXPECT_EQ(normal.mPrevX, -0.5f);
    EXPECT_EQ(normal.mPrevY, 0.6f);
    EXPECT_EQ(normal.mCurX, 1.0f);
    EXPECT_EQ(normal.mCurY, -1.0f);
    EXPECT_EQ(normal.mPressX, -0.5f);
    normal.LimitMove();
    EXPECT_FLOAT_EQ(normal.mCurX, -0.3f);
    EXPECT_FLOAT_EQ(normal.mCurY, 0.4f);
    normal.Invert();
    EXPECT_FLOAT_EQ(normal.mCurX, 0.3f);
    EXPECT_FLOAT_EQ(normal.mPrevY, -0.6f);
}

TEST(Mouse, theMenuComesWithThePressAlone) {
    Preference_cls preference;
    MouseCtrl_cls mouse(&preference);
    wxMouseEvent move(wxEVT_MOTION);
    move.SetRightDown(true);
    mouse.SetMouseInformation(move, 1, kSize);
    EXPECT_FALSE(mouse.IsShowMenu());
    mouse.SetMouseInformation(wxMouseEvent(wxEVT_RIGHT_UP), 1, kSize);
    EXPECT_FALSE(mouse.IsShowMenu());
    mouse.SetMouseInformation(wxMouseEvent(wxEVT_RIGHT_DCLICK), 1, kSize);
    EXPECT_TRUE(mouse.IsShowMenu());
}

TEST(Mouse, pressesNearTheRimAreTold) {
    Preference_cls preference;
    MouseCtrl_cls mouse(&preference);
    mouse.SetMouseInformation(Press(0, 0, 200, 100), 1, kSize);
    EXPECT_FALSE(mouse.mbGyrationOuter);
    mouse.SetMouseInformation(Press(0, 0, 200, 14), 1, kSize);
    EXPECT_TRUE(mouse.mbGyrationOuter);
    mouse.SetMouseInformation(Press(0, 0, 372, 100), 1, kSize);
    EXPECT_TRUE(mouse.mbGyrationOuter);
    EXPECT_TRUE(MouseNormalized_cls(mouse, wxSize(0, 0)).mbGyrationOuter);
}

TEST(Mouse, wheelStepsMayBeFractions) {
    Preference_cls preference;
    MouseCtrl_cls mouse(&preference);
    wxMouseEvent wheel(wxEVT_MOUSEWHEEL);
    wheel.m_wheelRotation = -60;
    wheel.m_wheelDelta = 120;
    mouse.SetMouseInformation(wheel, 1, kSize);
    EXPECT_TRUE(mouse.IsWheel());
    EXPECT_EQ(mouse.mWheelSteps, -0.5);
    wheel.m_wheelDelta = 0;
    mouse.SetMouseInformation(wheel, 1, kSize);
    EXPECT_EQ(mouse.mWheelSteps, -0.5);
    wheel.m_wheelAxis = wxMOUSE_WHEEL_HORIZONTAL;
    mouse.SetMouseInformation(wheel, 1, kSize);
    EXPECT_FALSE(mouse.IsWheel());
}

namespace {

struct DollyTest : testing::Test {
    Preference_cls mCPreference;
    MouseNormalized_cls mCMouse;
    Dolly_cls mCDolly{&mCPreference};
    PositionAndDirection_cls mCCamera;
    Position_cls mCAnchor{1, 0, 0};
    float mScale = 4;

    DollyTest() {
        mCCamera.Set(-3, 0, 0);
        mCCamera.SetDirection(1);
        mCCamera.SetAncPos(mCAnchor.mPos);
    }
    void Drag(float dx, float dy, int displayMode) {
        mCMouse = MouseNormalized_cls();
        mCMouse.mCurX = dx;
        mCMouse.mCurY = dy;
        mCDolly.SetParameter(1, &mCMouse, kSize, displayMode);
    }
};

} // namespace

TEST_F(DollyTest, freeViewsTurnAndAxisViewsShift) {
    Drag(0.1f, 0, 0);
    EXPECT_TRUE(mCDolly.Gyration(&mCCamera));
    EXPECT_NEAR(mCCamera.GetDistanceToAnc(), 4, 1e-12);
    EXPECT_GT(mCCamera.mPos[1], 0.3);
    EXPECT_NE(mCCamera.mFront[1], 0);

    mCCamera.Set(-3, 0, 0);
    mCCamera.SetDirection(1);
    Drag(0.1f, 0, 1);
    EXPECT_TRUE(mCDolly.Gyration(&mCCamera));
    EXPECT_EQ(mCCamera.mFront[0], 1);
    EXPECT_NEAR(mCCamera.mPos[1], 0.1 * 4 * 2, 1e-6);
    Drag(0, 0, 0);
    EXPECT_FALSE(mCDolly.Gyration(&mCCamera));
}

TEST_F(DollyTest, gyrationAfterAMoveOfTheCentreIsNotScaledByIt) {
    PositionAndDirection_cls fresh = mCCamera;
    mCCamera.SetSensitivity(500);
    Drag(0.01f, 0.02f, 0);
    mCDolly.Gyration(&mCCamera);
    mCDolly.Gyration(&fresh);
    EXPECT_TRUE(fresh.Position_cls::operator==(mCCamera) && fresh.Direction_cls::operator==(mCCamera));
}

TEST_F(DollyTest, invertedPreferencesReverseTheWay) {
    mCPreference.mCGyrationInvert.mValue = true;
    mCPreference.mCZoomInvert.mValue = true;
    Drag(0.1f, 0, 0);
    mCDolly.Gyration(&mCCamera);
    EXPECT_LT(mCCamera.mPos[1], -0.3);
    Drag(0, 0.1f, 0);
    mCDolly.Zoom(&mCCamera, &mScale);
    EXPECT_NEAR(mCCamera.GetDistanceToAnc(), 3.6, 1e-6);
}

TEST_F(DollyTest, zoomScalesTheDistanceOrTheAxisView) {
    Drag(0.1f, 0.1f, 7);
    EXPECT_TRUE(mCDolly.Zoom(&mCCamera, &mScale));
    EXPECT_NEAR(mCCamera.GetDistanceToAnc(), 4 * 1.08, 1e-6);
    EXPECT_EQ(mScale, 4);
    EXPECT_TRUE(mCDolly.ZoomWheel(&mCCamera, -2, &mScale));
    EXPECT_NEAR(mCCamera.GetDistanceToAnc(), 4 * 1.08 * 0.8, 1e-6);

    Drag(0.1f, 0.1f, 6);
    EXPECT_TRUE(mCDolly.Zoom(&mCCamera, &mScale));
    EXPECT_NEAR(mScale, 4.32, 1e-6);
    EXPECT_TRUE(mCDolly.ZoomWheel(&mCCamera, 1, &mScale));
    EXPECT_NEAR(mScale, 4.752, 1e-6);
    EXPECT_NEAR(mCCamera.GetDistanceToAnc(), 4 * 1.08 * 0.8, 1e-6);
    for (int i = 0; i < 100; ++i)
        mCDolly.ZoomWheel(&mCCamera, -30, &mScale);
    EXPECT_GT(mScale, 0);
    EXPECT_FALSE(mCDolly.ZoomWheel(&mCCamera, 0, &mScale));
}

TEST_F(DollyTest, movingTheCentreKeepsWhatIsUnderThePointer) {
    GLPerspective_cls view(kSize.GetWidth(), kSize.GetHeight());
    view.mbPerspective = false;
    const double point[3] = {1, -0.7, 0.4};
    double before[3], after[3];
    ASSERT_TRUE(view.Project(mCCamera, point, before));
    Drag(0.15f, -0.1f, 1);
    EXPECT_TRUE(mCDolly.MoveCenter(&mCCamera, &mCAnchor));
    mCCamera.SetAncPos(mCAnchor.mPos);
    EXPECT_NEAR(mCCamera.GetDistanceToAnc(), 4, 1e-12);
    ASSERT_TRUE(view.Project(mCCamera, point, after));
    EXPECT_NEAR(after[0] - before[0], 0.15, 1e-6);
    EXPECT_NEAR(after[1] - before[1], -0.1, 1e-6);
}
