#include "GL/DRAW/clsGLDrawData.h"

#include <algorithm>
#include <cmath>

#include "COMMON/WorkTimes.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/DRAW/DrawListFilter.h"
#include "GL/DRAW/PlaceMatrix.h"
#include "GL/DRAW/clsDrawList.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"

ArrayAndIndex_cls* GLDrawData_cls::mspIndexAndZ = nullptr;
int GLDrawData_cls::msDownsizedAtFBO0 = 0;
SnapData_cls* GLDrawData_cls::mspCSnapShot = nullptr;
DrawListFilter_cls* GLDrawData_cls::mspCFilterCtrlBooleanLink = nullptr;
double GLDrawData_cls::msCurrentDoubleIndex = 0.0;
int GLDrawData_cls::msThinning = 1;
unsigned GLDrawData_cls::msListSerial = 0;
bool GLDrawData_cls::msbListIsIdentity = false;

namespace {

// Made anew for each paint; its memory stays, as fresh pages cost more than the list.
DrawList_t sDrawList;
// What it was made for. Between two faces events may run that close or open data.
const SnapData_cls* spListSnap = nullptr;
int sListNumber = 0;

double AlphaFactor(double share, int step) { return 1.0 + share * (step - 1); }
double RadiusFactor(double share, int step) { return std::sqrt(1.0 + share * (step - 1)); }
double AlphaShare(int step) { return 0.8 - 0.6 * step / 100.0; }
double RadiusShare(int step) { return 0.6 * step / 100.0 + 0.2; }

} // namespace

GLDrawData_cls::GLDrawData_cls() = default;
GLDrawData_cls::~GLDrawData_cls() = default;

void GLDrawData_cls::SetCameraPos(const PositionAndDirection_cls& camera, const double* pPlace) {
    std::copy(camera.mPos, camera.mPos + 3, mCameraPos);
    std::copy(camera.mFront, camera.mFront + 3, mCameraDir);
    std::copy(camera.mPos, camera.mPos + 3, mEye);
    mbPlaced = pPlace != nullptr;
    mbMirrored = false;
    if (!mbPlaced) return;
    std::copy(pPlace, pPlace + 16, mPlace);
    PullDirection(mPlace, camera.mFront, mCameraDir);
    mbMirrored = GetPlaceDeterminant(mPlace) < 0.0;
    UnplacePoint(mPlace, camera.mPos, mCameraPos);
}

void GLDrawData_cls::SetLightSourceInfo(int lightCount, const float* pLight) {
    mLightNumber = lightCount;
    if (pLight) std::copy(pLight, pLight + 4, mLight);
}

void GLDrawData_cls::ZSortAtFBO0(int count, int step, const float (*pPos)[3], unsigned sortOrder,
                                 bool planeDepth) {
    DrawListOrder order;
    order.sortOrder = sortOrder;
    order.planeDepth = planeDepth;
    std::copy(mEye, mEye + 3, order.cameraPos);
    order.pPlace = mbPlaced ? mPlace : nullptr;
    std::copy(mCameraDir, mCameraDir + 3, order.cameraDir);
    DrawListFilter_cls* filter = mspCFilterCtrlBooleanLink;
    if (filter && !filter->IsThinning()) filter = nullptr;
    MakeDrawList(sDrawList, count, step, pPos, order, filter, msCurrentDoubleIndex);
    ++msListSerial;
    mspIndexAndZ = sDrawList.data();
    msDownsizedAtFBO0 = static_cast<int>(sDrawList.size());
    msbListIsIdentity = step == 1 && sortOrder != SORT_FAR_FIRST && sortOrder != SORT_NEAR_FIRST && !filter;
}

int GLDrawData_cls::ZSort(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute) {
    if (face == 0 || pSnap != spListSnap || pSnap->mNumber != sListNumber) {
        spListSnap = pSnap;
        sListNumber = pSnap->mNumber;
        const WorkScope_cls work(Work::Sort);
        const DrawOption_cls& option = *pAttribute->mpCDrawOption;
        const bool bFacesEye = pAttribute->mDrawType.mValue == DRAW_BILLBOARD &&
                               pAttribute->mDrawQuality.mValue == QUALITY_MEDIUM;
        ZSortAtFBO0(pSnap->mpPos ? pSnap->mNumber : 0, option.GetDownSizing() * msThinning, pSnap->mpPos,
                    option.mSortOrder.mValue, !bFacesEye);
    }
    return msDownsizedAtFBO0;
}

bool GLDrawData_cls::IsFaded() {
    return mspCFilterCtrlBooleanLink && mspCFilterCtrlBooleanLink->IsBooleanChangeConstantColor();
}

double GLDrawData_cls::GetSteppingAlphaFactor(int step) {
    return AlphaFactor(std::max(AlphaShare(step), 0.2), step);
}

double GLDrawData_cls::GetSteppingRadiusFactor(int step) {
    return RadiusFactor(std::min(RadiusShare(step), 0.8), step);
}

double GLDrawData_cls::GetSteppingAlphaFactorUnlimited(int step) {
    return AlphaFactor(AlphaShare(step), step);
}

double GLDrawData_cls::GetSteppingRadiusFactorUnlimited(int step) {
    return RadiusFactor(RadiusShare(step), step);
}
