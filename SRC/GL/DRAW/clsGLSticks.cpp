#include "GL/DRAW/clsGLSticks.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstddef>

#include <epoxy/gl.h>

#include "BOND/clsPovObjectSticks.h"
#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/BASE/clsSphere.h"
#include "GL/DRAW/UnlitBlend.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSphereLook.h"
#include "GL/DRAW/clsViewScale.h"

namespace {

constexpr int kCircle = PovObjectSticks_cls::kCircle;
constexpr int kCorners = 2 * kCircle; // by turns at the first end and the second
constexpr float kGrey = 0.7f;         // of lines

// Sticks a call, and floats a stick.
constexpr int kLineCapacity = 8192;
constexpr int kLineCorner = 7; // place, colour
constexpr int kInstanceCapacity = 2048;
constexpr int kInstance = 8; // first end and weight, way to the second and radius
constexpr int kFixedCapacity = 512;
constexpr int kFixedCorner = 10; // place, normal, colour

/// Corners of the cylinder that is repeated: cosine, sine, and 0 or 1 for the end.
const float* GetTemplate() {
    static const std::array<float, 3 * kCorners> sCorners = [] {
        std::array<float, 3 * kCorners> corners;
        for (size_t k = 0; k < kCorners; ++k) {
            corners[3 * k] = PovObjectSticks_cls::maCircleCos[k / 2];
            corners[3 * k + 1] = PovObjectSticks_cls::maCircleSin[k / 2];
            corners[3 * k + 2] = static_cast<float>(k % 2);
        }
        return corners;
    }();
    return sCorners.data();
}

/// Where the sticks of a batch of the Fixed form begin, and how many corners each has.
struct Strips_st {
    std::array<GLint, kFixedCapacity> mFirst;
    std::array<GLsizei, kFixedCapacity> mCount;
};
const Strips_st& GetStrips() {
    static const Strips_st sStrips = [] {
        Strips_st strips;
        for (size_t k = 0; k < kFixedCapacity; ++k)
            strips.mFirst[k] = static_cast<GLint>(k) * kCorners;
        strips.mCount.fill(kCorners);
        return strips;
    }();
    return sStrips;
}

void EnableInstanceAttribute(unsigned place, const float* pFirst) {
    glEnableVertexAttribArray(place);
    glVertexAttribPointer(place, 4, GL_FLOAT, GL_FALSE, kInstance * GLsizei(sizeof(float)), pFirst);
    glVertexAttribDivisor(place, 1);
}

void DisableInstanceAttribute(unsigned place) {
    glVertexAttribDivisor(place, 0);
    glDisableVertexAttribArray(place);
}

/// Neither end is out of the numbers, nor the way between them out of what shaders can square.
bool IsDrawable(const float* pFirst, const float* pSecond) {
    float square = 0.0f;
    for (int i = 0; i < 3; ++i)
        square += (pSecond[i] - pFirst[i]) * (pSecond[i] - pFirst[i]);
    return square > 0.0f && std::isfinite(square);
}

/// The axis and a side of length 1 that stands upright on it.
bool GetFrame(const float* pFirst, const float* pSecond, float* pAxis, float* pSide) {
    for (int i = 0; i < 3; ++i)
        pAxis[i] = pSecond[i] - pFirst[i];
    pSide[0] = pSide[1] = 0.0f;
    pSide[2] = 1.0f;
    double axis[3], side[3];
    std::copy_n(pAxis, 3, axis);
    std::copy_n(pSide, 3, side);
    const bool bDone =
        MyVector::Normalize(axis) && MyVector::Orthogonalize(axis, side) && MyVector::Normalize(side);
    for (int i = 0; i < 3; ++i) {
        pAxis[i] = float(axis[i]);
        pSide[i] = float(side[i]);
    }
    return bDone;
}

} // namespace

bool GLSticks_cls::Draw(const PovObjectSticks_cls& sticks, const StickParticles_st& particles,
                        const StickStyle_st& style, unsigned copyMask) {
    if (!sticks.mbValid || !particles.mpPos || sticks.GetNumber() == 0) return true;
    if (style.mType != STICK_LINE && style.mType != STICK_CYLINDER) return true;
    const GLAttribScope_cls attributes;
    const GLClientScope_cls client;
    Begin(style);
    const ViewScale_cls view;
    const size_t number = sticks.GetNumber();
    DrawProgress_cls progress(static_cast<int>(std::min(number, static_cast<size_t>(INT_MAX))));
    const unsigned step = static_cast<unsigned>(std::max(particles.mStep, 1));
    bool bWhole = true;
    for (size_t k = 0; bWhole && k < number; ++k) {
        if (!PovObjectSticks_cls::IsDrawnIn(sticks.GetCrossing(k), copyMask)) continue;
        if (step > 1 && (sticks.mvIndexA[k] % step != 0 || sticks.mvIndexB[k] % step != 0)) continue;
        float first[3], second[3];
        sticks.GetEnds(k, particles.mpPos, first, second);
        if (!Add(first, second, sticks.GetFactor(k), style)) continue;
        const bool bReport = progress.AddCost(GetCost(view, first, second, style));
        if (bReport || mCount >= GetCapacity()) Flush();
        if (bReport) bWhole = progress.Report(static_cast<int>(k) + 1);
    }
    Flush();
    End();
    CheckGLErrors("sticks");
    return bWhole;
}

void GLSticks_cls::Begin(const StickStyle_st& style) {
    ShaderCtrl_cls* pShader = GLAttribute_cls::mspCShaderCtrl;
    if (pShader) pShader->EndShader(0);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    glEnableClientState(GL_VERTEX_ARRAY);
    mCount = 0;
    mMinAlpha = 1.0f;
    if (style.mType == STICK_LINE) {
        mForm = Form::Lines;
        glDisable(GL_LIGHTING);
        SetUnlitBlend(false);
        glLineWidth(static_cast<float>(std::max(style.mWidth, 1)));
        glEnableClientState(GL_COLOR_ARRAY);
    } else {
        glEnable(GL_LIGHTING);
        glEnable(GL_NORMALIZE);
        SphereMaterial_st material = {
            {0.2f, 0.16f, 0.04f, style.mAlpha}, {1, 1, 1, style.mAlpha}, {1, 1, 1, 1}};
        glDisable(GL_COLOR_MATERIAL);
        SetGLMaterial(material);
        glMateriali(GL_FRONT_AND_BACK, GL_SHININESS, std::clamp(style.mShininess, 0, 128));
        mForm =
            Sphere_cls::HasInstances() && pShader && pShader->BeginSticks() ? Form::Instances : Form::Fixed;
    }
    mVBatch.resize(std::max(mVBatch.size(), size_t{kFixedCapacity} * kCorners * kFixedCorner));
    const float* p = mVBatch.data();
    constexpr GLsizei kFloat = sizeof(float);
    if (mForm == Form::Lines) {
        glVertexPointer(3, GL_FLOAT, kLineCorner * kFloat, p);
        glColorPointer(4, GL_FLOAT, kLineCorner * kFloat, p + 3);
    } else if (mForm == Form::Instances) {
        glVertexPointer(3, GL_FLOAT, 0, GetTemplate());
        EnableInstanceAttribute(ShaderCtrl_cls::ATTRIBUTE_FIRST, p);
        EnableInstanceAttribute(ShaderCtrl_cls::ATTRIBUTE_ALONG, p + 4);
    } else {
        glEnableClientState(GL_NORMAL_ARRAY);
        glEnableClientState(GL_COLOR_ARRAY);
        glVertexPointer(3, GL_FLOAT, kFixedCorner * kFloat, p);
        glNormalPointer(GL_FLOAT, kFixedCorner * kFloat, p + 3);
        glColorPointer(4, GL_FLOAT, kFixedCorner * kFloat, p + 6);
        // The weights alone differ, and of the alphas only the diffuse colour's counts.
        glColorMaterial(GL_FRONT_AND_BACK, GL_DIFFUSE);
        glEnable(GL_COLOR_MATERIAL);
    }
}

void GLSticks_cls::End() {
    if (mForm != Form::Instances) return;
    DisableInstanceAttribute(ShaderCtrl_cls::ATTRIBUTE_FIRST);
    DisableInstanceAttribute(ShaderCtrl_cls::ATTRIBUTE_ALONG);
    GLAttribute_cls::mspCShaderCtrl->EndShader(0);
}

int GLSticks_cls::GetCapacity() const {
    return mForm == Form::Lines       ? kLineCapacity
           : mForm == Form::Instances ? kInstanceCapacity
                                      : kFixedCapacity;
}

bool GLSticks_cls::Add(const float* pFirst, const float* pSecond, float weight, const StickStyle_st& style) {
    const float alpha = style.mAlpha * weight;
    if (mForm == Form::Lines) {
        float sum = 0.0f;
        for (int i = 0; i < 3; ++i)
            sum += (pFirst[i] - pFirst[i]) + (pSecond[i] - pSecond[i]);
        if (sum != 0.0f) return false;
        float* p = &mVBatch[static_cast<size_t>(mCount) * 2 * kLineCorner];
        for (const float* pEnd : {pFirst, pSecond}) {
            std::copy_n(pEnd, 3, p);
            p[3] = p[4] = p[5] = kGrey;
            p[6] = alpha;
            p += kLineCorner;
        }
    } else {
        float axis[3], side[3];
        if (!IsDrawable(pFirst, pSecond) || !GetFrame(pFirst, pSecond, axis, side)) return false;
        if (mForm == Form::Instances) {
            float* p = &mVBatch[static_cast<size_t>(mCount) * kInstance];
            std::copy_n(pFirst, 3, p);
            p[3] = weight;
            for (int i = 0; i < 3; ++i)
                p[4 + i] = pSecond[i] - pFirst[i];
            p[7] = style.mRadius;
        } else {
            const float color[4] = {1, 1, 1, alpha};
            AddFixed(pFirst, pSecond, axis, side, color, style.mRadius);
        }
    }
    mMinAlpha = alpha < mMinAlpha ? alpha : mMinAlpha;
    ++mCount;
    return true;
}

void GLSticks_cls::AddFixed(const float* pFirst, const float* pSecond, const float* pAxis, const float* pSide,
                            const float* pColor, float radius) {
    float third[3]; // so turned that the outside is the front
    MyVector::GetCrossedVector(pSide, pAxis, third);
    float* p = &mVBatch[static_cast<size_t>(mCount) * kCorners * kFixedCorner];
    for (size_t k = 0; k < kCircle; ++k)
        for (const float* pEnd : {pFirst, pSecond}) {
            for (int i = 0; i < 3; ++i) {
                p[3 + i] = PovObjectSticks_cls::maCircleCos[k] * pSide[i] +
                           PovObjectSticks_cls::maCircleSin[k] * third[i];
                p[i] = pEnd[i] + radius * p[3 + i];
            }
            std::copy_n(pColor, 4, p + 6);
            p += kFixedCorner;
        }
}

// Opaque sticks hide what they cover, blended or not; unblended is cheaper. Not so lines, which may be
// smooth.
void GLSticks_cls::Flush() {
    if (mCount == 0) return;
    (mForm == Form::Lines || mMinAlpha < 1.0f ? glEnable : glDisable)(GL_BLEND);
    if (mForm == Form::Lines)
        glDrawArrays(GL_LINES, 0, 2 * mCount);
    else if (mForm == Form::Instances)
        glDrawArraysInstanced(GL_QUAD_STRIP, 0, kCorners, mCount);
    else
        glMultiDrawArrays(GL_QUAD_STRIP, GetStrips().mFirst.data(), GetStrips().mCount.data(), mCount);
    mCount = 0;
    mMinAlpha = 1.0f;
}

float GLSticks_cls::GetCost(const ViewScale_cls& view, const float* pFirst, const float* pSecond,
                            const StickStyle_st& style) const {
    float middle[3], square = 0.0f;
    for (int i = 0; i < 3; ++i) {
        middle[i] = 0.5f * (pFirst[i] + pSecond[i]);
        square += (pSecond[i] - pFirst[i]) * (pSecond[i] - pFirst[i]);
    }
    const float length = std::sqrt(square);
    const float pixels = std::sqrt(view.GetArea(middle, 0.5f * length)); // of its length, at most
    if (mForm == Form::Lines)
        return 2.0f * DrawProgress_cls::kCostVertex +
               pixels * static_cast<float>(style.mWidth) * DrawProgress_cls::kCostPixel;
    const float across = std::sqrt(view.GetArea(middle, std::fabs(style.mRadius)));
    return static_cast<float>(kCorners) * DrawProgress_cls::kCostVertex +
           pixels * across * DrawProgress_cls::kCostPixel;
}
