// A table of pairs of particle types, and the stick filters that it makes: one a pair, each with its own
// distances.
#pragma once

#include <vector>

class FilterStickData_cls;
class FilterStick_cls;

/// A type of particles and how many of them there are.
struct TypeCount_st {
    int mType;
    long long mCount;
};

struct StickPair_st {
    int mTypeA;
    int mTypeB;
    float mA;      ///< distance A
    float mSecond; ///< "Keep until" where the rule is "Step", else distance B
    bool mbOn = true;
};

constexpr int kMostPairTypes = 16; ///< a table of more would be longer than anyone can fill in

/// Counts of all types (a byte each) of `number` particles, those that occur, ascending.
std::vector<TypeCount_st> CountTypes(const unsigned char* pType, long long number);
/// Pairs of these types, each once and each with itself, with the distances of a filter. Of too many types
/// those count that have the most particles.
std::vector<StickPair_st> ListStickPairs(std::vector<TypeCount_st> types, const FilterStickData_cls& data);
/// A filter a pair that is on, calculated and otherwise like `filter`, behind it in its list or in its place
/// (`bInPlace`). One step of the undo list; none when no pair is on.
void AddStickPairs(FilterStick_cls& filter, const std::vector<StickPair_st>& pairs, bool bInPlace);
