#include "GL/VIEW/clsInformation.h"

#include <algorithm>

#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/clsInformationGUI.h"
#include "GL/VIEW/clsParticlePanel.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "PDATA/ParticleName.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"

bool Information_cls::Values_st::operator==(const Values_st& other) const {
    return std::equal(mPos, mPos + 3, other.mPos) && std::equal(mVel, mVel + 3, other.mVel) &&
           mTime == other.mTime && mRadius == other.mRadius && mValue1 == other.mValue1 &&
           mType == other.mType && mID == other.mID && mbThere == other.mbThere;
}

namespace {

double GetBlockTime(const PDataBlock_cls* pBlock) {
    return pBlock && pBlock->mpCSnap ? pBlock->mpCSnap->mTime : Information_cls::kTimeUnset;
}

void TakeFromBlock(const PDataBlock_cls& block, int index, Information_cls::Values_st& values) {
    if (block.mpID) values.mID = block.mpID[index];
    if (block.mpVel) std::copy_n(block.mpVel[index], 3, values.mVel);
}

} // namespace

Information_cls::Information_cls() {
    mConfList.Add(&mIndex, "InformationIndex=", "0");
    mConfList.Add(&mType, "InformationType=", "0");
}

Information_cls::Values_st Information_cls::GetValues(const SnapData_cls* pSnap, int index) {
    Values_st values;
    // Particles that downsizing leaves out aren't worked out.
    if (!pSnap || !pSnap->mbAllocated || index < 0 || index >= pSnap->mNumber) return values;
    if (pSnap->mStep > 1 && index % pSnap->mStep != 0) return values;
    std::copy_n(pSnap->mpPos[index], 3, values.mPos);
    values.mRadius = pSnap->mpRadius[index];
    values.mValue1 = pSnap->mpValue1[index];
    values.mType = pSnap->mpType[index];
    const PDataBlock_cls* pBlock = pSnap->mpCBlock;
    values.mTime = GetBlockTime(pBlock) == kTimeUnset ? kTimeUnset : pSnap->mTime;
    if (pBlock && pBlock->mbAllocated && index < pBlock->mParticleNumber)
        TakeFromBlock(*pBlock, index, values);
    values.mbThere = true;
    return values;
}

Information_cls::Values_st Information_cls::GetValues(const PDataBlock_cls* pBlock, int index) {
    Values_st values;
    if (!pBlock || !pBlock->mbAllocated || index < 0 || index >= pBlock->mParticleNumber) return values;
    std::copy_n(pBlock->mpPos[index], 3, values.mPos);
    values.mRadius = pBlock->mpRadius[index];
    values.mValue1 = pBlock->mpValue1[index];
    values.mType = pBlock->mpType[index];
    values.mTime = GetBlockTime(pBlock);
    TakeFromBlock(*pBlock, index, values);
    values.mbThere = true;
    return values;
}

Information_cls::Values_st Information_cls::GetDrawnValues(const SnapData_cls* pSnap, int index) const {
    Values_st values = GetValues(pSnap, index);
    if (values.mbThere && mPlace) mPlace(values.mPos);
    return values;
}

/// The index is the picked particle's; false: it isn't there now.
bool Information_cls::FollowPicked(const PDataBlock_cls* pBlock) {
    if (!mpCParticles || !mpCParticles->IsPicked() || !pBlock) return true;
    const SnapData_cls* snap = GLDrawData_cls::mspCSnapShot;
    const int index = mpCParticles->FindIn(*pBlock, snap ? snap->mSerial : 0);
    if (index >= 0) mIndex.mValue = index;
    return index >= 0;
}

void Information_cls::OnIndex() {
    const PDataBlock_cls* pBlock = mGetBlock ? mGetBlock() : nullptr;
    if (pBlock && mpCParticles && mpCParticles->IsPicked())
        mpCParticles->Pick(NameParticle(*pBlock, mIndex.mValue, mpCParticles->GetName().mCell));
    Update();
}

void Information_cls::Update() {
    if (!mpCGUI || !mpCGUI->IsShownOnScreen()) return;
    if (mpCParticleGUI) mpCParticleGUI->UpdateParticle();
    const PDataBlock_cls* pBlock = mGetBlock ? mGetBlock() : nullptr;
    if (!FollowPicked(pBlock)) pBlock = nullptr;
    if (mType.mValue == RAW_DATA)
        mpCGUI->UpdateInfo(pBlock);
    else // without a block nothing is drawn, and the last snapshot is another's
        mpCGUI->UpdateInfo(pBlock ? GLDrawData_cls::mspCSnapShot : nullptr);
}
