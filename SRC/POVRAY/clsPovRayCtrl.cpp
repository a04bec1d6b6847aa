#include "POVRAY/clsPovRayCtrl.h"

#include <algorithm>

#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/utils.h>

#include "COMMON/Eye.h"
#include "COMMON/FramePath.h"
#include "COMMON/MsgBox.h"
#include "COMMON/SafeFile.h"

namespace {

constexpr int kMaxDigits = 9; // what a float holds
const char* const kCommonScene = "CommonScene.pov";

} // namespace

PovRayCtrl_cls::PovRayCtrl_cls() {
    mConfList.Add(&mPathPovRay, "PathPovRay=", "/usr/bin/povray");
    mConfList.Add(&mPathPovWork, "PathPovWork=", wxGetCwd() + "/POV");
    mConfListFile.Add(&mFilePovSnap, "FilePovSnap=", "povsnap%04d");
    mConfListFile.Add(&mFilePovAnim, "FilePovAnim=", "povanim%04d");
    mConfListFile.Add(&mPovTweaks, "PovTweaks=", "0");
    mConfListFile.Add(&mUseCommonSceneFile, "UseCommonSceneFile=", "1");
    mConfListOwn.Add(&mDigits, "PovDigits=", "0");
    mConfListOwn.Add(&mColorByParticle, "PovColorByParticle=", "1");
    mConfListOwn.Add(&mGroupMaterials, "PovGroupMaterials=", "1");
    mConfListOwn.Add(&mLikeView, "PovLikeView=", "1");
}

PovRayCtrl_cls::~PovRayCtrl_cls() = default;

void PovRayCtrl_cls::SetToDefault() {
    for (PovSettings_cls* settings :
         std::initializer_list<PovSettings_cls*>{&mCRadiosity, &mCRender, &mCPhotons, &mCFormat, &mCAdvanced})
        settings->SetToDefault();
    for (ConfItem_cls* item :
         std::initializer_list<ConfItem_cls*>{&mDigits, &mColorByParticle, &mGroupMaterials, &mLikeView})
        mConfListOwn.SetToDefault(item);
    mConfListFile.SetToDefault(&mUseCommonSceneFile);
}

void PovRayCtrl_cls::ResetOwnSettings() {
    mDigits.mValue = 0;
    mColorByParticle.mValue = mGroupMaterials.mValue = false;
    mLikeView.mValue = true;
}

wxString PovRayCtrl_cls::Serialize() {
    return mConfList.SerializeAll() + mConfListFile.SerializeAll() + mCRadiosity.Serialize() +
           mCRender.Serialize() + mCPhotons.Serialize() + mCFormat.Serialize() + mCAdvanced.Serialize() +
           mConfListOwn.SerializeAll();
}

void PovRayCtrl_cls::ReadStrLine(const wxString& line) {
    mConfList.ReadStrLineAll(line);
    mConfListFile.ReadStrLineAll(line);
    for (PovSettings_cls* settings :
         std::initializer_list<PovSettings_cls*>{&mCRadiosity, &mCRender, &mCPhotons, &mCFormat, &mCAdvanced})
        settings->ReadStrLine(line);
    if (mConfListOwn.ReadStrLineAll(line)) mDigits.mValue = std::clamp(mDigits.mValue, 0, kMaxDigits);
}

wxString PovRayCtrl_cls::GetWorkingDir() const {
    wxString path = MakeAbsolutePath(mPathPovWork.mStrValue);
    while (path.length() > 1 && path.Last() == '/')
        path.RemoveLast();
    return path;
}

wxString PovRayCtrl_cls::GetWorkingDirWithSep(bool bAbsolute) const {
    return bAbsolute ? GetWorkingDir() + "/" : wxString("./");
}

wxString PovRayCtrl_cls::GetStrRelativePath(const wxString& path) const {
    wxFileName name(MakeAbsolutePath(path));
    name.MakeRelativeTo(GetWorkingDir());
    return name.GetFullPath();
}

wxString PovRayCtrl_cls::MakeWorkingDir() const {
    const wxString path = GetWorkingDir();
    if (wxFileName::DirExists(path)) return wxString();
    wxLogNull quiet;
    if (wxFileName::Mkdir(path, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL)) return wxString();
    return wxString::Format(_("The folder %s can't be made: %s."), path, wxSysErrorMsgStr());
}

wxString PovRayCtrl_cls::GetFileStr(unsigned kind, unsigned eye, int number) const {
    if (kind == FILE_COMMON_SCENE)
        return mCFormat.mFileAbsolute.mValue ? GetWorkingDirWithSep(true) + kCommonScene
                                             : wxString(kCommonScene);
    wxString pattern = kind == FILE_ANIM ? mFilePovAnim.mStrValue : mFilePovSnap.mStrValue;
    if (eye == EYE_LEFT || eye == EYE_RIGHT) {
        const wxString letter = eye == EYE_LEFT ? "L" : "R";
        if (pattern.Replace("%", letter + "%", false) == 0) pattern += letter;
    }
    if (number == -1) number = kind == FILE_ANIM ? mAnimNumber : mSnapNumber;
    return GetWorkingDirWithSep(true) + FramePath_cls(pattern).GetText(number);
}

bool PovRayCtrl_cls::HasNumber(unsigned kind) const {
    const wxString& pattern = kind == FILE_ANIM ? mFilePovAnim.mStrValue : mFilePovSnap.mStrValue;
    return FramePath_cls(pattern).HasNumber();
}

PovTextOptions_st PovRayCtrl_cls::GetTextOptions() const {
    PovTextOptions_st options;
    options.mbFastColoring = mCFormat.mFastColoring.mValue;
    options.mDigits = mDigits.mValue;
    options.mbColorByParticle = mColorByParticle.mValue;
    options.mbGroupMaterials = mGroupMaterials.mValue;
    options.mbLikeView = mLikeView.mValue;
    options.mbCommonScene = mUseCommonSceneFile.mValue;
    options.mPhotonsType = mCPhotons.mType.mValue;
    options.mStrWorkDir = GetWorkingDir();
    options.mbFileAbsolute = mCFormat.mFileAbsolute.mValue;
    return options;
}

wxString PovRayCtrl_cls::GetStrPovGlobal() const {
    return "global_settings {\n" + mCAdvanced.GetStrPovGlobal() + mCRadiosity.GetStrPovGlobal() +
           mCPhotons.GetStrPovGlobal() + "}\n";
}

wxString PovRayCtrl_cls::GetStrPovIni(const wxString& iniPath) const {
    return mCFormat.GetStrPovFormat(iniPath) +
           mCRadiosity.GetStrPovIni(GetWorkingDirWithSep(true), mCFormat.mFileAbsolute.mValue,
                                    mCRadiosity.mReuse.mValue) +
           mCPhotons.GetStrPovIni() +
           "#Initial_Frame=0\n#Final_Frame=10\n#Subset_Start_Frame=0\n#Subset_End_Frame=9\n";
}

bool PovRayCtrl_cls::OutputPovRayIni(const wxString& iniPath) const {
    const wxString reason = WriteFileSafely(iniPath, GetStrPovIni(iniPath).utf8_string(), ToDisk::Later);
    if (!reason.empty())
        Notice("pov-ray", wxString::Format(_("%s could not be written: %s."), iniPath, reason));
    return reason.empty();
}

wxString PovRayCtrl_cls::GetPovRayCommand(const wxString& base) const {
    return "nice " + mPathPovRay.mStrValue + " " + base + ".ini";
}
