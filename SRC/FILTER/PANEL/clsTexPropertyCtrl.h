// Which texture the dialog "Texture" edits.
#pragma once

#include "COMMON/clsDialogControl.h"
#include "CONFITEM/clsConfItemList.h"
#include "FILTER/clsSceneObjTexture.h"

class TexPropertyCtrl_cls : public DialogControl_cls {
public:
    TexPropertyCtrl_cls();
    ~TexPropertyCtrl_cls() override;

    /// Edit this one from now on, null none. `name` is its filter's.
    void ReconnectTexture(SceneObjTexture_cls* pTexture, const wxString& name);
    /// The one that is edited, or values that stand by for one.
    SceneObjTexture_cls& GetTexture() { return mpCTexture ? *mpCTexture : mStandBy; }
    bool IsConnected() const { return mpCTexture != nullptr; }
    const wxString& GetName() const { return mStrName; }

protected:
    OwnedDialog_cls* MakeDialog(wxWindow* pParent) override;

private:
    SceneObjTexture_cls* mpCTexture = nullptr;
    wxString mStrName;
    ConfItemList_cls mConfList;
    SceneObjTexture_cls mStandBy;
};
