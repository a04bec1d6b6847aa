#include "PARAM/clsUndoManager.h"

#include <utility>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/clsCommandItem.h"

namespace {
constexpr unsigned kUndoLimit = 65535;

UndoManager_cls* sRunningList = nullptr; // the list whose command runs

UndoManager_cls& ListInUse() { return sRunningList ? *sRunningList : GCUndoList; }
} // namespace

UndoManager_cls GCUndoList;

UndoManager_cls::~UndoManager_cls() { Clear(); }

void UndoManager_cls::Discard(CommandItem_cls* pCommand) {
    if (mRunning > 0 && pCommand)
        mVpCDiscarded.push_back(pCommand);
    else
        delete pCommand;
}

void UndoManager_cls::Run(CommandItem_cls* pCommand, bool bUndo) {
    if (!pCommand) return;
    UndoManager_cls* const outerList = std::exchange(sRunningList, this);
    const bool bOuterReplaying = mbReplaying;
    mbReplaying = bOuterReplaying || bUndo || mCurrent < GetStepCount();
    ++mRunning;
    pCommand->Execute(bUndo);
    --mRunning;
    mbReplaying = bOuterReplaying;
    sRunningList = outerList;
    if (mRunning > 0) return;
    Commands discarded;
    discarded.swap(mVpCDiscarded);
    for (CommandItem_cls* command : discarded)
        delete command;
}

void UndoManager_cls::RunUnrecorded() {
    Commands commands;
    commands.swap(mVpCUnrecorded);
    for (CommandItem_cls* command : commands) {
        Run(command, false);
        Discard(command);
    }
}

void UndoManager_cls::ForgetRedo() {
    for (unsigned i = mCurrent; i < GetStepCount(); ++i)
        RemoveItem(i);
    mVpCRedo.resize(mCurrent);
    mVpCUndo.resize(mCurrent);
    mVStateIds.resize(mCurrent);
}

void UndoManager_cls::PushNewCommand(CommandItem_cls* pRedo, CommandItem_cls* pUndo) {
    if (mbReplaying) {
        mVpCUnrecorded.push_back(pRedo);
        Discard(pUndo);
        return;
    }
    while (mWaitingBlocks > 0) {
        --mWaitingBlocks;
        OpenBlock();
    }
    ForgetRedo();
    mVpCRedo.push_back(pRedo);
    mVpCUndo.push_back(pUndo);
    mVStateIds.push_back(++mLastStateId);
}

void UndoManager_cls::ExecCurrent() {
    if (mbReplaying) {
        RunUnrecorded();
        return;
    }
    while (mCurrent < GetStepCount()) {
        // The position moves first, so that what a command pushes comes behind it.
        CommandItem_cls* command = mVpCRedo[mCurrent++];
        Run(command, false);
        if (mBlockDepth > 0) continue;
        if (mBlockDepth == 0) ExecUpdate();
        return;
    }
}

void UndoManager_cls::UndoCurrent() {
    if (mbReplaying) return;
    do {
        if (mCurrent == 0) break;
        if (mCurrent - 1 >= kUndoLimit) {
            mCurrent = 0;
            // Nothing was taken back: no position stands for a state that was.
            mBaseStateId = ++mLastStateId;
            for (unsigned long long& id : mVStateIds)
                id = ++mLastStateId;
            break;
        }
        CommandItem_cls* command = mVpCUndo[--mCurrent];
        Run(command, true);
    } while (mBlockDepth > 0);
    if (mBlockDepth == 0) ExecUpdate();
}

void UndoManager_cls::TakeBackCurrent() {
    if (mbReplaying) return;
    UndoCurrent();
    ForgetRedo();
}

void UndoManager_cls::OpenBlock() {
    if (mbReplaying) return;
    PushNewCommand(new ComBlockOpen, new ComBlockClose);
    ExecCurrent();
}

void UndoManager_cls::CloseBlock() {
    if (mbReplaying || mBlockDepth <= 0)
        return; // the list was cleared, or the block undone, while it stood open
    const bool bEmpty =
        mCurrent > 0 && mVpCRedo[mCurrent - 1] && mVpCRedo[mCurrent - 1]->mType == COMMAND_BLOCK_OPEN;
    PushNewCommand(new ComBlockClose, new ComBlockOpen);
    ExecCurrent();
    // Both ends cancel out, so stepping back over them is taking them back.
    if (bEmpty) mCurrent -= 2;
}

void UndoManager_cls::OpenBlockLater() {
    if (!mbReplaying) ++mWaitingBlocks;
}

void UndoManager_cls::CloseBlockLater() {
    if (mbReplaying) return;
    if (mWaitingBlocks == 0) return CloseBlock();
    --mWaitingBlocks;
    if (mWaitingBlocks == 0 && mBlockDepth == 0) ExecUpdate();
}

// The first command of the step that ends before `end`.
unsigned UndoManager_cls::GetStepStart(unsigned end) const {
    int depth = 0;
    unsigned i = end;
    while (i > 0) {
        const CommandItem_cls* command = mVpCRedo[--i];
        if (command && command->mType == COMMAND_BLOCK_CLOSE) ++depth;
        if (command && command->mType == COMMAND_BLOCK_OPEN) --depth;
        if (depth == 0) break;
    }
    return i;
}

void UndoManager_cls::JoinLastTwo() {
    if (mbReplaying || mRunning > 0 || GetBlockDepth() > 0 || IsRedoable() || mCurrent == 0) return;
    const unsigned second = GetStepStart(mCurrent);
    if (second == 0) return;
    const long first = static_cast<long>(GetStepStart(second));
    mVStateIds.insert(mVStateIds.begin() + first, first > 0 ? mVStateIds[size_t(first) - 1] : mBaseStateId);
    mVpCRedo.insert(mVpCRedo.begin() + first, new ComBlockOpen);
    mVpCUndo.insert(mVpCUndo.begin() + first, new ComBlockClose);
    mVStateIds.push_back(mVStateIds.back());
    mVpCRedo.push_back(new ComBlockClose);
    mVpCUndo.push_back(new ComBlockOpen);
    mCurrent += 2;
}

void UndoManager_cls::Clear() {
    for (unsigned i = 0; i < GetStepCount(); ++i)
        RemoveItem(i);
    mVpCRedo.clear();
    mVpCUndo.clear();
    mBaseStateId = GetStateId(); // what the steps made stays
    mVStateIds.clear();
    mCurrent = 0;
    mBlockDepth = 0;
}

void UndoManager_cls::RemoveItem(unsigned index) {
    if (index >= GetStepCount()) return;
    Discard(mVpCRedo[index]);
    Discard(mVpCUndo[index]);
    mVpCRedo[index] = nullptr;
    mVpCUndo[index] = nullptr;
}

void UndoManager_cls::ExecUpdate() {
    const long long mask = mUpdateBit;
    mUpdateBit = 0;
    PostUpdateEvents(mask);
}

UndoBlock_cls::UndoBlock_cls(bool bOpen) : mbOpen(bOpen) {
    if (mbOpen) GCUndoList.OpenBlockLater();
}

UndoBlock_cls::~UndoBlock_cls() {
    if (mbOpen) GCUndoList.CloseBlockLater();
}

void CommandItem_cls::UpdateBit(long long mask) {
    ListInUse().AddUpdateBit(mask);
    if (mask & UPDATE_TL) PostMenuEvent(ID_REFRESH_TL);
}

void ComBlockOpen::Execute(bool) { ++ListInUse().mBlockDepth; }

void ComBlockClose::Execute(bool) { --ListInUse().mBlockDepth; }
