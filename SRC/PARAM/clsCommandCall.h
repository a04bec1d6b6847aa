// A command on data that sit behind functions.
#pragma once

#include <functional>
#include <utility>

#include "PARAM/clsCommandItem.h"

/// Calls a function, which sets a value and must not capture anything that may go before the command.
class CommandCall_cls final : public CommandItem_cls {
public:
    CommandCall_cls(std::function<void()> call, long long updateBit)
        : CommandItem_cls(updateBit), mCall(std::move(call)) {}
    void Execute(bool) override {
        mCall();
        UpdateBit();
    }

private:
    std::function<void()> mCall;
};
