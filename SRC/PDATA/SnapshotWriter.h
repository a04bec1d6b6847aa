// Writes one snapshot file in the layout of a record grammar: the counterpart of SnapshotHeader and
// SnapshotBody. Knows no dialog; a file can be written at one go or bit by bit, while the program stays
// alive.
#pragma once

#include <memory>
#include <vector>

#include <wx/string.h>

#include "PDATA/ParticleArrays.h"

class GrammerBase_cls;
class PDataBlock_cls;
class SafeFile_cls;

/// What is written. The arrays are borrowed and must stand until the file is finished.
struct SnapshotSource_st {
    /// The block as it stands, or, mDT behind its time, moved along its slopes: positions, radii and values;
    /// velocities stay as they are stored. Without its arrays it has no particles.
    static SnapshotSource_st Of(const PDataBlock_cls& block, double dt, int step);

    /// Particles 0, step, 2 * step and so on are written, or those that are kept.
    long long GetRecordCount() const;
    long long GetParticle(long long record) const {
        return mpKept ? (*mpKept)[static_cast<size_t>(record)] : record * mStep;
    }
    double GetTime() const { return mTime + mDT; }
    bool IsSame(const SnapshotSource_st& other) const;

    ParticleArrays_st mArrays; ///< mpVel, mpDRadius and mpDValue1 are the slopes; mpID may be null
    long long mNumber = 0;
    double mTime = 0.0; ///< of the snapshot
    double mDT = 0.0;
    int mStep = 1;
    std::shared_ptr<const std::vector<int>> mpKept; ///< the particles to write; null: as the step has it
};

class SnapshotWriter_cls {
public:
    enum class State { Busy, Written, Failed };

    /// Opens a file beside `path`, which takes its place only when it is whole; a failed one leaves nothing.
    /// Codes are taken now (PDATA/clsGrammerBase.h); unknown ones write nothing.
    SnapshotWriter_cls(const wxString& path, const GrammerBase_cls& grammar, bool bText,
                       const SnapshotSource_st& source);
    ~SnapshotWriter_cls();
    SnapshotWriter_cls(const SnapshotWriter_cls&) = delete;
    SnapshotWriter_cls& operator=(const SnapshotWriter_cls&) = delete;

    /// Go on for about so many milliseconds; negative: to the end.
    State Write(long millis = -1);
    State GetState() const { return mState; }
    /// What went wrong, then the file's path; empty unless the state is Failed.
    wxString GetReason() const { return mStrReason; }
    const SnapshotSource_st& GetSource() const { return mSource; }
    int GetPercent() const;
    /// The frame has no particles, and the empty file that tells so stands there.
    bool IsEmptyFrame() const { return mbEmptyFrame; }

private:
    void PutHeader();
    void PutPiece();
    void Flush();
    void Finish();
    void Fail(const wxString& reason);

    wxString mStrPath;
    SnapshotSource_st mSource;
    std::vector<int> mHead;
    std::vector<int> mBody;
    bool mbText;
    long long mCount;    ///< records of the file
    long long mDone = 0; ///< records in the buffer or written
    std::vector<char> mBuffer;
    size_t mUsed = 0;
    std::unique_ptr<SafeFile_cls> mpFile;
    State mState = State::Busy;
    bool mbEmptyFrame = false;
    wxString mStrReason;
};
