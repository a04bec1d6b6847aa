// The video behind an image sequence: begun when the series is whole, made in the background, told in the
// status bar.
#pragma once

#include <wx/stopwatch.h>
#include <wx/string.h>

#include "IMAGE/VideoFile.h"
#include "IMAGE/clsVideoMaker.h"

class ImgSequence_cls;

class SeriesVideo_cls {
public:
    /// The series has ended with this many files missing. Begins if its settings want a video;
    /// one that is still being made is given up, and that is told.
    void Begin(const ImgSequence_cls& sequence, int failures, VideoStereo stereo);
    /// To be called a few times a second: true when GetStatusText changes.
    bool Tick();
    /// What is under way, or was a moment ago; else empty.
    wxString GetStatusText() const;
    /// For the question before the end of the program: what would be lost; empty when nothing would.
    wxString GetQuitWarning() const;
    bool IsRunning() const { return mCMaker.IsRunning(); }

private:
    void TellFailure(const wxString& path, const wxString& reason);

    void StartNext();

    VideoMaker_cls mCMaker;
    std::vector<VideoJob_st> mVWaiting; ///< of the other eye
    wxString mStrDone;                  ///< the end of the last one
    wxStopWatch mDoneWatch;
};
