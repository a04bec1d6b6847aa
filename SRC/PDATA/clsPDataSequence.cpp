#include "PDATA/clsPDataSequence.h"

#include <algorithm>
#include <string>

#include <wx/filename.h>

#include "COMMON/FramePath.h"
#include "COMMON/MsgBox.h"
#include "COMMON/TextSplit.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"

wxString PDataSequence_cls::msStrProjectDir;

namespace {

constexpr double kTimeUnset = -9999.0;

/// What a path that leads nowhere speaks of under a folder: the path itself where it is relative, else the
/// longest end of it that stands there, the bare name last. Empty when there is none.
wxString FindUnder(const wxString& folder, const wxString& path) {
    if (folder.empty()) return wxString();
    const wxString end = FindEndOfPath(path, [&folder](const wxString& part) {
        return PDataSequence_cls::DoesSequenceExist(folder + "/" + part);
    });
    return end.empty() ? end : folder + "/" + end;
}

} // namespace

bool PDataSequence_cls::DoesSequenceExist(const wxString& path) {
    return wxFileName::FileExists(FileSequence_cls(path).GetModifiedStr(0, 0));
}

PDataSequence_cls::PDataSequence_cls(int seqIndex, const MakeSequenceDrawing& makeDrawing)
    : mSeqIndex(seqIndex),
      mCItemFile(wxString::Format("DataSequence%d=", seqIndex), wxString::Format("%d", seqIndex)) {
    for (int i = 0; i < kMaxSnap; ++i)
        mpCSnap[i] = new PDataSnap_cls(this, i);
    for (int i = 0; i + 1 < kMaxSnap; ++i) {
        mpCSnap[i]->mpCNext = mpCSnap[i + 1];
        mpCSnap[i + 1]->mpCPrev = mpCSnap[i];
    }
    mpCDrawing = makeDrawing ? makeDrawing(*this) : std::make_unique<SequenceDrawing_cls>();
}

PDataSequence_cls::~PDataSequence_cls() {
    for (PDataSnap_cls* pSnap : mpCSnap)
        delete pSnap;
}

wxString PDataSequence_cls::FindPath(const wxString& path) {
    if (DoesSequenceExist(path)) return path;
    for (const wxString& folder : {msStrProjectDir, mStrLastProjectDir}) {
        const wxString there = FindUnder(folder, path);
        if (there.empty()) continue;
        mStrLastProjectDir = folder;
        return there;
    }
    return path;
}

void PDataSequence_cls::OpenDataFile(const wxString& path) {
    if (path.empty()) return;
    ForgetNotices();
    Clear(-2, true);
    mStrGivenPath = path;
    mCFileSequence.Set(FindPath(path));
    mCFileSequence.CalcMaxOffset();
    SetIndividualFilenames();
}

void PDataSequence_cls::SetIndividualFilenames() {
    for (int i = 0; i < std::min(GetSeqLength(), kMaxSnap); ++i)
        mpCSnap[i]->SetFilePath(mCFileSequence.GetModifiedStr(i, 0));
}

bool PDataSequence_cls::Grow(int length, const std::vector<int>& late) {
    const int old = GetSeqLength();
    length = std::min(length, kMaxSnap);
    // What stands before a new file had none to move towards.
    std::vector<PDataSnap_cls*> before;
    if (old >= 1 && length > old) before.push_back(mpCSnap[old - 1]);
    for (const int index : late)
        if (index > 0 && index < old) before.push_back(mpCSnap[index - 1]);
    for (PDataSnap_cls* pSnap : before)
        if (pSnap->mpCBlock->IsUnderInterpolation()) return false;
    for (PDataSnap_cls* pSnap : before)
        pSnap->ForgetSlopes();
    for (const int index : late)
        if (index >= 0 && index < old) mpCSnap[index]->Clear(false);
    for (int i = old; i < length; ++i)
        mpCSnap[i]->SetFilePath(mCFileSequence.GetModifiedStr(i, 0));
    SetSeqLength(std::max(old, length));
    return true;
}

std::vector<int> PDataSequence_cls::GetUnusable() const {
    std::vector<int> indices;
    for (int i = 0; i < std::min(GetSeqLength(), kMaxSnap); ++i)
        if (mpCSnap[i]->mFileStatus == FILE_UNUSABLE) indices.push_back(i);
    return indices;
}

void PDataSequence_cls::Clear(int index, bool bForget) {
    if (index != -2) {
        GetSnap(index)->Clear(bForget);
        return;
    }
    if (bForget) {
        mCFileSequence.Set(wxString()); // the length stays, and with it the film
        mStrGivenPath.clear();
    }
    for (PDataSnap_cls* pSnap : mpCSnap)
        pSnap->Clear(bForget);
}

int PDataSequence_cls::ClampIndexWithinRange(int index) const {
    return GetSeqLength() >= 1 && index >= GetSeqLength() ? GetSeqLength() - 1 : index;
}

PDataSnap_cls* PDataSequence_cls::GetSnap(int index) const {
    return mpCSnap[std::min(std::max(ClampIndexWithinRange(index), 0), kMaxSnap - 1)];
}

wxString PDataSequence_cls::GetFilename(int index) const { return GetSnap(index)->mStrFilePath; }
int PDataSequence_cls::GetFilenameStatus(int index) const { return GetSnap(index)->mFileStatus; }
int PDataSequence_cls::GetParticleNumber(int index) const { return GetSnap(index)->GetParticleNumber(); }
double PDataSequence_cls::GetTime(int index) const { return GetSnap(index)->mTime; }

double PDataSequence_cls::GetDT(int index, double step) const {
    const double time = GetTime(index);
    const double next = GetTime(index + 1);
    // Beside a file that can't be read there is no time to move through.
    if (time == kTimeUnset || next == kTimeUnset) return 0.0;
    return step * (next - time);
}

bool PDataSequence_cls::IsTheIndexLoaded(int index) const { return GetSnap(index)->IsItLoaded(); }

const PDataBlock_cls* PDataSequence_cls::GetPCBlock(int index) const { return GetSnap(index)->mpCBlock; }

bool PDataSequence_cls::NeedsSlopes(double frac, bool bForce) const {
    return !(frac == 0.0) || bForce || mpCDrawing->AreSlopesNeeded();
}

bool PDataSequence_cls::IsTheIndexReady(int index, double frac, bool bForce) {
    return GetSnap(index)->IsItReady(NeedsSlopes(frac, bForce));
}

void PDataSequence_cls::PrepareIndex(int index, double frac, bool bForce, bool bWait) {
    GetSnap(index)->PrepareData(NeedsSlopes(frac, bForce), bWait);
}

void PDataSequence_cls::SetSnipping(int index) {
    PDataSnap_cls* pSnap = GetSnap(index);
    pSnap->mbSnipping = true;
    mvpCSnipped.push_back(pSnap);
}

void PDataSequence_cls::ClearSnipping() {
    for (PDataSnap_cls* pSnap : mvpCSnipped)
        pSnap->mbSnipping = false;
    mvpCSnipped.clear();
}

long long PDataSequence_cls::GetUsedTotalMemoryMB() const {
    long long sum = 0;
    for (int i = 0; i < std::min(GetSeqLength(), kMaxSnap); ++i)
        sum += mpCSnap[i]->GetUsedMemoryKB();
    return sum / 1024;
}

int PDataSequence_cls::GetLoadedFrameNumber() const {
    return static_cast<int>(
        std::count_if(std::begin(mpCSnap), std::end(mpCSnap), [](const PDataSnap_cls* pSnap) {
            return pSnap->mbLoaded.load(std::memory_order_acquire);
        }));
}

bool PDataSequence_cls::ExportData(DataExporter_cls* pExporter, int index, double dt, int frame) {
    return GetSnap(index)->ExportData(pExporter, dt, mpCDrawing->GetThinning(), frame);
}

void PDataSequence_cls::Special_Copy(int dst, int src) {
    const PDataSnap_cls* pTo = GetSnap(dst);
    const PDataSnap_cls* pFrom = GetSnap(src);
    const int number = pTo->GetParticleNumber();
    if (pTo == pFrom || !pTo->IsItLoaded() || !pFrom->IsItLoaded() || number < 1) return;
    if (number != pFrom->GetParticleNumber()) return;
    PDataSnap_cls::WaitInterpolator(); // it reads what is written here
    std::copy_n(pFrom->mpCBlock->mpRadius, number, pTo->mpCBlock->mpRadius);
    std::copy_n(pFrom->mpCBlock->mpType, number, pTo->mpCBlock->mpType);
    std::copy_n(pFrom->mpCBlock->mpValue1, number, pTo->mpCBlock->mpValue1);
}

// As given; but a text that would lead nowhere from the folder that the project goes to, or to other data
// there, becomes the whole path of what is open.
wxString PDataSequence_cls::GetPathForProject() const {
    const wxString opened = mCFileSequence.mStrPath;
    if (msStrProjectDir.empty() || mStrGivenPath.empty() || !DoesSequenceExist(opened)) return mStrGivenPath;
    if (!wxFileName(mStrGivenPath).IsRelative() && mStrGivenPath == opened) return mStrGivenPath;
    const wxString there = FindUnder(msStrProjectDir, mStrGivenPath);
    const wxString whole = MakeAbsolutePath(opened);
    return !there.empty() && MakeAbsolutePath(there) == whole ? mStrGivenPath : whole;
}

// "DataSequence0=0", the path as the user gave it on a line of its own, then the drawing state.
wxString PDataSequence_cls::Serialize() const {
    return mCItemFile.mStrKey + mCItemFile.mStrValue + "\n" + GetPathForProject() + "\n" +
           mpCDrawing->Serialize();
}

void PDataSequence_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    if (line.StartsWith(mCItemFile.mStrKey)) {
        std::wstring path;
        ReadTextLine(stream, &path);
        OpenDataFile(path);
    }
    mpCDrawing->ReadStrLine(stream, line);
}
