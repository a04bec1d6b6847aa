// Meshes from files of every kind: what comes out, and what is said of files that are broken.
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "MESH/MeshCorners.h"
#include "MeshTools.h"
#include "TempFolder.h"

// What the library forgets of an STL file that it refuses is not ours.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libassimp\n"; }

namespace {

using Ints = std::vector<int>;
using Floats = std::vector<float>;

template <class... T>
std::string Bytes(const T&... values) {
    std::string bytes;
    (bytes.append(reinterpret_cast<const char*>(&values), sizeof values), ...);
    return bytes;
}

/// Facets in the plane z = 0 with a normal; the head says `told`.
std::string MakeStl(unsigned facets, unsigned told, float normal) {
    std::string bytes = std::string(80, 'h') + Bytes(told);
    for (unsigned i = 0; i < facets; ++i) {
        const float x = float(i);
        bytes +=
            Bytes(0.0f, 0.0f, normal, x, 0.0f, 0.0f, x + 1, 0.0f, 0.0f, x, 1.0f, 0.0f) + std::string(2, '\0');
    }
    return bytes;
}

const std::string kTextStl =
    "solid s\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
    "endloop\nendfacet\nendsolid s\n";
const std::string kPlyHead =
    "ply\nformat ascii 1.0\nelement vertex 4\nproperty float x\nproperty float y\n"
    "property float z\nelement face 1\nproperty list uchar int vertex_indices\nend_header\n";

/// A triangle in a node that is moved by 10 along x and mirrored in y.
std::string MakeGlb() {
    std::string json = R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],
"nodes":[{"mesh":0,"matrix":[1,0,0,0,0,-1,0,0,0,0,1,0,10,0,0,1]}],
"meshes":[{"primitives":[{"attributes":{"POSITION":0},"indices":1}]}],
"accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]},
{"bufferView":1,"componentType":5125,"count":3,"type":"SCALAR"}],
"bufferViews":[{"buffer":0,"byteOffset":0,"byteLength":36},{"buffer":0,"byteOffset":36,"byteLength":12}],
"buffers":[{"byteLength":48}]})";
    json.resize((json.size() + 3) / 4 * 4, ' ');
    const std::string data = Bytes(0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0u, 1u, 2u);
    const unsigned total = unsigned(12 + 8 + json.size() + 8 + data.size());
    return "glTF" + Bytes(2u, total, unsigned(json.size())) + "JSON" + json + Bytes(unsigned(data.size())) +
           std::string("BIN\0", 4) + data;
}

class MeshFiles : public testing::Test {
protected:
    wxString Read(const std::string& name, const std::string& bytes) {
        return mMesh.ReadMeshFromFile(mDir.Write(name, bytes));
    }
    /// What is said, without the path.
    wxString Problem(const std::string& name, const std::string& bytes) {
        wxString text = Read(name, bytes);
        text.Replace(mDir.GetPath() + "/", "");
        return text;
    }
    Ints Faces() const { return List(mMesh.mvFaceVertex); }

    TempFolder_cls mDir;
    PovObjectMesh_cls mMesh;
};

} // namespace

TEST_F(MeshFiles, TheSamePathIsReadOnce) {
    const std::string path = mDir.Write("a.OBJ", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    EXPECT_EQ("", mMesh.ReadMeshFromFile(path));
    EXPECT_EQ(1u, mMesh.GetTriangleNumber());
    EXPECT_EQ(32, mMesh.mBufferSize);
    const uint64_t content = mMesh.GetContent();
    EXPECT_EQ("", mMesh.ReadMeshFromFile(path));
    EXPECT_EQ(content, mMesh.GetContent());
    // What is no file of a mesh changes nothing; no file at all is nothing.
    EXPECT_NE("", Read("b.txt", "x"));
    EXPECT_EQ(content, mMesh.GetContent());
    EXPECT_EQ("", mMesh.ReadMeshFromFile("NONE"));
    EXPECT_EQ(0u, mMesh.GetVertexNumber());
    EXPECT_NE(content, mMesh.GetContent());
}

TEST_F(MeshFiles, WhatCantBeReadSaysWhyOnceAndLeavesNothing) {
    Read("good.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const std::string missing = mDir.GetPath() + "/none.obj";
    EXPECT_EQ("The mesh " + missing + " can't be read: No such file or directory.",
              mMesh.ReadMeshFromFile(missing));
    EXPECT_EQ(0u, mMesh.GetVertexNumber());
    EXPECT_EQ("", mMesh.ReadMeshFromFile(missing));
    EXPECT_EQ("The mesh e.obj can't be read: it is empty.", Problem("e.obj", ""));
    EXPECT_EQ("The mesh v.obj can't be read: there are no faces in it.", Problem("v.obj", "v 1 2 3\n"));
    EXPECT_EQ(0u, mMesh.GetVertexNumber());
    const std::string folder = mDir.GetPath() + "/folder.obj";
    ASSERT_EQ(0, mkdir(folder.c_str(), 0700));
    EXPECT_EQ("The mesh " + folder + " can't be read: it is a folder.", mMesh.ReadMeshFromFile(folder));
    const std::string pipe = mDir.GetPath() + "/pipe.obj";
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    EXPECT_EQ("The mesh " + pipe + " can't be read: it is no file that can be read.",
              mMesh.ReadMeshFromFile(pipe));
    EXPECT_EQ("The mesh p.obj is not whole: 1 faces can't be read; see line 5.",
              Problem("p.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\nf 1 2\n"));
    EXPECT_EQ(1u, mMesh.GetTriangleNumber());
}

TEST_F(MeshFiles, StlComesInBothKinds) {
    EXPECT_EQ("", Read("b.stl", MakeStl(3, 3, 1.0f)));
    ASSERT_EQ(3u, mMesh.GetTriangleNumber());
    const int last = mMesh.mvFaceVertex[6];
    EXPECT_EQ(2.0f, mMesh.mvVertex[3 * size_t(last)]);
    EXPECT_EQ(1.0f, mMesh.mvNormal[2]);
    EXPECT_EQ(mMesh.mvVertex.size(), mMesh.mvNormal.size());
    EXPECT_FALSE(mMesh.HasCornerNormals());
    EXPECT_EQ("", Read("t.stl", kTextStl));
    EXPECT_EQ(1u, mMesh.GetTriangleNumber());
    EXPECT_EQ("", Read("down.stl", MakeStl(1, 1, -1.0f)));
    EXPECT_EQ(-1.0f, mMesh.mvNormal[2]) << "the file's own";
    EXPECT_EQ("", Read("none.stl", MakeStl(1, 1, 0.0f)));
    EXPECT_EQ(1.0f, mMesh.mvNormal[2]) << "a normal that is none is made";
}

TEST_F(MeshFiles, StlWithAWrongCountIsTold) {
    for (const std::string& bytes :
         {MakeStl(2, 3, 1.0f), MakeStl(2, 1, 1.0f), MakeStl(2, 0, 1.0f), MakeStl(0, 0, 1.0f),
          MakeStl(1, 0xffffffffu, 1.0f), std::string("solid s\nendsolid s\n"), kTextStl.substr(0, 60),
          std::string(90, '\0')}) {
        const wxString problem = Problem("w.stl", bytes);
        EXPECT_TRUE(problem.StartsWith("The mesh w.stl can't be read: ")) << problem;
        EXPECT_EQ(0u, mMesh.GetVertexNumber());
        mMesh.ClearMesh();
    }
}

TEST_F(MeshFiles, PlySharesItsVertices) {
    EXPECT_EQ("", Read("a.ply", kPlyHead + "0 0 0\n1 0 0\n1 1 0\n0 1 0\n4 0 1 2 3\n"));
    EXPECT_EQ(4u, mMesh.GetVertexNumber());
    EXPECT_EQ(2u, mMesh.GetTriangleNumber());
    EXPECT_EQ((Floats{0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1}), List(mMesh.mvNormal)) << "ours";
    for (const char* body : {"", "0 0 0\n1 0", "x y z\n"}) {
        mMesh.ClearMesh();
        EXPECT_NE("", Read("b.ply", kPlyHead + body)) << body;
    }
    mMesh.ClearMesh();
    EXPECT_EQ("The mesh c.ply can't be read: its head tells of more than is in it.",
              Problem("c.ply", "ply\nformat binary_little_endian 1.0\nelement vertex 4000000000\n"
                               "property float x\nend_header\n"));
    mMesh.ClearMesh();
    // The library would look for what is missing forever.
    for (const char* head : {"format ascii 1.1 1 0\n0 1 2\n3 0 1 2\n", "element face 17\nend_header\n",
                             "element face 1\nerty lis\nend_header\n", "property ft x\nend_header\n"}) {
        EXPECT_EQ("The mesh e.ply can't be read: its head isn't whole.",
                  Problem("e.ply", std::string("ply\n") + head));
        mMesh.ClearMesh();
    }
    EXPECT_EQ("",
              Read("f.ply",
                   "ply\r\nformat ascii 1.0\r\ncomment a word\r\nelement vertex 3\r\nproperty double x\r\n"
                   "property float32 y\r\nproperty float z\r\nelement face 1\r\nproperty list uint8 uint "
                   "vertex_index\r\n"
                   "end_header\r\n0 0 0\r\n1 0 0\r\n1 1 0\r\n3 0 1 2\r\n"));
    mMesh.ClearMesh();
    EXPECT_EQ("The mesh d.ply is not whole: 1 triangles have corners that are not in it.",
              Problem("d.ply", kPlyHead + "0 0 0\n1 0 0\n1 1 0\n0 1 0\n4 0 1 2 7\n"));
    EXPECT_EQ((Ints{0, 1, 2}), Faces());
}

TEST_F(MeshFiles, BinaryGltfStandsWhereItsNodesPlaceIt) {
    EXPECT_EQ("", Read("a.glb", MakeGlb()));
    EXPECT_EQ((Floats{10, 0, 0, 11, 0, 0, 10, -1, 0}), List(mMesh.mvVertex));
    ASSERT_EQ(1u, mMesh.GetTriangleNumber());
    EXPECT_EQ((Floats{0, 0, 1, 0, 0, 1, 0, 0, 1}), List(mMesh.mvNormal)) << "mirrored: still the same side";
    EXPECT_NE("", Read("b.glb", MakeGlb().substr(0, 300)));
}

TEST_F(MeshFiles, Mesh2IsReadWithAndWithoutPlaces) {
    const std::string body =
        "#declare MESH2OBJ_hull=mesh2{\n\tvertex_vectors{\n\t\t3,\n\t\t<0.00000,0.00000,0.50000>,\n"
        "\t\t<1.00000,0.00000,0.50000>,\n\t\t<0.00000,-1.00000,0.50000>\n\t}\n\tnormal_vectors{\n"
        "\t\t3,\n\t\t<0.000,0.000,1.000>,\n\t\t<0.000,1.000,0.000>,\n\t\t<1.000,0.000,0.000>\n\t}\n"
        "\tface_indices{\n\t\t1,\n\t\t<0,1,2>\n\t}\n}\n";
    for (const char* head : {"", "//Mesh2file\n//normal_start_at=##########\n//index_start_at=##########\n",
                             "//normal_start_at=999999999\n//index_start_at=-1\n"}) {
        mMesh.ClearMesh();
        EXPECT_EQ("", Read("a.pov", head + body));
        EXPECT_EQ("MESH2OBJ_hull", mMesh.mName);
        EXPECT_EQ((Floats{0, 0, 0.5f, 1, 0, 0.5f, 0, -1, 0.5f}), List(mMesh.mvVertex));
        EXPECT_EQ((Floats{0, 0, 1, 0, 1, 0, 1, 0, 0}), List(mMesh.mvNormal));
        EXPECT_EQ((Ints{0, 1, 2}), Faces());
    }
    EXPECT_EQ("", Read("b.pov",
                       "#declare B = mesh2 { vertex_vectors { 3 <0,0,0>, <1,0,0>, <0,1,0> } face_indices "
                       "{ 2 <0, 1, 2>, <2, 1, 0> } }"));
    EXPECT_EQ("B", mMesh.mName);
    EXPECT_EQ((Ints{0, 1, 2, 2, 1, 0}), Faces());
    EXPECT_EQ(9u, mMesh.mvNormal.size()) << "made";
}

TEST_F(MeshFiles, BrokenMesh2IsTold) {
    EXPECT_EQ("The mesh a.pov can't be read: no mesh2 is declared in it.",
              Problem("a.pov", "sphere{<0,0,0>,1}"));
    EXPECT_EQ("The mesh b.pov can't be read: no mesh2 is declared in it.", Problem("b.pov", "#declare"));
    const std::string vertices = "#declare A=mesh2{vertex_vectors{3,<0,0,0>,<1,0,0>,<0,1,0>}";
    EXPECT_EQ("The mesh c.pov can't be read: there are no triangles in it.", Problem("c.pov", vertices));
    EXPECT_EQ("The mesh d.pov can't be read: there are no triangles in it.",
              Problem("d.pov", vertices + "face_indices{99999,<0,1,3>,<0,-1,2>,<0,1"));
    EXPECT_EQ("The mesh e.pov is not whole: 1 triangles have corners that are not in it.",
              Problem("e.pov", vertices + "face_indices{2,<0,1,3>,<0,1,2>}}"));
    EXPECT_NE("", Problem("f.pov", "#declare A=mesh2{vertex_vectors{-5,<<<<>>>>}face_indices{1,<,,>}"));
    const std::string counts = "is not whole: it has not as many vectors as it tells.";
    const std::string face = "face_indices{1,<0,1,2>}}";
    for (const std::string& text :
         {"#declare A=mesh2{vertex_vectors{5,<0,0,0>,<1,0,0>,<0,1,0>}" + face,
          "#declare A=mesh2{vertex_vectors{3,<0,0,0>,<1,0,0>,<0,1,0>,<1,1,0>}" + face,
          vertices + "face_indices{3,<0,1,2>}}", vertices + "face_indices{1,<0,1,2>,<2,1,0>}}",
          vertices + "normal_vectors{2,<0,0,1>,<0,0,1>}" + face}) {
        mMesh.ClearMesh();
        EXPECT_EQ("The mesh g.pov " + counts, Problem("g.pov", text)) << text;
        EXPECT_EQ((Ints{0, 1, 2}), Ints(mMesh.mvFaceVertex.begin(), mMesh.mvFaceVertex.begin() + 3));
    }
}

// What POV-Ray would stop at, or read otherwise than we do.
TEST_F(MeshFiles, Mesh2IsIncludedOnlyWherePovRayReadsItAlike) {
    const auto isStrict = [this](const std::string& vertices, const std::string& rest) {
        mMesh.ClearMesh();
        EXPECT_EQ("", Read("a.pov", "#declare A=mesh2{vertex_vectors{3," + vertices + "}" + rest))
            << vertices;
        return mMesh.mbStrict;
    };
    const std::string good = "<0,0,0>, <1.5,-1.123456789012,0>\n\t<0,+1,.5>",
                      face = "face_indices{1,<0,1,2>}}";
    EXPECT_TRUE(isStrict(good, face));
    EXPECT_TRUE(isStrict(good, "normal_vectors{3,<0,0,1>,<0,0,1>,<0,0,1>}" + face));
    EXPECT_TRUE(isStrict(good, "texture_list{1,texture{T}}face_indices{1,<0,1,2>,0}}"));
    EXPECT_TRUE(isStrict(good, "normal_vectors{1,<0,0,1>}" + face.substr(0, face.size() - 1) +
                                   "normal_indices{1,<0,0,0>}}"));
    EXPECT_FALSE(isStrict(good, "face_indices{1,<0,1,2>,0}}"));
    EXPECT_FALSE(isStrict(good, face.substr(0, face.size() - 1))) << "the last brace is missing";
    EXPECT_FALSE(isStrict(good, "face_indices{1,<0,1,2>"));
    for (const char* odd :
         {"<0,0,0><1,nan,0><0,1,0>", "<0,0,0><1,1e3,0><0,1,0>", "<0,0,0><1,,0><0,1,0>",
          "<0,0,0>//\n<1,0,0><0,1,0>", "<0,0,0>;<1,0,0>,<0,1,0>", "<0,0,0,0>,<1,0,0>,<0,1,0>"})
        EXPECT_FALSE(isStrict(odd, face)) << odd;
}

TEST(MeshCorners, AVertexStandsOnceForEachOfItsNormals) {
    ReadObj_st obj(
        "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvn 0 0 1\nvn 0 1 0\nf 1//1 2//1 3//1\nf 1//1 3//2 4//2\n");
    const MeshCorners_st* pCorners = obj.mMesh.GetCorners();
    ASSERT_TRUE(pCorners);
    EXPECT_EQ((Ints{0, 1, 2, 0, 3, 4}), List(pCorners->mvIndex));
    EXPECT_EQ((Floats{0, 0, 0, 1, 0, 0, 1, 1, 0, 1, 1, 0, 0, 1, 0}), List(pCorners->mvVertex));
    EXPECT_EQ((Floats{0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 1, 0, 0, 1, 0}), List(pCorners->mvNormal));
    EXPECT_EQ(pCorners, obj.mMesh.GetCorners());
    obj.mMesh.ConstructNormalVectors();
    EXPECT_FALSE(obj.mMesh.GetCorners()) << "the arrays serve as they are";
    ReadObj_st same("v 0 0 0\nv 1 0 0\nv 1 1 0\nvn 0 0 1\nvn 0 1 0\nvn 1 0 0\nf 1//1 2//2 3//3\n");
    EXPECT_FALSE(same.mMesh.GetCorners());
    ReadObj_st order("v 0 0 0\nv 1 0 0\nv 1 1 0\nvn 0 0 1\nvn 0 1 0\nvn 1 0 0\nf 1//3 2//2 3//1\n");
    ASSERT_TRUE(order.mMesh.GetCorners()) << "as many normals as vertices, in another order";
    EXPECT_EQ((Floats{1, 0, 0, 0, 1, 0, 0, 0, 1}), List(order.mMesh.GetCorners()->mvNormal));
}

TEST(MeshCorners, AHubOfManyNormalsTakesNoTimeToSpeakOf) {
    PovObjectMesh_cls mesh;
    constexpr int kNumber = 1000000;
    mesh.mvVertex.assign(9, 1.0f);
    for (int i = 0; i < kNumber; ++i) {
        mesh.mvNormal.insert(mesh.mvNormal.end(), {0.0f, 0.0f, float(i)});
        mesh.mvFaceVertex.insert(mesh.mvFaceVertex.end(), {0, 1, 2});
        mesh.mvFaceNormal.insert(mesh.mvFaceNormal.end(), {i, i, i});
    }
    ASSERT_TRUE(mesh.GetCorners());
    EXPECT_EQ(float(kNumber - 1), mesh.GetCorners()->mvNormal.back());
}
