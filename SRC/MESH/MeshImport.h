// Meshes from STL (text and binary), PLY and binary glTF, which the library assimp reads.
#pragma once

#include <atomic>

#include <wx/string.h>

class PovObjectMesh_cls;
struct MeshText_st;

/// Fill the arrays of an empty mesh from a whole file; `kind`: "stl", "ply" or "glb". All meshes of the file
/// become one, each where the file places it. The file's normals are taken; where a mesh has none, or one is
/// no direction, it gets its own. \return why that failed, as the end of a sentence, in the library's words
/// where it is the reason; else empty. Throws std::bad_alloc.
wxString ImportMesh(const MeshText_st& text, const wxString& kind, PovObjectMesh_cls* pMesh,
                    const std::atomic<bool>* pStop = nullptr);
