#include "FILTER/PANEL/clsTexPropertyCtrl.h"

#include "FILTER/PANEL/clsTexPropertyGUI.h"

TexPropertyCtrl_cls::TexPropertyCtrl_cls() { mStandBy.AddTo(&mConfList); }

TexPropertyCtrl_cls::~TexPropertyCtrl_cls() {
    if (mpCTexture) mpCTexture->mpCDialogLink = nullptr;
}

void TexPropertyCtrl_cls::ReconnectTexture(SceneObjTexture_cls* pTexture, const wxString& name) {
    if (mpCTexture) mpCTexture->mpCDialogLink = nullptr;
    mpCTexture = pTexture;
    mStrName = name;
    if (mpCTexture) mpCTexture->mpCDialogLink = this;
    UpdateItems(true);
}

OwnedDialog_cls* TexPropertyCtrl_cls::MakeDialog(wxWindow* pParent) {
    return new TexPropertyGUI_cls(pParent, *this);
}
