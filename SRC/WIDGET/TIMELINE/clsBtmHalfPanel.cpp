#include "WIDGET/TIMELINE/clsBtmHalfPanel.h"

#include <wx/settings.h>
#include <wx/sizer.h>

#include "APP/clsMain.h"
#include "WIDGET/DenseStyle.h"
#include "WIDGET/TIMELINE/clsCacheBar.h"
#include "WIDGET/TIMELINE/clsFrameSlider.h"
#include "WIDGET/TIMELINE/clsPlayCtrlGUI.h"

namespace {
constexpr int kStoreCheck = 500; // milliseconds between two looks at the store
} // namespace

BtmHalfPanel_cls::BtmHalfPanel_cls(wxWindow* pParent, Main_cls* pMain)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL) {
    InstallDenseStyle();
    SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE));
    mpCSlider = new FrameSlider_cls(this, pMain->mpCTimeCtrl);
    mpCCacheBar = new CacheBar_cls(this, pMain->mpCTimeCtrl, pMain->mpCPDataSeqCtrl);
    mpCPlay = new PlayCtrlGUI_cls(this, pMain->mpCTimeCtrl, pMain->mpCPDataSeqCtrl);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCSlider, 0, wxEXPAND);
    sizer->Add(mpCCacheBar, 0, wxEXPAND);
    sizer->Add(mpCPlay, 0, wxEXPAND);
    SetSizer(sizer);
    // Snapshots leave the memory without an event; nothing is drawn while all stays as it is.
    mTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        mpCCacheBar->RefreshIfChanged();
        mpCPlay->RefreshMemory();
    });
    mTimer.Start(kStoreCheck);
}

void BtmHalfPanel_cls::RefreshTLPanels() {
    mpCSlider->RefreshIfChanged();
    mpCCacheBar->RefreshIfChanged();
}

void BtmHalfPanel_cls::RefreshGUI() { mpCPlay->UpdateValues(); }

void BtmHalfPanel_cls::RecheckSize() { Layout(); }

int BtmHalfPanel_cls::GetMinHeight() const { return GetSizer()->GetMinSize().y; }

void BtmHalfPanel_cls::UpdateValues() {
    RefreshGUI();
    RefreshTLPanels();
}
