// The one top-level window: menus, status bar, the two halves of the window, and the idle handler that
// drives the program. Other objects and threads reach it only by posted commands (COMMON/EventIds.h).
#pragma once

#include <memory>

#include <wx/frame.h>
#include <wx/stopwatch.h>
#include <wx/timer.h>

#include "COMMON/clsQuietMoment.h"
#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "GL/VIEW/clsViewHost.h"

class AnchorPath_cls;
class BtmHalfPanel_cls;
class CameraPath_cls;
class CopyQuestion_cls;
class EditMenu_cls;
class ExportRun_cls;
class FileMenu_cls;
class FilterMenu_cls;
class GLCanvasCtrl_cls;
class GLExtraFrame_cls;
class HelpMenu_cls;
class ImageRun_cls;
class Main_cls;
class LightSRCCtrl_cls;
class MainGLCanvas_cls;
class PDataSeqCtrl_cls;
class PDataSequence_cls;
class PovExport_cls;
class Preference_cls;
class RefreshCommands_cls;
class SharedView_cls;
class Shortcut_cls;
class TimeCtrl_cls;
class ToolBar_cls;
class TopHalfPanel_cls;
class ViewFitCtrl_cls;
class ViewsMenu_cls;
class wxInfoBar;
class wxSplitterEvent;
class wxSplitterWindow;

class FrameMain_cls : public wxFrame, public ViewHost_cls {
public:
    /// filmView: see ViewLinks_st; a frame that never comes to the screen needs no panels either.
    FrameMain_cls(const wxString& title, Main_cls* pMain, const wxRect& rect, int filmView);
    ~FrameMain_cls() override;

    Main_cls* GetPCMain() const { return mpCMain; }
    PDataSequence_cls* GetPCActiveFileSequence() const override;
    GLCanvasCtrl_cls* GetPCGLCanvasCtrl(int view) const; ///< 0 to 3 panels, 4 the extra frame's
    MainGLCanvas_cls* GetPCGLCanvas(int view) const override;
    TimeCtrl_cls* GetPCTimeCtrl() const override;
    CameraPath_cls* GetPCCameraPath() const override;
    AnchorPath_cls* GetPCAnchorPath() const override;
    LightSRCCtrl_cls* GetPCLightSRCCtrl() const override;
    FilterLists_cls* GetPCFilters() const override;
    PDataSeqCtrl_cls* GetPCDataSeqCtrl() const override;
    SharedView_cls* GetPCSharedView() const { return mpCSharedView; }
    /// What acts: an open project's preferences, else the user's own.
    Preference_cls* GetPCPreference() const { return mpCPreference; }
    /// What the configure file keeps, whatever project is open.
    Preference_cls* GetPCUserPreference() const { return mpCUserPreference; }
    ViewFitCtrl_cls* GetPCViewFit() const { return mpCViewFit.get(); }
    /// The view that was used last: the one that pictures are taken of.
    MainGLCanvas_cls* GetPCOutputCanvas() const;
    FileMenu_cls* GetPCFileMenu() const { return mpCFileMenu.get(); }
    FilterMenu_cls* GetPCFilterMenu() const { return mpCFilterMenu.get(); }
    ImageRun_cls* GetPCImageRun() const { return mpCImageRun.get(); }
    /// Null without a screen.
    ToolBar_cls* GetPCToolBar() const { return mpCToolBar.get(); }
    TopHalfPanel_cls* GetPCTopHalf() const { return mpCTopHalf; }
    BtmHalfPanel_cls* GetPCBtmHalf() const { return mpCBtmHalf; }
    GLExtraFrame_cls* GetPCExtraFrame() const { return mpCExtraFrame; }

    /// Frame -1 is the current one. Prepare blocks (reader, interpolator) exactly then.
    bool IsTheFrameReady(int frame) const override;
    void PrepareTheFrame(int frame) override;
    void TellPresent() const override;
    /// Start the nearest frame ahead, in play direction, that isn't ready; at most one a call.
    void PrepareFramesAhead(int count) override;

    void UpdateStatusText();
    /// Views and time lines, as by their posted commands, but at once.
    void RefreshGL();
    void RefreshTL();
    void FitSplitterWindow(bool bForce);
    void ReconnectCameraPathGUI() override;
    void OpenProject(const wxString& path);
    /// Tell something beside the work, in a bar above the views.
    void ShowNotice(const wxString& text);

    wxString Serialize();
    wxString SerializeForConfigure();
    void ReadStrLine(const wxString& line);

    static FrameMain_cls* mspCThis;
    wxString mStrPointed; ///< what the pointer is over in a view; the status bar shows it

    /// Bring menus, views and panels in line with settings that were just read.
    void ApplySettings();
    /// The data or the clock of a run that writes something go: it ends.
    void StopRun();
    /// The export of data has come to its end.
    void EndExport() override;
    bool MayDrawCopies(long long number) override;
    CopyQuestion_cls& GetCopyQuestion() const { return *mpCCopyQuestion; }
    void OnDataReady() override;
    void OnExtraFrameClosed() override;

private:
    /// Why nothing moves, where that is taken for a fault; else empty.
    wxString GetStandstill() const;
    void CreateMenus();
    void CreateHalves(bool bShown);
    ViewLinks_st GetViewLinks();
    /// Sashes and focus, while the window comes to the screen.
    void PlaceAtStart();
    void LimitIdleEvents();
    void BindHandlers();

    // clsFrameMainIdle.cpp
    void OnIdle(wxIdleEvent& event);
    void OnTimer(wxTimerEvent& event);
    bool PrepareAhead(int frame);
    void TickRecovery();

    // clsFrameMainHandlers.cpp
    void OnMenuResizedTL(wxCommandEvent& event);
    void OnMenuShortcut(wxCommandEvent& event);
    void OnCharHook(wxKeyEvent& event);
    void OnSash(wxSplitterEvent& event);

    Main_cls* mpCMain;
    const int mFilmView;
    wxSplitterWindow* mpCSplitter = nullptr;
    TopHalfPanel_cls* mpCTopHalf = nullptr;
    BtmHalfPanel_cls* mpCBtmHalf = nullptr;
    GLExtraFrame_cls* mpCExtraFrame = nullptr;
    wxInfoBar* mpCInfoBar = nullptr;
    wxString mNotices; ///< shown behind the present event
    wxTimer mTimer;
    QuietMoment_cls mQuietMoment;                ///< of paints
    Preference_cls* mpCPreference = nullptr;     ///< owned
    Preference_cls* mpCUserPreference = nullptr; ///< owned
    SharedView_cls* mpCSharedView = nullptr;     ///< owned; made before the views
    Shortcut_cls* mpCShortcut = nullptr;         ///< owned
    MainGLCanvas_cls* mpCMainCanvas = nullptr;   ///< view 0: image and export processes
    std::unique_ptr<ViewFitCtrl_cls> mpCViewFit;
    std::unique_ptr<CopyQuestion_cls> mpCCopyQuestion;
    // Menus and runs, in the order of their settings in the configure file.
    std::unique_ptr<FileMenu_cls> mpCFileMenu;
    std::unique_ptr<ImageRun_cls> mpCImageRun;
    std::unique_ptr<ExportRun_cls> mpCExportRun;
    std::unique_ptr<PovExport_cls> mpCPovExport;
    std::unique_ptr<EditMenu_cls> mpCEditMenu;
    std::unique_ptr<FilterMenu_cls> mpCFilterMenu;
    std::unique_ptr<HelpMenu_cls> mpCHelpMenu;
    std::unique_ptr<ViewsMenu_cls> mpCViewsMenu;
    std::unique_ptr<RefreshCommands_cls> mpCRefreshCommands;
    std::unique_ptr<ToolBar_cls> mpCToolBar;
    bool mbPlaced = false; ///< the sashes stand where they do at a start
    int mBtmFitted = -1;   ///< height at which the bottom half was fitted last
    int mBtmHeight = 150;  ///< height given to the bottom half, pixels
    bool mbRecoveryOffered = false;
    long mLastReaderPost = 0; ///< milliseconds of mStatusWatch
    wxStopWatch mStatusWatch;
    wxStopWatch mStartWatch; ///< since the window stands on the screen
    ConfItemList_cls mCConfList;
};
