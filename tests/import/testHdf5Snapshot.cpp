// HDF5 snapshots that the tests write with the library itself.
#include <cstring>

#include <gtest/gtest.h>

#include "Hdf5Writer.h"
#include "RunImport.h"

namespace {

using Floats = std::vector<float>;
using Ints = std::vector<int>;

} // namespace

TEST(ImportHdf5, FloatsKeepTheirBitsAndDoublesAreRoundedOnce) {
    const ImportFolder_st folder;
    float odd = 0; // not a number, with bits of its own
    const unsigned bits = 0x7fc0dead;
    std::memcpy(&odd, &bits, 4);
    const double between = 1.0 + 0x1.000001p-24; // just above the middle of two floats
    {
        Hdf5Writer_cls file(folder / "s.hdf5");
        file.Header({2, 1, 0, 0, 0, 1}, {2, 1, 0, 0, 0, 1}, 1);
        for (const char* group : {"PartType0", "PartType1", "PartType5"})
            file.Group(group);
        file.Data("PartType0/Coordinates", H5T_NATIVE_FLOAT, H5T_NATIVE_FLOAT, 3,
                  Floats{1, odd, 1e-45f, 4, 5, 6});
        file.Data("PartType1/Coordinates", H5T_NATIVE_DOUBLE, H5T_IEEE_F64BE, 3,
                  std::vector<double>{between, 0.1, 1e300});
        file.Data("PartType5/Coordinates", H5T_NATIVE_FLOAT, H5T_IEEE_F32BE, 3, Floats{7, 7.5f, 0});
        file.Data("PartType0/Velocities", H5T_NATIVE_FLOAT, H5T_NATIVE_FLOAT, 3, Floats{1, 2, 3, 4, 5, 6});
        file.Data("PartType0/Density", H5T_NATIVE_FLOAT, H5T_NATIVE_FLOAT, 1, Floats{10, 20});
        file.Data("PartType0/InternalEnergy", H5T_NATIVE_FLOAT, H5T_NATIVE_FLOAT, 1, Floats{3, 4});
        file.Data("PartType0/ParticleIDs", H5T_NATIVE_ULLONG, H5T_STD_U64LE, 1,
                  std::vector<unsigned long long>{5, ~0ull});
        file.Data("PartType1/ParticleIDs", H5T_NATIVE_UINT, H5T_STD_U32BE, 1, std::vector<unsigned>{6});
        file.Data("PartType5/ParticleIDs", H5T_NATIVE_ULLONG, H5T_STD_U64LE, 1,
                  std::vector<unsigned long long>{~1ull});
    }
    const ImportRunResult_st run = folder.Run({folder / "s.hdf5"});
    ASSERT_EQ(run.mStatus, 0) << run.mErr;
    const ReadSnapshot_st snap = folder.ReadSnapshot(0);
    ASSERT_EQ(snap.mPos.size(), 12u);
    // By their IDs: the last one of type 0, and that of type 5, are long ones.
    EXPECT_EQ(snap.mID, (Ints{-2, -1, 5, 6}));
    EXPECT_EQ(snap.mPos[1], 7.5f);
    EXPECT_EQ(snap.mPos[3], 4.0f);
    EXPECT_EQ(std::memcmp(&snap.mPos[7], &bits, 4), 0);
    EXPECT_EQ(snap.mPos[8], 1e-45f);
    EXPECT_EQ(snap.mPos[9], 1.00000011920928955f);
    EXPECT_EQ(snap.mPos[10], 0.1f);
    EXPECT_EQ(snap.mPos[11], HUGE_VALF);
    EXPECT_EQ(snap.mTime, 0.1f);
    EXPECT_EQ(snap.mVel, (Floats{0, 0, 0, 4, 5, 6, 1, 2, 3, 0, 0, 0}));
    EXPECT_EQ(snap.mValue, (Floats{0, 20, 10, 0}));
    EXPECT_EQ(snap.mType, (Ints{3, 0, 0, 1}));
    EXPECT_EQ(folder.ReadProject()["PeriodicType"], "2");
}

TEST(ImportHdf5, PartsMakeOneSnapshotAndWrongCountsAreTold) {
    const ImportFolder_st folder;
    for (int part = 0; part < 2; ++part) {
        Hdf5Writer_cls file(folder / ("snap_005." + std::to_string(part) + ".hdf5"));
        file.Header({0, 1 + part, 0, 0, 0, 0}, {0, 3, 0, 0, 0, 0}, 2);
        file.Group("PartType1");
        file.Data("PartType1/Coordinates", H5T_NATIVE_FLOAT, H5T_NATIVE_FLOAT, 3,
                  part == 0 ? Floats{-1, 2, 3} : Floats{4, 5, 60, 7, 8, 9});
    }
    {
        Hdf5Writer_cls file(folder / "wrong.hdf5");
        file.Header({3, 0, 0, 0, 0, 0}, {3, 0, 0, 0, 0, 0}, 1);
        file.Group("PartType0");
        file.Data("PartType0/Coordinates", H5T_NATIVE_FLOAT, H5T_NATIVE_FLOAT, 3, Floats{1, 2, 3});
    }
    { Hdf5Writer_cls(folder / "x.hdf5").Group("Elsewhere"); }
    { // 10^8 rows that were never written
        Hdf5Writer_cls file(folder / "huge.hdf5");
        file.Header({100000000, 0, 0, 0, 0, 0}, {100000000, 0, 0, 0, 0, 0}, 1);
        file.Group("PartType0");
        file.Huge("PartType0/Coordinates", 100000000);
    }
    const std::string cut = ReadBytes(folder / "wrong.hdf5");
    folder.Write("cut.hdf5", cut.substr(0, cut.size() / 2));
    const ImportRunResult_st run =
        folder.Run({folder / "snap_005.1.hdf5", folder / "snap_005.0.hdf5", folder / "wrong.hdf5",
                    folder / "x.hdf5", folder / "cut.hdf5", folder / "huge.hdf5"});
    EXPECT_LT(run.mPeakKB, 200000);
    EXPECT_EQ(run.mStatus, 3);
    ASSERT_EQ(folder.CountSnapshots(), 1) << run.mErr;
    EXPECT_EQ(folder.ReadSnapshot(0).mPos, (Floats{-1, 2, 3, 4, 5, 60, 7, 8, 9}));
    EXPECT_EQ(folder.ReadProject()["PeriodicType"], "0") << "particles lie far out of the box";
    for (const char* reason : {"wrong.hdf5: PartType0/Coordinates should have 3 x 3 numbers",
                               "x.hdf5: the group Header is missing", "Coordinates was never written",
                               "cut.hdf5: can't be opened as HDF5"})
        EXPECT_NE(run.mErr.find(reason), std::string::npos) << run.mErr;
}

TEST(ImportHdf5, MassesOfTypesWithoutADatasetStandInTheHeader) {
    const ImportFolder_st folder;
    {
        Hdf5Writer_cls file(folder / "s.hdf5");
        file.Header({1, 2, 0, 0, 0, 0}, {1, 2, 0, 0, 0, 0}, 1);
        file.Attribute("MassTable", H5T_NATIVE_DOUBLE, std::vector<double>{9, 0.1, 0, 0, 0, 0});
        file.Data("PartType0/Coordinates", H5T_NATIVE_FLOAT, {1, 3}, Floats{1, 2, 3});
        file.Data("PartType0/Masses", H5T_NATIVE_FLOAT, {1}, Floats{7});
        file.Data("PartType1/Coordinates", H5T_NATIVE_FLOAT, {2, 3}, Floats{1, 2, 3, 4, 5, 6});
    }
    ASSERT_EQ(folder.Run({folder / "s.hdf5"}).mStatus, 0);
    EXPECT_EQ(folder.ReadSnapshot(0).mValue, (Floats{7, 0.1f, 0.1f}));
}
