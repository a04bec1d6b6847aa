// What must hold for any sequence of edits: undo and redo pass through exactly the states that were,
// keys stay in order, and a curve read back evaluates as before.
#include <random>

#include "ParamTest.h"
#include "WIDGET/TIMELINE/GraphEdit.h"
#include "WIDGET/TIMELINE/KeyEdits.h"

namespace {

const wxString kSuffixes[] = {"R", "G", "B"};
constexpr size_t kTextEvery = 20;

/// What a group's text is made of, to the last bit. The text itself takes a hundred times as long: it is
/// looked at now and then.
struct State_st {
    explicit State_st(const ParamGroup_cls& group) {
        for (const Parameters_cls& param : group.mVParams) {
            mNumbers.push_back(param.mbTimeDepend.mValue);
            mNumbers.push_back(param.mPeriodic.mValue);
            for (const KeyFrame_cls& key : param.GetKeys())
                mNumbers.insert(mNumbers.end(), {key.mDoubleIndex, double(key.mInterpType), key.mValue,
                                                 key.mValueD1, key.mValueD2});
        }
    }
    bool operator==(const State_st& other) const { return mNumbers == other.mNumbers; }

    std::vector<double> mNumbers;
};

/// Edits a group at random, the way users do, and notes its state after each step.
class Editor {
public:
    /// `keys`: in each curve from the start, some of them at one place as a file may have them.
    explicit Editor(unsigned seed, int keys = 1) : mRandom(seed) {
        for (Parameters_cls& param : mGroup.mVParams) {
            std::vector<KeyFrame_cls> all;
            for (int i = 0; i < keys; ++i)
                all.push_back(MakeKey(i / 3 * 0.023, Value(), unsigned(Below(5)), Value(), 0.5));
            SetKeys(param, all);
        }
        mGroup.mVParams[0].mPeriodic.mValue = 360;
        mGroup.mVParams[1].mPeriodic.mValue = 7;
        Note(0u);
    }

    void Step() {
        const int kind = Below(20);
        if (kind == 0) Parameters_cls::SetFrameNumber(1 + Below(400), 1 + Below(4));
        if (kind == 1) Parameters_cls::msCurrentDoubleIndex = Position();
        if (kind == 2)
            for (int i = Below(4); i > 0; --i)
                GCUndoList.UndoCurrent();
        if (kind == 3) GCUndoList.ExecCurrent();
        if (kind < 4) {
            while (mStates.size() > 1 && mStates.back().mPosition > GCUndoList.GetCurrent())
                mFuture.push_back(mStates.back()), mStates.pop_back();
            while (!mFuture.empty() && mFuture.back().mPosition <= GCUndoList.GetCurrent())
                mStates.push_back(mFuture.back()), mFuture.pop_back();
            ASSERT_TRUE(Is(mStates.back()));
            return;
        }
        const unsigned before = GCUndoList.GetCurrent();
        kind < 15 ? EditCurve(mGroup.mVParams[size_t(Below(3))], kind) : EditGroup(kind);
        for (const Parameters_cls& param : mGroup.mVParams)
            ASSERT_TRUE(IsSorted(param)) << "after kind " << kind;
        ASSERT_EQ(GCUndoList.GetBlockDepth(), 0);
        if (GCUndoList.GetCurrent() == before) {
            ASSERT_TRUE(Is(mStates.back())) << "changed without a step by kind " << kind;
            return;
        }
        mFuture.clear();
        Note(GCUndoList.GetCurrent());
    }

    int Below(int n) { return int(mRandom() % unsigned(n)); }
    double Position() { return Below(3) == 0 ? Below(1001) / 1000.0 : ToFilmGrid(Below(101) / 100.0); }
    double Value() { return Below(4000) / 7.0 - 200; }

    ParamGroup_cls mGroup{"Group", 3, kSuffixes, 8227, true};
    struct Step_st {
        unsigned mPosition; ///< in the undo list
        State_st mState;
        wxString mText; ///< of some
    };
    bool Is(const Step_st& step) {
        return State_st(mGroup) == step.mState && (step.mText.empty() || mGroup.Serialize() == step.mText);
    }

    std::vector<Step_st> mStates;
    std::vector<Step_st> mFuture; ///< what is undone, nearest last

private:
    void Note(unsigned position) {
        const bool bText = mStates.size() % kTextEvery == 0;
        mStates.push_back({position, State_st(mGroup), bText ? mGroup.Serialize() : wxString()});
    }
    void SelectSome(Parameters_cls& param) {
        param.DeselectAll();
        for (int i = 0; i < param.GetKeyNumber(); ++i)
            param.SelectKey(i, Below(3) == 0);
    }
    void DragKeys(Parameters_cls& param, double delta, bool bLinked) {
        CurveGesture_cls gesture;
        gesture.Begin({&param}, bLinked);
        if (Below(4) == 0) gesture.MoveCopies();
        gesture.Move(delta / 2, 0.0);
        gesture.Move(delta, Below(2) ? Value() / 50 : 0.0);
        if (Below(6) == 0)
            gesture.Cancel();
        else
            gesture.Commit();
    }
    void EditCurve(Parameters_cls& param, int kind) {
        const int key = Below(std::max(param.GetKeyNumber(), 1));
        const double delta = (Below(201) - 100) / 150.0;
        SelectSome(param);
        switch (kind) {
        case 4:
        case 5:
            return param.InsertKey(Position(), Value(), Value(), 0.5);
        case 6:
            param.mCurrentValue = Value();
            return param.SetChangedValueKey(Position(), 0, 0, -1);
        case 7:
        case 8:
            return DragKeys(param, delta, kind == 8);
        case 9:
            if (param.GetKeyNumber() > 1) param.DeleteKey(param.GetKeyFrameDoubleIndex(key), -1);
            return;
        case 10:
            if (Below(4) == 0) DeleteSelectedKeys({&param});
            return;
        case 11:
            SetSelectedKinds({&param}, unsigned(Below(5)));
            return;
        case 12:
            if (Below(3) == 0) return SetValueNow(param, Value());
            return ToggleKeys({&param, &mGroup.mVParams[0]}, Position());
        case 13:
            if (Below(2) == 0) return param.Flip();
            PasteKeys({&param, &mGroup.mVParams[1]}, CopiedKeys({&param}), Position());
            return;
        default:
            if (Below(6) == 0) return param.SetTimeDependent(Below(4) != 0);
            return param.CopyParameterFromP(&mGroup.mVParams[size_t(Below(3))]);
        }
    }
    void EditGroup(int kind) {
        const double values[] = {Value(), Value(), Value()};
        if (kind == 15) return mGroup.Swap(1 + Below(3));
        if (kind == 16) return mGroup.InsertKey(Below(4) - 1, Position(), Value());
        if (kind == 17) return mGroup.InsertKey(-1, Position(), 0);
        mGroup.SetKeyFrame(values, Below(2) == 0, Position());
    }

    std::mt19937 mRandom;
};

class UndoProperties : public ParamTest, public ::testing::WithParamInterface<unsigned> {};

TEST_P(UndoProperties, UndoAndRedoPassThroughExactlyTheStatesThatWere) {
    Editor editor(GetParam(), GetParam() % 2 ? 1 : 120);
    for (int i = 0; i < 1500 && !HasFatalFailure(); ++i)
        editor.Step();
    ASSERT_GT(editor.mStates.size(), 500u);
    // To the start, through every state, and to the end again.
    for (size_t i = editor.mStates.size() - 1; i > 0; --i) {
        // A block with nothing in it leaves a pair to redo, which moves the position and nothing else.
        while (GCUndoList.GetCurrent() > editor.mStates[i].mPosition)
            GCUndoList.UndoCurrent();
        ASSERT_TRUE(editor.Is(editor.mStates[i])) << "state " << i;
        GCUndoList.UndoCurrent();
    }
    EXPECT_FALSE(GCUndoList.IsUndoable());
    EXPECT_TRUE(editor.Is(editor.mStates[0]));
    for (size_t i = 1; i < editor.mStates.size(); ++i) {
        while (GCUndoList.GetCurrent() < editor.mStates[i].mPosition)
            GCUndoList.ExecCurrent();
        ASSERT_TRUE(editor.Is(editor.mStates[i])) << "state " << i;
    }
}

TEST_P(UndoProperties, ACurveReadBackEvaluatesAsBefore) {
    Editor editor(GetParam() + 1000);
    for (int round = 0; round < 40; ++round) {
        for (int i = 0; i < 10; ++i)
            editor.Step();
        const wxString text = editor.mGroup.Serialize();
        ParamGroup_cls read("Group", 3, kSuffixes, 0, false);
        ReadText(read, text);
        for (size_t dim = 0; dim < 3; ++dim) {
            const Parameters_cls& written = editor.mGroup.mVParams[dim];
            ASSERT_EQ(read.mVParams[dim].GetKeyNumber(), written.GetKeyNumber());
            for (int i = 0; i < written.GetKeyNumber(); ++i) {
                const KeyFrame_cls& a = written.GetKeys()[size_t(i)];
                const KeyFrame_cls& b = read.mVParams[dim].GetKeys()[size_t(i)];
                ASSERT_EQ(b.mInterpType, a.mInterpType);
                ASSERT_NEAR(b.mDoubleIndex, a.mDoubleIndex, 0.5e-9 + 1e-15);
                ASSERT_NEAR(b.mValue, a.mValue, 0.5e-6 + 1e-12);
                // At a key the curve gives the key's value, however steep it is beside it; but of keys that
                // are closer than the digits of the text only one counts.
                const auto isClose = [&](int k) {
                    return k >= 0 && k + 1 < written.GetKeyNumber() &&
                           written.GetKeyFrameDoubleIndex(k + 1) - written.GetKeyFrameDoubleIndex(k) < 1e-9;
                };
                if (written.mbTimeDepend.mValue && !isClose(i - 1) && !isClose(i)) {
                    ASSERT_NEAR(read.mVParams[dim].Evaluate(b.mDoubleIndex, 0.0),
                                written.Evaluate(a.mDoubleIndex, 0.0), 1e-6);
                }
            }
        }
    }
}

TEST_F(ParamTest, SmoothCurvesReadBackEvaluateWithinTheDigitsOfTheirText) {
    std::mt19937 random(5);
    for (unsigned kind = 0; kind < KeyFrame_cls::INTERP_COUNT; ++kind) {
        std::vector<KeyFrame_cls> keys;
        for (int i = 0; i < 50; ++i)
            keys.push_back(MakeKey(i / 49.0, int(random() % 2000) / 999.0, kind, 0.3, 0.7));
        Curve written(keys);
        Curve read({MakeKey(0, 0)});
        ReadText(read, written.Serialize());
        // Slopes reach 100 per unit and positions have nine decimals; tangents recomputed on reading
        // move by the rounding of two values over two steps.
        for (int i = 0; i < 5000; ++i) {
            const double t = (i + 0.37) / 5000;
            ASSERT_NEAR(read.Evaluate(t, 0.0), written.Evaluate(t, 0.0), 3e-6)
                << "kind " << kind << " at " << t;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoProperties, ::testing::Values(1u, 2u, 3u, 4u, 5u));

} // namespace
