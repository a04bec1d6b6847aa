// Finds the particle that a click means: of those drawn at a place of the picture, the nearest to the eye.
// Knows no OpenGL and no window.
#pragma once

#include <functional>
#include <vector>

#include "GL/BASE/ViewFit.h"

class DrawListFilter_cls;

/// How a view sees what lies around one place of its picture. Scene units; depths are along the view's line
/// of sight.
struct PickRay_st {
    double mEye[3] = {0, 0, 0};
    /// Right, up and front of the camera. In a view of several faces it is turned to the place.
    double mBasis[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    double mSlope[2] = {0, 0};  ///< how far right and up the ray goes for a depth of 1
    double mOffset[2] = {0, 0}; ///< where it begins, right and up of the eye: in a parallel view
    /// Length that a pixel of the window shows: the sum of this, and of that for a depth of 1.
    double mPixel[2] = {0.0, 0.001};
    double mNear = 0.0; ///< what is seen lies between these depths
    double mFar = 1e30;
    /// Pixels between the place and that of a point of the scene, in views where that is more than what
    /// mPixel tells; empty: it is that.
    std::function<double(const double point[3])> mDistance;
};

/// The particles of a picture, and what a click must know of how they are drawn. Where they stand and how
/// often is told by whoever asks; mPlace doesn't count.
struct PickCloud_st : FitCloud_st {
    bool mbBall[kClasses] = {};              ///< spheres; others are discs that face the eye
    double mPixels[kClasses] = {};           ///< half the size of points, pixels
    DrawListFilter_cls* mpCFilter = nullptr; ///< leaves some of them out; null: none
    double mTime = 0.0;                      ///< double index for the filter
    unsigned mSortOrder = 0;                 ///< a SortOrder: may leave out the last of every mStep-th
    /// RGBA of each, as they are drawn: of discs and points what has no alpha isn't seen. Null: all are.
    const float (*mpColor)[4] = nullptr;

    long long CountListed() const; ///< of every mStep-th, before any filter
    bool IsSeen(long long index) const;
};

struct PickedParticle_st {
    int mIndex = -1;     ///< in the arrays; -1: nothing is there
    long long mCopy = 0; ///< its place in the list of shifts
    double mDepth = 0.0; ///< of what the ray meets
};

class ParticlePicker_cls {
public:
    static constexpr double kPixels = 5.0;
    using Shifts_t = std::vector<std::vector<float>>;

    /// `pMatrix` puts the data into the scene, 4 by 4 numbers column by column; null: they stand there.
    /// `shifts` are those of the copies, three numbers in data units each. `cloud` and `ray` live longer.
    ParticlePicker_cls(const PickCloud_st& cloud, const PickRay_st& ray, const double* pMatrix = nullptr,
                       const Shifts_t& shifts = {{0, 0, 0}});

    /// The nearest to the eye of the particles that the ray meets or that lie within kPixels of it. The drawn
    /// radius counts: of a sphere its surface, of a sprite its disc, of a point its size on the screen. Of
    /// those at one depth it is the first of the file.
    PickedParticle_st Find() const;

    /// What sorts most particles out, for a run of them at a time: no less than what Meet finds.
    struct Reach_st {
        float mRow[3][3];            ///< to right of the ray, above it, and depth
        float mEye[3];               ///< origin of that, data units
        float mShift[3];             ///< behind the rows
        float mWidth, mWidthAtDepth; ///< half of what counts around the ray
        float mRadius;               ///< factor on a particle's own; 0: none has one
        float mNear, mFar;
    };

private:
    /// A copy as the ray sees it: right of the ray, above it, depth.
    struct Copy_st {
        double mShift[3];
        double mSum[3]; ///< the same in data units
    };
    struct Hit_st {
        double mDepth;
        int mIndex;
        long long mCopy;
        bool operator<(const Hit_st& other) const;
    };
    using Hits_t = std::vector<Hit_st>;

    void SetRows(const double* pMatrix);
    void SetReach();
    void SetCopies(const Shifts_t& shifts);
    void Search(long long begin, long long end, Hits_t& hits) const;
    void SearchRun(long long begin, long long end, Hits_t& hits) const;
    void SearchCopies(long long begin, long long end, Hits_t& hits) const;
    void Test(long long index, size_t copy, Hits_t& hits) const;
    bool Meet(long long index, const Copy_st& copy, double limit, double* pDepth) const;
    bool MeetBall(const double point[3], double radius, double* pDepth) const;
    bool IsInDisc(const double across[2], double radius) const;
    bool IsWithin(double most, const double seen[3], const double point[3]) const;
    PickedParticle_st GetFirstKept(Hits_t& hits) const;

    const PickCloud_st& mCloud;
    const PickRay_st& mRay;
    double mPlace[16];     ///< data to scene
    double mRow[3][3];     ///< data to right of the ray, above it, and depth
    double mRowShift[3];   ///< of the origin
    double mOrigin[3];     ///< the eye where data have such a place, data units
    double mStart[3];      ///< of the ray at depth 0, from the origin
    double mWay[3];        ///< of the ray for a depth of 1
    bool mbSolid = true;   ///< false: the data are flat, and spheres have no inside
    double mEllipse[3];    ///< xx, xy, yy of what discs of radius 1 look like, squared
    double mStretch = 1.0; ///< of radii, at most
    Reach_st mReach;
    std::vector<Copy_st> mCopies;
};
