// What curves ask of the floors above them. The hub sets these at start; an empty one does nothing.
#pragma once

#include <functional>

#include <wx/string.h>

class ParamGroup_cls;
class ParamTL_cls;
class Parameters_cls;

struct ParamHooks_st {
    /// The living curve of this identifier, null when nobody knows it.
    std::function<Parameters_cls*(const wxString& id)> mFindParam;
    /// A key stands at this frame: mark its snapshot.
    std::function<void(int frame)> mMarkSnipping;
    /// The group's panels are stale.
    std::function<void(ParamGroup_cls*)> mGroupRefresh;
    /// The strip's check box of time dependence.
    std::function<void(ParamTL_cls*, bool bTimeDepend)> mStripTimeDepend;
    /// The strip's curve was read from a file.
    std::function<void(ParamTL_cls*)> mStripRead;
    /// Where copied text goes.
    std::function<void(const wxString& text)> mClipboard;
    /// The nearest key before (dir -1) or behind (1) a position, over the rows of the time lines; the
    /// position itself if there is none.
    std::function<double(double doubleIndex, int dir)> mNeighbourKey;
};

extern ParamHooks_st GParamHooks;
