// Project and configure files: which object, in which order. One line is one item; every line is offered
// to every object, and an object with a block reads on from the stream itself.
#include "APP/clsMain.h"

#include <sstream>

#include <wx/ffile.h>
#include <wx/file.h>
#include <wx/filename.h>

#include "APP/clsFrameMain.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/clsPreference.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"

namespace {

// Bytes that are no UTF-8 are carried through both ways instead of ending the text.
const wxMBConvUTF8& FileConv() {
    static const wxMBConvUTF8 sConv(wxMBConvUTF8::MAP_INVALID_UTF8_TO_PUA);
    return sConv;
}

bool IsConfigureFile(const wxString& path) { return path.Matches(wxString("*") + kConfigureFileName); }

bool ReadText(const wxString& path, wxString* pText) {
    if (!wxFileName::FileExists(path)) return false;
    wxFFile file(path, "rb");
    if (!file.IsOpened()) return false;
    const wxFileOffset length = file.Length();
    std::string bytes(size_t(length > 0 ? length : 0), '\0');
    bytes.resize(file.Read(bytes.data(), bytes.size()));
    *pText = wxString(bytes.data(), FileConv(), bytes.size());
    if (pText->StartsWith(wxString(wxUniChar(0xFEFF)))) pText->erase(0, 1);
    return true;
}

/// Write beside and rename: whatever happens, one whole file stands under the name.
bool WriteText(const wxString& path, const wxString& text) {
    const wxScopedCharBuffer bytes = text.mb_str(FileConv());
    wxLogNull quiet; // the caller decides what to tell
    wxTempFile file(path);
    return file.IsOpened() && file.Write(bytes.data(), bytes.length()) && file.Flush() && file.Commit();
}

wxString StripLineEnd(const std::wstring& line) {
    return wxString(!line.empty() && line.back() == L'\r' ? line.substr(0, line.size() - 1) : line);
}

} // namespace

wxString Main_cls::SerializeAll(bool bFull) {
    wxString text = mpCDataLoader->Serialize();
    text += mpCFrameMain->SerializeForConfigure();
    if (!bFull) return text;
    text += mpCFrameMain->Serialize();
    text += mpCTimeCtrl->Serialize();
    text += mpCDrawOption->Serialize();
    text += mpCPDataSeqCtrl->Serialize();
    text += mpCPeriodicBoundary->Serialize();
    text += mpCCameraPath->Serialize();
    text += mpCAnchorPath->Serialize();
    text += mpCFrameMain->GetPCPreference()->Serialize();
    text += MainGLCanvas_cls::SerializeStaticMember();
    // The four views once more: files keep their shape.
    for (int view = 0; view < 4; ++view)
        text += mpCFrameMain->GetPCGLCanvas(view)->Serialize();
    return text;
}

bool Main_cls::SaveProjectFile(const wxString& path, bool bFull) {
    if (!IsConfigureFile(path)) mpCFrameMain->SetLastProject(path);
    PDataSequence_cls::msStrProjectDir = wxFileName(path).GetPath();
    const wxString text = SerializeAll(bFull);
    PDataSequence_cls::msStrProjectDir.clear();
    return WriteText(path, text);
}

void Main_cls::QuitProcess() { WriteText(GetConfigureFilePath(), SerializeAll(false)); }

void Main_cls::ReadProjectFile(const wxString& path) {
    wxString text;
    if (!ReadText(path, &text)) {
        if (!IsConfigureFile(path)) MsgBox(_("Read Configure Fails") + path, _("Warning"));
        return;
    }
    const FlagScope_cls loading(GbGLLockProjectLoading);
    PDataSequence_cls::msStrProjectDir = wxFileName(path).GetPath();
    std::wistringstream stream(text.ToStdWstring());
    std::wstring raw;
    while (std::getline(stream, raw)) {
        const wxString line = StripLineEnd(raw);
        mpCDataLoader->ReadStrLine(line);
        mpCFrameMain->ReadStrLine(line);
        mpCTimeCtrl->ReadStrLine(stream, line);
        mpCDrawOption->ReadStrLine(line);
        mpCPDataSeqCtrl->ReadStrLine(stream, line);
        mpCPeriodicBoundary->ReadStrLine(line);
        mpCCameraPath->ReadStrLine(stream, line);
        mpCAnchorPath->ReadStrLine(stream, line);
        mpCFrameMain->GetPCPreference()->ReadStrLine(line);
        MainGLCanvas_cls::ReadStrLineStaticMember(stream, line);
    }
    PDataSequence_cls::msStrProjectDir.clear();
    mpCFrameMain->ApplySettings();
    GCUndoList.Clear(); // a project begins a history of its own
}
