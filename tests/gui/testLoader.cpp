// The loader dialog with mouse and keys: both lists, the fields, opening, Guess.
#include <fstream>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/listctrl.h>
#include <wx/modalhook.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GuiTest.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/MessageBoxes.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {

using Codes = std::vector<int>;
const Codes kHead = {0, 1};
const Codes kBody = {0, 1, 5, 6, 7, 8};

class Loader : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        DataLoader_cls* loader = Data();
        loader->SetHeaderGrammer(kHead);
        loader->SetBodyGrammer(kBody);
        loader->mCItemDataType.mValue = 0;
        loader->mCItemLastOpened.mStrValue = "NONE";
        loader->SetToDefault();
        Canvas(0)->SetFocus();
        Key('O', wxMOD_CONTROL | wxMOD_ALT);
        mDialog = dynamic_cast<DataLoaderGUI_cls*>(WaitForWindow("Data Loader"));
        ASSERT_TRUE(mDialog);
        // What an earlier test edited and didn't open stays in the lists, as it must.
        mDialog->UpdateList(mDialog->mpCListHead, loader->mCItemHead);
        mDialog->UpdateList(mDialog->mpCListBody, loader->mCItemBody);
    }
    void TearDown() override {
        wxFileDialogEX::sStrTestAnswer.clear();
        if (mDialog) mDialog->Hide();
        Hub()->mpCPeriodicBoundary->mCPeriodicType.mValue = 0;
        GuiTest::TearDown();
    }
    static DataLoader_cls* Data() { return Hub()->mpCDataLoader; }
    Codes Head() const { return mDialog->GetVGrammer(mDialog->mpCListHead); }
    Codes Body() const { return mDialog->GetVGrammer(mDialog->mpCListBody); }
    wxWindow* Button(const wxString& label) const { return FindByLabel(mDialog, label); }
    /// A point in a row of a list, in the list's client pixels.
    static wxPoint RowAt(wxListCtrl* list, long row) {
        list->EnsureVisible(row);
        wxRect rect;
        list->GetItemRect(row, rect);
        return wxPoint(60, rect.y + rect.height / 2);
    }
    static void ClickRow(wxListCtrl* list, long row) { Click(list, RowAt(list, row)); }
    static wxString Text(wxListCtrl* list, long row, int column) { return list->GetItemText(row, column); }
    /// Fill both lists as the user does: delete all rows, then insert through the popup.
    void InsertFromPopup(wxListCtrl* list, int entry) {
        std::vector<int> keys = {WXK_UP, WXK_RIGHT};
        for (int k = 0; k < entry; ++k)
            keys.push_back(WXK_DOWN);
        keys.push_back(WXK_RETURN);
        const long count = list->GetItemCount();
        ClickPopup(list, count > 0 ? RowAt(list, count - 1) : wxPoint(60, 60), keys);
    }
    void Clear(wxListCtrl* list) {
        if (list->GetItemCount() == 0) return;
        ClickRow(list, 0);
        for (int count = list->GetItemCount(); count > 0; --count)
            Key(WXK_DELETE);
        EXPECT_EQ(list->GetItemCount(), 0);
    }

    DataLoaderGUI_cls* mDialog = nullptr;
};

TEST_F(Loader, RowsAreMovedByButtonsAndDeletedByKey) {
    EXPECT_EQ(Head(), kHead);
    EXPECT_EQ(Body(), kBody);
    ClickRow(mDialog->mpCListBody, 2);
    // Head and body have such buttons each; those of the body stand to the right.
    std::vector<wxWindow*> downs;
    const std::function<void(wxWindow*)> gather = [&](wxWindow* window) {
        if (window->GetLabel() == "Down") downs.push_back(window);
        for (wxWindow* child : window->GetChildren())
            gather(child);
    };
    gather(mDialog);
    ASSERT_EQ(downs.size(), 2u);
    wxWindow* down = downs[0]->GetPosition().x > downs[1]->GetPosition().x ? downs[0] : downs[1];
    ClickOn(down);
    EXPECT_EQ(Body(), Codes({0, 1, 6, 5, 7, 8}));
    ClickOn(down);
    EXPECT_EQ(Body(), Codes({0, 1, 6, 7, 5, 8})) << "the focus goes with the row";
    EXPECT_EQ(Text(mDialog->mpCListBody, 4, 0), "4");
    EXPECT_EQ(Text(mDialog->mpCListBody, 4, 1), "Radius");
    ClickRow(mDialog->mpCListBody, 1);
    Key(WXK_DELETE);
    EXPECT_EQ(Body(), Codes({0, 6, 7, 5, 8}));
    EXPECT_EQ(Text(mDialog->mpCListBody, 1, 0), "1") << "numbered anew";
    EXPECT_EQ(Head(), kHead);
}

TEST_F(Loader, PopupInsertsWhatIsMissing) {
    Clear(mDialog->mpCListBody);
    InsertFromPopup(mDialog->mpCListBody, 0); // all nine are on offer: XYZ first
    EXPECT_EQ(Body(), Codes({0}));
    InsertFromPopup(mDialog->mpCListBody, 0); // XYZ is gone from the menu
    EXPECT_EQ(Body(), Codes({1, 0})) << "before the row that has the focus";
    InsertFromPopup(mDialog->mpCListBody, 0);
    EXPECT_EQ(Body(), Codes({1, 2, 0})) << "Dummy comes next";
}

TEST_F(Loader, TextShowsNoBytes) {
    EXPECT_EQ(Text(mDialog->mpCListBody, 0, 2), "float*3");
    EXPECT_EQ(Text(mDialog->mpCListBody, 0, 3), "12");
    wxWindow* type = mDialog->GetPCPanel()->GetField(0);
    Choose(type, 1);
    EXPECT_EQ(Data()->mCItemDataType.mValue, 1);
    for (wxListCtrl* list : {mDialog->mpCListHead, mDialog->mpCListBody})
        for (int row = 0; row < list->GetItemCount(); ++row) {
            EXPECT_EQ(Text(list, row, 2), "-");
            EXPECT_EQ(Text(list, row, 3), "-");
        }
    Choose(type, 0);
    EXPECT_EQ(Text(mDialog->mpCListBody, 5, 3), "4");
}

TEST_F(Loader, WithoutPositionsNothingOpens) {
    ASSERT_TRUE(OpenAndPaint(Root() + "examples/lj_melt_bin/melt0000.bin"));
    ClickRow(mDialog->mpCListBody, 0);
    Key(WXK_DELETE);
    wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(Root() + "examples/lj_melt_bin/melt0005.bin");
    mVMessages.clear();
    ClickOn(mDialog->GetPCButtonOpen());
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mText, "No XYZ data.");
    EXPECT_EQ(mVMessages[0].mTitle, "Grammer Error");
    EXPECT_TRUE(mDialog->IsShown());
    EXPECT_FALSE(wxFileDialogEX::sStrTestAnswer.empty()) << "no file was asked for";
    EXPECT_EQ(Hub()->mpCPDataSeqCtrl->GetActiveFileSequenceLength(), 20) << "what was open stays open";
}

/// Answers every box by itself and counts them.
class AnsweringHook_cls : public wxModalDialogHook {
public:
    AnsweringHook_cls() { Register(); }
    ~AnsweringHook_cls() override { Unregister(); }
    int mCount = 0;
    int mAnswer = wxID_OK;

protected:
    int Enter(wxDialog*) override {
        ++mCount;
        return mAnswer;
    }
};

TEST_F(Loader, TheRealBoxComesUp) {
    InstallMessageBoxes([](const wxString&) {});
    ClickRow(mDialog->mpCListBody, 0);
    Key(WXK_DELETE);
    AnsweringHook_cls hook;
    ClickOn(mDialog->GetPCButtonOpen());
    EXPECT_EQ(hook.mCount, 1);
    hook.mAnswer = wxID_NO;
    ClickOn(Button("Default"));
    EXPECT_EQ(hook.mCount, 2);
    EXPECT_EQ(Body(), Codes({1, 5, 6, 7, 8}));
    hook.mAnswer = wxID_YES;
    ClickOn(Button("Default"));
    EXPECT_EQ(Body(), kBody);
}

TEST_F(Loader, TextSequenceOpensPlaysAndIsLit) {
    Choose(mDialog->GetPCPanel()->GetField(0), 1);
    // Header 2 0 2 1 2 3 2: from the end to the front, each insert goes before the focused row.
    Clear(mDialog->mpCListHead);
    InsertFromPopup(mDialog->mpCListHead, 2);
    EXPECT_EQ(Head(), Codes({2}));
    for (const int code : {3, 2, 1, 2, 0, 2}) {
        // Offered: Time and Number while missing, then the three dummies.
        const Codes head = Head();
        const bool bTime = std::count(head.begin(), head.end(), 0) == 0;
        const bool bNumber = std::count(head.begin(), head.end(), 1) == 0;
        const int entry = code == 0 ? 0 : code == 1 ? int(bTime) : int(bTime) + int(bNumber) + code - 2;
        std::vector<int> keys = {WXK_UP, WXK_RIGHT};
        for (int k = 0; k < entry; ++k)
            keys.push_back(WXK_DOWN);
        keys.push_back(WXK_RETURN);
        ClickPopup(mDialog->mpCListHead, RowAt(mDialog->mpCListHead, 0), keys);
    }
    EXPECT_EQ(Head(), Codes({2, 0, 2, 1, 2, 3, 2}));
    // Body 6 7 0 1 8 from 0 1 5 6 7 8: without the radius, and ID and type to the front.
    ClickRow(mDialog->mpCListBody, 2);
    Key(WXK_DELETE);
    wxListCtrl* body = mDialog->mpCListBody;
    for (const int row : {2, 3}) {
        for (int k = row; k > row - 2; --k)
            ClickPopup(body, RowAt(body, k), {WXK_DOWN, WXK_RETURN}); // Swap up
    }
    ASSERT_EQ(Body(), Codes({6, 7, 0, 1, 8}));
    wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(Root() + "examples/lj_melt_text/melt0000.txt");
    ClickOn(mDialog->GetPCButtonOpen());
    ASSERT_TRUE(Settle());
    EXPECT_FALSE(mDialog->IsShown());
    EXPECT_TRUE(mVMessages.empty());
    TimeCtrl_cls* time = Hub()->mpCTimeCtrl;
    EXPECT_EQ(time->GetMaxFrame(), 19);
    EXPECT_EQ(Data()->mCItemLastOpened.mStrValue,
              wxString::FromUTF8(Root() + "examples/lj_melt_text/melt0000.txt"));

    // Look from far enough to have the whole box in the picture.
    for (int i = 0; i < 3; ++i)
        Shared().msCAnchorPos[i] = 5.9;
    MainGLCanvas_cls* canvas = Canvas(0);
    HideAllButData(0);
    canvas->SetFocus();
    Wheel(canvas, Middle(canvas), 20);
    Key(WXK_SPACE);
    ASSERT_TRUE(PumpUntil([time] { return time->IsPlaying() || time->GetFrame() > 0; }));
    ASSERT_TRUE(PumpUntil([time] { return !time->IsPlaying(); }, 30000));
    ASSERT_TRUE(Settle());
    EXPECT_EQ(time->GetFrame(), 19);
    const PDataBlock_cls* block = Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()->mpCSnap[19]->mpCBlock;
    ASSERT_EQ(block->mParticleNumber, 1372);
    EXPECT_NEAR(block->mpPos[0][0], 10.8462, 1e-4) << "id 1 of the last frame";
    int inside = 0;
    EXPECT_GT(ShareLit(0, 19, &inside, 3), 0.99);
    EXPECT_GT(inside, 1000);
    const Picture_st picture = Grab(0);
    EXPECT_LT(picture.CountLit(60), picture.mW * picture.mH / 2);
}

TEST_F(Loader, CancelledFileDialogChangesNothing) {
    ASSERT_TRUE(OpenAndPaint(Root() + "examples/lj_melt_bin/melt0000.bin"));
    ClickRow(mDialog->mpCListBody, 5);
    Key(WXK_DELETE);
    wxFileDialogEX::sStrTestAnswer = "CANCEL";
    ClickOn(mDialog->GetPCButtonOpen());
    EXPECT_TRUE(mDialog->IsShown());
    EXPECT_EQ(Data()->GetBodyGrammer(), kBody) << "the lists count only once a file is opened";
    EXPECT_EQ(Hub()->mpCPDataSeqCtrl->GetActiveFileSequenceLength(), 20);
}

TEST_F(Loader, DefaultAsksForTheListsOnly) {
    Data()->mCItemScale.mValue = 3.0f;
    ClickRow(mDialog->mpCListBody, 5);
    Key(WXK_DELETE);
    mAnswers = {false};
    ClickOn(Button("Default"));
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_EQ(mVMessages[0].mText, "Set to default ?");
    EXPECT_EQ(mVMessages[0].mTitle, "Inquery");
    EXPECT_EQ(Body(), Codes({0, 1, 5, 6, 7})) << "no keeps the lists";
    EXPECT_EQ(Data()->mCItemScale.mValue, 1.0f) << "but the fields go back";
    mAnswers = {true};
    ClickOn(Button("Default"));
    EXPECT_EQ(Body(), kBody);
    EXPECT_EQ(Data()->GetBodyGrammer(), kBody);
}

TEST_F(Loader, SeventeenthItemIsRefused) {
    for (int k = 6; k < 16; ++k)
        mDialog->InsertListItem(mDialog->mpCListBody, 2);
    ASSERT_EQ(Body().size(), 16u);
    // All six named items are there: the first offer is Dummy.
    InsertFromPopup(mDialog->mpCListBody, 0);
    EXPECT_EQ(Body().size(), 16u);
    ASSERT_EQ(mVMessages.size(), 1u);
    EXPECT_TRUE(mVMessages[0].mText.Contains("16")) << mVMessages[0].mText;
}

TEST_F(Loader, PeriodicButtonTellsAndOpensTheDialog) {
    wxWindow* button = Button("Periodic Boundary Condition [OFF]");
    ASSERT_TRUE(button);
    wxWindow* choice = FindByTip(mDialog, "The axes on which");
    ASSERT_TRUE(choice);
    Choose(choice, 2);
    EXPECT_EQ(button->GetLabel(), "Periodic Boundary Condition [ON]");
    ClickOn(button);
    wxTopLevelWindow* dialog = WaitForWindow("Periodic Boundary");
    ASSERT_TRUE(dialog);
    NumField_cls* size = FindField(dialog, "Factors of the x");
    ASSERT_TRUE(size);
    EXPECT_EQ(size->GetValue(), 1.0);
    // A project that is opened meanwhile shows at once.
    const TempDir_cls dir;
    std::ofstream(dir / "box.mrp") << "PeriodicSize=3 1 1\n";
    Frame()->OpenProject(wxString::FromUTF8(dir / "box.mrp"));
    EXPECT_EQ(size->GetValue(), 3.0);
    Hub()->mpCPeriodicBoundary->ReadStrLine("PeriodicSize=1 1 1");
    dialog->Raise();
    ASSERT_TRUE(PumpUntil([dialog] { return dialog->IsActive(); }));
    Key(WXK_ESCAPE);
    ASSERT_TRUE(PumpUntil([dialog] { return !dialog->IsShown(); }));
}

TEST_F(Loader, GuessProposesAndUseFillsTheLists) {
    const TempDir_cls dir;
    std::ofstream(dir / "run0000.txt") << "3\n0.5\n1 1.0 2.0 3.0\n2 4.0 5.0 6.0\n3 7.0 8.0 9.0\n";
    const struct {
        std::string mPath;
        int mType;
        Codes mNeeded; ///< codes that the body must hold
    } cases[] = {{Root() + "examples/lj_melt_text/melt0000.txt", 1, {0, 6}},
                 {dir / "run0000.txt", 1, {0}},
                 {Root() + "examples/lj_melt_bin/melt0000.bin", 0, kBody}};
    for (const auto& item : cases) {
        // The file last chosen is what Guess looks at; choosing it anew must not open it.
        mDialog->Hide();
        Data()->SetHeaderGrammer({2});
        Data()->SetBodyGrammer({0});
        Data()->mCItemDataType.mValue = item.mType == 0 ? 1 : 0;
        delete mDialog;
        Data()->mpCGUI = nullptr;
        Data()->mCItemLastOpened.mStrValue = "NONE";
        Data()->OpenWindow(Frame());
        mDialog = Data()->mpCGUI;
        ASSERT_TRUE(Settle());
        wxFileDialogEX::sStrTestAnswer = wxString::FromUTF8(item.mPath);
        bool bShown = false;
        Later({{HasDialog,
                [&bShown] {
                    for (wxWindow* window : wxTopLevelWindows)
                        if (wxWindow* use = window->IsShown() ? FindByLabel(window, "Use") : nullptr) {
                            bShown = true;
                            use->SetFocus();
                        }
                    Snap("guess");
                }},
               {nullptr, [&bShown] {
                    if (bShown) KeyNow(WXK_SPACE);
                }}});
        ClickOn(Button("Guess"));
        ASSERT_TRUE(Settle());
        EXPECT_TRUE(bShown) << item.mPath;
        EXPECT_EQ(Data()->mCItemDataType.mValue, item.mType) << item.mPath;
        const Codes body = Body();
        for (const int code : item.mNeeded)
            EXPECT_EQ(std::count(body.begin(), body.end(), code), 1) << item.mPath << " code " << code;
        EXPECT_TRUE(Hub()->mpCPDataSeqCtrl->GetStrActiveFileSequencePath().empty())
            << "nothing opens by itself";
        EXPECT_TRUE(mDialog->IsShown());
    }
}

} // namespace
