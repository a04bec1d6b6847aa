// Posting menu commands to the main frame, from any thread.
#pragma once

/// Takes what is posted; the floors with a toolkit put it into the frame's event queue (WIDGET/MenuQueue.h).
class MenuEventTarget_cls {
public:
    virtual ~MenuEventTarget_cls() = default;
    /// Called on the thread that posts: hand it on and return.
    virtual void QueueMenuEvent(int id, int intValue) = 0;
};

/// Queue a menu command (COMMON/EventIds.h) for the main frame, with an integer for handlers that take
/// one. Safe from any thread; does nothing while no target is set, as in tests without a frame.
void PostMenuEvent(int id, int intValue = 0);

/// What receives the commands; must stay until it is replaced, by null at the end, when no worker is running.
void SetMenuEventTarget(MenuEventTarget_cls* pTarget);
