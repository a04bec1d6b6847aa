// Who draws particles: OpenGL, or the processor by itself, which is faster where OpenGL is a driver on the
// processor too.
#pragma once

#include <wx/string.h>

/// As a preference keeps it.
enum class DrawWay : unsigned {
    Auto, ///< where OpenGL is a software driver as CPU, but for few particles; else as GL
    GL,
    CPU ///< what it can: passes of all attributes with points, billboards and Exact spheres
};

/// As the user wants it, whatever the preference says.
void SetDrawWay(DrawWay way);
/// Where the preference stands that counts otherwise, as long as it is there; null: Auto counts.
void SetDrawPreference(const unsigned* pWay);
DrawWay GetDrawWay();
/// "auto", "gl" or "cpu"; false: none of them.
bool ReadDrawWay(const wxString& word, DrawWay& out);

/// Does a renderer of this name draw on the processor?
bool IsSoftwareRenderer(const wxString& renderer);
/// With the present choice.
bool IsDrawnByProcessor();
/// The same with the reason, for people; once a context was current.
wxString GetDrawWayText();
