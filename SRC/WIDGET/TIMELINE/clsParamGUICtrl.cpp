#include "WIDGET/TIMELINE/clsParamGUICtrl.h"

#include <algorithm>
#include <functional>
#include <utility>

#include <wx/scrolbar.h>
#include <wx/settings.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsParameters.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsGraphPanel.h"
#include "WIDGET/TIMELINE/clsParamGroupGUI.h"
#include "WIDGET/TIMELINE/clsParamStrips.h"
#include "WIDGET/TIMELINE/clsParamTree.h"

ParamGUICtrl_cls::ParamGUICtrl_cls(wxWindow* pParent, TimeCtrl_cls* pTime)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL), mpCTime(pTime),
      mKeyActions(this) {
    mLook.Update(this);
    mpCTree = new ParamTree_cls(this);
    mpCStrips = new ParamStrips_cls(this);
    mpCGraph = new GraphPanel_cls(this, pTime);
    mpCGraph->Hide();
    mpCGraph->mOnEdited = [this] { RefreshAll(); };
    mpCBar = new wxScrollBar(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSB_VERTICAL);
    mpCBar->SetCanFocus(false);
    for (const auto& type : {wxEVT_SCROLL_THUMBTRACK, wxEVT_SCROLL_CHANGED, wxEVT_SCROLL_LINEUP,
                             wxEVT_SCROLL_LINEDOWN, wxEVT_SCROLL_PAGEUP, wxEVT_SCROLL_PAGEDOWN})
        mpCBar->Bind(type, [this](wxScrollEvent& event) { ScrollTo(event.GetPosition()); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) { RecheckSize(); });
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        mLook.Update(this);
        RefreshAll();
        event.Skip();
    });
}

ParamGUICtrl_cls::~ParamGUICtrl_cls() = default;

ParamGroupGUI_cls* ParamGUICtrl_cls::FindGUI(const ParamGroup_cls* pGroup) const {
    const auto gui = mGUIOf.find(pGroup);
    return gui == mGUIOf.end() ? nullptr : gui->second;
}

void ParamGUICtrl_cls::EnsureGUI(ParamGroup_cls* pGroup) {
    if (!FindGUI(pGroup)) {
        mVpCGUIs.push_back(std::make_unique<ParamGroupGUI_cls>(pGroup));
        mGUIOf[pGroup] = mVpCGUIs.back().get();
    }
    pGroup->mpCParamGUICtrl = this;
    for (ParamGroup_cls* child : pGroup->mVpCChilds)
        EnsureGUI(child);
}

void ParamGUICtrl_cls::Forget(const ParamGroupGUI_cls* pGUI) {
    mVRows.erase(std::remove_if(mVRows.begin(), mVRows.end(),
                                [pGUI](const TimelineRow& row) { return row.mpCGroup == pGUI; }),
                 mVRows.end());
    mFocusRow = mHoverRow = -1;
}

void ParamGUICtrl_cls::DropGUI(const ParamGroup_cls* pGroup) {
    mpCTree->EndGesture();
    mpCStrips->EndGesture();
    const auto gui = std::find_if(mVpCGUIs.begin(), mVpCGUIs.end(),
                                  [pGroup](const auto& one) { return one->GetPCGroup() == pGroup; });
    if (gui == mVpCGUIs.end()) return;
    Forget(gui->get());
    mGUIOf.erase(pGroup);
    mVpCGUIs.erase(gui);
}

void ParamGUICtrl_cls::AddParamGroup(ParamGroup_cls* pGroup) {
    if (std::find(mVpCRoots.begin(), mVpCRoots.end(), pGroup) == mVpCRoots.end()) mVpCRoots.push_back(pGroup);
    EnsureGUI(pGroup);
}

void ParamGUICtrl_cls::RemoveParamGroup(ParamGroup_cls* pGroup) {
    mVpCRoots.erase(std::remove(mVpCRoots.begin(), mVpCRoots.end(), pGroup), mVpCRoots.end());
    DropGroup(pGroup); // its rows go at once
    HideAndShowLater();
}

void ParamGUICtrl_cls::DropGroup(ParamGroup_cls* pGroup) {
    for (ParamGroup_cls* child : pGroup->mVpCChilds)
        DropGroup(child);
    DropGUI(pGroup);
    pGroup->mpCParamGUICtrl = nullptr;
}

void ParamGUICtrl_cls::FoldGroup(ParamGroup_cls* pGroup, bool bFolded) {
    pGroup->mbOpen = !bFolded;
    HideAndShow();
}

void ParamGUICtrl_cls::ShowGroup(ParamGroup_cls* pGroup, bool bShow) {
    pGroup->mbVisible = bShow;
    HideAndShow();
}

void ParamGUICtrl_cls::FoldAll(bool bFolded) {
    for (const auto& gui : mVpCGUIs)
        gui->GetPCGroup()->mbOpen = !bFolded;
    HideAndShow();
}

bool ParamGUICtrl_cls::ToggleFold(int row) {
    if (row < 0 || row >= int(mVRows.size()) || mVRows[size_t(row)].mDim >= 0) return false;
    ParamGroup_cls* group = mVRows[size_t(row)].mpCGroup->GetPCGroup();
    FoldGroup(group, group->mbOpen);
    return true;
}

void ParamGUICtrl_cls::AddRows(ParamGroup_cls* pGroup, int depth) {
    if (!pGroup->mbVisible || (mpCTime->mbShyMode && pGroup->mbShy)) return;
    ParamGroupGUI_cls* gui = FindGUI(pGroup);
    mVRows.push_back({gui, -1, depth});
    if (!pGroup->mbOpen) return;
    for (int dim = 0; dim < gui->GetDimension(); ++dim)
        mVRows.push_back({gui, dim, depth + 1});
    for (ParamGroup_cls* child : pGroup->mVpCChilds)
        AddRows(child, depth + 1);
}

void ParamGUICtrl_cls::HideAndShowLater() {
    if (std::exchange(mbRebuilding, true)) return;
    CallAfter([this] {
        mbRebuilding = false;
        HideAndShow();
    });
}

void ParamGUICtrl_cls::HideAndShow() {
    mpCTree->EndGesture();
    mpCStrips->EndGesture();
    mVRows.clear();
    mHoverRow = -1;
    for (ParamGroup_cls* root : mVpCRoots) {
        EnsureGUI(root);
        AddRows(root, 0);
    }
    if (mFocusRow >= int(mVRows.size())) mFocusRow = -1;
    UpdateScrollBar();
    RefreshAll();
}

// Many groups may come at once, and placing the lower half moves the upper one with all its pages.
void ParamGUICtrl_cls::ResizeTL() {
    if (std::exchange(mbResizing, true)) return;
    CallAfter([this] {
        mbResizing = false;
        PostMenuEvent(ID_RESIZED_TL);
    });
}

int ParamGUICtrl_cls::GetBarWidth() const { return mpCBar->GetBestSize().x; }

void ParamGUICtrl_cls::RecheckSize() {
    const wxSize size = GetClientSize();
    const int tree = FromDIP(TimelineLook::kTreeWidth);
    const int bar = GetBarWidth();
    mpCTree->SetSize(0, 0, tree, size.y);
    mpCStrips->SetSize(tree, 0, std::max(size.x - tree - bar, 0), size.y);
    mpCGraph->SetSize(mpCStrips->GetRect());
    mpCBar->SetSize(size.x - bar, 0, bar, size.y);
    UpdateScrollBar();
    mpCTree->Refresh();
    mpCStrips->Refresh();
}

RowScale ParamGUICtrl_cls::GetRowScale() const {
    RowScale scale;
    scale.mHeight = mLook.mRow;
    scale.mCount = int(mVRows.size());
    scale.mTop = mTop;
    scale.mWindow = std::max(mpCStrips->GetClientSize().y, 1);
    return scale;
}

void ParamGUICtrl_cls::UpdateScrollBar() {
    const RowScale rows = GetRowScale();
    mTop = rows.ClampTop(mTop);
    const int all = std::max(rows.mCount * rows.mHeight, rows.mWindow);
    if (mpCBar->GetRange() != all || mpCBar->GetThumbSize() != rows.mWindow ||
        mpCBar->GetThumbPosition() != mTop)
        mpCBar->SetScrollbar(mTop, rows.mWindow, all, std::max(rows.mWindow - rows.mHeight, rows.mHeight));
    mpCBar->Enable(all > rows.mWindow);
}

void ParamGUICtrl_cls::ScrollTo(int top) {
    const int clamped = GetRowScale().ClampTop(top);
    if (clamped == mTop) return;
    mTop = clamped;
    mpCTree->CloseEditor(true);
    UpdateScrollBar();
    mpCTree->Refresh();
    mpCStrips->Refresh();
}

namespace {

void Mix(size_t& hash, size_t value) { hash = (hash ^ value) * 1099511628211ull; }

void Mix(size_t& hash, const Parameters_cls& curve) {
    Mix(hash, size_t(curve.mbTimeDepend.mValue) + 2 * curve.GetKeys().size());
    for (const KeyFrame_cls& key : curve.GetKeys()) {
        Mix(hash, std::hash<double>()(key.mDoubleIndex));
        Mix(hash, std::hash<double>()(key.mValue) + std::hash<double>()(key.mValueD1) * 3);
        Mix(hash, 2 * key.mInterpType + (key.mbSelected ? 1 : 0));
    }
}

} // namespace

size_t ParamGUICtrl_cls::Signature() const {
    size_t hash = 14695981039346656037ull;
    for (const int number :
         {mpCTime->GetFrame(), mpCTime->GetInterpStep(), mpCTime->GetAnimInterp(), mpCTime->GetAAMin(),
          mpCTime->GetAAMax(), mpCTime->GetWAMin(), mpCTime->GetWAMax(), mpCTime->GetMaxFrame()})
        Mix(hash, size_t(number));
    for (const TimelineRow& row : mVRows) {
        const ParamGroup_cls* group = row.mpCGroup->GetPCGroup();
        Mix(hash, (group->mbLinked ? 1u : 0u) + (group->mbShy ? 2u : 0u) + (group->mbOpen ? 4u : 0u));
        if (row.mDim >= 0) Mix(hash, *row.mpCGroup->GetPCParam(row.mDim));
        if (row.mDim >= 0 || group->mbOpen) continue;
        for (const Parameters_cls* curve : row.mpCGroup->GetCurves())
            Mix(hash, *curve);
    }
    return hash;
}

void ParamGUICtrl_cls::RefreshTL() {
    const size_t now = Signature();
    if (now == mShown) return;
    mShown = now;
    RefreshAll();
}

void ParamGUICtrl_cls::RefreshAll() {
    mpCTree->Refresh();
    mpCStrips->Refresh();
    UpdateGraph();
    if (mOnChanged) mOnChanged();
}

bool ParamGUICtrl_cls::IsGraphShown() const { return mpCGraph->IsShown(); }

void ParamGUICtrl_cls::ShowGraph(bool bShow) {
    mpCStrips->EndGesture();
    mpCGraph->Show(bShow);
    mpCStrips->Show(!bShow);
    RefreshAll();
}

void ParamGUICtrl_cls::UpdateGraph() {
    const Curves curves = GetSelectedCurves();
    if (curves != mpCGraph->GetCurves()) mpCGraph->SetCurves(curves);
    mpCGraph->RefreshIfChanged();
}

void ParamGUICtrl_cls::CheckSnippingTag(std::vector<bool>* pTags) const {
    for (const Parameters_cls* curve : ShownCurves())
        if (IsAnimated(*curve)) curve->CheckSnippingTag(pTags);
}

void ParamGUICtrl_cls::GroupRefresh(ParamGroup_cls* pGroup) {
    if (FindGUI(pGroup)) RefreshTL();
}

void ParamGUICtrl_cls::StripRead(ParamTL_cls*) { PostMenuEvent(ID_REFRESH_TL); }

void ParamGUICtrl_cls::StripTimeDepend(ParamTL_cls*, bool) { PostMenuEvent(ID_REFRESH_TL); }

Curves ParamGUICtrl_cls::AllCurves() const {
    Curves curves;
    for (const auto& gui : mVpCGUIs)
        for (int dim = 0; dim < gui->GetDimension(); ++dim)
            if (Parameters_cls::IsAlive(gui->GetPCParam(dim))) curves.push_back(gui->GetPCParam(dim));
    return curves;
}

Curves ParamGUICtrl_cls::ShownCurves() const {
    Curves curves;
    for (int row = 0; row < int(mVRows.size()); ++row) {
        const TimelineRow& one = mVRows[size_t(row)];
        if (one.mDim >= 0) curves.push_back(one.mpCGroup->GetPCParam(one.mDim));
        if (one.mDim >= 0 || one.mpCGroup->GetPCGroup()->mbOpen) continue;
        for (Parameters_cls* curve : one.mpCGroup->GetCurves())
            curves.push_back(curve);
    }
    return curves;
}

Curves ParamGUICtrl_cls::OwnCurvesOfRow(int row) const {
    if (row < 0 || row >= int(mVRows.size())) return {};
    const TimelineRow& one = mVRows[size_t(row)];
    if (one.mDim < 0) return one.mpCGroup->GetCurves();
    return {one.mpCGroup->GetPCParam(one.mDim)};
}

Curves ParamGUICtrl_cls::CurvesOfRow(int row) const { return WithLinked(OwnCurvesOfRow(row)); }
