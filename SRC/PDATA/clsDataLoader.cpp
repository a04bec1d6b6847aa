#include "PDATA/clsDataLoader.h"

#include <wx/intl.h>

#include "COMMON/MsgBox.h"
#include "PDATA/DataOpener.h"

DataLoader_cls::DataLoader_cls(DataOpener_cls* pMain) : GrammerBase_cls("DataLoad"), mpCMain(pMain) {
    Add(&mCItemLastOpened, "LastOpenedFile=", "NONE");
    Add(&mCItemInterpolateType, "InterpolateType=", "1");
    Add(&mCItemVariableNumber, "VariableNumber=", "0");
    Add(&mCItemTranslate, "LoaderTranslate=", "0 0 0");
    Add(&mCItemScale, "LoaderScale=", "1");
    Add(&mCItemScaleValue1, "LoaderScaleValue1=", "1");
    Add(&mCItemLogarithm, "LoaderLogarithm=", "0");
}

void DataLoader_cls::SetToDefault() {
    for (ConfItem_cls* item : std::initializer_list<ConfItem_cls*>{&mCItemTranslate, &mCItemScale,
                                                                   &mCItemScaleValue1, &mCItemLogarithm})
        ConfItemList_cls::SetToDefault(item);
}

void DataLoader_cls::OpenDataFile(const wxString& path) {
    if (!mpCMain) return;
    mpCMain->OpenDataFileCommand(path);
    mCItemLastOpened.mStrValue = path;
    mpCMain->NoteOpenedData(path);
}

bool DataLoader_cls::CheckGrammer(const GrammerBase_cls& grammer) {
    if (grammer.IsItemExistBody(BODY_XYZ)) return true;
    MsgBox(_("No XYZ data."), _("Grammer Error"));
    return false;
}

void DataLoader_cls::InitGUI(wxWindow* pParent) {
    if (!mpCGUI && mDialogHooks.mMake) mpCGUI = mDialogHooks.mMake(pParent);
}

void DataLoader_cls::OpenWindow(wxWindow* pParent) {
    InitGUI(pParent);
    if (mpCGUI && mDialogHooks.mOpen) mDialogHooks.mOpen(mpCGUI);
}
