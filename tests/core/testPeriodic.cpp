// The periodic box: its vectors and its text.
#include <gtest/gtest.h>

#include "PDATA/clsPeriodicBoundary.h"

TEST(Periodic, ScalesEachCoordinateOfItsVectors) {
    PeriodicBoundary_cls box;
    float v[3];
    box.GetBoundaryVector(v, 1);
    EXPECT_TRUE(v[0] == 0 && v[1] == 10 && v[2] == 0);
    box.ReadStrLine("PeriodicSize=2 3 4");
    box.ReadStrLine("PeriodicBaseVector0=1 1 1");
    box.GetBoundaryVector(v, 0);
    EXPECT_TRUE(v[0] == 2 && v[1] == 3 && v[2] == 4);
    box.GetBoundaryVector(v, 2);
    EXPECT_TRUE(v[0] == 0 && v[1] == 0 && v[2] == 40);
    box.SetToDefault();
    EXPECT_EQ(
        "PeriodicType=0\nPeriodicSize=1.000000 1.000000 1.000000\nPeriodicEffect=0\n"
        "PeriodicBaseVector0=10.000000 0.000000 0.000000\nPeriodicBaseVector1=0.000000 10.000000 0.000000\n"
        "PeriodicBaseVector2=0.000000 0.000000 10.000000\n",
        box.Serialize());
}
