// Files dropped on the main window: a project opens, any one file of a sequence, or a mesh.
#pragma once

#include <wx/dnd.h>

class FrameMain_cls;

class DropTarget_cls : public wxFileDropTarget {
public:
    explicit DropTarget_cls(FrameMain_cls* pFrame) : mpCFrame(pFrame) {}
    bool OnDropFiles(wxCoord x, wxCoord y, const wxArrayString& paths) override;

private:
    FrameMain_cls* mpCFrame;
};
