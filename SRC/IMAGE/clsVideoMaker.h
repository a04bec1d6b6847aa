// Has a video made in the background by another process, which this one looks at from time to time.
#pragma once

#include <sys/types.h>

#include <string>

#include <wx/string.h>

#include "COMMON/Leftovers.h"

struct VideoJob_st;

class VideoMaker_cls {
public:
    VideoMaker_cls() = default;
    ~VideoMaker_cls() { Stop(); }
    VideoMaker_cls(const VideoMaker_cls&) = delete;
    VideoMaker_cls& operator=(const VideoMaker_cls&) = delete;

    /// Begin; one that still runs is given up. Empty on success, else why not.
    wxString Start(const VideoJob_st& job);
    bool IsRunning() const { return mPid > 0; }
    /// Look whether it is done: true once, when it ended.
    bool Poll();
    /// Poll until it ended, or `bStop` says true: then it is given up.
    template <class STOP>
    void Wait(STOP bStop) {
        while (IsRunning() && !Poll()) {
            if (bStop()) Stop();
            Sleep();
        }
    }
    /// Give up; nothing is left of the video.
    void Stop();
    /// Of the last one: why there is no video; empty when there is. In the tool's words.
    const wxString& GetError() const { return mStrError; }
    const wxString& GetPath() const { return mStrPath; }

private:
    static void Sleep();
    wxString MakeLinks(const VideoJob_st& job);
    wxString Spawn(const VideoJob_st& job);
    void CleanUp();
    void End(int status);

    pid_t mPid = -1;
    InUse_cls mFolderInUse;
    InUse_cls mPartialInUse;
    std::string mFolder;  ///< of the links to the pictures
    std::string mPartial; ///< the video under work, renamed when it is whole
    wxString mStrPath;
    wxString mStrError;
};
