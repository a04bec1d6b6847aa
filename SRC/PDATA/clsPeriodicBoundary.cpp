#include "PDATA/clsPeriodicBoundary.h"

void PeriodicBoundary_cls::SetToDefault() {
    mCConfItemList.Clear();
    mCConfItemList.Add(&mCPeriodicType, "PeriodicType=", "0");
    mCConfItemList.Add(&mCPeriodicSize, "PeriodicSize=", "1 1 1");
    mCConfItemList.Add(&mCPeriodicEffect, "PeriodicEffect=", "0");
    mCConfItemList.Add(&mCPeriodicBaseVector0, "PeriodicBaseVector0=", "10 0 0");
    mCConfItemList.Add(&mCPeriodicBaseVector1, "PeriodicBaseVector1=", "0 10 0");
    mCConfItemList.Add(&mCPeriodicBaseVector2, "PeriodicBaseVector2=", "0 0 10");
}

void PeriodicBoundary_cls::GetBoundaryVector(float* pOut, int k) const {
    const ConfItemFLOATARRAY_cls& base = k == 0   ? mCPeriodicBaseVector0
                                         : k == 1 ? mCPeriodicBaseVector1
                                                  : mCPeriodicBaseVector2;
    for (int i = 0; i < 3; ++i)
        pOut[i] = mCPeriodicSize.mValue[i] * base.mValue[i];
}
