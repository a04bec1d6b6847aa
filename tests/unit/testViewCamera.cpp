// Settings of a view, and where they put its eye.
#include "GL/VIEW/clsViewCamera.h"

#include <cmath>

#include "GL/BASE/clsGLPerspective.h"
#include "GL/VIEW/clsFishEye.h"
#include "ViewFixture.h"

namespace {

class ViewCamera : public ViewTest {
protected:
    double Away(const double* p) const {
        return std::hypot(mCamera.mCCamPos.mPos[0] - p[0], mCamera.mCCamPos.mPos[1] - p[1],
                          mCamera.mCCamPos.mPos[2] - p[2]);
    }
};

TEST_F(ViewCamera, TheModeBringsItsGeometryUnlessThePictureIsWide) {
    for (int mode = DISPLAY_FREE; mode <= DISPLAY_PATH; ++mode) {
        mView.TakeGeometry(ViewSettings_cls::GEOMETRY_PERSPECTIVE);
        mView.TakeDisplayMode(mode);
        EXPECT_EQ(mView.GetGeometry() == ViewSettings_cls::GEOMETRY_ORTHOGRAPHIC, mView.IsAlongAxis())
            << mode;
        mView.TakeGeometry(ViewSettings_cls::GEOMETRY_PANORAMIC);
        mView.TakeDisplayMode(mode);
        EXPECT_EQ(mView.GetGeometry(), ViewSettings_cls::GEOMETRY_PANORAMIC) << mode;
    }
    mView.TakeDisplayMode(DISPLAY_FREE);
    EXPECT_EQ(mView.GetMultiPanelMode(), FishEye_cls::MODE_PANORAMA);
    mView.TakeDisplayMode(DISPLAY_TO_PLUS_X);
    EXPECT_EQ(mView.GetMultiPanelMode(), FishEye_cls::MODE_FLAT) << "an axis has no panorama";
}

TEST_F(ViewCamera, ThePathsGeometryCountsWhereTheViewLooksThroughIt) {
    mHost.mCamera.mCGeometry.mValue = CameraPath_cls::GEOMETRY_FISHEYE;
    EXPECT_FALSE(mView.IsFishEye());
    mView.TakeDisplayMode(DISPLAY_PATH);
    EXPECT_TRUE(mView.IsFishEye());
    ViewSettings_cls extra(mHost, ViewSettings_cls::kExtraPanel);
    extra.TakeDisplayMode(DISPLAY_COPY);
    EXPECT_TRUE(extra.IsFishEye());
    extra.TakeGeometry(ViewSettings_cls::GEOMETRY_PANORAMIC);
    EXPECT_TRUE(extra.IsCylinder()) << "a copy may be wide by itself";
}

TEST_F(ViewCamera, FilesCantAskForWhatAPanelDoesNotOffer) {
    ViewSettings_cls extra(mHost, ViewSettings_cls::kExtraPanel);
    EXPECT_TRUE(mView.ReadSettings("Panel0DisplayMode=8"));
    EXPECT_TRUE(extra.ReadSettings("Panel4DisplayMode=8"));
    EXPECT_EQ(mView.GetDisplayMode(), DISPLAY_PATH);
    EXPECT_EQ(extra.GetDisplayMode(), DISPLAY_COPY);
    EXPECT_TRUE(mView.ReadSettings("Panel0DisplayMode=-3"));
    EXPECT_EQ(mView.GetDisplayMode(), DISPLAY_FREE);
    EXPECT_TRUE(mView.ReadSettings("Panel0GLGeometry=99"));
    EXPECT_EQ(mView.GetGeometry(), ViewSettings_cls::GEOMETRY_PANORAMIC);
    EXPECT_FALSE(mView.ReadSettings("Panel1DisplayMode=1")) << "another panel's";
    EXPECT_TRUE(mView.mConfList.SerializeAll().Contains("\nPanel0Distortion0\n")) << "without a sign between";
}

TEST_F(ViewCamera, AxisViewsStandOnTheirAxisAndLookAlongIt) {
    mShared.msCAnchorPosOrtho[1] = 0.5;
    mShared.msCAnchorPos[0] = 9.0; // the free views' doesn't concern them
    mView.mGLOrthoScale.mValue = 4.0f;
    const double front[6][3] = {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}};
    for (int mode = DISPLAY_TO_PLUS_X; mode <= DISPLAY_TO_MINUS_Z; ++mode) {
        mView.TakeDisplayMode(mode);
        PlaceCamera();
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(mCamera.mCCamPos.mFront[i], front[mode - 1][i]) << mode;
            EXPECT_EQ(mCamera.mCCamPos.mPos[i], mShared.msCAnchorPosOrtho[i] - 4.0 * front[mode - 1][i])
                << mode;
        }
        EXPECT_EQ(mCamera.GetDistanceToAnchor(), 4.0);
    }
}

TEST_F(ViewCamera, AUsersMoveOfTheLinkedCameraStandsUntilTimeMoves) {
    const double from[3] = {5, 0, 0}, to[3] = {0, 5, 0};
    SceneObj_cls::SetKeyAt(mHost.mCamera.mpCTranslate, from, 0.0);
    SceneObj_cls::SetKeyAt(mHost.mCamera.mpCTranslate, to, 1.0);
    mCamera.LinkageConnect();
    PlaceCamera();
    EXPECT_LT(Away(from), 1e-9);
    const double moved[3] = {7, 7, 7};
    mCamera.GetPCCameraPosition()->Set(moved);
    PlaceCamera();
    EXPECT_LT(Away(moved), 1e-9);
    mCamera.ForceUpdateCameraPos();
    PlaceCamera();
    EXPECT_LT(Away(from), 1e-9) << "dropped";
    mCamera.GetPCCameraPosition()->Set(moved);
    mHost.mTime.SetFrameNative(100, 0);
    PlaceCamera();
    EXPECT_LT(Away(to), 1e-9);
    mCamera.GetPCCameraPosition()->Set(moved);
    mHost.mTime.SetFrameNative(0, 0);
    PlaceCamera();
    EXPECT_LT(Away(from), 1e-9);
}

TEST_F(ViewCamera, WideAnglesAreLimitedInPerspectiveOnly) {
    GLPerspective_cls perspective;
    const auto angle = [&](int geometry, float degrees, bool bTold) {
        mView.TakeGeometry(geometry);
        mView.mGLPersAngle.mValue = degrees;
        EXPECT_EQ(!mCamera.SetAngleIfLinked(&perspective).empty(), bTold) << geometry << " " << degrees;
        return perspective.mAngle;
    };
    EXPECT_EQ(angle(ViewSettings_cls::GEOMETRY_PERSPECTIVE, 119.5f, false), 119.5);
    EXPECT_EQ(angle(ViewSettings_cls::GEOMETRY_PERSPECTIVE, 120.0f, true), 120.0);
    EXPECT_EQ(angle(ViewSettings_cls::GEOMETRY_PERSPECTIVE, 170.0f, true), 120.0);
    EXPECT_EQ(angle(ViewSettings_cls::GEOMETRY_ORTHOGRAPHIC, 170.0f, false), 170.0);
    EXPECT_EQ(angle(ViewSettings_cls::GEOMETRY_FISHEYE, 180.0f, false), 180.0);
    mView.TakeDisplayMode(DISPLAY_PATH);
    mHost.mCamera.mCVAngle.mValue = 50.0;
    EXPECT_EQ(angle(ViewSettings_cls::GEOMETRY_PERSPECTIVE, 170.0f, false), 50.0) << "the path's counts";
}

TEST_F(ViewCamera, APivotFollowsTheAnchorPath) {
    const double place[3] = {1, 2, 3};
    SceneObj_cls::SetKeyAt(mHost.mAnchor.mpCTranslate, place, 0.0);
    PlaceCamera();
    EXPECT_EQ(mShared.msCAnchorPos[2], 0.0);
    mView.mPivotMode.mValue = true;
    PlaceCamera();
    EXPECT_EQ(mShared.msCAnchorPos[2], 3.0);
    // The free camera turns to it where it stands.
    const double gap = mCamera.GetDistanceToAnchor();
    EXPECT_NEAR(gap, Away(place), 1e-9);
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(mCamera.mCCamPos.mPos[i] + gap * mCamera.mCCamPos.mFront[i], place[i], 1e-9);
}

} // namespace
