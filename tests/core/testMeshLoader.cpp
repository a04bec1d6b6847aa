// The worker that reads the mesh of the next frame ahead.
#include <atomic>
#include <filesystem>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

#include "MESH/clsMeshLoader.h"
#include "MeshTools.h"
#include "TempFolder.h"

namespace {

/// A fan of so many triangles.
std::string Fan(int triangles) {
    std::string text = "v 0 0 0\n";
    for (int i = 0; i < triangles + 1; ++i)
        text += "v " + std::to_string(i) + " 1 0\n";
    for (int i = 0; i < triangles; ++i)
        text += "f 1 " + std::to_string(i + 2) + " " + std::to_string(i + 3) + "\n";
    return text;
}

class MeshLoader : public testing::Test {
protected:
    std::string Name(int triangles) const {
        return mDir.GetPath() + "/fan" + std::to_string(triangles) + ".obj";
    }
    std::string Write(int triangles) const {
        return mDir.Write("fan" + std::to_string(triangles) + ".obj", Fan(triangles));
    }
    /// Another file under a name, with another stamp for sure.
    static void Replace(const std::string& path, const std::string& bytes) {
        std::ofstream(path + ".new", std::ios::binary) << bytes;
        ASSERT_EQ(0, std::rename((path + ".new").c_str(), path.c_str()));
    }
    void WaitUntilRead(int number) const {
        while (mRead.load() < number)
            std::this_thread::yield();
    }

    TempFolder_cls mDir;
    std::atomic<int> mRead{0};
    MeshLoader_cls mLoader{[this] { ++mRead; }};
    PovObjectMesh_cls mMesh;
};

} // namespace

TEST_F(MeshLoader, ShowsWhatWasReadAhead) {
    mLoader.ReadAhead(Write(3));
    WaitUntilRead(1);
    EXPECT_TRUE(mLoader.IsReady(Name(3), mMesh));
    EXPECT_FALSE(mLoader.IsReady(Write(4), mMesh));
    std::filesystem::remove(Name(3) + "x");
    EXPECT_EQ("", mLoader.Show(Name(3), &mMesh));
    EXPECT_EQ(3u, mMesh.GetTriangleNumber());
    EXPECT_EQ(Name(3), mMesh.mCurrentPath);
    EXPECT_EQ(1, mRead) << "by the worker, once";
    // Not read ahead: read at once.
    EXPECT_EQ("", mLoader.Show(Name(4), &mMesh));
    EXPECT_EQ(4u, mMesh.GetTriangleNumber());
    EXPECT_EQ(1, mRead);
}

TEST_F(MeshLoader, AFilmGoesForwardsBackwardsAndJumps) {
    constexpr int kFrames = 40;
    for (int i = 1; i <= kFrames; ++i)
        Write(i * 50);
    unsigned random = 1;
    int frame = 1;
    for (int i = 0; i < 400; ++i) {
        random = random * 1103515245u + 12345u;
        const int step = (random >> 16) % 8 == 0 ? int((random >> 20) % kFrames) : i % 100 < 50 ? 1 : -1;
        const int next = (frame + step + kFrames) % kFrames;
        EXPECT_EQ("", mLoader.Show(Name((frame % kFrames + 1) * 50), &mMesh));
        ASSERT_EQ(size_t(frame % kFrames + 1) * 50, mMesh.GetTriangleNumber());
        mLoader.ReadAhead(Name((next % kFrames + 1) * 50));
        if ((random >> 24) % 4 == 0) mLoader.ReadAhead(Name(50)); // a change of mind
        frame = next;
    }
}

TEST_F(MeshLoader, AMissingOrBrokenFileIsToldWhenItIsShown) {
    mLoader.ReadAhead(Name(1));
    mLoader.ReadAhead(Name(1));
    EXPECT_NE("", mLoader.Show(Name(1), &mMesh));
    EXPECT_EQ(0u, mMesh.GetVertexNumber());
    EXPECT_EQ("", mLoader.Show(Name(1), &mMesh)) << "once";
    Write(1);
    EXPECT_EQ("", mLoader.Show(Name(1), &mMesh));
    EXPECT_EQ(1u, mMesh.GetTriangleNumber()) << "there it is";
    EXPECT_EQ("", mLoader.Show("NONE", &mMesh));
    EXPECT_EQ(0u, mMesh.GetVertexNumber());
    mLoader.ReadAhead("NONE");
    mLoader.ReadAhead("");
    EXPECT_EQ("", mLoader.Show("", &mMesh));
}

TEST_F(MeshLoader, AFileThatChangesIsReadAgain) {
    const std::string path = Write(5);
    mLoader.Show(path, &mMesh);
    Replace(path, Fan(7));
    EXPECT_EQ("", mLoader.Show(path, &mMesh));
    EXPECT_EQ(7u, mMesh.GetTriangleNumber());
    Replace(path, "v 1 2"); // it is being written
    EXPECT_NE("", mLoader.Show(path, &mMesh));
    EXPECT_EQ("", mLoader.Show(path, &mMesh));
    EXPECT_EQ(7u, mMesh.GetTriangleNumber()) << "the old one stays";
    std::filesystem::remove(path);
    EXPECT_EQ("", mLoader.Show(path, &mMesh));
    EXPECT_EQ(7u, mMesh.GetTriangleNumber());
    Replace(path, Fan(9));
    EXPECT_EQ("", mLoader.Show(path, &mMesh));
    EXPECT_EQ(9u, mMesh.GetTriangleNumber());
}

TEST_F(MeshLoader, WhatWasReadAheadBeforeAChangeIsReadAgain) {
    const std::string path = Write(5);
    mLoader.ReadAhead(path);
    WaitUntilRead(1);
    Replace(path, Fan(6));
    EXPECT_EQ("", mLoader.Show(path, &mMesh));
    EXPECT_EQ(6u, mMesh.GetTriangleNumber());
    mLoader.ReadAhead(Write(8));
    WaitUntilRead(2);
    std::filesystem::remove(Name(8));
    EXPECT_NE("", mLoader.Show(Name(8), &mMesh)) << "gone";
    EXPECT_EQ(0u, mMesh.GetVertexNumber());
}

TEST_F(MeshLoader, AFileCutShortWhileItIsReadEndsNothing) {
    const std::string path = Write(200000);
    for (int i = 0; i < 6; ++i) {
        mLoader.ReadAhead(path);
        ASSERT_EQ(0, truncate(path.c_str(), i % 2 ? 4000000 : 1000));
        mLoader.Show(path, &mMesh);
        for (const int corner : mMesh.mvFaceVertex)
            ASSERT_LT(size_t(unsigned(corner)), mMesh.GetVertexNumber());
        mMesh.ClearMesh();
        Replace(path, Fan(200000 + i));
    }
}

TEST_F(MeshLoader, GoesWhileItReads) {
    Write(100000);
    for (int i = 0; i < 5; ++i) {
        MeshLoader_cls loader;
        loader.ReadAhead(Name(100000));
        if (i % 2) loader.ReadAhead(Name(1)); // stopped
    }
}
