// The safety copy of what no project holds yet.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>

#include <wx/datetime.h>
#include <wx/string.h>

/// A file that says, as long as its program lives, that a recovery project has an owner.
class OwnerLock_cls {
public:
    OwnerLock_cls() = default;
    ~OwnerLock_cls() { Release(); }
    OwnerLock_cls(OwnerLock_cls&& other) noexcept { *this = std::move(other); }
    OwnerLock_cls& operator=(OwnerLock_cls&& other) noexcept;
    /// False while another program, or another lock of this one, holds it.
    bool Take(const std::string& path);
    /// Let go and remove the file.
    void Release();

private:
    std::string mPath;
    int mFile = -1;
};

/// While the undo list stands at a state that no project holds, a recovery project is kept in a folder,
/// "Morentis3Recovery-" with the process number. One that is left when a program ended without being asked
/// can be taken over by the next. Main thread only, but for last words.
class Recovery_cls {
public:
    /// A recovery project without an owner.
    struct Found_st {
        wxString mStrPath;
        wxDateTime mWhen; ///< when it was written
    };

    /// `makeText` gives a project's bytes.
    Recovery_cls(const wxString& folder, std::function<std::string()> makeText);
    ~Recovery_cls();
    Recovery_cls(const Recovery_cls&) = delete;
    Recovery_cls& operator=(const Recovery_cls&) = delete;

    /// What is there now stands in a project; the recovery project goes.
    void MarkSaved();
    /// What is there now stands in no project.
    void MarkUnsaved() { mSavedState = 0; }
    bool IsModified() const;

    /// To be called a few times a second. Writes at most once in mGap, and only what is new; removes the file
    /// when undo has led back to what a project holds.
    void Tick(bool bMayWrite);
    /// The last tick found that it was time to write, but not allowed: the next moment that is should be
    /// used.
    bool IsLate() const { return mbLate; }
    /// Write now if anything is unsaved: the program ends. \return false when that failed.
    bool WriteNow();
    /// Remove our own recovery project.
    void Discard();

    /// Look for the newest recovery project without an owner and hold it, so that no other program takes it.
    bool FindOrphan(Found_st* pFound);
    /// The one found is ours from now on, and unsaved.
    void AdoptOrphan();
    /// Remove the one found.
    void DropOrphan();

    wxString GetPath() const { return mStrPath; } ///< empty while there is none

    /// Half of the minute that may be lost: a picture that takes long comes before it.
    std::chrono::milliseconds mGap = std::chrono::seconds(30);

private:
    bool MakeOwn();
    bool Write(bool bAnyway);

    wxString mStrFolder;
    std::function<std::string()> mMakeText;
    unsigned long long mSavedState; ///< of the undo list; 0 no state
    wxString mStrPath;
    OwnerLock_cls mLock;
    std::string mLastText;
    std::chrono::steady_clock::time_point mLastWrite;
    bool mbEverWritten = false;
    bool mbLate = false;
    wxString mStrOrphan;
    OwnerLock_cls mOrphanLock;
};
