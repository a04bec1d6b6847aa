// A film from the first key to the project opened again, by the user's hands.
#include <fstream>
#include <sstream>

#include <wx/splitter.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"
#include "TimelinePoints.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"
#include "WIDGET/TIMELINE/clsParamTree.h"

namespace {

class Film : public TimelinePoints {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        Clock()->SetAnimInterpNative(1);
        Clock()->SetAnimStepNative(1);
        Clock()->SetRepeatNative(0);
        Lines()->FoldGroup(Hub()->mpCParamGroupCameraPath, false);
        Lines()->FoldGroup(Group(), false);
        ASSERT_TRUE(PumpUntil([] {
            Splitter()->SetSashPosition(-360);
            return Strips()->GetClientSize().y >= 8 * Lines()->GetLook().mRow;
        }));
        GCUndoList.Clear();
        ASSERT_TRUE(Settle());
    }
    void TearDown() override {
        while (GCUndoList.IsUndoable())
            GCUndoList.UndoCurrent();
        Lines()->FoldGroup(Hub()->mpCParamGroupCameraPath, true);
        Frame()->FitSplitterWindow(true);
        ResetViews();
        GuiTest::TearDown();
        GCUndoList.Clear();
    }
    static TimeCtrl_cls* Clock() { return Hub()->mpCTimeCtrl; }
    static wxSplitterWindow* Splitter() { return dynamic_cast<wxSplitterWindow*>(Half()->GetParent()); }
    static ParamGroup_cls* Group() { return Hub()->mpCCameraPath->mpCTranslate; }
    static Parameters_cls& Curve() { return Group()->mVParams[0]; }
    static int Row() {
        const auto& rows = Lines()->GetRows();
        for (size_t row = 0; row < rows.size(); ++row)
            if (rows[row].mpCGroup->GetPCGroup() == Group() && rows[row].mDim == 0) return int(row);
        return -1;
    }
    static wxPoint At(int frame) { return StripPoint(Row(), double(frame) / Clock()->GetMaxFrame()); }
    static void ClickZone(TreeZone zone) {
        const wxRect rect = Lines()->GetPCTree()->GetZoneRect(Row(), zone);
        Click(Lines()->GetPCTree(), wxPoint(rect.x + rect.width / 2, rect.y + rect.height / 2));
    }
    static void InsertKey(int frame) {
        DoubleClick(Strips(), At(frame));
        Settle();
    }
    static void TypeValue(const std::string& text) {
        const wxRect rect = Lines()->GetPCTree()->GetZoneRect(Row(), TreeZone::VALUE);
        DoubleClick(Lines()->GetPCTree(), wxPoint(rect.x + rect.width / 2, rect.y + rect.height / 2));
        Settle();
        Type(text);
        Key(WXK_RETURN);
        Settle();
    }
    std::string Project(const std::string& name) {
        const std::string path = mDir / name;
        EXPECT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(path), true));
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    TempDir_cls mDir;
};

TEST_F(Film, KeysAreSetPlayedUndoneSavedAndOpenedAgain) {
    const std::string before = Project("film.mrp");
    ASSERT_GE(Row(), 0);
    ClickZone(TreeZone::CHECK); // the first key stands at the current frame
    ASSERT_TRUE(Curve().mbTimeDepend.mValue);
    InsertKey(8);
    InsertKey(16);
    ASSERT_EQ(Curve().GetKeyNumber(), 3);
    Drag(Strips(), At(16), At(12));
    EXPECT_NEAR(Curve().GetKeyFrameDoubleIndex(2) * Clock()->GetMaxFrame(), 12.0, 1e-9);
    Clock()->SetFrameCommand(8);
    ASSERT_TRUE(Settle());
    TypeValue("-4");
    EXPECT_EQ(Curve().GetKeyFrameValue(1), -4.0);
    Canvas(0)->SetDisplayMode(7);
    Clock()->SetFrameCommand(0);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Canvas(0)->mCamera.mCCamPos.mPos[0], -1.5);

    Canvas(0)->SetFocus();
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([] { return Clock()->GetFrame() >= 8; }, 20000)) << "it plays";
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([] { return !Clock()->IsPlaying(); }));
    Clock()->SetFrameCommand(8);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Canvas(0)->mCamera.mCCamPos.mPos[0], -4.0) << "the camera is where the key puts it";
    Snap("film");
    Clock()->SetFrameCommand(0);
    ASSERT_TRUE(Settle());
    Canvas(0)->SetDisplayMode(0);
    const std::string made = Project("film.mrp");
    EXPECT_NE(made, before);

    int steps = 0;
    while (GCUndoList.IsUndoable() && steps < 30) {
        Key('Z', wxMOD_CONTROL);
        ASSERT_TRUE(Settle());
        ++steps;
    }
    EXPECT_LE(steps, 12) << "each gesture is one step";
    EXPECT_EQ(Project("film.mrp"), before) << "undone to the start";
    while (GCUndoList.IsRedoable() && steps-- > 0) {
        Key('Y', wxMOD_CONTROL);
        ASSERT_TRUE(Settle());
    }
    EXPECT_EQ(Project("film.mrp"), made) << "and done again";

    std::ofstream(mDir / "plain.mrp") << "TimeMaxFrame=19\n";
    ASSERT_TRUE(OpenProjectAndPaint(mDir / "plain.mrp"));
    EXPECT_EQ(Curve().GetKeyNumber(), 1) << "a project without the curve has the default";
    Curve().ExecCommandInitSet(77.0);
    ASSERT_TRUE(OpenProjectAndPaint(mDir / "film.mrp"));
    EXPECT_EQ(Curve().GetKeyNumber(), 3);
    EXPECT_EQ(Curve().Evaluate(8.0 / Clock()->GetMaxFrame(), 0.01), -4.0);
    EXPECT_EQ(Project("film.mrp"), made) << "byte for byte";
}

} // namespace
