// Meshes in the picture: from OpenGL's memory, from arrays, and corner by corner they are the same.
#include <algorithm>
#include <cstdlib>
#include <functional>

#include <epoxy/gl.h>

#include "DrawTest.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/BASE/clsSphere.h"
#include "GL/DRAW/clsGLMesh.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

/// A ball with a normal a vertex.
PovObjectMesh_cls MakeBall() {
    const Sphere_cls::Mesh_st& ball = Sphere_cls::GetMesh(1);
    PovObjectMesh_cls mesh;
    mesh.mvVertex.assign(ball.mVertices.begin(), ball.mVertices.end());
    mesh.mvFaceVertex.assign(ball.mIndices.begin(), ball.mIndices.end());
    mesh.ConstructNormalVectors();
    return mesh;
}

/// The same with a normal a triangle.
PovObjectMesh_cls MakeFacets() {
    PovObjectMesh_cls mesh = MakeBall();
    mesh.mvNormal.clear();
    for (size_t i = 0; i < mesh.mvFaceVertex.size(); i += 3) {
        for (size_t axis = 0; axis < 3; ++axis) {
            float sum = 0.0f;
            for (size_t k = i; k < i + 3; ++k)
                sum += mesh.mvVertex[3 * size_t(mesh.mvFaceVertex[k]) + axis];
            mesh.mvNormal.push_back(sum / 2.8f);
        }
        mesh.mvFaceNormal.insert(mesh.mvFaceNormal.end(), 3, int(i / 3));
    }
    mesh.ChangeContent();
    return mesh;
}

/// Corner by corner, as the arrays tell.
void DrawPlainly(const PovObjectMesh_cls& mesh) {
    glBegin(GL_TRIANGLES);
    for (size_t i = 0; i < mesh.mvFaceVertex.size(); ++i) {
        const int normal = mesh.HasCornerNormals() ? mesh.mvFaceNormal[i] : mesh.mvFaceVertex[i];
        glNormal3fv(&mesh.mvNormal[3 * size_t(normal)]);
        glVertex3fv(&mesh.mvVertex[3 * size_t(mesh.mvFaceVertex[i])]);
    }
    glEnd();
}

class Mesh : public DrawTest {
protected:
    Picture_st Show(unsigned shader, const std::function<void()>& draw) {
        mDrawMore = [shader, &draw] {
            const float ambient[4] = {0.2f, 0.16f, 0.04f, 1}, color[4] = {1, 0.8f, 0.2f, 1};
            glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, ambient);
            glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, color);
            glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, color);
            glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 20.0f);
            glEnable(GL_LIGHTING);
            glEnable(GL_NORMALIZE);
            glEnable(GL_DEPTH_TEST);
            glDepthMask(GL_TRUE);
            GLAttribute_cls::mspCShaderCtrl->BeginShader(shader, 2);
            draw();
            GLAttribute_cls::mspCShaderCtrl->EndShader(int(shader));
        };
        Draw({});
        mDrawMore = nullptr;
        return Picture();
    }
    static int MostDifference(const Picture_st& a, const Picture_st& b) {
        int most = 0;
        for (size_t i = 0; i < a.mRGB.size(); ++i)
            most = std::max(most, std::abs(int(a.mRGB[i]) - int(b.mRGB[i])));
        return most;
    }
};

} // namespace

TEST_F(Mesh, IsTheSameHoweverItIsSent) {
    for (PovObjectMesh_cls mesh : {MakeBall(), MakeFacets()})
        for (unsigned shader = 0; shader < 4; ++shader) {
            const Picture_st plain = Show(shader, [&mesh] { DrawPlainly(mesh); });
            EXPECT_GT(CountLit(), 500);
            for (const bool bBuffers : {true, false}) {
                GLMesh_cls drawn(bBuffers);
                const Picture_st picture = Show(shader, [&] { drawn.Draw(mesh); });
                EXPECT_EQ(0, MostDifference(plain, picture))
                    << "shader " << shader << " buffers " << bBuffers;
                EXPECT_EQ(0, MostDifference(plain, Show(shader, [&] { drawn.Draw(mesh); }))) << "again";
            }
        }
    EXPECT_GT(
        MostDifference(Show(0, [] { DrawPlainly(MakeBall()); }), Show(0, [] { DrawPlainly(MakeFacets()); })),
        20);
}

TEST_F(Mesh, IsSentOnceAContent) {
    PovObjectMesh_cls mesh = MakeBall();
    GLMesh_cls drawn;
    const Picture_st ball = Show(0, [&] { drawn.Draw(mesh); });
    for (float& v : mesh.mvVertex)
        v *= 0.5f;
    EXPECT_EQ(0, MostDifference(ball, Show(0, [&] { drawn.Draw(mesh); }))) << "nobody told of a change";
    mesh.ChangeContent();
    Show(0, [&] { drawn.Draw(mesh); });
    const int small = CountLit();
    EXPECT_LT(small, 0.3 * mSize * mSize);
    PovObjectMesh_cls other = MakeFacets();
    Show(0, [&] { drawn.Draw(other); });
    EXPECT_GT(CountLit(), 3 * small);
    mesh.ClearMesh();
    Show(0, [&] { drawn.Draw(mesh); });
    EXPECT_EQ(0, CountLit()) << "a mesh of no triangles";
    drawn.Clear();
    EXPECT_EQ(0, MostDifference(ball, Show(0, [&] {
                                    PovObjectMesh_cls again = MakeBall();
                                    drawn.Draw(again);
                                })));
}

// What others draw next finds the arrays as they were.
TEST_F(Mesh, LeavesNothingBound) {
    PovObjectMesh_cls mesh = MakeFacets();
    GLMesh_cls drawn;
    Show(2, [&] {
        drawn.Draw(mesh);
        GLint array = -1, elements = -1;
        glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &array);
        glGetIntegerv(GL_ELEMENT_ARRAY_BUFFER_BINDING, &elements);
        EXPECT_EQ(0, array);
        EXPECT_EQ(0, elements);
        EXPECT_FALSE(glIsEnabled(GL_VERTEX_ARRAY));
        EXPECT_FALSE(glIsEnabled(GL_NORMAL_ARRAY));
    });
}
