// Reading the head of a snapshot file: time and particle count.
//
// Binary: the items follow each other. Text: one line an item whatever its size, in pieces of at most 254
// characters. So behind a Dummy*3 or Dummy*10 the line is another one than the body reader skips to: Time
// and Number of a text head stand before any of these.
#pragma once

#include <wx/string.h>

class GrammerBase_cls;

struct SnapshotHeader_st {
    bool mbOk = false;      ///< the snapshot can be read
    bool mbHasTime = false; ///< else the time is the snapshot's index
    double mTime = 0.0;     ///< as it stands in the file, NaN included
    int mNumber = 0;        ///< particles; not negative and not over the file's bytes
    wxString mStrError;     ///< what is wrong, with the file's name; empty when mbOk
};

/// Read the head by a grammar. A head without Number counts 0 particles and isn't Ok. Never ends the
/// program; a file that can't be opened is also told on standard output.
SnapshotHeader_st ReadSnapshotHeader(const GrammerBase_cls& grammar, const wxString& path);
