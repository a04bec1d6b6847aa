#include "SCENE/clsCameraPath.h"

#include <algorithm>
#include <cmath>

#include <wx/intl.h>

#include "GL/BASE/clsCamera.h"
#include "GL/BASE/clsMarkPainter.h"

namespace {
const char* const kMarker = "---CameraPath";
// Of the mark, as long as that is neither a speck nor the whole picture.
constexpr double kSize = 1.0;
constexpr double kLeastPixels = 24.0;
constexpr double kMostPixels = 120.0;
} // namespace

CameraPath_cls::CameraPath_cls() : SceneObj_cls("Camera", true, true) {
    mPickName = kPickName;
    mCConfItemListBase.Add(&mCGeometry, "CameraGeometry=", "0");
    mCConfItemListBase.Add(&mCVAngle, "CameraVAngle=", "35");
    mCConfItemListBase.Add(&mCFishEyeOffset, "FishEyeOffset=", "0");
    mCConfItemListBase.Add(&mCLookAnchor, "CareraLookAnchor=", "0"); // files know it under this spelling
    mCConfItemListBase.Add(&mCVisible, "CameraVisible=", "1");
    SetToDefault();
}

void CameraPath_cls::SetToDefault() {
    for (ConfItem_cls* item : std::initializer_list<ConfItem_cls*>{&mCGeometry, &mCVAngle, &mCFishEyeOffset,
                                                                   &mCLookAnchor, &mCVisible})
        mCConfItemListBase.SetToDefault(item);
    const double place[3] = {-1.5, 0, 1.5}, angles[3] = {0, 45, 0}, scale[3] = {1, 1, 1};
    SetConstant(*mpCTranslate, place, INTERP_LINEAR);
    SetConstant(*mpCRotate, angles, INTERP_LINEAR);
    SetConstant(*mpCScale, scale, INTERP_LINEAR);
}

void CameraPath_cls::GLDraw(MarkPainter_cls& painter) const {
    if (!mCVisible.mValue) return;
    const MarkName_cls name(painter, mPickName);
    const double pixel = painter.GetPixel(mCCurrent.mPos);
    SetMarkColor(painter, 0.2f, 1.0f, 0.2f);
    if (pixel > 0.0 && std::isfinite(pixel)) {
        double matrix[16];
        mCCurrent.GetGLMatrix(matrix);
        const MarkScope_cls scope(painter);
        painter.Multiply(matrix);
        Camera_cls::Draw(painter,
                         mCGeometry.mValue == GEOMETRY_FISHEYE ? Camera_cls::FISHEYE : Camera_cls::BASIC,
                         std::clamp(kSize, kLeastPixels * pixel, kMostPixels * pixel), mCVAngle.mValue);
    }
    if (mbSelected && !mbDragging) GLDrawGuide(painter);
    if (!painter.IsPick()) GLDrawPath();
}

wxString CameraPath_cls::GetShownName() const { return _("Camera path"); }

wxString CameraPath_cls::Serialize() { return SerializeBlock(kMarker, {mpCTranslate, mpCRotate}); }

void CameraPath_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    if (!ReadBlock(stream, line, kMarker, {mpCTranslate, mpCRotate})) return;
    mCGeometry.mValue = std::clamp(mCGeometry.mValue, int(GEOMETRY_PERSPECTIVE), int(GEOMETRY_PANORAMIC));
    mCVAngle.mValue = std::isfinite(mCVAngle.mValue) ? std::clamp(mCVAngle.mValue, 0.0, 180.0) : 35.0;
    const float offset = mCFishEyeOffset.mValue;
    mCFishEyeOffset.mValue = std::isfinite(offset) ? std::clamp(offset, -90.0f, 90.0f) : 0.0f;
}
