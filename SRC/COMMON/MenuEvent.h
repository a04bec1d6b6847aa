// Posting menu commands to the main frame, from any thread.
#pragma once

class wxEvtHandler;

/// Queue a menu command (COMMON/EventIds.h) for the main frame, with an integer for handlers that take
/// one. Safe from any thread; does nothing while no target is set, as in tests without a frame.
void PostMenuEvent(int id, int intValue = 0);

/// The handler that receives the commands; the frame sets itself in its constructor and null in its
/// destructor, when no worker is running.
void SetMenuEventTarget(wxEvtHandler* pTarget);
