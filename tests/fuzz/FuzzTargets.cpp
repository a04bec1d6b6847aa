#include "FuzzTargets.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "IMAGE/PictureOrigin.h"
#include "MESH/Mesh2Reader.h"
#include "MESH/MeshCorners.h"
#include "MESH/MeshFile.h"
#include "MESH/ObjReader.h"
#include "MESH/clsPovObjectMesh.h"
#include "PDATA/GrammarGuess.h"
#include "PDATA/SnapshotBody.h"
#include "PDATA/SnapshotHeader.h"
#include "PDATA/clsArrayPool.h"
#include "PDATA/clsDataLoader.h"

namespace {

/// The bytes as a file that goes at the end of the scope.
class FuzzFile_cls {
public:
    explicit FuzzFile_cls(const std::string& bytes) {
        char name[] = "/tmp/morentis_fuzz_XXXXXX";
        const int file = mkstemp(name);
        if (file < 0 || write(file, bytes.data(), bytes.size()) != ssize_t(bytes.size())) std::exit(2);
        close(file);
        mPath = name;
    }
    ~FuzzFile_cls() { unlink(mPath.c_str()); }
    FuzzFile_cls(const FuzzFile_cls&) = delete;
    FuzzFile_cls& operator=(const FuzzFile_cls&) = delete;
    wxString GetPath() const { return wxString::FromUTF8(mPath); }

private:
    std::string mPath;
};

struct Grammar_st {
    std::vector<int> mHead;
    std::vector<int> mBody;
};

// The default, one with dummies of every size, dumps with named columns, odd codes, more than 18 numbers.
const Grammar_st kGrammars[] = {
    {{0, 1}, {0, 1, 5, 6, 7, 8}},
    {{3, 1, 2, 0, 4}, {5, 7, 3, 0, 6, 4, 8}},
    {{2, 0, 2, 1, 2, 3, 2}, {6, 7, 0, 1, 8}},
    {{1}, {0, 99, -3, 0}},
    {{0, 1}, {4, 4, 0, 7}},
    {{1, 1, 0}, {6, 0, 2, 1, 8, 7}},
};
constexpr size_t kGrammarNumber = sizeof kGrammars / sizeof kGrammars[0];

void ReadBoth(const DataLoader_cls& loader, const wxString& path, size_t bytes) {
    const SnapshotHeader_st header = ReadSnapshotHeader(loader, path);
    Promise(header.mbOk || !header.mStrError.empty(), "a head that can't be used says why");
    if (!header.mbOk) return;
    Promise(header.mNumber >= 0 && size_t(header.mNumber) <= bytes, "no more particles than bytes");
    if (header.mNumber == 0) return;
    ArrayPool_cls pool(0);
    ParticleArrays_st arrays;
    if (!pool.AllocateParticles(size_t(header.mNumber), true, &arrays)) return;
    ReadSnapshotBody(MakeSnapshotBody(loader, path, header.mNumber, arrays, true));
    for (int i = 0; i < header.mNumber; ++i)
        Promise(arrays.mpType[i] <= 4, "types are 0 to 4");
    pool.FreeParticles(&arrays);
}

} // namespace

void Promise(bool bKept, const char* what) {
    if (bKept) return;
    std::fprintf(stderr, "broken promise: %s\n", what);
    std::abort();
}

void FuzzSnapshot(const std::string& bytes) {
    const FuzzFile_cls file(bytes);
    DataLoader_cls loader(nullptr);
    const size_t pick = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.back());
    const Grammar_st& grammar = kGrammars[pick % kGrammarNumber];
    loader.SetHeaderGrammer(grammar.mHead);
    loader.SetBodyGrammer(grammar.mBody);
    loader.mCItemVariableNumber.mValue = unsigned(pick % 3);
    loader.mCItemLogarithm.mValue = unsigned(pick % 2);
    for (int dataType = 0; dataType < 2; ++dataType) {
        loader.mCItemDataType.mValue = dataType;
        ReadBoth(loader, file.GetPath(), bytes.size());
    }
}

void FuzzGuess(const std::string& bytes) {
    const FuzzFile_cls file(bytes);
    DataLoader_cls present(nullptr);
    const GrammarGuess_st guess = GuessGrammar(file.GetPath(), present);
    Promise(guess.mbFound || !guess.mStrProblem.empty(), "no guess comes without a reason");
    if (!guess.mbFound) return;
    Promise(guess.mHead.size() <= 16 && guess.mBody.size() <= 16, "a guess fits the lists");
    // What was guessed must be readable.
    present.mCItemDataType.mValue = guess.mDataType;
    present.SetHeaderGrammer(guess.mHead);
    present.SetBodyGrammer(guess.mBody);
    ReadBoth(present, file.GetPath(), bytes.size());
}

void FuzzMesh(const std::string& bytes) {
    const MeshText_st text = MakeMeshText(bytes);
    for (const bool bObj : {true, false}) {
        PovObjectMesh_cls mesh;
        MeshSource_cls source(text);
        const wxString reason = bObj ? ReadObj(source, &mesh) : ReadMesh2(source, &mesh);
        const size_t corners = mesh.mvFaceVertex.size();
        Promise(corners > 0 || !reason.empty(), "no triangles without a reason");
        Promise(corners % 3 == 0, "triangles have three corners");
        if (corners == 0) continue;
        for (const int corner : mesh.mvFaceVertex)
            Promise(size_t(unsigned(corner)) < mesh.GetVertexNumber(), "a corner is a vertex");
        Promise(mesh.mvFaceNormal.empty() || mesh.mvFaceNormal.size() == corners,
                "a normal a corner or none");
        for (const int normal : mesh.mvFaceNormal)
            Promise(3 * size_t(unsigned(normal)) < mesh.mvNormal.size(), "a corner's normal is there");
        Promise(mesh.HasCornerNormals() || mesh.mvNormal.size() == mesh.mvVertex.size(), "a normal a vertex");
        if (mesh.GetCorners()) Promise(mesh.GetCorners()->mvIndex.size() == corners, "all corners are drawn");
    }
}

void FuzzPicture(const std::string& bytes) {
    const FuzzFile_cls file(bytes);
    PictureOrigin_st origin;
    wxString reason;
    const OriginFound found = ReadPictureOrigin(file.GetPath(), &origin, &reason);
    Promise((found == OriginFound::Broken) == !reason.empty(), "what is broken says why");
    Promise(found != OriginFound::Whole ||
                (!origin.mProject.empty() && origin.mProject.size() <= bytes.size() * 1100),
            "a project has a text, and no bomb goes off");
}
