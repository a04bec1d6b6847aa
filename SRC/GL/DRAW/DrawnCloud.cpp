#include "GL/DRAW/DrawnCloud.h"

#include <memory>
#include <vector>

#include "GL/DRAW/DrawListFilter.h"
#include "GL/DRAW/clsDrawList.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsParticlePicker.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/ParticleArrays.h"

static_assert(FitCloud_st::kClasses == kParticleClasses, "a class has one look");

namespace {

void TakeLook(const GLAttribute_cls& attribute, float widening, FitCloud_st& cloud, int c) {
    const unsigned type = attribute.mDrawType.mValue;
    cloud.mbDrawn[c] = type == DRAW_POINT || type == DRAW_BILLBOARD || type == DRAW_SPHERE;
    if (type == DRAW_POINT) return; // their size is one of the picture
    const bool bConstant = attribute.mRadiusType.mValue == RADIUS_CONSTANT;
    (bConstant ? cloud.mRadiusConstant : cloud.mRadiusFactor)[c] = attribute.GetRadiusFactor() * widening;
}

} // namespace

FitCloud_st MakeDrawnCloud(const ParticleArrays_st& arrays, long long number,
                           const GLAttribute_cls* const* ppAttribute) {
    const DrawOption_cls& options = *ppAttribute[0]->mpCDrawOption;
    FitCloud_st cloud;
    cloud.mpPos = arrays.mpPos;
    cloud.mpRadius = arrays.mpRadius;
    cloud.mNumber = number;
    cloud.mStep = options.GetDownSizing();
    const bool bClasses = options.IsClassified();
    if (bClasses) cloud.mpType = arrays.mpType;
    const auto widening =
        static_cast<float>(GLDrawData_cls::GetSteppingRadiusFactor(options.GetDownSizing()));
    for (int c = 0; c < kParticleClasses; ++c)
        TakeLook(*ppAttribute[bClasses ? c : 0], widening, cloud, c);
    return cloud;
}

PickCloud_st MakePickCloud(const SnapData_cls& snap, const GLAttribute_cls* const* ppAttribute,
                           double pixelsOfBuffer, double time) {
    if (!snap.mbAllocated) return {};
    ParticleArrays_st arrays;
    arrays.mpPos = snap.mpPos;
    arrays.mpRadius = snap.mpRadius;
    arrays.mpType = snap.mpType;
    PickCloud_st cloud;
    static_cast<FitCloud_st&>(cloud) = MakeDrawnCloud(arrays, snap.mNumber, ppAttribute);
    const DrawOption_cls& options = *ppAttribute[0]->mpCDrawOption;
    for (int c = 0; c < kParticleClasses; ++c) {
        const GLAttribute_cls& attribute = *ppAttribute[options.IsClassified() ? c : 0];
        cloud.mbBall[c] = attribute.mDrawType.mValue == DRAW_SPHERE;
        if (attribute.mDrawType.mValue == DRAW_POINT)
            cloud.mPixels[c] = 0.5 * attribute.mPointSize.mValue * pixelsOfBuffer;
    }
    DrawListFilter_cls* filter = GLDrawData_cls::mspCFilterCtrlBooleanLink;
    const unsigned sortOrder = options.mSortOrder.mValue;
    if (filter && filter->IsThinning() && IsListThinned(sortOrder)) cloud.mpCFilter = filter;
    cloud.mSortOrder = sortOrder;
    cloud.mpColor = snap.mpColor;
    cloud.mTime = time;
    return cloud;
}

void ThinCloud(FitCloud_st& cloud, DrawListFilter_cls& filter, double time) {
    struct Kept_st {
        std::vector<float> mPos, mRadius;
        std::vector<unsigned char> mType;
    };
    DrawList_t list;
    MakeDrawList(list, static_cast<int>(cloud.mNumber), static_cast<int>(cloud.mStep), cloud.mpPos, {},
                 &filter, time);
    const auto kept = std::make_shared<Kept_st>();
    for (const ArrayAndIndex_cls& entry : list) {
        const auto i = static_cast<size_t>(entry.mIndex);
        kept->mPos.insert(kept->mPos.end(), cloud.mpPos[i], cloud.mpPos[i] + 3);
        if (cloud.mpRadius) kept->mRadius.push_back(cloud.mpRadius[i]);
        if (cloud.mpType) kept->mType.push_back(cloud.mpType[i]);
    }
    cloud.mpPos = reinterpret_cast<const float(*)[3]>(kept->mPos.data());
    if (cloud.mpRadius) cloud.mpRadius = kept->mRadius.data();
    if (cloud.mpType) cloud.mpType = kept->mType.data();
    cloud.mNumber = static_cast<long long>(list.size());
    cloud.mStep = 1;
    cloud.mpOwned = kept;
}
