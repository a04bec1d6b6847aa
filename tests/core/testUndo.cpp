// The undo list: steps, blocks, masks, and the commands on plain values.
#include "PARAM/clsCommandSetValue.h"

#include "COMMON/EventIds.h"
#include "COMMON/UpdateBits.h"
#include "ParamTest.h"

namespace {

class Undo : public ParamTest {
protected:
    void Set(int value, long long bits = 0) {
        GCUndoList.PushNewCommand(new CommandSetValue_cls(&mValue, value, int(bits)),
                                  new CommandSetValue_cls(&mValue, mValue, int(bits)));
        GCUndoList.ExecCurrent();
    }
    int mValue = 0;
};

using Ids = std::vector<int>;

TEST_F(Undo, StepsGoBackAndForth) {
    GCUndoList.UndoCurrent();
    EXPECT_EQ(GCUndoList.GetCurrent(), 0u);
    Set(1);
    Set(2);
    GCUndoList.ExecCurrent();
    EXPECT_EQ(GCUndoList.GetCurrent(), 2u) << "redo at the end does nothing";
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mValue, 1);
    EXPECT_TRUE(GCUndoList.IsRedoable());
    GCUndoList.ExecCurrent();
    EXPECT_EQ(mValue, 2);
    GCUndoList.UndoCurrent();
    Set(7);
    EXPECT_EQ(GCUndoList.GetStepCount(), 2u) << "a push forgets what was undone";
    GCUndoList.UndoCurrent();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mValue, 0);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    GCUndoList.Clear();
    EXPECT_EQ(GCUndoList.GetStepCount(), 0u);
}

TEST_F(Undo, ABlockIsOneStep) {
    Set(1);
    GCUndoList.OpenBlock();
    Set(2);
    GCUndoList.OpenBlock();
    Set(3);
    GCUndoList.CloseBlock();
    Set(4);
    GCUndoList.CloseBlock();
    EXPECT_EQ(GCUndoList.GetBlockDepth(), 0);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mValue, 1);
    EXPECT_EQ(GCUndoList.GetCurrent(), 1u);
    GCUndoList.ExecCurrent();
    EXPECT_EQ(mValue, 4);
    EXPECT_FALSE(GCUndoList.IsRedoable());
    EXPECT_EQ(GCUndoList.GetBlockDepth(), 0);
}

TEST_F(Undo, WhatAnEditBroughtAlongBecomesAPartOfIt) {
    Set(1);
    GCUndoList.JoinLastTwo();
    EXPECT_EQ(GCUndoList.GetStepCount(), 1u) << "one has nothing to join";
    const auto start = GCUndoList.GetStateId();
    {
        const UndoBlock_cls block; // the edit may be a block of its own
        Set(2);
        Set(3);
    }
    Set(4);
    const auto end = GCUndoList.GetStateId();
    GCUndoList.JoinLastTwo();
    EXPECT_EQ(GCUndoList.GetStateId(), end);
    for (int round = 0; round < 2; ++round) {
        GCUndoList.UndoCurrent();
        EXPECT_EQ(mValue, 1);
        EXPECT_EQ(GCUndoList.GetStateId(), start);
        GCUndoList.ExecCurrent();
        EXPECT_EQ(mValue, 4);
        EXPECT_EQ(GCUndoList.GetStateId(), end);
    }
    GCUndoList.JoinLastTwo(); // with the first one, too
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mValue, 0);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    GCUndoList.JoinLastTwo(); // steps that wait to be redone are left alone
    GCUndoList.ExecCurrent();
    EXPECT_EQ(mValue, 4);
    EXPECT_FALSE(GCUndoList.IsRedoable());
}

TEST_F(Undo, AnEmptyBlockLeavesNoStep) {
    GCUndoList.OpenBlock();
    GCUndoList.CloseBlock();
    EXPECT_EQ(GCUndoList.GetCurrent(), 0u);
    Set(1);
    Set(2);
    GCUndoList.OpenBlock();
    GCUndoList.OpenBlock();
    GCUndoList.CloseBlock();
    GCUndoList.CloseBlock();
    EXPECT_EQ(GCUndoList.GetCurrent(), 2u);
    EXPECT_EQ(GCUndoList.GetBlockDepth(), 0);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mValue, 1) << "undo acts on the step before the block";
    GCUndoList.CloseBlock();
    EXPECT_EQ(GCUndoList.GetBlockDepth(), 0) << "a close without an open is none";
}

TEST_F(Undo, MasksTurnIntoEventsWhenTheStepIsFinished) {
    EventRecorder events;
    Set(1, 8227);
    EXPECT_EQ(events.Take(), (Ids{ID_REFRESH_ATTRIB, ID_REFRESH_GL, ID_REFRESH_COLOR}));
    EXPECT_TRUE(GbSnapDataRefresh.load());
    GCUndoList.OpenBlock();
    Set(2, UPDATE_GL | UPDATE_TL);
    EXPECT_EQ(events.Take(), (Ids{ID_REFRESH_TL})) << "time lines hear of it at once";
    GCUndoList.OpenBlock();
    Set(3, UPDATE_LIGHT);
    GCUndoList.CloseBlock();
    GCUndoList.OpenBlock();
    GCUndoList.CloseBlock();
    EXPECT_EQ(events.Take(), Ids()) << "an inner block posts nothing";
    GCUndoList.CloseBlock();
    EXPECT_EQ(events.Take(), (Ids{ID_REFRESH_TL, ID_REFRESH_GL, ID_REFRESH_LIGHT}));
    EXPECT_EQ(GCUndoList.GetUpdateBit(), 0);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(events.Take(), (Ids{ID_REFRESH_TL, ID_REFRESH_TL, ID_REFRESH_GL, ID_REFRESH_LIGHT}));
}

TEST_F(Undo, ValuesOfEveryKindAreWritten) {
    float f = 0;
    double d = 0;
    unsigned u = 0;
    wxString text = "old";
    CommandSetValue_cls(&f, 1.5f, 0).Execute(false);
    CommandSetValue_cls(&d, 2.5, 0).Execute(false);
    CommandSetValue_cls(&u, 4000000000u, 0).Execute(false);
    CommandSetValue_cls(&text, wxString("new"), UPDATE_TEXTURE).Execute(true);
    EXPECT_EQ(f, 1.5f);
    EXPECT_EQ(d, 2.5);
    EXPECT_EQ(u, 4000000000u);
    EXPECT_EQ(text, "new");
    EXPECT_EQ(GCUndoList.GetUpdateBit(), UPDATE_TEXTURE);
    EXPECT_EQ(CommandSetValue_cls(&text, wxString(), 0).GetKind(), 10);
}

TEST_F(Undo, BeyondItsReachUndoOnlyGoesToTheStart) {
    const unsigned long long before = GCUndoList.GetStateId();
    for (int i = 0; i < 65536; ++i)
        Set(i);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mValue, 65535);
    EXPECT_EQ(GCUndoList.GetCurrent(), 0u);
    EXPECT_NE(GCUndoList.GetStateId(), before) << "nothing was taken back: this is no saved state";
}

TEST_F(Undo, AnEditThatChangesNothingKeepsWhatCanBeRedone) {
    Set(1);
    Set(2);
    GCUndoList.UndoCurrent();
    const unsigned long long state = GCUndoList.GetStateId();
    const unsigned steps = GCUndoList.GetStepCount();
    {
        const UndoBlock_cls outer;
        const UndoBlock_cls inner;
    }
    EXPECT_EQ(GCUndoList.GetStepCount(), steps);
    EXPECT_EQ(GCUndoList.GetStateId(), state);
    EXPECT_EQ(GCUndoList.GetBlockDepth(), 0);
    GCUndoList.ExecCurrent();
    EXPECT_EQ(mValue, 2);
    {
        const UndoBlock_cls outer;
        const UndoBlock_cls inner;
        Set(3);
        Set(4);
    }
    EXPECT_EQ(GCUndoList.GetBlockDepth(), 0);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mValue, 2) << "nested blocks are one step";
    GCUndoList.ExecCurrent();
    EXPECT_EQ(mValue, 4);
}

/// Runs a whole edit of its own, as starting to play does.
class NestedEdit : public CommandItem_cls {
public:
    explicit NestedEdit(int* pValue) : mpValue(pValue) {}
    void Execute(bool) override {
        const UndoBlock_cls block;
        GCUndoList.PushNewCommand(new CommandSetValue_cls(mpValue, *mpValue + 10, 0),
                                  new CommandSetValue_cls(mpValue, *mpValue, 0));
        GCUndoList.ExecCurrent();
    }
    int* mpValue;
};

TEST_F(Undo, ACommandMayEditAndEvenClear) {
    GCUndoList.OpenBlock();
    GCUndoList.PushNewCommand(new NestedEdit(&mValue), new CommandSetValue_cls(&mValue, 0, 0));
    GCUndoList.ExecCurrent();
    Set(5);
    GCUndoList.CloseBlock();
    const unsigned count = GCUndoList.GetStepCount();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mValue, 0);
    GCUndoList.ExecCurrent();
    EXPECT_EQ(mValue, 5);
    EXPECT_EQ(GCUndoList.GetStepCount(), count) << "a replay records nothing";
    EXPECT_EQ(GCUndoList.GetBlockDepth(), 0);

    struct Clearing : CommandItem_cls {
        void Execute(bool) override { GCUndoList.Clear(); }
    };
    GCUndoList.PushNewCommand(new Clearing, new Clearing);
    GCUndoList.ExecCurrent();
    EXPECT_EQ(GCUndoList.GetStepCount(), 0u);
    EXPECT_EQ(GCUndoList.GetCurrent(), 0u);
}

TEST_F(Undo, ARemovedStepDoesNothing) {
    Set(1);
    Set(2);
    GCUndoList.RemoveItem(0);
    GCUndoList.RemoveItem(9);
    GCUndoList.UndoCurrent();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mValue, 1);
    GCUndoList.ExecCurrent();
    EXPECT_EQ(GCUndoList.GetCurrent(), 1u);
}

} // namespace
