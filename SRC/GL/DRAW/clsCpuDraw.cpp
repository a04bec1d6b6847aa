#include "GL/DRAW/clsCpuDraw.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <epoxy/gl.h>

#include "COMMON/WorkTimes.h"
#include "GL/BASE/DrawWay.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/CPU/clsTileDraw.h"
#include "GL/DRAW/DepthTarget.h"
#include "GL/DRAW/UnlitBlend.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsViewScale.h"

namespace {

// Memory and threads' places stay from picture to picture.
TileDraw_cls& GetDraw() {
    static TileDraw_cls sDraw;
    return sDraw;
}
TileCanvas_cls& GetCanvas() {
    static TileCanvas_cls sCanvas;
    return sCanvas;
}

GLint GetColorTarget(GLenum what) {
    GLint value = 0;
    glGetFramebufferAttachmentParameteriv(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, what, &value);
    return value;
}

/// Does the stencil let those pixels through that aren't 0, and stays as it is?
bool SelectsMarked() {
    const auto get = [](GLenum what) {
        GLint value = 0;
        glGetIntegerv(what, &value);
        return value;
    };
    return get(GL_STENCIL_FUNC) == GL_NOTEQUAL && get(GL_STENCIL_REF) == 0 &&
           (get(GL_STENCIL_VALUE_MASK) & 0xff) == 0xff && (get(GL_STENCIL_WRITEMASK) & 0xff) == 0;
}

/// Pixels whose stencil is 0 stay as they are: while particles are drawn they have the nearest depth there
/// is, behind which all of them are.
class StencilScreen_cls {
public:
    void Hide(TileCanvas_cls& canvas, const TileCanvas_cls::Rect_st& part) {
        mVDepth.resize(static_cast<size_t>(canvas.GetWidth()) * static_cast<size_t>(canvas.GetHeight()));
        ForEachRow(canvas, part, [](uint32_t& depth, uint32_t& own) {
            own = depth;
            depth = (depth & kStencil) != 0 ? depth : 0;
        });
    }
    void Restore(TileCanvas_cls& canvas, const TileCanvas_cls::Rect_st& part) {
        ForEachRow(canvas, part, [](uint32_t& depth, const uint32_t& own) {
            depth = (depth & kStencil) != 0 ? depth : own;
        });
    }

private:
    static constexpr uint32_t kStencil = 0xff;

    template <class DO>
    void ForEachRow(TileCanvas_cls& canvas, const TileCanvas_cls::Rect_st& part, DO each) {
        for (int row = part.bottom; row < part.bottom + part.height; ++row) {
            const size_t from = static_cast<size_t>(row) * static_cast<size_t>(canvas.GetWidth()) +
                                static_cast<size_t>(part.left);
            uint32_t* const pDepth = canvas.GetDepth() + from;
            uint32_t* const pOwn = mVDepth.data() + from;
            for (int x = 0; x < part.width; ++x)
                each(pDepth[x], pOwn[x]);
        }
    }

    std::vector<uint32_t> mVDepth;
};

StencilScreen_cls& GetScreen() {
    static StencilScreen_cls sScreen;
    return sScreen;
}

/// What OpenGL's buffer holds.
class BufferOrigin_cls : public TileOrigin_cls {
public:
    explicit BufferOrigin_cls(bool bStencil) : mbStencil(bStencil) {}
    void Read(TileCanvas_cls& canvas, const TileCanvas_cls::Rect_st& part) override {
        const GLClientScope_cls client;
        glPixelStorei(GL_PACK_ROW_LENGTH, canvas.GetWidth());
        glPixelStorei(GL_PACK_SKIP_PIXELS, part.left);
        glPixelStorei(GL_PACK_SKIP_ROWS, part.bottom);
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glReadPixels(part.left, part.bottom, part.width, part.height, GL_RGBA, GL_HALF_FLOAT,
                     canvas.GetColor());
        glReadPixels(part.left, part.bottom, part.width, part.height, GL_DEPTH_STENCIL, GL_UNSIGNED_INT_24_8,
                     canvas.GetDepth());
        if (mbStencil) GetScreen().Hide(canvas, part);
    }

private:
    bool mbStencil;
};

/// Bounds of both.
TileCanvas_cls::Rect_st Cut(const TileCanvas_cls::Rect_st& a, const TileCanvas_cls::Rect_st& b) {
    const int left = std::max(a.left, b.left), bottom = std::max(a.bottom, b.bottom);
    return {left, bottom, std::min(a.left + a.width, b.left + b.width) - left,
            std::min(a.bottom + a.height, b.bottom + b.height) - bottom};
}

bool ReportTo(void* pProgress, long long done) {
    return static_cast<DrawProgress_cls*>(pProgress)->Tell(static_cast<int>(done));
}

} // namespace

long long CpuDraw_cls::msPasses = 0;
bool CpuDraw_cls::msbBlank = false;

CpuDraw_cls::CpuDraw_cls(const ViewScale_cls& view) {
    mbPossible = IsDrawnByProcessor() && TakeTarget() && TakeState(view);
    if (mbPossible) TakeFog();
}

// Off-screen buffers of half floats, and depth with stencil, as views have them.
bool CpuDraw_cls::TakeTarget() {
    mDepthTexture = GetDepthTarget();
    if (mDepthTexture == 0 || GetColorTarget(GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE) != GL_TEXTURE)
        return false;
    mTexture = static_cast<unsigned>(GetColorTarget(GL_FRAMEBUFFER_ATTACHMENT_OBJECT_NAME));
    const GLAttribScope_cls attributes(GL_TEXTURE_BIT);
    glBindTexture(GL_TEXTURE_2D, mTexture);
    GLint format = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT, &format);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &mWidth);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &mHeight);
    return format == GL_RGB16F || format == GL_RGBA16F;
}

bool CpuDraw_cls::TakeState(const ViewScale_cls& view) {
    GLint viewport[4], depthFunction = 0;
    GLboolean mask[4];
    GLfloat range[2];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetIntegerv(GL_DEPTH_FUNC, &depthFunction);
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    glGetFloatv(GL_DEPTH_RANGE, range);
    const bool bPlain = viewport[0] == 0 && viewport[1] == 0 && viewport[2] == mWidth &&
                        viewport[3] == mHeight && depthFunction == GL_LEQUAL && mask[0] && mask[1] &&
                        mask[2] && mask[3] && range[0] == 0.0f && range[1] == 1.0f;
    if (!bPlain || !view.IsPlain() || IsLightAlone() || glIsEnabled(GL_CLIP_PLANE0)) return false;
    mbStencil = glIsEnabled(GL_STENCIL_TEST) != 0;
    if (mbStencil && !SelectsMarked()) return false;
    std::copy_n(viewport, 4, mClip);
    if (glIsEnabled(GL_SCISSOR_TEST)) {
        GLint box[4];
        glGetIntegerv(GL_SCISSOR_BOX, box);
        for (int k = 0; k < 2; ++k) {
            const int end = std::min(mClip[2 + k], box[k] + box[2 + k]);
            mClip[k] = std::max(box[k], 0);
            mClip[2 + k] = std::max(end - mClip[k], 0);
        }
    }
    float model[16], projection[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, model);
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    return mScene.view.Set(model, projection, mWidth, mHeight);
}

void CpuDraw_cls::TakeFog() {
    if (!glIsEnabled(GL_FOG)) return;
    TileFog_st& fog = mScene.fog;
    GLint mode = 0;
    float color[4];
    glGetIntegerv(GL_FOG_MODE, &mode);
    glGetFloatv(GL_FOG_COLOR, color);
    fog.mode = mode == GL_EXP ? TileFog_st::EXP : mode == GL_EXP2 ? TileFog_st::EXP2 : TileFog_st::LINEAR;
    std::copy_n(color, 3, fog.color);
    glGetFloatv(GL_FOG_DENSITY, &fog.density);
    glGetFloatv(GL_FOG_START, &fog.start);
    glGetFloatv(GL_FOG_END, &fog.end);
}

bool CpuDraw_cls::TakeLights(unsigned shaderType, int lightNumber) {
    const int lights = ShaderCtrl_cls::GetLights(shaderType, lightNumber);
    if (mLights >= 0) return lights == mLights;
    mLights = lights;
    float color[4];
    glGetFloatv(GL_LIGHT_MODEL_AMBIENT, color);
    std::copy_n(color, 3, mScene.around);
    for (int i = 0; i < lights; ++i) {
        const GLenum name = GL_LIGHT0 + static_cast<GLenum>(i);
        TileLight_st light;
        const auto take = [&](GLenum what, float* pOut) {
            glGetLightfv(name, what, color);
            std::copy_n(color, 3, pOut);
        };
        take(GL_AMBIENT, light.ambient);
        take(GL_DIFFUSE, light.diffuse);
        take(GL_SPECULAR, light.specular);
        take(GL_SPOT_DIRECTION, light.along);
        glGetLightfv(name, GL_POSITION, light.place);
        glGetLightfv(name, GL_CONSTANT_ATTENUATION, &light.fades[0]);
        glGetLightfv(name, GL_LINEAR_ATTENUATION, &light.fades[1]);
        glGetLightfv(name, GL_QUADRATIC_ATTENUATION, &light.fades[2]);
        float cutoff = 180.0f;
        glGetLightfv(name, GL_SPOT_CUTOFF, &cutoff);
        glGetLightfv(name, GL_SPOT_EXPONENT, &light.exponent);
        light.bSpot = cutoff <= 90.0f;
        light.cosCutoff = static_cast<float>(std::cos(static_cast<double>(cutoff) * M_PI / 180.0));
        mScene.lights.push_back(light);
    }
    mScene.bLoneShadowLight = lights == 1 && mScene.lights[0].ambient[0] == 0.0f;
    if (GLAttribute_cls::mspCShaderCtrl)
        mScene.boldness = GLAttribute_cls::mspCShaderCtrl->mCCartoonBoldness.mValue;
    return lights <= 8;
}

void CpuDraw_cls::TakeTexture() {
    GLint width = 0, height = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    if (width < 1 || height < 1) return; // plain squares
    const GLClientScope_cls client;
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    std::vector<unsigned char> bytes(4 * static_cast<size_t>(width) * static_cast<size_t>(height));
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, bytes.data());
    mScene.texture.Set(bytes.data(), width, height);
}

// One pixel tells of all.
void CpuDraw_cls::TakeBlank(TileCanvas_cls& canvas) const {
    const GLClientScope_cls client;
    uint16_t color[4] = {0, 0, 0, 0};
    uint32_t depth = TileCanvas_cls::kFarDepth;
    glReadPixels(mClip[0], mClip[1], 1, 1, GL_RGBA, GL_HALF_FLOAT, color);
    glReadPixels(mClip[0], mClip[1], 1, 1, GL_DEPTH_STENCIL, GL_UNSIGNED_INT_24_8, &depth);
    canvas.SetBlank(color, depth);
}

/// OpenGL's buffer, from below.
class CpuDraw_cls::Goal_cls : public TileGoal_cls {
public:
    explicit Goal_cls(const CpuDraw_cls& draw) : mDraw(draw) {}
    void TakeUpTo(TileCanvas_cls& canvas, int end) override {
        mDraw.HandBack(canvas, std::exchange(mRow, end * TileCanvas_cls::kTileH),
                       end * TileCanvas_cls::kTileH);
    }

private:
    const CpuDraw_cls& mDraw;
    int mRow = 0; ///< handed back up to here
};

void CpuDraw_cls::Draw(const TileSource_cls& source) {
    const WorkScope_cls work(Work::Particles);
    TileCanvas_cls& canvas = GetCanvas();
    BufferOrigin_cls origin(mbStencil);
    ++msPasses;
    const bool bBlank = msbBlank && !mbStencil && mClip[2] > 0 && mClip[3] > 0;
    msbBlank = false;
    canvas.Clear(mWidth, mHeight, bBlank ? nullptr : &origin);
    if (bBlank) TakeBlank(canvas);
    canvas.SetLimits({mClip[0], mClip[1], mClip[2], mClip[3]});
    DrawProgress_cls progress(static_cast<int>(source.GetNumber()));
    Goal_cls goal(*this);
    GetDraw().Draw(mScene, source, canvas, ReportTo, &progress, &goal);
    canvas.FillTaken();
    goal.TakeUpTo(canvas, canvas.GetTilesUp());
    CheckGLErrors("particles by the processor");
}

// As textures: a software driver copies them, while it would draw pixels one by one.
void CpuDraw_cls::HandBack(TileCanvas_cls& canvas, int firstRow, int endRow) const {
    const TileCanvas_cls::Rect_st part = Cut(Cut(canvas.GetTaken(), {mClip[0], mClip[1], mClip[2], mClip[3]}),
                                             {0, firstRow, mWidth, endRow - firstRow});
    if (part.IsEmpty()) return;
    if (mbStencil) GetScreen().Restore(canvas, part);
    const GLAttribScope_cls attributes(GL_TEXTURE_BIT);
    const GLClientScope_cls client;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, mWidth);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, part.left);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, part.bottom);
    glBindTexture(GL_TEXTURE_2D, mTexture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, part.left, part.bottom, part.width, part.height, GL_RGBA, GL_HALF_FLOAT,
                    canvas.GetColor());
    bool bWrites = false;
    for (const TileLook_st& look : mScene.look)
        bWrites |= look.kind != TileLook_st::HIDDEN && look.bWrite;
    if (!bWrites) return;
    glBindTexture(GL_TEXTURE_2D, mDepthTexture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, part.left, part.bottom, part.width, part.height, GL_DEPTH_STENCIL,
                    GL_UNSIGNED_INT_24_8, canvas.GetDepth());
}
