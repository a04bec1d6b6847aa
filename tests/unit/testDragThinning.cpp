// How many particles are drawn while a hand drags.
#include <gtest/gtest.h>

#include "GL/VIEW/clsDragThinning.h"

namespace {

constexpr long long kMany = 1000000;

/// What a picture of so many particles takes on some machine.
double Cost(long long particles, int factor) { return 8.0 + 0.0003 * double(particles / factor); }

TEST(DragThinning, theSecondPictureOfADragKeepsUpAndStays) {
    DragThinning_cls thinning;
    thinning.NotePaint(Cost(kMany, 1), kMany, 1);
    EXPECT_EQ(thinning.GetFactor(), 1) << "nobody drags";
    thinning.Begin(true);
    int paints = 0;
    for (; Cost(kMany, thinning.GetFactor()) > DragThinning_cls::kFrameMillis; ++paints)
        thinning.NotePaint(Cost(kMany, thinning.GetFactor()), kMany, 1);
    EXPECT_LE(paints, 1);
    for (int k = 0; k < 50; ++k) {
        thinning.NotePaint(Cost(kMany, thinning.GetFactor()), kMany, 1);
        EXPECT_LE(Cost(kMany, thinning.GetFactor()), DragThinning_cls::kFrameMillis) << k;
        EXPECT_GE(Cost(kMany, thinning.GetFactor()), 0.2 * DragThinning_cls::kFrameMillis)
            << "and no thinner";
    }
    thinning.Rest();
    EXPECT_EQ(thinning.GetFactor(), 1);
}

// Where a paint takes long whatever is drawn, thinning on and on would leave nothing to see.
TEST(DragThinning, whatParticlesDoNotCostTakesNoneAway) {
    const auto cost = [](int factor) { return 36.0 + 300.0 / factor; };
    DragThinning_cls thinning;
    thinning.NotePaint(cost(1), kMany, 1);
    thinning.Begin(true);
    for (int k = 0; k < 30; ++k)
        thinning.NotePaint(cost(thinning.GetFactor()), kMany, 1);
    EXPECT_GE(thinning.GetFactor(), 20);
    EXPECT_LE(thinning.GetFactor(), 32);
    // One paint that something has held up is soon forgotten.
    thinning.NotePaint(400.0, kMany, 1);
    for (int k = 0; k < 6; ++k)
        thinning.NotePaint(cost(thinning.GetFactor()), kMany, 1);
    EXPECT_LE(thinning.GetFactor(), 32);
    // The view comes nearer: each particle costs more.
    for (int k = 0; k < 10; ++k)
        thinning.NotePaint(36.0 + 900.0 / thinning.GetFactor(), kMany, 1);
    EXPECT_GE(thinning.GetFactor(), 60);
}

TEST(DragThinning, viewsShareTheTimeAndFewParticlesStay) {
    DragThinning_cls one, four, few, unwanted;
    one.NotePaint(200.0, kMany, 1);
    four.NotePaint(200.0, kMany, 4);
    few.NotePaint(2000.0, 3000, 1);
    unwanted.NotePaint(200.0, kMany, 1);
    one.Begin(true);
    four.Begin(true);
    few.Begin(true);
    unwanted.Begin(false);
    EXPECT_EQ(one.GetFactor(), 5);
    EXPECT_EQ(four.GetFactor(), 20);
    EXPECT_EQ(few.GetFactor(), 1) << "something else is slow";
    EXPECT_EQ(unwanted.GetFactor(), 1);
}

} // namespace
