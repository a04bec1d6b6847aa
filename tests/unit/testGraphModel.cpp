// The graph's numbers: samples, seams, ticks, fitting, and what the painter does with them.
#include "WIDGET/TIMELINE/GraphModel.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "ParamTest.h"
#include "WIDGET/TIMELINE/GraphEdit.h"
#include "WIDGET/TIMELINE/GraphRaster.h"
#include "WIDGET/TIMELINE/TimelineModel.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class GraphModel : public ParamTest {
protected:
    static GraphScale Scale(int width = 800, int first = 0, int last = 100,
                            const ValueRange& values = ValueRange{0.0, 100.0}) {
        FrameScale frames;
        frames.mFirst = first;
        frames.mLast = last;
        frames.mLeft = 16;
        frames.mWidth = width - 32;
        return MakeGraphScale(frames, Parameters_cls::msFrameNumber, values, width, 200);
    }
    /// Every sample is what the evaluation gives, and every column holds its edges.
    static void ExpectTrueSamples(const Parameters_cls& param, const GraphScale& scale) {
        CurveSampler_cls sampler;
        CurveColumns columns;
        const double r = Parameters_cls::msResolution;
        sampler.Sample(param, scale, r, &columns);
        ASSERT_EQ(columns.mVEdge.size(), size_t(scale.mWidth) + 1);
        for (int x = 0; x <= scale.mWidth; ++x)
            ASSERT_EQ(columns.mVEdge[size_t(x)], param.Evaluate(scale.ToTime(x), r)) << "column " << x;
        const std::vector<double>& seams = sampler.GetSeamTimes();
        for (size_t i = 0; i < seams.size(); ++i) {
            ASSERT_EQ(sampler.GetSeamValues()[i], param.Evaluate(seams[i], r)) << "seam " << i;
            ASSERT_TRUE(i == 0 || seams[i] >= seams[i - 1]);
        }
        // A column with a seam covers its edges too.
        size_t hard = 0;
        for (int x = 0; x < scale.mWidth; ++x) {
            while (hard < columns.mVHard.size() && columns.mVHard[hard].mColumn < x)
                ++hard;
            if (hard == columns.mVHard.size() || columns.mVHard[hard].mColumn != x) continue;
            for (const double edge : {columns.mVEdge[size_t(x)], columns.mVEdge[size_t(x) + 1]}) {
                ASSERT_LE(columns.mVHard[hard].mLow, edge);
                ASSERT_GE(columns.mVHard[hard].mHigh, edge);
            }
        }
    }
};

TEST_F(GraphModel, SamplesAreWhatTheEvaluationGives) {
    for (unsigned kind = 0; kind < KeyFrame_cls::INTERP_COUNT; ++kind) {
        for (const int period : {0, 360}) {
            SCOPED_TRACE(testing::Message() << "kind " << kind << ", period " << period);
            Curve curve({MakeKey(0.1, 350, kind, 90, 1.5), MakeKey(0.37, 10, kind, -40, 0.5),
                         MakeKey(0.4, 190, kind, 3, 2), MakeKey(0.9, 30, kind, 0, 1)});
            curve.mPeriodic.mValue = period;
            curve.AdjustAutoControl();
            ExpectTrueSamples(curve, Scale());
            ExpectTrueSamples(curve, Scale(800, 36, 41)); // half a resolution is many pixels
            ExpectTrueSamples(curve, Scale(3));
            Parameters_cls::SetFrameNumber(0, 1);
            ExpectTrueSamples(curve, Scale());
            Parameters_cls::SetFrameNumber(100, 1);
        }
    }
    Curve constant({MakeKey(0.5, 7), MakeKey(0.6, 9)});
    constant.mbTimeDepend.mValue = false;
    ExpectTrueSamples(constant, Scale());
}

TEST_F(GraphModel, SamplesOfAnyKeysAreTrueAndEnd) {
    unsigned seed = 5;
    const auto random = [&seed] {
        seed = seed * 1664525u + 1013904223u;
        return double(seed >> 8) / double(1 << 24);
    };
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        Parameters_cls::SetFrameNumber(1 + int(random() * 3000), 1 + int(random() * 3));
        std::vector<KeyFrame_cls> keys;
        const int count = 1 + int(random() * (round % 10 == 0 ? 5000 : 30));
        for (int i = 0; i < count; ++i) {
            // Some at one place, some out of the film, some on the grid.
            double t = random() * 1.4 - 0.2;
            if (random() < 0.2 && i > 0) t = keys.back().mDoubleIndex;
            if (random() < 0.3) t = ToFilmGrid(std::fabs(t));
            keys.push_back(MakeKey(t, random() * 1000 - 500, unsigned(random() * 5), random(), random()));
        }
        Curve curve({});
        curve.ExecCommandSetKeys(keys);
        if (round % 3 == 0) curve.mPeriodic.mValue = 90;
        const int first = int(random() * Parameters_cls::msFrameNumber);
        ExpectTrueSamples(curve, Scale(300, first, first + 1 + int(random() * 500)));
    }
}

TEST_F(GraphModel, AStepIsOneColumnFromValueToValue) {
    const Curve curve({MakeKey(0.2, 10, INTERP_STEP), MakeKey(0.6, 90, INTERP_STEP), MakeKey(0.8, 90)});
    const GraphScale scale = Scale();
    CurveSampler_cls sampler;
    CurveColumns columns;
    sampler.Sample(curve, scale, 0.01, &columns);
    const int seam = int(scale.ToX(0.6 - 0.005)); // it holds until half a resolution before the key
    const auto there = std::find_if(columns.mVHard.begin(), columns.mVHard.end(),
                                    [&](const auto& hard) { return hard.mColumn == seam; });
    ASSERT_NE(there, columns.mVHard.end());
    EXPECT_EQ(there->mLow, 10);
    EXPECT_EQ(there->mHigh, 90);
    for (int x = 0; x <= scale.mWidth; ++x)
        EXPECT_EQ(columns.mVEdge[size_t(x)], x <= seam ? 10 : 90) << x;
    GraphRaster_cls raster;
    raster.Resize(scale.mWidth, scale.mHeight);
    raster.Fill(0);
    raster.Curve(columns, scale, 0xFFFFFF, 2.0f);
    const int middle = int(scale.ToY(50));
    for (int x = 0; x < scale.mWidth; ++x)
        EXPECT_EQ(raster.Get(x, middle) != 0, x == seam) << x;
    EXPECT_EQ(raster.Get(100, int(scale.ToY(10))), 0xFFFFFFu);
    EXPECT_EQ(raster.Get(700, int(scale.ToY(90))), 0xFFFFFFu);
}

TEST_F(GraphModel, ALineIsAsThickAsWideWhateverItsSlope) {
    for (const double high : {100.0, 130.0, 400.0, 4000.0}) {
        const Curve curve({MakeKey(0, 100 - high), MakeKey(1, high)});
        const GraphScale scale = Scale();
        CurveSampler_cls sampler;
        CurveColumns columns;
        sampler.Sample(curve, scale, 1e-6, &columns);
        GraphRaster_cls raster;
        raster.Resize(scale.mWidth, scale.mHeight);
        raster.Fill(0);
        raster.Curve(columns, scale, 0x00FF00, 1.6f);
        double ink = 0.0;
        for (int x = 0; x < scale.mWidth; ++x)
            for (int y = 0; y < scale.mHeight; ++y)
                ink += (raster.Get(x, y) >> 8 & 255) / 255.0;
        const double rows = (2 * high - 100) / scale.mValuePerPixel;
        const double across = 768 * std::min(1.0, scale.mHeight / rows);
        const double length = std::hypot(across, std::min(rows, double(scale.mHeight)));
        EXPECT_NEAR(ink / length, 1.6, 0.3) << high;
    }
}

TEST_F(GraphModel, WildValuesAreCutAndPainted) {
    GraphRaster_cls raster;
    CurveSampler_cls sampler;
    CurveColumns columns;
    const double huge = std::numeric_limits<double>::max();
    for (const double wild : {kNaN, HUGE_VAL, -HUGE_VAL, huge, -huge, 1e-320}) {
        for (unsigned kind = 0; kind < KeyFrame_cls::INTERP_COUNT; ++kind) {
            Curve curve({MakeKey(0.2, 1, kind, huge, huge), MakeKey(0.5, wild, kind, wild, wild),
                         MakeKey(0.5, -wild, kind), MakeKey(0.8, 2, kind)});
            curve.mPeriodic.mValue = 360;
            for (const ValueRange& values :
                 {ValueRange{0, 10}, ValueRange{-huge, huge}, ValueRange{wild, wild}}) {
                for (const int width : {0, 1, 33, 200}) {
                    const GraphScale scale = Scale(width, 0, 100, values);
                    EXPECT_GT(scale.mValuePerPixel, 0.0);
                    sampler.Sample(curve, scale, 0.01, &columns);
                    raster.Resize(scale.mWidth, scale.mHeight);
                    raster.Curve(columns, scale, 0xFF, 1.5f);
                    const ValueRange fit = FitValues({columns});
                    EXPECT_TRUE(std::isfinite(fit.mLow) && std::isfinite(fit.Span()) && fit.Span() > 0.0);
                }
            }
            for (const KeyFrame_cls& key : curve.GetKeys()) {
                const double y = Scale().ToY(key.mValue);
                EXPECT_LE(std::fabs(y), GraphScale::kFar);
                raster.Diamond(50.0f, static_cast<float>(y), 4.0f, 0xFF);
            }
        }
    }
}

TEST_F(GraphModel, PixelsAndTimesStandInLineWithTheStrips) {
    FrameScale frames;
    frames.mFirst = 20;
    frames.mLast = 60;
    frames.mLeft = 16;
    frames.mWidth = 768;
    const GraphScale scale = MakeGraphScale(frames, 100, ValueRange{-1, 3}, 800, 200);
    for (const int frame : {20, 33, 60})
        EXPECT_NEAR(scale.ToX(frame / 100.0), frames.ToPixel(frame) + 0.5, 0.51);
    EXPECT_NEAR(scale.ToTime(scale.ToX(0.4)), 0.4, 1e-12);
    EXPECT_NEAR(scale.ToValue(scale.ToY(2.0)), 2.0, 1e-12);
    EXPECT_EQ(scale.ToY(3.0), 0.0);
    EXPECT_EQ(scale.ToY(-1.0), 200.0);
    frames.mFirst = frames.mLast = 0; // a film of one frame
    const GraphScale one = MakeGraphScale(frames, 0, ValueRange{0, 1}, 800, 200);
    EXPECT_NEAR(one.ToX(0.0), 16.5, 1e-9);
    EXPECT_TRUE(std::isfinite(one.ToTime(800)));
}

TEST_F(GraphModel, LabelsOfTheAxisKeepClearOfTheCursor) {
    for (const double cursor : {-5.0, 0.0, 20.0, 39.0, 60.0, 395.0}) {
        const int left = PlaceAxisLabels(cursor, 30, 4, 400);
        EXPECT_TRUE(cursor < left || cursor > left + 30) << cursor;
        EXPECT_GE(left, 4);
        EXPECT_LE(left + 30, 400);
    }
    EXPECT_EQ(PlaceAxisLabels(200.0, 30, 4, 400), 4);
}

TEST_F(GraphModel, TicksAreRoundAndTheirTextsTellThemApart) {
    const struct {
        ValueRange mValues;
        int mPixels;
        double mStep;
    } cases[] = {{{0, 10}, 200, 2}, {{0, 1}, 1000, 0.05}, {{-3e6, 5e6}, 400, 1e6}, {{1e-7, 2e-7}, 340, 1e-8}};
    for (const auto& c : cases)
        EXPECT_NEAR(TickStep(c.mValues, c.mPixels, 34) / c.mStep, 1.0, 1e-9) << c.mStep;
    EXPECT_EQ(TickText(0.30000000000000004, 0.1), "0.3");
    EXPECT_EQ(TickText(-1e-17, 0.1), "0");
    EXPECT_EQ(TickText(250, 50), "250");
    EXPECT_EQ(TickText(-2.5e9, 5e8), "-2.5e+09");
    EXPECT_NE(TickText(1e9 + 1e-3, 1e-3), TickText(1e9 + 2e-3, 1e-3));
    for (double span = 1e-29; span < 1e300; span *= 7.3e3)
        for (const double around : {0.0, 1.0, -1e10, 1e299}) {
            const ValueRange values = ValueRange{around, around + span}.Sane();
            const double step = TickStep(values, 600, 34);
            EXPECT_GE(step / values.Span(), 33.9 / 600) << span << " " << around;
            EXPECT_LE(step / values.Span(), 2.6 * 34.0 / 600) << span << " " << around;
        }
}

TEST_F(GraphModel, FittingLeavesRoomAndGivesConstantsASpan) {
    CurveSampler_cls sampler;
    std::vector<CurveColumns> columns(2);
    const Curve a({MakeKey(0, 10), MakeKey(1, 20)});
    const Curve b({MakeKey(0, -5), MakeKey(0.3, -30), MakeKey(1, -5)});
    sampler.Sample(a, Scale(), 0.01, &columns[0]);
    sampler.Sample(b, Scale(), 0.01, &columns[1]);
    const ValueRange both = FitValues(columns);
    EXPECT_LT(both.mLow, -30);
    EXPECT_GT(both.mLow, -40);
    EXPECT_GT(both.mHigh, 20);
    EXPECT_LT(both.mHigh, 30);
    // The dip lies before these frames.
    sampler.Sample(b, Scale(800, 60, 100), 0.01, &columns[1]);
    columns.erase(columns.begin());
    EXPECT_GT(FitValues(columns).mLow, -30);
    for (const double value : {0.0, 5.0, -1e9, 1e-9}) {
        sampler.Sample(Curve({MakeKey(0, value)}), Scale(), 0.01, &columns[0]);
        const ValueRange fit = FitValues(columns);
        EXPECT_LT(fit.mLow, value);
        EXPECT_GT(fit.mHigh, value);
        EXPECT_LE(fit.Span(), std::max(2.0, 1.1 * std::fabs(value)));
    }
    EXPECT_GT(FitValues({}).Span(), 0.0);
    const ValueRange zoomed = ValueRange{0, 10}.Zoomed(4, 0.5);
    EXPECT_EQ(zoomed.mLow, 2.0);
    EXPECT_EQ(zoomed.mHigh, 7.0);
    ValueRange closer{1e6, 1e6 + 1};
    for (int i = 0; i < 500; ++i)
        closer = closer.Zoomed(1e6, 0.8);
    EXPECT_GT(closer.mHigh, closer.mLow) << "zooming in ends where numbers can't be told apart";
    for (int i = 0; i < 5000; ++i)
        closer = closer.Zoomed(1e6, 1.25);
    EXPECT_TRUE(std::isfinite(closer.Span()));
}

} // namespace
