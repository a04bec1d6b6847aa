// The hub and the undo list: steps that open and close data, and what curves ask of the program.
#include "APP/GuessLooks.h"
#include "APP/clsCommandLoadData.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COMMON/MsgBox.h"
#include "FILTER/PANEL/clsTexPropertyCtrl.h"
#include "FILTER/clsFilterLists.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/clsKeyFrame.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsMoveItem.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/Clipboard.h"
#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamTL.h"
#include "WIDGET/clsMultiInputPanel.h"
#include "WIDGET/clsNumField.h"

void Main_cls::LinkParamHooks() {
    LinkGuess(this);
    KeyFrame_cls::FillInterpNames();
    GParamHooks.mClipboard = PutOnClipboard;
    GParamHooks.mFindParam = [this](const wxString& id) { return GetPCParamFromID(id); };
    GParamHooks.mMarkSnipping = [this](int frame) {
        mpCPDataSeqCtrl->SetSnipping(mpCTimeCtrl->GetRemappedIndex(frame));
    };
    mpCTimeCtrl->mCollectTags = [this](std::vector<bool>* pTags) {
        mpCPDataSeqCtrl->ClearSnipping();
        if (mpCParamGUICtrl) mpCParamGUICtrl->CheckSnippingTag(pTags);
    };
}

// The groups that are there from the start, folded: most work needs no key.
void Main_cls::MakeTimeLines() {
    mpCParamGUICtrl = mpCFrameMain->GetPCBtmHalf()->GetPCParamGUICtrl();
    ParamGUICtrl_cls* lines = mpCParamGUICtrl;
    GParamHooks.mGroupRefresh = [lines](ParamGroup_cls* pGroup) { lines->GroupRefresh(pGroup); };
    GParamHooks.mNeighbourKey = [lines](double doubleIndex, int dir) {
        return NeighbourKey(lines->ShownCurves(), doubleIndex, dir);
    };
    GParamHooks.mStripTimeDepend = [lines](ParamTL_cls* pStrip, bool bTimeDepend) {
        lines->StripTimeDepend(pStrip, bTimeDepend);
    };
    GParamHooks.mStripRead = [lines](ParamTL_cls* pStrip) { lines->StripRead(pStrip); };
    for (ParamGroup_cls* group : {mpCTimeCtrl->mpCTimeRemapGroup, mpCParamGroupCameraPath,
                                  mpCStereoGram->mpCParallax, mpCLightSRCCtrl->mpCTopGroup}) {
        lines->AddParamGroup(group);
        lines->FoldGroup(group, true);
    }
    mpCFilters->mHooks.mAddGroup = [lines](ParamGroup_cls* pGroup) {
        lines->AddParamGroup(pGroup);
        pGroup->mbOpen = false; // most work needs no key
        lines->HideAndShowLater();
        lines->ResizeTL();
    };
    mpCFilters->mHooks.mRemoveGroup = [lines](ParamGroup_cls* pGroup) {
        lines->RemoveParamGroup(pGroup);
        lines->ResizeTL();
    };
    LinkSelection();
    mpCStereoGram->mOnRows = [lines] {
        lines->HideAndShow();
        lines->ResizeTL();
    };
    mpCFilters->mHooks.mConnectTexture = [this](SceneObjTexture_cls* pTexture, const wxString& name) {
        mpCTexPropertyCtrl->ReconnectTexture(pTexture, name);
    };
    mpCFilters->mHooks.mCountTypes = [this] {
        const int index = mpCTimeCtrl->GetRemappedIndex(-1);
        const PDataBlock_cls* block = mpCPDataSeqCtrl->GetPCActiveFileSequence()->GetPCBlock(index);
        return IsTheIndexLoaded(index) && block->mbAllocated
                   ? CountTypes(block->mpType, block->mParticleNumber)
                   : std::vector<TypeCount_st>();
    };
    mpCFilters->mHooks.mTell = [](const wxString& text) { Notice(text, text); };
    lines->ShowGroup(mpCTimeCtrl->mpCTimeRemapGroup, mpCTimeCtrl->mbUseTimeRemap.mValue);
    lines->HideAndShow();
    lines->ResizeTL();
}

void Main_cls::UnlinkParamHooks() {
    MoveItem_cls::SetSelection(nullptr);
    mpCParamGUICtrl = nullptr; // went with the frame
    mpCFilters->mHooks = FilterHooks_st();
    mpCInformation->mToAnchor = nullptr;
    mpCParticles->mOnPicked = mpCParticles->mOnChanged = nullptr;
    mpCStereoGram->mOnRows = mpCLightSRCCtrl->mOnRows = nullptr;
    mpCStereoGram->mGetDistanceToFocus = nullptr;
    mpCLightSRCCtrl->mOnSelect = nullptr;
    GCUndoList.Clear();
    UnlinkGuess();
    GParamHooks.mClipboard = nullptr;
    GParamHooks.mFindParam = nullptr;
    GParamHooks.mMarkSnipping = nullptr;
    GParamHooks.mGroupRefresh = nullptr;
    GParamHooks.mNeighbourKey = nullptr;
    GParamHooks.mStripTimeDepend = nullptr;
    GParamHooks.mStripRead = nullptr;
    mpCTimeCtrl->mCollectTags = nullptr;
}

Parameters_cls* Main_cls::GetPCParamFromID(const wxString& id) {
    Parameters_cls* found = mpCFilters->GetPCParamFromID(id);
    if (!found) found = mpCLightSRCCtrl->GetPCParamFromID(id);
    if (!found) found = mpCStereoGram->GetPCParamFromID(id);
    return found ? found : mpCTimeCtrl->mpCTimeRemapGroup->GetPCParamFromID(id);
}

void Main_cls::ClearFilters() {
    mpCFilters->ClearFilters();
    GCUndoList.Clear();
}

void Main_cls::EndGestures() {
    NumField_cls::EndAnyGesture();
    MoveItem_cls::EndDrag();
    mpCTimeCtrl->EndGesture();
    mpCColorCurveCtrl->EndGesture();
}

bool Main_cls::IsUndoable() const {
    return GCUndoList.IsUndoable() || NumField_cls::IsAnyGesture() || MoveItem_cls::IsDragging() ||
           mpCTimeCtrl->IsGesture() || mpCColorCurveCtrl->IsGesture();
}

void Main_cls::Undo() {
    EndGestures(); // what a hand still holds is the latest step
    GCUndoList.UndoCurrent();
    MultiInputPanel_cls::UpdateAllPanels();
}

void Main_cls::Redo() {
    EndGestures();
    GCUndoList.ExecCurrent();
    MultiInputPanel_cls::UpdateAllPanels();
}

namespace {

void Push(CommandLoadData_cls* pRedo, CommandLoadData_cls* pUndo) {
    GCUndoList.PushNewCommand(pRedo, pUndo);
    GCUndoList.ExecCurrent();
}

} // namespace

void Main_cls::OpenDataFileCommand(const wxString& path) {
    // Undo takes the two back in the other order: it closes the new data and opens the old.
    const UndoBlock_cls block;
    CloseDataCommand();
    if (!path.empty()) Push(new CommandLoadData_cls(this, path), new CommandLoadData_cls(this, ""));
}

void Main_cls::CloseDataCommand() {
    auto* undo = new CommandLoadData_cls(this, mpCPDataSeqCtrl->GetStrActiveFileSequencePath());
    undo->KeepClock(mpCTimeCtrl->GetState());
    Push(new CommandLoadData_cls(this, ""), undo);
}
