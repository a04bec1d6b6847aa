// A mesh of triangles that stands beside the particles, as it comes from a file.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <wx/string.h>

#include "COMMON/BigAllocator.h"

using MeshInts = std::vector<int, BigAllocator_cls<int>>;
using MeshFloats = std::vector<float, BigAllocator_cls<float>>;

class PovText_cls;
struct MeshCorners_st;

class PovObjectMesh_cls {
public:
    PovObjectMesh_cls();
    /// Is it the file of a mesh, by its extension?
    static bool IsMeshPath(const wxString& path);

    /// No triangles, and of no file.
    void ClearMesh();
    /// Read the file of a mesh, by its extension: ".obj", ".pov" (mesh2), ".stl", ".ply" or ".glb". The one
    /// that was read last isn't read again, whether that went well or not. What can't be read leaves an empty
    /// mesh, a file of another kind the old one; "NONE" and "" are no file, and empty.
    /// `pStop`: once true, the rest is left unread and the mesh empty.
    /// \return what the user should know of the file: why there is no mesh, or what is missing from it. Empty
    /// when all is in order, and when the file was not read again.
    wxString ReadMeshFromFile(const wxString& path, const std::atomic<bool>* pStop = nullptr);
    /// A normal a vertex: the mean of the unit normals of its triangles; (0, 0, 1) where that is nothing.
    void ConstructNormalVectors();

    size_t GetTriangleNumber() const { return mvFaceVertex.size() / 3; }
    size_t GetVertexNumber() const { return mvVertex.size() / 3; }
    /// Does each corner name its normal? Else a vertex has the normal of the same place.
    bool HasCornerNormals() const { return !mvFaceNormal.empty(); }
    /// Another number for every other content of any mesh, for those who keep something made of it.
    uint64_t GetContent() const { return mContent; }
    /// To be called by whoever changes the arrays by hand.
    void ChangeContent();
    /// What is drawn, with one index a corner; null when the arrays serve as they are. Made once a content,
    /// on whatever thread asks first.
    const MeshCorners_st* GetCorners();
    /// It is made again when it is asked for again.
    void DropCorners() { mpCorners.reset(); }

    /// For a scene for POV-Ray: the mesh, included or written out, and an empty union where there is none. It
    /// is declared by the name in mStrPovName, which is none of `pUsed` and added to them.
    void AppendPovInclude(std::string* pText, const PovText_cls& pov, std::set<std::string>* pUsed);

    MeshInts mvFaceVertex;     ///< places in mvVertex / 3, three a triangle; all of them stand there
    MeshInts mvFaceNormal;     ///< places in mvNormal / 3 in the same order, or empty
    MeshFloats mvVertex;       ///< x y z
    MeshFloats mvNormal;       ///< x y z, of the length that the file has
    wxString mCurrentPath;     ///< of the file that was read last
    wxString mName;            ///< that its own file declares it by, when that is a scene's
    bool mbWhole = true;       ///< nothing was wrong with that file
    bool mbStrict = false;     ///< and POV-Ray, which reads it differently, finds nothing wrong either
    std::string mStrPovName;   ///< that the last scene has it by
    long long mBufferSize = 0; ///< bytes of that file

private:
    void ClearArrays();
    bool MayBeIncluded(const std::string& file) const;

    uint64_t mContent;
    std::shared_ptr<MeshCorners_st> mpCorners;
};
