#include "CONFITEM/clsConfItemList.h"

#include <algorithm>
#include <cstdint>

namespace {

// Index of the element of `size` bytes at an address, -1 when there is none.
int FindElement(const void* pBase, size_t size, size_t count, const void* pValue) {
    const auto base = reinterpret_cast<std::uintptr_t>(pBase);
    const auto value = reinterpret_cast<std::uintptr_t>(pValue);
    if (value < base || (value - base) % size != 0 || (value - base) / size >= count) return -1;
    return static_cast<int>((value - base) / size);
}

template <class ITEM>
int FindInArray(ConfItem_cls* pItem, const void* pValue) {
    auto* array = dynamic_cast<ITEM*>(pItem);
    if (!array) return -1;
    // An array of bools is walked in steps of a double, as its tag says.
    const size_t step = array->mType == CONFITEM_DOUBLEARRAY ? sizeof(double) : sizeof array->mValue[0];
    const size_t count = std::min<size_t>(array->mCount, sizeof array->mValue / step);
    return FindElement(array->mValue, step, count, pValue);
}

int FindDimension(ConfItem_cls* pItem, const void* pValue) {
    switch (pItem->mType) {
    case CONFITEM_INTARRAY:
        return FindInArray<ConfItemINTARRAY_cls>(pItem, pValue);
    case CONFITEM_FLOATARRAY:
        return FindInArray<ConfItemFLOATARRAY_cls>(pItem, pValue);
    case CONFITEM_DOUBLEARRAY:
        return std::max(FindInArray<ConfItemDOUBLEARRAY_cls>(pItem, pValue),
                        FindInArray<ConfItemBOOLARRAY_cls>(pItem, pValue));
    default:
        return -1;
    }
}

template <class ITEM>
bool IsValueOf(ConfItem_cls* pItem, const void* pValue) {
    auto* scalar = dynamic_cast<ITEM*>(pItem);
    return scalar && static_cast<const void*>(&scalar->mValue) == pValue;
}

template <class ITEM>
bool CopyAs(ConfItem_cls* pDest, const ConfItem_cls* pSrc) {
    auto* dest = dynamic_cast<ITEM*>(pDest);
    auto* src = dynamic_cast<const ITEM*>(pSrc);
    if (dest && src) *dest = *src;
    return dest && src;
}

template <class... ITEMS>
bool CopyAsAnyOf(ConfItem_cls* pDest, const ConfItem_cls* pSrc) {
    return (CopyAs<ITEMS>(pDest, pSrc) || ...);
}

} // namespace

void ConfItemList_cls::Add(ConfItem_cls* pItem, const wxString& key, const wxString& value) {
    pItem->SetItem(key, mbUseDefault ? value : wxString());
    mListPCItem.push_back(pItem);
    mVDefaults.push_back(value);
}

wxString ConfItemList_cls::GetDefault(const ConfItem_cls* pItem) const {
    const auto found = std::find(mListPCItem.begin(), mListPCItem.end(), pItem);
    return found == mListPCItem.end() ? wxString() : mVDefaults[size_t(found - mListPCItem.begin())];
}

void ConfItemList_cls::SetToDefault(ConfItem_cls* pItem) const {
    const wxString value = GetDefault(pItem);
    if (!value.empty()) pItem->SetItem(pItem->mStrKey, value);
}

bool ConfItemList_cls::ReadStrLineAll(const wxString& line) {
    bool bTaken = false;
    for (ConfItem_cls* item : mListPCItem)
        bTaken |= item->ReadStrLine(line);
    return bTaken;
}

wxString ConfItemList_cls::SerializeAll() {
    wxString text;
    for (ConfItem_cls* item : mListPCItem)
        text += item->Serialize();
    return text;
}

wxString ConfItemList_cls::GetHeaderStrFromPointer(void* pValue) {
    for (ConfItem_cls* item : mListPCItem) {
        if (IsValueOf<ConfItemINT_cls>(item, pValue) || IsValueOf<ConfItemUINT_cls>(item, pValue) ||
            IsValueOf<ConfItemFLOAT_cls>(item, pValue) || IsValueOf<ConfItemDOUBLE_cls>(item, pValue))
            return item->mStrKey;
        const int dimension = FindDimension(item, pValue);
        if (dimension >= 0) return item->mStrKey + wxString::Format("::DIM=%d", dimension);
    }
    return wxString();
}

void ConfItemList_cls::CopyListComponentFromP(ConfItemList_cls* pSrc) {
    const size_t count = std::min(mListPCItem.size(), pSrc->mListPCItem.size());
    for (size_t i = 0; i < count; ++i)
        CopyAsAnyOf<ConfItemSTR_cls, ConfItemINT_cls, ConfItemUINT_cls, ConfItemFLOAT_cls, ConfItemDOUBLE_cls,
                    ConfItemBOOL_cls, ConfItemINTARRAY_cls, ConfItemFLOATARRAY_cls, ConfItemDOUBLEARRAY_cls,
                    ConfItemBOOLARRAY_cls>(mListPCItem[i], pSrc->mListPCItem[i]);
}
