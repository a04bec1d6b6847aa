#include "APP/clsDropTarget.h"

#include <wx/filename.h>

#include "APP/clsFileMenu.h"
#include "APP/clsFrameMain.h"

bool DropTarget_cls::OnDropFiles(wxCoord, wxCoord, const wxArrayString& paths) {
    if (paths.empty()) return false;
    const wxString path = paths[0];
    // Behind the drop: a question inside it would hold up the program that the file comes from.
    mpCFrame->CallAfter([frame = mpCFrame, path] { frame->GetPCFileMenu()->OpenDroppedFile(path); });
    return true;
}
