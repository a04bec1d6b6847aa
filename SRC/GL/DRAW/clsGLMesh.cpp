#include "GL/DRAW/clsGLMesh.h"

#include <algorithm>
#include <climits>
#include <cstdint>

#include <epoxy/gl.h>

#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "MESH/MeshCorners.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

constexpr size_t kRun = size_t(DrawProgress_cls::kCostPerRun / DrawProgress_cls::kCostTriangle) / 2;

bool HasBuffers() {
    return epoxy_gl_version() >= 15 || epoxy_has_gl_extension("GL_ARB_vertex_buffer_object");
}

/// Fill the buffer that stands at `target`; false when OpenGL has no memory for it.
bool Fill(GLenum target, const void* pData, size_t bytes) {
    glBufferData(target, static_cast<GLsizeiptr>(bytes), pData, GL_STATIC_DRAW);
    GLint64 there = 0;
    if (epoxy_gl_version() >= 32) {
        glGetBufferParameteri64v(target, GL_BUFFER_SIZE, &there);
    } else {
        GLint size = 0;
        glGetBufferParameteriv(target, GL_BUFFER_SIZE, &size);
        there = size;
    }
    return there == static_cast<GLint64>(bytes);
}

} // namespace

struct GLMesh_cls::Arrays_st {
    const MeshFloats& mVertices;
    const MeshFloats& mNormals; ///< as many
    const MeshInts& mIndices;
};

GLMesh_cls::~GLMesh_cls() {
    if (IsGLContextCurrent()) Clear();
}

void GLMesh_cls::Clear() {
    if (mBuffer[0] != 0) glDeleteBuffers(BUFFER_NUMBER, mBuffer.data());
    mBuffer.fill(0);
    mContent = 0;
}

GLMesh_cls::Arrays_st GLMesh_cls::ArraysOf(PovObjectMesh_cls& mesh) {
    const MeshCorners_st* const pCorners = mesh.GetCorners();
    if (pCorners) return {pCorners->mvVertex, pCorners->mvNormal, pCorners->mvIndex};
    return {mesh.mvVertex, mesh.mvNormal, mesh.mvFaceVertex};
}

bool GLMesh_cls::Send(const Arrays_st& arrays) {
    if (mBuffer[0] == 0) glGenBuffers(BUFFER_NUMBER, mBuffer.data());
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer[VERTICES]);
    bool bDone = Fill(GL_ARRAY_BUFFER, arrays.mVertices.data(), arrays.mVertices.size() * sizeof(float));
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer[NORMALS]);
    bDone = bDone && Fill(GL_ARRAY_BUFFER, arrays.mNormals.data(), arrays.mNormals.size() * sizeof(float));
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mBuffer[INDICES]);
    bDone =
        bDone && Fill(GL_ELEMENT_ARRAY_BUFFER, arrays.mIndices.data(), arrays.mIndices.size() * sizeof(int));
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    return bDone;
}

// In runs, so that a great mesh can be stopped.
void GLMesh_cls::DrawTriangles(const int* pIndices, size_t triangles) {
    DrawProgress_cls progress(static_cast<int>(std::min(triangles, size_t(INT_MAX))));
    for (size_t from = 0; from < triangles;) {
        const size_t run = std::min(triangles - from, kRun);
        // From the beginning of a buffer the pointer is none.
        const auto place = reinterpret_cast<std::uintptr_t>(pIndices) + 3 * from * sizeof(int);
        glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(3 * run), GL_UNSIGNED_INT,
                       reinterpret_cast<const void*>(place));
        from += run;
        const bool bReport = progress.AddCost(static_cast<float>(run) * DrawProgress_cls::kCostTriangle);
        if (bReport && !progress.Report(static_cast<int>(std::min(from, size_t(INT_MAX))))) return;
    }
}

void GLMesh_cls::Draw(PovObjectMesh_cls& mesh) {
    const size_t triangles = mesh.GetTriangleNumber();
    if (triangles == 0) return;
    const uint64_t content = mesh.GetContent();
    if (mbBuffers && content != mContent && content != mRefused && HasBuffers()) {
        if (Send(ArraysOf(mesh))) {
            mContent = content;
            mesh.DropCorners(); // they stand in OpenGL's memory
        } else {
            Clear();
            mRefused = content;
        }
    }
    const GLClientScope_cls client;
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    if (content == mContent) {
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[VERTICES]);
        glVertexPointer(3, GL_FLOAT, 0, nullptr);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[NORMALS]);
        glNormalPointer(GL_FLOAT, 0, nullptr);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mBuffer[INDICES]);
        DrawTriangles(nullptr, triangles);
        return;
    }
    const Arrays_st arrays = ArraysOf(mesh);
    glVertexPointer(3, GL_FLOAT, 0, arrays.mVertices.data());
    glNormalPointer(GL_FLOAT, 0, arrays.mNormals.data());
    DrawTriangles(arrays.mIndices.data(), triangles);
}
