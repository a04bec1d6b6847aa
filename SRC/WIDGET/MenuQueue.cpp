#include "WIDGET/MenuQueue.h"

#include <atomic>

#include <wx/event.h>

#include "COMMON/MenuEvent.h"

namespace {

class MenuQueue_cls final : public MenuEventTarget_cls {
public:
    void QueueMenuEvent(int id, int intValue) override {
        wxEvtHandler* handler = mpHandler.load();
        if (!handler) return;
        auto* event = new wxCommandEvent(wxEVT_MENU, id);
        event->SetInt(intValue);
        wxQueueEvent(handler, event);
    }

    std::atomic<wxEvtHandler*> mpHandler{nullptr};
};

} // namespace

void QueueMenuEventsTo(wxEvtHandler* pHandler) {
    static MenuQueue_cls sQueue;
    sQueue.mpHandler.store(pHandler);
    SetMenuEventTarget(pHandler ? &sQueue : nullptr);
}
