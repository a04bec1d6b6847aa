// What stands in a project, block by block: one table for writing and for reading.
#pragma once

#include <istream>
#include <vector>

#include <wx/string.h>

class Main_cls;

/// A block of a project file. A block that isn't there yet has its place and no functions.
struct ProjectBlock_st {
    int mPlace;         ///< 1 the first in the file
    const char* mHolds; ///< what it holds or will hold
    bool mbConfigure;   ///< stands in the configure file too
    wxString (*mpWrite)(Main_cls& hub);
    /// Takes what it knows of a line, and where the line opens a block, reads on from the stream.
    void (*mpRead)(Main_cls& hub, std::wistream& stream, const wxString& line);
};

/// All blocks in the order in which they are written, and in which a line is offered to them.
const std::vector<ProjectBlock_st>& GetProjectBlocks();

/// The text of a project, or with `bFull` false the part of it that opens the configure file.
wxString WriteProjectBlocks(Main_cls& hub, bool bFull);
/// Offers a line to every block. Nobody stops the round: a line taken by one is shown to the rest.
void ReadProjectBlocks(Main_cls& hub, std::wistream& stream, const wxString& line);
