// The undo list: every edit is a pair of commands, the one that does it and the one that takes it back.
#pragma once

#include <vector>

class CommandItem_cls;

/// Doing, redoing and undoing are one path: push a pair, then run it with ExecCurrent. Steps between
/// OpenBlock and CloseBlock are one to the user. The list also gathers what the commands made stale and
/// posts it as menu events when a whole step is finished.
///
/// A command may itself push pairs when it runs for the first time. When it is replayed they are run
/// but not recorded, since the steps that follow are already there.
///
/// There is no limit on the number of steps, but undo reaches no further than position 65535. Main
/// thread only.
class UndoManager_cls {
public:
    UndoManager_cls() = default;
    UndoManager_cls(const UndoManager_cls&) = delete;
    UndoManager_cls& operator=(const UndoManager_cls&) = delete;
    ~UndoManager_cls();

    /// Add a step at the current position and forget all that lies behind; doesn't run it. Takes both
    /// commands over.
    void PushNewCommand(CommandItem_cls* pRedo, CommandItem_cls* pUndo);
    /// Run the step at the position, with its whole block; also redo.
    void ExecCurrent();
    /// Take the last step back, with its whole block.
    void UndoCurrent();
    /// The same, and nobody can redo it: a step that isn't to be.
    void TakeBackCurrent();
    void OpenBlock();
    /// A block with nothing in it leaves no step.
    void CloseBlock();
    /// A block that the first push in it opens: one with nothing in it leaves the steps to redo alone.
    void OpenBlockLater();
    void CloseBlockLater();
    /// The last two steps are one to the user from here on: what an edit brought along belongs to it. Nothing
    /// while a block stands open, or where steps wait to be redone.
    void JoinLastTwo();
    /// Delete all steps. A command that is running lives until it ends.
    void Clear();
    /// Delete the commands of one step; its place stays and does nothing.
    void RemoveItem(unsigned index);

    unsigned GetCurrent() const { return mCurrent; }
    unsigned GetStepCount() const { return unsigned(mVpCRedo.size()); }
    int GetBlockDepth() const { return mBlockDepth + mWaitingBlocks; }
    long long GetUpdateBit() const { return mUpdateBit; }
    bool IsUndoable() const { return mCurrent > 0; }
    bool IsRedoable() const { return mCurrent < GetStepCount(); }
    /// A number for what the steps below the position have made: the same again only where undo and redo
    /// lead back to it. Never 0. Tells whether a file still holds what is there.
    unsigned long long GetStateId() const { return mCurrent > 0 ? mVStateIds[mCurrent - 1] : mBaseStateId; }

    /// Gather what must be refreshed.
    void AddUpdateBit(long long mask) { mUpdateBit |= mask; }
    /// Turn what was gathered into events.
    void ExecUpdate();

private:
    friend class ComBlockOpen;
    friend class ComBlockClose;
    using Commands = std::vector<CommandItem_cls*>;

    void Run(CommandItem_cls* pCommand, bool bUndo);
    unsigned GetStepStart(unsigned end) const;
    void RunUnrecorded();
    void ForgetRedo();
    void Discard(CommandItem_cls* pCommand);

    Commands mVpCRedo;                          ///< the forward command of each step
    Commands mVpCUndo;                          ///< its inverse, same index
    std::vector<unsigned long long> mVStateIds; ///< state behind each step, same index
    unsigned long long mBaseStateId = 1;        ///< state below all steps
    unsigned long long mLastStateId = 1;
    unsigned mCurrent = 0; ///< next step to redo; all below has been done
    int mBlockDepth = 0;
    int mWaitingBlocks = 0; ///< opened later, without a push so far
    long long mUpdateBit = 0;
    int mRunning = 0;         ///< commands now running, one inside the other
    bool mbReplaying = false; ///< the running one is undone, or redone with steps behind it
    Commands mVpCUnrecorded;  ///< pushed while replaying, waits for ExecCurrent
    Commands mVpCDiscarded;   ///< deleted when none runs any more
};

extern UndoManager_cls GCUndoList;

/// A block of GCUndoList for the length of a scope; none when `bOpen` is false.
class UndoBlock_cls {
public:
    explicit UndoBlock_cls(bool bOpen = true);
    ~UndoBlock_cls();
    UndoBlock_cls(const UndoBlock_cls&) = delete;
    UndoBlock_cls& operator=(const UndoBlock_cls&) = delete;

private:
    bool mbOpen;
};
