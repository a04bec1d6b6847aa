// Which frames make a film, and that parts of it make up the whole.
#include "APP/FilmFrames.h"

#include <array>
#include <sstream>

#include <gtest/gtest.h>

#include "APP/FilmProgress.h"
#include "APP/FilmTargets.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class FilmFrames : public ::testing::Test {
protected:
    void Set(int length, int from, int to, int stepping, int interval) {
        std::wostringstream lines;
        lines << "TimeMaxFrame=" << length << "\nTimeWorkAreaMin=" << from << "\nTimeWorkAreaMax=" << to
              << "\nTimeAnimStep=" << stepping << "\nTimeAnimInterp=" << interval << "\n";
        std::wistringstream stream{lines.str()};
        std::wstring line;
        while (std::getline(stream, line))
            mTime.ReadStrLine(stream, line);
    }
    /// What an image sequence writes: the clock plays, and a file is named after the position.
    std::vector<FilmFrame_st> Play(int atMost = 5000) {
        std::vector<FilmFrame_st> film;
        mTime.mFrameInterval = 0;
        mTime.SetFrameNative(mTime.GetWAMin(), 0);
        mTime.SetInterpStepNative(0, 0);
        mTime.StartPlay(1);
        mTime.mbOutputRun = true;
        do {
            const int frame = mTime.GetFrame();
            const int step = mTime.GetInterpStep();
            film.push_back({frame, step, mTime.GetOffsetForImgSeq(frame, step) + mTime.GetWAMin()});
            mTime.ProcPlaying();
        } while (mTime.IsPlaying() && int(film.size()) < atMost);
        return film;
    }
    std::vector<FilmFrame_st> Whole() {
        mError.clear();
        return ListFilm(mTime, &mError);
    }
    std::vector<FilmFrame_st> Part(int first, int last, int step = 0) {
        mError.clear();
        return ListFilmPart(mTime, first, last, step, &mError);
    }

    TimeCtrl_cls mTime{nullptr};
    wxString mError;
};

TEST_F(FilmFrames, AreThoseThatAnImageSequenceVisits) {
    const int settings[][5] = {{10, 0, 10, 1, 1}, {10, 0, 10, 1, 4}, {10, 2, 7, 1, 3}, {11, 0, 11, 3, 1},
                               {12, 3, 9, 3, 2},  {0, 0, 0, 1, 1},   {0, 0, 0, 1, 5},  {10, 4, 4, 1, 2}};
    for (const auto& s : settings) {
        Set(s[0], s[1], s[2], s[3], s[4]);
        EXPECT_EQ(Whole(), Play()) << s[0] << " " << s[1] << " " << s[2] << " " << s[3] << " " << s[4];
    }
}

TEST_F(FilmFrames, EndsWherePlayingWouldGoRound) {
    Set(11, 0, 10, 3, 2); // the work area ends between two frames of the stepping
    const std::vector<FilmFrame_st> film = Whole();
    ASSERT_EQ(film.size(), 8u);
    EXPECT_EQ(film.back(), (FilmFrame_st{9, 1, 7}));
}

TEST_F(FilmFrames, AStartOffTheSteppingIsToldWithTheRemedy) {
    const auto tell = [this](int* pBegin) { return GetEarlyEnd(mTime, Whole(), pBegin); };
    int begin = -1;
    Set(20, 1, 20, 3, 2);
    EXPECT_EQ(Whole().size(), 1u);
    EXPECT_TRUE(tell(&begin).Contains("Let it begin at frame 3."));
    EXPECT_EQ(begin, 3);
    Set(20, begin, 20, 3, 2);
    EXPECT_GT(Whole().size(), 10u) << "and it helps";
    EXPECT_EQ(tell(nullptr), "");
    for (const auto& [from, stepping, interval] : {std::array<int, 3>{1, 3, 1}, {0, 3, 2}, {5, 1, 4}}) {
        Set(20, from, 20, stepping, interval);
        EXPECT_EQ(tell(nullptr), "") << from << " " << stepping << " " << interval;
    }
}

TEST(FilmName, NumbersBelowZeroSort) {
    const FileSequence_cls four("out/f%04d.png");
    EXPECT_EQ(GetFilmName(four, 12), "out/f0012.png");
    EXPECT_EQ(GetFilmName(four, -1), "out/f-9999.png");
    EXPECT_EQ(GetFilmName(four, -9999), "out/f-0001.png");
    EXPECT_EQ(GetFilmName(FileSequence_cls("50%%/f%02d.png"), -3), "50%/f-97.png");
}

TEST_F(FilmFrames, PartsMakeUpTheWhole) {
    const int settings[][5] = {
        {10, 0, 10, 1, 1}, {10, 0, 10, 1, 4}, {20, 3, 17, 1, 2}, {20, 3, 17, 3, 2}, {20, 5, 19, 3, 2}};
    for (const auto& s : settings) {
        Set(s[0], s[1], s[2], s[3], s[4]);
        for (int cut = s[1]; cut < s[2]; ++cut) {
            std::vector<FilmFrame_st> both = Part(s[1], cut);
            const std::vector<FilmFrame_st> rest = Part(cut + 1, s[2]);
            both.insert(both.end(), rest.begin(), rest.end());
            EXPECT_EQ(both, Whole()) << "cut at " << cut << " of " << s[0] << " " << s[3];
        }
    }
}

TEST_F(FilmFrames, PartsMayReachBeyondTheWorkArea) {
    Set(10, 4, 6, 1, 2);
    const std::vector<FilmFrame_st> film = Part(3, 7);
    const std::vector<FilmFrame_st> expected = {{3, 0, 2}, {3, 1, 3}, {4, 0, 4},  {4, 1, 5}, {5, 0, 6},
                                                {5, 1, 7}, {6, 0, 8}, {7, 0, 10}, {7, 1, 11}};
    EXPECT_EQ(film, expected);
    EXPECT_EQ(Part(10, 99), (std::vector<FilmFrame_st>{{10, 0, 16}})) << "the film ends there";
    Set(10, 0, 10, 1, 1);
    EXPECT_EQ(Part(1, 9, 4), (std::vector<FilmFrame_st>{{1, 0, 1}, {5, 0, 5}, {9, 0, 9}}));
}

TEST_F(FilmFrames, RefusesWhatIsNoPartOfTheFilm) {
    Set(10, 0, 10, 3, 1);
    EXPECT_TRUE(Part(11, 20).empty());
    EXPECT_TRUE(mError.Contains("10"));
    EXPECT_TRUE(Part(0, 10, 2).empty());
    EXPECT_TRUE(mError.Contains("3"));
    EXPECT_TRUE(Part(4, 5).empty());
    EXPECT_FALSE(mError.empty()) << "no frame of the stepping lies there";
    EXPECT_EQ(Part(0, 10, 6), (std::vector<FilmFrame_st>{{0, 0, 0}, {6, 0, 2}}))
        << "numbers of the whole film";
}

TEST_F(FilmFrames, MoreThanCanBeListedAreRefused) {
    Set(4, 0, 4, 1, 9999999);
    EXPECT_TRUE(Whole().empty());
    EXPECT_TRUE(mError.Contains("10000000 pictures")) << mError;
    EXPECT_TRUE(Part(1, 2).empty()) << "numbers go on from part to part";
    EXPECT_FALSE(mError.empty());
    EXPECT_TRUE(Part(0, 4, 1).empty());
    EXPECT_FALSE(mError.empty());
    Set(1, 0, 1, 1, 9999999);
    EXPECT_EQ(Whole().size(), 10000000u);
    EXPECT_EQ(mError, "");
}

TEST(FrameList, NamesRunsOfFramesAndWhereTheyBegin) {
    EXPECT_EQ(ListFrames({3}), "frame 3");
    EXPECT_EQ(ListFrames({3, 5, 6, 8, 9, 10}), "frames 3, 5, 6, 8 to 10");
    EXPECT_EQ(ListFrames({3, 4, 5, 6}, {{3, 2}}), "frames 3 (from step 2), 4 to 6");
    EXPECT_EQ(ListFrames({3, 4, 5}, {{4, 1}}), "frames 3, 4 (from step 1), 5");
}

TEST(FilmProgress, TellsRateAndTimeLeft) {
    EXPECT_EQ(FilmProgress_cls::MakeLine(0, 300, 0, 0.0), "Frame 0 of 300");
    EXPECT_EQ(FilmProgress_cls::MakeLine(12, 300, 12, 6.0), "Frame 12 of 300, 2.0 frames/s, 2:24 left");
    EXPECT_EQ(FilmProgress_cls::MakeLine(2, 3000, 2, 10.0), "Frame 2 of 3000, 5.0 s a frame, 4:09:50 left");
    EXPECT_EQ(FilmProgress_cls::MakeLine(300, 300, 300, 30.0), "Frame 300 of 300, 10.0 frames/s");
    EXPECT_EQ(FilmProgress_cls::MakeLine(100, 200, 0, 5.0), "Frame 100 of 200") << "those were there";
    EXPECT_EQ(FilmProgress_cls::MakeLine(101, 201, 1, 1.0), "Frame 101 of 201, 1.0 frames/s, 1:40 left");
    EXPECT_EQ(FilmProgress_cls::MakeBar(0, 10, 4), "[----]");
    EXPECT_EQ(FilmProgress_cls::MakeBar(5, 10, 4), "[##--]");
    EXPECT_EQ(FilmProgress_cls::MakeBar(0, 0, 4), "[----]");
    EXPECT_EQ(FilmProgress_cls::MakeBar(10, 10, 4), "[####]");
}

} // namespace
