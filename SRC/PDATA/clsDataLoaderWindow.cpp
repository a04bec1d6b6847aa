// The loader's meeting with its dialog and the check that every opening passes.
#include "PDATA/clsDataLoader.h"

#include "COMMON/MsgBox.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"

void DataLoader_cls::InitGUI(wxWindow* pParent) {
    if (!mpCGUI) mpCGUI = new DataLoaderGUI_cls(pParent, this);
}

void DataLoader_cls::OpenWindow(wxWindow* pParent) {
    InitGUI(pParent);
    mpCGUI->OpenWindow();
}

bool DataLoader_cls::CheckGrammer(const GrammerBase_cls& grammer) {
    if (grammer.IsItemExistBody(BODY_XYZ)) return true;
    MsgBox(_("No XYZ data."), _("Grammer Error"));
    return false;
}

bool DataLoader_cls::OpenWithCheck(const wxString& path) {
    if (mpCGUI && mpCGUI->IsShown()) return mpCGUI->OpenWithCheck(path);
    if (!CheckGrammer(*this)) return false;
    OpenDataFile(path);
    return true;
}
