// POV-Ray's picture of a frame is the view's.
#include <cmath>
#include <random>
#include <set>

#include <wx/clipbrd.h>

#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "MESH/PovMeshText.h"
#include "PovTest.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class PovPictures : public PovTest {
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

TEST_F(PovPictures, PerspectiveOfSquareAndWideAndTallPictures) {
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}, {-1, 0.2f, 0.6f, 0.08f}});
    LookFrom({-4, 0.3, 0.2}, {1, -0.05, -0.03});
    ExpectAlike(128, 128, 4);
    ExpectAlike(160, 96, 4);
    ExpectAlike(96, 128, 4);
}

TEST_F(PovPictures, OrthographicPicturesFromTheCameraAndAlongAxes) {
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}, {-1, 0.2f, 0.6f, 0.08f}});
    Canvas(0)->SetGeometry(ViewSettings_cls::GEOMETRY_ORTHOGRAPHIC);
    ExpectAlike(160, 96, 4);
    ExpectAlike(96, 128, 4);
    Canvas(0)->SetDisplayMode(2);
    Canvas(0)->mGLOrthoScale.mValue = 4.0f;
    ExpectAlike(128, 128, 4);
    Canvas(0)->SetDisplayMode(0);
}

TEST_F(PovPictures, FisheyePictures) {
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

TEST_F(PovPictures, EyesHaveCamerasOfTheirOwn) {
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}});
    StereoGram_cls& stereo = *Hub()->mpCStereoGram;
    const bool bUndo = std::exchange(Parameters_cls::msbUndoCommandMake, false);
    const double parallax = 0.4;
    stereo.mpCParallax->SetKeyFrame(&parallax, true, SceneObj_cls::kCurrent);
    Parameters_cls::msbUndoCommandMake = bUndo;
    stereo.mCType.mValue = StereoGram_cls::TYPE_TOE_IN;
    stereo.mCToeInAngle.mValue = 2.0f;
    for (const int eye : {EYE_LEFT, EYE_RIGHT}) {
        stereo.mCEye.mValue = eye == EYE_LEFT ? StereoGram_cls::OUTPUT_LEFT : StereoGram_cls::OUTPUT_RIGHT;
        ExpectAlike(128, 96, 3, eye);
    }
    stereo.Reset();
}

TEST_F(PovPictures, LitSpheresAreAsBright) {
    SetMaterial(0.2f, 0.7f, 0);
    ShowBalls({{0, 0.5f, 0, 0.35f}, {0, -0.5f, 0, 0.35f}});
    std::vector<std::string> names, scenes;
    std::vector<wxImage> views;
    for (const int type : {LightSRC_cls::TYPE_PARALLEL, LightSRC_cls::TYPE_POINT, LightSRC_cls::TYPE_SPOT,
                           LightSRC_cls::TYPE_CYLINDER}) {
        for (const int fade : {0, 1, 2}) {
            if (fade > 0 && type == LightSRC_cls::TYPE_PARALLEL) continue; // which a thousand units take away
            LightSRC_cls& light = SetOneLight(type, {-4, 0.5, 1}, {0, 15, 0}, 0.8);
            light.mCFade.mValue = fade;
            light.mCFadeDistance.mValue = 3.0f;
            light.mCSpotAngle.mValue = 60;
            names.push_back("type " + std::to_string(type) + " fade " + std::to_string(fade));
            views.push_back(Draw(96, 96));
            scenes.push_back(Write());
        }
    }
    const std::vector<wxImage> rendered = RenderAll(scenes, 96, 96);
    for (size_t i = 0; i < names.size(); ++i) {
        for (const double x : {34.0, 61.0})
            EXPECT_NEAR(GreyAt(views[i], x, 48), GreyAt(rendered[i], x, 48), 8) << names[i];
        Keep(views[i], names[i] + " view");
        Keep(rendered[i], names[i] + " pov");
    }
}

TEST_F(PovPictures, DataInABoxAndCopiesOfThem) {
    ShowBalls({{0, 0, 0}, {0, 0.5f, 0.3f}});
    FilterDataBoxData_cls& box = *mFilters.Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
    FilterScope_cls::Set(box.mpCTranslate, {0.2, -0.4, 0.3});
    ExpectAlike(128, 128, 2);
    FilterScope_cls::Set(box.mpCTranslate, {0, 0, 0});
    FilterScope_cls::Set(box.mpCRotate, {50, 0, 0});
    FilterScope_cls::Set(box.mpCScale, {1.5, 1.5, 1.5});
    ExpectAlike(128, 128, 2);
    FilterScope_cls::Set(box.mpCRotate, {0, 0, 0});
    FilterScope_cls::Set(box.mpCScale, {1, 1, 1});
    std::fill_n(Hub()->mpCPeriodicBoundary->mCPeriodicSize.mValue, 3, 0.08f); // of vectors that are 10 long
    FilterCopyData_cls& copies = *mFilters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData();
    copies.mCMin[1].mValue = -1;
    ExpectAlike(128, 128, 4);
}

TEST_F(PovPictures, SticksThroughFacesAndOfTwoFilters) {
    ShowBalls({{0, -0.6f, 0, 0.01f}, {0, 0.6f, 0, 0.01f}, {0, 0, -0.7f, 0.01f}, {0, 0.4f, -0.7f, 0.01f}});
    std::fill_n(Hub()->mpCPeriodicBoundary->mCPeriodicSize.mValue, 3, 0.18f);
    FilterCopyData_cls& copies = *mFilters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData();
    copies.mCMin[1].mValue = -1;
    const auto add = [this](const std::string& name, const std::string& lines) -> FilterStickData_cls& {
        std::ofstream(mDir / name) << lines;
        FilterStickData_cls& sticks = *mFilters.Add<FilterStick_cls>(FILTER_STICK).GetPCData();
        sticks.mCStickType.mValue = FilterStickData_cls::CYLINDER;
        sticks.mCStickRadius.mValue = 0.06f;
        sticks.mCStickPath.mStrValue = wxString::FromUTF8(mDir / name);
        return sticks;
    };
    add("through.txt", "1 0 2\n");
    add("within.txt", "2 3 0\n");
    SetOneLight(LightSRC_cls::TYPE_PARALLEL, {0, 0, 0}, {0, 0, 0});
    ExpectAlike(128, 128, 2);
    EXPECT_NE(mScene.find("CY(<0.00000, 0.60000, 0.00000>,<0.00000, 1.20000, 0.00000>)"), std::string::npos);
}

TEST_F(PovPictures, SticksOfEveryMaskReachTheCopiesBeside) {
    ShowBalls({{0, -0.2f, -0.2f, 0.001f}, {0.1f, 0.2f, 0.1f, 0.001f}});
    std::fill_n(Hub()->mpCPeriodicBoundary->mCPeriodicSize.mValue, 3, 0.08f);
    FilterCopyData_cls& copies = *mFilters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData();
    for (ConfItemINT_cls& least : copies.mCMin)
        least.mValue = -1;
    FilterStickData_cls& sticks = *mFilters.Add<FilterStick_cls>(FILTER_STICK).GetPCData();
    sticks.mCStickType.mValue = FilterStickData_cls::CYLINDER;
    sticks.mCStickRadius.mValue = 0.04f;
    SetOneLight(LightSRC_cls::TYPE_PARALLEL, {0, 0, 0}, {0, 0, 0});
    LookFrom({-4, -1.5, 0.8}, {1, 0.3, -0.3});
    std::vector<std::string> scenes;
    std::vector<wxImage> views;
    for (int mask = 0; mask < 8; ++mask) {
        const std::string path = mDir / ("mask" + std::to_string(mask) + ".txt");
        std::ofstream(path) << "1 0 " << mask << "\n";
        sticks.mCStickPath.mStrValue = wxString::FromUTF8(path);
        views.push_back(Draw(96, 96));
        scenes.push_back(Write());
        EXPECT_NE(scenes.back().find("CY("), std::string::npos) << mask;
    }
    const std::vector<wxImage> rendered = RenderAll(scenes, 96, 96);
    for (size_t mask = 0; mask < 8; ++mask) {
        Keep(views[mask], std::to_string(mask) + "view");
        Keep(rendered[mask], std::to_string(mask) + "pov");
        EXPECT_GT(GetSimilarity(views[mask], rendered[mask]), 0.95) << mask;
        EXPECT_GT(GetSimilarity(views[mask], rendered[mask]),
                  GetSimilarity(views[mask], rendered[(mask + 1) % 8]) + 0.01)
            << "of another mask";
    }
}

TEST_F(PovPictures, ObjectsAndMeshes) {
    ShowBalls({{0, 0, 0, 0.05f}});
    std::ofstream(mDir / "roof.obj") << "v 0 -0.3 0\nv 0 0.3 0\nv 0 0 0.4\nf 1 2 3\n";
    const int kinds[] = {FilterObjectData_cls::BOX, FilterObjectData_cls::SPHERE, FilterObjectData_cls::PLANE,
                         FilterObjectData_cls::IMPORT, FilterObjectData_cls::IMPORT};
    int i = 0;
    for (const int kind : kinds) {
        FilterObjectData_cls& data = *mFilters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
        data.mCObjectType.mValue = unsigned(kind);
        for (const size_t c : {0u, 1u, 2u})
            SetColor(*data.mvpCColorCurve[c], c == 0, c == 0, c == 0);
        const double side = kind == FilterObjectData_cls::IMPORT ? 1.0 : 0.4;
        FilterScope_cls::Set(data.mpCScale, {side, side, side});
        if (kind == FilterObjectData_cls::PLANE) FilterScope_cls::Set(data.mpCScale, {0.5, 0.9, 1});
        FilterScope_cls::Set(data.mpCTranslate, {0, -0.9 + 0.9 * (i % 3), i < 3 ? 0.7 : -0.8});
        data.mCImportPath.mStrValue = wxString::FromUTF8(mDir / (i == 4 ? "roof.pov" : "roof.obj"));
        ++i;
    }
    const float vertex[9] = {0, -0.3f, 0, 0, 0.3f, 0, 0, 0, 0.4f}, normal[9] = {1, 0, 0, 1, 0, 0, 1, 0, 0};
    const int face[3] = {0, 1, 2};
    std::ofstream(mDir / "roof.pov") << GetMesh2FormatRef("roof", {vertex, 3, normal, face, 1});
    LookFrom({-4, 0, 0.9}, {1, 0, -0.2});
    ExpectAlike(160, 160, 6);
    EXPECT_NE(mScene.find("#include \"roof.pov\"\n"), std::string::npos);
}

TEST_F(PovPictures, OddSettingsAreNoneThatPovRayRefuses) {
    ShowBalls({{0, 0, 0, 0.1f}, {0, 0.5f, 0, 0.1f}});
    std::ofstream(mDir / "roof.obj") << "v 0 -0.3 0\nv 0 0.3 0\nv 0 0 0.4\nf 1 2 3\n";
    const auto add = [this](unsigned kind) -> FilterObjectData_cls& {
        FilterObjectData_cls& data = *mFilters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
        data.mCObjectType.mValue = kind;
        data.mCImportPath.mStrValue = wxString::FromUTF8(mDir / "roof.obj");
        for (int layer = 0; layer < SceneObjTexture_cls::kLayers; ++layer)
            data.mCTexture.mCNormalPattern[layer].mValue = 11;
        return data;
    };
    FilterScope_cls::Set(add(FilterObjectData_cls::BOX).mpCScale, {0, 0.3, 0.3});
    FilterScope_cls::Set(add(FilterObjectData_cls::SPHERE).mpCScale, {0, 0, 0});
    std::fill_n(add(FilterObjectData_cls::IMPORT).mCArrayVector[2].mValue, 3, 0.0f);
    add(FilterObjectData_cls::IMPORT).mCValid.mValue = false;
    FilterGridData_cls& grid = *mFilters.Add<FilterGrid_cls>(FILTER_GRID).GetPCData();
    FilterScope_cls::Set(grid.mpCScale, {0, 1, 0});
    LightSRC_cls& light = SetOneLight(LightSRC_cls::TYPE_POINT, {-4, 0.5, 1}, {0, 0, 0});
    light.mCLightArea.mValue = true;
    light.mCLightAreaQuality.mValue = 1;
    LookFrom({-4, 0, 0.2}, {1, 0, 0}, 1e-7);
    std::vector<std::string> scenes;
    for (const bool bFast : {false, true}) {
        Pov().mCFormat.mFastColoring.mValue = bFast;
        Draw(64, 64);
        scenes.push_back(mScene = Write());
        EXPECT_NE(mScene.find("internal(59)"), std::string::npos);
    }
    RenderAll(scenes, 64, 64);
    EXPECT_EQ(mScene.find("MESH_OBJECT2"), std::string::npos) << "of a filter that is switched off";
}

// A sphere of POV-Ray has a back, too, so that the numbers are compared instead of the pictures.
TEST_F(PovPictures, OpacityIsTheViews) {
    SetMaterial(0.8f, 0, 0);
    SetBackground(0, 0, 0);
    Pov().mColorByParticle.mValue = true;
    GLAttribute_cls& first = *Drawing().mpCGLAttribute[0];
    const float factor = first.mAlphaFactor.mValue;
    ShowBalls({{0, 0, 0, 0.5f}});
    const int whole = GreyAt(Draw(64, 64), 32, 32);
    first.mAlphaFactor.mValue = 0.5f;
    first.mDiffuse.mConstantColor.mValue[3] = 0.5f;
    GbSnapDataRefresh = true;
    EXPECT_NEAR(GreyAt(Draw(64, 64), 32, 32), whole / 4, 6);
    mScene = Write();
    EXPECT_NE(mScene.find("rgbt <0.8000,0.8000,0.8000,0.7500>"), std::string::npos);
    first.mAlphaFactor.mValue = factor;
}

TEST_F(PovPictures, GridsStandWhereTheyAreInViews) {
    FilterGridData_cls& grid = AddGrid();
    grid.mCGridType.mValue = FilterGridData_cls::FLAT_YZ;
    FilterScope_cls::Set(grid.mpCScale, {4, 1.3, 1.3}); // lines of 2 pixels need to be seen in both
    const wxImage view = Draw(128, 128);
    Write();
    const wxImage rendered = Render(128, 128);
    ASSERT_TRUE(rendered.IsOk());
    Keep(view, "view");
    Keep(rendered, "pov");
    const auto getReach = [](const wxImage& image, int level) {
        std::array<int, 4> reach = {999, 999, 0, 0};
        for (const Spot_st& spot : FindSpots(image, level))
            reach = {std::min(reach[0], spot.mLeft), std::min(reach[1], spot.mTop),
                     std::max(reach[2], spot.mRight), std::max(reach[3], spot.mBottom)};
        return reach;
    };
    const std::array<int, 4> a = getReach(view, 20), b = getReach(rendered, 5);
    EXPECT_GT(a[2], a[0]);
    for (size_t side = 0; side < 4; ++side)
        EXPECT_NEAR(a[side], b[side], 2) << side;
}

TEST_F(PovPictures, FogAndBackground) {
    SetBackground(0.1f, 0.3f, 0.5f);
    SetMaterial(0.7f, 0, 0);
    ShowBalls({{0, 0.5f, 0, 0.3f}, {6, -1.2f, 0, 0.6f}});
    const wxImage background = Draw(96, 96);
    const std::string scene = Write();
    FilterFogData_cls& fog = *mFilters.Add<FilterFog_cls>(FILTER_FOG).GetPCData();
    SetColor(*fog.mpCColor, 0.4f, 0.2f, 0.6f);
    const double values[2] = {0.15, 1.0};
    fog.mpCFogParam->SetKeyFrame(values, true, SceneObj_cls::kCurrent);
    const wxImage views[] = {background, Draw(96, 96)};
    const std::vector<wxImage> rendered = RenderAll({scene, Write()}, 96, 96);
    for (size_t i = 0; i < 2; ++i) {
        for (const auto& [x, y] : {std::pair(33, 48), std::pair(62, 48), std::pair(5, 5)}) {
            EXPECT_NEAR(views[i].GetRed(x, y), rendered[i].GetRed(x, y), 8) << i << " at " << x;
            EXPECT_NEAR(views[i].GetBlue(x, y), rendered[i].GetBlue(x, y), 8) << i << " at " << x;
        }
        Keep(views[i], std::to_string(i) + "view");
        Keep(rendered[i], std::to_string(i) + "pov");
    }
}

TEST_F(PovPictures, ColoursOfACurveAndGroupsOfMaterials) {
    SetMaterial(0.1f, 0.8f, 0);
    std::vector<Ball_st> balls;
    for (int i = 0; i < 9; ++i)
        balls.push_back({0, -0.8f + 0.2f * float(i), 0.3f * std::sin(float(i)), 0.12f, 0, float(i) / 8});
    ShowBalls(balls);
    ColorCurve_cls& curve = Drawing().mpCGLAttribute[0]->mDiffuse;
    curve.mbUseColorCurve.mValue = true;
    curve.SetKeys({{0, 0.9, 0.1, 0.1, 1}, {1, 0.1, 0.3, 0.9, 1}});
    curve.mScalingMin.mValue = 0;
    curve.mScalingMax.mValue = 1;
    GbSnapDataRefresh = true;
    const wxImage view = Draw(128, 128);
    std::vector<std::string> scenes;
    for (int way = 0; way < 4; ++way) {
        Pov().mColorByParticle.mValue = way < 2;
        Pov().mGroupMaterials.mValue = way % 2 == 0;
        scenes.push_back(Write());
    }
    mScene = scenes.back();
    const std::vector<wxImage> rendered = RenderAll(scenes, 128, 128);
    for (size_t way = 0; way < 4; ++way)
        Keep(rendered[way], std::to_string(way));
    Keep(view, "view");
    EXPECT_GE(GetSimilarity(rendered[0], rendered[1]), 0.999) << "in groups or one by one";
    EXPECT_GE(GetSimilarity(rendered[2], rendered[3]), 0.999);
    EXPECT_NE(mScene.find("#macro SP0(VPos,Radi,FilterAlpha)\nsphere{ VPos, Radi\n"), std::string::npos);
    const std::vector<Spot_st> spots = FindSpots(view, 30);
    ASSERT_FALSE(spots.empty());
    int compared = 0;
    for (int x = 8; x < 120; x += 4)
        for (int y = 40; y < 88; y += 4) {
            if (GreyAt(view, x, y) < 60 || GreyAt(rendered[0], x, y) < 60) continue;
            EXPECT_NEAR(view.GetRed(x, y), rendered[0].GetRed(x, y), 16) << x << ", " << y;
            EXPECT_NEAR(view.GetBlue(x, y), rendered[0].GetBlue(x, y), 16) << x << ", " << y;
            ++compared;
        }
    EXPECT_GT(compared, 20);
}

// Spheres are shaded, and points are as transparent as they are small: their hue is the same.
TEST_F(PovPictures, PointsAndBillboardsHaveTheirColours) {
    SetBackground(0, 0, 0);
    Pov().mColorByParticle.mValue = true;
    ShowBalls({{0, 0.6f, 0, 0.3f, 0, 0}, {0, 0, 0, 0.3f, 0, 0.5f}, {0, -0.6f, 0, 0.3f, 0, 1}});
    GLAttribute_cls& first = *Drawing().mpCGLAttribute[0];
    ColorCurve_cls& curve = first.mColor;
    curve.mbUseColorCurve.mValue = true;
    curve.SetKeys({{0, 0.9, 0.1, 0.1, 1}, {1, 0.1, 0.3, 0.9, 1}});
    curve.mScalingMin.mValue = 0;
    curve.mScalingMax.mValue = 1;
    std::vector<wxImage> views;
    std::vector<std::string> scenes;
    std::set<long> seen;
    for (const unsigned type : {DRAW_POINT, DRAW_BILLBOARD}) {
        first.mDrawType.mValue = type;
        first.mPointSize.mValue = 7;
        GbSnapDataRefresh = true;
        views.push_back(Draw(96, 96));
        scenes.push_back(Write());
    }
    const std::vector<wxImage> rendered = RenderAll(scenes, 96, 96);
    for (size_t i = 0; i < views.size(); ++i) {
        Keep(views[i], std::to_string(i) + "view");
        Keep(rendered[i], std::to_string(i) + "pov");
        const std::vector<Spot_st> spots = FindSpots(views[i], 12);
        EXPECT_EQ(spots.size(), 3u) << i;
        for (const Spot_st& spot : spots) {
            const int x = int(spot.mX), y = int(spot.mY);
            const auto getHue = [x, y](const wxImage& image) {
                return double(image.GetRed(x, y)) / (image.GetRed(x, y) + image.GetBlue(x, y));
            };
            EXPECT_NEAR(getHue(views[i]), getHue(rendered[i]), 0.03) << i << " at " << x;
            seen.insert(std::lround(10 * getHue(views[i])));
        }
    }
    EXPECT_EQ(seen.size(), 3u) << "each has its own";
}

TEST_F(PovPictures, BadParticlesCostNoOthers) {
    const float kNaN = std::nanf("");
    ShowBalls({{0, 0.5f, 0},
               {kNaN, 0, 0},
               {0, 0, 0, kNaN},
               {1e30f, 0, 0},
               {0, -1e30f, 1e30f},
               {0, -0.5f, 0},
               {0, 0, 0.5f, 0},
               {0, 0, -0.5f, -0.1f}, // as large as above 0
               {0, 0, 0.2f, 0.1f, 3}});
    Drawing().mpCGLAttribute[3]->mDrawType.mValue = DRAW_HIDE;
    Draw(96, 96);
    std::vector<std::string> scenes;
    for (const bool bNone : {false, true}) {
        for (const bool bGroup : {false, true}) {
            Pov().mGroupMaterials.mValue = bGroup;
            scenes.push_back(mScene = Write());
            EXPECT_EQ(mScene.find("nan"), std::string::npos);
            EXPECT_EQ(mScene.find("#macro SP3"), std::string::npos) << "hidden";
        }
        if (bNone) break;
        ShowBalls({});
        Draw(96, 96);
    }
    // Without particles the decimals are those that are asked for.
    Canvas(0)->mShowData.mValue = false;
    scenes.push_back(Write());
    Pov().mDigits.mValue = 8;
    scenes.push_back(Write());
    Canvas(0)->mShowData.mValue = true;
    EXPECT_GT(scenes.back().size(), scenes[scenes.size() - 2].size());
    const std::vector<wxImage> rendered = RenderAll(scenes, 96, 96);
    for (size_t i = 0; i < rendered.size(); ++i)
        EXPECT_EQ(FindSpots(rendered[i]).size(), i < 2 ? 3u : 0u) << i;
}

TEST_F(PovPictures, ThePathIsACameraAtPovRaysClock) {
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

TEST_F(PovPictures, ThePathGoesWithAFollowedParticle) {
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

// The manual has a table of these, with these pictures.
TEST_F(PovPictures, DifferWhereTheManualSaysSo) {
    SetMaterial(0.15f, 0.8f, 0.3f);
    SetOneLight(LightSRC_cls::TYPE_PARALLEL, {0, 0, 0}, {0, 40, 20});
    ShowBalls({{0, 0, 0, 0.12f}, {0, 0.35f, 0, 0.12f}, {0, 0.7f, 0, 0.12f}});
    std::vector<wxImage> views;
    std::vector<std::string> scenes;
    const auto draw = [&] {
        views.push_back(Draw(160, 160));
        scenes.push_back(Write());
    };
    FilterDataBoxData_cls& box = *mFilters.Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
    FilterScope_cls::Set(box.mpCRotate, {90, 0, 0});
    FilterScope_cls::Set(box.mpCAnchor.get(), {0, 0.7, 0});
    draw();
    box.mCValid.mValue = false;
    FilterObjectData_cls& object = *mFilters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    FilterScope_cls::Set(object.mpCTranslate, {0, -0.6, 0});
    FilterScope_cls::Set(object.mpCRotate, {60, 0, 0});
    FilterScope_cls::Set(object.mpCScale, {0.4, 0.8, 0.2});
    draw();
    object.mCValid.mValue = false;
    FilterGridData_cls& grid = *mFilters.Add<FilterGrid_cls>(FILTER_GRID).GetPCData();
    grid.mCGridType.mValue = FilterGridData_cls::SPHERICAL;
    draw();
    EXPECT_FALSE(FindSpots(views.back(), 40).empty());
    const std::vector<wxImage> rendered = RenderAll(scenes, 160, 160);
    const std::string names[] = {"1anchor", "2order", "3sphere"};
    for (size_t i = 0; i < 3; ++i) {
        Keep(views[i], names[i] + "_view");
        Keep(rendered[i], names[i] + "_pov");
        EXPECT_LT(GetSimilarity(views[i], rendered[i]), 0.9) << names[i];
    }
}

TEST_F(PovPictures, ManySpheresAreSimilar) {
    SetMaterial(0.2f, 0.8f, 0);
    std::mt19937 random(5);
    std::uniform_real_distribution<float> side(-1, 1);
    std::vector<Ball_st> balls;
    for (int i = 0; i < 50; ++i)
        balls.push_back({side(random), side(random), side(random), 0.15f + 0.05f * side(random)});
    ShowBalls(balls);
    const wxImage view = Draw(160, 160);
    Write();
    const wxImage rendered = Render(160, 160);
    ASSERT_TRUE(rendered.IsOk());
    Keep(view, "view");
    Keep(rendered, "pov");
    EXPECT_GE(GetSimilarity(view, rendered), 0.9);
}

} // namespace
