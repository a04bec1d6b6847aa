#include "FILTER/PANEL/clsArrayVectorGUI.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/sizer.h>

#include "COMMON/EventIds.h"
#include "COMMON/UpdateBits.h"
#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/clsFilterObject.h"
#include "PARAM/clsCommandSetValue.h"
#include "WIDGET/clsMultiInputPanel.h"

ArrayVectorGUI_cls::ArrayVectorGUI_cls(wxWindow* pParent, FilterObjectData_cls& data)
    : wxDialogEXKey(pParent, _("Array Vector")), mData(data), mpCPanel(new MultiInputPanel_cls(this)) {
    for (int column = 0; column < 3; ++column) {
        std::copy_n(data.mCArrayVector[column].mValue, 3, mEdited[column]);
        mpCPanel->AddNumber(wxString::Format("%s %d", _("Array"), column), mEdited[column], 3,
                            RangeSpec(-1e30, 1e30, 0.1), _("x, y and z of this column of the matrix"));
    }
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    auto* ok = new wxButton(this, wxID_OK, _("OK"));
    ok->SetDefault();
    ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        Apply();
        EndModal(wxID_OK);
    });
    buttons->Add(ok, 0, wxRIGHT, FromDIP(8));
    buttons->Add(new wxButton(this, ID_DIALOG_CLOSE, _("Cancel")), 0);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCPanel, 0, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(buttons, 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8));
    SetSizerAndFit(sizer);
}

void ArrayVectorGUI_cls::Apply() {
    const UndoBlock_cls block;
    for (int column = 0; column < 3; ++column)
        for (int i = 0; i < 3; ++i)
            PushSetValue(&mData.mCArrayVector[column].mValue[i], mEdited[column][i],
                         int(UPDATE_FILTER_REFRESH | UPDATE_GL));
}
