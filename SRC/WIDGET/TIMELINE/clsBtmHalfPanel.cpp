#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"

#include <algorithm>

#include <wx/settings.h>

#include "PARAM/clsKeyFrame.h"
#include "PARAM/clsParamGroup.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/DenseStyle.h"
#include "WIDGET/TIMELINE/clsCacheBar.h"
#include "WIDGET/TIMELINE/clsFrameSlider.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamTL.h"
#include "WIDGET/TIMELINE/clsPlayCtrlGUI.h"
#include "WIDGET/TIMELINE/clsTimeHeader.h"

namespace {
constexpr int kStoreCheck = 500; // milliseconds between two looks at the store
constexpr int kLeastRows = 2;    // of the time lines
} // namespace

BtmHalfPanel_cls::BtmHalfPanel_cls(wxWindow* pParent, TimeCtrl_cls* pTime, PDataSeqCtrl_cls* pStore)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL), mpCTime(pTime) {
    InstallDenseStyle();
    KeyFrame_cls::FillInterpNames();
    SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
    ParamTL_cls::mspCTimeCtrlLink = mpCTime;
    mpCSlider = new FrameSlider_cls(this, mpCTime);
    mpCCacheBar = new CacheBar_cls(this, mpCTime, pStore);
    mpCParamGUICtrl = new ParamGUICtrl_cls(this, mpCTime);
    mpCHeader = new TimeHeader_cls(this, mpCParamGUICtrl);
    mpCPlay = new PlayCtrlGUI_cls(this, mpCTime, pStore);
    mpCParamGUICtrl->mOnChanged = [this] {
        mpCHeader->RefreshIfChanged();
        UpdateTags();
    };
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) { RecheckSize(); });
    // Snapshots leave the memory without an event; nothing is drawn while all stays as it is.
    mTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        mpCCacheBar->RefreshIfChanged();
        mpCPlay->RefreshMemory();
    });
    mTimer.Start(kStoreCheck);
}

void BtmHalfPanel_cls::UpdateTags() {
    mpCTime->UpdateSnippingTag();
    mpCSlider->SetMarks(KeyPlaces(mpCParamGUICtrl->ShownCurves()));
}

// The remap curve stands there while it is used.
void BtmHalfPanel_cls::ShowTimeRemap() {
    ParamGroup_cls* remap = mpCTime->mpCTimeRemapGroup;
    const bool bUsed = mpCTime->mbUseTimeRemap.mValue;
    if (remap->mpCParamGUICtrl == mpCParamGUICtrl && remap->mbVisible != bUsed)
        mpCParamGUICtrl->ShowGroup(remap, bUsed);
}

void BtmHalfPanel_cls::RefreshTLPanels() {
    ShowTimeRemap();
    mpCSlider->RefreshIfChanged();
    mpCCacheBar->RefreshIfChanged();
    mpCParamGUICtrl->RefreshTL();
}

void BtmHalfPanel_cls::RefreshGUI() { mpCPlay->UpdateValues(); }

void BtmHalfPanel_cls::RecheckSize() {
    const wxSize size = GetClientSize();
    const int left = FromDIP(TimelineLook::kTreeWidth);
    const int right = mpCParamGUICtrl->GetBarWidth();
    const int slider = mpCSlider->GetMinSize().y;
    const int head = slider + mpCCacheBar->GetMinSize().y;
    const int play = mpCPlay->GetSizer()->GetMinSize().y;
    const int strip = std::max(size.x - left - right, 0);
    // In a low panel the play panel stays and the time lines go first.
    const int top = std::min(0, size.y - play - head);
    mpCHeader->SetSize(0, top, left, head);
    mpCSlider->SetSize(left, top, strip, slider);
    mpCCacheBar->SetSize(left, top + slider, strip, head - slider);
    const int rows = std::max(size.y - top - head - play, 0);
    // Without room they would be drawn over the play panel.
    mpCParamGUICtrl->Show(rows >= mpCParamGUICtrl->GetLook().mRow);
    mpCParamGUICtrl->SetSize(0, top + head, size.x, rows);
    mpCPlay->SetSize(0, std::max(size.y - play, 0), size.x, play);
    mpCParamGUICtrl->RecheckSize();
}

int BtmHalfPanel_cls::GetMinHeight() const {
    return mpCSlider->GetMinSize().y + mpCCacheBar->GetMinSize().y +
           kLeastRows * mpCParamGUICtrl->GetLook().mRow + mpCPlay->GetSizer()->GetMinSize().y;
}
