#include "IMPORT/clsH5mdElement.h"

#include <algorithm>

#include "IMPORT/ParticleSource.h"

namespace {

constexpr size_t kMostFrames = 10000000; // whose steps are kept

} // namespace

double H5mdElement_cls::Series_st::At(size_t i) const {
    return i < mAll.size() ? mAll[i] : mFirst + mIncrement * static_cast<double>(i);
}

// A scalar is the increment, and its attribute the first one.
H5mdElement_cls::Series_st H5mdElement_cls::ReadSeries(const Hdf5File_cls& file, const std::string& name) {
    Series_st series;
    if (!file.Has(name)) return series;
    const Hdf5Data_cls data(file, name, false);
    series.mbThere = true;
    if (data.IsScalar()) {
        data.ReadDoubles(0, &series.mIncrement);
        const std::vector<double> offset = file.ReadAttribute(name, "offset");
        if (!offset.empty()) series.mFirst = offset[0];
        if (!(series.mIncrement > 0)) file.Fail(name + " is no increment");
        return series;
    }
    if (data.GetRows() > kMostFrames) file.Fail(name + " has more frames than a sequence can have");
    data.Need(data.GetRows(), 1);
    series.mAll.resize(data.GetRows());
    data.ReadDoubles(0, series.mAll.data());
    for (size_t i = 1; i < series.mAll.size(); ++i)
        if (!(series.mAll[i] >= series.mAll[i - 1])) file.Fail(name + " must rise");
    return series;
}

H5mdElement_cls::H5mdElement_cls(const Hdf5File_cls& file, const std::string& name)
    : mbFixed(!file.IsGroup(name)) {
    mpData = std::make_unique<Hdf5Data_cls>(file, mbFixed ? name : name + "/value", !mbFixed);
    mFrames = mpData->GetFrames();
    if (mbFixed) return;
    mSteps = ReadSeries(file, name + "/step");
    mTimes = ReadSeries(file, name + "/time");
    // A writer that was cut off has told one of them more often than the other.
    for (const Series_st* pSeries : {&mSteps, &mTimes})
        if (pSeries->mbThere && !pSeries->mAll.empty()) mFrames = std::min(mFrames, pSeries->mAll.size());
}

bool H5mdElement_cls::GetTime(size_t frame, double* pTime) const {
    if (mTimes.mbThere) *pTime = mTimes.At(frame);
    return mTimes.mbThere;
}

long H5mdElement_cls::FindFrame(double step) const {
    if (mbFixed) return 0;
    size_t count = 0; // of frames at or before it
    if (mSteps.mAll.empty()) {
        const double place = (step - mSteps.mFirst) / mSteps.mIncrement;
        if (place >= 0)
            count = place < static_cast<double>(mFrames) ? static_cast<size_t>(place) + 1 : mFrames;
    } else {
        const auto end = mSteps.mAll.begin() + static_cast<long>(mFrames);
        count = static_cast<size_t>(std::upper_bound(mSteps.mAll.begin(), end, step) - mSteps.mAll.begin());
    }
    return static_cast<long>(count) - 1;
}
