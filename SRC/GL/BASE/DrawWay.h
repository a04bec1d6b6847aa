// Who draws particles: OpenGL, or the processor by itself, which is faster where OpenGL is a driver on the
// processor too.
#pragma once

#include <wx/string.h>

enum class DrawWay {
    Auto, ///< OpenGL, as long as the processor's way isn't proved in whole films
    GL,
    CPU ///< what it can: passes of all attributes with points, billboards and Exact spheres
};

/// As the user wants it; Auto at first.
void SetDrawWay(DrawWay way);
DrawWay GetDrawWay();
/// "auto", "gl" or "cpu"; false: none of them.
bool ReadDrawWay(const wxString& word, DrawWay& out);

/// Does a renderer of this name draw on the processor?
bool IsSoftwareRenderer(const wxString& renderer);
/// With the present choice.
bool IsDrawnByProcessor();
/// The same with the reason, for people; once a context was current.
wxString GetDrawWayText();
