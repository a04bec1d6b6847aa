#include "WIDGET/KeyMark.h"

#include <wx/dc.h>

#include "PARAM/clsParameters.h"

KeyState GetKeyState(const Parameters_cls& param, double doubleIndex) {
    if (!param.mbTimeDepend.mValue) return KeyState::CONSTANT;
    return param.IsKeyFrame(Parameters_cls::Time(doubleIndex)) ? KeyState::KEY : KeyState::ANIMATED;
}

void DrawKeyMark(wxDC& dc, int x, int y, int radius, KeyState state, const wxColour& colour) {
    if (state == KeyState::CONSTANT) return;
    const wxPoint corners[] = {{x - radius, y}, {x, y - radius}, {x + radius, y}, {x, y + radius}};
    dc.SetPen(wxPen(colour));
    dc.SetBrush(state == KeyState::KEY ? wxBrush(colour) : *wxTRANSPARENT_BRUSH);
    dc.DrawPolygon(4, corners);
}
