// POV-Ray's picture of what filters put into a scene is the view's: boxes, copies, sticks, objects, grids,
// fog.
#include <array>
#include <string>
#include <utility>

#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "MESH/PovMeshText.h"
#include "PovTest.h"

namespace {

class PovFilters : public PovTest {};

TEST_F(PovFilters, DataInABoxAndCopiesOfThem) {
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

TEST_F(PovFilters, SticksThroughFacesAndOfTwoFilters) {
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

TEST_F(PovFilters, SticksOfEveryMaskReachTheCopiesBeside) {
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

TEST_F(PovFilters, ObjectsAndMeshes) {
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

TEST_F(PovFilters, OddSettingsAreNoneThatPovRayRefuses) {
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

TEST_F(PovFilters, GridsStandWhereTheyAreInViews) {
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

TEST_F(PovFilters, FogAndBackground) {
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

// The manual has a table of these, with these pictures.
TEST_F(PovFilters, DifferWhereTheManualSaysSo) {
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

} // namespace
