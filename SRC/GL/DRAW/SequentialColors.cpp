#include "GL/DRAW/SequentialColors.h"

#include <algorithm>

#include "GL/DRAW/ParticleChecks.h"

// Colours of points and billboards come from the snapshot, "AlphaFactro=" worked in.
void TakeColor(KeptLook_st& kept, const SnapData_cls& snap, const ArrayAndIndex_cls& entry, unsigned type,
               const ClassLook_st& look, float radius, float stepping) {
    const bool bByRadius = look.drawType == DRAW_BILLBOARD && look.bAlphaByRadius;
    if (type == kept.type && look.bConstantColor && !bByRadius && !kept.bFaded) return;
    const float* pColor = snap.mpColor[entry.mIndex];
    std::copy_n(pColor, 4, kept.color);
    if (bByRadius) kept.color[3] = AlphaByRadius(pColor[3], radius, 1.0f, look.alphaMax);
    kept.color[3] *= entry.mAlpha * stepping;
    kept.type = type;
}

void TakeMaterial(KeptLook_st& kept, const ArrayAndIndex_cls& entry, unsigned type, const ClassLook_st& look,
                  float radius, float stepping) {
    if (type == kept.type && look.spheres.IsConstant() && !look.bAlphaByRadius && !kept.bFaded) return;
    look.spheres.Get(entry.mIndex, kept.material);
    const float factor = entry.mAlpha * stepping;
    kept.material.ChangeAlpha([&](float alpha) {
        const float own = look.bAlphaByRadius ? AlphaByRadius(alpha, radius, look.alphaBase, look.alphaMax)
                                              : alpha * look.alphaFactor;
        return std::min(own * factor, 1.0f);
    });
    kept.type = type;
}
