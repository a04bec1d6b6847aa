#include "GL/VIEW/clsViewMessage.h"

#include <limits>

#include <epoxy/gl.h>

namespace {

// Memory figures of one vendor's driver, in KB.
constexpr GLenum kTotalMemory = 36936;
constexpr GLenum kFreeMemory = 36937;

constexpr double kTimeUnset = -9999.0;

} // namespace

wxString ViewMessage_cls::MakeStatusLine(const Facts_st& facts) {
    return facts.mFile +
           wxString::Format(":%d--%d %d", facts.mFileStatus, facts.mDisplayMode, int(facts.mbLookAnchor));
}

wxString ViewMessage_cls::MakeDataLine(const Facts_st& facts) {
    wxString text = "Time=";
    text += facts.mTime == kTimeUnset ? wxString("Not Defined") : wxString::Format("%g", facts.mTime);
    text += wxString::Format(":PNum=%d*%lld", facts.mParticles, facts.mCopies);
    long long all = 0;
    if (__builtin_mul_overflow(static_cast<long long>(facts.mParticles), facts.mCopies, &all))
        all = std::numeric_limits<long long>::max();
    if (facts.mCopies > 1) text += wxString::Format("=%lld", all);
    text += wxString::Format(":MilliSec%ld", facts.mMillis);
    text += wxString::Format(":Hitting%d+%d:Object%lld", facts.mHitObject, facts.mHitSub, facts.mSelected);
    return text;
}

wxString ViewMessage_cls::MakeMemoryLine() {
    GLint memory[2] = {10, 10};
    if (epoxy_has_gl_extension("GL_NVX_gpu_memory_info")) {
        glGetIntegerv(kTotalMemory, &memory[0]);
        glGetIntegerv(kFreeMemory, &memory[1]);
    }
    return wxString::Format("GMem0 = %d GMem1 = %d Count = %d", memory[0], memory[1], mDrawCount++);
}

void ViewMessage_cls::DrawMessage(const Facts_st& facts, bool bShow, int w, int h) {
    using Font = GLStrings2D_cls::Font;
    const Font font = facts.mScale < 1.5 ? Font::Helvetica12 : Font::Helvetica18; // there is none larger
    const auto at = [&facts](int pixels) { return int(pixels * facts.mScale); };
    mStrMessageShown.clear();
    if (!bShow) {
        mWXStrMessage.clear();
        return;
    }
    mCStrings.SetWindowGeometry(w, h);
    // Light with a dark rim: read on any background.
    const auto show = [&](const wxString& text, int x, int y, bool bFromTop, float otherChannels) {
        glColor4f(0, 0, 0, 1);
        for (const int right : {-1, 1})
            for (const int down : {-1, 1})
                mCStrings.Draw(font, text, x + right, y + down, bFromTop);
        glColor4f(1.0f, otherChannels, otherChannels, 1.0f);
        mCStrings.Draw(font, text, x, y, bFromTop);
        mStrMessageShown += text + "\n";
    };
    show(MakeStatusLine(facts), at(30), at(10), false, 1.0f);
    show(MakeDataLine(facts), facts.mLeft, at(10), true, 1.0f);
    show(MakeMemoryLine(), facts.mLeft, at(28), true, 1.0f);
    show(mWXStrMessage, at(5), at(28), false, 0.5f);
    mWXStrMessage.clear();
    glColor4f(1, 1, 1, 1);
}
