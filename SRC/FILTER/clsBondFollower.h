// Brings the bonds of stick filters that keep them from the work area's first frame to the one on show, a few
// frames at a time.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include <wx/string.h>

#include "BOND/StickList.h"
#include "PDATA/clsAsideReader.h"

class FilmTime_cls;
class FilterLists_cls;
class FilterStick_cls;
class PDataSeqCtrl_cls;
class PDataSequence_cls;
class PDataSnap_cls;

/// Frames are taken one by one, whatever the stepping, and a frame stands for the snapshot that it shows, the
/// earlier one where it stands between two: so what holds at a frame doesn't depend on how one got there.
/// Snapshots that aren't in memory are read into memory of its own, so that those that were stay there. All
/// calls come from the main thread.
class BondFollower_cls {
public:
    /// All live longer.
    BondFollower_cls(FilterLists_cls& filters, const PDataSeqCtrl_cls& store, const FilmTime_cls& time);
    ~BondFollower_cls();
    BondFollower_cls(const BondFollower_cls&) = delete;
    BondFollower_cls& operator=(const BondFollower_cls&) = delete;

    enum class State {
        Known,   ///< the bonds that the clock's present frame starts from
        More,    ///< there are frames to follow
        Reading, ///< a snapshot has to come first
        Stopped, ///< by Stop, or for want of memory
    };
    /// What snapshots come from.
    enum class Source {
        Memory,     ///< alone
        Background, ///< what lacks is read beside the work, when no other one is
        Wait,       ///< the same, waiting for it
    };
    /// Follow frames for about so many milliseconds, at least one.
    State Follow(long millis, Source source);
    /// Nothing is followed until another frame is on show, or what is followed changes. `reason`: for the
    /// user, where it wasn't him.
    void Stop(const wxString& reason = wxString());
    /// Stop where the user has pressed "Abort" while frames are followed; true: he has.
    bool TakeAbort();
    /// A picture was drawn without bonds that aren't known yet; TakeMissed tells once.
    void NoteMissed() { mbMissed = true; }
    bool TakeMissed() { return std::exchange(mbMissed, false); }
    /// One line for the user; empty while all is known.
    wxString GetStatus() const;
    /// Why following stopped, if it wasn't the user; empty else.
    const wxString& GetReason() const { return mStrReason; }

    /// Asked now and then while a long frame is followed; true: leave it.
    std::function<bool()> mIsStopped;

private:
    bool FindNeeded();
    void ForgetIfOther();
    void ForgetAll();
    PDataSnap_cls& GetSnap(int frame) const;
    PDataSnap_cls* ReadOwn(const PDataSnap_cls& snap, Source source);
    State FollowFrame(Source source);

    FilterLists_cls& mFilters;
    const PDataSeqCtrl_cls& mStore;
    const FilmTime_cls& mTime;
    AsideReader_cls mOwn;
    std::vector<FilterStick_cls*> mVpCSticks; ///< those that keep bonds
    int mNeeded = -1;                         ///< the first frame that any of them needs; -1: none
    // What was followed is good for these.
    const PDataSequence_cls* mpCSequence = nullptr;
    unsigned long long mContents = 0;
    std::vector<int> mVPlaces; ///< snapshots of the frames from the first on, where time is remapped
    bool mbMissed = false;
    // Stopped at.
    bool mbStopped = false;
    std::pair<int, int> mStoppedAt = {-1, -1}; ///< frame on show, frame needed
    wxString mStrReason;
};
