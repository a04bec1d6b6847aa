// Draw options that apply to all particles.
#pragma once

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class DrawOptionGUI_cls;
class wxWindow;

class DrawOption_cls {
public:
    DrawOption_cls();
    DrawOption_cls(const DrawOption_cls&) = delete;
    DrawOption_cls& operator=(const DrawOption_cls&) = delete;

    /// Every how many particles one is drawn; at least 1 whatever a file says.
    int GetDownSizing() const { return mDownSizing.mValue < 1 ? 1 : mDownSizing.mValue; }
    wxWindow* InstantiateGUI(wxWindow* pParent);
    void ReadStrLine(const wxString& line) { mConfList.ReadStrLineAll(line); }
    wxString Serialize() { return mConfList.SerializeAll(); }

    DrawOptionGUI_cls* mpCGUI = nullptr; ///< owned by its notebook
    ConfItemList_cls mConfList;
    ConfItemINT_cls mDownSizing;
    ConfItemUINT_cls mSortOrder; ///< 0 none, 1 far to near, 2 near to far
    ConfItemUINT_cls mClassify;  ///< 0 only attribute 0 counts, 1 a particle's type picks its attribute
    ConfItemUINT_cls mShadow;    ///< 0 none, 1 shadow volumes, 2 show the volumes
};
