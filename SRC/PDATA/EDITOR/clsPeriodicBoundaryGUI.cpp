#include "PDATA/EDITOR/clsPeriodicBoundaryGUI.h"

#include <wx/button.h>
#include <wx/sizer.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "WIDGET/clsMultiInputPanel.h"

PeriodicBoundaryGUI_cls::PeriodicBoundaryGUI_cls(wxWindow* pParent, PeriodicBoundary_cls* pPeriodic)
    : wxDialogEXKey(pParent, _("Periodic Boundary")) {
    mpCPanel = new MultiInputPanel_cls(this);
    NumSpec spec;
    spec.mStep = 0.1;
    mpCPanel->AddNumber(_("Box Size"), pPeriodic->mCPeriodicSize.mValue, 3, spec,
                        _("Factors of the x, y and z coordinates of all base vectors"));
    const wxString tip = _("x, y and z of the vector, in units of the data");
    mpCPanel->AddNumber(_("BaseVectorA"), pPeriodic->mCPeriodicBaseVector0.mValue, 3, spec, tip);
    mpCPanel->AddNumber(_("BaseVectorB"), pPeriodic->mCPeriodicBaseVector1.mValue, 3, spec, tip);
    mpCPanel->AddNumber(_("BaseVectorC"), pPeriodic->mCPeriodicBaseVector2.mValue, 3, spec, tip);
    mpCPanel->SetOnChange([](int, bool bFinal) {
        if (bFinal) PostMenuEvent(ID_REFRESH_GL);
    });
    mpCPanel->SetUndo(UPDATE_SNAPDATA | UPDATE_GL);
    auto* close = new wxButton(this, ID_DIALOG_CLOSE, _("Close"));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCPanel, 0, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(close, 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8));
    SetSizerAndFit(sizer);
}

void PeriodicBoundaryGUI_cls::UpdateValues() { mpCPanel->UpdateValues(); }
