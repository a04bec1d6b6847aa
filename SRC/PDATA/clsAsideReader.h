// Reads one snapshot at a time into memory of its own, so that those of the store stay there.
#pragma once

#include <memory>

class PDataSnap_cls;

/// For work that looks at many snapshots once. Shares the one reader with all others. Main thread only.
class AsideReader_cls {
public:
    AsideReader_cls();
    ~AsideReader_cls();
    AsideReader_cls(const AsideReader_cls&) = delete;
    AsideReader_cls& operator=(const AsideReader_cls&) = delete;

    enum class State {
        Read,    ///< or its file can't be used
        Reading, ///< or another one is being read
        NoMemory,
    };
    /// Bring a snapshot of the store to memory; with `bWait` the call returns when that is done.
    State Read(const PDataSnap_cls& snap, bool bWait);
    /// What was read last; null: nothing.
    PDataSnap_cls* GetPCSnap() const { return mpCSnap.get(); }
    void Drop();

private:
    std::unique_ptr<PDataSnap_cls> mpCSnap;
};
