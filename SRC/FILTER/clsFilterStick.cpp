#include "FILTER/clsFilterStick.h"

#include "FILTER/clsFilterCtrl.h"

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

void FilterStick_cls::OnSelected() {
    mpCFilterCtrl->ConnectTexture(&GetPCData()->mCTexture, GetPCData()->mCName.mStrValue);
}

void FilterStick_cls::OnDeselected() {
    if (GetPCData()->mCTexture.mpCDialogLink) mpCFilterCtrl->ConnectTexture(nullptr, wxString());
}
