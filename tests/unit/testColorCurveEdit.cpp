// Editing a colour curve: gestures, single steps, selection, and what undo makes of them. Labels of an axis.
#include "COLORCURVE/EDITOR/clsColorCurveEdit.h"

#include <cmath>
#include <limits>
#include <memory>

#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COLORCURVE/EDITOR/clsTics.h"
#include "ParamTest.h"

namespace {

constexpr double kTent[3][5] = {{0, 0, 0, 0, 1}, {0.5, 1, 0.5, 0.25, 1}, {1, 0, 0, 0, 1}};

class ColorCurveEdit : public ParamTest {
protected:
    ColorCurveEdit() : mCurve("Test", "label", "1 1 1 1", 3, kTent) {
        mEdit.SetCurve(&mCurve);
        Parameters_cls::SetFrameNumber(3, 1); // a grid that keys of colours must not keep to
    }
    const std::vector<KeyFrame_cls>& Keys(size_t c) const {
        return mCurve.mpCParamGroup->mVParams[c].GetKeys();
    }
    void Move(double dPosition, double dValue, bool bLinked) {
        mEdit.Begin();
        mEdit.MoveSelected(dPosition, dValue, bLinked);
        mEdit.Commit();
    }
    /// One undo leads back to `before`, one redo to what is now.
    void ExpectOneStep(const wxString& before) {
        const wxString now = mCurve.Serialize();
        EXPECT_NE(now, before);
        GCUndoList.UndoCurrent();
        EXPECT_EQ(mCurve.Serialize(), before);
        GCUndoList.ExecCurrent();
        EXPECT_EQ(mCurve.Serialize(), now);
    }

    ColorCurve_cls mCurve;
    ColorCurveEdit_cls mEdit;
};

} // namespace

TEST_F(ColorCurveEdit, ADragIsOneStepAndShowsWhileItLasts) {
    const wxString before = mCurve.Serialize();
    mEdit.SelectKey(0, 1, false, false);
    mEdit.Begin();
    for (const double d : {0.1, 0.2, 0.3}) {
        mEdit.MoveSelected(d, -d, true);
        EXPECT_NEAR(Keys(0)[1].mDoubleIndex, 0.5 + d, 1e-9);
        EXPECT_NEAR(Keys(2)[1].mDoubleIndex, 0.5 + d, 1e-9) << "linked channels come along in position";
        EXPECT_NEAR(Keys(0)[1].mValue, 1.0 - d, 1e-9);
        EXPECT_EQ(Keys(2)[1].mValue, 0.25);
        EXPECT_FALSE(GCUndoList.IsUndoable());
    }
    mEdit.Commit();
    ExpectOneStep(before);
}

TEST_F(ColorCurveEdit, CancelLeavesNothing) {
    const wxString before = mCurve.Serialize();
    mEdit.SelectAll(true);
    mEdit.Begin();
    mEdit.MoveSelected(0.2, 0.1, false);
    mEdit.Cancel();
    EXPECT_EQ(mCurve.Serialize(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    Move(0.0, 0.0, true);
    EXPECT_FALSE(GCUndoList.IsUndoable()) << "a gesture that changed nothing is no step";
}

TEST_F(ColorCurveEdit, KeysStayWithinTheScaleAndTheColours) {
    mEdit.SelectStop(0.5, false, false);
    Move(5.0, 5.0, true);
    EXPECT_EQ(Keys(0).size(), 2u) << "the key that was met is gone";
    EXPECT_EQ(Keys(1)[1].mDoubleIndex, 1.0);
    EXPECT_EQ(Keys(1)[1].mValue, 1.0);
    mEdit.SelectAll(true);
    Move(-0.5, 0.0, true);
    EXPECT_EQ(Keys(0)[1].mDoubleIndex, 1.0) << "selected keys keep their distances";
}

TEST_F(ColorCurveEdit, UnlinkedKeysMoveAlone) {
    mEdit.SelectKey(1, 1, false, false);
    Move(0.0314, 0.0, false);
    EXPECT_NEAR(Keys(1)[1].mDoubleIndex, 0.531, 1e-9) << "on the editor's grid, not the film's";
    EXPECT_EQ(Keys(0)[1].mDoubleIndex, 0.5);
    EXPECT_EQ(mEdit.GetStops().size(), 4u);
}

TEST_F(ColorCurveEdit, InsertKeepsTheColours) {
    SetKind(mCurve.mpCParamGroup->mVParams[0], 0, INTERP_STEP);
    const wxString before = mCurve.Serialize();
    float old[4];
    mCurve.GetCurveColor(old, 0.25f);
    ASSERT_TRUE(mEdit.InsertKey(-1, 0.25));
    ASSERT_EQ(Keys(0).size(), 4u);
    EXPECT_EQ(Keys(0)[1].mInterpType, unsigned(INTERP_STEP)) << "the kind of the split segment";
    float now[4];
    mCurve.GetCurveColor(now, 0.25f);
    for (int c = 0; c < 4; ++c)
        EXPECT_FLOAT_EQ(now[c], old[c]);
    EXPECT_EQ(mEdit.GetSelectedCount(), 4) << "what was inserted is selected";
    ExpectOneStep(before);
    EXPECT_FALSE(mEdit.InsertKey(-1, 0.25)) << "there is one";
    ASSERT_TRUE(mEdit.InsertKey(3, 0.75));
    EXPECT_EQ(Keys(3).size(), 5u);
    EXPECT_EQ(Keys(0).size(), 4u);
}

TEST_F(ColorCurveEdit, DeleteLeavesAKeyInEachChannel) {
    const wxString before = mCurve.Serialize();
    mEdit.SelectStop(0.5, false, false);
    ASSERT_TRUE(mEdit.DeleteSelected());
    EXPECT_EQ(Keys(0).size(), 2u);
    ExpectOneStep(before);
    mEdit.SelectAll(true);
    ASSERT_TRUE(mEdit.DeleteSelected());
    for (size_t c = 0; c < 4; ++c)
        EXPECT_EQ(Keys(c).size(), 1u);
    mEdit.SelectAll(true);
    EXPECT_FALSE(mEdit.DeleteSelected());
}

TEST_F(ColorCurveEdit, KindsTangentsValuesAndStopsAreStepsToo) {
    wxString before = mCurve.Serialize();
    mEdit.SelectAll(true);
    ASSERT_TRUE(mEdit.SetKind(INTERP_HERMITE_SEMIAUTO));
    EXPECT_EQ(Keys(0)[1].mValueD2, 1.0) << "a tangent of its own, not a flat one";
    ExpectOneStep(before);
    before = mCurve.Serialize();
    mEdit.Begin();
    mEdit.SetTangent(0, 1, 2.5);
    mEdit.Commit();
    EXPECT_EQ(Keys(0)[1].mValueD1, 2.5);
    EXPECT_EQ(Keys(0)[1].mInterpType, unsigned(INTERP_HERMITE));
    ExpectOneStep(before);
    before = mCurve.Serialize();
    mEdit.SelectKey(2, 1, false, false);
    ASSERT_TRUE(mEdit.SetSelectedValue(2, 0.75));
    EXPECT_EQ(Keys(2)[1].mValue, 0.75);
    ExpectOneStep(before);
    before = mCurve.Serialize();
    const float color[4] = {0.1f, 0.2f, 0.3f, 0.4f};
    ASSERT_TRUE(mEdit.SetStopColor(0.5, color, false));
    EXPECT_FLOAT_EQ(float(Keys(1)[1].mValue), 0.2f);
    EXPECT_EQ(Keys(3)[1].mValue, 1.0) << "alpha stays";
    ExpectOneStep(before);
    mEdit.ShowChannel(1, false);
    const float other[4] = {0.5f, 0.9f, 0.6f, 0.4f};
    ASSERT_TRUE(mEdit.SetStopColor(0.5, other, false));
    EXPECT_FLOAT_EQ(float(Keys(0)[1].mValue), 0.5f);
    EXPECT_FLOAT_EQ(float(Keys(1)[1].mValue), 0.2f) << "a hidden channel stays";
    mEdit.ShowChannel(1, true);
    mEdit.SelectKey(0, 2, false, false);
    ASSERT_TRUE(mEdit.SetSelectedPosition(0.9, false));
    EXPECT_NEAR(Keys(0)[2].mDoubleIndex, 0.9, 1e-9);
}

TEST_F(ColorCurveEdit, AStopsChannelsHaveTheirOwnValuesAndHiddenOnesAreLeftAlone) {
    mEdit.ShowChannel(3, false);
    mEdit.SelectStop(0.5, false, false);
    EXPECT_EQ(mEdit.GetSelectedCount(), 3);
    double value = 0.0;
    ASSERT_TRUE(mEdit.GetSelectedValue(1, &value));
    EXPECT_EQ(value, Keys(1)[1].mValue);
    EXPECT_FALSE(mEdit.GetSelectedValue(3, &value));
    wxString before = mCurve.Serialize();
    const double green = Keys(1)[1].mValue;
    const double alpha = Keys(3)[1].mValue;
    ASSERT_TRUE(mEdit.SetSelectedValue(0, 0.125));
    EXPECT_EQ(Keys(0)[1].mValue, 0.125);
    EXPECT_EQ(Keys(1)[1].mValue, green);
    EXPECT_EQ(Keys(3)[1].mValue, alpha);
    ExpectOneStep(before);
    // A drag of a field, and of the keys themselves.
    mEdit.SelectStop(0.5, false, false);
    before = mCurve.Serialize();
    mEdit.Begin();
    mEdit.MoveSelected(0.0, -0.1, false, 0);
    EXPECT_EQ(Keys(1)[1].mValue, green);
    mEdit.MoveSelected(0.25, -0.1, true);
    mEdit.Commit();
    EXPECT_EQ(Keys(3)[1].mValue, alpha);
    EXPECT_NEAR(Keys(3)[1].mDoubleIndex, 0.75, 1e-9) << "a linked channel comes along";
    ExpectOneStep(before);
    mEdit.ShowChannel(3, true);
    mEdit.SelectAll(true);
    mEdit.ShowChannel(0, false);
    EXPECT_FALSE(mEdit.GetSelectedValue(0, &value)) << "what is hidden is not edited unseen";
    mEdit.SelectAll(true);
    EXPECT_FALSE(mEdit.GetSelectedValue(0, &value));
}

TEST_F(ColorCurveEdit, SettingsAreOneStepAGesture) {
    const wxString before = mCurve.Serialize();
    ColorSettings_st settings = mCurve.GetSettings();
    for (const float max : {2.0f, 3.0f, 4.0f}) {
        settings.mScalingMax = max;
        mEdit.SetSettings(settings, max == 4.0f);
        EXPECT_EQ(mCurve.mScalingMax.mValue, max);
    }
    ExpectOneStep(before);
    settings.mScalingMin = -1.0f;
    mEdit.SetSettings(settings, false);
    mEdit.EndGesture(); // as undo does before it looks at the list
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mCurve.mScalingMin.mValue, 0.0f);
    EXPECT_EQ(mCurve.mScalingMax.mValue, 4.0f);
}

TEST_F(ColorCurveEdit, ACurveThatGoesLeavesAnEditorWithoutOne) {
    auto gone = std::make_unique<ColorCurve_cls>("Gone", "label", "1 1 1 1");
    mEdit.SetCurve(gone.get());
    mEdit.SelectAll(true);
    Move(0.0, -0.5, true);
    gone->SetSettingsCommand({true, {0, 0, 0, 1}, 2, 3, 4}, gone->GetSettings());
    mEdit.Begin();
    mEdit.MoveSelected(0.0, -0.1, true);
    gone.reset();
    EXPECT_EQ(mEdit.GetPCCurve(), nullptr);
    mEdit.MoveSelected(0.1, 0.1, true);
    mEdit.Commit();
    EXPECT_FALSE(mEdit.InsertKey(-1, 0.5));
    EXPECT_FALSE(mEdit.DeleteSelected());
    mEdit.SelectAll(true);
    EXPECT_EQ(mEdit.GetSelectedCount(), 0);
    while (GCUndoList.IsUndoable())
        GCUndoList.UndoCurrent(); // its steps do nothing
    while (GCUndoList.IsRedoable())
        GCUndoList.ExecCurrent();
}

TEST_F(ColorCurveEdit, FitRangeAndTemplatesGoThroughTheEditor) {
    ColorCurveCtrl_cls ctrl;
    EXPECT_FALSE(ctrl.FitRange(&mCurve, false)) << "nobody knows the data";
    ctrl.mCEdit.SetCurve(&mCurve);
    float high = 7.0f;
    bool bAsked = false;
    ctrl.mHooks.mRange = [&](const ColorCurve_cls&, bool bSequence, float* pLow, float* pHigh) {
        bAsked = bSequence;
        *pLow = -3.0f;
        *pHigh = high;
        return true;
    };
    const wxString before = mCurve.Serialize();
    EXPECT_FALSE(ctrl.FitRange(nullptr, true));
    EXPECT_TRUE(ctrl.FitRange(&mCurve, true));
    EXPECT_TRUE(bAsked);
    EXPECT_EQ(mCurve.mScalingMin.mValue, -3.0f);
    EXPECT_EQ(mCurve.mScalingMax.mValue, 7.0f);
    ExpectOneStep(before);
    high = -3.0f;
    EXPECT_TRUE(ctrl.FitRange(&mCurve, false));
    EXPECT_EQ(mCurve.mScalingMax.mValue, -2.0f) << "one value alone has no range";
    const wxString plain = mCurve.Serialize();
    ColorCurve_cls chosen("Template", "T", "0 0 0 0");
    ctrl.mHooks.mIsDriven = [](const ColorCurve_cls&) { return true; };
    ctrl.TakeTemplate(chosen);
    EXPECT_FALSE(mCurve.IsConstant());
    EXPECT_EQ(Keys(0).size(), 2u);
    EXPECT_EQ(mCurve.mScalingMin.mValue, -3.0f);
    ExpectOneStep(plain);
}

TEST(Tics, RoundNumbersThatTheirLabelsTellApart) {
    const auto labels = [](double low, double high, int most) {
        std::string text;
        for (const Tics_cls::Tic_st& tic : Tics_cls(200, 20, low, high).GetTics(most))
            text += tic.mLabel.ToStdString() + " ";
        return text;
    };
    EXPECT_EQ(labels(0, 1, 5), "0.0 0.2 0.4 0.6 0.8 1.0 ");
    EXPECT_EQ(labels(1, 0, 2), "0.0 0.5 1.0 ") << "an axis that runs down";
    EXPECT_EQ(labels(-7, 12, 5), "-5 0 5 10 ");
    EXPECT_EQ(labels(1000.1, 1000.2, 2), "1000.10 1000.15 1000.20 ");
    EXPECT_EQ(labels(0, 3e7, 3), "0 1e+07 2e+07 3e+07 ");
    EXPECT_EQ(labels(2e-7, 4e-7, 2), "2e-07 3e-07 4e-07 ");
    const double infinity = std::numeric_limits<double>::infinity();
    for (const auto& range : {std::pair{1.0, 1.0}, std::pair{0.0, infinity}, std::pair{std::nan(""), 1.0},
                              std::pair{-infinity, infinity}, std::pair{1e30, 1e30 * (1 + 1e-15)}})
        EXPECT_EQ(labels(range.first, range.second, 5), "");
    EXPECT_LT(Tics_cls(200, 20, -1e300, 1e300).GetTics(5).size(), 20u);
    const Tics_cls axis(101, 20, 5, 15);
    EXPECT_DOUBLE_EQ(axis.ToX(10), 50.0);
}
