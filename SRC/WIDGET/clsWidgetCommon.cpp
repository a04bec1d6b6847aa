#include "WIDGET/clsWidgetCommon.h"

#include <wx/window.h>

void WidgetCommon_cls::SendMenuEvent(wxWindow* pWindow, int id) {
    if (!pWindow) return;
    wxCommandEvent event(wxEVT_MENU, id);
    event.SetEventObject(pWindow);
    pWindow->GetEventHandler()->ProcessEvent(event);
}
