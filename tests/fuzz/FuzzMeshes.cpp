// Meshes: our own readers of text, and what a library reads for us.
#include <exception>

#include "FuzzTargets.h"
#include "MESH/Mesh2Reader.h"
#include "MESH/MeshCorners.h"
#include "MESH/MeshFile.h"
#include "MESH/MeshImport.h"
#include "MESH/ObjReader.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

void CheckMesh(PovObjectMesh_cls& mesh, const wxString& reason) {
    const size_t corners = mesh.mvFaceVertex.size();
    Promise(corners > 0 || !reason.empty(), "no triangles without a reason");
    Promise(corners % 3 == 0, "triangles have three corners");
    if (corners == 0) return;
    for (const int corner : mesh.mvFaceVertex)
        Promise(size_t(unsigned(corner)) < mesh.GetVertexNumber(), "a corner is a vertex");
    Promise(mesh.mvFaceNormal.empty() || mesh.mvFaceNormal.size() == corners, "a normal a corner or none");
    for (const int normal : mesh.mvFaceNormal)
        Promise(3 * size_t(unsigned(normal)) < mesh.mvNormal.size(), "a corner's normal is there");
    Promise(mesh.HasCornerNormals() || mesh.mvNormal.size() == mesh.mvVertex.size(), "a normal a vertex");
    if (mesh.GetCorners()) Promise(mesh.GetCorners()->mvIndex.size() == corners, "all corners are drawn");
}

void FuzzLibrary(const std::string& bytes, const char* kind) {
    PovObjectMesh_cls mesh;
    wxString reason;
    try {
        reason = ImportMesh(MakeMeshText(bytes), kind, &mesh);
    } catch (const std::bad_alloc&) {
        return; // told by the caller
    }
    CheckMesh(mesh, reason);
}

} // namespace

void FuzzObj(const std::string& bytes) {
    const MeshText_st text = MakeMeshText(bytes);
    PovObjectMesh_cls mesh;
    MeshSource_cls source(text);
    const wxString reason = ReadObj(source, &mesh);
    CheckMesh(mesh, reason);
}

void FuzzMesh2(const std::string& bytes) {
    const MeshText_st text = MakeMeshText(bytes);
    PovObjectMesh_cls mesh;
    MeshSource_cls source(text);
    const wxString reason = ReadMesh2(source, &mesh);
    CheckMesh(mesh, reason);
}

void FuzzStl(const std::string& bytes) { FuzzLibrary(bytes, "stl"); }
void FuzzPly(const std::string& bytes) { FuzzLibrary(bytes, "ply"); }
void FuzzGlb(const std::string& bytes) { FuzzLibrary(bytes, "glb"); }
