// The row of buttons under the menus: the data, the pictures and the dialogs, a click each.
#pragma once

#include <wx/string.h>

class FrameMain_cls;
class wxCommandEvent;

class ToolBar_cls {
public:
    /// Makes the row of `frame`, whose menus exist, and takes its entry "Tool Bar". A part of the frame.
    explicit ToolBar_cls(FrameMain_cls& frame);
    ToolBar_cls(const ToolBar_cls&) = delete;
    ToolBar_cls& operator=(const ToolBar_cls&) = delete;

    /// Is it shown? Of the configure file: "ToolBar=", 1 or 0.
    wxString Serialize() const;
    /// True: the line was of this.
    bool ReadStrLine(const wxString& line);

private:
    void Show(bool bShow);
    void OnMenuToolBar(wxCommandEvent& event);

    FrameMain_cls& mFrame;
};
