#include "COMMON/clsUpdateStatusBar.h"

bool UpdateStatusBar_cls::sbLock = false;
bool UpdateStatusBar_cls::sbAllowDispach = true;

std::function<void()>& UpdateStatusBar_cls::Update() {
    static std::function<void()> sUpdate;
    return sUpdate;
}

void UpdateStatusBar_cls::UpdateStatusBar() {
    if (sbLock || !Update()) return;
    sbLock = true; // pending events may run another long loop
    Update()();
    sbLock = false;
}
