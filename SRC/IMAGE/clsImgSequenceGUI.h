// The dialog "Save Image Sequence".
#pragma once

#include "WIDGET/clsImgSizeTemplate.h"
#include "WIDGET/clsDialogEXKey.h"

class ImgSequence_cls;
class MultiInputPanel_cls;
class wxButton;
class wxChoice;
class wxGauge;
class wxStaticText;

class ImgSequenceGUI_cls : public wxDialogEXKey, public ImgSizeTemplate_cls {
public:
    ImgSequenceGUI_cls(wxWindow* pParent, ImgSequence_cls* pSequence);

    void UpdateValues() override;
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }

private:
    void MakePanel();
    void MakeSizeRows();
    void MakeFileRows();
    void MakeBlurRow();
    void MakeVideoRow();
    void MakeProgress(wxSizer* pSizer);
    void MakeButtons(wxSizer* pSizer);
    void CommitFields();

    void OnButtonRender();
    void OnButtonSnap();
    void OnButtonInitSeq();
    void OnButtonReference();
    void AbortRender();
    void Start(bool bSnap);
    /// A size was chosen from the list: it becomes the output's, and its fields are for "Custom" alone.
    void HookGeometry();
    void ShowGeometry();
    void ShowState();

    ImgSequence_cls* mpCSequence;
    MultiInputPanel_cls* mpCPanel = nullptr;
    wxChoice* mpCSizes = nullptr;
    wxGauge* mpCGauge = nullptr;
    wxStaticText* mpCProgress = nullptr;
    wxButton* mpCRender = nullptr;
    wxButton* mpCSnap = nullptr;
    int mRowSize = 0;
    bool mbCustom = false; ///< the user wants the fields although they hold one of the usual sizes
    bool mbShownRendering = false;
};
