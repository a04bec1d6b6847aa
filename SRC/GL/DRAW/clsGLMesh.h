// Triangles of a mesh to OpenGL, from its own memory where it has some. Needs a current context.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

class PovObjectMesh_cls;

class GLMesh_cls {
public:
    /// Without `bBuffers` the arrays are sent with each picture.
    explicit GLMesh_cls(bool bBuffers = true) : mbBuffers(bBuffers) {}
    ~GLMesh_cls();
    GLMesh_cls(const GLMesh_cls&) = delete;
    GLMesh_cls& operator=(const GLMesh_cls&) = delete;

    /// With the current matrix, material, shader and state. What another mesh, or another content of it,
    /// needs is sent once.
    void Draw(PovObjectMesh_cls& mesh);
    /// Give OpenGL's memory back.
    void Clear();

private:
    enum Buffer : unsigned { VERTICES, NORMALS, INDICES, BUFFER_NUMBER };

    struct Arrays_st;

    static Arrays_st ArraysOf(PovObjectMesh_cls& mesh);
    bool Send(const Arrays_st& arrays);
    static void DrawTriangles(const int* pIndices, size_t triangles);

    bool mbBuffers;
    uint64_t mContent = 0; ///< of what the buffers hold; 0: of nothing
    uint64_t mRefused = 0; ///< the content that OpenGL has no memory for
    std::array<unsigned, BUFFER_NUMBER> mBuffer = {};
};
