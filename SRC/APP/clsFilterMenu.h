// The frame's "Filter" menu, the popups made of it, and the texture dialog.
#pragma once

#include "APP/clsMidPaintCommands.h"

class FrameMain_cls;
class Main_cls;
class wxCommandEvent;
class wxString;

class FilterMenu_cls {
public:
    /// Takes the frame's commands about filters from here on. A part of the frame.
    explicit FilterMenu_cls(FrameMain_cls& frame);
    FilterMenu_cls(const FilterMenu_cls&) = delete;
    FilterMenu_cls& operator=(const FilterMenu_cls&) = delete;

    /// A new Object that shows the mesh of a file, as a step of the undo list.
    void AddMesh(const wxString& path);

private:
    void OnMenuFilterPopup(wxCommandEvent& event);
    void OnMenuFilterRefresh(wxCommandEvent& event);
    void OnMenuFilterManipulate(wxCommandEvent& event);
    void OnMenuFilterResize(wxCommandEvent& event);
    void OnMenuFilterAdd(wxCommandEvent& event);
    void OnMenuFilterUp(wxCommandEvent& event);
    void OnMenuFilterDown(wxCommandEvent& event);
    void OnMenuFilterDelete(wxCommandEvent& event);
    void OnMenuTexProperty(wxCommandEvent& event);
    void OnMenuRefreshTexture(wxCommandEvent& event);
    void FinishEdits();
    void ShowLastOf(int list);

    FrameMain_cls& mFrame;
    Main_cls& mHub;
    MidPaintCommands_cls mMidPaint;
};
