// Fonts by number, for labels and for tags in the views.
#pragma once

#include <wx/font.h>

class FontProvider_cls {
public:
    enum FontIndex { FONT_LABEL = 0, FONT_CAPTION, FONT_SMALL, FONT_FIXED, FONT_TAG, FONT_NUMBER };

    /// Make the fonts from the system's; needs the display.
    static void InitializeStatic();
    /// A font by index; an index out of range gives that of labels.
    static const wxFont& GetFont(int index);

private:
    static wxFont msFont[FONT_NUMBER];
};
