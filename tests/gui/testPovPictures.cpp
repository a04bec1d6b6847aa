// POV-Ray's picture of a frame is the view's.
#include <cmath>
#include <random>

#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/Globals.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "MESH/PovMeshText.h"
#include "PovTest.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"

namespace {

class PovPictures : public PovTest {};

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
    ShowBalls({{0, 0, 0, 0.4f}, {-4, 3, 0, 0.4f}, {-4, 0, 3, 0.4f}, {-2, -2, -2, 0.3f}});
    Canvas(0)->SetGeometry(ViewSettings_cls::GEOMETRY_FISHEYE);
    Canvas(0)->mGLPersAngle.mValue = 180.0f;
    ExpectAlike(128, 128, 4);
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
    for (const bool bFast : {false, true}) {
        Pov().mCFormat.mFastColoring.mValue = bFast;
        Draw(64, 64);
        mScene = Write();
        EXPECT_TRUE(Render(64, 64).IsOk());
        EXPECT_NE(mScene.find("internal(59)"), std::string::npos);
    }
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
    const auto expect = [this](const char* what) {
        const wxImage view = Draw(96, 96);
        Write();
        const wxImage rendered = Render(96, 96);
        ASSERT_TRUE(rendered.IsOk());
        for (const auto& [x, y] : {std::pair(33, 48), std::pair(62, 48), std::pair(5, 5)}) {
            EXPECT_NEAR(view.GetRed(x, y), rendered.GetRed(x, y), 8) << what << x;
            EXPECT_NEAR(view.GetBlue(x, y), rendered.GetBlue(x, y), 8) << what << x;
        }
        Keep(view, std::string(what) + "view");
        Keep(rendered, std::string(what) + "pov");
    };
    expect("background");
    FilterFogData_cls& fog = *mFilters.Add<FilterFog_cls>(FILTER_FOG).GetPCData();
    SetColor(*fog.mpCColor, 0.4f, 0.2f, 0.6f);
    const double values[2] = {0.15, 1.0};
    fog.mpCFogParam->SetKeyFrame(values, true, SceneObj_cls::kCurrent);
    expect("fog");
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
            EXPECT_NEAR(view.GetRed(x, y), rendered[0].GetRed(x, y), 24) << x << ", " << y;
            EXPECT_NEAR(view.GetBlue(x, y), rendered[0].GetBlue(x, y), 24) << x << ", " << y;
            ++compared;
        }
    EXPECT_GT(compared, 20);
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
    for (const bool bGroup : {false, true}) {
        Pov().mGroupMaterials.mValue = bGroup;
        mScene = Write();
        EXPECT_EQ(mScene.find("nan"), std::string::npos);
        EXPECT_EQ(mScene.find("#macro SP3"), std::string::npos) << "hidden";
        const wxImage rendered = Render(96, 96);
        ASSERT_TRUE(rendered.IsOk());
        EXPECT_EQ(FindSpots(rendered).size(), 3u);
        Keep(rendered, bGroup ? "grouped" : "plain");
    }
    ShowBalls({});
    Draw(96, 96);
    mScene = Write();
    EXPECT_TRUE(Render(96, 96).IsOk()) << "no particles";
}

TEST_F(PovPictures, ThePathIsACameraAtPovRaysClock) {
    const bool bUndo = std::exchange(Parameters_cls::msbUndoCommandMake, false);
    CameraPath_cls& path = *Hub()->mpCCameraPath;
    ShowBalls({{0, 0, 0}, {0, 0.7f, 0.5f}, {1, -0.9f, -0.4f, 0.15f}});
    Canvas(0)->LinkageConnect();
    path.mCGeometry.mValue = 0;
    for (const bool bAnchor : {false, true}) {
        path.mCLookAnchor.mValue = bAnchor;
        FilterScope_cls::Set(path.mpCTranslate, {-4, 0.4, 0.3});
        FilterScope_cls::Set(path.mpCRotate, {20, 3, 355});
        FilterScope_cls::Set(Hub()->mpCAnchorPath->mpCTranslate, {0.3, 0.1, 0});
        Canvas(0)->mCamera.ForceUpdateCameraPos();
        const wxImage view = Draw(128, 96);
        const wxString text = GetPathPov(*Hub());
        EXPECT_EQ(text.Find("#declare t0 = clock;\n#declare Camera_Translate_x = -4;\n"), 0);
        std::ofstream(mDir / "scene.pov") << "global_settings { assumed_gamma 1 }\n"
                                          << text.utf8_string()
                                          << "#default { finish { ambient 1 diffuse 0 } }\nunion { sphere { "
                                             "0, 0.1 } sphere { <0, 0.7, 0.5>, 0.1 } "
                                             "sphere { <1, -0.9, -0.4>, 0.15 } pigment { rgb 1 } }\n";
        const wxImage rendered = Render(128, 96);
        ASSERT_TRUE(rendered.IsOk());
        Keep(view, bAnchor ? "anchor_view" : "view");
        Keep(rendered, bAnchor ? "anchor_pov" : "pov");
        ExpectSameSpots(view, rendered, 3);
    }
    path.mCLookAnchor.mValue = false;
    Canvas(0)->SetDisplayMode(0);
    Parameters_cls::msbUndoCommandMake = bUndo;
}

// The manual has a table of these, with these pictures.
TEST_F(PovPictures, DifferWhereTheManualSaysSo) {
    SetMaterial(0.15f, 0.8f, 0.3f);
    SetOneLight(LightSRC_cls::TYPE_PARALLEL, {0, 0, 0}, {0, 40, 20});
    ShowBalls({{0, 0, 0, 0.12f}, {0, 0.35f, 0, 0.12f}, {0, 0.7f, 0, 0.12f}});
    const auto draw = [this](const std::string& name) {
        const std::pair<wxImage, wxImage> both = {Draw(160, 160), (Write(), Render(160, 160))};
        Keep(both.first, name + "_view");
        Keep(both.second, name + "_pov");
        return both;
    };
    FilterDataBoxData_cls& box = *mFilters.Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
    FilterScope_cls::Set(box.mpCRotate, {90, 0, 0});
    FilterScope_cls::Set(box.mpCAnchor.get(), {0, 0.7, 0});
    const auto anchor = draw("1anchor");
    EXPECT_LT(GetSimilarity(anchor.first, anchor.second), 0.9);
    box.mCValid.mValue = false;
    FilterObjectData_cls& object = *mFilters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    FilterScope_cls::Set(object.mpCTranslate, {0, -0.6, 0});
    FilterScope_cls::Set(object.mpCRotate, {60, 0, 0});
    FilterScope_cls::Set(object.mpCScale, {0.4, 0.8, 0.2});
    const auto order = draw("2order");
    EXPECT_LT(GetSimilarity(order.first, order.second), 0.9);
    object.mCValid.mValue = false;
    FilterGridData_cls& grid = *mFilters.Add<FilterGrid_cls>(FILTER_GRID).GetPCData();
    grid.mCGridType.mValue = FilterGridData_cls::SPHERICAL;
    const auto sphere = draw("3sphere");
    EXPECT_GT(FindSpots(sphere.first, 40).size() + 0u, 0u);
    EXPECT_LT(GetSimilarity(sphere.first, sphere.second), 0.9);
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
