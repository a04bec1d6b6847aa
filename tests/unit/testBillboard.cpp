// Corners of billboards, and the mesh of a sphere.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <utility>

#include "COMMON/clsMyVector.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/BASE/clsSphere.h"
#include "GL/DRAW/ParticleChecks.h"
#include "GL/DRAW/clsGLDrawData.h"

namespace {

TEST(Billboard, FacesTheEyeFromEverySide) {
    GLDrawData_cls draw;
    PositionAndDirection_cls camera;
    camera.Set(1, 2, 3);
    draw.SetCameraPos(camera);
    // Straight ahead along each axis and across.
    const float places[][3] = {{5, 2, 3}, {-5, 2, 3}, {1, 9, 3}, {1, 2, -4}, {3, -1, 7}, {1, 2.5f, 2.5f}};
    for (const float* pPlace : places) {
        float corners[12];
        draw.GetVertexArrayLookAtCamera(pPlace, corners);
        const float toEye[3] = {1 - pPlace[0], 2 - pPlace[1], 3 - pPlace[2]};
        float right[3], up[3], normal[3];
        for (int i = 0; i < 3; ++i) {
            right[i] = (corners[3 + i] - corners[i]) / 2.0f;
            up[i] = (corners[6 + i] - corners[3 + i]) / 2.0f;
            EXPECT_NEAR(corners[i] + corners[6 + i], 0.0f, 1e-5f) << "opposite corners";
        }
        EXPECT_NEAR(MyVector::GetNorm(right), 1.0f, 1e-5f);
        EXPECT_NEAR(MyVector::GetNorm(up), 1.0f, 1e-5f);
        EXPECT_NEAR(MyVector::GetScalarProduct(right, toEye), 0.0f, 1e-4f);
        EXPECT_NEAR(MyVector::GetScalarProduct(up, toEye), 0.0f, 1e-4f);
        MyVector::GetCrossedVector(right, up, normal);
        EXPECT_GT(MyVector::GetScalarProduct(normal, toEye), 0.0f) << "its front is turned to the eye";
    }
    // In the eye itself it has no size, and no number that is none.
    const float eye[3] = {1, 2, 3};
    float corners[12];
    draw.GetVertexArrayLookAtCamera(eye, corners);
    for (const float v : corners)
        EXPECT_TRUE(std::isfinite(v));
}

TEST(Billboard, AlphaByRadiusIsLimitedWhateverTheRadius) {
    EXPECT_FLOAT_EQ(AlphaByRadius(0.5f, 2.0f, 3.0f, 1.0f), 0.375f);
    EXPECT_FLOAT_EQ(AlphaByRadius(0.5f, -2.0f, 3.0f, 0.2f), 0.2f);
    EXPECT_FLOAT_EQ(AlphaByRadius(0.5f, 0.0f, 1.0f, 0.7f), 0.7f);
    EXPECT_FLOAT_EQ(AlphaByRadius(0.0f, 0.0f, 1.0f, 0.7f), 0.7f);
}

TEST(Sphere, MeshesAreClosedRoundAndTurnedOutward) {
    for (int level = 1; level <= 3; ++level) {
        const Sphere_cls::Mesh_st& mesh = Sphere_cls::GetMesh(level);
        EXPECT_EQ(mesh.mIndices.size(), size_t(3 * 20) << (2 * level));
        std::map<std::pair<int, int>, int> edges;
        for (size_t t = 0; t < mesh.mIndices.size(); t += 3) {
            const float* corner[3];
            for (size_t k = 0; k < 3; ++k) {
                corner[k] = &mesh.mVertices[mesh.mIndices[t + k] * 3u];
                ++edges[{mesh.mIndices[t + k], mesh.mIndices[t + (k + 1) % 3]}];
            }
            float a[3], b[3], normal[3];
            for (int i = 0; i < 3; ++i) {
                a[i] = corner[1][i] - corner[0][i];
                b[i] = corner[2][i] - corner[0][i];
            }
            MyVector::GetCrossedVector(a, b, normal);
            ASSERT_GT(MyVector::GetScalarProduct(normal, corner[0]), 0.0f);
        }
        for (const auto& [edge, count] : edges) {
            ASSERT_EQ(count, 1);
            ASSERT_TRUE(edges.count({edge.second, edge.first})) << "an edge without a neighbour";
        }
        for (size_t v = 0; v < mesh.mVertices.size(); v += 3)
            ASSERT_NEAR(MyVector::GetNorm(&mesh.mVertices[v]), 1.0f, 1e-5f);
    }
}

} // namespace
