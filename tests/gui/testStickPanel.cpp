// The panel of a stick filter: the rows of calculated bonds, and the table that makes one filter a pair.
#include <wx/filename.h>

#include "FILTER/clsFilterStick.h"
#include "FilterTest.h"
#include "GuiEvents.h"

namespace {

class StickPanel : public FilterTest {
protected:
    FilterStickData_cls& AddCalculated() {
        mpFilter = Add(ID_FILTER_STICK, 1);
        mpRows = Panel(mpFilter).GetPCPanel();
        Choose(mpRows->GetField(0, 1), FilterStickData_cls::CALCULATE);
        return static_cast<FilterStickData_cls&>(*mpFilter->mpCData);
    }
    wxWindow* Field(const wxString& label) const { return FindByLabel(mpRows, label); }
    NumField_cls* Keep() const { return FindField(mpRows, "A bond that formed"); }
    static wxWindow* FindDialog() {
        for (wxWindow* top : wxTopLevelWindows)
            if (top->IsShown() && top->GetLabel() == "One filter a pair of types") return top;
        return nullptr;
    }
    wxString Names() {
        wxString names;
        for (int i = 0; i < Lists().GetObject().GetCount(); ++i)
            names += At(1, i)->mpCData->mCName.mStrValue + ", ";
        return names;
    }

    FilterBase_cls* mpFilter = nullptr;
    MultiInputPanel_cls* mpRows = nullptr;
};

TEST_F(StickPanel, RowsOfCalculatedBondsAreSteps) {
    FilterStickData_cls& data = AddCalculated();
    const wxString before = Text();
    EXPECT_FALSE(before.Contains("AcrossFaces=")) << "projects stay as they were";
    ASSERT_TRUE(Field("Across faces"));
    ClickOn(Field("Across faces"));
    Settle();
    EXPECT_TRUE(data.mCAcross.mValue);
    EXPECT_TRUE(Text().Contains("AcrossFaces=1\n"));
    ASSERT_TRUE(Keep());
    TypeInto(Keep(), "1.5");
    EXPECT_EQ(data.mCKeepUntil.mValue, 1.5f);
    EXPECT_TRUE(Text().Contains("AcrossFaces=1\nKeepUntil=1.500000\n"));
    Snap("stick_rows");
    Menu(ID_UNDO);
    Menu(ID_UNDO);
    EXPECT_EQ(Text(), before);
    EXPECT_LE(Panel(mpFilter).GetWindow()->GetBestSize().x, Frame()->FromDIP(285));
    // Only the rule "Step" keeps bonds, and only what is calculated has these rows.
    data.mCCritType.mValue = STICK_RAMP;
    Menu(ID_FILTER_REFRESH);
    EXPECT_FALSE(Keep());
    EXPECT_TRUE(Field("Across faces"));
    Choose(mpRows->GetField(0, 1), FilterStickData_cls::LOAD_FILE);
    EXPECT_FALSE(Field("Across faces"));
    EXPECT_FALSE(Field("One filter a pair of types..."));
}

TEST_F(StickPanel, TheTableMakesOneFilterAPairInAStep) {
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_unsorted_text/lj_unsorted_text.mrp"));
    FilterStickData_cls& data = AddCalculated();
    data.mCCritA.mValue = 0.15f;
    const wxString before = Text();
    const unsigned steps = GCUndoList.GetCurrent();
    const auto edit = [&](int id, bool bInPlace) {
        Later({{HasDialog, [=] {
                    wxWindow* dialog = FindDialog();
                    ASSERT_TRUE(dialog);
                    Snap("stick_pairs");
                    auto* draws = dynamic_cast<wxCheckBox*>(FindByTip(dialog, "Whether this pair"));
                    ASSERT_TRUE(draws);
                    draws->SetValue(false); // of the first row, types 1 and 1
                    Send(draws, wxEVT_CHECKBOX, 0);
                    NumField_cls* keep = FindField(dialog, "A bond that formed");
                    keep->GetPCText()->ChangeValue("0.2");
                    keep->GetPCText()->MarkDirty();
                    keep->Commit();
                    auto* place = dynamic_cast<wxCheckBox*>(FindByLabel(dialog, "In place of this filter"));
                    place->SetValue(bInPlace);
                    Send(place, wxEVT_CHECKBOX, bInPlace);
                    EXPECT_EQ(Text(), before) << "nothing changes before OK";
                    Send(dialog->FindWindow(id), wxEVT_BUTTON, 0);
                }}});
        ClickOn(Field("One filter a pair of types..."));
        Settle();
    };
    edit(ID_DIALOG_CLOSE, true);
    EXPECT_EQ(Text(), before);
    edit(wxID_OK, false);
    EXPECT_EQ(Names(), "Stick00, Stick00 (1-2), Stick00 (2-2), ");
    EXPECT_GT(GCUndoList.GetCurrent(), steps);
    Menu(ID_UNDO);
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(GCUndoList.GetCurrent(), steps) << "one step";
    edit(wxID_OK, true);
    EXPECT_EQ(Names(), "Stick00 (1-2), Stick00 (2-2), ");
    EXPECT_TRUE(Panel(At(1, 0)).GetWindow()->IsShownOnScreen());
    Snap("stick_made");
    Menu(ID_UNDO);
    EXPECT_EQ(Text(), before);
    Menu(ID_REDO);
    EXPECT_EQ(Names(), "Stick00 (1-2), Stick00 (2-2), ");
}

TEST_F(StickPanel, WithoutParticlesThereIsNoTable) {
    Menu(ID_CLOSE_DATA);
    AddCalculated();
    ClickOn(Field("One filter a pair of types..."));
    Settle();
    EXPECT_TRUE(WasTold("There are no particles in this frame"));
    EXPECT_FALSE(FindDialog());
}

} // namespace
