// Meshes from scene files of POV-Ray: the first "mesh2" that such a file declares.
#pragma once

#include <atomic>

#include <wx/string.h>

class PovObjectMesh_cls;
class MeshSource_cls;

/// Fill the arrays and the name of an empty mesh from
///   #declare NAME=mesh2{ vertex_vectors{ n, <x,y,z>, ... } normal_vectors{ ... } face_indices{ n, <a,b,c>,
///   ... } }
/// Indices begin at 0, and a normal belongs to the vertex of the same place; a file with another number of
/// normals than vertices gets its own. Comments in front that tell where the blocks begin are not needed.
/// \return what the user should know, as the end of a sentence; empty when all is in order, or when it has
/// been stopped and the mesh has anything. Throws std::bad_alloc.
wxString ReadMesh2(MeshSource_cls& source, PovObjectMesh_cls* pMesh,
                   const std::atomic<bool>* pStop = nullptr);
