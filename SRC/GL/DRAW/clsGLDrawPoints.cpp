// The point loops of GLDrawData_cls.
#include "GL/DRAW/clsGLDrawData.h"

#include <algorithm>
#include <limits>

#include <epoxy/gl.h>

#include "COLORCURVE/clsColorSegments.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/DrawByProcessor.h"
#include "GL/DRAW/UnlitBlend.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLPointBatch.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/DRAW/clsViewScale.h"

namespace {

float GetPointSize(const GLAttribute_cls& attribute) {
    return static_cast<float>(std::max(attribute.mPointSize.mValue, 1));
}

void SetPointState() {
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_TRUE);
}

// Alpha of one point whose colour hangs on a value: the curve's alpha, by the law of "AlphaType=".
struct PointAlpha {
    PointAlpha(const GLAttribute_cls& attribute, int step)
        : factor(static_cast<float>(GLDrawData_cls::GetSteppingAlphaFactorUnlimited(step) *
                                    attribute.mAlphaFactor.mValue)) {
        if (attribute.mAlphaType.mValue != ALPHA_BY_RADIUS) return;
        const float radius = static_cast<float>(GLDrawData_cls::GetSteppingRadiusFactorUnlimited(step)) *
                             attribute.GetRadiusFactor();
        const float square = radius * radius;
        perSquare = square > 0.0f ? std::min(1.0f / square, kLargest) : kLargest;
        limit = attribute.mAlphaMax.mValue;
    }

    float operator()(float alpha) const { return std::min(alpha * perSquare, limit) * factor; }

    static constexpr float kLargest = std::numeric_limits<float>::max();
    float factor;
    float perSquare = 1.0f;
    float limit = kLargest;
};

} // namespace

void GLDrawData_cls::DrawStraight(const SnapData_cls* pSnap, int number, float size, bool bColors) {
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, pSnap->mpPos);
    if (bColors) {
        glEnableClientState(GL_COLOR_ARRAY);
        glColorPointer(4, GL_FLOAT, 0, pSnap->mpColor);
    }
    glPointSize(size);
    DrawProgress_cls progress(number, size);
    for (int first = 0; first < number; first += progress.GetRun()) {
        const int run = std::min(progress.GetRun(), number - first);
        if (msbListIsIdentity)
            glDrawArrays(GL_POINTS, first, run);
        else
            glDrawElements(GL_POINTS, run, GL_UNSIGNED_INT, mVIndices.data() + first);
        if (!progress.Report(first + run)) return;
    }
}

void GLDrawData_cls::DrawFaded(const SnapData_cls* pSnap, int number, float size, const float* pColor,
                               bool bAdditive) {
    glPointSize(size);
    SetUnlitBlend(bAdditive);
    DrawProgress_cls progress(number, size);
    GLPointBatch_cls batch(mVBatch, false, !bAdditive);
    float color[4] = {pColor[0], pColor[1], pColor[2], pColor[3]};
    for (int i = 0; i < number;) {
        for (const int end = std::min(number, i + progress.GetRun()); i < end; ++i) {
            color[3] = pColor[3] * mspIndexAndZ[i].mAlpha;
            batch.Add(pSnap->mpPos[mspIndexAndZ[i].mIndex], color, 1.0f);
        }
        batch.Flush();
        if (!progress.Report(i)) return;
    }
}

// Covering points hide what is farther; additive ones show whatever is before them.
bool GLDrawData_cls::DrawPointsByProcessor(SnapData_cls* pSnap, GLAttribute_cls* pAttribute, int number,
                                           const PointColor& color) {
    SequentialLooks_st looks = GatherOneLook(*pSnap, *pAttribute, 1.0f);
    looks.look[0].bTested = looks.look[0].bHides = !looks.bAdditive;
    const auto getColor = [&color](const ArrayAndIndex_cls& entry, float* pColor) {
        color(entry, pColor);
        return true;
    };
    return DrawByProcessor(
        {*pSnap, mspIndexAndZ, number, looks, 1.0f, true, mLightNumber, true, false, getColor},
        ViewScale_cls());
}

void GLDrawData_cls::GLDrawPointArrayElement(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute) {
    const int number = ZSort(face, pSnap, pAttribute);
    if (number == 0 || mbShadowPass) return; // only spheres throw shadows
    const bool bFaded = IsFaded() && !msbListIsIdentity;
    float color[4];
    pAttribute->mColor.PreCalcScaleFactor();
    pAttribute->mColor.GetColor4fScaled(color, 0.0f);
    const double stepping = GetSteppingAlphaFactorUnlimited(pAttribute->mpCDrawOption->GetDownSizing());
    color[3] = static_cast<float>(color[3] * pAttribute->mAlphaFactor.mValue * stepping);
    if (DrawPointsByProcessor(pSnap, pAttribute, number, [&](const ArrayAndIndex_cls& entry, float* pColor) {
            std::copy_n(color, 4, pColor);
            if (bFaded) pColor[3] *= entry.mAlpha;
        }))
        return;
    if (!msbListIsIdentity && !bFaded && mIndicesOf != msListSerial) {
        mVIndices.resize(static_cast<size_t>(number));
        for (size_t i = 0; i < mVIndices.size(); ++i)
            mVIndices[i] = static_cast<unsigned>(mspIndexAndZ[i].mIndex);
        mIndicesOf = msListSerial;
    }
    const GLAttribScope_cls attributes;
    SetPointState();
    const bool bAdditive = pAttribute->mBlendType.mValue == BLEND_ADDITIVE;
    if (color[3] < 1.0f || bAdditive) {
        glEnable(GL_BLEND);
        SetUnlitBlend(bAdditive);
        if (bAdditive) glDisable(GL_DEPTH_TEST);
    } else {
        SetUnlitBlend(false);
        EnableUnlitBlend(false);
    }
    glColor4fv(color);
    if (bFaded)
        DrawFaded(pSnap, number, GetPointSize(*pAttribute), color, bAdditive);
    else
        DrawStraight(pSnap, number, GetPointSize(*pAttribute), false);
    CheckGLErrors("points of one colour");
}

void GLDrawData_cls::GLDrawPointAll(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute) {
    const int number = ZSort(face, pSnap, pAttribute);
    const float* pValues = pSnap->GetDrivingValues(pAttribute->mColor.mDependType.mValue);
    if (number == 0 || !pValues || mbShadowPass) return;
    pAttribute->mColor.PreCalcScaleFactor();
    const ColorSegments_cls curve(pAttribute->mColor);
    const PointAlpha alpha(*pAttribute, pAttribute->mpCDrawOption->GetDownSizing());
    const auto getColor = [&](const ArrayAndIndex_cls& entry, float* pColor) {
        curve.Get(pColor, pValues[entry.mIndex]);
        pColor[3] = alpha(pColor[3]) * entry.mAlpha;
    };
    if (DrawPointsByProcessor(pSnap, pAttribute, number, getColor)) return;
    const GLAttribScope_cls attributes;
    const bool bAdditive = pAttribute->mBlendType.mValue == BLEND_ADDITIVE;
    const float size = GetPointSize(*pAttribute);
    SetPointState();
    glPointSize(size);
    SetUnlitBlend(bAdditive);
    if (bAdditive) glDisable(GL_DEPTH_TEST);

    DrawProgress_cls progress(number, size);
    GLPointBatch_cls batch(mVBatch, false, !bAdditive);
    float color[4];
    for (int i = 0; i < number;) {
        for (const int end = std::min(number, i + progress.GetRun()); i < end; ++i) {
            getColor(mspIndexAndZ[i], color);
            batch.Add(pSnap->mpPos[mspIndexAndZ[i].mIndex], color, 1.0f);
        }
        batch.Flush();
        if (!progress.Report(i)) break;
    }
    CheckGLErrors("points coloured by a value");
}
