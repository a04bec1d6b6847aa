// Base of tests that save and open projects.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include <wx/filename.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsRecovery.h"
#include "COMMON/EventIds.h"
#include "COMMON/RuntimeFiles.h"
#include "COMMON/SafeFile.h"
#include "GL/BASE/clsPreference.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GuiTest.h"
#include "PARAM/clsCommandItem.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "WIDGET/clsFileDialogEX.h"

namespace fs = std::filesystem;

inline std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

inline std::vector<std::string> Lines(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

struct Nothing_cls : CommandItem_cls {
    void Execute(bool) override {}
};

class ProjectTest : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        GCUndoList.Clear();
        Hub()->mpCRecovery->MarkSaved();
        Menu(ID_REFRESH_GL);
        mVMessages.clear();
        mDefaults = mDir / "defaults.mrp";
        ASSERT_TRUE(Hub()->SaveProjectFile(mDefaults, true));
    }
    void TearDown() override {
        GSafeFileStep = {};
        wxFileDialogEX::sStrTestAnswer.clear();
        Hub()->mpCRecovery->mGap = std::chrono::minutes(1);
        Preference_cls plain;
        Frame()->GetPCUserPreference()->CopyFrom(plain);
        Frame()->OpenProject(mDefaults);
        GCUndoList.Clear();
        Hub()->mpCRecovery->MarkSaved();
        GuiTest::TearDown();
    }
    static PDataSeqCtrl_cls* Store() { return Hub()->mpCPDataSeqCtrl; }
    static void Answer(const std::string& path) { wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(path); }
    static void Step() {
        GCUndoList.PushNewCommand(new Nothing_cls, new Nothing_cls);
        GCUndoList.ExecCurrent();
    }
    static bool HasStar() { return Frame()->GetTitle().StartsWith("*"); }
    static std::string ConfigFolder() { return wxFileName(GetConfigureFilePath()).GetPath().ToStdString(); }
    void Open(const std::string& path) {
        Frame()->OpenProject(wxString::FromUTF8(path));
        Shared().msCFBOSizeIndex.mValue = 0;
        EXPECT_TRUE(Settle());
    }
    /// The example, its first snapshots beside it in a folder of this name.
    std::string CopyMelt(const std::string& name) {
        const std::string folder = mDir / name;
        fs::create_directories(folder);
        for (int i = 0; i < 3; ++i)
            fs::copy(Root() + "examples/lj_melt_bin/melt000" + std::to_string(i) + ".bin", folder);
        return folder;
    }
    /// A project whose data path is this text.
    void WriteProject(const std::string& path, const std::string& dataPath) {
        std::ofstream file(path, std::ios::binary);
        for (const std::string& line : Lines(ReadAll(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp")))
            if (line.rfind("LastOpenedFileMRP=", 0) != 0)
                file << (line == "melt0000.bin" ? dataPath : line) << "\n";
    }

    TempDir_cls mDir;
    wxString mDefaults; ///< a project of the settings before the test
};
