// Numbers and pieces of scenes for POV-Ray, to the byte.
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "POVRAY/TEXT/PovNumber.h"
#include "POVRAY/TEXT/clsPovObjectGrid.h"
#include "POVRAY/TEXT/clsPovText.h"

namespace {

std::string Printed(double value, int decimals) {
    std::string text(400, '\0');
    text.resize(size_t(std::snprintf(text.data(), text.size(), "%.*f", decimals, value)));
    return text;
}

std::string Put(float value, int decimals) {
    char text[kMostFixed];
    return std::string(text, PutFixed(text, value, decimals));
}

PovText_cls::Surface_st MakeSurface(float alpha) {
    PovText_cls::Surface_st surface;
    const float colors[3][4] = {
        {0.2f, 0.16f, 0.04f, alpha}, {1, 0.8f, 0.2f, alpha}, {0.5f, 0.4f, 0.1f, alpha}};
    std::memcpy(surface.mColors, colors, sizeof colors);
    return surface;
}

PovCamera_st MakeCamera() {
    PovCamera_st camera;
    camera.mPos[0] = -4;
    camera.mFront[0] = 1;
    camera.mFront[2] = 0;
    camera.mUp[1] = 0;
    camera.mUp[2] = 1;
    camera.mDistance = 3;
    return camera;
}

bool Holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

} // namespace

TEST(PovText, FloatsHaveTheDigitsOfSprintf) {
    std::mt19937 random(11);
    std::uniform_int_distribution<uint32_t> bits;
    for (int i = 0; i < 200000; ++i) {
        const uint32_t pattern = bits(random);
        float value;
        std::memcpy(&value, &pattern, sizeof value);
        if (!std::isfinite(value)) continue;
        const int decimals = i % (kMostDecimals + 1);
        ASSERT_EQ(Put(value, decimals), Printed(double(value), decimals));
    }
    // Halves go to the even digit, where they are exact, and to the nearer one where they aren't.
    for (const float value : {0.0005f, 0.0015f, 0.0625f, 0.1875f, -0.0f, -0.0001f, 2.5f, 9.9995f, 999999.94f,
                              1e30f, FLT_MAX, -FLT_MAX, FLT_MIN, 9007199.5f, 1.5f, 12345.678f})
        for (int decimals = 0; decimals <= kMostDecimals; ++decimals)
            EXPECT_EQ(Put(value, decimals), Printed(double(value), decimals));
    EXPECT_EQ(Put(std::nanf(""), 3), "0.000");
    EXPECT_EQ(Put(-std::numeric_limits<float>::infinity(), 3), Printed(-double(FLT_MAX), 3));
}

TEST(PovText, DoublesOfAnyLengthAreWhole) {
    for (const double value : {0.0, -0.0005, 1e300, -1.7e308, 123.456789}) {
        std::string text = "x";
        AppendFixed(&text, value, 8);
        EXPECT_EQ(text, "x" + Printed(value, 8));
    }
    std::string text;
    AppendGeneral(&text, 1e-7);
    AppendGeneral(&text, 42.0);
    AppendGeneral(&text, 123456789.0);
    AppendGeneral(&text, std::nan(""));
    EXPECT_EQ(text, "1e-07421.23457e+080");
    EXPECT_EQ(PovSerialize_cls::GetShortString(0.2f * 1000.0f), "200");
    EXPECT_EQ(PovSerialize_cls::GetShortString(0.25), "0.25");
    EXPECT_EQ(PovSerialize_cls::GetShortString(-1e-9), "0");
    const double v[3] = {-1, 0.5, 0.0020001};
    EXPECT_EQ(PovSerialize_cls::PovOut3dS("\tbox{", v, 6), "\tbox{<-1,0.5,0.002>");
    EXPECT_EQ(PovSerialize_cls::PovOut3d("\tlocation", v, 5), "\tlocation<-1.00000,0.50000,0.00200>");
}

TEST(PovText, SmallDataGetMoreDecimals) {
    EXPECT_EQ(GetNeededDecimals(0.1, 100), 3);
    EXPECT_EQ(GetNeededDecimals(0.09, 100), 4);
    EXPECT_EQ(GetNeededDecimals(0.5, 99), 4);
    EXPECT_EQ(GetNeededDecimals(1e-9, 1e-7), kMostDecimals);
    EXPECT_EQ(GetNeededDecimals(0, std::nan("")), 3);
    PovText_cls text{PovTextOptions_st()};
    text.SetDecimals(5);
    EXPECT_EQ(text.GetDecimals(4), 6);
    EXPECT_TRUE(Holds(text.GetStrPovCamera(MakeCamera()), "\tlocation<-4.0000000,0.0000000,0.0000000>\n"));
}

TEST(PovText, Textures) {
    EXPECT_EQ(PovText_cls::GetStrPovTextureFastColor("\t", MakeSurface(1), false),
              "\ttexture {\n\t\tpigment {rgb <1.0000,0.8000,0.2000>}\n"
              "\t\tfinish { ambient <0.2000,0.1600,0.0400> diffuse 1 specular 0.500000 metallic roughness "
              "0.024336}\n"
              "\t}\n");
    EXPECT_TRUE(Holds(PovText_cls::GetStrPovTextureFastColor("", MakeSurface(0.25f), false),
                      "pigment {rgbt <1.0000,0.8000,0.2000,0.7500>}"));
    const std::string faded = PovText_cls::GetStrPovTextureFastColor("", MakeSurface(0.5f), true);
    EXPECT_TRUE(Holds(faded, "pigment {rgbt <1.0000,0.8000,0.2000,1-0.5000*FilterAlpha>}"));
    EXPECT_TRUE(Holds(faded, " specular 0.500000*FilterAlpha  metallic"));
    PovText_cls::Surface_st surface = MakeSurface(1);
    surface.mFinish = " reflection{0.2,0.5}";
    EXPECT_EQ(PovText_cls::GetStrPovTextureGLColor("", surface, false),
              "texture {\n\taverage\n\ttexture_map {\n"
              "\t\t\t[pigment {rgb <0.2000,0.1600,0.0400>} finish { ambient 3 diffuse 0 specular 0 "
              "reflection{0.2,0.5}}]\n"
              "\t\t\t[pigment {rgb <1.0000,0.8000,0.2000>} finish { ambient 0 diffuse 3 specular 0 "
              "reflection{0.2,0.5}}]\n"
              "\t\t\t[pigment {rgb <0.5000,0.4000,0.1000>} finish { ambient 0 diffuse 0 specular 3 metallic "
              "roughness "
              "0.024336 reflection{0.2,0.5}}]\n"
              "\t\t}\n\t}\n");
    surface.mNormal = "\tnormal {bumps 0.3 }\n";
    EXPECT_TRUE(Holds(PovText_cls::GetStrPovTextureGLColor("", surface, false),
                      "<1.0000,0.8000,0.2000>}\n\tnormal {bumps 0.3 }\nfinish { ambient 0 diffuse 3"));
}

TEST(PovText, Cameras) {
    const PovText_cls plain{PovTextOptions_st()};
    EXPECT_EQ(
        plain.GetStrPovCameraAngle(MakeCamera()),
        "#declare CameraAngle=\n180 * atan2( tan (pi*35.000000/180) * image_width / image_height, 1) / pi;\n"
        "#if (CameraAngle < 0)\n#declare CameraAngle = CameraAngle+180;\n#end\n\n");
    EXPECT_EQ(
        plain.GetStrPovCamera(MakeCamera()),
        "camera {\n\tperspective\n\tlocation<-4.00000,0.00000,0.00000>\n\tlook_at<2.00000,0.00000,0.00000>\n"
        "\tsky<0.00000000,0.00000000,1.00000000>\n\tangle CameraAngle\n\n\tright "
        "-x*image_width/image_height\n}\n");
    PovCamera_st fisheye = MakeCamera();
    fisheye.mbFishEye = true;
    fisheye.mAngle = 180;
    EXPECT_TRUE(Holds(plain.GetStrPovCameraAngle(fisheye), "#declare CameraAngle=\n180.000000;\n"));
    EXPECT_TRUE(Holds(plain.GetStrPovCamera(fisheye), "camera {\n\tfisheye\n"));
    fisheye.mbOrtho = true;
    EXPECT_TRUE(Holds(plain.GetStrPovCamera(fisheye), "camera {\n\torthographic\n"));
    PovTextOptions_st options;
    options.mbLikeView = true;
    const std::string more = PovText_cls(options).GetStrPovCameraAngle(MakeCamera());
    EXPECT_EQ(more.find(plain.GetStrPovCameraAngle(MakeCamera())), 0u)
        << "lines beside those of plain scenes";
}

TEST(PovText, ACameraNeverLooksAtItsOwnPlace) {
    const PovText_cls plain{PovTextOptions_st()};
    PovCamera_st camera = MakeCamera();
    camera.mDistance = 1e-7;
    EXPECT_TRUE(Holds(plain.GetStrPovCamera(camera),
                      "\tlocation<-4.00000,0.00000,0.00000>\n\tlook_at<-3.99990,0.00000,0.00000>\n"));
    camera.mDistance = 0;
    EXPECT_TRUE(Holds(plain.GetStrPovCamera(camera), "\tlook_at<-3.99990,0.00000,0.00000>\n"));
    camera.mPos[0] = 1e20; // where a metre has no digit
    const std::string text = plain.GetStrPovCamera(camera);
    const size_t here = text.find('<'), there = text.find("look_at<") + 7;
    EXPECT_NE(text.substr(here, text.find(',', here) - here),
              text.substr(there, text.find(',', there) - there));
    camera.mPos[0] = std::nan("");
    EXPECT_TRUE(Holds(plain.GetStrPovCamera(camera), "\tlocation<0.00000,"));
}

TEST(PovText, NoMatrixIsFlat) {
    using Text = PovSerialize_cls;
    const double whole[3][3] = {{1, 0.5, 0}, {0, -2, 0}, {0, 0, 0.25}};
    EXPECT_EQ(Text::PovOutRows("m<", whole, 2), "m<1.00,0.50,0.00,0.00,-2.00,0.00,0.00,0.00,0.25,");
    const double flat[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 0}};
    EXPECT_EQ(Text::PovOutRows("", flat, 4),
              "1.0001,0.0000,0.0000,0.0000,1.0001,0.0000,0.0000,0.0000,0.0001,");
    const double none[3][3] = {};
    EXPECT_EQ(Text::PovOutRows("", none, 2), "0.01,0.00,0.00,0.00,0.01,0.00,0.00,0.00,0.01,");
    const double thin[3][3] = {{-0.01, 0, 0}, {1, 1, 0}, {0, 0, 1e-9}};
    EXPECT_EQ(Text::PovOutRows("", thin, 2), "0.01,0.00,0.00,1.00,1.02,0.00,0.00,0.00,0.02,")
        << "and not by a step that makes it flat again";
    const double scale[3] = {0, -1e-9, 2};
    EXPECT_EQ(Text::PovOutScale("\tscale", scale, 4), "\tscale<0.0001,-0.0001,2.0000>");
}

TEST(PovText, PhotonsAndReferences) {
    PovTextOptions_st options;
    EXPECT_EQ(PovText_cls(options).GetStrPovPhotonSetting(1, 0.2, 0.5, false), "");
    options.mPhotonsType = 1;
    PovText_cls text(options);
    EXPECT_EQ(text.GetStrPovPhotonSetting(0.9, 0.05, 0.1, false),
              "\tphotons{ target off reflection off refraction off collect on }\n");
    EXPECT_EQ(text.GetStrPovPhotonSetting(0.05, 0.2, 0.5, false),
              "\tphotons{ target on reflection on refraction on collect off }\n");
    EXPECT_EQ(text.GetStrPovPhotonSetting(0.5, 0.2, 0.5, true),
              "\tphotons{ target off reflection on refraction on collect on }\n");
    EXPECT_EQ(text.GetStrPovParticleObject("PARTICLES"), "object {\n\tPARTICLES\n}\n");
    text.mIndentDepth = 1;
    text.mStrObjectTransform = "translate<1,0,0>";
    EXPECT_EQ(text.GetStrPovParticleObject("STICKS3"),
              "\tobject {\n\t\tSTICKS3\n\t\ttranslate<1,0,0>\n\t}\n");
    options.mStrWorkDir = "/data/POV";
    EXPECT_EQ(PovText_cls(options).GetStrRelativePath("/data/meshes/a b.pov"), "../meshes/a b.pov");
    options.mbFileAbsolute = true;
    EXPECT_EQ(PovText_cls(options).GetStrRelativePath("/data/meshes/a b.pov"), "/data/meshes/a b.pov");
}

TEST(PovText, Grids) {
    const PovObjectGrid_cls::Span_st span = {-1, 1, 2, 0.002};
    EXPECT_EQ(
        PovObjectGrid_cls::GetStrPovBasicGridZ(span, 0, "END"),
        "union {\n\tbox{<-1,-1.002,-0.002>,<1,-0.998,0.002>}\n\tbox{<-1,-0.002,-0.002>,<1,0.002,0.002>}\n"
        "\tbox{<-1,0.998,-0.002>,<1,1.002,0.002>}\n\tbox{<-1.002,-1,-0.002>,<-0.998,1,0.002>}\n"
        "\tbox{<-0.002,-1,-0.002>,<0.002,1,0.002>}\n\tbox{<0.998,-1,-0.002>,<1.002,1,0.002>}\nEND}\n");
    EXPECT_TRUE(Holds(PovObjectGrid_cls::GetStrPovBasicGridX(span, 5, ""),
                      "box{<4.998,-1,-1.002>,<5.002,1,-0.998>}"));
    EXPECT_TRUE(Holds(PovObjectGrid_cls::GetStrPovBasicGridY(span, 0, ""),
                      "box{<-1,-0.002,-1.002>,<1,0.002,-0.998>}"));
    EXPECT_EQ(PovObjectGrid_cls::GetStrPovGridCircular({0.5, 2, 0, 0.002}, ""),
              "union {\n\ttorus{0.5,0.002}\n\ttorus{1.5,0.002}\n\trotate <90, 0, 0>\n}\n");
    const auto count = [](const std::string& text) {
        int boxes = 0;
        for (size_t at = text.find("box{"); at != std::string::npos; at = text.find("box{", at + 1))
            ++boxes;
        return boxes;
    };
    EXPECT_EQ(count(PovObjectGrid_cls::GetStrPovBasicGridCubic({-1, 1, 3, 0.002}, "")), 3 * 4 * 4);
    EXPECT_EQ(count(PovObjectGrid_cls::GetStrPovBasicGridZ({0, 0.3, 3, 0.002}, 0, "")), 8)
        << "the last line, too";
    EXPECT_EQ(count(PovObjectGrid_cls::GetStrPovBasicGridZ({0, 1, 2000000000, 0.002}, 0, "")), 2 * 10001);
    EXPECT_EQ(PovObjectGrid_cls::GetStrPovBasicGridZ({0, std::nan(""), 3, 0.002}, 0, ""), "union {\n}\n");
    const float grey[4] = {0.5f, 0.5f, 0.5f, 1};
    EXPECT_TRUE(Holds(PovObjectGrid_cls::GetStrPovTexture(grey), "pigment {rgb <0.5000,0.5000,0.5000>}"));
    EXPECT_TRUE(Holds(PovObjectGrid_cls::GetStrPovTexture(grey), "\t}\n\tno_shadow\n"));
}
