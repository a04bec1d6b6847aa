// What is written on top of the picture: time and colour legends. These are the settings.
#pragma once

#include <wx/font.h>
#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class OverlayGUI_cls;
class wxWindow;

class Overlay_cls {
public:
    enum Pos { TOP_LEFT = 0, TOP_RIGHT, BTM_LEFT, BTM_RIGHT, DO_NOT_SHOW };
    static constexpr int kLegends = 4;    ///< one an attribute
    static constexpr int kModernFont = 5; ///< the last style that a chosen font leaves alone
    static constexpr int kCustomFont = 7; ///< entry "Custom" of the styles

    Overlay_cls();
    Overlay_cls(const Overlay_cls&) = delete;
    Overlay_cls& operator=(const Overlay_cls&) = delete;

    /// The font of the time label; needs the display.
    wxFont GetTimeFont() const;
    /// Ask for a face and size; one step of the undo list.
    void SetCustomFont(wxWindow* pParent);
    wxWindow* InstantiateGUI(wxWindow* pParent);
    void ReadStrLine(const wxString& line) { mConfList.ReadStrLineAll(line); }
    wxString Serialize() { return mConfList.SerializeAll(); }

    OverlayGUI_cls* mpCGUI = nullptr; ///< owned by its notebook
    ConfItemList_cls mConfList;
    ConfItemINT_cls mTimePos; ///< a Pos
    ConfItemINT_cls mTimeFontFamily;
    ConfItemINT_cls mTimeFontPoint;
    ConfItemSTR_cls mTimeCustomFont; ///< name of a face
    ConfItemSTR_cls mTimeTag;        ///< ahead of the number
    ConfItemBOOLARRAY_cls mShowLegend;
    ConfItemINT_cls mLegendPos; ///< a Pos
    ConfItemBOOL_cls mLegendIgnoreAlpha;
    ConfItemBOOL_cls mLegendIgnoreTics;
};
