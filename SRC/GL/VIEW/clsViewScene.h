// The scene of a view, drawn once for each face: particles, lights, and the items around them.
#pragma once

#include "GL/BASE/TagObject.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/VIEW/clsViewContext.h"

class FilterCopy_cls;
class FilterDataBoxData_cls;
struct StickParticles_st;

class ViewScene_cls {
public:
    explicit ViewScene_cls(const ViewContext_st& context) : mContext(context) {}

    /// All faces of the view's geometry into their buffers. Needs a current context, a placed camera and
    /// buffers that are begun (`FishEye_cls::MakeFishEyeBegin`).
    void DrawOnFBO();

private:
    void DrawFace(double gridUnit);
    void DrawOtherObjects(double gridUnit);
    void DrawCameraPath(bool bPick);
    void DrawAnchor();
    void SetLineWidth();
    void Clear();
    void DrawTags();
    void ModifyByDomeTilt(PositionAndDirection_cls* pCamera) const;

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
    void DrawFilters();
    FilterDataBoxData_cls* GetDataBox() const;
    const FilterCopy_cls* GetCopies(long long* pNumber) const;

    ViewContext_st mContext;
    unsigned long long mPrepared = 0;   ///< the particles whose sticks were made last
    Tags mVCTags;                       ///< labels of the face being drawn
    PositionAndDirection_cls mCFaceCam; ///< the camera as the face being drawn sees the scene
};
