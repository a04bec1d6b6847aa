// Is a snapshot file complete that another program may still be writing?
#pragma once

class GrammerBase_cls;
class wxString;

enum class SnapshotState {
    Partial, ///< less than the head says, or no head yet
    Unended, ///< text: all lines are there, but the last one doesn't end, and may go on
    Whole
};

/// Does what the head of a file declares stand in it? Binary: the bytes of all records, and none behind them
/// unless `first`, a file that the same program wrote before, has some too. Text: as many lines. Text is read
/// to its end; binary files, their first bytes.
SnapshotState GetSnapshotState(const GrammerBase_cls& grammar, const wxString& path, const wxString& first);
