// How the particles of one file are found again in another. For GuessOffer.cpp.
#pragma once

struct GuessSample_st;

enum class GuessOrder {
    Same,     ///< the same particles in the same order
    Changed,  ///< other particles, or another order; by ID they are found
    Shuffled, ///< by ID they are found in sorted files only
    Unknown   ///< there is no way to tell
};

/// Are there IDs that tell particles apart?
bool HasUsableIds(const GuessSample_st& sample);
/// By the IDs of two samples that have usable ones.
GuessOrder CompareIds(const GuessSample_st& from, const GuessSample_st& to);
/// Without IDs: do the particles move little from one sample to the other, at the same places of the
/// list? Same or Unknown.
GuessOrder ComparePlaces(const GuessSample_st& from, const GuessSample_st& to);
