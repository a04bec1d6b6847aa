// A sample of one snapshot, read by a grammar that was guessed: enough to tell how its particles go on in
// the next file and how far they stand apart, in a few megabytes of a file of any size.
#pragma once

#include <array>
#include <string>
#include <vector>

#include <wx/string.h>

class GrammerBase_cls;

struct GuessSample_st {
    using Position = std::array<float, 3>;

    bool mbOk = false;                   ///< the header could be read
    bool mbWhole = false;                ///< the records below are all of the snapshot's
    int mNumber = 0;                     ///< particles of the snapshot, by its header
    std::vector<std::string> mHeadLines; ///< of a text file
    std::vector<Position> mPos;          ///< of the first records, as they stand in the file
    std::vector<Position> mSpread;       ///< of records from all over the file
    std::vector<int> mId, mType;         ///< of the first records; empty without such an item
    float mMaxRadius = 0.0f;             ///< of the first records
};

/// Text and binary files. A file that can't be read, that is cut or holds other things than numbers gives
/// a smaller sample and never more than its header says.
GuessSample_st ReadGuessSample(const GrammerBase_cls& grammar, const wxString& path);

/// The mean distance of `number` particles, in the unit of the positions: the edge of a cube for each, by
/// the density where nearly all of them stand. A set that is thinner than that distance counts as flat.
/// 0 where nothing can be told: fewer than two particles, or all at one place.
double GetMeanDistance(const std::vector<GuessSample_st::Position>& positions, long long number);
