#include "GL/VIEW/clsViewMouse.h"

#include <algorithm>

#include "COMMON/Globals.h"
#include "GL/BASE/MouseSpeed.h"
#include "GL/BASE/clsMouseNormalized.h"
#include "GL/BASE/clsNavigators.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/BASE/clsPreference.h"
#include "GL/VIEW/clsDragThinning.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewCamera.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewMenu.h"

namespace {

bool sbButtonsStale = false; // their look has changed since they were painted; there is one pointer

} // namespace

double ViewMouse_cls::msCheapMillis = 100.0;
int ViewMouse_cls::msRestMillis = 250;

ViewMouse_cls::ViewMouse_cls(MainGLCanvas_cls& canvas, ViewMenu_cls& menu, ViewPick_cls& pick,
                             ViewHost_cls& host, Preference_cls* pPreference, SharedView_cls& shared)
    : mCanvas(canvas), mMenu(menu), mHost(host), mpCPreference(pPreference), mThinning(shared.mThinning),
      mItem(canvas, pick, host, shared), mCDolly(pPreference), mCMouse(pPreference) {
    for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_LEFT_DCLICK, wxEVT_MIDDLE_DOWN,
                             wxEVT_MIDDLE_UP, wxEVT_MIDDLE_DCLICK, wxEVT_RIGHT_DOWN, wxEVT_RIGHT_UP,
                             wxEVT_RIGHT_DCLICK, wxEVT_MOTION, wxEVT_MOUSEWHEEL, wxEVT_LEAVE_WINDOW})
        mCanvas.Bind(type, &ViewMouse_cls::OnMouse, this);
    mCanvas.Bind(wxEVT_MOUSE_CAPTURE_LOST, &ViewMouse_cls::OnCaptureLost, this);
    mRest.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Rest(); });
    mHover.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        if (mItem.IsPressed()) return;
        if (sbButtonsStale) mCanvas.RefreshEX();
        sbButtonsStale = false;
        mItem.Hover(mCMouse, true);
    });
}

void ViewMouse_cls::OnMouse(wxMouseEvent& event) {
    mCMouse.SetMouseInformation(event, mCanvas.GetContentScaleFactor(), mCanvas.GetPixelSize());
    if (mItem.IsPressed() && mCMouse.IsButtonDown()) return; // one button is enough for a hand
    if (mCMouse.IsShowMenu()) {
        mMenu.Show();
        return;
    }
    const bool bOther = event.LeftIsDown() || event.MiddleIsDown() || event.RightIsDown();
    if (mItem.IsPressed() && mCMouse.IsButtonUp() && bOther) return; // not the one that holds the item
    if ((event.LeftDown() || event.LeftDClick()) && OnNavigators()) return;
    bool bChanged = false;
    if (mCMouse.IsButtonUp()) OnButtonUp();
    if (mCMouse.IsMouseDragging() && !mbLockDragging) bChanged = ProcViewOrItemDragging();
    if (mCMouse.IsButtonDown()) OnButtonDown();
    if (mCMouse.IsWheel()) {
        mItem.Release();
        bChanged = OnWheel();
    }
    if (bChanged) OnChangedByMouse();
    if (event.Moving() || event.Leaving()) OnPointer(event.Leaving());
}

void ViewMouse_cls::OnButtonUp() {
    if (mCanvas.HasCapture()) mCanvas.ReleaseMouse();
    mbLockDragging = false;
    mItem.Release();
    Rest();
}

// A press on a button that is seen chooses how items are moved; nothing is dragged from there.
bool ViewMouse_cls::OnNavigators() {
    const double scale = mCanvas.GetContentScaleFactor();
    const auto units = [scale](int pixels) { return static_cast<int>(pixels / scale); };
    if (!HasButtons() || !Navigators_cls::CheckGLButton(units(mCMouse.mCurX), units(mCMouse.mCurY),
                                                        units(mCanvas.GetPixelSize().x)))
        return false;
    mCanvas.SetFocus();
    mbLockDragging = true;
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view)
        if (MainGLCanvas_cls* pView = mHost.GetPCGLCanvas(view); pView && pView->IsShownOnScreen())
            pView->RefreshEX();
    return true;
}

// What the pointer is over; a picture that takes long isn't made anew for that before the pointer rests.
void ViewMouse_cls::OnPointer(bool bLeaving) {
    const double scale = mCanvas.GetContentScaleFactor();
    const auto units = [scale, bLeaving](int pixels) {
        return bLeaving ? -1 : static_cast<int>(pixels / scale);
    };
    const bool bButtons =
        HasButtons() && Navigators_cls::UpdateStatus(units(mCMouse.mCurX), units(mCMouse.mCurY),
                                                     units(mCanvas.GetPixelSize().x));
    sbButtonsStale |= bButtons;
    if (sbButtonsStale && (IsPaintCheap() || bLeaving)) {
        mCanvas.RefreshEX();
        sbButtonsStale = false;
    }
    mHover.Stop();
    if (bLeaving) return mItem.Leave();
    mItem.Hover(mCMouse, IsPaintCheap());
    if (!IsPaintCheap()) mHover.StartOnce(msRestMillis);
}

// What is picked and moved isn't seen without items.
bool ViewMouse_cls::HasButtons() const { return GpCurrentGLPanel == &mCanvas && mCanvas.mShowItems.mValue; }

bool ViewMouse_cls::IsPaintCheap() const { return mCanvas.GetLastPaint().mMillis < msCheapMillis; }

bool ViewMouse_cls::OnDragKey(int keycode) {
    if (!mItem.OnKey(keycode)) return false;
    if (!mItem.IsPressed()) mbLockDragging = true; // until the next press
    Thin();
    return true;
}

// From here the picture keeps up with the hand, until that rests.
void ViewMouse_cls::Thin() {
    mThinning.Begin(mpCPreference->mCThinDrags.mValue);
    mRest.StartOnce(msRestMillis);
}

void ViewMouse_cls::Rest() {
    mRest.Stop();
    mThinning.Rest();
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        MainGLCanvas_cls* pView = mHost.GetPCGLCanvas(view);
        if (!pView || !pView->GetLastPaint().mbThinned) continue;
        pView->MarkStale();
        pView->RefreshEX();
    }
}

void ViewMouse_cls::OnCaptureLost(wxMouseCaptureLostEvent&) {
    mbLockDragging = true; // until the next press
}

void ViewMouse_cls::OnButtonDown() {
    mCanvas.SetFocus();
    mbLockDragging = false;
    mHover.Stop();
    mItem.Leave();
    if (mCMouse.IsHitTest()) mItem.Pick(mCMouse);
    if (mCMouse.IsPick()) mItem.PickParticle(mCMouse);
    if (mCMouse.IsMoveItem()) mItem.Press(mCMouse);
    // The toolkit holds all keys back while the mouse is captured, and those of an item's drag count. A
    // pressed button keeps the pointer by itself.
    if (mItem.IsPressed()) {
        mCanvas.SetThisToBeActiveGL();
    } else if (!mCanvas.HasCapture()) {
        if (wxWindow* pOther = wxWindow::GetCapture()) pOther->ReleaseMouse();
        mCanvas.CaptureMouse();
        mCanvas.SetThisToBeActiveGL();
    }
    mCMouse.SetPreviousPosition();
    mCMouse.SetGyrationMode(mCanvas.GetPixelSize());
}

bool ViewMouse_cls::OnWheel() {
    // The toolkit sends the wheel of another view to the one with the focus.
    const double scale = mCanvas.GetContentScaleFactor();
    const wxPoint pointer =
        mCanvas.ClientToScreen(wxPoint(int(mCMouse.mCurX / scale), int(mCMouse.mCurY / scale)));
    if (!mCanvas.GetScreenRect().Contains(pointer)) {
        SetOtherCanvasToBeActiveGL(pointer);
        return false;
    }
    mCanvas.mCamera.UpdateAnc();
    mCDolly.SetParameter(MouseSpeed::kDrag, nullptr, mCanvas.GetPixelSize(), mCanvas.mDisplayMode.mValue);
    const bool bChanged = mCDolly.ZoomWheel(mCanvas.mCamera.GetPCCameraPosition(), mCMouse.mWheelSteps,
                                            &mCanvas.mGLOrthoScale.mValue);
    mCMouse.SetPreviousPosition();
    mCanvas.SetThisToBeActiveGL();
    return bChanged;
}

bool ViewMouse_cls::ProcViewOrItemDragging() {
    const wxSize size = mCanvas.GetPixelSize();
    MouseNormalized_cls mouse(mCMouse, size);
    mouse.LimitMove();
    if (mItem.IsPressed()) {
        Thin();
        const bool bMoved = mItem.Drag(mCMouse, mouse);
        mbLockDragging = !mItem.IsPressed();
        mCMouse.SetPreviousPosition();
        return bMoved;
    }
    mCanvas.mCamera.UpdateAnc();
    mCDolly.SetParameter(MouseSpeed::kDrag, &mouse, size, mCanvas.mDisplayMode.mValue);
    PositionAndDirection_cls* pCamera = mCanvas.mCamera.GetPCCameraPosition();
    bool bChanged = false;
    if (mCMouse.IsGyration() && !mCanvas.IsAlongAxis())
        bChanged = mCDolly.Gyration(pCamera);
    else if (mCMouse.IsZoom())
        bChanged = mCDolly.Zoom(pCamera, &mCanvas.mGLOrthoScale.mValue);
    else if (mCMouse.IsMoveCenter() || mCMouse.IsGyration()) {
        mItem.StretchWay(mouse);
        bChanged = MoveCenter(pCamera);
    }
    mCMouse.SetPreviousPosition();
    if (bChanged) Thin();
    return bChanged;
}

// The anchor is shared: other views go with it.
bool ViewMouse_cls::MoveCenter(PositionAndDirection_cls* pCamera) {
    double* pAnchor = mCanvas.mCamera.GetPCAnchorPosition();
    Position_cls anchor(pAnchor[0], pAnchor[1], pAnchor[2]);
    if (!mCDolly.MoveCenter(pCamera, &anchor)) return false;
    std::copy_n(anchor.mPos, 3, pAnchor);
    RefreshOthers(mCanvas.IsAlongAxis());
    return true;
}

void ViewMouse_cls::OnChangedByMouse() {
    if (GpCurrentGLPanel != &mCanvas) {
        mCanvas.SetThisToBeActiveGL();
        mCanvas.SetFocus();
    }
    mCanvas.RefreshEX();
}

void ViewMouse_cls::SetOtherCanvasToBeActiveGL(wxPoint pointer) {
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        MainGLCanvas_cls* pOther = mHost.GetPCGLCanvas(view);
        if (!pOther || pOther == &mCanvas || !pOther->IsShownOnScreen()) continue;
        if (!pOther->GetScreenRect().Contains(pointer)) continue;
        pOther->SetThisToBeActiveGL();
        pOther->SetFocus();
        return;
    }
}

void ViewMouse_cls::RefreshOthers(bool bAlongAxis) {
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        MainGLCanvas_cls* pOther = mHost.GetPCGLCanvas(view);
        if (pOther && pOther != &mCanvas && pOther->IsAlongAxis() == bAlongAxis && pOther->IsShownOnScreen())
            pOther->RefreshEX();
    }
}
