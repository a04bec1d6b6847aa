#include "FILTER/clsFilterObject.h"

#include <epoxy/gl.h>

#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/FramePath.h"
#include "FILTER/FilterFrame.h"
#include "FILTER/FilterShapes.h"
#include "FILTER/clsFilterCtrl.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/clsGLAttribute.h"

FilterObjectData_cls::FilterObjectData_cls() : FilterData_cls(true, true) {
    mCConfItemList.Add(&mCObjectType, "ObjectType=", "0");
    mCConfItemList.Add(&mCImportPath, "ImportPath=", "NONE");
    static const char* const kUnit[3] = {"1 0 0", "0 1 0", "0 0 1"};
    for (int column = 0; column < 3; ++column)
        mCConfItemList.Add(&mCArrayVector[column], wxString::Format("ArrayVector%d=", column), kUnit[column]);
    mCTexture.AddTo(&mCConfItemList);
    AddColorCurve("Ambient", "0.2 0.16 0.04 1");
    AddColorCurve("Diffuse", "1 0.8 0.2 1");
    AddColorCurve("Specular", "1 0.8 0.2 1");
}

void FilterObject_cls::GLDraw(double time) const { DrawFilterFrame(*GetPCData(), time); }

// It comes back from its file with an undone step.
void FilterObject_cls::OnRemoved() { mMesh.ClearMesh(); }

void FilterObject_cls::GLDrawRealObject(double time, int lightNumber, bool bPerCopy) {
    const FilterObjectData_cls& data = *GetPCData();
    const unsigned type = data.mCObjectType.mValue;
    if (!data.mCValid.mValue || type > FilterObjectData_cls::IMPORT) return;
    if ((type == FilterObjectData_cls::IMPORT) != bPerCopy) return;
    ShaderCtrl_cls* shaders = GLAttribute_cls::mspCShaderCtrl;
    const unsigned shader = data.mCTexture.mCShaderType.mValue;
    const GLAttribScope_cls attributes;
    const GLMatrixScope_cls matrix;
    if (shaders) shaders->BeginShader(shader, lightNumber);
    SetMaterial();
    FilterPlacement_st(data, time).Multiply();
    glEnable(GL_NORMALIZE);
    if (bPerCopy)
        DrawMesh();
    else
        DrawShape();
    if (shaders) shaders->EndShader(int(shader));
}

void FilterObject_cls::SetMaterial() const {
    constexpr float kShininess = 20.0f; // the texture's own is for ray-traced pictures
    static const GLenum kNames[3] = {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR};
    for (size_t k = 0; k < 3; ++k) {
        float color[4];
        GetPCData()->mvpCColorCurve[k]->GetColor4fNormal(color, 0.0f);
        glMaterialfv(GL_FRONT_AND_BACK, kNames[k], color);
    }
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, kShininess);
}

void FilterObject_cls::DrawShape() const {
    switch (GetPCData()->mCObjectType.mValue) {
    case FilterObjectData_cls::BOX:
        DrawSolidCube();
        break;
    case FilterObjectData_cls::PLANE:
        DrawSolidSquare();
        break;
    case FilterObjectData_cls::SPHERE:
        DrawSolidSphere();
        break;
    default:
        break;
    }
}

void FilterObject_cls::Prepare(int frame) {
    FilterObjectData_cls& data = *GetPCData();
    if (!data.mCValid.mValue || data.mCObjectType.mValue != FilterObjectData_cls::IMPORT) return;
    data.mLastFrame = frame;
    const FramePath_cls path(data.mCImportPath.mStrValue, data.mStrFolder);
    const wxString file = path.GetFile(frame);
    const wxString told = mLoader.Show(file, &mMesh);
    if (!told.empty()) mpCFilterCtrl->Tell(data.mCName.mStrValue + ": " + told);
    if (!told.empty() || file != mStrShownFile) mbBrokenFile = !told.empty();
    mStrShownFile = file;
    // The film goes on as it came here: forwards or back, maybe by more than a snapshot.
    if (frame != mShownFrame) mFrameStep = mShownFrame < 0 ? 1 : frame - mShownFrame;
    mShownFrame = frame;
    if (path.HasNumber() && frame + mFrameStep >= 0) mLoader.ReadAhead(path.GetFile(frame + mFrameStep));
}

bool FilterObject_cls::HasBrokenFile() const {
    const FilterObjectData_cls& data = *GetPCData();
    return data.mCValid.mValue && data.mCObjectType.mValue == FilterObjectData_cls::IMPORT && mbBrokenFile;
}

void FilterObject_cls::DrawMesh() {
    const FilterObjectData_cls& data = *GetPCData();
    float columns[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
    for (int column = 0; column < 3; ++column)
        for (int row = 0; row < 3; ++row)
            columns[4 * column + row] = data.mCArrayVector[column].mValue[row];
    glDisable(GL_CULL_FACE);
    glMultMatrixf(columns);
    mGLMesh.Draw(mMesh);
}
