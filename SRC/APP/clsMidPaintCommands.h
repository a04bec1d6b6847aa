// Commands that come while a view draws, and would take from it what it draws.
#pragma once

#include <vector>

#include <wx/eventfilter.h>

class FrameMain_cls;
class wxIdleEvent;

/// In a long paint the window breathes and takes commands. Those that add, remove or move filters wait here
/// until the paint is over; all others go their way.
class MidPaintCommands_cls : public wxEventFilter {
public:
    explicit MidPaintCommands_cls(FrameMain_cls& frame);
    ~MidPaintCommands_cls() override;

    int FilterEvent(wxEvent& event) override;

private:
    void OnIdle(wxIdleEvent& event);

    FrameMain_cls& mFrame;
    std::vector<int> mVIds; ///< in the order in which they came
};
