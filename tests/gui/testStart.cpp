// The real program as a process of its own: what the toolkit says on standard error while its window comes to
// the screen, which hangs on what the window manager answers, and when.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <wx/defs.h>

#include "GuiEvents.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kLongest(30);
constexpr std::chrono::milliseconds kTurn(20);
constexpr int kRestTurns = 15; ///< without work: it has come to rest
constexpr int kLeastWidth = 600;
const char* const kProject = "/examples/lj_melt_bin/lj_melt_bin.mrp";

bool WaitUntil(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + kLongest;
    while (!done()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(kTurn);
    }
    return true;
}

/// An X server's windows, as another client sees them.
class Screen_cls {
public:
    explicit Screen_cls(const std::string& name) : mpDisplay(XOpenDisplay(name.c_str())) {
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; }); // windows go while we look
    }
    ~Screen_cls() {
        if (mpDisplay) XCloseDisplay(mpDisplay);
    }
    Screen_cls(const Screen_cls&) = delete;
    Screen_cls& operator=(const Screen_cls&) = delete;

    bool IsThere() const { return mpDisplay != nullptr; }
    /// Does a window of this process with such a title, at least so wide, stand on the screen?
    bool HasWindow(pid_t pid, const std::string& title, int width) {
        return mpDisplay && HasWindow(DefaultRootWindow(mpDisplay), pid, title, width);
    }

private:
    bool IsOf(Window window, pid_t pid) {
        Atom type = 0;
        int format = 0;
        unsigned long count = 0;
        unsigned long left = 0;
        unsigned char* data = nullptr;
        XGetWindowProperty(mpDisplay, window, XInternAtom(mpDisplay, "_NET_WM_PID", 0), 0, 1, 0, XA_CARDINAL,
                           &type, &format, &count, &left, &data);
        const bool bIs = data && count == 1 && *reinterpret_cast<unsigned long*>(data) == unsigned(pid);
        if (data) XFree(data);
        return bIs;
    }
    bool IsSuch(Window window, const std::string& title, int width) {
        XWindowAttributes look;
        char* name = nullptr;
        if (!XGetWindowAttributes(mpDisplay, window, &look) || !XFetchName(mpDisplay, window, &name))
            return false;
        const bool bSuch = look.map_state == IsViewable && look.width >= width && name &&
                           std::string(name).rfind(title, 0) == 0;
        XFree(name);
        return bSuch;
    }
    bool HasWindow(Window root, pid_t pid, const std::string& title, int width) {
        if (IsOf(root, pid) && IsSuch(root, title, width)) return true;
        Window above = 0;
        Window* children = nullptr;
        unsigned count = 0;
        if (!XQueryTree(mpDisplay, root, &above, &above, &children, &count)) return false;
        bool bHas = false;
        for (unsigned i = 0; i < count && !bHas; ++i)
            bHas = HasWindow(children[i], pid, title, width);
        if (children) XFree(children);
        return bHas;
    }

    Display* mpDisplay;
};

/// One that ends with the object.
class Child_cls {
public:
    /// In the child `prepare` is called first.
    explicit Child_cls(const std::vector<std::string>& words, const std::function<void()>& prepare) {
        mPid = fork();
        if (mPid != 0) return;
        prepare();
        std::vector<char*> pointers;
        for (const std::string& word : words)
            pointers.push_back(const_cast<char*>(word.c_str()));
        pointers.push_back(nullptr);
        execvp(pointers[0], pointers.data());
        _exit(127);
    }
    ~Child_cls() { End(); }
    Child_cls(const Child_cls&) = delete;
    Child_cls& operator=(const Child_cls&) = delete;

    void End() {
        if (mPid <= 0) return;
        kill(mPid, SIGTERM);
        waitpid(mPid, nullptr, 0);
        mPid = -1;
    }
    /// Hundredths of a second that it has worked for.
    long GetWork() const {
        std::ifstream file("/proc/" + std::to_string(mPid) + "/stat");
        std::string text;
        std::getline(file, text);
        std::istringstream fields(text.substr(text.rfind(')') + 1));
        std::string skipped;
        for (int i = 0; i < 11; ++i)
            fields >> skipped;
        long user = 0;
        long system = 0;
        fields >> user >> system;
        return user + system;
    }
    /// Wait until it waits itself.
    bool Rest() const {
        long before = -1;
        int turns = 0;
        return WaitUntil([&] {
            const long now = GetWork();
            turns = now <= before + 1 ? turns + 1 : 0;
            if (turns == 0) before = now;
            return turns >= kRestTurns;
        });
    }

    pid_t mPid = -1;
};

/// An X server without a window manager.
class BareServer_cls {
public:
    BareServer_cls() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) return;
        const std::string number = std::to_string(ends[1]);
        mServer = std::make_unique<Child_cls>(
            std::vector<std::string>{"Xvfb", "-displayfd", number, "-screen", "0", "1600x1200x24",
                                     "-nolisten", "tcp", "-noreset", "+extension", "GLX"},
            [&ends] {
                fcntl(ends[1], F_SETFD, 0);
                const int null = open("/dev/null", O_WRONLY);
                dup2(null, 1);
                dup2(null, 2);
            });
        close(ends[1]);
        char byte = 0;
        while (read(ends[0], &byte, 1) == 1 && byte != '\n')
            mName += byte;
        close(ends[0]);
        mName.insert(0, ":");
    }

    std::string mName;

private:
    std::unique_ptr<Child_cls> mServer;
};

/// A process' command line; empty when it is over.
std::string GetWords(pid_t pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/cmdline");
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

class Start : public ::testing::Test {
protected:
    Start() {
        std::string name = (fs::temp_directory_path() / "morentis-start-XXXXXX").string();
        mFolder = mkdtemp(name.data());
        fs::copy_file(MORENTIS_PROGRAM, mFolder / "morentis"); // it keeps its configure file beside itself
    }
    ~Start() override {
        std::error_code ignored;
        fs::remove_all(mFolder, ignored);
    }
    /// Start it on this display, let it come to rest, do something with it and end it; the toolkit's
    /// complaints.
    std::string Run(const std::string& display,
                    const std::function<void(Screen_cls&, const Child_cls&)>& use = {},
                    const std::vector<std::string>& files = {}) {
        const std::string words = mFolder / "words";
        Screen_cls screen(display);
        EXPECT_TRUE(screen.IsThere());
        std::vector<std::string> command{(mFolder / "morentis").string()};
        command.insert(command.end(), files.begin(), files.end());
        Child_cls program(command, [&] {
            setenv("DISPLAY", display.c_str(), 1);
            dup2(open(words.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), 2);
        });
        EXPECT_TRUE(WaitUntil([&] { return screen.HasWindow(program.mPid, "Morentis", kLeastWidth); }));
        EXPECT_TRUE(program.Rest());
        if (use) use(screen, program);
        program.End();
        std::ifstream file(words);
        std::string complaints;
        for (std::string line; std::getline(file, line);)
            if (std::regex_search(line, std::regex("-(WARNING|CRITICAL|ERROR) \\*\\*")))
                complaints += line + "\n";
        return complaints;
    }
    static void Press(int key, int modifiers = 0) {
        GuiEvents_cls::Char(key, modifiers);
        GuiEvents_cls::GiveUp(); // another process has it
        GuiEvents_cls::RoundTrip();
    }
    static void OpenProject(Screen_cls& screen, const Child_cls& program) {
        Press('O', wxMOD_CONTROL);
        ASSERT_TRUE(WaitUntil([&] { return screen.HasWindow(program.mPid, "Select a project", 1); }));
        ASSERT_TRUE(program.Rest());
        for (const char c : std::string(MORENTIS_TEST_ROOT) + kProject)
            Press(c, c >= 'A' && c <= 'Z' ? wxMOD_SHIFT : 0);
        ASSERT_TRUE(program.Rest());
        Press(WXK_RETURN);
        ASSERT_TRUE(WaitUntil([&] { return screen.HasWindow(program.mPid, "Morentis3", kLeastWidth); }));
        ASSERT_TRUE(program.Rest());
    }

    fs::path mFolder;
};

// Where it complains, it does so in about half of all starts.
TEST_F(Start, ComesToTheScreenWithoutAWordOfTheToolkit) {
    const std::string managed = std::getenv("DISPLAY");
    const BareServer_cls bare;
    for (int round = 0; round < 3; ++round) { // without a configure file, with a new one, with an old one
        SCOPED_TRACE(round);
        EXPECT_EQ(Run(managed, round == 1 ? OpenProject : nullptr), "");
        EXPECT_TRUE(round == 0 || fs::exists(mFolder / "Morentis3Configure.txt"));
    }
    EXPECT_EQ(Run(bare.mName), "") << "without a window manager";
}

TEST_F(Start, OpensEachProjectOfItsCommandLineInAWindow) {
    const std::string second = MORENTIS_TEST_ROOT "/examples/deposit_text/deposit_text.mrp";
    pid_t other = -1;
    const auto find = [&other, this] {
        for (const auto& entry : fs::directory_iterator("/proc")) {
            const pid_t pid = std::atoi(entry.path().filename().c_str());
            // Of the first one's words the second project isn't the third.
            if (GetWords(pid).rfind((mFolder / "morentis").string() + '\0' + "--", 0) == 0) other = pid;
        }
        return other > 0;
    };
    Run(std::getenv("DISPLAY"),
        [&](Screen_cls& screen, const Child_cls& program) {
            const std::string title = "Morentis3 - " MORENTIS_TEST_ROOT;
            EXPECT_TRUE(
                WaitUntil([&] { return screen.HasWindow(program.mPid, title + kProject, kLeastWidth); }));
            ASSERT_TRUE(WaitUntil(find));
            EXPECT_TRUE(
                WaitUntil([&] { return screen.HasWindow(other, "Morentis3 - " + second, kLeastWidth); }));
        },
        {MORENTIS_TEST_ROOT + std::string(kProject), second});
    if (other > 0) kill(other, SIGTERM);
    EXPECT_TRUE(WaitUntil([&] { return other <= 0 || GetWords(other).empty(); })) << "it ends by itself";
}

} // namespace
