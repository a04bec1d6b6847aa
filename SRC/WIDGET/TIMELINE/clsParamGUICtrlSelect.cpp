// Selecting rows of the tree, and scene objects with them.
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"

#include <algorithm>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsParameters.h"
#include "SCENE/clsSceneObj.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"

namespace {

SceneObj_cls* ObjectOf(const TimelineRow& row) { return row.mpCGroup->GetPCGroup()->mpCSceneObj; }

} // namespace

bool ParamGUICtrl_cls::IsRowSelected(int row) const {
    const TimelineRow& one = mVRows[size_t(row)];
    return one.mDim < 0 ? one.mpCGroup->mbSelected : one.mpCGroup->GetPanel(one.mDim).mbSelected;
}

void ParamGUICtrl_cls::SetRowSelected(int row, bool bSelected) {
    const TimelineRow& one = mVRows[size_t(row)];
    if (one.mDim < 0)
        one.mpCGroup->mbSelected = bSelected;
    else
        one.mpCGroup->GetPanel(one.mDim).mbSelected = bSelected;
}

void ParamGUICtrl_cls::DeselectRows() {
    for (const auto& gui : mVpCGUIs) {
        gui->mbSelected = false;
        for (int dim = 0; dim < gui->GetDimension(); ++dim)
            gui->GetPanel(dim).mbSelected = false;
    }
    RefreshAll();
}

void ParamGUICtrl_cls::SelectRow(int row, bool bExtend, bool bToggle) {
    if (row < 0 || row >= int(mVRows.size())) return;
    if (bToggle) {
        SetRowSelected(row, !IsRowSelected(row));
        mFocusRow = row;
    } else {
        const int from = bExtend && mFocusRow >= 0 ? mFocusRow : row;
        DeselectRows();
        for (int k = std::min(from, row); k <= std::max(from, row); ++k)
            SetRowSelected(k, true);
        mFocusRow = from;
        if (mOnObjectChosen) mOnObjectChosen(ObjectOf(mVRows[size_t(row)]));
    }
    RefreshAll();
}

void ParamGUICtrl_cls::MoveFocusRow(int by, bool bExtend) {
    if (mVRows.empty()) return;
    const int row = std::clamp(mFocusRow + by, 0, int(mVRows.size()) - 1);
    if (bExtend)
        SetRowSelected(row, true);
    else
        SelectRow(row, false, false);
    mFocusRow = row;
    ScrollTo(GetRowScale().TopToShow(row));
    RefreshAll();
}

void ParamGUICtrl_cls::MarkObject(const SceneObj_cls* pObject) const {
    for (const auto& gui : mVpCGUIs)
        if (SceneObj_cls* object = gui->IsAlive() ? gui->GetPCGroup()->mpCSceneObj : nullptr)
            object->Select(object == pObject);
}

SceneObj_cls* ParamGUICtrl_cls::SelectObject(SceneObj_cls* pObject) {
    DeselectRows();
    MarkObject(pObject);
    for (int row = 0; pObject && row < int(mVRows.size()); ++row) {
        if (mVRows[size_t(row)].mDim >= 0 || ObjectOf(mVRows[size_t(row)]) != pObject) continue;
        SetRowSelected(row, true);
        mFocusRow = row;
    }
    PostMenuEvent(ID_REFRESH_GL);
    RefreshAll();
    return pObject;
}

SceneObj_cls* ParamGUICtrl_cls::SelectObject(int id, int) {
    for (const auto& gui : mVpCGUIs) {
        SceneObj_cls* object = gui->IsAlive() ? gui->GetPCGroup()->mpCSceneObj : nullptr;
        if (object && object->mPickName == id) return SelectObject(object);
    }
    return SelectObject(nullptr);
}

Curves ParamGUICtrl_cls::GetSelectedCurves() const {
    Curves curves;
    const auto add = [&curves](Parameters_cls* curve) {
        if (std::find(curves.begin(), curves.end(), curve) == curves.end()) curves.push_back(curve);
    };
    for (const TimelineRow& row : mVRows) {
        if (row.mDim < 0 && row.mpCGroup->mbSelected)
            for (Parameters_cls* curve : row.mpCGroup->GetCurves())
                add(curve);
        if (row.mDim >= 0 && row.mpCGroup->GetPanel(row.mDim).mbSelected)
            add(row.mpCGroup->GetPCParam(row.mDim));
    }
    return curves;
}
