#include "POVRAY/clsPovJob.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <wx/filename.h>
#include <wx/intl.h>

#include "COMMON/FramePath.h"
#include "COMMON/Confined.h"
#include "COMMON/clsSplitPath.h"
#include "POVRAY/clsPovFormat.h"

namespace {

const char* const kState = ".pov-state"; // what POV-Ray would go on from
const char* const kAliasName = "morentis-render-";

bool Link(const wxString& to, const wxString& name) {
    return symlink(NarrowPath(to).c_str(), NarrowPath(name).c_str()) == 0;
}

/// When a file was written, in nanoseconds; 0 where there is none.
long long GetWritten(const wxString& path) {
    struct stat facts;
    if (stat(NarrowPath(path).c_str(), &facts) != 0) return 0;
    return facts.st_mtim.tv_sec * 1000000000LL + facts.st_mtim.tv_nsec;
}

wxString Reason() { return wxString::FromUTF8(std::strerror(errno)); }

} // namespace

// POV-Ray takes a word with a blank for two, one with "=" for an option, "[" for a section, and of letters
// it knows those of English alone.
bool PovJob_cls::IsPlainPath(const wxString& path) {
    static const wxString kPlain = "/._-+,~@%^";
    for (const wxUniChar c : path)
        if (!(c.IsAscii() && (wxIsalnum(c) || kPlain.Contains(wxString(c))))) return false;
    return true;
}

// Plain names in the same folder, so that what the scene includes is found. Where several machines share it,
// a process of the same number may have taken a name, by its .ini: then it is the next one.
bool PovJob_cls::MakeAlias(const wxString& folder) {
    static int sNumber = 0;
    while (true) {
        const wxString name =
            folder + "/" + kAliasName + wxString::Format("%ld-%d", long(getpid()), ++sNumber);
        if (Link(mStrBase + ".ini", name + ".ini")) {
            mStrAlias = name;
            unlink(NarrowPath(name + ".pov").c_str()); // of nobody any more
            return Link(mStrBase + ".pov", name + ".pov");
        }
        if (errno != EEXIST) return false;
    }
}

void PovJob_cls::RemoveAlias() {
    if (mStrAlias.empty()) return;
    PovFormat_cls format; // who changes an .ini may get a picture of any other
    for (unsigned row = 0; row < PovFormat_cls::GetFormatNames().size(); ++row) {
        format.mOutputFormat.mValue = row;
        unlink(NarrowPath(mStrAlias + format.GetPictureEnding()).c_str());
    }
    for (const wxString& ending : {wxString(".pov"), wxString(kState), wxString(".ini")})
        unlink(NarrowPath(mStrAlias + ending).c_str());
    mStrAlias.clear();
}

bool PovJob_cls::Start(const wxString& exe, const wxString& base, const wxString& ending) {
    Stop();
    mStrBase = base;
    mStrEnding = ending;
    mStrPicture = base + ending;
    mOldPicture = GetWritten(mStrPicture);
    mStrError = WhyNoProgram();
    mbTimed = false;
    if (!mStrError.empty()) return false;
    mWatch.Start();
    const wxString folder = SplitPath_cls(base).mStrDir;
    const bool bCommand = !exe.Contains("/"); // to be looked for where commands are
    std::vector<std::string> words = {"nice", NarrowPath(bCommand ? exe : MakeAbsolutePath(exe))};
    if (IsPlainPath(base) && !mbWhole) {
        words.push_back(NarrowPath(base + ".ini"));
    } else if (MakeAlias(folder)) {
        const std::string name = NarrowPath(SplitPath_cls(mStrAlias + ".").mStrStem);
        words.insert(words.end(), {name + ".ini", "+I" + name + ".pov", "+O" + name});
    } else {
        mStrError = wxString::Format(_("nothing can be written in %s: %s"), folder, Reason());
        RemoveAlias();
        return false;
    }
    if (mbOneThread) words.push_back("+WT1");
    mStrError = mProcess.Start(words, NarrowPath(folder));
    if (!mStrError.empty()) RemoveAlias();
    return mStrError.empty();
}

bool PovJob_cls::Poll() {
    if (!mProcess.Poll()) return false;
    End();
    return true;
}

// One of an earlier run isn't this one's: the .ini may have been changed to a picture of another kind.
void PovJob_cls::TakePicture() {
    const wxString made = mStrAlias.empty() ? mStrPicture : mStrAlias + mStrEnding;
    if (GetWritten(made) == (mStrAlias.empty() ? mOldPicture : 0))
        mStrError = wxString::Format(_("there is no new picture %s"), mStrPicture);
    else if (!mStrAlias.empty() &&
             std::rename(NarrowPath(made).c_str(), NarrowPath(mStrPicture).c_str()) != 0)
        mStrError = wxString::Format(_("%s could not be written: %s"), mStrPicture, Reason());
}

void PovJob_cls::End() {
    mMillis = mWatch.Time();
    mbTimed = true;
    const int status = mProcess.GetStatus();
    if (status == 0)
        TakePicture();
    else if (status > 128)
        mStrError = wxString::Format(_("it was ended by signal %d"), status - 128);
    else if (status != 0)
        mStrError = wxString::Format(_("it ended with %d"), status);
    const wxString words = mStrError.empty() ? wxString() : mProcess.GetLastLines();
    if (!words.empty()) mStrError += ":\n" + words;
    RemoveAlias();
}

void PovJob_cls::Stop() {
    if (!mProcess.IsRunning()) return;
    mProcess.Stop();
    mMillis = mWatch.Time();
    mbTimed = true;
    mStrError = _("it was given up");
    // What it had begun to write.
    if (mStrAlias.empty()) {
        unlink(NarrowPath(mStrBase + kState).c_str());
        unlink(NarrowPath(mStrPicture).c_str());
    }
    RemoveAlias();
}
