// The mesh of each frame, read ahead by a worker while the film plays. All calls come from one thread; what
// the worker reads is its own until it is handed over.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <thread>

#include <wx/string.h>

#include "MESH/MeshFile.h"

class PovObjectMesh_cls;

class MeshLoader_cls {
public:
    /// `onRead` is called on the worker when it is done, and may post an event.
    explicit MeshLoader_cls(std::function<void()> onRead = nullptr);
    /// Stops what is being read, and waits for that.
    ~MeshLoader_cls();
    MeshLoader_cls(const MeshLoader_cls&) = delete;
    MeshLoader_cls& operator=(const MeshLoader_cls&) = delete;

    /// Have the file read that Show will ask for next. What was read ahead and not shown is dropped; what is
    /// being read for nobody is stopped, and the new file begins with a later call.
    void ReadAhead(const wxString& path);
    /// Would Show come back at once?
    bool IsReady(const wxString& path, const PovObjectMesh_cls& mesh) const;
    /// Make `*pMesh` the mesh of a file: nothing to do, handed over by the worker, waited for, or read here.
    /// A file that was changed since is read again; if that fails, or it is gone, its mesh stays. \return
    /// what the user should know of the file (PovObjectMesh_cls::ReadMeshFromFile), once each time that it is
    /// read.
    wxString Show(const wxString& path, PovObjectMesh_cls* pMesh);

private:
    struct Job_st;

    void Start(const wxString& path);
    bool IsWorking() const;
    /// Wait for the worker; its job stays.
    void Join();
    wxString Take(std::shared_ptr<Job_st> pJob, PovObjectMesh_cls* pMesh);

    std::function<void()> mOnRead;
    std::thread mThread;
    std::shared_ptr<Job_st> mpJob; ///< being read, or waiting to be shown
    FileStamp_st mShown;           ///< of the file that was shown last
};
