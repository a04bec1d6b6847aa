// The dialog "View and Camera Config": a tab for each view, and two folds: what all views share, and the
// camera path with its anchor.
#pragma once

#include <vector>

#include <wx/string.h>

#include "WIDGET/clsDialogEXKey.h"

class CameraPathCtrl_cls;
class MainGLCanvas_cls;
class MultiInputPanel_cls;
class ViewPage_cls;
class wxBookCtrlEvent;
class wxBoxSizer;
class wxButton;
class wxNotebook;

class CameraPathGUI_cls : public wxDialogEXKey {
public:
    CameraPathGUI_cls(wxWindow* pParent, CameraPathCtrl_cls& ctrl);
    ~CameraPathGUI_cls() override;

    void UpdateValues() override { UpdateValuesAll(); }
    /// From views and paths as they are now.
    void UpdateValuesAll();
    /// The tab of the controller's view to the front.
    void ReconnectView();
    MainGLCanvas_cls* GetPCActiveGLCanvas() const;
    ViewPage_cls* GetPCPage(int view) const;
    MultiInputPanel_cls* GetPCAdvanced() const { return mpCAdvanced; }
    MultiInputPanel_cls* GetPCPath() const { return mpCPath; }
    wxNotebook* GetPCNotebook() const { return mpCNotebook; }
    wxButton* GetPCFold(int which) const { return mpCFold[which]; } ///< 0 advanced, 1 camera

    /// Rows of the camera's fold, in their order.
    enum Row {
        ROW_GEOMETRY,
        ROW_LOOK_ANCHOR,
        ROW_ANGLE,
        ROW_OFFSET,
        ROW_TRANSLATE,
        ROW_ROTATION,
        ROW_ANCHOR,
        ROW_EASE,
        ROW_WARNING
    };

    static CameraPathGUI_cls* mspCThis; ///< null while there is none

private:
    void MakeFold(int which, const wxString& title, wxBoxSizer* pSizer);
    void SetMNumAdv();
    void SetMNumPath();
    void ReconnectViewAdv();
    bool HideAndShowView(int view);
    void HideAndShowAll();
    void ShowFolds();
    void OnNotebookChanged(wxBookCtrlEvent& event);
    void FuncHookAssign();
    void OnEase();
    wxString GetWarning();

    CameraPathCtrl_cls& mCtrl;
    wxNotebook* mpCNotebook = nullptr;
    std::vector<ViewPage_cls*> mVPages;
    wxButton* mpCFold[2] = {nullptr, nullptr};
    wxString mTitle[2];
    bool mbOpen[2] = {false, false};
    wxBoxSizer* mpCAdvancedSizer = nullptr;
    MultiInputPanel_cls* mpCAdvanced = nullptr;
    MultiInputPanel_cls* mpCPath = nullptr;
    wxString mStrJudged; ///< the paths that the warning is for
    wxString mStrWarning;
};
