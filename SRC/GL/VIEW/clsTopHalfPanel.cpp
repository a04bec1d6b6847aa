#include "GL/VIEW/clsTopHalfPanel.h"

#include <algorithm>

#include <wx/intl.h>
#include <wx/notebook.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/splitter.h>

#include "COMMON/EventIds.h"
#include "FILTER/PANEL/clsFilterPanelPain.h"
#include "FILTER/clsFilterLists.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsDrawOptionGUI.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLAttributeGUI.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsExposureGUI.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsOverlay.h"
#include "GL/VIEW/clsOverlayGUI.h"
#include "GL/VIEW/clsViewHost.h"
#include "PDATA/clsPDataSequence.h"
#include "WIDGET/DenseStyle.h"

namespace {

constexpr int kWidestBook = 420;
constexpr int kBookBorder = 8;
constexpr int kBookWidth = 310; // leaves four views room for their controls in the first window
constexpr int kMinPane = 40;
constexpr int kScrollStep = 8;
constexpr int kLeastBook = 100;     // height, DIP
const wxSize kFirstSize(1200, 800); // panes of no size would squeeze their contents
constexpr int kViews = 4;

wxSplitterWindow* MakeSplitter(wxWindow* pParent, double gravity) {
    auto* splitter = new wxSplitterWindow(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                          wxSP_LIVE_UPDATE | wxSP_3DSASH);
    splitter->SetSize(kFirstSize);
    splitter->SetSashGravity(gravity);
    splitter->SetMinimumPaneSize(kMinPane);
    return splitter;
}

void Split(wxSplitterWindow* pSplitter, bool bAbove, wxWindow* pFirst, wxWindow* pSecond) {
    pFirst->Show();
    pSecond->Show();
    const wxSize size = pSplitter->GetClientSize();
    if (bAbove)
        pSplitter->SplitHorizontally(pFirst, pSecond, size.y / 2);
    else
        pSplitter->SplitVertically(pFirst, pSecond, size.x / 2);
}

} // namespace

TopHalfPanel_cls::TopHalfPanel_cls(wxWindow* pParent, const ViewLinks_st& links, PDataSequence_cls* pSequence,
                                   const Pages_st& pages)
    : wxPanel(pParent), mpCSequence(pSequence), mPages(pages), mBookWidth(kBookWidth) {
    InstallDenseStyle(); // before anything is measured
    mConfList.Add(&mPreviewPanelType, "PreviewPanelType=", "0");
    mpCSides = MakeSplitter(this, 1.0); // the books keep their width
    CreateViews(mpCSides, links);
    if (pages.mbShown) {
        CreateBooks(mpCSides);
        KeepBooks();
    } else {
        mpCSides->Initialize(mpCOuter);
    }
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCSides, 1, wxEXPAND);
    SetSizer(sizer);
}

void TopHalfPanel_cls::KeepBooks() {
    // The toolkit sizes windows bit by bit at their start; a sash that was in the way once would stay there.
    mpCSides->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        CallAfter([this] { mpCSides->SetSashPosition(-mBookWidth); });
    });
    mpCSides->Bind(wxEVT_SPLITTER_SASH_POS_CHANGING, [this](wxSplitterEvent& event) {
        if (event.GetEventObject() == mpCSides)
            mBookWidth = mpCSides->GetClientSize().x - event.GetSashPosition();
        event.Skip();
    });
}

void TopHalfPanel_cls::CreateViews(wxWindow* pParent, const ViewLinks_st& links) {
    static const int kModes[kViews] = {DISPLAY_FREE, DISPLAY_TO_MINUS_Z, DISPLAY_TO_PLUS_X,
                                       DISPLAY_TO_PLUS_Y};
    mpCOuter = MakeSplitter(pParent, 0.5);
    for (wxSplitterWindow*& pInner : mpCInner)
        pInner = MakeSplitter(mpCOuter, 0.5);
    std::shared_ptr<wxGLContext> pContext;
    for (int view = 0; view < kViews; ++view) {
        mpCCtrl[view] =
            new GLCanvasCtrl_cls(mpCInner[view / 2], links, wxString::Format("MainGLCanvas %d", view), view,
                                 kModes[view], pContext);
        if (!pContext) pContext = mpCCtrl[view]->GetPCCanvas()->GetContext();
        if (view > 0) mpCCtrl[view]->Hide();
    }
    mpCInner[1]->Hide();
    mpCInner[0]->Initialize(mpCCtrl[0]);
    mpCOuter->Initialize(mpCInner[0]);
}

// Pages scroll where they are higher than the book.
template <class T>
void TopHalfPanel_cls::AddPage(wxNotebook* pBook, T* pSettings, const wxString& label) {
    auto* scroll = new wxScrolledWindow(pBook);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(pSettings->InstantiateGUI(scroll), 1, wxEXPAND);
    scroll->SetSizer(sizer);
    scroll->SetScrollRate(0, FromDIP(kScrollStep));
    pBook->AddPage(scroll, label);
}

void TopHalfPanel_cls::CreateBooks(wxWindow* pParent) {
    auto* side = new wxPanel(pParent);
    // The toolkit complains about books that are smaller than their tabs, if only for a moment.
    const wxSize size(kBookWidth, kFirstSize.y / 2);
    side->SetSize(kBookWidth, kFirstSize.y);
    mpCAttribBook = new wxNotebook(side, ID_NOTEBOOK_ATTRIB, wxDefaultPosition, size);
    for (int i = 0; i < GLSequence_cls::kAttributeNumber; ++i)
        AddPage(mpCAttribBook, GLSequence_cls::Of(*mpCSequence).mpCGLAttribute[i],
                wxString::Format("%s %d", _("Attrib"), i));
    mpCOptionBook = new wxNotebook(side, ID_NOTEBOOK_OPTION, wxDefaultPosition, size);
    AddPage(mpCOptionBook, mPages.mpCDrawOption, _("Option"));
    AddPage(mpCOptionBook, mPages.mpCOverlay, _("Overlay"));
    AddPage(mpCOptionBook, mPages.mpCExposure, _("Exposure"));
    AddPage(mpCOptionBook, mPages.mpCInformation, _("Info"));
    mpCOptionBook->Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, [this](wxBookCtrlEvent& event) {
        event.Skip();
        mPages.mpCInformation->Update(); // it doesn't keep up while it is hidden
    });
    mpCFilterBook = new wxNotebook(side, ID_NOTEBOOK_FILTER, wxDefaultPosition, size);
    const wxString tabs[kFilterLists] = {_("Boolean"), _("Object"), _("World")};
    for (int list = 0; list < kFilterLists; ++list) {
        mpCFilterPane[list] =
            new FilterPanelPain_cls(mpCFilterBook, mPages.mpCFilters->Get(list), *mPages.mpCDrawOption);
        mpCFilterBook->AddPage(mpCFilterPane[list], tabs[list]);
    }
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    // As the pages are to each other; in a low window all scroll.
    for (wxNotebook* pBook : {mpCAttribBook, mpCOptionBook, mpCFilterBook})
        pBook->SetMinSize(wxSize(-1, FromDIP(kLeastBook)));
    sizer->Add(mpCAttribBook, 9, wxEXPAND | wxBOTTOM, 4);
    sizer->Add(mpCOptionBook, 6, wxEXPAND | wxBOTTOM, 4);
    sizer->Add(mpCFilterBook, 5, wxEXPAND);
    side->SetSizer(sizer);
    // Labels of other languages may be longer.
    for (const wxNotebook* pBook : {mpCAttribBook, mpCOptionBook})
        for (size_t page = 0; page < pBook->GetPageCount(); ++page)
            mBookWidth =
                std::max(mBookWidth, pBook->GetPage(page)->GetSizer()->CalcMin().x + FromDIP(kBookBorder));
    mBookWidth = std::min(mBookWidth, std::max(kBookWidth, FromDIP(kWidestBook)));
    mpCSides->SplitVertically(mpCOuter, side, -mBookWidth);
}

void TopHalfPanel_cls::ShowInformation() {
    constexpr size_t kPage = 3;
    if (mpCOptionBook && mpCOptionBook->GetSelection() != int(kPage)) mpCOptionBook->SetSelection(kPage);
}

void TopHalfPanel_cls::ConnectFilters() {
    for (FilterPanelPain_cls* pPane : mpCFilterPane)
        if (pPane) pPane->Connect();
}

void TopHalfPanel_cls::ShowFilter(int list, int position) {
    mpCFilterBook->SetSelection(size_t(list));
    mpCFilterPane[list]->ShowFilter(position);
}

void TopHalfPanel_cls::LayOutFilters() {
    for (FilterPanelPain_cls* pPane : mpCFilterPane)
        if (pPane) pPane->LayOut();
}

void TopHalfPanel_cls::SplitPanel(int layout) {
    layout = std::clamp<int>(layout, LAYOUT_ONE, LAYOUT_COLUMNS);
    mPreviewPanelType.mValue = static_cast<unsigned>(layout);
    const bool bTwo = layout != LAYOUT_ONE;
    const bool bFour = layout == LAYOUT_ROWS || layout == LAYOUT_COLUMNS;
    const bool bInnerAbove = layout == LAYOUT_ABOVE || layout == LAYOUT_COLUMNS;
    if (!bFour && mpCOuter->IsSplit()) mpCOuter->Unsplit(mpCInner[1]);
    for (int pair = 0; pair < 2; ++pair) {
        wxSplitterWindow* pInner = mpCInner[pair];
        if (pInner->IsSplit()) pInner->Unsplit(mpCCtrl[2 * pair + 1]);
    }
    if (bFour) {
        mpCCtrl[2]->Show();
        if (mpCOuter->IsSplit()) mpCOuter->Unsplit(mpCInner[1]);
        Split(mpCOuter, layout == LAYOUT_ROWS, mpCInner[0], mpCInner[1]);
        mpCOuter->UpdateSize();
        Split(mpCInner[1], bInnerAbove, mpCCtrl[2], mpCCtrl[3]);
    }
    if (bTwo) Split(mpCInner[0], bInnerAbove, mpCCtrl[0], mpCCtrl[1]);
    RefreshGLPanels();
}

bool TopHalfPanel_cls::CheckGLRefresh(int frame, int step) {
    bool bDone = true;
    for (GLCanvasCtrl_cls* pCtrl : mpCCtrl)
        bDone = pCtrl->GetPCCanvas()->CheckGLRefresh(frame, step) && bDone;
    return bDone;
}

void TopHalfPanel_cls::RefreshGLPanels() {
    for (GLCanvasCtrl_cls* pCtrl : mpCCtrl) {
        pCtrl->UpdateToggleButtonsAndParams();
        MainGLCanvas_cls* canvas = pCtrl->GetPCCanvas();
        canvas->MarkStale();
        if (pCtrl->IsShownOnScreen() || canvas->WritesOutput()) canvas->RefreshForOutput();
    }
}

void TopHalfPanel_cls::ClearStatusGLPanels() {
    for (GLCanvasCtrl_cls* pCtrl : mpCCtrl)
        pCtrl->GetPCCanvas()->MarkStale();
}

void TopHalfPanel_cls::RefreshAttrib() {
    for (GLAttribute_cls* pAttribute : GLSequence_cls::Of(*mpCSequence).mpCGLAttribute) {
        if (!pAttribute->mpCGUI) continue;
        pAttribute->mpCGUI->UpdateValues();
        pAttribute->mpCGUI->HideAndShow();
    }
    RefreshDrawOptions();
}

void TopHalfPanel_cls::RefreshDrawOptions() {
    if (mPages.mpCDrawOption->mpCGUI) {
        mPages.mpCDrawOption->mpCGUI->UpdateValues();
        mPages.mpCDrawOption->mpCGUI->HideAndShow();
    }
    if (mPages.mpCOverlay->mpCGUI) mPages.mpCOverlay->mpCGUI->UpdateValues();
    mPages.mpCInformation->Update();
    RefreshFilterNotes();
    RefreshExposure();
}

void TopHalfPanel_cls::RefreshFilterNotes() {
    for (FilterPanelPain_cls* pPane : mpCFilterPane)
        if (pPane) pPane->UpdateNotes();
}

void TopHalfPanel_cls::RefreshExposure() {
    if (mPages.mpCExposure->mpCGUI) mPages.mpCExposure->mpCGUI->UpdateValues();
}

wxString TopHalfPanel_cls::Serialize() {
    wxString text = mConfList.SerializeAll();
    for (GLCanvasCtrl_cls* pCtrl : mpCCtrl)
        text += pCtrl->Serialize();
    return text;
}

void TopHalfPanel_cls::ReadStrLine(const wxString& line) {
    mConfList.ReadStrLineAll(line);
    for (GLCanvasCtrl_cls* pCtrl : mpCCtrl)
        pCtrl->ReadStrLine(line);
}
