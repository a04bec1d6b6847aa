#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "GL/BASE/ViewFit.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsPositionAndDirection.h"

namespace {

struct Point_st {
    float p[3];
};

FitCloud_st CloudOf(const std::vector<Point_st>& points) {
    FitCloud_st cloud;
    cloud.mpPos = &points[0].p;
    cloud.mNumber = static_cast<long long>(points.size());
    return cloud;
}

std::vector<Point_st> RandomBox(size_t number, double size, const double middle[3]) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(-size / 2, size / 2);
    std::vector<Point_st> points(number);
    for (Point_st& point : points)
        for (int i = 0; i < 3; ++i)
            point.p[i] = static_cast<float>(middle[i] + place(random));
    return points;
}

PositionAndDirection_cls Oblique() {
    PositionAndDirection_cls camera;
    const double front[3] = {1.12, 0.8, -0.56};
    const double up[3] = {0, 0, 1};
    camera.Setv(front, up);
    return camera;
}

/// The farthest that any point lies from the middle of the picture, in half sides of a picture of this shape.
double Filled(const std::vector<Point_st>& points, const ViewFit_st& fit, PositionAndDirection_cls camera,
              int w, int h) {
    GLPerspective_cls view(1, 1, 35.0);
    view.SetClipSize(w, h);
    camera.SetAncPos(fit.mAnchor);
    for (int i = 0; i < 3; ++i)
        camera.mPos[i] = fit.mAnchor[i] - camera.mFront[i] * fit.mDistance;
    view.mNear = fit.mNearest / 2.0;
    view.mFar = fit.mFarthest * 2.0;
    double most = 0.0;
    for (const Point_st& point : points) {
        const double p[3] = {double(point.p[0]), double(point.p[1]), double(point.p[2])};
        double win[3] = {9, 9, 9};
        EXPECT_TRUE(view.Project(camera, p, win));
        // The square is as wide as the picture.
        const double share = std::min(1.0, double(h) / w);
        most = std::max({most, std::fabs(win[0]), std::fabs(win[1]) / share});
    }
    return most;
}

FitShape_st ShapeOf(int w, int h) {
    GLPerspective_cls view(1, 1, 35.0);
    view.SetClipSize(w, h);
    FitShape_st shape;
    shape.mHalfW = std::tan(view.GetSquareAngle() * M_PI / 360.0);
    shape.mHalfH = shape.mHalfW * std::min(1.0, double(h) / w);
    return shape;
}

} // namespace

TEST(ViewFit, FillsThePictureOfAnyShapeFromAnyDistance) {
    const double origin[3] = {0, 0, 0};
    const double far[3] = {1e6, -1e6, 5e5};
    const struct {
        double size;
        const double* middle;
    } clouds[] = {{1.0, origin}, {1e-9, origin}, {1e9, origin}, {50.0, far}};
    for (const auto& cloud : clouds)
        for (const auto& [w, h] : {std::pair{640, 480}, {480, 640}, {1600, 300}}) {
            const auto points = RandomBox(5000, cloud.size, cloud.middle);
            CloudReach_cls reach;
            const PositionAndDirection_cls camera = Oblique();
            const ViewFitter_cls fitter(camera, ShapeOf(w, h), &reach);
            ASSERT_TRUE(reach.Measure(CloudOf(points)));
            const ViewFit_st fit = fitter.Get(reach, 1.0);
            EXPECT_NEAR(Filled(points, fit, camera, w, h), 0.95, 2e-4) << cloud.size << " " << w << "x" << h;
            EXPECT_GT(fit.mNearest, 0.0);
        }
}

TEST(ViewFit, LeavesOutWhatIsNotDrawnAndTakesInRadii) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const std::vector<Point_st> points = {
        {{nan, 0, 0}}, {{-1, 0, 0}}, {{99, 0, 0}}, {{1, 2, 0}}, {{0, inf, 0}}};
    const std::vector<unsigned char> types = {0, 0, 1, 2, 0};
    const std::vector<float> radii = {50.0f, 0.5f, 1.0f, nan, 1.0f};
    FitCloud_st cloud = CloudOf(points);
    cloud.mpType = types.data();
    cloud.mpRadius = radii.data();
    cloud.mbDrawn[1] = false;
    cloud.mRadiusFactor[0] = 2.0f;
    CloudReach_cls reach;
    const double x[3] = {1, 0, 0}, minusX[3] = {-1, 0, 0}, slanted[3] = {0, 3, 4};
    reach.Add(x);
    reach.Add(minusX);
    reach.Add(slanted);
    ASSERT_TRUE(reach.Measure(cloud));
    EXPECT_DOUBLE_EQ(reach.Get(0), 1.0);
    EXPECT_DOUBLE_EQ(reach.Get(1), 2.0);
    EXPECT_DOUBLE_EQ(reach.Get(2), 6.0);
    cloud.mStep = 2; // the first, the third and the fifth: none of them counts
    EXPECT_FALSE(reach.Measure(cloud));
    EXPECT_FALSE(reach.Measure(FitCloud_st()));
}

TEST(ViewFit, ManyParticlesOnThreadsReachAsFarAsTheyDo) {
    const double origin[3] = {0, 0, 0};
    auto points = RandomBox(1000003, 1.0, origin);
    points[777777].p[1] = 7.0f;
    points.back().p[2] = -9.0f;
    CloudReach_cls reach;
    const double y[3] = {0, 1, 0}, down[3] = {0, 0, -1};
    reach.Add(y);
    reach.Add(down);
    ASSERT_TRUE(reach.Measure(CloudOf(points)));
    EXPECT_FLOAT_EQ(float(reach.Get(0)), 7.0f);
    EXPECT_FLOAT_EQ(float(reach.Get(1)), 9.0f);
}

TEST(ViewFit, DirectionsReachAsFarTogetherAsAlone) {
    const double origin[3] = {0, 0, 0};
    const auto points = RandomBox(5000, 2.0, origin);
    std::vector<float> radii;
    for (const Point_st& point : points)
        radii.push_back(0.3f + 0.2f * point.p[0]);
    const double directions[][3] = {{1, 0, 0},  {-1, 0, 0},    {0, 0, -1}, {0.5, -2, 1}, {1, 1, 0},
                                    {0, 0, -1}, {-0.5, 2, -1}, {1, 0, 0},  {0, 0, 1},    {3, 0, 0}};
    for (const float factor : {0.0f, 2.0f})
        for (const float constant : {0.0f, 0.25f}) {
            FitCloud_st cloud = CloudOf(points);
            cloud.mpRadius = radii.data();
            cloud.mRadiusFactor[0] = factor;
            cloud.mRadiusConstant[0] = constant;
            CloudReach_cls reach;
            for (const auto& d : directions)
                reach.Add(d);
            ASSERT_TRUE(reach.Measure(cloud));
            for (int k = 0; k < reach.GetCount(); ++k) {
                const double* d = directions[k];
                const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
                double most = -1e9;
                for (size_t i = 0; i < points.size(); ++i) {
                    const float* p = points[i].p;
                    const double radius = double(factor) * double(radii[i]) + double(constant);
                    most = std::max(most, d[0] * double(p[0]) + d[1] * double(p[1]) + d[2] * double(p[2]) +
                                              length * radius);
                }
                EXPECT_NEAR(reach.Get(k), most, 1e-5) << k << " " << factor << " " << constant;
            }
        }
}

TEST(ViewFit, OrthographicWidthHoldsEverything) {
    const std::vector<Point_st> points = {{{-3, 0, 1}}, {{5, 0, 2}}};
    PositionAndDirection_cls camera;
    camera.SetDirection(6); // from above: x to the right
    FitShape_st shape;
    shape.mbPerspective = false;
    shape.mHalfW = 0.5;
    shape.mHalfH = 0.25;
    CloudReach_cls reach;
    const ViewFitter_cls fitter(camera, shape, &reach);
    ASSERT_TRUE(reach.Measure(CloudOf(points)));
    const ViewFit_st fit = fitter.Get(reach, 1.0);
    EXPECT_NEAR(fit.mDistance, 8.0 / 0.95, 1e-6);
    EXPECT_NEAR(fit.mAnchor[0], 1.0, 1e-6);
}

TEST(ViewFit, APlaceAloneKeepsTheDistanceAndALineOfSightStaysBeforeTheEye) {
    const PositionAndDirection_cls camera = Oblique();
    const std::vector<Point_st> one = {{{3, 4, 5}}, {{3, 4, 5}}};
    CloudReach_cls reach;
    const ViewFitter_cls fitter(camera, ShapeOf(400, 300), &reach);
    ASSERT_TRUE(reach.Measure(CloudOf(one)));
    const ViewFit_st fit = fitter.Get(reach, 2.5);
    EXPECT_DOUBLE_EQ(fit.mDistance, 2.5);
    EXPECT_FLOAT_EQ(float(fit.mAnchor[2]), 5.0f);

    std::vector<Point_st> line(2);
    for (int i = 0; i < 3; ++i) {
        line[0].p[i] = static_cast<float>(-camera.mFront[i]);
        line[1].p[i] = static_cast<float>(camera.mFront[i]);
    }
    ASSERT_TRUE(reach.Measure(CloudOf(line)));
    EXPECT_GT(fitter.Get(reach, 1.0).mNearest, 0.1);
}

TEST(ViewFit, PlanesMoveOnlyWhereTheyCut) {
    float nearPlane = 0.03f, farPlane = 5000.0f;
    FitDepths(1.0, 100.0, &nearPlane, &farPlane);
    EXPECT_EQ(nearPlane, 0.03f);
    EXPECT_EQ(farPlane, 5000.0f);
    for (const double size : {1e-9, 1e9}) {
        nearPlane = 0.03f, farPlane = 5000.0f;
        FitDepths(size, 3.0 * size, &nearPlane, &farPlane);
        EXPECT_GT(nearPlane, 0.0f);
        EXPECT_LE(double(nearPlane), size);
        EXPECT_GE(double(farPlane), 3.0 * size);
        EXPECT_LE(farPlane / nearPlane, 2e6f);
    }
}
