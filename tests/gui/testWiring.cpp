// What is bound to what, one table a kind: blocks of a project, status fields, keys, rows of the loader's
// panel, and keys of curves to snapshots.
#include <wx/choice.h>

#include "APP/ProjectBlocks.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFollowRun.h"
#include "APP/clsShortcut.h"
#include "COMMON/Globals.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "ProjectTest.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {

class Wiring : public ProjectTest {
protected:
    void SetUp() override {
        ProjectTest::SetUp();
        Open(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp");
    }
    void TearDown() override {
        if (Data().mpCGUI) Data().mpCGUI->Hide();
        GDrawingPercentage.store(100);
        GDrawingStage.store(0);
        GThreadReaderPercentage.store(100);
        ProjectTest::TearDown();
    }
    static TimeCtrl_cls& Time() { return *Hub()->mpCTimeCtrl; }
    static DataLoader_cls& Data() { return *Hub()->mpCDataLoader; }
};

TEST_F(Wiring, EveryBlockOfAProjectStandsInItsPlace) {
    // How the block of a place begins; null where nothing is written yet.
    const char* const kBegins[] = {
        "DataLoadDataType=",     "DataExportDataType=", "LastOpenedFileMRP=", "PathPovRay=",
        "PreviewPanelType=",     "TimeMaxFrame=",       "DownSizing=",        "OverLayTimePos=",
        "ExposureLevel=",        "DataSequence0=0\n",   "PeriodicType=",      "---CameraPath\n",
        "---AnchorPath\n",       "---AllLightSource\n", "--StereoGram\n",     "PathPovRay=",
        "GUI_GYRATION=",         "FBOBufferSize=",      "ShadowQuality=",     "Panel0ShowMessage=",
        "---FilterCtrl0Begin\n", "ImgSequenceInitNum=", "PickedParticle=",    "FollowNewest=1"};
    Hub()->mpCParticles->ReadStrLine("PickedParticle=1 7 6 0"); // stands there only in use
    Hub()->mpCParticles->ReadStrLine("PickedMarks=0 0 1");
    Frame()->GetPCFileMenu()->GetFollow()->ReadStrLine("FollowNewest=1");
    const std::vector<ProjectBlock_st>& blocks = GetProjectBlocks();
    ASSERT_EQ(blocks.size(), std::size(kBegins));
    ASSERT_TRUE(Hub()->SaveProjectFile(mDir / "all.mrp", true));
    const std::string text = ReadAll(mDir / "all.mrp");
    size_t position = 0;
    for (size_t i = 0; i < blocks.size(); ++i) {
        SCOPED_TRACE(blocks[i].mHolds);
        EXPECT_EQ(blocks[i].mPlace, int(i) + 1);
        ASSERT_EQ(blocks[i].mpWrite != nullptr, kBegins[i] != nullptr);
        if (!kBegins[i]) continue;
        const std::string block = blocks[i].mpWrite(*Hub()).utf8_string();
        EXPECT_EQ(block.compare(0, std::string(kBegins[i]).size(), kBegins[i]), 0) << block.substr(0, 60);
        const size_t found = text.find(std::string("\n") + kBegins[i], position);
        if (i == 0) continue; // at the very beginning
        ASSERT_NE(found, std::string::npos);
        position = found + 1;
    }
}

TEST_F(Wiring, EveryStatusFieldHoldsItsOwn) {
    GDrawingStage.store(1);
    GDrawingPercentage.store(37);
    GThreadReaderIndex.store(5);
    GThreadReaderPercentage.store(42);
    Frame()->UpdateStatusText();
    const char* const kWords[] = {"melt%04d.bin", "particles, ", "Shadow 37%", "index:5- Loading42%"};
    for (int field = 0; field < 4; ++field)
        EXPECT_TRUE(Frame()->GetStatusBar()->GetStatusText(field).Contains(kWords[field]))
            << field << ": " << Frame()->GetStatusBar()->GetStatusText(field);
}

TEST_F(Wiring, EveryKeyOfTimeDoesItsOwn) {
    const auto reset = [] {
        Time().SetMaxFrameNative(19);
        Time().SetWAMinNative(0);
        Time().SetWAMaxNative(19);
        Time().SetAAMinNative(4);
        Time().SetAAMaxNative(14);
        Time().SetFrameNative(9, 0);
    };
    const auto shown = [] { return Time().GetAAMax() - Time().GetAAMin(); };
    const struct {
        int mKey;
        std::function<bool()> mDone;
    } kKeys[] = {{'\'', [shown] { return shown() < 10; }},
                 {'-', [shown] { return shown() > 10; }},
                 {'B', [] { return Time().GetWAMin() == 9 && Time().GetWAMax() == 19; }},
                 {'N', [] { return Time().GetWAMin() == 0 && Time().GetWAMax() == 9; }},
                 {'J', [] { return Time().GetFrame() == 0; }},
                 {'K', [] { return Time().GetFrame() == 19; }},
                 {WXK_LEFT, [] { return Time().GetFrame() == 8; }},
                 {WXK_RIGHT, [] { return Time().GetFrame() == 10; }}};
    Shortcut_cls shortcut(Frame());
    for (const auto& key : kKeys) {
        reset();
        EXPECT_TRUE(shortcut.ProcShortcutKey(0, key.mKey));
        Time().EndGesture();
        EXPECT_TRUE(key.mDone()) << char(key.mKey);
    }
    GCUndoList.Clear();
}

TEST_F(Wiring, KeysMarkTheSnapshotThatTheRemappedTimeShows) {
    Parameters_cls& remap = Time().mpCTimeRemapGroup->mVParams[0];
    // Frame 6 of 19 shows snapshot 11.
    remap.mbTimeDepend.mValue = true;
    remap.InsertKey(0.0, 11.0, 0.0, 0.0);
    remap.InsertKey(6.0 / 19, 11.0, 0.0, 0.0);
    remap.InsertKey(1.0, 11.0, 0.0, 0.0);
    Time().mbUseTimeRemap.mValue = true;
    Menu(ID_REFRESH_TL);
    Time().UpdateSnippingTag();
    const PDataSequence_cls* sequence = Store()->GetPCActiveFileSequence();
    EXPECT_TRUE(sequence->mpCSnap[11]->mbSnipping);
    EXPECT_FALSE(sequence->mpCSnap[6]->mbSnipping);
    Time().mbUseTimeRemap.mValue = false;
    remap.ExecCommandSetKeys({});
    remap.mbTimeDepend.mValue = false;
    GCUndoList.Clear();
}

TEST_F(Wiring, EveryRowOfTheLoaderEditsItsOwn) {
    Menu(ID_LOAD_DATA);
    auto* dialog = dynamic_cast<DataLoaderGUI_cls*>(WaitForWindow("Data Loader"));
    ASSERT_TRUE(dialog);
    Data().SetToDefault();
    Data().mCItemInterpolateType.mValue = Data().mCItemVariableNumber.mValue = 0;
    dialog->UpdateValues();
    const auto choose = [dialog](const char* tip, int line) {
        auto* choice = dynamic_cast<wxChoice*>(FindByTip(dialog, tip));
        ASSERT_TRUE(choice) << tip;
        choice->SetSelection(line);
        wxCommandEvent event(wxEVT_CHOICE, choice->GetId());
        event.SetEventObject(choice);
        event.SetInt(line);
        choice->ProcessWindowEvent(event);
    };
    const auto type = [dialog](const char* tip, const char* text) {
        NumField_cls* field = FindField(dialog, tip);
        ASSERT_TRUE(field) << tip;
        TypeInto(field, text);
    };
    const struct {
        const char* mpLabel;
        const char* mpTip;
        const char* mpValue; ///< null: the second line of a choice
        const char* mpLine;  ///< of the project
    } kRows[] = {{"Interpolation", "How particles move", nullptr, "InterpolateType=1"},
                 {"Particle Number", "Whether a particle keeps", nullptr, "VariableNumber=1"},
                 {"Translate", "Added to x, y and z", "3", "LoaderTranslate=3.000000 0.000000 0.000000"},
                 {"Scaling", "Multiplies positions", "5", "LoaderScale=5.000000"},
                 {"Modify Value1", "Multiplies Value1", "7", "LoaderScaleValue1=7.000000"},
                 {"", "What becomes of Value1", nullptr, "LoaderLogarithm=1"}};
    int y = -1;
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.mpTip);
        const std::vector<std::string> before = Lines(Data().Serialize().utf8_string());
        if (row.mpValue)
            type(row.mpTip, row.mpValue);
        else
            choose(row.mpTip, 1);
        const std::vector<std::string> after = Lines(Data().Serialize().utf8_string());
        std::string changed;
        for (size_t i = 0; i < after.size(); ++i)
            if (after[i] != before[i]) changed += after[i];
        EXPECT_EQ(changed, row.mpLine);
        const wxWindow* field = row.mpValue ? FindField(dialog, row.mpTip) : FindByTip(dialog, row.mpTip);
        EXPECT_GT(field->GetRect().y, y) << "from above";
        y = field->GetRect().y;
        if (*row.mpLabel == 0) continue;
        const wxRect label = FindByLabel(dialog, row.mpLabel)->GetRect();
        EXPECT_TRUE(label.y < field->GetRect().GetBottom() && field->GetRect().y < label.GetBottom());
    }
    // "Default" takes all but the first two back.
    Data().SetToDefault();
    EXPECT_TRUE(
        Data().Serialize().EndsWith("LoaderTranslate=0.000000 0.000000 0.000000\nLoaderScale=1.000000\n"
                                    "LoaderScaleValue1=1.000000\nLoaderLogarithm=0\n"))
        << Data().Serialize();
}

TEST_F(Wiring, TheStatusBarSaysWhyNothingMoves) {
    const auto status = [] {
        Menu(ID_REFRESH_TL);
        return Frame()->GetStatusBar()->GetStatusText(0);
    };
    const auto play = [](int direction) {
        Time().StartPlayCommand(direction);
        PumpUntil([] { return !Time().IsPlaying(); });
        Settle();
    };
    Time().SetRepeatNative(0);
    Time().SetFrameNative(Time().GetMaxFrame(), 0);
    play(1);
    EXPECT_TRUE(status().StartsWith("At the end: ")) << status();
    Time().SetFrameNative(0, 0);
    Settle();
    EXPECT_TRUE(status().Contains("melt%04d.bin")) << status();
    play(-1);
    EXPECT_TRUE(status().StartsWith("At the start: ")) << status();
    Time().SetFrameNative(Time().GetMaxFrame() - 1, 0);
    play(1);
    EXPECT_TRUE(status().Contains("melt%04d.bin")) << "it played: " << status();
    Menu(ID_TIME_REMAP, true);
    EXPECT_TRUE(status().StartsWith("The picture stands still: Time Remap")) << status();
    Menu(ID_TIME_REMAP, false);
    EXPECT_TRUE(status().Contains("melt%04d.bin")) << status();
}

TEST_F(Wiring, TheStatusBarSaysWhenTheDataRepeat) {
    const auto status = [] {
        Frame()->UpdateStatusText();
        return Frame()->GetStatusBar()->GetStatusText(1);
    };
    Time().SetMaxFrameNative(25);
    Time().SetWAMaxNative(25);
    Time().SetFrameNative(19, 0);
    EXPECT_FALSE(status().Contains("past the data")) << status();
    Time().SetFrameNative(20, 0);
    EXPECT_TRUE(status().EndsWith(", past the data: the last snapshot again")) << status();
}

TEST_F(Wiring, ClosingNothingLeavesNoStep) {
    Menu(ID_CLOSE_DATA);
    EXPECT_TRUE(GCUndoList.IsUndoable());
    GCUndoList.Clear();
    Menu(ID_CLOSE_DATA);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

} // namespace
