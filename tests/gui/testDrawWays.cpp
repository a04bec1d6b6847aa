// Particles drawn by the processor against the same drawn by OpenGL, whose picture is the measure.
#include <algorithm>
#include <cmath>
#include <random>

#include <epoxy/gl.h>

#include "DrawTest.h"
#include "GL/BASE/DrawWay.h"
#include "GL/DRAW/clsCpuDraw.h"
#include "GL/DRAW/clsShadowStencil.h"

namespace {

class DrawWays : public DrawTest {
protected:
    void SetUp() override {
        mBefore = GetDrawWay();
        DrawTest::SetUp();
        mSize = 256;
        std::mt19937 random(3);
        std::uniform_real_distribution<float> side(-1.2f, 1.2f);
        for (int i = 0; i < 400; ++i)
            mParticles.push_back({{side(random), side(random), 1.4f * side(random)},
                                  0.05f + 0.02f * side(random),
                                  static_cast<unsigned char>(i % 4),
                                  side(random)});
        int k = 0;
        for (auto& a : mAttribute) {
            SetColor(a->mColor, 0.3f + 0.2f * float(k), 0.8f - 0.2f * float(k), 0.5f, 0.6f);
            SetColor(a->mDiffuse, 0.9f - 0.2f * float(k), 0.3f + 0.2f * float(k), 0.6f, 1.0f);
            SetColor(a->mAmbient, 0.2f, 0.1f, 0.15f, 1.0f);
            SetColor(a->mSpecular, 0.5f, 0.5f, 0.4f, 1.0f);
            ++k;
        }
    }
    void TearDown() override {
        SetDrawWay(mBefore);
        DrawTest::TearDown();
    }

    Picture_st DrawBy(DrawWay way, const std::vector<Particle_st>& particles) {
        SetDrawWay(way);
        Draw(particles);
        return Picture();
    }

    /// The mean difference, and that no pixel differs by more than 3 but those at an edge: where OpenGL's own
    /// picture has as large a step beside it.
    void ExpectSame(const char* what) {
        const Picture_st gl = DrawBy(DrawWay::GL, mParticles);
        const std::vector<float> depth = Depths();
        const long long passes = CpuDraw_cls::GetPasses();
        const Picture_st cpu = DrawBy(DrawWay::CPU, mParticles);
        const std::vector<float> cpuDepth = Depths();
        ASSERT_EQ(gl.mRGB.size(), cpu.mRGB.size());
        EXPECT_EQ(CpuDraw_cls::GetPasses(), passes + 1) << what << ": OpenGL drew both";
        double sum = 0.0;
        int lit = 0, far = 0, off = 0, deep = 0;
        const auto at = [&](const Picture_st& p, int x, int y, int k) {
            return int(p.mRGB[3 * (size_t(y) * size_t(mSize) + size_t(x)) + size_t(k)]);
        };
        for (int y = 0; y < mSize; ++y)
            for (int x = 0; x < mSize; ++x)
                for (int k = 0; k < 3; ++k) {
                    const int own = at(gl, x, y, k);
                    const int difference = std::abs(own - at(cpu, x, y, k));
                    sum += difference;
                    lit += own > 8;
                    if (difference <= 3) continue;
                    ++far;
                    int step = 0;
                    for (int dy = -1; dy <= 1; ++dy)
                        for (int dx = -1; dx <= 1; ++dx)
                            step = std::max(step, std::abs(own - at(gl, std::clamp(x + dx, 0, mSize - 1),
                                                                    std::clamp(y + dy, 0, mSize - 1), k)));
                    off += step + 3 < difference;
                }
        for (size_t i = 0; i < depth.size(); ++i)
            deep += std::fabs(depth[i] - cpuDepth[i]) > 1e-5f;
        EXPECT_LE(sum / double(gl.mRGB.size()), 0.3) << what;
        EXPECT_EQ(off, 0) << what;
        EXPECT_LE(far, lit / 100) << what << " of " << lit;
        EXPECT_LE(deep, mSize * mSize / 500) << what;
        EXPECT_GT(lit, 1000) << what;
    }
    std::vector<float> Depths() const {
        std::vector<float> all;
        for (int y = 0; y < mSize; ++y)
            for (int x = 0; x < mSize; ++x)
                all.push_back(DepthAt(x, y));
        return all;
    }

    DrawWay mBefore = DrawWay::Auto;
    std::vector<Particle_st> mParticles;
};

TEST_F(DrawWays, DrawTheSameSpheres) {
    for (unsigned shader = 0; shader < 4; ++shader)
        for (const bool bParallel : {false, true})
            for (const bool bSpot : {false, true}) {
                mbParallel = bParallel;
                mbSpot = bSpot;
                mbFog = shader == 2;
                SetAll(2, 3, shader);
                ExpectSame((std::to_string(shader) + (bParallel ? " parallel" : "") + (bSpot ? " spot" : ""))
                               .c_str());
            }
}

TEST_F(DrawWays, DrawTheSameClearAndMixedSpheres) {
    SetAll(2, 3);
    mOption.mSortOrder.mValue = 1;
    for (auto& a : mAttribute)
        a->mAlphaFactor.mValue = 0.5f;
    ExpectSame("clear, sorted");
    mAttribute[1]->mBlendType.mValue = 1;
    mAttribute[2]->mDiffuse.mbUseColorCurve.mValue = true;
    ExpectSame("some add, some by value");
}

TEST_F(DrawWays, DrawTheSameSpheresAroundTheEyeAndAcrossTheRim) {
    SetAll(2, 3);
    mParticles = {{{0.0f, 0.0f, 3.7f}, 0.27f}, {{1.3f, 0.2f, 0.0f}, 0.5f}, {{-0.5f, -0.5f, 0.0f}, 0.6f}};
    ExpectSame("near");
    mParticles.push_back({{0.5f, 1.0f, 4.2f}, 1.2f}); // holds the eye's plane
    ExpectSame("beside the eye");
}

TEST_F(DrawWays, DrawTheSameBillboards) {
    for (unsigned quality = 0; quality < 2; ++quality)
        for (unsigned blend = 0; blend < 2; ++blend)
            for (const bool bParallel : {false, true}) {
                mbParallel = bParallel;
                mbFog = blend == 0 && quality == 0;
                SetAll(1, quality);
                for (auto& a : mAttribute)
                    a->mBlendType.mValue = blend;
                ExpectSame(
                    (std::to_string(quality) + (blend ? " additive" : "") + (bParallel ? " parallel" : ""))
                        .c_str());
            }
    mbFog = false;
    mAttribute[1]->mBlendType.mValue = 0;
    ExpectSame("mixed");
}

TEST_F(DrawWays, DrawTheSamePoints) {
    for (const int size : {1, 2, 3, 8, 11})
        for (unsigned blend = 0; blend < 2; ++blend) {
            mbFog = size == 3;
            SetAll(0);
            for (auto& a : mAttribute) {
                a->mPointSize.mValue = size;
                a->mBlendType.mValue = blend;
            }
            if (size > 2) ExpectSame((std::to_string(size) + (blend ? " additive" : "")).c_str());
        }
    mbFog = false;
    mAttribute[1]->mPointSize.mValue = 4;
    mAttribute[2]->mBlendType.mValue = 0;
    ExpectSame("mixed");
}

TEST_F(DrawWays, DrawTheSameAmongEachOther) {
    SetAll(2, 3);
    mAttribute[1]->mDrawType.mValue = 1;
    mAttribute[2]->mDrawType.mValue = 0;
    mAttribute[3]->mDrawType.mValue = 1;
    mAttribute[3]->mDrawQuality.mValue = 1;
    mAttribute[3]->mBlendType.mValue = 1;
    ExpectSame("all kinds");
    // What lies in shadow is drawn anew, and nothing else, colours and depths.
    mSetLights = [] {
        const float ahead[4] = {0.6f, 0, 0.8f, 0};
        glEnable(GL_LIGHT0);
        glLightfv(GL_LIGHT0, GL_POSITION, ahead);
        glEnable(GL_SCISSOR_TEST);
        for (const int part : {1, 2}) { // of either mark
            glScissor(16 + 70 * part, 40, 60, 200);
            glClearStencil(part == 1 ? 0x80 : 1);
            glClear(GL_STENCIL_BUFFER_BIT);
        }
        glClearStencil(0);
        glDisable(GL_SCISSOR_TEST);
        ShadowStencil_cls::SelectShadowed();
    };
    mDrawMore = [] {
        glDisable(GL_STENCIL_TEST);
        glStencilMask(0xff);
    };
    mLightNumber = 1;
    ExpectSame("all kinds in shadow");
    const Picture_st picture = Picture();
    const auto count = [&](int left, int right) {
        int lit = 0;
        for (int y = 0; y < mSize; ++y)
            for (int x = left; x < right; ++x)
                lit += picture.mRGB[3 * (size_t(y) * size_t(mSize) + size_t(x)) + 1] > 8;
        return lit;
    };
    EXPECT_GT(count(86, 146), 500);
    EXPECT_EQ(count(0, 86), 0);
    EXPECT_EQ(count(146, 156), 0);
}

// Where types don't count, points hide what is farther, and colours have rules of their own.
TEST_F(DrawWays, DrawTheSameOfOneAttributeForAll) {
    mOption.mClassify.mValue = 0;
    GLAttribute_cls& all = *mAttribute[0];
    const char* const kinds[] = {"points", "billboards", "spheres"};
    for (unsigned kind = 0; kind < 3; ++kind)
        for (const bool bByValue : {false, true})
            for (unsigned blend = 0; blend < 2; ++blend) {
                SetAll(kind, kind == 2 ? 3 : 0);
                all.mPointSize.mValue = 4;
                all.mBlendType.mValue = blend;
                all.mAlphaFactor.mValue = blend == 0 && !bByValue ? 1.0f : 0.5f;
                all.mAlphaType.mValue = kind == 1 && bByValue ? ALPHA_BY_RADIUS : ALPHA_CONSTANT;
                for (ColorCurve_cls* curve : {&all.mColor, &all.mDiffuse})
                    curve->mbUseColorCurve.mValue = bByValue;
                if (kind == 0 && !bByValue) SetColor(all.mColor, 0.9f, 0.3f, 0.6f, 1.0f);
                mOption.mSortOrder.mValue = bByValue ? SORT_FAR_FIRST : SORT_NONE;
                ExpectSame((std::string(kinds[kind]) + (bByValue ? " by value" : "") +
                            (blend == 1 ? " additive" : ""))
                               .c_str());
            }
}

// Quads of a copy turn to where the eye is seen from what was copied: only OpenGL draws those.
TEST_F(DrawWays, LeaveFacingQuadsOfCopiesAlone) {
    for (unsigned quality = 0; quality < 2; ++quality) {
        SetAll(1, quality);
        mShift = 0.5f;
        const long long passes = CpuDraw_cls::GetPasses();
        DrawBy(DrawWay::CPU, mParticles);
        EXPECT_EQ(CpuDraw_cls::GetPasses(), passes + (quality == 0 ? 1 : 0));
    }
}

TEST_F(DrawWays, LeaveAFewToOpenGLByThemselves) {
    SetAll(0);
    const long long passes = CpuDraw_cls::GetPasses();
    DrawBy(DrawWay::Auto, mParticles);
    EXPECT_EQ(CpuDraw_cls::GetPasses(), passes);
    DrawBy(DrawWay::Auto, std::vector<Particle_st>(20000, mParticles[0]));
    EXPECT_EQ(CpuDraw_cls::GetPasses(), passes + 1);
}

TEST_F(DrawWays, KnowASoftwareDriver) {
    EXPECT_TRUE(IsSoftwareRenderer("llvmpipe (LLVM 15.0.6, 256 bits)"));
    EXPECT_TRUE(IsSoftwareRenderer("Software Rasterizer"));
    EXPECT_FALSE(IsSoftwareRenderer("GeForce RTX 4090/PCIe/SSE2"));
}

} // namespace
