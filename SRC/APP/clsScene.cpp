#include "APP/clsScene.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/sizer.h>

#include "COMMON/EventIds.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/ShortcutKeys.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {
constexpr int kMaxFrame = 65535;
}

void Scene_cls::InitializeTmpValues() {
    mLength = mpCTime->GetMaxFrame();
    mWorkArea[0] = mpCTime->GetWAMin();
    mWorkArea[1] = mpCTime->GetWAMax();
    mKeyRemap = mpCTime->mSceneLengthType.mValue;
}

void Scene_cls::Apply() {
    const int oldLength = mpCTime->GetMaxFrame();
    unsigned* const type = &mpCTime->mSceneLengthType.mValue;
    const bool bArea = mWorkArea[0] != mpCTime->GetWAMin() || mWorkArea[1] != mpCTime->GetWAMax();
    if (!bArea && mLength == oldLength && mKeyRemap == *type) return;
    const UndoBlock_cls block;
    // The area's end passes through its beginning; its beginning itself stays.
    mpCTime->SetWAMaxCommand(mWorkArea[0], mpCTime->GetWAMax());
    mpCTime->SetWAMaxCommand(std::min(mWorkArea[1], mLength)); // in the step: redo ends where doing ended
    mpCTime->SetMaxFrameCommand(mLength);
    KeepAreasInFilm();
    if (mKeyRemap != *type) {
        GCUndoList.PushNewCommand(new CommandSetValue_cls(type, mKeyRemap, UPDATE_TL),
                                  new CommandSetValue_cls(type, *type, UPDATE_TL));
        GCUndoList.ExecCurrent();
    }
    if (mKeyRemap == 1 && mLength != oldLength && mLength > 0)
        mpCTime->RemapParameterKeys(double(oldLength) / mLength);
}

// Only what would be impossible otherwise.
void Scene_cls::KeepAreasInFilm() {
    const int end = mpCTime->GetMaxFrame();
    if (mpCTime->GetWAMin() > end) mpCTime->SetWAMinCommand(0);
    if (mpCTime->GetAAMin() > end) mpCTime->SetAAMinCommand(0);
    const int low = mpCTime->GetWAMin();
    const int high = mpCTime->GetWAMax();
    if (low <= high) return;
    mpCTime->SetWAMinCommand(high);
    mpCTime->SetWAMaxCommand(low);
}

OwnedDialog_cls* Scene_cls::MakeDialog(wxWindow* pParent) { return new SceneGUI_cls(pParent, this); }

SceneGUI_cls::SceneGUI_cls(wxWindow* pParent, Scene_cls* pScene)
    : wxDialogEXKey(pParent, _("Scene Config")), mpCScene(pScene) {
    mpCPanel = new MultiInputPanel_cls(this);
    NumSpec frames;
    frames.mMin = 0;
    frames.mMax = kMaxFrame;
    mpCPanel->AddNumber(_("Scene Length"), &pScene->mLength, 1, frames, _("Number of the film's last frame"));
    mpCPanel->AddNumber(_("Work Area"), pScene->mWorkArea, 2, frames,
                        _("First and last frame that play; here only the last can be changed"));
    mpCPanel->AddChoice(_("key remap"), &pScene->mKeyRemap, {_("do remap"), _("do not remap")},
                        _("Is kept with the project; keys are moved by neither"));
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    auto* ok = new wxButton(this, ID_DIALOG_OK, _("OK"));
    auto* cancel = new wxButton(this, ID_DIALOG_CLOSE, _("Cancel"));
    buttons->AddStretchSpacer();
    buttons->Add(cancel, 0, wxRIGHT, FromDIP(4));
    buttons->Add(ok, 0);
    ok->SetDefault();
    ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Close(true); });
    cancel->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Close(false); });
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCPanel, 0, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(buttons, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8));
    SetSizerAndFit(sizer);
}

void SceneGUI_cls::UpdateValues() {
    mpCScene->InitializeTmpValues();
    mpCPanel->UpdateValues();
}

void SceneGUI_cls::TakeValues() {
    for (int row = 0; row < mpCPanel->GetRowCount(); ++row)
        for (int k = 0; k < MultiInputPanel_cls::kMaxField; ++k)
            if (auto* field = dynamic_cast<NumField_cls*>(mpCPanel->GetField(row, k))) field->Commit();
}

// Enter in a field takes all values over, as the button OK does.
bool SceneGUI_cls::OnKeyDown(wxKeyEvent& event) {
    const bool bEnter = event.GetKeyCode() == WXK_RETURN || event.GetKeyCode() == WXK_NUMPAD_ENTER;
    // A button that has the focus is pressed.
    if (!bEnter || event.GetModifiers() != wxMOD_NONE || dynamic_cast<wxButton*>(FindKeyTarget()))
        return false;
    Close(true);
    return true;
}

void SceneGUI_cls::Close(bool bApply) {
    TakeValues();
    CloseEXKey();
    if (bApply) mpCScene->Apply();
}
