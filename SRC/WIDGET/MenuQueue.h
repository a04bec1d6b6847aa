// Where posted menu commands (COMMON/MenuEvent.h) wait for the UI thread.
#pragma once

class wxEvtHandler;

/// From now on they go into this handler's queue, null: nowhere. The frame sets itself in its constructor and
/// null in its destructor, when no worker is running.
void QueueMenuEventsTo(wxEvtHandler* pHandler);
