#include "FILTER/PANEL/FilterGUIs.h"

#include <wx/filedlg.h>
#include <wx/filename.h>

#include "COMMON/FramePath.h"
#include "COMMON/Globals.h"
#include "COMMON/UpdateBits.h"
#include "FILTER/FilterKinds.h"
#include "FILTER/PANEL/clsFilterBooleanGUI.h"
#include "FILTER/PANEL/clsFilterCopyGUI.h"
#include "FILTER/PANEL/clsFilterDataBoxGUI.h"
#include "FILTER/PANEL/clsFilterFilteringGUI.h"
#include "FILTER/PANEL/clsFilterFogGUI.h"
#include "FILTER/PANEL/clsFilterGridGUI.h"
#include "FILTER/PANEL/clsFilterObjectGUI.h"
#include "FILTER/PANEL/clsFilterStickGUI.h"
#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"
#include "PARAM/clsCommandSetValue.h"
#include "WIDGET/clsFileDialogEX.h"
#include "WIDGET/clsMultiInputPanel.h"

namespace {
constexpr int kShortLabel = 10; // three numbers with their diamonds need the room
} // namespace

std::unique_ptr<FilterGUI_cls> MakeFilterGUI(FilterBase_cls& filter, FilterPanelPain_cls& pane) {
    switch (filter.GetType()) {
    case FILTER_BOOLEAN:
        return std::make_unique<FilterBooleanGUI_cls>(filter, pane);
    case FILTER_DATABOX:
        return std::make_unique<FilterDataBoxGUI_cls>(filter, pane);
    case FILTER_OBJECT:
        return std::make_unique<FilterObjectGUI_cls>(filter, pane);
    case FILTER_GRID:
        return std::make_unique<FilterGridGUI_cls>(filter, pane);
    case FILTER_FOG:
        return std::make_unique<FilterFogGUI_cls>(filter, pane);
    case FILTER_FILTERING:
        return std::make_unique<FilterFilteringGUI_cls>(filter, pane);
    case FILTER_COPY:
        return std::make_unique<FilterCopyGUI_cls>(filter, pane);
    default:
        return std::make_unique<FilterStickGUI_cls>(filter, pane);
    }
}

void SetMNumBasic(MultiInputPanel_cls& panel, FilterData_cls& data) {
    panel.BeginColumns(kShortLabel);
    const NumSpec length = RangeSpec(-1e30, 1e30, 0.1);
    panel.AddParam(_("T"), data.mpCTranslate, length, _("Translate: x, y and z in units of the data"));
    panel.AddParam(_("R"), data.mpCRotate, RangeSpec(-1e30, 1e30, 1.0),
                   _("Rotate: about x, y and z in degrees"));
    panel.AddParam(_("S"), data.mpCScale, length, _("Scale: along x, y and z"));
}

void AskForPath(MultiInputPanel_cls& panel, int row, const FilterData_cls& data, wxString* pPath,
                const wxString& title, const wxString& wildcard) {
    wxFileDialogEX local(wxGetTopLevelParent(&panel));
    wxFileDialogEX* dialog = GpCFileDialog ? GpCFileDialog : &local;
    const wxFileName name(FramePath_cls(*pPath, data.mStrFolder).GetFile(data.mLastFrame));
    const bool bNone = *pPath == kNoPath; // nothing was chosen so far
    dialog->SetParams(title, bNone ? wxString() : name.GetPath(), bNone ? wxString() : name.GetFullName(),
                      wildcard, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog->ShowModal() != wxID_OK) return;
    PushSetValue(pPath, dialog->GetPath(), int(UPDATE_FILTER_REFRESH | UPDATE_GL));
    panel.UpdateValues(row);
}
