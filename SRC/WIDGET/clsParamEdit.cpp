#include "WIDGET/clsParamEdit.h"

#include <utility>

#include "COMMON/UpdateBits.h"
#include "PARAM/clsParamGroup.h"

ParamEdit_cls::ParamEdit_cls(ParamGroup_cls* pGroup) : mpCGroup(pGroup) {}

ParamEdit_cls::~ParamEdit_cls() = default;

double ParamEdit_cls::GetValue(int dimension) const {
    return mpCGroup->mVParams[size_t(dimension)].Evaluate(Parameters_cls::msCurrentDoubleIndex,
                                                          Parameters_cls::msResolution);
}

void ParamEdit_cls::SetKeys(int dimension, double value) {
    std::vector<double> values;
    for (int i = 0; i < mpCGroup->GetDimension(); ++i)
        values.push_back(i == dimension ? value : GetValue(i));
    mpCGroup->SetKeyFrame(values.data(), false, Parameters_cls::kCurrent);
}

void ParamEdit_cls::SetValue(int dimension, double value, bool bFinal) {
    std::vector<Parameters_cls>& params = mpCGroup->mVParams;
    if (bFinal) {
        const bool bWasLive = !mVBefore.empty();
        for (size_t i = 0; i < mVBefore.size(); ++i)
            params[i].CopyCurveFromP(*mVBefore[i]);
        mVBefore.clear();
        SetKeys(dimension, value);
        // There and back leaves no step, but what was shown on the way is stale.
        if (bWasLive) PostUpdateEvents(params[size_t(dimension)].mUpdateBit | UPDATE_TL);
        return;
    }
    if (mVBefore.empty())
        for (const Parameters_cls& param : params)
            mVBefore.push_back(std::make_unique<Parameters_cls>(param));
    const bool bMaking = std::exchange(Parameters_cls::msbUndoCommandMake, false);
    SetKeys(dimension, value);
    Parameters_cls::msbUndoCommandMake = bMaking;
    PostUpdateEvents(params[size_t(dimension)].mUpdateBit);
}
