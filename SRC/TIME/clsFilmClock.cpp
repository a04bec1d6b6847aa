#include "TIME/clsFilmClock.h"

#include <algorithm>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "PARAM/ParamText.h"
#include "PARAM/clsCommandItem.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"

namespace {

const wxString kRemapLine = "---TimeRemap";
constexpr int kPositionMask = UPDATE_GL | UPDATE_TL;

unsigned ToItem(int frame) { return unsigned(std::max(frame, 0)); }

} // namespace

void FilmClock_cls::SetFrameNative(int frame, int updateMask) {
    mFrame = frame;
    UpdateCurrentDoubleIndex();
    CommandItem_cls::UpdateBit(updateMask);
}

void FilmClock_cls::SetInterpStepNative(int step, int updateMask) {
    mInterpStep = step;
    UpdateCurrentDoubleIndex();
    CommandItem_cls::UpdateBit(updateMask);
}

void FilmClock_cls::SetWAMinNative(int frame) {
    mWAMin.mValue = ToItem(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void FilmClock_cls::SetWAMaxNative(int frame) {
    mWAMax.mValue = ToItem(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void FilmClock_cls::SetAAMinNative(int frame) {
    mAAMin.mValue = ToItem(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void FilmClock_cls::SetAAMaxNative(int frame) {
    mAAMax.mValue = ToItem(frame);
    PostMenuEvent(ID_REFRESH_TL);
}

void FilmClock_cls::SetRepeatNative(int repeat) {
    mbRepeat.mValue = repeat != 0;
    PostMenuEvent(ID_REFRESH_TL);
}

void FilmClock_cls::SetAnimStepNative(int step) {
    mAnimStep.mValue = std::max(step, 1);
    PostMenuEvent(ID_REFRESH_TL);
}

void FilmClock_cls::SetAnimInterpNative(int interp) {
    mAnimInterp.mValue = std::max(interp, 1);
    mInterpStep = std::min(mInterpStep, mAnimInterp.mValue - 1);
    UpdateCurrentDoubleIndex();
    Parameters_cls::SetFrameNumber(GetMaxFrame(), GetAnimInterp());
    PostMenuEvent(ID_REFRESH_TL);
}

void FilmClock_cls::SetPrefetchNative(int frames) {
    mPrefetch = std::max(frames, 0);
    PostMenuEvent(ID_REFRESH_TL);
}

void FilmClock_cls::SetMaxFrameNative(int maxFrame) {
    mMaxFrame.mValue = ToItem(maxFrame);
    CheckAfterMaxFrameChange();
    Parameters_cls::SetFrameNumber(GetMaxFrame(), GetAnimInterp());
    UpdateCurrentDoubleIndex();
    UpdateSnippingTag();
    PostMenuEvent(ID_REFRESH_TL);
}

void FilmClock_cls::CheckAfterMaxFrameChange() {
    const int length = GetMaxFrame();
    // An area that reached to the end goes on doing so.
    for (ConfItemUINT_cls* area : {&mAAMax, &mWAMax}) {
        if (ToFrame(*area) == mPrevMaxFrame || ToFrame(*area) > length) area->mValue = mMaxFrame.mValue;
    }
    mPrevMaxFrame = length;
    mRegionMin = 0;
    mRegionMax = length;
    if (mFrame > length) {
        mFrame = 0;
        mInterpStep = 0;
    }
}

void FilmClock_cls::CheckWorkingArea() {
    const unsigned length = unsigned(GetMaxFrame());
    mWAMax.mValue = std::min(mWAMax.mValue, length);
    if (mWAMin.mValue > mWAMax.mValue) std::swap(mWAMin.mValue, mWAMax.mValue);
    mAAMax.mValue = std::min(mAAMax.mValue, length);
    if (mAAMin.mValue > mAAMax.mValue) std::swap(mAAMin.mValue, mAAMax.mValue);
    // A swapped bound may have come from beyond the end.
    for (ConfItemUINT_cls* bound : {&mWAMin, &mWAMax, &mAAMin, &mAAMax})
        bound->mValue = std::min(bound->mValue, length);
    SetIndex(unsigned(mFrame));
}

void FilmClock_cls::SetIndex(unsigned frame) {
    int low = 0;
    int high = 0;
    LowHigh(&low, &high);
    int clamped = int(std::min(frame, unsigned(GetMaxFrame())));
    clamped = std::min(std::max(clamped, GetAAMin()), GetAAMax());
    clamped = FloorToStep(std::min(std::max(clamped, low), high));
    if (clamped == mFrame) return;
    SetFrameNative(clamped, kPositionMask);
    TellStale();
}

int FilmClock_cls::GetValue(int kind) const {
    switch (kind) {
    case TIME_FRAME:
        return mFrame;
    case TIME_INTERP_STEP:
        return mInterpStep;
    case TIME_WA_MIN:
        return GetWAMin();
    case TIME_WA_MAX:
        return GetWAMax();
    case TIME_AA_MIN:
        return GetAAMin();
    case TIME_AA_MAX:
        return GetAAMax();
    case TIME_REPEAT:
        return mbRepeat.mValue;
    case TIME_ANIM_STEP:
        return GetAnimStep();
    case TIME_ANIM_INTERP:
        return GetAnimInterp();
    case TIME_PREFETCH:
        return mPrefetch;
    default:
        return GetMaxFrame();
    }
}

void FilmClock_cls::SetValueNative(int kind, int value) {
    switch (kind) {
    case TIME_FRAME:
        return SetFrameNative(value, kPositionMask);
    case TIME_INTERP_STEP:
        return SetInterpStepNative(value, kPositionMask);
    case TIME_WA_MIN:
        return SetWAMinNative(value);
    case TIME_WA_MAX:
        return SetWAMaxNative(value);
    case TIME_AA_MIN:
        return SetAAMinNative(value);
    case TIME_AA_MAX:
        return SetAAMaxNative(value);
    case TIME_REPEAT:
        return SetRepeatNative(value);
    case TIME_ANIM_STEP:
        return SetAnimStepNative(value);
    case TIME_ANIM_INTERP:
        return SetAnimInterpNative(value);
    case TIME_PREFETCH:
        return SetPrefetchNative(value);
    case TIME_MAX_FRAME:
        return SetMaxFrameNative(value);
    default:
        return;
    }
}

TimeState_st FilmClock_cls::GetState() const {
    TimeState_st state;
    for (int kind = 0; kind < TIME_VALUE_COUNT; ++kind)
        state.mValue[size_t(kind)] = GetValue(kind);
    return state;
}

void FilmClock_cls::SetState(const TimeState_st& state) {
    // The length first, and the interval before the step: both cut what doesn't fit.
    SetMaxFrameNative(state.mValue[TIME_MAX_FRAME]);
    SetAnimInterpNative(state.mValue[TIME_ANIM_INTERP]);
    for (int kind = 0; kind < TIME_MAX_FRAME; ++kind)
        if (GetValue(kind) != state.mValue[size_t(kind)]) SetValueNative(kind, state.mValue[size_t(kind)]);
}

void FilmClock_cls::TellStale() const {
    // A block tells at its end.
    if (GCUndoList.GetBlockDepth() == 0) GCUndoList.ExecUpdate();
}

void FilmClock_cls::EmptySnippingTag() { mVSnippingTag.assign(size_t(GetMaxFrame()) + 1, false); }

void FilmClock_cls::UpdateSnippingTag() {
    EmptySnippingTag();
    if (mCollectTags) mCollectTags(&mVSnippingTag);
}

void FilmClock_cls::UpdateCurrentDoubleIndex() {
    Parameters_cls::msCurrentDoubleIndex = GetDoubleIndex();
    for (Parameters_cls& param : mpCTimeRemapGroup->mVParams)
        param.GetInterpolatedValue(Parameters_cls::kCurrent); // what fields show
}

wxString FilmClock_cls::Serialize() {
    const wxString text = mConfList.SerializeAll();
    return mbUseTimeRemap.mValue ? text + kRemapLine + "\n" + mpCTimeRemapGroup->Serialize() : text;
}

void FilmClock_cls::ReadStrLine(std::wistream& stream, const wxString& line) {
    if (line == kRemapLine) {
        const auto start = stream.tellg();
        wxString next;
        while (ReadParamLine(stream, &next)) {
            if (!next.Contains("ParamGroup=")) continue;
            if (!mpCTimeRemapGroup->ReadStrLine(stream, next)) break;
            UpdateCurrentDoubleIndex();
            return;
        }
        stream.clear(); // no curve comes: the lines that follow belong to others
        stream.seekg(start);
        return;
    }
    if (!mConfList.ReadStrLineAll(line)) return;
    // The file's own length is what the areas in it belong to.
    mPrevMaxFrame = GetMaxFrame();
    Parameters_cls::SetFrameNumber(GetMaxFrame(), GetAnimInterp());
    PostMenuEvent(ID_REFRESH_TL);
}
