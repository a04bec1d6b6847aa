// Draw options that apply to all particles.
#pragma once

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class DrawOptionGUI_cls;
class wxWindow;

/// Values of the items below, as files hold them.
enum SortOrder : unsigned { SORT_NONE = 0, SORT_FAR_FIRST = 1, SORT_NEAR_FIRST = 2 };
enum Classification : unsigned { CLASSIFY_NONE = 0, CLASSIFY_BY_TYPE = 1 }; ///< NONE: attribute 0 has all
enum ShadowType : unsigned { SHADOW_NONE = 0, SHADOW_VOLUMES = 1, SHADOW_SHOW_VOLUMES = 2 };

class DrawOption_cls {
public:
    DrawOption_cls();
    DrawOption_cls(const DrawOption_cls&) = delete;
    DrawOption_cls& operator=(const DrawOption_cls&) = delete;

    /// Every how many particles one is drawn; at least 1 whatever a file says.
    int GetDownSizing() const { return mDownSizing.mValue < 1 ? 1 : mDownSizing.mValue; }
    /// Does a particle's type pick its attribute?
    bool IsClassified() const { return mClassify.mValue != CLASSIFY_NONE; }
    wxWindow* InstantiateGUI(wxWindow* pParent);
    void ReadStrLine(const wxString& line) { mConfList.ReadStrLineAll(line); }
    wxString Serialize() { return mConfList.SerializeAll(); }

    DrawOptionGUI_cls* mpCGUI = nullptr; ///< owned by its notebook
    ConfItemList_cls mConfList;
    ConfItemINT_cls mDownSizing;
    ConfItemUINT_cls mSortOrder; ///< a SortOrder
    ConfItemUINT_cls mClassify;  ///< a Classification
    ConfItemUINT_cls mShadow;    ///< a ShadowType
};
