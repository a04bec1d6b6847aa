// The door by which long loops anywhere keep the status bar alive and let the abort button through.
#pragma once

#include <functional>
#include <utility>

class UpdateStatusBar_cls {
public:
    /// Refresh the status text and let pending events run, unless sbLock is set or nothing is
    /// connected. UI thread only. Does not nest.
    static void UpdateStatusBar();
    /// The frame connects itself here. Returns what was connected.
    static std::function<void()> Connect(std::function<void()> update) {
        return std::exchange(Update(), std::move(update));
    }

    static bool sbLock;         ///< true: calls do nothing
    static bool sbAllowDispach; ///< false: the text is refreshed, pending events stay pending

private:
    static std::function<void()>& Update();
};
