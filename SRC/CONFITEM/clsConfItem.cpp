#include "CONFITEM/clsConfItem.h"

#include <cmath>

#include "CONFITEM/ConfNumber.h"

bool ConfItem_cls::ReadStrLineBase(const wxString& line) {
    if (line.Find(mStrKey) == wxNOT_FOUND) return false;
    mStrValue = line.Mid(mStrKey.length());
    return true;
}

ConfItemSTR_cls::ConfItemSTR_cls(const wxString& key, const wxString& value) : ConfItem_cls(CONFITEM_STR) {
    SetItem(key, value);
}

void ConfItemSTR_cls::SetItem(const wxString& key, const wxString& value) {
    mStrKey = key;
    if (!value.empty()) mStrValue = value;
}

bool ConfItemSTR_cls::ReadStrLine(const wxString& line) { return ReadStrLineBase(line); }

wxString ConfItemSTR_cls::Serialize() {
    if (mStrValue == "!!SKIP!!") return wxString();
    return mStrKey + mStrValue + "\n";
}

wxString ConfItemSTR_cls::GetItemStr() { return mStrValue; }

template <class T, int TYPE>
void ConfScalar_cls<T, TYPE>::SetItem(const wxString& key, const wxString& value) {
    mStrKey = key;
    if (value.empty()) return;
    mStrValue = value;
    mValue = ConfNumberFromText<T>(value);
}

template <class T, int TYPE>
bool ConfScalar_cls<T, TYPE>::ReadStrLine(const wxString& line) {
    if (!ReadStrLineBase(line)) return false;
    // What is endless or no number leaves the value as it was.
    const T value = ConfNumberFromText<T>(mStrValue);
    if (std::isfinite(static_cast<double>(value))) mValue = value;
    return true;
}

template <class T, int TYPE>
wxString ConfScalar_cls<T, TYPE>::Serialize() {
    return mStrKey + ConfNumberToText(mValue) + "\n";
}

template <class T, int TYPE>
wxString ConfScalar_cls<T, TYPE>::GetItemStr() {
    return ConfNumberToText(mValue);
}

template class ConfScalar_cls<int, CONFITEM_INT>;
template class ConfScalar_cls<unsigned, CONFITEM_UINT>;
template class ConfScalar_cls<float, CONFITEM_FLOAT>;
template class ConfScalar_cls<double, CONFITEM_DOUBLE>;
template class ConfScalar_cls<bool, CONFITEM_BOOL>;
