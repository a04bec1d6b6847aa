// The scene of a view, drawn once for each face: particles, lights, and the items around them.
#pragma once

#include <memory>

#include "GL/BASE/TagObject.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/VIEW/clsViewContext.h"

class DrawOption_cls;
class FBO_cls;
class FilterCopy_cls;
class FilterDataBoxData_cls;
class MarkPainter_cls;
class SnapData_cls;
struct StickParticles_st;

class ViewScene_cls {
public:
    explicit ViewScene_cls(const ViewContext_st& context);
    ~ViewScene_cls();
    ViewScene_cls(const ViewScene_cls&) = delete;
    ViewScene_cls& operator=(const ViewScene_cls&) = delete;

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

    // clsViewSceneParticle.cpp
    const SnapData_cls* GetDrawnSnap() const;
    void DrawPicked();
    void DrawTrail();

    // clsViewSceneData.cpp
    void SetLights();
    void SetFog();
    void DrawDataMain();
    void TellPlaceless();
    void DrawDataLit();
    void DrawData();
    void DrawDataCopyLoop();
    void PrepareObjects();
    void PrepareSticks(const StickParticles_st& particles);
    void DrawSticks(const FilterCopy_cls* pCopies, long long number);
    void DrawRealObjectCopyLoop();
    FilterDataBoxData_cls* GetDataBox() const;
    const FilterCopy_cls* GetCopies(long long* pNumber) const;

    // clsViewSceneShadow.cpp
    const DrawOption_cls& GetOption() const;
    int CountShadows() const;
    void DrawShadowed();
    void AddShadowedLights();
    void DrawDataLitDiffuse(int lightIndex);
    bool DrawVolumes(int lightIndex);

    /// What the passes of a face draw.
    struct Pass_st {
        int lights = 0;                ///< that are set
        bool bAgain = false;           ///< the list of particles and sticks stand from a pass before
        bool bVolumes = false;         ///< only what spheres keep from `light`
        float light[4] = {0, 0, 1, 0}; ///< eye coordinates
    };

    ViewContext_st mContext;
    unsigned long long mPrepared = 0; ///< the particles whose sticks were made last
    Pass_st mPass;
    bool mbBlank = false;               ///< nothing was drawn since the face was cleared
    int mShadows = 0;                   ///< lights with shadows, as far as the options let them
    std::unique_ptr<FBO_cls> mpCLight;  ///< one light alone
    Tags mVCTags;                       ///< labels of the face being drawn
    PositionAndDirection_cls mCFaceCam; ///< the camera as the face being drawn sees the scene
};
