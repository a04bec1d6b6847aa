// Nothing that a user opens makes the toolkit complain or cuts its text, in any language.
#include <algorithm>
#include <set>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/control.h>
#include <wx/intl.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/stattext.h>
#include <wx/tglbtn.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "FILTER/clsFilterLists.h"
#include "GtkWords.h"
#include "GuiTest.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "ProjectTest.h"
#include "RunFilm.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsKeyDialog.h"
#include "WIDGET/clsDialogEXKey.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsGripLabel.h"

namespace {

class Quiet : public GuiTest {
protected:
    void TearDown() override {
        for (wxWindow* window : wxTopLevelWindows)
            if (auto* dialog = dynamic_cast<wxDialogEXKey*>(window)) dialog->CloseEXKey();
        GuiTest::TearDown();
    }
    static void ForEach(wxWindow* root, const std::function<void(wxWindow*)>& visit) {
        for (wxWindow* child : root->GetChildren()) {
            if (child->IsTopLevel()) continue;
            visit(child);
            ForEach(child, visit);
        }
    }
    /// A button's text has at least this many pixels on each side, the border among them; what only shows a
    /// text holds it, in whatever language.
    static void CheckTexts(wxWindow* root) {
        constexpr int kRoom = 4;
        ForEach(root, [](wxWindow* window) {
            if (!window->IsShownOnScreen()) return;
            const wxString text = wxControl::RemoveMnemonics(window->GetLabel());
            int w = 0;
            int h = 0;
            if (auto* button = dynamic_cast<wxAnyButton*>(window)) {
                if (text.empty()) return;
                button->GetTextExtent(text, &w, &h);
                const int bitmap = button->GetBitmap().IsOk() ? button->GetBitmap().GetWidth() : 0;
                EXPECT_GE(button->GetSize().x, w + bitmap + 2 * kRoom) << text;
                EXPECT_GE(button->GetSize().y, h) << text;
            } else if (dynamic_cast<GripLabel_cls*>(window) || dynamic_cast<wxCheckBox*>(window) ||
                       dynamic_cast<wxChoice*>(window)) {
                EXPECT_GE(window->GetSize().x, window->GetBestSize().x) << text;
            } else if (dynamic_cast<wxStaticText*>(window) && !window->HasFlag(wxST_ELLIPSIZE_END)) {
                EXPECT_GE(window->GetSize().x, window->GetBestSize().x) << text;
            } else {
                return;
            }
            const int right = window->ClientToScreen(wxPoint(window->GetClientSize().x, 0)).x;
            for (wxWindow* pane = window->GetParent(); pane && !pane->IsTopLevel(); pane = pane->GetParent())
                EXPECT_LE(right, pane->ClientToScreen(wxPoint(pane->GetClientSize().x, 0)).x + kRoom)
                    << text << " leaves its pane";
        });
    }
    /// Every page of every book, one after the other.
    static void TurnPages(wxWindow* root) {
        CheckTexts(root);
        std::vector<wxNotebook*> books;
        ForEach(root, [&books](wxWindow* window) {
            if (auto* book = dynamic_cast<wxNotebook*>(window)) books.push_back(book);
        });
        for (wxNotebook* book : books) {
            for (size_t page = 0; page < book->GetPageCount(); ++page) {
                book->SetSelection(page);
                Settle();
                CheckTexts(root);
            }
            book->SetSelection(0);
        }
    }
    /// Opens one that holds the caller, looks at it, and puts it away.
    static void LookAtModal(const wxString& title, const std::function<void()>& open) {
        SCOPED_TRACE(title);
        bool bSeen = false;
        const auto look = [&] {
            for (wxWindow* window : wxTopLevelWindows)
                if (window->IsShown() && window->GetLabel() == title) {
                    bSeen = true;
                    CheckTexts(window);
                }
        };
        const auto leave = [] {
            if (HasDialog()) KeyNow(WXK_ESCAPE);
        };
        bool bDone = false;
        Later({{HasDialog, look}, {nullptr, leave}, {[] { return !HasDialog(); }, leave}, {nullptr, [&bDone] {
                                                                                               bDone = true;
                                                                                           }}});
        open();
        EXPECT_TRUE(PumpUntil([&bDone] { return bDone; }));
        EXPECT_TRUE(bSeen);
        Settle();
    }
};

TEST_F(Quiet, EveryDialogAndPageOpensWithoutAWordOfTheToolkit) {
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    Snap("window");
    TurnPages(Frame());
    for (const int id : {ID_VIEW_PANEL_TYPE_1, ID_VIEW_PANEL_TYPE_2, ID_VIEW_PANEL_TYPE_3,
                         ID_VIEW_PANEL_TYPE_4, ID_VIEW_PANEL_TYPE_0}) {
        Menu(id);
        CheckTexts(Frame());
    }
    std::set<wxWindow*> seen;
    for (const int id :
         {ID_LOAD_DATA, ID_EXPORT_DATA, ID_SAVE_IMAGE_SEQ, ID_SCENE, ID_PREFERENCE, ID_COLOR_CURVE,
          ID_PERIODIC_BOUNDARY, ID_LIGHT_SOURCE, ID_TEX_PROPERTY, ID_CAMERA_PATH, ID_STEREOGRAM, ID_POVRAY}) {
        SCOPED_TRACE(Frame()->GetMenuBar()->GetLabel(id));
        Menu(id);
        wxDialogEXKey* opened = nullptr;
        ASSERT_TRUE(PumpUntil([&] {
            for (wxWindow* window : wxTopLevelWindows)
                if (window->IsShown() && seen.count(window) == 0 && dynamic_cast<wxDialogEXKey*>(window))
                    opened = dynamic_cast<wxDialogEXKey*>(window);
            return opened != nullptr;
        }));
        Settle();
        TurnPages(opened);
        Snap(("dialog_" + wxString::Format("%d", id)).ToStdString());
        seen.insert(opened);
        opened->CloseEXKey();
        Settle();
    }
    wxFileDialogEX::sStrTestAnswer = Root() + "examples/lj_unsorted_text/unsorted001.txt";
    LookAtModal(_("Guess"), [] { Menu(ID_GUESS_DATA); });
    LookAtModal(_("Move Frame"), [] { Menu(ID_GO); });
    const wxString axes[] = {"X", "Y", "Z"};
    ParamGroup_cls group("Place", 3, axes, 6, false);
    std::vector<Parameters_cls*> curves;
    for (Parameters_cls& curve : group.mVParams) {
        curve.InsertKey(0.25, 1.0, 0.0, 0.0);
        curve.SelectKeyFrameRegion(0.0, 1.0, 0.0, 2.0, false);
        curves.push_back(&curve);
    }
    LookAtModal(_("Key Settings"), [&curves] { KeyDialog_cls::Open(Frame(), curves); });
    Menu(ID_VIEW_EXTRA, true);
    Menu(ID_VIEW_EXTRA, false);
    Menu(ID_TIME_REMAP, true);
    Menu(ID_TIME_REMAP, false);
    Hub()->mpCTimeCtrl->StartPlayCommand(1);
    PumpUntil([] { return !Hub()->mpCTimeCtrl->IsPlaying(); }, 1000);
    for (const std::string& word : GetGtkWords())
        ADD_FAILURE() << word;
    EXPECT_TRUE(mVMessages.empty());
}

/// A project's lines but for its own name.
std::vector<std::string> GetLines(const std::string& path) {
    std::vector<std::string> lines = Lines(ReadAll(path));
    const auto isName = [](const std::string& line) { return line.rfind("LastOpenedFileMRP=", 0) == 0; };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isName), lines.end());
    return lines;
}

// Words for the kinds of filters are translated on the screen alone.
TEST_F(Quiet, ProjectsAreTheSameInEveryLanguage) {
    FilmFolder_cls folder;
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    for (int id = ID_FILTER_BOOLEAN; id <= ID_FILTER_STICK; ++id)
        if (id != ID_FILTER_OBJECT_MENU && id != ID_FILTER_WORLD_MENU) Menu(id);
    const std::string window = folder / "window.mrp", command = folder / "command.mrp";
    ASSERT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(window), true));
    const std::vector<std::string> lines = GetLines(window);
    for (const char* name : {"FilterName=Boolean00", "FilterName=DataBox00", "FilterName=Stick00"})
        EXPECT_EQ(std::count(lines.begin(), lines.end(), name), 1) << name;
    const ChildRun_st run = RunFilm({"--write-project", command, window}); // speaks English
    ASSERT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_TRUE(GetLines(command) == lines);
    ASSERT_TRUE(OpenProjectAndPaint(command));
    ASSERT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(window), true));
    EXPECT_TRUE(GetLines(window) == lines);
    Hub()->mpCFilters->ClearFilters();
    GCUndoList.Clear();
}

} // namespace
