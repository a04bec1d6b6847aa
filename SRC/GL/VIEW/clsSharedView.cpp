// The faces of a view: one, or four for fisheye and panorama; and what all views share of their making.
#include "GL/VIEW/clsMainGLCanvas.h"

#include <cmath>

#include <wx/dc.h>

#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLTexture.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsFishEye.h"
#include "SCENE/clsCameraPath.h"

namespace {

constexpr int kGridSize = 1024; // pixels of the dome's grid texture
constexpr int kCircles = 9;
constexpr int kSides = 72;
constexpr int kSpokes = 24;

// Cells of the ground grid: the power of ten that isn't below a tenth of the distance.
double GetGridUnit(double distance) {
    double unit = 0.0001;
    while (distance > unit * 10.0 && unit < 1e30)
        unit *= 10.0;
    return unit;
}

wxPoint OnCircle(double radius, double turn) {
    const double middle = kGridSize / 2.0;
    return wxPoint(int(std::lround(middle + radius * std::cos(2.0 * M_PI * turn))),
                   int(std::lround(middle + radius * std::sin(2.0 * M_PI * turn))));
}

/// Circles of equal steps from the middle to the rim, and spokes: ten degrees a step on a half sphere.
void MakeFisheyeGridTexture(GLTexture_cls* pTexture) {
    wxDC* pDC = pTexture->BeginDC(kGridSize, kGridSize, true);
    pDC->SetBrush(*wxBLACK_BRUSH);
    pDC->SetPen(wxPen(*wxWHITE, 2));
    for (int circle = 0; circle < kCircles; ++circle) {
        const double share = circle == 0 ? 0.997 : double(kCircles - circle) / kCircles;
        wxPoint points[kSides];
        for (int i = 0; i < kSides; ++i)
            points[i] = OnCircle(share * kGridSize / 2.0, double(i) / kSides);
        pDC->DrawPolygon(kSides, points);
    }
    for (int spoke = 0; spoke < kSpokes; ++spoke)
        pDC->DrawLine(wxPoint(kGridSize / 2, kGridSize / 2),
                      OnCircle(kGridSize / 2.0, double(spoke) / kSpokes));
    pTexture->EndDC();
}

} // namespace

// With the first view that has a context; the others share it all.
void MainGLCanvas_cls::InitializeShared() {
    if (mspCExposureLink) mspCExposureLink->Initialize();
    if (mspCMask) return;
    const GLAttribScope_cls attributes;
    mspCMask = new GLTexture_cls;
    mspCFisheyeGrid = new GLTexture_cls;
    mspCMask->LoadImage(FindRuntimeFile("Resource/DefaultMask.png"), true);
    MakeFisheyeGridTexture(mspCFisheyeGrid);
}

void MainGLCanvas_cls::ModifyByDomeTilt(PositionAndDirection_cls* pCamera) const {
    const bool bPath = mDisplayMode.mValue == 7 || mDisplayMode.mValue == 8;
    if (!bPath || !IsFishEye()) return;
    pCamera->RotateYPR(0.0, double(GetPLinkedCameraPath()->mCFishEyeOffset.mValue), 0.0);
}

// The memory of wide views is kept while there are any: fresh memory costs a paint several times what drawing
// into old memory does.
void MainGLCanvas_cls::EndFaces() {
    const bool bKeep = IsAnyMultiPanel();
    mspCFishEyeCtrl->MakeFishEyeEnd(bKeep);
    if (!bKeep) mspCDome.reset();
}

bool MainGLCanvas_cls::IsAnyMultiPanel() const {
    for (int view = 0; view < kViewNumber; ++view) {
        const MainGLCanvas_cls* pOther = GetOther(view);
        if (pOther && pOther->IsShownOnScreen() && pOther->GetMultiPanelMode() != 0) return true;
    }
    return false;
}

void MainGLCanvas_cls::DrawOnFBO() {
    const double gridUnit = GetGridUnit(mMoment.distanceToAnchor);
    const int mode = GetMultiPanelMode();
    for (int face = 0; face < FishEye_cls::GetFaceNumber(mode); ++face) {
        mMoment.face = face;
        mCFaceCam = mCCamPos; // which the stereogram shifts for the eye
        ModifyByDomeTilt(&mCFaceCam);
        mspCFishEyeCtrl->MakeFishEyeProcessFH(face, &mCFaceCam, &mCGLPerspective, mode);
        DrawFace(gridUnit);
        mspCFishEyeCtrl->MakeFishEyeProcessLH(face);
        // Each further light with shadows adds a picture of its own here.
    }
}
