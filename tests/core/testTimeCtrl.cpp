// The clock: which frame comes next, where the areas go, what a file may do to it.
#include "TIME/clsTimeCtrl.h"

#include <sstream>

#include <gtest/gtest.h>

#include "PARAM/clsParameters.h"
#include "TIME/TimeHost.h"

namespace {

class TimeCtrl : public ::testing::Test {
protected:
    void Read(const char* lines) {
        std::wistringstream stream{std::wstring(lines, lines + std::strlen(lines))};
        std::wstring line;
        while (std::getline(stream, line))
            mTime.ReadStrLine(stream, line);
    }
    /// Play to the end and note the frames that come.
    std::vector<int> Play(int dir, int atMost = 1000) {
        std::vector<int> frames;
        mTime.mFrameInterval = 0;
        mTime.StartPlay(dir);
        while (mTime.IsPlaying() && int(frames.size()) < atMost) {
            const int before = mTime.GetFrame();
            mTime.ProcPlaying();
            if (mTime.GetFrame() != before) frames.push_back(mTime.GetFrame());
        }
        return frames;
    }

    TimeCtrl_cls mTime{nullptr};
};

TEST_F(TimeCtrl, NextFrameStopsOrGoesRound) {
    EXPECT_EQ(mTime.CalcNextFrame(99, 1, true, true), 100);
    EXPECT_EQ(mTime.CalcNextFrame(100, 1, true, true), 100);
    EXPECT_EQ(mTime.CalcNextFrame(0, -1, true, true), 0);
    mTime.SetRepeatNative(1);
    EXPECT_EQ(mTime.CalcNextFrame(100, 1, true, true), 0);
    EXPECT_EQ(mTime.CalcNextFrame(0, -1, true, true), 100);
    EXPECT_EQ(mTime.CalcNextFrame(100, 1, true, false), 100);
}

TEST_F(TimeCtrl, SteppingRoundsDownAndSoStopsShortOfTheEnd) {
    mTime.SetAnimStepNative(3);
    EXPECT_EQ(mTime.CalcNextFrame(99, 1, false, false), 99);
    EXPECT_EQ(mTime.RoundFrame(50), 51);
    EXPECT_EQ(mTime.RoundFrame(100), 99);
    EXPECT_EQ(Play(1).back(), 99);
}

TEST_F(TimeCtrl, PlayingShowsEveryFrameOfTheWorkAreaOnce) {
    mTime.SetMaxFrameNative(9);
    mTime.SetWAMinCommand(2);
    mTime.SetWAMaxCommand(6);
    mTime.SetFrameNative(2, 0);
    EXPECT_EQ(Play(1), (std::vector<int>{3, 4, 5, 6}));
    EXPECT_EQ(Play(-1), (std::vector<int>{5, 4, 3, 2}));
    // From outside the area playing begins inside it.
    mTime.SetFrameNative(9, 0);
    Play(-1, 1);
    EXPECT_LE(mTime.GetFrame(), 6);
}

TEST_F(TimeCtrl, RepeatShowsTheLastFrameAndComesBack) {
    mTime.SetMaxFrameNative(3);
    mTime.SetRepeatNative(1);
    EXPECT_EQ(Play(1, 9), (std::vector<int>{1, 2, 3, 0, 1, 2, 3, 0, 1}));
    mTime.StartPlayCommand(1);
    EXPECT_FALSE(mTime.IsPlaying()) << "the user's second press stops, wherever the frame stands";
    mTime.SetWAMaxCommand(2);
    mTime.SetFrameNative(0, 0);
    EXPECT_EQ(Play(1, 5), (std::vector<int>{1, 2, 0, 1, 2}));
}

TEST_F(TimeCtrl, StepsCarryIntoFramesBothWays) {
    mTime.SetMaxFrameNative(2);
    mTime.SetAnimInterpNative(4);
    EXPECT_DOUBLE_EQ(Parameters_cls::msResolution, 1.0 / 8);
    mTime.SetInterpStepNative(3, 0);
    mTime.MoveInterpStepCommand(1);
    EXPECT_EQ(mTime.GetFrame(), 1);
    EXPECT_EQ(mTime.GetInterpStep(), 0);
    EXPECT_DOUBLE_EQ(Parameters_cls::msCurrentDoubleIndex, 0.5);
    mTime.MoveInterpStepCommand(-1);
    EXPECT_EQ(mTime.GetFrame(), 0);
    EXPECT_EQ(mTime.GetInterpStep(), 3);
    EXPECT_DOUBLE_EQ(mTime.GetRemappedIndexDouble(-1, -1), 0.75);
    EXPECT_DOUBLE_EQ(mTime.GetRemappedInterpStepDouble(-1, -1), 0.75);
    mTime.SetFrameNative(0, 0);
    mTime.SetInterpStepNative(0, 0);
    mTime.MoveInterpStepCommand(-1);
    EXPECT_EQ(mTime.GetFrame(), 0);
    EXPECT_EQ(mTime.GetInterpStep(), 0) << "nothing lies before the start";
}

TEST_F(TimeCtrl, AreasFollowTheLengthWhenTheyReachedToTheEnd) {
    mTime.SetWAMaxCommand(40);
    mTime.SetMaxFrameNative(250);
    EXPECT_EQ(mTime.GetAAMax(), 250);
    EXPECT_EQ(mTime.GetWAMax(), 40);
    mTime.SetFrameNative(200, 0);
    mTime.SetMaxFrameNative(30);
    EXPECT_EQ(mTime.GetWAMax(), 30);
    EXPECT_EQ(mTime.GetFrame(), 0) << "a frame beyond the end goes to the start";
    // Areas read from a file belong to the file's length.
    Read("TimeMaxFrame=19\nTimeWorkAreaMax=19\nTImeActiveAreaMax=19\n");
    mTime.SetMaxFrameNative(40);
    EXPECT_EQ(mTime.GetWAMax(), 40);
}

TEST_F(TimeCtrl, CrossedAreasAreExchangedAndTheFrameHeldInside) {
    mTime.SetFrameNative(80, 0);
    mTime.SetWAMinCommand(60);
    mTime.SetWAMaxCommand(20);
    mTime.CheckWorkingArea();
    EXPECT_EQ(mTime.GetWAMin(), 20);
    EXPECT_EQ(mTime.GetWAMax(), 60);
    EXPECT_EQ(mTime.GetFrame(), 60);
    mTime.SetFrameNative(30, 0);
    mTime.ExpandAACommand(true);
    EXPECT_EQ(mTime.GetAAMin(), 15);
    EXPECT_EQ(mTime.GetAAMax(), 65);
    mTime.ExpandAACommand(false);
    EXPECT_EQ(mTime.GetAAMin(), 0);
    EXPECT_EQ(mTime.GetAAMax(), 100);
}

TEST_F(TimeCtrl, NothingInAFileDividesByZeroOrOverflows) {
    Read("TimeMaxFrame=0\nTimeAnimStep=0\nTimeAnimInterp=-5\nTimeWorkAreaMax=4294967295\nTImeActiveAreaMax=-"
         "1\n");
    EXPECT_EQ(mTime.GetDoubleIndex(), 0.0);
    EXPECT_EQ(mTime.GetDoubleIndexWAMax(), 0.0);
    EXPECT_EQ(mTime.GetAnimStep(), 1);
    EXPECT_EQ(mTime.GetAnimInterp(), 1);
    mTime.CheckWorkingArea();
    EXPECT_EQ(mTime.GetWAMax(), 0);
    EXPECT_TRUE(Play(1).empty());
    Read("TimeMaxFrame=4294967295\nTimeAnimStep=2147483647\n");
    EXPECT_GE(mTime.CalcNextFrame(-1, 3, false, true), 0);
    EXPECT_GE(mTime.GetMaxFrame(), 0);
}

TEST_F(TimeCtrl, TextFormKeepsItsKeysAndTheirOrder) {
    EXPECT_EQ(mTime.Serialize(),
              "TimeMaxFrame=100\nTimeWorkAreaMin=0\nTimeWorkAreaMax=100\nTimeActiveAreaMin=0\n"
              "TImeActiveAreaMax=100\nTimeUseTimeRemap=0\nTimeUseMotionBlur=0\nTimeAnimStep=1\n"
              "TimeAnimInterp=1\nTimeRepeat=0\nTimeSceneLengthType=0\n");
}

TEST_F(TimeCtrl, MotionBlurStepsThroughOneFilmStep) {
    mTime.mbUseMotionBlur.mValue = true;
    mTime.SetMaxFrameNative(10);
    MotionBlurCtrl_cls& blur = mTime.mCMotionBlur;
    blur.mShutter = 0.0f;
    mTime.BeginMotionBlur();
    EXPECT_FALSE(blur.mbBlur) << "open for no time: the plain picture";
    blur.mShutter = 0.5f;
    mTime.BeginMotionBlur();
    EXPECT_FALSE(blur.Increment(1));
    EXPECT_TRUE(blur.IsInitBluring());
    EXPECT_FALSE(blur.IsOutputConditionOK());
    for (int k = 0; k < 3; ++k)
        EXPECT_FALSE(blur.Increment(1));
    EXPECT_TRUE(blur.IsOutputConditionOK());
    EXPECT_DOUBLE_EQ(blur.GetFactor(), 3 * 0.5 / 4);
    EXPECT_DOUBLE_EQ(mTime.GetDoubleIndex(), 3 * 0.5 / 4 / 10);
    EXPECT_DOUBLE_EQ(mTime.GetDoubleIndex(0, 0), 0.0) << "a frame asked by number has no blur in it";
    EXPECT_TRUE(blur.Increment(1));
}

} // namespace

TEST_F(TimeCtrl, AsksItsHostHowManySnapshotsFit) {
    EXPECT_EQ(mTime.GetExpectedPrefetchMax(), -1);

    struct Host : TimeHost_cls {
        int GetAverageMemoryMB() const override { return mAverage; }
        int GetMemoryLimitMB() const override { return 768; }
        int mAverage = -1;
    } host;
    TimeCtrl_cls time(&host);
    EXPECT_EQ(time.GetExpectedPrefetchMax(), -1) << "nothing is loaded";
    host.mAverage = 100;
    EXPECT_EQ(time.GetExpectedPrefetchMax(), 7);
    host.mAverage = 0;
    EXPECT_EQ(time.GetExpectedPrefetchMax(), 768);
}
