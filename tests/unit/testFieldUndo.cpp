// Fields and the undo list: one step a gesture, and undo gives back every bit.
#include <cmath>

#include <gtest/gtest.h>

#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "WIDGET/clsFieldUndo.h"
#include "WIDGET/clsParamEdit.h"

namespace {

class FieldUndo : public ::testing::Test {
protected:
    void SetUp() override {
        GCUndoList.Clear();
        Parameters_cls::SetFrameNumber(100, 1);
        Parameters_cls::msCurrentDoubleIndex = 0.0;
    }
    void TearDown() override { SetUp(); }
};

TEST_F(FieldUndo, EveryTypeComesBackToItsLastBit) {
    float number = 0.1f;
    double wide = 0.1;
    unsigned count = 4294967295u;
    int negative = -2147483647;
    bool bCheck = false;
    const wxString umlaut = wxString::FromUTF8("\xc3\xa4 b");
    wxString text = umlaut;
    float color[4] = {0.1f, -0.5f, 2.5f, 0.3f};
    const auto edit = [](FieldUndo_cls field, const std::function<void()>& write) {
        field.Edit(write, true, 0);
    };
    edit(FieldUndo_cls::ForNumber(&number), [&] { number = 1.0f / 3; });
    edit(FieldUndo_cls::ForNumber(&wide), [&] { wide = 1.0 / 3; });
    edit(FieldUndo_cls::ForNumber(&count), [&] { count = 7; });
    edit(FieldUndo_cls::ForNumber(&negative), [&] { negative = 7; });
    edit(FieldUndo_cls::ForCheck(&bCheck), [&] { bCheck = true; });
    edit(FieldUndo_cls::ForText(&text), [&] { text.clear(); });
    edit(FieldUndo_cls::ForColor(color), [&] { color[1] = 0.25f; });
    EXPECT_EQ(GCUndoList.GetStepCount(), 7u);
    while (GCUndoList.IsUndoable())
        GCUndoList.UndoCurrent();
    EXPECT_EQ(number, 0.1f);
    EXPECT_EQ(wide, 0.1);
    EXPECT_EQ(count, 4294967295u);
    EXPECT_EQ(negative, -2147483647);
    EXPECT_FALSE(bCheck);
    EXPECT_EQ(text, umlaut);
    EXPECT_EQ(color[1], -0.5f);
    while (GCUndoList.IsRedoable())
        GCUndoList.ExecCurrent();
    EXPECT_EQ(number, 1.0f / 3);
    EXPECT_EQ(wide, 1.0 / 3);
    EXPECT_TRUE(bCheck);
    EXPECT_EQ(color[1], 0.25f);
    EXPECT_EQ(color[2], 2.5f);
}

TEST_F(FieldUndo, AGestureIsOneStepAndThereAndBackIsNone) {
    int value = 1;
    FieldUndo_cls field = FieldUndo_cls::ForNumber(&value);
    for (const int live : {2, 3, 4})
        field.Edit([&] { value = live; }, false, 0);
    field.Edit([&] { value = 5; }, true, 0);
    EXPECT_EQ(GCUndoList.GetStepCount(), 1u);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(value, 1);
    field.Edit([&] { value = 9; }, false, 0);
    field.Edit([&] { value = 1; }, true, 0);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    EXPECT_TRUE(GCUndoList.IsRedoable()) << "nothing happened, so nothing is forgotten";
}

TEST_F(FieldUndo, AnAnimatedNumberIsDraggedLiveAndLeavesOneStep) {
    const wxString suffixes[] = {"x", "y"};
    ParamGroup_cls group("Place", 2, suffixes, 0, true);
    const wxString before = group.Serialize();
    ParamEdit_cls edit(&group);
    Parameters_cls::msCurrentDoubleIndex = 0.5;
    for (int k = 1; k <= 10; ++k) {
        edit.SetValue(0, k, k == 10);
        EXPECT_EQ(group.mVParams[0].Evaluate(0.5, 0.01), k) << "everything shows the drag";
    }
    EXPECT_EQ(edit.GetValue(0), 10.0);
    EXPECT_EQ(group.mVParams[0].GetKeyNumber(), 2);
    EXPECT_EQ(group.mVParams[1].GetKeyNumber(), 2) << "a key in one dimension is one in all";
    EXPECT_TRUE(Parameters_cls::msbUndoCommandMake);
    const wxString after = group.Serialize();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(group.Serialize(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    GCUndoList.ExecCurrent();
    EXPECT_EQ(group.Serialize(), after);
    // A constant takes the value for the whole film.
    group.SetTimeDependent(false);
    GCUndoList.Clear();
    edit.SetValue(1, 4.0, true);
    EXPECT_EQ(group.mVParams[1].Evaluate(0.9, 0.01), 4.0);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(group.mVParams[1].Evaluate(0.9, 0.01), 0.0);
}

} // namespace
