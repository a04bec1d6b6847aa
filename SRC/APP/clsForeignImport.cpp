#include "APP/clsForeignImport.h"

#include <algorithm>

#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/progdlg.h>
#include <wx/stdpaths.h>
#include <wx/tokenzr.h>
#include <wx/utils.h>

#include "APP/clsFileMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsImportQuestion.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "POVRAY/clsPovProcess.h"

namespace {

const char* const kProgram = "morentis-import";
constexpr int kPollMillis = 40;
constexpr int kBeginMillis = 200;       // views paint where the question was; they keep still afterwards
constexpr long kPatienceMillis = 10000; // with one that was asked to stop
constexpr size_t kMostComplaints = 8;

/// Beside this program, else wherever the system looks.
std::string FindProgram() {
    const wxFileName here(wxPathOnly(wxStandardPaths::Get().GetExecutablePath()), kProgram);
    return here.IsFileExecutable() ? std::string(here.GetFullPath().fn_str()) : kProgram;
}

} // namespace

ForeignImport_cls::ForeignImport_cls(FrameMain_cls& frame) : mFrame(frame) {
    mBegin.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Import(); });
}

bool ForeignImport_cls::Offer(const std::vector<wxString>& files) {
    if (GbGLLockModalDialog.load() || mBegin.IsRunning()) return true; // a question is up already
    ImportQuestion_cls question(&mFrame, files);
    const auto answer = question.Ask();
    if (answer != ImportQuestion_cls::Import) return answer == ImportQuestion_cls::Cancel;
    mFiles = question.GetFiles();
    mFolder = question.GetFolder();
    mBegin.StartOnce(kBeginMillis);
    return true;
}

// What it says line by line: how far it is, and what went wrong.
void ForeignImport_cls::TakeLines(const PovProcess_cls& process) {
    wxStringTokenizer lines(process.GetLastLines(), "\n");
    while (lines.HasMoreTokens()) {
        wxString line = lines.GetNextToken();
        wxString text;
        if (line.StartsWith("Snapshot ")) mProgress = line;
        if (!line.StartsWith(wxString(kProgram) + ": ", &text) || mComplaints.size() >= kMostComplaints)
            continue;
        if (std::find(mComplaints.begin(), mComplaints.end(), text) == mComplaints.end())
            mComplaints.push_back(text);
    }
}

bool ForeignImport_cls::Wait(PovProcess_cls* pProcess) {
    const FlagScope_cls modal(GbGLLockModalDialog);
    wxProgressDialog bar(_("Import"), _("Reading the files"), 100, &mFrame,
                         wxPD_APP_MODAL | wxPD_CAN_ABORT | wxPD_ELAPSED_TIME | wxPD_AUTO_HIDE);
    bool bStopped = false;
    long waited = 0;
    while (!pProcess->Poll()) {
        TakeLines(*pProcess);
        int snapshot = 0;
        int file = 0;
        int number = 0;
        wxString text;
        if (wxSscanf(mProgress, "Snapshot %d, file %d of %d", &snapshot, &file, &number) == 3)
            text = wxString::Format(_("Snapshot %d, file %d of %d"), snapshot, file, number);
        const bool bGoOn =
            number > 1 ? bar.Update(std::clamp(100 * (file - 1) / number, 0, 99), text) : bar.Pulse(text);
        if (!bGoOn && !bStopped) pProcess->AskToEnd();
        bStopped = bStopped || !bGoOn;
        waited += bStopped ? kPollMillis : 0;
        if (waited > kPatienceMillis) pProcess->Stop();
        if (!pProcess->IsRunning()) break;
        wxMilliSleep(kPollMillis);
    }
    TakeLines(*pProcess);
    return !bStopped;
}

void ForeignImport_cls::Import() {
    if (GbGLLockModalDialog.load() || GbGLLockDrawing.load()) { // somebody was faster
        mBegin.StartOnce(kBeginMillis);
        return;
    }
    std::vector<std::string> words = {FindProgram(), "--progress", "--output", std::string(mFolder.fn_str()),
                                      "--"};
    for (const wxString& file : mFiles)
        words.emplace_back(file.fn_str());
    mComplaints.clear();
    mProgress.clear();
    PovProcess_cls process;
    const wxString wrong = process.Start(words, "/");
    const bool bToEnd = wrong.empty() && Wait(&process);
    wxString complaints = wrong;
    for (const wxString& one : mComplaints)
        complaints += (complaints.empty() ? "" : "\n") + one;
    const wxString project = wxFileName(mFolder, wxFileName(mFolder).GetFullName() + ".mrp").GetFullPath();
    const bool bThere = wrong.empty() && process.GetStatus() != 1 && process.GetStatus() != 2 &&
                        wxFileName::FileExists(project);
    if (!bThere && !bToEnd && wrong.empty()) return; // stopped before there was anything
    if (!bThere) {
        if (complaints.empty()) complaints = process.GetLastLines();
        MsgBox(_("The files couldn't be imported.") + "\n\n" + complaints, _("Import"));
        return;
    }
    if (!bToEnd && !MsgBoxYesno(_("The import was stopped. Open what is there?"), _("Import"))) return;
    if (bToEnd && process.GetStatus() != 0)
        MsgBox(_("Not all of it could be imported.") + "\n\n" + complaints, _("Import"));
    mFrame.GetPCFileMenu()->OpenProjectAsked(project);
}
