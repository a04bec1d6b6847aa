#include "MESH/clsPovObjectMesh.h"

#include <new>

#include <wx/intl.h>

#include "COMMON/clsSplitPath.h"
#include "MESH/Mesh2Reader.h"
#include "MESH/MeshCorners.h"
#include "MESH/MeshFile.h"
#include "MESH/MeshImport.h"
#include "MESH/MeshNormals.h"
#include "MESH/ObjReader.h"

namespace {

std::atomic<uint64_t> sContents{0};

using Reader = wxString (*)(const MeshText_st&, const wxString& kind, PovObjectMesh_cls*,
                            const std::atomic<bool>* pStop);

wxString ReadObjOf(const MeshText_st& text, const wxString&, PovObjectMesh_cls* pMesh,
                   const std::atomic<bool>* pStop) {
    return ReadObj(text, pMesh, pStop);
}

wxString ReadMesh2Of(const MeshText_st& text, const wxString&, PovObjectMesh_cls* pMesh,
                     const std::atomic<bool>*) {
    return ReadMesh2(text, pMesh);
}

wxString ImportOf(const MeshText_st& text, const wxString& kind, PovObjectMesh_cls* pMesh,
                  const std::atomic<bool>* pStop) {
    return ImportMesh(text, kind, pMesh, pStop);
}

wxString KindOf(const wxString& path) { return SplitPath_cls(path).mStrExt.Mid(1).Lower(); }

/// Null: no file of a mesh.
Reader ReaderOf(const wxString& kind) {
    if (kind == "obj") return ReadObjOf;
    if (kind == "pov") return ReadMesh2Of;
    return kind == "stl" || kind == "ply" || kind == "glb" ? ImportOf : nullptr;
}

wxString ReadInto(const wxString& path, const wxString& kind, Reader read, PovObjectMesh_cls* pMesh,
                  const std::atomic<bool>* pStop) {
    try {
        MeshText_st text;
        const wxString reason = ReadMeshText(path, &text, pStop);
        pMesh->mBufferSize = static_cast<long long>(text.mLength);
        if (!reason.empty()) return reason;
        return read(text, kind, pMesh, pStop);
    } catch (const std::bad_alloc&) {
        return _("there is not enough memory for it");
    }
}

} // namespace

PovObjectMesh_cls::PovObjectMesh_cls() : mContent(++sContents) {}

bool PovObjectMesh_cls::IsMeshPath(const wxString& path) { return ReaderOf(KindOf(path)) != nullptr; }

void PovObjectMesh_cls::ChangeContent() {
    mContent = ++sContents;
    mpCorners.reset();
}

const MeshCorners_st* PovObjectMesh_cls::GetCorners() {
    if (!mpCorners && !HasOneIndex(*this))
        mpCorners = std::make_shared<MeshCorners_st>(MakeMeshCorners(*this));
    return mpCorners.get();
}

void PovObjectMesh_cls::ClearArrays() {
    mvFaceVertex = MeshInts();
    mvFaceNormal = MeshInts();
    mvVertex = MeshFloats();
    mvNormal = MeshFloats();
    mBufferSize = 0;
    ChangeContent();
}

void PovObjectMesh_cls::ClearMesh() {
    ClearArrays();
    mCurrentPath.clear();
}

wxString PovObjectMesh_cls::ReadMeshFromFile(const wxString& path, const std::atomic<bool>* pStop) {
    if (path == mCurrentPath) return wxString();
    mCurrentPath = path;
    if (path.empty() || path == "NONE") {
        ClearArrays();
        return wxString();
    }
    const wxString kind = KindOf(path);
    const Reader read = ReaderOf(kind);
    if (!read)
        return wxString::Format(_("The file %s is no mesh: those end in .obj, .stl, .ply, .glb or .pov."),
                                path);
    ClearArrays();
    const wxString reason = ReadInto(path, kind, read, this, pStop);
    if (pStop && *pStop) {
        ClearMesh();
        return wxString();
    }
    if (mvFaceVertex.empty()) { // what is there alone is no mesh
        const long long bytes = mBufferSize;
        ClearArrays();
        mBufferSize = bytes;
        const wxString why = reason.empty() ? _("there are no triangles in it") : reason;
        return wxString::Format(_("The mesh %s can't be read: %s."), path, why);
    }
    return reason.empty() ? reason : wxString::Format(_("The mesh %s is not whole: %s."), path, reason);
}

void PovObjectMesh_cls::ConstructNormalVectors() {
    MakeVertexNormals(mvFaceVertex, mvVertex, &mvNormal);
    mvFaceNormal = MeshInts();
    ChangeContent();
}
