// Lets an object of any class take a command of the frame.
#pragma once

#include <wx/event.h>

/// `pOwner` must outlive the frame's last event.
template <class T>
void BindMenu(wxEvtHandler& frame, T* pOwner, int id, void (T::*pHandler)(wxCommandEvent&)) {
    frame.Bind(wxEVT_MENU, pHandler, pOwner, id);
}
