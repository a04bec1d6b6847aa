// The clock through the undo list, its remapping, and the table of what comes next.
#include <sstream>

#include <gtest/gtest.h>

#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class TimeCommands : public ::testing::Test {
protected:
    void SetUp() override { GCUndoList.Clear(); }
    void TearDown() override { GCUndoList.Clear(); }

    /// Do it; one step must have come, undo must give back all, redo all again.
    void ThereAndBack(const char* name, const std::function<void()>& act) {
        const TimeState_st before = mTime.GetState();
        const wxString textBefore = mTime.Serialize();
        act();
        const TimeState_st after = mTime.GetState();
        EXPECT_FALSE(after == before) << name;
        for (int round = 0; round < 2; ++round) {
            GCUndoList.UndoCurrent();
            EXPECT_EQ(mTime.GetState().mValue, before.mValue) << name;
            EXPECT_EQ(mTime.Serialize(), textBefore) << name;
            EXPECT_FALSE(GCUndoList.IsUndoable()) << name << " left more than one step";
            GCUndoList.ExecCurrent();
            EXPECT_EQ(mTime.GetState().mValue, after.mValue) << name;
        }
        GCUndoList.Clear();
    }
    void Remap(std::vector<std::pair<double, double>> keys) {
        Parameters_cls& curve = mTime.mpCTimeRemapGroup->mVParams[0];
        mTime.mbUseTimeRemap.mValue = true;
        curve.mbTimeDepend.mValue = keys.size() > 1;
        std::vector<KeyFrame_cls> linear(keys.size());
        for (size_t i = 0; i < keys.size(); ++i)
            linear[i].Set(keys[i].first, INTERP_LINEAR, keys[i].second, 0, 0, false);
        curve.ExecCommandSetKeys(linear);
    }

    TimeCtrl_cls mTime{nullptr};
};

TEST_F(TimeCommands, EveryValueGoesThereAndBackInOneStep) {
    mTime.SetAnimInterpNative(5);
    mTime.SetFrameNative(50, 0);
    mTime.SetInterpStepNative(3, 0);
    mTime.SetWAMaxNative(40);
    ThereAndBack("frame", [this] { mTime.SetFrameCommand(20); });
    ThereAndBack("step", [this] { mTime.SetInterpStepCommand(1); });
    ThereAndBack("work area min", [this] { mTime.SetWAMinCommand(10); });
    ThereAndBack("work area max", [this] { mTime.SetWAMaxCommand(90); });
    ThereAndBack("active area min", [this] { mTime.SetAAMinCommand(10); });
    ThereAndBack("active area max", [this] { mTime.SetAAMaxCommand(90); });
    ThereAndBack("repeat", [this] { mTime.SetRepeatCommand(1); });
    ThereAndBack("stepping", [this] { mTime.SetAnimStepCommand(7); });
    ThereAndBack("interval, which cuts the step", [this] { mTime.SetAnimInterpCommand(2); });
    ThereAndBack("prefetch", [this] { mTime.SetPrefetchCommand(9); });
    ThereAndBack("length, which cuts areas and frame", [this] { mTime.SetMaxFrameCommand(30); });
    // The work area ends where the shorter film does, which undo must not take for the film's end.
    ThereAndBack("length down to the work area", [this] { mTime.SetMaxFrameCommand(40); });
    ThereAndBack("longer", [this] { mTime.SetMaxFrameCommand(300); });
    ThereAndBack("a step forward", [this] { mTime.MoveInterpStepCommand(1); });
    ThereAndBack("to the end", [this] { mTime.MoveFrameCommandLarge(1); });
    ThereAndBack("zoom", [this] { mTime.ExpandAACommand(true); });
    mTime.SetFrameNative(90, 0);
    mTime.SetWAMaxNative(43);
    mTime.SetAAMaxNative(80);
    ThereAndBack("in here, crossing the bounds", [this] { mTime.SetWAInHere(); });
    EXPECT_EQ(mTime.GetWAMin(), 43);
    EXPECT_EQ(mTime.GetWAMax(), 90);
}

TEST_F(TimeCommands, WhatChangesNothingLeavesNoStepAndForgetsNoRedo) {
    mTime.SetFrameCommand(5);
    GCUndoList.UndoCurrent();
    mTime.SetFrameCommand(0);
    mTime.MoveFrameCommandLarge(-1);
    mTime.MoveFrameCommand(-1);
    mTime.MoveInterpStepCommand(-1);
    mTime.SetAnimStepCommand(1);
    mTime.SetAnimInterpCommand(1);
    mTime.SetMaxFrameCommand(100);
    mTime.BeginGesture();
    mTime.EndGesture();
    mTime.EndGesture();
    EXPECT_FALSE(GCUndoList.IsUndoable());
    EXPECT_TRUE(GCUndoList.IsRedoable());
}

TEST_F(TimeCommands, AGestureIsOneStepFromItsFirstValueToItsLast) {
    ThereAndBack("dragging", [this] {
        mTime.BeginGesture();
        for (int frame = 1; frame < 30; ++frame) {
            mTime.SetFrameCommand(frame);
            EXPECT_EQ(mTime.GetFrame(), frame) << "the clock moves at once";
        }
        mTime.SetWAMaxCommand(60);
        EXPECT_FALSE(GCUndoList.IsUndoable());
        mTime.EndGesture();
    });
    mTime.SetFrameNative(3, 0);
    mTime.BeginGesture();
    mTime.SetFrameCommand(8);
    mTime.SetFrameCommand(3);
    mTime.EndGesture();
    EXPECT_FALSE(GCUndoList.IsUndoable()) << "there and back is nothing";
}

TEST_F(TimeCommands, AnOldValueGivenIsWhatUndoBrings) {
    mTime.SetFrameNative(40, 0);
    mTime.SetFrameCommand(60, 10);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mTime.GetFrame(), 10);
}

TEST_F(TimeCommands, UndoingAStartStopsAndGoesBackToWhereItBegan) {
    mTime.mFrameInterval = 0;
    mTime.SetAnimInterpNative(2);
    mTime.SetFrameNative(10, 0);
    mTime.SetInterpStepNative(1, 0);
    mTime.StartPlayCommand(1);
    for (int k = 0; k < 5; ++k)
        mTime.ProcPlaying();
    EXPECT_EQ(mTime.GetFrame(), 13);
    GCUndoList.UndoCurrent();
    EXPECT_FALSE(mTime.IsPlaying());
    EXPECT_EQ(mTime.GetFrame(), 10);
    EXPECT_EQ(mTime.GetInterpStep(), 1);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    GCUndoList.ExecCurrent();
    EXPECT_TRUE(mTime.IsPlaying());
    mTime.StartPlayCommand(1);
    EXPECT_FALSE(mTime.IsPlaying()) << "the second press stops and is no step";
    EXPECT_EQ(GCUndoList.IsRedoable(), false);
    // Outside the work area starting moves the frame as well, still in one step.
    mTime.SetWAMaxNative(5);
    GCUndoList.Clear();
    mTime.SetFrameNative(50, 0);
    mTime.StartPlayCommand(-1);
    EXPECT_EQ(mTime.GetFrame(), 5);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mTime.GetFrame(), 50);
    EXPECT_FALSE(mTime.IsPlaying());
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

struct Next_st {
    const char* mName;
    int mLength, mStepping, mInterp, mLow, mHigh;
    bool mbRepeat;
    int mFrame, mStep, mDir;   // from here
    int mToFrame;              // the next frame
    int mStepFrame, mStepStep; // the next step
};

TEST_F(TimeCommands, WhatComesNext) {
    const Next_st kTable[] = {
        {"inside", 100, 1, 1, 0, 100, false, 7, 0, 1, 8, 8, 0},
        {"inside, back", 100, 1, 1, 0, 100, false, 7, 0, -1, 6, 6, 0},
        {"at the end", 100, 1, 1, 0, 100, false, 100, 0, 1, 100, 100, 0},
        {"at the end, repeating", 100, 1, 1, 0, 100, true, 100, 0, 1, 0, 0, 0},
        {"at the start, repeating, back", 100, 1, 1, 0, 100, true, 0, 0, -1, 100, 100, 0},
        {"at the start, back", 100, 1, 1, 0, 100, false, 0, 0, -1, 0, 0, 0},
        {"stepping 3 from 99", 100, 3, 1, 0, 100, false, 99, 0, 1, 99, 99, 0},
        {"stepping 3", 100, 3, 1, 0, 100, false, 6, 0, 1, 9, 9, 0},
        {"a step inside a frame", 100, 1, 4, 0, 100, false, 6, 1, 1, 7, 6, 2},
        {"a step into the next frame", 100, 1, 4, 0, 100, false, 6, 3, 1, 7, 7, 0},
        {"a step into the frame before", 100, 5, 4, 0, 100, false, 10, 0, -1, 5, 5, 3},
        {"at the area's end", 100, 1, 4, 10, 20, false, 20, 0, 1, 20, 20, 0},
        {"before the area", 100, 1, 4, 10, 20, false, 3, 1, 1, 10, 10, 0},
        {"behind the area", 100, 1, 1, 10, 20, false, 60, 0, -1, 20, 20, 0},
        {"a film of one frame", 0, 1, 1, 0, 0, true, 0, 0, 1, 0, 0, 0},
    };
    for (const Next_st& row : kTable) {
        mTime.SetMaxFrameNative(row.mLength);
        mTime.SetAnimStepNative(row.mStepping);
        mTime.SetAnimInterpNative(row.mInterp);
        mTime.SetRepeatNative(row.mbRepeat);
        // Once as the work area, once as the range that stands in for it.
        for (const bool bCustom : {false, true}) {
            mTime.mbCustomRange = bCustom;
            mTime.mRangeMin = row.mLow;
            mTime.mRangeMax = row.mHigh;
            mTime.SetWAMinNative(bCustom ? 0 : row.mLow);
            mTime.SetWAMaxNative(bCustom ? 1 : row.mHigh);
            EXPECT_EQ(mTime.CalcNextFrame(row.mFrame, row.mDir, true, true), row.mToFrame) << row.mName;
            int frame = row.mFrame;
            int step = row.mStep + row.mDir;
            mTime.CalcNextFrameFromStep(&frame, &step, true, true);
            EXPECT_EQ(frame, row.mStepFrame) << row.mName;
            EXPECT_EQ(step, row.mStepStep) << row.mName;
        }
    }
}

TEST_F(TimeCommands, MotionBlurPlaysItsStepsBeforeTheFilmMovesOn) {
    mTime.mFrameInterval = 0;
    mTime.mbUseMotionBlur.mValue = true;
    mTime.SetMaxFrameNative(10);
    mTime.StartPlay(1);
    mTime.BeginMotionBlur();
    std::vector<std::pair<int, int>> seen;
    for (int k = 0; k < 6; ++k) {
        mTime.ProcPlaying();
        seen.emplace_back(mTime.GetFrame(), mTime.mCMotionBlur.mBlurStep);
    }
    EXPECT_EQ(seen, (std::vector<std::pair<int, int>>{{0, 0}, {0, 1}, {0, 2}, {0, 3}, {1, 0}, {1, 1}}));
    EXPECT_DOUBLE_EQ(Parameters_cls::msCurrentDoubleIndex, (1 + 0.5 / 4) / 10);
    EXPECT_DOUBLE_EQ(mTime.GetRemappedInterpStepDouble(-1, -1), 0.5 / 4);
    mTime.ProcStopPlaying();
}

TEST_F(TimeCommands, TheRemapCurveGivesSnapshotNumbers) {
    mTime.SetAnimInterpNative(2);
    Remap({{0.0, 20.0}, {1.0, 70.0}});
    mTime.SetFrameNative(50, 0);
    mTime.SetInterpStepNative(1, 0);
    EXPECT_EQ(mTime.GetRemappedIndex(0), 20);
    EXPECT_EQ(mTime.GetRemappedIndex(50), 45);
    EXPECT_EQ(mTime.GetRemappedIndex(-1), 45) << "45.25, cut";
    EXPECT_DOUBLE_EQ(mTime.GetRemappedIndexDouble(-1, -1), 45.25);
    EXPECT_DOUBLE_EQ(mTime.GetRemappedIndexDouble(10, 0), 25.0);
    EXPECT_DOUBLE_EQ(mTime.GetRemappedInterpStepDouble(-1, 0), 0.0);
    EXPECT_DOUBLE_EQ(mTime.GetRemappedInterpStepDouble(-1, 1), 0.25);
    // A rounding below a whole number is the whole number.
    Remap({{0.0, 7.999995}});
    EXPECT_EQ(mTime.GetRemappedIndexDouble(3, 0), 8.0);
    EXPECT_EQ(mTime.GetRemappedIndex(3), 8);
    Remap({{0.0, 7.99998}});
    EXPECT_EQ(mTime.GetRemappedIndexDouble(3, 0), 7.99998);
    EXPECT_EQ(mTime.GetRemappedIndex(3), 7);
    Remap({{0.0, -5.0}});
    EXPECT_EQ(mTime.GetRemappedIndexDouble(3, 0), 0.0);
    EXPECT_EQ(mTime.GetRemappedIndex(3), 0);
    mTime.SetMaxFrameNative(0);
    EXPECT_EQ(mTime.GetRemappedIndexDouble(-1, -1), 0.0);
    mTime.SetUseTimeRemapCommand(false);
    EXPECT_FALSE(mTime.mbUseTimeRemap.mValue);
    GCUndoList.UndoCurrent();
    EXPECT_TRUE(mTime.mbUseTimeRemap.mValue) << "switching is a step";
}

TEST_F(TimeCommands, TheRemapCurveIsInTheTextWhileItIsUsed) {
    Remap({{0.0, 3.0}, {0.5, 9.0}});
    const wxString text = mTime.Serialize();
    EXPECT_TRUE(text.Contains("TimeSceneLengthType=0\n---TimeRemap\n-ParamGroup=Time Remap\n"));
    TimeCtrl_cls other(nullptr);
    std::wistringstream stream((text + "NextLine=1\n").ToStdWstring());
    std::wstring line;
    std::wstring last;
    while (std::getline(stream, line)) {
        other.ReadStrLine(stream, line);
        last = line;
    }
    EXPECT_EQ(other.Serialize(), text);
    EXPECT_EQ(last, L"NextLine=1") << "no line of others is eaten";
    mTime.mbUseTimeRemap.mValue = false;
    EXPECT_FALSE(mTime.Serialize().Contains("---TimeRemap"));
    // A mark without a curve gives back what it looked at.
    std::wistringstream bare(L"TimeRepeat=1\n");
    other.ReadStrLine(bare, "---TimeRemap");
    ASSERT_TRUE(std::getline(bare, line));
    EXPECT_EQ(line, L"TimeRepeat=1");
}

TEST_F(TimeCommands, SnippingTagsLeadFromKeyToKey) {
    Remap({{0.1, 0.0}, {0.5, 10.0}, {0.9, 20.0}});
    mTime.mCollectTags = [this](std::vector<bool>* pTags) {
        mTime.mpCTimeRemapGroup->mVParams[0].CheckSnippingTag(pTags);
    };
    std::vector<int> frames;
    for (const int dir : {1, 1, 1, 1, -1, -1, -1, -1}) {
        mTime.MoveFrameCommandSnip(dir);
        frames.push_back(mTime.GetFrame());
    }
    EXPECT_EQ(frames, (std::vector<int>{10, 50, 90, 100, 90, 50, 10, 0}));
    EXPECT_EQ(std::count(mTime.GetSnippingTags().begin(), mTime.GetSnippingTags().end(), true), 3);
}

} // namespace
