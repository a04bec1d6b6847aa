// The settings of one object: items in the order in which they stand in a file.
#pragma once

#include <vector>

#include "CONFITEM/clsConfItem.h"

/// Holds pointers to items that are members of their owner; it owns none of them.
class ConfItemList_cls {
public:
    bool mbUseDefault = true; ///< false: Add keeps the value that an item has

    /// Append an item under a key with its default as text. This call is the only place of a default: what
    /// goes back to it asks the list.
    void Add(ConfItem_cls* pItem, const wxString& key, const wxString& value);
    /// The default of an item of this list; empty for others.
    wxString GetDefault(const ConfItem_cls* pItem) const;
    /// Give an item of this list its default again.
    void SetToDefault(ConfItem_cls* pItem) const;
    /// Offer a line to every item; true when any of them took it.
    bool ReadStrLineAll(const wxString& line);
    /// The lines of all items.
    wxString SerializeAll();
    /// Copy keys and values, item by item, from a list of the same layout. Items whose classes differ
    /// stay as they are.
    void CopyListComponentFromP(ConfItemList_cls* pSrc);
    /// Empty the list; the items survive.
    void Clear() {
        mListPCItem.clear();
        mVDefaults.clear();
    }

private:
    std::vector<ConfItem_cls*> mListPCItem;
    std::vector<wxString> mVDefaults; ///< as many
};
