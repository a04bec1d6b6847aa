#include "FILTER/clsFilterStick.h"

#include <algorithm>

#include "COMMON/FramePath.h"
#include "FILTER/clsFilterCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"

namespace {

StickCell_st CellOf(const PeriodicBoundary_cls& box) {
    StickCell_st cell;
    cell.mType = box.mCPeriodicType.mValue;
    const ConfItemFLOATARRAY_cls* const bases[3] = {&box.mCPeriodicBaseVector0, &box.mCPeriodicBaseVector1,
                                                    &box.mCPeriodicBaseVector2};
    std::copy_n(box.mCPeriodicSize.mValue, 3, cell.mSize);
    for (int k = 0; k < 3; ++k)
        std::copy_n(bases[k]->mValue, 3, cell.mBase[k]);
    return cell;
}

} // namespace

FilterStickData_cls::FilterStickData_cls() : FilterData_cls(false, true) {
    mCConfItemList.Add(&mCStickType, "StickType=", "0");
    mCConfItemList.Add(&mCStickRadius, "StickRadius=", "0.5");
    mCConfItemList.Add(&mCStickWidth, "StickWidth=", "10");
    mCConfItemList.Add(&mCCalcType, "CalcType=", "0");
    mCConfItemList.Add(&mCStickPath, "StickPath=", "NONE");
    mCConfItemList.Add(&mCCritType, "CritType=", "0");
    mCConfItemList.Add(&mCCritA, "CritA=", "1");
    mCConfItemList.Add(&mCCritB, "CritB=", "2");
    mCConfItemList.Add(&mCSpecType, "SpecType=", "0");
    mCConfItemList.Add(&mCSpecA, "SpecA=", "0");
    mCConfItemList.Add(&mCSpecB, "SpecB=", "1");
    mCTexture.AddTo(&mCConfItemList);
}

void FilterStick_cls::OnRemoved() { mSticks.ClearList(); }

wxString FilterStick_cls::MakeList(const StickParticles_st& particles, int frame) {
    FilterStickData_cls& data = *GetPCData();
    if (data.mCCalcType.mValue == FilterStickData_cls::CALCULATE) {
        StickRule_st rule;
        rule.mCritType = int(data.mCCritType.mValue);
        rule.mA = data.mCCritA.mValue;
        rule.mB = data.mCCritB.mValue;
        rule.mSpecType = int(data.mCSpecType.mValue);
        rule.mSpecA = data.mCSpecA.mValue;
        rule.mSpecB = data.mCSpecB.mValue;
        return mSticks.CalcFromData(particles, frame, rule);
    }
    data.mLastFrame = frame;
    if (data.mCStickPath.mStrValue != kNoPath) {
        const wxString file = FramePath_cls(data.mCStickPath.mStrValue, data.mStrFolder).GetFile(frame);
        const wxString told = mSticks.ReadListFromFile(file);
        return told.empty() ? told : file + ": " + told;
    }
    mSticks.ClearList();
    return wxString();
}

bool FilterStick_cls::GLDrawStick(const StickParticles_st& particles, unsigned copyMask, int frame) {
    const FilterStickData_cls& data = *GetPCData();
    if (!data.mCValid.mValue) return true;
    const wxString told = MakeList(particles, frame);
    if (!told.empty()) mpCFilterCtrl->Tell(data.mCName.mStrValue + ": " + told);
    mSticks.CheckValidity(&particles.mCount);
    const PeriodicBoundary_cls* box = mpCFilterCtrl->GetPCPeriodic();
    mSticks.SetPPeriodicBoundary(box ? CellOf(*box) : StickCell_st());
    float colors[3][4];
    data.mCTexture.GetAlphaInfo(colors);
    StickStyle_st style;
    style.mType = data.mCStickType.mValue;
    style.mAlpha = colors[0][3];
    style.mRadius = data.mCStickRadius.mValue;
    style.mWidth = data.mCStickWidth.mValue;
    style.mShininess = data.mCTexture.mCShininess.mValue;
    return mGLSticks.Draw(mSticks, particles, style, copyMask);
}
