// What the store asks of whoever draws a sequence. The store works with this class itself as well: then
// nobody draws.
#pragma once

#include <functional>
#include <istream>
#include <memory>

#include <wx/string.h>

class PDataBlock_cls;
class PDataSequence_cls;

class SequenceDrawing_cls {
public:
    SequenceDrawing_cls() = default;
    virtual ~SequenceDrawing_cls() = default;
    SequenceDrawing_cls(const SequenceDrawing_cls&) = delete;
    SequenceDrawing_cls& operator=(const SequenceDrawing_cls&) = delete;

    /// Do colours wait for the slopes even at a snapshot's own time?
    virtual bool AreSlopesNeeded() const { return false; }
    /// Every how many particles one is drawn, and so exported; at least 1.
    virtual int GetThinning() const { return 1; }
    /// The block is about to give its arrays back: nothing of them may be held when this returns. What is
    /// being read just now is taken over, and the block's pointer to it nulled.
    virtual void LetGo(PDataBlock_cls&) {}
    /// The drawing state's lines of a project.
    virtual wxString Serialize() const { return wxString(); }
    /// Offered every line that isn't the store's own.
    virtual void ReadStrLine(std::wistream&, const wxString&) {}
};

/// Makes what draws a sequence; called once for each, which owns it. An empty one: nobody draws.
using MakeSequenceDrawing = std::function<std::unique_ptr<SequenceDrawing_cls>(PDataSequence_cls&)>;
