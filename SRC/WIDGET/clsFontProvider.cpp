#include "WIDGET/clsFontProvider.h"

#include <wx/settings.h>

wxFont FontProvider_cls::msFont[FONT_NUMBER];

void FontProvider_cls::InitializeStatic() {
    const wxFont base = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
    msFont[FONT_LABEL] = base;
    msFont[FONT_CAPTION] = base.Bold();
    msFont[FONT_SMALL] = base.Scaled(0.8f);
    msFont[FONT_FIXED] = wxFont(wxFontInfo(base.GetPointSize()).Family(wxFONTFAMILY_TELETYPE));
    msFont[FONT_TAG] = base.Scaled(1.2f);
}

const wxFont& FontProvider_cls::GetFont(int index) {
    if (!msFont[FONT_LABEL].IsOk()) InitializeStatic();
    return msFont[index >= 0 && index < FONT_NUMBER ? index : FONT_LABEL];
}
