#include "APP/ColorCurveLinks.h"

#include <algorithm>
#include <cstring>

#include <wx/app.h>
#include <wx/progdlg.h>
#include <wx/utils.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COMMON/Globals.h"
#include "COMMON/MsgBox.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/clsSharedView.h"
#include "PDATA/ParticleScalars.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsDialogEXKey.h"

namespace {

constexpr int kPollMillis = 10;
constexpr int kPatience = 3; // times that a snapshot may be evicted before it was looked at

GLSequence_cls& GetDrawing(Main_cls& hub) {
    return GLSequence_cls::Of(*hub.mpCPDataSeqCtrl->GetPCActiveFileSequence());
}

/// The attribute that a curve belongs to, null for colours of other things.
const GLAttribute_cls* FindAttribute(Main_cls& hub, const ColorCurve_cls& curve) {
    for (const GLAttribute_cls* pAttribute : GetDrawing(hub).mpCGLAttribute)
        for (const ColorCurve_cls* pCurve :
             {&pAttribute->mColor, &pAttribute->mAmbient, &pAttribute->mDiffuse, &pAttribute->mSpecular})
            if (pCurve == &curve) return pAttribute;
    return nullptr;
}

/// The particles that an attribute colours.
int ClassOf(Main_cls& hub, const GLAttribute_cls& attribute) {
    const bool bOneForAll = !hub.mpCDrawOption->IsClassified() && attribute.mIndex == 0;
    return bOneForAll ? ParticleScalars_st::kAllClasses : attribute.mIndex;
}

std::vector<ColorCurve_cls*> CollectCurves(Main_cls& hub) {
    std::vector<ColorCurve_cls*> curves;
    for (GLAttribute_cls* pAttribute : GetDrawing(hub).mpCGLAttribute)
        for (ColorCurve_cls* pCurve :
             {&pAttribute->mColor, &pAttribute->mAmbient, &pAttribute->mDiffuse, &pAttribute->mSpecular})
            curves.push_back(pCurve);
    const SharedView_cls& views = *hub.mpCFrameMain->GetPCSharedView();
    for (const auto* pCurve : {&views.mspCClrCurveBG, &views.mspCClrCurveOut, &views.mspCClrCurveTag})
        curves.push_back(pCurve->get());
    return curves;
}

/// The snapshot on show, if nobody is writing its slopes just now.
const SnapData_cls* GetDrawn() {
    const SnapData_cls* pSnap = GLDrawData_cls::mspCSnapShot;
    return pSnap && pSnap->mbAllocated && !pSnap->mpCBlock->IsUnderInterpolation() ? pSnap : nullptr;
}

/// Extremes over the snapshots of the whole sequence, which are read as far as they aren't there.
class SequenceRange_cls {
public:
    SequenceRange_cls(Main_cls& hub, unsigned depend, int classIndex)
        : mHub(hub), mSequence(*hub.mpCPDataSeqCtrl->GetPCActiveFileSequence()), mDepend(depend),
          mClass(classIndex) {}

    bool Get(wxWindow* pParent, float* pLow, float* pHigh) {
        const int length = std::max(mSequence.GetSeqLength(), 0);
        // Views keep still: a paint would read the frame on show in between.
        const FlagScope_cls lock(GbGLLockModalDialog);
        wxProgressDialog progress(_("Fit range"), _("Reading the sequence"), std::max(length, 1), pParent,
                                  wxPD_APP_MODAL | wxPD_CAN_ABORT | wxPD_ESTIMATED_TIME | wxPD_AUTO_HIDE);
        for (int index = 0; index < length; ++index) {
            if (!LookAt(index, progress)) return false;
            mHub.mpCPDataSeqCtrl->CleanUpMemory(mHub.mpCTimeCtrl->GetRemappedIndex(-1),
                                                mHub.mpCTimeCtrl->GetDataStep());
        }
        *pLow = mLow;
        *pHigh = mHigh;
        if (!mbAny) MsgBox(_("The sequence has no particles of this attribute."), _("Fit range"));
        return mbAny;
    }

private:
    /// False when the user had enough of it.
    bool LookAt(int index, wxProgressDialog& progress) {
        PDataSnap_cls& snap = *mSequence.mpCSnap[index];
        const bool bSlopes = ParticleScalars_st::NeedsSlopes(mDepend);
        int evicted = 0;
        while (!snap.IsItReady(bSlopes)) {
            const bool bWasStarted = snap.mbLoadStarted;
            mHub.mpCPDataSeqCtrl->SetPresent(-1, 0.0, false); // views keep still: this is what is waited for
            snap.PrepareData(bSlopes, evicted >= kPatience);
            if (snap.IsItReady(bSlopes)) break;
            wxMilliSleep(kPollMillis);
            if (!progress.Update(index)) return false;
            if (bWasStarted && !snap.mbLoadStarted && ++evicted > 2 * kPatience) return true;
        }
        Take(snap);
        return progress.Update(index + 1);
    }
    void Take(const PDataSnap_cls& snap) {
        float low;
        float high;
        if (!snap.IsItLoaded() ||
            !ParticleScalars_st::Of(*snap.mpCBlock).GetRange(mDepend, mClass, &low, &high))
            return;
        mLow = mbAny ? std::min(mLow, low) : low;
        mHigh = mbAny ? std::max(mHigh, high) : high;
        mbAny = true;
    }

    Main_cls& mHub;
    PDataSequence_cls& mSequence;
    unsigned mDepend;
    int mClass;
    bool mbAny = false;
    float mLow = 0.0f;
    float mHigh = 0.0f;
};

bool GetFrameRange(unsigned depend, int classIndex, float* pLow, float* pHigh) {
    const SnapData_cls* pSnap = GetDrawn();
    if (pSnap && pSnap->GetScalars().GetRange(depend, classIndex, pLow, pHigh)) return true;
    MsgBox(_("The frame on show has no particles of this attribute."), _("Fit range"));
    return false;
}

/// Another number for other particles on show.
size_t GetStamp(const Main_cls& hub) {
    const SnapData_cls* pSnap = GetDrawn();
    if (!pSnap) return 0;
    size_t stamp = 0;
    static_assert(sizeof stamp == sizeof pSnap->mTime, "a time fits into a stamp");
    std::memcpy(&stamp, &pSnap->mTime, sizeof stamp);
    for (const size_t part :
         {reinterpret_cast<size_t>(pSnap->mpCBlock), static_cast<size_t>(pSnap->mNumber),
          static_cast<size_t>(pSnap->mStep), static_cast<size_t>(hub.mpCDrawOption->mClassify.mValue)})
        stamp = stamp * 31 + part;
    return stamp;
}

} // namespace

void LinkColorCurveCtrl(Main_cls& hub, ColorCurveCtrl_cls& ctrl) {
    ctrl.mHooks.mCurves = [&hub] { return CollectCurves(hub); };
    ctrl.mHooks.mDependLabels = ParticleScalars_st::GetLabels;
    ctrl.mHooks.mIsDriven = [&hub](const ColorCurve_cls& curve) {
        return FindAttribute(hub, curve) != nullptr;
    };
    ctrl.mHooks.mRange = [&hub, &ctrl](const ColorCurve_cls& curve, bool bSequence, float* pLow,
                                       float* pHigh) {
        const GLAttribute_cls* pAttribute = FindAttribute(hub, curve);
        if (!pAttribute) return false;
        const unsigned depend = curve.mDependType.mValue;
        const int classIndex = ClassOf(hub, *pAttribute);
        if (!bSequence) return GetFrameRange(depend, classIndex, pLow, pHigh);
        // Over the editor while it is open.
        wxWindow* pParent = ctrl.GetPCDialog();
        if (!pParent || !pParent->IsShown()) pParent = wxTheApp->GetTopWindow();
        return SequenceRange_cls(hub, depend, classIndex).Get(pParent, pLow, pHigh);
    };
    ctrl.mHooks.mHistogram = [&hub](const ColorCurve_cls& curve, int bins) -> std::vector<float> {
        const SnapData_cls* pSnap = GetDrawn();
        const GLAttribute_cls* pAttribute = FindAttribute(hub, curve);
        if (!pSnap || !pAttribute) return {};
        return pSnap->GetScalars().Count(curve.mDependType.mValue, ClassOf(hub, *pAttribute),
                                         curve.mScalingMin.mValue, curve.mScalingMax.mValue, bins);
    };
    ctrl.mHooks.mStamp = [&hub] { return GetStamp(hub); };
}
