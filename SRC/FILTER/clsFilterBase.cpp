#include "FILTER/clsFilterBase.h"

#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsSceneObjTexture.h"

FilterBase_cls::FilterBase_cls(FilterType type, std::unique_ptr<FilterData_cls> pData)
    : mpCData(std::move(pData)), mCFilterType("FilterType=", wxString::Format("%d", int(type))) {
    mpCData->mCName.mStrValue = GetFilterLabel(type) + kFilterNumber;
}

FilterBase_cls::~FilterBase_cls() = default;

bool FilterBase_cls::Select(bool bSelected) {
    if (mpCData->mbSelected == bSelected) return false;
    mpCData->Select(bSelected);
    if (mpCGUI) mpCGUI->ShowSelected(bSelected);
    ConnectTexture(bSelected);
    return true;
}

// The texture dialog shows what belongs to the selected filter.
void FilterBase_cls::ConnectTexture(bool bSelected) const {
    SceneObjTexture_cls* texture = mpCData->GetTexture();
    if (!texture) return;
    if (bSelected)
        mpCFilterCtrl->ConnectTexture(texture, mpCData->mCName.mStrValue);
    else if (texture->mpCDialogLink)
        mpCFilterCtrl->ConnectTexture(nullptr, wxString());
}

// Names are written in the words of the kinds, whatever the user's language.
wxString FilterBase_cls::Serialize() {
    const wxString name = mpCData->mCName.mStrValue;
    mpCData->ChangeCustomName(NAME_PLAIN);
    const wxString text = "-FilterBegin\n" + mCFilterType.Serialize() + mpCData->Serialize() + "-FilterEnd\n";
    mpCData->mCName.mStrValue = name;
    return text;
}

void FilterBase_cls::BeginWeigh(double, long long) {}

void FilterBase_cls::Weigh(const WeighedList_st&, float*) const {}

void FilterBase_cls::GLDraw(MarkPainter_cls&, double) const {}
