#include "PDATA/EDITOR/clsDataExporterGUI.h"

#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/listctrl.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataExporter.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsMyArtProvider.h"

namespace {

constexpr int kGap = 4; // the spacing unit
constexpr int kLabelWidth = 112;
constexpr int kMaxNumber = 9999;

bool IsNone(const wxString& path) { return path.empty() || path == "NONE"; }

} // namespace

DataExporterGUI_cls::DataExporterGUI_cls(wxWindow* pParent, DataExporter_cls* pExporter)
    : wxDialogEXKey(pParent, _("Data Exporter"), wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      GrammerBaseGUI_cls(pExporter), mpCExporter(pExporter) {
    const wxIcon icon = MyArtProvider::GetIcon("ImgSequence").GetIcon(FromDIP(wxSize(16, 16)));
    if (icon.IsOk()) SetIcon(icon);
    SetMenu();
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    SetMNumExportParam(sizer);
    MakeLists(sizer);
    MakeBottom(sizer);
    SetSizerAndFit(sizer);
    mpCButtonExport->SetDefault();
    mpCButtonExport->SetFocus();
    UpdateValues();
    // A project may have brought other settings meanwhile.
    Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
        if (event.GetActive()) UpdateValues();
        event.Skip();
    });
}

void DataExporterGUI_cls::SetMNumExportParam(wxSizer* pSizer) {
    DataExporter_cls& exporter = *mpCExporter;
    mpCPanel = new MultiInputPanel_cls(this, kLabelWidth);
    mpCPanel->SetUndo(UPDATE_EXPORTER);
    mRowDataType =
        mpCPanel->AddChoice(_("Data Type"), &exporter.mCItemDataType.mValue,
                            {_("Simple Binary"), _("Simple Ascii")}, _("How numbers stand in the files"));
    NumSpec spec;
    spec.mbInteger = true;
    spec.mMin = 0;
    spec.mMax = kMaxNumber;
    mpCPanel->AddNumber(_("Initial sequence"), &exporter.mCInitNum.mValue, 1, spec,
                        _("Number of the first file; each file that is written counts one up"));
    mpCPanel->AddText(_("File name"), &exporter.mCLastSavedFile.mStrValue,
                      _("Path of the files; \"%04d\" stands for the number, in four digits"));
    mpCPanel->AddCheck("", &exporter.mCFiltered.mValue, _("Export filtered"),
                       _("Write only the particles that the filters of the Boolean list keep"));
    auto* reference = new wxButton(mpCPanel, ID_EXPORTER_REFERENCE, _("Reference"));
    reference->SetBitmap(MyArtProvider::GetIcon("Open"));
    reference->SetToolTip(_("Choose folder and name of the files"));
    reference->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnButtonReference(); });
    mpCPanel->AddWindow("", reference);
    mpCPanel->SetOnChange([this](int row, bool) {
        if (row == mRowDataType) OnHookCombobox();
    });
    mVpLocked.push_back(mpCPanel);
    pSizer->Add(mpCPanel, 0, wxEXPAND | wxALL, FromDIP(kGap));
}

void DataExporterGUI_cls::MakeLists(wxSizer* pSizer) {
    auto* lists = new wxBoxSizer(wxHORIZONTAL);
    lists->Add(MakeListColumn(this, HEAD, _("Header Format"), ID_EXPORTER_HEAD_UP, ID_EXPORTER_HEAD_DOWN), 1,
               wxEXPAND | wxRIGHT, FromDIP(2 * kGap));
    lists->Add(MakeListColumn(this, BODY, _("Body Format"), ID_EXPORTER_BODY_UP, ID_EXPORTER_BODY_DOWN), 1,
               wxEXPAND);
    pSizer->Add(lists, 1, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(2 * kGap));

    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    auto* standard = new wxButton(this, ID_EXPORTER_DEFAULT, _("Default"));
    standard->SetToolTip(_("Both lists back to their defaults"));
    standard->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnBtnDefault(); });
    auto* copy = new wxButton(this, ID_EXPORTER_COPY, _("Copy From Loader"));
    copy->SetToolTip(_("Both lists as the data loader has them; the data type stays"));
    copy->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnButtonCopyFromLoader(); });
    buttons->Add(standard, 1, wxRIGHT, FromDIP(2 * kGap));
    buttons->Add(copy, 1);
    pSizer->Add(buttons, 0, wxEXPAND | wxALL, FromDIP(2 * kGap));
    for (wxWindow* child : GetChildren())
        if (child != mpCPanel) mVpLocked.push_back(child);
}

void DataExporterGUI_cls::MakeBottom(wxSizer* pSizer) {
    auto* bottom = new wxBoxSizer(wxHORIZONTAL);
    mpCButtonExport = new wxButton(this, ID_EXPORTER_EXPORT, _("Export Data"));
    mpCButtonExport->SetToolTip(_("Play the work area once and write each frame as view 0 has it, thinned "
                                  "out by \"Downsize\" (Enter)"));
    mpCButtonExport->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnButtonExport(); });
    // One width for both labels.
    wxSize size = mpCButtonExport->GetBestSize();
    size.x += GetTextExtent(_("Abort Export")).x - GetTextExtent(_("Export Data")).x;
    mpCButtonExport->SetMinSize(wxSize(std::max(size.x, mpCButtonExport->GetBestSize().x), size.y));
    mpCProgress = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                   wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
    bottom->Add(mpCButtonExport, 0, wxRIGHT, FromDIP(2 * kGap));
    bottom->Add(mpCProgress, 1, wxALIGN_CENTRE_VERTICAL);
    pSizer->Add(bottom, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(2 * kGap));
}

void DataExporterGUI_cls::UpdateValues() {
    ShowChangedGrammer();
    mpCPanel->UpdateValues();
    ShowRun();
    if (!IsShown()) mpCButtonExport->SetFocus(); // about to open: Enter exports
}

void DataExporterGUI_cls::ShowRun() {
    const wxString text = mpCExporter->GetRunText();
    if (mpCProgress->GetLabelText() != text) {
        mpCProgress->SetLabelText(text);
        mpCProgress->SetToolTip(text); // a path may be longer than the window
    }
    const bool bRun = mpCExporter->mbExporting;
    if (bRun == mbShownRun) return;
    mbShownRun = bRun;
    mpCButtonExport->SetLabel(bRun ? _("Abort Export") : _("Export Data"));
    mpCButtonExport->SetBackgroundColour(bRun ? wxColour("RED") : wxNullColour);
    mpCButtonExport->SetForegroundColour(bRun ? wxColour("WHITE") : wxNullColour);
    for (wxWindow* window : mVpLocked)
        window->Enable(!bRun);
}

// Each edit of a list is in the grammar at once, as a step of the undo list.
void DataExporterGUI_cls::OnListsEdited() {
    const std::vector<int> head = GetVGrammer(mpCListHead);
    const std::vector<int> body = GetVGrammer(mpCListBody);
    if (head == mVShownHead && body == mVShownBody) return;
    const auto set = [pExporter = mpCExporter](std::vector<int> newHead, std::vector<int> newBody) {
        return new CommandCall_cls(
            [pExporter, newHead, newBody] {
                pExporter->SetHeaderGrammer(newHead);
                pExporter->SetBodyGrammer(newBody);
            },
            UPDATE_EXPORTER);
    };
    GCUndoList.PushNewCommand(set(head, body), set(mVShownHead, mVShownBody));
    mVShownHead = head;
    mVShownBody = body;
    GCUndoList.ExecCurrent();
}

void DataExporterGUI_cls::OnBtnDefault() { SetToDefault(this, mpCListHead, mpCListBody); }

void DataExporterGUI_cls::OnButtonCopyFromLoader() {
    mpCExporter->CopyFromLoader();
    UpdateList(mpCListHead, mpCExporter->mCItemHead);
    UpdateList(mpCListBody, mpCExporter->mCItemBody);
    OnListsEdited();
}

void DataExporterGUI_cls::SetPath(const wxString& path) {
    wxString* pValue = &mpCExporter->mCLastSavedFile.mStrValue;
    if (path == *pValue) return;
    GCUndoList.PushNewCommand(new CommandSetValue_cls(pValue, path, UPDATE_EXPORTER),
                              new CommandSetValue_cls(pValue, *pValue, UPDATE_EXPORTER));
    GCUndoList.ExecCurrent();
    mpCPanel->UpdateValues();
}

bool DataExporterGUI_cls::ChooseFile() {
    wxFileDialogEX local(this);
    wxFileDialogEX* dialog = GpCFileDialog ? GpCFileDialog : &local;
    const wxString last = mpCExporter->mCLastSavedFile.mStrValue;
    const wxFileName name(IsNone(last) ? wxString() : last);
    dialog->SetParams(_("Select filename to export data"), name.GetPath(), name.GetFullName(),
                      "data(*.*)|*.*", wxFD_SAVE);
    if (dialog->ShowModal() != wxID_OK) return false;
    SetPath(dialog->GetPath());
    return true;
}

void DataExporterGUI_cls::OnButtonReference() { ChooseFile(); }

// What was typed becomes the pattern of the names, asking where all files would bear one name.
bool DataExporterGUI_cls::PrepareNames() {
    DataExporter_cls& exporter = *mpCExporter;
    if (IsNone(exporter.mCLastSavedFile.mStrValue) && !ChooseFile()) return false;
    const wxString typed = exporter.mCLastSavedFile.mStrValue;
    const bool bSequence = exporter.AdoptTypedPath();
    if (!bSequence) {
        if (!MsgBoxYesno(_("Not Sequence. Append 4-digit tag ?"), _("Sequence Format error"))) {
            exporter.mCLastSavedFile.mStrValue = typed;
            return false;
        }
        exporter.AppendSequenceTag();
    }
    const wxString adopted = exporter.mCLastSavedFile.mStrValue;
    exporter.mCLastSavedFile.mStrValue = typed; // for undo
    SetPath(adopted);
    return true;
}

void DataExporterGUI_cls::OnButtonExport() {
    if (mpCExporter->mbExporting) {
        AbortExport();
        return;
    }
    if (!PrepareNames()) return;
    CopyListsTo(mpCExporter);
    mpCExporter->mbExporting = true;
    ShowRun();
    PostMenuEvent(ID_EXPORT_DATA_BEGIN);
}

void DataExporterGUI_cls::AbortExport() {
    PostMenuEvent(ID_PLAY_STOP);
    mpCExporter->ExportFinish();
}
