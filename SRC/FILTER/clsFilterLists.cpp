#include "FILTER/clsFilterLists.h"

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "FILTER/clsBondFollower.h"
#include "FILTER/clsFilterData.h"

FilterLists_cls::FilterLists_cls()
    : mLists{{{*this, FILTER_LIST_BOOLEAN}, {*this, FILTER_LIST_OBJECT}, {*this, FILTER_LIST_WORLD}}} {}

FilterLists_cls::~FilterLists_cls() = default;

Parameters_cls* FilterLists_cls::GetPCParamFromID(const wxString& id) const {
    for (const FilterCtrl_cls& list : mLists)
        if (Parameters_cls* found = list.GetPCParamFromID(id)) return found;
    return nullptr;
}

void FilterLists_cls::SelectFilter(FilterBase_cls* pFilter, bool bClearParam) {
    bool bChanged = false;
    for (FilterCtrl_cls& list : mLists)
        bChanged = list.SelectFilter(pFilter) || bChanged;
    if (bChanged) PostMenuEvent(ID_REFRESH_GL);
    if (bChanged && bClearParam) TellSelected(nullptr);
    if (pFilter) TellSelected(pFilter->mpCData.get());
}

void FilterLists_cls::SelectObject(const SceneObj_cls* pObject) {
    bool bChanged = false;
    for (FilterCtrl_cls& list : mLists) {
        const FilterBase_cls* found = nullptr;
        for (int position = 0; pObject && position < list.GetCount(); ++position)
            if (list.GetPCFilter(position)->mpCData.get() == pObject) found = list.GetPCFilter(position);
        bChanged = list.SelectFilter(found) || bChanged;
    }
    if (bChanged) PostMenuEvent(ID_REFRESH_GL);
}

FilterBase_cls* FilterLists_cls::GetPCSelected() const {
    for (const FilterCtrl_cls& list : mLists)
        for (int position = 0; position < list.GetCount(); ++position)
            if (list.GetPCFilter(position)->mpCData->mbSelected) return list.GetPCFilter(position);
    return nullptr;
}

// More filters than there are names between the lists come under those of the next list.
FilterBase_cls* FilterLists_cls::FindByPickName(int name) {
    for (const FilterCtrl_cls* list : {&GetBoolean(), &GetObject()})
        if (const int position = list->FindPickName(name); position >= 0) return list->GetPCFilter(position);
    return nullptr;
}

void FilterLists_cls::MoveSelectedFilter(int delta) {
    for (FilterCtrl_cls& list : mLists)
        list.MoveSelectedFilter(delta);
}

void FilterLists_cls::DeleteSelectedFilter() {
    for (FilterCtrl_cls& list : mLists)
        list.DeleteSelectedFilter();
}

void FilterLists_cls::ClearFilters() {
    for (FilterCtrl_cls& list : mLists)
        list.ClearFilters();
}

void FilterLists_cls::Refresh() {
    for (FilterCtrl_cls& list : mLists) {
        list.UpdateInterpolatedValue(SceneObj_cls::kCurrent);
        list.UpdateValuesOnPanel();
        list.HideAndShowOnPanel();
    }
}

wxString FilterLists_cls::Serialize() {
    wxString text;
    for (FilterCtrl_cls& list : mLists)
        text += list.Serialize();
    return text;
}

void FilterLists_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    for (FilterCtrl_cls& list : mLists)
        if (list.ReadStrLine(stream, line)) return;
}

void FilterLists_cls::TellSelected(SceneObj_cls* pObject) const {
    if (mHooks.mSelectObject) mHooks.mSelectObject(pObject);
}

void FilterLists_cls::Tell(const wxString& text) const {
    if (mHooks.mTell) mHooks.mTell(text);
}
