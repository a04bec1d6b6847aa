#include "FILTER/PANEL/clsTexPropertyGUI.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "COMMON/EventIds.h"
#include "COMMON/UpdateBits.h"
#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/PANEL/clsTexPropertyCtrl.h"
#include "WIDGET/clsMultiInputPanel.h"

namespace {

constexpr long long kUpdateMask = UPDATE_TEXTURE | UPDATE_GL; // 16386
constexpr int kHelpWidth = 320;
constexpr int kLeastWidth = 360; // all tabs are seen

/// What acts in ray-traced pictures alone says so.
wxString PovRayOnly(const wxString& tip) { return tip + "\n" + _("Acts in POV-Ray pictures only."); }

} // namespace

TexPropertyGUI_cls::TexPropertyGUI_cls(wxWindow* pParent, TexPropertyCtrl_cls& ctrl)
    : wxDialogEXKey(pParent, _("Texture")), mCtrl(ctrl), mpCBook(new wxNotebook(this, wxID_ANY)) {
    const wxString tabs[kPages] = {_("Texture"), _("Bump Map"), _("Mirror"), _("Interior")};
    for (int page = 0; page < kPages; ++page) {
        mpCPage[page] = new wxPanel(mpCBook);
        mpCPage[page]->SetSizer(new wxBoxSizer(wxVERTICAL));
        mpCBook->AddPage(mpCPage[page], tabs[page]);
    }
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCBook, 1, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(new wxButton(this, ID_DIALOG_CLOSE, _("Close")), 0,
               wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8));
    SetSizer(sizer);
    Reconnect();
    Fit();
}

void TexPropertyGUI_cls::UpdateValues() {
    if (mpCShown != &mCtrl.GetTexture()) return Reconnect();
    const wxString name = mCtrl.IsConnected() ? mCtrl.GetName() : _("Not selected");
    SetTitle("Texture::" + name);
    for (MultiInputPanel_cls* panel : mpCPanel)
        panel->UpdateValues();
    HideAndShow();
}

void TexPropertyGUI_cls::Reconnect() {
    mpCShown = &mCtrl.GetTexture();
    for (int page = 0; page < kPages; ++page) {
        mpCPage[page]->GetSizer()->Clear(true);
        mpCPanel[page] = new MultiInputPanel_cls(mpCPage[page]);
        mpCPage[page]->GetSizer()->Add(mpCPanel[page], 0, wxEXPAND);
    }
    // All rows while the pages get their size.
    SetMNumParam(*mpCShown);
    SetMNumBump(*mpCShown);
    SetMNumMirror(*mpCShown);
    SetMNumInterior(*mpCShown);
    for (MultiInputPanel_cls* panel : mpCPanel) {
        panel->SetUndo(kUpdateMask);
        panel->SetOnChange([this](int, bool) { HideAndShow(); });
        for (int row = 0; row < panel->GetRowCount(); ++row)
            panel->EnableRow(row, mCtrl.IsConnected());
    }
    const wxSize all = GetBestSize();
    SetMinSize(
        wxSize(std::max({all.x, GetMinSize().x, FromDIP(kLeastWidth)}), std::max(all.y, GetMinSize().y)));
    Layout();
    UpdateValues();
}

void TexPropertyGUI_cls::SetMNumParam(SceneObjTexture_cls& texture) {
    MultiInputPanel_cls& panel = *mpCPanel[TEXTURE];
    panel.AddChoice(_("Shader"), &texture.mCShaderType.mValue,
                    {_("original"), _("Gouroud"), _("Phong"), _("Toon")},
                    _("Lighting of objects in the views"));
    panel.AddNumber(_("Shininess"), &texture.mCShininess.mValue, 1, IntegerSpec(2, 100),
                    _("Of cylinders: the larger, the smaller their highlights; objects shine alike"));
    panel.AddChoice(
        _("Transmit Type"), &texture.mCTransmitType.mValue, {_("no transmit"), _("transmit"), _("filtered")},
        _("Whether light goes through, and takes the colour.\nOf objects in POV-Ray pictures only."));
    mRowAlpha = panel.AddNumber(_("Alpha"), &texture.mCAlpha.mValue, 1, RangeSpec(0, 100, 0.01),
                                _("Opacity: 0 is clear, 1 is solid.\nOf objects in POV-Ray pictures only."));
}

void TexPropertyGUI_cls::SetMNumBump(SceneObjTexture_cls& texture) {
    MultiInputPanel_cls& panel = *mpCPanel[BUMP];
    for (int layer = 0; layer < SceneObjTexture_cls::kLayers; ++layer) {
        panel.AddChoice(_("Normal"), &texture.mCNormalPattern[layer].mValue,
                        {_("no normal pattern"), _("agate"), _("bozo"), _("bumps"), _("brick"), _("cells"),
                         _("checker"), _("crackle"), _("dents"), _("facets"), _("marble"), _("ridged_mf")},
                        PovRayOnly(_("Pattern of the unevenness of this layer")));
        mRowBump[layer][0] =
            panel.AddNumber(_("degree"), &texture.mCNormalDegree[layer].mValue, 1, RangeSpec(0, 100, 0.01),
                            PovRayOnly(_("Strength of the pattern")));
        mRowBump[layer][1] = panel.AddNumber(_("scale"), &texture.mCNormalScale[layer].mValue, 1,
                                             RangeSpec(0, 1000, 0.1), PovRayOnly(_("Size of the pattern")));
    }
}

void TexPropertyGUI_cls::SetMNumMirror(SceneObjTexture_cls& texture) {
    MultiInputPanel_cls& panel = *mpCPanel[MIRROR];
    const wxString help[3] = {_("Metal like reflection is affected by the color of material itself."),
                              _("Reflection when viewed from a direction parallel to its normal."),
                              _("Reflection when viewed from shallow angle.\nMany materials are more "
                                "reflective in shallow angle.")};
    panel.AddChoice(_("Reflex Type"), &texture.mCReflectType.mValue,
                    {_("no mirror"), _("mirror like"), _("metal like")}, PovRayOnly(help[0]));
    mRowReflect[0] = panel.AddNumber(_("Reflex min"), &texture.mCReflectMin.mValue, 1,
                                     RangeSpec(0, 100, 0.01), PovRayOnly(help[1]));
    mRowReflect[1] = panel.AddNumber(_("Reflex max"), &texture.mCReflectMax.mValue, 1,
                                     RangeSpec(0, 100, 0.01), PovRayOnly(help[2]));
    for (const wxString& line : help) {
        auto* text = new wxStaticText(mpCPage[MIRROR], wxID_ANY, line);
        text->Wrap(FromDIP(kHelpWidth));
        mpCPage[MIRROR]->GetSizer()->Add(text, 0, wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(4));
    }
}

void TexPropertyGUI_cls::SetMNumInterior(SceneObjTexture_cls& texture) {
    mpCPanel[INTERIOR]->AddNumber(_("IOR"), &texture.mCIOR.mValue, 1, RangeSpec(0, 200, 0.01),
                                  PovRayOnly(_("Index of refraction: 1 bends no light, glass has 1.5")));
}

void TexPropertyGUI_cls::HideAndShow() {
    const SceneObjTexture_cls& texture = *mpCShown;
    mpCPanel[TEXTURE]->ShowRow(mRowAlpha,
                               texture.mCTransmitType.mValue != SceneObjTexture_cls::TRANSMIT_NONE);
    for (const int row : mRowReflect)
        mpCPanel[MIRROR]->ShowRow(row, texture.mCReflectType.mValue != SceneObjTexture_cls::REFLECT_NONE);
    for (int layer = 0; layer < SceneObjTexture_cls::kLayers; ++layer)
        for (const int row : mRowBump[layer])
            mpCPanel[BUMP]->ShowRow(row, texture.mCNormalPattern[layer].mValue != 0);
    for (wxPanel* page : mpCPage)
        page->Layout();
}
