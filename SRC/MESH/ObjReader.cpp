#include "MESH/ObjReader.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <new>

#include <wx/intl.h>

#include "COMMON/OnThreads.h"
#include "MESH/MeshFile.h"
#include "MESH/MeshNormals.h"
#include "MESH/ObjChunk.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

constexpr size_t kChunk = size_t(1) << 20; // bytes: a thread that is done takes the next

class ObjPiece_cls;

/// What stands before a piece, in the whole file.
struct Base_st {
    size_t mVertex = 0;
    size_t mNormal = 0;
    size_t mFace = 0; ///< numbers, three a triangle
};

class ObjReader_cls {
public:
    ObjReader_cls(MeshSource_cls& source, PovObjectMesh_cls* pMesh, const std::atomic<bool>* pStop)
        : mSource(source), mpMesh(pMesh), mpStop(pStop), mThreads(GetMeshThreads(source.GetLength())) {}

    wxString Read();

private:
    bool IsStopped() const { return mpStop && *mpStop; }
    /// job(k) for each piece, with the thread's place for one; throws what one of them lacked.
    void ForChunks(const std::function<void(size_t, ObjPiece_cls&)>& job) const;
    void AddUp();
    void Gather(size_t k);
    bool HasBadCorners() const;
    void LeaveOutBadTriangles();
    void CompleteNormals();
    wxString MakeReason() const;
    size_t FindBadLine() const;

    MeshSource_cls& mSource;
    PovObjectMesh_cls* const mpMesh;
    const std::atomic<bool>* const mpStop;
    const int mThreads;
    std::vector<std::unique_ptr<ObjChunk_cls>> mChunks;
    std::vector<Base_st> mBases; ///< one more
    std::atomic<bool> mbBadCorner{false};
    std::atomic<bool> mbBadNormal{false}; ///< or one that is missing
    bool mbNormals = false;               ///< faces have numbers of normals
    size_t mLeftOut = 0;                  ///< triangles
    bool mbWrongNormal = false;
};

bool IsWithin(int index, size_t number) { return size_t(unsigned(index)) < number; }

/// A thread's own place for the piece that it takes apart, small enough to stay near the processor.
class ObjPiece_cls {
public:
    explicit ObjPiece_cls(MeshSource_cls& source) : mSource(source) {}

    /// The lines that begin in the k-th piece of the text; none where a long line covers it, or none can be
    /// read.
    bool Load(size_t k) {
        const size_t length = mSource.GetLength();
        const size_t from = kChunk * k;
        const size_t to = std::min(from + kChunk, length);
        mFirst = from - std::min(from, kBack);
        mLast = mFirst;
        if (!Extend(to)) return false;
        const size_t begin = k == 0 ? 0 : FindCut(from);
        if (begin >= to && length > to) return false;
        size_t end = to == length ? length : FindCut(to);
        for (size_t more = kMore; end > mLast; more *= 2) {
            if (!Extend(std::min(mLast + more, length))) return false;
            end = mLast == length ? std::min(FindCut(to), length) : FindCut(to);
        }
        if (begin >= end) return false;
        char* const p = mBytes.data() + (end - mFirst);
        EndMeshText(p); // what stands there belongs to the next piece
        mpBegin = mBytes.data() + (begin - mFirst);
        mpEnd = p + 1;
        return true;
    }
    const char* Begin() const { return mpBegin; }
    const char* End() const { return mpEnd; } ///< with a line feed on both sides, and zeros behind

private:
    static constexpr size_t kBack =
        16; ///< carriage returns and a backslash that may stand before a line feed
    static constexpr size_t kMore = size_t(1) << 16;

    bool Extend(size_t to) {
        mBytes.resize(to - mFirst + kMeshPad);
        if (!mSource.Read(mLast, to, mBytes.data() + (mLast - mFirst))) return false;
        mLast = to;
        return true;
    }
    /// The first place from `from` on behind a line feed that no backslash takes away; past mLast: not here.
    size_t FindCut(size_t from) const {
        const char* const begin = mBytes.data();
        const char* const end = begin + (mLast - mFirst);
        for (const char* p = begin + (from - mFirst) - 1; p < end;) {
            const void* const found = std::memchr(p, '\n', static_cast<size_t>(end - p));
            if (!found) break;
            p = static_cast<const char*>(found);
            const size_t at = mFirst + static_cast<size_t>(p - begin);
            const char* back = p;
            for (size_t i = 0; i + 2 < kBack && back > begin && back[-1] == '\r'; ++i)
                --back;
            ++p;
            if (back == begin || back[-1] != '\\') return at + 1;
        }
        return mLast + 1;
    }

    MeshSource_cls& mSource;
    std::vector<char, BigAllocator_cls<char>> mBytes;
    size_t mFirst = 0; ///< places in the text of what is in mBytes
    size_t mLast = 0;
    const char* mpBegin = nullptr;
    const char* mpEnd = nullptr;
};

void ObjReader_cls::ForChunks(const std::function<void(size_t, ObjPiece_cls&)>& job) const {
    std::atomic<size_t> next{0};
    std::atomic<bool> bNoMemory{false};
    OnThreads(std::min(mThreads, static_cast<int>(mChunks.size())), [&](int) {
        try {
            ObjPiece_cls piece(mSource);
            for (size_t k = next++; k < mChunks.size() && !IsStopped() && !bNoMemory; k = next++)
                job(k, piece);
        } catch (const std::bad_alloc&) {
            bNoMemory = true;
        }
    });
    if (bNoMemory) throw std::bad_alloc();
}

void ObjReader_cls::AddUp() {
    mBases.resize(mChunks.size() + 1);
    for (size_t k = 0; k < mChunks.size(); ++k) {
        const ObjChunk_cls& chunk = *mChunks[k];
        mBases[k + 1].mVertex = mBases[k].mVertex + chunk.mVertex.GetNumber() / 3;
        mBases[k + 1].mNormal = mBases[k].mNormal + chunk.mNormal.GetNumber() / 3;
        mBases[k + 1].mFace = mBases[k].mFace + chunk.mFaceVertex.GetNumber();
        mbNormals = mbNormals || !chunk.mFaceNormal.IsEmpty();
    }
    const Base_st& total = mBases.back();
    mbWrongNormal = mbNormals && total.mNormal == 0;
    mbNormals = mbNormals && !mbWrongNormal;
    mpMesh->mvVertex.resize(3 * total.mVertex);
    mpMesh->mvNormal.resize(3 * total.mNormal);
    mpMesh->mvFaceVertex.resize(total.mFace);
    mpMesh->mvFaceNormal.resize(mbNormals ? total.mFace : 0);
}

/// Numbers that count from the piece's first become those of the file, and all go to their place.
/// \return do all of them stand in the file?
bool GatherFaces(ObjList_cls<int>& faces, const ObjList_cls<size_t>& back, size_t base, size_t number,
                 int* pTo) {
    for (size_t i = 0; i < back.GetNumber(); ++i) {
        int& index = faces.Data()[back.Data()[i]];
        const long long there = index == ObjChunk_cls::kNone ? -1 : static_cast<long long>(base) + index;
        index = there < 0 || there > INT_MAX ? ObjChunk_cls::kNone : static_cast<int>(there);
    }
    unsigned most = 0;
    const int* const p = faces.Data();
    for (size_t i = 0; i < faces.GetNumber(); ++i) {
        pTo[i] = p[i];
        most = std::max(most, unsigned(p[i]));
    }
    return faces.IsEmpty() || most < number;
}

void ObjReader_cls::Gather(size_t k) {
    ObjChunk_cls& chunk = *mChunks[k];
    const Base_st& base = mBases[k];
    const Base_st& total = mBases.back();
    std::copy_n(chunk.mVertex.Data(), chunk.mVertex.GetNumber(), mpMesh->mvVertex.data() + 3 * base.mVertex);
    std::copy_n(chunk.mNormal.Data(), chunk.mNormal.GetNumber(), mpMesh->mvNormal.data() + 3 * base.mNormal);
    if (!GatherFaces(chunk.mFaceVertex, chunk.mBackVertex, base.mVertex, total.mVertex,
                     mpMesh->mvFaceVertex.data() + base.mFace))
        mbBadCorner = true;
    if (!mbNormals) return;
    if (chunk.mFaceNormal.IsEmpty()) {
        std::fill_n(mpMesh->mvFaceNormal.data() + base.mFace, chunk.mFaceVertex.GetNumber(),
                    ObjChunk_cls::kNone);
        if (!chunk.mFaceVertex.IsEmpty()) mbBadNormal = true;
    } else if (!GatherFaces(chunk.mFaceNormal, chunk.mBackNormal, base.mNormal, total.mNormal,
                            mpMesh->mvFaceNormal.data() + base.mFace)) {
        mbBadNormal = true;
    }
}

void ObjReader_cls::LeaveOutBadTriangles() {
    MeshInts& corners = mpMesh->mvFaceVertex;
    MeshInts& normals = mpMesh->mvFaceNormal;
    const size_t number = mpMesh->GetVertexNumber();
    size_t to = 0;
    for (size_t i = 0; i + 2 < corners.size(); i += 3) {
        if (!IsWithin(corners[i], number) || !IsWithin(corners[i + 1], number) ||
            !IsWithin(corners[i + 2], number)) {
            ++mLeftOut;
            continue;
        }
        std::copy_n(&corners[i], 3, &corners[to]);
        if (mbNormals) std::copy_n(&normals[i], 3, &normals[to]);
        to += 3;
    }
    corners.resize(to);
    if (mbNormals) normals.resize(to);
}

// Corners without one, in a file where others have one.
void ObjReader_cls::CompleteNormals() {
    MeshInts& normals = mpMesh->mvFaceNormal;
    const size_t number = mpMesh->mvNormal.size() / 3;
    for (size_t i = 0; i + 2 < normals.size(); i += 3) {
        int own = ObjChunk_cls::kNone;
        for (size_t k = i; k < i + 3; ++k) {
            if (IsWithin(normals[k], number)) continue;
            mbWrongNormal = mbWrongNormal || normals[k] != ObjChunk_cls::kNone;
            if (own == ObjChunk_cls::kNone) {
                own = static_cast<int>(mpMesh->mvNormal.size() / 3);
                float flat[3];
                const auto at = [&](size_t c) {
                    return &mpMesh->mvVertex[3 * size_t(mpMesh->mvFaceVertex[c])];
                };
                MakeTriangleNormal(at(i), at(i + 1), at(i + 2), flat);
                mpMesh->mvNormal.insert(mpMesh->mvNormal.end(), flat, flat + 3);
            }
            normals[k] = own;
        }
    }
}

/// The first line that is not in order, from 1; 0: all are. Slow: it is for files that have such lines.
size_t ObjReader_cls::FindBadLine() const {
    MeshText_st text;
    if (!ReadMeshText(mSource, &text)) return 0;
    ObjChunk_cls all;
    size_t line = 1;
    const char* const end = text.End() + 1;
    const Base_st& total = mBases.back();
    for (const char* p = text.Begin(); p < end && !IsStopped();) {
        const size_t from = all.mFaceVertex.GetNumber();
        const char* next = static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(end - p))) + 1;
        size_t lines = 1;
        for (const char* q = next - 1; next < end; q = next - 1, ++lines) {
            while (q > p && q[-1] == '\r')
                --q;
            if (q == p || q[-1] != '\\') break;
            next = static_cast<const char*>(std::memchr(next, '\n', static_cast<size_t>(end - next))) + 1;
        }
        all.Parse(p, next);
        bool bBad = all.mBadFaces + all.mBadPlaces > 0;
        for (size_t i = from; i < all.mFaceVertex.GetNumber(); ++i) {
            bBad = bBad || !IsWithin(all.mFaceVertex.Data()[i], total.mVertex);
            const int normal = all.mFaceNormal.IsEmpty() ? ObjChunk_cls::kNone : all.mFaceNormal.Data()[i];
            bBad = bBad || (normal != ObjChunk_cls::kNone && !IsWithin(normal, total.mNormal));
        }
        if (bBad) return line;
        line += lines;
        p = next;
    }
    return 0;
}

wxString ObjReader_cls::MakeReason() const {
    size_t badFaces = 0, badPlaces = 0, faces = 0;
    for (const auto& chunk : mChunks) {
        badFaces += chunk->mBadFaces;
        badPlaces += chunk->mBadPlaces;
        faces += chunk->mFaces;
    }
    if (faces == 0) return mpMesh->mvVertex.empty() ? _("it is no OBJ file") : _("there are no faces in it");
    if (badFaces + badPlaces + mLeftOut == 0 && !mbWrongNormal) return wxString();
    wxString what;
    const auto add = [&what](const wxString& text) { what += (what.empty() ? wxString() : ", ") + text; };
    if (badFaces > 0)
        add(wxString::Format(_("%llu faces can't be read"), static_cast<unsigned long long>(badFaces)));
    if (mLeftOut > 0)
        add(wxString::Format(_("%llu triangles have corners that are not in it"),
                             static_cast<unsigned long long>(mLeftOut)));
    if (mbWrongNormal) add(_("there are faces with normals that are not in it"));
    if (badPlaces > 0)
        add(wxString::Format(_("%llu lines of numbers can't be read"),
                             static_cast<unsigned long long>(badPlaces)));
    return what + wxString::Format(_("; see line %llu"), static_cast<unsigned long long>(FindBadLine()));
}

wxString ObjReader_cls::Read() {
    for (size_t from = 0; from < mSource.GetLength(); from += kChunk)
        mChunks.push_back(std::make_unique<ObjChunk_cls>());
    ForChunks([this](size_t k, ObjPiece_cls& piece) {
        if (piece.Load(k)) mChunks[k]->Parse(piece.Begin(), piece.End());
    });
    if (IsStopped() || !mSource.GetReason().empty()) return mSource.GetReason();
    AddUp();
    ForChunks([this](size_t k, ObjPiece_cls&) { Gather(k); });
    if (IsStopped()) return wxString();
    if (mbBadCorner) LeaveOutBadTriangles();
    if (mbNormals && mbBadNormal) CompleteNormals();
    // Without numbers in the faces a normal belongs to the vertex of the same place.
    if (!mbNormals && mpMesh->mvNormal.size() != mpMesh->mvVertex.size()) mpMesh->ConstructNormalVectors();
    return MakeReason();
}

} // namespace

wxString ReadObj(MeshSource_cls& source, PovObjectMesh_cls* pMesh, const std::atomic<bool>* pStop) {
    return ObjReader_cls(source, pMesh, pStop).Read();
}
