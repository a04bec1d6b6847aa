#include "GL/VIEW/clsViewSettings.h"

#include <algorithm>

#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsViewHost.h"
#include "SCENE/clsCameraPath.h"

static_assert(int(ViewSettings_cls::GEOMETRY_PANORAMIC) == int(CameraPath_cls::GEOMETRY_PANORAMIC),
              "views and paths count geometries alike");

ViewSettings_cls::ViewSettings_cls(const ViewHost_cls& host, int panelIndex)
    : mPanelIndex(panelIndex), mpCHost(&host) {
    const wxString prefix = wxString::Format("Panel%d", mPanelIndex);
    mConfList.Add(&mShowMessage, prefix + "ShowMessage=", mPanelIndex == kExtraPanel ? "0" : "1");
    mConfList.Add(&mShowItems, prefix + "ShowItems=", "1");
    mConfList.Add(&mShowGrid, prefix + "ShowGrid=", "1");
    mConfList.Add(&mShowData, prefix + "ShowData=", "1");
    mConfList.Add(&mPivotMode, prefix + "PivotMode=", "0");
    mConfList.Add(&mGLDepthMin, prefix + "GLDepthMin=", "0.03");
    mConfList.Add(&mGLDepthMax, prefix + "GLDepthMax=", "5000");
    mConfList.Add(&mGLPersAngle, prefix + "GLPersAngle=", "35");
    mConfList.Add(&mGLOrthoScale, prefix + "GLOrthoScale=", "1");
    mConfList.Add(&mDisplayMode, prefix + "DisplayMode=", "0");
    mConfList.Add(&mGLGeometry, prefix + "GLGeometry=", "0");
    mConfList.Add(&mGLPathIndex, prefix + "GLPathIndex=", "0");
    mConfList.Add(&mGridType, prefix + "GridType=", "0");
    mConfList.Add(&mShowOtherCam, prefix + "ShowOtherCam=", "0");
    mConfList.Add(&mDrawItemByXOR, prefix + "DrawItemByXOR=", "0");
    mConfList.Add(&mGridAntialias, prefix + "GridAntialias=", "0");
    mConfList.Add(&mGridShowTag, prefix + "GridShowTag=", "0");
    mConfList.Add(&mDistortion, prefix + "Distortion", "0"); // files know these two without "="
    mConfList.Add(&mFisheyeGrid, prefix + "FisheyeGrid", "0");
}

int ViewSettings_cls::GetEffectiveGeometry() const {
    const int mode = mDisplayMode.mValue;
    const bool bPath =
        mode == DISPLAY_PATH || (mode == DISPLAY_COPY && mGLGeometry.mValue < GEOMETRY_FISHEYE);
    return bPath ? GetPLinkedCameraPath()->mCGeometry.mValue : mGLGeometry.mValue;
}

int ViewSettings_cls::GetMultiPanelMode() const {
    if (IsFishEye()) return FishEye_cls::MODE_FISHEYE;
    return IsCylinder() ? FishEye_cls::MODE_PANORAMA : FishEye_cls::MODE_FLAT;
}

CameraPath_cls* ViewSettings_cls::GetPLinkedCameraPath() const {
    return mpCLinkedCameraPath ? mpCLinkedCameraPath : mpCHost->GetPCCameraPath();
}

AnchorPath_cls* ViewSettings_cls::GetPLinkedAnchorPath() const {
    return mpCLinkedAnchorPath ? mpCLinkedAnchorPath : mpCHost->GetPCAnchorPath();
}

void ViewSettings_cls::TakeDisplayMode(int mode) {
    mDisplayMode.mValue = std::clamp(mode, int(DISPLAY_FREE), GetLastMode());
    if (mGLGeometry.mValue < GEOMETRY_FISHEYE)
        mGLGeometry.mValue = IsAlongAxis() ? GEOMETRY_ORTHOGRAPHIC : GEOMETRY_PERSPECTIVE;
    mpCLinkedCameraPath = nullptr;
    mpCLinkedAnchorPath = nullptr;
}

void ViewSettings_cls::TakeGeometry(int geometry) {
    mGLGeometry.mValue = std::clamp(geometry, int(GEOMETRY_PERSPECTIVE), int(GEOMETRY_PANORAMIC));
}

void ViewSettings_cls::LinkPaths() {
    TakeDisplayMode(DISPLAY_PATH);
    mpCLinkedCameraPath = mpCHost->GetPCCameraPath();
    mpCLinkedAnchorPath = mpCHost->GetPCAnchorPath();
}

bool ViewSettings_cls::ReadSettings(const wxString& line) {
    if (!mConfList.ReadStrLineAll(line)) return false;
    mDisplayMode.mValue = std::clamp(mDisplayMode.mValue, int(DISPLAY_FREE), GetLastMode());
    TakeGeometry(mGLGeometry.mValue);
    return true;
}
