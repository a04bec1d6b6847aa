// How many particles of the frame each attribute draws, as its page tells.
#pragma once

#include <array>

#include "PDATA/ParticleArrays.h"

class GLAttribute_cls;
class PDataSequence_cls;
class SnapData_cls;

/// Particles of the frame for each attribute, without those that downsizing leaves out.
struct DrawnCounts_st {
    std::array<long long, kParticleClasses> mNumber{};
    bool mbKnown = false;   ///< false: no data, or none drawn yet
    bool mbClassify = true; ///< false: the first attribute draws all

    /// The attribute with most particles; the first of several.
    int GetMost() const;
    bool operator==(const DrawnCounts_st& other) const {
        return mNumber == other.mNumber && mbKnown == other.mbKnown && mbClassify == other.mbClassify;
    }
};

/// Count the types of a draw-time snapshot as these attributes draw it.
DrawnCounts_st CountDrawn(const SnapData_cls& snap, const GLAttribute_cls* const* ppAttribute);

/// After a paint of snapshot `frame`, `dt` behind its time: the pages of the attributes tell how many they
/// draw. Counts only while a page can be seen, and once a draw-time snapshot.
void TellDrawnCounts(const PDataSequence_cls& sequence, int frame, double dt);
