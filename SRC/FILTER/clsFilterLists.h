// The three lists of filters, and what they ask of the program around them.
#pragma once

#include <array>
#include <functional>
#include <istream>
#include <memory>

#include <wx/string.h>

#include "FILTER/FilterKinds.h"
#include "FILTER/StickPairs.h"
#include "FILTER/clsFilterCtrl.h"

class BondFollower_cls;
class ParamGroup_cls;
class PeriodicBoundary_cls;
class SceneObj_cls;
class SceneObjTexture_cls;

/// Set by the hub; an empty one does nothing.
struct FilterHooks_st {
    /// A group's line comes to the time lines, or goes.
    std::function<void(ParamGroup_cls*)> mAddGroup;
    std::function<void(ParamGroup_cls*)> mRemoveGroup;
    /// This object is the selected one now; null: none.
    std::function<void(SceneObj_cls*)> mSelectObject;
    /// The texture dialog edits this; null: nothing.
    std::function<void(SceneObjTexture_cls*, const wxString& name)> mConnectTexture;
    /// Types of the particles on show; none while there are none.
    std::function<std::vector<TypeCount_st>()> mCountTypes;
    /// Something that the user should know, beside the work.
    std::function<void(const wxString& text)> mTell;
};

class FilterLists_cls {
public:
    FilterLists_cls();
    ~FilterLists_cls();
    FilterLists_cls(const FilterLists_cls&) = delete;
    FilterLists_cls& operator=(const FilterLists_cls&) = delete;

    FilterCtrl_cls& Get(int list) { return mLists[size_t(list)]; }
    FilterCtrl_cls& GetBoolean() { return mLists[FILTER_LIST_BOOLEAN]; }
    FilterCtrl_cls& GetObject() { return mLists[FILTER_LIST_OBJECT]; }
    FilterCtrl_cls& GetWorld() { return mLists[FILTER_LIST_WORLD]; }
    Parameters_cls* GetPCParamFromID(const wxString& id) const;

    /// Select this one alone of all lists, null none. `bClearParam`: rows of the time lines lose their
    /// selection when anything changes.
    void SelectFilter(FilterBase_cls* pFilter, bool bClearParam);
    /// The filter of this object alone, none for other objects, without telling the time lines: they know.
    void SelectObject(const SceneObj_cls* pObject);
    FilterBase_cls* GetPCSelected() const;
    /// The filter that clicks know by this name, in the lists that draw frames; null: none.
    FilterBase_cls* FindByPickName(int name);
    void MoveSelectedFilter(int delta);
    void DeleteSelectedFilter();
    /// Steps of the undo list that know filters must go with them.
    void ClearFilters();
    /// Values of the present time into the panels.
    void Refresh();

    wxString Serialize();
    void ReadStrLine(std::wistream& stream, const wxString& line);

    void TellSelected(SceneObj_cls* pObject) const;
    void Tell(const wxString& text) const;

    FilterHooks_st mHooks;
    const PeriodicBoundary_cls* mpCPeriodic = nullptr; ///< cells of the copies; set by the hub
    std::unique_ptr<BondFollower_cls> mpCBonds; ///< made by the hub; sticks that keep bonds wait for it

private:
    std::array<FilterCtrl_cls, kFilterLists> mLists;
};
