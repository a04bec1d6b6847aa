// What the groups of POV-Ray settings have in common: items that know their keys.
#pragma once

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class PovSettings_cls {
public:
    PovSettings_cls(const PovSettings_cls&) = delete;
    PovSettings_cls& operator=(const PovSettings_cls&) = delete;

    virtual void SetToDefault() = 0;
    wxString Serialize() { return mConfList.SerializeAll(); }
    /// Files may say anything: what is out of range is brought into it.
    void ReadStrLine(const wxString& line) {
        if (mConfList.ReadStrLineAll(line)) Repair();
    }

protected:
    PovSettings_cls() = default;
    ~PovSettings_cls() = default;
    virtual void Repair() {}

    ConfItemList_cls mConfList;
};
