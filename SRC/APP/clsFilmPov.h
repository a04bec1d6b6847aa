// The film maker's road through POV-Ray: writes the scene of each frame, and has several of them rendered at
// a time.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <set>
#include <vector>

#include <wx/string.h>

#include "POVRAY/clsPovJob.h"

class MainGLCanvas_cls;
class Main_cls;
class PovRayCtrl_cls;
struct FilmArgs_st;

class FilmPov_cls {
public:
    FilmPov_cls(Main_cls& hub, const FilmArgs_st& args);
    ~FilmPov_cls();
    FilmPov_cls(const FilmPov_cls&) = delete;
    FilmPov_cls& operator=(const FilmPov_cls&) = delete;

    bool IsRender() const { return mbRender; }
    /// Take over what the command line says of the project's settings. `steps`: scenes that add up to a
    /// picture. Empty, or what is wrong; *pbMissing where a program is not there.
    wxString Prepare(int steps, bool* pbMissing);
    /// What a frame's number leads to.
    wxString GetScene(int number) const;
    wxString GetPicture(int number) const;
    /// Do frames name what the film's first one leaves: its light, data that are in all of them?
    bool NeedsFirst() const;
    bool IsLightKept() const { return mbPretrace; } ///< frames load that of the first one
    /// The film's first frame has this number.
    void SetFirst(int number);
    /// Of the first frame, which has just been drawn: what the others need of it. Empty, or why there is
    /// none.
    wxString MakeFirst(MainGLCanvas_cls* pCanvas);
    bool IsFrameThere(int number) const;
    /// Write the scene that has just been drawn, step `step` of frame `i`. Empty, or why not.
    wxString WriteStep(MainGLCanvas_cls* pCanvas, size_t i, int number, int step);
    /// All scenes of the frame are written: have it rendered as soon as there is room, and wait for the room.
    void Render(size_t i, int number);
    /// Wait for all that is rendered.
    void Finish();
    /// A frame has its picture, or an error that says why not.
    std::function<void(size_t i, const wxString& error)> mOnDone;

private:
    struct Frame_st {
        size_t mIndex = 0;
        int mNumber = 0;
        std::vector<wxString> mBases; ///< of its scenes
        size_t mLeft = 0;             ///< that have no picture yet
        wxString mError;
    };
    struct Work_st {
        std::shared_ptr<Frame_st> mpFrame;
        wxString mBase;
        std::unique_ptr<PovJob_cls> mpJob;
    };

    wxString GetBase(int number, int step) const;
    wxString WriteScene(MainGLCanvas_cls* pCanvas, const wxString& base, int pretrace);
    bool NeedsOneThread() const;
    bool NeedsPretrace() const;
    bool NeedsCommonScene() const;
    /// Render the scene for its light, and wait.
    wxString MakePretrace(MainGLCanvas_cls* pCanvas);
    void StartJobs();
    void PollJobs();
    void EndJob(Work_st& work);
    void EndFrame(Frame_st& frame);
    void StopAll();
    void RemoveStep(const wxString& base);

    Main_cls& mHub;
    PovRayCtrl_cls& mCtrl;
    const FilmArgs_st& mArgs;
    const bool mbRender;
    int mSteps = 1;
    bool mbPretrace = false; ///< frames load the light of the first one
    std::deque<Work_st> mWaiting;
    std::vector<Work_st> mRunning;
    std::set<wxString> mSSteps; ///< scenes that are there only until their pictures are one
};
