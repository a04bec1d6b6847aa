// Exported files against golden bytes, and runs that write them.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>

#include "COMMON/SafeFile.h"
#include "PDATA/SnapshotWriter.h"
#include "PDATA/clsDataExporter.h"
#include "ReaderTestTools.h"
#include "StoreFixture.h"

namespace {

namespace fs = std::filesystem;
using Codes = std::vector<int>;

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

/// Particle i: position (i, 10 i, -i), velocity (0.5, 0, i), radius 0.25 i, value -i / 8, type i, ID 100 + i.
struct Particles_st : HandBlock_st {
    explicit Particles_st(int number, double time = 1.5) : HandBlock_st(number, 1, time) {
        for (int i = 0; i < number; ++i) {
            const auto x = static_cast<float>(i);
            const float pos[3] = {x, 10 * x, -x};
            const float vel[3] = {0.5f, 0.0f, x};
            std::memcpy(mBlock.mpPos[i], pos, sizeof pos);
            std::memcpy(mBlock.mpVel[i], vel, sizeof vel);
            mBlock.mpRadius[i] = 0.25f * x;
            mBlock.mpDRadius[i] = 1.0f;
            mBlock.mpValue1[i] = -x / 8;
            mBlock.mpDValue1[i] = -2.0f;
            mBlock.mpType[i] = static_cast<unsigned char>(i);
            mBlock.mpID[i] = 100 + i;
        }
    }
};

class Export : public ::testing::Test {
protected:
    ~Export() override { GSafeFileStep = {}; }
    void Layout(const Codes& head, const Codes& body) {
        mExporter.SetHeaderGrammer(head);
        mExporter.SetBodyGrammer(body);
    }
    std::string Path() { return mDir.Name("out"); }
    bool Write(const std::string& path, bool bText, const PDataBlock_cls& block, double dt = 0.0,
               int step = 1) {
        mExporter.mCItemDataType.mValue = bText ? 1 : 0;
        return mExporter.ExportFile(wxString::FromUTF8(path), block, dt, step, &mReason);
    }
    std::string Binary(const PDataBlock_cls& block, double dt = 0.0, int step = 1) {
        EXPECT_TRUE(Write(Path(), false, block, dt, step)) << mReason;
        return ReadFile(Path());
    }
    std::string Text(const PDataBlock_cls& block, double dt = 0.0, int step = 1) {
        EXPECT_TRUE(Write(Path(), true, block, dt, step)) << mReason;
        return ReadFile(Path());
    }

    TempDir_cls mDir;
    DataExporter_cls mExporter{nullptr};
    wxString mReason;
};

const Codes kDefaultBody = {0, 1, 5, 6, 7, 8};

TEST_F(Export, BinaryGoldenBytes) {
    const Particles_st particles(2);
    const std::string expected = Pack(1.5f, 2) +
                                 Pack(0.0f, 0.0f, -0.0f, 0.5f, 0.0f, 0.0f, 0.0f, 100, 0, -0.0f) +
                                 Pack(1.0f, 10.0f, -1.0f, 0.5f, 0.0f, 1.0f, 0.25f, 101, 1, -0.125f);
    EXPECT_EQ(Binary(particles.mBlock), expected);
}

TEST_F(Export, BinaryDummiesTakeTheirRoom) {
    const Particles_st particles(2);
    Layout({4, 1, 2, 0, 3}, {2, 7, 3, 5, 4, 6});
    const std::string one(4, '\0'), three(12, '\0'), ten(40, '\0');
    EXPECT_EQ(Binary(particles.mBlock), ten + Pack(2) + one + Pack(1.5f) + three + one + Pack(0) + three +
                                            Pack(0.0f) + ten + Pack(100) + one + Pack(1) + three +
                                            Pack(0.25f) + ten + Pack(101));
}

TEST_F(Export, TextGoldenBytes) {
    const Particles_st particles(2);
    EXPECT_EQ(Text(particles.mBlock),
              "1.500000\n2\n"
              "0.000000 0.000000 -0.000000 0.500000 0.000000 0.000000 0.000000 100 0 "
              "-0.000000 \n"
              "1.000000 10.000000 -1.000000 0.500000 0.000000 1.000000 0.250000 101 1 "
              "-0.125000 \n");
}

TEST_F(Export, TextDummiesHaveNoLineEndsAndOneColumn) {
    const Particles_st particles(1);
    Layout({2, 0, 3, 1, 4}, {2, 7, 3, 4, 6});
    EXPECT_EQ(Text(particles.mBlock), "dummy1.500000\ndummydummydummy1\n"
                                      "dummydummydummydummydummydummydummydummydummydummy"
                                      "0 0 0 0 100 \n");
}

TEST_F(Export, AFileHasTheChosenDataType) {
    const Particles_st particles(2);
    Layout({1}, {6});
    const std::string path = Path();
    mExporter.mCItemDataType.mValue = 1;
    EXPECT_TRUE(mExporter.ExportFile(wxString::FromUTF8(path), particles.mBlock, 0.0, 1));
    EXPECT_EQ(ReadFile(path), "2\n100 \n101 \n");
    mExporter.mCItemDataType.mValue = 0;
    EXPECT_TRUE(mExporter.ExportFile(wxString::FromUTF8(path), particles.mBlock, 0.0, 1));
    EXPECT_EQ(ReadFile(path), Pack(2, 100, 101));
    // A frame without particles is legal in a film, and tells so by an empty file.
    const Particles_st none(0);
    EXPECT_TRUE(mExporter.ExportFile(wxString::FromUTF8(path), none.mBlock, 0.0, 1));
    EXPECT_EQ(ReadFile(path), "");
    wxString reason;
    EXPECT_FALSE(mExporter.ExportFile("/proc/none.bin", none.mBlock, 0.0, 1, &reason));
    EXPECT_FALSE(reason.empty());
}

TEST_F(Export, DownsizingTakesEveryNth) {
    const Particles_st particles(10);
    Layout({1}, {6});
    EXPECT_EQ(Binary(particles.mBlock, 0.0, 3), Pack(4, 100, 103, 106, 109));
    EXPECT_EQ(Text(particles.mBlock, 0.0, 9), "2\n100 \n109 \n");
}

TEST_F(Export, WithoutIDsTheIndexInTheBlockStandsForThem) {
    Particles_st particles(7);
    particles.mBlock.mbHasID = false;
    Layout({}, {6});
    EXPECT_EQ(Binary(particles.mBlock, 0.0, 3), Pack(0, 3, 6));
    EXPECT_EQ(Text(particles.mBlock, 0.0, 3), "0 \n3 \n6 \n");
}

TEST_F(Export, ABlockWithoutParticlesIsNoBinaryFile) {
    PDataSnap_cls snap(nullptr, 0);
    snap.mTime = 2.0;
    SnapshotWriter_cls writer(wxString::FromUTF8(Path()), mExporter, false,
                              SnapshotSource_st::Of(*snap.mpCBlock, 0.0, 1));
    EXPECT_EQ(writer.Write(), SnapshotWriter_cls::State::Failed);
    EXPECT_TRUE(writer.GetReason().Contains("no particles")) << writer.GetReason();
    EXPECT_EQ(fs::file_size(Path()), 0u);
    EXPECT_EQ(Binary(*snap.mpCBlock), "") << "legal all the same";
    EXPECT_EQ(Text(*snap.mpCBlock), "2.000000\n0\n");
}

TEST_F(Export, AnEmptyOrUnknownLayoutWritesWhatItNames) {
    const Particles_st particles(2);
    Layout({7, 1, -3}, {});
    EXPECT_EQ(Binary(particles.mBlock), Pack(2));
    EXPECT_EQ(Text(particles.mBlock), "2\n\n\n");
    Layout({}, {99, 7, -1});
    EXPECT_EQ(Binary(particles.mBlock), Pack(0, 1));
    EXPECT_EQ(Text(particles.mBlock), "0 \n1 \n");
}

// The sum is written here as the views compute it; SnapData_cls is asked below, with a store behind it.
TEST_F(Export, AFractionMovesAllButVelocities) {
    const Particles_st particles(2);
    EXPECT_EQ(Binary(particles.mBlock, 0.5),
              Pack(2.0f, 2) + Pack(0.25f, 0.0f, 0.0f, 0.5f, 0.0f, 0.0f, 0.5f, 100, 0, -1.0f) +
                  Pack(1.25f, 10.0f, -0.5f, 0.5f, 0.0f, 1.0f, 0.75f, 101, 1, -1.125f));
}

TEST_F(Export, ManyRecordsFillManyPieces) {
    const HandBlock_st particles(100003, 7);
    Layout({1}, kDefaultBody);
    const std::string whole = Binary(particles.mBlock);
    ASSERT_EQ(whole.size(), 4u + 100003u * 40u);
    for (const int i : {0, 1023, 1024, 26213, 26214, 100002}) {
        float pos[3];
        std::memcpy(pos, whole.data() + 4 + 40 * i, sizeof pos);
        EXPECT_EQ(std::memcmp(pos, particles.mBlock.mpPos[i], sizeof pos), 0) << i;
        int id = 0;
        std::memcpy(&id, whole.data() + 4 + 40 * i + 28, sizeof id);
        EXPECT_EQ(id, i);
    }
    std::string expected = "100003\n";
    char line[512];
    for (int i = 0; i < 100003; ++i) {
        const PDataBlock_cls& b = particles.mBlock;
        const auto d = [](float value) { return static_cast<double>(value); };
        std::snprintf(line, sizeof line, "%f %f %f %f %f %f %f %d %d %f \n", d(b.mpPos[i][0]),
                      d(b.mpPos[i][1]), d(b.mpPos[i][2]), d(b.mpVel[i][0]), d(b.mpVel[i][1]),
                      d(b.mpVel[i][2]), d(b.mpRadius[i]), b.mpID[i], b.mpType[i], d(b.mpValue1[i]));
        expected += line;
    }
    EXPECT_TRUE(Text(particles.mBlock) == expected);
}

TEST_F(Export, AFailureLeavesTheOldFileAndNothingBeside) {
    const Particles_st particles(3);
    const std::string before = Binary(particles.mBlock);
    const std::string path = Path();
    for (const std::string failing : {"open", "write", "rename"}) {
        GSafeFileStep = [&failing](const char* step) { return failing != step; };
        EXPECT_FALSE(Write(path, true, particles.mBlock));
        EXPECT_TRUE(mReason.EndsWith(": " + wxString::FromUTF8(path))) << mReason;
        EXPECT_EQ(ReadFile(path), before) << failing;
        const auto files = std::distance(fs::directory_iterator(fs::path(path).parent_path()), {});
        EXPECT_EQ(files, 1) << failing;
    }
}

TEST_F(Export, ADroppedFileLeavesNothing) {
    const HandBlock_st particles(200000, 7);
    const std::string path = Path();
    {
        SnapshotWriter_cls writer(wxString::FromUTF8(path), mExporter, true,
                                  SnapshotSource_st::Of(particles.mBlock, 0.0, 1));
        EXPECT_EQ(writer.Write(0), SnapshotWriter_cls::State::Busy) << "a piece at a time";
        EXPECT_LT(writer.GetPercent(), 50);
    }
    EXPECT_TRUE(fs::is_empty(fs::path(path).parent_path()));
}

TEST_F(Export, TargetsThatAreNoFilesFail) {
    const Particles_st particles(1);
    const std::string path = Path();
    const auto write = [&](const std::string& name) { return Write(name, false, particles.mBlock); };
    EXPECT_FALSE(write(path + "_missing/out0000.dat"));
    EXPECT_TRUE(mReason.Contains("No such file")) << mReason;
    EXPECT_FALSE(write(fs::path(path).parent_path()));
    EXPECT_FALSE(write("/dev/full"));
    EXPECT_FALSE(write(""));
}

/// What a run does with its frames.
class ExportRun : public Export {
protected:
    ExportRun() {
        mExporter.mCLastSavedFile.mStrValue =
            wxString::FromUTF8(fs::path(mDir.Name("x")).parent_path().string()) + "/run0007.dat";
        mExporter.mCInitNum.mValue = 5;
        mExporter.mbExporting = true;
        EXPECT_TRUE(mExporter.AdoptTypedPath());
        mExporter.BeginRun(9);
    }
    /// True: the frame is dealt with at the first paint.
    bool Paint(const PDataBlock_cls& block, int frame) {
        return mExporter.ExportData(SnapshotSource_st::Of(block, 0.0, 1), frame);
    }
    bool Exists(const std::string& name) { return fs::exists(mDir.Name(name)); }
};

TEST_F(ExportRun, NumbersAreConsecutiveWhateverFramesCome) {
    const Particles_st particles(3);
    for (const int frame : {0, 0, 3, 3, 3, 1})
        EXPECT_TRUE(Paint(particles.mBlock, frame));
    EXPECT_EQ(mExporter.mExportedCount, 3);
    for (const char* name : {"run0005.dat", "run0006.dat", "run0007.dat"})
        EXPECT_TRUE(Exists(name)) << name;
    EXPECT_FALSE(Exists("run0008.dat"));
    EXPECT_TRUE(mExporter.GetRunText().StartsWith("Frame 3 of 9")) << mExporter.GetRunText();
    EXPECT_FALSE(mExporter.IsRunComplete());
    for (const int frame : {4, 5, 6, 7, 8, 9})
        EXPECT_TRUE(Paint(particles.mBlock, frame));
    EXPECT_TRUE(mExporter.IsRunComplete());
    mExporter.ExportFinish();
    EXPECT_EQ(mExporter.GetRunText(), "9 files exported");
}

TEST_F(ExportRun, AFailedFrameLeavesItsNumberToTheNextAndIsToldOnce) {
    const Particles_st particles(3);
    EXPECT_TRUE(Paint(particles.mBlock, 0));
    GSafeFileStep = [](const char* step) { return strcmp(step, "write") != 0; };
    EXPECT_TRUE(Paint(particles.mBlock, 1)) << "the run goes on";
    EXPECT_TRUE(Paint(particles.mBlock, 2));
    GSafeFileStep = {};
    EXPECT_TRUE(Paint(particles.mBlock, 3));
    EXPECT_EQ(mExporter.mExportedCount, 2);
    EXPECT_TRUE(Exists("run0006.dat"));
    EXPECT_FALSE(Exists("run0007.dat"));
    const wxString text = mExporter.GetRunText();
    EXPECT_TRUE(text.Contains("2 failed: ")) << text;
    EXPECT_TRUE(text.EndsWith("run0006.dat")) << text;
    EXPECT_EQ(text.find("run0006"), text.rfind("run0006")) << "one reason for both";
}

TEST_F(ExportRun, DataThatGoAwayUnderAFileBeginItAnew) {
    const HandBlock_st large(3000000, 3);
    mExporter.mCItemDataType.mValue = 1;
    ASSERT_FALSE(Paint(large.mBlock, 0)) << "a slice is too short for so many";
    const Particles_st other(2);
    EXPECT_TRUE(Paint(other.mBlock, 0));
    EXPECT_EQ(ReadFile(mDir.Name("run0005.dat")).substr(0, 11), "1.500000\n2\n");
}

wxString Adopted(const char* typed, bool* pSequence = nullptr) {
    DataExporter_cls exporter(nullptr);
    exporter.mCLastSavedFile.mStrValue = typed;
    const bool bSequence = exporter.AdoptTypedPath();
    if (pSequence) *pSequence = bSequence;
    return exporter.GetWXStrModifiedFilename();
}

TEST(ExportNames, FollowWhatWasTyped) {
    EXPECT_EQ(Adopted("/tmp/out0007.dat"), "/tmp/out0000.dat") << "the number is a place, not a start";
    EXPECT_EQ(Adopted("/tmp/out%03d.dat"), "/tmp/out000.dat");
    EXPECT_EQ(Adopted("/tmp/out000012.xyz"), "/tmp/out000000.xyz") << "wider than a typed tag may be";
    EXPECT_EQ(Adopted("/tmp/50%/out1"), "/tmp/50%/out0");
    EXPECT_EQ(Adopted("/tmp/50%%x/out01.dat"), "/tmp/50%%x/out00.dat") << "a folder of that name";
    bool bSequence = true;
    Adopted("/tmp/100%/out.dat", &bSequence);
    EXPECT_FALSE(bSequence);
    Adopted("", &bSequence);
    EXPECT_FALSE(bSequence);

    DataExporter_cls exporter(nullptr);
    exporter.mCLastSavedFile.mStrValue = "/tmp/100%%/out.v2";
    EXPECT_FALSE(exporter.AdoptTypedPath());
    exporter.AppendSequenceTag();
    EXPECT_EQ(exporter.GetWXStrModifiedFilename(), "/tmp/100%%/out0000.v2");
    EXPECT_TRUE(exporter.AdoptTypedPath()) << "what is shown then is a sequence";
    EXPECT_EQ(exporter.GetWXStrModifiedFilename(), "/tmp/100%%/out0000.v2");
}

TEST(ExportSettings, ReadBackAndSayWhatFilesHold) {
    DataExporter_cls one(nullptr);
    EXPECT_EQ(one.Serialize(),
              "DataExportDataType=0\nDataExportGrammerHead=0 1\nDataExportGrammerBody=0 1 5 6 7 8\n"
              "DataExportLastSavedFile=NONE\nDataExportInitNum=0\nDataExportFiltered=0\n");
    one.SetBodyGrammer({8, 4});
    one.mCInitNum.mValue = 30;
    one.mCLastSavedFile.mStrValue = "/a b/c%02d";
    DataExporter_cls two(nullptr);
    wxString text = one.Serialize();
    for (; !text.empty(); text = text.AfterFirst('\n'))
        two.ReadStrLine(text.BeforeFirst('\n'));
    EXPECT_EQ(two.Serialize(), one.Serialize());
    TestLoader_cls loader(1, {4, 1}, {0, 8});
    DataExporter_cls three(&loader);
    three.CopyFromLoader();
    EXPECT_EQ(three.GetHeaderGrammer(), Codes({4, 1}));
    EXPECT_EQ(three.GetBodyGrammer(), Codes({0, 8}));
    EXPECT_EQ(three.mCItemDataType.mValue, 0);
}

} // namespace
