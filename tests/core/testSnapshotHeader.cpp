// Heads of snapshots: what is read, what is refused and with which words.
#include <cmath>
#include <cstring>

#include "PDATA/LayoutFit.h"
#include "ReaderTestTools.h"

namespace {

class SnapshotHeader : public testing::Test {
protected:
    SnapshotHeader_st Read(int dataType, const std::vector<int>& head, const std::string& bytes) {
        return At(dataType, head, mDir.Write("head.dat", bytes));
    }
    SnapshotHeader_st At(int dataType, const std::vector<int>& head, const std::string& path) {
        mPath = path;
        testing::internal::CaptureStdout();
        const TestLoader_cls loader(dataType, head, {0});
        const SnapshotHeader_st header = ReadSnapshotHeader(loader, wxString::FromUTF8(path.c_str()));
        mWords = testing::internal::GetCapturedStdout();
        EXPECT_EQ(header.mbOk, header.mStrError.empty());
        return header;
    }
    // The message without the file's name, which must stand before it.
    std::string Error(const SnapshotHeader_st& header) const {
        const std::string text = header.mStrError.utf8_string();
        EXPECT_EQ(0u, text.find(mPath + "\n")) << text;
        return text.substr(std::min(text.size(), mPath.size() + 1));
    }
    TempDir_cls mDir;
    std::string mPath;
    std::string mWords; ///< on standard output
};

} // namespace

TEST_F(SnapshotHeader, ReadsBinaryItemsInOrder) {
    const std::string skip(12, 's');
    const SnapshotHeader_st header = Read(0, {3, 1, 2, 0, 4}, skip + Pack(7, 9, 2.5f) + std::string(40, 's'));
    EXPECT_TRUE(header.mbOk && header.mbHasTime);
    EXPECT_EQ(7, header.mNumber);
    EXPECT_EQ(2.5, header.mTime);
    const SnapshotHeader_st twice = Read(0, {1, 1, 55}, Pack(3, 2));
    EXPECT_TRUE(twice.mbOk && !twice.mbHasTime);
    EXPECT_EQ(2, twice.mNumber) << "the last one counts, unknown codes take no bytes";
    EXPECT_TRUE(std::isnan(Read(0, {0, 1}, Pack(NAN, 0)).mTime));
}

TEST_F(SnapshotHeader, ReadsOneTextLineAnItem) {
    const std::string lammps =
        "ITEM: TIMESTEP\n500\nITEM: NUMBER OF ATOMS\n20\nITEM: BOX BOUNDS pp pp pp\n0 1\n0 1\n0 1\n"
        "ITEM: ATOMS id type x y z\n";
    const SnapshotHeader_st header = Read(1, {2, 0, 2, 1, 2, 3, 2}, lammps);
    EXPECT_TRUE(header.mbOk);
    EXPECT_EQ(500.0, header.mTime);
    EXPECT_EQ(20, header.mNumber);
    EXPECT_EQ(3, Read(1, {3, 1}, "a\n3 atoms\n4\n5\n").mNumber) << "a Dummy*3 counts one line here";
    EXPECT_EQ(1, Read(1, {1, 0}, "1e2\nword\n").mNumber);
    EXPECT_EQ(-3.5e-2, Read(1, {1, 0}, " 2\r\n -3.5e-2 s").mTime);
}

TEST_F(SnapshotHeader, CutsLongTextLinesIntoPieces) {
    // 254 characters go to the first item, the rest of the line to the second.
    const std::string line = std::string(254, ' ') + "12 \n77\n0123456789";
    EXPECT_EQ(12, Read(1, {2, 1}, line).mNumber);
    EXPECT_EQ(12, Read(1, {0, 1}, std::string(253, ' ') + "\n12" + line).mNumber)
        << "253 and the line end fit";
    EXPECT_EQ("There is no particle count in line 1 of the file. Check the header format in the data loader.",
              Error(Read(1, {1, 2}, line)));
}

TEST_F(SnapshotHeader, RefusesCountsThatTheFileCannotHold) {
    const char* const end = "Check data type and header format in the data loader.";
    EXPECT_EQ(std::string("The header says -1 particles, but the file has 8 bytes. ") + end,
              Error(Read(0, {0, 1}, Pack(0.0f, -1))));
    EXPECT_EQ(std::string("The header says 9 particles, but the file has 8 bytes. ") + end,
              Error(Read(0, {0, 1}, Pack(0.0f, 9))));
    EXPECT_TRUE(Read(0, {0, 1}, Pack(0.0f, 8)).mbOk);
    EXPECT_EQ(std::string("The header says 99999999999 particles, but the file has 14 bytes. ") + end,
              Error(Read(1, {0, 1}, "0\n99999999999\n")));
    EXPECT_EQ("There is no particle count in line 2 of the file. Check the header format in the data loader.",
              Error(Read(1, {0, 1}, "0\nmany\n")));
    EXPECT_EQ(
        "The header format has no \"Number\", so the particle count is unknown. Add it in the data loader.",
        Error(Read(0, {0, 2}, Pack(0.0f, 9))));
    EXPECT_EQ(0, Read(0, {}, "x").mNumber);
}

TEST_F(SnapshotHeader, TellsWhyAFileCannotBeUsed) {
    EXPECT_EQ("The file is empty.", Error(Read(0, {0, 1}, "")));
    EXPECT_EQ("The file is empty.", Error(Read(1, {0, 1}, "")));
    EXPECT_EQ("The file ends within its header (it has 6 bytes). Check the header format in the data loader.",
              Error(Read(0, {0, 1}, "123456")));
    EXPECT_EQ("The file ends within its header (it has 4 bytes). Check the header format in the data loader.",
              Error(Read(1, {0, 1, 2}, "1\n2\n")));
    EXPECT_EQ("", mWords);
    EXPECT_EQ("The file can't be opened: No such file or directory.",
              Error(At(0, {0, 1}, mDir.Name("gone"))));
    EXPECT_EQ("Read Header Fails!!\n", mWords);
    EXPECT_EQ("This is a directory and not a snapshot file.", Error(At(1, {0, 1}, testing::TempDir())));
    EXPECT_EQ("Load Header Ascii Error\n", mWords);
}

// Offsets and products of counts past 31 and 32 bits, on a file of holes.
TEST_F(SnapshotHeader, WorksBeyondTwoGigabytes) {
    const std::string path = mDir.Write("big.bin", Pack(1.0f, 60000000));
    ASSERT_EQ(0, truncate(path.c_str(), 8 + 40LL * 60000000));
    const SnapshotHeader_st header = At(0, {0, 1}, path);
    EXPECT_TRUE(header.mbOk);
    EXPECT_EQ(60000000, header.mNumber);

    // A record of 400 bytes puts the last particle at 24 GB.
    const std::vector<int> body{0, 4, 4, 4, 4, 4, 4, 4, 4, 4, 3, 3, 2};
    const TestLoader_cls loader(0, {0, 1}, body);
    const off_t record = loader.GetRecordByte();
    ASSERT_EQ(0, truncate(path.c_str(), 8 + record * 60000000));
    FILE* file = fopen(path.c_str(), "r+b");
    ASSERT_EQ(0, fseeko(file, 8 + record * 59999999, SEEK_SET));
    const std::string last = Pack(7.0f, 8.0f, 9.0f);
    ASSERT_EQ(last.size(), fwrite(last.data(), 1, last.size(), file));
    fclose(file);
    // Read only the end of it: a head that takes all records but the last three.
    SnapshotBody_st job =
        MakeSnapshotBody(loader, wxString::FromUTF8(path.c_str()), 3, ParticleArrays_st(), true);
    TestArrays_cls arrays(3);
    job.mArrays = arrays.mArrays;
    job.mHeaderBytes = 8 + record * 59999997;
    ReadSnapshotBody(job);
    EXPECT_EQ(0.0f, arrays->mpPos[1][2]);
    EXPECT_EQ(9.0f, arrays->mpPos[2][2]);
}

TEST_F(SnapshotHeader, LayoutsThatFitAFile) {
    const auto fits = [this](int dataType, const std::vector<int>& body, const std::string& bytes) {
        testing::internal::CaptureStdout();
        const TestLoader_cls loader(dataType, {1}, body);
        const bool bFits = FitsLayout(loader, wxString::FromUTF8(mDir.Write("fit.dat", bytes).c_str()));
        testing::internal::GetCapturedStdout();
        return bFits;
    };
    const std::string two = Pack(2, 1.0f, 2.0f, 3.0f, 4.0f, 5.0f, 6.0f);
    EXPECT_TRUE(fits(0, {0}, two));
    EXPECT_FALSE(fits(0, {0}, two + "rest")) << "a word more a record would be another layout";
    EXPECT_FALSE(fits(0, {0, 5}, two)) << "cut off";
    EXPECT_TRUE(fits(0, {0}, Pack(0)));
    EXPECT_FALSE(fits(0, {0}, ""));
    EXPECT_TRUE(fits(1, {2, 0}, "1\nHe 1 2e0 nan 7\r\n"));
    EXPECT_TRUE(fits(1, {0}, "1\n1 2 3")) << "no line end behind the last record";
    EXPECT_FALSE(fits(1, {0}, "1\nHe 1 2 3\n"));
    EXPECT_FALSE(fits(1, {0}, "1\n1 2,5 3\n"));
    EXPECT_FALSE(fits(1, {0, 5}, "1\n1 2 3\n"));
    EXPECT_FALSE(fits(1, {0}, "ITEM: TIMESTEP\n1 2 3\n"));
    EXPECT_TRUE(fits(1, {0}, "0\n"));
    const TestLoader_cls loader(0, {1}, {0});
    EXPECT_FALSE(FitsLayout(loader, "/nowhere/at.all"));
}
