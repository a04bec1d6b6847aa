#include "MESH/MeshCorners.h"

namespace {

// A hub with any number of normals must not cost its square: what is not found soon stands there twice.
constexpr int kMostSteps = 64;

} // namespace

bool HasOneIndex(const PovObjectMesh_cls& mesh) {
    if (mesh.mvNormal.size() < mesh.mvVertex.size()) return false;
    return !mesh.HasCornerNormals() || mesh.mvFaceNormal == mesh.mvFaceVertex;
}

MeshCorners_st MakeMeshCorners(const PovObjectMesh_cls& mesh) {
    MeshCorners_st corners;
    corners.mvIndex.reserve(mesh.mvFaceVertex.size());
    corners.mvVertex.reserve(mesh.mvVertex.size());
    corners.mvNormal.reserve(mesh.mvVertex.size());
    const MeshInts& normals = mesh.HasCornerNormals() ? mesh.mvFaceNormal : mesh.mvFaceVertex;
    // Of each vertex the new ones, a chain: most have one or a few.
    std::vector<int> first(mesh.GetVertexNumber(), -1);
    std::vector<int> next, normalOf;
    for (size_t i = 0; i < mesh.mvFaceVertex.size() && i < normals.size(); ++i) {
        const size_t vertex = size_t(mesh.mvFaceVertex[i]);
        const int normal = normals[i];
        int found = first[vertex];
        for (int step = 0; found >= 0 && normalOf[size_t(found)] != normal; ++step)
            found = step < kMostSteps ? next[size_t(found)] : -1;
        if (found < 0) {
            found = static_cast<int>(next.size());
            next.push_back(first[vertex]);
            normalOf.push_back(normal);
            first[vertex] = found;
            const float* const pPlace = &mesh.mvVertex[3 * vertex];
            corners.mvVertex.insert(corners.mvVertex.end(), pPlace, pPlace + 3);
            constexpr float kUp[3] = {0.0f, 0.0f, 1.0f};
            const bool bThere = 3 * size_t(unsigned(normal)) + 2 < mesh.mvNormal.size();
            const float* const pNormal = bThere ? &mesh.mvNormal[3 * size_t(normal)] : kUp;
            corners.mvNormal.insert(corners.mvNormal.end(), pNormal, pNormal + 3);
        }
        corners.mvIndex.push_back(found);
    }
    return corners;
}
