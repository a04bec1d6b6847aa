#include "RunFilm.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

namespace fs = std::filesystem;

namespace {

constexpr int kFrames = 5;
constexpr std::chrono::seconds kLongest(120);
const char* const kExample = MORENTIS_TEST_ROOT "/examples/galaxy_small_bin/";
const char* const kFirst = "galaxy0000.bin";

std::string Read(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// An X server for all films of this process; bringing one up takes as long as a small film does. It ends
/// with us.
class SharedDisplay_cls {
public:
    SharedDisplay_cls() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) return;
        mPid = fork();
        if (mPid == 0) {
            prctl(PR_SET_PDEATHSIG, SIGTERM);
            fcntl(ends[1], F_SETFD, 0);
            const int null = open("/dev/null", O_WRONLY);
            dup2(null, 1);
            dup2(null, 2);
            execlp("Xvfb", "Xvfb", "-displayfd", std::to_string(ends[1]).c_str(), "-screen", "0",
                   "1280x1024x24", "-nolisten", "tcp", "-noreset", "+extension", "GLX",
                   static_cast<char*>(nullptr));
            _exit(127);
        }
        close(ends[1]);
        char byte = 0;
        while (read(ends[0], &byte, 1) == 1 && byte != '\n')
            mName += byte;
        close(ends[0]);
        if (!mName.empty()) mName.insert(0, ":");
    }
    ~SharedDisplay_cls() {
        if (mPid <= 0) return;
        kill(mPid, SIGTERM);
        waitpid(mPid, nullptr, 0);
    }

    std::string mName; ///< empty: none can be had, and each film brings up its own

private:
    pid_t mPid = -1;
};

[[noreturn]] void Become(const std::vector<std::string>& words, const Environment& environment,
                         const std::string& folder, const Limits_st& limits) {
    // Tests that run in the background of a script have inherited that these are ignored.
    for (const int stop : {SIGINT, SIGQUIT, SIGTERM, SIGHUP})
        signal(stop, SIG_DFL);
    unsetenv("DISPLAY");
    unsetenv("XAUTHORITY");
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    for (const auto& [name, value] : environment) {
        if (value.empty())
            unsetenv(name.c_str());
        else
            setenv(name.c_str(), value.c_str(), 1);
    }
    if (limits.mMegabytes > 0) {
        const rlim_t bytes = rlim_t(limits.mMegabytes) << 20;
        const rlimit limit = {bytes, bytes};
        setrlimit(RLIMIT_AS, &limit);
    }
    if (limits.mFileBytes > 0) {
        const rlimit limit = {rlim_t(limits.mFileBytes), rlim_t(limits.mFileBytes)};
        signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    dup2(open((folder + "/out").c_str(), O_WRONLY | O_CREAT, 0600), 1);
    dup2(open((folder + "/err").c_str(), O_WRONLY | O_CREAT, 0600), 2);
    std::vector<char*> pointers = {const_cast<char*>(limits.mProgram.c_str())};
    char draw[] = "--draw";
    if (char* way = getenv("MORENTIS_TEST_DRAW"); way && limits.mProgram == MORENTIS_FILM)
        pointers.insert(pointers.end(), {draw, way});
    for (const std::string& word : words)
        pointers.push_back(const_cast<char*>(word.c_str()));
    pointers.push_back(nullptr);
    execv(limits.mProgram.c_str(), pointers.data());
    _exit(126);
}

} // namespace

FilmFolder_cls::FilmFolder_cls() {
    std::string name = (fs::temp_directory_path() / "morentis-film-XXXXXX").string();
    mPath = mkdtemp(name.data());
}

FilmFolder_cls::~FilmFolder_cls() {
    std::error_code ignored;
    fs::remove_all(mPath, ignored);
}

std::string FilmFolder_cls::MakeProject(const std::string& name, const std::string& lines,
                                        const std::string& data) const {
    std::string text = Read(std::string(kExample) + "galaxy_small_bin.mrp");
    const size_t place = text.find(std::string("\n") + kFirst);
    text.replace(place + 1, std::string(kFirst).size(), data.empty() ? std::string(kExample) + kFirst : data);
    text += "\nFBOBufferSize=0\nTimeMaxFrame=4\nTimeWorkAreaMin=0\nTimeWorkAreaMax=4\nTimeActiveAreaMax=4\n"
            "TimeAnimInterp=1\nTimeUseMotionBlur=0\nOverLayTimePos=0\nImgSequenceOutW=160\nImgSequenceOutH="
            "120\nPanel0ShowGrid=0\n" +
            lines;
    std::ofstream(mPath / name, std::ios::binary) << text;
    return *this / name;
}

std::string FilmFolder_cls::CopyData(const std::string& folder) const {
    fs::create_directory(mPath / folder);
    for (int i = 0; i < kFrames; ++i) {
        const std::string name = "galaxy000" + std::to_string(i) + ".bin";
        fs::copy_file(kExample + name, mPath / folder / name);
    }
    return (mPath / folder / kFirst).string();
}

std::map<std::string, std::string> FilmFolder_cls::ReadAll(const std::string& folder) const {
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(mPath / folder))
        files[entry.path().filename().string()] = entry.is_directory() ? "" : Read(entry.path());
    return files;
}

ChildRun_st RunFilm(const std::vector<std::string>& words, const Environment& environment,
                    const std::function<void(pid_t)>& meanwhile, const Limits_st& limits) {
    const FilmFolder_cls folder;
    static const SharedDisplay_cls shared;
    const bool bPlain = environment.empty() && !meanwhile && limits.mMegabytes == 0 && limits.mFileBytes == 0;
    const Environment plain = {{"DISPLAY", shared.mName}};
    const pid_t child = fork();
    if (child == 0) Become(words, bPlain ? plain : environment, folder.mPath.string(), limits);
    const auto end = std::chrono::steady_clock::now() + kLongest;
    int status = 0;
    while (waitpid(child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > end) kill(child, SIGKILL);
        if (meanwhile) meanwhile(child);
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    }
    ChildRun_st run;
    run.mStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.mOut = Read(folder / "out");
    run.mErr = Read(folder / "err");
    return run;
}
