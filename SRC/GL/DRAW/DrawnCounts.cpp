#include "GL/DRAW/DrawnCounts.h"

#include <algorithm>
#include <vector>

#include "COMMON/DataLoops.h"
#include "COMMON/OnThreads.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLAttributeGUI.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/DRAW/clsThreadSnapInterpolate.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"

namespace {

using Numbers_t = std::array<long long, kParticleClasses>;

/// Of a run of types, how many are 1, 2 and 3.
MORENTIS_DATA_LOOP void CountRun(const unsigned char* pType, int count, int out[3]) {
    int one = 0, two = 0, three = 0;
    for (int i = 0; i < count; ++i) {
        one += pType[i] == 1;
        two += pType[i] == 2;
        three += pType[i] == 3;
    }
    out[0] = one, out[1] = two, out[2] = three;
}

void CountTypes(const unsigned char* pType, long long begin, long long end, Numbers_t& numbers) {
    constexpr long long kRun = 1 << 16;
    for (long long first = begin; first < end; first += kRun) {
        int found[3];
        CountRun(pType + first, static_cast<int>(std::min(kRun, end - first)), found);
        for (size_t k = 0; k < 3; ++k)
            numbers[k + 1] += found[k];
    }
}

/// The classes but the first, which has what remains.
Numbers_t CountOtherClasses(const SnapData_cls& snap, long long drawn, int step) {
    Numbers_t numbers{};
    if (step > 1) {
        for (long long i = 0; i < drawn; ++i)
            ++numbers[static_cast<size_t>(GetParticleClass(snap.mpType[i * step]))];
        numbers[0] = 0;
        return numbers;
    }
    const int threads = ThreadSnapInterpolate_cls::GetThreadCount(snap.mNumber);
    std::vector<Numbers_t> parts(static_cast<size_t>(threads));
    OnThreads(threads, [&](int k) {
        CountTypes(snap.mpType, drawn * k / threads, drawn * (k + 1) / threads,
                   parts[static_cast<size_t>(k)]);
    });
    for (const Numbers_t& part : parts)
        for (size_t c = 1; c < numbers.size(); ++c)
            numbers[c] += part[c];
    return numbers;
}

/// What a count hangs on beside the attributes' looks.
struct CountKey_st {
    unsigned long long snapshot = 0;
    int step = 0;
    unsigned sortOrder = 0;
    unsigned classify = 0;
    bool operator==(const CountKey_st& other) const {
        return snapshot == other.snapshot && step == other.step && sortOrder == other.sortOrder &&
               classify == other.classify;
    }
};

} // namespace

int DrawnCounts_st::GetMost() const {
    return static_cast<int>(std::max_element(mNumber.begin(), mNumber.end()) - mNumber.begin());
}

DrawnCounts_st CountDrawn(const SnapData_cls& snap, const GLAttribute_cls* const* ppAttribute) {
    const DrawOption_cls& options = *ppAttribute[0]->mpCDrawOption;
    const long long step = options.GetDownSizing();
    // Far to near leaves out a last one that has no full step behind it.
    const long long drawn = options.mSortOrder.mValue == SORT_FAR_FIRST ? snap.mNumber / step
                            : snap.mNumber > 0                          ? (snap.mNumber - 1) / step + 1
                                                                        : 0;
    DrawnCounts_st counts;
    counts.mbKnown = true;
    counts.mbClassify = options.IsClassified();
    if (counts.mbClassify && snap.mbAllocated && snap.mpType)
        counts.mNumber = CountOtherClasses(snap, drawn, static_cast<int>(step));
    counts.mNumber[0] = drawn - counts.mNumber[1] - counts.mNumber[2] - counts.mNumber[3];
    return counts;
}

void TellDrawnCounts(const PDataSequence_cls& sequence, int frame, double dt) {
    const GLSequence_cls& drawing = GLSequence_cls::Of(sequence);
    GLAttribute_cls* const* ppAttribute = drawing.mpCGLAttribute;
    if (std::none_of(ppAttribute, ppAttribute + kParticleClasses, [](const GLAttribute_cls* pAttribute) {
            return pAttribute->mpCGUI && pAttribute->mpCGUI->IsShownOnScreen();
        }))
        return;
    static CountKey_st sKey;
    static DrawnCounts_st sCounts;
    const DrawOption_cls& options = *ppAttribute[0]->mpCDrawOption;
    const SnapData_cls* pSnap = GLDrawData_cls::mspCSnapShot;
    const PDataSnap_cls* pFile = sequence.GetSeqLength() > 0 ? sequence.GetSnap(frame) : nullptr;
    if (!pSnap || !pFile || !pSnap->IsOf(pFile->mpCBlock, dt, options.GetDownSizing())) {
        sKey = CountKey_st();
        sCounts = DrawnCounts_st();
        sCounts.mbKnown = pFile && pFile->IsItLoaded() && pFile->GetParticleNumber() == 0;
        sCounts.mbClassify = options.IsClassified();
    } else {
        const CountKey_st key = {pSnap->mSerial, options.GetDownSizing(), options.mSortOrder.mValue,
                                 options.mClassify.mValue};
        if (!(key == sKey)) sCounts = CountDrawn(*pSnap, ppAttribute);
        sKey = key;
    }
    for (int k = 0; k < kParticleClasses; ++k)
        if (GLAttributeGUI_cls* pGUI = ppAttribute[k]->mpCGUI) pGUI->ShowCounts(sCounts);
}
