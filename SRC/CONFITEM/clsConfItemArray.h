// Configuration items with up to 16 values, separated by one blank.
#pragma once

#include "CONFITEM/clsConfItemBase.h"

/// Second base of the array items.
class ConfArray_cls {
public:
    static constexpr unsigned MAX_DIMENSION = 16;

    /// How many values a text holds: one plus its blanks behind the first character, 16 at most.
    unsigned int CountDimension(const wxString& value);

protected:
    ConfArray_cls() = default;
    ConfArray_cls(const ConfArray_cls&) = default;
    ConfArray_cls& operator=(const ConfArray_cls&) = default;
    ~ConfArray_cls() = default;
};

/// What the arrays have in common. SetItem gives the number of values; ReadStrLine keeps it and takes
/// that many, where missing ones leave what was there. The array of ints alone takes its length from
/// each text it reads. Values past the sixteenth are dropped with a line on standard output.
template <class T, int TYPE>
class ConfItemARRAY_cls : public ConfItem_cls, public ConfArray_cls {
public:
    unsigned mCount = 0;
    T mValue[MAX_DIMENSION] = {};

    void SetItem(const wxString& key, const wxString& value) override;
    bool ReadStrLine(const wxString& line) override;
    wxString Serialize() override;
    wxString GetItemStr() override;

protected:
    ConfItemARRAY_cls() : ConfItem_cls(TYPE) {}
    ConfItemARRAY_cls(const wxString& key, const wxString& value) : ConfItem_cls(TYPE) {
        ConfItemARRAY_cls::SetItem(key, value);
    }
    ConfItemARRAY_cls(const ConfItemARRAY_cls&) = default;
    ConfItemARRAY_cls& operator=(const ConfItemARRAY_cls&) = default;
    ~ConfItemARRAY_cls() = default;
};

extern template class ConfItemARRAY_cls<int, CONFITEM_INTARRAY>;
extern template class ConfItemARRAY_cls<float, CONFITEM_FLOATARRAY>;
extern template class ConfItemARRAY_cls<double, CONFITEM_DOUBLEARRAY>;
extern template class ConfItemARRAY_cls<bool, CONFITEM_BOOLARRAY>;

/// The one array of variable length.
class ConfItemINTARRAY_cls final : public ConfItemARRAY_cls<int, CONFITEM_INTARRAY> {
public:
    ConfItemINTARRAY_cls() = default;
    ConfItemINTARRAY_cls(const wxString& key, const wxString& value) : ConfItemARRAY_cls(key, value) {}
};

class ConfItemFLOATARRAY_cls final : public ConfItemARRAY_cls<float, CONFITEM_FLOATARRAY> {
public:
    ConfItemFLOATARRAY_cls() = default;
    ConfItemFLOATARRAY_cls(const wxString& key, const wxString& value) : ConfItemARRAY_cls(key, value) {}
};

class ConfItemDOUBLEARRAY_cls final : public ConfItemARRAY_cls<double, CONFITEM_DOUBLEARRAY> {
public:
    ConfItemDOUBLEARRAY_cls() = default;
    ConfItemDOUBLEARRAY_cls(const wxString& key, const wxString& value) : ConfItemARRAY_cls(key, value) {}
};

class ConfItemBOOLARRAY_cls final : public ConfItemARRAY_cls<bool, CONFITEM_BOOLARRAY> {
public:
    ConfItemBOOLARRAY_cls() = default;
    ConfItemBOOLARRAY_cls(const wxString& key, const wxString& value) : ConfItemARRAY_cls(key, value) {}
};
