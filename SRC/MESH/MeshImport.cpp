#include "MESH/MeshImport.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iterator>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <wx/intl.h>

#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/scene.h>

#include "COMMON/ChildWork.h"
#include "COMMON/TextSplit.h"
#include "MESH/MeshFile.h"
#include "MESH/MeshNormals.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

// Some damaged files send the library round without an end.
constexpr unsigned long kSeconds = 5; // of the processor, for a small file
constexpr size_t kSlowest = 500000;   // bytes a second

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

bool IsPlyType(const std::string& word) {
    static const char* const kTypes[] = {"char",  "uchar",  "short",   "ushort", "int",   "uint",
                                         "float", "double", "int8",    "uint8",  "int16", "uint16",
                                         "int32", "uint32", "float32", "float64"};
    return std::find(std::begin(kTypes), std::end(kTypes), word) != std::end(kTypes);
}

/// Is it a line that heads of PLY files have? They count elements, and name what each of them has.
bool IsPlyLine(const std::vector<std::string>& words) {
    if (words.empty() || words[0] == "comment" || words[0] == "obj_info") return true;
    if (words[0] == "element") return words.size() == 3;
    if (words[0] == "format") return words.size() == 3;
    if (words[0] != "property") return words.size() == 1 && (words[0] == "ply" || words[0] == "end_header");
    if (words.size() == 3) return IsPlyType(words[1]);
    return words.size() == 5 && words[1] == "list" && IsPlyType(words[2]) && IsPlyType(words[3]);
}

/// What is wrong with the head of a PLY file, as the end of a sentence; else empty. The library would take
/// the memory for more elements than the file has bytes first, and look forever for what a head lacks.
wxString CheckPlyHead(const MeshText_st& text) {
    const char* p = text.Begin();
    bool bHollow = false; // an element without a property
    for (int lines = 0; p < text.End() && lines < 1000; ++lines) {
        const auto* const end = static_cast<const char*>(std::memchr(p, '\n', size_t(text.End() + 1 - p)));
        const std::vector<std::string> words =
            SplitWords(std::string(p, size_t(std::min<ptrdiff_t>(end - p, 200))));
        p = end + 1;
        if (!IsPlyLine(words)) break;
        if (words.empty()) continue;
        const bool bElement = words[0] == "element";
        if (bHollow && (bElement || words[0] == "end_header")) break;
        if (words[0] == "end_header") return wxString();
        if (bElement && std::strtoull(words[2].c_str(), nullptr, 10) > text.mLength)
            return _("its head tells of more than is in it");
        bHollow = bElement || (bHollow && words[0] != "property");
    }
    return _("its head isn't whole");
}

/// What came of an import, in words that no lock stands before.
struct Outcome_st {
    bool mbMemory = true; ///< there was enough
    std::uint64_t mLeftOut = 0;
    std::string mWords; ///< of the library; empty: it has read the file
};

Outcome_st ImportHere(const MeshText_st& text, const std::string& kind, PovObjectMesh_cls* pMesh,
                      const std::atomic<bool>* pStop) {
    Outcome_st outcome;
    try {
        Assimp::Importer importer;
        importer.SetProgressHandler(new Stopper_cls(pStop)); // the importer deletes it
        const aiScene* const pScene =
            importer.ReadFileFromMemory(text.Begin(), text.mLength, 0, kind.c_str());
        if (pScene)
            outcome.mLeftOut = AddScene(*pScene, pMesh);
        else
            outcome.mWords = importer.GetErrorString();
    } catch (const std::bad_alloc&) {
        outcome.mbMemory = false;
    } catch (const std::exception& error) { // the library lets some of its own out
        outcome.mWords = error.what();
    }
    return outcome;
}

template <class List>
bool Send(SharedFile_cls& file, const List& list) {
    const std::uint64_t length = list.size();
    return file.Write(&length, sizeof length) && file.Write(list.data(), list.size() * sizeof list[0]);
}

template <class List>
bool Receive(SharedFile_cls& file, List* pList) {
    std::uint64_t length = 0;
    if (!file.Read(&length, sizeof length) || length > file.GetLeft() / sizeof(*pList)[0]) return false;
    pList->resize(length);
    return file.Read(pList->data(), pList->size() * sizeof(*pList)[0]);
}

void SendAll(SharedFile_cls& file, const Outcome_st& outcome, const PovObjectMesh_cls& mesh) {
    const bool bSent = file.Write(&outcome.mbMemory, sizeof outcome.mbMemory) &&
                       file.Write(&outcome.mLeftOut, sizeof outcome.mLeftOut) && Send(file, outcome.mWords) &&
                       Send(file, mesh.mvFaceVertex) && Send(file, mesh.mvVertex) &&
                       Send(file, mesh.mvNormal);
    if (!bSent) throw std::bad_alloc();
}

bool ReceiveAll(SharedFile_cls& file, Outcome_st* pOutcome, PovObjectMesh_cls* pMesh) {
    return file.Read(&pOutcome->mbMemory, sizeof pOutcome->mbMemory) &&
           file.Read(&pOutcome->mLeftOut, sizeof pOutcome->mLeftOut) && Receive(file, &pOutcome->mWords) &&
           Receive(file, &pMesh->mvFaceVertex) && Receive(file, &pMesh->mvVertex) &&
           Receive(file, &pMesh->mvNormal);
}

/// The library writes behind its arrays over some damaged files, and forgets memory over others.
ChildEnd ImportApart(const MeshText_st& text, const std::string& kind, PovObjectMesh_cls* pMesh,
                     const std::atomic<bool>* pStop, Outcome_st* pOutcome) {
    SharedFile_cls file;
    if (!file.IsOpen()) return ChildEnd::NoChild;
    const ChildEnd end = RunInChild([&] { SendAll(file, ImportHere(text, kind, pMesh, nullptr), *pMesh); },
                                    kSeconds + text.mLength / kSlowest, pStop);
    if (end != ChildEnd::Done || ReceiveAll(file, pOutcome, pMesh)) return end;
    pMesh->mvFaceVertex.clear(); // part of a mesh would be shown
    pMesh->mvVertex.clear();
    pMesh->mvNormal.clear();
    return ChildEnd::Fault;
}

} // namespace

wxString ImportMesh(const MeshText_st& text, const wxString& kind, PovObjectMesh_cls* pMesh,
                    const std::atomic<bool>* pStop) {
    if (kind == "ply")
        if (const wxString reason = CheckPlyHead(text); !reason.empty()) return reason;
    Outcome_st outcome;
    const ChildEnd end = ImportApart(text, kind.utf8_string(), pMesh, pStop, &outcome);
    if (end == ChildEnd::Fault) return _("it is damaged");
    if (end == ChildEnd::Stopped) return wxString();
    if (end == ChildEnd::NoChild) outcome = ImportHere(text, kind.utf8_string(), pMesh, pStop);
    if (end == ChildEnd::NoMemory || !outcome.mbMemory) throw std::bad_alloc();
    if (!outcome.mWords.empty()) return wxString::FromUTF8(outcome.mWords);
    if (outcome.mLeftOut > 0)
        return wxString::Format(_("%llu triangles have corners that are not in it"),
                                static_cast<unsigned long long>(outcome.mLeftOut));
    return pMesh->mvFaceVertex.empty() ? _("there are no triangles in it") : wxString();
}
