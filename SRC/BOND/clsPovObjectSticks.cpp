#include "BOND/clsPovObjectSticks.h"

#include <algorithm>
#include <cstring>

#include "BOND/BondFile.h"
#include "BOND/PairMessages.h"
#include "BOND/clsBondHistory.h"
#include "BOND/clsPairFinder.h"

namespace {
constexpr float kHalfRoot3 = 0.8660254f;
}

const std::array<float, PovObjectSticks_cls::kCircle> PovObjectSticks_cls::maCircleCos = {
    1.0f,        kHalfRoot3, 0.5f, 0.0f, -0.5f,      -kHalfRoot3, -1.0f,
    -kHalfRoot3, -0.5f,      0.0f, 0.5f, kHalfRoot3, 1.0f};
const std::array<float, PovObjectSticks_cls::kCircle> PovObjectSticks_cls::maCircleSin = {
    0.0f,  0.5f,        kHalfRoot3, 1.0f,        kHalfRoot3, 0.5f, 0.0f,
    -0.5f, -kHalfRoot3, -1.0f,      -kHalfRoot3, -0.5f,      0.0f};

PovObjectSticks_cls::PovObjectSticks_cls() { SetPPeriodicBoundary({}); }

bool PovObjectSticks_cls::Source_st::operator==(const Source_st& o) const {
    return std::memcmp(&time, &o.time, sizeof time) == 0 && count == o.count && step == o.step &&
           version == o.version && frame == o.frame && rule == o.rule && cell == o.cell && bonds == o.bonds;
}

void PovObjectSticks_cls::ClearList() {
    Clear();
    mCurrentPath.clear();
    mSource = {};
    mbConstantFactor = true;
    mbValid = false;
    mCheckedCount = 0;
}

// Of each list anew: a snapshot with as many particles as the last one may be too small for it.
void PovObjectSticks_cls::CheckValidity(const int* pCount) {
    if (!pCount) {
        mbValid = false;
        mCheckedCount = 0;
        return;
    }
    if (*pCount == mCheckedCount) return;
    mCheckedCount = *pCount;
    const unsigned count = static_cast<unsigned>(std::max(*pCount, 0));
    const auto fits = [count](unsigned index) { return index < count; };
    mbValid = std::all_of(mvIndexA.begin(), mvIndexA.end(), fits) &&
              std::all_of(mvIndexB.begin(), mvIndexB.end(), fits);
}

void PovObjectSticks_cls::SetPPeriodicBoundary(const StickCell_st& cell) {
    const bool bAcross = mSource.count >= 0 && mSource.rule.mbAcross;
    float vectors[3][3];
    for (int k = 0; k < 3; ++k)
        bAcross ? cell.GetCopyVector(k, vectors[k]) : cell.GetStickVector(k, vectors[k]);
    MakeStickOffsets(vectors, bAcross, maOffset);
}

void PovObjectSticks_cls::FindConstantFactor() {
    mbConstantFactor =
        std::all_of(mvFactor.begin(), mvFactor.end(), [](float factor) { return factor == 1.0f; });
}

wxString PovObjectSticks_cls::CalcFromData(const StickParticles_st& particles, int frame,
                                           const StickRule_st& rule, const StickCell_st& cell,
                                           const BondHistory_cls* pHistory) {
    const BondSet_t* pKept = pHistory ? pHistory->GetBonds(frame) : nullptr;
    Source_st source;
    source.time = particles.mTime;
    source.count = std::max(particles.mCount, 0);
    source.step = particles.mStep;
    source.version = particles.mVersion;
    source.frame = frame;
    source.rule = rule;
    if (rule.mbAcross) source.cell = cell; // no other list depends on it
    source.bonds = pKept ? pHistory->GetSerial() : 0;
    if (source == mSource) return {};
    ClearList();
    PairFinder_cls finder(particles, rule, cell, pKept);
    finder.mIsStopped = mIsStopped;
    const PairEnd end = finder.Find(this);
    if (end == PairEnd::Stopped) return {};
    mSource = source;
    FindConstantFactor();
    return GetPairMessage(end, finder.mMost);
}

wxString PovObjectSticks_cls::ReadListFromFile(const wxString& path) {
    if (path == mCurrentPath) return {};
    ClearList();
    const wxString reason = ReadStickFile(path, this);
    if (!IsBondPath(path)) FindConstantFactor(); // those have no weights
    mCurrentPath = path;
    return reason;
}
