// Configuration items with one value: text, int, unsigned, float, double and bool. The arrays come
// along; the list of items has a header of its own (clsConfItemList.h).
#pragma once

#include "CONFITEM/clsConfItemArray.h"
#include "CONFITEM/clsConfItemBase.h"

/// A text, kept in mStrValue. The text "!!SKIP!!" is not written at all.
class ConfItemSTR_cls final : public ConfItem_cls {
public:
    ConfItemSTR_cls() : ConfItem_cls(CONFITEM_STR) {}
    ConfItemSTR_cls(const wxString& key, const wxString& value);

    void SetItem(const wxString& key, const wxString& value) override;
    bool ReadStrLine(const wxString& line) override;
    wxString Serialize() override;
    wxString GetItemStr() override;
};

/// What the items with one number have in common.
template <class T, int TYPE>
class ConfScalar_cls : public ConfItem_cls {
public:
    T mValue = T();

    void SetItem(const wxString& key, const wxString& value) override;
    bool ReadStrLine(const wxString& line) override;
    wxString Serialize() override;
    wxString GetItemStr() override;

protected:
    ConfScalar_cls() : ConfItem_cls(TYPE) {}
    ConfScalar_cls(const wxString& key, const wxString& value) : ConfItem_cls(TYPE) {
        ConfScalar_cls::SetItem(key, value);
    }
    ConfScalar_cls(const ConfScalar_cls&) = default;
    ConfScalar_cls& operator=(const ConfScalar_cls&) = default;
    ~ConfScalar_cls() = default;
};

extern template class ConfScalar_cls<int, CONFITEM_INT>;
extern template class ConfScalar_cls<unsigned, CONFITEM_UINT>;
extern template class ConfScalar_cls<float, CONFITEM_FLOAT>;
extern template class ConfScalar_cls<double, CONFITEM_DOUBLE>;
extern template class ConfScalar_cls<bool, CONFITEM_BOOL>;

class ConfItemINT_cls final : public ConfScalar_cls<int, CONFITEM_INT> {
public:
    ConfItemINT_cls() = default;
    ConfItemINT_cls(const wxString& key, const wxString& value) : ConfScalar_cls(key, value) {}
};

class ConfItemUINT_cls final : public ConfScalar_cls<unsigned, CONFITEM_UINT> {
public:
    ConfItemUINT_cls() = default;
    ConfItemUINT_cls(const wxString& key, const wxString& value) : ConfScalar_cls(key, value) {}
};

/// Written with six decimals.
class ConfItemFLOAT_cls final : public ConfScalar_cls<float, CONFITEM_FLOAT> {
public:
    ConfItemFLOAT_cls() = default;
    ConfItemFLOAT_cls(const wxString& key, const wxString& value) : ConfScalar_cls(key, value) {}
};

/// Written with six significant digits; what lies below is lost at every save.
class ConfItemDOUBLE_cls final : public ConfScalar_cls<double, CONFITEM_DOUBLE> {
public:
    ConfItemDOUBLE_cls() = default;
    ConfItemDOUBLE_cls(const wxString& key, const wxString& value) : ConfScalar_cls(key, value) {}
};

/// Written as 0 or 1, read as any integer that isn't 0.
class ConfItemBOOL_cls final : public ConfScalar_cls<bool, CONFITEM_BOOL> {
public:
    ConfItemBOOL_cls() = default;
    ConfItemBOOL_cls(const wxString& key, const wxString& value) : ConfScalar_cls(key, value) {}
};
