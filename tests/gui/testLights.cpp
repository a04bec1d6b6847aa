// The dialog "Light Source Editor", the lights' rows of the time lines, their text in projects, and what a
// view shows of them.
#include <cmath>

#include <wx/listctrl.h>

#include "FilterTest.h"
#include "GroupValue.h"
#include "PARAM/clsParamGroup.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsLightSRCGUI.h"
#include "WIDGET/clsKeyButton.h"

namespace {

class Lights : public FilterTest {
protected:
    void SetUp() override {
        FilterTest::SetUp();
        mpGUI = OpenDialog<LightSRCGUI_cls>(ID_LIGHT_SOURCE, "Light Source Editor");
        ASSERT_TRUE(mpGUI);
        EXPECT_EQ(mpGUI, LightSRCGUI_cls::mspCThis);
    }
    void TearDown() override {
        mpGUI->CloseEXKey();
        FilterTest::TearDown();
    }
    static LightSRCCtrl_cls& Ctrl() { return *Hub()->mpCLightSRCCtrl; }
    static wxString TextOfLights() { return Ctrl().Serialize(); }
    wxWindow* Button(int id) const { return mpGUI->FindWindow(id); }
    void Press(int id) {
        ClickOn(Button(id));
        Arrive();
    }
    bool IsRowShown(int row) const { return mpGUI->GetPCPanel()->GetField(row)->IsShown(); }
    int IconOf(int row) const {
        wxListItem item;
        item.SetId(row);
        item.SetMask(wxLIST_MASK_IMAGE);
        mpGUI->GetPCList()->GetItem(item);
        return item.GetImage();
    }
    long Chosen() const {
        return mpGUI->GetPCList()->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
    }
    static bool IsOnTimeLines(const ParamGroup_cls* pGroup) {
        for (const TimelineRow& row : Strips()->GetRows())
            if (row.mpCGroup->GetPCGroup() == pGroup) return true;
        return false;
    }
    LightSRCGUI_cls* mpGUI = nullptr;
};

TEST_F(Lights, EachFieldIsAStep) {
    for (const int light : {0, 1}) {
        Ctrl().SelectLight(light);
        Settle();
        EXPECT_EQ(ChangeAll([&] { return mpGUI->GetPCPanel(); }, "light", TextOfLights), 18);
    }
    // A strength's diamond makes it a curve.
    const wxString before = TextOfLights();
    ClickOn(mpGUI->GetPCPanel()->GetKeyButton(LightSRCGUI_cls::ROW_STRENGTH));
    Arrive();
    EXPECT_TRUE(Ctrl().GetLight(1).mpCStrength->mVParams[0].mbTimeDepend.mValue);
    Menu(ID_UNDO);
    EXPECT_EQ(TextOfLights().ToStdString(), before.ToStdString());
}

TEST_F(Lights, PlusAndMinusGoFromOneToSeven) {
    const wxString start = TextOfLights();
    Press(ID_LIGHT_REMOVE);
    EXPECT_EQ(Ctrl().GetLightNumber(), 1);
    EXPECT_FALSE(Button(ID_LIGHT_REMOVE)->IsEnabled());
    for (int number = 2; number <= 7; ++number) {
        EXPECT_TRUE(Button(ID_LIGHT_ADD)->IsEnabled());
        Press(ID_LIGHT_ADD);
        EXPECT_EQ(Ctrl().GetLightNumber(), number);
        EXPECT_EQ(mpGUI->GetPCList()->GetItemCount(), number);
        EXPECT_EQ(Chosen(), number - 1);
        EXPECT_TRUE(IsOnTimeLines(Ctrl().mpCTopGroup));
    }
    EXPECT_FALSE(Button(ID_LIGHT_ADD)->IsEnabled());
    Snap("lights_seven");
    for (int number = 6; number >= 1; --number) {
        Menu(ID_UNDO);
        EXPECT_EQ(Ctrl().GetLightNumber(), number);
        EXPECT_EQ(mpGUI->GetPCList()->GetItemCount(), number) << "the dialog follows";
    }
    EXPECT_FALSE(Button(ID_LIGHT_REMOVE)->IsEnabled());
    Menu(ID_UNDO);
    EXPECT_EQ(TextOfLights(), start);
    Menu(ID_REDO);
    EXPECT_EQ(Ctrl().GetLightNumber(), 1);
}

TEST_F(Lights, RowsAndIconsFollowTheLight) {
    using GUI = LightSRCGUI_cls;
    Ctrl().SelectLight(0);
    Settle();
    for (const int row : {GUI::ROW_FADE_DISTANCE, GUI::ROW_SPOT_ANGLE, GUI::ROW_AREA_SIZE})
        EXPECT_FALSE(IsRowShown(row)) << row;
    EXPECT_EQ(IconOf(0), 0);
    Choose(mpGUI->GetPCPanel()->GetField(GUI::ROW_TYPE), LightSRC_cls::TYPE_SPOT);
    Choose(mpGUI->GetPCPanel()->GetField(GUI::ROW_TYPE, 1), LightSRC_cls::FADE_POWER2);
    ClickOn(mpGUI->GetPCPanel()->GetField(GUI::ROW_AREA_LIGHT));
    Arrive();
    for (const int row : {GUI::ROW_FADE_DISTANCE, GUI::ROW_SPOT_ANGLE, GUI::ROW_AREA_SIZE})
        EXPECT_TRUE(IsRowShown(row)) << row;
    EXPECT_EQ(IconOf(0), 1);
    Snap("lights_spot");
    ClickOn(mpGUI->GetPCPanel()->GetField(GUI::ROW_VALID, 1));
    Arrive();
    EXPECT_TRUE(Ctrl().GetLight(0).mCFollowsCamera.mValue);
    // Another light by the mouse.
    wxRect rect;
    mpGUI->GetPCList()->GetItemRect(1, rect);
    Click(mpGUI->GetPCList(), wxPoint(rect.x + rect.width / 2, rect.y + rect.height / 2));
    Arrive();
    EXPECT_EQ(Ctrl().GetCurrentLight(), 1);
    EXPECT_FALSE(IsRowShown(GUI::ROW_SPOT_ANGLE));
    EXPECT_TRUE(Ctrl().GetLight(1).mbSelected) << "its rows of the time lines, too";
    EXPECT_FALSE(Ctrl().GetLight(0).mbSelected);
    // The time lines choose in the dialog.
    Strips()->mOnObjectChosen(&Ctrl().GetLight(0));
    EXPECT_EQ(Chosen(), 0);
    EXPECT_TRUE(IsRowShown(GUI::ROW_SPOT_ANGLE));
    while (GCUndoList.IsUndoable())
        Menu(ID_UNDO);
    EXPECT_FALSE(IsRowShown(GUI::ROW_SPOT_ANGLE));
    EXPECT_EQ(IconOf(0), 0);
}

TEST_F(Lights, OneThatPointsAtTheOriginGoesOnDoingSo) {
    using GUI = LightSRCGUI_cls;
    Ctrl().SelectLight(0);
    Settle();
    const wxString before = TextOfLights();
    LightSRC_cls& light = Ctrl().GetLight(0);
    const auto expectPointing = [&](const std::vector<double>& place) {
        EXPECT_EQ(GetGroupValue(light.mpCTranslate, 0.0), place);
        const std::array<double, 3> from = light.GetVDirectionVector(0.0);
        const double far = std::hypot(place[0], place[1], place[2]);
        for (size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(from[i], place[i] / far, 1e-4) << i;
    };
    Choose(mpGUI->GetPCPanel()->GetField(GUI::ROW_TYPE, 2), SceneObj_cls::TARGET_ORIGIN);
    const wxString turned = TextOfLights();
    auto* x = dynamic_cast<NumField_cls*>(mpGUI->GetPCPanel()->GetField(GUI::ROW_TRANSLATE));
    TypeInto(x, "-3");
    expectPointing({-3, 1, GetGroupValue(light.mpCTranslate, 0.0)[2]});
    Menu(ID_UNDO);
    EXPECT_EQ(TextOfLights().ToStdString(), turned.ToStdString()) << "place and turn are one step";
    Menu(ID_UNDO);
    EXPECT_EQ(TextOfLights().ToStdString(), before.ToStdString());
    Menu(ID_REDO);
    Menu(ID_REDO);
    expectPointing({-3, 1, GetGroupValue(light.mpCTranslate, 0.0)[2]});
}

TEST_F(Lights, TheDialogKeepsItsPlace) {
    mpGUI->Move(140, 160);
    Settle();
    const wxPoint place = mpGUI->GetPosition();
    mpGUI->CloseEXKey();
    Settle();
    EXPECT_FALSE(mpGUI->IsShown());
    Menu(ID_LIGHT_SOURCE);
    EXPECT_TRUE(mpGUI->IsShown());
    EXPECT_LT(std::abs(mpGUI->GetPosition().x - place.x) + std::abs(mpGUI->GetPosition().y - place.y), 60);
}

TEST_F(Lights, ProjectsBringTheirs) {
    Ctrl().AddLight();
    Ctrl().GetLight(2).mCType.mValue = LightSRC_cls::TYPE_SPOT;
    const double negative = -0.75;
    Ctrl().GetLight(2).mpCStrength->SetKeyFrame(&negative, true, ParamGroup_cls::kCurrent);
    const wxString three = TextOfLights();
    const std::string path = mDir / "three.mrp";
    ASSERT_TRUE(Hub()->SaveProjectFile(path, true));
    // One from before there were lights of the user's.
    Open(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp");
    EXPECT_EQ(TextOfLights(), LightSRCCtrl_cls().Serialize());
    EXPECT_EQ(mpGUI->GetPCList()->GetItemCount(), 2);
    EXPECT_FALSE(IsOnTimeLines(Ctrl().GetLight(2).mpCObjectGroup));
    Open(path);
    EXPECT_EQ(TextOfLights(), three);
    EXPECT_EQ(GetGroupValue(Ctrl().GetLight(2).mpCStrength, 0.0)[0], negative);
    EXPECT_EQ(mpGUI->GetPCList()->GetItemCount(), 3);
    EXPECT_EQ(IconOf(2), 1);
    const std::string again = mDir / "again.mrp";
    ASSERT_TRUE(Hub()->SaveProjectFile(again, true));
    EXPECT_EQ(ReadAll(again).find("three.mrp") != std::string::npos, false);
    EXPECT_NE(ReadAll(again).find(three.ToStdString()), std::string::npos);
}

TEST_F(Lights, AFileMayHoldAnyNumberOfThem) {
    for (const int number : {0, 8, 100}) {
        std::string text = "---AllLightSource\nLightNumber=" + std::to_string(number) + "\n";
        for (int i = 0; i < number; ++i)
            text += "---LightSRC " + std::to_string(i) + "\nType=1\nSpotAngle=500\nFade=2\nFadeDistance=0\n";
        text += "---AllLightSourceEnd\n";
        const std::string path = mDir / "many.mrp";
        std::ofstream(path) << ReadAll(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp") << text;
        Open(path);
        EXPECT_EQ(Ctrl().GetLightNumber(), std::min(number, 7));
        EXPECT_EQ(mpGUI->GetPCList()->GetItemCount(), std::min(number, 7));
        EXPECT_EQ(mpGUI->GetPCPanel()->GetField(0)->IsEnabled(), number > 0);
        EXPECT_TRUE(mVMessages.empty());
        if (number > 0) continue;
        EXPECT_FALSE(Button(ID_LIGHT_REMOVE)->IsEnabled());
        Press(ID_LIGHT_ADD);
        EXPECT_EQ(Ctrl().GetLightNumber(), 1);
        EXPECT_TRUE(mpGUI->GetPCPanel()->GetField(0)->IsEnabled());
    }
}

TEST_F(Lights, MarksStandInTheViewsWithTheItems) {
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    Canvas(0)->mShowData.mValue = Canvas(0)->mShowGrid.mValue = false;
    Canvas(0)->mCamera.GetFreeCamera().Set(0, 0, 12);
    const auto count = [&] {
        Menu(ID_REFRESH_GL);
        Settle();
        const Picture_st picture = Grab(0);
        int yellow = 0; // colours of the marks alone
        for (size_t i = 0; i + 2 < picture.mRGB.size(); i += 3)
            yellow += picture.mRGB[i] > 60 && picture.mRGB[i] == picture.mRGB[i + 1] &&
                      picture.mRGB[i + 2] < picture.mRGB[i] / 2;
        return yellow;
    };
    mpGUI->CloseEXKey();
    const int two = count();
    EXPECT_GT(two, 20);
    Snap("lights_marks");
    Ctrl().GetLight(0).mCVisible.mValue = false;
    EXPECT_LT(count(), two);
    Ctrl().GetLight(0).mCVisible.mValue = true;
    Canvas(0)->mShowItems.mValue = false;
    EXPECT_EQ(count(), 0);
    Canvas(0)->mShowItems.mValue = true;
}

} // namespace
