// Dumps, XYZ files and tables: what every column becomes, to the last bit.
#include <sys/stat.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <random>

#include <gtest/gtest.h>

#include "RunImport.h"

namespace {

using Floats = std::vector<float>;
using Ints = std::vector<int>;

std::string Dump(const std::string& step, const std::string& box, const std::string& columns,
                 const std::vector<std::string>& rows) {
    std::string text = "ITEM: TIMESTEP\n" + step + "\nITEM: NUMBER OF ATOMS\n" + std::to_string(rows.size()) +
                       "\nITEM: BOX BOUNDS " + box + "\nITEM: ATOMS " + columns + "\n";
    for (const std::string& row : rows)
        text += row + "\n";
    return text;
}

const std::string kCube = "pp pp pp\n0 10\n0 10\n0 10";

} // namespace

TEST(ImportDump, ManyStepsAndFilesInTheirOrder) {
    const ImportFolder_st folder;
    const std::string two = Dump("100", kCube, "id type x y z vx vy vz c_pe",
                                 {"7 1 1.5 2 3 .1 .2 .3 -4", "5 6 4 5 6 0 0 1e-3 -40"}) +
                            Dump("200", kCube, "id type x y z vx vy vz c_pe", {"5 2 4 5 6 0 0 0 -3"});
    const std::string second =
        folder.Write("run.20.gz", Gzip(Dump("0", kCube, "id type x y z vx vy vz c_pe", {})));
    const std::string first = folder.Write("run.3", two);
    const ImportRunResult_st run = folder.Run({second, first});
    ASSERT_EQ(run.mStatus, 0) << run.mErr;
    ASSERT_EQ(folder.CountSnapshots(), 3);
    const ReadSnapshot_st snap = folder.ReadSnapshot(0);
    EXPECT_EQ(snap.mTime, 100.0f);
    EXPECT_EQ(snap.mID, (Ints{5, 7})) << "in the order of IDs, with all columns";
    EXPECT_EQ(snap.mPos, (Floats{4, 5, 6, 1.5f, 2, 3}));
    EXPECT_EQ(snap.mVel, (Floats{0, 0, 1e-3f, .1f, .2f, .3f}));
    EXPECT_EQ(snap.mType, (Ints{3, 0})) << "types count from 1, and there are four";
    EXPECT_EQ(snap.mValue, (Floats{-40, -4}));
    EXPECT_EQ(folder.ReadSnapshot(1).mType, Ints{1});
    EXPECT_EQ(folder.ReadSnapshot(2).mTime, 0.0f);
    auto project = folder.ReadProject();
    EXPECT_EQ(project["VariableNumber"], "1");
    EXPECT_EQ(project["PeriodicType"], "2");
    EXPECT_EQ(project["PeriodicBaseVector0"], "1.8 0 0");
    EXPECT_EQ(project["LoaderScale"], "0.18");
    EXPECT_EQ(project["LoaderTranslate"], "-5 -5 -5");
    EXPECT_EQ(project["TimeWorkAreaMax"], "2");
    EXPECT_EQ(project["SEQ0TYPE2ColScalingMin"], "-40");
}

// The window's own sorting moves positions and IDs alone, so it is never asked for.
TEST(ImportDump, ParticlesStandByTheirIDsWhateverTheDumpsOrder) {
    const std::string columns = "id type x y z";
    // The same, another one, and one twice, which no way of telling particles by their IDs fits.
    const std::pair<std::string, std::string> cases[] = {
        {"3 2 3 3 3", "0"}, {"4 2 3 3 3", "1"}, {"2 2 3 3 3", "0"}};
    for (const auto& [third, number] : cases) {
        const ImportFolder_st folder;
        const std::string text = Dump("1", kCube, columns, {"3 2 3 3 3", "1 1 1 1 1", "2 3 2 2 2"}) +
                                 Dump("2", kCube, columns, {"2 3 2 2 2", third, "1 1 1 1 1"});
        ASSERT_EQ(folder.Run({folder.Write("a", text)}).mStatus, 0);
        EXPECT_EQ(folder.ReadProject()["VariableNumber"], number) << third;
        EXPECT_EQ(folder.ReadSnapshot(0).mType, (Ints{0, 2, 1}));
        EXPECT_EQ(folder.ReadSnapshot(1).mType, (Ints{0, 2, 1}));
    }
}

TEST(ImportDump, HeadsThatBeginAnewAndWiresAndMixedPositions) {
    const ImportFolder_st folder;
    const std::string cut = "ITEM: TIMESTEP\n100\nITEM: NUMBER OF ATOMS\n7\n";
    const std::string file =
        folder.Write("a", cut + Dump("200", "ff ff pp\n0 10\n0 10\n0 10", "xs ys zs h", {".1 .1 .1 7"}));
    ASSERT_EQ(folder.Run({file}).mStatus, 0);
    EXPECT_EQ(folder.ReadSnapshot(0).mTime, 200.0f);
    EXPECT_EQ(folder.ReadProject()["PeriodicType"], "0");
    const ImportRunResult_st mixed = folder.Run({file, "--columns", "z=h"}, 0, folder / "mixed");
    EXPECT_NE(mixed.mErr.find("some of the positions are scaled"), std::string::npos) << mixed.mErr;
}

TEST(ImportDump, ScaledPositionsInTiltedBoxes) {
    const ImportFolder_st folder;
    // Lower corner (1, 2, 3), edges (10, 0, 0), (2, 8, 0), (-1, 1, 4).
    const std::string file = folder.Write("a.dump", Dump("0", "xy xz yz pp pp ff\n0 13 2\n2 11 -1\n3 7 1",
                                                         "zs xs ys id", {"0.5 0.25 0.5 1", "0 0 0 2"}));
    ASSERT_EQ(folder.Run({file}).mStatus, 0);
    EXPECT_EQ(folder.ReadSnapshot(0).mPos, (Floats{4, 6.5f, 5, 1, 2, 3}));
    EXPECT_EQ(folder.ReadProject()["PeriodicType"], "1");
}

TEST(ImportXyz, FramesWithLatticeWordsAndPlainOnes) {
    const ImportFolder_st folder;
    const std::string extended = folder.Write(
        "a1.xyz",
        "2\nLattice=\"4 0 0 0 4 0 0 0 4\" Properties=species:S:1:pos:R:3:velo:R:3:energy:R:1 Time=2.5 "
        "pbc=\"T T F\"\nH 1 2 3 4 5 6 7\nO -1 0 1D0 0 0 0 8\n");
    const std::string plain = folder.Write("a2.xyz", "1\nwater\nO 1 1 1\n\n1\n\nC 2 2 2");
    ASSERT_EQ(folder.Run({extended, plain}).mStatus, 0);
    ASSERT_EQ(folder.CountSnapshots(), 3);
    const ReadSnapshot_st snap = folder.ReadSnapshot(0);
    EXPECT_EQ(snap.mTime, 2.5f);
    EXPECT_EQ(snap.mPos, (Floats{1, 2, 3, -1, 0, 1}));
    EXPECT_EQ(snap.mVel, (Floats{4, 5, 6, 0, 0, 0}));
    EXPECT_EQ(snap.mType, (Ints{0, 1}));
    EXPECT_EQ(snap.mValue, (Floats{7, 8}));
    EXPECT_EQ(folder.ReadSnapshot(1).mType, Ints{1}) << "a word is the same type in all files";
    EXPECT_EQ(folder.ReadSnapshot(2).mType, Ints{2});
    EXPECT_EQ(folder.ReadProject()["PeriodicType"], "1");
}

TEST(ImportCsv, ColumnsByNameChoiceAndTime) {
    const ImportFolder_st folder;
    const std::string file = folder.Write(
        "t.csv", "\"time\";Name;X;Y;Z;rho;mine;ID\r\n"
                 "0;a;1;2;3;10;5;4294967296\r\n0;b;4;5;6;20;6;7\r\n0.5;a;1;2;4;30;7;4294967296\r\n");
    ASSERT_EQ(folder.Run({file, "--columns", "value=mine,type=Name"}).mStatus, 0);
    ASSERT_EQ(folder.CountSnapshots(), 2);
    EXPECT_EQ(folder.ReadSnapshot(0).mValue, (Floats{5, 6}));
    EXPECT_EQ(folder.ReadSnapshot(0).mType, (Ints{0, 1}));
    EXPECT_EQ(folder.ReadSnapshot(0).mID, (Ints{-1, 7})) << "a long ID becomes a short one";
    EXPECT_EQ(folder.ReadSnapshot(1).mID, Ints{-1}) << "the same in all snapshots";
    EXPECT_EQ(folder.ReadSnapshot(1).mTime, 0.5f);
}

TEST(ImportCsv, OneFileByTwoNamesIsReadOnceAndLinksAreFollowed) {
    const ImportFolder_st folder;
    const std::string file = folder.Write("t.csv", "x,y,z\n1,2,3\n");
    folder.Write("real/t.csv", "x,y,z\n4,5,6\n");
    folder.Write("real/deep/empty", "");
    std::filesystem::create_directory_symlink(folder / "real/deep", folder / "link");
    ASSERT_EQ(folder.Run({file, folder / "./t.csv"}).mStatus, 0);
    EXPECT_EQ(folder.CountSnapshots(), 1);
    ASSERT_EQ(folder.Run({folder / "link/../t.csv"}, 0, folder / "behind").mStatus, 0);
    EXPECT_NE(ReadBytes(folder / "behind/snap0000.bin"), ReadBytes(folder / "out/snap0000.bin"));
}

// A number between two floats that a double in between would round the wrong way, among thousands.
TEST(ImportText, NumbersAreRoundedOnce) {
    const ImportFolder_st folder;
    std::mt19937 random(5);
    std::string text = "x,y,z\n1.00000017881393432617187499,3.4028235e38,1e-45\n1e-60,nan,-inf\n";
    Floats expected = {1.00000011920928955f, 3.4028235e38f, 1e-45f, 0, NAN, -INFINITY};
    for (int i = 0; i < 3000; ++i) {
        const double value = std::ldexp(double(random()) - 2e9, int(random() % 100) - 60);
        char word[60];
        std::snprintf(word, sizeof word, "%.*g", 6 + i % 12, value);
        text += std::string(word) + (i % 3 == 2 ? "\n" : ",");
        expected.push_back(std::strtof(word, nullptr));
    }
    ASSERT_EQ(folder.Run({folder.Write("n.csv", text)}).mStatus, 0);
    const ReadSnapshot_st snap = folder.ReadSnapshot(0);
    ASSERT_EQ(snap.mPos.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_TRUE(std::isnan(expected[i]) ? std::isnan(snap.mPos[i]) : snap.mPos[i] == expected[i]) << i;
}

TEST(ImportText, DamageCostsTheRestOfItsFileAlone) {
    const std::string good = Dump("1", kCube, "id x y z", {"1 1 1 1", "2 2 2 2"});
    const std::pair<std::string, std::string> cases[] = {
        {good.substr(0, good.size() - 2), "the file ends after 1 of 2 atoms"},
        {Dump("1", kCube, "id x y z", {"1 1"}), "has 2 of 4 columns"},
        {Dump("1", kCube, "id x y z", {"1 1 one 1"}), "\"one\" in column y is no number"},
        {Dump("1", kCube, "id a b c", {"1 1 1 1"}), "no columns with positions"},
        {"ITEM: TIMESTEP\n0\nITEM: NUMBER OF ATOMS\n2000000000\nITEM: ATOMS id x y z\n1 1 1 1\n",
         "more than the file can hold"},
        {"ITEM: TIMESTEP\n0\nITEM: NUMBER OF ATOMS\n", "the number of atoms should stand"},
        {Gzip(good).substr(0, 60), "cut off"},
        {"2\nno frame\nH 1 1 1\n", "the file ends after 1 of 2 atoms"},
        {"x,y,z\n1,2\n", "has 2 columns, the header 3"},
        {"", "no known format"},
        {"x,y,z\n1,2," + std::string(200000, 'd') + "\n", "in column z is no number"},
        {"1\nProperties=pos:R:3:a:R:900:b:R:900\n0 0 0\n", "can't be read"},
        {"xs,ys,zs\n0,0,0\n", "there is no box"},
        {Dump("1", "pp pp pp\n-inf inf\n0 1\n0 1", "id x y z", {"1 1 1 1"}), "is no line of a box"},
    };
    for (const auto& [bad, reason] : cases) {
        const ImportFolder_st folder;
        const std::string name = folder.Write("b1", good);
        const ImportRunResult_st run = folder.Run({name, folder.Write("b2", bad), folder.Write("b3", good)});
        EXPECT_EQ(run.mStatus, 3) << run.mErr;
        EXPECT_NE(run.mErr.find(reason), std::string::npos) << run.mErr;
        EXPECT_NE(run.mErr.find("b2"), std::string::npos) << run.mErr;
        EXPECT_EQ(folder.CountSnapshots(), 2);
        EXPECT_EQ(folder.ReadSnapshot(1).mID, (Ints{1, 2}));
    }
}

// What came before the cut is good; a pipe is told, not waited for.
TEST(ImportText, CutFilesGiveWhatTheyHaveAndPipesNothing) {
    const ImportFolder_st folder;
    std::string frames;
    std::mt19937 random(3);
    for (int i = 0; i < 40; ++i)
        frames += Dump(std::to_string(i), kCube, "id x y z", {"1 1 " + std::to_string(random()) + " 1"});
    const std::string packed = Gzip(frames);
    const std::string pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const ImportRunResult_st run =
        folder.Run({folder.Write("a.gz", packed.substr(0, packed.size() - 20)), pipe});
    EXPECT_EQ(run.mStatus, 3);
    EXPECT_GE(folder.CountSnapshots(), 38) << run.mErr;
    EXPECT_NE(run.mErr.find("is no plain file"), std::string::npos) << run.mErr;
}
