#include "APP/clsMidPaintCommands.h"

#include <utility>

#include <wx/app.h>

#include "APP/clsFrameMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"

namespace {

bool DoesChangeLists(int id) {
    if (id >= ID_RECENT_PROJECT_0 && id < ID_RECENT_PROJECT_0 + 9) return true;
    switch (id) {
    case ID_OPEN_PROJECT:
    case ID_UNDO:
    case ID_REDO:
    case ID_FILTER_BOOLEAN:
    case ID_FILTER_FILTERING:
    case ID_FILTER_DATABOX:
    case ID_FILTER_OBJECT:
    case ID_FILTER_STICK:
    case ID_FILTER_GRID:
    case ID_FILTER_COPYBOX:
    case ID_FILTER_FOG:
    case ID_FILTER_UP:
    case ID_FILTER_DOWN:
    case ID_FILTER_DELETE:
        return true;
    default:
        return false;
    }
}

} // namespace

MidPaintCommands_cls::MidPaintCommands_cls(FrameMain_cls& frame) : mFrame(frame) {
    wxEvtHandler::AddFilter(this);
    mFrame.Bind(wxEVT_IDLE, &MidPaintCommands_cls::OnIdle, this);
}

MidPaintCommands_cls::~MidPaintCommands_cls() { wxEvtHandler::RemoveFilter(this); }

int MidPaintCommands_cls::FilterEvent(wxEvent& event) {
    if (event.GetEventType() != wxEVT_MENU || !GbGLLockDrawing.load()) return Event_Skip;
    if (!DoesChangeLists(event.GetId())) return Event_Skip;
    mVIds.push_back(event.GetId());
    wxWakeUpIdle();
    return Event_Processed;
}

void MidPaintCommands_cls::OnIdle(wxIdleEvent& event) {
    event.Skip();
    if (mVIds.empty() || GbGLLockDrawing.load()) return;
    for (const int id : std::exchange(mVIds, {})) {
        wxCommandEvent command(wxEVT_MENU, id);
        command.SetEventObject(&mFrame);
        mFrame.ProcessWindowEvent(command);
    }
}
