// What an import leaves beside its snapshots, so that one that was stopped can go on: the options, the
// layout, and of which source each snapshot was made.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// FNV-1a of the bytes.
uint64_t HashBytes(const std::string& bytes);
/// Tells a snapshot's source: its files with their sizes and times of change, and its number within them.
uint64_t HashSource(const std::vector<std::string>& files, int number);

class ImportNote_cls {
public:
    /// A text that isn't one gives an empty note.
    void Read(const std::string& text);
    std::string GetText() const;

    std::string mOptions;
    std::string mBody;                   ///< codes of a record's items
    std::vector<std::string> mTypeNames; ///< words that types are, in the order of their numbers
    uint64_t mProject = 0;               ///< HashBytes of the project as it was written; 0: there is none
    std::map<int, uint64_t> mSources;    ///< HashSource of the snapshots that stand there whole
};
