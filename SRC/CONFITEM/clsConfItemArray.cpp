#include "CONFITEM/clsConfItemArray.h"

#include <algorithm>
#include <cstdio>
#include <locale>
#include <sstream>
#include <type_traits>

#include "CONFITEM/ConfNumber.h"

namespace {

size_t CountBlanks(const wxString& value) {
    const std::wstring text = value.ToStdWstring();
    return text.empty() ? 0 : static_cast<size_t>(std::count(text.begin() + 1, text.end(), L' '));
}

void TellOverrun(const wxString& key) {
    std::printf("%s more than %u values, the first %u are taken\n", static_cast<const char*>(key.utf8_str()),
                ConfArray_cls::MAX_DIMENSION, ConfArray_cls::MAX_DIMENSION);
}

// Takes one value; on false the target is as it was.
template <class T>
bool Extract(std::istringstream& stream, T& value) {
    using Read = std::conditional_t<std::is_same_v<T, bool>, long, T>;
    Read read{};
    if (!(stream >> read)) return false;
    value = static_cast<T>(read);
    return true;
}

} // namespace

unsigned int ConfArray_cls::CountDimension(const wxString& value) {
    return static_cast<unsigned>(std::min<size_t>(CountBlanks(value) + 1, MAX_DIMENSION));
}

template <class T, int TYPE>
void ConfItemARRAY_cls<T, TYPE>::SetItem(const wxString& key, const wxString& value) {
    mStrKey = key;
    if (value.empty()) return;
    mStrValue = value;
    mCount = CountDimension(value);
    // The array of ints tells it when it reads.
    if (TYPE != CONFITEM_INTARRAY && CountBlanks(value) >= MAX_DIMENSION) TellOverrun(mStrKey);
    ReadStrLine(mStrKey + value);
}

template <class T, int TYPE>
bool ConfItemARRAY_cls<T, TYPE>::ReadStrLine(const wxString& line) {
    if (!ReadStrLineBase(line)) return false;
    std::istringstream stream{std::string(mStrValue.ToAscii())};
    stream.imbue(std::locale::classic());
    if (TYPE == CONFITEM_INTARRAY) {
        mCount = 0;
        while (mCount < MAX_DIMENSION && Extract(stream, mValue[mCount]))
            ++mCount;
        T surplus;
        if (mCount == MAX_DIMENSION && Extract(stream, surplus)) TellOverrun(mStrKey);
        return true;
    }
    for (unsigned i = 0; i < std::min(mCount, MAX_DIMENSION); ++i)
        if (!Extract(stream, mValue[i])) break;
    return true;
}

template <class T, int TYPE>
wxString ConfItemARRAY_cls<T, TYPE>::Serialize() {
    return mStrKey + ConfItemARRAY_cls::GetItemStr() + "\n";
}

template <class T, int TYPE>
wxString ConfItemARRAY_cls<T, TYPE>::GetItemStr() {
    wxString text;
    for (unsigned i = 0; i < std::min(mCount, MAX_DIMENSION); ++i) {
        if (i > 0) text += " ";
        text += ConfNumberToText(mValue[i]);
    }
    return text;
}

template class ConfItemARRAY_cls<int, CONFITEM_INTARRAY>;
template class ConfItemARRAY_cls<float, CONFITEM_FLOATARRAY>;
template class ConfItemARRAY_cls<double, CONFITEM_DOUBLEARRAY>;
template class ConfItemARRAY_cls<bool, CONFITEM_BOOLARRAY>;
