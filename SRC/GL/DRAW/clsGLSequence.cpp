#include "GL/DRAW/clsGLSequence.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <new>

#include "COMMON/Globals.h"
#include "COMMON/WorkTimes.h"
#include "GL/DRAW/DrawListFilter.h"
#include "GL/DRAW/DrawnCloud.h"
#include "GL/DRAW/clsDrawList.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/clsArrayPool.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"

namespace {

// What of an attribute is worked into the draw-time snapshot's colours.
struct AlphaSetting {
    unsigned mType = 0;
    float mFactor = 0.0f;
    float mDependBase = 0.0f;
    float mMax = 0.0f;

    bool operator==(const AlphaSetting& other) const {
        return mType == other.mType && mFactor == other.mFactor && mDependBase == other.mDependBase &&
               mMax == other.mMax;
    }
};

AlphaSetting sLastAlpha[GLSequence_cls::kAttributeNumber];

/// Remember the settings of this draw; true when they differ from the last one's.
bool TakeAlphaSettings(GLAttribute_cls** ppAttribute) {
    bool bChanged = false;
    for (int k = 0; k < GLSequence_cls::kAttributeNumber; ++k) {
        const GLAttribute_cls& attribute = *ppAttribute[k];
        const AlphaSetting now = {attribute.mAlphaType.mValue, attribute.mAlphaFactor.mValue,
                                  attribute.mAlphaDependBase.mValue, attribute.mAlphaMax.mValue};
        bChanged = bChanged || !(now == sLastAlpha[k]);
        sLastAlpha[k] = now;
    }
    return bChanged;
}

void MakeSnapshot(PDataBlock_cls* pBlock, GLAttribute_cls** ppAttribute, double dt, int step) {
    const WorkScope_cls work(Work::Evaluate);
    std::puts("MakeSnapshot");
    delete GLDrawData_cls::mspCSnapShot;
    GLDrawData_cls::mspCSnapShot = nullptr; // making one may evict, which looks at it
    GLDrawData_cls::mspCSnapShot = new SnapData_cls(pBlock, ppAttribute, dt, step);
    std::puts("MakeSnapshotEnd");
}

void Dispatch(int face, GLDrawData_cls* pDraw, GLAttribute_cls** ppAttribute) {
    SnapData_cls* pSnap = GLDrawData_cls::mspCSnapShot;
    GLAttribute_cls* pFirst = ppAttribute[0];
    if (pFirst->mpCDrawOption->IsClassified()) {
        pDraw->GLDrawSequential(face, pSnap, ppAttribute);
        return;
    }
    switch (pFirst->mDrawType.mValue) {
    case DRAW_POINT:
        if (pFirst->mColor.IsConstant())
            pDraw->GLDrawPointArrayElement(face, pSnap, pFirst);
        else
            pDraw->GLDrawPointAll(face, pSnap, pFirst);
        break;
    case DRAW_BILLBOARD:
        pDraw->GLDrawBillboardAll(face, pSnap, pFirst);
        break;
    case DRAW_SPHERE:
        pDraw->GLDrawSphereAll(face, pSnap, pFirst);
        break;
    default: // both and hide draw nothing
        break;
    }
}

/// What else is drawn needs the memory that the particles' picture didn't get.
void GiveUpSnapshot() {
    SnapData_cls::TellShortMemory();
    delete GLDrawData_cls::mspCSnapShot;
    GLDrawData_cls::mspCSnapShot = nullptr;
    ArrayPool_cls::Shared().Trim();
}

// Lists and batches take memory of their own. All is made before anything of a list is drawn, but batches
// grow while they are: then some particles are drawn twice, which a second try may show; the picture counts
// as faulty only where there is no room for the first one.
void DispatchInMemory(int face, GLDrawData_cls* pDraw, GLAttribute_cls** ppAttribute) {
    for (bool bAgain = true;; bAgain = false) {
        try {
            Dispatch(face, pDraw, ppAttribute);
            return;
        } catch (const std::bad_alloc&) {
            // What the pool keeps may be enough: once more in any case.
            if (PDataSeqCtrl_cls::ReleaseForAllocation() || bAgain) continue;
            GiveUpSnapshot();
            return;
        }
    }
}

/// OpenGL takes memory of its own for lists and batches, and where it gets none a driver may crash or leave
/// particles out without a word: what it may want must be there before anything is drawn.
bool IsRoomForOpenGL(int number) {
    constexpr size_t kBytesOfParticle = 64;
    constexpr size_t kBytesOfPicture = size_t(128) << 20;
    return PDataSeqCtrl_cls::MakeRoom(size_t(number) * kBytesOfParticle + kBytesOfPicture);
}

/// No memory is taken from what is drawn.
class DrawnScope_cls {
public:
    explicit DrawnScope_cls(const PDataSnap_cls* pSnap) { PDataSnap_cls::mspCDrawn = pSnap; }
    ~DrawnScope_cls() { PDataSnap_cls::mspCDrawn = nullptr; }
    DrawnScope_cls(const DrawnScope_cls&) = delete;
    DrawnScope_cls& operator=(const DrawnScope_cls&) = delete;
};

} // namespace

GLSequence_cls::GLSequence_cls(PDataSequence_cls& sequence, DrawOption_cls* pDrawOption)
    : mpCGLDrawData(new GLDrawData_cls), mSequence(sequence),
      mStrPrefix(wxString::Format("SEQ%d", sequence.mSeqIndex)) {
    for (int k = 0; k < kAttributeNumber; ++k)
        mpCGLAttribute[k] = new GLAttribute_cls(&sequence, sequence.mSeqIndex, k, pDrawOption);
}

GLSequence_cls::~GLSequence_cls() {
    delete mpCGLDrawData;
    for (GLAttribute_cls* pAttribute : mpCGLAttribute)
        delete pAttribute;
}

MakeSequenceDrawing GLSequence_cls::GetMaker(DrawOption_cls* pDrawOption) {
    return [pDrawOption](PDataSequence_cls& sequence) {
        return std::make_unique<GLSequence_cls>(sequence, pDrawOption);
    };
}

GLSequence_cls& GLSequence_cls::Of(const PDataSequence_cls& sequence) {
    return static_cast<GLSequence_cls&>(sequence.GetDrawing());
}

void GLSequence_cls::SetCameraInfo(const PositionAndDirection_cls& camera, const double* pPlace) {
    mpCGLDrawData->SetCameraPos(camera, pPlace);
}

void GLSequence_cls::GLDrawData(int face, int frame, double dt, int lightCount, const float* pLight,
                                bool bShadowPass) {
    mpCGLDrawData->mbShadowPass = bShadowPass;
    mpCGLDrawData->SetLightSourceInfo(lightCount, pLight);
    DrawSnapshot(face, *mSequence.GetSnap(frame), mpCGLDrawData, mpCGLAttribute, dt);
}

void GLSequence_cls::DrawSnapshot(int face, PDataSnap_cls& snap, GLDrawData_cls* pDraw,
                                  GLAttribute_cls** ppAttribute, double dt) {
    PDataBlock_cls* pBlock = snap.mpCBlock;
    if (!snap.IsItLoaded() || snap.GetParticleNumber() < 1 || !pBlock->mbAllocated) return;
    // Slopes that are still being written are no picture.
    const bool bSlopes = !(dt == 0.0) || SnapData_cls::IsInterpolateRequired(ppAttribute);
    if (bSlopes && pBlock->IsUnderInterpolation()) PDataSnap_cls::WaitInterpolator();
    if (DrawProgress_cls::IsFirstPart()) {
        GbAbort.store(false);
        GDrawingPercentage.store(0);
    }
    const DrawnScope_cls drawn(&snap);
    const int step = ppAttribute[0]->mpCDrawOption->GetDownSizing();
    const bool bAlphaChanged = TakeAlphaSettings(ppAttribute);
    const SnapData_cls* pSnap = GLDrawData_cls::mspCSnapShot;
    if (!pSnap || !pSnap->IsItSameSnap(pBlock, dt, step) || bAlphaChanged)
        MakeSnapshot(pBlock, ppAttribute, dt, step);
    // Memory for it may have been short.
    if (GLDrawData_cls::mspCSnapShot->mbAllocated) {
        // Copies that follow use what the first one took.
        static bool sbRoom = false;
        if (DrawProgress_cls::IsFirstPart()) sbRoom = IsRoomForOpenGL(snap.GetParticleNumber());
        if (sbRoom)
            DispatchInMemory(face, pDraw, ppAttribute);
        else
            GiveUpSnapshot();
    }
    if (DrawProgress_cls::IsLastPart()) GDrawingPercentage.store(100);
}

void GLSequence_cls::RefreshGLAttribTex() {
    for (GLAttribute_cls* pAttribute : mpCGLAttribute)
        pAttribute->RefreshTex();
}

FitCloud_st GLSequence_cls::GetDrawnCloud(int frame, double dt, double time) const {
    const PDataSnap_cls& snap = *mSequence.GetSnap(frame);
    const PDataBlock_cls* pBlock = snap.mpCBlock;
    if (!snap.IsItLoaded() || snap.GetParticleNumber() < 1 || !pBlock->mbAllocated) return {};
    ParticleArrays_st arrays = *pBlock;
    const SnapData_cls* pSnap = GLDrawData_cls::mspCSnapShot;
    if (pSnap && pSnap->mbAllocated && pSnap->IsOf(pBlock, dt, GetThinning())) {
        arrays.mpPos = pSnap->mpPos;
        arrays.mpRadius = pSnap->mpRadius;
    }
    FitCloud_st cloud = MakeDrawnCloud(arrays, snap.GetParticleNumber(), mpCGLAttribute);
    DrawListFilter_cls* filter = GLDrawData_cls::mspCFilterCtrlBooleanLink;
    const bool bThins = IsListThinned(mpCGLAttribute[0]->mpCDrawOption->mSortOrder.mValue);
    if (bThins && filter && filter->IsThinning()) ThinCloud(cloud, *filter, time);
    return cloud;
}

std::shared_ptr<const std::vector<int>> GLSequence_cls::GetKept(int frame, double dt, double time) const {
    DrawListFilter_cls* filter = GLDrawData_cls::mspCFilterCtrlBooleanLink;
    const PDataSnap_cls& snap = *mSequence.GetSnap(frame);
    const PDataBlock_cls& block = *snap.mpCBlock;
    if (!filter || !filter->IsThinning() || !snap.IsItLoaded() || !block.mbAllocated) return nullptr;
    // As they are drawn: SnapData_cls moves them by the same sum.
    const auto number = static_cast<size_t>(std::max(snap.GetParticleNumber(), 0));
    std::vector<float> moved;
    const float(*pPos)[3] = block.mpPos;
    if (!(dt == 0.0) && block.mpVel) {
        moved.resize(3 * number);
        for (size_t i = 0; i < moved.size(); ++i)
            moved[i] = block.mpPos[i / 3][i % 3] + block.mpVel[i / 3][i % 3] * static_cast<float>(dt);
        pPos = reinterpret_cast<const float(*)[3]>(moved.data());
    }
    DrawList_t list;
    MakeDrawList(list, static_cast<int>(number), GetThinning(), pPos, {}, filter, time);
    auto kept = std::make_shared<std::vector<int>>();
    kept->reserve(list.size());
    for (const ArrayAndIndex_cls& entry : list)
        kept->push_back(entry.mIndex);
    return kept;
}

bool GLSequence_cls::AreSlopesNeeded() const { return SnapData_cls::IsInterpolateRequired(mpCGLAttribute); }

int GLSequence_cls::GetThinning() const { return mpCGLAttribute[0]->mpCDrawOption->GetDownSizing(); }

void GLSequence_cls::LetGo(PDataBlock_cls& block) {
    SnapData_cls*& pSnap = GLDrawData_cls::mspCSnapShot;
    if (!block.mbAllocated || !pSnap || pSnap->mpCBlock != &block) return;
    if (GbGLLockDrawing.load()) {
        // A paint that let events through is reading it.
        pSnap->TakeOverFromBlock();
        return;
    }
    delete pSnap;
    pSnap = nullptr;
}

wxString GLSequence_cls::Serialize() const {
    wxString text;
    for (const GLAttribute_cls* pAttribute : mpCGLAttribute)
        text += pAttribute->Serialize();
    return text;
}

void GLSequence_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    // All keys of the attributes hold the sequence's prefix; most lines of a project are none of them.
    if (!line.Contains(mStrPrefix)) return;
    for (GLAttribute_cls* pAttribute : mpCGLAttribute)
        pAttribute->ReadStrLine(stream, line);
}
