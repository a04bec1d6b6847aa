// One filter of a list: its settings, its panel, and what it does to a picture.
#pragma once

#include <memory>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "FILTER/FilterKinds.h"
#include "FILTER/clsFilterGUI.h"

class ArrayAndIndex_cls;
class FilterCtrl_cls;
class FilterData_cls;

/// The particles that are weighed: up to kMost records, each with an index into the positions.
struct WeighedList_st {
    static constexpr int kMost = 256; ///< what stays in the first-level cache
    const ArrayAndIndex_cls* mpList;
    const float (*mpVertex)[3];
    int mCount;
};

/// A filter that was deleted lives on in the undo list with all that it holds, so that pointers to its
/// settings stay good for the steps that have them. Main thread only but for Weigh.
class FilterBase_cls {
public:
    virtual ~FilterBase_cls();
    FilterBase_cls(const FilterBase_cls&) = delete;
    FilterBase_cls& operator=(const FilterBase_cls&) = delete;

    virtual FilterData_cls* GetPCData() const = 0;
    int GetType() const { return mCFilterType.mValue; }
    /// True when that is news. Its list's SelectFilter keeps it the only one.
    bool Select(bool bSelected);
    wxString Serialize();

    /// For filters that weigh particles: get ready for the particles 0 to `particles` - 1 at double index
    /// `time`. Curves can't be asked from threads.
    virtual void BeginWeigh(double time, long long particles);
    /// Change the weights (0 to 1), one a record of the list. Any thread.
    virtual void Weigh(const WeighedList_st& list, float* pWeight) const;
    /// Its frame in the views; needs a current OpenGL context.
    virtual void GLDraw(double time) const;
    /// It left its list, maybe for good.
    virtual void OnRemoved() {}
    /// Has something been wrong with the file that it shows? Then it shows less than the file should hold.
    virtual bool HasBrokenFile() const { return false; }

    FilterCtrl_cls* mpCFilterCtrl = nullptr; ///< null while it is in no list
    const std::unique_ptr<FilterData_cls> mpCData;
    std::unique_ptr<FilterGUI_cls> mpCGUI; ///< null without windows; its fields edit the data
    ConfItemINT_cls mCFilterType;          ///< a FilterType

protected:
    FilterBase_cls(FilterType type, std::unique_ptr<FilterData_cls> pData);

private:
    void ConnectTexture(bool bSelected) const;
};

/// A filter with the settings of its kind.
template <class DATA, FilterType TYPE>
class FilterOf_cls : public FilterBase_cls {
public:
    DATA* GetPCData() const final { return static_cast<DATA*>(mpCData.get()); }

protected:
    FilterOf_cls() : FilterBase_cls(TYPE, std::make_unique<DATA>()) {}
};
