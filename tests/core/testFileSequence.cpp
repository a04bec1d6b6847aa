// Names of numbered files: format, first number, width, length, and what stray "%" do.
#include <climits>

#include <sys/stat.h>
#include <unistd.h>

#include "ReaderTestTools.h"
#include "COMMON/MsgBox.h"
#include "COMMON/clsSplitPath.h"
#include "PDATA/clsFileSequence.h"

namespace {

/// A folder with numbered files, and a record of the messages shown.
class FileSequence : public testing::Test {
protected:
    void SetUp() override {
        SetMessageHandler([this](MessageKind, const wxString& text, const wxString& title) {
            mMessages.push_back(title + "|" + text);
            return true;
        });
    }
    void TearDown() override { SetMessageHandler(nullptr); }
    wxString Make(const char* format, int first, int last) {
        wxString path;
        for (int i = last; i >= first; --i) {
            char name[100];
            snprintf(name, sizeof name, format, i);
            path = wxString::FromUTF8(mDir.Write(name, "x").c_str());
        }
        return path; // of the first
    }
    static FileSequence_cls Probe(const wxString& path) {
        FileSequence_cls sequence(path);
        sequence.CalcMaxOffset();
        return sequence;
    }
    TempDir_cls mDir;
    std::vector<wxString> mMessages;
};

} // namespace

// A path as format, first number and width, and the name of index 3 with its two stereo variants.
TEST_F(FileSequence, SplitsPathsIntoFormatAndNumber) {
    struct Case_st {
        const char *mpPath, *mpFormat;
        int mStart, mDigits;
        const char *mpThird, *mpLeft;
    };
    const Case_st cases[] = {
        {"/d/run0007.dat", "/d/run%04d.dat", 7, 4, "/d/run0010.dat", "/d/runL0010.dat"},
        {"run7.dat", "run%01d.dat", 7, 1, "run10.dat", "runL10.dat"},
        {"0005", "%04d", 5, 4, "0008", "L0008"},
        {"run%03d.dat", "run%03d.dat", 0, 3, "run003.dat", "runL003.dat"},
        {"a.dat", "a.dat", 0, -1, "a.dat", "aL.dat"},
        {"data.0100", "data.0100", 0, -1, "data.0100", "dataL.0100"},
        {"/a.b/c", "/a.b/c", 0, -1, "/a.b/c", "/a.b/cL"},
        {"run%06d.dat", "run%06d.dat", 0, -1, "run000003.dat", "runL000003.dat"},
        {"run99999999999.dat", "run99999999999.dat", 0, -1, "run99999999999.dat", "run99999999999L.dat"},
        // A "%" that is no tag is text, in the file's name and in folders, with a number or without.
        {"/50%/a%s%n12.dat", "/50%/a%s%n%02d.dat", 12, 2, "/50%/a%s%n15.dat", "/50%/a%s%nL15.dat"},
        {"/%d/%5s/100%", "/%d/%5s/100%", 0, -1, "/3/%5s/100%", "/L3/%5s/100%"},
        {"%s%s%n", "%s%s%n", 0, -1, "%s%s%n", "%s%s%nL"},
        {"50%%_%02d.dat", "50%%_%02d.dat", 0, 2, "50%_03.dat", "50%_L03.dat"},
        {"%99999999d", "%99999999d", 0, -1, "%99999999d", "%99999999dL"},
    };
    for (const Case_st& c : cases) {
        const FileSequence_cls sequence{wxString(c.mpPath)};
        EXPECT_EQ(wxString(c.mpFormat), sequence.GetFormat()) << c.mpPath;
        EXPECT_EQ(c.mStart, sequence.mStartOffset) << c.mpPath;
        EXPECT_EQ(c.mDigits, sequence.mDigits) << c.mpPath;
        EXPECT_EQ(wxString(c.mpThird), sequence.GetModifiedStr(3, 0)) << c.mpPath;
        EXPECT_EQ(wxString(c.mpLeft), sequence.GetModifiedStr(3, 1)) << c.mpPath;
    }
}

TEST_F(FileSequence, PrintsNumbersAsPrintfDoes) {
    const FileSequence_cls sequence{wxString("x%03d")};
    for (const int number : {0, 7, 999, 1000, -1, -12, -1000, INT_MAX, INT_MIN}) {
        char expected[40];
        snprintf(expected, sizeof expected, "x%03d", number);
        EXPECT_EQ(wxString(expected), sequence.GetModifiedStr(number, 0));
    }
    const FileSequence_cls last{wxString("x2147483646.dat")};
    EXPECT_EQ("x2147483647.dat", last.GetModifiedStr(5, 0)) << "stays at the largest number";
    EXPECT_EQ("x-000000001.dat", FileSequence_cls(wxString("x0000000000.dat")).GetModifiedStr(-1, 0));
}

TEST_F(FileSequence, KeepsWhatItHasForPathsThatSayNothing) {
    FileSequence_cls sequence{wxString("run0007.dat")};
    sequence.mMaxOffset = 12;
    sequence.Set(wxString());
    EXPECT_EQ(12, sequence.mMaxOffset);
    EXPECT_EQ("run0007.dat", sequence.GetModifiedStr(0, 0));
    sequence.Set(wxString('a', 999) + "12.dat");
    EXPECT_EQ("run0007.dat", sequence.GetModifiedStr(0, 0)) << "a stem of 1001 characters sets nothing";
    sequence.Set(wxString('a', 998) + "12.dat");
    EXPECT_EQ(12, sequence.mStartOffset);
}

TEST_F(FileSequence, FindsItsLengthByProbing) {
    for (const int length : {1, 2, 10, 99, 100, 101, 251}) {
        const FileSequence_cls sequence = Probe(Make("n%04d.bin", 100, 99 + length));
        EXPECT_EQ(length, sequence.mMaxOffset);
        for (int i = 100; i < 100 + length; ++i)
            unlink(sequence.GetModifiedStr(i - 100, 0).utf8_str());
    }
    const FileSequence_cls growing = Probe(Make("g%d.bin", 8, 12));
    EXPECT_EQ(5, growing.mMaxOffset);
    EXPECT_TRUE(growing.GetInfoStr().EndsWith("g%01d.bin (8-13)")) << growing.GetInfoStr();
    EXPECT_EQ(4, Probe(Make("%d.bin", 5, 8)).mMaxOffset);
    EXPECT_EQ(3, Probe(Make("\xc3\xa4 b%d.bin", 1, 3)).mMaxOffset) << "blanks and letters beyond ASCII";
    EXPECT_EQ(2, Probe(Make("50%%s%%n %d.bin", 1, 2)).mMaxOffset);
    EXPECT_EQ(1, Probe(Make("none.bin", 0, 0)).mMaxOffset);
    EXPECT_TRUE(mMessages.empty());
}

TEST_F(FileSequence, StopsAtHolesFoldersAndTheLargestNumber) {
    Make("h%d.bin", 6, 9);
    EXPECT_EQ(4, Probe(Make("h%d.bin", 1, 4)).mMaxOffset);
    const wxString path = Make("f%d.bin", 1, 2);
    mkdir(mDir.Name("f3.bin").c_str(), 0700);
    Make("f%d.bin", 4, 5);
    EXPECT_EQ(2, Probe(path).mMaxOffset) << "a directory is no file";
    EXPECT_EQ(2, Probe(Make("m%d.bin", INT_MAX - 1, INT_MAX - 1 + 1)).mMaxOffset);
}

TEST_F(FileSequence, TellsWhenTheFirstFileDoesNotOpen) {
    const FileSequence_cls sequence = Probe("/nowhere/run0001.dat");
    EXPECT_EQ(0, sequence.mMaxOffset);
    ASSERT_EQ(1u, mMessages.size());
    EXPECT_EQ("Can not open file|FileSequence_cls::CalcMaxOffset\n/nowhere/run0001.dat\nFile open fails",
              mMessages[0]);
}

TEST_F(FileSequence, GivesNamesWithoutANumberATag) {
    FileSequence_cls sequence{wxString("/out/film.png")};
    sequence.AppendDefaultSequenceTag();
    EXPECT_EQ("/out/film0002.png", sequence.GetModifiedStr(2, 0));
    EXPECT_EQ("/out/filmR0002.png", sequence.GetModifiedStr(2, 2));
    EXPECT_EQ(4, sequence.mDigits);
}

TEST(SplitPath, GivesTheParts) {
    const SplitPath_cls split("/a.d/b.c/stem.x.JPG");
    EXPECT_EQ("/a.d/b.c/stem.x.JPG", split.GetPathStr(0));
    EXPECT_EQ("/a.d/b.c", split.GetPathStr(3));
    EXPECT_EQ("stem.x", split.GetPathStr(4));
    EXPECT_EQ("/a.d/b.c/stem.x", split.GetPathStr(7));
    EXPECT_EQ(".JPG", split.GetPathStr(8));
    EXPECT_EQ("stem.x.JPG", split.GetPathStr(12));
    EXPECT_EQ("", SplitPath_cls("/a.d/stem").mStrExt);
}
