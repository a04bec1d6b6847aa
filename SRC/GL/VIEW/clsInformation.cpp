#include "GL/VIEW/clsInformation.h"

#include <algorithm>

#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/clsInformationGUI.h"
#include "PDATA/clsPDataBlock.h"

bool Information_cls::Values_st::operator==(const Values_st& other) const {
    return std::equal(mPos, mPos + 3, other.mPos) && mRadius == other.mRadius && mValue1 == other.mValue1 &&
           mType == other.mType && mID == other.mID && mbThere == other.mbThere;
}

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
    if (pBlock && pBlock->mbAllocated && pBlock->mpID && index < pBlock->mParticleNumber)
        values.mID = pBlock->mpID[index];
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
    if (pBlock->mpID) values.mID = pBlock->mpID[index];
    values.mbThere = true;
    return values;
}

Information_cls::Values_st Information_cls::GetDrawnValues(const SnapData_cls* pSnap, int index) const {
    Values_st values = GetValues(pSnap, index);
    if (values.mbThere && mPlace) mPlace(values.mPos);
    return values;
}

void Information_cls::Update() {
    if (!mpCGUI || !mpCGUI->IsShownOnScreen()) return;
    const PDataBlock_cls* pBlock = mGetBlock ? mGetBlock() : nullptr;
    if (mType.mValue == RAW_DATA)
        mpCGUI->UpdateInfo(pBlock);
    else // without a block nothing is drawn, and the last snapshot is another's
        mpCGUI->UpdateInfo(pBlock ? GLDrawData_cls::mspCSnapShot : nullptr);
}
