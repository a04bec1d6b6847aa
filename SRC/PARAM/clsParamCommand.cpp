#include "PARAM/clsParamCommand.h"

#include <cstddef>

#include "COMMON/UpdateBits.h"
#include "PARAM/ParamHooks.h"

namespace {

// Up to here a step holds all keys: even a write past the undo list can't lead undo astray then.
constexpr size_t kFewKeys = 32;

bool IsSame(const KeyFrame_cls& a, const KeyFrame_cls& b) {
    return a.mInterpType == b.mInterpType && a.mDoubleIndex == b.mDoubleIndex && a.mValue == b.mValue &&
           a.mValueD1 == b.mValueD1 && a.mValueD2 == b.mValueD2;
}

} // namespace

// Names of filters may be equal, as files have them: a curve that was rebuilt alone is found by its own.
Parameters_cls* ComParamBase_cls::GetTarget() const {
    // Another curve may stand at the address by now.
    if (Parameters_cls::IsAlive(mpCParam) && mpCParam->GetSerial() == mSerial) return mpCParam;
    return GParamHooks.mFindParam ? GParamHooks.mFindParam(mID) : nullptr;
}

void ComParamBase_cls::Execute(bool) {
    Parameters_cls* target = GetTarget();
    if (target) {
        Run(*target);
        if (target->GetKeyNumber() == mMendCount)
            for (const auto& [i, key] : mVMend)
                target->RestoreKey(i, key);
    }
    UpdateBit();
}

void ComParamBase_cls::NoteDifferences(const std::vector<KeyFrame_cls>& wanted,
                                       const std::vector<KeyFrame_cls>& got) {
    mVMend.clear();
    if (wanted.size() != got.size()) return;
    mMendCount = int(wanted.size());
    for (size_t i = 0; i < wanted.size(); ++i)
        if (wanted.size() <= kFewKeys || !IsSame(wanted[i], got[i])) mVMend.emplace_back(int(i), wanted[i]);
}

ComParamSetKey_cls::ComParamSetKey_cls(Parameters_cls* pParam, double doubleIndex, double value, double d1,
                                       double d2, unsigned kind)
    : ComParamBase_cls(pParam) {
    mKey.Set(doubleIndex, kind, value, d1, d2, false);
}

ComParamSetTimeDependent_cls::ComParamSetTimeDependent_cls(Parameters_cls* pParam, bool bTimeDepend)
    : ComParamBase_cls(pParam, UPDATE_TL), mbTimeDepend(bTimeDepend) {}

ComParamMemento_cls::ComParamMemento_cls(Parameters_cls* pParam, const Parameters_cls* pSource)
    : ComParamBase_cls(pParam), mCopy("Untitled", "Untitled", false, 0, nullptr) {
    mCopy.CopyCurveFromP(pSource ? *pSource : *pParam);
}
