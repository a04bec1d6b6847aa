// Pictures that leave the program: snapshots of a view, the clipboard, and runs of the film that write
// images; a finished series may become a video.
#pragma once

#include <memory>

#include "CONFITEM/clsConfItem.h"
#include "IMAGE/VideoFile.h"

class ConfItemList_cls;
class FrameMain_cls;
class MainGLCanvas_cls;
class Main_cls;
class OriginPack_cls;
class SeriesVideo_cls;
class wxCommandEvent;

class ImageRun_cls {
public:
    /// Takes the frame's commands about images from here on. A part of the frame; `list` gets its setting.
    ImageRun_cls(FrameMain_cls& frame, ConfItemList_cls& list);
    ~ImageRun_cls();
    ImageRun_cls(const ImageRun_cls&) = delete;
    ImageRun_cls& operator=(const ImageRun_cls&) = delete;

    /// The data or the clock of a run that writes something go: it ends.
    void StopRun();
    /// End all runs that write something.
    void StopOutputs();
    void TellImageFailures();
    void TickVideo();
    /// For the status bar; empty without a video to tell of.
    wxString GetVideoStatus() const;
    /// What quitting would cut short.
    wxString GetQuitWarning() const;

private:
    void OnMenuSaveImageSnap(wxCommandEvent& event);
    void OnMenuCopyView(wxCommandEvent& event);
    void OnMenuSaveImageSeq(wxCommandEvent& event);
    void OnMenuSaveImgSeqBegin(wxCommandEvent& event);
    void OnMenuRefreshImgSeq(wxCommandEvent& event);
    void OnMenuPlayStop(wxCommandEvent& event);
    void AskBeforeSequence(MainGLCanvas_cls* pCanvas);
    void BeginVideo();
    std::shared_ptr<const OriginPack_cls> PackOrigin() const;

    FrameMain_cls& mFrame;
    Main_cls& mHub;
    std::unique_ptr<SeriesVideo_cls> mpCSeriesVideo;
    VideoStereo mVideoStereo{}; ///< of the series under way
    ConfItemSTR_cls mCItemLastIMG;
};
