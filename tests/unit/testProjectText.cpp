// Projects that are wrong, and the way from bytes to settings and back.
#include <chrono>
#include <fstream>
#include <iterator>

#include "APP/ProjectBlocks.h"
#include "APP/ProjectText.h"
#include "APP/clsRecentFiles.h"
#include "COMMON/SafeFile.h"
#include "DrawnStoreFixture.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "PDATA/clsPDataSequence.h"
#include "ParamTest.h"
#include "TIME/clsTimeCtrl.h"

namespace {

const wxString kSuffixes[] = {"Time"};

/// The objects of a project that need no window.
class ProjectText : public DrawnStoreFixture {
protected:
    void ReadBytes(const std::string& bytes) {
        const std::wstring text = DecodeProject(bytes);
        TextStream_cls stream(text);
        wxString line;
        while (NextProjectLine(stream, &line)) {
            mLoader.ReadStrLine(line);
            mTime.ReadStrLine(stream, line);
            mCurve.ReadStrLine(stream, line);
            mStore.ReadStrLine(stream, line);
        }
    }
    void ReadBad(const std::string& name) {
        const std::string path = std::string(MORENTIS_TEST_ROOT) + "/tests/data/bad/project/" + name;
        std::string bytes;
        ASSERT_EQ(ReadWholeFile(path, kLargestProject, &bytes), ReadFileResult::Ok) << name;
        PDataSequence_cls::msStrProjectDir = std::string(MORENTIS_TEST_ROOT) + "/tests/data/bad/project";
        ReadBytes(bytes);
        PDataSequence_cls::msStrProjectDir.clear();
    }
    float Scale() const { return mLoader.mCItemScale.mValue; }
    Parameters_cls& Curve() { return mCurve.mVParams[0]; }

    TimeCtrl_cls mTime{nullptr};
    ParamGroup_cls mCurve{"Time Remap", 1, kSuffixes, 0, true};
};

TEST_F(ProjectText, WhatIsMissingStaysAndOfWhatIsDoubledTheLastCounts) {
    mTime.SetMaxFrameNative(77);
    ReadBad("missing_lines.mrp");
    EXPECT_EQ(Scale(), 2.5f);
    EXPECT_EQ(mTime.GetMaxFrame(), 77);
    ReadBad("doubled_lines.mrp");
    EXPECT_EQ(Scale(), 3.0f);
    EXPECT_EQ(mTime.GetMaxFrame(), 40);
    ReadBad("empty.mrp");
    EXPECT_EQ(Scale(), 3.0f);
}

TEST_F(ProjectText, ACutFileGivesWhatItHas) {
    ReadBad("cut_before_path.mrp");
    EXPECT_EQ(Scale(), 4.0f);
    EXPECT_TRUE(mStore.GetStrActiveFileSequencePath().empty());
    ReadBad("cut_within_number.mrp");
    EXPECT_EQ(Scale(), 1.2f);
    EXPECT_EQ(mTime.GetMaxFrame(), 25);
    ReadBad("cut_within_keys.mrp");
    ASSERT_EQ(Curve().GetKeyNumber(), 2);
    EXPECT_EQ(Curve().GetKeyFrameDoubleIndex(1), 0.5);
}

TEST_F(ProjectText, CountsAreNotTrusted) {
    ReadBad("wrong_counts.mrp");
    EXPECT_EQ(mLoader.GetHeaderGrammer().size(), 16u);
    EXPECT_EQ(mLoader.mCItemTranslate.mValue[1], 2.0f);
    EXPECT_EQ(mLoader.mCItemTranslate.mValue[2], 0.0f) << "missing ones stay";
    EXPECT_EQ(mCurve.GetDimension(), 1);
    ASSERT_EQ(Curve().GetKeyNumber(), 2);
    EXPECT_EQ(Curve().Evaluate(0.5, 0.01), 1.5);
    EXPECT_TRUE(mCurve.Serialize().Contains("dimension=1\n")) << "written is what is there";
}

TEST_F(ProjectText, KeysComeInOrderWhateverTheFileHas) {
    ReadBad("keys_out_of_order.mrp");
    ASSERT_EQ(Curve().GetKeyNumber(), 5);
    EXPECT_TRUE(IsSorted(Curve()));
    EXPECT_EQ(Curve().GetKeyFrameValue(2), 3.0) << "equal places keep the file's order";
    EXPECT_EQ(Curve().GetKeyFrameValue(3), 4.0);
    EXPECT_EQ(Curve().Evaluate(1.0, 0.01), 5.0);
    const wxString text = mCurve.Serialize();
    ReadBytes(EncodeProject(text));
    EXPECT_EQ(mCurve.Serialize(), text);
}

TEST_F(ProjectText, NumbersThatAreNone) {
    mTime.SetMaxFrameNative(50);
    ReadBad("not_a_number.mrp");
    EXPECT_EQ(mTime.GetMaxFrame(), 0);
    EXPECT_EQ(mTime.GetAnimStep(), 1);
    for (const double t : {-1e9, 0.0, 0.5, 1e9})
        Curve().Evaluate(t, 0.01);
    EXPECT_TRUE(IsSorted(Curve()));
    ReadBad("decimal_commas.mrp");
    EXPECT_EQ(Scale(), 0.0f) << "a comma ends a number in every locale";
    EXPECT_EQ(mTime.GetMaxFrame(), 12);
    ReadBad("negative_numbers.mrp");
    EXPECT_GE(mTime.GetMaxFrame(), 0);
    EXPECT_GT(mTime.GetAnimStep(), 0);
    EXPECT_GT(mTime.GetAnimInterp(), 0);
}

TEST_F(ProjectText, BytesThatAreNoTextArePassedOver) {
    ReadBad("binary_lines.mrp");
    EXPECT_EQ(Scale(), 6.0f);
    EXPECT_EQ(mLoader.mCItemScaleValue1.mValue, 7.0f) << "the lines behind them count";
    // Whatever the bytes are: they come back as they were.
    const std::string bytes = "a\xFC\xE4 \xC3\xA4 \xE2\x82 \xFF\xFE=\n";
    EXPECT_EQ(EncodeProject(DecodeProject(bytes)), bytes);
    ReadBad("latin1.mrp");
    const std::string saved = EncodeProject(mLoader.Serialize());
    EXPECT_NE(saved.find("LastOpenedFile=/daten/Schmelze \xFC\xE4\xDF/a0000.bin\n"), std::string::npos);
    EXPECT_EQ(mTime.GetMaxFrame(), 4);
}

TEST_F(ProjectText, AProjectOfAnotherMachineFindsTheDataBesideIt) {
    ReadBad("other_machine.mrp");
    EXPECT_EQ(Scale(), 8.0f) << "behind the mark of its encoding";
    EXPECT_EQ(mTime.GetMaxFrame(), 3);
    EXPECT_EQ(mStore.GetActiveFileSequenceLength(), 1);
    EXPECT_TRUE(mStore.Serialize().StartsWith("DataSequence0=0\nD:\\simulation\\run 7\\snap0000.bin\n"))
        << "the text stays as it was given";
    EXPECT_TRUE(mMessages.empty());
}

TEST_F(ProjectText, IndicesThatAreNoneAreNobodys) {
    const wxString before = mStore.Serialize();
    ReadBad("strange_indices.mrp");
    EXPECT_EQ(Scale(), 10.0f);
    EXPECT_FALSE(Drawing().mpCGLAttribute[0]->mDrawType.mValue == 1);
    EXPECT_TRUE(mStore.GetStrActiveFileSequencePath().empty());
    const wxString text = mStore.Serialize();
    ReadBytes(EncodeProject(text));
    EXPECT_EQ(mStore.Serialize(), text);
    EXPECT_NE(text, before);
}

TEST_F(ProjectText, EndlessLinesAndTenThousandKeysTakeNoTime) {
    const auto start = std::chrono::steady_clock::now();
    std::string bytes = std::string(size_t(60) << 20, '=') + "\nLoaderScale=2.000000\nLoaderScale=3" +
                        std::string(2000000, '0') + "\n";
    ReadBytes(bytes);
    EXPECT_EQ(Scale(), 2.0f) << "a line without end is passed over";
    bytes = "-ParamGroup=Time Remap\ndimension=1\nStart\nParameter_Time\ntimeDepend=1\nperiodic=0\nitemnum "
            "10000\n";
    for (int k = 0; k < 10000; ++k)
        bytes += std::to_string((k * 7919) % 10000 / 10000.0) + " 1 " + std::to_string(k % 13) + " 0 0 \n";
    ReadBytes(bytes);
    EXPECT_EQ(Curve().GetKeyNumber(), 10000);
    EXPECT_TRUE(IsSorted(Curve()));
    const wxString text = mCurve.Serialize();
    ReadBytes(EncodeProject(text));
    EXPECT_EQ(mCurve.Serialize(), text) << "automatic tangents too";
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST_F(ProjectText, AutomaticTangentsAreWrittenAsTheyWillBeRead) {
    // Thirds and sevenths: the text rounds them, and the slope of what is read is another one.
    const std::vector<KeyFrame_cls> keys = {
        MakeKey(1.0 / 7, 1e6 / 3.0, INTERP_HERMITE_AUTO),
        MakeKey(1.0 / 3, -2e6 / 7.0, INTERP_HERMITE_SEMIAUTO, 0.0, 1.0 / 3),
        MakeKey(6.0 / 7, 1.0 / 7, INTERP_HERMITE, 1.0 / 3)};
    SetKeys(Curve(), keys);
    const wxString text = mCurve.Serialize();
    const double slope = Curve().GetKeyFrameValueD1(0);
    EXPECT_EQ(mCurve.Serialize(), text);
    EXPECT_EQ(Curve().GetKeyFrameValueD1(0), slope) << "writing changes nothing";
    ReadBytes(EncodeProject(text));
    EXPECT_EQ(mCurve.Serialize(), text);
}

TEST_F(ProjectText, MovedDataAreFoundByTheEndOfTheirPath) {
    OpenRun(3);
    std::filesystem::create_directory(mFolder + "/project");
    std::filesystem::create_directory(mFolder + "/project/run 7");
    for (int i = 0; i < 3; ++i)
        std::filesystem::copy(PathOf(i), mFolder + "/project/run 7");
    PDataSequence_cls::msStrProjectDir = mFolder + "/project";
    for (const wxString& path :
         {wxString("/gone/long ago/project/run 7/run0000.bin"), wxString("run 7/run0000.bin"),
          wxString("..\\run 7\\run0000.bin"), wxString("E:\\run 7\\run%04d.bin")}) {
        mStore.ClearData(-2, -2, true);
        mStore.OpenDataFile(path);
        EXPECT_EQ(mStore.GetActiveFileSequenceLength(), 3) << path;
        EXPECT_TRUE(mStore.Serialize().StartsWith("DataSequence0=0\n" + path + "\n")) << "as given";
    }
    EXPECT_TRUE(mMessages.empty());
    // By the bare name, where the folders are others.
    std::filesystem::copy(PathOf(0), mFolder + "/project/run0000.bin");
    mStore.OpenDataFile("/somewhere/else/run0000.bin");
    EXPECT_EQ(mStore.GetActiveFileSequenceLength(), 1);
    EXPECT_TRUE(mStore.Serialize().StartsWith("DataSequence0=0\n/somewhere/else/run0000.bin\n"));
    // Saved where other data bear that name, the path says whose they are.
    PDataSequence_cls::msStrProjectDir = mFolder;
    EXPECT_TRUE(mStore.Serialize().StartsWith("DataSequence0=0\n" + mFolder + "/project/run0000.bin\n"));
    // What is gone altogether is told, and its text kept.
    mStore.OpenDataFile("/gone/nothing0000.bin");
    EXPECT_FALSE(mMessages.empty());
    EXPECT_TRUE(mStore.Serialize().StartsWith("DataSequence0=0\n/gone/nothing0000.bin\n"));
}

TEST(ProjectBlocks, EveryBlockHasItsPlace) {
    const auto& blocks = GetProjectBlocks();
    ASSERT_EQ(blocks.size(), 24u);
    for (size_t i = 0; i < blocks.size(); ++i) {
        EXPECT_EQ(blocks[i].mPlace, int(i) + 1);
        EXPECT_EQ(blocks[i].mbConfigure, i < 4) << "the configure file is the same text cut short";
    }
}

TEST(RecentFiles, NewestFirstEachOnceNineAtMost) {
    RecentFiles_cls recent;
    for (int i = 0; i < 12; ++i)
        recent.Add(RecentFiles_cls::Projects, wxString::Format("/p/%d.mrp", i));
    recent.Add(RecentFiles_cls::Projects, "/p/7.mrp");
    recent.Add(RecentFiles_cls::Data, wxString::FromUTF8("/d/\xE9\x9B\xAA & eis=1/a%04d.bin"));
    recent.Add(RecentFiles_cls::Data, "/d/two\nlines.bin");
    recent.Add(RecentFiles_cls::Data, "relative.bin");
    const auto& projects = recent.Get(RecentFiles_cls::Projects);
    ASSERT_EQ(projects.size(), 9u);
    EXPECT_EQ(projects[0], "/p/7.mrp");
    EXPECT_EQ(projects[1], "/p/11.mrp");
    EXPECT_EQ(projects[8], "/p/3.mrp");
    ASSERT_EQ(recent.Get(RecentFiles_cls::Data).size(), 2u);
    EXPECT_TRUE(recent.Get(RecentFiles_cls::Data)[0].EndsWith("/relative.bin"));
    EXPECT_TRUE(recent.Get(RecentFiles_cls::Data)[0].StartsWith("/")) << "the next start is elsewhere";

    RecentFiles_cls again;
    const std::wstring text = recent.Serialize().ToStdWstring();
    TextStream_cls stream(text);
    wxString line;
    while (NextProjectLine(stream, &line))
        EXPECT_TRUE(again.ReadStrLine(line)) << line;
    EXPECT_EQ(again.Serialize(), recent.Serialize());
    EXPECT_FALSE(again.ReadStrLine("RecentProjects=3"));
    EXPECT_FALSE(again.ReadStrLine("RecentProject"));
    EXPECT_TRUE(again.ReadStrLine("RecentProject1=/too/many.mrp"));
    EXPECT_EQ(again.Get(RecentFiles_cls::Projects).size(), 9u);
    again.Remove(RecentFiles_cls::Projects, "/p/7.mrp");
    EXPECT_EQ(again.Get(RecentFiles_cls::Projects)[0], "/p/11.mrp");

    EXPECT_EQ(RecentFiles_cls::MakeLabel(2, "/a & b/c.mrp"), "&2 /a && b/c.mrp");
    const wxString longLabel = RecentFiles_cls::MakeLabel(1, "/begin/" + wxString('x', 200) + "/end.mrp");
    EXPECT_LT(longLabel.length(), 70u);
    EXPECT_TRUE(longLabel.StartsWith("&1 /begin/") && longLabel.EndsWith("/end.mrp"));
}

TEST_F(ProjectText, CountsLinesWithValuesThatAreNoNumbers) {
    EXPECT_EQ(CountNoNumbers(L""), 0);
    EXPECT_EQ(CountNoNumbers(L"Value=1.5\nName=nan of the sea\nTitle=Nancy\nPath=/inf/x\nnan\n"), 0);
    EXPECT_EQ(CountNoNumbers(L"Value=nan\nKey=0.5 -NaN 1\r\nSize=1, inf, 2\nLast=-nan(ind)"), 4);
}

} // namespace
