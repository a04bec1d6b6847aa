#include "GL/DRAW/clsShadowVolume.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/BASE/clsSphere.h"
#include "GL/DRAW/ParticleChecks.h"
#include "GL/DRAW/PlaceMatrix.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsShadowStencil.h"

namespace {

constexpr int kCapacity = 4096; // volumes a call
constexpr int kPlainCapacity = 256;
constexpr int kSides[] = {4, 6, 8, 16, 32};
// Sides as many as leave half a pixel to a circle of so many pixels.
constexpr float kPixels[] = {2.0f, 5.0f, 10.0f, 40.0f, 160.0f};
constexpr int kFinest[] = {2, 3, 4}; // of a quality
constexpr float kWidest = 1.26f;     // of all forms' corners, radii
constexpr float kCostCorner = 40.0f;
constexpr float kCostPixel = 2.0f;    // of both faces
constexpr float kCostSorted = 400.0f; // of a sphere that is looked up
constexpr float kCostLookup = 25.0f;  // of a pixel that is

/// A circle's polygon of the same area.
float GetCorner(int sides) {
    const double turn = 2.0 * M_PI / sides;
    return static_cast<float>(std::sqrt(turn / std::sin(turn)));
}

/// Triangles of a closed cylinder, anticlockwise from outside; corners by turns at the first end and the
/// second.
const std::vector<unsigned>& GetIndices(int form) {
    static const auto sIndices = [] {
        std::array<std::vector<unsigned>, std::size(kSides)> all;
        for (size_t k = 0; k < all.size(); ++k) {
            const auto sides = static_cast<unsigned>(kSides[k]);
            for (unsigned i = 0; i < sides; ++i) {
                const unsigned a = 2 * i, b = 2 * ((i + 1) % sides);
                all[k].insert(all[k].end(), {a, b, b + 1, a, b + 1, a + 1});
            }
            for (unsigned i = 1; i + 1 < sides; ++i) {
                const unsigned a = 2 * i, b = 2 * (i + 1);
                all[k].insert(all[k].end(), {0, b, a, 1, a + 1, b + 1});
            }
        }
        return all;
    }();
    return sIndices[static_cast<size_t>(form)];
}

/// Cosine, sine, and 0 or 1 for the end.
std::vector<float> MakeTemplate(int sides) {
    std::vector<float> corners;
    const float reach = GetCorner(sides);
    for (int i = 0; i < sides; ++i) {
        const double angle = 2.0 * M_PI * i / sides;
        for (const float end : {0.0f, 1.0f})
            corners.insert(corners.end(), {reach * static_cast<float>(std::cos(angle)),
                                           reach * static_cast<float>(std::sin(angle)), end});
    }
    return corners;
}

float Limited(float value, float low, float high, float other) {
    return std::isnan(value) ? other : std::clamp(value, low, high);
}

} // namespace

ShadowVolume_cls::Settings_st::Settings_st() {
    mConfList.Add(&mQuality, "ShadowQuality=", "1");
    mConfList.Add(&mLength, "ShadowLength=", "20");
    mConfList.Add(&mDarkness, "ShadowDarkness=", "1");
    mDarkness.mStrDefault = mDarkness.GetItemStr();
}

ShadowVolume_cls::Settings_st& ShadowVolume_cls::GetSettings() {
    static Settings_st sSettings;
    return sSettings;
}

void ShadowVolume_cls::SetToDefault() {
    Settings_st& settings = GetSettings();
    settings.mConfList.SetToDefault(&settings.mQuality);
    settings.mConfList.SetToDefault(&settings.mLength);
    settings.mConfList.SetToDefault(&settings.mDarkness);
}

// A value that no field could have given would leave the fields empty.
void ShadowVolume_cls::ReadStrLineStaticMember(const wxString& line) {
    Settings_st& settings = GetSettings();
    if (!settings.mConfList.ReadStrLineAll(line)) return;
    settings.mQuality.mValue = GetQuality();
    settings.mLength.mValue = GetLength();
    settings.mDarkness.mValue = GetDarkness();
}

int ShadowVolume_cls::GetQuality() { return std::clamp(GetSettings().mQuality.mValue, 0, 2); }

float ShadowVolume_cls::GetLength() { return Limited(GetSettings().mLength.mValue, 0.0f, kLongest, 20.0f); }

float ShadowVolume_cls::GetStart(unsigned quality, bool bExact) {
    constexpr float kEdges[] = {0.62f, 0.32f, 0.16f}; // longest of the meshes, radii
    return bExact && quality >= 3 ? 0.0f : kEdges[std::min(quality, 2u)];
}

float ShadowVolume_cls::GetDarkness() { return Limited(GetSettings().mDarkness.mValue, 0.0f, 1.0f, 1.0f); }

ShadowVolume_cls::ShadowVolume_cls(const float* pLight, float start, ShadowStencil_cls& stencil)
    : mStencil(stencil), mFinest(kFinest[GetQuality()]) {
    mShape.start = start;
    mShape.length = GetLength();
    double projection[16];
    float viewport[4];
    glGetDoublev(GL_MODELVIEW_MATRIX, mModel);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetFloatv(GL_VIEWPORT, viewport);
    mHalfScreen = 0.5f * std::max(viewport[2], viewport[3]);
    constexpr int kRows[3] = {0, 1, 3};
    for (size_t k = 0; k < 3; ++k) {
        for (size_t column = 0; column < 4; ++column) {
            double sum = 0.0;
            for (size_t i = 0; i < 4; ++i)
                sum += projection[4 * i + size_t(kRows[k])] * mModel[4 * column + i];
            mClip[k][column] = static_cast<float>(sum);
        }
        mWide[k] = MyVector::GetNorm(mClip[k]);
    }
    const bool bNear = pLight[3] != 0.0f;
    // A direction is the way between two places.
    double there[3], light[3];
    for (int i = 0; i < 3; ++i)
        there[i] = double(pLight[i]) + (bNear ? 0.0 : mModel[12 + i]);
    mbMade = mShape.length > mShape.start && GetPlaceDeterminant(mModel) != 0.0 &&
             UnplacePoint(mModel, there, light);
    if (mbMade && !bNear) mbMade = MyVector::Normalize(light);
    mbMade = mbMade && std::isfinite(light[0] + light[1] + light[2]);
    if (!mbMade) return;
    mShape.SetLight(bNear, light);
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    glEnableClientState(GL_VERTEX_ARRAY);
    BeginShader();
    if (mbInstances && !mStencil.IsShown()) {
        mLookup.emplace(mShape, mModel);
        if (!mLookup->IsHere()) mLookup.reset();
    }
}

// Corners that are worked out here are as those of a far light's shadow of a sphere of radius 1 at the
// origin: where the driver would cut volumes off at the far plane, the shader keeps all of these, too.
void ShadowVolume_cls::BeginShader() {
    ShaderCtrl_cls* pShader = GLAttribute_cls::mspCShaderCtrl;
    const bool bInstances = Sphere_cls::HasInstances(), bClamped = mStencil.IsClamped();
    mbShader = pShader && (bInstances || !bClamped) &&
               pShader->BeginShadows(bInstances && mShape.bNear, mShape.light, mShape.start, mShape.length,
                                     bClamped);
    mbInstances = mbShader && bInstances;
    if (mbShader && !bInstances) glVertexAttrib4f(ShaderCtrl_cls::ATTRIBUTE_SPHERE, 0.0f, 0.0f, 0.0f, 1.0f);
}

ShadowVolume_cls::~ShadowVolume_cls() {
    if (!mbMade) return;
    Flush();
    if (mbShader) glUseProgram(0);
    glPopClientAttrib();
}

// Left, bottom, right, top, and the largest radius in pixels; false: out of sight.
bool ShadowVolume_cls::GetBounds(const Ends_st& ends, float* pBounds, float* pPixels) const {
    float low[2] = {1e30f, 1e30f};
    float high[2] = {-1e30f, -1e30f};
    bool bBehind = true;
    bool bAnywhere = false;
    *pPixels = 0.0f;
    for (int end = 0; end < 2; ++end) {
        const float* p = ends.place[end];
        const float radius = kWidest * ends.radius[end];
        float middle[3];
        for (int k = 0; k < 3; ++k)
            middle[k] = MyVector::GetScalarProduct(mClip[k], p) + mClip[k][3];
        const float nearest = middle[2] - radius * mWide[2];
        const float farthest = middle[2] + radius * mWide[2];
        bBehind = bBehind && farthest <= 0.0f;
        if (!(nearest > 1e-6f * farthest)) {
            bAnywhere = true;
            continue;
        }
        for (int axis = 0; axis < 2; ++axis) {
            const float from = middle[axis] - radius * mWide[axis];
            const float to = middle[axis] + radius * mWide[axis];
            low[axis] = std::min(low[axis], from / (from < 0.0f ? nearest : farthest));
            high[axis] = std::max(high[axis], to / (to > 0.0f ? nearest : farthest));
            *pPixels = std::max(*pPixels, ends.radius[end] * mWide[axis] / nearest * mHalfScreen);
        }
    }
    if (bBehind) return false;
    if (bAnywhere) {
        std::fill_n(pBounds, 2, -1.0f);
        std::fill_n(pBounds + 2, 2, 1.0f);
        *pPixels = 1e30f;
        return true;
    }
    if (low[0] > 1.0f || low[1] > 1.0f || high[0] < -1.0f || high[1] < -1.0f) return false;
    std::copy_n(low, 2, pBounds);
    std::copy_n(high, 2, pBounds + 2);
    return true;
}

int ShadowVolume_cls::GetForm(float pixels) const {
    int form = 0;
    while (form < mFinest && !(pixels < kPixels[form]))
        ++form;
    return form;
}

float ShadowVolume_cls::GetCost(int form, const float* pBounds) const {
    const float width = std::clamp(pBounds[2], -1.0f, 1.0f) - std::clamp(pBounds[0], -1.0f, 1.0f);
    const float height = std::clamp(pBounds[3], -1.0f, 1.0f) - std::clamp(pBounds[1], -1.0f, 1.0f);
    return static_cast<float>(2 * kSides[form]) * kCostCorner +
           width * height * mHalfScreen * mHalfScreen * kCostPixel;
}

float ShadowVolume_cls::Add(const float* pPos, float radius) {
    radius = std::fabs(radius);
    Ends_st ends;
    float bounds[4];
    float pixels = 0.0f;
    if (!mbMade || !IsDrawable(pPos, radius) || !mShape.GetEnds(pPos, radius, ends)) return 0.0f;
    if (!GetBounds(ends, bounds, &pixels)) return DrawProgress_cls::kCostVertex;
    const int form = GetForm(pixels);
    const float cost = GetCost(form, bounds);
    // As round as its sides make it.
    if (mLookup && pixels < kPixels[form]) {
        if (mLookup->mGrid.GetNumber() == 0) std::copy_n(bounds, 4, mLookupBounds);
        for (int i = 0; i < 2; ++i) {
            mLookupBounds[i] = std::min(mLookupBounds[i], bounds[i]);
            mLookupBounds[2 + i] = std::max(mLookupBounds[2 + i], bounds[2 + i]);
        }
        mLookupSaves += cost;
        mLookup->mGrid.Add(pPos, radius);
        return kCostSorted;
    }
    AddVolume(pPos, radius, form, bounds);
    return DrawProgress_cls::kCostVertex + cost;
}

void ShadowVolume_cls::AddVolume(const float* pPos, float radius, int form, const float* pBounds) {
    Batch_st& batch = mBatches[static_cast<size_t>(form)];
    const int capacity = mbInstances ? kCapacity : kPlainCapacity;
    if (batch.mData.empty()) batch.mData.resize(size_t(capacity) * 4);
    float* p = batch.mData.data() + static_cast<ptrdiff_t>(batch.mCount++) * 4;
    std::copy_n(pPos, 3, p);
    p[3] = radius;
    if (batch.mCount == capacity) FlushForm(form);
    if (mStencil.Count(pBounds[0], pBounds[1], pBounds[2], pBounds[3])) {
        FlushForms();
        mStencil.Fold();
    }
}

void ShadowVolume_cls::AddVolume(const float* pBall) {
    Ends_st ends;
    float bounds[4];
    float pixels = 0.0f;
    if (mShape.GetEnds(pBall, pBall[3], ends) && GetBounds(ends, bounds, &pixels))
        AddVolume(pBall, pBall[3], GetForm(pixels), bounds);
}

void ShadowVolume_cls::Flush() {
    FlushLookup();
    FlushForms();
}

// A look at all pixels is worth it for many.
void ShadowVolume_cls::FlushLookup() {
    if (!mLookup || mLookup->mGrid.GetNumber() == 0) return;
    ShadowGrid_cls& grid = mLookup->mGrid;
    float bounds[4];
    for (int i = 0; i < 4; ++i)
        bounds[i] = std::clamp(mLookupBounds[i], -1.0f, 1.0f);
    const float pixels = (bounds[2] - bounds[0]) * (bounds[3] - bounds[1]) * mHalfScreen * mHalfScreen;
    const size_t number = grid.GetNumber();
    if (float(number) * kCostSorted + pixels * kCostLookup < mLookupSaves) {
        glFlush(); // what is drawn already goes on meanwhile
        const std::vector<size_t> large = grid.Sort();
        if (large.size() < number) mLookup->Draw(mStencil, bounds);
        for (const size_t i : large)
            AddVolume(grid.GetBall(i));
    } else {
        for (size_t i = 0; i < number; ++i)
            AddVolume(grid.GetBall(i));
    }
    grid.Clear();
    mLookupSaves = 0.0f;
}

void ShadowVolume_cls::FlushForms() {
    for (int form = 0; form < kForms; ++form)
        FlushForm(form);
}

void ShadowVolume_cls::FlushForm(int form) {
    Batch_st& batch = mBatches[static_cast<size_t>(form)];
    if (batch.mCount == 0) return;
    mTemplate = MakeTemplate(kSides[form]);
    if (mbInstances)
        DrawInstances(form);
    else
        DrawPlain(form);
    batch.mCount = 0;
}

// All volumes of a far light are one turned template.
void ShadowVolume_cls::DrawInstances(int form) {
    const Batch_st& batch = mBatches[static_cast<size_t>(form)];
    const std::vector<float> plain = mTemplate;
    for (size_t k = 0; !mShape.bNear && k < plain.size(); k += 3)
        for (size_t i = 0; i < 3; ++i)
            mTemplate[k + i] = plain[k] * mShape.axes[1][i] + plain[k + 1] * mShape.axes[2][i] +
                               (plain[k + 2] > 0.0f ? mShape.length : mShape.start) * mShape.axes[0][i];
    if (mStencil.IsShown()) {
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(1, GL_FLOAT, 3 * sizeof(float), plain.data() + 2);
    }
    const std::vector<unsigned>& indices = GetIndices(form);
    constexpr unsigned kPlace = ShaderCtrl_cls::ATTRIBUTE_SPHERE;
    glVertexPointer(3, GL_FLOAT, 0, mTemplate.data());
    glEnableVertexAttribArray(kPlace);
    glVertexAttribPointer(kPlace, 4, GL_FLOAT, GL_FALSE, 0, batch.mData.data());
    glVertexAttribDivisor(kPlace, 1);
    glDrawElementsInstanced(GL_TRIANGLES, static_cast<GLsizei>(indices.size()), GL_UNSIGNED_INT,
                            indices.data(), batch.mCount);
    glVertexAttribDivisor(kPlace, 0);
    glDisableVertexAttribArray(kPlace);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
}

void ShadowVolume_cls::DrawPlain(int form) {
    const Batch_st& batch = mBatches[static_cast<size_t>(form)];
    mCorners.clear();
    for (int n = 0; n < batch.mCount; ++n) {
        const float* p = batch.mData.data() + static_cast<ptrdiff_t>(n) * 4;
        Ends_st ends;
        mShape.GetEnds(p, p[3], ends);
        float side[3], up[3], away[3];
        for (int i = 0; i < 3; ++i)
            away[i] = mShape.bNear
                          ? (ends.place[1][i] - ends.place[0][i]) / ((mShape.length - mShape.start) * p[3])
                          : mShape.axes[0][i];
        ShadowShape_st::MakeAcross(away, side, up);
        for (size_t k = 0; k < mTemplate.size(); k += 3) {
            const int end = mTemplate[k + 2] > 0.0f ? 1 : 0;
            for (int i = 0; i < 3; ++i)
                mCorners.push_back(ends.place[end][i] +
                                   ends.radius[end] * (mTemplate[k] * side[i] + mTemplate[k + 1] * up[i]));
        }
    }
    const std::vector<unsigned>& one = GetIndices(form);
    std::vector<unsigned> indices;
    for (int n = 0; n < batch.mCount; ++n)
        for (const unsigned index : one)
            indices.push_back(index + static_cast<unsigned>(2 * kSides[form] * n));
    glVertexPointer(3, GL_FLOAT, 0, mCorners.data());
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(indices.size()), GL_UNSIGNED_INT, indices.data());
}
