// The one selected object: clicks in the views, panels of filters, the lights' dialog and rows of the time
// lines choose it, and all of them show it.
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "FILTER/clsFilterLists.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GL/VIEW/clsViewFitCtrl.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsMoveItem.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"

namespace {

constexpr int kFirstFilter = 20; // names below are those of other objects
constexpr int kFirstLight = 10;

} // namespace

// Whoever tells has shown it already.
void Main_cls::LinkSelection() {
    ParamGUICtrl_cls* lines = mpCParamGUICtrl;
    SharedView_cls& views = *mpCFrameMain->GetPCSharedView();
    views.mOnPicked = [this](int name) { SelectPicked(name); };
    views.mOnPointed = [frame = mpCFrameMain](const wxString& text) {
        if (text == frame->mStrPointed) return;
        frame->mStrPointed = text;
        frame->UpdateStatusText();
    };
    mpCInformation->mToAnchor = [this] {
        mpCFrameMain->GetPCViewFit()->MoveToAnchor(*mpCFrameMain->GetPCOutputCanvas());
    };
    mpCParticles->mOnPicked = [frame = mpCFrameMain] { frame->GetPCTopHalf()->ShowInformation(); };
    mpCParticles->mOnChanged = [this] {
        mpCInformation->Update();
        PostMenuEvent(ID_REFRESH_GL);
    };
    mpCFilters->mHooks.mSelectObject = [lines](SceneObj_cls* pObject) {
        MoveItem_cls::SetSelection(lines->SelectObject(pObject));
    };
    lines->mOnObjectChosen = [this, lines](SceneObj_cls* pObject) {
        mpCFilters->SelectObject(pObject);
        mpCLightSRCCtrl->ShowObject(pObject);
        lines->MarkObject(pObject);
        MoveItem_cls::SetSelection(pObject);
        PostMenuEvent(ID_REFRESH_GL);
    };
    mpCLightSRCCtrl->mOnRows = [this, lines] {
        lines->HideAndShow();
        lines->ResizeTL();
        const SceneObj_cls* selected = MoveItem_cls::mspCSelectedObject;
        for (int i = mpCLightSRCCtrl->GetLightNumber(); i < LightSRCCtrl_cls::kLightNumber; ++i)
            if (selected == &mpCLightSRCCtrl->GetLight(i)) SelectObject(nullptr); // it is out of use
    };
    mpCLightSRCCtrl->mOnSelect = [this, lines](SceneObj_cls* pObject) {
        mpCFilters->SelectObject(pObject);
        MoveItem_cls::SetSelection(lines->SelectObject(pObject));
    };
}

void Main_cls::SelectObject(SceneObj_cls* pObject) {
    mpCFilters->SelectObject(pObject);
    mpCLightSRCCtrl->ShowObject(pObject);
    MoveItem_cls::SetSelection(mpCParamGUICtrl->SelectObject(pObject));
}

void Main_cls::SelectObject(int id, int sub) {
    MoveItem_cls::SetSelection(mpCParamGUICtrl->SelectObject(id, sub));
}

void Main_cls::ThisObjectIsSelected(int id) {
    if (id >= kFirstLight && id < kFirstLight + LightSRCCtrl_cls::kLightNumber)
        mpCLightSRCCtrl->SelectLight(id - kFirstLight);
}

void Main_cls::SelectFilter(FilterBase_cls* pFilter, bool bDeselectObject) {
    mpCFilters->SelectFilter(pFilter, bDeselectObject);
}

void Main_cls::SelectFilterByHittest(int id, bool bDeselectObject) {
    if (id < kFirstFilter) return;
    if (FilterBase_cls* filter = mpCFilters->FindByPickName(id)) SelectFilter(filter, bDeselectObject);
}

void Main_cls::SelectPicked(int name) {
    if (name >= kFirstFilter) {
        SelectFilterByHittest(name, true);
        return;
    }
    SelectFilter(nullptr, false);
    SelectObject(name, 0);
    ThisObjectIsSelected(name);
}
