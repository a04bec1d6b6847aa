#include "IMAGE/clsVideoMaker.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/utils.h>

#include "COMMON/Confined.h"
#include "COMMON/Leftovers.h"
#include "COMMON/clsSplitPath.h"
#include "IMAGE/VideoFile.h"

namespace {

namespace fs = std::filesystem;

constexpr unsigned long kPollMillis = 20;
constexpr int kNotRun = 127;
const char* const kFolderName = "morentis-video-";
constexpr size_t kMostWords = 400; // of the tool's complaints

wxString Reason(int error) { return wxString::FromUTF8(std::strerror(error)); }

/// Beside the video, with its ending, which tells the tool the container.
std::string MakePartialName(const wxString& path) {
    const SplitPath_cls split(path);
    return NarrowPath(split.mStrNoExt + wxString::Format(".%ld.part", long(getpid())) + split.mStrExt);
}

/// Those of this video whose makers were killed.
void RemoveOldParts(const wxString& path) {
    const SplitPath_cls split(path);
    const std::string folder = NarrowPath(split.mStrDir);
    const std::string whole = fs::path(NarrowPath(path)).filename().string();
    RemoveLeftovers(folder.empty() ? "." : folder,
                    [&whole](const std::string& name) { return NameOfPart(name) == whole; });
}

/// What the tool complained of, from the first line on, which is the reason: the last one only says that it
/// gave up.
wxString ReadWords(const std::string& file) {
    std::ifstream stream(file);
    std::string words;
    for (std::string line; std::getline(stream, line) && words.size() < kMostWords;) {
        // "[libx264 @ 0x5581] width not divisible by 2"
        const size_t name = line.rfind("[", 0) == 0 ? line.find("] ") : std::string::npos;
        if (name != std::string::npos) line.erase(0, name + 2);
        if (line.empty() || line == "Conversion failed!" || words.find(line) != std::string::npos) continue;
        words += (words.empty() ? "" : "; ") + line;
    }
    return wxString::FromUTF8(words.substr(0, kMostWords));
}

/// In the child, which has one thread and may not allocate.
[[noreturn]] void Become(char* const* words, const char* said, pid_t parent) {
    setpgid(0, 0); // a Ctrl-C is for the parent, which ends us
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(kNotRun);
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), 0);
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), 1);
    dup2(open(said, O_WRONLY | O_CREAT | O_CLOEXEC, 0600), 2);
    execv(words[0], words);
    const char text[] = "ffmpeg can't be run";
    if (write(2, text, sizeof(text) - 1) < 0) _exit(kNotRun);
    _exit(kNotRun);
}

} // namespace

wxString VideoMaker_cls::Start(const VideoJob_st& job) {
    Stop();
    mStrPath = job.mPath;
    mStrError = WhyNoProgram();
    if (mStrError.empty()) mStrError = MakeLinks(job);
    if (mStrError.empty()) mStrError = Spawn(job);
    if (!mStrError.empty()) CleanUp();
    return mStrError;
}

// The tool counts files from 0 without a gap; a film may have any names and numbers.
wxString VideoMaker_cls::MakeLinks(const VideoJob_st& job) {
    if (job.mFrames.empty()) return _("there are no pictures");
    const SplitPath_cls target(job.mPath);
    const std::string temporary = FindTempFolder(NarrowPath(target.mStrDir));
    RemoveLeftovers(temporary, [](const std::string& name) { return name.rfind(kFolderName, 0) == 0; });
    std::string name = temporary + "/" + kFolderName + "XXXXXX";
    if (temporary.empty() || !mkdtemp(name.data())) return Reason(errno);
    mFolder = fs::absolute(name).string();
    mFolderInUse.Hold(mFolder);
    const std::string ending = NarrowPath(SplitPath_cls(job.mFrames.front()).mStrExt);
    for (size_t i = 0; i < job.mFrames.size(); ++i) {
        wxFileName picture(job.mFrames[i]);
        picture.MakeAbsolute();
        char number[16];
        std::snprintf(number, sizeof(number), "/%08d", int(i));
        const std::string link = mFolder + number + ending;
        if (symlink(NarrowPath(picture.GetFullPath()).c_str(), link.c_str()) != 0) return Reason(errno);
    }
    return wxString();
}

wxString VideoMaker_cls::Spawn(const VideoJob_st& job) {
    const wxString tool = FindVideoTool();
    if (tool.empty()) return GetVideoToolHint();
    RemoveOldParts(job.mPath);
    mPartial = MakePartialName(job.mPath);
    // Made here, so that it can be marked; where it can't be, the tool says why.
    const int file = open(mPartial.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (file >= 0) close(file);
    mPartialInUse.Hold(mPartial);
    const std::string ending = NarrowPath(SplitPath_cls(job.mFrames.front()).mStrExt.Mid(1));
    std::vector<std::string> words =
        MakeVideoCommand(NarrowPath(tool), mFolder, ending, "file:" + mPartial, job.mRate.utf8_string(),
                         job.mbTransparent, job.mStereo);
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const std::string said = mFolder + "/words";
    const pid_t parent = getpid();
    mPid = fork();
    if (mPid == 0) Become(pointers.data(), said.c_str(), parent);
    return mPid > 0 ? wxString() : Reason(errno);
}

bool VideoMaker_cls::Poll() {
    if (mPid <= 0) return false;
    int status = 0;
    const pid_t ended = waitpid(mPid, &status, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR)) return false;
    End(ended == mPid ? status : -1);
    return true;
}

void VideoMaker_cls::End(int status) {
    mPid = -1;
    mStrError.clear();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        mStrError = ReadWords(mFolder + "/words");
        if (mStrError.empty()) mStrError = _("ffmpeg ended before it was done");
    } else if (std::rename(mPartial.c_str(), NarrowPath(mStrPath).c_str()) != 0) {
        mStrError = Reason(errno);
    }
    CleanUp();
}

void VideoMaker_cls::Stop() {
    if (mPid > 0) {
        kill(mPid, SIGKILL);
        while (waitpid(mPid, nullptr, 0) < 0 && errno == EINTR) {
        }
        mPid = -1;
        mStrError = _("it was given up");
    }
    CleanUp();
}

void VideoMaker_cls::CleanUp() {
    std::error_code ignored;
    if (!mPartial.empty()) fs::remove(mPartial, ignored);
    if (!mFolder.empty()) fs::remove_all(mFolder, ignored);
    mPartial.clear();
    mFolder.clear();
    mPartialInUse.Release();
    mFolderInUse.Release();
}

void VideoMaker_cls::Sleep() { wxMilliSleep(kPollMillis); }
