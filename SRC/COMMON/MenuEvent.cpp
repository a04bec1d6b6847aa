#include "COMMON/MenuEvent.h"

#include <atomic>

#include <wx/event.h>

namespace {
std::atomic<wxEvtHandler*> sTarget{nullptr};
}

void SetMenuEventTarget(wxEvtHandler* pTarget) { sTarget.store(pTarget); }

void PostMenuEvent(int id, int intValue) {
    wxEvtHandler* target = sTarget.load();
    if (!target) return;
    auto* event = new wxCommandEvent(wxEVT_MENU, id);
    event->SetInt(intValue);
    wxQueueEvent(target, event);
}
