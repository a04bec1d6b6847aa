// Every gesture over a view: what it changes, and what it must leave alone.
#include <cmath>

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/menu.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "GL/BASE/clsPreference.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GuiEvents.h"
#include "GuiTest.h"

namespace {

struct Camera_st {
    double mPos[3];
    double mDistance;
};

double Apart(const double* a, const double* b) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) +
                     (a[2] - b[2]) * (a[2] - b[2]));
}

/// A modifier key that is held while the object lives.
class Held_cls {
public:
    explicit Held_cls(std::vector<int> keys) : mKeys(std::move(keys)) {
        for (const int key : mKeys)
            GuiEvents_cls::Modifier(key, true);
    }
    ~Held_cls() {
        for (const int key : mKeys)
            GuiEvents_cls::Modifier(key, false);
    }

private:
    std::vector<int> mKeys;
};

class Mouse : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        Frame()->GetPCPreference()->SetToDefaultMouse(0);
        ResetViews();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        ResetViews();
    }
    static Camera_st Look(int view = 0) {
        PositionAndDirection_cls* camera = Canvas(view)->mCamera.GetPCCameraPosition();
        const double* anchor = Canvas(view)->mCamera.GetPCAnchorPosition();
        Camera_st look = {{camera->mPos[0], camera->mPos[1], camera->mPos[2]}, 0.0};
        look.mDistance = Apart(camera->mPos, anchor);
        return look;
    }
    static void DragAcross(int button, int view = 0, wxPoint way = wxPoint(60, 25)) {
        const wxPoint middle = Middle(Canvas(view));
        Drag(Canvas(view), middle, middle + way, button);
        Settle();
    }
    static Preference_cls* Preference() { return Frame()->GetPCPreference(); }
};

TEST_F(Mouse, LeftDragTurnsAroundTheAnchor) {
    const Camera_st before = Look();
    const Picture_st picture = Grab(0);
    DragAcross(1);
    const Camera_st after = Look();
    EXPECT_GT(Apart(before.mPos, after.mPos), 0.05);
    EXPECT_NEAR(after.mDistance, before.mDistance, 1e-6);
    EXPECT_EQ(Apart(Canvas(0)->mCamera.GetPCAnchorPosition(), std::vector<double>(3, 0.0).data()), 0.0);
    EXPECT_NE(Grab(0).mRGB, picture.mRGB) << "the picture follows the camera";
    // A drag to the right and back comes home: the gesture has no memory.
    DragAcross(1, 0, wxPoint(-60, -25));
    DragAcross(1, 0, wxPoint(0, 0));
    EXPECT_NEAR(Look().mDistance, before.mDistance, 1e-6);
}

TEST_F(Mouse, MiddleDragAndAltLeftDragZoom) {
    const Camera_st before = Look();
    DragAcross(2, 0, wxPoint(0, 60));
    const Camera_st middle = Look();
    EXPECT_GT(std::fabs(middle.mDistance - before.mDistance), 0.05);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(middle.mPos[i] / middle.mDistance, before.mPos[i] / before.mDistance, 1e-6)
            << "along the line of sight";
    {
        const Held_cls alt({WXK_ALT});
        DragAcross(1, 0, wxPoint(0, -60));
    }
    const Camera_st back = Look();
    EXPECT_GT(std::fabs(back.mDistance - middle.mDistance), 0.05);
    EXPECT_LT((back.mDistance - middle.mDistance) * (middle.mDistance - before.mDistance), 0.0)
        << "up and down are opposite";
}

TEST_F(Mouse, ShiftCtrlLeftDragMovesTheCentre) {
    const Camera_st before = Look();
    {
        const Held_cls keys({WXK_SHIFT, WXK_CONTROL});
        DragAcross(1);
    }
    const Camera_st after = Look();
    const double origin[3] = {0, 0, 0};
    EXPECT_GT(Apart(Shared().msCAnchorPos, origin), 0.05);
    EXPECT_NEAR(after.mDistance, before.mDistance, 1e-6) << "camera and anchor go together";
    EXPECT_EQ(Apart(Shared().msCAnchorPosOrtho, origin), 0.0) << "the axis views keep theirs";
}

TEST_F(Mouse, FreeViewsFollowTheirSharedAnchor) {
    Menu(ID_VIEW_PANEL_TYPE_2);
    Canvas(1)->SetDisplayMode(0);
    Menu(ID_REFRESH_GL);
    const int paints = Canvas(1)->GetPaintCount();
    {
        const Held_cls keys({WXK_SHIFT, WXK_CONTROL});
        DragAcross(1);
    }
    EXPECT_GT(Canvas(1)->GetPaintCount(), paints);
    EXPECT_LT(Apart(Canvas(1)->mCamera.mCCamPos.mAnc, Shared().msCAnchorPos), 1e-12);
}

TEST_F(Mouse, ShiftLeftDragMovesNoCamera) {
    const Camera_st before = Look();
    {
        const Held_cls shift({WXK_SHIFT});
        DragAcross(1);
    }
    EXPECT_EQ(Apart(Look().mPos, before.mPos), 0.0);
}

TEST_F(Mouse, WheelZoomsTheViewUnderThePointer) {
    Menu(ID_VIEW_PANEL_TYPE_2);
    const double free = Look(0).mDistance;
    const float scale = Canvas(1)->mGLOrthoScale.mValue;
    Wheel(Canvas(0), Middle(Canvas(0)), 1);
    ASSERT_TRUE(Settle());
    EXPECT_NEAR(Look(0).mDistance, free * 1.1, 1e-5);
    EXPECT_EQ(Canvas(1)->mGLOrthoScale.mValue, scale);
    Wheel(Canvas(1), Middle(Canvas(1)), -2);
    ASSERT_TRUE(Settle());
    EXPECT_NEAR(Canvas(1)->mGLOrthoScale.mValue, scale * 0.9f * 0.9f, 1e-5);
    EXPECT_NEAR(Look(0).mDistance, free * 1.1, 1e-5);
    EXPECT_EQ(GpCurrentGLPanel, Canvas(1)) << "the view that is used is the active one";
}

TEST_F(Mouse, AxisDragPansAndTheOtherAxisViewsFollow) {
    Menu(ID_VIEW_PANEL_TYPE_3);
    for (int view = 1; view < 4; ++view)
        Canvas(view)->mGLOrthoScale.mValue = 20.0f;
    Menu(ID_REFRESH_GL);
    const Picture_st free = Grab(0);
    const Picture_st other = Grab(2); // from -x: sees y
    const int paints = Canvas(2)->GetPaintCount();
    DragAcross(1, 1, wxPoint(40, 30)); // from +z: moves x and y
    const double* anchor = Shared().msCAnchorPosOrtho;
    EXPECT_GT(std::fabs(anchor[0]), 0.05);
    EXPECT_GT(std::fabs(anchor[1]), 0.05);
    EXPECT_EQ(anchor[2], 0.0);
    EXPECT_GT(Canvas(2)->GetPaintCount(), paints);
    EXPECT_NE(Grab(2).mRGB, other.mRGB);
    const double origin[3] = {0, 0, 0};
    EXPECT_EQ(Apart(Shared().msCAnchorPos, origin), 0.0) << "the free view is not concerned";
    // The data went with the mouse: to the right and down.
    EXPECT_LT(anchor[0], 0.0);
    EXPECT_GT(anchor[1], 0.0);
}

TEST_F(Mouse, MiddleDragZoomsAnAxisView) {
    Menu(ID_VIEW_PANEL_TYPE_2);
    const float scale = Canvas(1)->mGLOrthoScale.mValue;
    DragAcross(2, 1, wxPoint(0, 60));
    EXPECT_GT(std::fabs(Canvas(1)->mGLOrthoScale.mValue - scale), 0.05f);
}

TEST_F(Mouse, RightClickOffersTheMenuAndItsEntriesWork) {
    const wxPoint middle = Middle(Canvas(0));
    // Up from nothing goes to the last entry, "Fit View".
    ClickPopup(Canvas(0), middle, {WXK_UP, WXK_UP, WXK_RETURN});
    EXPECT_EQ(Canvas(0)->GetGeometry(), 1) << "Toggle Perspective";
    EXPECT_TRUE(Canvas(0)->IsOrthographic());
    ClickPopup(Canvas(0), middle, {WXK_UP, WXK_UP, WXK_RETURN});
    EXPECT_EQ(Canvas(0)->GetGeometry(), 0);
    ClickPopup(Canvas(0), middle, {WXK_DOWN, WXK_RETURN});
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 7) << "Move to Cam Pos";
    // The camera path brings its own geometry: there is nothing to toggle, and the last two entries are grey.
    ClickPopup(Canvas(0), middle, {WXK_UP, WXK_RETURN});
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 0) << "Unlink";
    ClickPopup(Canvas(0), middle, {WXK_UP, WXK_UP, WXK_UP, WXK_RETURN});
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 7) << "Link";
}

TEST_F(Mouse, EscapeLeavesTheMenuWithoutEffect) {
    const Camera_st before = Look();
    ClickPopup(Canvas(0), Middle(Canvas(0)), {WXK_DOWN, WXK_ESCAPE});
    EXPECT_EQ(Canvas(0)->GetDisplayMode(), 0);
    EXPECT_EQ(Apart(Look().mPos, before.mPos), 0.0);
    DragAcross(1); // and the next gesture works as ever
    EXPECT_GT(Apart(Look().mPos, before.mPos), 0.05);
}

TEST_F(Mouse, PreferencesChangeTheGestures) {
    Key('P', wxMOD_CONTROL | wxMOD_ALT);
    wxTopLevelWindow* dialog = WaitForWindow("Preference");
    ASSERT_TRUE(dialog);
    std::vector<wxWindow*> lists;
    std::vector<wxWindow*> shifts;
    const std::function<void(wxWindow*)> gather = [&](wxWindow* window) {
        if (dynamic_cast<wxChoice*>(window)) lists.push_back(window);
        if (window->GetLabel() == "Shift") shifts.push_back(window);
        for (wxWindow* child : window->GetChildren())
            gather(child);
    };
    gather(dialog);
    ASSERT_GE(lists.size(), 7u);
    ASSERT_EQ(shifts.size(), 7u);
    Choose(lists[0], 1); // turn with the middle button
    Choose(lists[1], 0); // zoom with the left one and shift
    ClickOn(shifts[1]);
    EXPECT_EQ(Preference()->mCGyration.mValue, 1u);
    EXPECT_EQ(Preference()->mCZoom.mValue, 0u);
    EXPECT_TRUE(Preference()->mCZoomMod.mValue[0]);
    ClickOn(FindByLabel(dialog, "Close"));
    ASSERT_TRUE(PumpUntil([dialog] { return !dialog->IsShown(); }));

    const Camera_st before = Look();
    DragAcross(2);
    const Camera_st turned = Look();
    EXPECT_NEAR(turned.mDistance, before.mDistance, 1e-6);
    EXPECT_GT(Apart(turned.mPos, before.mPos), 0.05);
    DragAcross(1);
    EXPECT_EQ(Apart(Look().mPos, turned.mPos), 0.0) << "the left button alone means nothing now";
    {
        const Held_cls shift({WXK_SHIFT});
        DragAcross(1, 0, wxPoint(0, 60));
    }
    EXPECT_GT(std::fabs(Look().mDistance - turned.mDistance), 0.05);
}

TEST_F(Mouse, InvertedTurnGoesTheOtherWay) {
    const Camera_st before = Look();
    DragAcross(1, 0, wxPoint(40, 0));
    const Camera_st plain = Look();
    ResetViews();
    Preference()->mCGyrationInvert.mValue = true;
    DragAcross(1, 0, wxPoint(40, 0));
    const Camera_st inverse = Look();
    double along = 0.0;
    for (int i = 0; i < 3; ++i)
        along += (plain.mPos[i] - before.mPos[i]) * (inverse.mPos[i] - before.mPos[i]);
    EXPECT_LT(along, 0.0);
}

} // namespace
