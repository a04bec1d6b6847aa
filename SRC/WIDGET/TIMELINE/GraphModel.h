// The graph's picture in numbers: where times and values lie, what a curve covers in each pixel column,
// round ticks, and the values that fit.
#pragma once

#include <vector>

#include <wx/string.h>

class Parameters_cls;
struct FrameScale;

/// A stretch of values, mLow below mHigh.
struct ValueRange {
    double mLow = -1.0;
    double mHigh = 1.0;
    double Span() const { return mHigh - mLow; }
    /// With a span that doubles can tell apart, and no further out than they can be reckoned with.
    ValueRange Sane() const;
    /// Stretched by a factor around a value.
    ValueRange Zoomed(double around, double factor) const;
    ValueRange Shifted(double by) const { return ValueRange{mLow + by, mHigh + by}.Sane(); }
};

/// Times are double indices. Pixels are continuous: column x reaches from x to x + 1, and what stands at
/// pixel x is drawn around x + 0.5. Pixels come back cut to +-kFar, so that they can be drawn; a NaN lies
/// there too.
struct GraphScale {
    static constexpr double kFar = 1e6;

    double mTimeLeft = 0.0;       ///< at pixel 0.5
    double mTimePerPixel = 0.01;  ///< above 0
    double mValueTop = 1.0;       ///< at pixel 0.0
    double mValuePerPixel = 0.01; ///< above 0
    int mWidth = 0;
    int mHeight = 0;

    double ToX(double t) const { return Cut((t - mTimeLeft) / mTimePerPixel + 0.5); }
    double ToY(double value) const { return Cut((mValueTop - value) / mValuePerPixel); }
    double ToTime(double x) const { return mTimeLeft + (x - 0.5) * mTimePerPixel; }
    double ToValue(double y) const { return mValueTop - y * mValuePerPixel; }
    static double Cut(double pixel);
};

/// The strips' frames over a film of `maxFrame`, the values over the height.
GraphScale MakeGraphScale(const FrameScale& frames, int maxFrame, const ValueRange& values, int width,
                          int height);

/// What a curve covers in each pixel column, as values.
struct CurveColumns {
    /// A column within which the curve jumps or bends, and its least and greatest value there.
    struct Hard_st {
        int mColumn;
        double mLow;
        double mHigh;
    };
    std::vector<double> mVEdge;  ///< one more than columns: the curve at the columns' left edges
    std::vector<Hard_st> mVHard; ///< ascending columns
};

/// Samples curves at the edges of all pixel columns and on both sides of each seam, where one segment ends
/// and the next begins. Each number is what Parameters_cls::Evaluate gives.
class CurveSampler_cls {
public:
    void Sample(const Parameters_cls& param, const GraphScale& scale, double resolution, CurveColumns* pOut);
    const std::vector<double>& GetSeamTimes() const { return mVSeams; }
    const std::vector<double>& GetSeamValues() const { return mVValues; }

private:
    void CollectSeams(const Parameters_cls& param, double resolution);

    std::vector<double> mVEdges;  ///< times of the columns' edges
    std::vector<double> mVSeams;  ///< ascending times, before and at each seam
    std::vector<double> mVValues; ///< at the seams
};

/// 1, 2 or 5 times a power of ten: the least such step that takes at least `leastPixels`.
double TickStep(const ValueRange& values, int pixels, int leastPixels);
/// A tick's number with the digits that its step needs.
wxString TickText(double value, double step);
/// A value as it is read off: five digits.
wxString ValueText(double value);

/// The values of these columns with room around them; a constant gets a span that suits its size.
ValueRange FitValues(const std::vector<CurveColumns>& curves);

/// Left end of the labels of the value axis, `widest` pixels at most, in a graph of this width: at the left,
/// but at the right while the cursor's line stands there. Pixels.
int PlaceAxisLabels(double cursor, int widest, int pad, int width);
