#include "IMPORT/clsImportFolder.h"

#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <wx/strconv.h>
#include <wx/string.h>

#include "COMMON/SafeFile.h"
#include "IMPORT/ParticleSource.h"
#include "IMPORT/SortByID.h"
#include "IMPORT/clsImportRanges.h"
#include "IMPORT/StopSignal.h"

namespace fs = std::filesystem;

namespace {

const char* const kNote = ".morentis-import";
constexpr size_t kPiece = 16384; // records: some hundred KB, which stay in the cache
constexpr size_t kHead = 8;

wxString WidePath(const std::string& path) { return wxString(path.c_str(), *wxConvFileName); }

/// Fills columns of the records from `begin` to `end` with words of columns of the snapshot.
class Packer_cls {
public:
    Packer_cls(unsigned* pOut, size_t stride, const ImportSnapshot_st& snap, size_t begin, size_t end)
        : mpOut(pOut), mStride(stride), mpOrder(snap.mOrder.empty() ? nullptr : snap.mOrder.data()),
          mBegin(begin), mEnd(end) {}

    /// The next WIDTH words of a record; without `bThere` they stay as they are.
    template <size_t WIDTH, class COLUMN>
    void Put(const COLUMN& column, bool bThere) {
        static_assert(sizeof(column[0]) == sizeof(unsigned), "a record has words of four bytes");
        if (bThere && mpOrder)
            Copy<WIDTH>(column.data(), [this](size_t i) { return mpOrder[i]; });
        else if (bThere)
            Copy<WIDTH>(column.data(), [](size_t i) { return i; });
        mpOut += WIDTH;
    }

    /// The next word is somebody else's.
    void Skip() { ++mpOut; }

private:
    template <size_t WIDTH, class T, class WHERE>
    void Copy(const T* pIn, const WHERE& where) const {
        unsigned* pOut = mpOut;
        for (size_t i = mBegin; i < mEnd; ++i, pOut += mStride)
            std::memcpy(pOut, pIn + WIDTH * where(i), WIDTH * sizeof(unsigned));
    }

    unsigned* mpOut;
    size_t mStride;
    const unsigned* mpOrder;
    size_t mBegin;
    size_t mEnd;
};

std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

bool HasSnapshots(const std::string& path) {
    std::error_code error;
    for (fs::directory_iterator file(path, error), end; !error && file != end; file.increment(error)) {
        const std::string name = file->path().filename().string();
        if (name.rfind("snap", 0) == 0 && file->path().extension() == ".bin") return true;
    }
    return false;
}

} // namespace

std::string ImportFolder_cls::Check(bool bResume, const std::string& options) {
    mNote.mOptions = options;
    struct stat facts {};
    if (stat(mPath.c_str(), &facts) != 0) {
        const fs::path above = fs::path(mPath + "/").parent_path().parent_path();
        std::error_code ignored;
        if (errno == ENOENT && (above.empty() || fs::is_directory(above, ignored))) return std::string();
        return "--output: the folder \"" + above.string() + "\" is not there; make it first";
    }
    if (!S_ISDIR(facts.st_mode)) return "--output: \"" + mPath + "\" is no folder";
    ImportNote_cls there;
    there.Read(ReadAll(PathOf(kNote)));
    std::error_code ignored;
    const bool bTaken = HasSnapshots(mPath) || fs::exists(PathOf(GetProjectName()), ignored);
    if (!bResume)
        return !bTaken ? std::string()
                       : "--output: \"" + mPath + "\" holds snapshots or a project; give another folder" +
                             (there.mOptions == options ? ", or --resume to go on" : "");
    if (!there.mOptions.empty() && there.mOptions != options)
        return "--resume: \"" + mPath + "\" comes from other options (" + there.mOptions + ")";
    if (there.mOptions.empty() && bTaken)
        return "--resume: \"" + mPath + "\" holds snapshots or a project that are from elsewhere";
    mNote = there;
    mNote.mOptions = options;
    return std::string();
}

void ImportFolder_cls::Begin() {
    std::error_code error;
    mbMade = !fs::is_directory(mPath, error) && fs::create_directory(mPath, error);
    if (!fs::is_directory(mPath, error)) throw ImportWriteError_cls(mPath + ": " + error.message());
    WriteNote();
}

void ImportFolder_cls::Undo() const {
    std::error_code ignored;
    if (!HasSnapshots(mPath)) fs::remove(PathOf(kNote), ignored);
    if (mbMade) fs::remove(mPath, ignored); // an empty one alone
}

namespace {

long NowSeconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<long>(std::chrono::duration_cast<std::chrono::seconds>(now).count());
}

} // namespace

void ImportFolder_cls::WriteNote() {
    mNoteWritten = NowSeconds();
    WriteText(kNote, mNote.GetText());
}

// Thousands of small snapshots cost one note a second; what has no line is made anew.
void ImportFolder_cls::NoteSnapshot(int index, uint64_t source) {
    mNote.mSources[index] = source;
    if (NowSeconds() != mNoteWritten) WriteNote();
}

std::string ImportFolder_cls::WriteProject(const std::string& text) {
    std::string name = GetProjectName();
    std::error_code ignored;
    if (fs::exists(PathOf(name), ignored) && HashBytes(ReadAll(PathOf(name))) != mNote.mProject) {
        name.insert(name.size() - 4, "-import");
    } else {
        mNote.mProject = HashBytes(text);
        WriteNote();
    }
    WriteText(name, text);
    return name;
}

void ImportFolder_cls::SetColumns(unsigned columns) {
    mColumns = columns;
    mBuffer.resize(kPiece * GetRecordWords());
    if (mNote.mBody != GetBody()) mNote.mSources.clear(); // of another layout
    mNote.mBody = GetBody();
}

std::string ImportFolder_cls::GetBody() const {
    std::string body = "0";
    if (mColumns & IMPORT_VEL) body += " 1";
    if (mColumns & IMPORT_RADIUS) body += " 5";
    if (mColumns & IMPORT_ID) body += " 6";
    if (mColumns & IMPORT_TYPE) body += " 7";
    if (mColumns & IMPORT_VALUE) body += " 8";
    return body;
}

size_t ImportFolder_cls::GetRecordWords() const {
    size_t words = mColumns & IMPORT_VEL ? 6 : 3;
    for (const unsigned column : {IMPORT_RADIUS, IMPORT_ID, IMPORT_TYPE, IMPORT_VALUE})
        words += mColumns & column ? 1 : 0;
    return words;
}

std::string ImportFolder_cls::GetName(int index) const {
    char name[40];
    std::snprintf(name, sizeof name, "snap%04d.bin", index);
    return name;
}

std::string ImportFolder_cls::GetProjectName() const {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(fs::absolute(mPath, error), error);
    const std::string name = (whole.has_filename() ? whole : whole.parent_path()).filename().string();
    return (name.empty() || error ? "import" : name) + ".mrp";
}

// In the order of the codes; a column that this snapshot lacks is 0.
void ImportFolder_cls::Pack(const ImportSnapshot_st& snap, size_t begin, size_t end) {
    const size_t stride = GetRecordWords();
    const size_t count = end - begin;
    unsigned* pOut = mBuffer.data();
    if (mColumns & ~snap.mColumns) std::fill(pOut, pOut + count * stride, 0u);
    Packer_cls packer(pOut, stride, snap, begin, end);
    packer.Put<3>(snap.mPos, true);
    if (mColumns & IMPORT_VEL) packer.Put<3>(snap.mVel, (snap.mColumns & IMPORT_VEL) != 0);
    if (mColumns & IMPORT_RADIUS) packer.Put<1>(snap.mRadius, (snap.mColumns & IMPORT_RADIUS) != 0);
    if (mColumns & IMPORT_ID) { // which are sorted, and longer
        pOut += (mColumns & IMPORT_VEL ? 6u : 3u) + (mColumns & IMPORT_RADIUS ? 1u : 0u);
        for (size_t i = 0; i < count && (snap.mColumns & IMPORT_ID); ++i)
            pOut[i * stride] = static_cast<unsigned>(snap.mID[begin + i]);
        packer.Skip();
    }
    if (mColumns & IMPORT_TYPE) packer.Put<1>(snap.mType, (snap.mColumns & IMPORT_TYPE) != 0);
    if (mColumns & IMPORT_VALUE) packer.Put<1>(snap.mValue, (snap.mColumns & IMPORT_VALUE) != 0);
}

void ImportFolder_cls::Write(int index, const ImportSnapshot_st& snap, float time, uint64_t source) {
    if (mNote.mSources.erase(index) > 0) WriteNote(); // whatever stops us, the line doesn't tell a lie
    const std::string path = PathOf(GetName(index));
    const auto number = static_cast<size_t>(snap.mNumber);
    char head[kHead];
    const int count = static_cast<int>(snap.mNumber);
    std::memcpy(head, &time, sizeof time);
    std::memcpy(head + sizeof time, &count, sizeof count);
    SafeFile_cls file(WidePath(path));
    bool bDone = file.IsOpen() && file.Write(head, sizeof head);
    for (size_t begin = 0; bDone && begin < number; begin += kPiece) {
        ThrowIfStopped();
        const size_t end = std::min(begin + kPiece, number);
        Pack(snap, begin, end);
        bDone = file.Write(reinterpret_cast<const char*>(mBuffer.data()),
                           (end - begin) * GetRecordWords() * sizeof(unsigned));
    }
    if (!bDone || !file.Commit(ToDisk::Later))
        throw ImportWriteError_cls(path + ": " + file.GetReason().utf8_string());
    NoteSnapshot(index, source);
}

bool ImportFolder_cls::IsWhole(int index, const ImportSnapshot_st& snap, float time, uint64_t source,
                               ImportRanges_cls* pRanges, IDPrint_cls* pIDs, bool* pNewIDs) const {
    const auto noted = mNote.mSources.find(index);
    if (noted == mNote.mSources.end() || noted->second != source) return false;
    const size_t words = GetRecordWords();
    std::ifstream file(PathOf(GetName(index)), std::ios::binary | std::ios::ate);
    if (!file ||
        file.tellg() != static_cast<long long>(kHead + 4 * words * static_cast<size_t>(snap.mNumber)))
        return false;
    char head[kHead];
    int count = 0;
    file.seekg(0).read(head, sizeof head);
    std::memcpy(&count, head + 4, sizeof count);
    if (!file || std::memcmp(head, &time, 4) != 0 || count != snap.mNumber) return false;
    std::vector<unsigned> piece(kPiece * words);
    const size_t id = (mColumns & IMPORT_VEL ? 6u : 3u) + (mColumns & IMPORT_RADIUS ? 1u : 0u);
    for (size_t left = static_cast<size_t>(count); left > 0;) {
        const size_t here = std::min(left, kPiece);
        if (!file.read(reinterpret_cast<char*>(piece.data()), static_cast<long>(4 * words * here)))
            return false;
        const auto* pFloats = reinterpret_cast<const float*>(piece.data());
        pRanges->Add(pFloats, static_cast<long>(words),
                     mColumns & IMPORT_VALUE ? pFloats + words - 1 : nullptr, static_cast<long>(words),
                     static_cast<long long>(here));
        for (size_t i = 0; i < here && (mColumns & IMPORT_ID); ++i) {
            pIDs->Add(static_cast<int>(piece[i * words + id]));
            *pNewIDs = *pNewIDs || static_cast<int>(piece[i * words + id]) < 0;
        }
        left -= here;
    }
    return true;
}

void ImportFolder_cls::WriteText(const std::string& name, const std::string& text) const {
    const wxString reason = WriteFileSafely(WidePath(PathOf(name)), text, ToDisk::Later);
    if (!reason.empty()) throw ImportWriteError_cls(PathOf(name) + ": " + reason.utf8_string());
}
