// Puts a solid thing beside the particles: a box, a plane, a sphere, or a mesh from a file.
#pragma once

#include <set>
#include <string>

#include "FILTER/clsFilterBase.h"
#include "FILTER/clsFilterData.h"
#include "FILTER/clsSceneObjTexture.h"
#include "GL/DRAW/clsGLMesh.h"
#include "MESH/clsMeshLoader.h"
#include "MESH/clsPovObjectMesh.h"

class PovText_cls;

class FilterObjectData_cls final : public FilterData_cls {
public:
    enum Type : unsigned { BOX = 0, PLANE = 1, SPHERE = 2, IMPORT = 3 };

    FilterObjectData_cls();
    std::vector<ConfItemSTR_cls*> GetPaths() override { return {&mCImportPath}; }
    SceneObjTexture_cls* GetTexture() override { return &mCTexture; }

    ConfItemUINT_cls mCObjectType;
    ConfItemSTR_cls mCImportPath;            ///< a pattern that gets the frame's number
    ConfItemFLOATARRAY_cls mCArrayVector[3]; ///< columns of a mesh's matrix
    SceneObjTexture_cls mCTexture;
};

/// Its colours are ambient, diffuse and specular.
class FilterObject_cls final : public FilterOf_cls<FilterObjectData_cls, FILTER_OBJECT> {
public:
    void GLDraw(MarkPainter_cls& painter, double time) const override;
    void OnRemoved() override;
    bool HasBrokenFile() const override;
    /// Once a picture, before any of its copies: the mesh of this frame.
    void Prepare(int frame);
    /// The thing itself, lit by the first `lightNumber` lights. Copies of the data repeat meshes
    /// (`bPerCopy`), and simple shapes stand there once. Needs a current OpenGL context with the camera, and
    /// the place of the copy, in the model-view matrix.
    void GLDrawRealObject(double time, int lightNumber, bool bPerCopy);

    // Of a scene for POV-Ray.
    /// A mesh's declaration (PovObjectMesh_cls::AppendPovInclude); nothing for the simple shapes.
    void AppendPovInclude(std::string* pText, const PovText_cls& pov, std::set<std::string>* pUsed);
    /// Triangles of that.
    size_t GetPovTriangles() const;
    /// The thing itself, as GLDrawRealObject tells what is repeated. `extra` is the transform of a copy,
    /// empty for none.
    std::string GetStrPovRealObject(double time, const std::string& extra, bool bPerCopy,
                                    const std::string& indent, const PovText_cls& pov) const;

private:
    bool HasPovMesh() const;
    std::string GetStrPovMatrix() const;
    void SetMaterial() const;
    void DrawShape() const;
    void DrawMesh();

    PovObjectMesh_cls mMesh;
    MeshLoader_cls mLoader;
    wxString mStrShownFile;
    bool mbBrokenFile = false;
    int mShownFrame = -1;
    int mFrameStep = 1; ///< from the frame before the one on show
    GLMesh_cls mGLMesh;
};
