#include "WIDGET/TIMELINE/clsLiveEdit.h"

#include <algorithm>

#include "COMMON/UpdateBits.h"
#include "PARAM/clsParameters.h"
#include "PARAM/clsUndoManager.h"

LiveEdit_cls::LiveEdit_cls(const Curves& curves) : mCurves(curves), mUndoPosition(GCUndoList.GetCurrent()) {
    for (const Parameters_cls* curve : curves) {
        mVpCKept.push_back(std::make_unique<Parameters_cls>(*curve));
        mVpCKept.back()->mpCParamTL = nullptr;
    }
}

LiveEdit_cls::~LiveEdit_cls() { Cancel(); }

bool LiveEdit_cls::Restore() {
    const bool bAlive = std::all_of(mCurves.begin(), mCurves.end(), &Parameters_cls::IsAlive);
    if (mbOver || !bAlive || GCUndoList.GetCurrent() != mUndoPosition) {
        mbOver = true;
        return false;
    }
    for (size_t i = 0; i < mCurves.size(); ++i)
        mCurves[i]->CopyCurveFromP(*mVpCKept[i]);
    return true;
}

void LiveEdit_cls::Tell() const {
    long long mask = UPDATE_TL;
    for (const Parameters_cls* curve : mCurves)
        mask |= curve->mUpdateBit;
    PostUpdateEvents(mask);
}

void LiveEdit_cls::Try(const std::function<void()>& edit) {
    if (!Restore()) return;
    const bool bMake = Parameters_cls::msbUndoCommandMake;
    Parameters_cls::msbUndoCommandMake = false;
    edit();
    Parameters_cls::msbUndoCommandMake = bMake;
    Tell();
}

void LiveEdit_cls::Commit(const std::function<void()>& edit) {
    if (!Restore()) return;
    mbOver = true;
    edit();
    Tell();
}

void LiveEdit_cls::Cancel() {
    if (!Restore()) return;
    mbOver = true;
    Tell();
}
