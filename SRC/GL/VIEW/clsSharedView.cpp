#include "GL/VIEW/clsSharedView.h"

#include <algorithm>
#include <cmath>

#include <wx/dc.h>
#include <wx/intl.h>

#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLTexture.h"
#include "GL/BASE/clsNavigators.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/VIEW/clsAnaglyph.h"
#include "GL/VIEW/clsDistortion.h"
#include "GL/VIEW/clsDrawClrLegend.h"
#include "GL/VIEW/clsDrawTimeIndex.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsFishEye.h"

const int SharedView_cls::msAFBOSize[5] = {256, 512, 1024, 2048, 4096};

namespace {

constexpr int kGridSize = 1024; // pixels of the dome's grid texture
constexpr int kCircles = 9;
constexpr int kSides = 72;
constexpr int kSpokes = 24;

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

SharedView_cls::SharedView_cls(Overlay_cls* pOverlay, Exposure_cls* pExposure, Information_cls* pInformation)
    : mspCClrCurveBG(std::make_unique<ColorCurve_cls>("BGColor", _("Background"), "0 0 0 0")),
      mspCClrCurveOut(std::make_unique<ColorCurve_cls>("OutColor", _("Around the picture"), "0 0 0 0")),
      mspCClrCurveTag(std::make_unique<ColorCurve_cls>("TagColor", _("Tags"), "1 1 1 1")),
      mspCDrawTimeIndex(std::make_unique<DrawTimeIndex_cls>(pOverlay)),
      mspCDrawClrLegend(std::make_unique<DrawClrLegend_cls>(pOverlay)),
      mspCFishEyeCtrl(std::make_unique<FishEye_cls>()), mspCDistortion(std::make_unique<Distortion_cls>()),
      mspCAnaglyph(std::make_unique<Anaglyph_cls>()), mspCExposureLink(pExposure),
      mspCInformationLink(pInformation) {
    msCConfListStatic.Add(&msCFBOSizeIndex, "FBOBufferSize=", "3");
    msCConfListStatic.Add(&msCTagFontIndex, "TagFontIndex=", "4");
    msCConfListStatic.Add(&msCLineWidth, "LineWidth=", "5");
    mspCDistortion->ReadWavefrontObject(FindRuntimeFile("Resource/distortion.obj"));
}

// What draws the particles was made with the first view's context, too.
SharedView_cls::~SharedView_cls() {
    Navigators_cls::DestructStaticMembers();
    GLAttribute_cls::DestructStaticMembers();
}

wxString SharedView_cls::SerializeStaticMember() {
    return msCConfListStatic.SerializeAll() + mspCClrCurveBG->Serialize() + mspCClrCurveOut->Serialize() +
           mspCClrCurveTag->Serialize();
}

void SharedView_cls::ReadStrLineStaticMember(std::wistream& stream, const wxString& line) {
    msCConfListStatic.ReadStrLineAll(line);
    for (ColorCurve_cls* pCurve : {mspCClrCurveBG.get(), mspCClrCurveOut.get(), mspCClrCurveTag.get()})
        pCurve->ReadStrLine(stream, line);
}

int SharedView_cls::GetFBOSize() const { return msAFBOSize[std::min(msCFBOSizeIndex.mValue, 4u)]; }

void SharedView_cls::InitializeGL() {
    if (mspCExposureLink) mspCExposureLink->Initialize();
    if (mspCMask) return;
    const GLAttribScope_cls attributes;
    mspCMask = std::make_unique<GLTexture_cls>();
    mspCMask->LoadImage(FindRuntimeFile("Resource/DefaultMask.png"), true);
    Navigators_cls::InitializeStaticMembers();
}

const GLTexture_cls* SharedView_cls::GetFisheyeGrid() {
    if (mspCMask && !mFisheyeGrid) {
        const GLAttribScope_cls attributes;
        mFisheyeGrid = std::make_unique<GLTexture_cls>();
        MakeFisheyeGridTexture(mFisheyeGrid.get());
    }
    return mFisheyeGrid.get();
}

void SharedView_cls::SetGLBGColor(int which, const std::optional<float>& plainGrey) {
    if (plainGrey) {
        glClearColor(*plainGrey, *plainGrey, *plainGrey, *plainGrey);
        return;
    }
    float color[4];
    (which == 0 ? mspCClrCurveBG : mspCClrCurveOut)->GetColor4fScaled(color, 0.0f);
    glClearColor(color[0], color[1], color[2], color[3]);
}
