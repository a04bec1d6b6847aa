// Particles of a scene for POV-Ray, to the byte.
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include <gtest/gtest.h>

#include "GL/DRAW/ParticleChecks.h"
#include "GL/DRAW/clsArrayAndIndex.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsPovParticles.h"
#include "GL/DRAW/clsSnapData.h"
#include "StoreFixture.h"

namespace {

class PovParticles : public ::testing::Test {
protected:
    PovParticles() {
        for (int k = 0; k < 4; ++k) {
            mOwned[k] = std::make_unique<GLAttribute_cls>(nullptr, 0, k, &mOption);
            mAttribute[k] = mOwned[k].get();
            mAttribute[k]->mDrawType.mValue = DRAW_SPHERE;
            mAttribute[k]->mRadiusFactorForConst.mValue = 0.25f;
        }
        // A particle of each class; as far apart and as large as three decimals are enough for.
        for (int i = 0; i < 4; ++i) {
            const float place[3] = {float(i) * 50.0f, 0.0005f, -1.0f};
            std::copy_n(place, 3, mHand.mBlock.mpPos[i]);
            mHand.mBlock.mpRadius[i] = 0.5f + float(i);
            mHand.mBlock.mpType[i] = static_cast<unsigned char>(i);
            mHand.mBlock.mpValue1[i] = float(i) / 4.0f;
            mEntries.push_back({i, 0.0f, 1.0f});
        }
    }
    std::string Write(PovParticles_cls::List_st list = {}, uint64_t* pPrint = nullptr,
                      bool bInPlace = false) {
        SnapData_cls snap(&mHand.mBlock, mAttribute, 0.0, 1);
        list.mpEntries = mEntries.data();
        list.mNumber = int(mEntries.size());
        const PovParticles_cls particles(snap, mAttribute, list, mOptions);
        PovText_cls pov(mOptions);
        pov.SetDecimals(particles.GetDecimals(mStickRadius));
        std::string text;
        particles.Append(&text, pov, pPrint, bInPlace);
        return text;
    }
    static bool Holds(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }

    HandBlock_st mHand{4, 1};
    DrawOption_cls mOption;
    std::unique_ptr<GLAttribute_cls> mOwned[4];
    GLAttribute_cls* mAttribute[4];
    std::vector<ArrayAndIndex_cls> mEntries;
    PovTextOptions_st mOptions;
    float mStickRadius = 0.0f;
};

} // namespace

TEST_F(PovParticles, MacrosTakeWhatDiffersFromParticleToParticle) {
    mAttribute[0]->mRadiusType.mValue = mAttribute[2]->mRadiusType.mValue = RADIUS_CONSTANT;
    mAttribute[2]->mAmbient.mbUseColorCurve.mValue = mAttribute[3]->mSpecular.mbUseColorCurve.mValue = true;
    const std::string text = Write();
    EXPECT_EQ(
        text.find(
            "#macro SP0(VPos)\nsphere{ VPos,0.250000\n\ttexture {\n\t\tpigment {rgb <1.0000,0.8000,0.2000>}\n"
            "\t\tfinish { ambient <0.2000,0.1600,0.0400> diffuse 1 specular 1.000000 metallic roughness "
            "0.024336}\n\t}\n}\n#end\n#macro SP1(VPos,Radi)\nsphere{ VPos, Radi\n\ttexture {\n"),
        0u);
    EXPECT_TRUE(Holds(text, "#macro SP2(VPos,FilterAlpha)\nsphere{ VPos,0.250000\n"));
    EXPECT_TRUE(Holds(text, "#macro SP3(VPos,Radi,FilterAlpha)\nsphere{ VPos, Radi\n"));
    const std::string lines =
        "#declare PARTICLES=\nunion{\nSP0(<0.000,0.001,-1.000>)\nSP1(<50.000,0.001,-1.000>,1.500)\n"
        "SP2(<100.000,0.001,-1.000>,1.000)\nSP3(<150.000,0.001,-1.000>,3.500,1.000)\n};\n\n";
    EXPECT_EQ(text.substr(text.find("#declare PARTICLES")), lines);
}

TEST_F(PovParticles, WhatIsHiddenOrNowhereHasNoLine) {
    mAttribute[1]->mDrawType.mValue = DRAW_HIDE;
    mEntries[0].mAlpha = 0.25f;
    mEntries[2].mAlpha = 0.0f;
    mHand.mBlock.mpPos[3][1] = std::nanf("");
    PovParticles_cls::List_st list;
    list.mbFaded = true;
    const std::string text = Write(list);
    EXPECT_FALSE(Holds(text, "#macro SP1"));
    EXPECT_TRUE(Holds(text, "#declare PARTICLES=\nunion{\nSP0(<0.000,0.001,-1.000>,0.500,0.250)\n};\n\n"));
    mEntries.clear();
    EXPECT_TRUE(Holds(Write(list), "#declare PARTICLES=\nunion{\n};\n\n"));
}

TEST_F(PovParticles, SmallDataAndLongCoordinatesAreWhole) {
    mHand.mBlock.mpPos[3][0] = 1e30f;
    EXPECT_TRUE(Holds(Write(), "SP3(<1000000015047466219876688855040.000,0.001,-1.000>,3.500)\n"));
    mHand.mBlock.mpRadius[0] = 0.002f;
    EXPECT_TRUE(Holds(Write(), "SP0(<0.00000,0.00050,-1.00000>,0.00200)\n"));
    // The data's extent is that of hidden ones, too, and sticks may be thinner than spheres.
    mHand.mBlock.mpRadius[0] = 0.5f;
    mStickRadius = 0.002f;
    EXPECT_TRUE(Holds(Write(), "SP0(<0.00000,0.00050,-1.00000>,0.50000)\n"));
    mStickRadius = 0.0f;
    mHand.mBlock.mpPos[3][0] = 150.0f;
    for (int k = 1; k < 4; ++k)
        mAttribute[k]->mDrawType.mValue = DRAW_HIDE;
    EXPECT_TRUE(Holds(Write(), "SP0(<0.000,0.001,-1.000>,0.500)\n"));
    for (auto& place : {mHand.mBlock.mpPos[1], mHand.mBlock.mpPos[2], mHand.mBlock.mpPos[3]})
        place[0] = 0.25f;
    EXPECT_TRUE(Holds(Write(), "SP0(<0.000000,0.000500,-1.000000>,0.500000)\n"));
    mHand.mBlock.mpRadius[0] = -0.002f;
    EXPECT_TRUE(Holds(Write(), ">,0.002000)\n")) << "as large as above 0";
    mHand.mBlock.mpRadius[0] = 0.002f;
    mOptions.mDigits = 4;
    EXPECT_TRUE(Holds(Write(), "SP0(<0.0000,0.0005,-1.0000>,0.0020)\n"));
}

TEST_F(PovParticles, GroupsHaveATextureAMaterial) {
    mOptions.mbGroupMaterials = true;
    PovParticles_cls::List_st list;
    list.mbClasses = false;
    list.mbFaded = true;
    mEntries[1].mAlpha = mEntries[3].mAlpha = 0.5f;
    const std::string text = Write(list);
    EXPECT_EQ(
        text.find(
            "#declare PARTICLES=\nunion{\nunion{\nsphere{<0.000,0.001,-1.000>,0.500}\n"
            "sphere{<100.000,0.001,-1.000>,2.500}\n\ttexture {\n\t\tpigment {rgb <1.0000,0.8000,0.2000>}\n"),
        0u);
    EXPECT_TRUE(Holds(text,
                      "}\nunion{\nsphere{<50.000,0.001,-1.000>,1.500}\nsphere{<150.000,0.001,-1.000>,3.500}\n"
                      "\ttexture {\n\t\tpigment {rgbt <1.0000,0.8000,0.2000,0.5000>}\n"));
    EXPECT_TRUE(Holds(text, "specular 0.500000 metallic"));
    mEntries[3].mAlpha = 0.25f;
    EXPECT_TRUE(Holds(Write(list), "}\nsphere{<50.000,0.001,-1.000>,1.500\n\ttexture {\n"))
        << "one needs no union";
}

TEST_F(PovParticles, AllOfOneMaterialAreOneUnion) {
    mOptions.mbGroupMaterials = true;
    PovParticles_cls::List_st list;
    list.mbClasses = false;
    const std::string text = Write(list);
    EXPECT_EQ(text.find("#declare PARTICLES=\nunion{\nsphere{<0.000,0.001,-1.000>,0.500}\n"), 0u);
    EXPECT_FALSE(Holds(text, "union{\nunion{")) << "of which POV-Ray warns";
    EXPECT_TRUE(Holds(text, "sphere{<150.000,0.001,-1.000>,3.500}\n\ttexture {\n"));
    EXPECT_EQ(text.substr(text.size() - 7), "\t}\n};\n\n");
    EXPECT_EQ(Write(list, nullptr, true), text.substr(20, text.size() - 23) + "\n") << "where it stands";
    mEntries.resize(1);
    EXPECT_TRUE(Holds(Write(list), "union{\nsphere{<0.000,0.001,-1.000>,0.500\n\ttexture {\n"));
}

TEST_F(PovParticles, ThePrintIsOfWhatIsThereInAnyOrder) {
    PovParticles_cls::List_st list;
    list.mbFaded = true;
    for (const bool bGroup : {false, true}) {
        mOptions.mbGroupMaterials = bGroup;
        const auto print = [&] {
            uint64_t value = 0;
            Write(list, &value);
            return value;
        };
        const uint64_t first = print();
        std::swap(mEntries[0], mEntries[3]);
        std::swap(mEntries[1], mEntries[2]);
        EXPECT_EQ(print(), first);
        mEntries[1].mAlpha = 0.5f;
        EXPECT_NE(print(), first) << "a weight";
        mEntries[1].mAlpha = 1.0f;
        mHand.mBlock.mpRadius[2] *= 2.0f;
        EXPECT_NE(print(), first) << "a radius";
        mHand.mBlock.mpRadius[2] *= 0.5f;
        float& red = mAttribute[1]->mDiffuse.mConstantColor.mValue[0];
        const float before = std::exchange(red, 0.125f);
        EXPECT_NE(print(), first) << "a colour";
        red = before;
        std::swap(mHand.mBlock.mpType[0], mHand.mBlock.mpType[1]);
        EXPECT_NE(print(), first) << "which has which";
        std::swap(mHand.mBlock.mpType[0], mHand.mBlock.mpType[1]);
        mEntries.pop_back();
        EXPECT_NE(print(), first) << "one less";
        mEntries.push_back({0, 0.0f, 1.0f});
        std::swap(mEntries[1], mEntries[2]);
    }
}

// The opacity of the second particle, radius 1.5, whose curve has 0.8.
TEST_F(PovParticles, OpacityIsTheViews) {
    mOptions.mbColorByParticle = true;
    GLAttribute_cls& first = *mAttribute[0];
    for (ColorCurve_cls* curve : {&first.mColor, &first.mAmbient, &first.mDiffuse, &first.mSpecular})
        curve->mConstantColor.mValue[3] = 0.8f;
    first.mAlphaFactor.mValue = 0.5f;
    first.mRadiusFactor.mValue = 1.0f;
    PovParticles_cls::List_st list;
    list.mbClasses = false;
    const auto getAlpha = [&] {
        const std::string text = Write(list);
        const std::string head = "SP0(<50.000,0.001,-1.000>,";
        const size_t at = text.find(head);
        if (at == std::string::npos) return -1.0;
        const size_t end = text.find(")\n", at);
        const std::string last = text.substr(text.rfind(',', end) + 1, end - text.rfind(',', end) - 1);
        return std::stod(last);
    };
    EXPECT_TRUE(Holds(Write(list), "pigment {rgbt <1.0000,0.8000,0.2000,0.6000>}")) << "of one colour";
    first.mDiffuse.mbUseColorCurve.mValue = true;
    first.mDiffuse.SetKeys({{0, 1, 0, 0, 0.8}, {1, 0, 0, 1, 0.8}});
    EXPECT_NEAR(getAlpha(), 0.4, 0.0011);
    first.mAlphaType.mValue = ALPHA_BY_RADIUS;
    first.mAlphaDependBase.mValue = 0.5f;
    first.mAlphaMax.mValue = 1.0f;
    EXPECT_NEAR(getAlpha(), 0.4, 0.0011) << "spheres of one look have no opacity by their radius";
    for (int k = 1; k < 4; ++k)
        mHand.mBlock.mpType[k] = 0;
    list.mbClasses = true;
    EXPECT_NEAR(getAlpha(), 0.8 / 2.25 * 0.25, 0.0011);
    first.mDrawType.mValue = DRAW_BILLBOARD;
    EXPECT_NEAR(getAlpha(), 0.8 * 0.25 / 2.25, 0.0011) << "the base is in the snapshot";
    first.mDrawType.mValue = DRAW_POINT;
    EXPECT_NEAR(getAlpha(), 0.8 * 0.25, 0.0011);
    list.mbClasses = false;
    EXPECT_NEAR(getAlpha(), 0.8 * 0.5, 0.0011);
    first.mDrawType.mValue = DRAW_BILLBOARD;
    EXPECT_NEAR(getAlpha(), 0.8 * 0.25 / 2.25, 0.0011);
    first.mAlphaType.mValue = 0;
    EXPECT_NEAR(getAlpha(), 0.8 * 0.5, 0.0011);
    list.mStep = 4; // a view of fewer particles makes them denser
    first.mDrawType.mValue = DRAW_SPHERE;
    EXPECT_NEAR(getAlpha(), std::min(0.4 * GLDrawData_cls::GetSteppingAlphaFactor(4), 1.0), 0.0011);
    EXPECT_NE(GLDrawData_cls::GetSteppingAlphaFactor(4), 1.0);
    // Of many billboards the own radius counts, though they are drawn with one.
    list.mStep = 1;
    first.mDrawType.mValue = DRAW_BILLBOARD;
    first.mAlphaType.mValue = ALPHA_BY_RADIUS;
    first.mRadiusType.mValue = RADIUS_CONSTANT;
    first.mRadiusFactorForConst.mValue = 0.5f;
    EXPECT_NEAR(getAlpha(), 0.8 * 0.25 / 0.25, 0.0011);
    mEntries.resize(kManyBillboards + 1, mEntries[1]);
    EXPECT_NEAR(getAlpha(), 0.8 * 0.25 / (0.5 * 1.5 * 0.5 * 1.5), 0.0011);
}

TEST_F(PovParticles, EachParticleMayHaveItsColour) {
    mOptions.mbColorByParticle = true;
    PovParticles_cls::List_st list;
    list.mbClasses = false;
    ColorCurve_cls& curve = mAttribute[0]->mDiffuse;
    curve.mbUseColorCurve.mValue = true;
    curve.SetKeys({{0, 1, 0, 0, 1}, {1, 0, 0, 1, 1}});
    EXPECT_TRUE(Holds(Write(list), "SP0(<100.000,0.001,-1.000>,2.500,<0.200,0.161,0.039>,<0.502,0.000,0.502>,"
                                   "<1.000,0.800,0.200>,1.000)\n"));
    mOptions.mbGroupMaterials = true;
    EXPECT_TRUE(Holds(Write(list), "sphere{<100.000,0.001,-1.000>,2.500\n\ttexture {\n"
                                   "\t\tpigment {rgb <0.5020,0.0000,0.5020>}\n"));
    mAttribute[0]->mDrawType.mValue = DRAW_POINT;
    EXPECT_TRUE(Holds(Write(list), "\t\tpigment {rgb <0.8000,0.6392,0.1608>}\n"))
        << "as the view has it, shaded";
}
