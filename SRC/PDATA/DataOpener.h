// Who opens data for the loader: the hub.
#pragma once

class wxString;

class DataOpener_cls {
public:
    virtual ~DataOpener_cls() = default;
    /// Close what is open and open the sequence of `path`, as a step that undo takes back.
    virtual void OpenDataFileCommand(const wxString& path) = 0;
    /// Data that were opened by the user stand at the top of the recent ones.
    virtual void NoteOpenedData(const wxString& path) = 0;
};
