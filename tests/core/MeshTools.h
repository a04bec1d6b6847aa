// What the tests of meshes share.
#pragma once

#include <string>
#include <vector>

#include "MESH/MeshFile.h"
#include "MESH/ObjReader.h"
#include "MESH/clsPovObjectMesh.h"

inline std::vector<int> List(const MeshInts& ints) { return {ints.begin(), ints.end()}; }
inline std::vector<float> List(const MeshFloats& floats) { return {floats.begin(), floats.end()}; }

/// The mesh of a text, and what is to be known of it.
struct ReadObj_st {
    explicit ReadObj_st(const std::string& bytes) {
        const MeshText_st text = MakeMeshText(bytes);
        MeshSource_cls source(text);
        mReason = ReadObj(source, &mMesh);
    }
    std::vector<int> Faces() const { return List(mMesh.mvFaceVertex); }
    PovObjectMesh_cls mMesh;
    wxString mReason;
};
