// The panels of filters, their menus, and what selects them.
#include "FilterTest.h"

#include <wx/stattext.h>
#include <wx/stopwatch.h>

#include "COMMON/FramePath.h"
#include "COMMON/Globals.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GuiEvents.h"
#include "PARAM/clsParamGroup.h"
#include "WIDGET/clsKeyButton.h"

namespace {

class Filters : public FilterTest {};

struct Kind_st {
    int mId;
    int mList;
    const char* mName;
    int mFields; ///< that a hand can change
};

const Kind_st kKinds[] = {
    {ID_FILTER_BOOLEAN, 0, "Boolean00", 12}, {ID_FILTER_FILTERING, 0, "Filtering00", 3},
    {ID_FILTER_DATABOX, 1, "DataBox00", 12}, {ID_FILTER_OBJECT, 1, "Object00", 12},
    {ID_FILTER_STICK, 1, "Stick00", 13},     {ID_FILTER_GRID, 1, "Grid00", 14},
    {ID_FILTER_COPYBOX, 2, "CopyBox00", 6},  {ID_FILTER_FOG, 2, "Fog00", 5},
};

TEST_F(Filters, EachEntryMakesItsKindAndShowsItOpen) {
    const wxString empty = Text();
    for (const Kind_st& kind : kKinds) {
        const FilterBase_cls* filter = Add(kind.mId, kind.mList);
        EXPECT_EQ(filter->mpCData->mCName.mStrValue, kind.mName);
        EXPECT_EQ(PageOf(), kind.mList);
        FilterPanelGUI_cls& panel = Panel(filter);
        EXPECT_EQ(panel.GetPCFold()->GetLabelText(), wxString("[-] ") + kind.mName);
        EXPECT_TRUE(panel.GetPCPanel()->IsShownOnScreen()) << kind.mName;
        EXPECT_LE(panel.GetWindow()->GetBestSize().x, Frame()->FromDIP(285)) << kind.mName;
        EXPECT_LE(panel.GetWindow()->GetSize().x, Pane(kind.mList)->GetClientSize().x) << kind.mName;
        Snap(kind.mName);
    }
    const wxString all = Text();
    while (GCUndoList.IsUndoable())
        Menu(ID_UNDO);
    EXPECT_EQ(Text(), empty);
    EXPECT_EQ(Strips()->GetRows().size(), 2u) << "camera and lights alone";
    while (GCUndoList.IsRedoable())
        Menu(ID_REDO);
    EXPECT_EQ(Text(), all);
    EXPECT_TRUE(Panel(At(0, 0)).IsOpen()) << "as it was when it went";
    EXPECT_TRUE(Panel(At(0, 0)).GetPCPanel());
}

TEST_F(Filters, EachFieldIsAStepAndShownWhenItIsTakenBack) {
    for (const Kind_st& kind : kKinds) {
        const FilterBase_cls* filter = Add(kind.mId, kind.mList);
        EXPECT_EQ(ChangeAll([&] { return Panel(filter).GetPCPanel(); }, kind.mName), kind.mFields)
            << kind.mName;
    }
    // The head's tick.
    Show(0, 0);
    wxCheckBox* valid = Panel(At(0, 0)).GetPCValid();
    ClickOn(valid);
    Settle();
    EXPECT_FALSE(At(0, 0)->mpCData->mCValid.mValue);
    Menu(ID_UNDO);
    EXPECT_TRUE(At(0, 0)->mpCData->mCValid.mValue);
    EXPECT_TRUE(valid->GetValue());
}

TEST_F(Filters, RowsFollowWhatIsChosen) {
    const FilterBase_cls* object = Add(ID_FILTER_OBJECT, 1);
    MultiInputPanel_cls* rows = Panel(object).GetPCPanel();
    const int closed = Panel(object).GetWindow()->GetSize().y;
    EXPECT_FALSE(rows->GetField(1)->IsShown()) << "a box has no path";
    Choose(rows->GetField(0), 3); // Import
    EXPECT_TRUE(rows->GetField(1)->IsShown());
    EXPECT_GT(Panel(object).GetWindow()->GetSize().y, closed);
    Snap("import");
    Menu(ID_UNDO);
    EXPECT_FALSE(rows->GetField(1)->IsShown());
    EXPECT_EQ(Panel(object).GetWindow()->GetSize().y, closed);

    rows = Panel(Add(ID_FILTER_FOG, 2)).GetPCPanel();
    EXPECT_TRUE(rows->GetField(2)->IsShown());
    EXPECT_FALSE(rows->GetField(3)->IsShown());
    Change(rows->GetField(0));
    Change(rows->GetField(0)); // LINEAR
    EXPECT_FALSE(rows->GetField(2)->IsShown());
    EXPECT_TRUE(rows->GetField(3)->IsShown());
}

TEST_F(Filters, PathsAndTheMatrixOfAMesh) {
    FilterBase_cls* object = Add(ID_FILTER_OBJECT, 1);
    auto& data = static_cast<FilterObjectData_cls&>(*object->mpCData);
    MultiInputPanel_cls* rows = Panel(object).GetPCPanel();
    Choose(rows->GetField(0), 3);
    const wxString before = Text();
    Answer("/data/hull0001.obj");
    ClickOn(rows->GetField(1, 1));
    EXPECT_EQ(data.mCImportPath.mStrValue, "/data/hull0001.obj");
    EXPECT_EQ(dynamic_cast<wxTextCtrl*>(rows->GetField(1))->GetValue(), "/data/hull0001.obj");
    Answer("CANCEL");
    ClickOn(rows->GetField(1, 1));
    EXPECT_EQ(data.mCImportPath.mStrValue, "/data/hull0001.obj");
    Menu(ID_UNDO);
    EXPECT_EQ(Text(), before);

    // Its fields change nothing before OK, and all of it is one step.
    const auto edit = [&](wxWindowID button) {
        Later({{HasDialog, [=] {
                    wxWindow* dialog = nullptr;
                    for (wxWindow* top : wxTopLevelWindows)
                        if (top->IsShown() && top->GetLabel() == "Array Vector") dialog = top;
                    Snap("array_vector");
                    NumField_cls* field = FindField(dialog, "x, y and z");
                    field->GetPCText()->ChangeValue("2");
                    field->GetPCText()->MarkDirty();
                    field->Commit();
                    EXPECT_EQ(Text(), before);
                    Send(dialog->FindWindow(button), wxEVT_BUTTON, 0);
                }}});
        Send(rows->GetField(2), wxEVT_BUTTON, 0);
        Settle();
    };
    edit(ID_DIALOG_CLOSE);
    EXPECT_EQ(Text(), before);
    edit(wxID_OK);
    EXPECT_EQ(data.mCArrayVector[0].mValue[0], 2.0f);
    Menu(ID_UNDO);
    EXPECT_EQ(Text(), before);

    rows = Panel(Add(ID_FILTER_STICK, 1)).GetPCPanel();
    const int path = rows->GetRowCount() - 1;
    EXPECT_TRUE(rows->GetField(path)->IsShown());
    Answer("/data/pairs.bond");
    ClickOn(rows->GetField(path, 1));
    EXPECT_EQ(dynamic_cast<wxTextCtrl*>(rows->GetField(path))->GetValue(), "/data/pairs.bond");
}

// Chosen as whole paths; a folder that moves with its project, its meshes and its pairs keeps them all.
TEST_F(Filters, PathsBelowTheProjectMoveWithIt) {
    const std::string folder = CopyMelt("before"), other = mDir / "other";
    fs::create_directories(folder + "/parts");
    fs::create_directories(other);
    std::ofstream(folder + "/parts/hull0000.obj") << "v 0 0 0\nv 9 0 0\nv 0 9 0\nf 1 2 3\n";
    std::ofstream(folder + "/pairs.txt") << "0 1\n1 2\n";
    std::ofstream(other + "/wall.obj") << "v 0 0 0\nv 9 0 0\nv 0 9 0\nf 1 2 3\n";
    ASSERT_TRUE(OpenAndPaint(folder + "/melt0000.bin"));
    for (const std::string& path : {folder + "/parts/hull%04d.obj", other + "/wall.obj"}) {
        auto& mesh = static_cast<FilterObjectData_cls&>(*Add(ID_FILTER_OBJECT, 1)->mpCData);
        mesh.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
        mesh.mCImportPath.mStrValue = path;
    }
    auto& stick = static_cast<FilterStickData_cls&>(*Add(ID_FILTER_STICK, 1)->mpCData);
    stick.mCStickPath.mStrValue = folder + "/pairs.txt";
    Settle();
    Answer(folder + "/p.mrp");
    Menu(ID_SAVE_PROJECT_AS);
    const auto expectPaths = [&](const std::string& text) {
        EXPECT_NE(text.find("ImportPath=parts/hull%04d.obj\n"), std::string::npos) << text;
        EXPECT_NE(text.find("ImportPath=" + other + "/wall.obj\n"), std::string::npos);
        EXPECT_NE(text.find("StickPath=pairs.txt\n"), std::string::npos);
    };
    expectPaths(ReadAll(folder + "/p.mrp"));
    EXPECT_TRUE(Text().Contains("ImportPath=" + wxString(folder))) << "the panel keeps what was chosen";

    Open(mDefaults.ToStdString());
    const std::string moved = mDir / "after";
    fs::rename(folder, moved);
    wxString told;
    const auto tell = Lists().mHooks.mTell;
    Lists().mHooks.mTell = [&told](const wxString& text) { told += text; };
    Open(moved + "/p.mrp");
    EXPECT_GT(Grab(0).CountLit(60), 100);
    Lists().mHooks.mTell = tell;
    EXPECT_TRUE(told.empty()) << told;
    for (int position = 0; position < 3; ++position) {
        FilterData_cls& data = *At(1, position)->mpCData;
        const wxString file = FramePath_cls(data.GetPaths()[0]->mStrValue, data.mStrFolder).GetFile(0);
        EXPECT_TRUE(wxFileName::FileExists(file)) << file;
    }
    Menu(ID_SAVE_PROJECT);
    expectPaths(ReadAll(moved + "/p.mrp"));
    // The dialog opens where the file is.
    Show(1, 0);
    Answer("CANCEL");
    ClickOn(Panel(At(1, 0)).GetPCPanel()->GetField(1, 1));
    EXPECT_EQ(GpCFileDialog->GetDirectory(), moved + "/parts");
}

TEST_F(Filters, OneIsSelectedInPaneAndTimeLine) {
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, 0);
    FilterBase_cls* other = Add(ID_FILTER_BOOLEAN, 0);
    EXPECT_FALSE(Lists().GetPCSelected());
    Show(0, 0);
    Click(Panel(cut).GetPCPanel(), wxPoint(2, 2));
    Settle();
    EXPECT_EQ(Lists().GetPCSelected(), cut);
    EXPECT_EQ(Panel(cut).GetWindow()->GetBackgroundColour(), wxColour(240, 230, 180));
    EXPECT_EQ(Panel(other).GetWindow()->GetBackgroundColour(), wxColour("LIGHT BLUE"));
    const auto rowOf = [](const FilterBase_cls* filter) {
        for (int row = 0; row < int(Strips()->GetRows().size()); ++row)
            if (Strips()->GetRows()[size_t(row)].mpCGroup->GetPCGroup() == filter->mpCData->mpCObjectGroup)
                return row;
        return -1;
    };
    EXPECT_TRUE(Strips()->IsRowSelected(rowOf(cut)));
    EXPECT_FALSE(Strips()->IsRowSelected(rowOf(other)));
    Snap("selected");

    // The row of the other one.
    Strips()->SelectRow(rowOf(other), false, false);
    EXPECT_EQ(Lists().GetPCSelected(), other);
    EXPECT_TRUE(Strips()->IsRowSelected(rowOf(other)));
    EXPECT_EQ(Panel(other).GetWindow()->GetBackgroundColour(), wxColour(240, 230, 180));
    Menu(ID_DESELECT);
    EXPECT_FALSE(Lists().GetPCSelected());
    EXPECT_EQ(Panel(other).GetWindow()->GetBackgroundColour(), wxColour("LIGHT BLUE"));
    EXPECT_FALSE(Strips()->IsRowSelected(rowOf(other)));

    // A press anywhere in a panel, and one beside all panels.
    Show(0, 0);
    ClickOn(static_cast<NumField_cls*>(Panel(cut).GetPCPanel()->GetField(2))->GetPCText());
    Settle();
    EXPECT_EQ(Lists().GetPCSelected(), cut);
    for (FilterBase_cls* filter : {cut, other})
        Panel(filter).SetOpen(false);
    Settle();
    const wxSize pane = Pane(0)->GetClientSize();
    Click(Pane(0), wxPoint(pane.x / 2, pane.y - 4));
    Settle();
    EXPECT_FALSE(Lists().GetPCSelected());
}

TEST_F(Filters, PopupsAddMoveAndDelete) {
    Frame()->GetPCTopHalf()->ShowFilter(0, 0);
    Settle();
    ClickPopup(Pane(0), wxPoint(100, Pane(0)->GetClientSize().y - 5), {WXK_DOWN, WXK_RETURN});
    ASSERT_EQ(Lists().GetBoolean().GetCount(), 1);
    Later({{GuiEvents_cls::HasPopup, [] {}},
           {nullptr, [] { KeyNow(WXK_DOWN); }},
           {nullptr, [] { KeyNow(WXK_DOWN); }},
           {nullptr, [] { KeyNow(WXK_RETURN); }}});
    ClickOn(FindByLabel(Pane(0), "Add"));
    ASSERT_TRUE(PumpUntil([] { return Lists().GetBoolean().GetCount() == 2; }));
    FilterBase_cls* cut = At(0, 0);
    EXPECT_EQ(At(0, 1)->mpCData->mCName.mStrValue, "Filtering00");
    for (int position = 0; position < 2; ++position)
        Panel(At(0, position)).SetOpen(false);
    Settle();
    const wxString made = Text();
    const auto popup = [](FilterBase_cls* filter, const std::vector<int>& keys) {
        wxWindow* fold = Panel(filter).GetPCFold();
        ClickPopup(fold, wxPoint(fold->GetSize().x - 8, 8), keys);
        Settle();
    };
    popup(cut, {WXK_DOWN, WXK_DOWN, WXK_RETURN}); // Down
    EXPECT_EQ(At(0, 1), cut);
    EXPECT_GT(Panel(cut).GetWindow()->GetPosition().y, Panel(At(0, 0)).GetWindow()->GetPosition().y);
    Menu(ID_FILTER_DOWN);
    EXPECT_EQ(At(0, 1), cut) << "it is the last";
    Menu(ID_FILTER_UP);
    EXPECT_EQ(Text(), made);
    EXPECT_LT(Panel(cut).GetWindow()->GetPosition().y, Panel(At(0, 1)).GetWindow()->GetPosition().y);
    popup(cut, {WXK_UP, WXK_RETURN}); // Delete
    EXPECT_EQ(Lists().GetBoolean().GetCount(), 1);
    EXPECT_FALSE(Panel(cut).GetWindow()) << "what is gone has no windows";
    Menu(ID_UNDO);
    EXPECT_EQ(Text(), made);
    ASSERT_TRUE(Panel(cut).GetWindow());
    EXPECT_LT(Panel(cut).GetWindow()->GetPosition().y, Panel(At(0, 1)).GetWindow()->GetPosition().y);
}

// A file may hold filters of one name: each field still edits the filter that it stands in.
TEST_F(Filters, FiltersOfOneNameAreEditedEachForItself) {
    FilterBase_cls* first = Add(ID_FILTER_BOOLEAN, 0);
    FilterBase_cls* second = Add(ID_FILTER_BOOLEAN, 0);
    wxString text = Text();
    text.Replace("Boolean01", "Boolean00");
    std::ofstream(mDir / "equal.mrp") << text.utf8_string();
    Open(mDir / "equal.mrp");
    ASSERT_EQ(Lists().GetBoolean().GetCount(), 2);
    first = At(0, 0);
    second = At(0, 1);
    Show(0, 1);
    ClickOn(Panel(second).GetPCPanel()->GetKeyButton(2));
    TypeInto(dynamic_cast<NumField_cls*>(Panel(second).GetPCPanel()->GetField(2)), "1.5");
    EXPECT_EQ(second->mpCData->mpCTranslate->mVParams[0].Evaluate(0.0, 1.0), 1.5);
    EXPECT_EQ(first->mpCData->mpCTranslate->mVParams[0].Evaluate(0.0, 1.0), 0.0);
    EXPECT_FALSE(first->mpCData->mpCTranslate->mVParams[0].mbTimeDepend.mValue);
    while (GCUndoList.IsUndoable())
        Menu(ID_UNDO);
    EXPECT_EQ(Text(), text);
    // The 25th of a list is pressed as the first one is.
    for (int i = 0; i < 23; ++i) {
        wxCommandEvent add(wxEVT_MENU, ID_FILTER_BOOLEAN);
        Frame()->ProcessWindowEvent(add);
    }
    ASSERT_EQ(Lists().GetBoolean().GetCount(), 25);
    Show(0, 24);
    Click(Panel(At(0, 24)).GetPCPanel(), wxPoint(2, 2));
    Settle();
    EXPECT_EQ(Lists().GetPCSelected(), At(0, 24));
}

TEST_F(Filters, ADiamondKeysAndTheTimeLineShowsIt) {
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, 0);
    EXPECT_EQ(Strips()->GetRows().size(), 3u) << "camera, lights, and the filter folded";
    ClickOn(Panel(cut).GetPCPanel()->GetKeyButton(2));
    Settle();
    EXPECT_TRUE(cut->mpCData->mpCTranslate->mVParams[0].mbTimeDepend.mValue);
    EXPECT_EQ(Panel(cut).GetPCPanel()->GetKeyButton(2)->GetState(), KeyState::KEY);
    const wxString keyed = Text();
    Menu(ID_UNDO);
    EXPECT_FALSE(cut->mpCData->mpCTranslate->mVParams[0].mbTimeDepend.mValue);
    Menu(ID_REDO);
    EXPECT_EQ(Text(), keyed);
    TypeInto(dynamic_cast<NumField_cls*>(Panel(cut).GetPCPanel()->GetField(2)), "1.5");
    EXPECT_EQ(cut->mpCData->mpCTranslate->mVParams[0].Evaluate(0.0, 1.0), 1.5);
}

// What is typed into a panel isn't lost when its filter is deleted from the menu.
TEST_F(Filters, ATextThatIsTypedComesBackWithItsFilter) {
    FilterBase_cls* pick = Add(ID_FILTER_FILTERING, 0);
    ClickOn(Panel(pick).GetPCPanel()->GetField(2));
    Key('A', wxMOD_CONTROL);
    Type("0-99");
    Menu(ID_FILTER_DELETE);
    EXPECT_EQ(Lists().GetBoolean().GetCount(), 0);
    Menu(ID_UNDO);
    ASSERT_EQ(Lists().GetBoolean().GetCount(), 1);
    EXPECT_TRUE(Text().Contains("FilteringString=0-99\n"));
    Menu(ID_UNDO);
    EXPECT_TRUE(Text().Contains("FilteringString=0\n"));
}

TEST_F(Filters, PanesSayWhatToDoAndWhatHasNoEffect) {
    const wxString line = "No effect with \"Zsort (for solid object)\"";
    const char* const hints[kFilterLists] = {
        "what cuts or picks particles", "a mesh, a grid, bonds, a data box", "copies of the cell, or fog"};
    for (int list = kFilterLists - 1; list >= 0; --list) {
        static_cast<wxNotebook*>(wxWindow::FindWindowById(ID_NOTEBOOK_FILTER, Frame()))
            ->SetSelection(size_t(list));
        Settle();
        EXPECT_TRUE(FindByLabel(Pane(list), "Add")) << list;
        EXPECT_TRUE(FindByLabel(Pane(list), hints[list])) << list;
    }
    Add(ID_FILTER_BOOLEAN, 0);
    EXPECT_FALSE(FindByLabel(Pane(0), "what cuts or picks particles"));
    EXPECT_FALSE(FindByLabel(Pane(0), line));
    Hub()->mpCDrawOption->mSortOrder.mValue = 2;
    Menu(ID_REFRESH_DRAW_OPTIONS);
    EXPECT_TRUE(FindByLabel(Pane(0), line));
    Snap("no_effect");
    Hub()->mpCDrawOption->mSortOrder.mValue = 0;
    Menu(ID_REFRESH_DRAW_OPTIONS);
    EXPECT_FALSE(FindByLabel(Pane(0), line));
}

TEST_F(Filters, HundredsOfThemOpenAndGo) {
    FilterLists_cls many; // without panels
    for (int i = 0; i < 200; ++i)
        many.GetBoolean().AddFilter(FILTER_BOOLEAN);
    std::ofstream(mDir / "many.mrp") << many.Serialize().utf8_str().data();
    const wxStopWatch watch;
    Open(mDir / "many.mrp");
    EXPECT_EQ(Lists().GetBoolean().GetCount(), 200);
    EXPECT_EQ(Text(), many.Serialize());
    const long opened = watch.Time();
    Menu(ID_FILTER_REFRESH);
    const long refreshed = watch.Time() - opened;
    Open(mDefaults.ToStdString());
    EXPECT_EQ(Lists().GetBoolean().GetCount(), 0);
    std::printf("two hundred panels: %ld ms opened, %ld ms refreshed, %ld ms in all\n", opened, refreshed,
                watch.Time());
}

} // namespace
