#include "IMAGE/TiffText.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "IMAGE/PictureOrigin.h"

namespace {

constexpr std::uint32_t kDescription = 270;
constexpr std::uint32_t kSoftware = 305;
constexpr std::uint32_t kText = 2; // kind of a value: bytes up to a NUL
constexpr size_t kHeaderBytes = 8;
constexpr size_t kEntryBytes = 12;
constexpr size_t kInEntry = 4; // a value that is no longer stands in its entry

/// Numbers in a file's byte order.
class Order_cls {
public:
    explicit Order_cls(bool bLittle) : mbLittle(bLittle) {}
    std::uint32_t Get(const std::string& bytes, size_t at, size_t length) const {
        std::uint32_t value = 0;
        for (size_t k = 0; k < length; ++k)
            value = value << 8 | static_cast<unsigned char>(bytes[at + (mbLittle ? length - 1 - k : k)]);
        return value;
    }
    std::string Make(std::uint32_t value, size_t length) const {
        std::string bytes(length, '\0');
        for (size_t k = 0; k < length; ++k)
            bytes[mbLittle ? k : length - 1 - k] = char(value >> 8 * k & 0xff);
        return bytes;
    }

private:
    bool mbLittle;
};

/// Of a file of up to 4 GB; those that may be larger have another mark.
bool IsHeader(const std::string& bytes) {
    return bytes.compare(0, 4, std::string("II*\0", 4)) == 0 ||
           bytes.compare(0, 4, std::string("MM\0*", 4)) == 0;
}

/// Of a text whose bytes begin at `where`, unless it is so short that they stand here.
std::string MakeEntry(const Order_cls& order, std::uint32_t tag, const std::string& text,
                      std::uint32_t where) {
    std::string value = order.Make(where, 4);
    if (text.size() < kInEntry) value = text + std::string(kInEntry - text.size(), '\0');
    return order.Make(tag, 2) + order.Make(kText, 2) + order.Make(std::uint32_t(text.size() + 1), 4) + value;
}

/// The entries of the first picture but those of the two texts; false when there are none.
bool TakeEntries(const Order_cls& order, const std::string& bytes, std::vector<std::string>* pEntries,
                 std::string* pNext) {
    const size_t directory = order.Get(bytes, 4, 4);
    if (directory + 2 > bytes.size()) return false;
    const size_t end = directory + 2 + order.Get(bytes, directory, 2) * kEntryBytes;
    if (end + 4 > bytes.size()) return false;
    for (size_t at = directory + 2; at < end; at += kEntryBytes) {
        const std::uint32_t tag = order.Get(bytes, at, 2);
        if (tag != kDescription && tag != kSoftware) pEntries->push_back(bytes.substr(at, kEntryBytes));
    }
    *pNext = bytes.substr(end, 4);
    return true;
}

/// The text of an entry, up to a NUL. Empty, or what is wrong with it.
wxString TakeText(const PictureFile_cls& file, const Order_cls& order, const std::string& entry,
                  std::string* pText) {
    const size_t length = order.Get(entry, 4, 4);
    if (order.Get(entry, 2, 2) != kText) return SayDamaged();
    if (length > kLongestOrigin) return SayTooLong();
    if (length <= kInEntry)
        *pText = entry.substr(8, length);
    else if (!file.Read(order.Get(entry, 8, 4), length, pText))
        return SayCutOff();
    if (!pText->empty() && pText->back() == '\0') pText->pop_back();
    return wxString();
}

} // namespace

// The texts and a directory that knows them go behind the rest, which stays where it is.
void SetTiffTexts(const std::string& description, const std::string& software, std::string* pBytes) {
    constexpr size_t kRoom = 1 << 20; // more than a directory takes
    const size_t size = pBytes->size();
    if (size < kHeaderBytes || !IsHeader(*pBytes)) return;
    if (size + description.size() + software.size() + kRoom > UINT32_MAX) return;
    const Order_cls order(pBytes->front() == 'I');
    std::vector<std::string> entries;
    std::string next;
    if (!TakeEntries(order, *pBytes, &entries, &next)) return;
    const auto add = [&](std::uint32_t tag, const std::string& text) {
        if (pBytes->size() % 2 != 0) *pBytes += '\0'; // values begin at even places
        entries.push_back(MakeEntry(order, tag, text, std::uint32_t(pBytes->size())));
        *pBytes += text;
        *pBytes += '\0';
    };
    add(kDescription, description);
    add(kSoftware, software);
    if (pBytes->size() % 2 != 0) *pBytes += '\0';
    std::sort(entries.begin(), entries.end(), [&order](const std::string& a, const std::string& b) {
        return order.Get(a, 0, 2) < order.Get(b, 0, 2);
    });
    pBytes->replace(4, 4, order.Make(std::uint32_t(pBytes->size()), 4));
    *pBytes += order.Make(std::uint32_t(entries.size()), 2);
    for (const std::string& entry : entries)
        *pBytes += entry;
    *pBytes += next;
}

bool IsTiff(const PictureFile_cls& file) {
    std::string bytes;
    return file.Read(0, kHeaderBytes, &bytes) && IsHeader(bytes);
}

void ReadTiffTexts(const PictureFile_cls& file, PictureText_st* pDescription, PictureText_st* pSoftware) {
    std::string bytes;
    if (!file.Read(0, kHeaderBytes, &bytes)) return;
    const Order_cls order(bytes[0] == 'I');
    const std::uint64_t directory = order.Get(bytes, 4, 4);
    if (!file.Read(directory, 2, &bytes)) return;
    const size_t count = order.Get(bytes, 0, 2);
    for (size_t i = 0; i < count && file.Read(directory + 2 + i * kEntryBytes, kEntryBytes, &bytes); ++i) {
        const std::uint32_t tag = order.Get(bytes, 0, 2);
        for (const auto& [wanted, pText] :
             {std::make_pair(kDescription, pDescription), std::make_pair(kSoftware, pSoftware)})
            if (tag == wanted) pText->mTrouble = TakeText(file, order, bytes, &pText->mText);
    }
}
