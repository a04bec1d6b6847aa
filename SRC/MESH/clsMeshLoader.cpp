#include "MESH/clsMeshLoader.h"

#include <atomic>
#include <new>
#include <system_error>
#include <utility>

#include "MESH/clsPovObjectMesh.h"

/// The worker's until mbDone.
struct MeshLoader_cls::Job_st {
    explicit Job_st(const wxString& path) : mPath(path), mStamp(GetFileStamp(path)) {}

    void Read() {
        mStrReason = mMesh.ReadMeshFromFile(mPath, &mbStop);
        try {
            if (!mbStop) mMesh.GetCorners(); // not when it is drawn
        } catch (const std::bad_alloc&) {
            mMesh.DropCorners(); // then it can't be drawn either, and who draws it tells
        }
    }

    const wxString mPath;
    const FileStamp_st mStamp; ///< from before it was read: a change on the way is seen later
    PovObjectMesh_cls mMesh;
    wxString mStrReason;
    std::atomic<bool> mbStop{false};
    std::atomic<bool> mbDone{false};
};

MeshLoader_cls::MeshLoader_cls(std::function<void()> onRead) : mOnRead(std::move(onRead)) {}

MeshLoader_cls::~MeshLoader_cls() {
    if (mpJob) mpJob->mbStop = true;
    Join();
}

bool MeshLoader_cls::IsWorking() const {
    return mThread.joinable() && mpJob && !mpJob->mbDone.load(std::memory_order_acquire);
}

void MeshLoader_cls::Join() {
    if (mThread.joinable()) mThread.join();
}

void MeshLoader_cls::Start(const wxString& path) {
    Join();
    mpJob = std::make_shared<Job_st>(path);
    try {
        mThread = std::thread([pJob = mpJob, onRead = mOnRead] {
            pJob->Read();
            pJob->mbDone.store(true, std::memory_order_release);
            if (onRead) onRead();
        });
    } catch (const std::system_error&) {
        mpJob.reset(); // no more threads: Show reads it
    }
}

void MeshLoader_cls::ReadAhead(const wxString& path) {
    if (!PovObjectMesh_cls::IsMeshPath(path)) return;
    const bool bStopped = mpJob && mpJob->mbStop;
    if (mpJob && !bStopped && mpJob->mPath == path && mpJob->mStamp == GetFileStamp(path)) return;
    if (IsWorking())
        mpJob->mbStop = true;
    else
        Start(path);
}

bool MeshLoader_cls::IsReady(const wxString& path, const PovObjectMesh_cls& mesh) const {
    if (path == mesh.mCurrentPath || !PovObjectMesh_cls::IsMeshPath(path)) return true;
    return mpJob && mpJob->mPath == path && !mpJob->mbStop && !IsWorking();
}

wxString MeshLoader_cls::Take(std::shared_ptr<Job_st> pJob, PovObjectMesh_cls* pMesh) {
    mShown = pJob->mStamp;
    const bool bAgain = pMesh->mCurrentPath == pJob->mPath;
    // Somebody is writing it: what was there is better than nothing.
    if (!bAgain || pJob->mMesh.GetTriangleNumber() > 0) *pMesh = std::move(pJob->mMesh);
    return pJob->mStrReason;
}

wxString MeshLoader_cls::Show(const wxString& path, PovObjectMesh_cls* pMesh) {
    if (!PovObjectMesh_cls::IsMeshPath(path)) return pMesh->ReadMeshFromFile(path);
    const FileStamp_st stamp = GetFileStamp(path);
    if (path == pMesh->mCurrentPath && (stamp == mShown || stamp == FileStamp_st())) return wxString();
    if (mpJob && mpJob->mPath == path && mpJob->mStamp == stamp && !mpJob->mbStop) {
        Join();
        return Take(std::exchange(mpJob, nullptr), pMesh);
    }
    const auto pJob = std::make_shared<Job_st>(path);
    pJob->Read();
    return Take(pJob, pMesh);
}
