// The dialog "Preference": mouse assignment of the views, memory limit, threads and sorting.
#pragma once

#include "WIDGET/clsDialogEXKey.h"

class ConfItemBOOLARRAY_cls;
class ConfItemUINT_cls;
class MultiInputPanel_cls;
class PDataSeqCtrl_cls;
class Preference_cls;
class wxBoxSizer;

class PreferenceGUI_cls : public wxDialogEXKey {
public:
    PreferenceGUI_cls(wxWindow* pParent, Preference_cls* pPreference, PDataSeqCtrl_cls* pSeqCtrl);
    void UpdateValues() override;

private:
    void SetMNumMouseParam(wxBoxSizer* pSizer);
    void SetMNumMemParam(wxBoxSizer* pSizer);
    void AddActionRow(const wxString& label, ConfItemUINT_cls& button, ConfItemBOOLARRAY_cls& modifiers);

    Preference_cls* mpCPreference;
    PDataSeqCtrl_cls* mpCSeqCtrl;
    MultiInputPanel_cls* mpCMouse = nullptr;
    MultiInputPanel_cls* mpCPerformance = nullptr;
    wxWindow* mpPage = nullptr; ///< the tab under construction
    unsigned mTemplate = 0;     ///< the choice "Template"; nothing reads it
};
