// Asks whether another program's files shall be imported, which ones, and where to.
#pragma once

#include <vector>

#include "WIDGET/clsDialogEXKey.h"

class wxCheckBox;
class wxSizer;
class wxTextCtrl;

class ImportQuestion_cls : public wxDialogEXKey {
public:
    enum Answer { Cancel, AsItIs, Import };

    /// One file, and those that are numbered like it, or several that were chosen.
    ImportQuestion_cls(wxWindow* pParent, const std::vector<wxString>& files);
    /// Ask with the views still.
    Answer Ask();
    std::vector<wxString> GetFiles() const;
    wxString GetFolder() const;

private:
    void AddFolder(wxSizer* pSizer);
    void AddButtons(wxSizer* pSizer);
    void OnBrowse();

    std::vector<wxString> mFiles;
    std::vector<wxString> mAlike; ///< empty: no others
    wxCheckBox* mpCAlike = nullptr;
    wxTextCtrl* mpCFolder = nullptr;
};
