#include "SCENE/clsLightSRCGUI.h"

#include <algorithm>
#include <utility>

#include <wx/button.h>
#include <wx/listctrl.h>
#include <wx/sizer.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsMyArtProvider.h"

namespace {

constexpr int kUpdateMask = UPDATE_LIGHT | UPDATE_GL;
constexpr int kIconSize = 24;
constexpr int kListWidth = 130;
constexpr int kLabelWidth = 110;
constexpr int kPanelWidth = 470;
enum Icon { ICON_LIGHT, ICON_SPOT };

} // namespace

LightSRCGUI_cls* LightSRCGUI_cls::mspCThis = nullptr;

LightSRCGUI_cls::LightSRCGUI_cls(wxWindow* pParent, LightSRCCtrl_cls& ctrl)
    : wxDialogEXKey(pParent, _("Light Source Editor")), mCtrl(ctrl) {
    mspCThis = this;
    mpCParamSizer = new wxBoxSizer(wxVERTICAL);
    auto* halves = new wxBoxSizer(wxHORIZONTAL);
    halves->Add(SetMNumMain(), 0, wxEXPAND | wxALL, FromDIP(4));
    halves->Add(mpCParamSizer, 1, wxEXPAND | wxTOP | wxRIGHT, FromDIP(4));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(halves, 1, wxEXPAND);
    sizer->Add(new wxButton(this, ID_DIALOG_CLOSE, _("Close")), 0,
               wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8));
    SetSizer(sizer);
    ReconnectParam();
    Fit(); // to all rows, of which some hide from now on
    UpdateValues();
}

LightSRCGUI_cls::~LightSRCGUI_cls() { mspCThis = nullptr; }

wxBoxSizer* LightSRCGUI_cls::SetMNumMain() {
    mpCList = new wxListCtrl(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(kListWidth, -1)),
                             wxLC_REPORT | wxLC_NO_HEADER | wxLC_SINGLE_SEL);
    wxVector<wxBitmapBundle> icons; // in the order of Icon
    icons.push_back(MyArtProvider::GetIcon("LightSource", kIconSize));
    icons.push_back(MyArtProvider::GetIcon("SpotLight", kIconSize));
    mpCList->SetSmallImages(icons);
    mpCList->AppendColumn("", wxLIST_FORMAT_LEFT, FromDIP(kListWidth - 8));
    mpCList->SetToolTip(_("Lights in use, seven at most; the settings are those of the chosen one"));
    mpCList->Bind(wxEVT_LIST_ITEM_SELECTED, [this](wxListEvent& event) { OnSelect(event.GetIndex()); });
    auto* add = new wxButton(this, ID_LIGHT_ADD, "+", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    add->SetToolTip(_("One more light"));
    add->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { mCtrl.AddLight(); });
    mpCRemove = new wxButton(this, ID_LIGHT_REMOVE, "-", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    mpCRemove->SetToolTip(_("Remove the chosen light; one stays"));
    mpCRemove->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { mCtrl.RemoveLight(); });
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(add, 1, wxRIGHT, FromDIP(4));
    buttons->Add(mpCRemove, 1);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCList, 1, wxEXPAND | wxBOTTOM, FromDIP(4));
    sizer->Add(buttons, 0, wxEXPAND);
    return sizer;
}

void LightSRCGUI_cls::SetMNumParam(LightSRC_cls& light) {
    MultiInputPanel_cls& panel = *mpCPanel;
    const int valid =
        panel.AddCheck(_("Valid"), &light.mCVisible.mValue, _("On"), _("Whether the light shines"));
    panel.AddCheckTo(valid, &light.mCFollowsCamera.mValue, _("Follows Camera"),
                     _("Place and rotation are the camera's: x is its front, y its left, z its up.\n"
                       "Rotation 0, 0, 0 is a lamp on the camera."));
    const int type =
        panel.AddChoice(_("Type/Fade"), &light.mCType.mValue,
                        {_("Point Light"), _("Spot Light"), _("Cylinder Light"), _("Parallel Light")},
                        _("Where the light comes from; a cylinder light is a point light in the views"));
    panel.AddChoiceTo(type, &light.mCFade.mValue, {_("No Fade"), _("power 1"), _("power 2")},
                      _("Whether it falls with the distance, and with which power of it.\n"
                        "A light that fades begins twice as bright."));
    panel.AddChoiceTo(type, &light.mCTarget.mValue, {_("No Target"), _("Target Origin"), _("Target Anchor")},
                      _("What it turns to when it is moved; without a target the rotation alone says it"));
    panel.AddParam(_("Translate"), light.mpCTranslate, RangeSpec(-1e30, 1e30, 0.01),
                   _("Place of the light; a parallel one shines from everywhere along its rotation"));
    panel.AddParam(_("Rotate"), light.mpCRotate, RangeSpec(-1e30, 1e30, 1),
                   _("Rotation around x, y and z in degrees; it shines along its x axis"));
    panel.AddParam(_("L. Strength"), light.mpCStrength, RangeSpec(0, 200, 0.01), _("Brightness; 1 is full"));
    panel.AddNumber(_("Fade Distance"), &light.mCFadeDistance.mValue, 1, RangeSpec(0, 1000, 0.01),
                    _("Distance at which a light that fades is as bright as one that doesn't"));
    panel.AddNumber(_("Spot Angle"), &light.mCSpotAngle.mValue, 1,
                    IntegerSpec(0, LightSRC_cls::kMaxSpotAngle),
                    _("From the middle of the cone to its edge, degrees.\n"
                      "The views show 90 from there on, and 180 without a cone."));
    panel.AddCheck(_("Cast Shadow"), &light.mCCastShadow.mValue, _("On"),
                   _("Whether what it lights throws shadows"));
    panel.AddCheck(_("Area Light"), &light.mCLightArea.mValue, _("On"),
                   _("Soft shadows.\nActs in POV-Ray pictures only."));
    const int area = panel.AddNumber(_("Size/Quality"), &light.mCLightAreaSize.mValue, 1,
                                     RangeSpec(0, 1000, 0.01), _("Width and height of the area"));
    panel.AddNumberTo(area, &light.mCLightAreaQuality.mValue,
                      IntegerSpec(1, int(LightSRC_cls::kMaxAreaQuality)),
                      _("Lights along a side of the area"));
}

void LightSRCGUI_cls::ReconnectParam() {
    const int current = mCtrl.GetCurrentLight();
    mpCShown = &mCtrl.GetLight(std::max(current, 0));
    mpCParamSizer->Clear(true);
    mpCPanel = new MultiInputPanel_cls(this, kLabelWidth);
    mpCPanel->SetMinSize(wxSize(FromDIP(kPanelWidth), -1));
    mpCParamSizer->Add(mpCPanel, 0, wxEXPAND);
    SetMNumParam(*mpCShown);
    mpCPanel->SetUndo(kUpdateMask);
    mpCPanel->SetOnChange([this](int row, bool bFinal) {
        if (row == ROW_TYPE) FuncHookType();
        if (bFinal) KeepTarget();
        HideAndShowAll();
        PostMenuEvent(ID_REFRESH_GL);
    });
    Layout();
}

void LightSRCGUI_cls::UpdateValues() {
    if (mpCShown != &mCtrl.GetLight(std::max(mCtrl.GetCurrentLight(), 0)))
        ReconnectParam();
    else
        mpCPanel->UpdateValues();
    mStrShown = mpCShown->Serialize();
    ShowList();
    HideAndShowAll();
    Layout();
}

// Rows stay where they are, so that the list doesn't jump under the mouse.
void LightSRCGUI_cls::ShowList() {
    mbShowing = true;
    const int number = mCtrl.GetLightNumber();
    while (mpCList->GetItemCount() > number)
        mpCList->DeleteItem(mpCList->GetItemCount() - 1);
    for (int i = 0; i < number; ++i) {
        const LightSRC_cls& light = mCtrl.GetLight(i);
        const int icon = light.mCType.mValue == LightSRC_cls::TYPE_SPOT ? ICON_SPOT : ICON_LIGHT;
        if (i >= mpCList->GetItemCount())
            mpCList->InsertItem(i, light.mpCObjectGroup->mName, icon);
        else
            mpCList->SetItemImage(i, icon);
        const long state = i == mCtrl.GetCurrentLight() ? wxLIST_STATE_SELECTED : 0;
        if (mpCList->GetItemState(i, wxLIST_STATE_SELECTED) != state)
            mpCList->SetItemState(i, state, wxLIST_STATE_SELECTED);
    }
    mbShowing = false;
    FindWindow(ID_LIGHT_ADD)->Enable(number < LightSRCCtrl_cls::kLightNumber);
    mpCRemove->Enable(number > 1);
}

void LightSRCGUI_cls::OnSelect(long row) {
    if (mbShowing || row == mCtrl.GetCurrentLight()) return;
    mCtrl.SelectLight(static_cast<int>(row));
}

// The icon of its row.
void LightSRCGUI_cls::FuncHookType() { ShowList(); }

// One that has the origin as its target turns to it again, which is a part of the edit that moved it.
void LightSRCGUI_cls::KeepTarget() {
    const wxString now = mpCShown->Serialize();
    if (now != std::exchange(mStrShown, now) && mpCShown->mCTarget.mValue == SceneObj_cls::TARGET_ORIGIN) {
        const unsigned long long state = GCUndoList.GetStateId();
        mpCShown->UpdateCurrentObj(Parameters_cls::msCurrentDoubleIndex);
        {
            const UndoBlock_cls block;
            mpCShown->Targetting();
        }
        if (GCUndoList.GetStateId() != state) GCUndoList.JoinLastTwo();
        mStrShown = mpCShown->Serialize();
    }
    mpCPanel->UpdateValues(ROW_ROTATE);
}

void LightSRCGUI_cls::HideAndShowAll() {
    const bool bAny = mCtrl.GetCurrentLight() >= 0;
    for (int row = 0; row < mpCPanel->GetRowCount(); ++row)
        mpCPanel->EnableRow(row, bAny);
    mpCPanel->ShowRow(ROW_FADE_DISTANCE, mpCShown->mCFade.mValue != LightSRC_cls::FADE_NONE);
    mpCPanel->ShowRow(ROW_SPOT_ANGLE, mpCShown->mCType.mValue == LightSRC_cls::TYPE_SPOT);
    mpCPanel->ShowRow(ROW_AREA_SIZE, mpCShown->mCLightArea.mValue);
    Layout();
}
