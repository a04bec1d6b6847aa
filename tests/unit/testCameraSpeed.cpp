// The camera path's turns in a film, and keys without jumps of speed.
#include "GL/VIEW/CameraSpeed.h"

#include <cmath>

#include "GroupValue.h"
#include "ViewFixture.h"

namespace {

class CameraSpeed : public ViewTest {
protected:
    void SetUp() override {
        mHost.mTime.SetMaxFrameNative(100);
        mHost.mTime.SetWAMinNative(0);
        mHost.mTime.SetWAMaxNative(100);
    }
    void SetAngle(double time, double yaw) {
        const double angles[3] = {0, 0, yaw};
        SceneObj_cls::SetKeyAt(mHost.mCamera.mpCRotate, angles, time);
    }
    CameraTurn_st Find(double rate = 25.0) {
        return FindFastestTurn(mHost.mCamera, mHost.mAnchor, mHost.mTime, rate);
    }
    static void SetKind(ParamGroup_cls* pGroup, unsigned kind) {
        for (Parameters_cls& param : pGroup->mVParams)
            for (KeyFrame_cls key : std::vector<KeyFrame_cls>(param.GetKeys())) {
                key.mInterpType = kind;
                param.SetKey(key, Parameters_cls::kCurrent);
            }
    }
    static double Slope(Parameters_cls& param, double from, double to) {
        return (param.Evaluate(to, 0.0) - param.Evaluate(from, 0.0)) / (to - from);
    }
};

TEST_F(CameraSpeed, ATurnIsDegreesASecondOfFilm) {
    EXPECT_NEAR(Find().mDegrees, 0.0, 1e-3) << "a camera that rests";
    SetAngle(0.0, 0);
    SetAngle(0.5, 60);
    SetAngle(1.0, 80);
    SetKind(mHost.mCamera.mpCRotate, INTERP_LINEAR);
    // 60 degrees in 50 pictures, of which a second has 25.
    EXPECT_NEAR(Find().mDegrees, 30.0, 0.1);
    EXPECT_LE(Find().mFrame, 50);
    EXPECT_NEAR(Find(50.0).mDegrees, 60.0, 0.2);
    mHost.mTime.SetAnimInterpNative(2); // twice as many pictures
    EXPECT_NEAR(Find().mDegrees, 15.0, 0.1);
    mHost.mTime.SetAnimInterpNative(1);
    mHost.mTime.SetAnimStepNative(4); // a quarter of them
    EXPECT_NEAR(Find().mDegrees, 120.0, 0.4);
    mHost.mTime.SetAnimStepNative(1);
    mHost.mTime.SetWAMinNative(60);
    EXPECT_NEAR(Find().mDegrees, 10.0, 0.1) << "outside the work area nobody sees it";
    EXPECT_GT(Find().mFrame, 60);
}

TEST_F(CameraSpeed, ACameraThatLooksAtTheAnchorTurnsWithIt) {
    mHost.mCamera.mCLookAnchor.mValue = true;
    mHost.mCamera.SetInitValueRot(0, 0, 0); // upright
    const double right[3] = {0, -1, 1.5}, left[3] = {0, 1, 1.5};
    SceneObj_cls::SetKeyAt(mHost.mAnchor.mpCTranslate, right, 0.0);
    SceneObj_cls::SetKeyAt(mHost.mAnchor.mpCTranslate, left, 0.01); // from one picture to the next
    const PositionAndDirection_cls before = mHost.mCamera.mCCurrent;
    const CameraTurn_st turn = Find(10.0);
    EXPECT_NEAR(turn.mDegrees, 10.0 * 2.0 * std::atan(1.0 / 1.5) * 180.0 / M_PI, 0.1);
    EXPECT_EQ(turn.mFrame, 1);
    EXPECT_TRUE(mHost.mCamera.mCCurrent.Direction_cls::operator==(before)) << "asking moves nothing";
}

TEST_F(CameraSpeed, AskingLeavesTheValuesThatPanelsShow) {
    SetAngle(0.0, 0);
    SetAngle(1.0, 80);
    SetKind(mHost.mCamera.mpCRotate, INTERP_LINEAR);
    Parameters_cls& yaw = mHost.mCamera.mpCRotate->mVParams[2];
    EXPECT_NEAR(yaw.GetInterpolatedValue(0.5), 40.0, 1e-9);
    Find();
    EXPECT_NEAR(yaw.mCurrentValue, 40.0, 1e-9);
}

// More pictures than anybody waits for: frame by frame, then.
TEST_F(CameraSpeed, LongFilmsAreJudgedByTheirFrames) {
    SetAngle(0.0, 0);
    SetAngle(0.5, 60);
    SetAngle(1.0, 80);
    SetKind(mHost.mCamera.mpCRotate, INTERP_LINEAR);
    mHost.mTime.SetAnimInterpNative(100000000);
    EXPECT_NEAR(Find(25.0 * 100000000).mDegrees, 30.0, 0.1);
}

TEST_F(CameraSpeed, EasingLeavesNoJumpOfSpeedAndIsOneStep) {
    EXPECT_FALSE(EaseWholePath(mHost.mCamera, mHost.mAnchor));
    EXPECT_FALSE(GCUndoList.IsUndoable());
    const double places[4][3] = {{0, 0, 0}, {1, 2, 0}, {5, 2, 1}, {5, -3, 1}};
    for (int i = 0; i < 4; ++i) {
        SceneObj_cls::SetKeyAt(mHost.mCamera.mpCTranslate, places[i], i / 4.0);
        SceneObj_cls::SetKeyAt(mHost.mAnchor.mpCTranslate, places[3 - i], i / 4.0);
        SetAngle(i / 4.0, i * i * 10.0);
    }
    for (ParamGroup_cls* group :
         {mHost.mCamera.mpCTranslate, mHost.mCamera.mpCRotate, mHost.mAnchor.mpCTranslate})
        SetKind(group, INTERP_LINEAR);
    const wxString before = mHost.mCamera.Serialize() + mHost.mAnchor.Serialize();
    const unsigned steps = GCUndoList.GetCurrent();
    EXPECT_TRUE(EaseWholePath(mHost.mCamera, mHost.mAnchor));
    constexpr double kStep = 1e-5;
    for (ParamGroup_cls* group :
         {mHost.mCamera.mpCTranslate, mHost.mCamera.mpCRotate, mHost.mAnchor.mpCTranslate})
        for (Parameters_cls& param : group->mVParams)
            for (const double at : {0.25, 0.5}) {
                EXPECT_NEAR(Slope(param, at - kStep, at), Slope(param, at, at + kStep), 0.05) << param.mID;
                const auto i = size_t(at * 4);
                EXPECT_EQ(param.GetKeys()[i].mDoubleIndex, at) << "keys stay where they are";
            }
    EXPECT_FALSE(EaseWholePath(mHost.mCamera, mHost.mAnchor)) << "there is nothing left to ease";
    GCUndoList.UndoCurrent();
    EXPECT_EQ(GCUndoList.GetCurrent(), steps);
    EXPECT_EQ((mHost.mCamera.Serialize() + mHost.mAnchor.Serialize()).ToStdString(), before.ToStdString());
}

} // namespace
