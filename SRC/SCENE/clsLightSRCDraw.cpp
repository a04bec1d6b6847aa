// A light source in OpenGL: the state of a light, and its mark in the views.
#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include "GL/BASE/clsMarkPainter.h"
#include "SCENE/clsLightSRC.h"

namespace {

constexpr float kLeastFadeDistance = 1e-6f;
constexpr int kWidestCone = 90; // of OpenGL, which knows 180 besides as no cone
constexpr unsigned kHeightDashes = 61680;
constexpr unsigned kBeamDashes = 65280;
constexpr unsigned kWholeLine = 0xFFFF;
constexpr double kMarkSize = 0.02; // of the distance from the eye
constexpr double kBeamLength = 0.2;

GLenum LightOf(int number) { return GL_LIGHT0 + static_cast<GLenum>(number); }

bool AreFinite(const double* p) { return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]); }

void DrawLine(MarkPainter_cls& painter, const double* from, const double* to) {
    const MarkPainter_cls::Point ends[2] = {{float(from[0]), float(from[1]), float(from[2])},
                                            {float(to[0]), float(to[1]), float(to[2])}};
    painter.Draw(MarkPainter_cls::Shape::Lines, ends, 2);
}

/// A circle around the origin of the plane of the screen, a vertex every 10 degrees.
void DrawRing(MarkPainter_cls& painter, MarkPainter_cls::Shape shape, double radius, int vertices) {
    constexpr int kMost = 37;
    MarkPainter_cls::Point ring[kMost];
    for (int i = 0; i < vertices; ++i) {
        const double angle = i * M_PI / 18.0;
        ring[i] = {float(radius * std::cos(angle)), float(radius * std::sin(angle)), 0.0f};
    }
    painter.Draw(shape, ring, vertices);
}

} // namespace

void LightSRC_cls::GLSetPlace(unsigned light, double time) {
    float place[4];
    float angles[2];
    GetLightInfo(time, place, angles, mCType.mValue == TYPE_PARALLEL, nullptr);
    glLightfv(light, GL_POSITION, place);
    GLSetAttenuation(light);
    GLSetSpotEffect(light, time);
}

void LightSRC_cls::GLSetAttenuation(unsigned light) const {
    const float asked = mCFadeDistance.mValue;
    const float distance = asked > kLeastFadeDistance ? asked : kLeastFadeDistance; // NaN, too
    const int fade = mCFade.mValue;
    glLightf(light, GL_CONSTANT_ATTENUATION, 1.0f);
    glLightf(light, GL_LINEAR_ATTENUATION, fade == FADE_POWER1 ? 1.0f / distance : 0.0f);
    glLightf(light, GL_QUADRATIC_ATTENUATION, fade == FADE_POWER2 ? 1.0f / (distance * distance) : 0.0f);
}

void LightSRC_cls::GLSetSpotEffect(unsigned light, double time) {
    if (mCType.mValue != TYPE_SPOT) {
        glLightf(light, GL_SPOT_CUTOFF, 180.0f);
        return;
    }
    float direction[4] = {0, 0, -1, 0};
    if (mCTarget.mValue <= TARGET_ORIGIN) {
        const std::array<double, 3> from = GetDirectionInWorld(time);
        for (size_t i = 0; i < 3; ++i)
            direction[i] = static_cast<float>(-from[i]);
    }
    const float none[4] = {0, 0, 0, 0};
    const int angle = mCSpotAngle.mValue;
    glLightf(light, GL_SPOT_CUTOFF,
             angle >= kMaxSpotAngle ? 180.0f : static_cast<float>(std::clamp(angle, 0, kWidestCone)));
    glLightfv(light, GL_SPOT_DIRECTION, direction);
    glLightfv(light, GL_AMBIENT, none);
    glLightf(light, GL_SPOT_EXPONENT, 0.0f);
}

// A light that fades begins twice as bright.
void LightSRC_cls::GLSetColors(unsigned light, double time, bool bAmbient, bool bDiffuse, float share) {
    const float none[4] = {0, 0, 0, 0};
    const float full[4] = {1, 1, 1, 0};
    float color[4];
    GetLightColor(time, color);
    for (int c = 0; c < 3; ++c)
        color[c] *= mCFade.mValue != FADE_NONE ? 2.0f * share : share;
    glLightfv(light, GL_AMBIENT, bAmbient ? full : none);
    glLightfv(light, GL_DIFFUSE, bDiffuse ? color : none);
    glLightfv(light, GL_SPECULAR, bDiffuse ? color : none);
}

void LightSRC_cls::GLSetLightSourceComp(int index, double time, bool bAmbient, bool bDiffuse, float share) {
    if (!mCVisible.mValue) return;
    const GLenum light = LightOf(index);
    glEnable(light);
    GLSetPlace(light, time);
    GLSetColors(light, time, bAmbient, bDiffuse, share);
}

void LightSRC_cls::GLSetLightSource(double time, bool bEnable, bool bShadowOption) {
    const GLenum light = LightOf(mNumber);
    if (!bEnable || !mCVisible.mValue) {
        glDisable(light);
        GLSetColors(light, time, false, false);
        return;
    }
    glEnable(light);
    GLSetPlace(light, time);
    const bool bOnlyAmbient = mNumber == 0 && bShadowOption && mCCastShadow.mValue;
    GLSetColors(light, time, mNumber == 0, !bOnlyAmbient);
}

// A dashed ring around a whole one, upright on the screen.
void LightSRC_cls::GLDrawMark(MarkPainter_cls& painter, const double* place, double size) const {
    const MarkScope_cls matrix(painter);
    double view[16];
    painter.GetModelView(view);
    double upright[16] = {0};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            upright[4 * row + column] = view[4 * column + row];
    upright[15] = 1.0;
    const double factors[3] = {size, size, size};
    painter.Translate(place);
    painter.Multiply(upright);
    painter.Scale(factors);
    painter.SetDashes(kWholeLine);
    // The middle of the rings is theirs for a click, too.
    if (painter.IsPick()) DrawRing(painter, MarkPainter_cls::Shape::Fan, 1.0, 37);
    DrawRing(painter, MarkPainter_cls::Shape::Lines, 1.0, 36); // every other step is left out
    DrawRing(painter, MarkPainter_cls::Shape::Strip, 0.7, 37);
}

void LightSRC_cls::GLDraw(MarkPainter_cls& painter) const {
    if (!mCVisible.mValue) return;
    double place[3] = {mCCurrent.mPos[0], mCCurrent.mPos[1], mCCurrent.mPos[2]};
    if (!AreFinite(place)) return;
    ToWorld(place, false);
    const double distance = painter.GetDepth(place);
    const MarkName_cls name(painter, mPickName);
    SetMarkColor(painter, 0.7f, 0.7f, 0.2f);
    if (!painter.IsPick()) {
        const double foot[3] = {place[0], place[1], 0.0};
        painter.SetDashes(kHeightDashes);
        DrawLine(painter, foot, place);
    }
    if (mCType.mValue == TYPE_SPOT && mCTarget.mValue <= TARGET_ORIGIN && AreFinite(mCCurrent.mFront)) {
        double end[3] = {0, 0, 0};
        if (mCTarget.mValue == TARGET_NONE) {
            double along[3] = {mCCurrent.mFront[0], mCCurrent.mFront[1], mCCurrent.mFront[2]};
            ToWorld(along, true);
            for (int i = 0; i < 3; ++i)
                end[i] = place[i] + kBeamLength * std::abs(distance) * along[i];
        }
        painter.SetDashes(kBeamDashes);
        DrawLine(painter, place, end);
    }
    // The handles of a selected light stand in its mark's place while a click picks among them.
    if ((!painter.IsPick() || !mbSelected) && painter.GetPixel(place) > 0.0)
        GLDrawMark(painter, place, kMarkSize * std::abs(distance));
    painter.SetDashes(kWholeLine);
    if (mbSelected && !mbDragging) GLDrawGuide(painter);
    if (!painter.IsPick()) GLDrawPath();
}
