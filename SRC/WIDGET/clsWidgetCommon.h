// What our windows share: sending menu commands to a window.
#pragma once

class wxWindow;

class WidgetCommon_cls {
public:
    virtual ~WidgetCommon_cls() = default;
    /// Handle a menu command (COMMON/EventIds.h) of `pWindow` at once; PostMenuEvent queues instead.
    static void SendMenuEvent(wxWindow* pWindow, int id);
};
