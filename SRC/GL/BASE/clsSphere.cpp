#include "GL/BASE/clsSphere.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include <epoxy/gl.h>

Sphere_cls* GpCSphere = nullptr;

namespace {

using Mesh = Sphere_cls::Mesh_st;
using Index = unsigned short;

void AddVertex(Mesh& mesh, double x, double y, double z) {
    const double length = std::sqrt(x * x + y * y + z * z);
    for (const double v : {x, y, z})
        mesh.mVertices.push_back(static_cast<float>(v / length));
}

Mesh MakeIcosahedron() {
    const double g = (1.0 + std::sqrt(5.0)) / 2.0;
    Mesh mesh;
    for (const double one : {-1.0, 1.0})
        for (const double golden : {-g, g}) {
            AddVertex(mesh, 0, one, golden);
            AddVertex(mesh, one, golden, 0);
            AddVertex(mesh, golden, 0, one);
        }
    // Three corners make a face when each is an edge apart from the others.
    const auto at = [&mesh](int i) { return &mesh.mVertices[static_cast<size_t>(i) * 3]; };
    const auto isEdge = [&at](int a, int b) {
        const float* p = at(a);
        const float* q = at(b);
        return p[0] * q[0] + p[1] * q[1] + p[2] * q[2] > 0.3f;
    };
    for (int a = 0; a < 12; ++a)
        for (int b = a + 1; b < 12; ++b)
            for (int c = b + 1; c < 12; ++c) {
                if (!isEdge(a, b) || !isEdge(b, c) || !isEdge(c, a)) continue;
                const float *p = at(a), *q = at(b), *r = at(c);
                const float spat = p[0] * (q[1] * r[2] - q[2] * r[1]) + p[1] * (q[2] * r[0] - q[0] * r[2]) +
                                   p[2] * (q[0] * r[1] - q[1] * r[0]);
                // Anticlockwise from outside.
                for (const int i : {a, spat > 0 ? b : c, spat > 0 ? c : b})
                    mesh.mIndices.push_back(static_cast<Index>(i));
            }
    return mesh;
}

/// Every triangle becomes four, with the new corners on the sphere.
Mesh Refine(const Mesh& coarse) {
    Mesh mesh;
    mesh.mVertices = coarse.mVertices;
    std::map<std::pair<Index, Index>, Index> middles;
    const auto middle = [&](Index a, Index b) {
        const auto key = std::make_pair(std::min(a, b), std::max(a, b));
        const auto found = middles.find(key);
        if (found != middles.end()) return found->second;
        const auto index = static_cast<Index>(mesh.mVertices.size() / 3);
        double sum[3];
        for (size_t k = 0; k < 3; ++k)
            sum[k] = static_cast<double>(mesh.mVertices[a * 3u + k] + mesh.mVertices[b * 3u + k]);
        AddVertex(mesh, sum[0], sum[1], sum[2]);
        return middles[key] = index;
    };
    for (size_t i = 0; i < coarse.mIndices.size(); i += 3) {
        const Index a = coarse.mIndices[i], b = coarse.mIndices[i + 1], c = coarse.mIndices[i + 2];
        const Index ab = middle(a, b), bc = middle(b, c), ca = middle(c, a);
        for (const Index corner : {a, ab, ca, b, bc, ab, c, ca, bc, ab, bc, ca})
            mesh.mIndices.push_back(corner);
    }
    return mesh;
}

size_t SlotOf(int level) { return static_cast<size_t>(std::clamp(level, 1, Sphere_cls::kLevelNumber) - 1); }

} // namespace

const Sphere_cls::Mesh_st& Sphere_cls::GetMesh(int level) {
    static const std::array<Mesh_st, kLevelNumber> sMeshes = [] {
        std::array<Mesh_st, kLevelNumber> meshes;
        Mesh_st mesh = MakeIcosahedron();
        for (Mesh_st& finer : meshes)
            finer = mesh = Refine(mesh);
        return meshes;
    }();
    return sMeshes[SlotOf(level)];
}

void Sphere_cls::InitializeIfNot() {
    if (mVertexBuffer[0] != 0) return;
    glGenBuffers(kLevelNumber, mVertexBuffer.data());
    glGenBuffers(kLevelNumber, mIndexBuffer.data());
    for (int level = 1; level <= kLevelNumber; ++level) {
        const Mesh_st& mesh = GetMesh(level);
        glBindBuffer(GL_ARRAY_BUFFER, mVertexBuffer[SlotOf(level)]);
        glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(mesh.mVertices.size() * sizeof(float)),
                     mesh.mVertices.data(), GL_STATIC_DRAW);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mIndexBuffer[SlotOf(level)]);
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(mesh.mIndices.size() * sizeof(Index)),
                     mesh.mIndices.data(), GL_STATIC_DRAW);
    }
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
}

void Sphere_cls::BeginArrays(int level) const {
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glBindBuffer(GL_ARRAY_BUFFER, mVertexBuffer[SlotOf(level)]);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glNormalPointer(GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mIndexBuffer[SlotOf(level)]);
    mCount = static_cast<int>(GetMesh(level).mIndices.size());
}

void Sphere_cls::DrawArrays() const { glDrawElements(GL_TRIANGLES, mCount, GL_UNSIGNED_SHORT, nullptr); }

void Sphere_cls::DrawInstances(int count) const {
    glDrawElementsInstanced(GL_TRIANGLES, mCount, GL_UNSIGNED_SHORT, nullptr, count);
}

void Sphere_cls::EndArrays() const { glPopClientAttrib(); }

void Sphere_cls::Draw(int level) const {
    BeginArrays(level);
    DrawArrays();
    EndArrays();
}

bool Sphere_cls::msbInstances = true;

bool Sphere_cls::HasInstances() {
    return msbInstances && (epoxy_gl_version() >= 33 || (epoxy_has_gl_extension("GL_ARB_draw_instanced") &&
                                                         epoxy_has_gl_extension("GL_ARB_instanced_arrays")));
}
