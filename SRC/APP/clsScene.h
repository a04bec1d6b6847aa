// The film's length and work area, and their dialog "Scene Config".
#pragma once

#include "COMMON/clsDialogControl.h"
#include "WIDGET/clsDialogEXKey.h"

class MultiInputPanel_cls;
class TimeCtrl_cls;

class Scene_cls : public DialogControl_cls {
public:
    explicit Scene_cls(TimeCtrl_cls* pTime) : mpCTime(pTime) {}

    /// Take over from the clock what the dialog edits.
    void InitializeTmpValues();
    /// Give the clock what was edited, as one step.
    void Apply();

    // What the dialog edits; frames.
    int mLength = 0;
    int mWorkArea[2] = {0, 0};
    unsigned mKeyRemap = 0; ///< 0 "do remap": keys keep their share of the film, 1 "do not remap"

protected:
    OwnedDialog_cls* MakeDialog(wxWindow* pParent) override;

private:
    void KeepAreasInFilm();

    TimeCtrl_cls* mpCTime;
};

class SceneGUI_cls : public wxDialogEXKey {
public:
    SceneGUI_cls(wxWindow* pParent, Scene_cls* pScene);
    /// The clock's values into the fields.
    void UpdateValues() override;
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }

private:
    bool OnKeyDown(wxKeyEvent& event) override;
    /// What stands in the fields, also in the one being typed in.
    void TakeValues();
    void Close(bool bApply);

    Scene_cls* mpCScene;
    MultiInputPanel_cls* mpCPanel;
};
