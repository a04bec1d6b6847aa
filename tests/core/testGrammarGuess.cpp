// The guess at a file's grammar: right for the shipped sets, with reasons for what it can't read, and calm
// about anything else.
#include <fstream>
#include <iterator>
#include <random>

#include <dirent.h>
#include <sys/stat.h>

#include "ReaderTestTools.h"
#include "PDATA/GrammarGuess.h"

namespace {

const std::string kRoot = MORENTIS_TEST_ROOT;
using Codes = std::vector<int>;

GrammarGuess_st GuessAt(const std::string& path, const Codes& presentBody = {0, 1, 5, 6, 7, 8}) {
    const TestLoader_cls present(0, {0, 1}, presentBody);
    return GuessGrammar(wxString::FromUTF8(path.c_str()), present);
}

class GrammarGuess : public testing::Test {
protected:
    GrammarGuess_st Guess(const std::string& bytes, const Codes& presentBody = {0, 1, 5, 6, 7, 8}) {
        return GuessAt(mDir.Write("guess.dat", bytes), presentBody);
    }
    TempDir_cls mDir;
};

// The head and the positions that a grammar gives.
std::string ReadBy(const GrammarGuess_st& guess, const std::string& path) {
    const TestLoader_cls loader(guess.mDataType, guess.mHead, guess.mBody);
    const SnapshotHeader_st header = ReadSnapshotHeader(loader, wxString::FromUTF8(path.c_str()));
    const TestArrays_cls arrays(header.mNumber);
    ReadBody(loader, path, header.mNumber, arrays);
    return Pack(header.mTime, header.mNumber) + arrays.AllBytes();
}

std::string Cells(const GrammarGuess_st& guess, size_t record) {
    std::string text;
    for (const wxString& cell : guess.mRecords.at(record))
        text += (text.empty() ? "" : " ") + cell.utf8_string();
    return text;
}

void WalkFiles(const std::string& path, std::vector<std::string>* pFiles) {
    DIR* dir = opendir(path.c_str());
    if (!dir) return;
    for (const dirent* entry = readdir(dir); entry; entry = readdir(dir)) {
        const std::string name = path + "/" + entry->d_name;
        struct stat status;
        if (entry->d_name[0] == '.' || stat(name.c_str(), &status) != 0) continue;
        pFiles->push_back(name);
        if (S_ISDIR(status.st_mode)) WalkFiles(name, pFiles);
    }
    closedir(dir);
}

} // namespace

TEST_F(GrammarGuess, ReadsTheShippedSetsAsTheirGrammarDoes) {
    struct Case_st {
        const char* mpFile;
        int mDataType;
        Codes mHead, mBody, mPresent;
    };
    const Codes items{2, 0, 2, 1, 2, 3, 2}, usual{0, 1, 5, 6, 7, 8};
    const Case_st cases[] = {
        {"examples/lj_melt_text/melt0003.txt", 1, items, {6, 7, 0, 1, 8}, usual},
        {"examples/lj_unsorted_text/unsorted001.txt", 1, items, {0, 6, 7, 1, 8}, usual},
        {"examples/friction_text/friction0000.dump", 1, items, {6, 7, 0, 1, 8}, usual},
        {"examples/deposit_text/deposit0.txt", 1, items, {6, 7, 0, 1, 8}, usual},
        {"examples/public_pyscal_ni500/ni00.dump", 1, items, {6, 7, 8, 0, 1}, usual}, // the mass is a value
        {"examples/lj_melt_bin/melt0001.bin", 0, {0, 1}, usual, {6, 0, 2, 1, 8, 7}},
        {"examples/friction_bin_622187/friction98.bin", 0, {0, 1}, {6, 0, 2, 1, 8, 7}, {6, 0, 2, 1, 8, 7}},
        {"tests/data/small/pour_radius_text/pour02.txt", 1, items, {6, 7, 0, 1, 5, 8}, usual},
        {"tests/data/default_text/melt0001.txt", 1, {0, 1}, usual, usual},
        {"tests/data/default_text/melt0001.txt", 1, {0, 1}, usual, {6, 0, 2, 1, 8, 7}},
        {"tests/data/bad/lammps/extra_header_line/snap0000.txt",
         1,
         {2, 2, 2, 0, 2, 1, 2, 3, 2},
         {6, 7, 0, 1, 8},
         usual},
    };
    for (const Case_st& c : cases) {
        const std::string path = kRoot + "/" + c.mpFile;
        const GrammarGuess_st guess = GuessAt(path, c.mPresent);
        SCOPED_TRACE(path);
        ASSERT_TRUE(guess.mbFound) << guess.mStrProblem;
        EXPECT_FALSE(guess.mReasons.empty());
        EXPECT_EQ(3u, guess.mRecords.size());
        GrammarGuess_st right;
        right.mDataType = c.mDataType;
        right.mHead = c.mHead;
        right.mBody = c.mBody;
        EXPECT_EQ(c.mBody, guess.mBody);
        EXPECT_TRUE(ReadBy(right, path) == ReadBy(guess, path));
    }
}

TEST_F(GrammarGuess, FollowsTheNamesOfColumns) {
    const std::string head =
        "ITEM: TIMESTEP\n7\nITEM: NUMBER OF ATOMS\n1\nITEM: BOX BOUNDS pp pp\n0 1\n0 1\n0 1\nITEM: ATOMS ";
    const GrammarGuess_st many = Guess(
        head + "id mol type q c_pe[1] xu yu zu vx vy vz radius element\n1 4 2 .5 3 7 8 9 1 2 3 .25 C\n");
    EXPECT_TRUE(many.mbFound) << many.mStrProblem;
    EXPECT_EQ(Codes({6, 8, 7, 2, 2, 0, 1, 5}), many.mBody)
        << "the first scalar without a meaning is the value";
    EXPECT_EQ("ID=1 Value1=4 Type=2 Dummy=.5 Dummy=3 x=7 y=8 z=9 Vx=1 Vy=2 Vz=3 Radius=.25", Cells(many, 0));
    EXPECT_EQ("The positions (xs) are fractions of the box: scale them in the data loader.",
              Guess(head + "xs ys zs\n.1 .2 .3\n").mReasons.back());
    EXPECT_EQ(
        "No columns x, y and z stand side by side in this order, so the positions can't be read. The columns "
        "are: id x vx y vy z vz",
        Guess(head + "id x vx y vy z vz\n1 2 3 4 5 6 7\n").mStrProblem);
    EXPECT_EQ("The column \"element\" holds words and stands before the positions, so they can't be read.",
              Guess(head + "id element x y z\n1 C 4 5 6\n").mStrProblem);
    EXPECT_EQ(Codes({6, 0}), Guess(head + "id x y z element q\n1 4 5 6 C 7\n").mBody);
    EXPECT_EQ("The header has no \"ITEM: NUMBER OF ATOMS\" section, so the count is unknown.",
              Guess("ITEM: ATOMS x y z\n1 2 3\n").mStrProblem);
    EXPECT_FALSE(Guess("ITEM: TIMESTEP\n").mbFound);
}

TEST_F(GrammarGuess, PacksDummiesToSixteenItems) {
    std::string columns = "id", row = "1";
    for (int i = 0; i < 27; ++i) {
        columns += " f_" + std::to_string(i);
        row += " 5";
    }
    std::string box;
    for (int i = 0; i < 25; ++i)
        box += "0 1\n";
    const std::string text = "ITEM: TIMESTEP\n7\nITEM: NUMBER OF ATOMS\n1\nITEM: BOX BOUNDS\n" + box +
                             "ITEM: ATOMS " + columns + " x y z\n" + row + " 7 8 9\n";
    const GrammarGuess_st guess = Guess(text);
    ASSERT_TRUE(guess.mbFound) << guess.mStrProblem;
    EXPECT_EQ(Codes({6, 8, 4, 4, 3, 3, 0}), guess.mBody);
    EXPECT_EQ(Codes({2, 0, 2, 1, 4, 4, 3, 3, 2}), guess.mHead) << "27 dummies behind the count";
    const TestLoader_cls loader(1, guess.mHead, guess.mBody);
    TestArrays_cls arrays(1);
    ReadBody(loader, mDir.Name("guess.dat"), 1, arrays);
    EXPECT_EQ(9.0f, arrays->mpPos[0][2]);
}

// The reader goes down to Time and Number an item a line; beyond that all lines of the head count.
TEST_F(GrammarGuess, ReachesACountBehindComments) {
    const auto withComments = [](int number) {
        std::string text;
        for (int i = 0; i < number; ++i)
            text += "# remark " + std::to_string(i) + "\n";
        return text;
    };
    const std::string items =
        "ITEM: TIMESTEP\n250\nITEM: NUMBER OF ATOMS\n2\nITEM: BOX BOUNDS pp pp pp\n0 1\n0 1\n"
        "0 1\nITEM: ATOMS id x y z\n1 2 3 4\n2 5 6 7\n";
    const std::string plain = "0.5\nmore\n2\nand\nmore\nwords\n1 2.5 3.5 4.5\n2 5.5 6.5 7.5\n";
    struct Case_st {
        std::string mText;
        Codes mHead;
        double mTime;
    };
    const Case_st cases[] = {
        {withComments(3) + items, {2, 2, 2, 2, 0, 2, 1, 2, 2, 2, 2, 2}, 250},
        {withComments(8) + items, {2, 2, 2, 2, 2, 2, 2, 2, 2, 0, 2, 1, 3, 2, 2}, 250},
        {withComments(10) + items, {2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 0, 3, 1, 3}, 250},
        {withComments(11) + items, {2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 0, 3, 1, 3}, 250},
        {withComments(10) + plain, {2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 0, 2, 1, 2, 2, 2}, 0.5},
        {withComments(12) + plain, {2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 2, 0, 2, 1, 3}, 0.5}};
    for (const Case_st& c : cases) {
        const GrammarGuess_st guess = Guess(c.mText);
        SCOPED_TRACE(c.mText);
        ASSERT_TRUE(guess.mbFound) << guess.mStrProblem;
        EXPECT_EQ(c.mHead, guess.mHead);
        const TestLoader_cls loader(1, guess.mHead, guess.mBody);
        const SnapshotHeader_st header = ReadSnapshotHeader(loader, mDir.Name("guess.dat"));
        EXPECT_EQ(2, header.mNumber);
        EXPECT_EQ(c.mTime, header.mTime);
        TestArrays_cls arrays(2);
        ReadBody(loader, mDir.Name("guess.dat"), 2, arrays);
        EXPECT_NEAR(7.25f, arrays->mpPos[1][2], 0.25f) << "the body begins behind the head's last line";
    }
    EXPECT_EQ("The header or the lines have more items than the 16 that a format can hold.",
              Guess(withComments(12) + items).mStrProblem);
    EXPECT_EQ(
        "Time or particle count stands in line 17: a format can reach the first 16 lines. Take lines away "
        "before it.",
        Guess(withComments(13) + items).mStrProblem);
    EXPECT_TRUE(Guess(withComments(13) + items).mHead.empty());
}

TEST_F(GrammarGuess, TellsColumnsByWhatTheyHold) {
    std::string rows, xyz, flat;
    std::mt19937 random(5);
    const auto real = [&random] {
        return std::to_string(std::uniform_real_distribution<double>(-9, 9)(random));
    };
    for (int i = 1; i <= 50; ++i) {
        const std::string place = real() + " " + real() + " " + real();
        rows += std::to_string(i) + "\t" + std::to_string(i % 4) + " 17 " + place + " " + real() + " " +
                real() + " " + real() + " " + real() + "\n";
        xyz += "C " + place + "\n";
        flat += real() + " " + real() + " 0 0 0 0\n";
    }
    const GrammarGuess_st both = Guess("0.25\n50\n" + rows);
    EXPECT_EQ(Codes({0, 1}), both.mHead);
    EXPECT_EQ(Codes({6, 7, 2, 0, 1, 8}), both.mBody);
    EXPECT_EQ(Codes({1, 0}), Guess("50\n0.25\n" + rows).mHead);
    EXPECT_EQ(Codes({1, 2}), Guess("50 atoms\na comment\n" + rows).mHead);
    EXPECT_EQ(Codes({2, 2, 1}), Guess("# x\n\n50\n" + rows + "\n").mHead);
    EXPECT_EQ(Codes({1}), Guess("50\n" + rows + "50\n" + rows).mHead) << "two snapshots in one file";
    EXPECT_EQ(Codes({0, 1}), Guess("50\n\n" + flat).mBody);
    EXPECT_EQ(
        "Column 1 of the lines holds words (\"C\"): the reader takes numbers only, and the positions stand "
        "behind it.",
        Guess("50\ncomment\n" + xyz).mStrProblem);
    EXPECT_EQ("No line before the first particle tells how many particles there are.",
              Guess(rows).mStrProblem);
    EXPECT_FALSE(Guess("9\n0.5\n").mbFound);
}

TEST_F(GrammarGuess, FitsBinaryLengths) {
    const std::string records(3 * 16, '\1');
    const Codes body{0, 8};
    EXPECT_EQ(Codes({0, 1}), Guess(Pack(0.5f, 3) + records, body).mHead);
    EXPECT_EQ(Codes({1, 0}), Guess(Pack(3, 0.5f) + records, body).mHead);
    const GrammarGuess_st count = Guess(Pack(2, 1.0f, 2.0f, 3.0f, 0, 7.0f, 8.0f, 9.0f, -1), {0, 6});
    EXPECT_EQ(Codes({1}), count.mHead);
    EXPECT_EQ("x=7 y=8 z=9 ID=-1", Cells(count, 1));
    EXPECT_EQ("The file is binary, but no known layout gives its 57 bytes. By the present header it has 3 "
              "particles, and "
              "a record of the present format has 16 bytes.",
              Guess(Pack(0.5f, 3) + records + "\1", body).mStrProblem);
}

// Every shipped file and folder, truncated ones, and random bytes: an answer, and at most 16 items.
TEST_F(GrammarGuess, SurvivesAnyFile) {
    std::vector<std::string> files;
    WalkFiles(kRoot + "/tests/data", &files);
    ASSERT_GT(files.size(), 100u);
    std::mt19937 random(3);
    for (const std::string& file : files) {
        const GrammarGuess_st whole = GuessAt(file);
        EXPECT_EQ(whole.mbFound, whole.mStrProblem.empty()) << file;
        EXPECT_TRUE(whole.mHead.size() <= 16 && whole.mBody.size() <= 16) << file;
        struct stat status;
        if (stat(file.c_str(), &status) != 0 || S_ISDIR(status.st_mode)) continue;
        std::ifstream stream(file, std::ios::binary);
        std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        if (bytes.empty()) continue;
        for (int round = 0; round < 3; ++round) {
            Guess(bytes.substr(0, random() % bytes.size()));
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        Guess(bytes);
    }
    // Next to the smallest integer there is nothing to count down to.
    Guess("4\n5 1 2 3\n-9223372036854775808 1 2 3\n9223372036854775807 1 2 3\n7 1 2 3\n");
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(random() % 300, ' ');
        static const char sText[] = "0123456789 \n\n\t.-+eITEM: ATOMSxyz";
        for (char& c : bytes)
            c = round % 2 ? static_cast<char>(random()) : sText[random() % (sizeof sText - 1)];
        if (round % 3 == 0) bytes = "ITEM: " + bytes;
        const GrammarGuess_st guess = Guess(bytes);
        EXPECT_EQ(guess.mbFound, guess.mStrProblem.empty());
    }
}
