#include "GL/DRAW/clsShadowLookup.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "GL/DRAW/PlaceMatrix.h"
#include "GL/DRAW/ShadowMarks.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsShadowStencil.h"
#include "GL/DRAW/clsViewScale.h"

bool ShadowLookup_cls::msbUsed = true;

namespace {

/// Numbers for a shader, as long as the scope lasts.
class BufferTexture_cls {
public:
    BufferTexture_cls(GLenum unit, GLenum format, const void* pData, size_t bytes) : mUnit(unit) {
        glGenBuffers(1, &mBuffer);
        glBindBuffer(GL_TEXTURE_BUFFER, mBuffer);
        glBufferData(GL_TEXTURE_BUFFER, static_cast<GLsizeiptr>(bytes), pData, GL_STREAM_DRAW);
        glBindBuffer(GL_TEXTURE_BUFFER, 0);
        glGenTextures(1, &mTexture);
        glActiveTexture(mUnit);
        glBindTexture(GL_TEXTURE_BUFFER, mTexture);
        glTexBuffer(GL_TEXTURE_BUFFER, format, mBuffer);
    }
    ~BufferTexture_cls() {
        glActiveTexture(mUnit);
        glBindTexture(GL_TEXTURE_BUFFER, 0);
        glDeleteTextures(1, &mTexture);
        glDeleteBuffers(1, &mBuffer);
    }
    BufferTexture_cls(const BufferTexture_cls&) = delete;
    BufferTexture_cls& operator=(const BufferTexture_cls&) = delete;

private:
    GLenum mUnit;
    GLuint mBuffer = 0;
    GLuint mTexture = 0;
};

template <typename T>
size_t BytesOf(const std::vector<T>& values) {
    return values.size() * sizeof(T);
}

/// First and one past the last of each block: one look at a texture gives both.
std::vector<int32_t> PairUp(const std::vector<int32_t>& starts) {
    std::vector<int32_t> pairs(2 * (starts.size() - 1));
    for (size_t i = 0; i + 1 < starts.size(); ++i) {
        pairs[2 * i] = starts[i];
        pairs[2 * i + 1] = starts[i + 1];
    }
    return pairs;
}

} // namespace

ShadowLookup_cls::ShadowLookup_cls(const ShadowShape_st& shape, const double* pModel) : mGrid(shape) {
    const ViewScale_cls view;
    mRays = view.GetRays();
    mbRays = view.HasRays();
    std::copy_n(pModel, 16, mToEye);
}

bool ShadowLookup_cls::IsHere() {
    static const bool sbRoom = [] {
        GLint most = 0;
        glGetIntegerv(GL_MAX_TEXTURE_BUFFER_SIZE, &most);
        return most >= int(ShadowGrid_cls::kMostEntries + ShadowGrid_cls::kSpareEntries);
    }();
    if (!msbUsed || !mbRays || !sbRoom || !GLAttribute_cls::mspCShaderCtrl) return false;
    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    const bool bHere = GLAttribute_cls::mspCShaderCtrl->BeginShadowLookup(GetLookup(), mRays);
    glUseProgram(static_cast<GLuint>(program));
    return bHere;
}

// From the eye to the spheres, and on to the table.
ShaderCtrl_cls::Lookup_st ShadowLookup_cls::GetLookup() const {
    const ShadowShape_st& shape = mGrid.GetShape();
    ShaderCtrl_cls::Lookup_st lookup;
    lookup.bNear = shape.bNear;
    lookup.start = shape.start;
    lookup.reach = shape.length;
    double turn[3][3], eye[3];
    mGrid.GetTurn(turn);
    const double none[3] = {0, 0, 0};
    UnplacePoint(mToEye, none, eye);
    for (size_t axis = 0; axis < 3; ++axis) {
        double unit[3] = {0, 0, 0};
        unit[axis] = 1.0;
        double there[3];
        UnplacePoint(mToEye, unit, there);
        for (size_t row = 0; row < 3; ++row) {
            double sum = 0.0;
            for (size_t i = 0; i < 3; ++i)
                sum += turn[row][i] * (there[i] - eye[i]);
            lookup.turn[3 * axis + row] = static_cast<float>(sum);
        }
    }
    for (size_t row = 0; row < 3; ++row) {
        double sum = 0.0;
        for (size_t i = 0; i < 3; ++i)
            sum += turn[row][i] * (eye[i] - mGrid.GetOrigin()[i]);
        lookup.eye[row] = static_cast<float>(sum);
        lookup.light[row] = shape.light[row];
        lookup.perBlock[row] = mGrid.GetPerBlock()[row];
    }
    return lookup;
}

void ShadowLookup_cls::Draw(ShadowStencil_cls& stencil, const float* pBounds) {
    if (CanMarkShadows()) {
        MarkShadows(mGrid, GetLookup(), mRays, pBounds, ShadowStencil_cls::kFound);
        return;
    }
    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    {
        const ShadowStencil_cls::MarkScope_cls mark;
        const std::vector<int32_t> ranges = PairUp(mGrid.GetStarts());
        const BufferTexture_cls starts(GL_TEXTURE1, GL_RG32I, ranges.data(), BytesOf(ranges));
        const BufferTexture_cls spheres(GL_TEXTURE2, GL_RGBA32F, mGrid.GetEntries().data(),
                                        BytesOf(mGrid.GetEntries()));
        glActiveTexture(GL_TEXTURE0);
        stencil.BindDepths();
        GLAttribute_cls::mspCShaderCtrl->BeginShadowLookup(GetLookup(), mRays);
        glBegin(GL_QUADS);
        glVertex2f(pBounds[0], pBounds[1]);
        glVertex2f(pBounds[2], pBounds[1]);
        glVertex2f(pBounds[2], pBounds[3]);
        glVertex2f(pBounds[0], pBounds[3]);
        glEnd();
        glBindTexture(GL_TEXTURE_2D, 0);
    }
    glUseProgram(static_cast<GLuint>(program));
}
