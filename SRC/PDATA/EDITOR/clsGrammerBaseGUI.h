// Editing of a record grammar in two lists: columns, popup menus, moving, inserting and deleting rows. A
// row's item data is its code; the lists are the truth until they are copied into the grammar.
#pragma once

#include <functional>
#include <vector>

#include <wx/defs.h>
#include <wx/string.h>

class ConfItemINTARRAY_cls;
class GrammerBase_cls;
class wxListCtrl;
class wxMenu;
class wxSizer;
class wxWindow;

class GrammerBaseGUI_cls {
public:
    enum Which { HEAD = 0, BODY = 1 };

    explicit GrammerBaseGUI_cls(GrammerBase_cls* pGrammer);
    virtual ~GrammerBaseGUI_cls();
    GrammerBaseGUI_cls(const GrammerBaseGUI_cls&) = delete;
    GrammerBaseGUI_cls& operator=(const GrammerBaseGUI_cls&) = delete;

    /// Build the two popup menus.
    void SetMenu();
    /// The submenu "InsertItem" offers what may still come into the list.
    void UpdateMenuHead();
    void UpdateMenuBody();
    void SetColumn(wxListCtrl* pList);
    /// Insert a row before `position` (-1: at the end). False, with a message, when the list is full.
    bool AddListItem(wxListCtrl* pList, int position, int code, int which);
    /// Insert before the focused row, or at the end.
    bool InsertListItem(wxListCtrl* pList, int code);
    void DeleteSelectedItem(wxListCtrl* pList);
    /// Renumber; dummies in grey.
    void UpdateIndexAndColor(wxListCtrl* pList);
    /// Rebuild a list from codes.
    void UpdateList(wxListCtrl* pList, ConfItemINTARRAY_cls& codes);
    /// After a question, both lists and the grammar become the default.
    void SetToDefault(wxWindow* pWindow, wxListCtrl* pHead, wxListCtrl* pBody);
    /// Exchange two rows; nothing happens when one doesn't exist.
    void SwapList(wxListCtrl* pList, int a, int b);
    /// Move the focused row; the focus goes with it.
    void MoveFocused(wxListCtrl* pList, int direction);
    /// The codes, top to bottom.
    std::vector<int> GetVGrammer(wxListCtrl* pList) const;
    /// Names of items in words, separated by commas.
    wxString Describe(Which which, const std::vector<int>& codes) const;
    /// The data type changed: copy both lists to the grammar and redraw their columns.
    void OnHookCombobox();
    /// Both lists into `pTarget`.
    void CopyListsTo(GrammerBase_cls* pTarget) const;

    GrammerBase_cls* mpCGrammer; ///< the edited one
    wxListCtrl* mpCListHead = nullptr;
    wxListCtrl* mpCListBody = nullptr;

protected:
    /// Make a list for `which` with its keys and mouse.
    wxListCtrl* MakeList(wxWindow* pParent, Which which);
    /// Label, list and the buttons "Up" and "Down" with these ids.
    wxSizer* MakeListColumn(wxWindow* pParent, Which which, const wxString& label, int idUp = wxID_ANY,
                            int idDown = wxID_ANY);
    void ShowPopup(wxListCtrl* pList);
    /// Fill both lists anew where the grammar was changed elsewhere; what the user edited in them stays.
    void ShowChangedGrammer();
    virtual void OnListsEdited() {}

    wxListCtrl* mpCActive = nullptr;
    std::vector<int> mVShownHead; ///< the grammar that the lists were last filled from
    std::vector<int> mVShownBody;

private:
    int WhichOf(wxListCtrl* pList) const;
    void UpdateInsertMenu(Which which);
    void SetRowText(wxListCtrl* pList, int row, int code);
    void OnMenu(wxListCtrl* pList, int id);

    int mShownType = -1;
    wxMenu* mpCMenu[2] = {nullptr, nullptr};
    wxMenu* mpCMenuInsert[2] = {nullptr, nullptr};
};
