// Curves: finding keys, editing them with undo, selection.
#include "PARAM/clsParameters.h"

#include "COMMON/EventIds.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/clsParamCommand.h"
#include "ParamTest.h"

namespace {

using Parameters = ParamTest;
using Doubles = std::vector<double>;

TEST_F(Parameters, KeysAreFoundWithinHalfAResolution) {
    Curve curve({MakeKey(0.25, 1), MakeKey(0.5, 2, INTERP_STEP), MakeKey(0.75, 3)});
    const double r = 0.125; // binary fractions: the bounds are exact
    EXPECT_TRUE(curve.IsKeyFrame(0.5625, r));
    EXPECT_FALSE(curve.IsKeyFrame(0.4375, r)) << "a key at T + R/2 is not at T";
    EXPECT_EQ(curve.CheckOverWrite(0.5625, r), -1) << "this one is strict at both ends";
    EXPECT_EQ(curve.CheckOverWrite(0.5, 0.5), 1);
    EXPECT_EQ(curve.CheckOverWrite(0.5, 0.51), 2) << "the last one";
    EXPECT_EQ(curve.GetKeyFrameIndexFromDouble(0.625, r, false), -1);
    EXPECT_EQ(curve.GetKeyFrameIndexFromDouble(0.625, r, true), 1);
    EXPECT_EQ(curve.GetKeyFrameIndexFromDouble(0.0, r, true), 0);
    EXPECT_EQ(curve.GetKeyFrameIndexFromDouble(1.0, r, true), 2);
    EXPECT_EQ(curve.GetKeyFrameIndexToInsert(0.4375, r), 2);
    EXPECT_EQ(curve.GetKeyFrameIndexToInsert(1.0, r), 3);
    EXPECT_EQ(curve.GetAdjacentKey(0.5, -1), 0);
    EXPECT_EQ(curve.GetAdjacentKey(0.75, 1), 2);
    EXPECT_EQ(curve.GetAdjacentKey(0.6, -1), 1);
    EXPECT_EQ(curve.GetAdjacentKey(0.6, 1), 2);
    EXPECT_EQ(curve.GetAdjacentKey(0.1, -1), 0);
    EXPECT_EQ(curve.GetInterpTypeFromDouble(0.6), INTERP_STEP);
    EXPECT_EQ(curve.GetKeyFrameValue(99), 0) << "out of range is quiet";
    EXPECT_EQ(curve.OnWhichKeyFrame(0.51, 0.1), 1);
    EXPECT_EQ(curve.OnWhichKeyFrame(0.625, 0.125), -1) << "strict";
    curve.mbTimeDepend.mValue = false;
    EXPECT_TRUE(curve.IsKeyFrame(0.9)) << "every time is a key's time then";
}

TEST_F(Parameters, ANewKeyTakesTheKindOfTheSegmentThatItSplits) {
    Curve curve({MakeKey(0, 0, INTERP_HERMITE), MakeKey(0.5, 1, INTERP_STEP), MakeKey(1, 0)});
    KeyFrame_cls key;
    curve.SetKeyToValueAt(&key, 0.25);
    EXPECT_EQ(key.mInterpType, INTERP_HERMITE);
    EXPECT_DOUBLE_EQ(key.mValue, 0.5);
    EXPECT_DOUBLE_EQ(key.mValueD1, 2) << "slope from the key before to the key after";
    curve.SetKeyToValueAt(&key, 0.5);
    EXPECT_EQ(key.mInterpType, INTERP_STEP);
    EXPECT_DOUBLE_EQ(key.mValueD1, 0);
    curve.InsertKey(0.75, 9, 3, 4);
    EXPECT_EQ(curve.Positions(), (Doubles{0, 0.5, 0.75, 1}));
    EXPECT_EQ(curve.GetKeys()[2].mInterpType, INTERP_STEP);
    EXPECT_EQ(curve.GetKeyFrameValueD1(2), 3);
    Parameters_cls::msCurrentDoubleIndex = 0.25;
    curve.InsertKey(-1.0, 99, 0, 0);
    EXPECT_DOUBLE_EQ(curve.GetKeyFrameValue(1), 0.5) << "now means the curve's own value";
}

TEST_F(Parameters, AKeyNearAnotherOverwritesIt) {
    Curve curve({MakeKey(0, 0), MakeKey(0.5, 1, INTERP_STEP)});
    const wxString before = curve.Serialize();
    curve.SetKey(MakeKey(0.504, 7, INTERP_HERMITE), -1.0);
    EXPECT_EQ(curve.Positions(), (Doubles{0, 0.504}));
    EXPECT_EQ(curve.GetKeys()[1].mInterpType, INTERP_HERMITE);
    curve.SetKey(MakeKey(0.51, 8), -1.0);
    EXPECT_EQ(curve.GetKeyNumber(), 3);
    curve.SetKey(MakeKey(std::nan(""), 8), -1.0);
    curve.SetKey(MakeKey(0.3, INFINITY), -1.0);
    EXPECT_EQ(curve.GetKeyNumber(), 3) << "no key stands nowhere";
    GCUndoList.UndoCurrent();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(curve.Serialize(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(Parameters, AnEditedValueBecomesAKeyNow) {
    Curve curve({MakeKey(0, 0), MakeKey(1, 10)});
    Parameters_cls::msCurrentDoubleIndex = 0.5;
    curve.GetInterpolatedValue(-1.0);
    EXPECT_FALSE(curve.IsValueChanged(-1.0));
    curve.mCurrentValue = 8;
    EXPECT_TRUE(curve.IsValueChanged(-1.0));
    EXPECT_EQ(curve.mCurrentValue, 8);
    curve.SetChangedValueKey(-1.0, 0, 0, -1.0);
    EXPECT_EQ(curve.Values(), (Doubles{0, 8, 10}));
    curve.SelectKey(1, true);
    curve.mCurrentValue = 9;
    curve.SetChangedValueKey(0.502, 0, 0, -1.0);
    EXPECT_EQ(curve.Positions(), (Doubles{0, 0.502, 1}));
    EXPECT_TRUE(curve.GetKeys()[1].mbSelected) << "the key stays selected";
    curve.mbTimeDepend.mValue = false;
    curve.mCurrentValue = 5;
    curve.SetChangedValueKey(-1.0, 0, 0, -1.0);
    EXPECT_EQ(curve.GetKeyFrameValue(0), 5) << "constant curves keep their value at 0";
}

TEST_F(Parameters, DeletingComputesTheNeighbourAgainstAFarPoint) {
    const unsigned a = INTERP_HERMITE_AUTO;
    Curve curve({MakeKey(0, 0, a), MakeKey(0.5, 4, a), MakeKey(1, 255, a)});
    const wxString before = curve.Serialize();
    EXPECT_TRUE(curve.DeleteKey(1.0, -1.0));
    EXPECT_DOUBLE_EQ(curve.GetKeyFrameValueD1(1), 1.0) << "255 over 255";
    const wxString after = curve.Serialize();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(curve.Serialize(), before);
    GCUndoList.ExecCurrent();
    EXPECT_EQ(curve.Serialize(), after);
    curve.InsertKey(0.75, 2, 0, 0);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(curve.Serialize(), after) << "undo brings back even that tangent";
    EXPECT_FALSE(curve.DeleteKey(0.3, -1.0));
}

TEST_F(Parameters, TheOnlyKeyIsNeverDeleted) {
    Curve curve({MakeKey(0.4, 6)});
    EXPECT_FALSE(curve.DeleteKey(0.4, -1.0));
    EXPECT_EQ(curve.Positions(), (Doubles{0}));
    EXPECT_EQ(curve.Values(), (Doubles{6}));
    EXPECT_FALSE(GCUndoList.IsUndoable());
    // A key far beyond the film is not mistaken for the one that goes.
    Curve far({MakeKey(0, 1), MakeKey(300, 2), MakeKey(400, 3)});
    far.ExecCommandDeleteKey(0);
    EXPECT_EQ(far.Values(), (Doubles{2, 3}));
}

TEST_F(Parameters, AWritePastTheUndoListDoesNotLeadUndoAstray) {
    Curve curve({MakeKey(0.4, 1)});
    const wxString before = curve.Serialize();
    curve.InsertKey(0.8, 2, 0, 0);
    curve.DeleteKey(0.4, -1.0);
    curve.DeleteKey(0.8, -1.0); // the only key: goes to the start with no step
    GCUndoList.UndoCurrent();
    EXPECT_EQ(curve.Positions(), (Doubles{0.4, 0.8}));
    GCUndoList.UndoCurrent();
    EXPECT_EQ(curve.Serialize(), before);
}

TEST_F(Parameters, FlippingKeepsTheOrder) {
    Curve curve({MakeKey(0, 1), MakeKey(0.4, 2), MakeKey(0.5, 3, INTERP_STEP)});
    const wxString before = curve.Serialize();
    curve.Flip();
    EXPECT_EQ(curve.Positions(), (Doubles{0.5, 0.6, 1}));
    EXPECT_EQ(curve.Values(), (Doubles{3, 2, 1}));
    EXPECT_EQ(curve.mName, "x");
    GCUndoList.UndoCurrent();
    EXPECT_EQ(curve.Serialize(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(Parameters, SwitchingTimeDependenceLeavesTheValueOnShow) {
    EventRecorder events;
    Curve curve({MakeKey(0, 0), MakeKey(1, 10)});
    const wxString before = curve.Serialize();
    Parameters_cls::msCurrentDoubleIndex = 0.3;
    curve.GetInterpolatedValue(-1.0);
    curve.SetTimeDependent(false);
    EXPECT_EQ(curve.Positions(), (Doubles{0.3}));
    EXPECT_EQ(curve.Values(), (Doubles{3}));
    EXPECT_EQ(curve.GetKeys()[0].mInterpType, INTERP_HERMITE_AUTO);
    EXPECT_FALSE(curve.mbTimeDepend.mValue);
    EXPECT_EQ(events.Take().back(), ID_FILTER_REFRESH) << "the curve's mask is 4102";
    curve.SetTimeDependent(false);
    EXPECT_EQ(curve.GetKeyNumber(), 1);
    GCUndoList.UndoCurrent();
    EXPECT_FALSE(curve.mbTimeDepend.mValue);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(curve.Serialize(), before);
}

TEST_F(Parameters, WithoutCommandsEditsLeaveNoStep) {
    Parameters_cls::msbUndoCommandMake = false;
    Curve curve({MakeKey(0, 1)});
    curve.SetKey(MakeKey(0.5, 2), -1);
    curve.SetKey(MakeKey(0.25, 3), -1);
    curve.DeleteKey(0.5, -1);
    EXPECT_EQ(curve.Values(), (Doubles{1, 3}));
    curve.SetTimeDependent(false);
    curve.Flip();
    EXPECT_EQ(GCUndoList.GetStepCount(), 0u);
}

TEST_F(Parameters, CommandsFindACurveThatWasRebuilt) {
    auto* old = new Curve({MakeKey(0, 1)});
    old->InsertKey(0.5, 2, 0, 0);
    Curve rebuilt({MakeKey(0, 1), MakeKey(0.5, 2)});
    delete old;
    GCUndoList.UndoCurrent();
    EXPECT_EQ(rebuilt.GetKeyNumber(), 2) << "nobody knows the curve any more: nothing happens";
    GCUndoList.ExecCurrent();
    GParamHooks.mFindParam = [&](const wxString& id) { return id == "Group x" ? &rebuilt : nullptr; };
    GCUndoList.UndoCurrent();
    EXPECT_EQ(rebuilt.GetKeyNumber(), 1);
    EXPECT_TRUE(Parameters_cls::IsAlive(&rebuilt));
}

TEST_F(Parameters, ARegionSelectsWithItsBounds) {
    Curve curve({MakeKey(0.25, 1), MakeKey(0.5, 2), MakeKey(0.75, 3)});
    EXPECT_TRUE(curve.SelectKeyFrameRegion(0.5, 0.25, 0, 0, false));
    EXPECT_EQ(curve.GetSelectedKeyNum(), 2) << "equal values mean any";
    EXPECT_TRUE(curve.SelectKeyFrameRegion(0, 1, 1.5, 9, true));
    EXPECT_TRUE(curve.GetKeys()[0].mbSelected);
    EXPECT_FALSE(curve.GetKeys()[1].mbSelected);
    EXPECT_TRUE(curve.GetKeys()[2].mbSelected);
    EXPECT_FALSE(curve.SelectKeyFrameRegion(0.6, 0.7, 0, 0, false));
}

} // namespace
