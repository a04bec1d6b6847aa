// Imports other programs' files from the window: asks, has morentis-import work, and opens what it made.
#pragma once

#include <vector>

#include <wx/string.h>
#include <wx/timer.h>

class FrameMain_cls;
class PovProcess_cls;

class ForeignImport_cls {
public:
    /// A part of the frame.
    explicit ForeignImport_cls(FrameMain_cls& frame);
    ForeignImport_cls(const ForeignImport_cls&) = delete;
    ForeignImport_cls& operator=(const ForeignImport_cls&) = delete;

    /// True when that's all: it begins soon, or isn't wanted. False: open the first one as it is.
    bool Offer(const std::vector<wxString>& files);

private:
    void Import();
    /// With a bar that can stop it; false when it was stopped.
    bool Wait(PovProcess_cls* pProcess);
    void TakeLines(const PovProcess_cls& process);

    FrameMain_cls& mFrame;
    wxTimer mBegin;
    std::vector<wxString> mFiles;
    wxString mFolder;
    std::vector<wxString> mComplaints; ///< of the import at work
    wxString mProgress;
};
