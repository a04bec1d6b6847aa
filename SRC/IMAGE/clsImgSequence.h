// "Save Image Sequence": plays the film once and writes a numbered picture of one view for each of its steps,
// of a size of its own. Here stand the settings, the names and what is written; the main frame starts and
// stops the run, and the view hands in the pictures.
#pragma once

#include <memory>
#include <vector>

#include <wx/string.h>

#include "COMMON/Eye.h"
#include "COMMON/clsRunProgress.h"
#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "PDATA/clsFileSequence.h"
#include "COMMON/clsDialogControl.h"

class ImageIO_cls;
class ImgSequenceGUI_cls;
class OriginPack_cls;
class TimeCtrl_cls;
struct ImageBuffers_st;

class ImgSequence_cls : public DialogControl_cls {
public:
    static constexpr int kMaxSize = 16384; ///< pixels of a side
    static constexpr int kMaxBlurSteps = 256;

    explicit ImgSequence_cls(TimeCtrl_cls* pTimeCtrl);

    void SetToDefault();
    /// Settings that a project says only where they aren't the default, as it is before one is read.
    void ResetOwnSettings() { mbKeepProject = true; }
    /// Size and angle of the window that the output is seen in beforehand; with `bSetOutput` the size of the
    /// output too.
    void SetGeom(int w, int h, float angle, bool bSetOutput);
    /// A path for the output, unless it is empty or "None". "snapshot" becomes "preview%04d".
    void SetDefaultPath(const wxString& path);
    /// Bring the typed name into the form with a number field, asking for one where it has none; without an
    /// ending it gets ".png". False: the user doesn't want the number.
    bool NormalizeName(bool bNeedsNumber);
    /// The first number so that file numbers are frame numbers.
    void CalcInitNum();

    /// A run is wanted: a series, or one picture (`bSnap`).
    void Begin(bool bSnap);
    /// It starts with the clock as it is now: nothing has been written.
    void ForgetWritten();
    bool IsRendering() const { return mbRendering; }
    bool IsSnap() const { return mbSnap; }
    /// A series, not a single picture, is running and each of its pictures has been handed on.
    bool IsSeriesWhole() const {
        return mbRendering && mbSeries && mProgress.GetDone() >= mProgress.GetTotal();
    }
    /// The run is over, however it came.
    void OutputFinish();
    /// Write the picture of a step. `offset` counts the steps of the film; `eye` is an Eye. A step before the
    /// last written one is left as it is.
    void SaveImageFromTexture(ImageIO_cls* pImageIO, const ImageBuffers_st& buffers, int offset, int eye);
    /// The outline of what the output keeps of a picture shown as a square as wide as w, in a window of w by
    /// h. A projection in pixels is set.
    void RenderFrameBoxInRender(int w, int h) const;
    /// A file of the run could not be written.
    void CountFailure() { ++mFailures; }
    int GetFailures() const { return mFailures; }
    /// How far the run is; empty without one.
    wxString GetProgressText() const;
    const RunProgress_cls& GetProgress() const { return mProgress; }
    TimeCtrl_cls* GetPCTimeCtrl() const { return mpCTimeCtrl; }
    /// Files of the last run, in their order; those of an Eye where each has its own.
    const std::vector<wxString>& GetWritten(int eye = EYE_NONE) const { return mVWritten[eye]; }

    wxString Serialize();
    void ReadStrLine(const wxString& line);

    FileSequence_cls mCFileSequence;
    ConfItemINT_cls mCInitNum; ///< added to a step's offset to make its file number
    int mPreviewW = 640;
    int mPreviewH = 480;
    float mPreviewAngle = 35.0f; ///< degrees
    int mOutW = 640;
    int mOutH = 480;
    bool mbSmallestPNG = false;
    bool mbVideo = false;                           ///< make a video of a finished series
    float mVideoRate = 25.0f;                       ///< pictures a second
    bool mbKeepProject = true;                      ///< pictures carry the project, snapshots of windows too
    std::shared_ptr<const OriginPack_cls> mpOrigin; ///< of the run; null: its pictures carry nothing

protected:
    OwnedDialog_cls* MakeDialog(wxWindow* pParent) override;

private:
    int CountSteps() const;
    void TakeItems();

    TimeCtrl_cls* mpCTimeCtrl;
    bool mbRendering = false;
    bool mbSnap = false;
    bool mbSeries = false; ///< the run began as one
    int mLastFrame = -1;
    int mLastEye = -1;
    int mFailures = 0;
    RunProgress_cls mProgress;
    std::vector<wxString> mVWritten[EYE_RIGHT + 1];

    // As the settings stand in files.
    ConfItemList_cls mConfList;
    ConfItemSTR_cls mItemFile;
    ConfItemINT_cls mItemOutW;
    ConfItemINT_cls mItemOutH;
    ConfItemFLOAT_cls mItemBlurLength;
    ConfItemINT_cls mItemBlurSteps;
    ConfItemBOOL_cls mItemSmallest;
    ConfItemBOOL_cls mItemVideo;
    ConfItemFLOAT_cls mItemRate;
    ConfItemList_cls mConfListOwn; ///< only what isn't the default is written
    ConfItemBOOL_cls mItemKeepProject;
};
