// The dialog "Data Loader": the record grammar, the loader's settings, and opening a sequence.
#pragma once

#include "PDATA/EDITOR/clsGrammerBaseGUI.h"
#include "WIDGET/clsDialogEXKey.h"

class DataLoader_cls;
class MultiInputPanel_cls;
class wxButton;
class wxSizer;

class DataLoaderGUI_cls : public wxDialogEXKey, public GrammerBaseGUI_cls {
public:
    DataLoaderGUI_cls(wxWindow* pParent, DataLoader_cls* pLoader);

    void UpdateValues() override;
    void UpdatePeriodicButtonLabel();
    /// Store both lists in the grammar and open `path`; false, with a message, when the lists make no
    /// usable grammar.
    bool OpenWithCheck(const wxString& path);
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }
    wxButton* GetPCButtonOpen() const { return mpCButtonOpen; }

    void OnBtnOpenFile();
    void OnBtnDefault();
    void OnBtnGuess();
    /// Ask for a file and guess at it, also while the dialog is hidden.
    void GuessAnyFile();
    /// Guess at this file, also while the dialog is hidden.
    void GuessFile(const wxString& path);
    void OnBtnPeriodic();

protected:
    bool OnKeyDown(wxKeyEvent& event) override;

private:
    void MakeTop(wxSizer* pSizer);
    void MakeLists(wxSizer* pSizer);
    void MakePanel(wxSizer* pSizer);
    void MakePeriodic(wxSizer* pSizer);
    bool CheckLists() const;
    bool AskForFile(wxString* pPath);
    /// Show what the program makes of a file or another one; the answer (GuessDialog_cls::Answer).
    int Guess(wxString path);

    DataLoader_cls* mpCLoader;
    MultiInputPanel_cls* mpCPanel = nullptr;
    MultiInputPanel_cls* mpCPanelPeriodic = nullptr;
    wxButton* mpCButtonOpen = nullptr;
    wxButton* mpCButtonPeriodic = nullptr;
    int mRowDataType = -1;
    wxString mStrLastChosen; ///< the file that "Guess" looks at
};
