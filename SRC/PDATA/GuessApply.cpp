#include "PDATA/GuessApply.h"

#include <algorithm>

#include "COMMON/UpdateBits.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/GrammarGuess.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPeriodicBoundary.h"

GuessHooks_st GGuessHooks;

namespace {

using Box = std::array<std::array<float, 3>, 3>;

/// All of loader and box that a guess may change.
struct Settings_st {
    int mDataType = 0;
    std::vector<int> mHead, mBody;
    unsigned mInterpolate = 0, mNumber = 0, mPeriodic = 0;
    std::array<float, 3> mSize = {};
    Box mBox = {};
    bool operator==(const Settings_st& other) const {
        return mDataType == other.mDataType && mHead == other.mHead && mBody == other.mBody &&
               mInterpolate == other.mInterpolate && mNumber == other.mNumber &&
               mPeriodic == other.mPeriodic && mSize == other.mSize && mBox == other.mBox;
    }
};

std::array<ConfItemFLOATARRAY_cls*, 3> VectorsOf(PeriodicBoundary_cls* pBox) {
    return {&pBox->mCPeriodicBaseVector0, &pBox->mCPeriodicBaseVector1, &pBox->mCPeriodicBaseVector2};
}

Settings_st Get(const DataLoader_cls& loader) {
    Settings_st settings;
    settings.mDataType = loader.mCItemDataType.mValue;
    settings.mHead = loader.GetHeaderGrammer();
    settings.mBody = loader.GetBodyGrammer();
    settings.mInterpolate = loader.mCItemInterpolateType.mValue;
    settings.mNumber = loader.mCItemVariableNumber.mValue;
    if (PeriodicBoundary_cls* box = loader.mpCPeriodic) {
        settings.mPeriodic = box->mCPeriodicType.mValue;
        std::copy_n(box->mCPeriodicSize.mValue, 3, settings.mSize.begin());
        for (size_t k = 0; k < 3; ++k)
            std::copy_n(VectorsOf(box)[k]->mValue, 3, settings.mBox[k].begin());
    }
    return settings;
}

void Set(DataLoader_cls* pLoader, const Settings_st& settings) {
    pLoader->mCItemDataType.mValue = settings.mDataType;
    pLoader->SetHeaderGrammer(settings.mHead);
    pLoader->SetBodyGrammer(settings.mBody);
    pLoader->mCItemInterpolateType.mValue = settings.mInterpolate;
    pLoader->mCItemVariableNumber.mValue = settings.mNumber;
    if (PeriodicBoundary_cls* box = pLoader->mpCPeriodic) {
        box->mCPeriodicType.mValue = settings.mPeriodic;
        std::copy(settings.mSize.begin(), settings.mSize.end(), box->mCPeriodicSize.mValue);
        for (size_t k = 0; k < 3; ++k)
            std::copy(settings.mBox[k].begin(), settings.mBox[k].end(), VectorsOf(box)[k]->mValue);
    }
    if (GGuessHooks.mShowValues) GGuessHooks.mShowValues();
}

void Take(const GuessOffer_st& offer, Settings_st* pSettings, GuessLooks_st* pLooks) {
    switch (offer.mKind) {
    case GuessOfferKind::Interpolation:
        pSettings->mInterpolate = offer.mChoice;
        break;
    case GuessOfferKind::ParticleNumber:
        pSettings->mNumber = offer.mChoice;
        break;
    case GuessOfferKind::Periodic:
        pSettings->mPeriodic = offer.mChoice;
        if (offer.mChoice == PERIODIC_NONE) break;
        pSettings->mSize = {1, 1, 1};
        pSettings->mBox = offer.mBox;
        break;
    case GuessOfferKind::Classification:
        pLooks->mClassify = offer.mChoice;
        pLooks->mbColors = offer.mbColors;
        break;
    case GuessOfferKind::Radius:
        pLooks->mRadius = offer.mRadius;
        break;
    }
}

} // namespace

void ApplyGuess(DataLoader_cls* pLoader, const GrammarGuess_st& guess,
                const std::vector<GuessOffer_st>& offers) {
    if (!guess.mbFound) return;
    const Settings_st before = Get(*pLoader);
    Settings_st after = before;
    after.mDataType = guess.mDataType;
    after.mHead = guess.mHead;
    after.mBody = guess.mBody;
    GuessLooks_st looks;
    for (const GuessOffer_st& offer : offers)
        if (offer.mbTicked) Take(offer, &after, &looks);
    const UndoBlock_cls block;
    if (!(after == before)) {
        const auto make = [pLoader](const Settings_st& settings) {
            return new CommandCall_cls([pLoader, settings] { Set(pLoader, settings); },
                                       UPDATE_SNAPDATA | UPDATE_GL);
        };
        GCUndoList.PushNewCommand(make(after), make(before));
        GCUndoList.ExecCurrent();
    }
    if (GGuessHooks.mApplyLooks) GGuessHooks.mApplyLooks(looks);
}
