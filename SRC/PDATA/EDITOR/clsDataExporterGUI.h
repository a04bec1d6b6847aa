// The dialog "Data Exporter": the layout and the names of the files, and the run that writes them.
#pragma once

#include "PDATA/EDITOR/clsGrammerBaseGUI.h"
#include "WIDGET/clsDialogEXKey.h"

class DataExporter_cls;
class MultiInputPanel_cls;
class wxButton;
class wxSizer;
class wxStaticText;

class DataExporterGUI_cls : public wxDialogEXKey, public GrammerBaseGUI_cls {
public:
    DataExporterGUI_cls(wxWindow* pParent, DataExporter_cls* pExporter);

    void UpdateValues() override;
    /// Button and progress as the exporter's run stands.
    void ShowRun();
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }
    wxButton* GetPCButtonExport() const { return mpCButtonExport; }

    void OnButtonExport();
    void OnButtonReference();
    void OnButtonCopyFromLoader();
    void OnBtnDefault();
    void AbortExport();

protected:
    void OnListsEdited() override;

private:
    void SetMNumExportParam(wxSizer* pSizer);
    void MakeLists(wxSizer* pSizer);
    void MakeBottom(wxSizer* pSizer);
    bool ChooseFile();
    bool PrepareNames();
    void SetPath(const wxString& path);

    DataExporter_cls* mpCExporter;
    MultiInputPanel_cls* mpCPanel = nullptr;
    wxButton* mpCButtonExport = nullptr;
    wxStaticText* mpCProgress = nullptr;
    std::vector<wxWindow*> mVpLocked; ///< not to be touched during a run
    int mRowDataType = -1;
    bool mbShownRun = false;
};
