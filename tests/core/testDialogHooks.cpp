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
    EXPECT_TRUE(DataLoader_cls::CheckGrammer(loader));
    loader.OpenDataFile("a.bin");
    EXPECT_EQ(opener.mLog, "open a.bin;note a.bin;");
    EXPECT_EQ(loader.mCItemLastOpened.mStrValue, "a.bin");
    DataLoader_cls(nullptr).OpenDataFile("b.bin"); // no hub: nothing happens

    wxString told;
    SetMessageHandler([&told](MessageKind, const wxString& text, const wxString&) {
        told = text;
        return true;
    });
    loader.SetBodyGrammer({BODY_ID});
    EXPECT_FALSE(DataLoader_cls::CheckGrammer(loader));
    SetMessageHandler({});
    EXPECT_EQ(told, "No XYZ data.");
}

TEST(DialogHooks, ALoadersDialogIsMadeOnceAndShown) {
    DataLoader_cls loader(nullptr);
    loader.OpenWindow(nullptr); // nobody makes one
    EXPECT_EQ(loader.mpCGUI, nullptr);
    int place = 0;
    auto* gui = reinterpret_cast<DataLoaderGUI_cls*>(&place);
    int made = 0;
    DataLoaderGUI_cls* shown = nullptr;
    loader.mDialogHooks.mMake = [&](wxWindow*) { return ++made, gui; };
    loader.mDialogHooks.mOpen = [&shown](DataLoaderGUI_cls* pDialog) { shown = pDialog; };
    loader.InitGUI(nullptr);
    EXPECT_EQ(shown, nullptr);
    loader.OpenWindow(nullptr);
    EXPECT_EQ(shown, gui);
    EXPECT_EQ(made, 1);
}
