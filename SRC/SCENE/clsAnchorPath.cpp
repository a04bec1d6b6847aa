#include "SCENE/clsAnchorPath.h"

#include <algorithm>
#include <cmath>

#include <wx/intl.h>

#include "GL/BASE/clsCamera.h"
#include "GL/BASE/clsGLGuides.h"
#include "GL/BASE/clsMarkPainter.h"

namespace {
const char* const kMarker = "---AnchorPath";
// Of the mark, as long as that is neither a speck nor large.
constexpr double kSize = 0.2;
constexpr double kLeastPixels = 8.0;
constexpr double kMostPixels = 30.0;
} // namespace

AnchorPath_cls::AnchorPath_cls() : SceneObj_cls("Anchor", true, true) {
    mPickName = kPickName;
    mCConfItemListBase.Add(&mCVisible, "AnchorVisible=", "1");
    SetToDefault();
}

void AnchorPath_cls::SetToDefault() {
    mCConfItemListBase.SetToDefault(&mCVisible);
    const double none[3] = {0, 0, 0}, scale[3] = {1, 1, 1};
    SetConstant(*mpCTranslate, none, INTERP_LINEAR);
    SetConstant(*mpCRotate, none, INTERP_LINEAR);
    SetConstant(*mpCScale, scale, INTERP_LINEAR);
}

void AnchorPath_cls::GLDraw(MarkPainter_cls& painter) const {
    static const Position_cls kOrigin;
    bool bMoves = false;
    for (const Parameters_cls& param : mpCTranslate->mVParams)
        bMoves |= param.mbTimeDepend.mValue;
    const bool bMark = mbSelected || mCCurrent.Position_cls::operator!=(kOrigin);
    if (!mCVisible.mValue || !(bMark || bMoves)) return;
    const MarkName_cls name(painter, mPickName);
    const double pixel = painter.GetPixel(mCCurrent.mPos);
    SetMarkColor(painter, 0.2f, 1.0f, 0.2f);
    if (bMark && pixel > 0.0 && std::isfinite(pixel)) {
        const MarkScope_cls scope(painter);
        painter.Translate(mCCurrent.mPos);
        Camera_cls::Draw(painter, Camera_cls::CROSSHAIR,
                         std::clamp(kSize, kLeastPixels * pixel, kMostPixels * pixel), 35.0);
    }
    if (mbSelected && !mbDragging) GLDrawGuide(painter);
    if (!painter.IsPick()) GLDrawPath();
}

void AnchorPath_cls::UpdateCurrentObj(double time) {
    SceneObj_cls::UpdateCurrentObj(time);
    double place[3];
    mbHeld = mFollow && mFollow(time, place) != NOTHING;
    if (mbHeld) mCCurrent.Set(place);
}

// Nobody sees how it is turned.
bool AnchorPath_cls::TakesMode(int mode) const { return mode == GLGuides_cls::TRANSLATE && !mbHeld; }

wxString AnchorPath_cls::GetWhyHeld() const {
    return mbHeld ? wxString(_("The anchor follows a particle: untick \"Follow\" to move it")) : wxString();
}

wxString AnchorPath_cls::GetShownName() const { return _("Anchor"); }

wxString AnchorPath_cls::Serialize() { return SerializeBlock(kMarker, {mpCTranslate}); }

void AnchorPath_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    ReadBlock(stream, line, kMarker, {mpCTranslate});
}
