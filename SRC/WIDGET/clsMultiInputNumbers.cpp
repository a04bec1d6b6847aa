#include "WIDGET/clsMultiInputPanel.h"

#include <algorithm>
#include <type_traits>

#include <wx/sizer.h>
#include <wx/stattext.h>

#include "PARAM/clsCommandCall.h"
#include "WIDGET/clsColorSwatch.h"
#include "WIDGET/clsFieldUndo.h"
#include "WIDGET/clsMultiInputRow.h"
#include "WIDGET/clsNumField.h"

namespace {

constexpr int kWideChars = 8;   // width of a number that stands alone
constexpr int kNarrowChars = 6; // of several in a row

wxString WithRange(const wxString& tip, const NumSpec& spec) {
    const wxString range = DescribeRange(spec);
    return range.empty() ? tip : tip + " (" + range + ")";
}

} // namespace

void MultiInputPanel_cls::PlaceNumber(int row, std::function<double()> get, std::function<void(double)> set,
                                      const NumSpec& spec, const wxString& tip, bool bGripLabel, Undo undo) {
    Row& r = *mRows[static_cast<size_t>(row)];
    auto* field = new NumField_cls(this, spec, bGripLabel ? kWideChars : kNarrowChars);
    field->SetHint(WithRange(tip, spec));
    if (bGripLabel) field->AttachGrip(r.mpLabel);
    field->SetOnChange([this, row, set, undo](double value, bool bFinal) {
        Edit(
            undo, [&] { set(value); }, bFinal);
        Tell(row, Hook::Value, bFinal);
    });
    Place(row, field, 1);
    r.mRefresh.push_back([field, get] { field->SetValue(get()); });
    r.mRefresh.back()();
}

template <class T>
int MultiInputPanel_cls::AddNumbers(const wxString& label, T* pValue, int count, NumSpec spec,
                                    const wxString& tip) {
    spec.mbInteger = std::is_integral_v<T>;
    spec.mbDouble = std::is_same_v<T, double>;
    if (spec.mbInteger) {
        spec.mMin = std::max(spec.mMin, static_cast<double>(std::numeric_limits<T>::lowest()));
        spec.mMax = std::min(spec.mMax, static_cast<double>(std::numeric_limits<T>::max()));
    }
    const int number = std::clamp(count, 1, kMaxField);
    const int row = NewRow(label, WithRange(tip, spec), number == 1);
    for (int i = 0; i < number; ++i) {
        T* value = pValue + i;
        PlaceNumber(
            row, [value] { return static_cast<double>(*value); },
            [value](double now) { *value = static_cast<T>(now); }, spec, tip, number == 1,
            std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForNumber(value)));
    }
    return row;
}

int MultiInputPanel_cls::AddNumber(const wxString& label, float* pValue, int count, const NumSpec& spec,
                                   const wxString& tip) {
    return AddNumbers(label, pValue, count, spec, tip);
}

int MultiInputPanel_cls::AddNumber(const wxString& label, double* pValue, int count, const NumSpec& spec,
                                   const wxString& tip) {
    return AddNumbers(label, pValue, count, spec, tip);
}

int MultiInputPanel_cls::AddNumber(const wxString& label, int* pValue, int count, const NumSpec& spec,
                                   const wxString& tip) {
    return AddNumbers(label, pValue, count, spec, tip);
}

int MultiInputPanel_cls::AddNumber(const wxString& label, unsigned* pValue, int count, const NumSpec& spec,
                                   const wxString& tip) {
    return AddNumbers(label, pValue, count, spec, tip);
}

int MultiInputPanel_cls::AddNumber(const wxString& label, std::function<double()> get,
                                   std::function<void(double)> set, const NumSpec& spec,
                                   const wxString& tip) {
    const int row = NewRow(label, WithRange(tip, spec), true);
    auto undo = std::make_shared<FieldUndo_cls>(
        [get] { return FieldValue(get()); },
        [set](const FieldValue& value, int mask) -> CommandItem_cls* {
            return new CommandCall_cls([set, number = std::get<double>(value)] { set(number); }, mask);
        });
    PlaceNumber(row, std::move(get), std::move(set), spec, tip, true, std::move(undo));
    return row;
}

template <class T>
void MultiInputPanel_cls::PlaceOneMore(int row, T* pValue, NumSpec spec, const wxString& tip) {
    spec.mbInteger = spec.mbInteger || std::is_integral_v<T>;
    PlaceNumber(
        row, [pValue] { return static_cast<double>(*pValue); },
        [pValue](double now) { *pValue = static_cast<T>(now); }, spec, tip, false,
        std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForNumber(pValue)));
}

void MultiInputPanel_cls::AddNumberTo(int row, float* pValue, const NumSpec& spec, const wxString& tip) {
    PlaceOneMore(row, pValue, spec, tip);
}

void MultiInputPanel_cls::AddNumberTo(int row, int* pValue, const NumSpec& spec, const wxString& tip) {
    PlaceOneMore(row, pValue, spec, tip);
}

void MultiInputPanel_cls::AddNumberTo(int row, unsigned* pValue, const NumSpec& spec, const wxString& tip) {
    PlaceOneMore(row, pValue, spec, tip);
}

int MultiInputPanel_cls::AddColor(const wxString& label, float* pColor, const wxString& tip) {
    const int row = NewRow(label, tip);
    auto* swatch = new ColorSwatch_cls(this);
    swatch->SetToolTip(tip);
    swatch->SetColor(pColor);
    auto undo = std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForColor(pColor));
    swatch->SetOnChoose([this, row, pColor, undo](const float* pChosen) {
        Edit(undo, [=] { std::copy_n(pChosen, 3, pColor); });
        Tell(row, Hook::Click, true);
    });
    Place(row, swatch, 1);
    mRows[static_cast<size_t>(row)]->mRefresh.push_back([swatch, pColor] { swatch->SetColor(pColor); });
    NumSpec alpha;
    alpha.mMin = 0.0;
    alpha.mMax = 1.0;
    alpha.mStep = 0.01;
    PlaceNumber(
        row, [pColor] { return static_cast<double>(pColor[3]); },
        [pColor, swatch](double now) {
            pColor[3] = static_cast<float>(now);
            swatch->SetColor(pColor);
        },
        alpha, _("Alpha: 0 is clear, 1 is solid"), false,
        std::make_shared<FieldUndo_cls>(FieldUndo_cls::ForNumber(pColor + 3)));
    return row;
}
