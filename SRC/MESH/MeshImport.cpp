#include "MESH/MeshImport.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <wx/intl.h>

#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/scene.h>

#include "COMMON/TextSplit.h"
#include "MESH/MeshFile.h"
#include "MESH/MeshNormals.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

/// Lets the library be stopped.
class Stopper_cls : public Assimp::ProgressHandler {
public:
    explicit Stopper_cls(const std::atomic<bool>* pStop) : mpStop(pStop) {}
    bool Update(float) override { return !(mpStop && *mpStop); }

private:
    const std::atomic<bool>* const mpStop;
};

bool IsDirection(const aiVector3D& v) {
    const float square = v.SquareLength();
    return std::isfinite(square) && square > 0.0f;
}

bool HasNormals(const aiMesh& mesh) {
    if (!mesh.HasNormals()) return false;
    for (unsigned i = 0; i < mesh.mNumVertices; ++i)
        if (!IsDirection(mesh.mNormals[i])) return false;
    return true;
}

void Add(MeshFloats& list, const aiVector3D& v) {
    list.push_back(v.x);
    list.push_back(v.y);
    list.push_back(v.z);
}

/// The triangles of one mesh, numbered from its first vertex; polygons are fans. (The library's own step for
/// that trusts the numbers in the file.) Adds those whose corners aren't there to `*pLeftOut`.
MeshInts TrianglesOf(const aiMesh& mesh, size_t* pLeftOut) {
    MeshInts corners;
    corners.reserve(size_t(mesh.mNumFaces) * 3);
    for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
        const unsigned* const c = mesh.mFaces[i].mIndices;
        for (unsigned k = 2; k < mesh.mFaces[i].mNumIndices; ++k) { // fewer are points and lines
            if (c[0] >= mesh.mNumVertices || c[k - 1] >= mesh.mNumVertices || c[k] >= mesh.mNumVertices) {
                ++*pLeftOut;
                continue;
            }
            for (const unsigned corner : {c[0], c[k - 1], c[k]})
                corners.push_back(static_cast<int>(corner));
        }
    }
    return corners;
}

void AddMesh(const aiMesh& mesh, const aiMatrix4x4& place, PovObjectMesh_cls* pMesh, size_t* pLeftOut) {
    const size_t base = pMesh->GetVertexNumber();
    if (base + mesh.mNumVertices > INT_MAX) return;
    MeshInts corners = TrianglesOf(mesh, pLeftOut);
    MeshFloats vertices;
    vertices.reserve(size_t(mesh.mNumVertices) * 3);
    for (unsigned i = 0; i < mesh.mNumVertices; ++i)
        Add(vertices, place * mesh.mVertices[i]);
    // A place that mirrors turns the triangles' order round.
    if (aiMatrix3x3(place).Determinant() < 0.0f)
        for (size_t i = 0; i + 2 < corners.size(); i += 3)
            std::swap(corners[i + 1], corners[i + 2]);
    MeshFloats normals;
    if (HasNormals(mesh)) {
        aiMatrix3x3 turn(place);
        turn.Inverse().Transpose();
        normals.reserve(vertices.size());
        for (unsigned i = 0; i < mesh.mNumVertices; ++i)
            Add(normals, (turn * mesh.mNormals[i]).NormalizeSafe());
    } else {
        MakeVertexNormals(corners, vertices, &normals);
    }
    for (int& corner : corners)
        corner += static_cast<int>(base);
    const auto append = [](auto& to, const auto& from) { to.insert(to.end(), from.begin(), from.end()); };
    append(pMesh->mvFaceVertex, corners);
    append(pMesh->mvVertex, vertices);
    append(pMesh->mvNormal, normals);
}

/// All that the nodes of a file show. \return triangles that were left out.
size_t AddScene(const aiScene& scene, PovObjectMesh_cls* pMesh) {
    size_t leftOut = 0;
    std::vector<std::pair<const aiNode*, aiMatrix4x4>> nodes;
    if (scene.mRootNode) nodes.emplace_back(scene.mRootNode, aiMatrix4x4());
    while (!nodes.empty()) {
        const aiNode* const pNode = nodes.back().first;
        const aiMatrix4x4 place = nodes.back().second * pNode->mTransformation;
        nodes.pop_back();
        for (unsigned i = 0; i < pNode->mNumMeshes; ++i)
            if (pNode->mMeshes[i] < scene.mNumMeshes)
                AddMesh(*scene.mMeshes[pNode->mMeshes[i]], place, pMesh, &leftOut);
        for (unsigned i = pNode->mNumChildren; i-- > 0;) // the first is taken next
            nodes.emplace_back(pNode->mChildren[i], place);
    }
    return leftOut;
}

/// What is wrong with the head of a PLY file, as the end of a sentence; else empty. The library would take
/// the memory for more elements than the file has bytes first, and look for the end of a head forever.
wxString CheckPlyHead(const MeshText_st& text) {
    const char* p = text.Begin();
    for (int lines = 0; p < text.End() && lines < 1000; ++lines) {
        const auto* const end = static_cast<const char*>(std::memchr(p, '\n', size_t(text.End() + 1 - p)));
        const std::vector<std::string> words =
            SplitWords(std::string(p, size_t(std::min<ptrdiff_t>(end - p, 200))));
        if (!words.empty() && words[0] == "end_header") return wxString();
        if (words.size() == 3 && words[0] == "element" &&
            std::strtoull(words[2].c_str(), nullptr, 10) > text.mLength)
            return _("its head tells of more than is in it");
        p = end + 1;
    }
    return _("its head has no end");
}

} // namespace

wxString ImportMesh(const MeshText_st& text, const wxString& kind, PovObjectMesh_cls* pMesh,
                    const std::atomic<bool>* pStop) {
    if (kind == "ply")
        if (const wxString reason = CheckPlyHead(text); !reason.empty()) return reason;
    size_t leftOut = 0;
    try {
        Assimp::Importer importer;
        importer.SetProgressHandler(new Stopper_cls(pStop)); // the importer deletes it
        const aiScene* const pScene =
            importer.ReadFileFromMemory(text.Begin(), text.mLength, 0, kind.utf8_str());
        if (!pScene) return wxString::FromUTF8(importer.GetErrorString());
        leftOut = AddScene(*pScene, pMesh);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) { // the library lets some of its own out
        return wxString::FromUTF8(error.what());
    }
    if (leftOut > 0)
        return wxString::Format(_("%llu triangles have corners that are not in it"),
                                static_cast<unsigned long long>(leftOut));
    return pMesh->mvFaceVertex.empty() ? _("there are no triangles in it") : wxString();
}
