// The base of all configuration items: a value that knows its own text key.
#pragma once

#include <wx/string.h>

/// One setting as a line "key=value". A line belongs to an item when the item's key stands anywhere in
/// it; the value is then cut at the length of the key from the start of the line. So a key must not be
/// the tail of another one, and lines are not trimmed.
///
/// Numbers are read and written as in the C locale. Text that is no number reads as zero.
class ConfItem_cls {
public:
    wxString mStrKey = "NONE";   ///< whole key with its "="
    wxString mStrValue = "NONE"; ///< value as last read or set, as text
    int mType = 0;               ///< one of ConfItemType

    /// Take the key and, unless `value` is empty, the value.
    virtual void SetItem(const wxString& key, const wxString& value) = 0;
    /// Take the value of a line that holds the key; false and unchanged for any other line.
    virtual bool ReadStrLine(const wxString& line) = 0;
    /// The line with its line feed.
    virtual wxString Serialize() = 0;
    /// The value alone, as it stands in the line.
    virtual wxString GetItemStr() = 0;

    /// Find the key and cut the value text; the half of reading that all items share.
    bool ReadStrLineBase(const wxString& line);

protected:
    ConfItem_cls() = default;
    explicit ConfItem_cls(int type) : mType(type) {}
    ConfItem_cls(const ConfItem_cls&) = default;
    ConfItem_cls& operator=(const ConfItem_cls&) = default;
    ~ConfItem_cls() = default; // items are members of their owners, never deleted through the base
};

/// Tags of the item classes. The array of bools bears the tag of the array of doubles.
enum ConfItemType {
    CONFITEM_STR = 1,
    CONFITEM_INT = 2,
    CONFITEM_INTARRAY = 3,
    CONFITEM_UINT = 4,
    CONFITEM_FLOAT = 6,
    CONFITEM_FLOATARRAY = 7,
    CONFITEM_DOUBLE = 8,
    CONFITEM_DOUBLEARRAY = 9,
    CONFITEM_BOOL = 10,
    CONFITEM_BOOLARRAY = 9
};
