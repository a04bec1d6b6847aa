// Fits a view to particles: how far everything reaches in given directions, and the camera from which all
// of it is in the picture. Knows no OpenGL and no panel.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

class PositionAndDirection_cls;

/// Where a cloud stands: copies of it in cells along three vectors, all of that moved by a matrix.
struct FitPlace_st {
    double mVector[3][3] = {};    ///< data units
    double mFirst[3] = {0, 0, 0}; ///< first and last cell along each vector
    double mLast[3] = {0, 0, 0};
    double mMatrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; ///< column by column
};

/// The particles of a picture. Those that aren't drawn or whose place is no number don't count.
struct FitCloud_st {
    static constexpr int kClasses = 4;
    const float (*mpPos)[3] = nullptr;
    const float* mpRadius = nullptr;       ///< data units; null: none has a size
    const unsigned char* mpType = nullptr; ///< null: all are of class 0; types past the last class are, too
    long long mNumber = 0;
    long long mStep = 1; ///< only multiples of it are drawn
    bool mbDrawn[kClasses] = {true, true, true, true};
    float mRadiusFactor[kClasses] = {0, 0, 0, 0}; ///< drawn radius = factor * radius + constant
    float mRadiusConstant[kClasses] = {0, 0, 0, 0};
    std::shared_ptr<const void> mpOwned; ///< what the arrays stand in, where they are nobody else's
    FitPlace_st mPlace;
};

/// The farthest that a cloud reaches along each of several directions, in one pass over its particles.
class CloudReach_cls {
public:
    /// A direction of any length; returns its number.
    int Add(const double direction[3]);
    /// Measure all directions. False, with nothing to ask, when no particle counts.
    bool Measure(const FitCloud_st& cloud);
    /// The largest value of direction * place, with the radius of each particle on top of it.
    double Get(int direction) const { return mReach[static_cast<size_t>(direction)]; }
    int GetCount() const { return static_cast<int>(mDirections.size()); }

private:
    struct Direction_st {
        double v[3];
    };
    /// The direction along which the unmoved cloud reaches as far.
    static Direction_st Pull(const FitPlace_st& place, const Direction_st& d);
    /// What the place adds to that reach.
    static double GetShift(const FitPlace_st& place, const Direction_st& d, const Direction_st& pulled);
    std::vector<Direction_st> mDirections;
    std::vector<double> mReach;
};

/// The half width and half height of what a view shows: tangents of the angles from the line of sight in a
/// perspective view, shares of the shown width in an orthographic one.
struct FitShape_st {
    bool mbPerspective = true;
    double mHalfW = 0.3;
    double mHalfH = 0.3;
};

/// What a fitted view is set to.
struct ViewFit_st {
    double mAnchor[3] = {0, 0, 0}; ///< middle of the box around the particles
    double mDistance = 1.0;        ///< of the eye from it; in an orthographic view, the shown width
    double mNearest = 0.0;         ///< distances from the eye of what is drawn
    double mFarthest = 0.0;
};

/// Asks for the directions that a fit of one camera needs, and makes the fit of what was measured.
class ViewFitter_cls {
public:
    /// Only the camera's basis counts. `pReach` may serve several fitters in one pass.
    ViewFitter_cls(const PositionAndDirection_cls& camera, const FitShape_st& shape, CloudReach_cls* pReach);
    /// After the measuring. Each border of the picture keeps clear of the particles by 5 % of the half side
    /// at least, and one of them by no more. A cloud without any size keeps `distance`.
    ViewFit_st Get(const CloudReach_cls& reach, double distance) const;

private:
    double GetDistance(const CloudReach_cls& reach, const double anchor[3], double distance) const;
    double ReachFrom(const CloudReach_cls& reach, int direction, const double anchor[3]) const;

    FitShape_st mShape;
    double mAcross[4][3]; ///< functions of place whose largest value is the least distance
    double mFront[3];
    int mBox = 0; ///< numbers of the first of six, of the first of four, of the first of two
    int mSide = 0;
    int mDepth = 0;
};

/// Near and far plane of a view that shows from `nearest` to `farthest`: as they are where they cut nothing,
/// else around the particles, near enough to each other to keep depths apart.
void FitDepths(double nearest, double farthest, float* pNear, float* pFar);
