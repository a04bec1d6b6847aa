// The row of texts at the foot of the main window.
#pragma once

#include <wx/statusbr.h>

/// Texts that change, many times a second while a film plays, are painted with all else by the window's next
/// frame; the toolkit's own bar paints the whole window at each. Who works on for long behind a text says
/// Update().
class StatusBar_cls : public wxStatusBar {
public:
    using wxStatusBar::wxStatusBar;

protected:
    void DoUpdateStatusText(int field) override {
        wxRect rect;
        if (GetFieldRect(field, rect)) Refresh(true, &rect);
    }
};
