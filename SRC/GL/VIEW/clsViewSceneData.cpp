// Particles of a view, lit.
#include "GL/VIEW/clsViewScene.h"

#include <utility>

#include "COMMON/Globals.h"
#include "FILTER/clsBondFollower.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterStick.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/PlaceMatrix.h"
#include "GL/DRAW/clsCpuDraw.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/DrawCopies.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewCamera.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewMessage.h"
#include "GL/VIEW/clsViewSettings.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "SCENE/clsLightSRCCtrl.h"

// The camera stands in the model-view matrix. Lights that throw shadows are left to pictures of their own
// when there are several.
void ViewScene_cls::SetLights() {
    LightSRCCtrl_cls& lights = *mContext.mHost.GetPCLightSRCCtrl();
    lights.SetCamera(mContext.mCamera.mCCamPos);
    lights.UpdateCurrentObj(mContext.mMoment.doubleIndex);
    if (mShadows > 1)
        lights.SetBasicLight(mContext.mMoment.doubleIndex, true);
    else
        lights.SetNonShadowLight(mContext.mMoment.doubleIndex);
    mPass = {};
    mPass.lights = lights.GetLightNumber();
}

void ViewScene_cls::SetFog() {
    FilterLists_cls* filters = mContext.mHost.GetPCFilters();
    const FilterFog_cls* fog = filters ? filters->GetWorld().GetPCFog() : nullptr;
    if (fog)
        fog->SetGLFog(mContext.mMoment.doubleIndex);
    else
        glDisable(GL_FOG);
}

namespace {

/// The data stand in a box as long as this does, which leaves the matrix as it was.
class BoxScope_cls {
public:
    BoxScope_cls(const FilterDataBoxData_cls* pBox, bool bMirrored) : mbMirrored(bMirrored) {
        if (pBox) pBox->GLSetMatrix();
        if (mbMirrored) glFrontFace(GL_CW);
    }
    ~BoxScope_cls() {
        if (mbMirrored) glFrontFace(GL_CCW);
    }
    BoxScope_cls(const BoxScope_cls&) = delete;
    BoxScope_cls& operator=(const BoxScope_cls&) = delete;

private:
    const GLMatrixScope_cls mMatrix;
    bool mbMirrored;
};

} // namespace

FilterDataBoxData_cls* ViewScene_cls::GetDataBox() const {
    FilterLists_cls* filters = mContext.mHost.GetPCFilters();
    return filters ? filters->GetObject().GetPCDataBox() : nullptr;
}

// A number of copies that the user doesn't want counts as none, and the view tells.
const FilterCopy_cls* ViewScene_cls::GetCopies(long long* pNumber) const {
    *pNumber = 1;
    FilterLists_cls* filters = mContext.mHost.GetPCFilters();
    const FilterCopy_cls* copies = filters ? filters->GetWorld().GetPCCopy() : nullptr;
    if (!copies) return nullptr;
    *pNumber = copies->GetNumber();
    if (mContext.mHost.MayDrawCopies(*pNumber)) return copies;
    if (!mPass.bAgain) mContext.mMessage.Add(wxString::Format("%lld copies are not drawn", *pNumber) + "\n");
    *pNumber = 1;
    return nullptr;
}

// Particles, objects and sticks, as the lights that are set show them; or the shadows of particles.
void ViewScene_cls::DrawData() {
    FilterDataBoxData_cls* box = GetDataBox();
    double place[16];
    if (box) {
        box->UpdateCurrentObj(mContext.mMoment.doubleIndex);
        if (!box->GetMatrix(place)) return; // nothing can be drawn at a place that is no number
    }
    GLSequence_cls& data = GLSequence_cls::Of(*mContext.mHost.GetPCActiveFileSequence());
    data.SetCameraInfo(mCFaceCam, box ? place : nullptr);
    const BoxScope_cls inBox(box, box && GetPlaceDeterminant(place) < 0.0);
    if (!mPass.bVolumes) DrawRealObjectCopyLoop();
    if (DrawProgress_cls::WasCut()) return;
    if (mContext.mSettings.mShowData.mValue && mContext.mMoment.bData) DrawDataCopyLoop();
    if (!DrawProgress_cls::WasCut()) GDrawingPercentage.store(100);
}

void ViewScene_cls::DrawDataLit() {
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    DrawData();
}

void ViewScene_cls::DrawDataMain() {
    SetFog();
    DrawDataLit();
    if (mShadows == 1) DrawShadowed();
    mContext.mMessage.Add(GLDrawData_cls::msStrMessage);
    GLDrawData_cls::msStrMessage.clear();
    TellPlaceless();
}

// What a file holds and no picture can show.
void ViewScene_cls::TellPlaceless() {
    if (!mContext.mSettings.mShowData.mValue || !mContext.mMoment.bData) return;
    const PDataSnap_cls* snap = mContext.mHost.GetPCActiveFileSequence()->GetSnap(mContext.mMoment.dataFrame);
    if (snap && snap->IsItLoaded() && snap->mPlaceless > 0)
        mContext.mMessage.Add(
            wxString::Format("%lld particles aren't drawn: their place is no number or too far",
                             snap->mPlaceless) +
            "\n");
}

// The list of what is drawn is made for the first copy of the first face and serves all others: they, and
// further passes, are drawn as another face is.
void ViewScene_cls::DrawDataCopyLoop() {
    PDataSequence_cls& sequence = *mContext.mHost.GetPCActiveFileSequence();
    long long number = 1;
    const FilterCopy_cls* copies = GetCopies(&number);
    const int frame = mContext.mMoment.dataFrame;
    const float cost = static_cast<float>(sequence.GetParticleNumber(frame)) * DrawProgress_cls::kCostVertex;
    DrawCopies(copies, number, cost, [&](long long copy) {
        const bool bFirst = copy == 0 && !mPass.bAgain;
        CpuDraw_cls::SetBlank(std::exchange(mbBlank, false));
        const int face = bFirst ? mContext.mMoment.face : mContext.mMoment.face + 1;
        GLSequence_cls::Of(sequence).GLDrawData(face, frame, mContext.mMoment.dt, mPass.lights, mPass.light,
                                                mPass.bVolumes);
        CpuDraw_cls::SetBlank(false);
    });
    if (!mPass.bVolumes && !DrawProgress_cls::WasCut()) DrawSticks(copies, number);
}

namespace {

/// The particles as they were drawn.
StickParticles_st ParticlesOf(const SnapData_cls& snap) {
    StickParticles_st particles;
    particles.mpPos = snap.mpPos;
    particles.mpType = snap.mpType;
    particles.mpID = snap.mpCBlock && snap.mpCBlock->mbAllocated ? snap.mpCBlock->mpID : nullptr;
    particles.mCount = snap.mNumber;
    particles.mStep = snap.mStep;
    particles.mTime = static_cast<float>(snap.mTime);
    particles.mVersion = snap.mSerial;
    return particles;
}

} // namespace

// Once a picture, not a copy or a face; but of what is drawn, which memory may have made anew between faces.
void ViewScene_cls::PrepareSticks(const StickParticles_st& particles) {
    constexpr long kMillis = 50;
    if ((mContext.mMoment.face > 0 || mPass.bAgain) && particles.mVersion == mPrepared) return;
    mPrepared = particles.mVersion;
    FilterLists_cls& filters = *mContext.mHost.GetPCFilters();
    BondFollower_cls* bonds = filters.mpCBonds.get();
    if (bonds) bonds->Follow(kMillis, BondFollower_cls::Source::Memory);
    bool bKnown = true;
    for (FilterStick_cls* stick : filters.GetObject().GetVpCSticks())
        bKnown = stick->Prepare(particles, mContext.mMoment.dataFrame, mContext.mMoment.frame) && bKnown;
    if (bKnown || !bonds) return;
    bonds->NoteMissed();
    mContext.mMessage.Add(bonds->GetStatus() + "\n");
}

// Of all copies behind the last particle: they are solid, and the order of what is transparent isn't theirs.
void ViewScene_cls::DrawSticks(const FilterCopy_cls* pCopies, long long number) {
    FilterLists_cls* filters = mContext.mHost.GetPCFilters();
    const SnapData_cls* snap = GLDrawData_cls::mspCSnapShot;
    if (!filters || !snap || !snap->mbAllocated) return;
    // A frame without particles leaves another one's there.
    const PDataBlock_cls* block =
        mContext.mHost.GetPCActiveFileSequence()->GetPCBlock(mContext.mMoment.dataFrame);
    if (!snap->IsOf(block, mContext.mMoment.dt, snap->mStep)) return;
    const std::vector<FilterStick_cls*> sticks = filters->GetObject().GetVpCSticks();
    if (sticks.empty()) return;
    const GLAttribScope_cls attributes;
    if (pCopies) {
        glDepthMask(GL_TRUE);
        glEnable(GL_DEPTH_TEST);
    }
    const StickParticles_st particles = ParticlesOf(*snap);
    PrepareSticks(particles);
    const auto draw = [&](long long copy) {
        const unsigned mask = pCopies ? static_cast<unsigned>(pCopies->GetBitBoundary(copy)) : 0u;
        for (FilterStick_cls* stick : sticks)
            if (!stick->GLDrawStick(particles, mask)) return;
    };
    if (!DrawProgress_cls::WasCut()) DrawCopies(pCopies, number, 0.0f, draw);
    GDrawingPercentage.store(100); // the particles' own end was told already
}

void ViewScene_cls::PrepareObjects() {
    FilterLists_cls* filters = mContext.mHost.GetPCFilters();
    if (!filters) return;
    filters->GetObject().PrepareObjects(mContext.mMoment.dataFrame);
    // Drawing would take the press for an old one.
    if (filters->mpCBonds) filters->mpCBonds->TakeAbort();
    if (mContext.mShared.mspCParticles) mContext.mShared.mspCParticles->TakeAbort();
}

// Meshes stand in each copy, simple shapes once.
void ViewScene_cls::DrawRealObjectCopyLoop() {
    FilterLists_cls* filters = mContext.mHost.GetPCFilters();
    if (!filters || !filters->GetObject().IsObjectExist()) return;
    const GLAttribScope_cls attributes;
    mbBlank = false;
    glDepthMask(GL_TRUE);
    glEnable(GL_DEPTH_TEST);
    const auto draw = [&](bool bPerCopy) {
        filters->GetObject().GLDrawRealObject(mContext.mMoment.doubleIndex, mPass.lights, bPerCopy);
    };
    long long number = 1;
    const FilterCopy_cls* copies = GetCopies(&number);
    DrawCopies(copies, number, 0.0f, [&](long long) { draw(true); });
    if (!DrawProgress_cls::WasCut()) draw(false);
}
