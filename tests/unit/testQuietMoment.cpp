#include <gtest/gtest.h>

#include "COMMON/clsQuietMoment.h"

namespace {

TEST(QuietMoment, ItIsToldOnceAfterEachWork) {
    QuietMoment_cls moment;
    const auto count = [&moment](long long done) {
        int told = 0;
        for (int i = 0; i < 3 * QuietMoment_cls::kStrikes; ++i)
            told += moment.Strike(done) ? 1 : 0;
        return told;
    };
    EXPECT_EQ(count(0), 0) << "nothing was done";
    EXPECT_EQ(count(7), 1);
    EXPECT_EQ(count(7), 0);
    for (long long done = 8; done < 30; ++done)
        EXPECT_FALSE(moment.Strike(done)) << "no rest";
    EXPECT_EQ(count(29), 1);
}

} // namespace
