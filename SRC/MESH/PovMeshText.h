// Triangle meshes as mesh2 of scenes for POV-Ray.
#pragma once

#include <cstddef>
#include <string>

/// What is written, with one index a corner. Nothing is owned.
struct PovMeshArrays_st {
    const float* mpVertex = nullptr; ///< x y z
    size_t mVertices = 0;
    const float* mpNormal = nullptr; ///< one a vertex, of any length
    const int* mpFace = nullptr;     ///< three a triangle
    size_t mTriangles = 0;
};

/// A file of one mesh2, declared as "MESH2OBJ_" and the name: ASCII letters, digits and "_". Two comments at
/// its head tell how many bytes from the file's begin the blocks of normals and of triangles stand.
std::string GetMesh2FormatRef(const std::string& name, const PovMeshArrays_st& mesh);
/// The blocks between the braces of a mesh2; `moreDecimals` of vertices beyond five. Normals get unit length;
/// vertices that are nowhere stand at the origin.
void AppendMesh2Blocks(std::string* pText, const PovMeshArrays_st& mesh, int moreDecimals = 0);
