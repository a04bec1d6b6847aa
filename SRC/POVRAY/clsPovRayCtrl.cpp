#include "POVRAY/clsPovRayCtrl.h"

#include <algorithm>
#include <cerrno>

#include <wx/arrstr.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/utils.h>

#include "COMMON/Confined.h"
#include "COMMON/Eye.h"
#include "COMMON/FramePath.h"
#include "COMMON/MsgBox.h"
#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsUndoManager.h"
#include "POVRAY/clsPovRayGUI.h"

namespace {

constexpr int kMaxDigits = 9; // what a float holds
const char* const kCommonScene = "CommonScene.pov";
const char* const kCommonLight = "CommonLight.rca";

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
    mConfListOwn.Add(&mKeepFirstPretrace, "PovKeepFirstPretrace=", "0");
}

PovRayCtrl_cls::~PovRayCtrl_cls() = default;

void PovRayCtrl_cls::SetToDefault() {
    for (PovSettings_cls* settings :
         std::initializer_list<PovSettings_cls*>{&mCRadiosity, &mCRender, &mCPhotons, &mCFormat, &mCAdvanced})
        settings->SetToDefault();
    for (ConfItem_cls* item : std::initializer_list<ConfItem_cls*>{
             &mDigits, &mColorByParticle, &mGroupMaterials, &mLikeView, &mKeepFirstPretrace})
        mConfListOwn.SetToDefault(item);
    mConfListFile.SetToDefault(&mUseCommonSceneFile);
}

void PovRayCtrl_cls::SetPreset(bool bFilm) {
    mCFormat.mAntialias.mValue = true;
    mCFormat.mAntiAliasThreshold.mValue = bFilm ? 0.2f : 0.1f;
    mCFormat.mAntiAliasDepth.mValue = bFilm ? 2 : 3;
    mCFormat.mDisplay.mValue = !bFilm; // no window a frame
    mCRadiosity.mType.mValue = bFilm ? PovRadiosity_cls::TYPE_PRETRACE : PovRadiosity_cls::TYPE_FULL;
    mCRadiosity.mCount.mValue = bFilm ? 80 : 200;
    mCRadiosity.mError.mValue = bFilm ? 1.0f : 0.5f;
    mCRadiosity.mNearestCount.mValue = 10;
    mCRadiosity.mRecursionLimit.mValue = 2;
    mCRadiosity.mTraceEnd.mValue = bFilm ? 0.02f : 0.01f;
    mCRadiosity.mHighReproduce.mValue = bFilm;
    mKeepFirstPretrace.mValue = bFilm;
}

void PovRayCtrl_cls::ChangeSettings(const std::function<void()>& change) {
    const wxString before = Serialize();
    change();
    const wxString after = Serialize();
    if (after == before) return;
    const auto read = [this](const wxString& text) {
        return [this, text] {
            for (const wxString& line : wxSplit(text, '\n', '\0'))
                ReadStrLine(line);
            UpdateItems(true);
        };
    };
    GCUndoList.PushNewCommand(new CommandCall_cls(read(after), 0), new CommandCall_cls(read(before), 0));
    GCUndoList.ExecCurrent();
}

void PovRayCtrl_cls::ResetOwnSettings() {
    mDigits.mValue = 0;
    for (ConfItemBOOL_cls* item : {&mColorByParticle, &mGroupMaterials, &mLikeView, &mKeepFirstPretrace})
        item->mValue = false;
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

OwnedDialog_cls* PovRayCtrl_cls::MakeDialog(wxWindow* pParent) { return new PovRayGUI_cls(pParent, this); }

wxString PovRayCtrl_cls::GetWorkingDir() const {
    wxString path = MakeAbsolutePath(mPathPovWork.mStrValue);
    while (path.length() > 1 && path.Last() == '/')
        path.RemoveLast();
    return path;
}

wxString PovRayCtrl_cls::GetWorkingDirWithSep(bool bAbsolute) const {
    return bAbsolute ? GetWorkingDir() + "/" : wxString("./");
}

wxString PovRayCtrl_cls::MakeWorkingDir() const {
    const wxString path = GetWorkingDir();
    if (wxFileName::DirExists(path)) return wxString();
    const wxLogNull quiet;
    const bool bMay = MayWriteFile(NarrowPath(path)); // else it is told as any other reason
    if (!bMay) errno = EPERM;
    if (bMay && wxFileName::Mkdir(path, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL)) return wxString();
    return wxString::Format(_("The folder %s can't be made: %s."), path, wxSysErrorMsgStr());
}

wxString PovRayCtrl_cls::GetFileStr(unsigned kind, unsigned eye, int number) const {
    if (mpHooks->mCommitFields) mpHooks->mCommitFields();
    if (kind == FILE_COMMON_SCENE)
        return IsFileAbsolute() ? GetWorkingDirWithSep(true) + kCommonScene : wxString(kCommonScene);
    if (kind == FILE_ANIM) return GetFrameFileStr(eye, number == -1 ? mAnimNumber : number);
    return GetNumberedFile(mFilePovSnap.mStrValue, eye, number == -1 ? mSnapNumber : number);
}

wxString PovRayCtrl_cls::GetFrameFileStr(unsigned eye, int number) const {
    return GetNumberedFile(mFilePovAnim.mStrValue, eye, number);
}

wxString PovRayCtrl_cls::GetNumberedFile(const wxString& name, unsigned eye, int number) const {
    wxString pattern = name;
    if (eye == EYE_LEFT || eye == EYE_RIGHT) {
        const wxString letter = eye == EYE_LEFT ? "L" : "R";
        if (pattern.Replace("%", letter + "%", false) == 0) pattern += letter;
    }
    return GetWorkingDirWithSep(true) + FramePath_cls(pattern).GetText(number);
}

wxString PovRayCtrl_cls::GetNameProblem(unsigned kind) const {
    const wxString& pattern = kind == FILE_ANIM ? mFilePovAnim.mStrValue : mFilePovSnap.mStrValue;
    const wxString shown = "\"" + pattern + "\"";
    if (pattern.empty()) return _("Scenes need a name.");
    if (pattern.Contains("/"))
        return wxString::Format(_("%s: scenes stand in the working directory itself."), shown);
    if (pattern.Contains("\"") && pattern.Contains("'"))
        return wxString::Format(_("%s: POV-Ray reads no name with quotes of both kinds."), shown);
    if (kind == FILE_ANIM && !FramePath_cls(pattern).HasNumber())
        return wxString::Format(_("%s has no number, such as %%04d: each frame replaces the one before."),
                                shown);
    return wxString();
}

void PovRayCtrl_cls::OpenWorkingDir() const {
    const wxString path = GetWorkingDir();
    if (!WhyNoProgram().empty() || !wxFileName::DirExists(path) || !wxLaunchDefaultApplication(path))
        Notice("pov-ray folder", wxString::Format(_("%s can't be shown."), path));
}

wxString PovRayCtrl_cls::GetCommonScenePath() const { return GetWorkingDirWithSep(true) + kCommonScene; }

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
    options.mbFileAbsolute = IsFileAbsolute();
    return options;
}

wxString PovRayCtrl_cls::GetStrPovGlobal() const {
    return "global_settings {\n" + mCAdvanced.GetStrPovGlobal() + mCRadiosity.GetStrPovGlobal() +
           mCPhotons.GetStrPovGlobal() + "}\n";
}

bool PovRayCtrl_cls::IsFileAbsolute() const {
    return (mCFormat.mFileAbsolute.mValue || mbForRender) && PovFormat_cls::IsReadableName(GetWorkingDir());
}

wxString PovRayCtrl_cls::GetPretracePath() const { return GetWorkingDirWithSep(true) + kCommonLight; }

int PovRayCtrl_cls::GetPretraceOfFrame() const {
    if (!mKeepFirstPretrace.mValue || mCRadiosity.mType.mValue == PovRadiosity_cls::TYPE_NONE) return -1;
    return mAnimNumber == mAnimInitNumber ? PovRadiosity_cls::REUSE_SAVE : PovRadiosity_cls::REUSE_LOAD;
}

wxString PovRayCtrl_cls::GetStrPovIni(const wxString& iniPath, int pretrace) const {
    const bool bAbsolute = IsFileAbsolute();
    const wxString folder = GetWorkingDirWithSep(true);
    const wxString radiosity =
        pretrace < 0 ? mCRadiosity.GetStrPovIni(folder, bAbsolute)
                     : mCRadiosity.GetStrPovIniOfFilm(GetWorkingDirWithSep(bAbsolute) + kCommonLight,
                                                      unsigned(pretrace));
    return mCFormat.GetStrPovFormat(iniPath, bAbsolute) + radiosity + mCPhotons.GetStrPovIni() +
           "#Initial_Frame=0\n#Final_Frame=10\n#Subset_Start_Frame=0\n#Subset_End_Frame=9\n";
}

bool PovRayCtrl_cls::OutputPovRayIni(const wxString& iniPath, int pretrace) const {
    const wxString reason =
        WriteFileSafely(iniPath, GetStrPovIni(iniPath, pretrace).utf8_string(), ToDisk::Later);
    if (!reason.empty())
        Notice("pov-ray", wxString::Format(_("%s could not be written: %s."), iniPath, reason));
    return reason.empty();
}

wxString PovRayCtrl_cls::GetPovRayCommand(const wxString& base) const {
    return "nice " + mPathPovRay.mStrValue + " " + base + ".ini";
}
