#include "APP/clsFilterMenu.h"

#include <wx/menu.h>

#include "APP/BindMenu.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "FILTER/FilterKinds.h"
#include "FILTER/PANEL/clsFilterPanelPain.h"
#include "FILTER/PANEL/clsTexPropertyCtrl.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterObject.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "WIDGET/PopUp.h"

namespace {

struct Entry_st {
    int mId;
    FilterType mType;
};

constexpr Entry_st kAdd[] = {
    {ID_FILTER_BOOLEAN, FILTER_BOOLEAN}, {ID_FILTER_FILTERING, FILTER_FILTERING},
    {ID_FILTER_DATABOX, FILTER_DATABOX}, {ID_FILTER_OBJECT, FILTER_OBJECT},
    {ID_FILTER_STICK, FILTER_STICK},     {ID_FILTER_GRID, FILTER_GRID},
    {ID_FILTER_COPYBOX, FILTER_COPY},    {ID_FILTER_FOG, FILTER_FOG},
};

constexpr int kAddMenus[kFilterLists] = {ID_FILTER_BOOL_MENU, ID_FILTER_OBJECT_MENU, ID_FILTER_WORLD_MENU};

void AppendCopy(wxMenu& menu, const wxMenuItem* pItem) {
    if (pItem) menu.Append(pItem->GetId(), pItem->GetItemLabel());
}

} // namespace

FilterMenu_cls::FilterMenu_cls(FrameMain_cls& frame)
    : mFrame(frame), mHub(*frame.GetPCMain()), mMidPaint(frame) {
    BindMenu(mFrame, this, ID_FILTER_POPUP, &FilterMenu_cls::OnMenuFilterPopup);
    BindMenu(mFrame, this, ID_FILTER_REFRESH, &FilterMenu_cls::OnMenuFilterRefresh);
    BindMenu(mFrame, this, ID_FILTER_MANIPULATE, &FilterMenu_cls::OnMenuFilterManipulate);
    BindMenu(mFrame, this, ID_FILTER_RESIZE, &FilterMenu_cls::OnMenuFilterResize);
    for (const Entry_st& entry : kAdd)
        BindMenu(mFrame, this, entry.mId, &FilterMenu_cls::OnMenuFilterAdd);
    BindMenu(mFrame, this, ID_FILTER_UP, &FilterMenu_cls::OnMenuFilterUp);
    BindMenu(mFrame, this, ID_FILTER_DOWN, &FilterMenu_cls::OnMenuFilterDown);
    BindMenu(mFrame, this, ID_FILTER_DELETE, &FilterMenu_cls::OnMenuFilterDelete);
    BindMenu(mFrame, this, ID_TEX_PROPERTY, &FilterMenu_cls::OnMenuTexProperty);
    BindMenu(mFrame, this, ID_REFRESH_TEXTURE, &FilterMenu_cls::OnMenuRefreshTexture);
    for (const int id : {ID_FILTER_UP, ID_FILTER_DOWN, ID_FILTER_DELETE})
        mFrame.Bind(
            wxEVT_UPDATE_UI,
            [this](wxUpdateUIEvent& event) { event.Enable(mHub.mpCFilters->GetPCSelected() != nullptr); },
            id);
}

// The same entries as in the menu bar.
void FilterMenu_cls::OnMenuFilterPopup(wxCommandEvent& event) {
    const int list = event.GetInt();
    if (list < 0 || list >= kFilterLists) return;
    const wxMenuItem* sub = mFrame.GetMenuBar()->FindItem(kAddMenus[list]);
    wxMenu menu;
    for (const wxMenuItem* item : sub->GetSubMenu()->GetMenuItems())
        AppendCopy(menu, item);
    PopUpMenu(&mFrame, menu);
}

void FilterMenu_cls::OnMenuFilterManipulate(wxCommandEvent&) {
    wxMenu menu;
    AppendCopy(menu, mFrame.GetMenuBar()->FindItem(ID_FILTER_UP));
    AppendCopy(menu, mFrame.GetMenuBar()->FindItem(ID_FILTER_DOWN));
    menu.AppendSeparator();
    AppendCopy(menu, mFrame.GetMenuBar()->FindItem(ID_FILTER_DELETE));
    PopUpMenu(&mFrame, menu);
}

void FilterMenu_cls::OnMenuFilterRefresh(wxCommandEvent&) {
    mHub.mpCFilters->Refresh();
    mFrame.GetPCTopHalf()->RefreshFilterNotes();
}

void FilterMenu_cls::OnMenuFilterResize(wxCommandEvent&) { mFrame.GetPCTopHalf()->LayOutFilters(); }

// A text that is being typed is taken before its field may go.
void FilterMenu_cls::FinishEdits() {
    wxWindow* focus = wxWindow::FindFocus();
    for (int list = 0; focus && list < kFilterLists; ++list)
        if (mFrame.GetPCTopHalf()->GetPCFilterPane(list)->IsDescendant(focus)) {
            wxFocusEvent leave(wxEVT_KILL_FOCUS, focus->GetId()); // the toolkit's own may come too late
            leave.SetEventObject(focus);
            focus->HandleWindowEvent(leave);
            mFrame.GetPCOutputCanvas()->SetFocus();
            break;
        }
    mHub.EndGestures();
}

void FilterMenu_cls::OnMenuFilterAdd(wxCommandEvent& event) {
    FinishEdits();
    for (const Entry_st& entry : kAdd) {
        if (entry.mId != event.GetId()) continue;
        const int index = GetFilterKind(entry.mType).mList;
        mHub.mpCFilters->Get(index).AddFilterCommand(entry.mType);
        ShowLastOf(index);
    }
}

void FilterMenu_cls::AddMesh(const wxString& path) {
    FinishEdits();
    const int index = GetFilterKind(FILTER_OBJECT).mList;
    mHub.mpCFilters->Get(index).AddFilterCommand(FILTER_OBJECT, [&path](FilterData_cls& data) {
        auto& object = static_cast<FilterObjectData_cls&>(data);
        object.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
        object.mCImportPath.mStrValue = path;
    });
    ShowLastOf(index);
}

void FilterMenu_cls::ShowLastOf(int list) {
    mFrame.GetPCTopHalf()->ShowFilter(list, mHub.mpCFilters->Get(list).GetCount() - 1);
}

void FilterMenu_cls::OnMenuFilterUp(wxCommandEvent&) {
    FinishEdits();
    mHub.mpCFilters->MoveSelectedFilter(-1);
}

void FilterMenu_cls::OnMenuFilterDown(wxCommandEvent&) {
    FinishEdits();
    mHub.mpCFilters->MoveSelectedFilter(1);
}

void FilterMenu_cls::OnMenuFilterDelete(wxCommandEvent&) {
    FinishEdits();
    mHub.mpCFilters->DeleteSelectedFilter();
}

void FilterMenu_cls::OnMenuTexProperty(wxCommandEvent&) { mHub.mpCTexPropertyCtrl->OpenWindow(&mFrame); }

// The shader stands in the panels of objects, too.
void FilterMenu_cls::OnMenuRefreshTexture(wxCommandEvent&) {
    mHub.mpCTexPropertyCtrl->UpdateItems(true);
    mHub.mpCFilters->GetObject().UpdateValuesOnPanel();
}
