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
