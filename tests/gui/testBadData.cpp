// Input that is missing, broken or too much: the program tells it once, with the file's name, and goes on.
#include <sys/stat.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>

#include "APP/clsDropTarget.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GuiTest.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kParticles = 60;

class BadData : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        DataLoader_cls* loader = Hub()->mpCDataLoader;
        loader->SetHeaderGrammer({0, 1});
        loader->SetBodyGrammer({0, 1, 5, 6, 7, 8});
        loader->mCItemDataType.mValue = 0;
        loader->mCItemInterpolateType.mValue = 2;
        loader->SetToDefault();
        if (loader->mpCGUI) loader->mpCGUI->UpdateValues();
        HideAllButData(0);
        Time()->SetPrefetchNative(3);
    }
    static PDataSeqCtrl_cls* Store() { return Hub()->mpCPDataSeqCtrl; }
    static std::string Bad(const std::string& name) { return Root() + "tests/data/bad/" + name; }

    /// As a drag from a file manager ends.
    static void Drop(const std::string& path) {
        DropTarget_cls target(Frame());
        target.OnDropFiles(10, 10, wxArrayString(1, std::vector<wxString>{wxString::FromUTF8(path)}.data()));
        Settle();
    }
    /// A small binary snapshot in the default layout, with particles before the default camera.
    static void Write(const std::string& path, int count, size_t bytesCut = 0) {
        std::string data(8, '\0');
        const float time = 1.0f;
        std::memcpy(&data[0], &time, 4);
        std::memcpy(&data[4], &count, 4);
        for (int i = 0; i < kParticles; ++i) {
            const float record[7] = {float(i % 4) / 4 - 0.4f,
                                     float(i / 4 % 4) / 4 - 0.4f,
                                     float(i / 16) / 4 - 0.4f,
                                     0,
                                     0,
                                     0,
                                     0.01f};
            const int numbers[2] = {i, 0};
            const float value = 1.0f;
            data.append(reinterpret_cast<const char*>(record), 28);
            data.append(reinterpret_cast<const char*>(numbers), 8);
            data.append(reinterpret_cast<const char*>(&value), 4);
        }
        data.resize(data.size() - bytesCut);
        std::ofstream(path, std::ios::binary).write(data.data(), std::streamsize(data.size()));
    }
    static std::string Name(int index) {
        char name[32];
        std::snprintf(name, sizeof name, "run%05d.bin", index);
        return name;
    }
    static bool GoTo(int frame) {
        Time()->SetFrameNative(frame, 6);
        return Settle();
    }
    static int Lit() { return Grab(0).CountLit(60); }
};

TEST_F(BadData, ADroppedProjectOpens) {
    Drop(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp");
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 20);
    EXPECT_TRUE(mVMessages.empty());
    EXPECT_TRUE(Frame()->GetTitle().Contains("lj_melt_bin.mrp"));
}

// A long paint lets the window breathe, and what it draws must stay meanwhile.
TEST_F(BadData, AProjectDroppedDuringAPaintOpensBehindIt) {
    ASSERT_FALSE(Frame()->GetTitle().Contains("lj_melt_text.mrp"));
    {
        const FlagScope_cls painting(GbGLLockDrawing);
        const std::vector<wxString> path{
            wxString::FromUTF8(Root() + "examples/lj_melt_text/lj_melt_text.mrp")};
        DropTarget_cls(Frame()).OnDropFiles(10, 10, wxArrayString(1, path.data()));
        PumpUntil([] { return false; }, 200);
        EXPECT_FALSE(Frame()->GetTitle().Contains("lj_melt_text.mrp"));
    }
    EXPECT_TRUE(PumpUntil([] { return Frame()->GetTitle().Contains("lj_melt_text.mrp"); }));
}

TEST_F(BadData, ADroppedFileOpensWithThePresentGrammar) {
    Drop(Root() + "examples/lj_melt_bin/melt0005.bin");
    EXPECT_TRUE(mVMessages.empty());
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 15) << "from that file on";
    EXPECT_EQ(Store()->GetPCActiveFileSequence()->GetParticleNumber(0), 1372);
}

TEST_F(BadData, ADirectoryAndAMissingFileAreTold) {
    const TempDir_cls dir;
    Drop(dir / ".");
    EXPECT_FALSE(mVMessages.empty()) << "a directory";
    mVMessages.clear();
    Drop(dir / "nothing0000.bin");
    ASSERT_FALSE(mVMessages.empty());
    EXPECT_TRUE(WasTold("nothing0000.bin"));
    mVMessages.clear();
    Drop(dir / "nothing.mrp");
    EXPECT_TRUE(WasTold("nothing.mrp"));
    Drop(Root() + "examples/lj_melt_bin/melt0000.bin");
    EXPECT_EQ(Store()->GetPCActiveFileSequence()->GetParticleNumber(0), 1372) << "and the next one opens";
}

TEST_F(BadData, AProjectOfRandomBytesDoesNoHarm) {
    const TempDir_cls dir;
    std::mt19937 random(7);
    for (int round = 0; round < 3; ++round) {
        std::ofstream file(dir / "junk.mrp", std::ios::binary);
        for (int i = 0; i < 20000; ++i)
            file.put(char(random()));
        file << "\nDataLoadGrammerBody=9 9 9 9 9 9 9 9 9 9 9 9 9 9 9 9 9 9 "
                "9\nTimeMaxFrame=-5\nFBOBufferSize=77\n"
                "PreviewPanelType=900\nPanel0DisplayMode=55\nTimeAnimStep=0\nTimeAnimInterp=0\n";
        file.close();
        Drop(dir / "junk.mrp");
        Shared().msCFBOSizeIndex.mValue = 0;
        ASSERT_TRUE(Settle());
    }
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    ResetViews();
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 20);
    EXPECT_GT(Lit(), 200) << "a good project puts everything right";
}

TEST_F(BadData, TenThousandAndOneFilesAreCutWithAWarning) {
    const TempDir_cls dir;
    Write(dir / Name(0), kParticles);
    for (int i = 1; i < 10000; ++i)
        std::filesystem::create_hard_link(dir / Name(0), dir / Name(i));
    Drop(dir / Name(0));
    EXPECT_TRUE(mVMessages.empty()) << "ten thousand fit";
    EXPECT_EQ(Time()->GetMaxFrame(), 9999);
    EXPECT_GT(Lit(), 50);
    ASSERT_TRUE(GoTo(9999));
    EXPECT_GT(Lit(), 50) << "the last one too";
    GoTo(0);
    std::filesystem::create_hard_link(dir / Name(0), dir / Name(10000));
    Drop(dir / Name(0));
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mText, "Max file sequence number is 8000");
    EXPECT_EQ(mVMessages[0].mTitle, "Warning");
    EXPECT_EQ(Time()->GetMaxFrame(), 7999);
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 8000);
    EXPECT_GT(Lit(), 50);
}

TEST_F(BadData, AGapEndsTheSequence) {
    Drop(Bad("sequence/gap/snap0000.bin"));
    EXPECT_EQ(Time()->GetMaxFrame(), 2);
    for (int frame = 0; frame < 3; ++frame)
        EXPECT_TRUE(GoTo(frame));
    EXPECT_TRUE(mVMessages.empty());
}

TEST_F(BadData, AFileThatVanishesWhileItPlaysIsToldOnce) {
    const TempDir_cls dir;
    for (int i = 0; i < 30; ++i)
        Write(dir / Name(i), kParticles);
    Drop(dir / Name(0));
    ASSERT_EQ(Time()->GetMaxFrame(), 29);
    std::filesystem::remove(dir / Name(20));
    std::filesystem::remove(dir / Name(21));
    Canvas(0)->SetFocus();
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([] { return Time()->GetFrame() > 0; }));
    ASSERT_TRUE(PumpUntil([] { return !Time()->IsPlaying(); }, 20000));
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Time()->GetFrame(), 29) << "it plays on to the end";
    EXPECT_GT(Lit(), 50);
    ASSERT_EQ(mVMessages.size(), 1u) << "once for the sequence";
    EXPECT_TRUE(WasTold(Name(20)));
    EXPECT_EQ(mVMessages[0].mKind, MessageKind::Notice) << "beside the film, not in its way";
    ASSERT_TRUE(GoTo(20));
    EXPECT_EQ(Lit(), 0);
    // The file comes back: removing the cache finds it.
    Write(dir / Name(20), kParticles);
    Menu(ID_REMOVE_CACHE_ALL);
    ASSERT_TRUE(Settle());
    EXPECT_GT(Lit(), 50);
}

TEST_F(BadData, ATruncatedSnapshotInTheMiddleIsPassed) {
    const TempDir_cls dir;
    for (int i = 0; i < 5; ++i)
        Write(dir / Name(i), kParticles, i == 2 ? 30 * 40 + 17 : 0);
    Drop(dir / Name(0));
    for (int frame = 0; frame < 5; ++frame) {
        ASSERT_TRUE(GoTo(frame)) << frame;
        if (frame != 2) {
            EXPECT_GT(Lit(), 50) << frame;
        }
    }
    ASSERT_LE(mVMessages.size(), 1u);
    EXPECT_TRUE(mVMessages.empty() || WasTold(Name(2)));
}

TEST_F(BadData, ImpossibleCountsAreToldWithTheFilesName) {
    for (const int count : {-1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        const TempDir_cls dir;
        Write(dir / Name(0), kParticles);
        Write(dir / Name(1), count);
        Write(dir / Name(2), kParticles);
        mVMessages.clear();
        Drop(dir / Name(0));
        ASSERT_TRUE(GoTo(1)) << count;
        EXPECT_EQ(Lit(), 0) << count;
        ASSERT_EQ(mVMessages.size(), 1u) << count;
        EXPECT_TRUE(WasTold(Name(1))) << mVMessages[0].mText;
        ASSERT_TRUE(GoTo(2)) << count;
        EXPECT_GT(Lit(), 50) << "the next good frame paints";
    }
}

TEST_F(BadData, AnEmptyFrameIsNoFault) {
    const TempDir_cls dir;
    Write(dir / Name(0), 0, kParticles * 40);
    Write(dir / Name(1), kParticles);
    Drop(dir / Name(0));
    EXPECT_TRUE(mVMessages.empty());
    EXPECT_EQ(Lit(), 0);
    ASSERT_TRUE(GoTo(1));
    EXPECT_GT(Lit(), 50);
}

TEST_F(BadData, ImpossiblePositionsPaint) {
    Canvas(0)->mShowMessage.mValue = true;
    for (const char* name : {"nan_positions", "inf_positions", "all_nan", "huge_positions", "nan_time",
                             "type_out_of_range", "id_extreme", "radius_bad", "random_bytes"}) {
        Drop(Bad(std::string("binary/") + name + "/snap0000.bin"));
        ASSERT_TRUE(Settle()) << name;
        // Turning and zooming such data must not end anything either.
        Drag(Canvas(0), wxPoint(100, 100), wxPoint(130, 110), 1, 2);
        EXPECT_TRUE(Settle()) << name;
        const bool bTold = Canvas(0)->GetMessageText().Contains("100 particles aren't drawn: their place");
        EXPECT_EQ(bTold, std::string(name) == "all_nan") << name;
    }
    Canvas(0)->mShowMessage.mValue = false;
    ResetViews();
    const TempDir_cls dir;
    Write(dir / Name(0), kParticles);
    Drop(dir / Name(0));
    EXPECT_GT(Lit(), 50);
}

TEST_F(BadData, ADirectoryInPlaceOfAFile) {
    Drop(Bad("sequence/directory_as_file/snap0000.bin"));
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(mVMessages.empty());
    EXPECT_EQ(Time()->GetMaxFrame(), 0) << "a directory is no file";
    EXPECT_EQ(Store()->GetPCActiveFileSequence()->GetParticleNumber(0), 100);
    Drop(Bad("sequence/directory_as_file/snap0001.bin"));
    EXPECT_TRUE(WasTold("snap0001.bin"));
}

} // namespace
