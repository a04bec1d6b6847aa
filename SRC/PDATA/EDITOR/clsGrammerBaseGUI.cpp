#include "PDATA/EDITOR/clsGrammerBaseGUI.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/listctrl.h>
#include <wx/menu.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "COMMON/MsgBox.h"
#include "PDATA/clsGrammerBase.h"
#include "WIDGET/PopUp.h"
#include "WIDGET/clsMyArtProvider.h"

namespace {

constexpr int kGap = 4; // the spacing unit
constexpr int kListWidth = 270;
constexpr int kListHeight = 188; // seven rows under the header

// The item with a code; null for a code that isn't known.
const GrammarItem_st* FindItem(int which, int code) {
    const bool bHead = which == GrammerBaseGUI_cls::HEAD;
    if (code < 0 || code >= (bHead ? kHeadCodes : kBodyCodes)) return nullptr;
    return &(bHead ? kHeadItems : kBodyItems)[code];
}

wxString NameOf(const GrammarItem_st* pItem, int code) {
    return pItem ? wxString(pItem->mName) : wxString::Format("? %d", code);
}

bool IsDummy(int which, int code) {
    return which == GrammerBaseGUI_cls::HEAD ? IsHeadDummy(code) : IsBodyDummy(code);
}

enum MenuId { ID_SWAP_UP = 7001, ID_SWAP_DOWN, ID_DELETE_ITEM, ID_INSERT_FIRST = 7010 };

long FocusedRow(wxListCtrl* pList) { return pList->GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_FOCUSED); }

void FocusRow(wxListCtrl* pList, long row) {
    constexpr long mask = wxLIST_STATE_FOCUSED | wxLIST_STATE_SELECTED;
    for (long i = 0; i < pList->GetItemCount(); ++i)
        pList->SetItemState(i, i == row ? mask : 0, mask);
    if (row >= 0 && row < pList->GetItemCount()) pList->EnsureVisible(row);
}

} // namespace

GrammerBaseGUI_cls::GrammerBaseGUI_cls(GrammerBase_cls* pGrammer) : mpCGrammer(pGrammer) {}

GrammerBaseGUI_cls::~GrammerBaseGUI_cls() {
    delete mpCMenu[HEAD];
    delete mpCMenu[BODY];
}

void GrammerBaseGUI_cls::SetMenu() {
    for (const Which which : {HEAD, BODY}) {
        delete mpCMenu[which];
        mpCMenu[which] = new wxMenu;
        mpCMenuInsert[which] = new wxMenu;
        mpCMenu[which]->Append(ID_SWAP_UP, _("Swap up"));
        mpCMenu[which]->Append(ID_SWAP_DOWN, _("Swap down"));
        mpCMenu[which]->Append(ID_DELETE_ITEM, _("Delete item"));
        mpCMenu[which]->AppendSubMenu(mpCMenuInsert[which], _("InsertItem"));
    }
}

void GrammerBaseGUI_cls::UpdateMenuHead() { UpdateInsertMenu(HEAD); }
void GrammerBaseGUI_cls::UpdateMenuBody() { UpdateInsertMenu(BODY); }

void GrammerBaseGUI_cls::UpdateInsertMenu(Which which) {
    wxMenu* menu = mpCMenuInsert[which];
    while (menu->GetMenuItemCount() > 0)
        menu->Destroy(menu->FindItemByPosition(0));
    const std::vector<int> present = GetVGrammer(which == HEAD ? mpCListHead : mpCListBody);
    const int codes = which == HEAD ? kHeadCodes : kBodyCodes;
    for (int code = 0; code < codes; ++code) {
        const bool bThere = std::find(present.begin(), present.end(), code) != present.end();
        if (IsDummy(which, code) || !bThere)
            menu->Append(ID_INSERT_FIRST + code, FindItem(which, code)->mInsert);
    }
}

void GrammerBaseGUI_cls::SetColumn(wxListCtrl* pList) {
    pList->AppendColumn("", wxLIST_FORMAT_RIGHT, pList->FromDIP(26));
    pList->AppendColumn(_("Data"), wxLIST_FORMAT_LEFT, pList->FromDIP(90));
    pList->AppendColumn(_("Type"), wxLIST_FORMAT_LEFT, pList->FromDIP(100));
    pList->AppendColumn(_("Byte"), wxLIST_FORMAT_LEFT, pList->FromDIP(50));
}

wxListCtrl* GrammerBaseGUI_cls::MakeList(wxWindow* pParent, Which which) {
    auto* list =
        new wxListCtrl(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLC_REPORT | wxLC_SINGLE_SEL);
    (which == HEAD ? mpCListHead : mpCListBody) = list;
    SetColumn(list);
    list->Bind(wxEVT_LIST_ITEM_SELECTED, [this, list](wxListEvent&) { mpCActive = list; });
    list->Bind(wxEVT_CONTEXT_MENU, [this, list](wxContextMenuEvent&) { ShowPopup(list); });
    list->Bind(wxEVT_LIST_KEY_DOWN, [this, list](wxListEvent& event) {
        if (event.GetKeyCode() == WXK_DELETE || event.GetKeyCode() == WXK_NUMPAD_DELETE)
            DeleteSelectedItem(list);
        else
            event.Skip();
    });
    list->Bind(
        wxEVT_MENU, [this, list](wxCommandEvent& event) { OnMenu(list, event.GetId()); }, ID_SWAP_UP,
        ID_INSERT_FIRST + kBodyCodes);
    return list;
}

wxSizer* GrammerBaseGUI_cls::MakeListColumn(wxWindow* pParent, Which which, const wxString& label, int idUp,
                                            int idDown) {
    const int gap = pParent->FromDIP(kGap);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(new wxStaticText(pParent, wxID_ANY, label), 0, wxBOTTOM, gap);
    wxListCtrl* list = MakeList(pParent, which);
    list->SetMinSize(pParent->FromDIP(wxSize(kListWidth, kListHeight)));
    list->SetToolTip(_("Right click: insert, move and delete items"));
    column->Add(list, 1, wxEXPAND);
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    for (const int direction : {-1, 1}) {
        auto* button =
            new wxButton(pParent, direction < 0 ? idUp : idDown, direction < 0 ? _("Up") : _("Down"));
        button->SetBitmap(MyArtProvider::GetIcon(direction < 0 ? "Up" : "Down"));
        button->SetToolTip(direction < 0 ? _("Move the item towards the start of the file")
                                         : _("Move the item towards the end of the file"));
        button->Bind(wxEVT_BUTTON,
                     [this, list, direction](wxCommandEvent&) { MoveFocused(list, direction); });
        buttons->Add(button, 1, direction > 0 ? wxLEFT : 0, gap);
    }
    column->Add(buttons, 0, wxEXPAND | wxTOP, gap);
    return column;
}

int GrammerBaseGUI_cls::WhichOf(wxListCtrl* pList) const { return pList == mpCListHead ? HEAD : BODY; }

void GrammerBaseGUI_cls::ShowPopup(wxListCtrl* pList) {
    mpCActive = pList;
    const int which = WhichOf(pList);
    if (which == HEAD)
        UpdateMenuHead();
    else
        UpdateMenuBody();
    const long row = FocusedRow(pList);
    mpCMenu[which]->Enable(ID_SWAP_UP, row > 0);
    mpCMenu[which]->Enable(ID_SWAP_DOWN, row >= 0 && row + 1 < pList->GetItemCount());
    mpCMenu[which]->Enable(ID_DELETE_ITEM, pList->GetSelectedItemCount() > 0);
    PopUpMenu(pList, *mpCMenu[which]);
}

void GrammerBaseGUI_cls::OnMenu(wxListCtrl* pList, int id) {
    switch (id) {
    case ID_SWAP_UP:
        MoveFocused(pList, -1);
        break;
    case ID_SWAP_DOWN:
        MoveFocused(pList, 1);
        break;
    case ID_DELETE_ITEM:
        DeleteSelectedItem(pList);
        break;
    default:
        InsertListItem(pList, id - ID_INSERT_FIRST);
    }
}

void GrammerBaseGUI_cls::SetRowText(wxListCtrl* pList, int row, int code) {
    const GrammarItem_st* pItem = FindItem(WhichOf(pList), code);
    const bool bSized = pItem && !mpCGrammer->IsText(); // text has no sizes
    pList->SetItem(row, 1, NameOf(pItem, code));
    pList->SetItem(row, 2, bSized ? wxString(pItem->mType) : wxString("-"));
    pList->SetItem(row, 3, bSized ? wxString::Format("%d", 4 * pItem->mWords) : wxString("-"));
    pList->SetItemData(row, code);
}

bool GrammerBaseGUI_cls::AddListItem(wxListCtrl* pList, int position, int code, int) {
    const int count = pList->GetItemCount();
    if (count >= GrammerBase_cls::kMaxItem) {
        MsgBox(
            wxString::Format(_("A list holds %d items at most. Delete one first, or use Dummy*3 and Dummy*10 "
                               "in place of single dummies."),
                             GrammerBase_cls::kMaxItem),
            _("Grammer Error"));
        return false;
    }
    const int row = position < 0 || position > count ? count : position;
    pList->InsertItem(row, "");
    SetRowText(pList, row, code);
    UpdateIndexAndColor(pList);
    return true;
}

bool GrammerBaseGUI_cls::InsertListItem(wxListCtrl* pList, int code) {
    const int row = static_cast<int>(FocusedRow(pList));
    if (!AddListItem(pList, row, code, WhichOf(pList))) return false;
    if (row >= 0) FocusRow(pList, row);
    OnListsEdited();
    return true;
}

void GrammerBaseGUI_cls::DeleteSelectedItem(wxListCtrl* pList) {
    long next = -1;
    for (long row = pList->GetItemCount() - 1; row >= 0; --row) {
        if (!pList->GetItemState(row, wxLIST_STATE_SELECTED)) continue;
        pList->DeleteItem(row);
        next = row;
    }
    if (next < 0) return;
    UpdateIndexAndColor(pList);
    if (pList->GetItemCount() > 0) FocusRow(pList, std::min<long>(next, pList->GetItemCount() - 1));
    OnListsEdited();
}

void GrammerBaseGUI_cls::UpdateIndexAndColor(wxListCtrl* pList) {
    const bool bDark = pList->GetBackgroundColour().GetLuminance() < 0.5;
    for (int row = 0; row < pList->GetItemCount(); ++row) {
        pList->SetItem(row, 0, wxString::Format("%d", row));
        const wxColour normal = bDark ? *wxWHITE : *wxBLACK;
        const wxColour dummy = bDark ? wxColour(128, 128, 128) : wxColour(160, 160, 160);
        pList->SetItemTextColour(
            row, IsDummy(WhichOf(pList), static_cast<int>(pList->GetItemData(row))) ? dummy : normal);
    }
}

void GrammerBaseGUI_cls::UpdateList(wxListCtrl* pList, ConfItemINTARRAY_cls& codes) {
    pList->Freeze();
    pList->DeleteAllItems();
    for (unsigned i = 0; i < codes.mCount; ++i)
        AddListItem(pList, -1, codes.mValue[i], WhichOf(pList));
    pList->Thaw();
}

void GrammerBaseGUI_cls::SetToDefault(wxWindow*, wxListCtrl* pHead, wxListCtrl* pBody) {
    if (!MsgBoxYesno(_("Set to default ?"), _("Inquery"))) return;
    mpCGrammer->SetHeaderGrammer(GrammerBase_cls::DefaultHead());
    mpCGrammer->SetBodyGrammer(GrammerBase_cls::DefaultBody());
    UpdateList(pHead, mpCGrammer->mCItemHead);
    UpdateList(pBody, mpCGrammer->mCItemBody);
    OnListsEdited();
}

void GrammerBaseGUI_cls::ShowChangedGrammer() {
    const std::vector<int> head = mpCGrammer->GetHeaderGrammer();
    const std::vector<int> body = mpCGrammer->GetBodyGrammer();
    if (head == mVShownHead && body == mVShownBody && mpCGrammer->mCItemDataType.mValue == mShownType) return;
    mVShownHead = head;
    mVShownBody = body;
    mShownType = mpCGrammer->mCItemDataType.mValue;
    UpdateList(mpCListHead, mpCGrammer->mCItemHead);
    UpdateList(mpCListBody, mpCGrammer->mCItemBody);
}

void GrammerBaseGUI_cls::SwapList(wxListCtrl* pList, int a, int b) {
    const int count = pList->GetItemCount();
    if (a < 0 || b < 0 || a >= count || b >= count || a == b) return;
    const int codeA = static_cast<int>(pList->GetItemData(a));
    const int codeB = static_cast<int>(pList->GetItemData(b));
    SetRowText(pList, a, codeB);
    SetRowText(pList, b, codeA);
    UpdateIndexAndColor(pList);
}

void GrammerBaseGUI_cls::MoveFocused(wxListCtrl* pList, int direction) {
    const int row = static_cast<int>(FocusedRow(pList));
    const int target = row + direction;
    if (row < 0 || target < 0 || target >= pList->GetItemCount()) return;
    SwapList(pList, row, target);
    FocusRow(pList, target);
    OnListsEdited();
}

std::vector<int> GrammerBaseGUI_cls::GetVGrammer(wxListCtrl* pList) const {
    std::vector<int> codes;
    for (int row = 0; row < pList->GetItemCount(); ++row)
        codes.push_back(static_cast<int>(pList->GetItemData(row)));
    return codes;
}

wxString GrammerBaseGUI_cls::Describe(Which which, const std::vector<int>& codes) const {
    wxString text;
    for (const int code : codes) {
        if (!text.empty()) text += ", ";
        text += NameOf(FindItem(which, code), code);
    }
    return text;
}

void GrammerBaseGUI_cls::CopyListsTo(GrammerBase_cls* pTarget) const {
    pTarget->SetHeaderGrammer(GetVGrammer(mpCListHead));
    pTarget->SetBodyGrammer(GetVGrammer(mpCListBody));
}

void GrammerBaseGUI_cls::OnHookCombobox() {
    CopyListsTo(mpCGrammer);
    UpdateList(mpCListHead, mpCGrammer->mCItemHead);
    UpdateList(mpCListBody, mpCGrammer->mCItemBody);
    OnListsEdited();
}
