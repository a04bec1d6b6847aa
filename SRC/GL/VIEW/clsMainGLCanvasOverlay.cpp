// What is written on top of the picture.
#include "GL/VIEW/clsMainGLCanvas.h"

#include "APP/clsFrameMain.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsDrawClrLegend.h"
#include "GL/VIEW/clsDrawTimeIndex.h"
#include "PDATA/clsPDataSequence.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr double kTimeUnset = -9999.0;
constexpr unsigned kSphere = 2; // draw type

} // namespace

bool MainGLCanvas_cls::HasOverlays() const {
    return mspCDrawTimeIndex->IsShown() || mspCDrawClrLegend->IsShown();
}

void MainGLCanvas_cls::DrawOverlays(int w, int h, bool bToImage) {
    const PDataSequence_cls& sequence = *mpCFrame->GetPCActiveFileSequence();
    const auto target = bToImage ? OverlayBase_cls::Target::Buffer : OverlayBase_cls::Target::Window;
    const double time = sequence.GetTime(mMoment.dataFrame);
    mspCDrawTimeIndex->DrawTimeInfo(time == kTimeUnset ? time : time + mMoment.dt, w, h, target);
    if (sequence.GetFilename(mMoment.dataFrame).empty()) return; // no data, no colours of theirs
    const ColorCurve_cls* curves[GLSequence_cls::kAttributeNumber];
    for (int i = 0; i < GLSequence_cls::kAttributeNumber; ++i) {
        const GLAttribute_cls& attribute = *GLSequence_cls::Of(sequence).mpCGLAttribute[i];
        curves[i] = attribute.mDrawType.mValue == kSphere ? &attribute.mAmbient : &attribute.mColor;
    }
    mspCDrawClrLegend->DrawClrLegend(curves, w, h, target);
    CheckGLErrors("overlays");
}
