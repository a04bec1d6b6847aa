#include "APP/clsReplay.h"

#include <cstdio>
#include <utility>

#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/filename.h>
#include <wx/intl.h>

#include "APP/WindowPath.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/UserActs.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kStepMillis = 1;
constexpr int kWaitMillis = 5;

bool HasModalDialog() {
    for (const wxWindow* window : wxTopLevelWindows) {
        const auto* dialog = dynamic_cast<const wxDialog*>(window);
        if (dialog && dialog->IsModal()) return true;
    }
    return false;
}

} // namespace

const std::map<wxString, Replay_cls::Verb_st>& Replay_cls::GetVerbs() {
    using R = Replay_cls;
    static const std::map<wxString, Verb_st> kVerbs = {
        {"menu", {&R::DoMenu, false, false, 2}},         {"mouse", {&R::DoMouse, true, true, 5}},
        {"touch", {&R::DoTouch, true, true, 3}},         {"key", {&R::DoKey, true, false, 4}},
        {"shortcut", {&R::DoShortcut, false, false, 3}}, {"set", {&R::DoSet, true, true, 3}},
        {"text", {&R::DoText, true, true, 3}},           {"press", {&R::DoPress, true, true, 2}},
        {"check", {&R::DoCheck, true, true, 3}},         {"choose", {&R::DoChoose, true, true, 3}},
        {"page", {&R::DoPage, true, true, 3}},           {"scroll", {&R::DoScroll, true, true, 3}},
        {"close", {&R::DoClose, true, false, 2}},        {"frame", {&R::DoFrame, false, false, 3}},
        {"window", {&R::DoSize, false, false, 3}},       {"open", {&R::DoOpen, false, false, 2}},
        {"rest", {&R::DoRest, false, false, 1}},         {"version", {&R::DoNothing, false, false, 1}},
    };
    return kVerbs;
}

Replay_cls::Replay_cls(Main_cls& hub, ActFile_st file, const wxString& pathOfRecord, const wxString& folder)
    : mHub(hub), mFile(std::move(file)), mStrBeside(wxFileName(pathOfRecord).GetPath()), mStrFolder(folder) {
    mTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Step(); });
}

Replay_cls::~Replay_cls() {
    if (!mbDone) GUserActs.mAnswer = nullptr;
}

wxString Replay_cls::MakeFolderName(const wxString& pathOfRecord) {
    wxString name = pathOfRecord + ".files";
    for (int n = 2; wxFileName::Exists(name); ++n)
        name = wxString::Format("%s.files-%d", pathOfRecord, n);
    return name;
}

void Replay_cls::Begin() {
    GUserActs.mAnswer = [this](const char* verb) { return Answer(verb); };
    for (const wxString& mistake : mFile.mVMistakes)
        std::printf("%s\n", mistake.utf8_string().c_str());
    mWaited.Start();
    mTimer.StartOnce(kStepMillis);
}

// Also called from the loops of dialogs that a line has opened: the lines behind it are what was done there.
void Replay_cls::Step() {
    if (mbDone) return;
    if (mAt >= mFile.mLines.size() && !HasModalDialog() && IsAtRest()) return End();
    if (mAt >= mFile.mLines.size() || (!mbPressed && !IsAtRest() && mWaited.Time() < kPatience)) {
        mTimer.StartOnce(kWaitMillis);
        return;
    }
    mWaited.Start();
    mTimer.StartOnce(kStepMillis);
    const ActLine_st line = mFile.mLines[mAt++];
    if (const wxString mistake = Do(line); !mistake.empty()) Tell(line.mNumber, mistake);
}

bool Replay_cls::IsAtRest() const {
    if (wxTheApp->HasPendingEvents() || GbGLLockDrawing.load() || GbGLLockProjectLoading.load()) return false;
    if (GbGLLockModalDialog.load() || HasModalDialog()) return true; // views keep still
    const TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    if (time->IsPlaying()) return true;
    return !GpCThreadReader.load() && !GpCThreadInterpolate.load() && !GbGLLockPlayWait.load() &&
           mHub.mpCFrameMain->GetPCTopHalf()->CheckGLRefresh(time->GetFrame(), time->GetInterpStep());
}

wxString Replay_cls::Do(const ActLine_st& line) {
    const auto verb = GetVerbs().find(line.GetVerb());
    if (verb == GetVerbs().end()) {
        for (const char* answer : {"answer", "file", "save", "folder", "color", "font", "number", "popup"})
            if (line.GetVerb() == answer) return _("nothing was asked that this line answers");
        return wxString::Format(_("\"%s\" is nothing that can be done"), line.GetVerb());
    }
    if (line.mWords.size() < verb->second.mWords) return _("the line is too short");
    wxWindow* window = nullptr;
    if (verb->second.mbWindow) {
        window = FindWindowByPath(line.GetWord(1));
        if (!window) return wxString::Format(_("there is no \"%s\""), line.GetWord(1));
        if (verb->second.mbControl && (!window->IsShownOnScreen() || !window->IsEnabled()))
            return wxString::Format(_("\"%s\" can't be used now"), line.GetWord(1));
    }
    return (this->*verb->second.mAct)(line, window);
}

// The line behind the one that led to the question has the answer.
wxString Replay_cls::Answer(const wxString& verb) {
    if (mAt >= mFile.mLines.size() || mFile.mLines[mAt].GetVerb() != verb) {
        const int number = mAt > 0 ? mFile.mLines[mAt - 1].mNumber : 0;
        if (verb != "popup") // one that was left without a choice leaves no line
            Tell(number, wxString::Format(_("the record has no answer (\"%s\") to what it led to"), verb));
        return wxString();
    }
    const wxString answer = mFile.mLines[mAt++].GetWord(1);
    if (answer.empty()) return answer;
    if (verb == "save") return GetFileToSave(answer);
    if (verb == "folder") return mStrFolder;
    return verb == "file" ? GetFileToOpen(answer) : answer;
}

wxString Replay_cls::GetFileToSave(const wxString& path) {
    const wxString name = wxFileName(path).GetFullName();
    if (name.empty() || name == "." || name == "..") return wxString();
    const wxString target = mStrFolder + "/" + name;
    mSaved[path] = target;
    return target;
}

wxString Replay_cls::GetFileToOpen(const wxString& path) const {
    if (const auto saved = mSaved.find(path); saved != mSaved.end()) return saved->second;
    wxString whole = path;
    if (whole.StartsWith("~/")) whole = wxGetHomeDir() + whole.Mid(1);
    const wxString beside = mStrBeside + "/" + wxFileName(path).GetFullName();
    return !wxFileName::FileExists(whole) && wxFileName::FileExists(beside) ? beside : whole;
}

void Replay_cls::Tell(int number, const wxString& what) {
    constexpr size_t kMost = 10000; // of a record that is all wrong
    if (mFile.mVMistakes.size() >= kMost) return;
    mFile.mVMistakes.push_back(wxString::Format("%d: ", number) + what);
    std::printf("%s\n", mFile.mVMistakes.back().utf8_string().c_str());
    std::fflush(stdout);
}

void Replay_cls::End() {
    mbDone = true;
    GUserActs.mAnswer = nullptr;
    mHub.EndGestures();
    const wxString text =
        wxString::Format(_("The record is replayed: %zu lines, %zu mistakes. This window saves only in %s."),
                         mFile.mLines.size(), mFile.mVMistakes.size(), mStrFolder);
    Notice(text, text);
}
