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

wxString KindOf(const wxString& path) { return SplitPath_cls(path).mStrExt.Mid(1).Lower(); }

bool IsImported(const wxString& kind) { return kind == "stl" || kind == "ply" || kind == "glb"; }

wxString ReadInto(const wxString& path, const wxString& kind, PovObjectMesh_cls* pMesh,
                  const std::atomic<bool>* pStop) {
    try {
        if (kind == "obj" || kind == "pov") {
            MeshSource_cls source(path);
            pMesh->mBufferSize = static_cast<long long>(source.GetLength());
            const wxString reason = source.GetReason();
            if (!reason.empty()) return reason;
            return kind == "obj" ? ReadObj(source, pMesh, pStop) : ReadMesh2(source, pMesh, pStop);
        }
        MeshText_st text;
        const wxString reason = ReadMeshText(path, &text, pStop);
        pMesh->mBufferSize = static_cast<long long>(text.mLength);
        if (!reason.empty() || (pStop && *pStop)) return reason;
        return ImportMesh(text, kind, pMesh, pStop);
    } catch (const std::bad_alloc&) {
        return _("there is not enough memory for it");
    }
}

} // namespace

PovObjectMesh_cls::PovObjectMesh_cls() : mContent(++sContents) {}

bool PovObjectMesh_cls::IsMeshPath(const wxString& path) {
    const wxString kind = KindOf(path);
    return kind == "obj" || kind == "pov" || IsImported(kind);
}

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
    mbStrict = false;
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
    if (!IsMeshPath(path))
        return wxString::Format(_("The file %s is no mesh: those end in .obj, .stl, .ply, .glb or .pov."),
                                path);
    ClearArrays();
    const wxString reason = ReadInto(path, KindOf(path), this, pStop);
    mbWhole = reason.empty();
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
