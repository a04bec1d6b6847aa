// Sticks by closed forms, against one drawn corner by corner, and without what makes them fast.
#include <cmath>
#include <limits>

#include <epoxy/gl.h>

#include "BOND/clsPovObjectSticks.h"
#include "COMMON/Globals.h"
#include "COMMON/clsMyVector.h"
#include "DrawTest.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/clsGLSticks.h"
#include "GL/VIEW/clsMainGLCanvas.h"

namespace {

struct Stick_st {
    unsigned a, b;
    float weight = 1.0f;
    unsigned char mask = 0;
};

class Sticks : public DrawTest {
protected:
    void SetUp() override {
        DrawTest::SetUp();
        mSize = 200;
        mbParallel = true;
        mStyle.mType = STICK_CYLINDER;
        mStyle.mRadius = 0.25f;
    }
    /// Draws mSticks between mPlaces.
    void DrawSticks(unsigned copyMask = 0) {
        mList.ClearList();
        for (const Stick_st& stick : mSticks) {
            mList.mvIndexA.push_back(stick.a);
            mList.mvIndexB.push_back(stick.b);
            mList.mvBit.push_back(stick.mask);
            mList.mvFactor.push_back(stick.weight);
        }
        mList.SetPPeriodicBoundary(mCell);
        const int count = int(mPlaces.size());
        mList.CheckValidity(&count);
        mDrawMore = [this, count, copyMask] {
            StickParticles_st particles;
            particles.mpPos = reinterpret_cast<const float(*)[3]>(mPlaces.data());
            particles.mCount = count;
            particles.mStep = mStep;
            GbAbort = mbAbort; // behind the particles, which would stop too
            mbWhole = mDrawer.Draw(mList, particles, mStyle, copyMask);
        };
        Draw({{{100, 0, 0}, 0.0f}}); // a particle out of sight
    }
    void DrawSticksWithoutShaders() {
        ShaderCtrl_cls none;
        ShaderCtrl_cls* const pShaders = GLAttribute_cls::mspCShaderCtrl;
        GLAttribute_cls::mspCShaderCtrl = &none;
        DrawSticks();
        GLAttribute_cls::mspCShaderCtrl = pShaders;
    }
    /// The same, a corner at a time.
    void DrawPlainly() {
        mDrawMore = [&] {
            glEnable(GL_LIGHTING);
            glEnable(GL_NORMALIZE);
            glEnable(GL_BLEND);
            glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
            glMateriali(GL_FRONT_AND_BACK, GL_SHININESS, mStyle.mShininess);
            for (const Stick_st& stick : mSticks)
                DrawCorners(mPlaces[stick.a].data(), mPlaces[stick.b].data(), stick.weight);
            glDisable(GL_LIGHTING);
            glDisable(GL_BLEND);
        };
        Draw({{{100, 0, 0}, 0.0f}}); // a particle out of sight
    }
    void DrawCorners(const float* pFirst, const float* pSecond, float weight) const {
        const float alpha = mStyle.mAlpha * weight;
        const float colors[3][4] = {{0.2f, 0.16f, 0.04f, alpha}, {1, 1, 1, alpha}, {1, 1, 1, weight}};
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, colors[0]);
        glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, colors[1]);
        glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, colors[2]);
        double axis[3], side[3] = {0, 0, 1}, third[3];
        for (int i = 0; i < 3; ++i)
            axis[i] = double(pSecond[i] - pFirst[i]);
        if (!MyVector::Normalize(axis) || !MyVector::Orthogonalize(axis, side)) return;
        MyVector::Normalize(side);
        MyVector::GetCrossedVector(side, axis, third);
        glBegin(GL_QUAD_STRIP);
        for (int k = 0; k < 13; ++k) {
            const double angle = k * M_PI / 6;
            float normal[3];
            for (int i = 0; i < 3; ++i)
                normal[i] = float(std::cos(angle) * side[i] + std::sin(angle) * third[i]);
            glNormal3fv(normal);
            for (const float* pEnd : {pFirst, pSecond})
                glVertex3f(pEnd[0] + mStyle.mRadius * normal[0], pEnd[1] + mStyle.mRadius * normal[1],
                           pEnd[2] + mStyle.mRadius * normal[2]);
        }
        glEnd();
    }
    /// Pixels that differ by more than 2 of 255.
    static int CountDifferent(const Picture_st& a, const Picture_st& b) {
        int count = 0;
        for (size_t i = 0; i < a.mRGB.size(); i += 3)
            count += std::abs(int(a.mRGB[i]) - int(b.mRGB[i])) > 2 ||
                     std::abs(int(a.mRGB[i + 1]) - int(b.mRGB[i + 1])) > 2 ||
                     std::abs(int(a.mRGB[i + 2]) - int(b.mRGB[i + 2])) > 2;
        return count;
    }
    double Pixel(double x) const { return mSize / 2.0 + x * PixelsPerUnit(); }

    std::vector<std::array<float, 3>> mPlaces;
    std::vector<Stick_st> mSticks;
    StickCell_st mCell;
    StickStyle_st mStyle;
    int mStep = 1;
    bool mbWhole = false;
    bool mbAbort = false;
    PovObjectSticks_cls mList;
    GLSticks_cls mDrawer;
};

TEST_F(Sticks, CylindersHaveTheirTrueSize) {
    mPlaces = {{-1.0f, 0.5f, 0.0f}, {0.6f, 0.5f, 0.0f}};
    mSticks = {{0, 1}};
    DrawSticks();
    EXPECT_TRUE(mbWhole);
    const auto row = LitInRow(int(Pixel(0.5)));
    EXPECT_NEAR(row[0], Pixel(-1.0), 1.0);
    EXPECT_NEAR(row[1], Pixel(0.6), 1.0);
    const auto column = LitInColumn(int(Pixel(0.0)));
    EXPECT_NEAR(column[0], Pixel(0.25), 1.0);
    EXPECT_NEAR(column[1], Pixel(0.75), 1.0);
    EXPECT_EQ(LitInRow(int(Pixel(0.2)))[1], 0);
}

TEST_F(Sticks, LookAsIfDrawnCornerByCorner) {
    mPlaces = {{-1.2f, -0.9f, 0.3f}, {0.4f, 0.7f, -0.5f}, {1.1f, -0.8f, 0.6f},
               {-0.3f, 1.2f, 0.0f},  {0.0f, 0.0f, 1.0f},  {-0.2f, -1.3f, -1.0f}};
    mSticks = {{0, 1}, {1, 2, 0.5f}, {2, 3, 0.5f}, {3, 4, 0.25f}, {5, 4}, {5, 1, 0.75f}, {2, 5, 2.0f}};
    mStyle.mShininess = 25;
    for (const float alpha : {1.0f, 0.6f})
        for (int scene = 0; scene < 8; ++scene) {
            mStyle.mAlpha = alpha;
            mbParallel = (scene & 1) != 0;
            mbSpot = (scene & 2) != 0;
            mbFog = (scene & 4) != 0;
            DrawPlainly();
            const Picture_st plain = Picture();
            const int lit = CountLit();
            EXPECT_GT(lit, 5000);
            for (const bool bShaders : {true, false}) {
                bShaders ? DrawSticks() : DrawSticksWithoutShaders();
                const Picture_st ours = Picture();
                // Outlines may fall on the next pixel.
                EXPECT_LT(CountDifferent(plain, ours), lit / 100)
                    << "scene " << scene << " alpha " << alpha << " shaders " << bShaders;
            }
        }
}

TEST_F(Sticks, LinesAreGreyAndFadeByWeight) {
    mStyle.mType = STICK_LINE;
    mStyle.mWidth = 8;
    mStyle.mAlpha = 0.5f;
    mPlaces = {{-1, 0.5f, 0}, {1, 0.5f, 0}, {-1, -0.5f, 0}, {1, -0.5f, 0}};
    mSticks = {{0, 1}, {2, 3, 0.5f}};
    DrawSticks();
    const auto row = LitInRow(int(Pixel(0.5)));
    EXPECT_NEAR(row[0], Pixel(-1.0), 1.5);
    EXPECT_NEAR(row[1], Pixel(1.0), 1.5);
    EXPECT_NEAR(At(mSize / 2, int(Pixel(0.5))).r, 0.35f, 0.003f);
    EXPECT_NEAR(At(mSize / 2, int(Pixel(-0.5))).b, 0.175f, 0.003f);
    int lit = 0;
    for (int y = mSize / 2; y < mSize; ++y)
        lit += At(mSize / 2, y).g > 0.0f;
    EXPECT_EQ(lit, 8);
    mStyle.mWidth = -3;
    DrawSticks();
    lit = 0;
    for (int y = mSize / 2; y < mSize; ++y)
        lit += At(mSize / 2, y).g > 0.0f;
    EXPECT_EQ(lit, 1) << "a width that is none is the smallest";
}

TEST_F(Sticks, CrossASideOnlyWhereACopyFollows) {
    mCell.mBase[0][0] = 1.5f;
    mCell.mBase[1][1] = 0.0f;
    mPlaces = {{0.2f, 0, 0}, {-1.0f, 0, 0}};
    mSticks = {{0, 1, 1.0f, 1}};
    for (const unsigned type : {STICK_LINE, STICK_CYLINDER}) {
        mStyle.mType = type;
        DrawSticks(0);
        EXPECT_EQ(CountLit(), 0);
        DrawSticks(6);
        EXPECT_EQ(CountLit(), 0);
        DrawSticks(1);
        const auto row = LitInRow(mSize / 2);
        EXPECT_NEAR(row[0], Pixel(0.2), 1.5);
        EXPECT_NEAR(row[1], Pixel(0.5), 1.5) << "the partner's image";
        DrawSticks(7);
        EXPECT_EQ(LitInRow(mSize / 2), row);
    }
    mSticks[0].mask = 9; // no mask
    DrawSticks(7);
    EXPECT_EQ(CountLit(), 0);
}

TEST_F(Sticks, WhatCantBeDrawnIsLeftOut) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    mPlaces = {{0, 0, 0}, {0, 0, 1}, {0.5f, nan, 0}, {inf, 0, 0}, {0, 0, 0}, {3e38f, 0.1f, 0}};
    mSticks = {{0, 1}, {0, 2}, {3, 0}, {0, 4}, {0, 0}, {5, 0}, {0, 5}};
    for (const bool bShaders : {true, false}) {
        bShaders ? DrawSticks() : DrawSticksWithoutShaders();
        EXPECT_EQ(CountLit(), 0);
    }
    mStyle.mType = 2;
    mPlaces = {{-1, 0, 0}, {1, 0, 0}};
    mSticks = {{0, 1}};
    DrawSticks();
    EXPECT_EQ(CountLit(), 0) << "no such type";
    mStyle.mType = STICK_LINE;
    mSticks = {{0, 1}, {1, 2}};
    DrawSticks();
    EXPECT_EQ(CountLit(), 0) << "a list that doesn't fit";
    mSticks = {{0, 1}};
    mStep = 2;
    DrawSticks();
    EXPECT_EQ(CountLit(), 0) << "an end that isn't filled";
    mStep = 1;
    DrawSticks();
    EXPECT_GT(CountLit(), 0);
}

TEST_F(Sticks, ManyAreDrawnInOrderAndCanBeStopped) {
    // More than a batch, on top of each other: the last one is seen.
    mSize = 50;
    mStyle.mRadius = 0.1f;
    for (const unsigned type : {STICK_LINE, STICK_CYLINDER}) {
        mStyle.mType = type;
        mPlaces = {{-0.2f, 0, 0}, {0.2f, 0, 0}, {-0.2f, 0, 0.001f}, {0.2f, 0, 0.001f}};
        mSticks.assign(9000, {0, 1, 0.0f});
        mSticks.push_back({2, 3, 1.0f});
        DrawSticks();
        EXPECT_TRUE(mbWhole);
        EXPECT_GT(Middle().r, 0.1f);
        mSticks.assign(9001, {0, 1, 0.0f});
        mSticks.front() = {2, 3, 1.0f};
        DrawSticks();
        EXPECT_GT(Middle().r, 0.1f) << "those behind aren't seen";
    }
    mbAbort = true;
    mSticks.assign(100000, {0, 1, 1.0f});
    DrawSticks();
    EXPECT_FALSE(mbWhole);
    EXPECT_FALSE(GbAbort);
}

TEST_F(Sticks, LeaveTheStateAsItWas) {
    mPlaces = {{-1, 0, 0}, {1, 0, 0}};
    mSticks = {{0, 1}};
    for (const unsigned type : {STICK_LINE, STICK_CYLINDER}) {
        mStyle.mType = type;
        mStyle.mWidth = 7;
        DrawSticks(); // checks the program and errors
        const auto draw = mDrawMore;
        float width = 0.0f;
        GLboolean bLight = GL_TRUE, bTexture = GL_FALSE, bBlend = GL_TRUE;
        GLint array = 1;
        mDrawMore = [&] {
            glLineWidth(3.0f);
            glDisable(GL_LIGHTING);
            glEnable(GL_TEXTURE_2D);
            glDisable(GL_BLEND);
            draw();
            glGetFloatv(GL_LINE_WIDTH, &width);
            bLight = glIsEnabled(GL_LIGHTING);
            bTexture = glIsEnabled(GL_TEXTURE_2D);
            bBlend = glIsEnabled(GL_BLEND);
            glGetVertexAttribiv(11, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &array);
            glDisable(GL_TEXTURE_2D);
            glLineWidth(1.0f);
        };
        Draw({{{100, 0, 0}, 0.0f}}); // a particle out of sight
        EXPECT_EQ(width, 3.0f);
        EXPECT_FALSE(bLight);
        EXPECT_TRUE(bTexture);
        EXPECT_FALSE(bBlend);
        EXPECT_EQ(array, 0);
        EXPECT_GT(CountLit(), 0);
    }
}

} // namespace
