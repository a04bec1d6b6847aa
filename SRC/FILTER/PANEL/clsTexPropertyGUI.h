// The dialog "Texture": the surface of the selected object or stick filter.
#pragma once

#include "WIDGET/clsDialogEXKey.h"

class MultiInputPanel_cls;
class SceneObjTexture_cls;
class TexPropertyCtrl_cls;
class wxNotebook;
class wxPanel;

class TexPropertyGUI_cls : public wxDialogEXKey {
public:
    TexPropertyGUI_cls(wxWindow* pParent, TexPropertyCtrl_cls& ctrl);
    /// From the texture that is edited now; grey while there is none.
    void UpdateValues() override;
    wxNotebook* GetPCBook() const { return mpCBook; }
    /// In the order of the tabs.
    MultiInputPanel_cls* GetPCPanel(int page) const { return mpCPanel[page]; }

    static constexpr int kPages = 4;

private:
    enum Page { TEXTURE, BUMP, MIRROR, INTERIOR };

    /// The fields hold places of values, so another texture has others.
    void Reconnect();
    void SetMNumParam(SceneObjTexture_cls& texture);
    void SetMNumBump(SceneObjTexture_cls& texture);
    void SetMNumMirror(SceneObjTexture_cls& texture);
    void SetMNumInterior(SceneObjTexture_cls& texture);
    void HideAndShow();

    TexPropertyCtrl_cls& mCtrl;
    SceneObjTexture_cls* mpCShown = nullptr; ///< whose fields these are
    wxNotebook* mpCBook;
    wxPanel* mpCPage[kPages];
    MultiInputPanel_cls* mpCPanel[kPages] = {};
    int mRowAlpha = 0;
    int mRowReflect[2] = {0, 0};
    int mRowBump[2][2] = {{0, 0}, {0, 0}}; ///< degree and scale of each layer
};
