#include "MESH/Mesh2Reader.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <string>

#include <wx/intl.h>

#include "COMMON/OnThreads.h"
#include "COMMON/clsAsciiReader.h"
#include "MESH/MeshFile.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

/// Text between two places.
struct Range_st {
    const char* mpBegin = nullptr; ///< null: not there
    const char* mpEnd = nullptr;
};

bool IsSeparator(char c) { return c != '\0' && std::strchr(" \t\r\n=,{}", c); }

const char* FindWord(const char* from, const char* end, const char* word) {
    const size_t length = std::strlen(word);
    while (from < end) {
        const auto* found =
            static_cast<const char*>(memmem(from, static_cast<size_t>(end - from), word, length));
        if (!found) return nullptr;
        if (IsSeparator(found[length])) return found + length;
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
    return block;
}

/// "<a, b, c>" one after the other, at most as many as the number in front of them says.
template <class T, class ADD>
void ReadTriples(const Range_st& block, T (*read)(const char**, char), const ADD& add) {
    if (!block.mpBegin) return;
    const char* p = block.mpBegin;
    while (p < block.mpEnd && IsSeparator(*p))
        ++p;
    const int number = AsciiReader_cls::fast_atoi(p);
    // A vector has its own ">" within the block, or it isn't whole.
    for (int i = 0; i < number && AsciiReader_cls::SearchChar(&p, '<', block.mpEnd); ++i) {
        const char* close = ++p;
        if (!AsciiReader_cls::SearchChar(&close, '>', block.mpEnd)) return;
        T values[3];
        for (int k = 0; k < 3; ++k)
            values[k] = p <= close ? read(&p, k < 2 ? ',' : '>') : T();
        p = close;
        add(values);
    }
}

class Mesh2Reader_cls {
public:
    Mesh2Reader_cls(const MeshText_st& text, PovObjectMesh_cls* pMesh) : mText(text), mpMesh(pMesh) {}

    wxString Read() {
        if (!FindBlocks()) return _("no mesh2 is declared in it");
        ReadBlocks();
        LeaveOutBadTriangles();
        if (mpMesh->mvFaceVertex.empty()) return _("there are no triangles in it");
        if (mpMesh->mvNormal.size() != mpMesh->mvVertex.size()) mpMesh->ConstructNormalVectors();
        if (mLeftOut == 0) return wxString();
        return wxString::Format(_("%llu triangles have corners that are not in it"),
                                static_cast<unsigned long long>(mLeftOut));
    }

private:
    bool FindBlocks() {
        const char* const end = mText.End();
        const char* p = FindWord(mText.Begin(), end, "#declare");
        if (!p) return false;
        while (p < end && IsSeparator(*p))
            ++p;
        const char* name = p;
        while (p < end && !IsSeparator(*p))
            ++p;
        mpMesh->mName = wxString::FromUTF8(name, static_cast<size_t>(p - name));
        mBlocks[0] = FindBlock(p, end, "vertex_vectors");
        if (!mBlocks[0].mpBegin) return false;
        mBlocks[1] = FindBlock(mBlocks[0].mpEnd, end, "normal_vectors");
        mBlocks[2] = FindBlock(mBlocks[0].mpEnd, end, "face_indices");
        return true;
    }

    void ReadBlocks() {
        std::atomic<bool> bNoMemory{false};
        const auto read = [&](int k) {
            if (k == 2) {
                ReadTriples<int>(mBlocks[2], AsciiReader_cls::ReadInt, [this](const int* v) {
                    mpMesh->mvFaceVertex.insert(mpMesh->mvFaceVertex.end(), v, v + 3);
                });
                return;
            }
            MeshFloats& list = k == 0 ? mpMesh->mvVertex : mpMesh->mvNormal;
            ReadTriples<float>(mBlocks[k], AsciiReader_cls::ReadFloat,
                               [&list](const float* v) { list.insert(list.end(), v, v + 3); });
        };
        const int threads = std::min(GetMeshThreads(mText.mLength), 3);
        std::atomic<int> next{0};
        OnThreads(threads, [&](int) {
            try {
                for (int k = next++; k < 3; k = next++)
                    read(k);
            } catch (const std::bad_alloc&) {
                bNoMemory = true;
            }
        });
        if (bNoMemory) throw std::bad_alloc();
    }

    void LeaveOutBadTriangles() {
        MeshInts& corners = mpMesh->mvFaceVertex;
        const size_t number = mpMesh->GetVertexNumber();
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
    size_t mLeftOut = 0;
};

} // namespace

wxString ReadMesh2(const MeshText_st& text, PovObjectMesh_cls* pMesh) {
    return Mesh2Reader_cls(text, pMesh).Read();
}
