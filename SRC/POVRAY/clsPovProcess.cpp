#include "POVRAY/clsPovProcess.h"
#include "COMMON/Confined.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int kNotRun = 127;
constexpr size_t kKept = 8192;          // bytes of what it says
constexpr size_t kMostAtOnce = 1 << 20; // who says more than this has to wait for the next look
constexpr size_t kMostLines = 6;
constexpr int kSignalBase = 128;

/// In the child, which has one thread and may not allocate.
[[noreturn]] void Become(char* const* words, const char* folder, int pipe, pid_t parent) {
    setpgid(0, 0); // a Ctrl-C is for the parent, which ends us
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(kNotRun);
    const int null = open("/dev/null", O_RDWR);
    dup2(null, 0);
    dup2(null, 1); // a picture drawn with letters, where there is no screen
    dup2(pipe, 2);
    const char* failed = "its folder can't be entered";
    if (chdir(folder) == 0) {
        execvp(words[0], words);
        failed = "it can't be run";
    }
    if (write(2, failed, std::strlen(failed)) < 0) _exit(kNotRun);
    _exit(kNotRun);
}

std::string Trim(const std::string& line) {
    const size_t from = line.find_first_not_of(" \t");
    const size_t to = line.find_last_not_of(" \t");
    return from == std::string::npos ? std::string() : line.substr(from, to - from + 1);
}

/// A word of the renderer that says nothing to who looks for a reason.
bool IsIdle(const std::string& line) {
    const bool bProgress = line.compare(0, 9, "Rendered ") == 0 && line.back() == ')';
    return bProgress || line.find_first_not_of("-=") == std::string::npos ||
           line.find("Should have at least 2 objects in csg") != std::string::npos ||
           line.find("cannot open the user configuration file") != std::string::npos;
}

} // namespace

wxString PovProcess_cls::Start(const std::vector<std::string>& words, const std::string& folder) {
    Stop();
    if (const wxString reason = WhyNoProgram(); !reason.empty()) return reason;
    mSaid.clear();
    mPercent = -1;
    mStatus = 0;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return wxString::FromUTF8(std::strerror(errno));
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    std::vector<std::string> copy = words;
    std::vector<char*> pointers;
    for (std::string& word : copy)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const pid_t parent = getpid();
    mPid = fork();
    if (mPid == 0) Become(pointers.data(), folder.c_str(), ends[1], parent);
    const int error = errno;
    close(ends[1]);
    mPipe = ends[0];
    if (mPid > 0) {
        setpgid(mPid, mPid); // whoever of the two is first
        return wxString();
    }
    Close();
    return wxString::FromUTF8(std::strerror(error));
}

void PovProcess_cls::TakeWords() {
    char bytes[16384];
    for (size_t taken = 0; taken < kMostAtOnce;) {
        const ssize_t count = read(mPipe, bytes, sizeof(bytes));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        taken += size_t(count);
        mSaid.append(bytes, size_t(count));
        if (mSaid.size() > 2 * kKept) mSaid.erase(0, mSaid.size() - kKept);
    }
    // "Rendered 768 of 3072 pixels (25%)"
    const size_t end = mSaid.rfind("%)");
    const size_t begin = end == std::string::npos ? end : mSaid.rfind('(', end);
    if (begin == std::string::npos || end - begin < 2 || end - begin > 4) return;
    mPercent = std::clamp(std::atoi(mSaid.c_str() + begin + 1), 0, 100);
}

bool PovProcess_cls::Poll() {
    if (mPid <= 0) return false;
    TakeWords();
    int status = 0;
    const pid_t ended = waitpid(mPid, &status, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR)) return false;
    TakeWords();          // its last
    kill(-mPid, SIGKILL); // what it left behind
    mPid = -1;
    mStatus = WIFEXITED(status) ? WEXITSTATUS(status) : kSignalBase + WTERMSIG(status);
    Close();
    return true;
}

void PovProcess_cls::AskToEnd() {
    if (mPid > 0) kill(mPid, SIGTERM);
}

void PovProcess_cls::Stop() {
    if (mPid > 0) {
        kill(-mPid, SIGKILL);
        kill(mPid, SIGKILL); // which may not have its group yet
        while (waitpid(mPid, nullptr, 0) < 0 && errno == EINTR) {
        }
        mPid = -1;
        mStatus = -1;
    }
    Close();
}

void PovProcess_cls::Close() {
    if (mPipe >= 0) close(mPipe);
    mPipe = -1;
}

wxString PovProcess_cls::GetLastLines() const {
    std::vector<std::string> lines;
    size_t from = 0;
    while (from < mSaid.size()) {
        size_t to = mSaid.find_first_of("\r\n", from);
        to = std::min(to, mSaid.size());
        const std::string line = Trim(mSaid.substr(from, to - from));
        if (!line.empty() && !IsIdle(line)) lines.push_back(line);
        from = to + 1;
    }
    if (lines.size() > kMostLines) lines.erase(lines.begin(), lines.end() - kMostLines);
    wxString text;
    for (const std::string& line : lines) {
        wxString words = wxString::FromUTF8(line);
        if (words.empty()) words = wxString(line.c_str(), wxConvISO8859_1);
        text += (text.empty() ? "" : "\n") + words.Left(300);
    }
    return text;
}
