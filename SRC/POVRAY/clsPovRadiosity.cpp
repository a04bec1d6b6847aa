#include "POVRAY/clsPovRadiosity.h"

#include <algorithm>
#include <cmath>

#include <wx/filefn.h>
#include <wx/intl.h>

#include "COMMON/clsSplitPath.h"
#include "POVRAY/clsPovFormat.h"

namespace {

const char* const kNoFile = "NONE"; // as it stands in projects

wxString Line(const char* word, double value) { return wxString::Format("\t\t%s %f\n", word, value); }
wxString Line(const char* word, int value) { return wxString::Format("\t\t%s %d\n", word, value); }

} // namespace

PovRadiosity_cls::PovRadiosity_cls() { PovRadiosity_cls::SetToDefault(); }

void PovRadiosity_cls::SetToDefault() {
    mConfList.Clear();
    mConfList.Add(&mType, "PovRadiosityType=", "0");
    mConfList.Add(&mReuse, "PovRadiosityReuse=", "0");
    mConfList.Add(&mPath, "PovRadiosityPathDir=", kNoFile);
    mConfList.Add(&mCount, "PovRadiosityCount=", "35");
    mConfList.Add(&mError, "PovRadiosityError=", "1.8");
    mConfList.Add(&mMinimumReuse, "PovRadiosityMinimumReuse=", "0.015");
    mConfList.Add(&mRecursionLimit, "PovRadiosityRecursionLimit=", "3");
    mConfList.Add(&mNearestCount, "PovRadiosityNearestCount=", "5");
    mConfList.Add(&mTraceStart, "PovRadiosityTraceStrat=", "0.08");
    mConfList.Add(&mTraceEnd, "PovRadiosityTraceEnd=", "0.04");
    mConfList.Add(&mZeroAmbient, "PovRadiosityZeroAmbient=", "1");
    mConfList.Add(&mMedia, "PovRadiosityMedia=", "0");
    mConfList.Add(&mNormal, "PovRadiosityNormal=", "1");
    mConfList.Add(&mHighReproduce, "PovRadHighReproduce=", "0");
}

void PovRadiosity_cls::Repair() {
    mType.mValue = std::min(mType.mValue, unsigned(TYPE_FULL));
    mReuse.mValue = std::min(mReuse.mValue, unsigned(REUSE_LOAD));
    mCount.mValue = std::max(mCount.mValue, 1);
    mRecursionLimit.mValue = std::clamp(mRecursionLimit.mValue, 1, 20);
    mNearestCount.mValue = std::clamp(mNearestCount.mValue, 1, 20);
    for (ConfItemFLOAT_cls* item : {&mError, &mMinimumReuse, &mTraceStart, &mTraceEnd})
        if (!std::isfinite(item->mValue)) mConfList.SetToDefault(item);
}

wxString PovRadiosity_cls::GetStrPovGlobal() const {
    if (mType.mValue == TYPE_NONE) return wxString();
    wxString text = "\tradiosity {\n";
    text += mType.mValue == TYPE_PRETRACE ? "\t\talways_sample off\n" : "\t\talways_sample on\n";
    text +=
        Line("pretrace_start", double(mTraceStart.mValue)) + Line("pretrace_end", double(mTraceEnd.mValue));
    text += Line("count", mCount.mValue) + Line("nearest_count", mNearestCount.mValue);
    text += Line("error_bound", double(mError.mValue)) + Line("minimum_reuse", double(mMinimumReuse.mValue));
    text += Line("recursion_limit", mRecursionLimit.mValue);
    if (mMedia.mValue) text += "\t\tmedia on\n";
    if (mNormal.mValue) text += "\t\tnormal on\n";
    text += "\t}\n";
    if (mZeroAmbient.mValue) text += "\tambient_light 0\n";
    return text;
}

wxString PovRadiosity_cls::GetFileName() const {
    return mPath.mStrValue == kNoFile ? wxString() : SplitPath_cls(mPath.mStrValue).GetPathStr(12);
}

wxString PovRadiosity_cls::GetNameProblem() const {
    if (PovFormat_cls::IsReadableName(GetFileName())) return wxString();
    return _("POV-Ray reads no such name; take English letters, and no quotes.");
}

bool PovRadiosity_cls::IsRadiosityFormatOK(const wxString& folder) const {
    const wxString name = GetFileName();
    if (mType.mValue == TYPE_NONE || mReuse.mValue == REUSE_NONE || name.empty()) return false;
    if (!GetNameProblem().empty()) return false;
    return mReuse.mValue == REUSE_LOAD ? wxIsReadable(folder + name) : wxIsWritable(folder);
}

wxString PovRadiosity_cls::GetStrPovIni(const wxString& folder, bool bAbsolute) const {
    const wxString file =
        IsRadiosityFormatOK(folder) ? (bAbsolute ? folder : wxString("./")) + GetFileName() : wxString();
    return GetStrIni(file, mReuse.mValue);
}

wxString PovRadiosity_cls::GetStrPovIniOfFilm(const wxString& file, unsigned reuse) const {
    return GetStrIni(file, reuse);
}

// A file that fails the check costs its own line alone.
wxString PovRadiosity_cls::GetStrIni(const wxString& file, unsigned reuse) const {
    if (mType.mValue == TYPE_NONE) return wxString();
    wxString text;
    if (!file.empty()) text += "Radiosity_File_Name=\"" + file + "\"\n";
    if (reuse == REUSE_SAVE) text += "Radiosity_To_File=on\n";
    if (reuse == REUSE_LOAD) text += "Radiosity_From_File=on\n";
    text += "Radiosity_Vain_Pretrace=off\n";
    return text + "High_Reproducibility=" + (mHighReproduce.mValue ? "on\n" : "off\n");
}
