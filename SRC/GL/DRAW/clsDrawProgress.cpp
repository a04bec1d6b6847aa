#include "GL/DRAW/clsDrawProgress.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "COMMON/Globals.h"
#include "COMMON/clsUpdateStatusBar.h"

bool DrawProgress_cls::msbCut = false;
long long DrawProgress_cls::msPart = 0;
long long DrawProgress_cls::msParts = 1;
int DrawProgress_cls::msDepth = 0;
float DrawProgress_cls::msCost = 0.0f;
void* DrawProgress_cls::mspFence = nullptr;
std::chrono::steady_clock::time_point DrawProgress_cls::msBreath;

namespace {
constexpr float kPixelsPerRun = 2e7f;
constexpr float kMinRun = 8192.0f;
constexpr float kMaxRun = 1e6f;
constexpr std::chrono::milliseconds kBreath(200);
constexpr GLuint64 kLongestWait = 10000000000; // ns; a driver that hangs shall not hang us
} // namespace

DrawProgress_cls::DrawProgress_cls(int total, float size)
    : mTotal(std::max(total, 1)), mInterval(mTotal > 2000000 ? mTotal / 20 : 100000),
      mRun(static_cast<int>(std::clamp(kPixelsPerRun / (size * size), kMinRun, kMaxRun))) {
    ++msDepth;
}

DrawProgress_cls::~DrawProgress_cls() {
    if (--msDepth > 0) return;
    if (mspFence) glDeleteSync(static_cast<GLsync>(mspFence));
    mspFence = nullptr;
    msCost = 0.0f;
}

void DrawProgress_cls::ForgetCut() {
    msbCut = false;
    msBreath = std::chrono::steady_clock::now();
}

// What is queued can't be taken back: no more than one run may wait behind the one being drawn.
void DrawProgress_cls::WaitForLastRun() {
    static const bool sbFences = epoxy_gl_version() >= 32 || epoxy_has_gl_extension("GL_ARB_sync");
    if (!sbFences) {
        glFinish();
        return;
    }
    GLsync behind = glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0);
    glFlush();
    if (mspFence) {
        glClientWaitSync(static_cast<GLsync>(mspFence), GL_SYNC_FLUSH_COMMANDS_BIT, kLongestWait);
        glDeleteSync(static_cast<GLsync>(mspFence));
    }
    mspFence = behind;
}

void DrawProgress_cls::SetPart(long long part, long long parts) {
    msPart = part;
    msParts = std::max(parts, 1LL);
}

bool DrawProgress_cls::Report(int done) {
    WaitForLastRun();
    return Tell(done);
}

bool DrawProgress_cls::Tell(int done) {
    msCost = 0.0f;
    const long long told = done / mInterval * static_cast<long long>(mInterval);
    const long long percent =
        msParts == 1 ? 100 * told / mTotal
                     : static_cast<long long>(
                           100.0 * (static_cast<double>(msPart) + static_cast<double>(told) / mTotal) /
                           static_cast<double>(msParts));
    GDrawingPercentage.store(static_cast<int>(percent), std::memory_order_relaxed);
    if (std::chrono::steady_clock::now() - msBreath > kBreath) {
        UpdateStatusBar_cls::UpdateStatusBar();
        msBreath = std::chrono::steady_clock::now();
    }
    if (!GbAbort.exchange(false)) return true;
    msbCut = true;
    return false;
}
