// Camera and anchor path: where they begin, and their blocks in a project.
#include <cmath>

#include "ParamTest.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"

namespace {

class CameraPathFile : public ParamTest {
protected:
    /// Read as a project is read; the lines that neither path's block held.
    static std::vector<std::string> Read(const wxString& text, CameraPath_cls& camera,
                                         AnchorPath_cls& anchor) {
        std::wistringstream stream(text.ToStdWstring());
        std::wstring line;
        std::vector<std::string> lines;
        while (std::getline(stream, line)) {
            camera.ReadStrLine(stream, line);
            anchor.ReadStrLine(stream, line);
            lines.push_back(wxString(line).ToStdString());
        }
        return lines;
    }
    static wxString Moved(CameraPath_cls& camera, AnchorPath_cls& anchor) {
        const double from[3] = {1, 2, 3}, to[3] = {4, 5, 6.5}, angles[3] = {10, 20, 350};
        SceneObj_cls::SetKeyAt(camera.mpCTranslate, from, 0.0);
        SceneObj_cls::SetKeyAt(camera.mpCTranslate, to, 0.5);
        SceneObj_cls::SetKeyAt(camera.mpCRotate, angles, 0.5);
        SceneObj_cls::SetKeyAt(anchor.mpCTranslate, to, 0.25);
        camera.mCVAngle.mValue = 72.5;
        camera.mCLookAnchor.mValue = true;
        anchor.mCVisible.mValue = false;
        return camera.Serialize() + anchor.Serialize();
    }
};

TEST_F(CameraPathFile, BeginsLookingAtTheOrigin) {
    CameraPath_cls camera;
    AnchorPath_cls anchor;
    EXPECT_EQ(GCUndoList.GetCurrent(), 0u) << "where things begin is no step";
    EXPECT_TRUE(Parameters_cls::msbUndoCommandMake);
    camera.UpdateCurrentObj(0.7);
    anchor.UpdateCurrentObj(0.7);
    EXPECT_EQ(camera.mCCurrent.mPos[0], -1.5);
    EXPECT_EQ(camera.mCCurrent.mPos[2], 1.5);
    EXPECT_NEAR(camera.mCCurrent.mFront[0], std::sqrt(0.5), 1e-5);
    EXPECT_NEAR(camera.mCCurrent.mFront[2], -std::sqrt(0.5), 1e-5);
    EXPECT_EQ(camera.mCScaleCurrent[1], 1.0);
    EXPECT_EQ(anchor.mCCurrent.mPos[1], 0.0);
    EXPECT_EQ(anchor.mCScaleCurrent[2], 1.0);
}

TEST_F(CameraPathFile, BlocksHaveTheirShape) {
    CameraPath_cls camera;
    AnchorPath_cls anchor;
    const wxString text = camera.Serialize();
    EXPECT_TRUE(text.StartsWith("---CameraPath\nCameraGeometry=0\nCameraVAngle=35\nFishEyeOffset=0.000000\n"
                                "CareraLookAnchor=0\nCameraVisible=1\n-ParamGroup=Camera Translate\n"
                                "dimension=3\nStart\nParameter_x\ntimeDepend=0\nperiodic=0\nitemnum 1\n"
                                "0.000000000 0 -1.500000 "))
        << text;
    EXPECT_TRUE(text.Contains("-ParamGroup=Camera Rotation\n"));
    EXPECT_TRUE(text.Contains("periodic=360\n"));
    EXPECT_FALSE(text.Contains("Scale"));
    EXPECT_TRUE(
        anchor.Serialize().StartsWith("---AnchorPath\nAnchorVisible=1\n-ParamGroup=Anchor Translate\n"));
    EXPECT_FALSE(anchor.Serialize().Contains("Rotation"));
}

TEST_F(CameraPathFile, ComesBackAndLeavesTheOthersTheirLines) {
    CameraPath_cls camera, camera2;
    AnchorPath_cls anchor, anchor2;
    const wxString text = Moved(camera, anchor);
    const auto lines = Read("Before=1\n" + text + "--StereoGram\nAfter=1\n", camera2, anchor2);
    EXPECT_EQ(lines, (std::vector<std::string>{"Before=1", "---CameraPath", "---AnchorPath", "--StereoGram",
                                               "After=1"}));
    EXPECT_EQ(camera2.Serialize() + anchor2.Serialize(), text);
    camera2.UpdateCurrentObj(0.25);
    EXPECT_NEAR(camera2.mCCurrent.mPos[0], 2.5, 1e-6);
    // In another order, with Windows line ends.
    CameraPath_cls camera3;
    AnchorPath_cls anchor3;
    wxString windows = anchor.Serialize() + camera.Serialize();
    windows.Replace("\n", "\r\n");
    windows.Replace("Path\r\n", "Path\n"); // the marker comes stripped from the project's reader
    Read(windows, camera3, anchor3);
    EXPECT_EQ(camera3.Serialize() + anchor3.Serialize(), text);
}

TEST_F(CameraPathFile, OnlyTheOldSpellingAndSaneValuesCount) {
    CameraPath_cls camera;
    AnchorPath_cls anchor;
    Read("---CameraPath\nCameraLookAnchor=1\nCameraGeometry=77\nCameraVAngle=1e99\nFishEyeOffset=nan\n",
         camera, anchor);
    EXPECT_FALSE(camera.mCLookAnchor.mValue);
    EXPECT_EQ(camera.mCGeometry.mValue, CameraPath_cls::GEOMETRY_PANORAMIC);
    EXPECT_EQ(camera.mCVAngle.mValue, 180.0);
    EXPECT_EQ(camera.mCFishEyeOffset.mValue, 0.0f);
    Read("---CameraPath\nCareraLookAnchor=1\nCameraGeometry=-3\n", camera, anchor);
    EXPECT_TRUE(camera.mCLookAnchor.mValue);
    EXPECT_EQ(camera.mCGeometry.mValue, 0);
    Read("CareraLookAnchor=0\n---CameraPath2\nCareraLookAnchor=0\n", camera, anchor);
    EXPECT_TRUE(camera.mCLookAnchor.mValue) << "only behind the marker";
}

TEST_F(CameraPathFile, BlockWithoutCurvesLeavesTheNextOneWhole) {
    CameraPath_cls camera, source;
    AnchorPath_cls anchor, away;
    Moved(source, away);
    const auto lines = Read("---CameraPath\nCameraVAngle=50\n" + away.Serialize() + "Last=1", camera, anchor);
    EXPECT_EQ(lines, (std::vector<std::string>{"---CameraPath", "---AnchorPath", "Last=1"}));
    EXPECT_EQ(camera.mCVAngle.mValue, 50.0);
    EXPECT_EQ(camera.mpCTranslate->mVParams[0].GetKeyNumber(), 1) << "what isn't told stays";
    EXPECT_EQ(anchor.Serialize(), away.Serialize());
}

TEST_F(CameraPathFile, GroupThatIsMissingLeavesTheOther) {
    CameraPath_cls camera, source;
    AnchorPath_cls anchor;
    Moved(source, anchor);
    Read("---CameraPath\n" + source.mpCRotate->Serialize() + "-", camera, anchor);
    EXPECT_EQ(camera.mpCRotate->Serialize(), source.mpCRotate->Serialize());
    EXPECT_EQ(camera.mpCTranslate->mVParams[0].GetKeyNumber(), 1);
}

TEST_F(CameraPathFile, FilesCutAnywhereAreRead) {
    CameraPath_cls camera;
    AnchorPath_cls anchor;
    const wxString text = Moved(camera, anchor);
    CameraPath_cls cutCamera;
    AnchorPath_cls cutAnchor;
    for (size_t length = 0; length <= text.length(); length += 3) {
        Read(text.Left(length), cutCamera, cutAnchor);
        cutCamera.UpdateCurrentObj(0.3);
        cutAnchor.UpdateCurrentObj(0.3);
        EXPECT_TRUE(std::isfinite(cutCamera.mCCurrent.mPos[0])) << length;
        EXPECT_TRUE(IsSorted(cutCamera.mpCTranslate->mVParams[0]));
    }
    Read(text, cutCamera, cutAnchor);
    EXPECT_EQ(cutCamera.Serialize() + cutAnchor.Serialize(), text) << "and a whole one mends it";
}

} // namespace
