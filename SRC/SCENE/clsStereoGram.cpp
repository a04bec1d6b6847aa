#include "SCENE/clsStereoGram.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <wx/intl.h>

#include "COMMON/UpdateBits.h"
#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "PARAM/ParamText.h"
#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsParamGroup.h"
#include "SCENE/clsStereoGramGUI.h"

namespace {

const char* const kMarker = "--StereoGram";
constexpr int kLastOutput = StereoGram_cls::OUTPUT_NUMBER - 1;
constexpr float kMaxToeIn = 89.0f;
constexpr double kFitShare = 30.0; // of the distance, between the eyes

} // namespace

const long long StereoGram_cls::kUpdateMask = UPDATE_STEREO | UPDATE_TL | UPDATE_GL;

StereoGram_cls::StereoGram_cls() {
    static const wxString kSuffix = "Distance of Eye";
    mpCParallax = new ParamGroup_cls("Stereogram", 1, &kSuffix, kUpdateMask, false);
    mConfItemList.Add(&mCType, "StereogramType=", "0");
    mConfItemList.Add(&mCEye, "StereogramEye=", "0");
    mConfItemList.Add(&mCToeInAngle, "StereoGramToeInAngle=", "0.5");
    mConfItemList.Add(&mCDualOutput, "SterogramDualOutput=", "1"); // files know it under this spelling
    UpdateTLShown();
}

StereoGram_cls::~StereoGram_cls() { delete mpCParallax; }

OwnedDialog_cls* StereoGram_cls::MakeDialog(wxWindow* pParent) {
    return new StereoGramGUI_cls(pParent, *this);
}

bool StereoGram_cls::IsStereo() const {
    return mCType.mValue != TYPE_MONOGRAM && mCEye.mValue >= OUTPUT_LINE_BY_LINE;
}

bool StereoGram_cls::IsDualOutput() const {
    return IsStereo() && (mCDualOutput.mValue != 0 || mCEye.mValue == OUTPUT_LINE_BY_LINE);
}

bool StereoGram_cls::IsFull() const {
    return IsStereo() && (mCEye.mValue == OUTPUT_SIDE_BY_SIDE_FULL || mCEye.mValue == OUTPUT_TOP_BOTTOM_FULL);
}

bool StereoGram_cls::IsAbove() const {
    return IsStereo() && (mCEye.mValue == OUTPUT_TOP_BOTTOM || mCEye.mValue == OUTPUT_TOP_BOTTOM_FULL);
}

StereoGram_cls::Part_st StereoGram_cls::GetPart(int pass) const {
    const double second = pass == 0 ? 0.0 : 0.5;
    switch (IsStereo() ? mCEye.mValue : int(OUTPUT_NO_PARALLAX)) {
    case OUTPUT_SIDE_BY_SIDE:
        return {second, 0.0, 0.5, 1.0};
    case OUTPUT_TOP_BOTTOM:
        return {0.0, 0.5 - second, 1.0, 0.5};
    case OUTPUT_SIDE_BY_SIDE_FULL:
        return {second, 0.25, 0.5, 0.5};
    case OUTPUT_TOP_BOTTOM_FULL:
        return {0.25, 0.5 - second, 0.5, 0.5};
    default:
        return {};
    }
}

std::vector<wxString> StereoGram_cls::GetOutputNames() {
    return {_("No Parallax"),
            _("LEFT"),
            _("RIGHT"),
            _("LINE BY LINE"),
            _("RED-CYAN"),
            _("YELLOW-BLUE"),
            _("SIDE BY SIDE"),
            _("TOP BOTTOM"),
            _("SIDE BY SIDE (full)"),
            _("TOP BOTTOM (full)"),
            _("RED-CYAN (Dubois)")};
}

int StereoGram_cls::GetStereoEye(int pass) const {
    if (mCType.mValue == TYPE_MONOGRAM || mCEye.mValue == OUTPUT_NO_PARALLAX) return EYE_NONE;
    if (mCEye.mValue == OUTPUT_LEFT) return EYE_LEFT;
    if (mCEye.mValue == OUTPUT_RIGHT) return EYE_RIGHT;
    return pass == 0 ? EYE_LEFT : EYE_RIGHT;
}

int StereoGram_cls::GetModeSideBySide(int pass) const {
    if (mCType.mValue == TYPE_MONOGRAM || mCEye.mValue != OUTPUT_SIDE_BY_SIDE) return 0;
    return pass == 0 ? 1 : 2;
}

double StereoGram_cls::GetStereogramYawAngle(int eye) const {
    if (eye == EYE_NONE || mCType.mValue == TYPE_OFF_AXIS) return 0.0;
    const auto angle = static_cast<double>(mCToeInAngle.mValue);
    return eye == EYE_LEFT ? -angle : angle;
}

double StereoGram_cls::GetOffsetRight(int eye) const {
    const int which = eye == kStored ? GetStereoEye(0) : eye;
    if (which == EYE_NONE) return 0.0;
    return which == EYE_RIGHT ? mParallax : -mParallax;
}

double StereoGram_cls::GetParallax(double time) const {
    double parallax = 0.0;
    mpCParallax->GetInterpolatedValue(&parallax, time, Parameters_cls::kCurrent);
    return std::isfinite(parallax) ? parallax : 0.0;
}

double StereoGram_cls::GetDistanceToFocus(double time) const {
    const double slope = std::tan(MyVector::ToRadians(static_cast<double>(mCToeInAngle.mValue)));
    if (slope == 0.0) return std::numeric_limits<double>::infinity();
    return 0.5 * GetParallax(time) / slope;
}

void StereoGram_cls::ModifyByStereogram(PositionAndDirection_cls* pCamera, int eye) const {
    if (mCType.mValue == TYPE_MONOGRAM) return;
    const int which = eye == kStored ? GetStereoEye(0) : eye;
    const double way = GetOffsetRight(which) / 2.0;
    for (int i = 0; i < 3; ++i)
        pCamera->mPos[i] += pCamera->mRight[i] * way;
    const double yaw = GetStereogramYawAngle(which);
    if (yaw != 0.0) pCamera->RotateYPR(yaw, 0.0, 0.0);
}

void StereoGram_cls::Fit(double distance) {
    if (!std::isfinite(distance) || distance <= 0.0) return;
    const UndoBlock_cls block;
    const double parallax = distance / kFitShare;
    mpCParallax->SetKeyFrame(&parallax, false, ParamGroup_cls::kCurrent);
    const double angle = MyVector::ToDegrees(std::atan(0.5 / kFitShare));
    PushSetValue(&mCToeInAngle.mValue, static_cast<float>(angle), static_cast<int>(kUpdateMask));
}

void StereoGram_cls::SetToDefault() {
    const StereoGram_cls fresh;
    const UndoBlock_cls block;
    const auto mask = static_cast<int>(kUpdateMask);
    PushSetValue(&mCType.mValue, fresh.mCType.mValue, mask);
    PushSetValue(&mCEye.mValue, fresh.mCEye.mValue, mask);
    PushSetValue(&mCToeInAngle.mValue, fresh.mCToeInAngle.mValue, mask);
    PushSetValue(&mCDualOutput.mValue, fresh.mCDualOutput.mValue, mask);
    mpCParallax->CopyFromP(fresh.mpCParallax);
    UpdateTLShown();
}

void StereoGram_cls::Reset() {
    for (ConfItem_cls* item :
         std::initializer_list<ConfItem_cls*>{&mCType, &mCEye, &mCToeInAngle, &mCDualOutput})
        mConfItemList.SetToDefault(item);
    const StereoGram_cls fresh;
    mpCParallax->mVParams[0].CopyCurveFromP(fresh.mpCParallax->mVParams[0]);
}

void StereoGram_cls::UpdateTLShown() {
    const bool bShown = mCType.mValue != TYPE_MONOGRAM;
    if (mpCParallax->mbVisible == bShown) return;
    mpCParallax->mbVisible = bShown;
    if (mOnRows) mOnRows();
}

Parameters_cls* StereoGram_cls::GetPCParamFromID(const wxString& id) const {
    return mpCParallax->GetPCParamFromID(id);
}

wxString StereoGram_cls::Serialize() {
    return wxString(kMarker) + "\n" + mConfItemList.SerializeAll() + mpCParallax->Serialize();
}

// What a file may hold is what the dialog offers; other values are as good as none.
void StereoGram_cls::RepairItems() {
    const auto repair = [this](auto& item, auto low, auto high) {
        if (!(item.mValue >= low && item.mValue <= high)) mConfItemList.SetToDefault(&item); // NaN, too
    };
    repair(mCType, int(TYPE_MONOGRAM), int(TYPE_TOE_IN));
    repair(mCEye, int(OUTPUT_NO_PARALLAX), kLastOutput);
    repair(mCToeInAngle, -kMaxToeIn, kMaxToeIn);
    repair(mCDualOutput, 0, 1);
}

// A line that begins another block stays in the stream.
void StereoGram_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    if (line != kMarker) return;
    wxString next;
    for (auto before = stream.tellg(); ReadParamLine(stream, &next); before = stream.tellg()) {
        if (next.StartsWith("--")) {
            GoBackTo(stream, before);
            break;
        }
        if (next.Find("ParamGroup=") != wxNOT_FOUND) {
            if (!mpCParallax->ReadStrLine(stream, next)) GoBackTo(stream, before);
            break;
        }
        mConfItemList.ReadStrLineAll(next);
    }
    RepairItems();
}
