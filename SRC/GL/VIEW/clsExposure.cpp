#include "GL/VIEW/clsExposure.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <epoxy/gl.h>
#include <wx/app.h>
#include <wx/intl.h>

#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "COMMON/UpdateBits.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/BASE/clsShaderProgram.h"
#include "GL/VIEW/clsExposureGUI.h"
#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsUndoManager.h"

namespace {

enum Uniform { TEXTURE, LEVEL_MIN, LEVEL_MAX, GAMMA, HUE, SATURATION, BLEND_MODE, ALPHA, UNIFORMS };
const char* const kUniforms[UNIFORMS] = {"textureImage", "levelMin",   "levelMax",  "gamma",
                                         "hueOffset",    "saturation", "blendMode", "alpha"};

constexpr double kLowGamma = 0.01;

double FiniteOr(double value, double other) { return std::isfinite(value) ? value : other; }

void SetFour(GLint location, double value) {
    const auto v = static_cast<float>(value);
    glUniform4f(location, v, v, v, v);
}

constexpr int kUpdateMask = UPDATE_EXPOSURE | UPDATE_GL;

} // namespace

Exposure_cls::Exposure_cls() {
    mConfList.Add(&mLevel, "ExposureLevel=", "0 1");
    mConfList.Add(&mGamma, "ExposureGamma=", "1");
    mConfList.Add(&mHueOffset, "ExposureHueOffset=", "0");
    mConfList.Add(&mSaturation, "ExposureSaturation=", "0");
    std::fill_n(mLocation, int(UNIFORMS), -1);
}

Exposure_cls::~Exposure_cls() = default;

bool Exposure_cls::MakeProgram() {
    const char* const files[2] = {"GL/exposure.vert", "GL/exposure.frag"};
    std::string source[2];
    for (int i = 0; i < 2; ++i) {
        source[i] = readShaderSource(FindRuntimeFile(files[i]));
        if (!source[i].empty()) continue;
        mStrProblem = wxString::Format(_("The shader file %s can't be read."), files[i]);
        Notice("exposure", mStrProblem + " " + _("Pictures are shown without exposure."));
        return false;
    }
    if (mpCProgram->Make(source[0], source[1])) return true;
    const wxString file = files[mpCProgram->mbVertexCompiled ? 1 : 0];
    mStrProblem = wxString::Format(_("%s is broken"), file);
    // Behind the paint that is under way.
    const wxString text =
        _("Compile error in fragment shader.\n") + wxString::FromUTF8(mpCProgram->GetLog()) + "\n" + file;
    if (wxTheApp) wxTheApp->CallAfter([text] { MsgBox(text, "!!"); });
    return false;
}

void Exposure_cls::Initialize() {
    if (mbInitialized) return;
    mbInitialized = true;
    mpCProgram = std::make_unique<ShaderProgram_cls>();
    mbEnabled = MakeProgram();
    if (mbEnabled) {
        for (int i = 0; i < UNIFORMS; ++i)
            mLocation[i] = mpCProgram->GetUniform(kUniforms[i]);
        glUseProgram(mpCProgram->mProgram);
        glUniform1i(mLocation[TEXTURE], 0);
        glUseProgram(0);
    }
    if (mpCGUI) mpCGUI->UpdateValues();
}

wxString Exposure_cls::GetStatus() const {
    if (!mbInitialized) return _("not yet used");
    return mbEnabled ? wxString(_("ready")) : mStrProblem;
}

bool Exposure_cls::IsNeutral() const {
    return mLevel.mValue[0] == 0.0 && mLevel.mValue[1] == 1.0 && mGamma.mValue == 1.0f &&
           mHueOffset.mValue == 0 && mSaturation.mValue == 0;
}

void Exposure_cls::SetColors() const {
    SetFour(mLocation[LEVEL_MIN], mbBypassed ? 0.0 : FiniteOr(mLevel.mValue[0], 0.0));
    SetFour(mLocation[LEVEL_MAX], mbBypassed ? 1.0 : FiniteOr(mLevel.mValue[1], 1.0));
    SetFour(mLocation[GAMMA], mbBypassed ? 1.0 : std::max(FiniteOr(double(mGamma.mValue), 1.0), kLowGamma));
    glUniform1i(mLocation[HUE], mbBypassed ? 0 : mHueOffset.mValue % 360);
    glUniform1i(mLocation[SATURATION], mbBypassed ? 0 : std::clamp(mSaturation.mValue, -100, 100));
}

void Exposure_cls::Begin() const {
    // What targets hold is limited to 0 to 1 anyway: the fixed pipeline draws the same picture faster.
    if (!mbEnabled || ((mbBypassed || IsNeutral()) && !mbBlendMode)) return;
    glUseProgram(mpCProgram->mProgram);
    SetColors();
    glUniform1i(mLocation[BLEND_MODE], mbBlendMode);
    glUniform1f(mLocation[ALPHA], mAlpha);
}

void Exposure_cls::End() const {
    if (mbEnabled) glUseProgram(0);
}

std::shared_ptr<const HalfBytes> Exposure_cls::GetBytes(bool bBypassed) {
    if (!mbEnabled) return nullptr;
    Bytes_st& found = mBytes[bBypassed ? 1 : 0];
    const Levels levels =
        bBypassed ? Levels{0.0, 1.0, 1.0} : Levels{mLevel.mValue[0], mLevel.mValue[1], double(mGamma.mValue)};
    if (found.mBytes && found.mLevels == levels) return found.mBytes;
    SetBypassed(bBypassed);
    SetAccumulation(1.0f);
    found = {levels, FindBytes()};
    EndAccumulation();
    SetBypassed(false);
    return found.mBytes;
}

// The program's arithmetic is the driver's: a logarithm of this processor would differ in the last bit.
std::shared_ptr<const HalfBytes> Exposure_cls::FindBytes() const {
    constexpr int kSide = 256;
    constexpr size_t kHalves = size_t(kSide) * kSide;
    std::vector<std::uint16_t> pixels(kHalves * 4, 0x3c00);
    for (size_t half = 0; half < kHalves; ++half)
        std::fill_n(&pixels[4 * half], 3, std::uint16_t(half));
    FBO_cls all(kSide, kSide), exposed(kSide, kSide);
    all.MakeFBO(false);
    exposed.MakeFBO(false);
    {
        const GLAttribScope_cls attributes;
        const GLClientScope_cls client;
        glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
        all.BindTexture();
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, kSide, kSide, GL_RGBA, GL_HALF_FLOAT, pixels.data());
        const FBOScope_cls target(exposed, false);
        FBO_cls::DrawOnScreenSet(GLPerspective_cls(), kSide, kSide, false);
        Begin();
        FBO_cls::DrawOnScreenDraw(&all, GL_NEAREST);
        End();
    }
    exposed.ReadShown(GL_RGBA, GL_HALF_FLOAT, pixels.data());
    auto bytes = std::make_shared<HalfBytes>();
    for (size_t half = 0; half < kHalves; ++half)
        (*bytes)[half] = GetPlainBytes()[pixels[4 * half]];
    return bytes;
}

void Exposure_cls::SetAccumulation(float alpha) {
    mAlpha = alpha;
    mbBlendMode = true;
}

void Exposure_cls::EndAccumulation() {
    mAlpha = 1.0f;
    mbBlendMode = false;
}

void Exposure_cls::SetToDefault() {
    const UndoBlock_cls block;
    PushSetValue(&mLevel.mValue[0], 0.0, kUpdateMask);
    PushSetValue(&mLevel.mValue[1], 1.0, kUpdateMask);
    PushSetValue(&mGamma.mValue, 1.0f, kUpdateMask);
    PushSetValue(&mHueOffset.mValue, 0, kUpdateMask);
    PushSetValue(&mSaturation.mValue, 0, kUpdateMask);
}
