// Projects, data files, quitting: the frame's "File" menu but for pictures and exports.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "APP/clsFileOpener.h"
#include "CONFITEM/clsConfItem.h"

class ConfItemList_cls;
class FollowRun_cls;
class FrameMain_cls;
class Main_cls;
class Replay_cls;
class wxCloseEvent;
class wxCommandEvent;
class wxIdleEvent;

class FileMenu_cls {
public:
    /// Takes the frame's commands about files from here on. A part of the frame; `list` gets its setting.
    FileMenu_cls(FrameMain_cls& frame, ConfItemList_cls& list);
    ~FileMenu_cls();
    FileMenu_cls(const FileMenu_cls&) = delete;
    FileMenu_cls& operator=(const FileMenu_cls&) = delete;

    void OpenProject(const wxString& path);
    /// As the user asks for it: unsaved steps are asked about first. A picture's project is opened at its
    /// frame, and has no name.
    void OpenProjectAsked(const wxString& path);
    /// Once there is a picture: offer what was kept of a program that ended without being asked, then open
    /// the first files.
    void Begin();
    /// For files that are handed over from outside.
    FileOpener_cls& GetOpener() { return mOpener; }
    /// Where there is a screen: somebody to show a running simulation to.
    void MakeFollow();
    /// Null without a screen.
    FollowRun_cls* GetFollow() const { return mpCFollow.get(); }
    /// Files of the command line, for Begin.
    void SetFirstFiles(const std::vector<wxString>& paths) { mVFirstFiles = paths; }
    /// Begins once there is a picture, behind the first files.
    void SetReplay(Replay_cls* pReplay) { mpCReplay = pReplay; }
    void FillRecentMenus();
    /// Empty: no project is named. A star before the title tells of unsaved steps.
    void UpdateTitle(const wxString& projectName);
    /// Bring the title's star up to date.
    void ShowModified();
    void SetLastProject(const wxString& path) { mCItemLastMRP.mStrValue = path; }
    wxString GetLastProject() const { return mCItemLastMRP.mStrValue; }
    /// A project was opened or saved under a name in this run.
    bool IsProjectNamed() const { return mbProjectNamed; }

private:
    void OnMenuOpenProject(wxCommandEvent& event);
    void OnMenuSaveProject(wxCommandEvent& event);
    void OnMenuSaveProjectAs(wxCommandEvent& event);
    void OnMenuLoadData(wxCommandEvent& event);
    void OnMenuGuessData(wxCommandEvent& event);
    void OnMenuCloseData(wxCommandEvent& event);
    void OnMenuExportPathPov(wxCommandEvent& event);
    void OnMenuRecent(wxCommandEvent& event);
    void OnQuit(wxCommandEvent& event);
    void OnClose(wxCloseEvent& event);
    void OnIdle(wxIdleEvent& event);
    bool SaveProject(const wxString& path); ///< false, told, when that failed
    bool SaveNamedProject();                ///< under its name, or under one that is asked for
    bool AskProjectName(wxString* pPath);
    bool AskForSteps(const wxString& about);
    void OpenPictureProject(const wxString& path);
    void TakeProject(const std::wstring& text, const wxString& folder);
    void ShowProject();
    void OpenWithLoader(const wxString& path);
    bool AskQuit();
    void OfferRecovery();

    FrameMain_cls& mFrame;
    Main_cls& mHub;
    FileOpener_cls mOpener;
    std::unique_ptr<FollowRun_cls> mpCFollow;
    std::vector<wxString> mVFirstFiles;
    ConfItemSTR_cls mCItemLastMRP;
    Replay_cls* mpCReplay = nullptr;
    bool mbProjectNamed = false;
    bool mbQuitAsked = false; ///< the end that comes is wanted
    bool mbShowsStar = false;
    wxString mStrSuggested;    ///< path that a project without a name is saved under; empty: any
    wxString mStrTitleProject; ///< the project in the title
    wxString mWaitingProject;  ///< opened when the paint in progress is over
};
