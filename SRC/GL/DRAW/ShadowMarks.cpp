#include "GL/DRAW/ShadowMarks.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <thread>
#include <vector>

#include <epoxy/gl.h>

#include "COMMON/OnThreads.h"
#include "GL/BASE/DrawWay.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/DepthTarget.h"
#include "GL/DRAW/clsShadowGrid.h"

namespace {

constexpr uint32_t kFarthest = 0xffffff; // depth of what shows nothing
constexpr int kMostThreads = 32;
constexpr int kRows = 16; // that a thread takes at a time

struct Rect_st {
    int left, bottom, width, height;
};

/// Of the viewport, which is all of the buffer or lies at its corner.
Rect_st GetRect(const float* pViewport, const float* pBounds) {
    int ends[4];
    for (int k = 0; k < 2; ++k) {
        const float size = pViewport[2 + k];
        const auto toPixel = [&](float at) {
            return pViewport[k] + std::clamp(0.5f * (at + 1.0f), 0.0f, 1.0f) * size;
        };
        ends[k] = static_cast<int>(std::floor(toPixel(pBounds[k])));
        ends[2 + k] = static_cast<int>(std::ceil(toPixel(pBounds[2 + k])));
    }
    return {ends[0], ends[1], ends[2] - ends[0], ends[3] - ends[1]};
}

/// Memory stays from picture to picture.
std::vector<uint32_t>& GetPixels() {
    static std::vector<uint32_t> sPixels;
    return sPixels;
}

/// What a pixel shows, in the grid's coordinates.
class Places_cls {
public:
    Places_cls(const ShaderCtrl_cls::Lookup_st& lookup, const ShaderCtrl_cls::Rays_st& rays)
        : mLookup(lookup), mRays(rays) {}
    void Get(int x, int y, uint32_t depth24, float* out) const {
        const float depth = static_cast<float>(depth24) / 16777215.0f;
        const float across = (static_cast<float>(x) + 0.5f) * mRays.scale[0] + mRays.offset[0];
        const float up = (static_cast<float>(y) + 0.5f) * mRays.scale[1] + mRays.offset[1];
        float z = 0.0f;
        float way = 1.0f;
        if (mRays.bPerspective) {
            z = mRays.depthMap[1] / (depth - mRays.depthMap[0]);
            way = -z;
        } else {
            z = (depth - mRays.depthMap[0]) / mRays.depthMap[1];
        }
        const float* t = mLookup.turn;
        for (int i = 0; i < 3; ++i)
            out[i] = t[i] * (across * way) + t[3 + i] * (up * way) + t[6 + i] * z + mLookup.eye[i];
    }

private:
    const ShaderCtrl_cls::Lookup_st& mLookup;
    const ShaderCtrl_cls::Rays_st& mRays;
};

/// Some pixels of a row. The table is far larger than the cache, so that what all of them need is asked for
/// before the first one is looked up.
class Pixels_cls {
public:
    Pixels_cls(const ShadowGrid_cls& grid, uint32_t bit) : mGrid(grid), mBit(bit) {}
    bool IsFull() const { return mNumber == kMost; }
    float* Add(uint32_t* pPixel) {
        mPixels[mNumber] = pPixel;
        return mPoints[mNumber++].place;
    }
    /// True: some were marked.
    bool Mark() {
        const int32_t* const pStarts = mGrid.GetStarts().data();
        const float* const pEntries = mGrid.GetEntries().data();
        for (int i = 0; i < mNumber; ++i) {
            mGrid.Locate(mPoints[i]);
            __builtin_prefetch(pStarts + mPoints[i].block);
        }
        for (int i = 0; i < mNumber; ++i)
            __builtin_prefetch(pEntries + 4 * static_cast<ptrdiff_t>(pStarts[mPoints[i].block]));
        bool bAny = false;
        for (int i = 0; i < mNumber; ++i) {
            if (!mGrid.IsInShadow(mPoints[i])) continue;
            *mPixels[i] |= mBit;
            bAny = true;
        }
        mNumber = 0;
        return bAny;
    }

private:
    static constexpr int kMost = 64;
    const ShadowGrid_cls& mGrid;
    uint32_t mBit;
    int mNumber = 0;
    uint32_t* mPixels[kMost];
    ShadowGrid_cls::Point_st mPoints[kMost];
};

/// True: some were marked.
bool MarkRow(Pixels_cls& some, const Places_cls& places, const Rect_st& part, int row, uint32_t bit,
             uint32_t* pPixels) {
    bool bAny = false;
    for (int x = 0; x < part.width; ++x) {
        const uint32_t pixel = pPixels[x];
        if (pixel >> 8 == kFarthest || (pixel & bit) != 0) continue;
        places.Get(part.left + x, part.bottom + row, pixel >> 8, some.Add(pPixels + x));
        if (some.IsFull()) bAny |= some.Mark();
    }
    return some.Mark() || bAny;
}

} // namespace

bool CanMarkShadows() {
    return IsDrawnByProcessor() && !glIsEnabled(GL_SCISSOR_TEST) && GetDepthTarget() != 0;
}

void MarkShadows(const ShadowGrid_cls& grid, const ShaderCtrl_cls::Lookup_st& lookup,
                 const ShaderCtrl_cls::Rays_st& rays, const float* pBounds, unsigned bit) {
    const Rect_st part = GetRect(rays.viewport, pBounds);
    if (part.width < 1 || part.height < 1) return;
    std::vector<uint32_t>& pixels = GetPixels();
    const auto width = static_cast<size_t>(part.width);
    pixels.resize(std::max(pixels.size(), width * static_cast<size_t>(part.height)));
    const GLClientScope_cls client;
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(part.left, part.bottom, part.width, part.height, GL_DEPTH_STENCIL, GL_UNSIGNED_INT_24_8,
                 pixels.data());
    const Places_cls places(lookup, rays);
    std::atomic<int> next{0};
    std::atomic<bool> bMarked{false};
    const int cores = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostThreads);
    OnThreads(std::min(cores, part.height / kRows + 1), [&](int) {
        Pixels_cls some(grid, bit);
        for (int first = next.fetch_add(kRows); first < part.height; first = next.fetch_add(kRows))
            for (int row = first; row < std::min(first + kRows, part.height); ++row)
                if (MarkRow(some, places, part, row, bit, pixels.data() + width * static_cast<size_t>(row)))
                    bMarked.store(true, std::memory_order_relaxed);
    });
    if (!bMarked.load()) return;
    const GLAttribScope_cls attributes(GL_TEXTURE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glBindTexture(GL_TEXTURE_2D, GetDepthTarget());
    glTexSubImage2D(GL_TEXTURE_2D, 0, part.left, part.bottom, part.width, part.height, GL_DEPTH_STENCIL,
                    GL_UNSIGNED_INT_24_8, pixels.data());
}
