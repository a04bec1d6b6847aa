// Upper half of the main window: four views in nested splitters, and the property tabs beside them.
#pragma once

#include <wx/panel.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class GLCanvasCtrl_cls;
class PDataSequence_cls;
class DrawOption_cls;
class Exposure_cls;
class FilterLists_cls;
class FilterPanelPain_cls;
class Information_cls;
class MultiInputPanel_cls;
class Overlay_cls;
class wxNotebook;
class wxScrolledWindow;
class wxSplitterWindow;
struct ViewLinks_st;

class TopHalfPanel_cls : public wxPanel {
public:
    /// What the pages of the books edit; not owned.
    struct Pages_st {
        DrawOption_cls* mpCDrawOption;
        Overlay_cls* mpCOverlay;
        Exposure_cls* mpCExposure;
        Information_cls* mpCInformation;
        FilterLists_cls* mpCFilters;
        bool mbShown; ///< false: nobody will see them, and none are made
    };

    TopHalfPanel_cls(wxWindow* pParent, const ViewLinks_st& links, PDataSequence_cls* pSequence,
                     const Pages_st& pages);

    /// How many views and how they stand, as files hold it: one, two above each other, two side by side, two
    /// rows of two, two columns of two.
    enum Layout { LAYOUT_ONE = 0, LAYOUT_ABOVE, LAYOUT_BESIDE, LAYOUT_ROWS, LAYOUT_COLUMNS };
    void SplitPanel(int layout); ///< a Layout; what is none becomes the nearest
    int GetSplit() const { return int(mPreviewPanelType.mValue); }
    /// True when every shown view shows this frame and step.
    bool CheckGLRefresh(int frame, int step);
    void RefreshGLPanels();
    /// Nothing that is on the screen holds any more.
    void ClearStatusGLPanels();
    void RefreshAttrib();
    /// The pages "Option", "Overlay", "Exposure" and "Info".
    void RefreshDrawOptions();
    void RefreshExposure();
    /// The grey lines in the panes of filters.
    void RefreshFilterNotes();
    /// Panels for the filters, from now on.
    void ConnectFilters();
    /// Bring the page "Info" to the front.
    void ShowInformation();
    FilterPanelPain_cls* GetPCFilterPane(int list) const { return mpCFilterPane[list]; }
    /// Bring a filter's panel before the user's eyes, open.
    void ShowFilter(int list, int position);
    /// Place the panels anew in panes that have another height now.
    void LayOutFilters();
    GLCanvasCtrl_cls* GetPCGLCanvasCtrl(int view) const { return mpCCtrl[view]; }
    wxString Serialize();
    void ReadStrLine(const wxString& line);

private:
    void CreateViews(wxWindow* pParent, const ViewLinks_st& links);
    void CreateBooks(wxWindow* pParent);
    /// The books keep the width that the user gave them, whatever happens to the window.
    void KeepBooks();
    template <class T>
    void AddPage(wxNotebook* pBook, T* pSettings, const wxString& label);

    PDataSequence_cls* mpCSequence;
    Pages_st mPages;
    GLCanvasCtrl_cls* mpCCtrl[4];
    wxSplitterWindow* mpCSides = nullptr; ///< views left, books right
    int mBookWidth;                       ///< pixels right of the sash
    wxSplitterWindow* mpCOuter = nullptr;
    wxSplitterWindow* mpCInner[2] = {nullptr, nullptr};
    wxNotebook* mpCAttribBook = nullptr;
    wxNotebook* mpCOptionBook = nullptr;
    wxNotebook* mpCFilterBook = nullptr;
    FilterPanelPain_cls* mpCFilterPane[3] = {}; ///< by list
    ConfItemList_cls mConfList;
    ConfItemUINT_cls mPreviewPanelType; ///< a Layout
};
