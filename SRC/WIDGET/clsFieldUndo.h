// What a field's value is to the undo list.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <variant>

#include <wx/string.h>

class CommandItem_cls;

/// A number of any type or a check (exact in a double), a text, or a colour.
using FieldValue = std::variant<double, wxString, std::array<float, 4>>;

/// Leaves one step for each gesture on a field.
class FieldUndo_cls {
public:
    using Getter = std::function<FieldValue()>;
    /// A command that writes a value; its target outlives the command.
    using Maker = std::function<CommandItem_cls*(const FieldValue& value, int updateMask)>;

    FieldUndo_cls(Getter get, Maker make) : mGet(std::move(get)), mMake(std::move(make)) {}

    /// Call `write`, which changes the value. The step from the value before the gesture to the present one
    /// is left when `bFinal` comes, unless they are the same.
    void Edit(const std::function<void()>& write, bool bFinal, int updateMask);

    template <class T>
    static FieldUndo_cls ForNumber(T* pValue);
    static FieldUndo_cls ForCheck(bool* pValue);
    static FieldUndo_cls ForText(wxString* pValue);
    static FieldUndo_cls ForColor(float* pColor); ///< four floats

private:
    Getter mGet;
    Maker mMake;
    std::optional<FieldValue> mBefore; ///< set while a gesture is under way
};

extern template FieldUndo_cls FieldUndo_cls::ForNumber(float* pValue);
extern template FieldUndo_cls FieldUndo_cls::ForNumber(double* pValue);
extern template FieldUndo_cls FieldUndo_cls::ForNumber(int* pValue);
extern template FieldUndo_cls FieldUndo_cls::ForNumber(unsigned* pValue);
