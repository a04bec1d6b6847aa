// The one top-level window: menus, status bar, the two halves of the window, and the idle handler that
// drives the program. Other objects and threads reach it only by posted commands (COMMON/EventIds.h).
#pragma once

#include <string>

#include <wx/frame.h>
#include <wx/stopwatch.h>
#include <wx/timer.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class AnchorPath_cls;
class BtmHalfPanel_cls;
class CameraPath_cls;
class GLCanvasCtrl_cls;
class GLExtraFrame_cls;
class GLInfo_cls;
class Main_cls;
class LightSRCCtrl_cls;
class MainGLCanvas_cls;
class PDataSeqCtrl_cls;
class PDataSequence_cls;
class Preference_cls;
class PreferenceGUI_cls;
class SeriesVideo_cls;
class Shortcut_cls;
class TimeCtrl_cls;
class TopHalfPanel_cls;
class wxInfoBar;
class wxSplitterEvent;
class wxSplitterWindow;

class FrameMain_cls : public wxFrame {
public:
    FrameMain_cls(const wxString& title, Main_cls* pMain, const wxRect& rect);
    ~FrameMain_cls() override;

    Main_cls* GetPCMain() const { return mpCMain; }
    PDataSequence_cls* GetPCActiveFileSequence() const;
    GLCanvasCtrl_cls* GetPCGLCanvasCtrl(int view) const; ///< 0 to 3 panels, 4 the extra frame's
    MainGLCanvas_cls* GetPCGLCanvas(int view) const;
    TimeCtrl_cls* GetPCTimeCtrl() const;
    CameraPath_cls* GetPCCameraPath() const;
    AnchorPath_cls* GetPCAnchorPath() const;
    LightSRCCtrl_cls* GetPCLightSRCCtrl() const;
    PDataSeqCtrl_cls* GetPCDataSeqCtrl() const;
    Preference_cls* GetPCPreference() const { return mpCPreference; }
    /// The view that was used last: the one that pictures are taken of.
    MainGLCanvas_cls* GetPCOutputCanvas() const;
    GLExtraFrame_cls* GetPCExtraFrame() const { return mpCExtraFrame; }
    TopHalfPanel_cls* GetPCTopHalf() const { return mpCTopHalf; }
    BtmHalfPanel_cls* GetPCBtmHalf() const { return mpCBtmHalf; }

    /// Frame -1 is the current one. Prepare blocks (reader, interpolator) exactly then.
    bool IsTheFrameReady(int frame) const;
    bool IsTheFrameLoaded(int frame) const;
    void PrepareTheFrame(int frame);
    /// To the store: which snapshots the clock shows now.
    void TellPresent() const;
    /// Start the nearest frame ahead, in play direction, that isn't ready; at most one a call.
    void PrepareFramesAhead(int count);

    void UpdateStatusText();
    /// Empty: no project is named. A star before the title tells of unsaved steps.
    void UpdateTitle(const wxString& projectName);
    void FitSplitterWindow(bool bForce);
    void ReconnectCameraPathGUI() {} ///< the camera dialog follows the active canvas
    void OpenProject(const wxString& path);
    /// Ask for a recovery project that a program left which ended without being asked.
    void OfferRecovery();
    /// Tell something beside the work, in a bar above the views.
    void ShowNotice(const wxString& text);

    wxString Serialize();
    wxString SerializeForConfigure();
    void ReadStrLine(const wxString& line);

    static FrameMain_cls* mspCThis;

    void SetLastProject(const wxString& path) { mCItemLastMRP.mStrValue = path; }
    wxString GetLastProject() const { return mCItemLastMRP.mStrValue; }
    bool IsProjectNamed() const { return mbProjectNamed; }
    void FillRecentMenus();
    /// Bring menus, views and panels in line with settings that were just read.
    void ApplySettings();
    /// The data or the clock of a run that writes something go: it ends.
    void StopRun();
    /// The export of data has come to its end.
    void EndExport();
    /// A project opens; any other file opens with the present grammar, through the dialog's check.
    void OpenDroppedFile(const wxString& path);

private:
    void CreateMenus();
    void CreateHalves();
    /// Sashes and focus, while the window comes to the screen.
    void PlaceAtStart();
    void BindHandlers();
    void Bind(int id, void (FrameMain_cls::*pHandler)(wxCommandEvent&));

    // clsFrameMainIdle.cpp
    void OnIdle(wxIdleEvent& event);
    void OnTimer(wxTimerEvent& event);
    bool PrepareAhead(int frame);
    void TickRecovery();
    void ShowModified();

    // clsFrameMainFile.cpp: files and quitting
    void OnMenuOpenProject(wxCommandEvent& event);
    void OnMenuSaveProject(wxCommandEvent& event);
    void OnMenuSaveProjectAs(wxCommandEvent& event);
    void OnMenuLoadData(wxCommandEvent& event);
    void OnMenuCloseData(wxCommandEvent& event);
    void OnQuit(wxCommandEvent& event);
    void OnClose(wxCloseEvent& event);
    void OnMenuRecent(wxCommandEvent& event);
    void SaveProject(const wxString& path);
    void TakeProject(const std::wstring& text, const wxString& folder);
    void OpenWithLoader(const wxString& path);
    bool AskQuit();

    // clsFrameMainHandlers.cpp: everything else that a menu or a posted command does
    void OnMenuRefreshGL(wxCommandEvent& event);
    void OnMenuRefreshTL(wxCommandEvent& event);
    void OnMenuRefreshSB(wxCommandEvent& event);
    void OnMenuRefreshAttrib(wxCommandEvent& event);
    void OnMenuRefreshDrawOptions(wxCommandEvent& event);
    void OnMenuRefreshExposure(wxCommandEvent& event);
    void OnMenuResizedTL(wxCommandEvent& event);
    void OnMenuShortcut(wxCommandEvent& event);
    void OnMenuSyncGLCtrl(wxCommandEvent& event);
    void OnMenuUndo(wxCommandEvent& event);
    void OnMenuRedo(wxCommandEvent& event);
    void OnMenuTimeRemap(wxCommandEvent& event);
    void OnMenuDeselect(wxCommandEvent& event);
    void OnMenuScene(wxCommandEvent& event);
    void BindMenuStates();
    void OnMenuGo(wxCommandEvent& event);
    void OnMenuRemoveCacheSnap(wxCommandEvent& event);
    void OnMenuRemoveCacheAll(wxCommandEvent& event);
    void OnMenuPreference(wxCommandEvent& event);
    void OnMenuPeriodicBoundary(wxCommandEvent& event);
    void OnMenuColorCurve(wxCommandEvent& event);
    void OnMenuRefreshColor(wxCommandEvent& event);
    void OnMenuViewPanelType(wxCommandEvent& event);
    void OnMenuViewExtra(wxCommandEvent& event);
    void OnMenuPlayStop(wxCommandEvent& event);
    void OnMenuSetCameraKey(wxCommandEvent& event);
    // clsFrameMainImage.cpp
    void BindImages();
    void OnMenuSaveImageSnap(wxCommandEvent& event);
    void OnMenuCopyView(wxCommandEvent& event);
    void OnMenuSaveImageSeq(wxCommandEvent& event);
    void OnMenuSaveImgSeqBegin(wxCommandEvent& event);
    void OnMenuRefreshImgSeq(wxCommandEvent& event);
    void AskBeforeSequence(MainGLCanvas_cls* pCanvas);
    /// End all runs that write something.
    void StopOutputs();
    void TellImageFailures();
    void BeginVideo();
    void TickVideo();

    void OnMenuUnlock(wxCommandEvent& event);
    void OnMenuSpecial(wxCommandEvent& event);
    void OnAbout(wxCommandEvent& event);
    void OnMenuAboutGL(wxCommandEvent& event);

    // clsFrameMainExport.cpp: export of data
    void BindExport();
    void OnMenuExportData(wxCommandEvent& event);
    void OnMenuExportDataBegin(wxCommandEvent& event);
    void OnMenuRefreshExporter(wxCommandEvent& event);
    wxString GetExportStatus();

    void OnCharHook(wxKeyEvent& event);
    void OnSash(wxSplitterEvent& event);

    Main_cls* mpCMain;
    wxSplitterWindow* mpCSplitter = nullptr;
    TopHalfPanel_cls* mpCTopHalf = nullptr;
    BtmHalfPanel_cls* mpCBtmHalf = nullptr;
    GLExtraFrame_cls* mpCExtraFrame = nullptr;
    wxInfoBar* mpCInfoBar = nullptr;
    wxTimer mTimer;
    Preference_cls* mpCPreference = nullptr;       ///< owned
    PreferenceGUI_cls* mpCPreferenceGUI = nullptr; ///< made at first use; a child window
    Shortcut_cls* mpCShortcut = nullptr;           ///< owned
    MainGLCanvas_cls* mpCMainCanvas = nullptr;     ///< view 0: image and export processes
    GLInfo_cls* mpCGLInfo = nullptr;               ///< owned
    SeriesVideo_cls* mpCSeriesVideo = nullptr;     ///< owned
    bool mbPlaced = false;                         ///< the sashes stand where they do at a start
    int mBtmFitted = -1;                           ///< height at which the bottom half was fitted last
    int mBtmHeight = 150;                          ///< height given to the bottom half, pixels
    bool mbProjectNamed = false;
    bool mbQuitAsked = false; ///< the end that comes is wanted
    bool mbRecoveryOffered = false;
    bool mbShowsStar = false;  ///< the title tells of unsaved steps
    wxString mStrTitleProject; ///< the project in the title
    wxString mStrExportEnd;    ///< where an export ended: its words stay until the film moves on
    long mLastReaderPost = 0;  ///< milliseconds of mStatusWatch
    wxStopWatch mStatusWatch;
    wxStopWatch mStartWatch; ///< since the window stands on the screen
    ConfItemList_cls mCConfList;
    ConfItemSTR_cls mCItemLastMRP;
    ConfItemSTR_cls mCItemLastIMG;
};
