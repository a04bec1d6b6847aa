// Makes the film of a project without a window: opens it as the window would, draws each frame with the same
// pipeline as an image sequence, and has it written.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <wx/gdicmn.h>
#include <wx/stopwatch.h>
#include <wx/string.h>

#include "APP/FilmArgs.h"
#include "APP/FilmFrames.h"
#include "COMMON/Eye.h"
#include "PDATA/clsFileSequence.h"

class FilmPov_cls;
class FilmProgress_cls;
class FrameMain_cls;
class Main_cls;
class MainGLCanvas_cls;
class OriginPack_cls;
class TimeCtrl_cls;
struct ImageBuffers_st;

/// Adds the time of its scope.
class MillisScope_cls {
public:
    MillisScope_cls(const wxStopWatch& watch, long* pSum)
        : mWatch(watch), mpSum(pSum), mStart(watch.Time()) {}
    ~MillisScope_cls() { *mpSum += mWatch.Time() - mStart; }
    MillisScope_cls(const MillisScope_cls&) = delete;
    MillisScope_cls& operator=(const MillisScope_cls&) = delete;

private:
    const wxStopWatch& mWatch;
    long* mpSum;
    long mStart;
};

class FilmMaker_cls {
public:
    /// The hub's frame has never been shown.
    FilmMaker_cls(Main_cls* pMain, const FilmArgs_st& args, FilmProgress_cls* pProgress);
    ~FilmMaker_cls();
    FilmMaker_cls(const FilmMaker_cls&) = delete;
    FilmMaker_cls& operator=(const FilmMaker_cls&) = delete;
    FilmStatus Run();
    /// One line for the tools: where the seconds went.
    std::string GetTiming() const;

private:
    // Each tells what is wrong and answers false, with mStatus set.
    bool Open();
    bool TakeView();
    bool TakeOutput();
    bool TakeTargets();
    bool TakeOrigin();
    bool TakeFrames();
    bool Fail(FilmStatus status, const wxString& text);
    void TakeBlur();
    void TakeStereo();
    wxSize GetFileSize() const;
    void NoteOddities() const;

    void MakeFrames();
    void MakeFrame(size_t i);
    bool DrawFrame(size_t i, const wxString& path);
    void ExportFrame(const wxString& path);
    bool NeedsSlopes() const;
    bool FollowBonds(const wxString& path);
    bool FollowParticle(const wxString& path);
    void WaitForData();
    void ReadAhead(size_t i);
    void DropBehind(size_t i);
    std::vector<int> GetEyes() const;
    wxString GetPictureName(int number, int eye) const;
    std::vector<wxString> GetPictures(size_t i) const;
    bool IsPictureThere(const wxString& path) const;
    void NoteSpace(size_t pictures);
    void Save(const ImageBuffers_st& buffers, wxSize size, const wxString& path);
    wxString FindMissing() const;
    std::pair<int, int> GetSnapshots() const;
    void NoteDamage(int frame);
    void NoteFilterFaults(int frame);
    void TellDamage();
    wxString DrawStep();
    void TakeFailures();
    void TellWritten(int i) const;
    void FailFrame(const wxString& path, const wxString& reason, bool bPicture = true);
    // clsFilmMakerPov.cpp
    bool TakePov();
    void TakePovRegion(wxString* pError);
    FilmFrame_st FindPovFirst();
    bool MakePovFirst();
    void EndPovFrame(size_t i, const wxString& error);
    void EndPov();
    wxSize GetDrawnSize() const;

    void MakeVideo();
    void MakeVideoOf(int eye);
    void Note(const wxString& text) const;
    void Complain(const wxString& text) const;

    Main_cls* mpCMain;
    FrameMain_cls* mpCFrame;
    TimeCtrl_cls* mpCTime;
    MainGLCanvas_cls* mpCCanvas = nullptr;
    FilmArgs_st mArgs;
    FilmProgress_cls* mpCProgress;
    FilmStatus mStatus = FilmStatus::Done;
    std::unique_ptr<FilmPov_cls> mpCPov; ///< null: pictures are drawn
    bool mbHandedOn = false;             ///< the frame that is being made is a renderer's
    std::set<size_t> mSPovDone;          ///< of mFilm
    FileSequence_cls mNames;
    FileSequence_cls mDataNames;                    ///< of exported data
    std::shared_ptr<const OriginPack_cls> mpOrigin; ///< null: pictures carry nothing
    std::vector<FilmFrame_st> mFilm;
    std::vector<wxString> mVDone[EYE_RIGHT + 1]; ///< pictures that stand there, in their order, by Eye
    std::map<wxString, size_t> mMFrameOfPath;    ///< of the files under way, in mFilm
    std::set<wxString> mSDamagedFiles;           ///< told already
    std::set<int> mSDamagedFrames;
    int mWriting = -1; ///< in mFilm: whose files are being written
    int mWritten = -1; ///< whose files were finished last
    bool mbSpaceNoted = false;
    int mFailures = 0;
    std::set<size_t> mSLost; ///< of mFilm: pictures that failed

    // Milliseconds.
    wxStopWatch mWatch;
    bool mbWayTold = false; ///< who draws particles
    long mDrawMillis = 0;   ///< the paints, with what they wait for
    long mDataMillis = 0;
    long mFileMillis = 0; ///< of the paints
    long mLoopMillis = 0; ///< from the first frame to the last file
};
