// The dialog "Pov-Ray Rendering Configure", and the one behind its button "Advanced".
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "POVRAY/clsPovRayCtrl.h"
#include "WIDGET/clsDialogEXKey.h"

class MultiInputPanel_cls;
class PovOptions_cls;
class wxButton;
class wxGauge;
class wxNotebook;
class wxSizer;
class wxStaticBitmap;
class wxStaticText;
class wxTextCtrl;
class wxImage;
class wxWindow;

class PovRayGUI_cls : public wxDialogEXKey {
public:
    PovRayGUI_cls(wxWindow* pParent, PovRayCtrl_cls* pCtrl);
    ~PovRayGUI_cls() override;

    void UpdateValues() override;
    /// Does the field name a program that can be run? Its colour and tip say so too.
    bool CheckFileExistencePov();
    bool CheckFileExistenceWorkdir();
    /// Ask about what is wrong with the settings before a run that makes files of this kind, FILE_SNAP or
    /// FILE_ANIM. True to go on.
    bool CheckConsistency(unsigned kind);
    /// What is being typed counts as it stands.
    void UpdateFromText();

    MultiInputPanel_cls* GetPCFiles() const { return mpCFiles; }
    PovOptions_cls* GetPCPage(int page) const { return mVPages[size_t(page)]; }
    PovOptions_cls* GetPCAdvanced();
    wxString GetStatusText() const;

private:
    void MakeFiles(wxSizer* pSizer);
    void AddWord(int row, const wxString& word);
    void MakeBooks(wxSizer* pSizer);
    void MakeProgress(wxSizer* pSizer);
    void MakeButtons(wxSizer* pSizer);
    wxButton* AddButton(wxSizer* pSizer, const wxString& label, const wxString& tip,
                        std::function<void()> press);
    void PickFolder();
    void PickExe();
    void OnButtonAnim(bool bRender);
    void OnButtonSnap(bool bRender);
    void OnButtonTry();
    void ApplyPreset(bool bFilm);
    void ApplyDefault();
    void ShowRun();
    void ShowProgress();
    void ShowFailures();
    void ShowPicture();
    void ShowSmall(wxImage image, const wxString& path);
    void UpdateButtonLabel();
    void EnableButtons(bool bFields);

    PovRayCtrl_cls* mpCCtrl;
    std::shared_ptr<PovRayCtrl_cls::Hooks_st> mpHooks;
    MultiInputPanel_cls* mpCFiles = nullptr;
    wxNotebook* mpCBooks[2] = {};
    std::vector<PovOptions_cls*> mVPages; ///< Format, RenderType, Radiosity, Photons
    wxDialogEXKey* mpCAdvanced = nullptr;
    PovOptions_cls* mpCAdvancedPage = nullptr;
    wxGauge* mpCGauge = nullptr;
    wxStaticText* mpCProgress = nullptr;
    wxStaticBitmap* mpCPicture = nullptr;
    wxTextCtrl* mpCFailures = nullptr;
    wxButton* mpCExportSnap = nullptr;
    wxButton* mpCExportAnim = nullptr;
    wxButton* mpCRenderSnap = nullptr;
    wxButton* mpCRenderAnim = nullptr;
    wxButton* mpCTry = nullptr;
    std::vector<wxButton*> mVSettingButtons;
    int mRowExe = 0;
    int mRowWork = 0;
    size_t mShownFailures = 0;
    wxString mStrShownPicture;
};
