#include "APP/GuessLooks.h"

#include "APP/clsMain.h"
#include "COMMON/UpdateBits.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "PARAM/clsCommandSetValue.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "PDATA/GuessApply.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"

namespace {

constexpr int kLooks = UPDATE_ATTRIB | UPDATE_DRAW_OPTIONS | UPDATE_SNAPDATA | UPDATE_GL;
constexpr float kShade = 0.2f; // of the ambient colour, as at the start

// One colour for all particles of the attribute, the alpha as it was.
void SetConstant(ColorCurve_cls* pCurve, const std::array<float, 3>& color, float factor) {
    const ColorSettings_st before = pCurve->GetSettings();
    ColorSettings_st after = before;
    after.mbUseCurve = false;
    for (size_t c = 0; c < color.size(); ++c)
        after.mConstant[c] = color[c] * factor;
    if (!(after == before)) pCurve->SetSettingsCommand(after, before);
}

void ApplyLooks(Main_cls* pMain, const GuessLooks_st& looks) {
    if (looks.mClassify) PushSetValue(&pMain->mpCDrawOption->mClassify.mValue, *looks.mClassify, kLooks);
    GLSequence_cls& drawing = GLSequence_cls::Of(*pMain->mpCPDataSeqCtrl->GetPCActiveFileSequence());
    for (size_t k = 0; k < kGuessColors.size(); ++k) {
        GLAttribute_cls* attribute = drawing.mpCGLAttribute[k];
        if (looks.mbColors) {
            for (ColorCurve_cls* curve : {&attribute->mColor, &attribute->mDiffuse, &attribute->mSpecular})
                SetConstant(curve, kGuessColors[k], 1.0f);
            SetConstant(&attribute->mAmbient, kGuessColors[k], kShade);
        }
        if (looks.mRadius) {
            PushSetValue(&attribute->mRadiusType.mValue, 1u, kLooks);
            PushSetValue(&attribute->mRadiusFactorForConst.mValue, *looks.mRadius, kLooks);
        }
    }
}

} // namespace

void LinkGuess(Main_cls* pMain) {
    GGuessHooks.mApplyLooks = [pMain](const GuessLooks_st& looks) { ApplyLooks(pMain, looks); };
    GGuessHooks.mShowValues = [pMain] {
        if (pMain->mpCDataLoader->mpCGUI) pMain->mpCDataLoader->mpCGUI->UpdateValues();
        pMain->mpCPeriodicBoundary->UpdateItems(true);
    };
}

void UnlinkGuess() { GGuessHooks = GuessHooks_st(); }
