#include "GL/VIEW/clsAnaglyph.h"

#include <string>

#include <epoxy/gl.h>
#include <wx/intl.h>

#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/BASE/clsShaderProgram.h"

namespace {
const char* const kFiles[2] = {"GL/exposure.vert", "GL/anaglyph.frag"};
}

Anaglyph_cls::Anaglyph_cls() : mpCProgram(std::make_unique<ShaderProgram_cls>()) {}

Anaglyph_cls::~Anaglyph_cls() = default;

bool Anaglyph_cls::Initialize() {
    if (mbInitialized) return mpCProgram->IsMade();
    mbInitialized = true;
    const std::string vertex = readShaderSource(FindRuntimeFile(kFiles[0]));
    const std::string fragment = readShaderSource(FindRuntimeFile(kFiles[1]));
    if (vertex.empty() || fragment.empty() || !mpCProgram->Make(vertex, fragment)) {
        Notice("anaglyph", wxString::Format(_("The shader files %s and %s are missing or broken: RED-CYAN is "
                                              "shown in place of RED-CYAN (Dubois)."),
                                            kFiles[0], kFiles[1]));
        return false;
    }
    glUseProgram(mpCProgram->mProgram);
    glUniform1i(mpCProgram->GetUniform("leftEye"), 0);
    glUniform1i(mpCProgram->GetUniform("rightEye"), 1);
    glUseProgram(0);
    return true;
}

void Anaglyph_cls::Draw(const FBO_cls& left, const FBO_cls& right) const {
    glActiveTexture(GL_TEXTURE1);
    right.BindTexture();
    glActiveTexture(GL_TEXTURE0);
    glUseProgram(mpCProgram->mProgram);
    left.DrawOnScreen2D(1, 1, 1, 1, 0, 0, true);
    glUseProgram(0);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, 0);
    glActiveTexture(GL_TEXTURE0);
}
