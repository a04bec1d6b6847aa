#include <gtest/gtest.h>

#include <cmath>

#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLDrawData.h"

namespace {

TEST(Downsizing, FactorsAreOneWhenAllIsDrawn) {
    EXPECT_DOUBLE_EQ(GLDrawData_cls::GetSteppingAlphaFactor(1), 1.0);
    EXPECT_DOUBLE_EQ(GLDrawData_cls::GetSteppingRadiusFactor(1), 1.0);
    EXPECT_DOUBLE_EQ(GLDrawData_cls::GetSteppingAlphaFactorUnlimited(1), 1.0);
    EXPECT_DOUBLE_EQ(GLDrawData_cls::GetSteppingRadiusFactorUnlimited(1), 1.0);
}

TEST(Downsizing, FactorsAtTen) {
    EXPECT_NEAR(GLDrawData_cls::GetSteppingAlphaFactor(10), 1.0 + 0.74 * 9, 1e-12);
    EXPECT_NEAR(GLDrawData_cls::GetSteppingRadiusFactor(10), std::sqrt(1.0 + 0.26 * 9), 1e-12);
}

TEST(Downsizing, LimitsMeetThePlainFormsAtAHundred) {
    EXPECT_NEAR(GLDrawData_cls::GetSteppingAlphaFactor(100), 20.8, 1e-9);
    EXPECT_NEAR(GLDrawData_cls::GetSteppingAlphaFactorUnlimited(100), 20.8, 1e-9);
    EXPECT_NEAR(GLDrawData_cls::GetSteppingRadiusFactor(100), std::sqrt(1.0 + 0.8 * 99), 1e-9);
    EXPECT_NEAR(GLDrawData_cls::GetSteppingRadiusFactorUnlimited(100), std::sqrt(1.0 + 0.8 * 99), 1e-9);
}

TEST(Downsizing, BeyondAHundredOnlyOneFormIsLimited) {
    EXPECT_NEAR(GLDrawData_cls::GetSteppingAlphaFactor(200), 1.0 + 0.2 * 199, 1e-9);
    EXPECT_NEAR(GLDrawData_cls::GetSteppingAlphaFactorUnlimited(200), 1.0 - 0.4 * 199, 1e-9);
    EXPECT_NEAR(GLDrawData_cls::GetSteppingRadiusFactor(200), std::sqrt(1.0 + 0.8 * 199), 1e-9);
    EXPECT_NEAR(GLDrawData_cls::GetSteppingRadiusFactorUnlimited(200), std::sqrt(1.0 + 1.4 * 199), 1e-9);
}

TEST(Downsizing, AFileCannotMakeTheStepSmallerThanOne) {
    DrawOption_cls option;
    EXPECT_EQ(option.GetDownSizing(), 1);
    for (const char* line : {"DownSizing=0", "DownSizing=-7", "DownSizing=many"}) {
        option.ReadStrLine(line);
        EXPECT_EQ(option.GetDownSizing(), 1) << line;
    }
    option.ReadStrLine("DownSizing=12");
    EXPECT_EQ(option.GetDownSizing(), 12);
}

} // namespace
