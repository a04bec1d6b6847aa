// Where directions go in a dome picture and in a strip.
#include <cmath>

#include <gtest/gtest.h>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/VIEW/clsFishEye.h"

namespace {

constexpr double kNear = 1.2e-3; // the overlap of the faces, and the short pi

/// The direction that a place of a face's texture shows, in the view's coordinates: right, up, front.
void GetDirection(int face, int mode, const float* texture, double out[3]) {
    PositionAndDirection_cls camera;
    const double front[3] = {0, 0, -1}, up[3] = {0, 1, 0};
    camera.Setv(front, up);
    FishEye_cls::TurnToFace(face, mode, &camera);
    double p[3];
    for (int i = 0; i < 3; ++i)
        p[i] = camera.mFront[i] + (2.0 * double(texture[0]) - 1.0) * camera.mRight[i] +
               (2.0 * double(texture[1]) - 1.0) * camera.mUp[i];
    MyVector::Normalize(p);
    out[0] = p[0];
    out[1] = p[1];
    out[2] = -p[2];
}

double Degrees(double radians) { return radians * 180.0 / M_PI; }

TEST(FishEye, DirectionsOfAllFacesLandAtTheirRadius) {
    for (const double angle : {180.0, 90.0, 220.0})
        for (int face = 0; face < FishEye_cls::kFaces; ++face) {
            const auto mesh = FishEye_cls::MakeFaceMesh(face, FishEye_cls::MODE_FISHEYE, angle);
            ASSERT_EQ(mesh.size(), 80u * 162u);
            double worst = 0.0;
            for (const auto& vertex : mesh) {
                double d[3];
                GetDirection(face, FishEye_cls::MODE_FISHEYE, vertex.mTexture, d);
                const double radius = Degrees(std::acos(std::min(d[2], 1.0))) / angle;
                const double azimuth = std::atan2(d[1], d[0]);
                worst = std::max(worst, std::hypot(double(vertex.mPlace[0]) - radius * std::cos(azimuth),
                                                   double(vertex.mPlace[1]) - radius * std::sin(azimuth)));
            }
            EXPECT_LT(worst, kNear * 180.0 / angle) << "face " << face << ", angle " << angle;
        }
}

TEST(FishEye, TheStripShowsAnglesAroundAndAbove) {
    for (int face = 0; face < FishEye_cls::kFaces; ++face)
        for (const auto& vertex : FishEye_cls::MakeFaceMesh(face, FishEye_cls::MODE_PANORAMA, 180.0)) {
            double d[3];
            GetDirection(face, FishEye_cls::MODE_PANORAMA, vertex.mTexture, d);
            // Straight behind is at both ends.
            double longitude = Degrees(std::atan2(d[0], d[2]));
            if (face == 2 && longitude > 90.0) longitude -= 360.0;
            if (face == 3 && longitude < -90.0) longitude += 360.0;
            EXPECT_NEAR(double(vertex.mPlace[0]), longitude / 360.0, 1e-5) << face;
            EXPECT_NEAR(double(vertex.mPlace[1]), Degrees(std::asin(d[1])) / 360.0, 1e-5) << face;
        }
    // The band ends where the lowest columns end, so that no column shows less than its neighbours.
    EXPECT_NEAR(FishEye_cls::GetStripHalfHeight(180.0), Degrees(std::atan(std::sqrt(0.5))) / 360.0, 1e-3);
}

TEST(FishEye, FacesMeetWithoutAGap) {
    const auto edge = [](int face, bool bLast) {
        float low = 1e9f, high = -1e9f;
        for (const auto& vertex : FishEye_cls::MakeFaceMesh(face, FishEye_cls::MODE_PANORAMA, 180.0)) {
            low = std::min(low, vertex.mPlace[0]);
            high = std::max(high, vertex.mPlace[0]);
        }
        return bLast ? high : low;
    };
    const int order[] = {2, 0, 1, 3};
    for (int i = 0; i < 3; ++i)
        EXPECT_GT(edge(order[i], true), edge(order[i + 1], false)) << i;
    EXPECT_LE(edge(2, false), -0.5f);
    EXPECT_GE(edge(3, true), 0.5f);
}

TEST(FishEye, AnglesThatNoDomeHasAreLimited) {
    EXPECT_EQ(FishEye_cls::LimitAngle(0.0), 1.0);
    EXPECT_EQ(FishEye_cls::LimitAngle(-20.0), 1.0);
    EXPECT_EQ(FishEye_cls::LimitAngle(1e9), 360.0);
    EXPECT_EQ(FishEye_cls::LimitAngle(std::nan("")), 180.0);
    for (const auto& vertex : FishEye_cls::MakeFaceMesh(0, FishEye_cls::MODE_FISHEYE, 0.0))
        ASSERT_TRUE(std::isfinite(vertex.mPlace[0]) && std::isfinite(vertex.mPlace[1]));
}

} // namespace
