#include "PDATA/EDITOR/clsDataLoaderGUI.h"

#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/listctrl.h>
#include <wx/sizer.h>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/EDITOR/clsGuessDialog.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsMyArtProvider.h"

namespace {
constexpr int kGap = 4;          // the spacing unit
constexpr int kLabelWidth = 112; // of both panels
} // namespace

DataLoaderGUI_cls::DataLoaderGUI_cls(wxWindow* pParent, DataLoader_cls* pLoader)
    : wxDialogEXKey(pParent, _("Data Loader"), wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      GrammerBaseGUI_cls(pLoader), mpCLoader(pLoader) {
    SetMenu();
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    MakeTop(sizer);
    MakeLists(sizer);
    MakePanel(sizer);
    MakePeriodic(sizer);
    SetSizerAndFit(sizer);
    mpCButtonOpen->SetDefault();
    UpdateValues();
    // A project may have brought another grammar meanwhile.
    Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
        if (event.GetActive()) UpdateValues();
        event.Skip();
    });
}

void DataLoaderGUI_cls::MakeTop(wxSizer* pSizer) {
    mpCButtonOpen = new wxButton(this, wxID_ANY, _("Open File Sequence"));
    mpCButtonOpen->SetBitmap(MyArtProvider::GetIcon("Open"));
    mpCButtonOpen->SetToolTip(_("Choose the first file of a numbered sequence and open it (Enter)"));
    mpCButtonOpen->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnBtnOpenFile(); });
    pSizer->Add(mpCButtonOpen, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
}

void DataLoaderGUI_cls::MakeLists(wxSizer* pSizer) {
    auto* lists = new wxBoxSizer(wxHORIZONTAL);
    lists->Add(MakeListColumn(this, HEAD, _("Header Format")), 1, wxEXPAND | wxRIGHT, FromDIP(2 * kGap));
    lists->Add(MakeListColumn(this, BODY, _("Body Format")), 1, wxEXPAND);
    pSizer->Add(lists, 1, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(2 * kGap));

    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    auto* standard = new wxButton(this, wxID_ANY, _("Default"));
    standard->SetToolTip(_("Both lists and the fields below back to their defaults"));
    standard->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnBtnDefault(); });
    auto* guess = new wxButton(this, wxID_ANY, _("Guess"));
    guess->SetBitmap(MyArtProvider::GetIcon("Guess"));
    guess->SetToolTip(_("Look at the file last chosen and propose how to read and show it"));
    guess->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnBtnGuess(); });
    buttons->Add(standard, 1, wxRIGHT, FromDIP(2 * kGap));
    buttons->Add(guess, 1);
    pSizer->Add(buttons, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
}

void DataLoaderGUI_cls::MakePanel(wxSizer* pSizer) {
    DataLoader_cls& loader = *mpCLoader;
    mpCPanel = new MultiInputPanel_cls(this, kLabelWidth);
    mRowDataType =
        mpCPanel->AddChoice(_("Data Type"), &loader.mCItemDataType.mValue,
                            {_("Simple Binary"), _("Simple Ascii")}, _("How numbers stand in the files"));
    mpCPanel->AddChoice(_("Interpolation"), &loader.mCItemInterpolateType.mValue,
                        {_("Linear"), _("Hermite"), _("No Interpolate")},
                        _("How particles move between two snapshots"));
    mpCPanel->AddChoice(
        _("Particle Number"), &loader.mCItemVariableNumber.mValue,
        {_("Constant"), _("Variable"), _("Sort by ID")},
        _("Whether a particle keeps its place in all files, is found by its ID, or is sorted by it"));
    NumSpec spec;
    spec.mStep = 0.1;
    mpCPanel->AddNumber(_("Translate"), loader.mCItemTranslate.mValue, 3, spec,
                        _("Added to x, y and z of each position, in units of the data"));
    spec.mbRelative = true;
    mpCPanel->AddNumber(_("Scaling"), &loader.mCItemScale.mValue, 1, spec,
                        _("Multiplies positions, velocities and radii"));
    mpCPanel->AddNumber(_("Modify Value1"), &loader.mCItemScaleValue1.mValue, 1, spec,
                        _("Multiplies Value1"));
    mpCPanel->AddChoice("", &loader.mCItemLogarithm.mValue, {_("Raw Data"), _("Take log10")},
                        _("What becomes of Value1"));
    mpCPanel->SetOnChange([this](int row, bool) {
        if (row == mRowDataType) OnHookCombobox();
    });
    pSizer->Add(mpCPanel, 0, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(kGap));
}

void DataLoaderGUI_cls::MakePeriodic(wxSizer* pSizer) {
    mpCPanelPeriodic = new MultiInputPanel_cls(this, kLabelWidth);
    mpCButtonPeriodic = new wxButton(mpCPanelPeriodic, ID_BOUNDARY_SIZE);
    mpCButtonPeriodic->SetToolTip(_("Size and base vectors of the periodic box"));
    mpCButtonPeriodic->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnBtnPeriodic(); });
    mpCPanelPeriodic->AddWindow(_("Boundary Size"), mpCButtonPeriodic);
    if (PeriodicBoundary_cls* periodic = mpCLoader->mpCPeriodic) {
        mpCPanelPeriodic->AddChoice(
            _("Boundary"), &periodic->mCPeriodicType.mValue,
            {_("No Periodic Boundary Condition"), _("Periodic in x-y plane"), _("Periodic in xyz space")},
            _("The axes on which a particle that leaves comes in at the other side"));
        mpCPanelPeriodic->AddChoice(_("When it wraps"), &periodic->mCPeriodicEffect.mValue,
                                    {_("Guess velocity"), _("Force velocity to be 0")},
                                    _("Motion of a particle that changes sides between two snapshots"));
    }
    mpCPanelPeriodic->SetOnChange([this](int, bool) { UpdatePeriodicButtonLabel(); });
    pSizer->Add(mpCPanelPeriodic, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(kGap));
    UpdatePeriodicButtonLabel();
}

void DataLoaderGUI_cls::UpdateValues() {
    ShowChangedGrammer();
    mpCPanel->UpdateValues();
    mpCPanelPeriodic->UpdateValues();
    UpdatePeriodicButtonLabel();
}

void DataLoaderGUI_cls::UpdatePeriodicButtonLabel() {
    const bool bOn = mpCLoader->mpCPeriodic && mpCLoader->mpCPeriodic->mCPeriodicType.mValue != PERIODIC_NONE;
    mpCButtonPeriodic->SetLabel(_("Periodic Boundary Condition") + (bOn ? " [ON]" : " [OFF]"));
}

bool DataLoaderGUI_cls::CheckLists() const {
    GrammerBase_cls scratch("DataLoad");
    CopyListsTo(&scratch);
    return DataLoader_cls::CheckGrammer(scratch);
}

bool DataLoaderGUI_cls::OpenWithCheck(const wxString& path) {
    if (!CheckLists()) return false;
    CopyListsTo(mpCLoader);
    mStrLastChosen = path;
    UpdateValues();
    mpCLoader->OpenDataFile(path);
    return true;
}

bool DataLoaderGUI_cls::AskForFile(wxString* pPath) {
    wxFileDialogEX local(this);
    wxFileDialogEX* dialog = GpCFileDialog ? GpCFileDialog : &local;
    const wxString last = mpCLoader->mCItemLastOpened.mStrValue;
    const wxFileName name(last);
    const bool bNone = last.empty() || last == "NONE";
    dialog->SetParams(_("Coose first file"), bNone ? wxString("./") : name.GetPath(),
                      bNone ? wxString() : name.GetFullName(), "*", wxFD_FILE_MUST_EXIST | wxFD_OPEN);
    if (dialog->ShowModal() != wxID_OK) return false;
    *pPath = mStrLastChosen = dialog->GetPath();
    return true;
}

void DataLoaderGUI_cls::OnBtnOpenFile() {
    if (!CheckLists()) return;
    wxString path;
    if (!AskForFile(&path)) return;
    const bool bTaken = mpCLoader->mTakeFile && mpCLoader->mTakeFile(path);
    if (bTaken || OpenWithCheck(path)) CloseEXKey();
}

void DataLoaderGUI_cls::OnBtnDefault() {
    SetToDefault(this, mpCListHead, mpCListBody);
    mpCLoader->SetToDefault();
    UpdateValues();
}

void DataLoaderGUI_cls::OnBtnGuess() {
    const wxString last = mpCLoader->mCItemLastOpened.mStrValue;
    if (mStrLastChosen.empty() && last != "NONE" && wxFileName::FileExists(last)) mStrLastChosen = last;
    wxString path = mStrLastChosen;
    if (!path.empty() || AskForFile(&path)) Guess(path);
}

void DataLoaderGUI_cls::GuessAnyFile() {
    wxString path;
    if (AskForFile(&path)) GuessFile(path);
}

void DataLoaderGUI_cls::GuessFile(const wxString& path) {
    mStrLastChosen = path;
    if (Guess(path) == GuessDialog_cls::Use) OpenWindow(); // to see it, and to go on from there
}

int DataLoaderGUI_cls::Guess(wxString path) {
    GrammerBase_cls present("DataLoad");
    present.mCItemDataType.mValue = mpCLoader->mCItemDataType.mValue;
    CopyListsTo(&present);
    for (;;) {
        GuessDialog_cls dialog(IsShown() ? this : GetParent(), path, *this, present,
                               mpCLoader->mCItemScale.mValue);
        const auto answer = dialog.Ask();
        if (answer == GuessDialog_cls::OtherFile && AskForFile(&path)) continue;
        const bool bOpen = answer == GuessDialog_cls::UseAndOpen;
        if (!bOpen && answer != GuessDialog_cls::Use) return GuessDialog_cls::Cancel;
        const UndoBlock_cls block;
        dialog.Apply(mpCLoader);
        UpdateValues();
        UpdateList(mpCListHead, mpCLoader->mCItemHead); // also where only the lists had been edited
        UpdateList(mpCListBody, mpCLoader->mCItemBody);
        if (bOpen && OpenWithCheck(path)) CloseEXKey();
        return answer;
    }
}

void DataLoaderGUI_cls::OnBtnPeriodic() { PostMenuEvent(ID_PERIODIC_BOUNDARY); }

bool DataLoaderGUI_cls::OnKeyDown(wxKeyEvent& event) {
    if (event.GetKeyCode() != 'O' || event.GetModifiers() != wxMOD_CONTROL) return false;
    PostMenuEvent(ID_OPEN_PROJECT);
    return true;
}
