// The row of one group, and the rows of its curves; light objects that the windows of the time line draw.
#pragma once

#include <memory>
#include <vector>

#include "WIDGET/TIMELINE/KeyEdits.h"
#include "WIDGET/TIMELINE/clsParamTL.h"
#include "WIDGET/TIMELINE/clsParametersPanel.h"

class ParamGroupGUI_cls {
public:
    explicit ParamGroupGUI_cls(ParamGroup_cls* pGroup);
    ~ParamGroupGUI_cls();
    ParamGroupGUI_cls(const ParamGroupGUI_cls&) = delete;
    ParamGroupGUI_cls& operator=(const ParamGroupGUI_cls&) = delete;

    ParamGroup_cls* GetPCGroup() const { return mpCGroup; }
    int GetDimension() const { return int(mVpCPanels.size()); }
    ParametersPanel_cls& GetPanel(int dim) const { return *mVpCPanels[size_t(dim)]; }
    Parameters_cls* GetPCParam(int dim) const { return mVpCPanels[size_t(dim)]->GetPCParam(); }
    /// False when the group's owner deleted it without telling.
    bool IsAlive() const;
    /// Of the group and its children.
    Curves GetCurves() const { return CurvesOf(*mpCGroup); }

    void Draw(wxDC& dc, const TreeLayout& layout, const TimelineLook& look, int y, int depth,
              bool bHover) const;
    /// As KeyState: key when every animated curve has one here, constant when none is animated.
    int GetState() const;

    bool mbSelected = false; ///< in the tree

private:
    ParamGroup_cls* mpCGroup;
    std::vector<std::unique_ptr<ParametersPanel_cls>> mVpCPanels;
    std::vector<std::unique_ptr<ParamTL_cls>> mVpCStrips;
};
