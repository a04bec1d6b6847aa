// What a click in a view selects, and what the pointer tells.
#include "PickingTest.h"

#include "COLORCURVE/clsColorCurve.h"
#include "GL/BASE/DisplayMode.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewMouse.h"

namespace {

using Picking = PickingTest;

TEST_F(Picking, AClickSelectsEveryKindOfItem) {
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, FILTER_LIST_BOOLEAN);
    FilterBase_cls* box = Add(ID_FILTER_DATABOX, FILTER_LIST_OBJECT);
    Put(*cut->mpCData, -0.8, 0, -0.4);
    Put(*box->mpCData, 0.9, 0, -0.5);
    Put(Light(0), 0.5, 0, 0.8);
    Put(Light(1), -0.5, 0, 0.8);
    Put(*Hub()->mpCAnchorPath, 0.1, 0, 0.3);
    Put(*Hub()->mpCCameraPath, 0.1, 0, -0.7);
    Snap("pick_items");
    PickAt(At({0.5, 0, 0.8}));
    EXPECT_EQ(Selected(), &Light(0));
    EXPECT_TRUE(Light(0).mbSelected);
    EXPECT_EQ(Hub()->mpCLightSRCCtrl->GetCurrentLight(), 0);
    Snap("pick_light");
    PickAt(At({-0.5, 0, 0.8}));
    EXPECT_EQ(Selected(), &Light(1));
    EXPECT_FALSE(Light(0).mbSelected);
    EXPECT_EQ(Hub()->mpCLightSRCCtrl->GetCurrentLight(), 1) << "the dialog follows";
    PickAt(At({-1.3, 0.5, 0.1})); // an edge of its box
    EXPECT_EQ(Selected(), cut->mpCData.get());
    EXPECT_EQ(Lists().GetPCSelected(), cut);
    EXPECT_FALSE(Light(1).mbSelected);
    Snap("pick_filter");
    PickAt(At({1.4, 0.5, -1.0}));
    EXPECT_EQ(Selected(), box->mpCData.get());
    EXPECT_EQ(Lists().GetPCSelected(), box);
    PickAt(At({0.1, 0, -0.7}));
    EXPECT_EQ(Selected(), Hub()->mpCCameraPath);
    EXPECT_EQ(Lists().GetPCSelected(), nullptr);
    Snap("pick_camera");
    PickAt(At({0.1, 0, 0.3}));
    EXPECT_EQ(Selected(), Hub()->mpCAnchorPath);
    EXPECT_FALSE(Hub()->mpCCameraPath->mbSelected);
    // Where nothing is, nothing changes.
    PickAt(wxPoint(150, 15));
    EXPECT_EQ(Selected(), Hub()->mpCAnchorPath);
    Menu(ID_DESELECT);
    EXPECT_EQ(Selected(), nullptr);
    EXPECT_FALSE(Hub()->mpCAnchorPath->mbSelected);
    EXPECT_TRUE(Grab(0).IsLit(16, 64, 8, 60));
    Canvas(0)->mShowItems.mValue = false;
    Menu(ID_REFRESH_GL);
    PickAt(At({0.5, 0, 0.8}));
    EXPECT_EQ(Selected(), nullptr) << "what isn't shown isn't picked";
    EXPECT_FALSE(Grab(0).IsLit(16, 64, 8, 60)) << "nor are there buttons for it";
    Put(*Hub()->mpCAnchorPath, 0, 0, 0);
    Put(*Hub()->mpCCameraPath, -1.5, 0, 1.5);
}

TEST_F(Picking, MarksAndHandlesAreSeenOverLightAndDark) {
    Put(Light(0), 0.5, 0, 0.5);
    Put(*Hub()->mpCAnchorPath, -0.5, 0, 0.5);
    Put(*Hub()->mpCCameraPath, 0, 0, -0.5);
    float* back = Shared().mspCClrCurveBG->mConstantColor.mValue;
    for (const float grey : {0.0f, 0.5f, 1.0f}) {
        std::fill_n(back, 3, grey);
        // Pixels that stand out.
        const auto count = [grey](const Values& place) {
            Menu(ID_REFRESH_GL);
            const Picture_st picture = Grab(0);
            const wxPoint at = At(place);
            int seen = 0;
            for (int y = -24; y <= 24; ++y)
                for (int x = -24; x <= 24; ++x) {
                    const unsigned char* p =
                        &picture.mRGB[3 * (size_t(at.y + y) * size_t(picture.mW) + size_t(at.x + x))];
                    seen += std::any_of(p, p + 3,
                                        [grey](int value) { return std::abs(value - int(255 * grey)) > 60; });
                }
            return seen;
        };
        for (const Values& place : {Values{0.5, 0, 0.5}, Values{-0.5, 0, 0.5}, Values{0, 0, -0.5}})
            EXPECT_GT(count(place), 25) << place[0] << " over " << grey;
        Hub()->SelectObject(&Light(0));
        EXPECT_GT(count({0.5, 0, 0.5}), 150) << "handles over " << grey;
        Snap("pick_over_" + std::to_string(int(100 * grey)));
        Hub()->SelectObject(nullptr);
    }
    std::fill_n(back, 3, 0.0f);
    Put(*Hub()->mpCAnchorPath, 0, 0, 0);
    Put(*Hub()->mpCCameraPath, -1.5, 0, 1.5);
}

TEST_F(Picking, KeysStandOnThePath) {
    AnchorPath_cls& anchor = *Hub()->mpCAnchorPath;
    const auto amber = [](const Values& place) {
        const Picture_st picture = Grab(0);
        const wxPoint at = At(place);
        int count = 0;
        for (int y = at.y - 6; y <= at.y + 6; ++y)
            for (int x = at.x - 6; x <= at.x + 6; ++x) {
                const size_t i = 3 * (size_t(y) * size_t(picture.mW) + size_t(x));
                const unsigned char* p = &picture.mRGB[i];
                count += p[0] > 240 && p[1] > 180 && p[1] < 230 && p[2] < 80;
            }
        return count;
    };
    const double first[3] = {-0.6, 0, 0.5}, last[3] = {0.6, 0, -0.5};
    EXPECT_EQ(amber({-0.6, 0, 0.5}), 0);
    SceneObj_cls::SetKeyAt(anchor.mpCTranslate, first, 0.0);
    SceneObj_cls::SetKeyAt(anchor.mpCTranslate, last, 1.0);
    Menu(ID_REFRESH_GL);
    EXPECT_GT(amber({-0.6, 0, 0.5}) + amber({0.6, 0, -0.5}), 60);
    EXPECT_EQ(amber({0, 0, 0}), 0) << "the way between has no key";
    while (GCUndoList.IsUndoable())
        Menu(ID_UNDO);
    EXPECT_EQ(amber({0.6, 0, -0.5}), 0);
}

TEST_F(Picking, AFollowingLightIsThatOfTheViewUnderThePointer) {
    LightSRC_cls& light = Light(0);
    light.mCFollowsCamera.mValue = true;
    Put(light, 4, -0.5, 0.5); // ahead, left, up
    Menu(ID_VIEW_PANEL_TYPE_3);
    Settle();
    Canvas(1)->MarkStale();
    Canvas(1)->RefreshEX();
    Settle();
    PickAt(At({0.5, 0, 0.5}));
    EXPECT_EQ(Selected(), &light) << "another view was painted since";
    // A pointer that passes by in the middle of another view's paint turns nothing there.
    Canvas(1)->MarkStale();
    Canvas(1)->RefreshEX();
    Settle();
    const auto where = [] {
        std::array<float, 4> place{};
        Hub()->mpCLightSRCCtrl->GetPosition(0, 0.0, place.data());
        return place;
    };
    const auto before = where();
    GbGLLockDrawing.store(true);
    Canvas(0)->GetPick().Pick(wxPoint(10, 10));
    GbGLLockDrawing.store(false);
    EXPECT_EQ(where(), before);
    Menu(ID_VIEW_PANEL_TYPE_0);
    light.mCFollowsCamera.mValue = false;
}

TEST_F(Picking, EachEyePicksWhatItShows) {
    StereoGram_cls& stereo = *Hub()->mpCStereoGram;
    stereo.mCType.mValue = StereoGram_cls::TYPE_OFF_AXIS;
    const double parallax = 1.0;
    stereo.mpCParallax->SetKeyFrame(&parallax, true, kNow);
    Put(Light(0), 0.5, 0, 0.5);
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_SIDE_BY_SIDE;
    Menu(ID_REFRESH_GL);
    const wxPoint left = At({0.5, 0, 0.5});
    const int half = Canvas(0)->GetClientSize().x / 2;
    EXPECT_LT(left.x, half);
    Snap("pick_eyes");
    for (const int output : {StereoGram_cls::OUTPUT_SIDE_BY_SIDE, StereoGram_cls::OUTPUT_LEFT}) {
        stereo.mCEye.mValue = output;
        Menu(ID_REFRESH_GL);
        Hub()->SelectObject(nullptr);
        PickAt(At({0.5, 0, 0.5}));
        EXPECT_EQ(Selected(), &Light(0)) << output;
    }
    // The right eye sees it further to the left.
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_RIGHT;
    Menu(ID_REFRESH_GL);
    const wxPoint whole = At({0.5, 0, 0.5});
    stereo.mCEye.mValue = StereoGram_cls::OUTPUT_SIDE_BY_SIDE;
    Menu(ID_REFRESH_GL);
    Hub()->SelectObject(nullptr);
    PickAt(wxPoint(half + whole.x / 2, whole.y));
    EXPECT_EQ(Selected(), &Light(0)) << "in the other half";
    Hub()->SelectObject(nullptr);
    PickAt(wxPoint(left.x * 2, left.y));
    EXPECT_EQ(Selected(), nullptr) << "where a single picture would have it";
    stereo.Reset();
    Menu(ID_REFRESH_GL);
}

TEST_F(Picking, PanelsRowsAndViewsAgree) {
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, FILTER_LIST_BOOLEAN);
    Lists().SelectFilter(cut, true);
    EXPECT_EQ(Selected(), cut->mpCData.get());
    Hub()->mpCLightSRCCtrl->SelectLight(1);
    EXPECT_EQ(Selected(), &Light(1));
    EXPECT_FALSE(cut->mpCData->mbSelected);
    for (size_t row = 0; row < Strips()->GetRows().size(); ++row)
        if (Strips()->GetRows()[row].mpCGroup->GetPCGroup() == cut->mpCData->mpCObjectGroup)
            Strips()->SelectRow(int(row), false, false);
    EXPECT_EQ(Selected(), cut->mpCData.get());
    EXPECT_TRUE(cut->mpCData->mbSelected);
    EXPECT_FALSE(Light(1).mbSelected);
    // A light that goes out of use isn't the selected one any more.
    Hub()->mpCLightSRCCtrl->SelectLight(1);
    Hub()->mpCLightSRCCtrl->RemoveLight();
    Settle();
    EXPECT_EQ(Selected(), nullptr);
}

TEST_F(Picking, WideAndSmallViewsPickWhatTheyShow) {
    Put(Light(0), 2.0, -3.0, 0.3); // outside of a flat view
    for (const int geometry : {2, 3}) {
        Canvas(0)->SetGeometry(geometry);
        Canvas(0)->mGLPersAngle.mValue = 180;
        Menu(ID_REFRESH_GL);
        const wxPoint at = At({2.0, -3.0, 0.3});
        EXPECT_TRUE(Grab(0).IsLit(at.x, at.y, 14, 60)) << "its mark is there, geometry " << geometry;
        Snap(geometry == 2 ? "pick_fisheye" : "pick_panorama");
        Menu(ID_DESELECT);
        PickAt(at);
        EXPECT_EQ(Selected(), &Light(0)) << geometry;
        Menu(ID_DESELECT);
        PickAt(at + wxPoint(60, 0));
        EXPECT_EQ(Selected(), nullptr) << geometry;
    }
    Canvas(0)->mGLPersAngle.mValue = 35;
    Canvas(0)->SetGeometry(0);
    Put(Light(0), 0.3, 0.2, 0.1);
    Menu(ID_VIEW_PANEL_TYPE_3);
    for (int view = 0; view < 4; ++view) {
        Menu(ID_DESELECT);
        PickAt(At({0.3, 0.2, 0.1}, view), view);
        EXPECT_EQ(Selected(), &Light(0)) << "view " << view;
    }
    Snap("pick_four");
    // A drag in a view along an axis.
    const wxPoint from(20, 120), way(12, 8);
    const double depth = double(Canvas(1)->mGLOrthoScale.mValue) - 0.1; // from above
    const std::array<double, 2> moved = WayOf(way, depth, 1);
    ShiftDrag(from, from + way, 1);
    const Values place = PlaceOf(Light(0));
    EXPECT_NEAR(place[0], 0.3 + moved[0], 1e-5);
    EXPECT_NEAR(place[1], 0.2 + moved[1], 1e-5);
    EXPECT_NEAR(place[2], 0.1, 1e-5);
}

TEST_F(Picking, AClickDuringAReadGoesByThePictureOnTheScreen) {
    Put(Light(0), 0.5, 0, 0.5);
    const wxPoint at = At({0.5, 0, 0.5});
    GbGLLockForLoadingData.store(true); // no paint comes through
    const int paints = Canvas(0)->GetPaintCount();
    Hold(WXK_SHIFT, true);
    Click(Canvas(0), at, 3);
    Hold(WXK_SHIFT, false);
    EXPECT_EQ(Selected(), &Light(0));
    EXPECT_EQ(Canvas(0)->GetPaintCount(), paints);
    GbGLLockForLoadingData.store(false);
    Settle();
}

// No picture comes of the angle 0, and half a world of 180; numbers stay numbers.
TEST_F(Picking, ViewsWithoutAnAngleTakeNoHarm) {
    Put(Light(0), 0.5, 0, 0.5);
    const wxPoint middle(Canvas(0)->GetClientSize().x / 2, Canvas(0)->GetClientSize().y / 2);
    const float angle = std::exchange(Canvas(0)->mGLPersAngle.mValue, 35.0f);
    for (const int mode : {int(DISPLAY_FREE), int(DISPLAY_PATH)})
        for (const float wide : {0.0f, 180.0f}) {
            Canvas(0)->SetDisplayMode(mode);
            Canvas(0)->mGLPersAngle.mValue = wide;
            Menu(ID_REFRESH_GL);
            PickAt(middle);
            Hub()->SelectObject(&Light(0));
            ShiftDrag(middle, middle + wxPoint(40, 30));
            Drag(Canvas(0), middle, middle + wxPoint(-30, 20));
            for (const double value : PlaceOf(Light(0)))
                EXPECT_TRUE(std::isfinite(value)) << wide << " in mode " << mode;
            EXPECT_TRUE(std::isfinite(Canvas(0)->mCamera.GetFreeCamera().mPos[0])) << wide;
            while (GCUndoList.IsUndoable())
                Hub()->Undo();
        }
    Canvas(0)->SetDisplayMode(DISPLAY_FREE);
    Canvas(0)->mGLPersAngle.mValue = angle;
    Menu(ID_REFRESH_GL);
}

TEST_F(Picking, ButtonsInTheViewChooseTheMode) {
    Canvas(0)->SetThisToBeActiveGL();
    Menu(ID_REFRESH_GL);
    const double before = Canvas(0)->mCamera.GetPCCameraPosition()->mPos[0];
    Snap("pick_buttons");
    Drag(Canvas(0), wxPoint(16, 40), wxPoint(90, 60));
    EXPECT_EQ(Navigators_cls::msManipulatorMode, GLGuides_cls::ROTATE);
    EXPECT_EQ(Canvas(0)->mCamera.GetPCCameraPosition()->mPos[0], before) << "nothing is dragged from there";
    Click(Canvas(0), wxPoint(16, 16));
    EXPECT_EQ(Navigators_cls::msManipulatorMode, GLGuides_cls::SCALE);
    Click(Canvas(0), wxPoint(16, 64));
    EXPECT_EQ(Navigators_cls::msManipulatorMode, GLGuides_cls::TRANSLATE);
}

TEST_F(Picking, ThePointerNamesWhatItIsOver) {
    Put(Light(0), 0.5, 0, 0.5);
    const wxPoint at = At({0.5, 0, 0.5});
    MoveTo(Canvas(0), wxPoint(60, 300));
    Settle();
    const auto sumLight = [at] {
        const Picture_st picture = Grab(0);
        int sum = 0;
        for (int y = -20; y <= 20; ++y)
            for (int x = -20; x <= 20; ++x)
                sum += picture.Brightness(at.x + x, at.y + y);
        return sum;
    };
    const int plain = sumLight();
    // A picture that takes long isn't made anew before the pointer rests.
    EXPECT_TRUE(PumpUntil([&] {
        MoveTo(Canvas(0), at + wxPoint(1, 0));
        MoveTo(Canvas(0), at);
        Settle();
        return Status() == "Light 0" && SceneObj_cls::mspCHovered == &Light(0) &&
               sumLight() > plain + plain / 20;
    })) << Status();
    Snap("pick_hover");
    MoveTo(Canvas(0), wxPoint(60, 300));
    Settle();
    EXPECT_NE(Status(), "Light 0");
    EXPECT_EQ(sumLight(), plain);
    // Where paints take long, one that passes by is named and no more; brighter it is once the pointer rests.
    const double cheap = std::exchange(ViewMouse_cls::msCheapMillis, 0.0);
    const int paints = Canvas(0)->GetPaintCount();
    MoveTo(Canvas(0), at);
    EXPECT_EQ(Status(), "Light 0");
    EXPECT_EQ(SceneObj_cls::mspCHovered, nullptr);
    EXPECT_EQ(Canvas(0)->GetPaintCount(), paints);
    EXPECT_TRUE(PumpUntil([&] { return SceneObj_cls::mspCHovered == &Light(0); }));
    Settle();
    EXPECT_GT(sumLight(), plain + plain / 20);
    ViewMouse_cls::msCheapMillis = cheap;
}

TEST_F(Picking, PicturesOfTheSceneKnowNoHandles) {
    Put(Light(0), 0.5, 0, 0.5);
    const auto picture = [] {
        std::vector<float> pixels;
        Canvas(0)->RequestImage(
            [&pixels](const ImageBuffers_st& buffers, wxSize) {
                const int size = buffers.mpColor->GetWidth();
                pixels.resize(size_t(3 * size) * size_t(size));
                buffers.mpColor->BindTexture();
                glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_FLOAT, pixels.data());
            },
            wxSize(128, 128));
        Settle();
        return pixels;
    };
    const auto plain = picture();
    ASSERT_FALSE(plain.empty());
    Hub()->mpCLightSRCCtrl->SelectLight(0);
    Settle();
    EXPECT_TRUE(picture() == plain);
}

} // namespace
