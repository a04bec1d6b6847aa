#include "WIDGET/TIMELINE/clsParamGroupGUI.h"

#include <algorithm>

#include <wx/dc.h>

#include "PARAM/clsParamGroup.h"
#include "WIDGET/KeyMark.h"

ParamGroupGUI_cls::ParamGroupGUI_cls(ParamGroup_cls* pGroup) : mpCGroup(pGroup) {
    pGroup->mVpCPanels.clear();
    for (Parameters_cls& param : pGroup->mVParams) {
        mVpCPanels.push_back(std::make_unique<ParametersPanel_cls>(&param));
        mVpCStrips.push_back(std::make_unique<ParamTL_cls>(&param));
        pGroup->mVpCPanels.push_back(mVpCPanels.back().get());
    }
}

ParamGroupGUI_cls::~ParamGroupGUI_cls() {
    // A folder has no curve that could tell whether it still lives; its fields are nobody's use then.
    if (GetDimension() == 0 || !IsAlive()) return;
    mpCGroup->mVpCPanels.clear();
    mpCGroup->mpCParamGUICtrl = nullptr;
}

bool ParamGroupGUI_cls::IsAlive() const {
    return GetDimension() == 0 || Parameters_cls::IsAlive(GetPCParam(0));
}

int ParamGroupGUI_cls::GetState() const {
    bool bAnimated = false;
    bool bKeys = true;
    for (const Parameters_cls* curve : GetCurves()) {
        if (!IsAnimated(*curve)) continue;
        bAnimated = true;
        bKeys = bKeys && KeyAt(*curve, Parameters_cls::msCurrentDoubleIndex) >= 0;
    }
    if (!bAnimated) return int(KeyState::CONSTANT);
    return int(bKeys ? KeyState::KEY : KeyState::ANIMATED);
}

void ParamGroupGUI_cls::Draw(wxDC& dc, const TreeLayout& layout, const TimelineLook& look, int y, int depth,
                             bool bHover) const {
    DrawRowIcon(dc, look, mpCGroup->mbOpen ? TimelineIcon::OPEN : TimelineIcon::CLOSED,
                layout.GetRect(TreeZone::FOLD, y, depth), false);
    dc.SetTextForeground(look.mText);
    const bool bLink = GetDimension() > 1 && (bHover || !mpCGroup->mbLinked);
    const bool bShy = bHover || mpCGroup->mbShy;
    const TreeZone next = bLink ? TreeZone::LINK : bShy ? TreeZone::SHY : TreeZone::PREVIOUS;
    wxRect name = layout.GetRect(TreeZone::NAME, y, depth);
    name.SetRight(layout.GetRect(next, y, depth).x - layout.mPad);
    DrawRowText(dc, mpCGroup->mID, name, false); // several filters have groups of one name
    if (bLink)
        DrawRowIcon(dc, look, mpCGroup->mbLinked ? TimelineIcon::LINKED : TimelineIcon::UNLINKED,
                    layout.GetRect(TreeZone::LINK, y, depth), !bHover);
    if (bShy)
        DrawRowIcon(dc, look, TimelineIcon::SHY, layout.GetRect(TreeZone::SHY, y, depth), !mpCGroup->mbShy);
    DrawKeyButtons(dc, layout, look, y, GetState(), bHover);
}
