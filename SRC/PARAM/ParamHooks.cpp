#include "PARAM/ParamHooks.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>

namespace {

void PutOnClipboard(const wxString& text) {
    const wxClipboardLocker locker;
    if (!locker) return;
    wxTheClipboard->SetData(new wxTextDataObject(text));
    wxTheClipboard->Flush(); // what was copied survives the program
}

} // namespace

ParamHooks_st GParamHooks = {nullptr, nullptr, nullptr,        nullptr, nullptr,
                             nullptr, nullptr, PutOnClipboard, nullptr};
