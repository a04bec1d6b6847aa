#include "FILTER/PANEL/clsFilterObjectGUI.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "COLORCURVE/EDITOR/clsColorCurveBtn.h"
#include "COLORCURVE/clsColorCurve.h"
#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/PANEL/clsArrayVectorGUI.h"
#include "FILTER/clsFilterObject.h"
#include "WIDGET/clsMultiInputPanel.h"

namespace {

const char* const kMeshes = "PovMesh (*.pov)|*.pov|Wavefront Object (*.obj)|*.obj|Stereolithography (*.stl)|"
                            "*.stl|Polygon File (*.ply)|*.ply|glTF binary (*.glb)|*.glb";

/// A button with its label above it.
wxWindow* MakeLabelled(wxWindow* pParent, ColorCurve_cls* pCurve, const wxString& label, const wxString& tip,
                       ColorCurveBtn_cls** ppButton) {
    auto* both = new wxPanel(pParent);
    auto* text = new wxStaticText(both, wxID_ANY, label);
    *ppButton = new ColorCurveBtn_cls(both, pCurve);
    for (wxWindow* window : {static_cast<wxWindow*>(text), static_cast<wxWindow*>(*ppButton)})
        window->SetToolTip(tip);
    (*ppButton)->SetMinSize(both->FromDIP(wxSize(40, 22)));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(text, 0);
    sizer->Add(*ppButton, 0, wxEXPAND);
    both->SetSizer(sizer);
    both->SetMinSize(both->GetBestSize());
    return both;
}

} // namespace

FilterObjectData_cls& FilterObjectGUI_cls::GetData() const {
    return static_cast<FilterObjectData_cls&>(*GetFilter().mpCData);
}

void FilterObjectGUI_cls::SetMNumPanel(MultiInputPanel_cls& panel) {
    FilterObjectData_cls& data = GetData();
    const int row =
        panel.AddChoice(_("Obj/Shader"), &data.mCObjectType.mValue,
                        {_("Box"), _("Plane"), _("Sphere"), _("Import")}, _("Shape; Import is a mesh"));
    panel.AddChoiceTo(row, &data.mCTexture.mCShaderType.mValue,
                      {_("original"), _("Gouroud"), _("Phong"), _("Toon")}, _("Lighting in the views"));
    mRowPath = panel.AddText(_("Path"), &data.mCImportPath.mStrValue,
                             _("File of the mesh; %d or %04d in it stands for the frame's number"));
    panel.AddButtonTo(mRowPath, "..", _("Choose a mesh"), [&panel, &data, this] {
        AskForPath(panel, mRowPath, data, &data.mCImportPath.mStrValue, _("Select Mesh File"), kMeshes);
    });
    mRowVectors = panel.AddButton("", _("Array Vector"), _("Columns of a matrix that the mesh goes through"));
    static_cast<wxButton*>(panel.GetField(mRowVectors))->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        FuncHookArrayVector();
    });
    SetMNumBasic(panel, data);
    SetMaterialRow(panel);
}

void FilterObjectGUI_cls::SetMaterialRow(MultiInputPanel_cls& panel) {
    static const char* const kLabels[3] = {wxTRANSLATE("Ambient"), wxTRANSLATE("Diffuse"),
                                           wxTRANSLATE("Specular")};
    const wxString tips[3] = {_("Colour in the shade; a click opens the editor"),
                              _("Colour in the light; a click opens the editor"),
                              _("Colour of highlights; a click opens the editor")};
    panel.BeginColumns(kLabelWidth);
    int row = -1;
    for (size_t i = 0; i < 3; ++i) {
        ColorCurveBtn_cls* button = nullptr;
        wxWindow* both = MakeLabelled(&panel, GetData().mvpCColorCurve[i].get(), wxGetTranslation(kLabels[i]),
                                      tips[i], &button);
        if (i == 0)
            row = panel.AddWindow(_("Material"), both);
        else
            panel.AddWindowTo(row, both);
        panel.AddRefresh(row, [button] { button->RefreshIfChanged(); });
    }
}

void FilterObjectGUI_cls::HideAndShowRows(MultiInputPanel_cls& panel) {
    const bool bMesh = GetData().mCObjectType.mValue == FilterObjectData_cls::IMPORT;
    panel.ShowRow(mRowPath, bMesh);
    panel.ShowRow(mRowVectors, bMesh);
}

void FilterObjectGUI_cls::FuncHookArrayVector() {
    ArrayVectorGUI_cls dialog(wxGetTopLevelParent(GetWindow()), GetData());
    dialog.ShowModal();
}
