#include "APP/clsDropTarget.h"

#include "APP/ForeignFile.h"
#include "APP/clsFileMenu.h"
#include "APP/clsFileOpener.h"
#include "APP/clsFrameMain.h"

bool DropTarget_cls::OnDropFiles(wxCoord, wxCoord, const wxArrayString& paths) {
    if (paths.empty()) return false;
    // The first one, but files of one import come together.
    std::vector<wxString> first{paths[0]};
    if (GetForeignKind(paths[0]) != ForeignKind::None) first.assign(paths.begin(), paths.end());
    // Behind the drop: a question inside it would hold up the program that the file comes from.
    mpCFrame->CallAfter(
        [frame = mpCFrame, first] { frame->GetPCFileMenu()->GetOpener().Open(first, false); });
    return true;
}
