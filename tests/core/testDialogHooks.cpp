// What the logic asks of dialogs and of the hub, with stand-ins for both.
#include <memory>

#include <gtest/gtest.h>

#include "COMMON/MsgBox.h"
#include "COMMON/clsDialogControl.h"
#include "PDATA/DataOpener.h"
#include "PDATA/clsDataLoader.h"

namespace {

class Dialog : public OwnedDialog_cls {
public:
    ~Dialog() override = default;
    void OpenWindow() override { mbShown = true; }
    void UpdateValues() override { ++mUpdates; }
    bool IsDialogShown() const override { return mbShown; }
    // A place in memory that is only compared.
    wxDialogEXKey* AsWindow() override { return reinterpret_cast<wxDialogEXKey*>(this); }

    bool mbShown = false;
    int mUpdates = 0;
};

class Control : public DialogControl_cls {};

struct Opener : DataOpener_cls {
    void OpenDataFileCommand(const wxString& path) override { mLog += "open " + path + ";"; }
    void NoteOpenedData(const wxString& path) override { mLog += "note " + path + ";"; }
    wxString mLog;
};

} // namespace

TEST(DialogHooks, ADialogIsMadeOnceAndToldOnlyWhileItLives) {
    std::unique_ptr<Dialog> dialog;
    int made = 0;
    auto control = std::make_unique<Control>();
    control->OpenWindow(nullptr); // nobody makes one
    EXPECT_EQ(control->GetPCDialog(), nullptr);
    control->mMakeDialog = [&](wxWindow*) {
        ++made;
        dialog = std::make_unique<Dialog>();
        return dialog.get();
    };
    control->InitGUI(nullptr);
    control->UpdateItems(true);
    EXPECT_EQ(dialog->mUpdates, 0) << "hidden";
    control->OpenWindow(nullptr);
    control->UpdateItems(true);
    control->UpdateItems(false);
    EXPECT_EQ(dialog->mUpdates, 2);
    EXPECT_EQ(made, 1);
    EXPECT_EQ(control->GetPCDialog(), dialog->AsWindow());
    // Either may go first.
    dialog.reset();
    EXPECT_EQ(control->GetPCDialog(), nullptr);
    control->UpdateItems(false);
    control->OpenWindow(nullptr);
    EXPECT_EQ(made, 2);
    control.reset();
    dialog.reset();
}

TEST(DialogHooks, ALoaderOpensThroughTheHubAndRemembers) {
    Opener opener;
    DataLoader_cls loader(&opener);
    EXPECT_TRUE(loader.OpenWithCheck("a.bin"));
    EXPECT_EQ(opener.mLog, "open a.bin;note a.bin;");
    EXPECT_EQ(loader.mCItemLastOpened.mStrValue, "a.bin");

    wxString told;
    SetMessageHandler([&told](MessageKind, const wxString& text, const wxString&) {
        told = text;
        return true;
    });
    loader.SetBodyGrammer({BODY_ID});
    EXPECT_FALSE(loader.OpenWithCheck("b.bin"));
    SetMessageHandler({});
    EXPECT_EQ(told, "No XYZ data.");
    EXPECT_EQ(opener.mLog, "open a.bin;note a.bin;");
}

TEST(DialogHooks, WhileTheLoadersDialogIsShownItsListsDecide) {
    Opener opener;
    DataLoader_cls loader(&opener);
    int place = 0;
    auto* gui = reinterpret_cast<DataLoaderGUI_cls*>(&place);
    bool bShown = false;
    wxString asked;
    loader.mDialogHooks.mMake = [gui](wxWindow*) { return gui; };
    loader.mDialogHooks.mOpen = [&bShown](DataLoaderGUI_cls*) { bShown = true; };
    loader.mDialogHooks.mIsShown = [&bShown](const DataLoaderGUI_cls*) { return bShown; };
    loader.mDialogHooks.mOpenWithCheck = [&asked](DataLoaderGUI_cls*, const wxString& path) {
        asked = path;
        return false;
    };
    loader.InitGUI(nullptr);
    EXPECT_TRUE(loader.OpenWithCheck("a.bin")) << "hidden";
    loader.OpenWindow(nullptr);
    EXPECT_EQ(loader.mpCGUI, gui);
    EXPECT_FALSE(loader.OpenWithCheck("b.bin"));
    EXPECT_EQ(asked, "b.bin");
    EXPECT_EQ(opener.mLog, "open a.bin;note a.bin;");
}
