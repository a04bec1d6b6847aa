#include "GL/DRAW/UnlitBlend.h"

#include <epoxy/gl.h>

namespace {
bool sbLightAlone = false; // UI thread
} // namespace

LightAloneScope_cls::LightAloneScope_cls() { sbLightAlone = true; }
LightAloneScope_cls::~LightAloneScope_cls() { sbLightAlone = false; }

bool IsLightAlone() { return sbLightAlone; }

void SetUnlitBlend(bool bAdditive, bool bMultiplied) {
    const GLenum source = sbLightAlone ? GL_ZERO : bMultiplied ? GL_ONE : GL_SRC_ALPHA;
    glBlendFunc(source, bAdditive ? GL_ONE : GL_ONE_MINUS_SRC_ALPHA);
}

void EnableUnlitBlend(bool bNeeded) { (bNeeded || sbLightAlone ? glEnable : glDisable)(GL_BLEND); }
