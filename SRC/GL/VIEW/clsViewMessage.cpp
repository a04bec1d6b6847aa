// The message lines of a view.
#include "GL/VIEW/clsMainGLCanvas.h"

#include <wx/intl.h>

#include "APP/clsFrameMain.h"
#include "PDATA/clsPDataSequence.h"
#include "SCENE/clsCameraPath.h"

namespace {

// Memory figures of one vendor's driver, in KB.
constexpr GLenum kTotalMemory = 36936;
constexpr GLenum kFreeMemory = 36937;

constexpr double kTimeUnset = -9999.0;

} // namespace

wxString MainGLCanvas_cls::MakeStatusLine() const {
    const PDataSequence_cls& sequence = *mpCFrame->GetPCActiveFileSequence();
    const int lookAt = GetPLinkedCameraPath()->mCLookAnchor.mValue;
    return sequence.GetFilename(mMoment.dataFrame) +
           wxString::Format(":%d--%d %d", sequence.GetFilenameStatus(mMoment.dataFrame), mDisplayMode.mValue,
                            lookAt);
}

wxString MainGLCanvas_cls::MakeDataLine() const {
    const PDataSequence_cls& sequence = *mpCFrame->GetPCActiveFileSequence();
    const int number = sequence.GetParticleNumber(mMoment.dataFrame);
    const int copies = 1; // of a Copy filter
    const double time = sequence.GetTime(mMoment.dataFrame);
    wxString text = "Time=";
    text += time == kTimeUnset ? wxString(_("Not Defined")) : wxString::Format("%g", time);
    text += wxString::Format(":PNum=%d*%d", number, copies);
    if (copies > 1) text += wxString::Format("=%lld", static_cast<long long>(number) * copies);
    text += wxString::Format(":MilliSec%ld", mCStopWatch.Time());
    // Object and sub-object of the last click, and the selected object.
    text += wxString::Format(":Hitting%d+%d:Object%lld", -1, -1, 0LL);
    return text;
}

wxString MainGLCanvas_cls::MakeMemoryLine() {
    GLint memory[2] = {10, 10};
    if (epoxy_has_gl_extension("GL_NVX_gpu_memory_info")) {
        glGetIntegerv(kTotalMemory, &memory[0]);
        glGetIntegerv(kFreeMemory, &memory[1]);
    }
    return wxString::Format("GMem0 = %d GMem1 = %d Count = %d", memory[0], memory[1], mDrawCount++);
}

void MainGLCanvas_cls::DrawMessage(int w, int h) {
    const GLStrings2D_cls::Font font = GLStrings2D_cls::Font::Helvetica12;
    mStrMessageShown.clear();
    if (!mShowMessage.mValue) {
        mWXStrMessage.clear();
        return;
    }
    mCStrings.SetWindowGeometry(w, h);
    const auto show = [&](const wxString& text, int x, int y, bool bFromTop) {
        mCStrings.Draw(font, text, x, y, bFromTop);
        mStrMessageShown += text + "\n";
    };
    glColor4f(1, 1, 1, 1);
    show(MakeStatusLine(), 30, 10, false);
    show(MakeDataLine(), 5, 10, true);
    show(MakeMemoryLine(), 5, 28, true);
    glColor4f(1.0f, 0.5f, 0.5f, 1.0f);
    show(mWXStrMessage, 5, 28, false);
    mWXStrMessage.clear();
    glColor4f(1, 1, 1, 1);
}
