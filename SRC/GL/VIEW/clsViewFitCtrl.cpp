#include "GL/VIEW/clsViewFitCtrl.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "COMMON/clsMyVector.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/ViewFit.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSequence.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr double kWideAngle = 90.0;     // of a dome or panorama, what lies ahead
constexpr double kLargestAngle = 120.0; // of a flat picture
const wxSize kUsualSize(640, 480);      // of views that nobody has seen yet
constexpr double kTouch = 1e-6;         // of the distance: what paints round away is no move

FitShape_st ShapeOf(const MainGLCanvas_cls& view, bool bPerspective, bool bWide) {
    const wxSize shown = view.GetPixelSize();
    const wxSize size = bWide ? wxSize(1, 1) : view.IsShownOnScreen() ? shown : kUsualSize;
    GLPerspective_cls perspective(
        1, 1, bWide ? kWideAngle : std::min(double(view.mGLPersAngle.mValue), kLargestAngle));
    perspective.SetClipSize(size.x, size.y);
    FitShape_st shape;
    shape.mbPerspective = bPerspective;
    shape.mHalfW = bPerspective ? std::tan(MyVector::ToRadians(perspective.GetSquareAngle()) / 2.0) : 0.5;
    shape.mHalfH = shape.mHalfW * std::min(1.0, double(size.y) / size.x);
    return shape;
}

// The anchor of an orthographic view is as far from the eye as the picture is wide, and so is its depth.
void MakeDeepEnough(ViewFit_st& fit, double farPlane) {
    const double behind = fit.mFarthest - fit.mDistance;
    if (GLPerspective_cls::GetOrthoDepth(fit.mDistance, farPlane) >= fit.mFarthest) return;
    const double more = std::max(behind * 1.02 - fit.mDistance, 0.0);
    fit.mDistance += more;
    fit.mNearest += more;
    fit.mFarthest += more;
}

bool IsNear(const double* a, const double* b, double distance) {
    return MyVector::GetNormRelative<double>(a, b) <= kTouch * distance;
}

} // namespace

/// The fit of one camera of a view.
struct ViewFitCtrl_cls::Job_st {
    MainGLCanvas_cls* mpCView;
    PositionAndDirection_cls mCamera;
    bool mbAlongAxis;
    bool mbPerspective;
    ViewFitter_cls mFitter;
};

ViewFitCtrl_cls::State_st ViewFitCtrl_cls::GetState() const {
    State_st state;
    for (int i = 0; i < kViews; ++i)
        if (MainGLCanvas_cls* pView = mHost.GetPCGLCanvas(i))
            state.mView[size_t(i)] = {pView->mCamera.GetFreeCamera(), pView->mGLOrthoScale.mValue,
                                      pView->mGLDepthMin.mValue, pView->mGLDepthMax.mValue,
                                      pView->mPivotMode.mValue};
    std::copy_n(mShared.msCAnchorPos, 3, state.mAnchor);
    std::copy_n(mShared.msCAnchorPosOrtho, 3, state.mAnchorOrtho);
    return state;
}

bool ViewFitCtrl_cls::Differ(const View_st& a, const View_st& b) {
    return a.mFree.Position_cls::operator!=(b.mFree) || a.mScale != b.mScale || a.mNear != b.mNear ||
           a.mFar != b.mFar || a.mbPivot != b.mbPivot;
}

bool ViewFitCtrl_cls::AreEqual(const State_st& a, const State_st& b) {
    return std::equal(a.mView.begin(), a.mView.end(), b.mView.begin(),
                      [](const View_st& one, const View_st& other) { return !Differ(one, other); }) &&
           std::equal(a.mAnchor, a.mAnchor + 3, b.mAnchor) &&
           std::equal(a.mAnchorOrtho, a.mAnchorOrtho + 3, b.mAnchorOrtho);
}

void ViewFitCtrl_cls::Change(const State_st& from, const State_st& to) {
    for (int i = 0; i < kViews; ++i) {
        MainGLCanvas_cls* pView = mHost.GetPCGLCanvas(i);
        if (!pView) continue;
        const View_st& target = to.mView[size_t(i)];
        PositionAndDirection_cls& camera = pView->mCamera.GetFreeCamera();
        // A camera that stayed turns with the common anchor, and so back.
        if (Differ(from.mView[size_t(i)], target) || camera.Position_cls::operator==(target.mFree))
            camera = target.mFree;
        if (!Differ(from.mView[size_t(i)], target)) continue;
        pView->mGLOrthoScale.mValue = target.mScale;
        pView->mGLDepthMin.mValue = target.mNear;
        pView->mGLDepthMax.mValue = target.mFar;
        if (pView->mPivotMode.mValue == target.mbPivot) continue;
        pView->mPivotMode.mValue = target.mbPivot;
        PostMenuEvent(ID_SYNC_GL_CTRL);
    }
    if (!std::equal(from.mAnchor, from.mAnchor + 3, to.mAnchor))
        std::copy_n(to.mAnchor, 3, mShared.msCAnchorPos);
    if (!std::equal(from.mAnchorOrtho, from.mAnchorOrtho + 3, to.mAnchorOrtho))
        std::copy_n(to.mAnchorOrtho, 3, mShared.msCAnchorPosOrtho);
}

void ViewFitCtrl_cls::Fit(MainGLCanvas_cls& view) {
    if (!view.HasOwnCamera()) return;
    CloudReach_cls reach;
    const Job_st job = MakeJob(view, view.GetDisplayMode(), reach);
    if (!reach.Measure(GetCloud())) return;
    const State_st before = GetState();
    Apply(job, reach);
    PushChange(before);
}

/// A step from a state before to what is now.
void ViewFitCtrl_cls::PushChange(const State_st& before) {
    const State_st after = GetState();
    if (AreEqual(before, after)) return; // no step for what was so already
    const auto command = [this](const State_st& from, const State_st& to) {
        return new CommandCall_cls([this, from, to] { Change(from, to); }, UPDATE_GL);
    };
    GCUndoList.PushNewCommand(command(before, after), command(after, before));
    GCUndoList.ExecCurrent();
}

void ViewFitCtrl_cls::MoveToAnchor(MainGLCanvas_cls& view) {
    const double* anchor = mHost.GetPCAnchorPath()->mCCurrent.mPos;
    if (MainGLCanvas_cls* pShown = mHost.GetPCGLCanvas(0);
        view.GetDisplayMode() == DISPLAY_COPY && pShown && pShown != &view)
        return MoveToAnchor(*pShown);
    if (view.IsCameraLinked()) {
        bool* pLook = &mHost.GetPCCameraPath()->mCLookAnchor.mValue;
        if (*pLook) return;
        const auto command = [pLook](bool bLook) {
            return new CommandCall_cls([pLook, bLook] { *pLook = bLook; }, UPDATE_GL | UPDATE_CAM_CONF);
        };
        GCUndoList.PushNewCommand(command(true), command(false));
        GCUndoList.ExecCurrent();
        return;
    }
    const State_st before = GetState();
    if (view.IsAlongAxis()) {
        std::copy_n(anchor, 3, mShared.msCAnchorPosOrtho);
    } else {
        PositionAndDirection_cls& camera = view.mCamera.GetFreeCamera();
        for (int i = 0; i < 3; ++i) {
            camera.mPos[i] += anchor[i] - mShared.msCAnchorPos[i];
            mShared.msCAnchorPos[i] = anchor[i];
        }
        view.mPivotMode.mValue = true;
    }
    PushChange(before);
}

// As a paint finds the present place.
FitCloud_st ViewFitCtrl_cls::GetCloud() const {
    const TimeCtrl_cls& time = *mHost.GetPCTimeCtrl();
    const PDataSequence_cls& sequence = *mHost.GetPCActiveFileSequence();
    if (sequence.GetSeqLength() < 1) return {};
    const int frame = static_cast<int>(time.GetRemappedIndexDouble(-1, -1));
    const double step = time.GetRemappedIndex(-1) - frame + time.GetRemappedInterpStepDouble(-1, -1);
    FitCloud_st cloud =
        GLSequence_cls::Of(sequence).GetDrawnCloud(frame, sequence.GetDT(frame, step), time.GetDoubleIndex());
    if (!PlaceCloud(cloud.mPlace)) return {};
    return cloud;
}

// As the filters repeat and move the data; false where nothing is drawn of them.
bool ViewFitCtrl_cls::PlaceCloud(FitPlace_st& place) const {
    FilterLists_cls* filters = mHost.GetPCFilters();
    if (!filters) return true;
    const FilterCopy_cls* copies = filters->GetWorld().GetPCCopy();
    if (copies && copies->GetNumber() < 1) return false;
    if (copies && !mHost.MayDrawCopies(copies->GetNumber())) copies = nullptr;
    for (int axis = 0; copies && axis < 3; ++axis) {
        float vector[3];
        copies->GetVector(axis, vector);
        std::copy_n(vector, 3, place.mVector[axis]);
        const FilterCopy_cls::Cells_st cells = copies->GetCells(axis);
        place.mFirst[axis] = cells.mFirst;
        place.mLast[axis] = cells.mLast;
    }
    FilterDataBoxData_cls* box = filters->GetObject().GetPCDataBox();
    if (!box) return true;
    box->UpdateCurrentObj(mHost.GetPCTimeCtrl()->GetDoubleIndex());
    return box->GetMatrix(place.mMatrix);
}

/// Of the free camera (mode 0) or one along an axis (1 to 6), in the geometry that the view has in that mode.
ViewFitCtrl_cls::Job_st ViewFitCtrl_cls::MakeJob(MainGLCanvas_cls& view, int mode,
                                                 CloudReach_cls& reach) const {
    const bool bAxis = mode != DISPLAY_FREE;
    const int geometry = view.GetGeometry();
    const bool bGoesWithMode = geometry < ViewSettings_cls::GEOMETRY_FISHEYE && mode != view.GetDisplayMode();
    const bool bPerspective = bGoesWithMode ? !bAxis : geometry != ViewSettings_cls::GEOMETRY_ORTHOGRAPHIC;
    const bool bWide = !bAxis && geometry >= ViewSettings_cls::GEOMETRY_FISHEYE;
    PositionAndDirection_cls camera;
    if (bAxis) {
        camera.SetDirection(mode);
    } else {
        camera = view.mCamera.GetFreeCamera();
        camera.PointAt(mShared.msCAnchorPos);
    }
    return {&view, camera, bAxis, bPerspective,
            ViewFitter_cls(camera, ShapeOf(view, bPerspective, bWide), &reach)};
}

void ViewFitCtrl_cls::Apply(const Job_st& job, const CloudReach_cls& reach) {
    MainGLCanvas_cls& view = *job.mpCView;
    PositionAndDirection_cls& camera = view.mCamera.GetFreeCamera();
    const double now = job.mbAlongAxis ? double(view.mGLOrthoScale.mValue)
                                       : MyVector::GetNormRelative<double>(camera.mPos, mShared.msCAnchorPos);
    ViewFit_st fit = job.mFitter.Get(reach, now);
    if (!job.mbPerspective) {
        MakeDeepEnough(fit, double(view.mGLDepthMax.mValue));
        fit.mNearest = std::max(fit.mNearest, fit.mFarthest / 100.0); // the near plane cuts nothing here
    }
    FitDepths(fit.mNearest, fit.mFarthest, &view.mGLDepthMin.mValue, &view.mGLDepthMax.mValue);
    if (job.mbAlongAxis) {
        std::copy_n(fit.mAnchor, 3, mShared.msCAnchorPosOrtho);
        view.mGLOrthoScale.mValue = static_cast<float>(fit.mDistance);
        return;
    }
    std::copy_n(fit.mAnchor, 3, mShared.msCAnchorPos);
    static_cast<Direction_cls&>(camera) = job.mCamera;
    for (int i = 0; i < 3; ++i)
        camera.mPos[i] = fit.mAnchor[i] - camera.mFront[i] * fit.mDistance;
}

void ViewFitCtrl_cls::NoteUntouched() {
    mUntouched = GetState();
    mbKept = false;
}

bool ViewFitCtrl_cls::IsTouched() const {
    if (mbKept) return true;
    const State_st now = GetState();
    const State_st& then = mUntouched;
    for (size_t i = 0; i < kViews; ++i) {
        const PositionAndDirection_cls& a = now.mView[i].mFree;
        const PositionAndDirection_cls& b = then.mView[i].mFree;
        const double distance = MyVector::GetNormRelative<double>(b.mPos, then.mAnchor);
        if (now.mView[i].mScale != then.mView[i].mScale || !IsNear(a.mPos, b.mPos, distance) ||
            !IsNear(now.mAnchor, then.mAnchor, distance) || !IsNear(a.mUp, b.mUp, 1.0) ||
            !IsNear(now.mAnchorOrtho, then.mAnchorOrtho, double(then.mView[i].mScale)))
            return true;
    }
    return false;
}

void ViewFitCtrl_cls::ExpectData() { mbExpecting = !IsTouched(); }

void ViewFitCtrl_cls::OnDataReady() {
    if (!mbExpecting) return;
    // The first frames may be without particles; a hand may have been faster than the reader.
    if (!IsTouched() && !FitAll()) return;
    mbExpecting = false;
}

// Both cameras of each view: its mode may be changed. Along the axes the widest of the three counts where the
// view shows none of them.
bool ViewFitCtrl_cls::FitAll() {
    CloudReach_cls reach;
    std::vector<Job_st> jobs;
    for (int i = 0; i < kViews; ++i) {
        MainGLCanvas_cls* pView = mHost.GetPCGLCanvas(i);
        if (!pView) continue;
        if (pView->IsAlongAxis()) {
            jobs.push_back(MakeJob(*pView, DISPLAY_FREE, reach));
            jobs.push_back(MakeJob(*pView, pView->GetDisplayMode(), reach));
        } else {
            for (const int mode : {DISPLAY_TO_PLUS_X, DISPLAY_TO_PLUS_Y, DISPLAY_TO_PLUS_Z})
                jobs.push_back(MakeJob(*pView, mode, reach));
            jobs.push_back(MakeJob(*pView, DISPLAY_FREE, reach));
        }
    }
    if (!reach.Measure(GetCloud())) return false;
    std::array<float, kViews> widest{};
    for (const Job_st& job : jobs) {
        Apply(job, reach);
        if (!job.mbAlongAxis) continue;
        float& scale = widest[size_t(job.mpCView->mPanelIndex)];
        scale = job.mpCView->mGLOrthoScale.mValue = std::max(scale, job.mpCView->mGLOrthoScale.mValue);
    }
    NoteUntouched();
    for (int i = 0; i < kViews; ++i)
        if (MainGLCanvas_cls* pView = mHost.GetPCGLCanvas(i)) pView->MarkStale();
    return true;
}
