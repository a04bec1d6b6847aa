#include "GL/DRAW/clsGLExactBatch.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "GL/DRAW/clsGLAttribute.h"

namespace {

constexpr size_t kRoom = size_t{1} << 20; // floats: what is sorted at a time
constexpr size_t kSquareRun = 1024;       // squares a call
constexpr size_t kPointRun = 16384;       // points until OpenGL may begin to fill pixels
constexpr size_t kBall = 4;               // floats before the material
constexpr size_t kMaterial = 12;
constexpr size_t kCorner = 2;
constexpr uint32_t kTile = 16; // pixels
// Keys beyond those of the screen's parts.
constexpr uint32_t kLarge = 0xfffffffcu; // a point beside near lights
constexpr uint32_t kSquare = 0xfffffffdu;
constexpr uint32_t kNear = 0xfffffffeu;
constexpr uint32_t kHidden = 0xffffffffu;
constexpr size_t kFew = 512; // spheres that needn't be sorted
constexpr unsigned kMaterialAttributes[3] = {
    ShaderCtrl_cls::ATTRIBUTE_AMBIENT, ShaderCtrl_cls::ATTRIBUTE_DIFFUSE, ShaderCtrl_cls::ATTRIBUTE_SPECULAR};

float GetLargestPoint() {
    float range[2] = {1.0f, 1.0f};
    glGetFloatv(GL_ALIASED_POINT_SIZE_RANGE, range);
    return range[1];
}

void EnableAttribute(unsigned place, const float* pFirst, size_t stride) {
    glEnableVertexAttribArray(place);
    glVertexAttribPointer(place, 4, GL_FLOAT, GL_FALSE, static_cast<GLsizei>(stride * sizeof(float)), pFirst);
}

} // namespace

GLExactBatch_cls::GLExactBatch_cls(std::vector<float>& storage, unsigned shaderType, int lightNumber,
                                   bool bMaterials, bool bEachBlends, const ViewScale_cls& view)
    : mStride(bMaterials ? kBall + kMaterial : kBall), mCapacity(kRoom / mStride), mShaderType(shaderType),
      mLightNumber(lightNumber), mbMaterials(bMaterials), mbEachBlends(bEachBlends), mView(view) {
    if (!GLAttribute_cls::mspCShaderCtrl || !GLAttribute_cls::mspCShaderCtrl->HasExact()) return;
    if (!UseProgram(Kind::Points)) return; // this OpenGL refuses the form for these spheres alone
    const size_t room = 2 * kRoom + kSquareRun * 4 * (kBall + kMaterial + kCorner);
    if (storage.size() < room) storage.resize(room); // and never smaller: new room is filled
    mpData = storage.data();
    mpTaken = mpData + kRoom;
    mpSquares = mpTaken + kRoom;
    mMaxPoint = GetLargestPoint();
    if (ShaderCtrl_cls::IsLitBySphere(mShaderType, mLightNumber))
        mLights.emplace(ShaderCtrl_cls::GetLights(mShaderType, mLightNumber));
    mbMade = true;
    mbCulled = glIsEnabled(GL_CULL_FACE);
    glDisable(GL_CULL_FACE); // squares face the eye, also those of a mirrored box
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnable(GL_POINT_SPRITE);
    glEnable(GL_VERTEX_PROGRAM_POINT_SIZE);
}

GLExactBatch_cls::~GLExactBatch_cls() {
    if (!mbMade) return;
    glDisableVertexAttribArray(ShaderCtrl_cls::ATTRIBUTE_BALL);
    for (const unsigned place : kMaterialAttributes)
        glDisableVertexAttribArray(place);
    glDisable(GL_VERTEX_PROGRAM_POINT_SIZE);
    glDisable(GL_POINT_SPRITE);
    if (mbCulled) glEnable(GL_CULL_FACE);
    glPopClientAttrib();
    glUseProgram(0);
}

void GLExactBatch_cls::CopyMaterial(const SphereMaterial_st& material, float* pOut) {
    std::copy_n(material.mAmbient, 4, pOut);
    std::copy_n(material.mDiffuse, 4, pOut + 4);
    std::copy_n(material.mSpecular, 4, pOut + 8);
}

bool GLExactBatch_cls::UseProgram(Kind kind) {
    mProgram = kind;
    return GLAttribute_cls::mspCShaderCtrl->BeginExact(mShaderType, mLightNumber, mbMaterials, mbEachBlends,
                                                       kind == Kind::NearSquares, kind == Kind::SmallPoints,
                                                       mView.GetRays());
}

// A point is cut off when its middle is off the screen, and has a limit to its size.
void GLExactBatch_cls::Locate() {
    mVKeys.resize(mCount);
    const uint32_t across = static_cast<uint32_t>(mView.GetRays().viewport[2]) / kTile + 1;
    ViewScale_cls::Silhouettes_st seen;
    unsigned char small[ViewScale_cls::Silhouettes_st::kRoom];
    for (size_t first = 0; first < mCount; first += seen.kRoom) {
        const int count = static_cast<int>(std::min(mCount - first, static_cast<size_t>(seen.kRoom)));
        mView.GetSilhouettes(mpData + first * mStride, static_cast<int>(mStride), count, seen);
        if (mLights) mLights->FindSmall(seen, count, small);
        for (int i = 0; i < count; ++i) {
            uint32_t& key = mVKeys[first + static_cast<size_t>(i)];
            const ViewScale_cls::Where where = mView.Locate(seen, i);
            if (where == ViewScale_cls::Where::Hidden)
                key = kHidden;
            else if (where == ViewScale_cls::Where::Near)
                key = kNear;
            else if (where == ViewScale_cls::Where::Rim || 2.0f * seen.reach[i] > mMaxPoint)
                key = kSquare;
            else if (mLights && !small[i])
                key = kLarge;
            else
                key = static_cast<uint32_t>(seen.y[i]) / kTile * across +
                      static_cast<uint32_t>(seen.x[i]) / kTile;
        }
    }
}

// Sizes that the compiler knows are copied in registers.
void GLExactBatch_cls::Take(size_t from, size_t to) {
    if (mbMaterials)
        std::copy_n(mpData + from * (kBall + kMaterial), kBall + kMaterial,
                    mpTaken + to * (kBall + kMaterial));
    else
        std::copy_n(mpData + from * kBall, kBall, mpTaken + to * kBall);
}

void GLExactBatch_cls::TakeInOrder() {
    size_t taken = 0;
    for (size_t i = 0; i < mCount; ++i) {
        const uint32_t key = mVKeys[i];
        if (key == kHidden) continue;
        const Kind kind = key == kNear     ? Kind::NearSquares
                          : key == kSquare ? Kind::Squares
                          : key == kLarge  ? Kind::Points
                                           : GetPoints();
        Take(i, taken++);
        if (mVRuns.empty() || mVRuns.back().kind != kind) mVRuns.push_back({kind, taken});
        mVRuns.back().end = taken;
    }
}

// A software OpenGL bins what it is given by parts of the screen, and waits for the memory of each sphere
// and pixel that it hasn't just used.
void GLExactBatch_cls::TakeByPlace() {
    const float* pViewport = mView.GetRays().viewport;
    const size_t parts =
        (static_cast<size_t>(pViewport[2]) / kTile + 1) * (static_cast<size_t>(pViewport[3]) / kTile + 1);
    const auto slot = [parts](uint32_t key) {
        return key < kLarge ? static_cast<size_t>(key) : parts + (key - kLarge);
    };
    std::vector<uint32_t> places(parts + 4);
    for (const uint32_t key : mVKeys)
        ++places[slot(key)];
    uint32_t place = 0;
    for (uint32_t& one : places) {
        const uint32_t number = one;
        one = place;
        place += number;
    }
    const size_t ends[4] = {places[parts], places[parts + 1], places[parts + 2], places[parts + 3]};
    for (size_t i = 0; i < mCount; ++i)
        if (mVKeys[i] != kHidden) Take(i, places[slot(mVKeys[i])]++);
    mVRuns = {{GetPoints(), ends[0]},
              {Kind::Points, ends[1]},
              {Kind::Squares, ends[2]},
              {Kind::NearSquares, ends[3]}};
}

void GLExactBatch_cls::Flush(bool bOrdered) {
    if (mCount == 0) return;
    Locate();
    mVRuns.clear();
    if (bOrdered || mCount < kFew)
        TakeInOrder();
    else
        TakeByPlace();
    size_t first = 0;
    for (const Run_st& run : mVRuns) {
        if (run.end == first) continue;
        // Points and squares share one.
        const Kind program = run.kind == Kind::Squares ? Kind::Points : run.kind;
        if (program != mProgram) UseProgram(program);
        if (run.kind == Kind::Points || run.kind == Kind::SmallPoints)
            DrawPoints(first, run.end);
        else
            DrawSquares(first, run.end);
        first = run.end;
    }
    mCount = 0;
}

void GLExactBatch_cls::BindArrays(const float* pFirst, size_t stride, bool bCorners) {
    EnableAttribute(ShaderCtrl_cls::ATTRIBUTE_BALL, pFirst, stride);
    for (size_t k = 0; mbMaterials && k < 3; ++k)
        EnableAttribute(kMaterialAttributes[k], pFirst + kBall + 4 * k, stride);
    if (bCorners) {
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, static_cast<GLsizei>(stride * sizeof(float)), pFirst + mStride);
    } else {
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoord2f(0.0f, 0.0f);
    }
}

void GLExactBatch_cls::DrawPoints(size_t first, size_t end) {
    BindArrays(mpTaken, mStride, false);
    for (; first < end; first += kPointRun) {
        const size_t run = std::min(kPointRun, end - first);
        glDrawArrays(GL_POINTS, static_cast<GLint>(first), static_cast<GLsizei>(run));
        if (run == kPointRun) glFlush();
    }
}

void GLExactBatch_cls::DrawSquares(size_t first, size_t end) {
    constexpr float kCorners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    BindArrays(mpSquares, mStride + kCorner, true);
    for (; first < end; first += kSquareRun) {
        const size_t run = std::min(kSquareRun, end - first);
        float* p = mpSquares;
        for (size_t i = first; i < first + run; ++i)
            for (const float* pCorner : kCorners) {
                p = std::copy_n(mpTaken + i * mStride, mStride, p);
                p = std::copy_n(pCorner, kCorner, p);
            }
        glDrawArrays(GL_QUADS, 0, static_cast<GLsizei>(4 * run));
    }
}
