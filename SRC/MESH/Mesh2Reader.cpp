#include "MESH/Mesh2Reader.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string>

#include <wx/intl.h>

#include "COMMON/OnThreads.h"
#include "MESH/Mesh2Vectors.h"
#include "MESH/MeshFile.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

/// Text between two places.
struct Range_st {
    const char* mpBegin = nullptr; ///< null: not there
    const char* mpEnd = nullptr;
    bool mbClosed = false; ///< a brace ends it
};

const char* FindWord(const char* from, const char* end, const char* word) {
    const size_t length = std::strlen(word);
    while (from < end) {
        const auto* found =
            static_cast<const char*>(memmem(from, static_cast<size_t>(end - from), word, length));
        if (!found) return nullptr;
        if (IsMesh2Separator(found[length])) return found + length;
        from = found + length;
    }
    return nullptr;
}

/// What stands between the braces behind a word.
Range_st FindBlock(const char* from, const char* end, const char* word) {
    Range_st block;
    const char* const found = FindWord(from, end, word);
    if (!found) return block;
    block.mpBegin = found;
    const void* const brace = std::memchr(found, '}', static_cast<size_t>(end - found));
    block.mpEnd = brace ? static_cast<const char*>(brace) : end;
    block.mbClosed = brace != nullptr;
    return block;
}

class Mesh2Reader_cls {
public:
    Mesh2Reader_cls(const MeshText_st& text, PovObjectMesh_cls* pMesh) : mText(text), mpMesh(pMesh) {}

    wxString Read() {
        if (!FindBlocks()) return _("no mesh2 is declared in it");
        ReadBlocks();
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
        mVectors[0].Set(mBlocks[0].mpBegin, mBlocks[0].mpEnd, &mpMesh->mvVertex);
        mVectors[1].Set(mBlocks[1].mpBegin, mBlocks[1].mpEnd, &mpMesh->mvNormal);
        mVectors[2].Set(mBlocks[2].mpBegin, mBlocks[2].mpEnd, &mpMesh->mvFaceVertex, HasTextures());
        ForPieces(&Mesh2Vectors_cls::CountPiece);
        for (Mesh2Vectors_cls& vectors : mVectors)
            vectors.MakeRoom();
        ForPieces(&Mesh2Vectors_cls::ReadPiece);
        for (Mesh2Vectors_cls& vectors : mVectors)
            vectors.Finish();
    }

    /// Of all blocks, by several threads.
    void ForPieces(void (Mesh2Vectors_cls::*job)(size_t)) {
        std::atomic<size_t> next{0};
        OnThreads(GetMeshThreads(mText.mLength), [&](int) {
            for (size_t at = next++;; at = next++) {
                size_t k = at, block = 0;
                for (; block < 3 && k >= mVectors[block].GetPieces(); ++block)
                    k -= mVectors[block].GetPieces();
                if (block == 3) return;
                Mesh2Vectors_cls& vectors = mVectors[block];
                (vectors.*job)(k);
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
        const char* const behind = mBlocks[2].mpEnd + 1;
        return std::memchr(behind, '}', static_cast<size_t>(mText.End() - behind)) != nullptr;
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

    const MeshText_st& mText;
    PovObjectMesh_cls* const mpMesh;
    Range_st mBlocks[3]; ///< vertices, normals, triangles
    Mesh2Vectors_cls mVectors[3];
    size_t mLeftOut = 0;
};

} // namespace

wxString ReadMesh2(const MeshText_st& text, PovObjectMesh_cls* pMesh) {
    return Mesh2Reader_cls(text, pMesh).Read();
}
