// The stereogram's settings: which eye, where it stands, and the block in a project.
#include <cmath>

#include "COMMON/Eye.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GroupValue.h"
#include "ParamTest.h"
#include "SCENE/clsStereoGram.h"

namespace {

using Stereo = StereoGram_cls;

class StereoGram : public ParamTest {
protected:
    void SetUp() override {
        Parameters_cls::msbUndoCommandMake = false;
        const double front[3] = {1, 0, 0}, up[3] = {0, 0, 1};
        mCamera.Set(3, 4, 5);
        mCamera.Setv(front, up); // right is -y
    }
    void TearDown() override { Parameters_cls::msbUndoCommandMake = true; }
    void SetParallax(double parallax) {
        mStereo.mpCParallax->SetKeyFrame(&parallax, true, 0.0);
        mStereo.UpdateCurrent(0.0);
    }
    void SetMode(int type, int output) {
        mStereo.mCType.mValue = type;
        mStereo.mCEye.mValue = output;
    }
    PositionAndDirection_cls At(int eye) const {
        PositionAndDirection_cls camera = mCamera;
        mStereo.ModifyByStereogram(&camera, eye);
        return camera;
    }
    static std::vector<std::string> Read(const wxString& text, Stereo& stereo) {
        std::wistringstream stream(text.ToStdWstring());
        std::wstring line;
        std::vector<std::string> lines;
        while (std::getline(stream, line)) {
            stereo.ReadStrLine(stream, line);
            lines.push_back(wxString(line).ToStdString());
        }
        return lines;
    }

    Stereo mStereo;
    PositionAndDirection_cls mCamera;
};

TEST_F(StereoGram, EachOutputHasItsEyesAndPasses) {
    const struct {
        int mOutput, mFirst, mSecond;
        bool mbTwo;
    } cases[] = {{Stereo::OUTPUT_NO_PARALLAX, EYE_NONE, EYE_NONE, false},
                 {Stereo::OUTPUT_LEFT, EYE_LEFT, EYE_LEFT, false},
                 {Stereo::OUTPUT_RIGHT, EYE_RIGHT, EYE_RIGHT, false},
                 {Stereo::OUTPUT_LINE_BY_LINE, EYE_LEFT, EYE_RIGHT, true},
                 {Stereo::OUTPUT_RED_CYAN, EYE_LEFT, EYE_RIGHT, true},
                 {Stereo::OUTPUT_YELLOW_BLUE, EYE_LEFT, EYE_RIGHT, true},
                 {Stereo::OUTPUT_SIDE_BY_SIDE, EYE_LEFT, EYE_RIGHT, true},
                 {Stereo::OUTPUT_TOP_BOTTOM_FULL, EYE_LEFT, EYE_RIGHT, true},
                 {Stereo::OUTPUT_RED_CYAN_DUBOIS, EYE_LEFT, EYE_RIGHT, true}};
    for (const int type : {Stereo::TYPE_MONOGRAM, Stereo::TYPE_OFF_AXIS, Stereo::TYPE_TOE_IN})
        for (const auto& item : cases) {
            SetMode(type, item.mOutput);
            const bool bOn = type != Stereo::TYPE_MONOGRAM;
            EXPECT_EQ(mStereo.GetStereoEye(0), bOn ? item.mFirst : EYE_NONE) << item.mOutput;
            EXPECT_EQ(mStereo.GetStereoEye(1), bOn ? item.mSecond : EYE_NONE) << item.mOutput;
            EXPECT_EQ(mStereo.IsStereo(), bOn && item.mbTwo) << item.mOutput;
            const bool bSide = bOn && item.mOutput == Stereo::OUTPUT_SIDE_BY_SIDE;
            EXPECT_EQ(mStereo.GetModeSideBySide(0), bSide ? 1 : 0);
            EXPECT_EQ(mStereo.GetModeSideBySide(1), bSide ? 2 : 0);
            mStereo.mCDualOutput.mValue = 1;
            EXPECT_EQ(mStereo.IsDualOutput(), bOn && item.mbTwo) << item.mOutput;
            mStereo.mCDualOutput.mValue = 0;
            EXPECT_EQ(mStereo.IsDualOutput(), bOn && item.mOutput == Stereo::OUTPUT_LINE_BY_LINE);
        }
}

TEST_F(StereoGram, EyesStandHalfTheDistanceAside) {
    SetMode(Stereo::TYPE_OFF_AXIS, Stereo::OUTPUT_RED_CYAN);
    for (const double parallax : {0.4, 0.0, -0.4, 1e30}) {
        SetParallax(parallax);
        EXPECT_EQ(mStereo.GetOffsetRight(EYE_NONE), 0.0);
        EXPECT_EQ(mStereo.GetOffsetRight(EYE_LEFT), -parallax);
        EXPECT_EQ(mStereo.GetOffsetRight(EYE_RIGHT), parallax);
        EXPECT_DOUBLE_EQ(At(EYE_LEFT).mPos[1], 4 + parallax / 2);
        EXPECT_DOUBLE_EQ(At(EYE_RIGHT).mPos[1], 4 - parallax / 2);
        EXPECT_EQ(At(EYE_NONE).mPos[1], 4);
        for (const int eye : {EYE_LEFT, EYE_RIGHT}) {
            EXPECT_EQ(At(eye).mPos[0], 3);
            EXPECT_EQ(At(eye).mFront[0], 1) << "they look the same way";
        }
    }
    SetParallax(0.4);
    mStereo.mCEye.mValue = Stereo::OUTPUT_RIGHT;
    EXPECT_DOUBLE_EQ(At(Stereo::kStored).mPos[1], 3.8) << "the eye that the output shows";
    SetMode(Stereo::TYPE_MONOGRAM, Stereo::OUTPUT_RIGHT);
    EXPECT_EQ(At(EYE_RIGHT).mPos[1], 4);
}

TEST_F(StereoGram, EyesOfAToeInMeetAtTheFocus) {
    SetMode(Stereo::TYPE_TOE_IN, Stereo::OUTPUT_SIDE_BY_SIDE);
    for (const double parallax : {0.3, -0.3})
        for (const float angle : {2.0f, 0.5f, -1.0f}) {
            SetParallax(parallax);
            mStereo.mCToeInAngle.mValue = angle;
            const double focus = mStereo.GetDistanceToFocus(0.0);
            EXPECT_NEAR(focus, 0.5 * parallax / std::tan(double(angle) * M_PI / 180.0),
                        1e-5 * std::abs(focus));
            for (const int eye : {EYE_LEFT, EYE_RIGHT}) {
                const PositionAndDirection_cls camera = At(eye);
                const double way = focus / camera.mFront[0]; // behind the camera where it is negative
                EXPECT_NEAR(camera.mPos[1] + camera.mFront[1] * way, 4.0, 1e-4) << parallax << " " << angle;
                EXPECT_NEAR(camera.mFront[2], 0.0, 1e-12);
            }
        }
    mStereo.mCToeInAngle.mValue = 0.0f;
    for (const double parallax : {0.3, 0.0}) {
        SetParallax(parallax);
        EXPECT_TRUE(std::isinf(mStereo.GetDistanceToFocus(0.0))) << "straight ahead they never meet";
        EXPECT_EQ(At(EYE_LEFT).mFront[0], 1);
    }
}

TEST_F(StereoGram, FitAndDefaultAreOneStepEach) {
    Parameters_cls::msbUndoCommandMake = true;
    SetMode(Stereo::TYPE_TOE_IN, Stereo::OUTPUT_RED_CYAN);
    GCUndoList.Clear();
    const wxString before = mStereo.Serialize();
    for (const double nowhere : {0.0, -3.0, double(NAN), double(INFINITY)})
        mStereo.Fit(nowhere);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    mStereo.Fit(6.0);
    mStereo.UpdateCurrent(0.0);
    EXPECT_DOUBLE_EQ(mStereo.GetParallax(0.0), 0.2);
    EXPECT_NEAR(mStereo.GetDistanceToFocus(0.0), 6.0, 1e-4);
    const wxString fitted = mStereo.Serialize();
    mStereo.SetToDefault();
    EXPECT_EQ(mStereo.Serialize(), Stereo().Serialize());
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mStereo.Serialize(), fitted);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mStereo.Serialize(), before);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(StereoGram, BlockHasItsShapeAndComesBack) {
    EXPECT_TRUE(mStereo.Serialize().StartsWith(
        "--StereoGram\nStereogramType=0\nStereogramEye=0\nStereoGramToeInAngle=0.500000\n"
        "SterogramDualOutput=1\n-ParamGroup=Stereogram\ndimension=1\nStart\nParameter_Distance of Eye\n"
        "timeDepend=0\n"))
        << mStereo.Serialize();
    SetMode(Stereo::TYPE_TOE_IN, Stereo::OUTPUT_YELLOW_BLUE);
    mStereo.mCToeInAngle.mValue = 1.25f;
    mStereo.mCDualOutput.mValue = 0;
    SetParallax(0.125);
    const wxString text = mStereo.Serialize();
    Stereo other;
    EXPECT_EQ(Read("Before=1\n" + text + "---Other\nAfter=1\n", other),
              (std::vector<std::string>{"Before=1", "--StereoGram", "---Other", "After=1"}));
    EXPECT_EQ(other.Serialize(), text);
    other.Reset();
    EXPECT_EQ(other.Serialize().ToStdString(), Stereo().Serialize().ToStdString());
}

TEST_F(StereoGram, WrongFilesTakeNobodysLines) {
    Stereo stereo;
    // What isn't offered is as good as none.
    Read(
        "--StereoGram\nStereogramType=9\nStereogramEye=-2\nStereoGramToeInAngle=nan\nSterogramDualOutput=7\n",
        stereo);
    EXPECT_EQ(stereo.Serialize(), Stereo().Serialize());
    // Without curves, or with another's, the block ends.
    EXPECT_EQ(Read("--StereoGram\nStereogramType=1\n---Other\nAfter=1\n", stereo),
              (std::vector<std::string>{"--StereoGram", "---Other", "After=1"}));
    EXPECT_EQ(stereo.GetType(), Stereo::TYPE_OFF_AXIS);
    EXPECT_EQ(Read("--StereoGram\n-ParamGroup=Another\nAfter=1\n", stereo),
              (std::vector<std::string>{"--StereoGram", "-ParamGroup=Another", "After=1"}));
    // Keys outside the block are nobody's.
    Read("StereogramType=2\n---StereoGram\nStereogramType=2\n", stereo);
    EXPECT_EQ(stereo.GetType(), Stereo::TYPE_OFF_AXIS);
}

} // namespace
