// Base of tests that draw a few particles by themselves: the draw calls of the program in the context of its
// first view, a small buffer, a camera on the z axis that looks down on the origin.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GuiTest.h"

class PDataSnap_cls;

class DrawTest : public GuiTest {
protected:
    struct Particle_st {
        std::array<float, 3> pos;
        float radius;
        unsigned char type = 0;
        float value = 0.0f;
    };
    struct Pixel_st {
        float r, g, b;
    };

    DrawTest();
    ~DrawTest() override;
    void SetUp() override;
    void TearDown() override;

    /// Draw into a buffer of mSize pixels, as a paint does with face 0.
    void Draw(const std::vector<Particle_st>& particles);
    /// Column from the left, row from below.
    Pixel_st At(int x, int y) const;
    Pixel_st Middle() const { return At(mSize / 2, mSize / 2); }
    float DepthAt(int x, int y) const { return mDepth[size_t(y) * size_t(mSize) + size_t(x)]; }
    /// What was drawn, as bytes, top row first.
    Picture_st Picture() const;
    int CountLit() const;
    /// Pixels that are lit in a row or column, from first to last: {first, last + 1}; {0, 0} for none.
    std::array<int, 2> LitInRow(int y) const;
    std::array<int, 2> LitInColumn(int x) const;
    /// Pixels of a length at the distance of the origin.
    double PixelsPerUnit() const;
    /// All four attributes.
    void SetAll(unsigned drawType, unsigned quality = 0, unsigned shader = 0);
    static void SetColor(ColorCurve_cls& curve, float r, float g, float b, float a);
    /// A picture of one opaque colour in mDir, for billboards.
    std::string MakePlainTexture();

    static constexpr double kEye = 4.0;
    int mSize = 96;
    bool mbParallel = false;
    bool mbSpot = false; ///< the main light is near, fades and is a spot
    bool mbFog = false;
    float mShift = 0.0f;              ///< of what is drawn, behind the camera's setting
    std::function<void()> mDrawMore;  ///< behind the particles, with their lights
    std::function<void()> mSetLights; ///< in place of the lights above; the camera stands in the matrix
    int mLightNumber = 2;
    GLPerspective_cls mPerspective{96, 96};
    DrawOption_cls mOption;
    std::array<std::unique_ptr<GLAttribute_cls>, 4> mAttribute;
    GLDrawData_cls mDraw;
    TempDir_cls mDir;

private:
    void SetLights();
    bool IsLit(int x, int y) const;

    std::unique_ptr<PDataSnap_cls> mSnap;
    std::vector<float> mColor; ///< RGB, bottom row first
    std::vector<float> mDepth;
};
