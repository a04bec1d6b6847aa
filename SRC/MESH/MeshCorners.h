// A mesh as OpenGL draws it: one index a corner, for place and normal alike.
#pragma once

#include "MESH/clsPovObjectMesh.h"

/// Vertices with one normal each.
struct MeshCorners_st {
    MeshFloats mvVertex;
    MeshFloats mvNormal; ///< as many
    MeshInts mvIndex;    ///< three a triangle
};

/// Do the arrays of a mesh serve as they are: is the normal of each corner the one in the vertex's own place?
bool HasOneIndex(const PovObjectMesh_cls& mesh);
/// Vertices with several normals become several, in the order of their first use; others stay one.
MeshCorners_st MakeMeshCorners(const PovObjectMesh_cls& mesh);
