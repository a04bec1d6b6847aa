#include "WIDGET/TIMELINE/clsPlayCtrlGUI.h"

#include <algorithm>

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/tglbtn.h>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsGripLabel.h"
#include "WIDGET/clsMyArtProvider.h"
#include "WIDGET/clsNumField.h"

namespace {

constexpr int kGap = 4; // the spacing unit
constexpr int kColumns = 10;
constexpr int kMaxFrame = 65535;
constexpr int kMaxStepping = 99;
constexpr int kMaxPrefetch = 9999;
constexpr int kFreePrefetch = 3;       // never cut back
constexpr double kPrefetchShare = 0.6; // of the snapshots that fit the memory
constexpr int kMaxPace = 10000;

NumSpec IntSpec(int low, int high) {
    NumSpec spec;
    spec.mbInteger = true;
    spec.mMin = low;
    spec.mMax = high;
    return spec;
}

void SetUpperEnd(NumField_cls* pField, int high) {
    if (pField->GetSpec().mMax != high)
        pField->SetSpec(IntSpec(static_cast<int>(pField->GetSpec().mMin), high));
}

} // namespace

int LimitPrefetch(int request, int expectedMax) {
    if (expectedMax < 0 || request <= kFreePrefetch) return request;
    const double most = kPrefetchShare * expectedMax;
    return request > most ? static_cast<int>(most) : request;
}

PlayCtrlGUI_cls::PlayCtrlGUI_cls(wxWindow* pParent, TimeCtrl_cls* pTime, PDataSeqCtrl_cls* pStore)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL), mpCTime(pTime),
      mpCStore(pStore) {
    // Both rows share their columns: transport or repeat, then four labels with a field each, then the rest.
    auto* grid = new wxFlexGridSizer(kColumns, FromDIP(wxSize(kGap, kGap)));
    grid->AddGrowableCol(kColumns - 1, 1);
    MakeTransport(grid);
    MakePosition(grid);
    MakeArea(grid);
    MakeSettings(grid);
    MakeState(grid);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(grid, 0, wxEXPAND | wxALL, FromDIP(kGap));
    SetSizer(sizer);
    UpdateValues();
    RefreshMemory();
}

void PlayCtrlGUI_cls::AddButton(wxSizer* pSizer, const wxString& icon, const wxString& tip,
                                std::function<void()> action) {
    auto* button = new wxBitmapButton(this, wxID_ANY, MyArtProvider::GetIcon(icon));
    button->SetToolTip(tip);
    button->Bind(wxEVT_BUTTON, [action](wxCommandEvent&) { action(); });
    pSizer->Add(button, 0, wxALIGN_CENTRE_VERTICAL);
}

wxBitmapToggleButton* PlayCtrlGUI_cls::AddToggle(wxSizer* pSizer, const wxString& icon, const wxString& tip,
                                                 std::function<void()> action) {
    auto* button = new wxBitmapToggleButton(this, wxID_ANY, MyArtProvider::GetIcon(icon));
    button->SetToolTip(tip);
    button->Bind(wxEVT_TOGGLEBUTTON, [action](wxCommandEvent&) { action(); });
    pSizer->Add(button, 0, wxALIGN_CENTRE_VERTICAL);
    return button;
}

NumField_cls* PlayCtrlGUI_cls::AddField(wxSizer* pSizer, const wxString& label, int low, int high,
                                        const wxString& tip, std::function<void(int)> set) {
    auto* text = new GripLabel_cls(this, label);
    auto* field = new NumField_cls(this, IntSpec(low, high), 5);
    text->SetToolTip(tip);
    field->SetHint(tip);
    field->AttachGrip(text);
    field->SetOnChange([this, set](double value, bool bFinal) {
        if (!bFinal) mpCTime->BeginGesture();
        set(static_cast<int>(value));
        if (bFinal) mpCTime->EndGesture();
    });
    pSizer->Add(text, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, FromDIP(2 * kGap));
    pSizer->Add(field, 0, wxALIGN_CENTRE_VERTICAL);
    return field;
}

void PlayCtrlGUI_cls::Play(int direction) {
    mpCTime->StartPlayCommand(direction);
    UpdateValues();
}

void PlayCtrlGUI_cls::MakeTransport(wxSizer* pSizer) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    AddButton(row, "PlayFirst", _("To the start of the work area"),
              [this] { mpCTime->MoveFrameCommandLarge(-1); });
    AddButton(row, "PlayStepBack", _("One step back"), [this] { mpCTime->MoveInterpStepCommand(-1); });
    mpCPlayBack = AddToggle(row, "PlayBack", _("Play backwards; again: stop"), [this] { Play(-1); });
    AddButton(row, "PlayStop", _("Stop playing"), [this] {
        if (mpCTime->IsPlaying())
            Play(mpCTime->GetPlayDirection());
        else
            PostMenuEvent(ID_PLAY_STOP);
    });
    mpCPlayForward = AddToggle(row, "PlayForward", _("Play (Space); again: stop"), [this] { Play(1); });
    AddButton(row, "PlayStepForward", _("One step forward"), [this] { mpCTime->MoveInterpStepCommand(1); });
    AddButton(row, "PlayLast", _("To the end of the work area"),
              [this] { mpCTime->MoveFrameCommandLarge(1); });
    pSizer->Add(row, 0, wxALIGN_CENTRE_VERTICAL);
}

void PlayCtrlGUI_cls::MakePosition(wxSizer* pSizer) {
    mpCFrame = AddField(pSizer, _("Frame"), 0, kMaxFrame, _("Current frame"),
                        [this](int value) { mpCTime->SetFrameCommand(value); });
    mpCStep = AddField(pSizer, _("Step"), 0, 0, _("Step between this frame and the next, below the interval"),
                       [this](int value) { mpCTime->SetInterpStepCommand(value); });
}

void PlayCtrlGUI_cls::SetWorkArea(int frame, bool bUpper) {
    if (bUpper)
        mpCTime->SetWAMaxCommand(frame);
    else
        mpCTime->SetWAMinCommand(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void PlayCtrlGUI_cls::MakeArea(wxSizer* pSizer) {
    mpCFrom = AddField(pSizer, _("Work Area"), 0, kMaxFrame, _("First frame that plays"),
                       [this](int value) { SetWorkArea(std::min(value, mpCTime->GetWAMax()), false); });
    mpCTo = AddField(pSizer, _("to"), 0, kMaxFrame, _("Last frame that plays"),
                     [this](int value) { SetWorkArea(std::max(value, mpCTime->GetWAMin()), true); });
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    for (const bool bIn : {true, false}) {
        auto* button = new wxButton(this, wxID_ANY, bIn ? _("in here") : _("out here"), wxDefaultPosition,
                                    wxDefaultSize, wxBU_EXACTFIT);
        button->SetToolTip(bIn ? _("The work area begins at the current frame (B)")
                               : _("The work area ends at the current frame (N)"));
        button->Bind(wxEVT_BUTTON, [this, bIn](wxCommandEvent&) {
            if (bIn)
                mpCTime->SetWAInHere();
            else
                mpCTime->SetWAOutHere();
            PostMenuEvent(ID_REFRESH_TL);
        });
        row->Add(button, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, FromDIP(kGap));
    }
    row->AddStretchSpacer();
    mpCLast = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxALIGN_RIGHT);
    mpCLast->SetToolTip(_("Frames from the first to the last of the film"));
    row->Add(mpCLast, 0, wxALIGN_CENTRE_VERTICAL);
    pSizer->Add(row, 0, wxEXPAND);
}

void PlayCtrlGUI_cls::MakeSettings(wxSizer* pSizer) {
    mpCRepeat = new wxCheckBox(this, wxID_ANY, _("Repeat"));
    mpCRepeat->SetToolTip(_("Play the work area again and again"));
    mpCRepeat->Bind(wxEVT_CHECKBOX,
                    [this](wxCommandEvent& event) { mpCTime->SetRepeatCommand(event.IsChecked() ? 1 : 0); });
    pSizer->Add(mpCRepeat, 0, wxALIGN_CENTRE_VERTICAL);
    mpCStepping =
        AddField(pSizer, _("Stepping"), 1, kMaxStepping, _("Only multiples of this are frames (1 to 99)"),
                 [this](int value) { mpCTime->SetAnimStepCommand(value); });
    mpCInterval = AddField(pSizer, _("Interval"), 1, kMaxStepping,
                           _("Interpolation steps from frame to frame (1 to 99)"),
                           [this](int value) { mpCTime->SetAnimInterpCommand(value); });
    mpCPrefetch =
        AddField(pSizer, _("Prefetch"), 0, kMaxPrefetch,
                 _("Frames read ahead; over 3 at most 60% of what fits the memory"), [this](int value) {
                     mpCTime->SetPrefetchCommand(LimitPrefetch(value, mpCTime->GetExpectedPrefetchMax()));
                     mpCPrefetch->SetValue(mpCTime->GetPrefetch());
                 });
    mpCPace =
        AddField(pSizer, _("Frame ms"), 0, kMaxPace, _("Least time between two frames, in milliseconds"),
                 [this](int value) { mpCTime->mFrameInterval = value; });
}

void PlayCtrlGUI_cls::MakeState(wxSizer* pSizer) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->AddStretchSpacer();
    mpCMemory = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxALIGN_RIGHT);
    mpCMemory->SetToolTip(_("Memory that loaded snapshots take, of the limit in the preferences"));
    row->Add(mpCMemory, 0, wxALIGN_CENTRE_VERTICAL);
    auto* abort = new wxButton(this, wxID_ANY, _("Abort"), wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    abort->SetToolTip(_("Stop the drawing or calculation under way"));
    abort->Bind(wxEVT_BUTTON, [](wxCommandEvent&) { GbAbort.store(true); });
    row->Add(abort, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, FromDIP(2 * kGap));
    pSizer->Add(row, 0, wxEXPAND);
}

void PlayCtrlGUI_cls::UpdateValues() {
    const int last = mpCTime->GetMaxFrame();
    SetUpperEnd(mpCFrame, last);
    SetUpperEnd(mpCFrom, last);
    SetUpperEnd(mpCTo, last);
    SetUpperEnd(mpCStep, mpCTime->GetAnimInterp() - 1);
    mpCFrame->SetValue(mpCTime->GetFrame());
    mpCStep->SetValue(mpCTime->GetInterpStep());
    mpCFrom->SetValue(mpCTime->GetWAMin());
    mpCTo->SetValue(mpCTime->GetWAMax());
    mpCStepping->SetValue(mpCTime->GetAnimStep());
    mpCInterval->SetValue(mpCTime->GetAnimInterp());
    mpCPrefetch->SetValue(mpCTime->GetPrefetch());
    mpCPace->SetValue(mpCTime->mFrameInterval);
    if (mpCRepeat->GetValue() != mpCTime->IsRepeat()) mpCRepeat->SetValue(mpCTime->IsRepeat());
    const int direction = mpCTime->IsPlaying() ? mpCTime->GetPlayDirection() : 0;
    if (mpCPlayForward->GetValue() != (direction > 0)) mpCPlayForward->SetValue(direction > 0);
    if (mpCPlayBack->GetValue() != (direction < 0)) mpCPlayBack->SetValue(direction < 0);
    const wxString text = wxString::Format(_("0 to %d"), last);
    if (mpCLast->GetLabelText() == text) return;
    mpCLast->SetLabelText(text);
    Layout();
}

void PlayCtrlGUI_cls::RefreshMemory() {
    const wxString text =
        wxString::Format(_("%lld of %d MB"), mpCStore->CalcAndGetUsedTotalMemoryMB(), mpCStore->mLimitMB);
    if (mpCMemory->GetLabelText() == text) return;
    mpCMemory->SetLabelText(text);
    Layout();
}
