// What a view shows under a point of its window, and where it shows a point of the scene.
#pragma once

#include <vector>

#include <wx/gdicmn.h>

#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsHitTest.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/VIEW/clsViewContext.h"
#include "SCENE/clsMoveItem.h"
#include "SCENE/clsStereoGram.h"

class SceneObj_cls;
class ViewScene_cls;
struct PickRay_st;

/// By the picture that is on the screen, whatever is being read or drawn meanwhile. Places of the window are
/// pixels from its upper left corner.
class ViewPick_cls {
public:
    ViewPick_cls(const ViewContext_st& context, ViewScene_cls& scene) : mContext(context), mScene(scene) {}

    /// Keep what the paint has drawn by: the camera of the picture, its projection with `angle` degrees, the
    /// window's pixels and how many of them a unit of the screen is.
    void GetGLMatrixInfo(const PositionAndDirection_cls& camera, double angle, wxSize window, double scale);

    /// Everything within the pick region around a place. Nothing where no items are shown, before the first
    /// picture, and in a picture that is warped for a projector.
    HitTest_cls Pick(wxPoint place) const;
    /// Where a point of the scene is, in half windows, y upward; false where it is behind the eye.
    bool Project(const double place[3], double out[2]) const;
    /// How each eye whose picture is at a place sees what lies there. None in a picture that is warped for a
    /// projector, nor where no particles were drawn.
    std::vector<PickRay_st> GetRays(wxPoint place) const;
    /// Units of the screen that a pixel of the off-screen buffer is as wide as, in the middle of the picture.
    double GetPixelsOfBuffer() const;
    /// Parts of the window that the picture takes which the last pick was in: halves, where two eyes share
    /// it.
    void GetPart(double out[2]) const;
    /// For drags of the selected item.
    MoveItem_cls::View_st GetView(bool bSnap) const;
    /// The item of a pick's name; null: none.
    SceneObj_cls* FindObject(int name) const;

    static int msHitObject; ///< names of what the last click in any view found, -1 nothing
    static int msHitSub;

    /// Units of the screen that are as wide as a projection, seen in its middle.
    static double GetPixelsAcross(int multiPanelMode, double angle, wxSize window, double scale);

private:
    /// A picture of the last paint.
    struct Eye_st {
        PositionAndDirection_cls mCamera;
        StereoGram_cls::Part_st mPart; ///< of the window
    };

    void FollowCamera() const;
    bool HasParts() const;
    PositionAndDirection_cls TakeEyeAt(double* pX, double* pY) const;
    void TakeEyes();
    bool MakeRay(const Eye_st& eye, wxPoint place, PickRay_st* pRay) const;
    void SetFlatRay(const PositionAndDirection_cls& camera, const double mouse[2], PickRay_st* pRay) const;
    void SetWideRay(const PositionAndDirection_cls& camera, const double mouse[2], PickRay_st* pRay) const;
    bool Project(const PositionAndDirection_cls& camera, const double place[3], double out[2]) const;
    PositionAndDirection_cls AimAt(const PositionAndDirection_cls& camera, const double mouse[2]) const;
    HitTest_cls MakeHitTest(wxPoint place, PickRegion_st* pRegion) const;

    ViewContext_st mContext;
    ViewScene_cls& mScene;
    PositionAndDirection_cls mCamera;
    GLPerspective_cls mPerspective;
    wxSize mWindow;      ///< empty before the first picture
    int mMode = 0;       ///< of the faces
    double mScale = 1.0; ///< pixels a unit of the screen
    bool mbWarped = false;
    bool mbData = false; ///< particles were drawn
    int mBufferSize = 2048;
    std::vector<Eye_st> mEyes;
    mutable size_t mEye = 0; ///< of the last place that was asked for
};
