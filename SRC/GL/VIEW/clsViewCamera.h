// The cameras of a view: where its eye is at a paint, and how that follows user, path and time.
#pragma once

#include <wx/string.h>

#include "GL/BASE/clsPositionAndDirection.h"

class GLPerspective_cls;
class SharedView_cls;
class ViewHost_cls;
class ViewSettings_cls;

class ViewCamera_cls {
public:
    /// All three outlive this.
    ViewCamera_cls(ViewSettings_cls& settings, SharedView_cls& shared, const ViewHost_cls& host);

    void SetCameraToDefaultPos();
    /// The camera that the view's mode shows and that the mouse moves.
    PositionAndDirection_cls* GetPCCameraPosition();
    double* GetPCAnchorPosition(); ///< three doubles
    /// That of display mode 0, whatever the mode.
    PositionAndDirection_cls& GetFreeCamera() { return mCCamFree; }
    /// Look through the camera path (display mode 7), from where it is now.
    void LinkageConnect();
    /// Drop a user's move of the linked camera with the next paint.
    void ForceUpdateCameraPos() { mbForceUpdateCameraPos = true; }

    // The steps of a paint, in this order.
    /// Bring the paths of camera and anchor to a time.
    void EvaluatePaths(double doubleIndex);
    /// Place `mCCamPos`; the paths must have been evaluated for the current time.
    void UpdateCameraPos();
    double GetDistanceToAnchor() const;
    /// Angle, and with a path its projection. Returns what the user is to know of it, most often nothing.
    wxString SetAngleIfLinked(GLPerspective_cls* pPerspective) const;

    /// Tell the cameras the anchors that the mouse turns them around.
    void UpdateAnc();
    // Keys of the camera path from this view's camera and anchor; one step each. Time -1: now.
    void SetKeyPos(double time = -1.0);
    void SetKeyPosRot(double time = -1.0);
    void SetKeyAnc(double time = -1.0);

    PositionAndDirection_cls mCCamPos; ///< the camera of the current paint

private:
    void ModifyOrthoCamera();
    void FollowPath();
    void KeepFilmStart();
    bool HasPathMoved();
    const PositionAndDirection_cls& GetModeCamera();

    ViewSettings_cls& mSettings;
    SharedView_cls& mShared;
    const ViewHost_cls& mHost;
    PositionAndDirection_cls mCCamFree;
    /// How it looked as the film began that is being written; each picture turns to the anchor from there, so
    /// that a part of a film is the same as in the whole.
    Direction_cls mFilmStart;
    bool mbFilm = false;
    PositionAndDirection_cls mCCamLinked;
    PositionAndDirection_cls mCCamOrtho;
    bool mbForceUpdateCameraPos = false;
    // What mCCamLinked was last taken from; until any of it changes, a user's move of it stands.
    PositionAndDirection_cls mCCamPath;
    int mPathFrame = -1;
    int mPathStep = -1;
    double mPathBlurFactor = -1.0;
};
