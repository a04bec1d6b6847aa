// Billboards of one attribute: textured quads in the plane of the view.
#include "GL/DRAW/clsGLDrawData.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/DrawByProcessor.h"
#include "GL/DRAW/ParticleChecks.h"
#include "GL/DRAW/PlaceMatrix.h"
#include "GL/DRAW/UnlitBlend.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLBillboardBatch.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/DRAW/clsViewScale.h"

namespace {

// How the alpha of a billboard comes about. Two old ways of drawing few and many differ in details that
// pictures hang on: many leave out what is too faint whatever the rule, and count a particle's own radius
// even where all are drawn with one.
struct BillboardAlpha {
    BillboardAlpha(const GLAttribute_cls& attribute, bool bMany, bool bOneRadius, float scale)
        : bByRadius(attribute.mAlphaType.mValue == ALPHA_BY_RADIUS), bSkipFaint(bByRadius || bMany),
          bOwnRadius(bMany || !bOneRadius), limit(attribute.mAlphaMax.mValue),
          factor(bByRadius ? scale : scale * attribute.mAlphaFactor.mValue) {}

    /// `own` is the particle's radius, `common` the factor on it.
    float operator()(float alpha, float own, float common) const {
        if (!bByRadius) return alpha * factor;
        return AlphaByRadius(alpha, bOwnRadius ? own * common : common, factor, limit);
    }
    bool IsSkipped(float alpha) const { return bSkipFaint && !(alpha >= kFaint); }

    bool bByRadius;
    bool bSkipFaint;
    bool bOwnRadius;
    float limit;
    float factor;
};

void SetBillboardState(GLAttribute_cls& attribute) {
    glDisable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    attribute.BindTexture();
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glEnable(GL_BLEND);
    SetUnlitBlend(attribute.mBlendType.mValue == BLEND_ADDITIVE);
    glEnable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
}

} // namespace

void GLDrawData_cls::MultiplyMatrixOnVertexArrayOrg(const float* pMatrix, float* pOut) {
    static const float kCorners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    for (const float* corner : kCorners)
        for (int axis = 0; axis < 3; ++axis)
            *pOut++ = pMatrix[axis] * corner[0] + pMatrix[4 + axis] * corner[1];
}

void GLDrawData_cls::GetVertexArrayLookAtCamera(const float* pPos, float* pOut) const {
    double d[3];
    for (int i = 0; i < 3; ++i)
        d[i] = static_cast<double>(pPos[i]) - mCameraPos[i];
    const double square = d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
    // A particle in the eye itself has no side that could be seen.
    const double far = square > 0.0 ? std::sqrt(square) : 1.0;
    const int axis = d[1] == 0.0 && d[2] == 0.0 ? 1 : 0;
    double r[3] = {0, 0, 0};
    r[axis] = 1.0;
    const double along = square > 0.0 ? d[axis] / square : 0.0;
    double length = 0.0;
    for (int i = 0; i < 3; ++i) {
        r[i] -= along * d[i];
        length += r[i] * r[i];
    }
    length = std::sqrt(length);
    for (double& v : r)
        v = length > 0.0 ? v / length : 0.0;
    const double c[3] = {(d[2] * r[1] - d[1] * r[2]) / far, (d[0] * r[2] - d[2] * r[0]) / far,
                         (d[1] * r[0] - d[0] * r[1]) / far};
    const int signs[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    for (const int* sign : signs)
        for (int i = 0; i < 3; ++i)
            *pOut++ = static_cast<float>(sign[0] * r[i] + sign[1] * c[i]);
}

// A plane of the view stays one under turns and shifts, but not under a box that scales.
bool GLDrawData_cls::GetFlatCorners(float* pOut) const {
    if (!mbPlaced) {
        float matrix[16];
        glGetFloatv(GL_TRANSPOSE_MODELVIEW_MATRIX, matrix);
        MultiplyMatrixOnVertexArrayOrg(matrix, pOut);
        return true;
    }
    double matrix[16];
    glGetDoublev(GL_MODELVIEW_MATRIX, matrix);
    return GetFacingCorners(matrix, pOut);
}

bool GLDrawData_cls::IsShifted() const {
    constexpr double kTolerance = 1e-5; // OpenGL keeps floats
    double m[16];
    glGetDoublev(GL_MODELVIEW_MATRIX, m);
    double square = 0.0, limit = 0.0;
    for (int axis = 0; axis < 3; ++axis) {
        const double eye = m[axis] * mCameraPos[0] + m[4 + axis] * mCameraPos[1] +
                           m[8 + axis] * mCameraPos[2] + m[12 + axis];
        square += eye * eye;
        limit += m[12 + axis] * m[12 + axis];
    }
    return square > kTolerance * kTolerance * limit;
}

void GLDrawData_cls::GLDrawBillboardAll(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute) {
    const int number = ZSort(face, pSnap, pAttribute);
    if (number == 0 || !pSnap->mpColor || mbShadowPass) return;
    const int step = pAttribute->mpCDrawOption->GetDownSizing();
    const float scale =
        static_cast<float>(GetSteppingRadiusFactorUnlimited(step)) * pAttribute->GetRadiusFactor();
    if (scale == 0.0f) return;

    const GLAttribScope_cls attributes;
    SetBillboardState(*pAttribute);
    if (mbMirrored) glDisable(GL_CULL_FACE); // quads face the eye in any case
    float corners[12];
    if (!GetFlatCorners(corners)) return;

    // One colour for all is the curve's, without what downsizing adds.
    pAttribute->mColor.PreCalcScaleFactor();
    float color[4];
    pAttribute->mColor.GetColor4fScaled(color, 0.0f);
    color[3] *= pAttribute->mAlphaFactor.mValue;
    glColor4fv(color);

    const bool bOneRadius = pAttribute->mRadiusType.mValue == RADIUS_CONSTANT;
    const bool bColors = !pAttribute->mColor.IsConstant() || pAttribute->mAlphaType.mValue == ALPHA_BY_RADIUS;
    const bool bFaded = IsFaded();
    const BillboardAlpha alpha(*pAttribute, bColors && number > kManyBillboards, bOneRadius,
                               static_cast<float>(GetSteppingAlphaFactorUnlimited(step)));
    const auto getColor = [&](const ArrayAndIndex_cls& entry, float* pOut) {
        std::copy_n(color, 4, pOut);
        if (bColors) {
            std::copy_n(pSnap->mpColor[entry.mIndex], 3, pOut);
            pOut[3] =
                alpha(pSnap->mpColor[entry.mIndex][3], pSnap->mpRadius[entry.mIndex], scale) * entry.mAlpha;
            return !alpha.IsSkipped(pOut[3]);
        }
        if (bFaded) pOut[3] *= entry.mAlpha;
        return true;
    };
    const ViewScale_cls view;
    SequentialLooks_st looks =
        GatherOneLook(*pSnap, *pAttribute, static_cast<float>(GetSteppingRadiusFactorUnlimited(step)));
    looks.look[0].quality = QUALITY_LOW; // always in the plane of the view
    if (DrawByProcessor(
            {*pSnap, mspIndexAndZ, number, looks, 1.0f, bFaded, mLightNumber, !mbPlaced, false, getColor},
            view))
        return;
    DrawProgress_cls progress(number);
    GLBillboardBatch_cls batch(mVBatch, bColors || bFaded);
    for (int i = 0; i < number; ++i) {
        const int index = mspIndexAndZ[i].mIndex;
        const float* pPos = pSnap->mpPos[index];
        const float radius = bOneRadius ? scale : scale * pSnap->mpRadius[index];
        float own[4];
        if (!getColor(mspIndexAndZ[i], own)) continue;
        batch.Add(pPos, corners, radius, own);
        const float cost =
            4.0f * DrawProgress_cls::kCostVertex + view.GetArea(pPos, radius) * DrawProgress_cls::kCostPixel;
        if (!progress.AddCost(cost)) continue;
        batch.Flush();
        if (!progress.Report(i + 1)) break;
    }
    batch.Flush();
    CheckGLErrors("billboards");
}
