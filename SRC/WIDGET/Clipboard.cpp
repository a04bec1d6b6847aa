#include "WIDGET/Clipboard.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>

void PutOnClipboard(const wxString& text) {
    const wxClipboardLocker locker;
    if (!locker) return;
    wxTheClipboard->SetData(new wxTextDataObject(text));
    wxTheClipboard->Flush();
}
