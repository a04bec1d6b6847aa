#include "TIME/clsFilmTime.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "COMMON/UpdateBits.h"
#include "PARAM/clsParamGroup.h"
#include "TIME/TimeHost.h"

namespace {

constexpr unsigned kMostFrames = 1000000; // that a project can ask for

constexpr double kSnap = 0.00001;
constexpr double kNearlyWhole = 0.99999;

} // namespace

FilmTime_cls::FilmTime_cls(TimeHost_cls* pHost) : mCMotionBlur(this), mpCMain(pHost) {
    mConfList.Add(&mMaxFrame, "TimeMaxFrame=", "100");
    mConfList.Add(&mWAMin, "TimeWorkAreaMin=", "0");
    mConfList.Add(&mWAMax, "TimeWorkAreaMax=", "100");
    mConfList.Add(&mAAMin, "TimeActiveAreaMin=", "0");
    mConfList.Add(&mAAMax, "TImeActiveAreaMax=", "100");
    mConfList.Add(&mbUseTimeRemap, "TimeUseTimeRemap=", "0");
    mConfList.Add(&mbUseMotionBlur, "TimeUseMotionBlur=", "0");
    mConfList.Add(&mAnimStep, "TimeAnimStep=", "1");
    mConfList.Add(&mAnimInterp, "TimeAnimInterp=", "1");
    mConfList.Add(&mbRepeat, "TimeRepeat=", "0");
    mConfList.Add(&mSceneLengthType, "TimeSceneLengthType=", "0");
    Parameters_cls::SetFrameNumber(GetMaxFrame(), GetAnimInterp());
    const wxString suffix = "Time";
    mpCTimeRemapGroup =
        new ParamGroup_cls("Time Remap", 1, &suffix, UPDATE_FILTER_REFRESH | UPDATE_TL | UPDATE_GL, false);
}

FilmTime_cls::~FilmTime_cls() { delete mpCTimeRemapGroup; }

int FilmTime_cls::ToFrame(const ConfItemUINT_cls& item) {
    // A file may hold anything, and each frame has its bit and its column in the cache bar.
    return int(std::min(item.mValue, kMostFrames));
}

int FilmTime_cls::GetDataStep() const { return mbUseTimeRemap.mValue ? 1 : GetAnimStep(); }

int FilmTime_cls::GetAnimStep() const { return std::clamp(mAnimStep.mValue, 1, INT_MAX / 8); }

int FilmTime_cls::GetAnimInterp() const { return std::clamp(mAnimInterp.mValue, 1, INT_MAX / 8); }

double FilmTime_cls::GetDoubleIndex(int frame, int step) const {
    const double length = GetMaxFrame();
    if (length <= 0.0) return 0.0;
    if (frame != -1) return (frame + double(step) / GetAnimInterp()) / length;
    const double blur = mCMotionBlur.mbBlur ? mCMotionBlur.GetFactor() : 0.0;
    return (mFrame + (mInterpStep + blur) / GetAnimInterp()) / length;
}

double FilmTime_cls::BoundIndex(int frame) const {
    return GetMaxFrame() > 0 ? double(frame) / GetMaxFrame() : 0.0;
}

// The time remap curve stands between the film's time and these three; its values are snapshot numbers.
// Without it film time is data time.

double FilmTime_cls::RemappedValue(double doubleIndex) const {
    // Not through the cached value: the idle loop looks ahead, and an edit under way must stay.
    const double value =
        mpCTimeRemapGroup->mVParams.front().Evaluate(doubleIndex, Parameters_cls::msResolution);
    return std::isnan(value) ? 0.0 : std::clamp(value, 0.0, double(INT_MAX / 4));
}

int FilmTime_cls::GetRemappedIndex(int frame) const {
    if (!mbUseTimeRemap.mValue) return std::max(frame == -1 ? mFrame : frame, 0);
    return int(RemappedValue(GetDoubleIndex(frame, 0)) + kSnap);
}

double FilmTime_cls::GetRemappedIndexDouble(int frame, int step) const {
    if (frame == -1) frame = mFrame;
    if (step == -1) step = mInterpStep;
    const double position = frame + double(step) / GetAnimInterp();
    if (!mbUseTimeRemap.mValue) return std::max(position, 0.0);
    const double value = RemappedValue(GetMaxFrame() > 0 ? position / GetMaxFrame() : 0.0);
    // A curve that means a whole snapshot may miss it by a rounding, and would want its neighbour read.
    return value - std::floor(value) > kNearlyWhole ? double(int(value + kSnap)) : value;
}

double FilmTime_cls::GetRemappedInterpStepDouble(int, int step) const {
    if (mbUseTimeRemap.mValue) return GetRemappedIndexDouble(-1, step) - GetRemappedIndex(-1);
    if (step == -1) step = mInterpStep;
    const double blur = mCMotionBlur.mbBlur ? mCMotionBlur.GetFactor() : 0.0;
    return (step + blur) / GetAnimInterp();
}

int FilmTime_cls::GetOffsetForImgSeq(int frame, int step) const {
    if (frame == -1) frame = mFrame;
    if (step == -1) step = mInterpStep;
    const long long offset =
        static_cast<long long>((frame - GetWAMin()) / GetAnimStep()) * GetAnimInterp() + step;
    return int(std::clamp(offset, static_cast<long long>(INT_MIN), static_cast<long long>(INT_MAX)));
}

int FilmTime_cls::GetInterval(int maxFrame) {
    if (maxFrame > 1000) return 10;
    if (maxFrame > 500) return 5;
    return maxFrame >= 201 ? 2 : 1;
}

int FilmTime_cls::GetExpectedPrefetchMax() const {
    if (!mpCMain) return -1;
    const int average = mpCMain->GetAverageMemoryMB();
    if (average < 0) return -1;
    return mpCMain->GetMemoryLimitMB() / std::max(average, 1);
}

int FilmTime_cls::RoundFrame(int frame) const {
    const int step = GetAnimStep();
    int rounded = (frame + step / 2) / step * step;
    while (rounded > GetMaxFrame())
        rounded -= step;
    return rounded;
}

bool FilmTime_cls::IsWorkingArea(int frame) const {
    return frame >= GetWAMin() && frame <= GetWAMax() && frame <= GetMaxFrame();
}

int FilmTime_cls::GetSnipNext() const {
    for (int frame = mFrame + 1; frame < int(mVSnippingTag.size()); ++frame)
        if (mVSnippingTag[size_t(frame)]) return frame;
    return GetMaxFrame();
}

int FilmTime_cls::GetSnipPrev() const {
    for (int frame = std::min(mFrame, int(mVSnippingTag.size())) - 1; frame >= 0; --frame)
        if (mVSnippingTag[size_t(frame)]) return frame;
    return 0;
}

void FilmTime_cls::LowHigh(int* pLow, int* pHigh) const {
    *pLow = mbCustomRange ? mRangeMin : GetWAMin();
    *pHigh = mbCustomRange ? mRangeMax : GetWAMax();
}

int FilmTime_cls::FloorToStep(int frame) const { return frame / GetAnimStep() * GetAnimStep(); }

int FilmTime_cls::CalcNextFrame(int frame, int dir, bool bUseRange, bool bRepeat) const {
    const long long to = (frame == -1 ? mFrame : frame) + static_cast<long long>(GetAnimStep()) * dir;
    int next = int(std::clamp(to, -1LL, static_cast<long long>(GetMaxFrame()) + 1));
    const bool bAround = bRepeat && GoesRound();
    if (dir >= 0 && next > GetMaxFrame()) next = bAround ? 0 : GetMaxFrame();
    if (dir < 0 && (next < 0 || next > GetMaxFrame())) next = bAround ? GetMaxFrame() : 0;
    if (bUseRange) {
        int low = 0;
        int high = 0;
        LowHigh(&low, &high);
        next = std::max(std::min(next, high), low);
    }
    return FloorToStep(next);
}

void FilmTime_cls::AdjustFrameByRange(int* pFrame, int* pStep, int dir, bool bUseRange, bool bRepeat) const {
    const bool bAround = bRepeat && GoesRound();
    if (dir >= 0 && *pFrame > GetMaxFrame()) *pFrame = bAround ? 0 : GetMaxFrame();
    if (dir < 0 && (*pFrame < 0 || *pFrame > GetMaxFrame())) *pFrame = bAround ? GetMaxFrame() : 0;
    if (bUseRange) {
        int low = 0;
        int high = 0;
        LowHigh(&low, &high);
        if (*pFrame >= high) {
            *pFrame = high;
            *pStep = 0;
        }
        if (*pFrame < low) {
            *pFrame = low;
            *pStep = 0;
        }
    }
    *pFrame = FloorToStep(*pFrame);
}

void FilmTime_cls::CalcNextFrameFromStep(int* pFrame, int* pStep, bool bUseRange, bool bRepeat) const {
    int dir = 1;
    if (*pStep < 0) {
        dir = -1;
        *pFrame -= GetAnimStep();
        *pStep = GetAnimInterp() - 1;
    } else if (*pStep >= GetAnimInterp()) {
        *pFrame += GetAnimStep();
        *pStep = 0;
    }
    if (dir < 0 && *pFrame < 0 && !(bRepeat && GoesRound())) *pStep = 0; // before the start there is no step
    AdjustFrameByRange(pFrame, pStep, dir, bUseRange, bRepeat);
}
