// Opening and closing data as a command.
#pragma once

#include <optional>

#include <wx/string.h>

#include "PARAM/clsCommandItem.h"
#include "TIME/TimeValues.h"

class Main_cls;

class CommandLoadData_cls final : public CommandItem_cls {
public:
    /// Opens the sequence of `path`; empty: closes the data.
    CommandLoadData_cls(Main_cls* pMain, const wxString& path);

    void Execute(bool bUndo) override;
    /// Put the clock back behind it: opening sets the film to the sequence's length.
    void KeepClock(const TimeState_st& state) { mClock = state; }

private:
    Main_cls* mpCMain;
    wxString mStrPath;
    std::optional<TimeState_st> mClock;
};
