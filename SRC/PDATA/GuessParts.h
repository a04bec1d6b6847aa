// What the guesses at text and binary files share. For GrammarGuess.cpp and its helpers only.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "COMMON/TextSplit.h"
#include "PDATA/FileStart.h"
#include "PDATA/GrammarGuess.h"

using Words = std::vector<std::string>;

GrammarGuess_st GuessText(const FileStart_st& start, const GrammerBase_cls& present);
/// A header of "ITEM:" sections, the last of which names the columns.
GrammarGuess_st GuessItemText(const std::vector<std::string>& lines);
GrammarGuess_st GuessBinary(const FileStart_st& start, const GrammerBase_cls& present);

/// Lines of the sample without their ends, at most 4000; a line that the sample cuts is left out.
std::vector<std::string> SampleLines(const FileStart_st& start);
/// The number that is the whole word.
std::optional<double> WordNumber(const std::string& word);
/// The whole word as an integer, "12" but not "12.0".
std::optional<long long> WordInteger(const std::string& word);

/// Put runs of single dummies together until the list has at most 16 items. Codes 2, 3 and 4 are the
/// dummies of heads and bodies alike. From `first` on only.
std::vector<int> PackDummies(const std::vector<int>& codes, size_t first);
/// The items of a text head, from a code for each of its lines; at most 16 if that can be. Time and Number
/// are found line by line, so what stands before the last of them keeps an item a line. What is missing of
/// the head's length then is made up by wider dummies: by some behind, and if need be before them, since
/// the reader counts one line for each item down to the Number, and all lines to where the particles begin.
/// Tells a reason where it did the latter.
std::vector<int> PackHead(const std::vector<int>& lines, GrammarGuess_st* pGuess);
/// The problem of a head or a body with more items than a format can hold; empty when it has none.
wxString CheckItemCounts(const GrammarGuess_st& guess);
/// Drop dummies from the end: columns behind the last one that is used need no items.
void DropLastDummies(std::vector<int>* pCodes);
/// The names of a record's numbers, dummies included.
std::vector<wxString> NumberNames(const std::vector<int>& body);
/// First records of text lines, by the words of each.
void AddTextRecords(const std::vector<std::string>& lines, size_t first, GrammarGuess_st* pGuess);
