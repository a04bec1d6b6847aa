// The sticks of one filter: where they come from, when they are made anew, and which of them a copy of the
// data draws.
#pragma once

#include <array>
#include <functional>
#include <string>

#include <wx/string.h>

#include "BOND/StickCell.h"
#include "BOND/StickList.h"

class BondHistory_cls;

class PovObjectSticks_cls : public StickList_st {
public:
    static constexpr int kCircle = 13; ///< corners of a cylinder's end; the last one is the first

    PovObjectSticks_cls();

    void ClearList();
    /// All weights are 1, or there is no stick.
    bool IsConstantFactor() const { return mbConstantFactor; }
    /// Does the list fit so many particles? Without a snapshot (`pCount` null) it doesn't.
    void CheckValidity(const int* pCount);
    /// Was it last found to fit so many? A list may be that of another frame than the snapshot.
    bool Fits(int count) const { return mbValid && mCheckedCount == count; }
    /// Offsets of the crossing masks. Lists that were calculated across faces join copies of the data, whose
    /// places they follow; others have their own rule, see StickCell_st.
    void SetPPeriodicBoundary(const StickCell_st& cell);

    /// Make the sticks by a rule, unless they are those of the same particles, frame, rule and box already.
    /// `pHistory`: for rules that keep bonds, with the bonds of `frame` known, the last whole frame that
    /// isn't behind the time of the particles; null, or not known: as at the first frame. Returns why there
    /// are none, empty when all is well.
    wxString CalcFromData(const StickParticles_st& particles, int frame, const StickRule_st& rule,
                          const StickCell_st& cell = {}, const BondHistory_cls* pHistory = nullptr);
    /// Is it what ReadListFromFile made of this file?
    bool IsFromFile(const wxString& path) const { return path == mCurrentPath; }
    /// Read a file, with the frame's number in its name already, unless it is the one read last. Returns what
    /// is wrong with it, once; see ReadStickFile.
    wxString ReadListFromFile(const wxString& path);

    /// A stick's two masks.
    struct Crossing_st {
        unsigned first;
        unsigned second;
    };
    Crossing_st GetCrossing(size_t k) const { return {GetBitFirst(k), GetBit(k)}; }
    /// Is it drawn in a copy that has neighbours in the directions of `copyMask`?
    static bool IsDrawnIn(const Crossing_st& way, unsigned copyMask) {
        const unsigned needed = way.first | way.second;
        return (needed & ~copyMask) == 0 && needed < 8;
    }
    /// Where both ends stand, offsets included, for a stick that is drawn.
    void GetEnds(size_t k, const float (*pPos)[3], float* pFirst, float* pSecond) const {
        const Crossing_st way = GetCrossing(k);
        for (size_t i = 0; i < 3; ++i) {
            pFirst[i] = pPos[mvIndexA[k]][i] + maOffset[way.first][i];
            pSecond[i] = pPos[mvIndexB[k]][i] + maOffset[way.second][i];
        }
    }

    /// For a scene for POV-Ray: STICKS0 to STICKS7, the sticks of each crossing mask as calls of the macro
    /// CY, where they stand at `pPos`, with so many decimals. Sticks without a length are left out, and those
    /// of particles between every `step`-th. With `bAgain` those names are declared already, and keep what
    /// they have. Nothing while the list isn't valid.
    void AppendPovSticks(std::string* pText, const float (*pPos)[3], int step, int decimals,
                         bool bAgain) const;

    float maOffset[8][3] = {}; ///< of each crossing mask
    static const std::array<float, kCircle> maCircleCos;
    static const std::array<float, kCircle> maCircleSin;
    bool mbValid = false;             ///< the list fits the present snapshot
    std::function<bool()> mIsStopped; ///< as of PairFinder_cls; a stopped list is made anew at the next call

private:
    /// What the list was calculated from.
    struct Source_st {
        float time = 0.0f;
        int count = -1; ///< none
        int step = 1;
        unsigned long long version = 0;
        int frame = 0;
        StickRule_st rule;
        StickCell_st cell;
        unsigned long long bonds = 0; ///< serial of the history, 0: its bonds weren't known

        bool operator==(const Source_st& o) const;
    };

    void FindConstantFactor();

    wxString mCurrentPath; ///< read last
    Source_st mSource;
    bool mbConstantFactor = true;
    int mCheckedCount = 0; ///< particles that mbValid is about
};
