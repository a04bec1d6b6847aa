// OBJ files: their forms, and what is wrong with some.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "COMMON/clsAsciiReader.h"
#include "MESH/MeshFile.h"
#include "MESH/MeshNormals.h"
#include "MESH/ObjChunk.h"
#include "MeshTools.h"

namespace {

using Ints = std::vector<int>;
using Floats = std::vector<float>;

const std::string kSquare = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";

std::string Line(const char* format, double a, double b, double c) {
    char line[200];
    std::snprintf(line, sizeof line, format, a, b, c);
    return line;
}

} // namespace

TEST(ObjReader, EveryFormOfACornerNamesItsVertex) {
    for (const char* face :
         {"f 1 2 3", "f 1/9 2/8 3/7", "f 1// 2// 3//", "f 1/ 2/ 3/", "f +1 2 3", "  f\t1  2\t3 ",
          "f 1 2 3 # the first", "f 1 2 \\\n 3", "f 1 \\\r\n2 \\\r\n3", "f -4 -3 -2", "f -4/1 2/2 -2"}) {
        const ReadObj_st obj(kSquare + face + "\n");
        EXPECT_EQ((Ints{0, 1, 2}), obj.Faces()) << face;
        EXPECT_EQ("", obj.mReason) << face;
        EXPECT_FALSE(obj.mMesh.HasCornerNormals()) << face;
    }
}

TEST(ObjReader, NormalsComeWithOrWithoutTextures) {
    const std::string normals = "vn 1 0 0\nvn 0 1 0\nvn 0 0 1\n";
    for (const char* face : {"f 1//3 2//2 3//1", "f 1/5/3 2/5/2 3/5/1", "f -4//-1 -3//-2 -2//-3"}) {
        const ReadObj_st obj(kSquare + normals + face);
        EXPECT_EQ((Ints{0, 1, 2}), obj.Faces()) << face;
        EXPECT_EQ((Ints{2, 1, 0}), List(obj.mMesh.mvFaceNormal)) << face;
        EXPECT_EQ((Floats{1, 0, 0, 0, 1, 0, 0, 0, 1}), List(obj.mMesh.mvNormal)) << face;
        EXPECT_EQ("", obj.mReason) << face;
    }
}

TEST(ObjReader, PolygonsAreFansInTheFilesOrder) {
    const ReadObj_st obj("v 0 0 0\nv 2 0 0\nv 3 1 0\nv 2 2 0\nv 0 2 0\nf 2 3 4\nf 1 2 3 4 5\nf 5 4 3 2\n");
    EXPECT_EQ((Ints{1, 2, 3, 0, 1, 2, 0, 2, 3, 0, 3, 4, 4, 3, 2, 4, 2, 1}), obj.Faces());
    const ReadObj_st normals(kSquare + "vn 0 0 1\nvn 0 0 -1\nf 1//1 2//2 3//1 4//2\n");
    EXPECT_EQ((Ints{0, 1, 0, 0, 0, 1}), List(normals.mMesh.mvFaceNormal));
}

TEST(ObjReader, AllOtherLinesArePassedOver) {
    const ReadObj_st obj(
        "# f 1 2 3\r\nmtllib off.mtl\r\no first\r\nv 0 0 0 1.0\r\nv 1 0 0 0.5 0.5 0.5\r\n"
        "vt 0.5 0.5\r\nvp 0.3\r\n\r\n# ends in a backslash \\\r\nv 1 1 0\r\ng side f 1 1 1\r\n"
        "usemtl foo\r\ns off\r\nf 1 2 3\r\no second\r\nv 5 0 0\r\ns 1\r\nl 1 2\r\np 1\r\n"
        "f 2 3 4\r\nfo 1 2 3\r\nvertex f 1 2 3\r\n");
    EXPECT_EQ((Ints{0, 1, 2, 1, 2, 3}), obj.Faces());
    EXPECT_EQ((Floats{0, 0, 0, 1, 0, 0, 1, 1, 0, 5, 0, 0}), List(obj.mMesh.mvVertex));
    EXPECT_EQ("", obj.mReason);
}

TEST(ObjReader, PlainNumbersAreThoseOfTheScanner) {
    std::mt19937 random(5);
    const auto number = [&random](double most) {
        return std::uniform_real_distribution<>(-most, most)(random);
    };
    std::string text;
    Floats wanted;
    for (int i = 0; i < 20000; ++i) {
        const char* const format = i % 3 == 0   ? "%.6f %.3f %.0f"
                                   : i % 3 == 1 ? "%.9f %.1f %.4f"
                                                : "%.2f %.7f %+.5f";
        const std::string places = Line(format, number(0.4), number(99), number(40));
        text += "v " + places + "\n";
        const char* cursor = places.c_str();
        for (int k = 0; k < 3; ++k)
            wanted.push_back(AsciiReader_cls::ReadFloat(&cursor, ' '));
    }
    const ReadObj_st obj(text + "f 1 2 3\n");
    const Floats read = List(obj.mMesh.mvVertex);
    ASSERT_EQ(wanted.size(), read.size());
    EXPECT_EQ(0, std::memcmp(wanted.data(), read.data(), 4 * read.size()));
}

TEST(ObjReader, OtherNumbersAreRoundedOnce) {
    const ReadObj_st obj(
        "v 1e-3 -2.5E+2 1.e1\nv .5 -.25 5.\nv 0.12345678901234567890123 123456789012345678901 1e-50\n"
        "f 1 2 3\n");
    EXPECT_EQ((Floats{1e-3f, -250.0f, 10.0f, 0.5f, -0.25f, 5.0f, 0.12345679f, 1.2345679e20f, 0.0f}),
              List(obj.mMesh.mvVertex));
    EXPECT_EQ("", obj.mReason);
}

TEST(ObjReader, NormalsThatTheFileLacksAreMade) {
    const ReadObj_st flat(kSquare + "f 1 2 3\n");
    EXPECT_EQ((Floats{0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1}), List(flat.mMesh.mvNormal))
        << "and (0 0 1) for none";
    // Two triangles at a right angle share an edge.
    const ReadObj_st edge("v 0 0 0\nv 1 0 0\nv 0 1 0\nv 0 0 1\nf 1 2 3\nf 1 4 2\n");
    const float half = float(std::sqrt(0.5));
    const Floats wanted{0, half, half, 0, half, half, 0, 0, 1, 0, 1, 0};
    ASSERT_EQ(wanted.size(), edge.mMesh.mvNormal.size());
    for (size_t i = 0; i < wanted.size(); ++i)
        EXPECT_NEAR(wanted[i], edge.mMesh.mvNormal[i], 1e-6) << i;
    // As many as vertices, and no numbers in the faces: one a vertex. Another number: of no use.
    const ReadObj_st own(kSquare + "vn 1 0 0\nvn 1 0 0\nvn 1 0 0\nvn 1 0 0\nf 1 2 3\n");
    EXPECT_EQ(1.0f, own.mMesh.mvNormal[0]);
    const ReadObj_st few(kSquare + "vn 1 0 0\nf 1 2 3\n");
    EXPECT_EQ(List(flat.mMesh.mvNormal), List(few.mMesh.mvNormal));
}

TEST(ObjReader, ATriangleWithoutNormalsAmongOthersStandsFlat) {
    const ReadObj_st obj(kSquare + "f 1 2 3\nvn 1 0 0\nf 1//1 2//1 3//1\nf 1//1 3 4//1\n");
    EXPECT_EQ((Ints{1, 1, 1, 0, 0, 0, 0, 2, 0}), List(obj.mMesh.mvFaceNormal));
    EXPECT_EQ((Floats{1, 0, 0, 0, 0, 1, 0, 0, 1}), List(obj.mMesh.mvNormal));
    EXPECT_EQ("", obj.mReason);
}

TEST(ObjReader, AHubOfManyTrianglesHasTheirMean) {
    std::string text = "v 0 0 1\n";
    constexpr int kNumber = 1000; // more than a byte counts
    for (int i = 0; i < kNumber; ++i)
        text +=
            Line("v %.6f %.6f %.1f\n", std::cos(i * 2 * M_PI / kNumber), std::sin(i * 2 * M_PI / kNumber), 0);
    for (int i = 0; i < kNumber; ++i)
        text += "f 1 " + std::to_string(i + 2) + " " + std::to_string((i + 1) % kNumber + 2) + "\n";
    const ReadObj_st obj(text);
    EXPECT_NEAR(0.0, obj.mMesh.mvNormal[0], 1e-3);
    EXPECT_NEAR(1.0, obj.mMesh.mvNormal[2], 1e-5);
}

TEST(ObjReader, FacesMayStandBeforeTheirVertices) {
    const ReadObj_st obj("f 1 2 3\n" + kSquare + "f -1 -2 -3\n");
    EXPECT_EQ((Ints{0, 1, 2, 3, 2, 1}), obj.Faces());
    EXPECT_EQ("", obj.mReason);
}

TEST(ObjReader, TrianglesWithoutTheirCornersAreLeftOutAndTold) {
    for (const char* face :
         {"f 0 1 2", "f 1 2 5", "f 1 2 -5", "f 1 2 2147483647", "f 1 2 99999999999999999999",
          "f 1 2 -2147483648", "f -9223372036854775808 1 2"}) {
        const ReadObj_st obj(kSquare + "f 1 2 3\n" + face + "\nf 2 3 4\n");
        EXPECT_EQ((Ints{0, 1, 2, 1, 2, 3}), obj.Faces()) << face;
        EXPECT_EQ("1 triangles have corners that are not in it; see line 6", obj.mReason) << face;
    }
    const ReadObj_st fan(kSquare + "f 1 2 3 9 4\n");
    EXPECT_EQ((Ints{0, 1, 2}), fan.Faces()) << "what can be drawn of it";
    const ReadObj_st normal(kSquare + "vn 0 1 0\nf 1//1 2//2 3//1\n");
    EXPECT_EQ((Ints{0, 1, 0}), List(normal.mMesh.mvFaceNormal)) << "flat there";
    EXPECT_EQ("there are faces with normals that are not in it; see line 6", normal.mReason);
    const ReadObj_st none(kSquare + "f 1//1 2//1 3//1\n");
    EXPECT_EQ("there are faces with normals that are not in it; see line 5", none.mReason);
    EXPECT_FALSE(none.mMesh.HasCornerNormals());
}

TEST(ObjReader, LinesThatCantBeReadAreTold) {
    for (const char* face : {"f 1 2", "f 1", "f a b c", "f 1.5 2 3", "f 1,2,3 4 5", "f 1/x 2 3", "f / / /",
                             "f 1 2 3 x", "f \xff\xfe 1 2"}) {
        const ReadObj_st obj(kSquare + "f 1 2 3\n" + face + "\n");
        EXPECT_EQ((Ints{0, 1, 2}), obj.Faces()) << face;
        EXPECT_EQ("1 faces can't be read; see line 6", obj.mReason) << face;
    }
    const ReadObj_st places("v 1 2\nv 1 x 3\nv 1.5abc 2 3\nv 1e400 nan 3\nvn 0 0\nf 1 2 3\n");
    EXPECT_EQ((Floats{1, 2, 0, 1, 0, 3, 1.5f, 2, 3, 0, 0, 3}), List(places.mMesh.mvVertex));
    EXPECT_EQ("5 lines of numbers can't be read; see line 1", places.mReason);
}

TEST(ObjReader, ATextWithoutFacesIsNoMesh) {
    EXPECT_EQ("there are no faces in it", ReadObj_st(kSquare).mReason);
    EXPECT_EQ("it is no OBJ file", ReadObj_st("").mReason);
    EXPECT_EQ("it is no OBJ file", ReadObj_st(std::string(100, '\0')).mReason);
    EXPECT_EQ("it is no OBJ file", ReadObj_st("<html>\n<body>").mReason);
    EXPECT_EQ("1 triangles have corners that are not in it; see line 1", ReadObj_st("f 1 2 3").mReason);
}

TEST(ObjReader, ABackslashMayEndTheText) {
    for (const char* end :
         {"\\", "\\\n", "\\\r\n", "f 1 2\\", "f 1 2 \\\n", "v 1 2 \\", "v\\", "vn 1 \\\r", "f 1 \\\n\\\n"}) {
        const ReadObj_st obj(kSquare + "f 1 2 3\n" + end);
        EXPECT_EQ((Ints{0, 1, 2}), obj.Faces()) << end;
    }
}

TEST(ObjReader, LinesMayHaveAMillionCharacters) {
    std::string face = "f";
    while (face.size() < 1000000)
        face += " 1 2 3 4";
    const ReadObj_st fan(kSquare + face + "\nf 2 3 4\n");
    EXPECT_EQ("", fan.mReason);
    EXPECT_EQ(face.size() / 2 - 2 + 1, fan.mMesh.GetTriangleNumber());
    EXPECT_EQ((Ints{1, 2, 3}), Ints(fan.mMesh.mvFaceVertex.end() - 3, fan.mMesh.mvFaceVertex.end()));
    const std::string wide = "v " + std::string(1000000, ' ') + "0 0 " + std::string(1000000, '0') +
                             "7\nv 1 0 0\n#" + std::string(1000000, 'f') + "\nv 0 1 0\nf 1 2 3" +
                             std::string(3000000, '\t');
    const ReadObj_st blanks(wide);
    EXPECT_EQ((Floats{0, 0, 7, 1, 0, 0, 0, 1, 0}), List(blanks.mMesh.mvVertex));
    EXPECT_EQ((Ints{0, 1, 2}), blanks.Faces());
    EXPECT_EQ("", blanks.mReason);
}

// A file of many pieces gives what one piece gives, negative numbers and lines that go on included.
TEST(ObjReader, PiecesFitTogether) {
    std::mt19937 random(9);
    std::string text;
    Ints faces, normals;
    Floats places;
    int vertex = 0, normal = 0;
    while (text.size() < 5000000) {
        const int a = int(random() % 1000), b = int(random() % 1000);
        text += "v " + std::to_string(a) + " \\\n" + std::to_string(b) +
                (random() % 2 ? "\r\n" : ".0 \\\r\n 0\n");
        places.insert(places.end(), {float(a), float(b), 0});
        ++vertex;
        if (random() % 3 == 0) {
            text += "vn 0 0 1\n";
            ++normal;
        }
        if (vertex < 10 || normal < 10) continue;
        const bool bNormals = random() % 2;
        text += "f";
        for (int k = 0; k < 3; ++k) {
            const int v = vertex - 1 - int(random() % 9), n = normal - 1 - int(random() % 9);
            text += " " + std::to_string(random() % 2 ? v + 1 : v - vertex) +
                    (random() % 2 && !bNormals ? "/5" : "");
            if (bNormals) text += "//" + std::to_string(random() % 2 ? n + 1 : n - normal);
            faces.push_back(v);
            normals.push_back(bNormals ? n : -1);
        }
        text += random() % 2 ? "\n" : " \\\n\n";
    }
    const ReadObj_st obj(text);
    EXPECT_EQ(places, List(obj.mMesh.mvVertex));
    EXPECT_EQ(faces, obj.Faces());
    ASSERT_EQ(normals.size(), obj.mMesh.mvFaceNormal.size());
    for (size_t i = 0; i < normals.size(); ++i)
        ASSERT_TRUE(normals[i] < 0 ? obj.mMesh.mvFaceNormal[i] >= normal
                                   : obj.mMesh.mvFaceNormal[i] == normals[i])
            << i;
}

TEST(ObjReader, MadeNormalsDontDependOnThreads) {
    // Enough triangles for several threads; the same ones, few at a time, on one.
    std::mt19937 random(3);
    PovObjectMesh_cls mesh;
    constexpr int kVertices = 30000;
    for (int i = 0; i < 3 * kVertices; ++i)
        mesh.mvVertex.push_back(std::uniform_real_distribution<float>(-1, 1)(random));
    for (int i = 0; i < 3 * 700000; ++i)
        mesh.mvFaceVertex.push_back(int(random() % kVertices));
    // Some are nothing, some too large or none for a number.
    mesh.mvVertex[3] = mesh.mvVertex[6], mesh.mvVertex[4] = mesh.mvVertex[7],
    mesh.mvVertex[5] = mesh.mvVertex[8];
    mesh.mvVertex[9] = 3e38f, mesh.mvVertex[12] = -3e38f;
    mesh.mvVertex[15] = std::numeric_limits<float>::quiet_NaN();
    for (size_t i = 18; i < 27; ++i)
        mesh.mvVertex[i] *= 1e-25f;
    const int odd[] = {0, 1, 2, 6, 7, 8, 3, 4, 9};
    std::copy(std::begin(odd), std::end(odd), mesh.mvFaceVertex.end() - 9);
    mesh.ConstructNormalVectors();
    Floats sum(3 * kVertices, 0.0f);
    for (size_t i = 0; i < mesh.mvFaceVertex.size(); i += 3) {
        double edge[2][3], n[3];
        for (size_t k = 0; k < 2; ++k)
            for (size_t axis = 0; axis < 3; ++axis)
                edge[k][axis] = double(mesh.mvVertex[3 * size_t(mesh.mvFaceVertex[i + k + 1]) + axis] -
                                       mesh.mvVertex[3 * size_t(mesh.mvFaceVertex[i + k]) + axis]);
        for (size_t x = 0; x < 3; ++x)
            n[x] = edge[0][(x + 1) % 3] * edge[1][(x + 2) % 3] - edge[0][(x + 2) % 3] * edge[1][(x + 1) % 3];
        const double length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
        if (!(length > 0.0) || !std::isfinite(length)) continue;
        for (size_t k = 0; k < 3; ++k)
            for (size_t x = 0; x < 3; ++x)
                sum[3 * size_t(mesh.mvFaceVertex[i + k]) + x] += float(n[x] * (1.0 / length));
    }
    for (size_t v = 0; v < kVertices; ++v) {
        const double x = double(sum[3 * v]), y = double(sum[3 * v + 1]), z = double(sum[3 * v + 2]);
        const double scale = 1.0 / std::sqrt(x * x + y * y + z * z);
        float unit[3] = {float(x * scale), float(y * scale), float(z * scale)};
        if (!std::isfinite(scale)) unit[0] = unit[1] = 0.0f, unit[2] = 1.0f;
        ASSERT_EQ(std::memcmp(unit, &mesh.mvNormal[3 * v], sizeof unit), 0) << v;
    }
    MeshFloats narrow;
    MakeVertexNormals(mesh.mvFaceVertex, mesh.mvVertex, &narrow, false);
    EXPECT_EQ(List(narrow), List(mesh.mvNormal));
    // Corners that aren't there, and the last vertex, behind which nothing is.
    PovObjectMesh_cls few;
    const float places[] = {0, 0, 0, 2, 0, 0, 0, 3, 0};
    const int faces[] = {0, 1, 2, 0, 1, -1, 0, 2, 3};
    few.mvVertex.assign(std::begin(places), std::end(places));
    few.mvFaceVertex.assign(std::begin(faces), std::end(faces));
    few.ConstructNormalVectors();
    EXPECT_EQ(List(few.mvNormal), (Floats{0, 0, 1, 0, 0, 1, 0, 0, 1}));
}

namespace {
/// Mostly the forms that are read whole registers at a time, and what is almost of them.
std::string MakeLines(unsigned seed, int lines) {
    std::mt19937 random(seed);
    const auto pick = [&random](const std::vector<const char*>& from) {
        return from[random() % from.size()];
    };
    const auto digits = [&random](size_t most) {
        std::string text;
        for (size_t k = random() % (most + 1); k > 0; --k)
            text += char('0' + random() % 10);
        return text;
    };
    std::string text;
    for (int i = 0; i < lines; ++i) {
        const bool bOdd = random() % 8 == 0;
        const std::string kind = pick({"v", "v", "vn", "f", "f", "f"});
        std::string line = kind + (bOdd ? pick({"  ", "\t", " "}) : " ");
        const std::string form = pick({"", "", "/", "//", "/7/"});
        for (int k = 0, n = bOdd ? int(random() % 6) : 3; k < n; ++k) {
            if (k > 0) line += bOdd ? pick({"  ", "\t", " ", " \\\n"}) : " ";
            if (kind == "f") {
                line += (bOdd ? pick({"-", "+", "0", ""}) : "") + std::to_string(1 + random() % 300) + form;
                if (form.size() > 1 || random() % 4 == 0) line += digits(bOdd ? 9 : 2);
            } else {
                line += pick({"-", "", "", bOdd ? "+" : "-"}) + digits(bOdd ? 12 : 3) +
                        pick({".", ".", bOdd ? "" : "."}) + digits(bOdd ? 16 : 7) +
                        (bOdd ? pick({"", "e3", ".", "x", "-"}) : "");
            }
        }
        text += line + (bOdd ? pick({" \n", "\r\n", "\n", "#\n", "\n\n"}) : "\n");
    }
    return text;
}
} // namespace

TEST(ObjChunk, WideRegistersChangeNothing) {
    size_t floats = 0, faces = 0, bad = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        const MeshText_st text = MakeMeshText(MakeLines(seed, int(seed)));
        ObjChunk_cls wide, narrow;
        narrow.mbWide = false;
        wide.Parse(text.Begin(), text.End() + 1);
        narrow.Parse(text.Begin(), text.End() + 1);
        const auto same = [seed](const auto& a, const auto& b) {
            ASSERT_EQ(a.GetNumber(), b.GetNumber()) << seed;
            if (a.IsEmpty()) return;
            EXPECT_EQ(std::memcmp(a.Data(), b.Data(), a.GetNumber() * sizeof *a.Data()), 0) << seed;
        };
        same(wide.mVertex, narrow.mVertex);
        same(wide.mNormal, narrow.mNormal);
        same(wide.mFaceVertex, narrow.mFaceVertex);
        same(wide.mFaceNormal, narrow.mFaceNormal);
        same(wide.mBackVertex, narrow.mBackVertex);
        same(wide.mBackNormal, narrow.mBackNormal);
        EXPECT_EQ(wide.mFaces, narrow.mFaces) << seed;
        EXPECT_EQ(wide.mBadFaces, narrow.mBadFaces) << seed;
        EXPECT_EQ(wide.mBadPlaces, narrow.mBadPlaces) << seed;
        floats += wide.mVertex.GetNumber() + wide.mNormal.GetNumber();
        faces += wide.mFaceVertex.GetNumber() / 3;
        bad += wide.mBadFaces + wide.mBadPlaces;
    }
    EXPECT_GT(floats, 10000u);
    EXPECT_GT(faces, 10000u);
    EXPECT_GT(bad, 500u);
}
