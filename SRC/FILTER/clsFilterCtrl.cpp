#include "FILTER/clsFilterCtrl.h"

#include <algorithm>

#include "FILTER/clsFilterBoolean.h"
#include "FILTER/clsFilterCommand.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "GL/BASE/clsMarkPainter.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSequence.h"

namespace {

constexpr int kNames = 99;
// What clicks know filters by.
constexpr int kNamesBetween = 20;
constexpr int kFarNames = 1000000;

} // namespace

FilterCtrl_cls::~FilterCtrl_cls() = default;

FilterBase_cls* FilterCtrl_cls::GetPCFilter(const wxString& name) const {
    for (const auto& filter : mlpCFilter)
        if (filter->mpCData->mCName.mStrValue == name) return filter.get();
    return nullptr;
}

Parameters_cls* FilterCtrl_cls::GetPCParamFromID(const wxString& id) const {
    for (const auto& filter : mlpCFilter)
        if (Parameters_cls* found = filter->mpCData->mpCObjectGroup->GetPCParamFromID(id)) return found;
    return nullptr;
}

wxString FilterCtrl_cls::GetNewName(const wxString& format) const {
    if (!format.Contains(kFilterNumber)) return format;
    wxString name;
    for (int n = 0; n < kNames; ++n) {
        name = format;
        name.Replace(kFilterNumber, wxString::Format("%02d", n), false);
        if (!GetPCFilter(name)) break;
    }
    return name;
}

FilterBase_cls* FilterCtrl_cls::AddFilter(int type, int position) {
    auto filter = GetFilterKind(type).mpMake();
    FilterBase_cls* added = filter.get();
    added->mpCData->mStrFolder = PDataSequence_cls::msStrProjectDir; // as if it came from the project
    InsertFilter(std::move(filter), position < 0 ? GetCount() : position);
    return added;
}

void FilterCtrl_cls::InsertFilter(std::unique_ptr<FilterBase_cls> pFilter, int position) {
    FilterBase_cls& filter = *pFilter;
    FilterData_cls& data = *filter.mpCData;
    const wxString name = GetNewName(data.mCName.mStrValue);
    data.mCName.mStrValue = name;
    data.ReplaceParameterName(name); // does nothing for one that comes back
    filter.mpCFilterCtrl = this;
    mlpCFilter.insert(mlpCFilter.begin() + std::clamp(position, 0, GetCount()), std::move(pFilter));
    TellPanes(filter, position);
    if (!data.GetGroups().empty() && mLists.mHooks.mAddGroup) mLists.mHooks.mAddGroup(data.mpCObjectGroup);
}

void FilterCtrl_cls::TellPanes(FilterBase_cls& filter, int position) {
    if (!mpCFilterPanelPain) return;
    if (!filter.mpCGUI) filter.mpCGUI = mpCFilterPanelPain->MakeGUI(filter);
    filter.mpCGUI->UpdateButtonName();
    filter.mpCGUI->UpdateValues();
    filter.mpCGUI->HideAndShow();
    mpCFilterPanelPain->InsertPanel(*filter.mpCGUI, position);
}

void FilterCtrl_cls::SetPane(FilterPane_cls* pPane) {
    mpCFilterPanelPain = pPane;
    for (int position = 0; position < GetCount(); ++position) {
        FilterBase_cls& filter = *mlpCFilter[size_t(position)];
        if (pPane)
            TellPanes(filter, position);
        else
            filter.mpCGUI.reset();
    }
}

std::unique_ptr<FilterBase_cls> FilterCtrl_cls::TakeFilter(int position) {
    if (position < 0 || position >= GetCount()) return nullptr;
    std::unique_ptr<FilterBase_cls> filter = std::move(mlpCFilter[size_t(position)]);
    mlpCFilter.erase(mlpCFilter.begin() + position);
    if (mpCFilterPanelPain && filter->mpCGUI) mpCFilterPanelPain->RemovePanel(*filter->mpCGUI);
    FilterData_cls& data = *filter->mpCData;
    if (!data.GetGroups().empty() && mLists.mHooks.mRemoveGroup)
        mLists.mHooks.mRemoveGroup(data.mpCObjectGroup);
    if (data.mbSelected) {
        filter->Select(false);
        mLists.TellSelected(nullptr);
    }
    filter->OnRemoved();
    filter->mpCFilterCtrl = nullptr;
    return filter;
}

void FilterCtrl_cls::ClearFilters() {
    while (GetCount() > 0)
        TakeFilter(GetCount() - 1);
}

void FilterCtrl_cls::MoveFilterExe(int position, int delta) {
    const int to = position + delta;
    if (position < 0 || position >= GetCount() || to < 0 || to >= GetCount()) return;
    std::swap(mlpCFilter[size_t(position)], mlpCFilter[size_t(to)]);
    if (!mpCFilterPanelPain) return;
    for (const int place : {std::min(position, to), std::max(position, to)}) {
        FilterGUI_cls& gui = *mlpCFilter[size_t(place)]->mpCGUI;
        mpCFilterPanelPain->RemovePanel(gui);
        mpCFilterPanelPain->InsertPanel(gui, place);
    }
}

void FilterCtrl_cls::AddFilterCommand(int type, const std::function<void(FilterData_cls&)>& set) {
    auto filter = GetFilterKind(type).mpMake();
    filter->mpCData->InitNew();
    if (set) set(*filter->mpCData);
    CommandFilterMake_cls::PushAdd(*this, std::move(filter), GetCount());
}

bool FilterCtrl_cls::DeleteSelectedFilter() {
    for (int position = 0; position < GetCount(); ++position) {
        if (!mlpCFilter[size_t(position)]->mpCData->mbSelected) continue;
        CommandFilterMake_cls::PushRemove(*this, position);
        return true;
    }
    return false;
}

bool FilterCtrl_cls::MoveSelectedFilter(int delta) {
    for (int position = 0; position < GetCount(); ++position) {
        const int to = position + delta;
        if (!mlpCFilter[size_t(position)]->mpCData->mbSelected || to < 0 || to >= GetCount()) continue;
        GCUndoList.PushNewCommand(new CommandFilterMove_cls(*this, position, delta),
                                  new CommandFilterMove_cls(*this, to, -delta));
        GCUndoList.ExecCurrent();
        return true;
    }
    return false;
}

bool FilterCtrl_cls::SelectFilter(const FilterBase_cls* pFilter) {
    bool bChanged = false;
    for (const auto& filter : mlpCFilter)
        bChanged = filter->Select(filter.get() == pFilter) || bChanged;
    return bChanged;
}

void FilterCtrl_cls::UpdateInterpolatedValue(double time) {
    for (const auto& filter : mlpCFilter)
        filter->mpCData->UpdateCurrentObj(time);
}

void FilterCtrl_cls::UpdateValuesOnPanel() {
    for (const auto& filter : mlpCFilter)
        if (filter->mpCGUI) filter->mpCGUI->UpdateValues();
}

void FilterCtrl_cls::HideAndShowOnPanel() {
    for (const auto& filter : mlpCFilter)
        if (filter->mpCGUI) filter->mpCGUI->HideAndShow();
}

void FilterCtrl_cls::ConnectTexture(SceneObjTexture_cls* pTexture, const wxString& name) const {
    if (mLists.mHooks.mConnectTexture) mLists.mHooks.mConnectTexture(pTexture, name);
}

void FilterCtrl_cls::Tell(const wxString& text) const { mLists.Tell(text); }

const PeriodicBoundary_cls* FilterCtrl_cls::GetPCPeriodic() const { return mLists.mpCPeriodic; }

template <class FILTER, class TEST>
FILTER* FilterCtrl_cls::FindFirst(FilterType type, TEST test) const {
    for (const auto& filter : mlpCFilter)
        if (filter->GetType() == type && test(*filter->mpCData)) return static_cast<FILTER*>(filter.get());
    return nullptr;
}

namespace {

bool IsAny(const FilterData_cls&) { return true; }
bool IsValid(const FilterData_cls& data) { return data.mCValid.mValue; }

} // namespace

FilterDataBoxData_cls* FilterCtrl_cls::GetPCDataBox() const {
    const auto* box = FindFirst<FilterDataBox_cls>(FILTER_DATABOX, IsValid);
    return box ? box->GetPCData() : nullptr;
}

FilterCopy_cls* FilterCtrl_cls::GetPCCopy() const { return FindFirst<FilterCopy_cls>(FILTER_COPY, IsAny); }

FilterFog_cls* FilterCtrl_cls::GetPCFog() const { return FindFirst<FilterFog_cls>(FILTER_FOG, IsAny); }

std::vector<FilterStick_cls*> FilterCtrl_cls::GetVpCSticks() const {
    std::vector<FilterStick_cls*> sticks;
    for (const auto& filter : mlpCFilter)
        if (filter->GetType() == FILTER_STICK && IsValid(*filter->mpCData))
            sticks.push_back(static_cast<FilterStick_cls*>(filter.get()));
    return sticks;
}

bool FilterCtrl_cls::IsObjectExist() const {
    return FindFirst<FilterBase_cls>(FILTER_OBJECT, IsValid) ||
           FindFirst<FilterBase_cls>(FILTER_GRID, IsValid);
}

bool FilterCtrl_cls::IsBooleanChangeConstantColor() const {
    return FindFirst<FilterBase_cls>(FILTER_BOOLEAN, [](const FilterData_cls& data) {
        return IsValid(data) && static_cast<const FilterBooleanData_cls&>(data).mCBorderFactor.mValue != 0.0f;
    });
}

// From 20 on in the first list, from 40 on in the second one; what of the first doesn't fit between them has
// names far behind.
int FilterCtrl_cls::GetPickName(int position) const {
    const bool bFar = mIndex == FILTER_LIST_BOOLEAN && position >= kNamesBetween;
    return position + (bFar ? kFarNames : (mIndex + 1) * kNamesBetween);
}

int FilterCtrl_cls::FindPickName(int name) const {
    const int position = name >= kFarNames ? name - kFarNames : name - (mIndex + 1) * kNamesBetween;
    return position >= 0 && position < GetCount() && GetPickName(position) == name ? position : -1;
}

void FilterCtrl_cls::GLDraw(MarkPainter_cls& painter, double time) const {
    for (int position = 0; position < GetCount(); ++position) {
        const MarkName_cls name(painter, GetPickName(position));
        GetPCFilter(position)->GLDraw(painter, time);
    }
}

void FilterCtrl_cls::PrepareObjects(int frame) {
    for (const auto& filter : mlpCFilter)
        if (filter->GetType() == FILTER_OBJECT) static_cast<FilterObject_cls&>(*filter).Prepare(frame);
}

void FilterCtrl_cls::GLDrawRealObject(double time, int lightNumber, bool bPerCopy) {
    for (const auto& filter : mlpCFilter)
        if (filter->GetType() == FILTER_OBJECT)
            static_cast<FilterObject_cls&>(*filter).GLDrawRealObject(time, lightNumber, bPerCopy);
}

void FilterCtrl_cls::GLDrawRealGrid(double time, Tags* pTags) const {
    for (const auto& filter : mlpCFilter)
        if (filter->GetType() == FILTER_GRID)
            static_cast<const FilterGrid_cls&>(*filter).GLDrawRealGrid(time, pTags);
}
