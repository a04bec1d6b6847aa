// The recovery project: when it is written, when it goes, and whose it is.
#include "APP/clsRecovery.h"

#include <sys/wait.h>
#include <unistd.h>
#include <utime.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "COMMON/MsgBox.h"
#include "COMMON/SafeFile.h"
#include "PARAM/clsCommandItem.h"
#include "ParamTest.h"
#include "TempFolder.h"

namespace {

namespace fs = std::filesystem;

struct Nothing_cls : CommandItem_cls {
    void Execute(bool) override {}
};

void Step() {
    GCUndoList.PushNewCommand(new Nothing_cls, new Nothing_cls);
    GCUndoList.ExecCurrent();
}

class Recovery : public ParamTest {
protected:
    Recovery() {
        SetMessageHandler([this](MessageKind, const wxString& text, const wxString&) {
            mTold += text;
            return true;
        });
        ForgetNotices();
    }
    ~Recovery() override {
        SetMessageHandler({});
        GSafeFileStep = {};
    }
    Recovery_cls Make(const std::string& text) {
        return Recovery_cls(wxString(mFolder), [text] { return text; });
    }
    static std::string Read(const wxString& path) {
        std::ifstream file(path.ToStdString(), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    size_t CountFiles() const {
        return size_t(std::distance(fs::directory_iterator(mFolder), fs::directory_iterator()));
    }
    /// A program that leaves unsaved work and is killed.
    void LeaveOrphan(const std::string& text) {
        const pid_t child = fork();
        if (child == 0) {
            Recovery_cls recovery = Make(text);
            Step();
            recovery.Tick(true);
            kill(getpid(), SIGKILL);
        }
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
    }

    TempFolder_cls mTemp;
    const std::string mFolder = mTemp.GetPath();
    wxString mTold;
};

TEST_F(Recovery, TheStateIsUnsavedUnlessUndoLeadsBack) {
    Recovery_cls recovery = Make("x");
    EXPECT_FALSE(recovery.IsModified());
    Step();
    EXPECT_TRUE(recovery.IsModified());
    GCUndoList.UndoCurrent();
    EXPECT_FALSE(recovery.IsModified());
    GCUndoList.ExecCurrent();
    EXPECT_TRUE(recovery.IsModified());
    recovery.MarkSaved();
    Step();
    GCUndoList.UndoCurrent();
    EXPECT_FALSE(recovery.IsModified());
    GCUndoList.UndoCurrent();
    EXPECT_TRUE(recovery.IsModified()) << "behind what was saved";
    Step();
    EXPECT_TRUE(recovery.IsModified()) << "the same position, another step";
    recovery.MarkSaved();
    GCUndoList.OpenBlock();
    GCUndoList.CloseBlock();
    EXPECT_FALSE(recovery.IsModified()) << "an empty block is none";
    GCUndoList.Clear();
    EXPECT_FALSE(recovery.IsModified()) << "forgetting the steps changes nothing";
    Step();
    GCUndoList.Clear();
    EXPECT_TRUE(recovery.IsModified());
    recovery.MarkSaved();
    recovery.MarkUnsaved();
    EXPECT_TRUE(recovery.IsModified());
}

TEST_F(Recovery, ItIsWrittenOnceInAWhileAndGoesWithTheNeed) {
    std::string text = "one";
    Recovery_cls recovery(wxString(mFolder), [&text] { return text; });
    recovery.Tick(true);
    EXPECT_EQ(CountFiles(), 0u) << "nothing unsaved, no litter";
    Step();
    recovery.Tick(false);
    EXPECT_TRUE(recovery.GetPath().empty()) << "not now";
    EXPECT_TRUE(recovery.IsLate()) << "but as soon as it can be";
    recovery.Tick(true);
    EXPECT_FALSE(recovery.IsLate());
    const wxString path = recovery.GetPath();
    EXPECT_EQ(Read(path), "one");
    text = "two";
    Step();
    recovery.Tick(true);
    EXPECT_EQ(Read(path), "one") << "too soon";
    recovery.Tick(false);
    EXPECT_FALSE(recovery.IsLate());
    recovery.mGap = std::chrono::milliseconds(0);
    recovery.Tick(true);
    EXPECT_EQ(Read(path), "two");
    const auto before = fs::last_write_time(path.ToStdString()) - std::chrono::hours(1);
    fs::last_write_time(path.ToStdString(), before);
    recovery.Tick(true);
    EXPECT_EQ(fs::last_write_time(path.ToStdString()), before) << "nothing new";
    recovery.mGap = std::chrono::hours(1);
    text = "last words";
    EXPECT_TRUE(recovery.WriteNow());
    EXPECT_EQ(Read(path), "last words") << "these don't wait";
    GCUndoList.UndoCurrent();
    GCUndoList.UndoCurrent();
    recovery.Tick(false);
    EXPECT_EQ(CountFiles(), 0u) << "undone to what is saved";
    recovery.mGap = std::chrono::milliseconds(0);
    GCUndoList.ExecCurrent();
    recovery.Tick(true);
    EXPECT_EQ(CountFiles(), 2u);
    recovery.MarkSaved();
    EXPECT_EQ(CountFiles(), 0u);
}

TEST_F(Recovery, AFolderThatTakesNothingIsToldOnce) {
    Recovery_cls recovery = Make("x");
    recovery.mGap = std::chrono::milliseconds(0);
    Step();
    GSafeFileStep = [](const char*) { return false; };
    recovery.Tick(true);
    EXPECT_TRUE(mTold.Contains(mFolder)) << mTold;
    mTold.clear();
    recovery.Tick(true);
    EXPECT_TRUE(mTold.empty());
    GSafeFileStep = {};
    recovery.Tick(true);
    EXPECT_EQ(Read(recovery.GetPath()), "x");
}

TEST_F(Recovery, WhatAKilledProgramLeftIsFoundNewestFirst) {
    LeaveOrphan("old");
    for (const auto& entry : fs::directory_iterator(mFolder))
        fs::last_write_time(entry.path(), fs::file_time_type::clock::now() - std::chrono::hours(30));
    LeaveOrphan("new");
    Recovery_cls recovery = Make("mine");
    Recovery_cls::Found_st found;
    ASSERT_TRUE(recovery.FindOrphan(&found));
    EXPECT_EQ(Read(found.mStrPath), "new");
    EXPECT_LT(wxDateTime::Now().Subtract(found.mWhen).GetMinutes(), 5);
    recovery.DropOrphan();
    ASSERT_TRUE(recovery.FindOrphan(&found));
    EXPECT_EQ(Read(found.mStrPath), "old");
    EXPECT_GT(wxDateTime::Now().Subtract(found.mWhen).GetHours(), 28);
    recovery.AdoptOrphan();
    EXPECT_TRUE(recovery.IsModified());
    EXPECT_EQ(recovery.GetPath(), found.mStrPath);
    EXPECT_FALSE(recovery.FindOrphan(&found)) << "our own is none";
    EXPECT_TRUE(recovery.WriteNow());
    EXPECT_EQ(Read(recovery.GetPath()), "mine") << "kept on under its name";
    recovery.Discard();
    EXPECT_EQ(CountFiles(), 0u);
}

TEST_F(Recovery, RunningProgramsDontTakeEachOthersFile) {
    int ready[2];
    int quit[2];
    ASSERT_EQ(pipe(ready) | pipe(quit), 0);
    const pid_t child = fork();
    if (child == 0) {
        Recovery_cls recovery = Make("theirs");
        Step();
        recovery.Tick(true);
        char byte = 'r';
        ssize_t ignored = write(ready[1], &byte, 1);
        ignored = read(quit[0], &byte, 1);
        (void)ignored;
        recovery.Discard();
        _exit(0);
    }
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    Recovery_cls recovery = Make("ours");
    Recovery_cls::Found_st found;
    EXPECT_FALSE(recovery.FindOrphan(&found)) << "its owner lives";
    Step();
    recovery.Tick(true);
    EXPECT_EQ(CountFiles(), 4u) << "each its own, with its lock";
    EXPECT_EQ(Read(recovery.GetPath()), "ours");
    ASSERT_EQ(write(quit[1], &byte, 1), 1);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(CountFiles(), 2u);
    for (const int file : {ready[0], ready[1], quit[0], quit[1]})
        close(file);
}

TEST_F(Recovery, TwoStartsAtOnceDontTakeTheSameOrphan) {
    LeaveOrphan("left");
    Recovery_cls first = Make("1");
    Recovery_cls second = Make("2");
    Recovery_cls::Found_st found;
    EXPECT_TRUE(first.FindOrphan(&found));
    EXPECT_FALSE(second.FindOrphan(&found)) << "the first one is asking about it";
    first.DropOrphan();
    EXPECT_FALSE(second.FindOrphan(&found));
    EXPECT_EQ(CountFiles(), 0u);
}

TEST_F(Recovery, AnOrphanWithOurNumberIsNotOverwritten) {
    const std::string name = mFolder + "/Morentis3Recovery-" + std::to_string(getpid()) + ".mrp";
    std::ofstream(name) << "left by an earlier program with our number";
    Recovery_cls recovery = Make("ours");
    Step();
    recovery.Tick(true);
    EXPECT_NE(recovery.GetPath(), wxString(name));
    EXPECT_EQ(Read(recovery.GetPath()), "ours");
    EXPECT_EQ(Read(name), "left by an earlier program with our number");
    Recovery_cls::Found_st found;
    ASSERT_TRUE(recovery.FindOrphan(&found));
    EXPECT_EQ(found.mStrPath, wxString(name));
}

} // namespace
