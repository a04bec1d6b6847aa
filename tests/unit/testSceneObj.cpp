// Placed objects: the maths of their placement, their groups, and their edits as steps.
#include <cmath>

#include "COMMON/clsMyVector.h"
#include "ParamTest.h"
#include "SCENE/clsSceneObj.h"

namespace {

class Placed : public SceneObj_cls {
public:
    explicit Placed(const wxString& name = "Thing", bool bShown = true, bool bParams = true)
        : SceneObj_cls(name, bShown, bParams) {
        mCConfItemListBase.Add(&mCTarget, "Target=", "0");
        mCConfItemListBase.Add(&mCVisible, "Visible=", "1");
        const DirectEdit_cls direct;
        SetInitValueScale(1, 1, 1);
    }
};

class SceneObj : public ParamTest {
protected:
    static void ExpectVector(const double* v, double x, double y, double z, double tolerance = 1e-5) {
        EXPECT_NEAR(v[0], x, tolerance);
        EXPECT_NEAR(v[1], y, tolerance);
        EXPECT_NEAR(v[2], z, tolerance);
    }
    static int Steps() { return int(GCUndoList.GetCurrent()); }
};

TEST_F(SceneObj, GroupsBearTheNameAndTheFolderHoldsThem) {
    Placed thing;
    EXPECT_EQ(thing.mpCTranslate->mName, "Thing Translate");
    EXPECT_EQ(thing.mpCRotate->mName, "Thing Rotation");
    EXPECT_EQ(thing.mpCScale->mVParams[2].mID, "Thing Scale z");
    EXPECT_EQ(thing.mpCRotate->mVParams[0].mUpdateBit, 4102);
    ASSERT_EQ(thing.mpCObjectGroup->mVpCChilds.size(), 3u);
    EXPECT_EQ(thing.mpCObjectGroup->mVpCChilds[1], thing.mpCRotate);
    EXPECT_EQ(thing.mpCScale->mpCSceneObj, &thing);
    EXPECT_EQ(thing.GetPCParamGroupFromTag("Thing Scale"), thing.mpCScale);
    EXPECT_EQ(thing.GetPCParamGroupFromTag("Thing"), thing.mpCObjectGroup);
    EXPECT_EQ(thing.GetPCParamGroupFromTag("Thin"), nullptr);
    EXPECT_EQ(thing.mpCRotate->mVParams[0].mPeriodic.mValue, 0);
    EXPECT_TRUE(Placed("Hidden", false).mpCObjectGroup->mVpCChilds.empty());

    Placed camera("Camera");
    EXPECT_EQ(camera.mpCRotate->mVParams[0].mPeriodic.mValue, 360);
    EXPECT_EQ(camera.mpCRotate->mVParams[1].mPeriodic.mValue, 0) << "nothing turns over its head";
    EXPECT_EQ(camera.mpCRotate->mVParams[2].mPeriodic.mValue, 360);
    EXPECT_EQ(camera.mpCTranslate->mVParams[0].mPeriodic.mValue, 0);
}

TEST_F(SceneObj, WithoutGroupsEverythingIsQuiet) {
    Placed bare("Bare", true, false);
    float p[3] = {1, 2, 3};
    bare.UpdateCurrentObj(0.5);
    bare.CalcRelativePosition(p, 0.5, nullptr);
    bare.CalcRelativeVector(p, 0.5);
    bare.AssignSceneObjParam();
    bare.mCTarget.mValue = SceneObj_cls::TARGET_ORIGIN;
    bare.Targetting();
    bare.Select(true);
    Placed other;
    bare.CopyFromP_SceneObj(&other);
    EXPECT_EQ(bare.GetPCParamGroupFromTag("Bare"), nullptr);
    EXPECT_EQ(p[2], 3.0f);
    EXPECT_EQ(bare.mCCurrent.mFront[2], -1.0) << "the placement that all begin with";
}

TEST_F(SceneObj, DirectionVectorKnowsTheShortPi) {
    Placed light;
    ExpectVector(light.GetVDirectionVector(0.0).data(), -1, 0, 0);
    light.SetInitValueRot(77, 45, 225);
    const auto v = light.GetVDirectionVector(0.0);
    ExpectVector(v.data(), 0.5, 0.5, std::sqrt(0.5), 1e-5);
    EXPECT_EQ(v[2], std::sin(3.14159 * 45 / 180)) << "to the last digit";
    EXPECT_EQ(v[0], std::cos(3.14159 * 45 / 180) * std::cos((225.0 / 180 + 1) * 3.14159));
}

TEST_F(SceneObj, PlacementFollowsCurvesAndGivesTheAnglesBack) {
    Placed thing;
    thing.SetInitValueTrans(1, 2, 3);
    thing.SetInitValueRot(20, 30, 170);
    thing.SetInitValueScale(2, 3, 4);
    thing.UpdateCurrentObj(0.25);
    ExpectVector(thing.mCCurrent.mPos, 1, 2, 3, 0.0);
    ExpectVector(thing.mCScaleCurrent, 2, 3, 4, 0.0);
    const double r = 3.14159 / 180;
    ExpectVector(thing.mCCurrent.mFront, std::cos(30 * r) * std::cos(170 * r),
                 std::cos(30 * r) * std::sin(170 * r), -std::sin(30 * r), 1e-12);
    EXPECT_NEAR(thing.mCCurrent.mRoll, 20, 1e-3);
    EXPECT_NEAR(thing.mCCurrent.mPitch, 30, 1e-3);
    EXPECT_NEAR(thing.mCCurrent.mYaw, 170, 1e-3);

    // A curve in between: a quarter of the way of a linear segment.
    SetKeys(thing.mpCTranslate->mVParams[1], {MakeKey(0.0, 10.0), MakeKey(1.0, 20.0)});
    thing.mpCTranslate->mVParams[1].mbTimeDepend.mValue = true;
    thing.UpdateCurrentObj(0.25);
    ExpectVector(thing.mCCurrent.mPos, 1, 12.5, 3, 1e-12);
}

TEST_F(SceneObj, RelativeVectorIsTheVectorAsTheObjectSeesIt) {
    Placed thing;
    thing.SetInitValueRot(0, 0, 90);
    float p[3] = {1, 0, 5};
    thing.CalcRelativeVector(p, 0.0);
    EXPECT_NEAR(p[0], 0.0f, 1e-5f);
    EXPECT_NEAR(p[1], -1.0f, 1e-5f);
    EXPECT_EQ(p[2], 5.0f);
    // Along front, left and up, whatever the rotation is.
    const double angles[][3] = {{0, 40, 0}, {35, 0, 0}, {10, -50, 130}, {-170, 80, 300}};
    for (const double* a : angles) {
        thing.SetInitValueRot(a[0], a[1], a[2]);
        thing.UpdateCurrentObj(0.0);
        const double v[3] = {0.3, -1.2, 2.5};
        float q[3] = {0.3f, -1.2f, 2.5f};
        thing.CalcRelativeVector(q, 0.0);
        EXPECT_NEAR(double(q[0]), MyVector::GetScalarProduct(v, thing.mCCurrent.mFront), 1e-5) << a[2];
        EXPECT_NEAR(double(q[1]), -MyVector::GetScalarProduct(v, thing.mCCurrent.mRight), 1e-5) << a[2];
        EXPECT_NEAR(double(q[2]), MyVector::GetScalarProduct(v, thing.mCCurrent.mUp), 1e-5) << a[2];
    }
}

TEST_F(SceneObj, RelativePositionScalesBeforeItMoves) {
    Placed box;
    box.SetInitValueTrans(1, 2, 3);
    box.SetInitValueRot(0, 0, 90);
    box.SetInitValueScale(2, 4, 5);
    float p[3] = {8, 6, 10};
    box.CalcRelativePosition(p, 0.0, nullptr);
    EXPECT_NEAR(p[0], 6.0f / 2 - 1, 1e-4f);
    EXPECT_NEAR(p[1], -8.0f / 4 - 2, 1e-4f);
    EXPECT_NEAR(p[2], 10.0f / 5 - 3, 1e-4f);
    Placed anchor;
    anchor.SetInitValueTrans(1, 1, 0);
    float q[3] = {7, 5, 10};
    box.CalcRelativePosition(q, 0.0, anchor.mpCTranslate);
    EXPECT_NEAR(q[0], (6.0f - 1) / 2 - 1, 1e-4f);
    EXPECT_NEAR(q[1], (-8.0f - 1) / 4 - 2, 1e-4f);
    EXPECT_NEAR(q[2], p[2], 1e-4f);
    box.SetInitValueScale(0, 4, 5);
    box.CalcRelativePosition(q, 0.0, nullptr);
    EXPECT_FALSE(std::isfinite(q[0])) << "a flat box has no inside";
    EXPECT_TRUE(std::isfinite(q[1]));
}

TEST_F(SceneObj, KeyAtATimeWakesAConstantGroupInOneStep) {
    Placed thing;
    thing.SetInitValueTrans(1, 1, 1);
    GCUndoList.Clear();
    const wxString before = thing.mpCTranslate->Serialize();
    const double there[3] = {5, 6, 7};
    SceneObj_cls::SetKeyAt(thing.mpCTranslate, there, 0.5);
    Parameters_cls& x = thing.mpCTranslate->mVParams[0];
    EXPECT_TRUE(x.mbTimeDepend.mValue);
    ASSERT_EQ(x.GetKeyNumber(), 2) << "what it was stands at the present time";
    EXPECT_EQ(x.GetInterpolatedValue(0.0), 1.0);
    EXPECT_EQ(x.GetInterpolatedValue(0.5), 5.0);
    EXPECT_NEAR(thing.mpCTranslate->mVParams[2].GetInterpolatedValue(0.25), 4.0, 1e-12);
    const wxString after = thing.mpCTranslate->Serialize();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(thing.mpCTranslate->Serialize(), before);
    EXPECT_EQ(Steps(), 0) << "one step";
    GCUndoList.ExecCurrent();
    EXPECT_EQ(thing.mpCTranslate->Serialize(), after);
    // At the present time the one key is the new one.
    Placed other;
    SceneObj_cls::SetKeyAt(other.mpCTranslate, there, SceneObj_cls::kCurrent);
    EXPECT_EQ(other.mpCTranslate->mVParams[0].GetKeyNumber(), 1);
    EXPECT_EQ(other.mpCTranslate->mVParams[0].GetInterpolatedValue(0.9), 5.0);
}

TEST_F(SceneObj, EditedValuesBecomeKeysOfTheChildrenOfTheFolder) {
    Placed thing;
    thing.mpCScale->mVParams[1].mCurrentValue = 9.0;
    thing.AssignSceneObjParam();
    EXPECT_EQ(thing.mpCScale->mVParams[1].GetInterpolatedValue(0.3), 9.0);
    thing.DeleteObjectGroup();
    thing.mpCScale->mVParams[1].mCurrentValue = 2.0;
    thing.AssignSceneObjParam(); // whoever took the folder away assigns by himself
    EXPECT_EQ(thing.mpCScale->mVParams[1].GetInterpolatedValue(0.3), 9.0);
}

TEST_F(SceneObj, CopyIsOneStep) {
    Placed source, target;
    source.mObjectType = 1;
    source.mCTarget.mValue = 1;
    source.mCVisible.mValue = false;
    source.SetInitValueRot(1, 2, 3);
    GCUndoList.Clear();
    target.CopyFromP_SceneObj(&source);
    EXPECT_EQ(target.mObjectType, 1);
    EXPECT_EQ(target.mCTarget.mValue, 1u);
    EXPECT_FALSE(target.mCVisible.mValue);
    EXPECT_EQ(target.mpCRotate->mVParams[2].GetInterpolatedValue(0.0), 3.0);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(Steps(), 0);
    EXPECT_EQ(target.mObjectType, 0);
    EXPECT_TRUE(target.mCVisible.mValue);
    EXPECT_EQ(target.mpCRotate->mVParams[2].GetInterpolatedValue(0.0), 0.0);
    EXPECT_EQ(target.mpCRotate->mName, "Thing Rotation");
}

TEST_F(SceneObj, TargettingKeysTheWayToTheOrigin) {
    Placed thing;
    thing.SetInitValueTrans(-1.5, 0, 1.5);
    thing.UpdateCurrentObj(0.0);
    GCUndoList.Clear();
    thing.Targetting();
    EXPECT_EQ(Steps(), 0) << "only in its mode";
    thing.mCTarget.mValue = SceneObj_cls::TARGET_ORIGIN;
    thing.Targetting();
    EXPECT_NEAR(thing.mpCRotate->mVParams[1].GetInterpolatedValue(0.0), 45.0, 1e-3);
    thing.UpdateCurrentObj(0.0);
    ExpectVector(thing.mCCurrent.mFront, std::sqrt(0.5), 0, -std::sqrt(0.5));
}

TEST_F(SceneObj, DragModeIsToggledOrSetOnce) {
    Placed thing;
    thing.ToggleDragMode(2);
    EXPECT_EQ(thing.mDragMode, 2);
    thing.SetDragMode(1);
    EXPECT_EQ(thing.mDragMode, 2) << "it is locked";
    thing.ToggleDragMode(2);
    EXPECT_EQ(thing.mDragMode, SceneObj_cls::kNoDrag);
    thing.SetDragMode(0);
    EXPECT_EQ(thing.mDragMode, 0);
}

} // namespace
