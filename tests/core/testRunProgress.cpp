#include <gtest/gtest.h>

#include "COMMON/clsRunProgress.h"

TEST(RunProgress, TellsCountAndTimeLeft) {
    EXPECT_EQ(RunProgress_cls::MakeText(12, 300, 65000), "Frame 12 of 300, 1:05 left");
    EXPECT_EQ(RunProgress_cls::MakeText(1, 300, 7261400), "Frame 1 of 300, 2:01:01 left");
    EXPECT_EQ(RunProgress_cls::MakeText(299, 300, 20), "Frame 299 of 300, 0:01 left")
        << "never 0:00 too early";
}

TEST(RunProgress, TellsNoTimeThatNobodyKnows) {
    RunProgress_cls progress;
    progress.Begin(300);
    EXPECT_EQ(progress.GetText(), "Frame 0 of 300");
    progress.Done(300);
    EXPECT_EQ(progress.GetText(), "Frame 300 of 300");
    progress.Begin(0);
    progress.Done(7);
    EXPECT_EQ(progress.GetText(), "Frame 7");
}

TEST(RunProgress, EstimatesFromWhatIsDone) {
    RunProgress_cls progress;
    progress.Begin(1000000);
    progress.Done(1);
    EXPECT_TRUE(progress.GetText().EndsWith(" left")) << progress.GetText();
    progress.Begin(2);
    EXPECT_EQ(progress.GetText(), "Frame 0 of 2") << "a new run knows nothing of the last one";
}
