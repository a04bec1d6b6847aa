// The scene of a view, drawn once for each face: particles, lights, and the items around them.
#pragma once

#include "GL/BASE/TagObject.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/VIEW/clsViewContext.h"

class FilterCopy_cls;
class FilterDataBoxData_cls;
class MarkPainter_cls;
struct StickParticles_st;

class ViewScene_cls {
public:
    explicit ViewScene_cls(const ViewContext_st& context) : mContext(context) {}

    /// All faces of the view's geometry into their buffers. Needs a current context, a placed camera and
    /// buffers that are begun (`FishEye_cls::MakeFishEyeBegin`).
    void DrawOnFBO();
    /// The items, in the order in which a click finds them. Needs no OpenGL context.
    void PickItems(MarkPainter_cls& painter) const;
    /// The camera as a path's dome is tilted.
    void ModifyByDomeTilt(PositionAndDirection_cls* pCamera) const;
    /// Cells of the ground grid: the power of ten that isn't below a tenth of the distance.
    static double GetGridUnit(double distance);

private:
    void DrawFace(double gridUnit);
    void DrawOtherObjects(double gridUnit);
    void DrawItems();
    void DrawCameraPath(MarkPainter_cls& painter) const;
    void DrawAnchor();
    float GetLineWidth() const;
    void SetLineWidth();
    void Clear();
    void DrawTags();

    // clsViewSceneData.cpp
    void SetLights();
    void SetFog();
    void DrawDataMain();
    void DrawDataLitDiffuse(int lightIndex);
    void DrawDataLit(bool bShadowPass);
    void DrawDataCopyLoop(bool bShadowPass);
    void PrepareObjects();
    void PrepareSticks(const StickParticles_st& particles);
    void DrawSticks(const FilterCopy_cls* pCopies, long long number);
    void DrawRealObjectCopyLoop();
    FilterDataBoxData_cls* GetDataBox() const;
    const FilterCopy_cls* GetCopies(long long* pNumber) const;

    ViewContext_st mContext;
    unsigned long long mPrepared = 0;   ///< the particles whose sticks were made last
    Tags mVCTags;                       ///< labels of the face being drawn
    PositionAndDirection_cls mCFaceCam; ///< the camera as the face being drawn sees the scene
};
