// Opens what a user hands over as files: words of the command line, and what is dropped on the window.
#pragma once

#include <vector>

#include <wx/string.h>

#include "APP/clsForeignImport.h"

class FrameMain_cls;
class Main_cls;

enum class FileKind { Project, Mesh, Picture, Data };
/// By the name's ending, in small or capital letters.
FileKind GetFileKind(const wxString& path);

class FileOpener_cls {
public:
    /// A part of the frame.
    explicit FileOpener_cls(FrameMain_cls& frame);
    FileOpener_cls(const FileOpener_cls&) = delete;
    FileOpener_cls& operator=(const FileOpener_cls&) = delete;

    /// The first project, or picture that carries one, or without one the first snapshot, and all meshes
    /// beside it; another program's files are offered to be imported. `bAtStart`: further projects get
    /// windows of their own, and a snapshot of another layout is asked about. Waits until the paint in
    /// progress is over.
    void Open(const std::vector<wxString>& paths, bool bAtStart);
    /// What waited, as soon as it can be.
    void OpenWaiting();

private:
    /// Another program's files that don't fit the present layout are offered to be imported: true when they
    /// were dealt with.
    bool TakeForeign(const std::vector<wxString>& paths, bool bDropped);
    void OpenData(const std::vector<wxString>& data);
    void OpenWindow(const wxString& path) const;

    FrameMain_cls& mFrame;
    Main_cls& mHub;
    ForeignImport_cls mImport;
    std::vector<wxString> mVWaiting;
    bool mbAtStart = false;
};
