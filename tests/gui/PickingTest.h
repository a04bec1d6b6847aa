// Base of tests of items under the hand: an eye at (0, -4, 0) looks along y.
#pragma once

#include <cmath>
#include <random>

#include <epoxy/gl.h>
#include <wx/statusbr.h>

#include "COMMON/Globals.h"
#include "FilterTest.h"
#include "GL/BASE/MouseSpeed.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLGuides.h"
#include "GL/BASE/clsNavigators.h"
#include "GL/VIEW/clsViewPick.h"
#include "GroupValue.h"
#include "GuiEvents.h"
#include "IMAGE/clsImageIO.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsMoveItem.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

class PickingTest : public FilterTest {
protected:
    using Values = std::vector<double>;
    static constexpr double kNow = SceneObj_cls::kCurrent;

    void SetUp() override {
        FilterTest::SetUp();
        Frame()->GetPCPreference()->SetToDefaultMouse(0);
        Navigators_cls::TranslationMode();
        Hub()->SelectObject(nullptr);
        // The eye at (0, -4, 0) looks along y: x goes to the right, z up.
        PositionAndDirection_cls& eye = Canvas(0)->mCamera.GetFreeCamera();
        const double front[3] = {0, 1, 0}, up[3] = {0, 0, 1};
        eye.Set(0, -4, 0);
        eye.Setv(front, up);
        Canvas(0)->mShowGrid.mValue = false;
        Menu(ID_REFRESH_GL);
        GCUndoList.Clear();
    }
    void TearDown() override {
        Hub()->SelectObject(nullptr);
        Navigators_cls::TranslationMode();
        MoveTo(Canvas(0), wxPoint(60, 300));
        FilterTest::TearDown();
    }
    static LightSRC_cls& Light(int i) { return Hub()->mpCLightSRCCtrl->GetLight(i); }
    static SceneObj_cls* Selected() { return MoveItem_cls::mspCSelectedObject; }
    static Values ValuesOf(ParamGroup_cls* pGroup) { return GetGroupValue(pGroup, kNow); }
    static Values PlaceOf(SceneObj_cls& object) {
        Values place(3);
        for (size_t i = 0; i < 3; ++i)
            place[i] = object.mpCTranslate->mVParams[i].GetInterpolatedValue(kNow);
        return place;
    }
    static void Put(SceneObj_cls& object, double x, double y, double z) {
        const double values[3] = {x, y, z};
        Parameters_cls::msbUndoCommandMake = false;
        object.mpCTranslate->SetKeyFrame(values, true, kNow);
        Parameters_cls::msbUndoCommandMake = true;
        Menu(ID_REFRESH_GL);
    }
    /// Where a view shows a place of the scene.
    static wxPoint At(const Values& place, int view = 0) {
        double at[2] = {9, 9};
        EXPECT_TRUE(Canvas(view)->GetPick().Project(place.data(), at));
        const wxSize size = Canvas(view)->GetClientSize();
        return wxPoint(int(std::lround((at[0] + 1.0) * size.x / 2.0)),
                       int(std::lround((1.0 - at[1]) * size.y / 2.0)));
    }
    static void PickAt(wxPoint point, int view = 0) {
        Hold(WXK_SHIFT, true);
        Click(Canvas(view), point, 3);
        Hold(WXK_SHIFT, false);
        Settle();
    }
    static void ShiftDrag(wxPoint from, wxPoint to, int view = 0) {
        Hold(WXK_SHIFT, true);
        Drag(Canvas(view), from, to);
        Hold(WXK_SHIFT, false);
        Settle();
    }
    /// Press with Shift and move; the button stays down.
    static void Begin(wxPoint from, wxPoint to, int view = 0) {
        Hold(WXK_SHIFT, true);
        MoveTo(Canvas(view), from);
        Press(true);
        for (int k = 1; k <= 4; ++k)
            MoveTo(Canvas(view), from + (to - from) * k / 4);
        Hold(WXK_SHIFT, false);
    }
    static void End() {
        Press(false);
        Settle();
    }
    static int Steps() { return int(GCUndoList.GetCurrent()); }
    static wxString Status() { return Frame()->GetStatusBar()->GetStatusText(0); }
    /// What a way of so many pixels moves an item by that is `depth` away: to the right and up.
    static std::array<double, 2> WayOf(wxPoint pixels, double depth, int view = 0) {
        const wxSize size = Canvas(view)->GetClientSize();
        const double aspect = double(size.x) / size.y;
        return {MouseSpeed::kItem * depth * aspect * 2.0 * pixels.x / size.x,
                -MouseSpeed::kItem * depth * 2.0 * pixels.y / size.y};
    }
};
