// POV-Ray: where its files stand and how they are named, what is in them besides the scene, and the pictures
// that are made of them one after the other. The scene's text and the playing of the film come from above.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include <wx/string.h>

#include "COMMON/clsDialogControl.h"
#include "COMMON/clsRunProgress.h"
#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "POVRAY/TEXT/PovTextOptions.h"
#include "POVRAY/clsPovAdvanced.h"
#include "POVRAY/clsPovFormat.h"
#include "POVRAY/clsPovJob.h"
#include "POVRAY/clsPovPhotons.h"
#include "POVRAY/clsPovRadiosity.h"
#include "POVRAY/clsPovRender.h"

class wxTimer;

/// A frame that has no picture, and why.
struct PovFailure_st {
    wxString mName; ///< of its scene, without folder and ending
    wxString mWords;
};

class PovRayCtrl_cls : public DialogControl_cls {
public:
    enum FileKind : unsigned { FILE_SNAP = 0, FILE_ANIM, FILE_COMMON_SCENE };

    PovRayCtrl_cls();
    ~PovRayCtrl_cls() override;

    /// All settings of the dialog; paths and names stay.
    void SetToDefault();
    /// Settings for a fine single picture, or for a film that doesn't flicker.
    void SetPreset(bool bFilm);
    /// Have settings changed as one step of the undo list.
    void ChangeSettings(const std::function<void()>& change);
    /// Before a project is read: what it doesn't speak of is as it was before there were such settings.
    void ResetOwnSettings();
    wxString Serialize();
    wxString SerializeForConfigure() { return mConfList.SerializeAll(); }
    void ReadStrLine(const wxString& line);

    /// Name of a file without its ending; of kind FILE_COMMON_SCENE with it, and without a folder unless
    /// files are named with theirs. `eye`: an Eye. `number` -1: the next one's.
    wxString GetFileStr(unsigned kind, unsigned eye, int number) const;
    /// The same of the frame of an animation that has this number, -1 like any other.
    wxString GetFrameFileStr(unsigned eye, int number) const;
    /// Where the particles stand that are the same in all frames.
    wxString GetCommonScenePath() const;
    /// The working directory and "/", or "./".
    wxString GetWorkingDirWithSep(bool bAbsolute) const;
    /// Have the working directory made where it isn't there. Empty on success, else why not.
    wxString MakeWorkingDir() const;
    /// What is wrong with this kind's pattern; empty when nothing is.
    wxString GetNameProblem(unsigned kind) const;
    /// Show it in the desktop's file manager.
    void OpenWorkingDir() const;

    PovTextOptions_st GetTextOptions() const;
    /// The global settings of a scene.
    wxString GetStrPovGlobal() const;
    /// The text of an .ini file. `pretrace`, a Reuse of the radiosity, is what this frame of a film does with
    /// the film's pretrace file; -1: there is none, and the settings hold.
    wxString GetStrPovIni(const wxString& iniPath, int pretrace) const;
    /// False, told to the user, when the file can't be written.
    bool OutputPovRayIni(const wxString& iniPath, int pretrace) const;
    /// For the frame of an animation that is exported now; -1 where each frame has a pretrace of its own.
    int GetPretraceOfFrame() const;
    /// Where a film keeps the pretrace of its first frame.
    wxString GetPretracePath() const;
    /// Do files name each other with their folders? Where POV-Ray couldn't read those names they don't.
    bool IsFileAbsolute() const;
    /// The words that a scene's .ini is rendered with, as a shell would be given them.
    wxString GetPovRayCommand(const wxString& base) const;

    // The driver (clsPovRayCtrlRun.cpp): one scene at a time, the next one when the idle loop comes by.

    /// The base names of the scenes from the first number of an animation up to the one that would be next.
    void PushBackCommands(unsigned kind, unsigned eye);
    /// Render the present still. False, told to the user: it couldn't be begun.
    bool RenderByPovSnap(unsigned eye);
    /// The same of a scene that is a trial of the film: its time is told, and what the film would take.
    bool RenderTrial(const wxString& base, int films);
    /// A press of one of the two buttons of an animation. True: the film is to be played now, and its scenes
    /// are to be written.
    bool StartExportPovAnim(int bRender);
    /// The film has been played, or its playing was stopped.
    void AbortExportPovAnim();
    void StartRenderPovAnim();
    /// Called by the idle loop: render the next frame if there is one and nothing else runs.
    void ProcessRenderPovAnim();
    /// No further frame; the one in work runs to its end.
    void AbortRenderPovAnim();
    /// End the renderer now.
    void StopRenderer();
    /// See what the renderer does. Called by a clock while it runs.
    void Tick();
    bool IsBusy() const { return mbExportingAnim || mbRenderingAnim || !mbRenderDone; }

    /// What runs, in words; empty when nothing does.
    wxString GetProgressText() const;
    const RunProgress_cls& GetProgress() const { return mProgress; }
    int GetPercent() const { return mJob.GetPercent(); }
    int GetFinished() const { return mFinished; } ///< pictures, since the start
    const std::vector<PovFailure_st>& GetFailures() const { return mVFailures; }
    /// The last picture that was finished; empty before the first.
    const wxString& GetLastPicture() const { return mStrLastPicture; }
    const PovPicture_st& GetLastShape() const { return mShape; }
    /// What a trial told; empty before the first.
    const wxString& GetTrialText() const { return mStrTrial; }
    /// What quitting would cut short; empty when nothing runs.
    wxString GetQuitWarning() const;

    unsigned GetRegionType() const { return mCRender.mRegion.mValue; }
    int GetRegionInit() const { return mCRender.mCustomMin.mValue; }
    int GetRegionFin() const { return mCRender.mCustomMax.mValue; }

    PovRadiosity_cls mCRadiosity;
    PovRender_cls mCRender;
    PovPhotons_cls mCPhotons;
    PovFormat_cls mCFormat;
    PovAdvanced_cls mCAdvanced;

    ConfItemSTR_cls mPathPovRay;
    ConfItemSTR_cls mPathPovWork;
    ConfItemSTR_cls mFilePovSnap;
    ConfItemSTR_cls mFilePovAnim;
    ConfItemUINT_cls mPovTweaks; ///< kept for who wrote it
    ConfItemBOOL_cls mUseCommonSceneFile;
    ConfItemINT_cls mDigits; ///< decimals of coordinates; 0: as many as the data need
    ConfItemBOOL_cls mColorByParticle;
    ConfItemBOOL_cls mGroupMaterials;
    ConfItemBOOL_cls mLikeView;          ///< see PovTextOptions_st
    ConfItemBOOL_cls mKeepFirstPretrace; ///< of an animation: light doesn't flicker

    int mSnapNumber = 0;     ///< of the next still
    int mAnimInitNumber = 0; ///< of an animation's first frame
    int mAnimNumber = 0;     ///< of the next frame of an animation
    bool mbCommonSceneWritten = false;
    uint64_t mCommonScenePrint = 0;        ///< of what stands in it
    std::vector<PovPicture_st> mVPictures; ///< of the animation's scenes, as these are written
    bool mbForRender = false;              ///< what is exported now will be rendered here

    bool mbRenderDone = true;            ///< no renderer runs
    bool mbExportingAnim = false;        ///< scenes are written while the film plays
    bool mbRenderingAnim = false;        ///< they are rendered then, or are being rendered
    bool mbAborted = false;              ///< a renderer runs whose animation was given up
    std::vector<wxString> mVStrCommands; ///< base names; mAnimNumber is the next one of them

    /// What the dialog has done for it; dialog and object may go in either order.
    struct Hooks_st {
        std::function<void()> mCommitFields; ///< what is being typed counts
        std::function<void()> mOnTick;       ///< how far the renderer is has changed
        std::function<void()> mOnState;      ///< what runs has changed
    };
    const std::shared_ptr<Hooks_st> mpHooks = std::make_shared<Hooks_st>();

protected:
    OwnedDialog_cls* MakeDialog(wxWindow* pParent) override;

private:
    wxString GetWorkingDir() const;
    wxString GetNumberedFile(const wxString& pattern, unsigned eye, int number) const;
    bool StartJob(const wxString& base, const wxString& exe, const PovPicture_st& picture);
    void NoteEnd();
    void TellChange();

    ConfItemList_cls mConfList;     ///< of the configure file
    ConfItemList_cls mConfListFile; ///< of names
    ConfItemList_cls mConfListOwn;

    PovJob_cls mJob;
    PovPicture_st mShape; ///< of its picture
    wxString mStrAnimExe; ///< the animation's renderer
    std::unique_ptr<wxTimer> mpCTimer;
    RunProgress_cls mProgress;
    bool mbAnimRun = false; ///< the job is a frame of an animation
    int mTrialFrames = 0;   ///< of the film that the job is a trial of; 0: it is none
    int mFinished = 0;
    std::vector<PovFailure_st> mVFailures;
    wxString mStrLastPicture;
    wxString mStrTrial;
};
