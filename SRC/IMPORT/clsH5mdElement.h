// An element of an H5MD group: one dataset for all times, or one that is sampled at steps of its own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "IMPORT/clsHdf5Data.h"

class H5mdElement_cls {
public:
    /// `name` with the way to it. Throws ImportError_cls, as all calls do.
    H5mdElement_cls(const Hdf5File_cls& file, const std::string& name);

    const Hdf5Data_cls& GetData() const { return *mpData; }
    size_t GetFrames() const { return mFrames; }
    double GetStep(size_t frame) const { return mSteps.At(frame); }
    /// False: only its step is told.
    bool GetTime(size_t frame, double* pTime) const;
    /// The sample of a step, or the last one before it; -1: there is none. A fixed one is there always.
    long FindFrame(double step) const;

private:
    /// Numbers of frames: each told, or by an increment.
    struct Series_st {
        double At(size_t i) const;
        std::vector<double> mAll;
        double mFirst = 0;
        double mIncrement = 1;
        bool mbThere = false;
    };
    static Series_st ReadSeries(const Hdf5File_cls& file, const std::string& name);

    bool mbFixed;
    size_t mFrames = 1;
    std::unique_ptr<Hdf5Data_cls> mpData;
    Series_st mSteps;
    Series_st mTimes;
};
