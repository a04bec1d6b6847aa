#include "GL/BASE/DrawWay.h"

#include <optional>

#include <wx/intl.h>

#include "GL/BASE/clsGLInfo.h"

namespace {

// UI thread.
std::optional<DrawWay> sWay;
const unsigned* spPreference = nullptr;

} // namespace

void SetDrawWay(DrawWay way) { sWay = way; }
void SetDrawPreference(const unsigned* pWay) { spPreference = pWay; }

DrawWay GetDrawWay() {
    if (sWay) return *sWay;
    return spPreference && *spPreference <= static_cast<unsigned>(DrawWay::CPU)
               ? static_cast<DrawWay>(*spPreference)
               : DrawWay::Auto;
}

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

bool IsDrawnByProcessor() {
    const DrawWay way = GetDrawWay();
    return way == DrawWay::CPU || (way == DrawWay::Auto && GLInfo_cls::IsSoftware());
}

wxString GetDrawWayText() {
    const bool bSoftware = GLInfo_cls::IsSoftware();
    const wxString name = GLInfo_cls::GetRenderer().BeforeFirst('(').Trim();
    const DrawWay way = GetDrawWay();
    if (way == DrawWay::GL)
        return wxString::Format(_("as you chose, particles are drawn by OpenGL (%s)"), name);
    if (way == DrawWay::CPU)
        return _("as you chose, particles are drawn by the processor where it can, else by OpenGL");
    if (bSoftware)
        return wxString::Format(_("software driver %s: particles are drawn by the processor"), name);
    return wxString::Format(_("graphics driver %s: particles are drawn by OpenGL"), name);
}
