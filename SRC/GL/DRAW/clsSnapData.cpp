#include "GL/DRAW/clsSnapData.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include <wx/intl.h>

#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "COMMON/OnThreads.h"
#include "COMMON/PictureFault.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsThreadSnapInterpolate.h"
#include "PDATA/ParticleScalars.h"
#include "PDATA/clsArrayPool.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSnap.h"

namespace {

constexpr int kAttributeNumber = kParticleClasses;

unsigned long long sSnapshots = 0;

template <class T>
bool Take(T*& array, int number) {
    bool bZero = false;
    array =
        static_cast<T*>(ArrayPool_cls::Shared().Allocate(static_cast<size_t>(number) * sizeof(T), &bZero));
    return array != nullptr;
}

template <class T>
void Give(T*& array) {
    ArrayPool_cls::Shared().Free(array);
    array = nullptr;
}

const ColorCurve_cls& CurveOf(const GLAttribute_cls& attribute, int which) {
    const ColorCurve_cls* pCurve[] = {&attribute.mColor, &attribute.mAmbient, &attribute.mDiffuse,
                                      &attribute.mSpecular};
    return *pCurve[which >= 0 && which < 4 ? which : 0];
}

/// Share out 0 to `number` over as many threads as such work is worth.
template <class WORK>
void InThreads(int number, const WORK& work) {
    const int count = ThreadSnapInterpolate_cls::GetThreadCount(number);
    OnThreads(count, [&](int k) {
        work(static_cast<long long>(number) * k / count, static_cast<long long>(number) * (k + 1) / count);
    });
}

} // namespace

SnapData_cls::SnapData_cls(PDataBlock_cls* pBlock, GLAttribute_cls** ppAttribute, double dt, int step)
    : mSerial(++sSnapshots), mpCBlock(pBlock), mNumber(std::max(pBlock->mParticleNumber, 0)),
      mTime(pBlock->mpCSnap->mTime + dt), mStep(std::max(step, 1)) {
    if (mNumber == 0 || !pBlock->mbAllocated) return;
    while (!Allocate(mNumber))
        if (!PDataSeqCtrl_cls::ReleaseForAllocation(pBlock->mpCSnap)) {
            TellShortMemory();
            mNumber = 0;
            return;
        }
    mpType = pBlock->mpType;
    if (dt == 0.0 && !IsInterpolateRequired(ppAttribute))
        InterpolateNot(pBlock, ppAttribute);
    else
        InterpolateLinear(pBlock, ppAttribute, static_cast<float>(dt));
}

void SnapData_cls::TellShortMemory() {
    const wxString text =
        _("Memory is too short to draw this snapshot. Lower \"Memory Limit(MB)\" or close other "
          "programs.");
    TellPictureFault(text);
    Notice("SnapData", text);
}

SnapData_cls::~SnapData_cls() { ReleaseData(); }

bool SnapData_cls::Allocate(int number) {
    mbAllocated =
        Take(mpPos, number) && Take(mpRadius, number) && Take(mpValue1, number) && Take(mpColor, number);
    if (mbAllocated) return true;
    Give(mpPos);
    Give(mpRadius);
    Give(mpValue1);
    Give(mpColor);
    return false;
}

void SnapData_cls::ReleaseData() {
    if (!mbAllocated) {
        std::puts("Release Snap failed");
        return;
    }
    Give(mpPos);
    Give(mpRadius);
    Give(mpValue1);
    Give(mpColor);
    Give(mpValue1Dash);
    if (mbOwnType) Give(mpType);
    mbAllocated = mbValue1Dash = mbOwnType = false;
}

void SnapData_cls::TakeOverFromBlock() {
    mTime = std::numeric_limits<double>::quiet_NaN(); // fits no draw
    if (!mbAllocated || mbOwnType || mpType != mpCBlock->mpType) return;
    mbOwnType = true;
    mpCBlock->mpType = nullptr;
}

bool SnapData_cls::IsItSameSnap(PDataBlock_cls* pBlock, double dt, int step) const {
    if (GbSnapDataRefresh.exchange(false)) {
        std::puts("GbSnapDataRefresh!!");
        return false;
    }
    return IsOf(pBlock, dt, step);
}

// Two snapshots may bear the same time, so that the block counts as well.
bool SnapData_cls::IsOf(const PDataBlock_cls* pBlock, double dt, int step) const {
    if (pBlock != mpCBlock || !(pBlock->mpCSnap->mTime + dt == mTime)) return false;
    return mStep == 1 || mStep == step;
}

bool SnapData_cls::IsInterpolateRequired(GLAttribute_cls* const* ppAttribute) {
    return std::any_of(ppAttribute, ppAttribute + kAttributeNumber, [](const GLAttribute_cls* pAttribute) {
        const auto computed = [pAttribute](int which) {
            return ParticleScalars_st::IsComputed(CurveOf(*pAttribute, which).mDependType.mValue);
        };
        switch (pAttribute->mDrawType.mValue) {
        case DRAW_POINT:
        case DRAW_BILLBOARD:
        case DRAW_BOTH:
            return computed(0);
        case DRAW_SPHERE:
            return computed(1) || computed(2) || computed(3);
        default:
            return false;
        }
    });
}

void SnapData_cls::SetPValue1(float** ppOut, GLAttribute_cls* pAttribute, int which) {
    const unsigned depend = CurveOf(*pAttribute, which).mDependType.mValue;
    if (ParticleScalars_st::IsComputed(depend)) SetValue1Dash(depend);
    *ppOut = GetDrivingValues(depend);
}

float* SnapData_cls::GetDrivingValues(unsigned depend) const {
    if (ParticleScalars_st::IsComputed(depend)) return mbValue1Dash ? mpValue1Dash : mpValue1;
    return GetScalars().mArrays.*ParticleScalars_st::Find(depend)->mpArray;
}

ParticleScalars_st SnapData_cls::GetScalars() const {
    ParticleScalars_st scalars;
    if (!mbAllocated) return scalars;
    scalars = ParticleScalars_st::Of(*mpCBlock);
    scalars.mArrays.mpRadius = mpRadius;
    scalars.mArrays.mpValue1 = mpValue1;
    scalars.mArrays.mpType = mpType;
    scalars.mNumber = mNumber;
    scalars.mStep = mStep;
    return scalars;
}

bool SnapData_cls::AllocateValue1Dash() {
    mbValue1Dash = mbAllocated && Take(mpValue1Dash, mNumber);
    return mbValue1Dash;
}

// Taken from the block, not from the moved particles. Made once: whoever asks first decides what it holds.
void SnapData_cls::SetValue1Dash(unsigned depend) {
    if (mbValue1Dash || mbOwnType || !AllocateValue1Dash()) return;
    const ParticleScalars_st scalars = ParticleScalars_st::Of(*mpCBlock);
    if (mStep == 1) {
        InThreads(mNumber, [&](long long begin, long long end) {
            scalars.Fill(mpValue1Dash + begin, depend, begin, end);
        });
        return;
    }
    for (long long i = 0; i < mNumber; i += mStep)
        scalars.Fill(mpValue1Dash + i, depend, i, i + 1);
}

void SnapData_cls::InterpolateNot(PDataBlock_cls* pBlock, GLAttribute_cls** ppAttribute) {
    InterpolateLinear(pBlock, ppAttribute, 0.0f);
}

// At the snapshot's own time the arrays are copied: a slope that is no number stays out of it.
void SnapData_cls::InterpolateLinear(PDataBlock_cls* pBlock, GLAttribute_cls** ppAttribute, float dt) {
    ThreadSnapInterpolate_cls work;
    const bool bMoves = !(dt == 0.0f);
    work.mFrom = *pBlock;
    if (!bMoves) {
        work.mFrom.mpVel = nullptr;
        work.mFrom.mpDRadius = work.mFrom.mpDValue1 = nullptr;
    }
    work.mpPosOut = mpPos;
    work.mpRadiusOut = mpRadius;
    work.mpValue1Out = mpValue1;
    work.mpColorOut = mpColor;
    work.mDT = dt;
    work.mStep = mStep;
    for (int k = 0; k < kAttributeNumber; ++k) {
        GLAttribute_cls& attribute = *ppAttribute[k];
        attribute.mColor.PreCalcScaleFactor();
        float* pValue = mpValue1;
        // A colour that depends on nothing costs nothing.
        if (!attribute.mColor.IsConstant()) SetPValue1(&pValue, &attribute, 0);
        const float base = attribute.mAlphaDependBase.mValue;
        const float scale =
            attribute.mAlphaType.mValue == ALPHA_BY_RADIUS ? base * base : attribute.mAlphaFactor.mValue;
        work.mSource[k] = {ColorSegments_cls(attribute.mColor, scale), pValue};
    }
    InThreads(mNumber, [&work](long long begin, long long end) { work.InterpolateDataLinear(begin, end); });
}
