// Draws one draw-time snapshot: builds the list of the particles to draw once a paint, then hands them to
// OpenGL in batches. One object per sequence; UI thread with a current context.
#pragma once

#include <functional>
#include <vector>

#include <wx/string.h>

#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/DRAW/clsArrayAndIndex.h"

class DrawListFilter_cls;
class GLAttribute_cls;
class SnapData_cls;
class ViewScale_cls;

class GLDrawData_cls {
public:
    GLDrawData_cls();
    ~GLDrawData_cls();
    GLDrawData_cls(const GLDrawData_cls&) = delete;
    GLDrawData_cls& operator=(const GLDrawData_cls&) = delete;

    /// Camera for sorting and billboards. `pPlace` is what moves the data in its scene, 4 by 4 numbers column
    /// by column; null: nothing does.
    void SetCameraPos(const PositionAndDirection_cls& camera, const double* pPlace = nullptr);
    /// `lightCount` lights are set; `pLight` throws the shadows of a shadow pass, in eye coordinates: where
    /// it comes from and 0, or its place and 1. Null: none does.
    void SetLightSourceInfo(int lightCount, const float* pLight);

    /// The ways to draw; `face` 0 builds the list, other faces and passes use it again.
    void GLDrawPointArrayElement(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute);
    void GLDrawPointAll(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute);
    void GLDrawBillboardAll(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute);
    void GLDrawSphereAll(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute);
    void GLDrawSequential(int face, SnapData_cls* pSnap, GLAttribute_cls** ppAttribute);

    /// Only the list; returns its length.
    int ZSort(int face, SnapData_cls* pSnap, GLAttribute_cls* pAttribute);

    /// Compensation for drawing only every step-th particle: stronger and larger. The plain forms are
    /// limited (alpha term at least 0.2, radius term at most 0.8), the Unlimited ones are not.
    static double GetSteppingAlphaFactor(int step);
    static double GetSteppingRadiusFactor(int step);
    static double GetSteppingAlphaFactorUnlimited(int step);
    static double GetSteppingRadiusFactorUnlimited(int step);

    /// Corners of a quad of radius 1 around `pPos` that faces the camera's place: 12 numbers.
    void GetVertexArrayLookAtCamera(const float* pPos, float* pOut) const;
    /// Corners of the unit quad, turned by the upper 3 x 3 part of a transposed matrix: 12 numbers.
    static void MultiplyMatrixOnVertexArrayOrg(const float* pMatrix, float* pOut);

    static ArrayAndIndex_cls* mspIndexAndZ;               ///< the list of this paint
    static int msDownsizedAtFBO0;                         ///< its length
    static SnapData_cls* mspCSnapShot;                    ///< the one draw-time snapshot; owned here
    static DrawListFilter_cls* mspCFilterCtrlBooleanLink; ///< thins the list; null: nothing does
    static double msCurrentDoubleIndex;
    static int msThinning; ///< of what downsizing leaves every how many are drawn, while a hand drags; else 1
    static wxString msStrMessage; ///< lines for the view that is drawn; whoever shows them empties it
    /// The ways to draw only draw the shadows of spheres, into the stencil (ShadowStencil_cls).
    bool mbShadowPass = false;

private:
    void ZSortAtFBO0(int count, int step, const float (*pPos)[3], unsigned sortOrder, bool planeDepth);

    /// Weights between 0 and 1 may stand in the list: no colour is that of all particles.
    static bool IsFaded();
    /// Corners of a quad of radius 1 in the plane of the view; false: none can face the eye.
    bool GetFlatCorners(float* pOut) const;
    /// What is drawn was shifted, as a copy is, since the camera was set: quads turn to where the eye was.
    bool IsShifted() const;
    void DrawFaded(const SnapData_cls* pSnap, int number, float size, const float* pColor, bool bAdditive);
    /// `quality` is the coarsest; `radius` that of a particle's number, where 0 throws none.
    void DrawShadows(int number, unsigned quality, const SnapData_cls& snap,
                     const std::function<float(int)>& radius);
    using PointColor = std::function<void(const ArrayAndIndex_cls& entry, float* pColor)>;
    bool DrawPointsByProcessor(SnapData_cls* pSnap, GLAttribute_cls* pAttribute, int number,
                               const PointColor& color);
    void DrawStraight(const SnapData_cls* pSnap, int number, float size, bool bColors);

    /// Tell when an exact style can't be drawn so.
    static void CheckExact(bool bWanted, const ViewScale_cls& view);

    // The camera in data coordinates, and where nothing has moved it.
    double mCameraPos[3] = {0, 0, 0};
    double mCameraDir[3] = {0, 0, -1};
    bool mbPlaced = false;
    bool mbMirrored = false; ///< quads turn their backs
    double mPlace[16] = {};
    double mEye[3] = {0, 0, 0};
    int mLightNumber = 0;
    float mLight[4] = {0, 0, 1, 0};  ///< eye coordinates
    std::vector<unsigned> mVIndices; ///< indices of the list, as the element call wants them
    unsigned mIndicesOf = 0;         ///< msListSerial of that list
    std::vector<float> mVBatch;      ///< vertices of one batch

    static unsigned msListSerial;  ///< no two lists of a run have the same
    static bool msbListIsIdentity; ///< the list is all particles in their own order, none faded
};
