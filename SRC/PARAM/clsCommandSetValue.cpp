#include "PARAM/clsCommandSetValue.h"

namespace {
enum ValueKind { KIND_FLOAT = 0, KIND_DOUBLE = 1, KIND_UNSIGNED = 2, KIND_INT = 3, KIND_TEXT = 10 };
}

CommandSetValue_cls::CommandSetValue_cls(void* pTarget, float value, int updateBit)
    : CommandItem_cls(updateBit), mpTarget(pTarget), mKind(KIND_FLOAT), mValue(value) {}

CommandSetValue_cls::CommandSetValue_cls(void* pTarget, double value, int updateBit)
    : CommandItem_cls(updateBit), mpTarget(pTarget), mKind(KIND_DOUBLE), mValue(value) {}

CommandSetValue_cls::CommandSetValue_cls(void* pTarget, unsigned int value, int updateBit)
    : CommandItem_cls(updateBit), mpTarget(pTarget), mKind(KIND_UNSIGNED), mValue(value) {}

CommandSetValue_cls::CommandSetValue_cls(void* pTarget, int value, int updateBit)
    : CommandItem_cls(updateBit), mpTarget(pTarget), mKind(KIND_INT), mValue(value) {}

CommandSetValue_cls::CommandSetValue_cls(void* pTarget, const wxString& value, int updateBit)
    : CommandItem_cls(updateBit), mpTarget(pTarget), mKind(KIND_TEXT), mValue(value) {}

void CommandSetValue_cls::Execute(bool) {
    if (mpTarget)
        std::visit(
            [this](const auto& value) { *static_cast<std::decay_t<decltype(value)>*>(mpTarget) = value; },
            mValue);
    UpdateBit();
}
