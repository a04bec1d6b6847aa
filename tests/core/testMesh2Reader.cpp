// Long mesh2 files, which are read in pieces: the same to the bit as vector by vector, whatever stands in
// them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "COMMON/clsAsciiReader.h"
#include "MESH/Mesh2Reader.h"
#include "MESH/MeshFile.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

/// The rule: between "<" and the next ">" stand three numbers, with commas in between.
template <class T>
std::vector<T> ReadOneByOne(const std::string& block, int number, T (*read)(const char**, char)) {
    std::vector<T> list;
    const char* p = block.data();
    const char* const end = p + block.size();
    for (int i = 0; i < number && AsciiReader_cls::SearchChar(&p, '<', end); ++i) {
        const char* close = ++p;
        if (!AsciiReader_cls::SearchChar(&close, '>', end)) break;
        for (int k = 0; k < 3; ++k)
            list.push_back(p <= close ? read(&p, k < 2 ? ',' : '>') : T());
        p = close;
    }
    return list;
}

class Mesh2Maker_cls {
public:
    /// `bExponents`: they have letters, by which the text is kept, and not read again.
    std::string MakeFloats(int number, bool bExponents) {
        std::string text;
        for (int i = 0; i < number; ++i) {
            text += "\t\t<";
            for (int k = 0; k < 3; ++k)
                text += MakeFloat(bExponents) + (k < 2 ? "," : i + 1 < number ? ">,\n" : ">\n");
        }
        return text;
    }
    std::string MakeInts(int number, unsigned below) {
        std::string text;
        for (int i = 0; i < number; ++i) {
            char line[64];
            std::snprintf(line, sizeof line, i % 7 ? "<%u,%u,%u>,\n" : "< %u, %u,\t%u >", Below(below),
                          Below(below), Below(below));
            text += line;
        }
        return text;
    }
    unsigned Below(unsigned limit) { return static_cast<unsigned>(mRandom() % limit); }

private:
    std::string MakeFloat(bool bExponents) {
        static constexpr const char* kForms[] = {"%.5f", "%.3f", "%.0f", "%.9f", " %f", "%+.2f", "%g", "%e"};
        const double size = std::pow(10.0, Below(9)) * 1e-4;
        char number[64];
        const double value = size * (static_cast<double>(mRandom()) / double(std::mt19937::max()) - 0.5);
        std::snprintf(number, sizeof number, kForms[Below(bExponents ? 8 : 6) * (Below(3) == 0)], value);
        return number;
    }

    std::mt19937 mRandom{17};
};

template <class T, class LIST>
void ExpectSame(const std::vector<T>& expected, const LIST& list, const std::string& what) {
    ASSERT_EQ(expected.size(), list.size()) << what;
    EXPECT_EQ(0, std::memcmp(expected.data(), list.data(), sizeof(T) * list.size())) << what;
}

TEST(Mesh2Reader, LongFilesAreReadAsShortOnes) {
    constexpr int kNumber = 60000; // several pieces a block
    Mesh2Maker_cls make;
    const std::string vertices = make.MakeFloats(kNumber, false);
    const std::string normals = make.MakeFloats(kNumber, true);
    const std::string faces = make.MakeInts(2 * kNumber, kNumber);
    // What stands in for a piece of a block somewhere: nothing, and all that isn't three numbers in a pair of
    // brackets.
    const char* const odd[] = {
        "",       ">",      "<",     "<1,2>",       "<1,2,<3,4,5>",         "<1,2,3,4>",
        "<1,,3>", "<1,2,3", "/*<*/", "<-.5,.5,5.>", "<1e5,99999999999,-1>", "<,,>",
        "<1 2 3>"};
    int turn = 0;
    for (const char* what : odd)
        for (const int told : {kNumber, kNumber - 1, kNumber / 2, 3 * kNumber}) {
            if (*what && told != kNumber && ++turn % 3 != 0) continue;
            std::string blocks[3] = {vertices, normals, faces};
            for (std::string& block : blocks)
                if (*what) block.insert(block.find('\n', make.Below(unsigned(block.size() - 200))), what);
            const std::string tellNumber = std::to_string(told), tellFaces = std::to_string(2 * told);
            const std::string text = "#declare M=mesh2{vertex_vectors{" + tellNumber + ",\n" + blocks[0] +
                                     "}normal_vectors{" + tellNumber + ",\n" + blocks[1] + "}face_indices{" +
                                     tellFaces + ",\n" + blocks[2] + "}}";
            PovObjectMesh_cls mesh;
            const MeshText_st bytes = MakeMeshText(text);
            MeshSource_cls source(bytes);
            ReadMesh2(source, &mesh);
            const std::string hint = std::string(what) + " of " + tellNumber;
            ExpectSame(ReadOneByOne<float>(blocks[0], told, AsciiReader_cls::ReadFloat), mesh.mvVertex, hint);
            const auto expected = ReadOneByOne<float>(blocks[1], told, AsciiReader_cls::ReadFloat);
            if (expected.size() == mesh.mvVertex.size()) ExpectSame(expected, mesh.mvNormal, hint);
            std::vector<int> corners = ReadOneByOne<int>(blocks[2], 2 * told, AsciiReader_cls::ReadInt), good;
            for (size_t i = 0; i < corners.size(); i += 3)
                if (std::all_of(&corners[i], &corners[i] + 3,
                                [&](int c) { return c >= 0 && size_t(c) < mesh.mvVertex.size() / 3; }))
                    good.insert(good.end(), &corners[i], &corners[i] + 3);
            ExpectSame(good, mesh.mvFaceVertex, hint);
        }
}

} // namespace
