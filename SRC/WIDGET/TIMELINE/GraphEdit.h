// Editing keys by hand: shown at once while the hand moves, and one step of the undo list at its end.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "PARAM/clsParameters.h"

/// Curves under an edit, each with the keys that it had before. Curves that don't depend on time take no
/// part. A curve that is deleted or changed by something else meanwhile is left as it is.
class CurveGesture_cls {
public:
    struct Entry_st {
        Parameters_cls* mpCParam;
        bool mbFollows; ///< takes part only because a linked group's curve does
        std::unique_ptr<Parameters_cls> mpBefore;
        std::vector<KeyFrame_cls> mVShown;   ///< what the last change left
        std::vector<unsigned char> mVMoving; ///< keys that go along in time
    };
    /// The keys as they were before, to be changed.
    using Change = std::function<void(const Entry_st& entry, std::vector<KeyFrame_cls>* pKeys)>;

    /// With `bLinked` the other curves of linked groups take part.
    void Begin(const std::vector<Parameters_cls*>& curves, bool bLinked);
    bool IsActive() const { return !mVEntries.empty(); }
    /// Show the curves with this change to what they were before; with `bTell` what shows them is told.
    void Show(const Change& change, bool bTell = true);
    /// Selected keys by that much, kept in the film and on its steps; linked curves' keys at the same
    /// places go along in time. Keys in the way are replaced, slopes and ease factors stay. Returns how far
    /// the keys went in time.
    double Move(double dT, double dV);
    /// From here on the keys stay, and copies of them move; the copies are selected.
    void MoveCopies() { mbCopies = true; }
    /// The same after another change that leaves number and order of the keys.
    double MoveAnd(double dT, double dV, const Change& before);
    /// What is shown becomes one step; false when nothing changed.
    bool Commit();
    /// Everything as it was before.
    void Cancel();

private:
    bool IsOurs(const Entry_st& entry) const;
    void MarkMoving();
    double LimitTime(double dT) const;

    std::vector<Entry_st> mVEntries;
    bool mbLinked = false;
    bool mbCopies = false;
};

/// Change the curves in one step; false when nothing changed.
bool EditCurves(const std::vector<Parameters_cls*>& curves, bool bLinked,
                const CurveGesture_cls::Change& change);

/// The selected keys, and with them those at the same places in linked curves. A curve keeps its last key.
bool DeleteSelectedKeys(const std::vector<Parameters_cls*>& curves);
/// A key on the curve at the nearest step of the film, in linked curves too; it alone is selected.
bool InsertKeyAt(Parameters_cls* pParam, double t, const std::vector<Parameters_cls*>& shown);
/// Selected keys get this kind. Where its fields hold nothing that suits it, a new ease factor is 1 and a
/// new slope the one in use.
bool SetSelectedKinds(const std::vector<Parameters_cls*>& curves, unsigned kind);
/// The same for one curve's keys, all that are selected.
void ChangeKinds(std::vector<KeyFrame_cls>* pKeys, const Parameters_cls& before, unsigned kind);

/// A position on the film's grid of frames and steps.
double ToFilmGrid(double t);
int CountSelectedKeys(const std::vector<Parameters_cls*>& curves);
