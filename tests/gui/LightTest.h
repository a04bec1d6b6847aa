// Base of tests of what lights do to surfaces: a sphere around the origin, and its colour by closed forms.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include <epoxy/gl.h>

#include "DrawTest.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GroupValue.h"
#include "PARAM/clsParamGroup.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"

class LightTest : public DrawTest {
protected:
    using Vector = std::array<double, 3>;

    static constexpr float kRadius = 0.9f;
    static constexpr Vector kAmbient = {0.2, 0.1, 0.3};
    static constexpr Vector kDiffuse = {0.9, 0.6, 0.3};
    static constexpr Vector kSpecular = {0.5, 0.4, 0.6};
    static constexpr double kSurroundings = 0.2; // OpenGL's own ambient light
    static constexpr int kShininess = 20;

    static double Dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
    static Vector Normalized(const Vector& v) {
        const double length = std::sqrt(Dot(v, v));
        return {v[0] / length, v[1] / length, v[2] / length};
    }
    void SetUp() override {
        DrawTest::SetUp();
        mSize = 128;
        mbParallel = true;
        for (auto& a : mAttribute) {
            SetColor(a->mAmbient, float(kAmbient[0]), float(kAmbient[1]), float(kAmbient[2]), 1);
            SetColor(a->mDiffuse, float(kDiffuse[0]), float(kDiffuse[1]), float(kDiffuse[2]), 1);
            SetColor(a->mSpecular, float(kSpecular[0]), float(kSpecular[1]), float(kSpecular[2]), 1);
        }
        mSetLights = [this] {
            mCtrl.UpdateCurrentObj(0.0);
            mCtrl.SetNonShadowLight(0.0);
            mLightNumber = mCtrl.GetLightNumber();
        };
        mCtrl.mCLightNumber.mValue = 1;
        // Steps would find the curves of the program's own lights, which have the same names.
        Parameters_cls::msbUndoCommandMake = false;
    }
    void TearDown() override {
        Parameters_cls::msbUndoCommandMake = true;
        DrawTest::TearDown();
    }
    LightSRC_cls& SetLight(int i, int type, int fade, double strength, Vector place, Vector angles) {
        LightSRC_cls& light = mCtrl.GetLight(i);
        light.mCType.mValue = type;
        light.mCFade.mValue = fade;
        light.mpCTranslate->SetKeyFrame(place.data(), true, ParamGroup_cls::kCurrent);
        light.mpCRotate->SetKeyFrame(angles.data(), true, ParamGroup_cls::kCurrent);
        light.mpCStrength->SetKeyFrame(&strength, true, ParamGroup_cls::kCurrent);
        return light;
    }
    void SetSevenLights() {
        mCtrl.mCLightNumber.mValue = 7;
        SetLight(0, LightSRC_cls::TYPE_PARALLEL, 0, 0.2, {1, 1, 1}, {0, 45, 225});
        SetLight(1, LightSRC_cls::TYPE_SPOT, 1, 0.25, {0.5, 0.3, 3}, {0, 80, 30}).mCSpotAngle.mValue = 14;
        SetLight(2, LightSRC_cls::TYPE_POINT, 2, 0.4, {-1.5, 0.5, 1.5}, {0, 0, 0}).mCFadeDistance.mValue =
            0.7f;
        SetLight(3, LightSRC_cls::TYPE_CYLINDER, 0, 0.1, {0, -2, 2}, {0, 0, 0});
        SetLight(4, LightSRC_cls::TYPE_SPOT, 2, 0.3, {2, 0, 0.5}, {0, 10, 180}).mCSpotAngle.mValue = 60;
        SetLight(5, LightSRC_cls::TYPE_SPOT, 0, 0.1, {0, 2, 2}, {0, 0, 0}).mCSpotAngle.mValue = 180;
        SetLight(6, LightSRC_cls::TYPE_PARALLEL, 1, -0.05, {0, 0, 0}, {0, 20, 200});
    }
    /// A place of the world and its normal, under the lights in use; the viewer is far in front. With
    /// `pSure` false the place lies at the edge of a cone.
    Vector GetLit(const Vector& place, const Vector& normal, bool* pSure) {
        Vector ambient, diffuse = {}, shine = {};
        ambient.fill(kSurroundings);
        *pSure = true;
        const int first = mCtrl.GetFirstValidLight();
        for (int i = 0; i < mCtrl.GetLightNumber(); ++i) {
            LightSRC_cls& light = mCtrl.GetLight(i);
            if (!light.mCVisible.mValue) continue;
            const int type = light.mCType.mValue;
            const int fade = light.mCFade.mValue;
            std::vector<double> at = GetGroupValue(light.mpCTranslate, 0.0);
            const Vector from = light.GetVDirectionVector(0.0);
            double share = 1.0;
            Vector to = Normalized(from);
            if (type != LightSRC_cls::TYPE_PARALLEL) {
                to = {at[0] - place[0], at[1] - place[1], at[2] - place[2]};
                const double far = std::sqrt(Dot(to, to));
                const double d = std::max(double(light.mCFadeDistance.mValue), 1e-6);
                share = 1.0 / (1.0 + (fade == 1 ? far / d : 0.0) + (fade == 2 ? far * far / (d * d) : 0.0));
                to = Normalized(to);
            }
            if (type == LightSRC_cls::TYPE_SPOT && light.mCSpotAngle.mValue < 180) {
                const double inside =
                    Dot(to, from) - std::cos(std::min(light.mCSpotAngle.mValue, 90) * M_PI / 180.0);
                *pSure = *pSure && std::abs(inside) > 0.02;
                if (inside < 0.0) share = 0.0;
            }
            float strength[4];
            light.GetLightColor(0.0, strength);
            const double color = double(strength[0]) * (fade != 0 ? 2.0 : 1.0) * share;
            const double facing = std::max(Dot(normal, to), 0.0);
            *pSure = *pSure && std::abs(Dot(normal, to)) > 0.03;
            const Vector between = Normalized({to[0], to[1], to[2] + 1.0});
            const double gloss =
                facing > 0.0 ? std::pow(std::max(Dot(normal, between), 0.0), kShininess) : 0.0;
            for (size_t c = 0; c < 3; ++c) {
                ambient[c] += i == first ? share : 0.0;
                diffuse[c] += color * facing;
                shine[c] += color * gloss;
            }
        }
        Vector color;
        for (size_t c = 0; c < 3; ++c)
            color[c] = std::clamp(
                ambient[c] * kAmbient[c] + diffuse[c] * kDiffuse[c] + shine[c] * kSpecular[c], 0.0, 1.0);
        return color;
    }
    /// The picture of a sphere around the origin is what the closed form says, to 2 of 255.
    void ExpectLit(const std::string& what) {
        double worst = 0.0;
        int sure = 0;
        for (int row = 4; row < mSize; row += 3)
            for (int column = 3; column < mSize; column += 3) {
                const double x = (column + 0.5 - mSize / 2.0) / PixelsPerUnit();
                const double y = (row + 0.5 - mSize / 2.0) / PixelsPerUnit();
                const double rest = kRadius * kRadius - x * x - y * y;
                if (rest < 0.1) continue; // the rim
                const Vector place = {x, y, std::sqrt(rest)};
                bool bSure = false;
                const Vector lit = GetLit(place, Normalized(place), &bSure);
                if (!bSure) continue;
                ++sure;
                const Pixel_st seen = At(column, row);
                for (const double off :
                     {double(seen.r) - lit[0], double(seen.g) - lit[1], double(seen.b) - lit[2]})
                    if (!(std::abs(off) <= worst)) worst = std::abs(off);
            }
        EXPECT_LE(worst * 255.0, 2.0) << what;
        EXPECT_GT(sure, 60) << what;
    }
    void SetMaterial() {
        const auto set = [](GLenum which, const Vector& color) {
            const float values[4] = {float(color[0]), float(color[1]), float(color[2]), 1};
            glMaterialfv(GL_FRONT_AND_BACK, which, values);
        };
        set(GL_AMBIENT, kAmbient);
        set(GL_DIFFUSE, kDiffuse);
        set(GL_SPECULAR, kSpecular);
        glMateriali(GL_FRONT_AND_BACK, GL_SHININESS, kShininess);
    }
    /// A mesh so fine that its corners are the pixels.
    void DrawFineSphere(unsigned shader) {
        mDrawMore = [this, shader] {
            glEnable(GL_LIGHTING);
            SetMaterial();
            ShaderCtrl_cls& shaders = *GLAttribute_cls::mspCShaderCtrl;
            shaders.BeginShader(shader, mCtrl.GetLightNumber());
            constexpr int kSteps = 200;
            const auto corner = [](int i, int k) {
                const double a = M_PI * i / kSteps, b = M_PI * k / kSteps;
                const double n[3] = {std::cos(b), std::sin(b) * std::cos(a), std::sin(b) * std::sin(a)};
                glNormal3dv(n);
                glVertex3d(double(kRadius) * n[0], double(kRadius) * n[1], double(kRadius) * n[2]);
            };
            glDisable(GL_CULL_FACE);
            for (int i = 0; i < kSteps; ++i) {
                glBegin(GL_QUAD_STRIP);
                for (int k = 0; k <= kSteps; ++k) {
                    corner(i + 1, k);
                    corner(i, k);
                }
                glEnd();
            }
            shaders.EndShader(int(shader));
            glDisable(GL_LIGHTING);
        };
        Draw({{{100, 0, 0}, 0.0f}}); // a particle out of sight
        mDrawMore = nullptr;
    }
    void ExpectAllSurfaces(const std::string& what) {
        for (const unsigned shader : {0u, 1u, 2u}) {
            SetAll(2, 3, shader);
            Draw({{{0, 0, 0}, kRadius}});
            ExpectLit(what + ", ray-cast, shader " + std::to_string(shader));
            DrawFineSphere(shader);
            ExpectLit(what + ", mesh, shader " + std::to_string(shader));
        }
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << what;
    }
    LightSRCCtrl_cls mCtrl;
};
