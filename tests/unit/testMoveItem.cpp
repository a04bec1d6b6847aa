// Drags of the selected item: where the hand takes it, by closed forms, and the keys that stay.
#include <cmath>
#include <limits>
#include <memory>

#include <wx/defs.h>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsGLGuides.h"
#include "GL/BASE/clsMouseNormalized.h"
#include "GroupValue.h"
#include "ParamTest.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsMoveItem.h"
#include "SCENE/clsSceneObj.h"

namespace {

constexpr int kTranslate = GLGuides_cls::TRANSLATE, kScale = GLGuides_cls::SCALE,
              kRotate = GLGuides_cls::ROTATE;
using Values = std::vector<double>;

class Thing_cls : public SceneObj_cls {
public:
    Thing_cls() : SceneObj_cls("Thing", true, true) {
        mCConfItemListBase.Add(&mCTarget, "Target=", "0");
        const DirectEdit_cls direct;
        SetInitValueTrans(1, 2, 3);
        SetInitValueRot(10, 20, 30);
        SetInitValueScale(1, 2, 4);
    }
    bool TakesMode(int mode) const override { return mode != mNoMode; }
    int mNoMode = -1;
};

/// A view from (1, -8, 3) along y: x goes to the right, z up. It shows the item in its middle, from which
/// half a window is 5 of the scene.
class MoveItem : public ParamTest {
protected:
    MoveItem() : mpThing(std::make_unique<Thing_cls>()) {
        const double front[3] = {0, 1, 0}, up[3] = {0, 0, 1};
        mView.mCamera.Set(1, -8, 3);
        mView.mCamera.Setv(front, up);
        mView.mAspect = 2.0;
        mView.mProject = [](const double p[3], double out[2]) {
            out[0] = (p[0] - 1.0) / 5.0;
            out[1] = (p[2] - 3.0) / 5.0;
            return true;
        };
        MoveItem_cls::SetSelection(mpThing.get());
        mpThing->mbSelected = true;
    }
    ~MoveItem() override { MoveItem_cls::SetSelection(nullptr); }

    bool Move(double x, double y, int mode = kTranslate) {
        mMouse.mPrevX = mMouse.mCurX;
        mMouse.mPrevY = mMouse.mCurY;
        mMouse.mCurX = float(x);
        mMouse.mCurY = float(y);
        return MoveItem_cls::MoveItem(mView, mMouse, mode, MoveItem_cls::IsAxisFlipped(mView.mCamera));
    }
    void Press(double x, double y) {
        mMouse = MouseNormalized_cls();
        mMouse.mPressX = mMouse.mCurX = float(x);
        mMouse.mPressY = mMouse.mCurY = float(y);
    }
    Values Place() const { return Now(mpThing->mpCTranslate); }
    Values Angles() const { return Now(mpThing->mpCRotate); }
    Values Scale() const { return Now(mpThing->mpCScale); }
    static Values Now(ParamGroup_cls* pGroup) { return GetGroupValue(pGroup, 0.0); }
    static void Expect(const Values& values, double x, double y, double z) {
        EXPECT_NEAR(values[0], x, 1e-5);
        EXPECT_NEAR(values[1], y, 1e-5);
        EXPECT_NEAR(values[2], z, 1e-5);
    }
    static int Steps() { return int(GCUndoList.GetCurrent()); }

    std::unique_ptr<Thing_cls> mpThing;
    MoveItem_cls::View_st mView;
    MouseNormalized_cls mMouse;
};

TEST_F(MoveItem, theHandTakesItAcrossTheView) {
    Press(0.5, -0.5);
    EXPECT_TRUE(Move(0.6, -0.5));
    EXPECT_TRUE(Move(0.6, -0.3));
    // 0.3 of its distance, 10, for half a window, sideways twice as much.
    Expect(Values(MoveItem_cls::msSelectedItemPos, MoveItem_cls::msSelectedItemPos + 3), 1.6, 2.0, 3.6);
    mpThing->UpdateCurrentObj(0.0);
    EXPECT_NEAR(mpThing->mCCurrent.mPos[0], 1.6, 1e-5) << "it is shown there";
    Expect(Place(), 1, 2, 3);
    EXPECT_EQ(Steps(), 0) << "the curves wait for the end";
    MoveItem_cls::EndDrag();
    Expect(Place(), 1.6, 2.0, 3.6);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(Place(), (Values{1, 2, 3}));
    EXPECT_EQ(Steps(), 0) << "one step";
    GCUndoList.ExecCurrent();
    Expect(Place(), 1.6, 2.0, 3.6);
}

// An eye beside another has half the window: the hand's way there is twice as long in its picture.
TEST_F(MoveItem, aPictureInHalfTheWindowFollowsTheHand) {
    mView.mPart[0] = 0.5;
    Press(0.1, -0.5);
    Move(0.2, -0.5);
    Move(0.2, -0.3);
    Expect(Values(MoveItem_cls::msSelectedItemPos, MoveItem_cls::msSelectedItemPos + 3), 2.2, 2.0, 3.6);
    MoveItem_cls::CancelDrag();
}

TEST_F(MoveItem, anAxisHoldsTheOtherTwo) {
    mpThing->SetDragMode(2);
    mpThing->SetDragMode(0);
    EXPECT_EQ(mpThing->mDragMode, 2) << "the first one counts";
    Press(0, 0.2);
    Move(0.1, 0.3);
    mpThing->ToggleDragMode(0); // in the middle of it
    Move(0.2, 0.4);
    MoveItem_cls::EndDrag();
    Expect(Place(), 1.6, 2.0, 3.0);
}

TEST_F(MoveItem, aKeyAtTheTimeOfTheDrag) {
    mpThing->mpCTranslate->SetTimeDependent(true);
    Parameters_cls::msCurrentDoubleIndex = 0.5;
    const int steps = Steps();
    Press(0, 0.2);
    Move(0.1, 0.2);
    MoveItem_cls::EndDrag();
    EXPECT_EQ(Steps(), steps + 3) << "opened, a key, closed";
    EXPECT_EQ(mpThing->mpCTranslate->mVParams[0].GetKeyNumber(), 2);
    EXPECT_EQ(mpThing->mpCTranslate->mVParams[1].GetKeyNumber(), 1) << "y has not moved";
    Expect(GetGroupValue(mpThing->mpCTranslate, 0.5), 1.6, 2, 3);
    EXPECT_NEAR(GetGroupValue(mpThing->mpCTranslate, 0.0)[0], 1.0, 1e-9);
}

TEST_F(MoveItem, scaleIsTheShareOfTheWaysFromTheItem) {
    Press(0.3, 0.4); // 0.5 from it
    Move(0.6, 0.8, kScale);
    MoveItem_cls::EndDrag();
    Expect(Scale(), 2, 4, 8);
    mpThing->ToggleDragMode(1);
    Press(0.0, 0.5);
    Move(0.0, 0.25, kScale);
    MoveItem_cls::EndDrag();
    Expect(Scale(), 2, 2, 8);
    EXPECT_EQ(Place(), (Values{1, 2, 3}));
}

TEST_F(MoveItem, aScaleFromTheItemItselfIsNone) {
    Press(0.0, 0.0);
    Move(0.5, 0.5, kScale);
    MoveItem_cls::EndDrag();
    EXPECT_EQ(Scale(), (Values{1, 2, 4}));
    EXPECT_EQ(Steps(), 0) << "nothing changed, nothing to take back";
}

TEST_F(MoveItem, theItemTurnsAsTheHandDoes) {
    EXPECT_FALSE(Move(0.3, 0.3, kRotate) && MoveItem_cls::msSelectedItemDRot[0] != 0.0);
    MoveItem_cls::CancelDrag();
    // Axis y, turned by z, points away from the eye: clockwise on the screen is forward.
    for (const int axis : {0, 1, 2}) {
        mpThing->mDragMode = axis;
        double axes[3][3];
        mpThing->GetGuideAxes(kRotate, axes);
        const double towards = -MyVector::GetScalarProduct<double>(axes[axis], mView.mCamera.mFront);
        Press(0.5, 0.0);
        Move(0.5, 0.01, kRotate); // counter-clockwise by about 0.02
        const double turned = MoveItem_cls::msSelectedItemDRot[axis];
        const double way = 0.01 * 0.5 / (0.25 + 0.0001);
        EXPECT_NEAR(std::fabs(turned), 75.0 * way, 1e-5);
        EXPECT_GE(turned * towards, -1e-9) << axis;
        MoveItem_cls::CancelDrag();
    }
}

// A thing's own axes follow its handles: a small turn about a ring's axis moves the thing about that axis.
TEST_F(MoveItem, ringsStandAboutTheAxesThatTheyTurn) {
    for (int axis = 0; axis < 3; ++axis) {
        double axes[3][3];
        mpThing->GetGuideAxes(kRotate, axes);
        mpThing->UpdateCurrentObj(0.0);
        double front[3] = {mpThing->mCCurrent.mFront[0], mpThing->mCCurrent.mFront[1],
                           mpThing->mCCurrent.mFront[2]};
        double up[3] = {mpThing->mCCurrent.mUp[0], mpThing->mCCurrent.mUp[1], mpThing->mCCurrent.mUp[2]};
        MyVector::RotateAround(front, axes[axis], 8.0);
        MyVector::RotateAround(up, axes[axis], 8.0);
        MoveItem_cls::InitializeMoveItem();
        MoveItem_cls::msSelectedItemDRot[axis] = 8.0;
        mpThing->UpdateCurrentObj(0.0);
        MoveItem_cls::CancelDrag();
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(mpThing->mCCurrent.mFront[i], front[i], 1e-5) << axis;
            EXPECT_NEAR(mpThing->mCCurrent.mUp[i], up[i], 1e-5) << axis;
        }
    }
}

TEST_F(MoveItem, ctrlSnapsWhatIsShownAndTheHandGoesOn) {
    mView.mbSnap = true;
    mView.mGridUnit = 1.0;
    Press(0, 0.2);
    for (int k = 1; k <= 10; ++k) // 0.03 each: none alone would leave its tenth
        Move(0.005 * k, 0.2);
    MoveItem_cls::EndDrag();
    EXPECT_DOUBLE_EQ(Place()[0], 1.3);
    EXPECT_EQ(Place()[1], 2.0) << "what didn't move isn't moved onto the grid";
    // An axis that is chosen behind the last move, and a number that is taken back, keep to it.
    Press(0, 0.2);
    Move(0.04, 0.23);
    mpThing->mDragMode = 0;
    MoveItem_cls::ChangeAxis(kTranslate);
    MoveItem_cls::TypeKey('4', kTranslate);
    MoveItem_cls::TypeKey(WXK_BACK, kTranslate);
    EXPECT_NE(MoveItem_cls::msSelectedItemPos[0], 1.3);
    EXPECT_NEAR(std::remainder(MoveItem_cls::msSelectedItemPos[0], 0.1), 0.0, 1e-9);
    EXPECT_EQ(MoveItem_cls::msSelectedItemPos[2], 3.0);
    MoveItem_cls::CancelDrag();
    Press(0.5, 0.0);
    Move(0.5, 0.1, kRotate);
    MoveItem_cls::EndDrag();
    EXPECT_NEAR(std::remainder(Angles()[0], 5.0), 0.0, 1e-9);
    mpThing->mDragMode = -1;
    Press(0.3, 0.4);
    Move(0.37, 0.47, kScale);
    MoveItem_cls::EndDrag();
    EXPECT_NEAR(Scale()[0], 1.2, 1e-9);
    Press(0.3, 0.4);
    Move(0.001, 0.001, kScale);
    MoveItem_cls::EndDrag();
    EXPECT_NEAR(Scale()[0], 0.12, 1e-9) << "a tenth is the least";
}

TEST_F(MoveItem, typedNumbersCountExactly) {
    const auto type = [](const char* text, int mode) {
        for (; *text; ++text)
            EXPECT_TRUE(MoveItem_cls::TypeKey(*text, mode));
    };
    EXPECT_FALSE(MoveItem_cls::TypeKey('4', kRotate)) << "nothing is dragged";
    Press(0.5, 0);
    Move(0.5, 0.1, kRotate);
    type("45", kRotate);
    Move(0.6, 0.3, kRotate); // the number has taken over
    MoveItem_cls::EndDrag();
    Expect(Angles(), 10, 20, 75);
    mpThing->mDragMode = 1;
    Press(0, 0.2);
    Move(0.1, 0.3);
    type("1.25", kTranslate);
    MoveItem_cls::TypeKey(WXK_BACK, kTranslate);
    type("-", kTranslate);
    EXPECT_FALSE(MoveItem_cls::TypeKey('Q', kTranslate));
    MoveItem_cls::EndDrag();
    Expect(Place(), 1, 0.8, 3);
    // Without its last figure the number is gone, and the hand counts from where it is.
    mpThing->mDragMode = 0;
    Press(0, 0);
    Move(0.1, 0);
    type("7", kTranslate);
    EXPECT_FALSE(Move(0.2, 0));
    EXPECT_NEAR(MoveItem_cls::msSelectedItemPos[0], 8.0, 1e-9);
    MoveItem_cls::TypeKey(WXK_BACK, kTranslate);
    EXPECT_NEAR(MoveItem_cls::msSelectedItemPos[0], 2.056, 1e-5);
    Move(0.3, 0);
    EXPECT_NEAR(MoveItem_cls::msSelectedItemPos[0], 2.584, 1e-5);
    MoveItem_cls::CancelDrag();
    mpThing->mDragMode = -1;
    Press(0.3, 0.4);
    Move(0.4, 0.4, kScale);
    MoveItem_cls::TypeKey(WXK_NUMPAD3, kScale);
    MoveItem_cls::EndDrag();
    Expect(Scale(), 3, 6, 12);
}

TEST_F(MoveItem, escapeAndOtherEndsLeaveNothing) {
    Press(0, 0.2);
    Move(0.3, 0.3);
    MoveItem_cls::CancelDrag();
    EXPECT_FALSE(MoveItem_cls::IsDragging());
    Press(0, 0.2);
    Move(0.3, 0.3);
    mpThing->mDragMode = 1;
    Thing_cls other;
    MoveItem_cls::SetSelection(&other);
    EXPECT_FALSE(mpThing->mbDragging);
    EXPECT_EQ(mpThing->mDragMode, -1);
    EXPECT_EQ(Place(), (Values{1, 2, 3}));
    MoveItem_cls::SetSelection(mpThing.get());
    Press(0, 0.2);
    Move(0.3, 0.3);
    mpThing.reset(); // gone under the hand
    EXPECT_EQ(MoveItem_cls::mspCSelectedObject, nullptr);
    EXPECT_FALSE(Move(0.4, 0.3));
    MoveItem_cls::EndDrag();
    EXPECT_EQ(Steps(), 0);
}

TEST_F(MoveItem, noNumberThatIsNoneReachesAKey) {
    mView.mProject = [](const double*, double out[2]) {
        out[0] = out[1] = std::numeric_limits<double>::quiet_NaN();
        return true;
    };
    for (const int mode : {kTranslate, kScale, kRotate}) {
        mpThing->mDragMode = 0;
        mView.mCamera.mPos[1] = mode == kTranslate ? std::numeric_limits<double>::infinity() : -8.0;
        Press(0.2, 0.2);
        Move(0.3, 0.3, mode);
        MoveItem_cls::EndDrag();
    }
    EXPECT_EQ(Place(), (Values{1, 2, 3}));
    EXPECT_EQ(Angles(), (Values{10, 20, 30}));
    EXPECT_EQ(Scale(), (Values{1, 2, 4}));
    EXPECT_EQ(Steps(), 0);
}

TEST_F(MoveItem, whatAimsAtTheOriginTurnsAlong) {
    mpThing->mCTarget.mValue = SceneObj_cls::TARGET_ORIGIN;
    Press(0, 0.2);
    Move(0.1, 0.2);
    mpThing->UpdateCurrentObj(0.0);
    const double shown[3] = {mpThing->mCCurrent.mFront[0], mpThing->mCCurrent.mFront[1],
                             mpThing->mCCurrent.mFront[2]};
    MoveItem_cls::EndDrag();
    mpThing->UpdateCurrentObj(0.0);
    double towards[3] = {-mpThing->mCCurrent.mPos[0], -mpThing->mCCurrent.mPos[1],
                         -mpThing->mCCurrent.mPos[2]};
    MyVector::Normalize(towards);
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(mpThing->mCCurrent.mFront[i], towards[i], 1e-4);
        EXPECT_NEAR(shown[i], towards[i], 1e-4) << "already under the hand";
    }
    GCUndoList.UndoCurrent();
    EXPECT_EQ(Steps(), 0) << "place and rotation are one step";
}

TEST_F(MoveItem, whatAimsAtTheOriginAimsAfterATurn) {
    mpThing->mCTarget.mValue = SceneObj_cls::TARGET_ORIGIN;
    mpThing->mDragMode = 2;
    Press(0.5, 0.0);
    Move(0.5, 0.3, kRotate);
    MoveItem_cls::EndDrag();
    mpThing->UpdateCurrentObj(0.0);
    const double far = std::sqrt(14.0), place[3] = {1, 2, 3};
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(mpThing->mCCurrent.mFront[i], -place[i] / far, 1e-5) << i;
    GCUndoList.UndoCurrent();
    EXPECT_EQ(Steps(), 0);
}

TEST_F(MoveItem, whatCannotBeTurnedOrScaledTakesNoNumbers) {
    for (const int mode : {kScale, kRotate}) {
        mpThing->mNoMode = mode;
        MoveItem_cls::InitializeMoveItem();
        EXPECT_FALSE(MoveItem_cls::TypeKey('2', mode));
        EXPECT_TRUE(MoveItem_cls::GetDragText(mode).empty());
        MoveItem_cls::EndDrag();
        // Typed for the way before, it has no say behind the change of mode.
        MoveItem_cls::InitializeMoveItem();
        EXPECT_TRUE(MoveItem_cls::TypeKey('2', kTranslate));
        MoveItem_cls::Restart();
        MoveItem_cls::ChangeAxis(mode);
        MoveItem_cls::EndDrag();
    }
    EXPECT_EQ(Steps(), 0);
    EXPECT_EQ(Angles(), (Values{10, 20, 30}));
    EXPECT_EQ(Scale(), (Values{1, 2, 4}));
}

TEST_F(MoveItem, nothingIsScaledToNothing) {
    Press(0.5, 0.0);
    Move(0.0, 0.0, kScale);
    MoveItem_cls::EndDrag();
    for (const double factor : Scale())
        EXPECT_GT(factor, 0.0) << "no later factor leads back from 0";
    const Values small = Scale();
    MoveItem_cls::InitializeMoveItem();
    MoveItem_cls::TypeKey('0', kScale);
    MoveItem_cls::EndDrag();
    EXPECT_EQ(Scale(), small);
}

TEST_F(MoveItem, anAnchorIsOnlyMoved) {
    AnchorPath_cls anchor;
    MoveItem_cls::SetSelection(&anchor);
    anchor.mbSelected = true;
    Press(0.3, 0.4);
    EXPECT_FALSE(Move(0.5, 0.4, kScale));
    EXPECT_FALSE(Move(0.5, 0.5, kRotate));
    EXPECT_TRUE(Move(0.6, 0.5, kTranslate));
    MoveItem_cls::SetSelection(nullptr);
}

} // namespace
