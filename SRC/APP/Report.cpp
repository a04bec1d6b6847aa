#include "APP/Report.h"

#include <wx/filefn.h>
#include <wx/mstream.h>
#include <wx/thread.h>
#include <wx/utils.h>
#include <wx/versioninfo.h>
#include <wx/zipstrm.h>

#include "APP/WindowArgs.h"
#include "APP/clsMain.h"
#include "APP/clsRecorder.h"
#include "GL/BASE/clsGLInfo.h"

namespace {

wxString MakeSystemText() {
    const wxVersionInfo toolkit = wxGetLibraryVersionInfo();
    wxString text = wxString::Format("Morentis %s\n", GetVersion());
    text += wxString::Format("%s %d.%d.%d\n", toolkit.GetName(), toolkit.GetMajor(), toolkit.GetMinor(),
                             toolkit.GetMicro());
    text += wxGetOsDescription() + "\n";
    text += wxString::Format("free memory: %lld MB\nprocessors: %d\n\n",
                             static_cast<long long>(wxGetFreeMemory().GetValue() / 1048576),
                             wxThread::GetCPUCount());
    return text + GLInfo_cls::GetText() + "\n";
}

} // namespace

wxString WithoutHome(const wxString& text) {
    wxString result = text;
    const wxString home = wxGetHomeDir();
    if (home.length() > 1) result.Replace(home, "~");
    const wxString user = wxGetUserId(); // as in a mounted disk's /media/NAME
    if (!user.empty()) result.Replace("/" + user + "/", "/USER/");
    return result;
}

std::vector<std::pair<wxString, std::string>> MakeReport(Main_cls& hub) {
    wxString report = MakeSystemText() + "\nThe last messages:\n";
    for (const wxString& told : hub.mpCRecorder->GetTold())
        report += "- " + told + "\n";
    const wxString project = wxString::FromUTF8(hub.MakeProjectText());
    return {{"report.txt", WithoutHome(report).utf8_string()},
            {"record.txt", WithoutHome(hub.mpCRecorder->GetText()).utf8_string()},
            {"project.mrp", WithoutHome(project).utf8_string()}};
}

std::string ZipReport(const std::vector<std::pair<wxString, std::string>>& files) {
    wxMemoryOutputStream memory;
    {
        wxZipOutputStream zip(memory);
        for (const auto& [name, bytes] : files) {
            zip.PutNextEntry(name);
            zip.Write(bytes.data(), bytes.size());
        }
    }
    std::string bytes(memory.GetLength(), '\0');
    memory.CopyTo(bytes.data(), bytes.size());
    return bytes;
}
