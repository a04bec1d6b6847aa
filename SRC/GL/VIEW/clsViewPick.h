// What a view shows under a point of its window, and where it shows a point of the scene.
#pragma once

#include <wx/gdicmn.h>

#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsHitTest.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/VIEW/clsViewContext.h"
#include "SCENE/clsMoveItem.h"

class SceneObj_cls;
class ViewScene_cls;

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
    /// For drags of the selected item.
    MoveItem_cls::View_st GetView(bool bSnap) const;
    /// The item of a pick's name; null: none.
    SceneObj_cls* FindObject(int name) const;

    static int msHitObject; ///< names of what the last click in any view found, -1 nothing
    static int msHitSub;

    /// Units of the screen that are as wide as a projection, seen in its middle.
    static double GetPixelsAcross(int multiPanelMode, double angle, wxSize window, double scale);

private:
    void FollowCamera() const;
    PositionAndDirection_cls AimAt(const double mouse[2]) const;
    HitTest_cls MakeHitTest(wxPoint place, PickRegion_st* pRegion) const;

    ViewContext_st mContext;
    ViewScene_cls& mScene;
    PositionAndDirection_cls mCamera;
    GLPerspective_cls mPerspective;
    wxSize mWindow;      ///< empty before the first picture
    int mMode = 0;       ///< of the faces
    double mScale = 1.0; ///< pixels a unit of the screen
    bool mbWarped = false;
};
