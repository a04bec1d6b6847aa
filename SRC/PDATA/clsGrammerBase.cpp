#include "PDATA/clsGrammerBase.h"

#include <algorithm>

namespace {

bool Contains(const ConfItemINTARRAY_cls& item, int code) {
    return std::find(item.mValue, item.mValue + item.mCount, code) != item.mValue + item.mCount;
}

void Store(ConfItemINTARRAY_cls& item, const std::vector<int>& codes) {
    const size_t number = std::min<size_t>(codes.size(), GrammerBase_cls::kMaxItem);
    std::copy_n(codes.begin(), number, item.mValue);
    item.mCount = static_cast<unsigned>(number);
    item.mStrValue = item.GetItemStr();
}

wxString ToText(const std::vector<int>& codes) {
    wxString text;
    for (const int code : codes)
        text += wxString::Format(text.empty() ? "%d" : " %d", code);
    return text;
}

int Sum(const ConfItemINTARRAY_cls& item, int (*size)(int)) {
    int sum = 0;
    for (unsigned i = 0; i < item.mCount; ++i)
        sum += size(item.mValue[i]);
    return sum;
}

} // namespace

GrammerBase_cls::GrammerBase_cls(const wxString& prefix) {
    Add(&mCItemDataType, prefix + "DataType=", "0");
    Add(&mCItemHead, prefix + "GrammerHead=", ToText(DefaultHead()));
    Add(&mCItemBody, prefix + "GrammerBody=", ToText(DefaultBody()));
}

bool GrammerBase_cls::IsItemExistHead(int code) const { return Contains(mCItemHead, code); }
bool GrammerBase_cls::IsItemExistBody(int code) const { return Contains(mCItemBody, code); }
void GrammerBase_cls::SetHeaderGrammer(const std::vector<int>& codes) { Store(mCItemHead, codes); }
void GrammerBase_cls::SetBodyGrammer(const std::vector<int>& codes) { Store(mCItemBody, codes); }

std::vector<int> GrammerBase_cls::GetHeaderGrammer() const {
    return {mCItemHead.mValue, mCItemHead.mValue + mCItemHead.mCount};
}

std::vector<int> GrammerBase_cls::GetBodyGrammer() const {
    return {mCItemBody.mValue, mCItemBody.mValue + mCItemBody.mCount};
}

int GrammerBase_cls::GetHeaderByte() const { return Sum(mCItemHead, GetHeadItemByte); }
int GrammerBase_cls::GetHeaderLine() const { return Sum(mCItemHead, GetHeadItemLine); }
int GrammerBase_cls::GetRecordByte() const { return Sum(mCItemBody, GetBodyItemByte); }

int GrammerBase_cls::GetHeadItemByte(int code) { return 4 * GetHeadItemLine(code); }

int GrammerBase_cls::GetHeadItemLine(int code) {
    return code >= 0 && code < kHeadCodes ? kHeadItems[code].mWords : 0;
}

int GrammerBase_cls::GetBodyItemByte(int code) {
    return code >= 0 && code < kBodyCodes ? 4 * kBodyItems[code].mWords : 0;
}
