// The row of one curve in the tree: time dependence, name, value, and the three of the keys.
#pragma once

#include "WIDGET/TIMELINE/TimelineLook.h"
#include "WIDGET/TIMELINE/TreeLayout.h"

class Parameters_cls;
class wxDC;
class wxString;

class ParametersPanel_cls {
public:
    explicit ParametersPanel_cls(Parameters_cls* pCurve) : mpCParam(pCurve) {}

    Parameters_cls* GetPCParam() const { return mpCParam; }
    /// `bHover`: the mouse is over the row.
    void Draw(wxDC& dc, const TreeLayout& layout, const TimelineLook& look, int y, int depth,
              bool bHover) const;
    /// The value as the row shows it.
    static wxString GetValueText(double value);

    bool mbSelected = false; ///< in the tree

private:
    Parameters_cls* mpCParam;
};

/// The three of the keys, for a curve or a group; `state` as KeyState of KeyMark.h.
void DrawKeyButtons(wxDC& dc, const TreeLayout& layout, const TimelineLook& look, int y, int state,
                    bool bHover);
void DrawRowIcon(wxDC& dc, const TimelineLook& look, TimelineIcon icon, const wxRect& cell, bool bFaint);
/// Text cut at the end of its cell.
void DrawRowText(wxDC& dc, const wxString& text, const wxRect& cell, bool bRight);
