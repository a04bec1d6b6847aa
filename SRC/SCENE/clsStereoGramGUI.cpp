#include "SCENE/clsStereoGramGUI.h"

#include <cmath>

#include <wx/button.h>
#include <wx/sizer.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsStereoGram.h"
#include "WIDGET/clsMultiInputPanel.h"

namespace {

constexpr int kLabelWidth = 130;
constexpr int kPanelWidth = 430;
constexpr double kMaxToeIn = 45.0;

} // namespace

StereoGramGUI_cls::StereoGramGUI_cls(wxWindow* pParent, StereoGram_cls& stereo)
    : wxDialogEXKey(pParent, _("Stereogram Configure")), mStereo(stereo),
      mpCPanel(new MultiInputPanel_cls(this, kLabelWidth)) {
    AddRows();
    mpCPanel->SetUndo(StereoGram_cls::kUpdateMask);
    mpCPanel->SetOnChange([this](int row, bool bFinal) { OnChange(row, bFinal); });
    mpCPanel->SetMinSize(wxSize(FromDIP(kPanelWidth), -1));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCPanel, 1, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(MakeButtons(), 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8));
    SetSizerAndFit(sizer);
    HideAndShow();
}

void StereoGramGUI_cls::AddRows() {
    MultiInputPanel_cls& panel = *mpCPanel;
    panel.AddChoice(
        _("Camera Setting"), &mStereo.mCType.mValue, {_("0: Monogram"), _("1: Off-Axis"), _("2: Toe-In")},
        _("One camera; two that look the same way; or two that turn to a point in front of them"));
    panel.AddChoice(_("Stereogram Type"), &mStereo.mCEye.mValue, StereoGram_cls::GetOutputNames(),
                    _("What becomes of the pictures of the two eyes"));
    const int parallax =
        panel.AddParam(_("Parallax Distance"), mStereo.mpCParallax, RangeSpec(-1e30, 1e30, 0.01),
                       _("Distance of the eyes in the scene; below 0 they are exchanged"));
    panel.AddButtonTo(parallax, _("Fit"),
                      _("A thirtieth of the way to what the active view looks at; "
                        "eyes that turn meet there"),
                      [this] {
                          if (mStereo.mGetDistanceToFocus) mStereo.Fit(mStereo.mGetDistanceToFocus());
                          OnChange(ROW_PARALLAX, true);
                      });
    panel.AddNumber(_("Toe-In Angle"), &mStereo.mCToeInAngle.mValue, 1,
                    RangeSpec(-kMaxToeIn, kMaxToeIn, 0.05),
                    _("By how much each eye turns to the other, degrees; with Toe-In"));
    panel.AddStatic(
        _("Distance to Focus"), [this] { return GetFocusText(); },
        _("How far from the camera the eyes of a Toe-In meet, at the present time"));
    panel.AddChoice(_("File Output"), &mStereo.mCDualOutput.mValue, {_("Combined"), _("Separately")},
                    _("Image files of both eyes in one, or one for each, with L and R in their names"));
    panel.AddStatic(
        "", [this] { return GetHint(); }, _("What is missing before there is depth"));
}

wxBoxSizer* StereoGramGUI_cls::MakeButtons() {
    auto* setDefault = new wxButton(this, wxID_ANY, _("Set to Defalt"));
    setDefault->SetToolTip(_("One camera, and all settings here as in a new project"));
    setDefault->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnDefault(); });
    auto* sizer = new wxBoxSizer(wxHORIZONTAL);
    sizer->Add(setDefault);
    sizer->AddStretchSpacer();
    sizer->Add(new wxButton(this, ID_DIALOG_CLOSE, _("Close")));
    return sizer;
}

void StereoGramGUI_cls::UpdateValues() {
    mpCPanel->UpdateValues();
    HideAndShow();
}

void StereoGramGUI_cls::OnChange(int row, bool bFinal) {
    if ((row == ROW_TYPE || row == ROW_FILE) && bFinal && mStereo.IsRefused()) {
        MsgBox(_("Saving LINE BY LINE images are not supported."), _("Warning"));
        GCUndoList.TakeBackCurrent();
    }
    if (row == ROW_CAMERA) mStereo.UpdateTLShown();
    UpdateValues();
    PostMenuEvent(ID_REFRESH_GL);
}

void StereoGramGUI_cls::HideAndShow() {
    const bool bStereo = mStereo.GetType() != StereoGram_cls::TYPE_MONOGRAM;
    const bool bToeIn = mStereo.GetType() == StereoGram_cls::TYPE_TOE_IN;
    for (const int row : {ROW_TYPE, ROW_PARALLAX, ROW_FILE})
        mpCPanel->EnableRow(row, bStereo);
    for (const int row : {ROW_TOE_IN, ROW_FOCUS})
        mpCPanel->EnableRow(row, bToeIn);
}

wxString StereoGramGUI_cls::GetFocusText() const {
    const double distance = mStereo.GetDistanceToFocus(Parameters_cls::msCurrentDoubleIndex);
    return std::isfinite(distance) ? wxString::Format("%.6g", distance) : _("endless");
}

wxString StereoGramGUI_cls::GetHint() const {
    if (mStereo.GetType() == StereoGram_cls::TYPE_MONOGRAM) return wxString();
    if (mStereo.GetOutput() == StereoGram_cls::OUTPUT_NO_PARALLAX) return _("Choose a Stereogram Type.");
    if (mStereo.GetParallax(Parameters_cls::msCurrentDoubleIndex) == 0.0)
        return _("Both eyes stand at one place: press Fit.");
    return wxString();
}

void StereoGramGUI_cls::OnDefault() {
    if (!MsgBoxYesno(_("Set to default ?"), _("Query"))) return;
    mStereo.SetToDefault();
    OnChange(ROW_CAMERA, true);
}
