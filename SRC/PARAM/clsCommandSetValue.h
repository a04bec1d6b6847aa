// Commands on plain values: a number or text behind a pointer.
#pragma once

#include <type_traits>
#include <variant>

#include <wx/string.h>

#include "PARAM/clsCommandItem.h"
#include "PARAM/clsUndoManager.h"

/// Writes a value through a pointer to a variable of the value's type, which must outlive the command.
class CommandSetValue_cls final : public CommandItem_cls {
public:
    CommandSetValue_cls(void* pTarget, float value, int updateBit);
    CommandSetValue_cls(void* pTarget, double value, int updateBit);
    CommandSetValue_cls(void* pTarget, unsigned int value, int updateBit);
    CommandSetValue_cls(void* pTarget, int value, int updateBit);
    CommandSetValue_cls(void* pTarget, const wxString& value, int updateBit);

    void Execute(bool bUndo) override;
    /// 0 float, 1 double, 2 unsigned, 3 int, 10 text.
    int GetKind() const { return mKind; }

private:
    using Value = std::variant<float, double, unsigned int, int, wxString>;

    void* mpTarget;
    int mKind;
    Value mValue;
};

/// Set a variable as a step of the undo list; no step where it has the value already.
template <class T>
void PushSetValue(T* pTarget, const std::common_type_t<T>& value, int updateMask) {
    if (*pTarget == value) return;
    GCUndoList.PushNewCommand(new CommandSetValue_cls(pTarget, value, updateMask),
                              new CommandSetValue_cls(pTarget, *pTarget, updateMask));
    GCUndoList.ExecCurrent();
}
