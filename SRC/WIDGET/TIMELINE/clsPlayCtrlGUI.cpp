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

constexpr int kGap = 4;          // the spacing unit
constexpr int kFieldColumns = 8; // four labels with a field each
constexpr int kMaxFrame = 65535;
constexpr int kMaxStepping = 99;
constexpr int kMaxPrefetch = 9999;
constexpr int kFreePrefetch = 3;       // never cut back
constexpr double kPrefetchShare = 0.6; // of the snapshots that fit the memory
constexpr int kMaxPace = 10000;

void SetUpperEnd(NumField_cls* pField, int high) {
    if (pField->GetSpec().mMax != high)
        pField->SetSpec(IntegerSpec(static_cast<int>(pField->GetSpec().mMin), high));
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
    MakeTransport();
    MakePosition();
    MakeArea();
    MakeSettings();
    MakeKeys();
    MakeState();
    UpdateValues();
    RefreshMemory();
    Arrange(false);
    Bind(wxEVT_SIZE, &PlayCtrlGUI_cls::OnSize, this);
}

// Tab goes through the windows as they were made, in both arrangements.
void PlayCtrlGUI_cls::Arrange(bool bNarrow) {
    mbNarrow = bNarrow;
    SetSizer(nullptr); // a window can stand in one sizer only
    const int gap = FromDIP(kGap);
    auto* grid = new wxFlexGridSizer(bNarrow ? kFieldColumns + 1 : kFieldColumns + 2, wxSize(gap, gap));
    auto* outer = new wxBoxSizer(wxVERTICAL);
    if (bNarrow) {
        auto* top = new wxBoxSizer(wxHORIZONTAL);
        top->Add(MakeRow(mTransport), 0, wxALIGN_CENTRE_VERTICAL);
        top->Add(mpCRepeat, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 2 * gap);
        top->Add(MakeRow(mHere, gap), 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 2 * gap);
        top->AddStretchSpacer();
        top->Add(mpCLast, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, gap);
        top->Add(MakeRow(mState, 2 * gap), 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 2 * gap);
        outer->Add(top, 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, gap);
        AddFields(grid, mPosition, 0);
        grid->Add(MakeRow(mKeys), 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 2 * gap);
        AddFields(grid, mSettings, 0);
    } else {
        // Both rows share their columns: transport or repeat, then four labels with a field each, then the
        // rest.
        grid->AddGrowableCol(kFieldColumns + 1, 1);
        grid->Add(MakeRow(mTransport), 0, wxALIGN_CENTRE_VERTICAL);
        AddFields(grid, mPosition, 2 * gap);
        wxSizer* row = MakeRow(mHere, gap);
        row->AddStretchSpacer();
        row->Add(mpCLast, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, gap);
        grid->Add(row, 0, wxEXPAND | wxLEFT, gap);
        grid->Add(mpCRepeat, 0, wxALIGN_CENTRE_VERTICAL);
        AddFields(grid, mSettings, 2 * gap);
        wxSizer* below = MakeRow(mKeys);
        below->AddStretchSpacer();
        below->Add(MakeRow(mState, 2 * gap), 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, gap);
        grid->Add(below, 0, wxEXPAND | wxLEFT, gap);
    }
    outer->Add(grid, 0, wxEXPAND | wxALL, gap);
    SetSizer(outer);
}

wxSizer* PlayCtrlGUI_cls::MakeRow(const std::vector<wxWindow*>& windows, int gap) {
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    for (wxWindow* window : windows)
        row->Add(window, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, window == windows.front() ? 0 : gap);
    return row;
}

void PlayCtrlGUI_cls::AddFields(wxSizer* pSizer, const std::vector<wxWindow*>& windows, int gap) {
    for (size_t k = 0; k < windows.size(); ++k) // a label and its field by turns
        pSizer->Add(windows[k], 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, k % 2 == 0 ? gap : 0);
}

void PlayCtrlGUI_cls::OnSize(wxSizeEvent& event) {
    FitWidth();
    event.Skip();
}

// Three rows where two would be cut. The words at the right end change their length while the film plays, so
// the width that two rows ask for is what they asked for last.
void PlayCtrlGUI_cls::FitWidth() {
    const int width = GetClientSize().x;
    const bool bWasNarrow = mbNarrow;
    if (mbNarrow && width >= mWideWidth) Arrange(false);
    if (!mbNarrow && GetSizer()->GetMinSize().x > width) {
        mWideWidth = GetSizer()->GetMinSize().x;
        Arrange(true);
    }
    Layout();
    if (mbNarrow != bWasNarrow) PostMenuEvent(ID_RESIZED_TL);
}

template <class TEXT_BUTTON, class BITMAP_BUTTON>
TEXT_BUTTON* PlayCtrlGUI_cls::AddButton(std::vector<wxWindow*>& row, const ButtonLook_st& look,
                                        const wxString& tip) {
    const wxBitmapBundle icon = MyArtProvider::GetIcon(look.mIcon);
    TEXT_BUTTON* button;
    if (icon.IsOk())
        button = new BITMAP_BUTTON(this, wxID_ANY, icon);
    else
        button = new TEXT_BUTTON(this, wxID_ANY, look.mText, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    button->SetToolTip(tip);
    row.push_back(button);
    return button;
}

void PlayCtrlGUI_cls::AddAction(std::vector<wxWindow*>& row, const ButtonLook_st& look, const wxString& tip,
                                std::function<void()> action) {
    AddButton<wxButton, wxBitmapButton>(row, look, tip)->Bind(wxEVT_BUTTON, [action](wxCommandEvent&) {
        action();
    });
}

wxToggleButton* PlayCtrlGUI_cls::AddToggle(const ButtonLook_st& look, const wxString& tip,
                                           std::function<void()> action) {
    auto* button = AddButton<wxToggleButton, wxBitmapToggleButton>(mTransport, look, tip);
    button->Bind(wxEVT_TOGGLEBUTTON, [action](wxCommandEvent&) { action(); });
    return button;
}

NumField_cls* PlayCtrlGUI_cls::AddField(std::vector<wxWindow*>& row, const wxString& label, int low, int high,
                                        const wxString& tip, std::function<void(int)> set) {
    auto* text = new GripLabel_cls(this, label);
    auto* field = new NumField_cls(this, IntegerSpec(low, high), 5);
    text->SetToolTip(tip);
    field->SetHint(tip);
    field->AttachGrip(text);
    field->SetOnChange([this, set](double value, bool bFinal) {
        if (!bFinal) mpCTime->BeginGesture();
        set(static_cast<int>(value));
        if (bFinal) mpCTime->EndGesture();
    });
    row.push_back(text);
    row.push_back(field);
    return field;
}

void PlayCtrlGUI_cls::Play(int direction) {
    mpCTime->StartPlayCommand(direction);
    UpdateValues();
}

void PlayCtrlGUI_cls::MakeTransport() {
    AddAction(mTransport, {"PlayFirst", "|<"}, _("To the start of the work area"),
              [this] { mpCTime->MoveFrameCommandLarge(-1); });
    AddAction(mTransport, {"PlayStepBack", "<|"}, _("One step back"),
              [this] { mpCTime->MoveInterpStepCommand(-1); });
    mpCPlayBack = AddToggle({"PlayBack", "<"}, _("Play backwards; again: stop"), [this] { Play(-1); });
    AddAction(mTransport, {"PlayStop", "[]"}, _("Stop playing"), [this] {
        if (mpCTime->IsPlaying())
            Play(mpCTime->GetPlayDirection());
        else
            PostMenuEvent(ID_PLAY_STOP);
    });
    mpCPlayForward = AddToggle({"PlayForward", ">"}, _("Play (Space); again: stop"), [this] { Play(1); });
    AddAction(mTransport, {"PlayStepForward", "|>"}, _("One step forward"),
              [this] { mpCTime->MoveInterpStepCommand(1); });
    AddAction(mTransport, {"PlayLast", ">|"}, _("To the end of the work area"),
              [this] { mpCTime->MoveFrameCommandLarge(1); });
}

void PlayCtrlGUI_cls::MakePosition() {
    mpCFrame = AddField(mPosition, _("Frame"), 0, kMaxFrame, _("Current frame"),
                        [this](int value) { mpCTime->SetFrameCommand(value); });
    mpCStep =
        AddField(mPosition, _("Step"), 0, 0, _("Step between this frame and the next, below the interval"),
                 [this](int value) { mpCTime->SetInterpStepCommand(value); });
}

void PlayCtrlGUI_cls::SetWorkArea(int frame, bool bUpper) {
    if (bUpper)
        mpCTime->SetWAMaxCommand(frame);
    else
        mpCTime->SetWAMinCommand(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void PlayCtrlGUI_cls::MakeArea() {
    mpCFrom = AddField(mPosition, _("Work Area"), 0, kMaxFrame, _("First frame that plays"),
                       [this](int value) { SetWorkArea(std::min(value, mpCTime->GetWAMax()), false); });
    mpCTo = AddField(mPosition, _("to"), 0, kMaxFrame, _("Last frame that plays"),
                     [this](int value) { SetWorkArea(std::max(value, mpCTime->GetWAMin()), true); });
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
        mHere.push_back(button);
    }
    mpCLast = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxALIGN_RIGHT);
    mpCLast->SetToolTip(_("Frames from the first to the last of the film"));
}

void PlayCtrlGUI_cls::MakeSettings() {
    mpCRepeat = new wxCheckBox(this, wxID_ANY, _("Repeat"));
    mpCRepeat->SetToolTip(_("Play the work area again and again"));
    mpCRepeat->Bind(wxEVT_CHECKBOX,
                    [this](wxCommandEvent& event) { mpCTime->SetRepeatCommand(event.IsChecked() ? 1 : 0); });
    mpCStepping =
        AddField(mSettings, _("Stepping"), 1, kMaxStepping, _("Only multiples of this are frames (1 to 99)"),
                 [this](int value) { mpCTime->SetAnimStepCommand(value); });
    mpCInterval = AddField(mSettings, _("Interval"), 1, kMaxStepping,
                           _("Interpolation steps from frame to frame (1 to 99)"),
                           [this](int value) { mpCTime->SetAnimInterpCommand(value); });
    mpCPrefetch =
        AddField(mSettings, _("Prefetch"), 0, kMaxPrefetch,
                 // xgettext:no-c-format
                 _("Frames read ahead; over 3 at most 60% of what fits the memory"), [this](int value) {
                     mpCTime->SetPrefetchCommand(LimitPrefetch(value, mpCTime->GetExpectedPrefetchMax()));
                     mpCPrefetch->SetValue(mpCTime->GetPrefetch());
                 });
    mpCPace =
        AddField(mSettings, _("Frame ms"), 0, kMaxPace, _("Least time between two frames, in milliseconds"),
                 [this](int value) { mpCTime->mFrameInterval = value; });
}

void PlayCtrlGUI_cls::MakeKeys() {
    AddAction(mKeys, {"KeyPos", _("Key Pos")},
              _("Set a key of the camera's position, as the view used last shows it"),
              [] { PostMenuEvent(ID_SET_KEY_POS); });
    AddAction(mKeys, {"KeyPosRot", _("Pos+Rot")},
              _("Set keys of the camera's position and direction, as the view used last shows them"),
              [] { PostMenuEvent(ID_SET_KEY_POS_ROT); });
    AddAction(mKeys, {"KeyAnc", _("Key Anc")}, _("Set a key of the anchor, as the view used last shows it"),
              [] { PostMenuEvent(ID_SET_KEY_ANC); });
}

void PlayCtrlGUI_cls::MakeState() {
    mpCMemory = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxALIGN_RIGHT);
    mpCMemory->SetToolTip(_("Memory that loaded snapshots take, of the limit in the preferences"));
    auto* abort = new wxButton(this, wxID_ANY, _("Abort"), wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    abort->SetToolTip(_("Stop the drawing or calculation under way"));
    abort->Bind(wxEVT_BUTTON, [](wxCommandEvent&) { GbAbort.store(true); });
    mState = {mpCMemory, abort};
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
    if (GetSizer()) FitWidth();
}

void PlayCtrlGUI_cls::RefreshMemory() {
    const wxString text =
        wxString::Format(_("%lld of %d MB"), mpCStore->CalcAndGetUsedTotalMemoryMB(), mpCStore->mLimitMB);
    if (mpCMemory->GetLabelText() == text) return;
    mpCMemory->SetLabelText(text);
    if (GetSizer()) FitWidth();
}
