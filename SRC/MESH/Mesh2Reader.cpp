#include "MESH/Mesh2Reader.h"

#include <algorithm>
#include <atomic>
#include <vector>

#include <wx/intl.h>

#include "COMMON/OnThreads.h"
#include "MESH/Mesh2Vectors.h"
#include "MESH/MeshFile.h"
#include "MESH/clsMesh2Text.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

/// Text between two places.
struct Range_st {
    const char* mpBegin = nullptr; ///< null: not there
    const char* mpEnd = nullptr;
    bool mbClosed = false; ///< a brace ends it
};

class Mesh2Reader_cls {
public:
    Mesh2Reader_cls(MeshSource_cls& source, PovObjectMesh_cls* pMesh, const std::atomic<bool>* pStop)
        : mSource(source), mText(source), mpMesh(pMesh), mpStop(pStop) {}

    wxString Read() {
        if (!mText.Scan(mpStop)) return mSource.GetReason();
        if (!FindBlocks()) return _("no mesh2 is declared in it");
        ReadBlocks();
        const wxString reason = mSource.GetReason(); // since it was gone through
        if (!reason.empty() || (mpStop && *mpStop)) {
            mpMesh->mvFaceVertex = MeshInts(); // parts of it may be anything
            return reason;
        }
        LeaveOutBadTriangles();
        if (mpMesh->mvFaceVertex.empty()) return _("there are no triangles in it");
        const bool bCounts = HasCounts();
        mpMesh->mbStrict = bCounts && mLeftOut == 0 && IsStrict();
        if (mpMesh->mvNormal.size() != mpMesh->mvVertex.size()) mpMesh->ConstructNormalVectors();
        if (mLeftOut > 0)
            return wxString::Format(_("%llu triangles have corners that are not in it"),
                                    static_cast<unsigned long long>(mLeftOut));
        return bCounts ? wxString() : _("it has not as many vectors as it tells");
    }

private:
    const char* FindWord(const char* from, const char* to, const char* word) const {
        return mText.FindWord(from, to, word);
    }

    /// What stands between the braces behind a word.
    Range_st FindBlock(const char* from, const char* end, const char* word) const {
        Range_st block;
        const char* const found = FindWord(from, end, word);
        if (!found) return block;
        block.mpBegin = found;
        const char* const brace = mText.FindBrace(found, end);
        block.mpEnd = brace ? brace : end;
        block.mbClosed = brace != nullptr;
        return block;
    }

    /// Its number is to be kept, whatever stands in front of it.
    void KeepNumber(const Range_st& block) {
        const char* p = block.mpBegin;
        while (p && p < block.mpEnd && (IsMesh2Separator(*p) || (*p >= '0' && *p <= '9')))
            ++p;
        if (p && p < block.mpEnd && p == mText.GetKeptEnd(p)) mText.Keep(block.mpBegin, block.mpEnd);
    }

    bool FindBlocks() {
        const char* const end = mText.End();
        const char* p = FindWord(mText.Begin(), end, "#declare");
        if (!p) return false;
        while (p < end && IsMesh2Separator(*p))
            ++p;
        const char* name = p;
        while (p < end && !IsMesh2Separator(*p))
            ++p;
        mpMesh->mName = wxString::FromUTF8(name, static_cast<size_t>(p - name));
        mBlocks[0] = FindBlock(p, end, "vertex_vectors");
        if (!mBlocks[0].mpBegin) return false;
        mBlocks[1] = FindBlock(mBlocks[0].mpEnd, end, "normal_vectors");
        mBlocks[2] = FindBehindNormals("face_indices");
        return true;
    }

    /// Looks for a block through the normals only where it isn't beside them.
    Range_st FindBehindNormals(const char* word) const {
        const char* const end = mText.End();
        Range_st block;
        if (mBlocks[1].mpBegin) {
            block = FindBlock(mBlocks[0].mpEnd, mBlocks[1].mpBegin, word);
            if (block.mpBegin) return FindBlock(mBlocks[0].mpEnd, end, word);
            block = FindBlock(mBlocks[1].mpEnd, end, word);
        }
        return block.mpBegin ? block : FindBlock(mBlocks[0].mpEnd, end, word);
    }

    /// Triangles may be followed by the number of a texture then.
    bool HasTextures() const {
        const char* const faces = mBlocks[2].mpBegin;
        const char* const from =
            mBlocks[1].mpBegin && mBlocks[1].mpEnd < faces ? mBlocks[1].mpEnd : mBlocks[0].mpEnd;
        return faces && FindWord(from, faces, "texture_list") != nullptr;
    }

    void ReadBlocks() {
        for (const Range_st& block : mBlocks)
            KeepNumber(block);
        mVectors[0].Set(mText, mBlocks[0].mpBegin, mBlocks[0].mpEnd, &mpMesh->mvVertex);
        mVectors[1].Set(mText, mBlocks[1].mpBegin, mBlocks[1].mpEnd, &mpMesh->mvNormal);
        mVectors[2].Set(mText, mBlocks[2].mpBegin, mBlocks[2].mpEnd, &mpMesh->mvFaceVertex, HasTextures());
        for (Mesh2Vectors_cls& vectors : mVectors)
            vectors.MakeRoom();
        ReadPieces();
        for (Mesh2Vectors_cls& vectors : mVectors)
            vectors.Finish();
    }

    /// Of all blocks, by several threads.
    void ReadPieces() {
        std::atomic<size_t> next{0};
        OnThreads(GetMeshThreads(mText.GetLength()), [&](int) {
            std::vector<char> buffer;
            for (size_t at = next++; !(mpStop && *mpStop); at = next++) {
                size_t k = at, block = 0;
                for (; block < 3 && k >= mVectors[block].GetPieces(); ++block)
                    k -= mVectors[block].GetPieces();
                if (block == 3) return;
                mVectors[block].ReadPiece(k, &buffer);
            }
        });
    }

    /// Normals of their own order are passed over here, but POV-Ray wants them whole.
    bool HasCounts() const {
        const bool bNormals = !mBlocks[1].mpBegin || mpMesh->mvNormal.size() == mpMesh->mvVertex.size() ||
                              FindWord(mBlocks[0].mpEnd, mText.End(), "normal_indices");
        return bNormals && std::all_of(mVectors, mVectors + 3,
                                       [](const Mesh2Vectors_cls& block) { return block.HasCount(); });
    }

    /// Could POV-Ray read the file?
    bool IsStrict() const {
        for (int k = 0; k < 3; ++k)
            if (mBlocks[k].mpBegin && (!mBlocks[k].mbClosed || !mVectors[k].IsStrict())) return false;
        return mText.FindBrace(mBlocks[2].mpEnd + 1, mText.End()) != nullptr;
    }

    void LeaveOutBadTriangles() {
        MeshInts& corners = mpMesh->mvFaceVertex;
        const size_t number = mpMesh->GetVertexNumber();
        if (mVectors[2].GetMost() < number) return;
        size_t to = 0;
        for (size_t i = 0; i + 2 < corners.size(); i += 3) {
            const bool bGood = std::all_of(&corners[i], &corners[i] + 3,
                                           [number](int c) { return size_t(unsigned(c)) < number; });
            mLeftOut += bGood ? 0 : 1;
            if (!bGood) continue;
            std::copy_n(&corners[i], 3, &corners[to]);
            to += 3;
        }
        corners.resize(to);
    }

    MeshSource_cls& mSource;
    Mesh2Text_cls mText;
    PovObjectMesh_cls* const mpMesh;
    const std::atomic<bool>* const mpStop;
    Range_st mBlocks[3]; ///< vertices, normals, triangles
    Mesh2Vectors_cls mVectors[3];
    size_t mLeftOut = 0;
};

} // namespace

wxString ReadMesh2(MeshSource_cls& source, PovObjectMesh_cls* pMesh, const std::atomic<bool>* pStop) {
    return Mesh2Reader_cls(source, pMesh, pStop).Read();
}
