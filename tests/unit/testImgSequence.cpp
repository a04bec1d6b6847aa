// Names, numbers and settings of image sequences, and the run of the clock that writes one.
#include "IMAGE/clsImgSequence.h"

#include <deque>
#include <set>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "COMMON/MsgBox.h"
#include "IMAGE/clsImageIO.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class ImgSequence : public ::testing::Test {
protected:
    ~ImgSequence() override { SetMessageHandler({}); }
    void Answer(bool bYes) {
        SetMessageHandler([this, bYes](MessageKind kind, const wxString& text, const wxString& title) {
            EXPECT_EQ(int(kind), int(MessageKind::Question));
            mStrAsked = title + ": " + text;
            return bYes;
        });
    }
    void Film(int last, int step, int interval) {
        mTime.SetMaxFrameNative(last);
        mTime.SetWAMinNative(0);
        mTime.SetWAMaxNative(last);
        mTime.SetAAMinNative(0);
        mTime.SetAAMaxNative(last);
        mTime.SetAnimStepNative(step);
        mTime.SetAnimInterpNative(interval);
    }
    /// Offsets of the pictures of a run, in their order, a picture a line of the film.
    std::vector<int> Run() {
        std::vector<int> offsets;
        mTime.SetFrameNative(mTime.GetWAMin(), 0);
        mTime.SetInterpStepNative(0, 0);
        mTime.StartPlay(1);
        mTime.mbOutputRun = true;
        mTime.BeginMotionBlur();
        int paints = 0;
        do {
            if (mTime.mCMotionBlur.IsOutputConditionOK()) offsets.push_back(mTime.GetOffsetForImgSeq(-1, -1));
            ++paints;
        } while (mTime.ProcPlaying() && paints < 10000);
        mPaints = paints;
        return offsets;
    }
    static std::vector<int> UpTo(int last) {
        std::vector<int> numbers;
        for (int i = 0; i <= last; ++i)
            numbers.push_back(i);
        return numbers;
    }

    TimeCtrl_cls mTime{nullptr};
    ImgSequence_cls mSequence{&mTime};
    wxString mStrAsked;
    int mPaints = 0;
};

TEST_F(ImgSequence, ARunGivesEveryStepOnceWhateverRepeatSays) {
    for (const int repeat : {0, 1}) {
        mTime.SetRepeatNative(repeat);
        Film(9, 1, 1);
        EXPECT_EQ(Run(), UpTo(9));
        Film(9, 1, 4);
        EXPECT_EQ(Run(), UpTo(36));
        Film(9, 3, 1);
        EXPECT_EQ(Run(), UpTo(3));
        Film(0, 1, 1);
        EXPECT_EQ(Run(), UpTo(0));
        Film(9, 1, 1);
        mTime.SetWAMinNative(4);
        mTime.SetWAMaxNative(6);
        EXPECT_EQ(Run(), UpTo(2));
        EXPECT_FALSE(mTime.IsPlaying());
        EXPECT_FALSE(mTime.mbOutputRun); // the next start plays as the user plays
    }
}

TEST_F(ImgSequence, ARunCountsItsPicturesBeforehand) {
    const int films[][3] = {{9, 1, 1}, {9, 1, 4}, {9, 3, 1}, {9, 2, 5}, {0, 1, 3}};
    for (const auto& film : films) {
        Film(film[0], film[1], film[2]);
        mSequence.Begin(false);
        EXPECT_EQ(mSequence.GetProgress().GetTotal(), int(Run().size())) << film[0] << film[1] << film[2];
    }
    // A work area that begins between two frames of the stepping: its first picture's number comes again.
    Film(20, 3, 1);
    mTime.SetWAMinNative(4);
    mSequence.Begin(false);
    const std::vector<int> run = Run();
    EXPECT_EQ(mSequence.GetProgress().GetTotal(), int(std::set<int>(run.begin(), run.end()).size()));
}

TEST_F(ImgSequence, AMotionBlurIsWholeForTheLastFrameToo) {
    Film(4, 1, 1);
    mTime.mbUseMotionBlur.mValue = true;
    mTime.mCMotionBlur.mBlurSteps = 3;
    EXPECT_EQ(Run(), UpTo(4));
    EXPECT_EQ(mPaints, 1 + 5 * 3); // before the first step nothing counts yet
}

TEST_F(ImgSequence, NamesGetANumberOrTheUserDoesNotWantIt) {
    mSequence.mCFileSequence.Set("/films/run0012.png");
    ASSERT_TRUE(mSequence.NormalizeName(true));
    EXPECT_EQ(mSequence.mCFileSequence.mStrPath, "/films/run%04d.png");
    EXPECT_EQ(mSequence.mCFileSequence.GetModifiedStr(3, 0), "/films/run0003.png"); // numbers are ours alone
    EXPECT_EQ(mSequence.mCFileSequence.GetModifiedStr(3, 1), "/films/runL0003.png");

    Answer(false);
    mSequence.mCFileSequence.Set("/films/plain.png");
    EXPECT_FALSE(mSequence.NormalizeName(true));
    EXPECT_EQ(mStrAsked, "Sequence Format error: Not Sequence. Append 4-digit tag ?");
    Answer(true);
    EXPECT_TRUE(mSequence.NormalizeName(true));
    EXPECT_EQ(mSequence.mCFileSequence.mStrPath, "/films/plain%04d.png");
    mSequence.mCFileSequence.Set("/films/20240131");
    EXPECT_TRUE(mSequence.NormalizeName(true));
    EXPECT_EQ(mSequence.mCFileSequence.mStrPath, "/films/%04d.png") << "no tag is as wide";
    // A name without an ending gets the writer's.
    mSequence.mCFileSequence.Set("/films.d/run12");
    EXPECT_TRUE(mSequence.NormalizeName(true));
    EXPECT_EQ(mSequence.mCFileSequence.GetModifiedStr(3, 0), "/films.d/run03.png");
    mSequence.mCFileSequence.Set("/films/one");
    EXPECT_TRUE(mSequence.NormalizeName(false));
    EXPECT_EQ(mSequence.mCFileSequence.GetModifiedStr(3, 0), "/films/one.png");
    // A folder may bear signs of formats; doing it twice changes nothing.
    mSequence.mCFileSequence.Set("/a%%b/x0001.png");
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(mSequence.NormalizeName(true));
        EXPECT_EQ(mSequence.mCFileSequence.GetModifiedStr(1, 0), "/a%%b/x0001.png");
    }
    // One picture needs none, and a % of a folder is none.
    mStrAsked.clear();
    mSequence.mCFileSequence.Set("/100%/plain.png");
    EXPECT_TRUE(mSequence.NormalizeName(false));
    EXPECT_EQ(mSequence.mCFileSequence.GetModifiedStr(7, 0), "/100%/plain.png");
    EXPECT_EQ(mStrAsked, "");
}

TEST_F(ImgSequence, PathsOfSnapshotsBecomePreviews) {
    const wxString before = mSequence.mCFileSequence.mStrPath;
    EXPECT_TRUE(before.EndsWith("/Preview%04d.png"));
    mSequence.SetDefaultPath("");
    mSequence.SetDefaultPath("None");
    EXPECT_EQ(mSequence.mCFileSequence.mStrPath, before);
    mSequence.SetDefaultPath("/a/snapshot.png");
    EXPECT_EQ(mSequence.mCFileSequence.mStrPath, "/a/preview%04d.png");
    mSequence.SetDefaultPath("/a/film%03d.jpg");
    EXPECT_EQ(mSequence.mCFileSequence.mStrPath, "/a/film%03d.jpg");
}

TEST(ImageIO, NamesOfEyesEndInTheirLetter) {
    ImageIO_cls io;
    const auto name = [&io](const char* path, int eye) {
        io.SetPath(path);
        io.SetFilenameStereo(eye);
        return io.GetPath();
    };
    EXPECT_EQ(name("/a/view.png", 1), "/a/viewL.png");
    EXPECT_EQ(name("/a/viewL.png", 2), "/a/viewR.png");
    EXPECT_EQ(name("/a/viewR.png", 0), "/a/view.png");
    EXPECT_EQ(name("/a.b/view", 2), "/a.b/viewR");
}

TEST_F(ImgSequence, CalculatedNumbersAreThoseOfTheFrames) {
    Film(20, 1, 1);
    mTime.SetWAMinNative(5);
    mSequence.CalcInitNum();
    EXPECT_EQ(mSequence.mCInitNum.mValue, 5);
    EXPECT_EQ(mTime.GetOffsetForImgSeq(8, 0) + mSequence.mCInitNum.mValue, 8);
}

TEST_F(ImgSequence, SettingsComeBackFromTextAndBadOnesAreBounded) {
    mSequence.mCFileSequence.Set("/a b/f%05d.tif");
    mSequence.mOutW = 1920;
    mSequence.mOutH = 1080;
    mSequence.mCInitNum.mValue = -7;
    mTime.mCMotionBlur.mShutter = 0.25f;
    mTime.mCMotionBlur.mBlurSteps = 9;
    mSequence.mbVideo = true;
    mSequence.mVideoRate = 29.97f;
    const wxString text = mSequence.Serialize();
    TimeCtrl_cls time(nullptr);
    ImgSequence_cls other(&time);
    std::wistringstream stream(text.ToStdWstring());
    std::wstring line;
    while (std::getline(stream, line))
        other.ReadStrLine(line);
    EXPECT_EQ(other.Serialize(), text);
    EXPECT_EQ(other.mOutW, 1920);
    EXPECT_EQ(time.mCMotionBlur.mBlurSteps, 9);
    EXPECT_EQ(other.mCFileSequence.GetModifiedStr(1, 0), "/a b/f00001.tif");
    for (const wxString bad : {"ImgSequenceOutW=-5", "ImgSequenceOutH=99999999", "ImgSequenceBlurSteps=0",
                               "ImgSequenceBlurLength=nan", "ImgSequenceVideoRate=0"})
        other.ReadStrLine(bad);
    EXPECT_EQ(other.mOutW, 1);
    EXPECT_EQ(other.mOutH, ImgSequence_cls::kMaxSize);
    EXPECT_EQ(time.mCMotionBlur.mBlurSteps, 1);
    EXPECT_GE(time.mCMotionBlur.mShutter, 0.0f);
    EXPECT_GT(other.mVideoRate, 0.0f);
}

} // namespace
