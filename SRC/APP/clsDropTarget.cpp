#include "APP/clsDropTarget.h"

#include "APP/clsFileMenu.h"
#include "APP/clsFileOpener.h"
#include "APP/clsFrameMain.h"

bool DropTarget_cls::OnDropFiles(wxCoord, wxCoord, const wxArrayString& paths) {
    if (paths.empty()) return false;
    const std::vector<wxString> first{paths[0]};
    // Behind the drop: a question inside it would hold up the program that the file comes from.
    mpCFrame->CallAfter(
        [frame = mpCFrame, first] { frame->GetPCFileMenu()->GetOpener().Open(first, false); });
    return true;
}
