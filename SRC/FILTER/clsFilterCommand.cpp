#include "FILTER/clsFilterCommand.h"

#include "COMMON/UpdateBits.h"
#include "FILTER/clsFilterCtrl.h"
#include "PARAM/clsParameters.h"
#include "PARAM/clsUndoManager.h"

namespace {
constexpr long long kUpdateMask = UPDATE_FILTER_RESIZE | UPDATE_FILTER_REFRESH | UPDATE_TL | UPDATE_GL;
} // namespace

CommandFilterMake_cls::CommandFilterMake_cls(FilterCtrl_cls& list, const Holder& holder, int position,
                                             bool bMake)
    : CommandItem_cls(kUpdateMask), mList(list), mHolder(holder), mPosition(position), mbMake(bMake) {}

void CommandFilterMake_cls::PushAdd(FilterCtrl_cls& list, std::unique_ptr<FilterBase_cls> pFilter,
                                    int position) {
    const auto holder = std::make_shared<std::unique_ptr<FilterBase_cls>>(std::move(pFilter));
    GCUndoList.PushNewCommand(new CommandFilterMake_cls(list, holder, position, true),
                              new CommandFilterMake_cls(list, holder, position, false));
    GCUndoList.ExecCurrent();
}

void CommandFilterMake_cls::PushRemove(FilterCtrl_cls& list, int position) {
    const auto holder = std::make_shared<std::unique_ptr<FilterBase_cls>>();
    GCUndoList.PushNewCommand(new CommandFilterMake_cls(list, holder, position, false),
                              new CommandFilterMake_cls(list, holder, position, true));
    GCUndoList.ExecCurrent();
}

void CommandFilterMake_cls::Execute(bool) {
    if (mbMake && *mHolder)
        mList.InsertFilter(std::move(*mHolder), mPosition);
    else if (!mbMake)
        *mHolder = mList.TakeFilter(mPosition);
    UpdateBit();
}

CommandFilterMove_cls::CommandFilterMove_cls(FilterCtrl_cls& list, int position, int delta)
    : CommandItem_cls(kUpdateMask), mList(list), mPosition(position), mDelta(delta) {}

void CommandFilterMove_cls::Execute(bool) {
    mList.MoveFilterExe(mPosition, mDelta);
    UpdateBit();
}
