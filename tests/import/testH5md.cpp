// Trajectories of the H5MD layout.
#include <algorithm>
#include <array>
#include <functional>

#include <gtest/gtest.h>

#include "Hdf5Writer.h"
#include "RunImport.h"

namespace {

using Floats = std::vector<float>;
using Doubles = std::vector<double>;
using Ints = std::vector<int>;

/// Words of a fixed length.
void Boundary(Hdf5Writer_cls* pFile, const std::string& box, const std::vector<std::string>& words) {
    const hid_t type = H5Tcopy(H5T_C_S1);
    H5Tset_size(type, 9);
    std::vector<std::array<char, 9>> all(words.size());
    for (size_t k = 0; k < words.size(); ++k)
        std::copy_n(words[k].c_str(), words[k].size() + 1, all[k].data());
    pFile->Attribute("boundary", type, all, box);
    H5Tclose(type);
}

void Steps(Hdf5Writer_cls* pFile, const std::string& element, const std::vector<long long>& steps) {
    pFile->Data(element + "/step", H5T_NATIVE_LLONG, {steps.size()}, steps);
}

} // namespace

// Positions each step, velocities every second one, masses and kinds once; the box grows.
TEST(ImportH5md, ElementsHaveStepsOfTheirOwn) {
    const ImportFolder_st folder;
    {
        Hdf5Writer_cls file(folder / "t.h5");
        file.Group("h5md");
        const std::string all = "particles/all/";
        file.Data(all + "position/value", H5T_NATIVE_DOUBLE, {3, 2, 3},
                  Doubles{0.1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 1, 1});
        Steps(&file, all + "position", {10, 20, 30});
        file.Data(all + "position/time", H5T_NATIVE_DOUBLE, {}, Doubles{0.5});
        file.Attribute("offset", H5T_NATIVE_DOUBLE, Doubles{2.0}, all + "position/time");
        file.Data(all + "velocity/value", H5T_NATIVE_FLOAT, {2, 2, 3},
                  Floats{1, 2, 3, 4, 5, 6, -1, -2, -3, -4, -5, -6});
        Steps(&file, all + "velocity", {10, 30});
        file.Data(all + "mass", H5T_NATIVE_FLOAT, {2}, Floats{0.25f, 0.75f});
        const hid_t kinds = H5Tenum_create(H5T_NATIVE_INT);
        for (int i = 0; i < 3; ++i)
            H5Tenum_insert(kinds, ("k" + std::to_string(i)).c_str(), &i);
        file.Data(all + "species", kinds, {2}, Ints{2, 0});
        H5Tclose(kinds);
        file.Data(all + "id/value", H5T_NATIVE_INT, {3, 2}, Ints{7, 5, 7, 5, 5, 7});
        file.Link("particles/all/position/step", "particles/all/id/step");
        file.Data(all + "box/edges/value", H5T_NATIVE_DOUBLE, {3, 3},
                  Doubles{9, 9, 9, 10, 10, 10, 10, 10, 11});
        file.Link("particles/all/position/step", "particles/all/box/edges/step");
        Boundary(&file, "particles/all/box", {"periodic", "periodic", "none"});
        // A part of "all", which would come twice.
        file.Data("particles/some/position", H5T_NATIVE_FLOAT, {1, 3}, Floats{1, 2, 3});
    }
    const ImportRunResult_st run = folder.Run({folder / "t.h5"});
    ASSERT_EQ(run.mStatus, 0) << run.mErr;
    ASSERT_EQ(folder.CountSnapshots(), 3);
    const ReadSnapshot_st first = folder.ReadSnapshot(0);
    EXPECT_EQ(first.mTime, 2.0f);
    EXPECT_EQ(first.mPos, (Floats{4, 5, 6, 0.1f, 2, 3}));
    EXPECT_EQ(first.mVel, (Floats{4, 5, 6, 1, 2, 3}));
    EXPECT_EQ(first.mType, (Ints{0, 2}));
    EXPECT_EQ(first.mValue, (Floats{0.75f, 0.25f}));
    EXPECT_EQ(folder.ReadSnapshot(1).mVel, first.mVel) << "those of the last step that has some";
    const ReadSnapshot_st last = folder.ReadSnapshot(2);
    EXPECT_EQ(last.mTime, 3.0f);
    EXPECT_EQ(last.mID, (Ints{5, 7}));
    EXPECT_EQ(last.mPos, (Floats{7, 8, 9, 1, 1, 1}));
    EXPECT_EQ(last.mVel, (Floats{-1, -2, -3, -4, -5, -6}));
    auto project = folder.ReadProject();
    EXPECT_EQ(project["PeriodicType"], "1");
    EXPECT_EQ(project["LoaderScale"], "0.2") << "of the first box";
}

// Groups without species are types; particles come and go; two axes only.
TEST(ImportH5md, GroupsAreTypesAndAbsentParticlesAreLeftOut) {
    const ImportFolder_st folder;
    {
        Hdf5Writer_cls file(folder / "t.h5");
        const int none = -1;
        file.Data("particles/ions/position/value", H5T_NATIVE_FLOAT, {2, 3, 2},
                  Floats{1, 2, 0, 0, 3, 4, 5, 6, 7, 8, 0, 0});
        Steps(&file, "particles/ions/position", {1, 2});
        file.Data("particles/ions/id/value", H5T_NATIVE_INT, {2, 3}, Ints{0, none, 2, 0, 1, none}, &none);
        Steps(&file, "particles/ions/id", {1, 2});
        file.Data("particles/ions/charge", H5T_NATIVE_DOUBLE, {3}, Doubles{1, 2, 3});
        file.Data("particles/ions/box/edges", H5T_NATIVE_DOUBLE, {2}, Doubles{9, 18});
        const hid_t type = H5Tcopy(H5T_C_S1);
        H5Tset_size(type, H5T_VARIABLE);
        file.Attribute("boundary", type, std::vector<const char*>{"periodic", "periodic"},
                       "particles/ions/box");
        H5Tclose(type);
        file.Data("particles/water/position", H5T_NATIVE_FLOAT, {1, 2}, Floats{9, 9});
        file.Data("particles/water/id", H5T_NATIVE_INT, {1}, Ints{8});
    }
    const ImportRunResult_st run = folder.Run({folder / "t.h5"});
    ASSERT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_NE(run.mErr.find("Types: ions 0, water 1"), std::string::npos) << run.mErr;
    const ReadSnapshot_st first = folder.ReadSnapshot(0);
    EXPECT_EQ(first.mID, (Ints{0, 2, 8}));
    EXPECT_EQ(first.mPos, (Floats{1, 2, 0, 3, 4, 0, 9, 9, 0}));
    EXPECT_EQ(first.mValue, (Floats{1, 3, 0}));
    EXPECT_EQ(first.mType, (Ints{0, 0, 1}));
    EXPECT_EQ(folder.ReadSnapshot(1).mID, (Ints{0, 1, 8}));
    auto project = folder.ReadProject();
    EXPECT_EQ(project["PeriodicType"], "1");
    EXPECT_EQ(project["PeriodicBaseVector1"], "0 1.8 0");
    EXPECT_EQ(project["PeriodicBaseVector2"], "0 0 1");

    const ImportFolder_st other;
    ASSERT_EQ(other.Run({folder / "t.h5", "--columns", "group=water"}).mStatus, 0);
    EXPECT_EQ(other.ReadSnapshot(0).mPos, (Floats{9, 9, 0}));
}

TEST(ImportH5md, WhatDoesntFitIsTold) {
    const ImportFolder_st folder;
    using Make = std::function<void(Hdf5Writer_cls*)>;
    const auto position = [](Hdf5Writer_cls* pFile) {
        pFile->Data("particles/a/position/value", H5T_NATIVE_FLOAT, {2, 1, 3}, Floats(6));
    };
    const std::pair<Make, std::string> cases[] = {
        {[](Hdf5Writer_cls* pFile) { pFile->Group("h5md"); }, "the group particles is missing"},
        {[](Hdf5Writer_cls* pFile) { pFile->Group("particles"); }, "no group in particles has positions"},
        {[](Hdf5Writer_cls* pFile) {
             pFile->Data("particles/a/position/step", H5T_NATIVE_INT, {1}, Ints{1});
         },
         "particles/a/position/value is missing"},
        {[](Hdf5Writer_cls* pFile) {
             pFile->Data("particles/a/position", H5T_NATIVE_INT, {1, 1, 1, 3}, Ints(3));
         },
         "dimensions of which nothing is known"},
        {[](Hdf5Writer_cls* pFile) {
             pFile->Data("particles/a/position", H5T_NATIVE_INT, {2, 4}, Ints(8));
         },
         "more than three dimensions"},
        {[&](Hdf5Writer_cls* pFile) {
             position(pFile);
             Steps(pFile, "particles/a/position", {2, 1});
         },
         "position/step must rise"},
        {[&](Hdf5Writer_cls* pFile) {
             position(pFile);
             pFile->Data("particles/a/position/step", H5T_NATIVE_INT, {}, Ints{0});
         },
         "step is no increment"},
        {[&](Hdf5Writer_cls* pFile) {
             position(pFile);
             pFile->Data("particles/a/box/edges", H5T_NATIVE_FLOAT, {3, 2}, Floats(6));
         },
         "box/edges must have"},
        {[](Hdf5Writer_cls* pFile) {
             pFile->Group("particles");
             pFile->Group("particles/a");
             pFile->Huge("particles/a/position", 1u << 30);
         },
         "was never written"},
        {[](Hdf5Writer_cls* pFile) { // a group that holds itself
             pFile->Group("particles");
             pFile->Group("particles/a");
             pFile->Link("particles", "particles/a/position");
         },
         "position/value is missing"},
    };
    std::vector<std::string> files;
    for (const auto& [make, reason] : cases) {
        files.push_back(folder / ("f" + std::to_string(files.size()) + ".h5"));
        Hdf5Writer_cls file(files.back());
        make(&file);
    }
    files.push_back("--from=h5md");
    const ImportRunResult_st run = folder.Run(files);
    EXPECT_EQ(run.mStatus, 1);
    EXPECT_LT(run.mPeakKB, 200000);
    for (size_t i = 0; i < std::size(cases); ++i)
        EXPECT_NE(run.mErr.find("f" + std::to_string(i) + ".h5: "), std::string::npos) << i;
    for (const auto& [make, reason] : cases)
        EXPECT_NE(run.mErr.find(reason), std::string::npos) << reason << "\n" << run.mErr;
}
