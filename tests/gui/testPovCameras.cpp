// POV-Ray's camera is the view's, in every geometry, for both eyes, and along paths that it goes by its
// clock.
#include <string>
#include <utility>

#include <wx/clipbrd.h>

#include "COMMON/EventIds.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "PovTest.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class PovCameras : public PovTest {
protected:
    void TearDown() override {
        CameraPath_cls& path = *Hub()->mpCCameraPath;
        path.mCLookAnchor.mValue = false;
        path.mCFishEyeOffset.mValue = 0.0f;
        path.mCVAngle.mValue = 35.0f;
        Canvas(0)->SetDisplayMode(0);
        PovTest::TearDown();
    }
    static CameraPath_cls& LinkPath(unsigned geometry) {
        Canvas(0)->LinkageConnect();
        Hub()->mpCCameraPath->mCGeometry.mValue = geometry;
        return *Hub()->mpCCameraPath;
    }
    static std::string GetClipboard() {
        wxTextDataObject data;
        const wxClipboardLocker lock;
        return wxTheClipboard->GetData(data) ? data.GetText().utf8_string() : std::string();
    }
    /// Keys of its place along x and of its turn.
    static void SetPath(double x, double turn, double when = SceneObj_cls::kCurrent) {
        const bool bUndo = std::exchange(Parameters_cls::msbUndoCommandMake, false);
        const double place[3] = {x, 0.4, 0.3}, angles[3] = {turn, 3, -5};
        Hub()->mpCCameraPath->mpCTranslate->SetKeyFrame(place, true, when);
        Hub()->mpCCameraPath->mpCRotate->SetKeyFrame(angles, true, when);
        Parameters_cls::msbUndoCommandMake = bUndo;
        Canvas(0)->mCamera.ForceUpdateCameraPos();
    }
};

TEST_F(PovCameras, PerspectiveOfSquareAndWideAndTallPictures) {
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}, {-1, 0.2f, 0.6f, 0.08f}});
    LookFrom({-4, 0.3, 0.2}, {1, -0.05, -0.03});
    ExpectAlike(128, 128, 4);
    ExpectAlike(160, 96, 4);
    ExpectAlike(96, 128, 4);
}

TEST_F(PovCameras, OrthographicPicturesFromTheCameraAndAlongAxes) {
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}, {-1, 0.2f, 0.6f, 0.08f}});
    Canvas(0)->SetGeometry(ViewSettings_cls::GEOMETRY_ORTHOGRAPHIC);
    ExpectAlike(160, 96, 4);
    ExpectAlike(96, 128, 4);
    Canvas(0)->SetDisplayMode(2);
    Canvas(0)->mGLOrthoScale.mValue = 4.0f;
    ExpectAlike(128, 128, 4);
    Canvas(0)->SetDisplayMode(0);
}

TEST_F(PovCameras, FisheyePictures) {
    Shared().msCFBOSizeIndex.mValue = 0; // of each face
    ShowBalls({{0, 0, 0, 0.4f}, {-4, 3, 0, 0.4f}, {-4, 0, 3, 0.4f}, {-2, -2, -2, 0.3f}});
    Canvas(0)->SetGeometry(ViewSettings_cls::GEOMETRY_FISHEYE);
    Canvas(0)->mGLPersAngle.mValue = 180.0f;
    ExpectAlike(128, 128, 4);
    CameraPath_cls& path = LinkPath(ViewSettings_cls::GEOMETRY_FISHEYE);
    path.mCVAngle.mValue = 180.0f;
    path.mCFishEyeOffset.mValue = 20.0f;
    SetPath(-4, 0);
    ExpectAlike(128, 128, 3); // one is behind the rim
}

TEST_F(PovCameras, EyesHaveCamerasOfTheirOwn) {
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}});
    StereoGram_cls& stereo = *Hub()->mpCStereoGram;
    const bool bUndo = std::exchange(Parameters_cls::msbUndoCommandMake, false);
    const double parallax = 0.4;
    stereo.mpCParallax->SetKeyFrame(&parallax, true, SceneObj_cls::kCurrent);
    Parameters_cls::msbUndoCommandMake = bUndo;
    stereo.mCType.mValue = StereoGram_cls::TYPE_TOE_IN;
    stereo.mCToeInAngle.mValue = 2.0f;
    for (const int output : {StereoGram_cls::OUTPUT_LEFT, StereoGram_cls::OUTPUT_RIGHT}) {
        stereo.mCEye.mValue = output;
        ExpectAlike(128, 96, 3);
    }
    stereo.Reset();
}

TEST_F(PovCameras, ThePathIsACameraAtPovRaysClock) {
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}});
    CameraPath_cls& path = LinkPath(0);
    TimeCtrl_cls& time = *Hub()->mpCTimeCtrl;
    const int last = time.GetMaxFrame();
    time.SetMaxFrameNative(4);
    for (ParamGroup_cls* group : {path.mpCTranslate, path.mpCRotate})
        group->SetTimeDependent(true);
    SetPath(-5, 10, 0.0);
    SetPath(-3.5, 25, 1.0);
    for (ParamGroup_cls* group : {path.mpCTranslate, path.mpCRotate})
        for (Parameters_cls& param : group->mVParams) {
            std::vector<KeyFrame_cls> keys = param.GetKeys();
            for (KeyFrame_cls& key : keys)
                key.mInterpType = INTERP_HERMITE_AUTO;
            param.ExecCommandSetKeys(keys);
        }
    std::vector<Scene_st> scenes;
    std::vector<wxImage> views;
    for (const bool bAnchor : {false, true}) {
        path.mCLookAnchor.mValue = bAnchor;
        FilterScope_cls::Set(Hub()->mpCAnchorPath->mpCTranslate, {0.3, 0.1, 0});
        for (const int frame : {0, 2}) {
            time.SetFrameNative(frame, 0);
            Canvas(0)->mCamera.ForceUpdateCameraPos();
            ExpectAlike(128, 96, 3); // the scene of the frame
            Menu(ID_EXPORT_PATH_POV);
            const std::string text = GetClipboard();
            EXPECT_EQ(text.find("#declare t0 = clock;\n#if (t0 <= 1)\n"), 0u) << text;
            views.push_back(Draw(128, 96));
            scenes.push_back(
                {"global_settings { assumed_gamma 1 }\n" + text +
                     "#default { finish { ambient 1 diffuse 0 } }\nunion { sphere { 0, 0.1 } sphere "
                     "{ <0, 0.7, 0.5>, 0.1 } sphere { <1, -0.9, -0.4>, 0.15 } pigment { rgb 1 } }\n",
                 128, 96, time.GetDoubleIndex()});
        }
    }
    const std::vector<wxImage> rendered = RenderAll(scenes);
    for (size_t i = 0; i < views.size(); ++i) {
        SCOPED_TRACE("path " + std::to_string(i));
        ExpectSameSpots(views[i], rendered[i], 3);
    }
    EXPECT_LT(GetSimilarity(views[0], views[1]), 0.95) << "it moves";
    time.SetFrameNative(0, 0);
    time.SetMaxFrameNative(last);
    FilterScope_cls::Set(Hub()->mpCAnchorPath->mpCTranslate, {0, 0, 0});
    for (ParamGroup_cls* group : {path.mpCTranslate, path.mpCRotate})
        for (Parameters_cls& param : group->mVParams) {
            KeyFrame_cls key = param.GetKeys().front();
            key.mValue = 0.0;
            param.ExecCommandSetKeys({key});
            param.mbTimeDepend.mValue = false;
        }
}

TEST_F(PovCameras, ThePathGoesWithAFollowedParticle) {
    const std::vector<std::vector<Ball_st>> run = {{{0, 0, 0}, {1, -1.2f, -0.4f, 0.15f}},
                                                   {{0, 0.6f, 0.3f}, {1, -1.2f, -0.4f, 0.15f}},
                                                   {{0, -0.5f, 0.7f}, {1, -1.2f, -0.4f, 0.15f}}};
    ShowRun(run);
    CameraPath_cls& path = LinkPath(0);
    path.mCLookAnchor.mValue = true;
    SetPath(-5, 0);
    TimeCtrl_cls& time = *Hub()->mpCTimeCtrl;
    ParticleWatch_cls& watch = *Hub()->mpCParticles;
    watch.ReadStrLine("PickedParticle=1 0 0 0 0 0");
    watch.ReadStrLine("PickedMarks=1 0 0");
    ASSERT_TRUE(watch.mbFollow);
    ASSERT_EQ(time.GetMaxFrame(), 2);
    std::vector<Scene_st> scenes;
    std::vector<wxImage> views;
    for (const int frame : {0, 1, 2}) {
        time.SetFrameNative(frame, 0);
        Repaint();
        while (watch.Learn(100, ParticleWatch_cls::Source::Wait) != ParticleWatch_cls::State::Known) {
        }
        Canvas(0)->mCamera.ForceUpdateCameraPos();
        views.push_back(Draw(128, 96));
    }
    Menu(ID_EXPORT_PATH_POV);
    const std::string text = GetClipboard();
    EXPECT_TRUE(mVMessages.empty()) << "all of its way is known";
    for (size_t k = 0; k < 3; ++k) {
        std::string balls = "#default { finish { ambient 1 diffuse 0 } }\n";
        for (const Ball_st& ball : run[k])
            balls += "sphere { <" + std::to_string(ball.x) + "," + std::to_string(ball.y) + "," +
                     std::to_string(ball.z) + ">, " + std::to_string(ball.radius) + " pigment { rgb 1 } }\n";
        scenes.push_back({"global_settings { assumed_gamma 1 }\n" + text + balls, 128, 96, double(k) / 2.0});
    }
    const std::vector<wxImage> rendered = RenderAll(scenes);
    for (size_t k = 0; k < 3; ++k) {
        SCOPED_TRACE("frame " + std::to_string(k));
        ExpectSameSpots(views[k], rendered[k], 2);
    }
    AnchorPath_cls& anchor = *Hub()->mpCAnchorPath;
    const auto follow = anchor.mFollow;
    anchor.mFollow = [&follow](double index, double out[3]) {
        return index == 0.5 ? AnchorPath_cls::LATE : follow(index, out);
    };
    Menu(ID_EXPORT_PATH_POV);
    anchor.mFollow = follow;
    EXPECT_TRUE(WasTold("isn't known yet in 1 of 3 pictures"));
    EXPECT_EQ(GetClipboard().find("\t0.5, <"), std::string::npos);
    watch.Reset();
    path.SetToDefault();
}

} // namespace
