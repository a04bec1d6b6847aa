// One half of an undo step: what to do, or what takes it back.
#pragma once

/// Types that the undo list itself looks at.
enum CommandType { COMMAND_PLAIN = 0, COMMAND_BLOCK_OPEN = 1, COMMAND_BLOCK_CLOSE = 2 };

/// A command must not fail: a step has nobody to report to. It finds its target by name where the target
/// may have been rebuilt since, and does nothing where it is gone.
class CommandItem_cls {
public:
    explicit CommandItem_cls(long long updateBit = 0, int type = COMMAND_PLAIN)
        : mType(type), mUpdateBit(updateBit) {}
    CommandItem_cls(const CommandItem_cls&) = delete;
    CommandItem_cls& operator=(const CommandItem_cls&) = delete;
    virtual ~CommandItem_cls() = default;

    /// `bUndo` tells a run backwards from one forwards.
    virtual void Execute(bool bUndo) = 0;

    /// Note in GCUndoList what this command makes stale (COMMON/UpdateBits.h). Time lines are told at
    /// once, everything else when the step is finished.
    void UpdateBit() const { UpdateBit(mUpdateBit); }
    static void UpdateBit(long long mask);

    int mType;
    long long mUpdateBit;
};

/// Opens a block: the steps up to the matching close are done and taken back as one.
class ComBlockOpen final : public CommandItem_cls {
public:
    ComBlockOpen() : CommandItem_cls(0, COMMAND_BLOCK_OPEN) {}
    void Execute(bool bUndo) override;
};

class ComBlockClose final : public CommandItem_cls {
public:
    ComBlockClose() : CommandItem_cls(0, COMMAND_BLOCK_CLOSE) {}
    void Execute(bool bUndo) override;
};
