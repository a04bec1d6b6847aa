// Meshes from OBJ files: one pass over the text, on several threads where that pays.
#pragma once

#include <atomic>

#include <wx/string.h>

class MeshSource_cls;
class PovObjectMesh_cls;

/// Fill the arrays of an empty mesh from a text (ObjChunk.h tells which lines count), with the triangles in
/// the file's order. A file without normals gets its own (PovObjectMesh_cls::ConstructNormalVectors); a
/// triangle that lacks some in a file with others stands flat. Triangles whose corners aren't in the file are
/// left out. \return what the user should know, as the end of a sentence; empty when all is in order. Throws
/// std::bad_alloc.
wxString ReadObj(MeshSource_cls& source, PovObjectMesh_cls* pMesh, const std::atomic<bool>* pStop = nullptr);
