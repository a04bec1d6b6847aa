#include "GL/VIEW/clsFishEye.h"

#include <cmath>

#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsPositionAndDirection.h"

namespace {

constexpr double kFaceAngle = 90.0;
constexpr double kDiscStep = 5.0; // degrees of a sector of the disc
constexpr int kSectors = 72;
constexpr double kDiscPi = 3.1416;

/// What is drawn inside ends up in the stencil alone, as ones on zeros; afterwards only those pixels are
/// drawn to, until the end of the scope.
class StencilShape_cls {
public:
    template <class DRAW>
    explicit StencilShape_cls(DRAW draw) {
        glClearStencil(0);
        glClear(GL_STENCIL_BUFFER_BIT);
        glEnable(GL_STENCIL_TEST);
        glStencilMask(~0u);
        glStencilFunc(GL_ALWAYS, 1, ~0u);
        glStencilOp(GL_REPLACE, GL_REPLACE, GL_REPLACE);
        glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
        draw();
        glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
        glStencilFunc(GL_EQUAL, 1, ~0u);
        glStencilOp(GL_KEEP, GL_KEEP, GL_KEEP);
    }
    ~StencilShape_cls() { glDisable(GL_STENCIL_TEST); }
    StencilShape_cls(const StencilShape_cls&) = delete;
    StencilShape_cls& operator=(const StencilShape_cls&) = delete;
};

void DrawDisc() {
    glBegin(GL_TRIANGLE_FAN);
    glVertex2d(0.0, 0.0);
    for (int i = 0; i <= kSectors; ++i) {
        const double angle = i * kDiscStep * kDiscPi / 180.0;
        glVertex2d(0.5 * std::cos(angle), 0.5 * std::sin(angle));
    }
    glEnd();
}

void SetFilter(GLint filter) {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, filter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, filter);
}

} // namespace

FishEye_cls::FishEye_cls() = default;

FishEye_cls::~FishEye_cls() {
    if (!IsGLContextCurrent()) return;
    for (const GLuint list : mDList)
        if (list != 0) glDeleteLists(list, kFaces);
}

void FishEye_cls::MakeFishEyeBegin(int clipW, int clipH, int size, const ShownPart_st& shown) {
    mClipW = clipW;
    mClipH = clipH;
    mSize = size;
    for (auto& pFace : mpCFBO) {
        if (!pFace || pFace->GetWidth() != size) pFace = std::make_unique<FBO_cls>(size, size);
        pFace->SetShown(shown);
    }
}

void FishEye_cls::MakeFishEyeProcessFH(int face, PositionAndDirection_cls* pCamera,
                                       GLPerspective_cls* pPerspective, int mode) {
    mpCFBO[face]->MakeFBO(false);
    mpCFBO[face]->Begin(false); // cleared with its background in a moment
    pPerspective->SetWindowSize(mSize, mSize);
    if (mode == MODE_FLAT) {
        pPerspective->SetClipSize(mClipW, mClipH);
    } else {
        pPerspective->SetClipSize(mSize, mSize);
        pPerspective->mAngle = kFaceAngle;
        pPerspective->mbPerspective = true;
        TurnToFace(face, mode, pCamera);
    }
    pPerspective->SetViewportOnGL();
    pPerspective->SetPerspectiveOnGL(*pCamera);
    pPerspective->SetModelOrProjectionViewOnGL(*pCamera, GL_MODELVIEW);
}

void FishEye_cls::MakeFishEyeProcessLH(int face) { mpCFBO[face]->End(); }

void FishEye_cls::MakeFishEyeEnd(bool bKeep) {
    for (int face = bKeep ? kFaces : 1; face < kFaces; ++face)
        mpCFBO[face].reset();
}

void FishEye_cls::GatherGLSetting(bool bAdditive, int w, int h) {
    if (!bAdditive) FBO_cls::ClearTarget(GL_COLOR_BUFFER_BIT);
    FBO_cls::DrawOnScreenSet(GLPerspective_cls(), w, h, bAdditive);
}

void FishEye_cls::FillWithBlack() {
    glBindTexture(GL_TEXTURE_2D, 0);
    glColor4f(0, 0, 0, 0);
    glRectf(-10.0f, -10.0f, 10.0f, 10.0f);
    glColor4f(1, 1, 1, 1);
}

void FishEye_cls::MakeLists(int mode, double angle) {
    const int which = mode - MODE_FISHEYE;
    if (mDList[which] == 0) mDList[which] = glGenLists(kFaces);
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    const GLsizei length = GetStripLength(mode);
    for (int face = 0; face < kFaces; ++face) {
        const std::vector<Vertex_st> mesh = MakeFaceMesh(face, mode, angle);
        glVertexPointer(2, GL_FLOAT, sizeof(Vertex_st), mesh[0].mPlace);
        glTexCoordPointer(2, GL_FLOAT, sizeof(Vertex_st), mesh[0].mTexture);
        glNewList(mDList[which] + static_cast<GLuint>(face), GL_COMPILE);
        for (GLint first = 0; first < static_cast<GLint>(mesh.size()); first += length)
            glDrawArrays(GL_QUAD_STRIP, first, length);
        glEndList();
    }
    mAngle[which] = angle;
    ++mListCount;
}

void FishEye_cls::DrawFaces(int mode, double angle) {
    const int which = mode - MODE_FISHEYE;
    if (angle != mAngle[which]) MakeLists(mode, angle);
    for (int face = 0; face < kFaces; ++face) {
        if (!mpCFBO[face]) continue;
        mpCFBO[face]->BindTexture();
        SetFilter(GL_NEAREST);
        glCallList(mDList[which] + static_cast<GLuint>(face));
        SetFilter(GL_LINEAR);
    }
}

void FishEye_cls::GatherFishEye(double angle, bool bAdditive, int w, int h) {
    GatherGLSetting(bAdditive, w, h);
    {
        const StencilShape_cls disc(DrawDisc);
        DrawFaces(MODE_FISHEYE, LimitAngle(angle));
    }
    FBO_cls::DrawOnScreenDraw(nullptr, GL_LINEAR);
}

void FishEye_cls::GatherCylinder(double angle, bool bAdditive, int w, int h) {
    GatherGLSetting(bAdditive, w, h);
    {
        const auto half = static_cast<float>(GetStripHalfHeight(angle));
        const StencilShape_cls band([half] { glRectf(-1.0f, -half, 1.0f, half); });
        if (!bAdditive) FillWithBlack();
        DrawFaces(MODE_PANORAMA, LimitAngle(angle));
    }
    FBO_cls::DrawOnScreenDraw(nullptr, GL_LINEAR);
}
