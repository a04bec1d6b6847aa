// Fits views to the particles: one on command, all of them by itself with the first picture of new data.
#pragma once

#include <array>

#include "GL/BASE/clsPositionAndDirection.h"

class CloudReach_cls;
class MainGLCanvas_cls;
class SharedView_cls;
class ViewHost_cls;
struct FitCloud_st;
struct FitPlace_st;

class ViewFitCtrl_cls {
public:
    /// Both outlive this, and the undo list's steps go before it.
    ViewFitCtrl_cls(ViewHost_cls& host, SharedView_cls& shared) : mHost(host), mShared(shared) {}
    ViewFitCtrl_cls(const ViewFitCtrl_cls&) = delete;
    ViewFitCtrl_cls& operator=(const ViewFitCtrl_cls&) = delete;

    /// Move camera and anchor of a view that has its own, so that all drawn particles of the present frame
    /// are in its picture; one step of the undo list. Nothing without particles.
    void Fit(MainGLCanvas_cls& view);

    /// Shift a view's camera so that it turns around the anchor path's place, from now on, and leave its
    /// direction and distance; one that follows the camera path looks at it from now on; that of a view along
    /// an axis comes there once. A copy of view 0 means that. One step of the undo list.
    void MoveToAnchor(MainGLCanvas_cls& view);

    /// The cameras stand as a fresh program's: whatever differs from now on is the user's.
    void NoteUntouched();
    /// The cameras are a project's: no fitting without command any more.
    void KeepCameras() { mbKept = true; }
    /// Fit all views with the next data that are drawn, unless somebody has moved a camera.
    void ExpectData();
    /// The present frame's data are there.
    void OnDataReady();

private:
    static constexpr int kViews = 5;
    struct View_st {
        PositionAndDirection_cls mFree;
        float mScale = 1.0f;
        float mNear = 0.0f;
        float mFar = 0.0f;
        bool mbPivot = false;
    };
    struct State_st {
        std::array<View_st, kViews> mView;
        double mAnchor[3] = {0, 0, 0};
        double mAnchorOrtho[3] = {0, 0, 0};
    };
    struct Job_st;

    State_st GetState() const;
    /// Set what differs between two states, and nothing else: a user may have moved other cameras meanwhile.
    void Change(const State_st& from, const State_st& to);
    static bool Differ(const View_st& a, const View_st& b);
    static bool AreEqual(const State_st& a, const State_st& b);
    bool IsTouched() const;
    FitCloud_st GetCloud() const;
    bool PlaceCloud(FitPlace_st& place) const;
    Job_st MakeJob(MainGLCanvas_cls& view, int mode, CloudReach_cls& reach) const;
    void PushChange(const State_st& before);
    void Apply(const Job_st& job, const CloudReach_cls& reach);
    bool FitAll();

    ViewHost_cls& mHost;
    SharedView_cls& mShared;
    State_st mUntouched;
    bool mbKept = false;
    bool mbExpecting = false;
};
