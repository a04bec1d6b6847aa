// A unit sphere as a mesh, in three degrees of fineness. One object serves the whole program; its buffers
// are shared by all views.
#pragma once

#include <array>
#include <vector>

class Sphere_cls {
public:
    static constexpr int kLevelNumber = 3; ///< levels 1 to 3: 80, 320, 1280 triangles

    /// Corners of the mesh, three numbers each: places and normals alike.
    struct Mesh_st {
        std::vector<float> mVertices;
        std::vector<unsigned short> mIndices;
    };
    static const Mesh_st& GetMesh(int level);

    // The rest needs a current context.

    /// Make the buffers, once.
    void InitializeIfNot();
    /// With the current matrix, colour or material and state.
    void Draw(int level) const;
    /// Arrays and indices of a level become current until EndArrays; Draw calls between repeat it.
    void BeginArrays(int level) const;
    void DrawArrays() const;
    void DrawInstances(int count) const;
    void EndArrays() const;
    /// Can DrawInstances be used?
    static bool HasInstances();
    static bool msbInstances; ///< are they used where they are there?

private:
    std::array<unsigned, kLevelNumber> mVertexBuffer = {};
    std::array<unsigned, kLevelNumber> mIndexBuffer = {};
    mutable int mCount = 0; ///< indices of the level that is current
};

extern Sphere_cls* GpCSphere; ///< made with the first view that draws
