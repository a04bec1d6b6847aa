// Base of tests of the time lines under mouse and keys.
#pragma once

#include <cmath>
#include <memory>

#include <wx/splitter.h>
#include <wx/textctrl.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "TIME/clsTimeCtrl.h"
#include "TimelinePoints.h"
#include "WIDGET/TIMELINE/clsFrameSlider.h"
#include "WIDGET/TIMELINE/clsGraphPanel.h"
#include "WIDGET/TIMELINE/clsParamTree.h"
#include "WIDGET/TIMELINE/clsPlayCtrlGUI.h"

/// A film of 19 frames with three groups, "Place" (open, linked), "Fade" (open) and the folder "Rig" (folded)
/// around "Turn".
class ParamLinesTest : public TimelinePoints {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        Menu(ID_VIEW_PANEL_TYPE_0);
        Time()->SetMaxFrameNative(19);
        Time()->SetAnimStepNative(1);
        Time()->SetAnimInterpNative(1);
        ShowAll();
        Time()->SetWAMinNative(0);
        Time()->SetWAMaxNative(19);
        Time()->SetFrameNative(0, 0);
        const wxString kAxes[] = {"X", "Y", "Z"};
        const wxString kAlpha[] = {"Alpha"};
        mpPlace = std::make_unique<ParamGroup_cls>("Place", 3, kAxes, 6, false);
        mpFade = std::make_unique<ParamGroup_cls>("Fade", 1, kAlpha, 6, false);
        mpTurn = std::make_unique<ParamGroup_cls>("Turn", 3, kAxes, 6, false);
        mpRig = std::make_unique<ParamGroup_cls>("Rig", 0, nullptr, 6, false);
        mpRig->mVpCChilds = {mpTurn.get()};
        mpRig->mbOpen = false;
        for (ParamGroup_cls* group : Roots())
            Lines()->AddParamGroup(group);
        for (ParamGroup_cls* group : HubGroups())
            Lines()->ShowGroup(group, false);
        Lines()->HideAndShow();
        GCUndoList.Clear();
        mStart = Text();
        Menu(ID_REFRESH_TL);
        Settle();
        // All rows are seen.
        ASSERT_TRUE(PumpUntil([] {
            Splitter()->SetSashPosition(-360);
            return Strips()->GetClientSize().y >= 8 * Lines()->GetLook().mRow;
        }));
        Settle();
    }
    void TearDown() override {
        GCUndoList.Clear();
        for (ParamGroup_cls* group : Roots())
            Lines()->RemoveParamGroup(group);
        for (ParamGroup_cls* group : {Hub()->mpCParamGroupCameraPath, Hub()->mpCLightSRCCtrl->mpCTopGroup})
            Lines()->ShowGroup(group, true);
        Time()->mbShyMode = false;
        Frame()->FitSplitterWindow(true);
        GuiTest::TearDown();
    }
    static std::vector<ParamGroup_cls*> HubGroups() {
        return {Hub()->mpCTimeCtrl->mpCTimeRemapGroup, Hub()->mpCParamGroupCameraPath,
                Hub()->mpCLightSRCCtrl->mpCTopGroup};
    }
    static void ShowAll() {
        Time()->SetAAMinNative(0);
        Time()->SetAAMaxNative(19);
    }
    static wxSplitterWindow* Splitter() { return dynamic_cast<wxSplitterWindow*>(Half()->GetParent()); }
    static ParamTree_cls* Tree() { return Lines()->GetPCTree(); }
    std::vector<ParamGroup_cls*> Roots() const { return {mpPlace.get(), mpFade.get(), mpRig.get()}; }
    wxString Text() const { return mpPlace->Serialize() + mpFade->Serialize() + mpRig->Serialize(); }
    static double At(int frame) { return frame / 19.0; }
    static Parameters_cls& X(ParamGroup_cls& group) { return group.mVParams[0]; }
    /// Frames at which the ruler shows keys.
    static std::vector<double> Marks() {
        std::vector<double> frames;
        for (const double mark : Half()->GetPCSlider()->GetMarks())
            frames.push_back(std::round(mark * 19e6) / 1e6);
        return frames;
    }
    static wxPoint Point(int row, int frame) { return StripPoint(row, At(frame)); }
    static void ClickZone(int row, TreeZone zone) {
        const wxRect rect = Tree()->GetZoneRect(row, zone);
        Click(Tree(), wxPoint(rect.x + rect.width / 2, rect.y + rect.height / 2));
    }
    static void GoTo(int frame) {
        Time()->SetFrameNative(frame, 0);
        Menu(ID_REFRESH_TL);
    }
    static void With(wxKeyCode modifier, const std::function<void()>& act) {
        Hold(modifier, true);
        act();
        Hold(modifier, false);
    }
    /// Keys by the mouse: time dependence, then a double click a frame.
    static void MakeKeys(int row, const std::vector<int>& frames) {
        ClickZone(row, TreeZone::CHECK);
        for (const int frame : frames) {
            DoubleClick(Strips(), Point(row, frame));
            Settle();
        }
        Click(Strips(), wxPoint(Point(row, 0).x - 12, Point(row, 0).y)); // deselects
    }
    static std::vector<int> Frames(const Parameters_cls& curve) {
        std::vector<int> frames;
        for (const KeyFrame_cls& key : curve.GetKeys()) {
            const double frame = key.mDoubleIndex * 19.0;
            frames.push_back(int(std::lround(frame)));
            EXPECT_NEAR(frame, std::round(frame), 1e-9) << "on the grid";
        }
        return frames;
    }
    static std::vector<int> Selected(const Parameters_cls& curve) {
        std::vector<int> frames;
        for (const KeyFrame_cls& key : curve.GetKeys())
            if (key.mbSelected) frames.push_back(int(std::lround(key.mDoubleIndex * 19.0)));
        return frames;
    }
    void UndoAll() {
        while (GCUndoList.IsUndoable())
            GCUndoList.UndoCurrent();
        Settle();
        EXPECT_EQ(Text(), mStart);
    }
    using List = std::vector<int>;

    std::unique_ptr<ParamGroup_cls> mpPlace, mpFade, mpTurn, mpRig;
    wxString mStart; ///< text of the groups before anything was done
    // Rows while nothing is folded by the test: Place, X, Y, Z, Fade, Alpha, Rig.
    enum Row { PLACE, PLACE_X, PLACE_Y, PLACE_Z, FADE, ALPHA, RIG };
};
