// Which particle a click means, by lengths that can be reckoned by hand.
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "GL/DRAW/DrawListFilter.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsParticlePicker.h"

namespace {

struct Point_st {
    float p[3];
};

Point_st P(float x, float y, float z) { return {{x, y, z}}; }

/// Points, unless said otherwise.
struct Cloud_st {
    explicit Cloud_st(std::vector<Point_st> places) : points(std::move(places)) {
        cloud.mpPos = &points[0].p;
        cloud.mNumber = static_cast<long long>(points.size());
    }
    Cloud_st& Balls(float radius) {
        cloud.mbBall[0] = true;
        return Discs(radius);
    }
    Cloud_st& Discs(float radius) {
        cloud.mRadiusConstant[0] = radius;
        return *this;
    }
    int Find(const PickRay_st& ray, const double* pMatrix = nullptr) const {
        return ParticlePicker_cls(cloud, ray, pMatrix).Find().mIndex;
    }

    std::vector<Point_st> points;
    PickCloud_st cloud;
};

/// The eye in the origin looks along z, x is right and y up; a pixel is 0.01 at depth 1.
PickRay_st Through(double x, double y) {
    PickRay_st ray;
    ray.mSlope[0] = x;
    ray.mSlope[1] = y;
    ray.mPixel[1] = 0.01;
    return ray;
}

PickRay_st Parallel(double x, double y) {
    PickRay_st ray;
    ray.mOffset[0] = x;
    ray.mOffset[1] = y;
    ray.mPixel[0] = 0.01;
    ray.mPixel[1] = 0.0;
    return ray;
}

/// Leaves the given ones out.
class Without_cls : public DrawListFilter_cls {
public:
    explicit Without_cls(std::vector<int> gone) : mGone(std::move(gone)) {}
    bool IsThinning() const override { return true; }
    void Thin(DrawList_t& list, long long, const float (*)[3], double) override {
        DrawList_t kept;
        for (const ArrayAndIndex_cls& entry : list)
            if (std::find(mGone.begin(), mGone.end(), entry.mIndex) == mGone.end()) kept.push_back(entry);
        list = kept;
    }
    bool IsBooleanChangeConstantColor() const override { return false; }

private:
    std::vector<int> mGone;
};

} // namespace

TEST(ParticlePicker, PointsCountWithinFivePixelsAndTheNearestWins) {
    // At depth 10 five pixels are 0.5, at depth 2 they are 0.1.
    const Cloud_st cloud({P(0.49f, 0, 10), P(0.09f, 0, 2), P(0, 0, 20), P(0, 0, -1)});
    EXPECT_EQ(cloud.Find(Through(0, 0)), 1);
    EXPECT_EQ(cloud.Find(Through(-0.006, 0)), 2); // 5.1 pixels from the near one, 5.5 from the other
    EXPECT_EQ(cloud.Find(Through(0.06, 0)), 1);
    EXPECT_EQ(cloud.Find(Through(0.098, 0)), 0);
    EXPECT_EQ(cloud.Find(Through(0.1, 0)), -1);
    EXPECT_EQ(cloud.Find(Through(0.5, 0.5)), -1);
    // A circle, no square.
    EXPECT_EQ(Cloud_st({P(0.4f, 0.4f, 10)}).Find(Through(0, 0)), -1);
    EXPECT_EQ(Cloud_st({P(0.35f, 0.35f, 10)}).Find(Through(0, 0)), 0);
}

TEST(ParticlePicker, PointsOfManyPixelsCountWholly) {
    Cloud_st cloud({P(0, 0, 10)});
    cloud.cloud.mPixels[0] = 8.0;
    EXPECT_EQ(cloud.Find(Through(0.079, 0)), 0);
    EXPECT_EQ(cloud.Find(Through(0.081, 0)), -1);
}

TEST(ParticlePicker, ParallelViewsHaveOnePixelForAllDepths) {
    const Cloud_st cloud({P(2.04f, 1, 10), P(2, 1, 50), P(2, 1.06f, 1)});
    EXPECT_EQ(cloud.Find(Parallel(2, 1)), 0);
    EXPECT_EQ(cloud.Find(Parallel(1.98, 1)), 1);
    EXPECT_EQ(cloud.Find(Parallel(2, 1.02)), 2);
    PickRay_st behind = Parallel(2, 1);
    behind.mNear = -100.0;
    EXPECT_EQ(Cloud_st({P(2, 1, -7), P(2, 1, 7)}).Find(behind), 0); // seen behind the eye's plane
    EXPECT_EQ(Cloud_st({P(2, 1, -7), P(2, 1, 7)}).Find(Parallel(2, 1)), 1);
}

TEST(ParticlePicker, SpheresAreMetWhereTheirSurfacesAre) {
    // The small one's middle is nearer, the large one's surface is.
    Cloud_st cloud({P(0, 0, 10), P(0, 0, 8)});
    std::vector<float> radii = {5.0f, 1.0f};
    cloud.cloud.mpRadius = radii.data();
    cloud.cloud.mRadiusFactor[0] = 1.0f;
    cloud.cloud.mbBall[0] = true;
    EXPECT_EQ(cloud.Find(Through(0, 0)), 0);
    const PickedParticle_st hit = ParticlePicker_cls(cloud.cloud, Through(0, 0)).Find();
    EXPECT_NEAR(hit.mDepth, 5.0, 1e-9);
    cloud.cloud.mbBall[0] = false; // discs have no thickness
    EXPECT_EQ(cloud.Find(Through(0, 0)), 1);
    EXPECT_EQ(cloud.Find(Through(0.2, 0)), 0);
}

TEST(ParticlePicker, ASphereIsSeenFartherOutThanADisc) {
    // A sphere of 1 in 10 shows itself under asin(0.1), that is up to 0.1005 of the depth; a disc up to 0.1.
    Cloud_st ball({P(0, 0, 10)});
    ball.Balls(1.0f);
    Cloud_st disc({P(0, 0, 10)});
    disc.Discs(1.0f);
    EXPECT_EQ(ball.Find(Through(0.1004, 0)), 0);
    EXPECT_EQ(disc.Find(Through(0.1004, 0)), -1);
    EXPECT_EQ(ball.Find(Through(0.1006, 0)), -1);
    EXPECT_EQ(disc.Find(Through(0.0999, 0)), 0);
    // Far from the line of sight the silhouette is an ellipse: at 45 degrees, root 2 as long as the circle
    // and more.
    Cloud_st aside({P(10, 0, 10)});
    aside.Balls(1.0f);
    const double limit = std::tan(M_PI / 4.0 + std::asin(1.0 / std::sqrt(200.0)));
    EXPECT_EQ(aside.Find(Through(limit - 1e-4, 0)), 0);
    EXPECT_EQ(aside.Find(Through(limit + 1e-4, 0)), -1);
    // The eye inside.
    Cloud_st around({P(0, 0, -1)});
    around.Balls(3.0f);
    EXPECT_EQ(around.Find(Through(0, 0)), 0);
}

TEST(ParticlePicker, OnlyWhatIsBetweenThePlanesIsSeen) {
    PickRay_st ray = Through(0, 0);
    ray.mNear = 1.0;
    ray.mFar = 5.0;
    EXPECT_EQ(Cloud_st({P(0, 0, 0.9f), P(0, 0, 6)}).Find(ray), -1);
    EXPECT_EQ(Cloud_st({P(0, 0, 0.9f), P(0, 0, 4), P(0, 0, 6)}).Find(ray), 1);
    Cloud_st cut({P(0, 0, 0.5f), P(0, 0, 4)}); // the near plane cuts it, its inside is seen
    cut.Balls(1.0f);
    EXPECT_EQ(cut.Find(ray), 0);
}

TEST(ParticlePicker, ABoxTurnsStretchesAndMirrors) {
    // Data x becomes scene z times -2, y is three times as high, z goes right; all of it 10 farther.
    const double box[16] = {0, 0, -2, 0, 0, 3, 0, 0, 1, 0, 0, 0, 0, 0, 10, 1};
    Cloud_st cloud({P(-1, 0, 0), P(2, 0, 0)});
    EXPECT_EQ(cloud.Find(Through(0, 0), box), 1); // at depth 6, before 12
    cloud.Balls(1.0f);
    const PickedParticle_st hit = ParticlePicker_cls(cloud.cloud, Through(0, 0), box).Find();
    EXPECT_EQ(hit.mIndex, 1);
    EXPECT_NEAR(hit.mDepth, 4.0, 1e-9); // an ellipsoid, 2 deep
    // 3 high and 1 wide: of discs, too, which face the eye.
    Cloud_st one({P(0, 0, 0)});
    for (const bool bBall : {true, false}) {
        one.Discs(1.0f).cloud.mbBall[0] = bBall;
        EXPECT_EQ(one.Find(Through(0, 0.29), box), 0) << bBall;
        EXPECT_EQ(one.Find(Through(0.16, 0), box), -1) << bBall;
        EXPECT_EQ(one.Find(Through(0.098, 0), box), 0) << bBall;
    }
    // Flat: what stands in a plane can be picked, a sphere as a point.
    const double flat[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 10, 1};
    EXPECT_EQ(one.Find(Through(0.04, 0), flat), 0);
}

TEST(ParticlePicker, CopiesAreFoundAndTold) {
    Cloud_st cloud({P(0, 0, 10), P(1, 0, 10)});
    const ParticlePicker_cls::Shifts_t shifts = {{0, 0, 0}, {0, 5, 0}, {0, 5, -4}, {0, 0, 7}};
    const auto find = [&](double x, double y) {
        const PickedParticle_st hit = ParticlePicker_cls(cloud.cloud, Through(x, y), nullptr, shifts).Find();
        return std::make_pair(hit.mIndex, hit.mCopy);
    };
    EXPECT_EQ(find(0, 0), std::make_pair(0, 0LL));
    EXPECT_EQ(find(0.1, 0.5), std::make_pair(1, 1LL));
    EXPECT_EQ(find(1.0 / 6.0, 5.0 / 6.0), std::make_pair(1, 2LL));
    EXPECT_EQ(find(0.3, 0), std::make_pair(-1, 0LL));
    EXPECT_EQ(ParticlePicker_cls(cloud.cloud, Through(0, 0), nullptr, {}).Find().mIndex, -1);
}

TEST(ParticlePicker, FiltersClassesAndThinningLeaveOut) {
    Cloud_st cloud({P(0, 0, 1), P(0, 0, 2), P(0, 0, 3), P(0, 0, 4)});
    Without_cls filter({0, 1});
    cloud.cloud.mpCFilter = &filter;
    EXPECT_EQ(cloud.Find(Through(0, 0)), 2);
    cloud.cloud.mpCFilter = nullptr;
    const unsigned char types[4] = {1, 2, 200, 3}; // 200 counts as class 0
    cloud.cloud.mpType = types;
    cloud.cloud.mbDrawn[1] = cloud.cloud.mbDrawn[2] = false;
    EXPECT_EQ(cloud.Find(Through(0, 0)), 2);
    cloud.cloud.mbDrawn[0] = false;
    EXPECT_EQ(cloud.Find(Through(0, 0)), 3);
    cloud.cloud.mbDrawn[1] = cloud.cloud.mbDrawn[0] = true;
    cloud.cloud.mStep = 2; // 0 and 2 are drawn
    EXPECT_EQ(cloud.Find(Through(0, 0)), 0);
    cloud.points[0].p[2] = 9.0f;
    EXPECT_EQ(cloud.Find(Through(0, 0)), 2);
    cloud.points[2].p[0] = 9.0f;
    cloud.cloud.mStep = 3; // 0 and 3, and far first leaves out the last that has no full step behind it
    EXPECT_EQ(cloud.Find(Through(0, 0)), 3);
    cloud.cloud.mSortOrder = SORT_FAR_FIRST;
    EXPECT_EQ(cloud.Find(Through(0, 0)), 0);
    // A curve's alpha hides discs and points, not balls.
    Cloud_st faded({P(0, 0, 1), P(0, 0, 2)});
    const float colors[2][4] = {{1, 1, 1, 0}, {1, 1, 1, 0.1f}};
    faded.cloud.mpColor = colors;
    EXPECT_EQ(faded.Find(Through(0, 0)), 1);
    EXPECT_EQ(faded.Balls(0.1f).Find(Through(0, 0)), 0);
    // More than a filter looks at once.
    Cloud_st many(std::vector<Point_st>(3000, P(0, 0, 5)));
    std::vector<int> gone(2500);
    for (int i = 0; i < 2500; ++i)
        gone[size_t(i)] = i;
    Without_cls most(gone);
    many.cloud.mpCFilter = &most;
    EXPECT_EQ(many.Find(Through(0, 0)), 2500);
}

TEST(ParticlePicker, WhatIsNoNumberIsNotThere) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    Cloud_st cloud({P(nan, 0, 1), P(0, inf, 1), P(0, 0, -inf), P(0, 0, 5), P(0, 0, 2)});
    std::vector<float> radii = {1, 1, 1, inf, nan};
    cloud.cloud.mpRadius = radii.data();
    cloud.cloud.mRadiusFactor[0] = 1.0f;
    EXPECT_EQ(cloud.Find(Through(0, 0)), -1); // nor has it a size that could be drawn
    cloud.cloud.mRadiusFactor[0] = 0.0f;
    EXPECT_EQ(cloud.Find(Through(0, 0)), 4); // points need none
    const unsigned char types[5] = {0, 0, 0, 0, 1};
    cloud.cloud.mpType = types;
    cloud.cloud.mRadiusFactor[0] = 1.0f;
    EXPECT_EQ(cloud.Find(Through(0, 0)), 4);
    Cloud_st none({P(0, 0, 1)});
    none.cloud.mpPos = nullptr;
    EXPECT_EQ(none.Find(Through(0, 0)), -1);
}

TEST(ParticlePicker, FastAndSlowRoadAgree) {
    // All of many particles, on several threads, against one at a time; far from the origin, too.
    std::mt19937 random(11);
    std::uniform_real_distribution<float> place(-1.0f, 1.0f);
    for (const float away : {0.0f, 1000.0f}) {
        std::vector<Point_st> points(150000);
        for (Point_st& point : points)
            point = P(away + place(random), place(random), 3.0f + place(random));
        Cloud_st cloud(points);
        std::vector<float> radii(points.size());
        for (float& radius : radii)
            radius = 0.005f * (1.0f + place(random));
        cloud.cloud.mpRadius = radii.data();
        cloud.cloud.mRadiusFactor[0] = 1.0f;
        cloud.cloud.mbBall[0] = true;
        for (int k = 0; k < 20; ++k) {
            PickRay_st ray = Through(0.4 * double(place(random)), 0.4 * double(place(random)));
            ray.mEye[0] = double(away);
            ray.mPixel[1] = 0.0005;
            const PickedParticle_st fast = ParticlePicker_cls(cloud.cloud, ray).Find();
            PickedParticle_st slow;
            for (size_t i = 0; i < points.size(); i += 10) {
                PickCloud_st some = cloud.cloud;
                some.mpPos += i;
                some.mpRadius += i;
                some.mNumber = 10;
                PickedParticle_st hit = ParticlePicker_cls(some, ray).Find();
                if (hit.mIndex >= 0 && (slow.mIndex < 0 || hit.mDepth < slow.mDepth))
                    slow = {hit.mIndex + int(i), 0, hit.mDepth};
            }
            EXPECT_EQ(fast.mIndex, slow.mIndex);
            EXPECT_EQ(fast.mDepth, slow.mDepth);
        }
    }
}

TEST(ParticlePicker, TheViewMayKnowTheDistanceBetter) {
    PickRay_st ray = Through(0, 0);
    ray.mDistance = [](const double point[3]) { return 200.0 * std::fabs(point[0]) / point[2]; };
    EXPECT_EQ(Cloud_st({P(0.3f, 0, 10)}).Find(ray), -1); // 3 pixels as the rows tell, 6 in truth
    EXPECT_EQ(Cloud_st({P(0.2f, 0.3f, 10)}).Find(ray), 0);
}
