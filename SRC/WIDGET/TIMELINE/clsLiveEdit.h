// A change of curves that follows the mouse: seen at once in every view, and one step of the undo list when
// it ends.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "WIDGET/TIMELINE/KeyEdits.h"

class LiveEdit_cls {
public:
    /// Remembers the curves as they stand.
    explicit LiveEdit_cls(const Curves& curves);
    LiveEdit_cls(const LiveEdit_cls&) = delete;
    LiveEdit_cls& operator=(const LiveEdit_cls&) = delete;
    /// A gesture that was neither committed nor cancelled is cancelled.
    ~LiveEdit_cls();

    /// The curves as they stood, changed by `edit`, without a step.
    void Try(const std::function<void()>& edit);
    /// The same as a step; the gesture is over.
    void Commit(const std::function<void()>& edit);
    /// All as it was; the gesture is over.
    void Cancel();
    const Curves& GetCurves() const { return mCurves; }

private:
    bool Restore();
    void Tell() const;

    Curves mCurves;
    std::vector<std::unique_ptr<Parameters_cls>> mVpCKept;
    unsigned mUndoPosition; ///< another step meanwhile makes what was kept worthless
    bool mbOver = false;
};
