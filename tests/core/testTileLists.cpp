// Lists of every kind of particle, with any numbers, by any number of threads: the same picture.
#include <algorithm>
#include <limits>
#include <random>
#include <utility>

#include "TileDrawTest.h"

namespace {

// All kinds in one list, with any numbers in it.
class AnyList : public TileDrawTest {
protected:
    AnyList() {
        mSize = 300;
        SetView(true);
        for (int k = 0; k < 4; ++k) {
            TileLook_st& look = mScene.look[k];
            look.kind = k == 0 ? TileLook_st::POINT : k == 3 ? TileLook_st::SPHERE : TileLook_st::SPRITE;
            look.bFacing = k == 2;
            look.blend = k == 1 ? TileLook_st::ADDS : TileLook_st::COVERS;
            look.bWrite = k == 3;
            look.size = 5;
            look.bMaterials = true;
        }
        std::vector<unsigned char> bytes(64 * 64 * 4, 200);
        mScene.texture.Set(bytes.data(), 64, 64);
        mScene.lights.resize(2);
        mScene.lights[0].place[3] = 1.0f;
        mScene.fog.mode = TileFog_st::EXP;
        mScene.fog.density = 0.01f;
    }
    void MakeList(int number, bool bOdd) {
        std::mt19937 random(7);
        std::uniform_real_distribution<float> unit(-1.0f, 1.0f);
        const float inf = std::numeric_limits<float>::infinity();
        const float odd[] = {0.0f, -0.0f, inf, -inf, NAN, 1e38f, -1e38f, 1e-38f, 1e20f, -1.0f, 1e6f, 1e-45f};
        const auto number1 = [&](float plain) {
            return bOdd && random() % 4 == 0 ? odd[random() % std::size(odd)] : plain;
        };
        mSource.mList.clear();
        for (int i = 0; i < number; ++i) {
            TileParticle_st p = {};
            p.pos[0] = number1(2.5f * unit(random)), p.pos[1] = number1(2.5f * unit(random));
            p.pos[2] = number1(-4.0f + 4.5f * unit(random));
            p.radius = number1(0.1f * unit(random));
            for (float& c : p.color)
                c = number1(0.5f + 0.7f * unit(random));
            p.look = static_cast<int>(random() % 4);
            mSource.mList.push_back(p);
        }
    }
};

TEST_F(AnyList, IsTheSamePictureWithAnyThreadsAndRegisters) {
    MakeList(TileDraw_cls::kBatch + 2000, false);
    Draw(1);
    const std::vector<float> one = Colors();
    EXPECT_GT(CountLit(), mSize * mSize / 2);
    for (const int threads : {2, 5}) {
        Draw(threads);
        EXPECT_EQ(Colors(), one) << threads;
    }
    Draw(2, GetPlainTileKernels());
    EXPECT_EQ(Colors(), one);
}

TEST_F(AnyList, MayHoldAnyNumbers) {
    for (const bool bPerspective : {true, false}) {
        SetView(bPerspective);
        MakeList(20000, true);
        Draw(2);
        for (const float v : Colors()) {
            ASSERT_EQ(v - v, 0.0f);
            ASSERT_GE(v, 0.0f);
        }
    }
}

TEST_F(AnyList, LeavesOutWhatIsNoNumber) {
    for (int look = 0; look < 4; ++look)
        for (int which = 0; which < 4; ++which) {
            TileParticle_st p = {{0, 0, -4}, 0.5f, {1, 1, 1, 1}, look};
            if (which == 3 && look == 0) continue; // a point has no radius
            (which < 3 ? p.pos[which] : p.radius) = NAN;
            mSource.mList = {p};
            Draw();
            EXPECT_EQ(CountLit(), 0) << look << ", " << which;
        }
}

// Lists of nothing but points of one pixel take a way of their own; a look that doesn't occur closes it.
TEST_F(AnyList, HasTheSamePointsOfOnePixelOnBothWays) {
    for (int k = 0; k < 3; ++k) {
        mScene.look[k].kind = TileLook_st::POINT;
        mScene.look[k].size = 1;
        mScene.look[k].bWrite = k == 0;
        mScene.look[k].blend = k == 2 ? TileLook_st::OVERWRITES : mScene.look[k].blend;
    }
    for (const bool bOdd : {false, true}) {
        MakeList(TileDraw_cls::kBatch + 2000, bOdd);
        for (TileParticle_st& p : mSource.mList)
            p.look %= 3;
        mScene.look[3].kind = TileLook_st::SPHERE;
        Draw(1);
        const std::vector<float> ordinary = Colors();
        EXPECT_GT(CountLit(), 1000);
        mScene.look[3].kind = TileLook_st::HIDDEN;
        Draw(2);
        EXPECT_EQ(Colors(), ordinary);
        Draw(3, GetPlainTileKernels());
        EXPECT_EQ(Colors(), ordinary);
    }
}

// Depth ends at 1, which most of a wide view is near to.
TEST_F(AnyList, ShowsWhatIsVeryFar) {
    float projection[16] = {};
    projection[0] = projection[5] = 2.0f;
    projection[10] = -1.0f, projection[11] = -1.0f, projection[14] = -0.02f; // to 1e9
    mScene.fog.mode = TileFog_st::NONE;
    ASSERT_TRUE(mScene.view.Set(mScene.view.model, projection, mSize, mSize));
    for (int look = 0; look < 4; ++look)
        for (const float z : {-2e5f, -9e5f, -1e7f}) {
            mSource.mList = {{{0, 0, z}, -0.1f * z, {1, 1, 1, 1}, look}};
            Draw();
            EXPECT_GT(CountLit(), 20) << look << ", " << z;
        }
}

// All that is large lies in all tiles, so each tile is laid down and taken up again.
TEST_F(AnyList, TellsOnTheWayAndEndsWhereItIsTold) {
    MakeList(2000, false);
    for (TileParticle_st& p : mSource.mList)
        p.radius *= 40.0f;
    Draw(2);
    const std::vector<float> whole = Colors();
    struct Told_st {
        std::vector<long long> done;
        size_t limit;
    } told = {{}, 1000000};
    const auto tell = [](void* pWho, long long done) {
        Told_st& to = *static_cast<Told_st*>(pWho);
        to.done.push_back(done);
        return to.done.size() < to.limit;
    };
    TileDraw_cls draw(2);
    draw.TellEvery(std::chrono::milliseconds(2));
    mCanvas.Clear(mSize, mSize);
    EXPECT_TRUE(draw.Draw(mScene, mSource, mCanvas, tell, &told));
    EXPECT_EQ(Colors(), whole);
    EXPECT_GE(told.done.size(), 2u);
    EXPECT_TRUE(std::is_sorted(told.done.begin(), told.done.end()));
    EXPECT_LE(told.done.back(), 2000);
    // What is handed over on the way is as it stays.
    struct Goal : TileGoal_cls {
        int end = 0;
        std::vector<uint16_t> color;
        void TakeUpTo(TileCanvas_cls& canvas, int rows) override {
            EXPECT_GT(rows, std::exchange(end, rows));
            const int lines = std::min(rows * TileCanvas_cls::kTileH, canvas.GetHeight());
            for (size_t i = color.size(); i < 4 * size_t(lines * canvas.GetWidth()); ++i)
                color.push_back(canvas.GetColor()[i]);
        }
    };
    for (const int threads : {1, 3}) {
        Goal goal;
        mCanvas.Clear(mSize, mSize);
        TileDraw_cls other(threads);
        other.TellEvery(std::chrono::milliseconds(2));
        EXPECT_TRUE(other.Draw(mScene, mSource, mCanvas, tell, &told, &goal));
        EXPECT_EQ(Colors(), whole);
        EXPECT_TRUE(std::equal(goal.color.begin(), goal.color.end(), mCanvas.GetColor()));
        if (threads == 1) {
            EXPECT_EQ(goal.end, mCanvas.GetTilesUp());
        }
    }
    told = {{}, 1};
    mCanvas.Clear(mSize, mSize);
    EXPECT_FALSE(draw.Draw(mScene, mSource, mCanvas, tell, &told));
    EXPECT_EQ(told.done.size(), 1u);
}

} // namespace
