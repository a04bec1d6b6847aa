// What the time line does to several curves at once, and drags that follow the mouse.
#include <cmath>

#include "ParamTest.h"
#include "WIDGET/TIMELINE/GraphEdit.h"
#include "WIDGET/TIMELINE/KeyEdits.h"
#include "WIDGET/TIMELINE/clsLiveEdit.h"
#include "WIDGET/TIMELINE/clsParamTL.h"
#include "WIDGET/TIMELINE/clsParametersPanel.h"

namespace {

const wxString kAxes[] = {"X", "Y", "Z"};

class KeyEdits : public ParamTest {
protected:
    static void SetKeys(Parameters_cls& curve, const std::vector<int>& frames,
                        unsigned kind = INTERP_LINEAR) {
        curve.mbTimeDepend.mValue = true;
        std::vector<KeyFrame_cls> keys(frames.size());
        for (size_t i = 0; i < frames.size(); ++i)
            keys[i].Set(frames[i] / 100.0, kind, 2.0 * frames[i], 0.0, 1.0, false);
        curve.ExecCommandSetKeys(keys);
    }
    static std::vector<long> Frames(const Parameters_cls& curve) {
        std::vector<long> frames;
        for (const KeyFrame_cls& key : curve.GetKeys())
            frames.push_back(std::lround(key.mDoubleIndex * 100.0));
        return frames;
    }
    using List = std::vector<long>;
    Curves All() { return CurvesOf(mCGroup); }
    Parameters_cls& X() { return mCGroup.mVParams[0]; }
    Parameters_cls& Y() { return mCGroup.mVParams[1]; }

    ParamGroup_cls mCGroup{"Place", 3, kAxes, 6, false};
};

TEST_F(KeyEdits, InsertingCompletesKeysAndLeavesTheRunOfTheCurve) {
    SetKeys(X(), {0, 40, 100}, INTERP_HERMITE_AUTO);
    SetKeys(Y(), {0, 20, 100});
    const double before = X().Evaluate(0.2, 0.01);
    const wxString text = mCGroup.Serialize();
    InsertKeys({&X(), &Y()}, 0.2);
    EXPECT_EQ(Frames(X()), List({0, 20, 40, 100}));
    EXPECT_EQ(Frames(Y()), List({0, 20, 100})) << "one was there";
    EXPECT_DOUBLE_EQ(X().GetKeyFrameValue(1), before);
    EXPECT_EQ(GCUndoList.GetStepCount(), 3u) << "one step with its two ends";
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mCGroup.Serialize(), text);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(KeyEdits, PastedKeysComeToTheClockInOneStep) {
    SetKeys(X(), {10, 20, 40});
    SelectKeys({&X()}, 0.15, 0.5, SelectMode::SET);
    const wxString text = CopiedKeys({&X()});
    const wxString before = mCGroup.Serialize();
    GCUndoList.Clear();
    EXPECT_FALSE(PasteKeys({&X()}, "some text\n0.5 1 2 3 4\n", 0.6));
    EXPECT_FALSE(PasteKeys({&X()}, "Parameter_X\nitemnum 1\nno key\n", 0.6));
    ASSERT_TRUE(PasteKeys({&X()}, text, 0.6));
    EXPECT_EQ(Frames(X()), List({10, 20, 40, 60, 80}));
    EXPECT_DOUBLE_EQ(X().GetKeyFrameValue(4), 80.0) << "that of frame 40";
    EXPECT_EQ(X().GetSelectedKeyNum(), 2);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mCGroup.Serialize(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    // A single curve's keys suit any curve; what lies behind the film's end stays away.
    ASSERT_TRUE(PasteKeys({&Y()}, text, 0.9));
    EXPECT_TRUE(IsAnimated(Y()));
    EXPECT_EQ(Frames(Y()).back(), 90);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mCGroup.Serialize(), before);
    // Several go by their names.
    SetKeys(Y(), {30});
    SelectKeys({&X(), &Y()}, 0.0, 1.0, SelectMode::SET);
    const wxString both = CopiedKeys({&X(), &Y()});
    ASSERT_TRUE(PasteKeys({&Y(), &X()}, both, 0.5));
    EXPECT_EQ(Frames(X()), List({10, 20, 40, 50, 60, 80}));
    EXPECT_EQ(Frames(Y()), List({30, 70}));
}

TEST_F(KeyEdits, CopiesMoveAndTheKeysStay) {
    SetKeys(X(), {10, 20, 40});
    SelectKeys({&X()}, 0.15, 0.5, SelectMode::SET);
    const wxString before = mCGroup.Serialize();
    GCUndoList.Clear();
    CurveGesture_cls gesture;
    gesture.Begin({&X()}, false);
    gesture.MoveCopies();
    gesture.Move(0.2, 0.0);
    EXPECT_EQ(Frames(X()), List({10, 20, 40, 60})) << "a copy lies on the key at 40";
    gesture.Move(0.3, 0.0);
    ASSERT_TRUE(gesture.Commit());
    EXPECT_EQ(Frames(X()), List({10, 20, 40, 50, 70}));
    EXPECT_EQ(X().GetSelectedKeyNum(), 2);
    EXPECT_TRUE(X().GetKeys()[4].mbSelected);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mCGroup.Serialize(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(KeyEdits, SelectedKeysMoveTogetherAndReplaceWhatIsInTheirWay) {
    SetKeys(X(), {10, 20, 30, 90});
    SelectKeys({&X()}, 0.0, 0.3, SelectMode::SET);
    const wxString before = mCGroup.Serialize();
    const auto move = [this](double dT, double dV) {
        CurveGesture_cls gesture;
        gesture.Begin({&X()}, false);
        gesture.Move(dT, dV);
        return gesture.Commit();
    };
    EXPECT_FALSE(move(0.004, 0.0)) << "less than half a step";
    EXPECT_FALSE(GCUndoList.IsUndoable());
    EXPECT_TRUE(move(0.104, 0.5));
    EXPECT_EQ(Frames(X()), List({20, 30, 40, 90})) << "on the film's grid";
    EXPECT_DOUBLE_EQ(X().GetKeyFrameValue(2), 60.5);
    EXPECT_TRUE(move(-0.3, 0.0));
    EXPECT_EQ(Frames(X()), List({0, 10, 20, 90})) << "the first stops them all at the film's start";
    EXPECT_TRUE(move(0.7, 0.0));
    EXPECT_EQ(Frames(X()), List({70, 80, 90}));
    EXPECT_DOUBLE_EQ(X().GetKeyFrameValue(2), 60.5) << "the moved one stays";
    EXPECT_EQ(X().GetSelectedKeyNum(), 3);
    for (int i = 0; i < 3; ++i)
        GCUndoList.UndoCurrent();
    EXPECT_EQ(mCGroup.Serialize(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(KeyEdits, AStepOfFiftyFiveIsNotFiftyFour) {
    // 1 / (1.0 / 5 / 11) falls a hair short of 55.
    Parameters_cls::SetFrameNumber(5, 11);
    Curve curve({MakeKey(0, 1), MakeKey(1.0 / 55, 2)});
    curve.SelectKey(1, true);
    CurveGesture_cls gesture;
    gesture.Begin({&curve}, false);
    gesture.Move(2.0 / 55, 0.0);
    ASSERT_TRUE(gesture.Commit());
    EXPECT_DOUBLE_EQ(curve.GetKeyFrameDoubleIndex(1), 3.0 / 55);
}

TEST_F(KeyEdits, DeletingTakesTheSelectedKeysButTheLast) {
    mCGroup.mbLinked = false;
    SetKeys(X(), {10, 50, 51, 90});
    Parameters_cls::SetFrameNumber(10, 1); // now two keys share a frame
    const wxString before = mCGroup.Serialize();
    X().SelectKey(2, true);
    X().SelectKey(3, true);
    ASSERT_TRUE(DeleteSelectedKeys({&X()}));
    EXPECT_EQ(Frames(X()), List({10, 50}));
    EXPECT_FALSE(DeleteSelectedKeys({&X()})) << "none is selected";
    SelectKeys({&X()}, 0.0, 1.0, SelectMode::SET);
    ASSERT_TRUE(DeleteSelectedKeys({&X()}));
    EXPECT_EQ(Frames(X()), List({0})) << "the one that stays goes to the start";
    GCUndoList.UndoCurrent();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mCGroup.Serialize(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(KeyEdits, KindsOfSelectedKeysChangeAndTheUsersSlopeComesBack) {
    ::SetKeys(X(), {MakeKey(0, 0, INTERP_HERMITE, 7, 8), MakeKey(0.5, 1), MakeKey(1, 4)});
    X().mbTimeDepend.mValue = true;
    const wxString before = mCGroup.Serialize();
    EXPECT_FALSE(SetSelectedKinds({&X()}, INTERP_STEP)) << "none is selected";
    X().SelectKey(0, true);
    EXPECT_FALSE(SetSelectedKinds({&X()}, INTERP_HERMITE)) << "it is so already";
    EXPECT_FALSE(GCUndoList.IsUndoable());
    ASSERT_TRUE(SetSelectedKinds({&X()}, INTERP_HERMITE_AUTO));
    EXPECT_EQ(X().GetKeyFrameValueD1(0), 2);
    X().SelectKey(2, true);
    ASSERT_TRUE(SetSelectedKinds({&X()}, INTERP_STEP));
    EXPECT_EQ(X().GetKeys()[1].mInterpType, INTERP_LINEAR);
    EXPECT_EQ(X().GetKeys()[2].mInterpType, INTERP_STEP);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(X().GetKeys()[0].mInterpType, INTERP_HERMITE_AUTO);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mCGroup.Serialize(), before);
}

TEST_F(KeyEdits, ConstantsBecomeAnimatedAndBackAtTheValueOnShow) {
    X().ExecCommandInitSet(7.0);
    const wxString text = mCGroup.Serialize();
    Parameters_cls::msCurrentDoubleIndex = 0.3;
    X().GetInterpolatedValue(0.9); // the cache is of another time
    InsertKeys({&X()}, 0.6);
    EXPECT_TRUE(IsAnimated(X()));
    EXPECT_EQ(Frames(X()), List({30, 60}));
    EXPECT_DOUBLE_EQ(ValueNow(X()), 7.0);
    SetValueNow(X(), 9.0);
    RemoveKeys({&X()}, 0.6);
    EXPECT_EQ(Frames(X()), List({30}));
    RemoveKeys({&X()}, 0.3);
    EXPECT_FALSE(IsAnimated(X())) << "its last key went";
    EXPECT_DOUBLE_EQ(ValueNow(X()), 9.0);
    while (GCUndoList.IsUndoable())
        GCUndoList.UndoCurrent();
    EXPECT_EQ(mCGroup.Serialize(), text);
}

TEST_F(KeyEdits, ToggleCompletesFirstAndRemovesThen) {
    SetKeys(X(), {0, 50});
    SetKeys(Y(), {0, 100});
    ToggleKeys({&X(), &Y()}, 0.5);
    EXPECT_EQ(Frames(Y()), List({0, 50, 100}));
    ToggleKeys({&X(), &Y()}, 0.5);
    EXPECT_EQ(Frames(X()), List({0}));
    EXPECT_EQ(Frames(Y()), List({0, 100}));
}

TEST_F(KeyEdits, AValueKeepsKindAndTangentOfItsKey) {
    SetKeys(X(), {0, 50, 100}, INTERP_HERMITE);
    KeyFrame_cls key = X().GetKeys()[1];
    key.mValueD1 = 3.5;
    X().SetKey(key, Parameters_cls::kCurrent);
    SetKeys(Y(), {0, 100});
    Parameters_cls::msCurrentDoubleIndex = 0.5;
    SetValueNow(X(), -4.0);
    EXPECT_DOUBLE_EQ(X().GetKeyFrameValue(1), -4.0);
    EXPECT_DOUBLE_EQ(X().GetKeyFrameValueD1(1), 3.5);
    EXPECT_EQ(X().GetKeys()[1].mInterpType, unsigned(INTERP_HERMITE));
    EXPECT_EQ(Frames(Y()), List({0, 50, 100})) << "linked curves have their keys together";
    EXPECT_DOUBLE_EQ(Y().GetKeyFrameValue(1), 100.0) << "on their own run";
    EXPECT_FALSE(IsAnimated(mCGroup.mVParams[2])) << "a constant stays one";
    const unsigned steps = GCUndoList.GetCurrent();
    SetValueNow(X(), -4.0);
    SetValueNow(X(), std::nan(""));
    EXPECT_EQ(GCUndoList.GetCurrent(), steps) << "nothing new is no step";
}

TEST_F(KeyEdits, NeighboursAreFoundOverAllAnimatedCurves) {
    SetKeys(X(), {10, 50});
    SetKeys(Y(), {30, 80});
    Y().mbTimeDepend.mValue = false;
    EXPECT_DOUBLE_EQ(NeighbourKey(All(), 0.2, 1), 0.5) << "a constant has no keys";
    Y().mbTimeDepend.mValue = true;
    EXPECT_DOUBLE_EQ(NeighbourKey(All(), 0.2, 1), 0.3);
    EXPECT_DOUBLE_EQ(NeighbourKey(All(), 0.3, 1), 0.5) << "not the one that stands there";
    EXPECT_DOUBLE_EQ(NeighbourKey(All(), 0.3, -1), 0.1);
    EXPECT_DOUBLE_EQ(NeighbourKey(All(), 0.1, -1), 0.1) << "none: it stays";
}

TEST_F(KeyEdits, FoldersCountEachCurveOnce) {
    ParamGroup_cls folder("Folder", 0, nullptr, 6, false);
    folder.mVpCChilds = {&mCGroup, &mCGroup};
    EXPECT_EQ(CurvesOf(folder).size(), 3u);
    EXPECT_EQ(WithLinked({&X(), &Y()}).size(), 3u);
    mCGroup.mbLinked = false;
    EXPECT_EQ(WithLinked({&X(), &Y()}).size(), 2u);
}

TEST_F(KeyEdits, SelectingTogglesAndNamesTheCommonKind) {
    SetKeys(X(), {10, 50, 90});
    SetKeys(Y(), {10}, INTERP_STEP);
    SelectKeys({&X()}, 0.4, 1.0, SelectMode::SET);
    EXPECT_EQ(X().GetSelectedKeyNum(), 2);
    EXPECT_EQ(CommonKind(All()), int(INTERP_LINEAR));
    SelectKeys({&X(), &Y()}, 0.0, 0.6, SelectMode::TOGGLE);
    EXPECT_TRUE(X().GetKeys()[0].mbSelected);
    EXPECT_FALSE(X().GetKeys()[1].mbSelected);
    EXPECT_EQ(CommonKind(All()), -1) << "a line and a step";
    EXPECT_EQ(WithSelectedKeys(All()), Curves({&X(), &Y()}));
    EXPECT_TRUE(CopiedKeys(All()).Contains("Parameter_Y\nitemnum 1\n"));
    DeselectKeys(All());
    EXPECT_EQ(CopiedKeys(All()), "");
}

TEST_F(KeyEdits, ALiveEditIsOneStepOrNone) {
    SetKeys(X(), {0, 100});
    Parameters_cls::msCurrentDoubleIndex = 0.25;
    const wxString text = mCGroup.Serialize();
    {
        LiveEdit_cls edit(All());
        for (const double value : {1.0, 2.0, 3.0}) {
            edit.Try([&] { SetValueNow(X(), value); });
            EXPECT_DOUBLE_EQ(ValueNow(X()), value) << "seen at once";
            EXPECT_EQ(X().GetKeyNumber(), 3);
        }
        EXPECT_FALSE(GCUndoList.IsUndoable());
        edit.Commit([&] { SetValueNow(X(), 3.0); });
        EXPECT_TRUE(Parameters_cls::msbUndoCommandMake);
    }
    EXPECT_DOUBLE_EQ(ValueNow(X()), 3.0) << "the end takes nothing back";
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mCGroup.Serialize(), text);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    {
        LiveEdit_cls edit(All());
        edit.Try([&] { SetValueNow(X(), 5.0); });
    }
    EXPECT_EQ(mCGroup.Serialize(), text) << "left without an end it is taken back";
    LiveEdit_cls edit(All());
    edit.Try([&] { SetValueNow(X(), 5.0); });
    SetKeys(Y(), {0, 30, 60});
    InsertKeys({&Y()}, 0.45);
    edit.Cancel();
    EXPECT_EQ(Frames(Y()), List({0, 30, 45, 60})) << "a step from elsewhere is not undone by a drag";
}

TEST_F(KeyEdits, KeysAreHitWhereTheyAreDrawn) {
    SetKeys(X(), {0, 10, 11, 90});
    FrameScale scale;
    scale.mFirst = 0;
    scale.mLast = 100;
    scale.mLeft = 16;
    scale.mWidth = 1000;
    EXPECT_NEAR(ParamTL_cls::ToPixel(scale, 0.1), 116.0, 1e-9);
    EXPECT_DOUBLE_EQ(ParamTL_cls::FindKey({&X()}, scale, 118, 6), 0.10);
    EXPECT_DOUBLE_EQ(ParamTL_cls::FindKey({&X()}, scale, 124, 6), 0.11) << "the nearer of two";
    EXPECT_LT(ParamTL_cls::FindKey({&X()}, scale, 500, 6), 0.0);
    scale.mFirst = 85;
    scale.mLast = 95;
    EXPECT_DOUBLE_EQ(ParamTL_cls::FindKey({&X()}, scale, 516, 6), 0.9);
    X().mbTimeDepend.mValue = false;
    EXPECT_LT(ParamTL_cls::FindKey({&X()}, scale, 516, 6), 0.0);
}

TEST_F(KeyEdits, ValuesAreShortAndNeverMinusZero) {
    EXPECT_EQ(ParametersPanel_cls::GetValueText(-0.0), "0");
    EXPECT_EQ(ParametersPanel_cls::GetValueText(0.5), "0.5");
    EXPECT_EQ(ParametersPanel_cls::GetValueText(1.0 / 3.0), "0.3333");
    EXPECT_EQ(ParametersPanel_cls::GetValueText(-123.45678), "-123.457");
    EXPECT_EQ(ParametersPanel_cls::GetValueText(100.0), "100");
    EXPECT_EQ(ParametersPanel_cls::GetValueText(3e7), "3e+07");
    EXPECT_EQ(ParametersPanel_cls::GetValueText(-0.00001), "-1e-05");
}

} // namespace
