// Steps of the undo list that make, remove and move filters.
#pragma once

#include <memory>

#include "PARAM/clsCommandItem.h"

class FilterBase_cls;
class FilterCtrl_cls;

/// Puts a filter into its list, or takes it out. The pair of a step holds the filter while the list doesn't:
/// undone steps find its values where they were, and what comes back is the same to the byte.
class CommandFilterMake_cls final : public CommandItem_cls {
public:
    static void PushAdd(FilterCtrl_cls& list, std::unique_ptr<FilterBase_cls> pFilter, int position);
    static void PushRemove(FilterCtrl_cls& list, int position);

    void Execute(bool bUndo) override;

private:
    using Holder = std::shared_ptr<std::unique_ptr<FilterBase_cls>>;

    CommandFilterMake_cls(FilterCtrl_cls& list, const Holder& holder, int position, bool bMake);

    FilterCtrl_cls& mList;
    Holder mHolder;
    int mPosition;
    bool mbMake;
};

class CommandFilterMove_cls final : public CommandItem_cls {
public:
    CommandFilterMove_cls(FilterCtrl_cls& list, int position, int delta);
    void Execute(bool bUndo) override;

private:
    FilterCtrl_cls& mList;
    int mPosition;
    int mDelta;
};
