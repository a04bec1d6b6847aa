#include "GL/BASE/clsDolly.h"

#include <algorithm>
#include <cmath>

#include "GL/BASE/MouseSpeed.h"
#include "GL/BASE/clsMouseNormalized.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/BASE/clsPreference.h"

namespace {

// Scales within what a float holds, so that zooming back is always possible.
void Scale(float* pScale, double factor) {
    const double scale = *pScale * std::max(MouseSpeed::kLeastZoom, factor);
    if (std::isnormal(static_cast<float>(scale))) *pScale = static_cast<float>(scale);
}

} // namespace

void Dolly_cls::SetParameter(double sensitivity, const MouseNormalized_cls* pMouse, wxSize sizeInPixels,
                             int displayMode) {
    mSensitivity = sensitivity;
    mpCMouse = pMouse;
    mAspectRatio = static_cast<double>(std::max(sizeInPixels.GetWidth(), 1)) /
                   static_cast<double>(std::max(sizeInPixels.GetHeight(), 1));
    mDisplayMode = displayMode;
}

bool Dolly_cls::IsMoved() const {
    return mpCMouse && (mpCMouse->mCurX != mpCMouse->mPrevX || mpCMouse->mCurY != mpCMouse->mPrevY);
}

bool Dolly_cls::Gyration(PositionAndDirection_cls* pCamera) {
    if (!IsMoved()) return false;
    MouseNormalized_cls mouse = *mpCMouse;
    if (mpCPreference->mCGyrationInvert.mValue) mouse.Invert();
    if (IsAxisView()) {
        pCamera->SetSensitivity(mSensitivity * pCamera->GetProjectedDistanceToAnc());
        pCamera->SetAspectRatio(mAspectRatio);
        pCamera->Translate(mouse.mCurX - mouse.mPrevX, mouse.mCurY - mouse.mPrevY, 4, nullptr);
    } else {
        pCamera->SetSensitivity(mSensitivity);
        pCamera->TrackBall(mouse.mPrevX, mouse.mPrevY, mouse.mCurX, mouse.mCurY);
    }
    return true;
}

bool Dolly_cls::Zoom(PositionAndDirection_cls* pCamera, float* pOrthoScale) {
    if (!IsMoved()) return false;
    const double sign = mpCPreference->mCZoomInvert.mValue ? -1.0 : 1.0;
    const double dx = sign * (mpCMouse->mCurX - mpCMouse->mPrevX);
    const double dy = sign * (mpCMouse->mCurY - mpCMouse->mPrevY);
    pCamera->SetSensitivity(mSensitivity);
    if (IsAxisView())
        Scale(pOrthoScale, 1.0 + (dy - MouseSpeed::kSideways * dx) * mSensitivity);
    else
        pCamera->Zoom(dx, dy);
    return true;
}

bool Dolly_cls::MoveCenter(PositionAndDirection_cls* pCamera, Position_cls* pAnchor) {
    if (!IsMoved()) return false;
    const double dx = mpCMouse->mCurX - mpCMouse->mPrevX;
    const double dy = mpCMouse->mCurY - mpCMouse->mPrevY;
    pCamera->SetSensitivity(MouseSpeed::kCentre * pCamera->GetProjectedDistanceToAnc());
    pCamera->SetAspectRatio(mAspectRatio);
    PositionAndDirection_cls anchor = *pCamera;
    anchor.Set(pAnchor->mPos);
    pCamera->Translate(dx, dy, 4, nullptr);
    anchor.Translate(dx, dy, 4, nullptr);
    pAnchor->Set(anchor.mPos);
    return true;
}

bool Dolly_cls::ZoomWheel(PositionAndDirection_cls* pCamera, double steps, float* pOrthoScale) {
    if (steps == 0.0) return false;
    if (IsAxisView()) {
        Scale(pOrthoScale, steps * MouseSpeed::kWheelStep + 1.0);
    } else {
        pCamera->SetSensitivity(1.0);
        pCamera->Zoom(0.0, steps * MouseSpeed::kWheelStep);
    }
    return true;
}
