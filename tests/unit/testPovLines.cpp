// What lights, fog, copies, materials and placed objects write into scenes for POV-Ray, to the byte.
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "FilterFixture.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "POVRAY/TEXT/clsPovText.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

namespace {

bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class PovLines : public FilterTest {
protected:
    PovText_cls mPov{PovTextOptions_st()};
};

} // namespace

TEST_F(PovLines, Lights) {
    LightSRCCtrl_cls lights;
    lights.mCLightNumber.mValue = 1;
    LightSRC_cls& light = lights.GetLight(0);
    const std::string parallel = lights.GetStrPovLights(0.0, 0);
    EXPECT_EQ(parallel.find("light_source {\n\t<500.00"), 0u) << "a thousand times its direction";
    EXPECT_TRUE(Holds(parallel,
                      "\n\tcolor<1.00000000,1.00000000,1.00000000>\n\tparallel\n\tpoint_at <0, 0, 0>\n}\n"));
    light.mCType.mValue = LightSRC_cls::TYPE_SPOT;
    light.mCCastShadow.mValue = false;
    light.mCFade.mValue = LightSRC_cls::FADE_POWER2;
    light.mCFadeDistance.mValue = 2.5f;
    light.mCLightArea.mValue = true;
    SetValues(light.mpCTranslate, 1, 2, 3);
    SetValues(light.mpCRotate, 0, 0, 0);
    EXPECT_EQ(
        lights.GetStrPovLights(0.0, 0),
        "light_source {\n\t<1.00000000,2.00000000,3.00000000>\n\tcolor<1.00000000,1.00000000,1.00000000>\n"
        "\tshadowless\n\tspotlight\n\tpoint_at<2.00000000,1.99999738,3.00000000>\n\tradius 35\n\tfalloff 42\n"
        "\tfade_distance 2.5\n\tfade_power 2\n\tarea_light \tx * 0.2, y * 0.2,5,5\n\tcircular orient\n"
        "\tadaptive 1\n}\n");
    light.mCType.mValue = LightSRC_cls::TYPE_CYLINDER;
    light.mCFade.mValue = 0;
    light.mCLightArea.mValue = false;
    EXPECT_EQ(lights.GetStrPovLights(0.0, 1), "light_source {\n\t<1.000000000,2.000000000,3.000000000>\n"
                                              "\tcolor<1.00000000,1.00000000,1.00000000>\n\tshadowless\n}\n");
    light.mCType.mValue = LightSRC_cls::TYPE_PARALLEL;
    light.mCLightArea.mValue = true;
    light.mCLightAreaQuality.mValue = 6;
    EXPECT_TRUE(Holds(lights.GetStrPovLights(0.0, 0),
                      "\tarea_light \tx * 200, y * 200,6,6\n\tcircular orient\n\tadaptive 2\n"));
    light.mCLightAreaQuality.mValue = 1;
    EXPECT_TRUE(Holds(lights.GetStrPovLights(0.0, 0), "\tarea_light \tx * 200, y * 200,1,1\n\tadaptive 1\n"));
    for (const auto& [quality, wanted] : {std::pair("0", 1u), std::pair("4000000000", 100u)}) {
        std::wistringstream lines(std::wstring(L"LightAreaQuality=") + wxString(quality).ToStdWstring() +
                                  L"\n---End\n");
        light.ReadStrLine(lines, "---LightSRC 0");
        EXPECT_EQ(light.mCLightAreaQuality.mValue, wanted) << "of a project";
    }
    light.mCVisible.mValue = false;
    EXPECT_EQ(lights.GetStrPovLights(0.0, 0), "");
}

TEST_F(PovLines, FogKeepsToOneKind) {
    auto& filter = Add<FilterFog_cls>(FILTER_FOG);
    FilterFogData_cls& data = *filter.GetPCData();
    EXPECT_EQ(filter.GetStrPovFog(0.0), "") << "no density";
    float background[4] = {0.25f, 0.5f, 1.0f, 1.0f};
    filter.MixClearColor(0.0, background);
    EXPECT_FLOAT_EQ(background[2], 0.5f) << "the fog's, as in views";
    data.mCFogType.mValue = FilterFogData_cls::LINEAR;
    data.mCFogEnd.mValue = 10.0f;
    EXPECT_EQ(filter.GetStrPovFog(0.0),
              "background {rgbt <0.5000,0.5000,0.5000,0.0000>}\nfog { \n\tdistance 5.000000\n"
              "\tcolor rgbt <0.5000,0.5000,0.5000,0.0000>\n}\n");
    data.mCFogType.mValue = FilterFogData_cls::EXP;
    const double values[2] = {0.25, 0.75};
    data.mpCFogParam->SetKeyFrame(values, true, SceneObj_cls::kCurrent);
    EXPECT_EQ(filter.GetStrPovFog(0.0),
              "background {rgbt <0.5000,0.5000,0.5000,1.0000>}\nfog { \n\tdistance 4.000000\n"
              "\tcolor rgbt <0.5000,0.5000,0.5000,0.2500>\n}\n");
    data.mCValid.mValue = false;
    EXPECT_EQ(filter.GetStrPovFog(0.0), "");
}

TEST_F(PovLines, PlacesOfObjectsAndCopies) {
    FilterDataBoxData_cls& box = *Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
    EXPECT_EQ(box.GetStrPovModelview(0.0, "", 4), "");
    SetValues(box.mpCTranslate, 1, 0, -2);
    SetValues(box.mpCRotate, 0, 30, 45);
    SetValues(box.mpCScale, 1, 2, 1);
    EXPECT_EQ(box.GetStrPovModelview(0.0, "\t", 4),
              "\t\tscale<1.0000,2.0000,1.0000>\n\t\ttranslate<1.0000,0.0000,-2.0000>\n"
              "\t\trotate<0.0000,30.0000,0.0000>\n\t\trotate<0.0000,0.0000,45.0000>\n");
    SetValues(box.mpCScale, 1, 0, -0.00001);
    EXPECT_TRUE(Holds(box.GetStrPovModelview(0.0, "", 4), "\tscale<1.0000,0.0001,-0.0001>\n"));
    PeriodicBoundary_cls periodic;
    mLists.mpCPeriodic = &periodic;
    auto& copies = Add<FilterCopy_cls>(FILTER_COPY);
    copies.GetPCData()->mCMin[0].mValue = -1;
    EXPECT_EQ(copies.GetStrPovTranslate(0, 8), "translate<-10.00000000,0.00000000,0.00000000>");
    copies.GetPCData()->mCValid.mValue = false;
    EXPECT_EQ(copies.GetStrPovTranslate(0, 8), "");
}

TEST_F(PovLines, MaterialsOfObjects) {
    SceneObjTexture_cls texture;
    ConfItemList_cls list;
    texture.AddTo(&list);
    EXPECT_EQ(texture.GetStrPovFinishOptions() + texture.GetStrPovInteriorOptions() +
                  texture.GetStrPovNormal(),
              "");
    texture.mCIOR.mValue = 1.5f;
    texture.mCReflectType.mValue = SceneObjTexture_cls::REFLECT_METAL;
    EXPECT_EQ(texture.GetStrPovInteriorOptions(), " ior 1.500000");
    EXPECT_EQ(texture.GetStrPovFinishOptions(), " reflection{0.200000,0.500000}");
    texture.mCNormalPattern[1].mValue = 3;
    EXPECT_EQ(texture.GetStrPovNormal(), "\tnormal {bumps 0.300000 scale <1.0000,1.0000,1.0000> }\n");
    texture.mCNormalPattern[0].mValue = 12;
    EXPECT_EQ(texture.GetStrPovNormal(), "\tnormal {bumps 0.300000 scale <1.0000,1.0000,1.0000> }\n")
        << "no such pattern";
    texture.mCNormalPattern[0].mValue = 11;
    EXPECT_EQ(texture.GetStrPovNormal(),
              "\tnormal {\n\t\taverage\n\t\t\tnormal_map {\n\t\t\t [ 1.00 function { f_ridged_mf(x, y, z, "
              "0.07, 2.2,  7, "
              "0.6, 0.9, 1) } 0.300000 scale <1.0000,1.0000,1.0000> ]\n"
              "\t\t\t [ 1.00 bumps 0.300000 scale <1.0000,1.0000,1.0000> ]\n\t\t}\n\t}\n");
}

TEST_F(PovLines, ObjectsAndSticks) {
    auto& object = Add<FilterObject_cls>(FILTER_OBJECT);
    FilterObjectData_cls& data = *object.GetPCData();
    EXPECT_EQ(object.GetStrPovRealObject(0.0, "", true, "", mPov), "") << "simple shapes stand there once";
    data.mCTexture.mCIOR.mValue = 1.5f;
    EXPECT_EQ(object.GetStrPovRealObject(0.0, "translate<1,2,3>", false, "\t", mPov),
              "\tbox { <-0.5, -0.5, -0.5>, <0.5, 0.5, 0.5>\n\t\ttexture {\n\t\t\tpigment {rgb "
              "<1.0000,0.8000,0.2000>}\n"
              "\t\t\tfinish { ambient <0.2000,0.1600,0.0400> diffuse 1 specular 1.000000 metallic roughness "
              "0.024336}\n"
              "\t\t}\n\t\tinterior { ior 1.500000}\n\t\ttranslate<1,2,3>\n\t}\n");
    data.mCTexture.mCTransmitType.mValue = SceneObjTexture_cls::TRANSMIT_FILTERED;
    data.mCTexture.mCAlpha.mValue = 0.25f;
    EXPECT_TRUE(
        Holds(object.GetStrPovRealObject(0.0, "", false, "", mPov), "rgbf <1.0000,0.8000,0.2000,0.7500>"));
    data.mCTexture.mCNormalPattern[0].mValue = 11;
    const std::string fast = object.GetStrPovRealObject(0.0, "", false, "", mPov);
    EXPECT_EQ(
        fast.find("#ifndef (f_ridged_mf)\n#declare f_ridged_mf = function { internal(59) }\n#end\nbox {"),
        0u);
    EXPECT_TRUE(Holds(fast, "}\n\tnormal {function { f_ridged_mf("));
    PovTextOptions_st averaged;
    averaged.mbFastColoring = false;
    const std::string slow = object.GetStrPovRealObject(0.0, "", false, "", PovText_cls(averaged));
    EXPECT_FALSE(Holds(slow, "\t}\n\tnormal {")) << "POV-Ray takes none behind such a texture";
    EXPECT_TRUE(Holds(slow, "}\n\tnormal {function { f_ridged_mf("));
    data.mCTexture.mCNormalPattern[0].mValue = 0;
    data.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
    std::string text;
    mLists.GetObject().AppendPovInclude(&text, mPov);
    EXPECT_EQ(text, "#declare MESH_OBJECT=union{};\n");
    EXPECT_EQ(
        object.GetStrPovRealObject(0.0, "", true, "\t", mPov)
            .find("object {\n\tMESH_OBJECT\n\tmatrix<1.000000,0.000000,0.000000,0.000000,1.000000,0.000000,"
                  "0.000000,0.000000,1.000000,0,0,0>\n\t\ttexture {\n"),
        0u);
    std::fill_n(data.mCArrayVector[2].mValue, 3, 0.0f);
    EXPECT_TRUE(Holds(object.GetStrPovRealObject(0.0, "", true, "", mPov), "0.000000,0.000001,0,0,0>"));
    data.mCValid.mValue = false;
    text.clear();
    mLists.GetObject().AppendPovInclude(&text, mPov);
    EXPECT_EQ(text, "") << "nobody refers to it";
    auto& stick = Add<FilterStick_cls>(FILTER_STICK);
    EXPECT_EQ(stick.GetStrPovCylinderMacro(mPov),
              "#macro CY(VPos0,VPos1)\ncylinder{ VPos0,VPos1,0.500000 open\n\ttexture {\n"
              "\t\tpigment {rgbt <0.8,0.8,0.8,1-1.000000>}\n\t\tfinish { ambient <0.2,0.16,0.04> diffuse 1 "
              "specular 1 "
              "metallic roughness 0.024336}\n\t}\n\tinterior {}\n}\n#end\n");
    auto& grid = Add<FilterGrid_cls>(FILTER_GRID);
    grid.GetPCData()->mCValid.mValue = false;
    EXPECT_TRUE(Holds(grid.GetStrPovRealGrid(0.0, mPov), "pigment {rgb <0.5000,0.5000,0.5000>}"));
    PovTextOptions_st options;
    options.mbLikeView = true;
    EXPECT_EQ(grid.GetStrPovRealGrid(0.0, PovText_cls(options)), "");
}
