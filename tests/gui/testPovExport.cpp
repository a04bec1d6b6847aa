// Scenes for POV-Ray as files: the common scene, films whose light is kept, and what is short or odd.
#include <random>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/SafeFile.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "PovTest.h"
#include "TIME/clsTimeCtrl.h"

namespace {

namespace fs = std::filesystem;

class PovExport : public PovTest {
protected:
    void TearDown() override {
        GSafeFileStep = nullptr;
        GPovMachineBytes = 0.0;
        Pov().AbortRenderPovAnim();
        Pov().StopRenderer();
        PovTest::TearDown();
    }
    std::string ReadFile(const std::string& name) const {
        std::ifstream file(mDir / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    bool Has(const std::string& name, const std::string& text) const {
        return ReadFile(name).find(text) != std::string::npos;
    }
    wxImage Picture(const std::string& name) const { return wxImage(wxString::FromUTF8(mDir / name)); }
    /// The menu's film of these frames, as large as this.
    void RenderFilm(int frames, int side) {
        TimeCtrl_cls* time = Hub()->mpCTimeCtrl;
        time->SetMaxFrameNative(frames - 1);
        time->SetAnimInterpNative(1);
        time->SetRepeatNative(0);
        time->SetWAMinNative(0);
        time->SetWAMaxNative(frames - 1);
        PovFormat_cls& format = Pov().mCFormat;
        format.mWidth.mValue = format.mHeight.mValue = side;
        format.mDisplay.mValue = false;
        Pov().mPathPovRay.mStrValue = "/usr/bin/povray";
        Pov().mAnimInitNumber = 0;
        Menu(ID_POV_RENDER_ANIM);
        ASSERT_TRUE(PumpUntil([] { return Pov().IsBusy(); }));
        ASSERT_TRUE(PumpUntil([] { return !Pov().IsBusy(); }, 60000));
        EXPECT_TRUE(Pov().GetFailures().empty());
    }
    void ShowMany(int number) {
        std::mt19937 random(5);
        std::uniform_real_distribution<float> side(-1, 1);
        std::vector<Ball_st> balls;
        for (int i = 0; i < number; ++i)
            balls.push_back({side(random), side(random), side(random), 0.15f + 0.05f * side(random)});
        ShowBalls(balls);
    }
    static double GetBrightness(const wxImage& image) {
        double sum = 0.0;
        for (int y = 0; y < image.GetHeight(); ++y)
            for (int x = 0; x < image.GetWidth(); ++x)
                sum += GreyAt(image, x, y);
        return sum / (image.GetWidth() * image.GetHeight());
    }
    bool Export() {
        PovScene_cls scene(*Hub(), Canvas(0));
        return scene.OutputPovRayPov(wxString::FromUTF8(mDir / "scene.pov"), "CommonScene.pov",
                                     wxString::FromUTF8(mDir / "CommonScene.pov"));
    }
};

TEST_F(PovExport, OneSnapshotsDataStandInACommonScene) {
    SetMaterial(0.2f, 0.8f, 0);
    ShowMany(50);
    Pov().mUseCommonSceneFile.mValue = true;
    Pov().mGroupMaterials.mValue = true;
    Pov().mColorByParticle.mValue = true;
    Pov().mCFormat.mAntialias.mValue = true;
    const wxImage view = Draw(120, 120);
    Keep(view, "view");
    RenderFilm(2, 120);
    EXPECT_EQ(ReadFile("CommonScene.pov").compare(0, 14, "union{\nsphere{"), 0)
        << "it stands where it is included";
    for (const std::string name : {"povanim0000", "povanim0001"}) {
        EXPECT_TRUE(Has(name + ".pov", "#include \"" + (mDir / "CommonScene.pov") + "\"\n"));
        EXPECT_FALSE(Has(name + ".pov", "sphere{"));
        const wxImage picture = Picture(name + ".png");
        ASSERT_TRUE(picture.IsOk());
        Keep(picture, name);
        EXPECT_GE(GetSimilarity(view, picture), 0.9);
    }
    // Another order is the same scene; particles of another radius are not.
    EXPECT_TRUE(Export());
    EXPECT_TRUE(Has("scene.pov", "#include"));
    Drawing().mpCGLAttribute[0]->mRadiusFactor.mValue = 1.5f;
    GbSnapDataRefresh = true;
    Draw(64, 64);
    const std::string common = ReadFile("CommonScene.pov");
    EXPECT_TRUE(Export());
    EXPECT_FALSE(Has("scene.pov", "#include"));
    EXPECT_TRUE(Has("scene.pov", "sphere{"));
    EXPECT_EQ(ReadFile("CommonScene.pov"), common);
    // Nor does a still write over what frames that wait for their turn include.
    Pov().mbRenderingAnim = true;
    Menu(ID_POV_EXPORT_SNAP);
    Pov().mbRenderingAnim = false;
    EXPECT_EQ(ReadFile("CommonScene.pov"), common);
    Menu(ID_POV_EXPORT_SNAP);
    EXPECT_NE(ReadFile("CommonScene.pov"), common);
}

TEST_F(PovExport, FilmsOfAStillSceneDontFlicker) {
    SetMaterial(0.1f, 0.6f, 0);
    ShowMany(12);
    FilterObjectData_cls& floor = *mFilters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    floor.mCObjectType.mValue = FilterObjectData_cls::BOX;
    FilterScope_cls::Set(floor.mpCTranslate, {0, 0, -1.2});
    FilterScope_cls::Set(floor.mpCScale, {4, 4, 0.1});
    Pov().SetPreset(true);
    RenderFilm(3, 64);
    EXPECT_TRUE(fs::exists(mDir / "CommonLight.rca"));
    EXPECT_TRUE(Has("povanim0000.ini", "Radiosity_To_File=on"));
    const wxImage first = Picture("povanim0000.png");
    ASSERT_TRUE(first.IsOk());
    for (const std::string name : {"povanim0001", "povanim0002"}) {
        EXPECT_TRUE(Has(name + ".ini", "Radiosity_From_File=on"));
        EXPECT_FALSE(Has(name + ".ini", "Radiosity_To_File=on"));
        const wxImage picture = Picture(name + ".png");
        ASSERT_TRUE(picture.IsOk());
        EXPECT_NEAR(GetBrightness(picture), GetBrightness(first), 0.5) << name;
        EXPECT_GE(GetSimilarity(picture, first), 0.99) << name;
        Keep(picture, name);
    }
    EXPECT_GT(GetBrightness(first), 10.0);
    Keep(first, "povanim0000");
}

TEST_F(PovExport, GridsOfEveryKindStandWhereTheyAreInViews) {
    FilterGridData_cls& grid = AddGrid();
    LookFrom({-4, 1.5, 2}, {0.85, -0.3, -0.38});
    const unsigned types[] = {FilterGridData_cls::FLAT_XY, FilterGridData_cls::FLAT_XZ,
                              FilterGridData_cls::CUBIC, FilterGridData_cls::CIRCLE};
    std::vector<std::string> scenes;
    std::vector<wxImage> views;
    for (const unsigned type : types) {
        grid.mCGridType.mValue = type;
        grid.mCGridMin.mValue = type == FilterGridData_cls::CIRCLE ? 0.2f : -0.5f;
        FilterScope_cls::Set(grid.mpCScale, {1.5, 1.5, 1.5});
        views.push_back(Draw(128, 128));
        scenes.push_back(Write());
    }
    const auto getReach = [](const wxImage& image, int level) {
        std::array<int, 4> reach = {999, 999, 0, 0};
        for (int y = 0; y < image.GetHeight(); ++y)
            for (int x = 0; x < image.GetWidth(); ++x)
                if (GreyAt(image, x, y) > level)
                    reach = {std::min(reach[0], x), std::min(reach[1], y), std::max(reach[2], x),
                             std::max(reach[3], y)};
        return reach;
    };
    const std::vector<wxImage> rendered = RenderAll(scenes, 128, 128);
    for (size_t i = 0; i < views.size(); ++i) {
        Keep(views[i], std::to_string(types[i]) + "view");
        Keep(rendered[i], std::to_string(types[i]) + "pov");
        const std::array<int, 4> a = getReach(views[i], 20), b = getReach(rendered[i], 5);
        EXPECT_GT(a[2], a[0]) << types[i];
        for (size_t side = 0; side < 4; ++side)
            EXPECT_NEAR(a[side], b[side], 2) << types[i] << " side " << side;
    }
}

TEST_F(PovExport, FadedGroupsFarFromTheOriginAreTheSamePicture) {
    SetMaterial(0.9f, 0, 0);
    SetBackground(0, 0, 0);
    std::vector<Ball_st> balls;
    for (int i = 0; i < 6; ++i)
        balls.push_back({1000, 499.1f + 0.35f * float(i), -200.3f + 0.3f * float(i % 3), 0.12f});
    ShowBalls(balls);
    LookFrom({996, 500, -200}, {1, 0, 0});
    mFilters.AddCut(FilterBooleanData_cls::INTERSECT, FilterBooleanData_cls::BOX, 3.0f, {1000, 499.3, -200},
                    {4, 1, 4});
    Pov().mColorByParticle.mValue = true;
    const wxImage view = Draw(128, 96);
    Keep(view, "view");
    std::vector<std::string> scenes;
    for (const bool bGroup : {false, true}) {
        Pov().mGroupMaterials.mValue = bGroup;
        scenes.push_back(mScene = Write());
    }
    const std::vector<wxImage> rendered = RenderAll(scenes, 128, 96);
    Keep(rendered[0], "plain");
    Keep(rendered[1], "grouped");
    EXPECT_NE(mScene.find("rgbt <"), std::string::npos) << "some are faded";
    EXPECT_GE(GetSimilarity(rendered[0], rendered[1]), 0.999);
    const std::vector<Spot_st> spots = FindSpots(view, 20);
    EXPECT_GE(spots.size(), 4u);
    ExpectSameSpots(view, rendered[1], FindSpots(view).size());
}

TEST_F(PovExport, ScenesWarnOfNothingThatCanBeHelped) {
    ShowMany(8);
    Pov().mGroupMaterials.mValue = true;
    Draw(32, 32);
    mScene = Write();
    EXPECT_TRUE(Render(32, 32).IsOk());
    for (const std::string& warning : mWarnings)
        ADD_FAILURE() << warning;
}

TEST_F(PovExport, MeshesWhoseCountsLieAreWrittenInPlace) {
    ShowBalls({{0, 0.8f, 0.8f, 0.05f}});
    const std::string vertices = "<0,-0.5,0>,<0,0.5,0>,<0,0,0.6>}", face = "face_indices{1,<0,1,2>}}";
    FilterObjectData_cls& data = *mFilters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    data.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
    for (const size_t c : {0u, 1u, 2u})
        SetColor(*data.mvpCColorCurve[c], c == 0, c == 0, c == 0);
    std::vector<std::string> scenes;
    std::vector<wxImage> views;
    for (const std::string& text :
         {"#declare M=mesh2{vertex_vectors{5," + vertices + face,
          "#declare M=mesh2{vertex_vectors{2," + vertices + "face_indices{9,<0,1,1>}}",
          "#declare M=mesh2{vertex_vectors{3," + vertices + "normal_vectors{2,<1,0,0>,<1,0,0>}" + face}) {
        const std::string path = mDir / ("lie" + std::to_string(scenes.size()) + ".pov");
        std::ofstream(path) << text;
        data.mCImportPath.mStrValue = wxString::FromUTF8(path);
        views.push_back(Draw(64, 64));
        scenes.push_back(Write());
        EXPECT_EQ(scenes.back().find("#include"), std::string::npos) << text;
        EXPECT_TRUE(WasTold("not as many vectors as it tells")) << text;
        mVMessages.clear();
    }
    const std::vector<wxImage> rendered = RenderAll(scenes, 64, 64);
    for (size_t i = 0; i < views.size(); ++i)
        EXPECT_EQ(FindSpots(rendered[i], 20).size(), FindSpots(views[i], 20).size()) << i;
}

TEST_F(PovExport, SticksOfOtherDataAreLeftOut) {
    ShowBalls({{0, -0.6f, 0, 0.05f}, {0, 0.6f, 0, 0.05f}});
    std::ofstream(mDir / "bonds.txt") << "0 9 0\n";
    FilterStickData_cls& sticks = *mFilters.Add<FilterStick_cls>(FILTER_STICK).GetPCData();
    sticks.mCStickType.mValue = FilterStickData_cls::CYLINDER;
    sticks.mCStickPath.mStrValue = wxString::FromUTF8(mDir / "bonds.txt");
    Draw(48, 48);
    mScene = Write();
    EXPECT_EQ(mScene.find("STICKS"), std::string::npos);
    EXPECT_TRUE(Render(48, 48).IsOk());
}

TEST_F(PovExport, MemoryIsAskedForOnce) {
    ShowMany(100); // 520 bytes each, and a texture
    Pov().mGroupMaterials.mValue = true;
    GPovMachineBytes = 1e5;
    EXPECT_TRUE(PovScene_cls(*Hub(), Canvas(0)).GetMemoryQuestion().empty());
    mFilters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData()->mCMax[0].mValue = 3;
    for (const bool bHide : {true, false}) {
        Drawing().mpCGLAttribute[0]->mDrawType.mValue = bHide ? DRAW_HIDE : DRAW_SPHERE;
        GbSnapDataRefresh = true;
        Draw(32, 32);
        EXPECT_EQ(PovScene_cls(*Hub(), Canvas(0)).GetMemoryQuestion().empty(), bHide);
    }
    const std::string text = "GB of memory for this scene; this machine has";
    mAnswers = {false};
    for (const int id : {ID_POV_EXPORT_SNAP, ID_POV_EXPORT_ANIM}) {
        mVMessages.clear();
        mAnswers = {false};
        Menu(id);
        ASSERT_TRUE(PumpUntil([&] { return WasTold(text) && !Pov().IsBusy(); }));
        EXPECT_FALSE(Canvas(0)->WritesOutput());
        EXPECT_FALSE(Hub()->mpCTimeCtrl->IsPlaying());
        EXPECT_FALSE(fs::exists(mDir / "povsnap0000.ini") || fs::exists(mDir / "povanim0000.ini"));
    }
    const PovScene_cls scene(*Hub(), Canvas(0));
    EXPECT_FALSE(scene.GetMemoryQuestion().empty());
    scene.AllowMemory();
    EXPECT_TRUE(scene.GetMemoryQuestion().empty()) << "who has said yes isn't asked again";
}

TEST_F(PovExport, FullFoldersLeaveTheOldFiles) {
    ShowMany(8);
    Draw(32, 32);
    ASSERT_TRUE(Export());
    const std::string before = ReadFile("scene.pov");
    GSafeFileStep = [](const char* step) { return std::string(step) != "write"; };
    LookFrom({-3, 0, 0}, {1, 0, 0});
    Draw(32, 32);
    EXPECT_FALSE(Export());
    EXPECT_TRUE(WasTold("scene.pov could not be written: "));
    EXPECT_EQ(ReadFile("scene.pov"), before);
    Menu(ID_POV_RENDER_SNAP);
    ASSERT_TRUE(PumpUntil([this] { return WasTold("povsnap0000.ini could not be written"); }));
    EXPECT_FALSE(Pov().IsBusy());
    GSafeFileStep = nullptr;
    for (const auto& entry : fs::directory_iterator(mDir.mPath))
        EXPECT_EQ(entry.path().filename().string().find("povsnap"), std::string::npos);
}

} // namespace
