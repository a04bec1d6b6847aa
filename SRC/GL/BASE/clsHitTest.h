// What is under the mouse: takes what is drawn in place of the screen, and finds on the processor which names
// have a part of it within a small region of the picture.
#pragma once

#include <vector>

#include "GL/BASE/clsMarkPainter.h"

/// Where in a picture something is looked for: middle and half size, in units of half the projection's width
/// and height, y upward.
struct PickRegion_st {
    double mMiddle[2];
    double mHalf[2];

    /// `mouseX` and `mouseY` are 0 to 1 from the upper left corner of a window of this aspect (width /
    /// height), in which the middle of a square buffer of `size` pixels is shown as wide as the window is.
    /// The region is the 50th part of the buffer wide, in whole pixels.
    static PickRegion_st Of(double mouseX, double mouseY, double aspect, int size);
};

class HitTest_cls final : public MarkPainter_cls {
public:
    using Names = std::vector<int>;

    HitTest_cls(const double* pView, const double* pProjection, double pixelsAcross);

    /// What is drawn from here to EndHitTest is looked at.
    void StartHitTest(const PickRegion_st& region);
    void EndHitTest();
    /// The outer name of what was hit first, in the order of drawing, whatever lies in front; -1: nothing.
    int GetFirstObject() const;
    /// The second name of the first hit; -1 where it has none.
    int GetFirstObjectSub() const;
    /// The names of each hit, the outer one first. Hits one after another under the same names are one.
    const std::vector<Names>& GetVVHittedObject() const { return mVVHits; }

    bool IsPick() const override { return true; }
    void PushMatrix() override { mVMatrices.push_back(mVMatrices.back()); }
    void PopMatrix() override { mVMatrices.pop_back(); }
    void Multiply(const double* pMatrix) override;
    void GetModelView(double out[16]) const override;
    void SetColor(float, float, float) override {}
    void SetDashes(unsigned) override {}
    void SetHandle(float) override {}
    void Draw(Shape shape, const Point* pPoints, int number) override;
    void PushName(int name) override;
    void PopName() override;

protected:
    void DoTranslate(const double* pWay) override;
    void DoRotate(double degrees, const double* pAxis) override;
    void DoScale(const double* pFactors) override;

private:
    using Matrix = std::array<double, 16>;
    using Clip = std::array<double, 4>; ///< inside where each of x, y, z lies within w

    Clip ToClip(const Point& point) const;
    void Record();
    static bool IsSegmentHit(const Clip& a, const Clip& b);
    static bool IsTriangleHit(const Clip& a, const Clip& b, const Clip& c);

    std::vector<Matrix> mVMatrices;
    PickRegion_st mRegion{};
    bool mbHit = false;
    Names mVNames;
    std::vector<Names> mVVHits;
};
