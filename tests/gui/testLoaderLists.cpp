// The grammar lists of the loader dialog: what they refuse, ask and keep.
#include <wx/listctrl.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "GuiTest.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "WIDGET/clsFileDialogEX.h"

namespace {

class LoaderLists : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        Loader().SetHeaderGrammer({HEAD_TIME, HEAD_NUMBER});
        Loader().SetBodyGrammer({BODY_XYZ, BODY_RADIUS});
        Loader().mCItemDataType.mValue = 0;
        Loader().OpenWindow(Frame());
        ASSERT_TRUE(PumpUntil([] { return Gui().IsShown(); }));
        ShowGrammar();
    }
    void TearDown() override {
        Gui().CloseEXKey();
        GuiTest::TearDown();
    }
    static DataLoader_cls& Loader() { return *Hub()->mpCDataLoader; }
    static DataLoaderGUI_cls& Gui() { return *Loader().mpCGUI; }
    static std::vector<int> Body() { return Gui().GetVGrammer(Gui().mpCListBody); }
    static void ShowGrammar() {
        Gui().UpdateList(Gui().mpCListHead, Loader().mCItemHead);
        Gui().UpdateList(Gui().mpCListBody, Loader().mCItemBody);
    }
    static void Select(long row) {
        constexpr long mask = wxLIST_STATE_FOCUSED | wxLIST_STATE_SELECTED;
        Gui().mpCListBody->SetItemState(row, mask, mask);
    }
};

} // namespace

TEST_F(LoaderLists, TheSeventeenthItemIsRefusedWithAMessage) {
    while (Gui().mpCListBody->GetItemCount() < GrammerBase_cls::kMaxItem)
        ASSERT_TRUE(Gui().InsertListItem(Gui().mpCListBody, BODY_DUMMY));
    EXPECT_TRUE(mVMessages.empty());
    EXPECT_FALSE(Gui().InsertListItem(Gui().mpCListBody, BODY_DUMMY));
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_NE(mVMessages[0].mText.Find("16 items"), wxNOT_FOUND);
    EXPECT_EQ(Body().size(), 16u);
}

TEST_F(LoaderLists, WithoutPositionsNothingIsAskedOrOpened) {
    Select(0);
    Gui().DeleteSelectedItem(Gui().mpCListBody);
    wxFileDialogEX::sStrTestAnswer = "CANCEL";
    Gui().OnBtnOpenFile();
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mTitle, "Grammer Error");
    EXPECT_EQ(mVMessages[0].mText, "No XYZ data.");
    EXPECT_EQ(wxFileDialogEX::sStrTestAnswer, "CANCEL") << "no file was asked for";
    EXPECT_EQ(Loader().GetBodyGrammer(), (std::vector<int>{BODY_XYZ, BODY_RADIUS})) << "only a try";
    wxFileDialogEX::sStrTestAnswer.clear();
}

TEST_F(LoaderLists, ANewItemComesBeforeTheFocusedOneAndMovesWithIt) {
    Select(1);
    Gui().InsertListItem(Gui().mpCListBody, BODY_ID);
    EXPECT_EQ(Body(), (std::vector<int>{BODY_XYZ, BODY_ID, BODY_RADIUS}));
    Gui().MoveFocused(Gui().mpCListBody, 1);
    Gui().MoveFocused(Gui().mpCListBody, 1); // at the end already
    EXPECT_EQ(Body(), (std::vector<int>{BODY_XYZ, BODY_RADIUS, BODY_ID}));
    EXPECT_EQ(Gui().mpCListBody->GetItemText(2, 0), "2");
}

TEST_F(LoaderLists, TextHasNoSizes) {
    EXPECT_EQ(Gui().mpCListBody->GetItemText(0, 3), "12");
    Loader().mCItemDataType.mValue = 1;
    Gui().OnHookCombobox();
    EXPECT_EQ(Gui().mpCListBody->GetItemText(0, 2), "-");
    EXPECT_EQ(Gui().mpCListHead->GetItemText(1, 3), "-");
}

TEST_F(LoaderLists, SayingNoToDefaultKeepsTheListsButNotTheFields) {
    Loader().mCItemScale.mValue = 7.0f;
    mAnswers = {false};
    Gui().OnBtnDefault();
    EXPECT_EQ(Body(), (std::vector<int>{BODY_XYZ, BODY_RADIUS}));
    EXPECT_EQ(Loader().mCItemScale.mValue, 1.0f);
    mAnswers = {true};
    Gui().OnBtnDefault();
    EXPECT_TRUE(Loader().IsDefaultBody());
    EXPECT_EQ(Body().size(), 6u);
}
