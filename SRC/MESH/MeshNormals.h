// Normals for meshes whose files have none.
#pragma once

#include "COMMON/WideRegisters.h"
#include "MESH/clsPovObjectMesh.h"

/// The unit normal of a triangle, right-handed; zero where its corners lie on a line or are no numbers.
void MakeTriangleNormal(const float* pA, const float* pB, const float* pC, float* pOut);
/// For each vertex the mean of the unit normals of its triangles, scaled to length 1; (0, 0, 1) where there
/// is none. `faces` as in PovObjectMesh_cls; triangles with places that don't exist don't count.
/// `bWide` chooses the way, not what comes out.
void MakeVertexNormals(const MeshInts& faces, const MeshFloats& vertices, MeshFloats* pNormals,
                       bool bWide = HasWideRegisters());
