// Base of tests of shadows in the views: spheres and lights, and where their shadows lie by plain geometry,
// that is what a ray from a point of a sphere to a light meets.
#pragma once

#include <algorithm>
#include <cmath>
#include <fstream>
#include <functional>
#include <limits>
#include <utility>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterObject.h"
#include "FilterPictures.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsShadowVolume.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "PictureTest.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

using Vector = std::array<double, 3>;

inline Vector Minus(const Vector& a, const Vector& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
inline Vector Plus(const Vector& a, const Vector& b, double f) {
    return {a[0] + f * b[0], a[1] + f * b[1], a[2] + f * b[2]};
}
inline double Dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
inline double Length(const Vector& v) { return std::sqrt(Dot(v, v)); }
inline Vector Unit(const Vector& v) { return Plus({0, 0, 0}, v, 1.0 / Length(v)); }

constexpr double kAmbient = 0.1 * 1.2; // of the material under ambient light 1 and OpenGL's own 0.2
constexpr double kDiffuse = 0.8;

const Vector kFromFront = {-0.6, 0.3, 0.75}; ///< a light, behind the eye

/// A sphere, and one half between it and that light.
inline std::vector<Vector> Pair() { return {{10, 0, 0}, Plus({10, 0.7, -0.4}, Unit(kFromFront), 3.0)}; }

/// What stands between a point and a light, as a distance in radii from the nearest shadow's axis: below 1
/// the point is dark. Spheres throw from the circle on which the light touches them, as far as shadows reach.
inline double GetCover(const Vector& p, const Vector& thrower, double radius, const Vector& light, bool bNear,
                       double length) {
    const Vector away = Unit(bNear ? Minus(thrower, light) : Plus({0, 0, 0}, light, -1.0));
    const Vector way = Minus(p, thrower);
    const double along = Dot(way, away);
    const double sine = bNear ? radius / Length(Minus(thrower, light)) : 0.0;
    const double cosine = std::sqrt(1.0 - sine * sine);
    if (along < -sine * radius || along > (length - sine) * radius) return 100.0;
    const double wide = radius * (cosine + (along / radius + sine) * sine / cosine);
    return Length(Plus(way, away, -along)) / wide;
}

class ShadowTest : public PictureTest {
protected:
    void SetUp() override {
        PictureTest::SetUp();
        mLooks = Drawing().Serialize();
        mLights = Lights().Serialize();
        mBuffer = std::exchange(Shared().msCFBOSizeIndex.mValue, 2u);
        ASSERT_TRUE(SizeView(480, 400));
        Lights().SetToDefault();
        Lights().mCLightNumber.mValue = 1;
        Option().mClassify.mValue = 1;
    }
    void TearDown() override {
        Option().mShadow.mValue = 0;
        ShadowVolume_cls::SetToDefault();
        Hub()->mpCFilters->ClearFilters();
        Hub()->mpCPeriodicBoundary->SetToDefault();
        Shared().msCFBOSizeIndex.mValue = mBuffer;
        ReadAll(mLooks, [](auto& stream, const wxString& line) { Drawing().ReadStrLine(stream, line); });
        ReadAll(mLights, [](auto& stream, const wxString& line) { Lights().ReadStrLine(stream, line); });
        PictureTest::TearDown();
    }
    static void ReadAll(const wxString& text,
                        const std::function<void(std::wistream&, const wxString&)>& read) {
        std::wistringstream lines(text.ToStdWstring());
        for (std::wstring line; std::getline(lines, line);)
            read(lines, line);
    }
    static GLSequence_cls& Drawing() {
        return GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence());
    }
    static LightSRCCtrl_cls& Lights() { return *Hub()->mpCLightSRCCtrl; }
    static DrawOption_cls& Option() { return *Hub()->mpCDrawOption; }

    void Show(const std::vector<Vector>& spheres, double radius) {
        mSpheres = spheres;
        mRadius = radius;
        ShowParticles(spheres, 5);
        LookAlongX();
        SetLooks(3, ShaderCtrl_cls::TYPE_PHONG);
    }
    void SetLooks(unsigned quality, unsigned shader, unsigned drawType = DRAW_SPHERE) {
        for (GLAttribute_cls* a : Drawing().mpCGLAttribute) {
            a->mDrawType.mValue = drawType;
            a->mDrawQuality.mValue = quality;
            a->mShaderType.mValue = shader;
            a->mRadiusType.mValue = 1;
            a->mRadiusFactorForConst.mValue = float(mRadius);
            SetColor(a->mAmbient, 0.1f);
            SetColor(a->mDiffuse, float(kDiffuse));
            SetColor(a->mSpecular, 0.0f);
        }
    }
    static void SetColor(ColorCurve_cls& curve, float grey) {
        const float color[4] = {grey, grey, grey, 1};
        std::copy_n(color, 4, curve.mConstantColor.mValue);
    }
    /// From a direction of the scene (parallel) or a place.
    LightSRC_cls& SetLight(int i, int type, const Vector& from, double strength) {
        LightSRC_cls& light = Lights().GetLight(i);
        light.mCType.mValue = type;
        light.mCFade.mValue = 0;
        light.mCCastShadow.mValue = true;
        light.mCSpotAngle.mValue = 90;
        const Vector at = Unit(type == LightSRC_cls::TYPE_PARALLEL ? from : Minus(from, {10, 0, 0}));
        const Vector angles = {0, std::asin(at[2]) * 180 / M_PI, std::atan2(at[1], at[0]) * 180 / M_PI + 180};
        FilterScope_cls::Set(light.mpCTranslate, from);
        FilterScope_cls::Set(light.mpCRotate, angles);
        light.mpCStrength->SetKeyFrame(&strength, true, ParamGroup_cls::kCurrent);
        Lights().mCLightNumber.mValue = std::max(Lights().mCLightNumber.mValue, i + 1);
        return light;
    }
    static Picture_st Draw(unsigned shadow) {
        Option().mShadow.mValue = shadow;
        Repaint();
        return Grab(0);
    }
    /// Every pixel that surely shows a lit or a dark part of a sphere does. At least `dark` are dark.
    void ExpectShadows(const std::string& what, int dark, unsigned shadow = 1, double tolerance = 9.0) {
        const Picture_st picture = Draw(shadow);
        int seen = 0, seenDark = 0, bad = 0;
        double worst = 0.0;
        for (const Vector& sphere : mSpheres)
            for (int a = 0; a < 60; ++a)
                for (int b = 0; b < 120; ++b) {
                    const double u = M_PI * (a + 0.5) / 60, v = M_PI * b / 60;
                    const Vector n = {std::cos(u), std::sin(u) * std::cos(v), std::sin(u) * std::sin(v)};
                    bool bDark = false;
                    const double value = GetBrightness(sphere, n, shadow != 0, &bDark);
                    double x = 0, y = 0;
                    const Vector p = Plus(sphere, n, mRadius);
                    const double at[3] = {p[0], p[1], p[2]};
                    if (value < 0.0 ||
                        !(mFisheye > 0.0 ? InFisheye(p, &x, &y) : ProjectToWindow(0, at, &x, &y)))
                        continue;
                    if (x < 2 || y < 2 || x > 477 || y > 397) continue;
                    ++seen;
                    seenDark += bDark;
                    const double off = std::abs(picture.Brightness(int(x), int(y)) / 255.0 - value) * 255.0;
                    worst = std::max(worst, off);
                    bad += off > (bDark ? 3.0 : tolerance);
                }
        EXPECT_GT(seen, 100) << what;
        EXPECT_GE(seenDark, dark) << what;
        EXPECT_LE(bad, mMayDiffer * seen) << what << ": of " << seen << " worst " << worst;
        if (bad > mMayDiffer * seen) {
            std::string name = "shadows_" + what;
            std::replace(name.begin(), name.end(), ' ', '_');
            Snap(name);
        }
    }
    /// Angles are radii there; the picture's side is the window's height.
    bool InFisheye(const Vector& p, double* pX, double* pY) const {
        const Vector d = Unit(p);
        const double polar = std::acos(d[0]) * 180.0 / M_PI, around = std::atan2(d[2], -d[1]);
        *pX = 240.0 + polar / mFisheye * 400.0 * std::cos(around);
        *pY = 200.0 - polar / mFisheye * 400.0 * std::sin(around);
        return polar < mFisheye / 2.0;
    }
    /// -1 where a pixel may show anything.
    double GetBrightness(const Vector& sphere, const Vector& n, bool bShadows, bool* pDark) const {
        const Vector p = Plus(sphere, n, mRadius);
        const Vector toEye = Plus({0, 0, 0}, p, -1.0); // the eye is the origin
        if (Dot(n, Unit(toEye)) < 0.25) return -1.0;
        for (const Vector& other : mSpheres) {
            if (other == sphere) continue;
            const double along = Dot(Minus(other, {0, 0, 0}), Unit(p));
            if (along > 0 && along < Length(p) &&
                Length(Minus(other, Plus({0, 0, 0}, Unit(p), along))) < 1.1 * mRadius)
                return -1.0;
        }
        double value = kAmbient;
        for (int i = 0; i < Lights().GetLightNumber(); ++i) {
            LightSRC_cls& light = Lights().GetLight(i);
            if (!light.mCVisible.mValue) continue;
            float place[4], strength[4];
            Lights().GetPosition(i, 0.0, place);
            light.GetLightColor(0.0, strength);
            const Vector from = {double(place[0]), double(place[1]), double(place[2])};
            const bool bNear = place[3] != 0.0f;
            const double facing = Dot(n, Unit(bNear ? Minus(from, p) : from));
            if (std::abs(facing) < 0.08) return -1.0;
            if (facing < 0.0) continue;
            bool bDark = false;
            for (const Vector& thrower : mSpheres) {
                if (!bShadows || !light.mCCastShadow.mValue || thrower == sphere) continue;
                const double cover =
                    GetCover(p, thrower, mRadius, from, bNear, double(ShadowVolume_cls::GetLength()));
                if (cover > 0.88 && cover < 1.12) return -1.0;
                bDark = bDark || cover < 1.0;
            }
            *pDark = *pDark || bDark;
            const double through = bDark ? 1.0 - double(ShadowVolume_cls::GetDarkness()) : 1.0;
            value += through * kDiffuse * double(strength[0]) * facing;
        }
        return std::min(value, 1.0);
    }
    static int CountDifferent(const Picture_st& a, const Picture_st& b, int by) {
        int count = 0;
        for (size_t i = 0; i < a.mRGB.size() && i < b.mRGB.size(); ++i)
            count += std::abs(int(a.mRGB[i]) - int(b.mRGB[i])) > by;
        return count;
    }

    FilterScope_cls mFilters{*Hub()->mpCFilters};
    std::vector<Vector> mSpheres;
    double mRadius = 1.0;
    double mMayDiffer = 0.0; ///< share of places that may show something else, as pixels are wide
    double mFisheye = 0.0;   ///< its angle, degrees; 0 in a plain view
    wxString mLooks, mLights;
    unsigned mBuffer = 0;
};
