#include "WIDGET/clsFieldUndo.h"

#include <algorithm>

#include "PARAM/clsCommandCall.h"
#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsUndoManager.h"

void FieldUndo_cls::Edit(const std::function<void()>& write, bool bFinal, int updateMask) {
    if (!mBefore) mBefore = mGet();
    write();
    if (!bFinal) return;
    const FieldValue before = *mBefore;
    mBefore.reset();
    const FieldValue now = mGet();
    if (now == before) return;
    GCUndoList.PushNewCommand(mMake(now, updateMask), mMake(before, updateMask));
    GCUndoList.ExecCurrent();
}

template <class T>
FieldUndo_cls FieldUndo_cls::ForNumber(T* pValue) {
    return FieldUndo_cls([pValue] { return FieldValue(static_cast<double>(*pValue)); },
                         [pValue](const FieldValue& value, int mask) -> CommandItem_cls* {
                             return new CommandSetValue_cls(pValue, static_cast<T>(std::get<double>(value)),
                                                            mask);
                         });
}

template FieldUndo_cls FieldUndo_cls::ForNumber(float* pValue);
template FieldUndo_cls FieldUndo_cls::ForNumber(double* pValue);
template FieldUndo_cls FieldUndo_cls::ForNumber(int* pValue);
template FieldUndo_cls FieldUndo_cls::ForNumber(unsigned* pValue);

FieldUndo_cls FieldUndo_cls::ForCheck(bool* pValue) {
    return FieldUndo_cls([pValue] { return FieldValue(*pValue ? 1.0 : 0.0); },
                         [pValue](const FieldValue& value, int mask) -> CommandItem_cls* {
                             const bool bOn = std::get<double>(value) != 0.0;
                             return new CommandCall_cls([pValue, bOn] { *pValue = bOn; }, mask);
                         });
}

FieldUndo_cls FieldUndo_cls::ForText(wxString* pValue) {
    return FieldUndo_cls([pValue] { return FieldValue(*pValue); },
                         [pValue](const FieldValue& value, int mask) -> CommandItem_cls* {
                             return new CommandSetValue_cls(pValue, std::get<wxString>(value), mask);
                         });
}

FieldUndo_cls FieldUndo_cls::ForColor(float* pColor) {
    return FieldUndo_cls(
        [pColor] {
            return FieldValue(std::array<float, 4>{pColor[0], pColor[1], pColor[2], pColor[3]});
        },
        [pColor](const FieldValue& value, int mask) -> CommandItem_cls* {
            const auto rgba = std::get<std::array<float, 4>>(value);
            return new CommandCall_cls([pColor, rgba] { std::copy(rgba.begin(), rgba.end(), pColor); }, mask);
        });
}
