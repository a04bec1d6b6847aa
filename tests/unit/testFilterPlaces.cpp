// Where filters put the data: cells of copies, the box with its anchor, and who asks for places under it.
#include "FilterFixture.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "COMMON/clsMyVector.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "GL/BASE/ViewFit.h"
#include "GL/DRAW/PlaceMatrix.h"
#include "PDATA/clsPeriodicBoundary.h"

namespace {

class FilterPlaces : public FilterTest {
protected:
    FilterCopy_cls& AddCopies(std::array<int, 3> from, std::array<int, 3> to) {
        mLists.ClearFilters();
        mLists.mpCPeriodic = &mPeriodic;
        auto& filter = Add<FilterCopy_cls>(FILTER_COPY);
        for (size_t axis = 0; axis < 3; ++axis) {
            filter.GetPCData()->mCMin[axis].mValue = from[axis];
            filter.GetPCData()->mCMax[axis].mValue = to[axis];
        }
        return filter;
    }
    FilterDataBoxData_cls& AddBox(const Place_t& t, const Place_t& r, const Place_t& s, const Place_t& a) {
        mLists.ClearFilters();
        FilterDataBoxData_cls& box = *Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
        const auto set = [](ParamGroup_cls* group, const Place_t& v) {
            SetValues(group, double(v[0]), double(v[1]), double(v[2]));
        };
        set(box.mpCTranslate, t);
        set(box.mpCRotate, r);
        set(box.mpCScale, s);
        set(box.mpCAnchor.get(), a);
        box.UpdateCurrentObj(0.0);
        return box;
    }
    static std::array<double, 3> At(const FilterDataBoxData_cls& box, const Place_t& p) {
        double matrix[16];
        EXPECT_TRUE(box.GetMatrix(matrix));
        std::array<double, 3> place{};
        PlacePoint(matrix, p.data(), place.data());
        return place;
    }
    static void ExpectAt(const FilterDataBoxData_cls& box, const Place_t& p, double x, double y, double z) {
        const auto at = At(box, p);
        EXPECT_NEAR(at[0], x, 1e-4);
        EXPECT_NEAR(at[1], y, 1e-4);
        EXPECT_NEAR(at[2], z, 1e-4);
    }

    PeriodicBoundary_cls mPeriodic;
};

TEST_F(FilterPlaces, CellsFollowTheirFormulasAlsoBackward) {
    for (const auto& [from, to] :
         std::vector<std::pair<std::array<int, 3>, std::array<int, 3>>>{{{0, 0, 0}, {1, 1, 1}},
                                                                        {{-1, 0, 2}, {2, 3, 4}},
                                                                        {{2, 1, 0}, {0, -2, 3}},
                                                                        {{5, 0, 1}, {3, 2, -2}},
                                                                        {{0, 4, 3}, {3, 2, 1}}}) {
        const FilterCopy_cls& copies = AddCopies(from, to);
        const int n0 = to[0] - from[0], n1 = to[1] - from[1], n2 = to[2] - from[2];
        ASSERT_EQ(copies.GetNumber(), n0 * n1 * n2);
        double low[3] = {1e9, 1e9, 1e9}, high[3] = {-1e9, -1e9, -1e9};
        for (int i = 0; i < n0 * n1 * n2; ++i) {
            const int i0 = i % n0, r = i - i0, i1 = (r / n0) % n1, i2 = (r - i1 * n0) / (n0 * n1);
            const int cell[3] = {i0 + from[0], i1 + from[1], i2 + from[2]};
            const int mask = (i0 != n0 - 1) | (i1 != n1 - 1) << 1 | (i2 != n2 - 1) << 2;
            EXPECT_EQ(copies.GetBitBoundary(i), mask) << i;
            const std::vector<float> place = copies.GetVTranslate(i);
            for (size_t axis = 0; axis < 3; ++axis) {
                EXPECT_EQ(place[axis], 10.0f * float(cell[axis])) << i;
                low[axis] = std::min(low[axis], double(cell[axis]));
                high[axis] = std::max(high[axis], double(cell[axis]));
            }
        }
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_EQ(copies.GetCells(axis).mFirst, low[axis]);
            EXPECT_EQ(copies.GetCells(axis).mLast, high[axis]);
        }
    }
}

TEST_F(FilterPlaces, NumbersOfCopiesNobodyMeant) {
    EXPECT_EQ(AddCopies({0, 0, 0}, {0, 3, 3}).GetNumber(), 0);
    EXPECT_EQ(AddCopies({2, 0, 0}, {0, 3, 3}).GetNumber(), -18);
    constexpr int kMin = std::numeric_limits<int>::min(), kMax = std::numeric_limits<int>::max();
    EXPECT_EQ(AddCopies({0, 0, 0}, {2000000, 2000000, 1}).GetNumber(), 4000000000000LL);
    const FilterCopy_cls& most = AddCopies({kMin, kMin, kMin}, {kMax, kMax, kMax});
    EXPECT_EQ(most.GetNumber(), std::numeric_limits<long long>::max());
    EXPECT_EQ(most.GetVTranslate(0)[2], 10.0f * float(kMin));
    EXPECT_EQ(AddCopies({kMax, kMin, kMin}, {kMin, kMax, kMax}).GetNumber(),
              -std::numeric_limits<long long>::max());
    // What nobody draws is asked without a fault.
    EXPECT_EQ(AddCopies({0, 0, 0}, {0, 0, 0}).GetVTranslate(5), (std::vector<float>{0, 0, 0}));
    FilterCopy_cls& off = AddCopies({1, 1, 1}, {4, 4, 4});
    off.GetPCData()->mCValid.mValue = false;
    EXPECT_EQ(off.GetNumber(), 1);
    EXPECT_TRUE(off.GetVTranslate(0).empty());
    EXPECT_EQ(off.GetBitBoundary(0), 0);
}

TEST_F(FilterPlaces, TheBoxTurnsAboutItsAnchor) {
    ExpectAt(AddBox({1, 2, 3}, {0, 0, 0}, {1, 1, 1}, {5, 6, 7}), {1, 1, 1}, 2, 3, 4);
    ExpectAt(AddBox({0, 0, 0}, {0, 0, 180}, {1, 1, 1}, {1, 0, 0}), {3, 1, 2}, -1, -1, 2);
    ExpectAt(AddBox({0, 0, 0}, {0, 0, 90}, {1, 1, 1}, {0, 0, 0}), {1, 0, 0}, 0, 1, 0);
    // The anchor stays, whatever the turn; the scale acts last, on the place as well.
    ExpectAt(AddBox({4, 0, -1}, {20, -70, 130}, {1, 1, 1}, {2, 3, 5}), {2, 3, 5}, 6, 3, 4);
    ExpectAt(AddBox({4, 0, -1}, {20, -70, 130}, {2, 3, -1}, {2, 3, 5}), {2, 3, 5}, 12, 9, -4);
    double matrix[16];
    const float inf = std::numeric_limits<float>::infinity();
    for (const float scale : {inf, -inf, 1e35f})
        EXPECT_FALSE(AddBox({1, 1, 1}, {0, 0, 10}, {1, scale, 1}, {0, 0, 0}).GetMatrix(matrix)) << scale;
    EXPECT_FALSE(AddBox({inf, 1, 1}, {0, 0, 10}, {1, 1, 1}, {0, 0, 0}).GetMatrix(matrix));
    EXPECT_TRUE(AddBox({1, 1, 1}, {0, 0, 10}, {0, -1, 0}, {0, 0, 0}).GetMatrix(matrix));
}

TEST_F(FilterPlaces, DepthsUnderABoxAreThoseOfTheScreen) {
    const auto places = Scatter(500, 3.0f);
    for (const Place_t& scale : {Place_t{1, 1, 1}, {2, 2, 2}, {0.3f, 4, 1}, {-1, 2, 5}, {1, 0, 2}}) {
        const FilterDataBoxData_cls& box = AddBox({1, -2, 0.5f}, {30, 100, -20}, scale, {2, 1, -1});
        double matrix[16];
        ASSERT_TRUE(box.GetMatrix(matrix));
        const double front[3] = {0.6, 0, -0.8}, eye[3] = {3, 1, 4};
        for (const int plane : {0, 1}) {
            DrawListOrder order;
            order.sortOrder = 1;
            order.planeDepth = plane;
            order.pPlace = matrix;
            std::copy_n(eye, 3, order.cameraPos);
            PullDirection(matrix, front, order.cameraDir);
            DrawList_t list;
            MakeDrawList(list, 500, 1, Raw(places), order);
            double last = 1e30;
            for (const ArrayAndIndex_cls& entry : list) {
                const auto at = At(box, places[size_t(entry.mIndex)]);
                const double way[3] = {at[0] - eye[0], at[1] - eye[1], at[2] - eye[2]};
                const double depth = plane ? MyVector::GetScalarProduct(way, front) : MyVector::GetNorm(way);
                EXPECT_LE(depth, last + 1e-4);
                last = depth;
            }
        }
    }
}

TEST_F(FilterPlaces, QuadsCoverWhatABallWould) {
    double m[16], back[3];
    for (const Place_t& scale : {Place_t{1, 1, 1}, {2, 2, 2}, {0.5f, 3, 1}, {-1, 2, 5}}) {
        ASSERT_TRUE(AddBox({1, -2, 0.5f}, {30, 100, -20}, scale, {0, 0, 0}).GetMatrix(m));
        const double place[3] = {1, 2, 3};
        ASSERT_TRUE(UnplacePoint(m, place, back));
        const float there[3] = {float(back[0]), float(back[1]), float(back[2])};
        double again[3];
        PlacePoint(m, there, again);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(again[i], place[i], 1e-5);
        float corners[12];
        ASSERT_TRUE(GetFacingCorners(m, corners));
        double seen[4][3];
        for (int c = 0; c < 4; ++c) {
            PlacePoint(m, corners + 3 * c, seen[c]);
            EXPECT_NEAR(seen[c][2] - m[14], 0.0, 1e-5) << "in the plane of the view";
        }
        // Half way between two corners lies on the ellipse; its sum of squares is that of the ball's image.
        double square = 0.0, ball = 0.0;
        for (int i = 0; i < 2; ++i) {
            const double right = (seen[1][i] + seen[2][i]) / 2 - m[12 + i];
            const double up = (seen[2][i] + seen[3][i]) / 2 - m[12 + i];
            square += right * right + up * up;
            for (int k = 0; k < 3; ++k)
                ball += m[4 * k + i] * m[4 * k + i];
        }
        EXPECT_NEAR(square, ball, 1e-4 * ball);
        EXPECT_EQ(GetPlaceDeterminant(m) < 0.0, scale[0] < 0);
    }
    float corners[12];
    ASSERT_TRUE(AddBox({0, 0, 0}, {30, 0, 0}, {1, 0, 1}, {0, 0, 0}).GetMatrix(m));
    EXPECT_FALSE(GetFacingCorners(m, corners)) << "flat data have no quad that faces the eye";
    EXPECT_FALSE(UnplacePoint(m, back, back));
}

TEST_F(FilterPlaces, ReachCountsCopiesAndTheBox) {
    const auto places = Scatter(40, 1.0f);
    FilterCopy_cls& copies = AddCopies({-1, 0, 0}, {2, 1, 2});
    FitCloud_st cloud;
    cloud.mpPos = Raw(places);
    cloud.mNumber = 40;
    cloud.mRadiusConstant[0] = 0.25f;
    for (int axis = 0; axis < 3; ++axis) {
        float vector[3];
        copies.GetVector(axis, vector);
        std::copy_n(vector, 3, cloud.mPlace.mVector[axis]);
        cloud.mPlace.mFirst[axis] = copies.GetCells(axis).mFirst;
        cloud.mPlace.mLast[axis] = copies.GetCells(axis).mLast;
    }
    std::vector<std::vector<float>> shifts;
    for (int i = 0; i < copies.GetNumber(); ++i)
        shifts.push_back(copies.GetVTranslate(i));
    const FilterDataBoxData_cls& box = AddBox({1, 2, 3}, {10, 20, 30}, {2, 0.5f, 1}, {1, 1, 0});
    ASSERT_TRUE(box.GetMatrix(cloud.mPlace.mMatrix));
    CloudReach_cls reach;
    const double directions[3][3] = {{1, 0, 0}, {-0.3, 2, 0.1}, {0, -1, -1}};
    for (const auto& d : directions)
        reach.Add(d);
    ASSERT_TRUE(reach.Measure(cloud));
    for (int k = 0; k < 3; ++k) {
        double most = -1e30, pulled[3];
        PullDirection(cloud.mPlace.mMatrix, directions[k], pulled);
        for (const auto& shift : shifts)
            for (const Place_t& p : places) {
                const auto at = At(box, {p[0] + shift[0], p[1] + shift[1], p[2] + shift[2]});
                most = std::max(most, MyVector::GetScalarProduct(directions[k], at.data()));
            }
        EXPECT_NEAR(reach.Get(k), most + 0.25 * MyVector::GetNorm(pulled), 1e-3);
    }
}

} // namespace
