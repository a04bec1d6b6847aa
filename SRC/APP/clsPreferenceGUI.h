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
    /// Edits what acts; what is changed here is the user's own from then on as well.
    PreferenceGUI_cls(wxWindow* pParent, Preference_cls* pPreference, Preference_cls* pUser,
                      PDataSeqCtrl_cls* pSeqCtrl);
    void UpdateValues() override;
    MultiInputPanel_cls* GetPCMousePanel() const { return mpCMouse; }
    MultiInputPanel_cls* GetPCPerformancePanel() const { return mpCPerformance; }

private:
    void SetMNumMouseParam(wxBoxSizer* pSizer);
    void SetMNumMemParam(wxBoxSizer* pSizer);
    void KeepForUser();
    void AddActionRow(const wxString& label, ConfItemUINT_cls& button, ConfItemBOOLARRAY_cls& modifiers);

    Preference_cls* mpCPreference;
    Preference_cls* mpCUser;
    PDataSeqCtrl_cls* mpCSeqCtrl;
    wxString mStrShown; ///< what acted when the dialog was last brought up to date
    MultiInputPanel_cls* mpCMouse = nullptr;
    MultiInputPanel_cls* mpCPerformance = nullptr;
    wxWindow* mpPage = nullptr; ///< the tab under construction
    unsigned mTemplate = 0;     ///< the choice "Template"; nothing reads it
};
