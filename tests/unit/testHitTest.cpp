// What a click finds, by closed forms.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "GL/BASE/clsGLGuides.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsHitTest.h"
#include "GL/BASE/clsPositionAndDirection.h"

namespace {

using Point = MarkPainter_cls::Point;
using Shape = MarkPainter_cls::Shape;
using Names = HitTest_cls::Names;

constexpr int kSize = 500; // a tenth of it is the region's width

/// An eye at (0, 0, 5) that looks down to the origin with 90 degrees: at the depth of the origin the picture
/// is 10 wide.
class HitTest : public ::testing::Test {
protected:
    static HitTest_cls Make(bool bPerspective = true, double x = 0.5, double y = 0.5, double aspect = 1.0) {
        PositionAndDirection_cls eye;
        const double front[3] = {0, 0, -1}, up[3] = {0, 1, 0}, anchor[3] = {0, 0, 0};
        eye.Set(0, 0, 5);
        eye.Setv(front, up);
        eye.SetAncPos(anchor);
        GLPerspective_cls perspective(1, 1, 90, 0.1, 100);
        perspective.mbPerspective = bPerspective;
        double view[16], projection[16];
        GLPerspective_cls::GetModelViewMatrix(eye, view);
        perspective.GetProjectionMatrix(eye, projection);
        HitTest_cls test(view, projection, 100);
        test.StartHitTest(PickRegion_st::Of(x, y, aspect, kSize));
        return test;
    }
    static void Line(HitTest_cls& test, int name, const Point& a, const Point& b) {
        const MarkName_cls scope(test, name);
        const Point ends[2] = {a, b};
        test.Draw(Shape::Lines, ends, 2);
    }
    static int FirstOf(const Point& a, const Point& b, bool bPerspective = true) {
        HitTest_cls test = Make(bPerspective);
        Line(test, 7, a, b);
        test.EndHitTest();
        return test.GetFirstObject();
    }
};

TEST_F(HitTest, theRegionIsAFiftiethOfTheBufferInWholePixels) {
    const PickRegion_st middle = PickRegion_st::Of(0.5, 0.5, 2.0, 256);
    EXPECT_DOUBLE_EQ(middle.mMiddle[0], 0.0);
    EXPECT_DOUBLE_EQ(middle.mMiddle[1], 0.0);
    EXPECT_DOUBLE_EQ(middle.mHalf[0], 5.0 / 256) << "256 / 50 is 5";
    EXPECT_DOUBLE_EQ(middle.mHalf[1], 10.0 / 256);
    const PickRegion_st corner = PickRegion_st::Of(0.0, 0.0, 2.0, 256);
    EXPECT_DOUBLE_EQ(corner.mMiddle[0], -1.0);
    EXPECT_DOUBLE_EQ(corner.mMiddle[1], 0.5) << "the upper edge of a window twice as wide as high";
}

TEST_F(HitTest, linesAreHitWhereverTheirEndsAre) {
    EXPECT_EQ(FirstOf({-4, 0, 0}, {4, 0, 0}), 7);
    EXPECT_EQ(FirstOf({-4, 0.09f, 0}, {4, 0.09f, 0}), 7) << "0.02 of 5 is 0.1";
    EXPECT_EQ(FirstOf({-4, 0.11f, 0}, {4, 0.11f, 0}), -1);
    EXPECT_EQ(FirstOf({0, 0, -1000}, {0, 0, 1000}), 7) << "from behind the eye to behind the far plane";
    EXPECT_EQ(FirstOf({-4, 0, 6}, {4, 0, 6}), -1) << "behind the eye";
    EXPECT_EQ(FirstOf({-4, 0, -200}, {4, 0, -200}), -1) << "behind the far plane";
    EXPECT_EQ(FirstOf({4, -4, 0}, {4, 4, 0}), -1);
    EXPECT_EQ(FirstOf({-1, 1, 0}, {1, -1, 0}), 7) << "across the corners";
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(FirstOf({nan, 0, 0}, {1, 0, 0}), -1);
    EXPECT_EQ(FirstOf({-1, 0, 0}, {inf, 0, 0}), -1);
    // Without perspective the picture is as wide as the anchor is far.
    EXPECT_EQ(FirstOf({-4, 0.04f, 2}, {4, 0.04f, 2}, false), 7);
    EXPECT_EQ(FirstOf({-4, 0.06f, 2}, {4, 0.06f, 2}, false), -1);
}

TEST_F(HitTest, facesAreHitInTheirMiddle) {
    HitTest_cls test = Make();
    const Point fan[4] = {{-4, -4, 0}, {4, -4, 0}, {4, 4, 0}, {-4, 4, 0}};
    const Point besides[3] = {{1, 1, 0}, {4, 1, 0}, {4, 4, 0}};
    {
        const MarkName_cls name(test, 1);
        test.Draw(Shape::Fan, besides, 3);
    }
    {
        const MarkName_cls name(test, 2);
        test.Draw(Shape::Loop, fan, 4);
    }
    {
        const MarkName_cls name(test, 3);
        test.Draw(Shape::Fan, fan, 4);
    }
    test.EndHitTest();
    ASSERT_EQ(test.GetVVHittedObject().size(), 1u);
    EXPECT_EQ(test.GetFirstObject(), 3);
    EXPECT_EQ(test.GetFirstObjectSub(), -1);
}

TEST_F(HitTest, theFirstDrawnWinsWhateverLiesInFront) {
    HitTest_cls test = Make();
    {
        const MarkName_cls outer(test, 12);
        const Point far[2] = {{-1, 0, -20}, {1, 0, -20}};
        const Point near[2] = {{-1, 0, 4}, {1, 0, 4}};
        const Point besides[2] = {{-1, 2, 0}, {1, 2, 0}};
        {
            const MarkName_cls inner(test, 0);
            test.Draw(Shape::Lines, besides, 2);
        }
        {
            const MarkName_cls inner(test, 1);
            test.Draw(Shape::Lines, far, 2);
            test.Draw(Shape::Lines, near, 2);
        }
        test.Draw(Shape::Lines, near, 2);
    }
    Line(test, 30, {-1, 0, 4.5f}, {1, 0, 4.5f});
    const Point nameless[2] = {{-1, 0, 0}, {1, 0, 0}};
    test.Draw(Shape::Lines, nameless, 2);
    test.EndHitTest();
    EXPECT_EQ(test.GetVVHittedObject(), (std::vector<Names>{{12, 1}, {12}, {30}}));
    EXPECT_EQ(test.GetFirstObject(), 12);
    EXPECT_EQ(test.GetFirstObjectSub(), 1);
    // Once more: what was found before is forgotten.
    test.StartHitTest(PickRegion_st::Of(0.1, 0.5, 1.0, kSize));
    Line(test, 30, {-1, 0, 0}, {1, 0, 0});
    test.EndHitTest();
    EXPECT_EQ(test.GetFirstObject(), -1);
}

TEST_F(HitTest, matricesActAsOpenGLsDo) {
    HitTest_cls test = Make();
    const double way[3] = {1, 2, 0}, factors[3] = {2, 1, 1}, back[3] = {-1, -2, 0};
    {
        const MarkScope_cls scope(test);
        test.Translate(way);
        test.Rotate(90, 2);
        test.Scale(factors); // the point (1, 0, 0) goes to (2, 0, 0), (0, 2, 0), (1, 4, 0)
        double view[16];
        test.GetModelView(view);
        EXPECT_NEAR(view[0] + view[12], 1.0, 1e-5);
        EXPECT_NEAR(view[1] + view[13], 4.0, 1e-5);
        EXPECT_NEAR(view[2] + view[14], -5.0, 1e-12);
    }
    test.Translate(back);
    Line(test, 5, {1, 2, 0}, {1, 2, 1});
    test.EndHitTest();
    EXPECT_EQ(test.GetFirstObject(), 5) << "the outer matrix is back";
}

TEST_F(HitTest, handlesKeepTheirSizeOnTheScreen) {
    const double nearBy[3] = {0, 0, 0}, farOff[3] = {0, 0, -45}, behind[3] = {0, 0, 6};
    const double axes[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (const bool bPerspective : {true, false}) {
        const HitTest_cls ruler = Make(bPerspective);
        EXPECT_NEAR(ruler.GetPixel(nearBy), bPerspective ? 0.1 : 0.05, 1e-9)
            << "100 pixels are 10, or 5, wide";
        EXPECT_NEAR(ruler.GetPixel(farOff), bPerspective ? 1.0 : 0.05, 1e-9);
        EXPECT_EQ(ruler.GetPixel(behind), bPerspective ? 0.0 : ruler.GetPixel(nearBy));
    }
    // A click 30 pixels to the right of the item is on its x arrow, which is 40 long, whatever its distance.
    for (const double* place : {nearBy, farOff}) {
        HitTest_cls test = Make(true, 0.5 + 0.3);
        GLGuides_cls(GLGuides_cls::TRANSLATE).DrawGuide(test, place, axes, -1);
        test.EndHitTest();
        EXPECT_EQ(test.GetFirstObject(), 0);
        HitTest_cls beyond = Make(true, 0.5 + 0.45);
        GLGuides_cls(GLGuides_cls::TRANSLATE).DrawGuide(beyond, place, axes, -1);
        beyond.EndHitTest();
        EXPECT_EQ(beyond.GetFirstObject(), -1);
        // The box of a scale handle goes on beyond the end; the ring about the line of sight is hit above.
        HitTest_cls box = Make(true, 0.5 + 0.45);
        GLGuides_cls(GLGuides_cls::SCALE).DrawGuide(box, place, axes, 0);
        box.EndHitTest();
        EXPECT_EQ(box.GetFirstObject(), 0);
        HitTest_cls ring = Make(true, 0.5 + 0.28, 0.5 - 0.28);
        GLGuides_cls(GLGuides_cls::ROTATE).DrawGuide(ring, place, axes, -1);
        ring.EndHitTest();
        EXPECT_EQ(ring.GetFirstObject(), 2);
    }
    HitTest_cls none = Make();
    GLGuides_cls(GLGuides_cls::TRANSLATE).DrawGuide(none, behind, axes, -1);
    none.EndHitTest();
    EXPECT_EQ(none.GetFirstObject(), -1);
}

} // namespace
