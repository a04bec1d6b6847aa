#include "GL/VIEW/clsViewOverlay.h"

#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsDrawClrLegend.h"
#include "GL/VIEW/clsDrawTimeIndex.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "PDATA/clsPDataSequence.h"

namespace {

constexpr double kTimeUnset = -9999.0;

} // namespace

bool ViewOverlay_cls::HasOverlays() const {
    return mContext.mShared.mspCDrawTimeIndex->IsShown() || mContext.mShared.mspCDrawClrLegend->IsShown();
}

void ViewOverlay_cls::DrawOverlays(int w, int h, bool bToImage) {
    const PDataSequence_cls& sequence = *mContext.mHost.GetPCActiveFileSequence();
    const auto target = bToImage ? OverlayBase_cls::Target::Buffer : OverlayBase_cls::Target::Window;
    const double time = sequence.GetTime(mContext.mMoment.dataFrame);
    mContext.mShared.mspCDrawTimeIndex->DrawTimeInfo(time == kTimeUnset ? time : time + mContext.mMoment.dt,
                                                     w, h, target);
    if (sequence.GetFilename(mContext.mMoment.dataFrame).empty()) return; // no data, no colours of theirs
    const ColorCurve_cls* curves[GLSequence_cls::kAttributeNumber];
    for (int i = 0; i < GLSequence_cls::kAttributeNumber; ++i) {
        const GLAttribute_cls& attribute = *GLSequence_cls::Of(sequence).mpCGLAttribute[i];
        curves[i] = attribute.mDrawType.mValue == DRAW_SPHERE ? &attribute.mAmbient : &attribute.mColor;
    }
    mContext.mShared.mspCDrawClrLegend->DrawClrLegend(curves, w, h, target);
    CheckGLErrors("overlays");
}
