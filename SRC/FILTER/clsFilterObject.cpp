#include "FILTER/clsFilterObject.h"

#include "COLORCURVE/clsColorCurve.h"
#include "FILTER/FilterFrame.h"
#include "FILTER/clsFilterCtrl.h"

FilterObjectData_cls::FilterObjectData_cls() : FilterData_cls(true, true) {
    mCConfItemList.Add(&mCObjectType, "ObjectType=", "0");
    mCConfItemList.Add(&mCImportPath, "ImportPath=", "NONE");
    static const char* const kUnit[3] = {"1 0 0", "0 1 0", "0 0 1"};
    for (int column = 0; column < 3; ++column)
        mCConfItemList.Add(&mCArrayVector[column], wxString::Format("ArrayVector%d=", column), kUnit[column]);
    mCTexture.AddTo(&mCConfItemList);
    AddColorCurve("Ambient", "0.2 0.16 0.04 1");
    AddColorCurve("Diffuse", "1 0.8 0.2 1");
    AddColorCurve("Specular", "1 0.8 0.2 1");
}

void FilterObject_cls::GLDraw(double time) const { DrawFilterFrame(*GetPCData(), time); }

void FilterObject_cls::OnSelected() {
    mpCFilterCtrl->ConnectTexture(&GetPCData()->mCTexture, GetPCData()->mCName.mStrValue);
}

void FilterObject_cls::OnDeselected() {
    if (GetPCData()->mCTexture.mpCDialogLink) mpCFilterCtrl->ConnectTexture(nullptr, wxString());
}
