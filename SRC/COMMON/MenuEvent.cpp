#include "COMMON/MenuEvent.h"

#include <atomic>

namespace {
std::atomic<MenuEventTarget_cls*> sTarget{nullptr};
}

void SetMenuEventTarget(MenuEventTarget_cls* pTarget) { sTarget.store(pTarget); }

void PostMenuEvent(int id, int intValue) {
    if (MenuEventTarget_cls* target = sTarget.load()) target->QueueMenuEvent(id, intValue);
}
