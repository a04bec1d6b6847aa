// The menu entries: what they do, which are greyed, saving and opening projects, and quitting.
#include <sys/stat.h>

#include <fstream>
#include <sstream>

#include <epoxy/gl.h>

#include <wx/app.h>
#include <wx/filename.h>
#include <wx/menu.h>
#include <wx/modalhook.h>
#include <wx/msgdlg.h>
#include <wx/utils.h>
#include <wx/versioninfo.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsRecovery.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/RuntimeFiles.h"
#include "COMMON/SafeFile.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/MessageBoxes.h"
#include "WIDGET/clsFileDialogEX.h"

namespace {

std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

class Menus : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        Hub()->mpCTimeCtrl->SetPrefetchNative(3);
    }
    void TearDown() override {
        wxFileDialogEX::sStrTestAnswer.clear();
        if (!mbGone) GuiTest::TearDown();
    }
    bool mbGone = false; ///< the frame is on its way out
    static wxMenuBar* Bar() { return Frame()->GetMenuBar(); }
    static PDataSeqCtrl_cls* Store() { return Hub()->mpCPDataSeqCtrl; }
    static bool OpenMelt() { return OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"); }
    static void Answer(const std::string& path) { wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(path); }
};

TEST_F(Menus, WhatIsNotThereYetIsGreyed) {
    GCUndoList.Clear(); // Undo and Redo have nothing to act on
    Bar()->GetMenu(1)->UpdateUI();
    Bar()->GetMenu(2)->UpdateUI(); // Up, Down and Delete need a selected filter
    for (const int id : {ID_UNDO, ID_REDO, ID_FILTER_UP, ID_FILTER_DOWN, ID_FILTER_DELETE}) {
        ASSERT_TRUE(Bar()->FindItem(id)) << id;
        EXPECT_FALSE(Bar()->IsEnabled(id)) << Bar()->GetLabel(id);
    }
    for (const int id : {ID_OPEN_PROJECT,
                         ID_SAVE_PROJECT,
                         ID_SAVE_PROJECT_AS,
                         ID_LOAD_DATA,
                         ID_SAVE_IMAGE_SNAP,
                         ID_SAVE_IMAGE_SEQ,
                         ID_COPY_VIEW,
                         ID_CLOSE_DATA,
                         ID_QUIT,
                         ID_GO,
                         ID_TIME_REMAP,
                         ID_SCENE,
                         ID_REMOVE_CACHE_SNAP,
                         ID_REMOVE_CACHE_ALL,
                         ID_PREFERENCE,
                         ID_VIEW_EXTRA,
                         ID_LIGHT_SOURCE,
                         ID_COLOR_CURVE,
                         ID_FILTER_BOOLEAN,
                         ID_FILTER_FOG,
                         ID_TEX_PROPERTY,
                         ID_EXPORT_DATA,
                         ID_EXPORT_PATH_POV,
                         ID_POVRAY,
                         ID_POV_EXPORT_SNAP,
                         ID_POV_EXPORT_ANIM,
                         ID_POV_RENDER_SNAP,
                         ID_POV_RENDER_ANIM,
                         ID_PERIODIC_BOUNDARY,
                         ID_ABOUT,
                         ID_ABOUT_GL,
                         ID_UNLOCK,
                         ID_SPECIAL})
        EXPECT_TRUE(Bar()->IsEnabled(id)) << Bar()->GetLabel(id);
    EXPECT_EQ(Bar()->GetMenuCount(), 7u);
}

TEST_F(Menus, AboutTellsWhatRuns) {
    Menu(ID_ABOUT);
    ASSERT_EQ(mVMessages.size(), 1u);
    const wxVersionInfo kit = wxGetLibraryVersionInfo();
    EXPECT_EQ(mVMessages[0].mTitle, "About Morentis3");
    EXPECT_TRUE(WasTold(wxString::Format("%d.%d.%d", kit.GetMajor(), kit.GetMinor(), kit.GetMicro())));
    EXPECT_TRUE(WasTold(wxGetOsDescription()));
    EXPECT_TRUE(WasTold("CoreNumber:"));
    Menu(ID_ABOUT_GL);
    ASSERT_EQ(mVMessages.size(), 2u);
    EXPECT_EQ(mVMessages[1].mTitle, "About Open GL");
    EXPECT_TRUE(mVMessages[1].mText.Contains("Mesa")) << mVMessages[1].mText;
}

TEST_F(Menus, AboutThroughTheRealBox) {
    struct Hook_cls : public wxModalDialogHook {
        Hook_cls() { Register(); }
        ~Hook_cls() override { Unregister(); }
        int Enter(wxDialog*) override {
            ++mCount;
            return wxID_OK;
        }
        int mCount = 0;
    } hook;
    InstallMessageBoxes([](const wxString&) {});
    Menu(ID_ABOUT);
    EXPECT_EQ(hook.mCount, 1);
    EXPECT_FALSE(GbGLLockModalDialog.load());
}

TEST_F(Menus, SaveDontSaveCancelThroughTheRealBox) {
    struct Hook_cls : public wxModalDialogHook {
        Hook_cls() { Register(); }
        ~Hook_cls() override { Unregister(); }
        int Enter(wxDialog* dialog) override {
            const auto* box = dynamic_cast<wxMessageDialog*>(dialog);
            if (box) mLabels = box->GetYesLabel() + "|" + box->GetNoLabel() + "|" + box->GetCancelLabel();
            return mAnswer;
        }
        int mAnswer = wxID_NONE;
        wxString mLabels;
    } hook;
    InstallMessageBoxes([](const wxString&) {});
    const std::pair<int, MessageAnswer> kAnswers[] = {{wxID_YES, MESSAGE_YES},
                                                      {wxID_NO, MESSAGE_NO},
                                                      {wxID_CANCEL, MESSAGE_CANCEL},
                                                      {wxID_CLOSE, MESSAGE_CANCEL}};
    for (const auto& [id, answer] : kAnswers) {
        hook.mAnswer = id;
        EXPECT_EQ(MsgBoxSave("Save it?", "Query"), answer);
        EXPECT_EQ(wxControl::RemoveMnemonics(hook.mLabels), "Save|Don't Save|Cancel");
    }
}

TEST_F(Menus, RemoveCacheDropsOneOrAll) {
    ASSERT_TRUE(OpenMelt());
    ASSERT_TRUE(PumpUntil([] { return Store()->IsTheIndexLoaded(3); }));
    Hub()->mpCTimeCtrl->SetPrefetchNative(0);
    const int paints = Canvas(0)->GetPaintCount();
    Frame()->Raise();
    Canvas(0)->SetFocus();
    Key(WXK_F5);
    ASSERT_TRUE(PumpUntil([paints] { return Canvas(0)->GetPaintCount() > paints; })) << "painted anew";
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(Store()->IsTheIndexLoaded(0));
    EXPECT_TRUE(Store()->IsTheIndexLoaded(3)) << "the others stay";
    Menu(ID_REMOVE_CACHE_ALL); // its keys belong to the console switch of an X server
    ASSERT_TRUE(PumpUntil([] { return !Store()->IsTheIndexLoaded(3); }));
    ASSERT_TRUE(PumpUntil([] { return Store()->IsTheIndexLoaded(0); })) << "the shown frame comes back";
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 20);
}

TEST_F(Menus, CloseDataForgetsTheSequence) {
    ASSERT_TRUE(OpenMelt());
    Canvas(0)->SetFocus();
    Key('W', wxMOD_CONTROL);
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(Store()->GetStrActiveFileSequencePath().empty());
    EXPECT_TRUE(Frame()->GetStatusBar()->GetStatusText(0).StartsWith("No data"));
    EXPECT_FALSE(Canvas(0)->GetMessageText().Contains("melt0000"));
}

TEST_F(Menus, SpecialTakesThePreviousRadiusTypeAndValue) {
    ASSERT_TRUE(OpenMelt());
    ASSERT_TRUE(PumpUntil([] { return Store()->IsTheIndexLoaded(1) && Store()->IsTheIndexLoaded(2); }));
    Hub()->mpCTimeCtrl->SetFrameNative(2, 6);
    ASSERT_TRUE(Settle());
    ASSERT_TRUE(PumpUntil([] { return Store()->IsTheIndexLoaded(1) && Store()->IsTheIndexLoaded(2); }));
    const auto block = [](int index) { return Store()->GetPCActiveFileSequence()->mpCSnap[index]->mpCBlock; };
    int differing = 0;
    for (int i = 0; i < block(2)->mParticleNumber; ++i)
        differing += block(2)->mpValue1[i] != block(1)->mpValue1[i];
    ASSERT_GT(differing, 100);
    Menu(ID_SPECIAL);
    for (int i = 0; i < block(2)->mParticleNumber; ++i)
        ASSERT_EQ(block(2)->mpValue1[i], block(1)->mpValue1[i]) << i;
    EXPECT_NE(block(2)->mpPos[7][0], block(1)->mpPos[7][0]) << "positions stay";
}

TEST_F(Menus, UnlockFreesAStuckDrawing) {
    ASSERT_TRUE(OpenMelt());
    GbGLLockDrawing.store(true);
    const int paints = Canvas(0)->GetPaintCount();
    Canvas(0)->MarkStale();
    PumpUntil([] { return false; }, 200);
    EXPECT_EQ(Canvas(0)->GetPaintCount(), paints) << "locked";
    Menu(ID_UNLOCK);
    EXPECT_FALSE(GbGLLockDrawing.load());
    EXPECT_GT(Canvas(0)->GetPaintCount(), paints);
}

TEST_F(Menus, ProjectRoundTripKeepsEveryByte) {
    const TempDir_cls dir;
    ASSERT_TRUE(OpenMelt());
    Menu(ID_VIEW_PANEL_TYPE_3);
    Canvas(2)->mGLOrthoScale.mValue = 12.5f;
    Canvas(1)->mShowGrid.mValue = false;
    Hub()->mpCTimeCtrl->SetWAMaxNative(11);
    Answer(dir / "first"); // without the ending
    Canvas(0)->SetFocus();
    Key('S', wxMOD_CONTROL | wxMOD_SHIFT);
    ASSERT_TRUE(Settle());
    const std::string first = ReadAll(dir / "first.mrp");
    ASSERT_GT(first.size(), 1000u);
    EXPECT_TRUE(Frame()->GetTitle().Contains("first.mrp")) << Frame()->GetTitle();

    // Change it all, then open it again.
    ResetViews();
    Menu(ID_CLOSE_DATA);
    Hub()->mpCTimeCtrl->SetWAMaxNative(3);
    Answer(dir / "first.mrp");
    Canvas(0)->SetFocus();
    Key('O', wxMOD_CONTROL);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Canvas(2)->mGLOrthoScale.mValue, 12.5f);
    EXPECT_FALSE(Canvas(1)->mShowGrid.mValue);
    EXPECT_TRUE(Canvas(3)->IsShownOnScreen()) << "the layout comes back";
    EXPECT_EQ(Hub()->mpCTimeCtrl->GetWAMax(), 11);
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 20);
    EXPECT_GT(Grab(0).CountLit(60), 200) << "and the data are painted";

    Answer(dir / "second.mrp");
    Key('S', wxMOD_CONTROL | wxMOD_SHIFT);
    ASSERT_TRUE(Settle());
    const auto withoutOwnName = [](const std::string& text) {
        std::istringstream in(text);
        std::string line;
        std::string out;
        while (std::getline(in, line))
            if (line.rfind("LastOpenedFileMRP=", 0) != 0) out += line + "\n";
        return out;
    };
    EXPECT_EQ(withoutOwnName(ReadAll(dir / "second.mrp")), withoutOwnName(first));
    // Save again under the name: the same bytes.
    const std::string second = ReadAll(dir / "second.mrp");
    std::ofstream(dir / "second.mrp", std::ios::trunc) << "overwritten";
    Key('S', wxMOD_CONTROL);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(ReadAll(dir / "second.mrp"), second);
    ASSERT_EQ(mVMessages.size(), 1u) << "closing the data was a step";
    EXPECT_EQ(mVMessages[0].mKind, MessageKind::Save);
}

TEST_F(Menus, CancelledDialogsDoNothing) {
    ASSERT_TRUE(OpenMelt());
    const wxString title = Frame()->GetTitle();
    for (const int id : {ID_OPEN_PROJECT, ID_SAVE_PROJECT_AS}) {
        Answer("CANCEL");
        Menu(id);
        EXPECT_EQ(Frame()->GetTitle(), title);
        EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 20);
    }
}

TEST_F(Menus, AFolderThatCantBeWrittenKeepsTheOldFile) {
    // For root no folder is closed; one that isn't there does as well.
    const TempDir_cls dir;
    ASSERT_TRUE(OpenMelt());
    const std::string closed = dir / "closed";
    ASSERT_EQ(mkdir(closed.c_str(), 0700), 0);
    std::ofstream(closed + "/old.mrp") << "LoaderScale=2\n";
    const bool bRoot = geteuid() == 0;
    ASSERT_EQ(chmod(closed.c_str(), 0500), 0);
    const std::string path = bRoot ? dir / "missing/old.mrp" : closed + "/old.mrp";
    Answer(path);
    Menu(ID_SAVE_PROJECT_AS);
    EXPECT_TRUE(WasTold("old.mrp could not be written"));
    EXPECT_EQ(ReadAll(closed + "/old.mrp"), "LoaderScale=2\n");
    EXPECT_FALSE(Frame()->GetTitle().Contains("old.mrp")) << "the project keeps its name";
    chmod(closed.c_str(), 0700);
}

TEST_F(Menus, AMissingProjectIsToldAndNothingChanges) {
    ASSERT_TRUE(OpenMelt());
    Answer("/nowhere/at/all.mrp");
    Menu(ID_OPEN_PROJECT);
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_TRUE(WasTold("/nowhere/at/all.mrp"));
    EXPECT_EQ(Store()->GetActiveFileSequenceLength(), 20);
}

TEST_F(Menus, MenuKeysReachTheFrameFromADialog) {
    Canvas(0)->SetFocus();
    Key('B', wxMOD_CONTROL);
    wxTopLevelWindow* dialog = WaitForWindow("Periodic Boundary");
    ASSERT_TRUE(dialog);
    Key(WXK_ESCAPE);
    ASSERT_TRUE(PumpUntil([dialog] { return !dialog->IsShown(); }));
}

TEST_F(Menus, QuitAsksAndNoStays) {
    Hub()->mpCRecovery->MarkSaved();
    mAnswers = {false};
    Canvas(0)->SetFocus();
    ASSERT_TRUE(PumpUntil([] { return Frame()->IsActive(); }));
    Key('Q');
    ASSERT_TRUE(Settle());
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mText, "Really Quit ?");
    EXPECT_TRUE(Frame()->IsShown());
    mAnswers = {false};
    Frame()->Close(); // the window's cross asks too
    ASSERT_TRUE(Settle());
    EXPECT_EQ(mVMessages.size(), 2u);
    EXPECT_TRUE(Frame()->IsShown());
    // Over unsaved steps another question takes its place; a save that isn't done keeps the program.
    Hub()->mpCRecovery->MarkUnsaved();
    GSafeFileStep = [](const char*) { return false; };
    Answer("CANCEL"); // where the project has no name
    mSaveAnswers = {MESSAGE_YES};
    Menu(ID_QUIT);
    GSafeFileStep = {};
    ASSERT_GE(mVMessages.size(), 3u);
    EXPECT_EQ(mVMessages[2].mKind, MessageKind::Save);
    EXPECT_TRUE(Frame()->IsShown());
    Hub()->mpCRecovery->MarkSaved();
}

TEST_F(Menus, ZzQuitYesWritesTheConfigureFile) {
    Hub()->mpCRecovery->MarkSaved();
    int asked = 0;
    SetMessageHandler([&asked](MessageKind, const wxString&, const wxString&) {
        if (++asked == 1) {
            // A second wish to quit while the question is up.
            wxCommandEvent again(wxEVT_MENU, ID_QUIT);
            Frame()->ProcessWindowEvent(again);
            Frame()->Close();
            wxTheApp->ProcessPendingEvents();
        }
        return true;
    });
    Hub()->mpCDataLoader->mCItemScale.mValue = 0.125f;
    const wxString path = GetConfigureFilePath();
    if (wxFileExists(path)) wxRemoveFile(path);
    wxCommandEvent event(wxEVT_MENU, ID_QUIT);
    FrameMain_cls* frame = Frame();
    mbGone = true;
    frame->ProcessWindowEvent(event);
    EXPECT_EQ(asked, 1);
    ASSERT_TRUE(wxFileExists(path));
    const std::string text = ReadAll(path.ToStdString());
    EXPECT_NE(text.find("LoaderScale=0.125"), std::string::npos);
    wxRemoveFile(path);
    EXPECT_TRUE(wxPendingDelete.Member(frame));
    // Whoever comes behind in this process finds the window as before.
    wxPendingDelete.DeleteObject(frame);
    frame->Show();
    mbGone = false;
}

} // namespace
