#include "CONFITEM/clsConfItemList.h"

#include <algorithm>

namespace {

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

void ConfItemList_cls::CopyListComponentFromP(ConfItemList_cls* pSrc) {
    const size_t count = std::min(mListPCItem.size(), pSrc->mListPCItem.size());
    for (size_t i = 0; i < count; ++i)
        CopyAsAnyOf<ConfItemSTR_cls, ConfItemINT_cls, ConfItemUINT_cls, ConfItemFLOAT_cls, ConfItemDOUBLE_cls,
                    ConfItemBOOL_cls, ConfItemINTARRAY_cls, ConfItemFLOATARRAY_cls, ConfItemDOUBLEARRAY_cls,
                    ConfItemBOOLARRAY_cls>(mListPCItem[i], pSrc->mListPCItem[i]);
}
