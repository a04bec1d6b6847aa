#include "GL/BASE/DrawWay.h"

#include <epoxy/gl.h>

#include <wx/intl.h>

namespace {

DrawWay sWay = DrawWay::Auto; // UI thread

const wxString& GetRenderer() {
    static wxString sRenderer;
    if (!sRenderer.empty()) return sRenderer;
    const GLubyte* pName = glGetString(GL_RENDERER);
    if (pName) sRenderer = wxString::FromUTF8(reinterpret_cast<const char*>(pName));
    return sRenderer;
}

} // namespace

void SetDrawWay(DrawWay way) { sWay = way; }
DrawWay GetDrawWay() { return sWay; }

bool ReadDrawWay(const wxString& word, DrawWay& out) {
    if (word == "auto")
        out = DrawWay::Auto;
    else if (word == "gl")
        out = DrawWay::GL;
    else if (word == "cpu")
        out = DrawWay::CPU;
    else
        return false;
    return true;
}

bool IsSoftwareRenderer(const wxString& renderer) {
    const wxString name = renderer.Lower();
    for (const char* driver : {"llvmpipe", "softpipe", "swrast", "software rasterizer"})
        if (name.Contains(driver)) return true;
    return false;
}

bool IsDrawnByProcessor() { return sWay == DrawWay::CPU; }

wxString GetDrawWayText() {
    const wxString name = GetRenderer().BeforeFirst('(').Trim();
    if (sWay == DrawWay::GL)
        return wxString::Format(_("as you chose, particles are drawn by OpenGL (%s)"), name);
    if (sWay == DrawWay::CPU)
        return _("as you chose, particles are drawn by the processor where it can, else by OpenGL");
    if (IsSoftwareRenderer(name))
        return wxString::Format(_("software driver %s: particles are drawn by OpenGL; --draw cpu is faster"),
                                name);
    return wxString::Format(_("graphics driver %s: particles are drawn by OpenGL"), name);
}
