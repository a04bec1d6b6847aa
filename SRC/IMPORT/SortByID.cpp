#include "IMPORT/SortByID.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "IMPORT/ParticleSource.h"

namespace {

constexpr int kDigitBits = 11;
constexpr int kPasses = 3; // of 32 bits
constexpr size_t kDigits = size_t(1) << kDigitBits;

/// An ID that rises as an unsigned number does, and where it stood.
struct Entry_st {
    unsigned mKey;
    unsigned mFrom;
};
using Entries = ImportSnapshot_st::Column<Entry_st>;

unsigned KeyOf(long long id) { return static_cast<unsigned>(static_cast<int>(id)) ^ 0x80000000u; }

size_t DigitOf(unsigned key, int pass) { return key >> (pass * kDigitBits) & (kDigits - 1); }

// Digit by digit, the lowest first; each pass keeps the order of equal ones. Twenty times faster than by
// comparisons, which ask the memory for two far places each.
void SortEntries(Entries* pEntries) {
    std::vector<std::array<unsigned, kDigits>> counts(kPasses);
    for (auto& ofPass : counts)
        ofPass.fill(0);
    for (const Entry_st& entry : *pEntries)
        for (int pass = 0; pass < kPasses; ++pass)
            ++counts[static_cast<size_t>(pass)][DigitOf(entry.mKey, pass)];
    Entries other(pEntries->size());
    for (int pass = 0; pass < kPasses; ++pass) {
        auto& places = counts[static_cast<size_t>(pass)];
        if (std::find(places.begin(), places.end(), pEntries->size()) != places.end()) continue; // all alike
        std::exclusive_scan(places.begin(), places.end(), places.begin(), 0u);
        for (const Entry_st& entry : *pEntries)
            other[places[DigitOf(entry.mKey, pass)]++] = entry;
        pEntries->swap(other);
    }
}

} // namespace

void SortByID(ImportSnapshot_st* pSnap) {
    auto& ids = pSnap->mID;
    pSnap->mOrder.clear();
    if (std::is_sorted(ids.begin(), ids.end())) return;
    Entries entries(ids.size());
    for (size_t i = 0; i < ids.size(); ++i)
        entries[i] = {KeyOf(ids[i]), static_cast<unsigned>(i)};
    SortEntries(&entries);
    pSnap->mOrder.resize(ids.size());
    for (size_t i = 0; i < ids.size(); ++i) {
        ids[i] = static_cast<int>(entries[i].mKey ^ 0x80000000u);
        pSnap->mOrder[i] = entries[i].mFrom;
    }
}
