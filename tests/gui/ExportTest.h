// Base of tests of the data exporter: an example is open, and the dialog with its settings as they come.
#pragma once

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <wx/statusbr.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GuiTest.h"
#include "PDATA/EDITOR/clsDataExporterGUI.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsDataLoader.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsFileDialogEX.h"

using Codes = std::vector<int>;
inline const Codes kHead = {0, 1};
inline const Codes kBody = {0, 1, 5, 6, 7, 8};
inline constexpr int kFrames = 20; // of the example
inline constexpr int kLong = 150;  // of one that is still at it when a hand comes

inline std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

class ExportTest : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        SetGrammar(*Hub()->mpCDataLoader);
        SetGrammar(*Exporter());
        Exporter()->mCLastSavedFile.mStrValue = "NONE";
        Exporter()->mCInitNum.mValue = 0;
        ASSERT_TRUE(OpenAndPaint(Root() + "examples/lj_melt_bin/melt0000.bin"));
        ResetClock();
        Menu(ID_EXPORT_DATA);
        mDialog = dynamic_cast<DataExporterGUI_cls*>(WaitForWindow("Data Exporter"));
        ASSERT_TRUE(mDialog);
        mDialog->UpdateValues();
    }
    void TearDown() override {
        wxFileDialogEX::sStrTestAnswer.clear();
        if (Exporter()->mbExporting) mDialog->AbortExport();
        Hub()->mpCDrawOption->mDownSizing.mValue = 1;
        if (mDialog) mDialog->Hide();
        Settle();
        ResetClock();
        SetGrammar(*Hub()->mpCDataLoader);
        GuiTest::TearDown();
    }
    /// The example over and over.
    void OpenLong() {
        for (int i = 0; i < kLong; ++i) {
            char name[64];
            std::snprintf(name, sizeof name, "examples/lj_melt_bin/melt%04d.bin", i % kFrames);
            const std::string file = Root() + name;
            std::snprintf(name, sizeof name, "long%04d.bin", i);
            std::filesystem::create_symlink(file, mLong.mPath / name);
        }
        ASSERT_TRUE(OpenAndPaint(mLong / "long0000.bin"));
        ResetClock();
        ASSERT_EQ(Time()->GetMaxFrame(), kLong - 1);
    }
    static DataExporter_cls* Exporter() { return Hub()->mpCDataExporter; }
    static void ResetClock() {
        Time()->SetAnimInterpNative(1);
        Time()->SetAnimStepNative(1);
        Time()->SetRepeatNative(0);
        PlayAll(Time()->GetMaxFrame());
        Time()->mbUseTimeRemap.mValue = false;
    }
    static void SetGrammar(GrammerBase_cls& grammar) {
        grammar.SetHeaderGrammer(kHead);
        grammar.SetBodyGrammer(kBody);
        grammar.mCItemDataType.mValue = 0;
    }
    /// Point at a file with "Reference".
    void Choose(const std::string& name) {
        wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(name);
        ClickOn(FindByLabel(mDialog, "Reference"));
        EXPECT_TRUE(PumpUntil([] { return wxFileDialogEX::sStrTestAnswer.empty(); }));
    }
    void ClickExport() { ClickOn(mDialog->GetPCButtonExport()); }
    bool WaitForEnd() {
        return PumpUntil([] { return !Exporter()->mbExporting; }, 60000) && Settle();
    }
    int CountFiles() const {
        return static_cast<int>(std::distance(std::filesystem::directory_iterator(mFolder.mPath), {}));
    }
    /// Files 0 to count - 1 of "out%04d.dat" and nothing else.
    void ExpectFiles(int count, int first = 0) const {
        for (int i = first; i < first + count; ++i) {
            char name[32];
            std::snprintf(name, sizeof name, "out%04d.dat", i);
            EXPECT_TRUE(std::filesystem::exists(mFolder.mPath / name)) << name;
        }
        EXPECT_EQ(CountFiles(), count);
    }
    static wxString Status() { return Frame()->GetStatusBar()->GetStatusText(0); }
    Codes Body() const { return mDialog->GetVGrammer(mDialog->mpCListBody); }

    TempDir_cls mFolder;
    TempDir_cls mLong;
    DataExporterGUI_cls* mDialog = nullptr;
};
