// The particle that the user has picked, and what follows from that: its label, an anchor that goes with it,
// the trail of its way.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include <wx/string.h>

#include "PDATA/clsParticleTrack.h"
#include "SCENE/clsAnchorPath.h"

class FilmTime_cls;
class FilterLists_cls;
class PDataBlock_cls;
class PDataSeqCtrl_cls;
class PeriodicBoundary_cls;
class SnapData_cls;

/// One for all views. Main thread only.
///
/// Picking is the session's: it is no step of the undo list, and no file keeps it. As soon as the particle is
/// followed, leaves a trail or has its label in pictures, it is a part of the project; its name is a step
/// together with the first of these ticks, so that undo and redo find it whatever was picked meanwhile.
class ParticleWatch_cls {
public:
    /// All live longer.
    ParticleWatch_cls(const PDataSeqCtrl_cls& store, const FilmTime_cls& time, FilterLists_cls& filters,
                      const PeriodicBoundary_cls& box);
    ~ParticleWatch_cls();
    ParticleWatch_cls(const ParticleWatch_cls&) = delete;
    ParticleWatch_cls& operator=(const ParticleWatch_cls&) = delete;

    /// A click has found this particle; none: End. What goes with a particle goes with this one from now on,
    /// which is a step of the undo list.
    void Pick(const ParticleName_st& name);
    /// Nothing is picked any more: label and ring go. A particle that is a part of the project stays that.
    /// False: nothing was.
    bool End();
    /// Nothing is picked nor goes with a particle: projects that don't speak of it have none.
    void Reset();
    /// Is there a particle, picked or a part of the project?
    bool IsPicked() const { return !GetName().IsNone(); }
    const ParticleName_st& GetName() const { return IsKept() ? mKept : mShown; }
    /// What the user knows it by; empty: there is none.
    wxString GetText() const;
    /// Do views show it? `bWritten`: in pictures that are written.
    bool IsMarked(bool bWritten) const { return IsPicked() && (mbLabel || (mbShown && !bWritten)); }
    /// Do windows show what written pictures don't?
    bool IsForWindow() const { return IsMarked(false) && !IsMarked(true); }
    /// Where a block has it, -1: nowhere. `serial` tells contents of blocks apart.
    int FindIn(const PDataBlock_cls& block, unsigned long long serial) const;
    /// Where the drawn particle stands in the scene; false where it isn't drawn.
    bool GetPlace(const SnapData_cls& snap, double out[3]) const;

    /// Where the anchor is held that follows it, at a double index. As long as a snapshot has to come first
    /// it stays where it was before (AnchorPath_cls::LATE).
    AnchorPath_cls::Followed GetFollowed(double time, double out[3]);
    /// Another number whenever GetFollowed has other answers; 0: nothing is followed.
    unsigned long long GetFollowState();
    /// The way over the work area in the scene, as the data stand in it now: pieces of a line, broken where
    /// the particle isn't there, isn't known yet, or goes round the periodic box.
    using Point_st = std::array<float, 3>;
    std::vector<std::vector<Point_st>> GetTrail();

    using State = ParticleTrack_cls::State;
    using Source = ParticleTrack_cls::Source;
    /// Get to know what is followed and the trail, for about so many milliseconds, at least one snapshot.
    State Learn(long millis, Source source);
    /// The trail stays as far as it is known, where the user has pressed "Abort" meanwhile; true: he has.
    bool TakeAbort();
    /// A trail that was stopped goes on: a picture that is to be written has all of it.
    void Resume() { mbStopped = false; }
    /// One line for the user while there is something to learn; else empty.
    wxString GetStatus();

    wxString Serialize() const;
    void ReadStrLine(const wxString& line);

    // Of the particle; each is a part of the project.
    bool mbFollow = false; ///< the anchor goes with it
    bool mbTrail = false;  ///< its way over the work area is a line in the scene
    bool mbLabel = false;  ///< pictures have its label

    int CountTicks() const { return mbFollow + mbTrail + mbLabel; }
    /// What was ticked is another: stopped work begins anew, and all is told. `bFirst`: there was no tick.
    void OnTick(bool bFirst);
    /// Set by the hub; empty ones do nothing. A click has found one: its page is to be seen.
    std::function<void()> mOnPicked;
    /// Views and pages show something else now.
    std::function<void()> mOnChanged;

private:
    struct Range_st {
        int mFirst, mLast;
    };

    bool IsKept() const { return CountTicks() > 0; }
    void Tell() const;
    void KeepShown(bool bBefore);
    ParticleTrack_cls& GetTrack();
    Range_st GetTrailRange() const;
    State LearnSome(Source source);
    bool GetDataPlace(double time, float out[3]);

    const PDataSeqCtrl_cls& mStore;
    const FilmTime_cls& mTime;
    FilterLists_cls& mFilters;
    const PeriodicBoundary_cls& mBox;
    ParticleTrack_cls mTrack; ///< GetTrack: of the particle's present name
    ParticleName_st mKept;    ///< the project's
    ParticleName_st mShown;   ///< the session's, as long as mbShown
    bool mbShown = false;
    bool mbStopped = false; ///< the trail, by the user
    State mState = State::Known;
    /// Where it was found last.
    struct Found_st {
        const PDataBlock_cls* mpCBlock = nullptr;
        unsigned long long mSerial = 0;
        ParticleName_st mName;
        int mIndex = -1;
    };
    mutable Found_st mFound;
    /// Where the anchor was held last.
    struct Held_st {
        bool mbThere = false;
        float mPos[3] = {0, 0, 0}; ///< data coordinates
    } mHeld;
    int mPresent = -1; ///< snapshot of the last Learn
};
