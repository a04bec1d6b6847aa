// The dialog "Texture".
#include "FILTER/PANEL/clsTexPropertyCtrl.h"
#include "FILTER/PANEL/clsTexPropertyGUI.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "FilterTest.h"

namespace {

class Texture : public FilterTest {
protected:
    void SetUp() override {
        FilterTest::SetUp();
        Menu(ID_TEX_PROPERTY);
        mpGUI = dynamic_cast<TexPropertyGUI_cls*>(WaitForWindow("Texture::Not selected"));
        ASSERT_TRUE(mpGUI);
    }
    void TearDown() override {
        mpGUI->CloseEXKey();
        FilterTest::TearDown();
    }
    TexPropertyGUI_cls* mpGUI = nullptr;
};

TEST_F(Texture, ItFollowsTheSelectedFilter) {
    EXPECT_FALSE(mpGUI->GetPCPanel(0)->GetField(0)->IsEnabled());
    FilterBase_cls* object = Add(ID_FILTER_OBJECT, 1);
    FilterBase_cls* cut = Add(ID_FILTER_BOOLEAN, 0);
    FilterBase_cls* stick = Add(ID_FILTER_STICK, 1);
    Lists().SelectFilter(object, true);
    EXPECT_EQ(mpGUI->GetTitle(), "Texture::Object00");
    EXPECT_TRUE(mpGUI->GetPCPanel(0)->GetField(0)->IsEnabled());
    Lists().SelectFilter(stick, true);
    EXPECT_EQ(mpGUI->GetTitle(), "Texture::Stick00");
    Lists().SelectFilter(object, true);
    EXPECT_EQ(mpGUI->GetTitle(), "Texture::Object00");
    Lists().SelectFilter(cut, true);
    EXPECT_EQ(mpGUI->GetTitle(), "Texture::Not selected");
    Lists().SelectFilter(stick, true);
    Menu(ID_FILTER_DELETE);
    EXPECT_EQ(mpGUI->GetTitle(), "Texture::Not selected");
    EXPECT_FALSE(Hub()->mpCTexPropertyCtrl->IsConnected());
    Menu(ID_UNDO);
    EXPECT_EQ(mpGUI->GetTitle(), "Texture::Not selected");
    // A project takes its filters along.
    Lists().SelectFilter(object, true);
    Frame()->OpenProject(mDefaults);
    EXPECT_FALSE(Hub()->mpCTexPropertyCtrl->IsConnected());
}

TEST_F(Texture, EachFieldIsAStepOfTheFiltersOwn) {
    for (const int id : {ID_FILTER_OBJECT, ID_FILTER_STICK}) {
        Lists().SelectFilter(Add(id, 1), true);
        const int fields[] = {4, 6, 3, 1};
        for (int page = 0; page < TexPropertyGUI_cls::kPages; ++page) {
            mpGUI->GetPCBook()->SetSelection(size_t(page));
            Settle();
            EXPECT_EQ(ChangeAll([&] { return mpGUI->GetPCPanel(page); }, mpGUI->GetTitle()), fields[page]);
            Snap("texture_" + std::to_string(page));
        }
    }
}

TEST_F(Texture, RowsFollowTheirTypes) {
    FilterBase_cls* object = Add(ID_FILTER_OBJECT, 1);
    Lists().SelectFilter(object, true);
    MultiInputPanel_cls* panel = mpGUI->GetPCPanel(0);
    EXPECT_FALSE(panel->GetField(3)->IsShown()) << "Alpha";
    Change(panel->GetField(2));
    EXPECT_TRUE(panel->GetField(3)->IsShown());
    Menu(ID_UNDO);
    EXPECT_FALSE(panel->GetField(3)->IsShown());
    EXPECT_FALSE(mpGUI->GetPCPanel(1)->GetField(4)->IsShown()) << "degree of the second layer";
    Change(mpGUI->GetPCPanel(1)->GetField(3));
    EXPECT_TRUE(mpGUI->GetPCPanel(1)->GetField(4)->IsShown());
    EXPECT_FALSE(mpGUI->GetPCPanel(1)->GetField(1)->IsShown());
    Change(mpGUI->GetPCPanel(2)->GetField(0));
    EXPECT_TRUE(mpGUI->GetPCPanel(2)->GetField(2)->IsShown());
    // The shader stands in the filter's panel, too.
    Change(panel->GetField(0));
    Settle();
    auto* choice = dynamic_cast<wxChoice*>(Panel(object).GetPCPanel()->GetField(0, 1));
    EXPECT_EQ(choice->GetSelection(), 3);
    Change(choice);
    Settle();
    EXPECT_EQ(dynamic_cast<wxChoice*>(panel->GetField(0))->GetSelection(), 0);
    for (const int page : {1, 2, 3}) {
        wxWindow* field = mpGUI->GetPCPanel(page)->GetField(0);
        if (auto* number = dynamic_cast<NumField_cls*>(field)) field = number->GetPCText();
        EXPECT_TRUE(field->GetToolTipText().Contains("POV-Ray")) << page;
    }
}

} // namespace
