#include "COLORCURVE/EDITOR/clsColorCurveGUI.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/tglbtn.h>

#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COLORCURVE/EDITOR/clsColorCurveGraph.h"
#include "COLORCURVE/EDITOR/clsColorCurveTemplate.h"
#include "COMMON/EventIds.h"
#include "PARAM/clsKeyFrame.h"
#include "PARAM/clsParamGroup.h"
#include "WIDGET/clsColorSwatch.h"
#include "WIDGET/clsFontProvider.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

namespace {

constexpr int kGap = 4; // the spacing unit
constexpr int kBins = 128;

NumSpec Any(double step) {
    NumSpec spec;
    spec.mStep = step;
    return spec;
}

wxButton* MakeButton(wxWindow* pParent, const wxString& label, const wxString& tip,
                     std::function<void()> press) {
    auto* button = new wxButton(pParent, wxID_ANY, label);
    button->SetToolTip(tip);
    button->Bind(wxEVT_BUTTON, [press](wxCommandEvent&) { press(); });
    return button;
}

} // namespace

ColorCurveGUI_cls::ColorCurveGUI_cls(wxWindow* pParent, ColorCurveCtrl_cls* pCtrl)
    : wxDialogEXKey(pParent, _("Color Curve Editor"), wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      mpCCtrl(pCtrl), mCEdit(pCtrl->mCEdit) {
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    AddSettings(sizer);
    mpCTemplate = new ColorCurveTemplate_cls(this);
    mpCTemplate->SetOnChoose([this](const ColorCurve_cls& chosen) {
        mCEdit.EndGesture();
        mpCCtrl->TakeTemplate(chosen);
        UpdateValues();
    });
    sizer->Add(mpCTemplate, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(2 * kGap));
    mpCGraph = new ColorCurveGraph_cls(this, &mCEdit);
    mpCGraph->SetOnEdited([this] { UpdateKeyRow(); });
    sizer->Add(mpCGraph, 1, wxEXPAND);
    for (wxSizer* row : {MakeKeyRow(), MakeChannelRow(), MakeButtonRow()})
        sizer->Add(row, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(2 * kGap));
    SetSizerAndFit(sizer);
    SetSize(FromDIP(wxSize(520, 660)));
    SetExtraStyle(GetExtraStyle() | wxWS_EX_PROCESS_IDLE);
    Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
        event.Skip();
        if (IsShown()) UpdateHistogram();
    });
}

void ColorCurveGUI_cls::AddSettings(wxSizer* pSizer) {
    mpCPanel = new MultiInputPanel_cls(this);
    mpCCurveChoice = new wxChoice(mpCPanel, wxID_ANY);
    mpCCurveChoice->SetToolTip(_("The color that is edited"));
    mpCCurveChoice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
        const int selection = mpCCurveChoice->GetSelection();
        if (selection < 0 || selection >= static_cast<int>(mVListed.size())) return;
        mCEdit.SetCurve(mVListed[static_cast<size_t>(selection)]);
        UpdateValues();
    });
    mpCPanel->AddWindow(_("Curve"), mpCCurveChoice);
    mRowUse = mpCPanel->AddCheck(_("Color"), &mSettings.mbUseCurve, _("By a quantity"),
                                 _("Color by the curve; else by the constant color"));
    mRowConstant =
        mpCPanel->AddColor(_("Constant"), mSettings.mConstant.data(), _("Color where no curve is in use"));
    std::vector<ChoiceItem> depends;
    for (const wxString& label : mpCCtrl->GetDependLabels())
        depends.push_back({static_cast<unsigned>(depends.size()), label, true});
    mRowDepend = mpCPanel->AddChoice(_("Depend on"), &mSettings.mDependType, depends,
                                     _("The quantity of a particle that chooses its color"));
    mRowScaling = mpCPanel->AddNumber(_("Scaling"), &mSettings.mScalingMin, 1, Any(0.1),
                                      _("Quantity at the left end, in units of the data"));
    mpCPanel->AddNumberTo(mRowScaling, &mSettings.mScalingMax, Any(0.1),
                          _("Quantity at the right end, in units of the data"));
    mpCPanel->SetOnChange([this](int row, bool bFinal) { OnSetting(row, bFinal); });
    pSizer->Add(mpCPanel, 0, wxEXPAND | wxALL, FromDIP(kGap));
    mpCFitRow = MakeFitRow();
    pSizer->Add(mpCFitRow, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(2 * kGap));
}

wxSizer* ColorCurveGUI_cls::MakeFitRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->AddStretchSpacer();
    row->Add(new wxStaticText(this, wxID_ANY, _("Fit range")), 0, wxALIGN_CENTRE_VERTICAL | wxRIGHT,
             FromDIP(2 * kGap));
    row->Add(MakeButton(this, _("Frame"),
                        _("Scaling from the least to the greatest value of the frame on show"),
                        [this] { mpCCtrl->FitRange(mCEdit.GetPCCurve(), false); }),
             0, wxRIGHT, FromDIP(kGap));
    row->Add(MakeButton(this, _("Sequence"),
                        _("Scaling from the least to the greatest value of all snapshots; reads them all"),
                        [this] { mpCCtrl->FitRange(mCEdit.GetPCCurve(), true); }));
    return row;
}

wxSizer* ColorCurveGUI_cls::MakeKeyRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    const auto add = [&](wxWindow* pWindow, int proportion) {
        row->Add(pWindow, proportion, wxALIGN_CENTRE_VERTICAL | wxRIGHT, FromDIP(kGap));
    };
    add(new wxStaticText(this, wxID_ANY, _("Key")), 0);
    mpCPosition = new NumField_cls(this, Any(0.01), 9);
    mpCPosition->SetHint(_("Quantity at the selected key, in units of the data"));
    mpCPosition->SetOnChange([this](double value, bool bFinal) { SetPosition(value, bFinal); });
    add(mpCPosition, 1);
    mpCStopColor = new ColorSwatch_cls(this);
    mpCStopColor->SetToolTip(_("Color at the selected key; a click asks for another one"));
    mpCStopColor->SetOnChoose([this](const float* pColor) {
        double place = 0.0;
        if (mCEdit.GetSelected(&place, nullptr, nullptr)) mCEdit.SetStopColor(place, pColor, false);
        UpdateValues();
    });
    add(mpCStopColor, 0);
    mpCKind = new wxChoice(this, wxID_ANY);
    for (const wxString& kind : KeyFrame_cls::msAstrInterp)
        mpCKind->Append(kind);
    mpCKind->SetToolTip(_("How the selected keys' curves run to the next key"));
    mpCKind->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
        mCEdit.SetKind(static_cast<unsigned>(std::max(mpCKind->GetSelection(), 0)));
        UpdateValues();
    });
    add(mpCKind, 1);
    mpCDelete = MakeButton(this, _("Delete"), _("Delete the selected keys (Del)"), [this] {
        mCEdit.DeleteSelected();
        UpdateValues();
    });
    row->Add(mpCDelete, 0, wxALIGN_CENTRE_VERTICAL);
    return row;
}

// The switch of a channel, and the value of its selected keys.
wxSizer* ColorCurveGUI_cls::MakeChannel(int channel, const wxString& name, const wxString& tip,
                                        const wxString& hint) {
    auto* both = new wxBoxSizer(wxHORIZONTAL);
    auto* button = new wxToggleButton(this, wxID_ANY, name, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    button->SetValue(true);
    const bool bDark = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE).GetLuminance() < 0.5;
    button->SetForegroundColour(ColorCurveGraph_cls::GetChannelColour(channel, bDark));
    button->SetFont(FontProvider_cls::GetFont(FontProvider_cls::FONT_CAPTION));
    button->SetToolTip(tip);
    button->Bind(wxEVT_TOGGLEBUTTON, [this, channel](wxCommandEvent& event) {
        mpCGraph->ShowChannel(channel, event.IsChecked());
    });
    both->Add(button, 0, wxALIGN_CENTRE_VERTICAL | wxRIGHT, FromDIP(kGap) / 2);
    NumSpec unit = Any(0.01);
    unit.mMin = 0.0;
    unit.mMax = 1.0;
    mpCValues[channel] = new NumField_cls(this, unit, 5);
    mpCValues[channel]->SetHint(hint);
    mpCValues[channel]->SetOnChange(
        [this, channel](double value, bool bFinal) { SetChannel(channel, value, bFinal); });
    both->Add(mpCValues[channel], 1, wxALIGN_CENTRE_VERTICAL);
    return both;
}

wxSizer* ColorCurveGUI_cls::MakeChannelRow() {
    static const char* const kNames[] = {"R", "G", "B", "A"};
    const wxString tips[] = {_("Show and edit red"), _("Show and edit green"), _("Show and edit blue"),
                             _("Show and edit alpha, 0 transparent to 1 opaque")};
    const wxString hints[] = {_("Red of the selected keys, 0 to 1"), _("Green of the selected keys, 0 to 1"),
                              _("Blue of the selected keys, 0 to 1"),
                              _("Alpha of the selected keys, 0 to 1")};
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    for (int c = 0; c < ColorCurveGraph_cls::kChannelNumber; ++c)
        row->Add(MakeChannel(c, kNames[c], tips[c], hints[c]), 1, wxALIGN_CENTRE_VERTICAL | wxRIGHT,
                 FromDIP(2 * kGap));
    auto* link = new wxCheckBox(this, wxID_ANY, _("Linked"));
    link->SetValue(mpCGraph->IsLinked());
    link->SetToolTip(_("Keys of all channels at one place move and come together"));
    link->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { mpCGraph->SetLinked(event.IsChecked()); });
    row->Add(link, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, FromDIP(kGap));
    return row;
}

wxSizer* ColorCurveGUI_cls::MakeButtonRow() {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    const auto edit = [this](void (ColorCurve_cls::*pEdit)()) {
        return [this, pEdit] {
            mCEdit.EndGesture();
            if (ColorCurve_cls* pCurve = mCEdit.GetPCCurve()) (pCurve->*pEdit)();
            UpdateValues();
        };
    };
    row->Add(MakeButton(this, _("Flip Color"), _("Mirror the colors along the scale"),
                        edit(&ColorCurve_cls::Flip)),
             0, wxRIGHT, FromDIP(kGap));
    row->Add(MakeButton(this, _("Swap RGB"), _("Red takes green's curve, green blue's, blue red's"),
                        edit(&ColorCurve_cls::SwapRGB)));
    row->AddStretchSpacer();
    row->Add(new wxButton(this, ID_DIALOG_CLOSE, _("Close")));
    return row;
}

void ColorCurveGUI_cls::FillCurveList() {
    const std::vector<ColorCurve_cls*> curves = mpCCtrl->GetCurves();
    if (curves != mVListed || mpCCurveChoice->IsEmpty()) {
        mVListed = curves;
        wxArrayString labels;
        for (const ColorCurve_cls* pCurve : curves)
            labels.Add(pCurve->mLabel);
        mpCCurveChoice->Set(labels);
    }
    const auto at = std::find(mVListed.begin(), mVListed.end(), mCEdit.GetPCCurve());
    mpCCurveChoice->SetSelection(at == mVListed.end() ? wxNOT_FOUND
                                                      : static_cast<int>(at - mVListed.begin()));
}

void ColorCurveGUI_cls::UpdateValues() {
    FillCurveList();
    const ColorCurve_cls* pCurve = mCEdit.GetPCCurve();
    const wxString title =
        pCurve ? _("Color Curve Editor") + " - " + pCurve->mLabel : wxString(_("Color Curve Editor"));
    if (GetTitle() != title) SetTitle(title);
    if (pCurve) mSettings = pCurve->GetSettings();
    mpCPanel->UpdateValues();
    ShowRows();
    UpdateKeyRow();
    UpdateHistogram();
    mpCGraph->Refresh();
}

// A colour that no particle drives is the constant one, or the curve's start.
void ColorCurveGUI_cls::ShowRows() {
    const ColorCurve_cls* pCurve = mCEdit.GetPCCurve();
    const bool bDriven = pCurve && mpCCtrl->IsDriven(*pCurve);
    mpCPanel->EnableRow(mRowDepend, bDriven && mSettings.mbUseCurve);
    mpCPanel->EnableRow(mRowScaling, pCurve && mSettings.mbUseCurve);
    mpCPanel->EnableRow(mRowConstant, pCurve && !mSettings.mbUseCurve);
    for (const wxSizerItem* item : mpCFitRow->GetChildren())
        if (item->GetWindow()) item->GetWindow()->Enable(bDriven && mSettings.mbUseCurve);
}

void ColorCurveGUI_cls::OnSetting(int /*row*/, bool bFinal) {
    mCEdit.SetSettings(mSettings, bFinal);
    ShowRows();
    UpdateHistogram();
    mpCGraph->Refresh();
}

void ColorCurveGUI_cls::UpdateKeyRow() {
    double place = 0.0;
    double value = 0.0;
    unsigned kind = 0;
    const bool bAny = mCEdit.GetSelected(&place, nullptr, &kind);
    for (wxWindow* window : {static_cast<wxWindow*>(mpCPosition), static_cast<wxWindow*>(mpCStopColor),
                             static_cast<wxWindow*>(mpCKind), static_cast<wxWindow*>(mpCDelete)})
        if (window->IsEnabled() != bAny) window->Enable(bAny);
    for (int c = 0; c < ColorCurveGraph_cls::kChannelNumber; ++c) {
        const bool bHas = mCEdit.GetSelectedValue(c, &value);
        if (mpCValues[c]->IsEnabled() != bHas) mpCValues[c]->Enable(bHas);
        if (bHas && !mbFieldGesture) mpCValues[c]->SetValue(value);
    }
    const ColorCurve_cls* pCurve = mCEdit.GetPCCurve();
    if (!bAny || !pCurve) return;
    const double low = static_cast<double>(mSettings.mScalingMin);
    const double high = static_cast<double>(mSettings.mScalingMax);
    NumSpec spec = mpCPosition->GetSpec();
    spec.mMin = std::min(low, high);
    spec.mMax = std::max(low, high);
    spec.mStep = std::max(std::fabs(high - low), 1e-30) / 100.0;
    mpCPosition->SetSpec(spec);
    if (!mbFieldGesture) mpCPosition->SetValue(low + place * (high - low));
    mpCKind->SetSelection(static_cast<int>(std::min(kind, unsigned(KeyFrame_cls::INTERP_COUNT - 1))));
    float color[4];
    for (size_t c = 0; c < 4; ++c)
        color[c] = static_cast<float>(pCurve->mpCParamGroup->mVParams[c].Evaluate(place, 0.0));
    mpCStopColor->SetColor(color);
}

void ColorCurveGUI_cls::BeginField(double start) {
    if (mbFieldGesture) return;
    mFieldStart = start;
    mbFieldGesture = true;
    mCEdit.Begin();
}

void ColorCurveGUI_cls::EndField(bool bFinal) {
    if (bFinal) {
        mCEdit.Commit();
        mbFieldGesture = false;
    }
    mpCGraph->Refresh();
    UpdateKeyRow();
}

void ColorCurveGUI_cls::SetPosition(double value, bool bFinal) {
    const double low = static_cast<double>(mSettings.mScalingMin);
    const double range = static_cast<double>(mSettings.mScalingMax) - low;
    const double wanted = range != 0.0 ? (value - low) / range : value;
    if (!mbFieldGesture && bFinal) {
        mCEdit.SetSelectedPosition(wanted, mpCGraph->IsLinked());
        UpdateValues();
        return;
    }
    double start = 0.0;
    if (!mbFieldGesture && !mCEdit.GetSelected(&start, nullptr, nullptr)) return;
    BeginField(start);
    mCEdit.MoveSelected(wanted - mFieldStart, 0.0, mpCGraph->IsLinked());
    EndField(bFinal);
}

void ColorCurveGUI_cls::SetChannel(int channel, double value, bool bFinal) {
    if (!mbFieldGesture && bFinal) {
        mCEdit.SetSelectedValue(channel, value);
        UpdateValues();
        return;
    }
    double start = 0.0;
    if (!mbFieldGesture && !mCEdit.GetSelectedValue(channel, &start)) return;
    BeginField(start);
    mCEdit.MoveSelected(0.0, value - mFieldStart, false, channel);
    EndField(bFinal);
}

void ColorCurveGUI_cls::UpdateHistogram() {
    const ColorCurve_cls* pCurve = mCEdit.GetPCCurve();
    const ColorCurveHooks_st& hooks = mpCCtrl->mHooks;
    const bool bDriven = pCurve && mpCCtrl->IsDriven(*pCurve) && hooks.mHistogram;
    size_t stamp = bDriven && hooks.mStamp ? hooks.mStamp() : 0;
    const auto mix = [&stamp](size_t part) { stamp = stamp * 1099511628211u + part; };
    mix(std::hash<const void*>()(bDriven ? pCurve : nullptr));
    mix(std::hash<float>()(mSettings.mScalingMin));
    mix(std::hash<float>()(mSettings.mScalingMax));
    mix(mSettings.mDependType);
    if (stamp == mHistogramStamp) return;
    mHistogramStamp = stamp;
    mpCGraph->SetHistogram(bDriven ? hooks.mHistogram(*pCurve, kBins) : std::vector<float>());
}
