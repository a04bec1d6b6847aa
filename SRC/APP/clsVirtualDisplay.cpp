#include "APP/clsVirtualDisplay.h"

#include <X11/Xlib.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/random.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "APP/FilmStop.h"

namespace {

constexpr int kStartMillis = 30000;  // a busy node takes its time
constexpr int kAnswerMillis = 10000; // of a display far away
constexpr int kAskMillis = 5;
constexpr int kTurnMillis = 100;  // between two looks whether it is still wanted
constexpr int kStarts = 6;        // of servers, one after the other
constexpr int kPauseMillis = 200; // at most, between them
constexpr int kNotFound = 127;
const char* const kKeyName = "morentis-display-";

/// As the X library's key files have them: two bytes of length, highest first.
void AppendCounted(std::string* pBytes, const std::string& text) {
    pBytes->push_back(char(text.size() >> 8));
    pBytes->push_back(char(text.size() & 255));
    *pBytes += text;
}

std::string LastLine(int file) {
    char bytes[2048];
    const off_t size = lseek(file, 0, SEEK_END);
    const off_t from = size > off_t(sizeof(bytes)) ? size - off_t(sizeof(bytes)) : 0;
    const ssize_t count = pread(file, bytes, sizeof(bytes), from);
    std::string text(bytes, count > 0 ? size_t(count) : 0);
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text.substr(text.rfind('\n') == std::string::npos ? 0 : text.rfind('\n') + 1);
}

} // namespace

bool VirtualDisplay_cls::IsThereOne() {
    const char* name = std::getenv("DISPLAY");
    if (!name || !*name) return false;
    // A server that hangs would hold us for ever: a child asks.
    const pid_t child = fork();
    if (child == 0) _exit(XOpenDisplay(nullptr) ? 0 : 1);
    if (child < 0) return true; // who is short of processes had better not start a server
    for (int millis = 0; millis < kAnswerMillis && !IsFilmStopped(); millis += kAskMillis) {
        int status = 0;
        if (waitpid(child, &status, WNOHANG) == child) return WIFEXITED(status) && WEXITSTATUS(status) == 0;
        usleep(useconds_t(kAskMillis) * 1000);
    }
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    if (IsFilmStopped()) return false;
    std::fprintf(stderr, "morentis-film: the display %s doesn't answer; a virtual one takes its place\n",
                 name);
    return false;
}

// One key for any host and number, in a file that only this user can read.
bool VirtualDisplay_cls::MakeKey(const std::string& folder) {
    const std::string temporary = FindTempFolder(folder);
    RemoveLeftovers(temporary, [](const std::string& name) { return name.rfind(kKeyName, 0) == 0; });
    std::string name = temporary + "/" + kKeyName + "XXXXXX";
    const int file = temporary.empty() ? -1 : mkstemp(name.data());
    if (file < 0) return false;
    mKeyFile = name;
    mKeyInUse.Hold(name);
    std::string key(16, '\0');
    const bool bRandom = getrandom(key.data(), key.size(), 0) == ssize_t(key.size());
    std::string bytes("\377\377\0\0\0\0", 6); // any family; no address, no number
    AppendCounted(&bytes, "MIT-MAGIC-COOKIE-1");
    AppendCounted(&bytes, key);
    const bool bWritten = write(file, bytes.data(), bytes.size()) == ssize_t(bytes.size());
    close(file);
    return bRandom && bWritten;
}

// In the child.
void VirtualDisplay_cls::Become(int pipe, int words, const std::string& key) {
    setsid(); // a Ctrl-C is not for it
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int null = open("/dev/null", O_RDWR);
    dup2(null, 0);
    dup2(null, 1);
    dup2(words, 2);
    const std::string number = std::to_string(pipe);
    fcntl(pipe, F_SETFD, 0);
    execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", "1280x1024x24", "-nolisten", "tcp",
           "-noreset", "-auth", key.c_str(), "+extension", "GLX", static_cast<char*>(nullptr));
    _exit(kNotFound);
}

std::string VirtualDisplay_cls::ReadNumber(int pipe, Clock::time_point end) const {
    std::string number;
    while (number.empty() || number.back() != '\n') {
        if (IsFilmStopped() || Clock::now() > end) return std::string();
        pollfd ready = {pipe, POLLIN, 0};
        const int count = poll(&ready, 1, kTurnMillis);
        if (count == 0 || (count < 0 && errno == EINTR)) continue;
        char byte = 0;
        if (count < 0 || read(pipe, &byte, 1) != 1) return std::string();
        number.push_back(byte);
    }
    number.pop_back();
    return number;
}

VirtualDisplay_cls::Outcome VirtualDisplay_cls::StartServer(Clock::time_point end, std::string* pWords) {
    int ends[2];
    const int words = memfd_create("words", MFD_CLOEXEC);
    if (words < 0 || pipe2(ends, O_CLOEXEC) != 0) {
        *pWords = std::strerror(errno);
        if (words >= 0) close(words);
        return Outcome::Impossible;
    }
    mPid = fork();
    if (mPid == 0) Become(ends[1], words, mKeyFile);
    close(ends[1]);
    const std::string number = mPid > 0 ? ReadNumber(ends[0], end) : std::string();
    close(ends[0]);
    Outcome outcome = Outcome::Runs;
    if (number.empty()) {
        int status = 0;
        if (mPid > 0) {
            kill(mPid, SIGTERM); // one that ended by itself keeps its status
            waitpid(mPid, &status, 0);
            mPid = -1;
        }
        const bool bMissing = WIFEXITED(status) && WEXITSTATUS(status) == kNotFound;
        *pWords = bMissing ? "install the package xvfb (apt-get install xvfb), or set DISPLAY"
                           : "Xvfb doesn't start: " + LastLine(words);
        outcome = bMissing ? Outcome::Impossible : Outcome::Ended;
    } else {
        setenv("DISPLAY", (":" + number).c_str(), 1);
        setenv("XAUTHORITY", mKeyFile.c_str(), 1);
    }
    close(words);
    return outcome;
}

// Two servers that start at the same moment can choose the same number; then one of them ends.
std::string VirtualDisplay_cls::Start(const std::string& folder) {
    if (!MakeKey(folder))
        return "no temporary file can be written (" + std::string(std::strerror(errno)) + ")";
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(kStartMillis);
    std::string words;
    for (int start = 1;; ++start) {
        const Outcome outcome = StartServer(end, &words);
        if (outcome == Outcome::Runs) return std::string();
        if (outcome == Outcome::Impossible || start == kStarts || IsFilmStopped() || Clock::now() > end)
            break;
        // Not all of them at the same moment again.
        usleep(useconds_t((getpid() * 7 + start * 31) % kPauseMillis + 1) * 1000);
    }
    Stop();
    return words;
}

void VirtualDisplay_cls::Stop() {
    if (mPid > 0) {
        kill(mPid, SIGTERM);
        while (waitpid(mPid, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    mPid = -1;
    if (!mKeyFile.empty()) unlink(mKeyFile.c_str());
    mKeyFile.clear();
    mKeyInUse.Release();
}
