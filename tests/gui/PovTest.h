// Base of tests that render a view's frame with the real POV-Ray: particles of one's own, the view's picture
// of a small size, the scene of it, and POV-Ray's picture of that.
#pragma once

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <wx/arrstr.h>
#include <wx/filefn.h>
#include <wx/image.h>
#include <wx/utils.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsPovScene.h"
#include "FILTER/clsFilterGrid.h"
#include "FilterPictures.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "IMAGE/clsImageIO.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "PictureTest.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

class PovTest : public PictureTest {
protected:
    struct Ball_st {
        float x, y, z;
        float radius = 0.1f;
        int type = 0;
        float value = 0.0f;
    };

    static void SetUpTestSuite() { Frame()->SetSize(900, 700); } // little to paint
    void SetUp() override {
        PictureTest::SetUp();
        mLooks = Drawing().Serialize();
        mLights = Lights().Serialize();
        Shared().msCFBOSizeIndex.mValue = 1;
        Hub()->mpCDrawOption->mClassify.mValue = 1;
        PovRayCtrl_cls& pov = Pov();
        pov.SetToDefault();
        pov.ResetOwnSettings();
        pov.mLikeView.mValue = true;
        pov.mPathPovWork.mStrValue = wxString::FromUTF8(mDir.mPath.string());
        pov.mUseCommonSceneFile.mValue = false;
        pov.mCFormat.mFastColoring.mValue = false;
        for (GLAttribute_cls* attribute : Drawing().mpCGLAttribute) {
            attribute->mDrawType.mValue = DRAW_SPHERE;
            attribute->mDrawQuality.mValue = QUALITY_EXACT;
            attribute->mShaderType.mValue = 2;
            attribute->mRadiusType.mValue = RADIUS_OF_DATA;
            attribute->mRadiusFactor.mValue = 1.0f;
        }
        SetMaterial(1, 0, 0);
        SetOneLight(LightSRC_cls::TYPE_PARALLEL, {-4, -2, 3}, {0, 30, 30});
    }
    void TearDown() override {
        CompareWaiting();
        Hub()->mpCFilters->ClearFilters();
        Hub()->mpCPeriodicBoundary->SetToDefault();
        Pov().SetToDefault();
        const auto read = [](const wxString& text, const auto& take) {
            std::wistringstream lines(text.ToStdWstring());
            for (std::wstring line; std::getline(lines, line);)
                take(lines, line);
        };
        read(mLooks, [](std::wistream& s, const wxString& line) { Drawing().ReadStrLine(s, line); });
        read(mLights, [](std::wistream& s, const wxString& line) { Lights().ReadStrLine(s, line); });
        PictureTest::TearDown();
    }

    static PovRayCtrl_cls& Pov() { return *Hub()->mpCPovRayCtrl; }
    static LightSRCCtrl_cls& Lights() { return *Hub()->mpCLightSRCCtrl; }
    static GLSequence_cls& Drawing() {
        return GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence());
    }
    static void SetColor(ColorCurve_cls& curve, float r, float g, float b) {
        const float color[4] = {r, g, b, 1.0f};
        curve.mbUseColorCurve.mValue = false;
        std::copy_n(color, 4, curve.mConstantColor.mValue);
    }
    /// Grey of all attributes: flat with ambient alone.
    static void SetMaterial(float ambient, float diffuse, float specular) {
        for (GLAttribute_cls* attribute : Drawing().mpCGLAttribute) {
            SetColor(attribute->mAmbient, ambient, ambient, ambient);
            SetColor(attribute->mDiffuse, diffuse, diffuse, diffuse);
            SetColor(attribute->mSpecular, specular, specular, specular);
        }
    }
    static LightSRC_cls& SetOneLight(int type, const FilterScope_cls::Values& place,
                                     const FilterScope_cls::Values& angles, double strength = 1.0) {
        const bool bUndo = std::exchange(Parameters_cls::msbUndoCommandMake, false);
        Lights().mCLightNumber.mValue = 1;
        LightSRC_cls& light = Lights().GetLight(0);
        light.SetToDefault();
        light.mCType.mValue = type;
        light.mCCastShadow.mValue = false;
        FilterScope_cls::Set(light.mpCTranslate, place);
        FilterScope_cls::Set(light.mpCRotate, angles);
        light.mpCStrength->SetKeyFrame(&strength, true, SceneObj_cls::kCurrent);
        Parameters_cls::msbUndoCommandMake = bUndo;
        return light;
    }
    /// A white grid of two cells a side, turned, beside a small ball.
    FilterGridData_cls& AddGrid() {
        ShowBalls({{0, 0, 0, 0.02f}});
        FilterGridData_cls& grid = *mFilters.Add<FilterGrid_cls>(FILTER_GRID).GetPCData();
        grid.mCGridMin.mValue = -0.5f;
        grid.mCGridMax.mValue = 0.5f;
        grid.mCGridLineNum.mValue = 2;
        grid.mCGridCoord.mValue = false;
        SetColor(*grid.mpCColor, 1, 1, 1);
        FilterScope_cls::Set(grid.mpCTranslate, {0, 0.1, 0.2});
        FilterScope_cls::Set(grid.mpCRotate, {20, 0, 0});
        return grid;
    }
    void ShowBalls(const std::vector<Ball_st>& balls) { ShowRun({balls}); }
    /// A snapshot each.
    void ShowRun(const std::vector<std::vector<Ball_st>>& run) {
        for (size_t k = 0; k < run.size(); ++k) {
            std::ofstream file(mDir / ("balls000" + std::to_string(k) + ".bin"), std::ios::binary);
            const auto put = [&file](const auto& value) {
                file.write(reinterpret_cast<const char*>(&value), sizeof value);
            };
            put(float(k));
            put(int(run[k].size()));
            for (size_t i = 0; i < run[k].size(); ++i) {
                const Ball_st& ball = run[k][i];
                const float head[7] = {ball.x, ball.y, ball.z, 0, 0, 0, ball.radius};
                put(head);
                put(int(i));
                put(ball.type);
                put(ball.value);
            }
        }
        ASSERT_TRUE(OpenAndPaint(mDir / "balls0000.bin"));
        LookFrom({-4, 0, 0}, {1, 0, 0});
    }
    /// The free camera of view 0, its anchor `distance` in front of it.
    static void LookFrom(const FilterScope_cls::Values& place, const FilterScope_cls::Values& front,
                         double distance = 4.0) {
        const double up[3] = {0, 0, 1};
        PositionAndDirection_cls* camera = Canvas(0)->mCamera.GetPCCameraPosition();
        camera->Set(place.data());
        camera->Setv(front.data(), up);
        for (size_t i = 0; i < 3; ++i)
            Shared().msCAnchorPos[i] = camera->mPos[i] + distance * camera->mFront[i];
        camera->SetAncPos(Shared().msCAnchorPos);
    }
    /// The view's picture of this size.
    wxImage Draw(int w, int h) {
        const wxString path = wxString::FromUTF8(mDir / "view.png");
        Canvas(0)->RequestImage(
            [&path](const ImageBuffers_st& buffers, wxSize size) {
                GCImgIO.SaveImageFromTexture(buffers, size.x, size.y, path);
            },
            wxSize(w, h));
        EXPECT_TRUE(Canvas(0)->DrawImage());
        GCImgIO.Finish();
        return wxImage(path);
    }
    /// The scene of the frame that was drawn last.
    std::string Write() {
        const wxString path = wxString::FromUTF8(mDir / "scene.pov");
        EXPECT_TRUE(
            PovScene_cls(*Hub(), Canvas(0))
                .OutputPovRayPov(path, "CommonScene.pov", wxString::FromUTF8(mDir / "CommonScene.pov")));
        std::ifstream file(mDir / "scene.pov", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    /// A scene that POV-Ray is to make a picture of.
    struct Scene_st {
        std::string mText;
        int mW, mH;
        double mClock = 0.0;
    };
    /// POV-Ray's pictures of scenes, all at once: it waits more than it works on small ones. A refused one is
    /// told and black. What it warns of is in mWarnings.
    std::vector<wxImage> RenderAll(const std::vector<Scene_st>& scenes) {
        const std::string folder = mDir.mPath.string();
        std::string script = "cd " + folder + "\n";
        for (size_t i = 0; i < scenes.size(); ++i) {
            const std::string name = "scene" + std::to_string(i);
            std::remove((mDir / (name + ".png")).c_str());
            std::ofstream(mDir / (name + ".pov")) << scenes[i].mText;
            script += "/usr/bin/povray +I" + name + ".pov +O" + name + ".png +FN +W" +
                      std::to_string(scenes[i].mW) + " +H" + std::to_string(scenes[i].mH) + " +K" +
                      std::to_string(scenes[i].mClock) +
                      " -D -P +A0.1 +MV3.7 Bounding_Method=2 Display_Gamma=1 File_Gamma=1 2>" + name +
                      ".txt &\n";
        }
        std::ofstream(mDir / "all.sh") << script << "wait\n";
        wxArrayString output, errors;
        wxExecute("sh " + wxString::FromUTF8(folder) + "/all.sh", output, errors,
                  wxEXEC_SYNC | wxEXEC_NODISABLE);
        std::vector<wxImage> pictures;
        mWarnings.clear();
        for (size_t i = 0; i < scenes.size(); ++i) {
            const std::string name = mDir / ("scene" + std::to_string(i));
            std::ifstream words(name + ".txt");
            std::string said;
            for (std::string line; std::getline(words, line); said += line + "\n")
                if (line.find("Warning:") != std::string::npos) mWarnings.push_back(line);
            const bool bMade = wxFileExists(name + ".png");
            EXPECT_TRUE(bMade) << "scene " << i << ":\n"
                               << said.substr(said.size() - std::min(said.size(), size_t(900)));
            pictures.push_back(bMade ? wxImage(name + ".png") : wxImage(scenes[i].mW, scenes[i].mH));
        }
        return pictures;
    }
    std::vector<wxImage> RenderAll(const std::vector<std::string>& texts, int w, int h) {
        std::vector<Scene_st> scenes;
        for (const std::string& text : texts)
            scenes.push_back({text, w, h});
        return RenderAll(scenes);
    }
    /// Of the scene that was written last.
    wxImage Render(int w, int h) {
        std::ifstream file(mDir / "scene.pov", std::ios::binary);
        return RenderAll({std::string(std::istreambuf_iterator<char>(file), {})}, w, h).front();
    }
    /// A spot of connected lit pixels.
    struct Spot_st {
        double mX, mY; ///< middle
        int mLeft, mRight, mTop, mBottom, mCount;
    };
    static std::vector<Spot_st> FindSpots(const wxImage& image, int level = 60);
    /// Both pictures have the same spots: middles within 1 pixel, rims within 2.
    static void ExpectSameSpots(const wxImage& view, const wxImage& rendered, size_t number);
    static int GreyAt(const wxImage& image, double x, double y) {
        return (image.GetRed(int(x), int(y)) + image.GetGreen(int(x), int(y)) +
                image.GetBlue(int(x), int(y))) /
               3;
    }
    /// Mean structural similarity of the brightness, of windows of 8 x 8 pixels.
    static double GetSimilarity(const wxImage& a, const wxImage& b);
    /// Draw and write; POV-Ray's picture has as many spots in the same places (CompareWaiting).
    void ExpectAlike(int w, int h, size_t number) {
        const wxImage view = Draw(w, h);
        ASSERT_TRUE(view.IsOk());
        mScene = Write();
        mWaiting.push_back({view, {mScene, w, h}, number});
    }
    /// The comparisons of a test, at its end: what a scene includes must stand till then.
    void CompareWaiting() {
        std::vector<Scene_st> scenes;
        for (const Waiting_st& one : mWaiting)
            scenes.push_back(one.mScene);
        if (scenes.empty()) return;
        const std::vector<wxImage> rendered = RenderAll(scenes);
        for (size_t i = 0; i < rendered.size(); ++i) {
            SCOPED_TRACE("comparison " + std::to_string(i));
            Keep(mWaiting[i].mView, std::to_string(i) + "view");
            Keep(rendered[i], std::to_string(i) + "pov");
            ExpectSameSpots(mWaiting[i].mView, rendered[i], mWaiting[i].mNumber);
        }
        mWaiting.clear();
    }
    /// Into the folder that MORENTIS_GUI_PICTURES names, if it is set.
    static void Keep(const wxImage& image, const std::string& name) {
        const char* const folder = getenv("MORENTIS_GUI_PICTURES");
        if (!folder) return;
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        wxImage(image).SaveFile(
            wxString::FromUTF8(std::string(folder) + "/" + info->name() + "_" + name + ".png"));
    }

    FilterScope_cls mFilters{*Hub()->mpCFilters};
    std::string mScene;
    std::vector<std::string> mWarnings;

private:
    struct Waiting_st {
        wxImage mView;
        Scene_st mScene;
        size_t mNumber;
    };
    std::vector<Waiting_st> mWaiting;
    wxString mLooks, mLights;
};
