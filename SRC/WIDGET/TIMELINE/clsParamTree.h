// The tree left of the strips: a row for each group and curve.
#pragma once

#include <memory>

#include <wx/window.h>

#include "WIDGET/TIMELINE/TreeLayout.h"
#include "WIDGET/TIMELINE/clsLiveEdit.h"

class ParamGUICtrl_cls;
class wxDC;
class wxTextCtrl;

class ParamTree_cls : public wxWindow {
public:
    explicit ParamTree_cls(ParamGUICtrl_cls* pCtrl);

    /// What a paint draws; the window's own part of a benchmark.
    void Draw(wxDC& dc, const wxSize& size);
    TreeLayout GetLayout() const;
    /// Place of a part of a row in the window, for tests of the mouse.
    wxRect GetZoneRect(int row, TreeZone zone) const;
    /// Type the value of a curve's row.
    void OpenEditor(int row);
    void CloseEditor(bool bCommit);
    wxTextCtrl* GetPCEditor() const { return mpCEditor; }
    /// Let go of a drag under way, back to where it began.
    void EndGesture();

private:
    void OnPaint(wxPaintEvent& event);
    void OnMouse(wxMouseEvent& event);
    void OnKey(wxKeyEvent& event);
    void OnDown(const wxMouseEvent& event, int row, TreeZone zone);
    void OnDoubleClick(int row, TreeZone zone);
    void OnWheel(const wxMouseEvent& event);
    void Press(int row, TreeZone zone);
    void Scrub(const wxMouseEvent& event);
    void ScrubEnd(bool bCommit);
    void ShowHint(int row, TreeZone zone);
    void MakeEditor();
    TreeZone ZoneAt(const wxPoint& point, int* pRow) const;

    ParamGUICtrl_cls* mpCCtrl;
    wxTextCtrl* mpCEditor = nullptr; ///< over the value that is typed
    Parameters_cls* mpCEdited = nullptr;
    int mEditedRow = -1;
    int mOpenRow = -1; ///< to be typed into when the button goes up

    Parameters_cls* mpCScrubbed = nullptr; ///< pressed on its value
    std::unique_ptr<LiveEdit_cls> mpCGesture;
    wxPoint mPressed;
    double mScrubFrom = 0.0;
    double mScrubTo = 0.0;
    TreeZone mHintZone = TreeZone::NONE;
    int mHintRow = -1;
};
