#include "SCENE/clsCameraPath.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

namespace {
const char* const kMarker = "---CameraPath";
}

CameraPath_cls::CameraPath_cls() : SceneObj_cls("Camera", true, true) {
    mCConfItemListBase.Add(&mCGeometry, "CameraGeometry=", "0");
    mCConfItemListBase.Add(&mCVAngle, "CameraVAngle=", "35");
    mCConfItemListBase.Add(&mCFishEyeOffset, "FishEyeOffset=", "0");
    mCConfItemListBase.Add(&mCLookAnchor, "CareraLookAnchor=", "0"); // files know it under this spelling
    mCConfItemListBase.Add(&mCVisible, "CameraVisible=", "1");
    const DirectEdit_cls direct;
    SetInitValueTrans(-1.5, 0, 1.5);
    SetInitValueRot(0, 45, 0);
    SetInitValueScale(1, 1, 1);
}

void CameraPath_cls::GLDraw(bool bPick) const {
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    // The mark of the camera comes here, and the handles of a selected one.
    if (!bPick) GLDrawPath();
}

wxString CameraPath_cls::Serialize() { return SerializeBlock(kMarker, {mpCTranslate, mpCRotate}); }

void CameraPath_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    if (!ReadBlock(stream, line, kMarker, {mpCTranslate, mpCRotate})) return;
    mCGeometry.mValue = std::clamp(mCGeometry.mValue, int(GEOMETRY_PERSPECTIVE), int(GEOMETRY_PANORAMIC));
    mCVAngle.mValue = std::isfinite(mCVAngle.mValue) ? std::clamp(mCVAngle.mValue, 0.0, 180.0) : 35.0;
    const float offset = mCFishEyeOffset.mValue;
    mCFishEyeOffset.mValue = std::isfinite(offset) ? std::clamp(offset, -90.0f, 90.0f) : 0.0f;
}
