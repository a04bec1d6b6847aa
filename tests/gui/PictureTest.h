// Base of tests that look at pictures: a view of a known size, a camera at a known place, particles at
// chosen points and nothing else in the picture.
#pragma once

#include <array>
#include <vector>

#include "GuiTest.h"

class wxNotebook;

class PictureTest : public GuiTest {
protected:
    using Point = std::array<double, 3>;

    void SetUp() override;
    void TearDown() override;

    /// Resize the window until view 0 has this many pixels.
    static bool SizeView(int w, int h);
    /// Open a snapshot with these particles, white opaque points of `size` pixels of the face.
    void ShowParticles(const std::vector<Point>& points, int size);
    /// The free camera of view 0 at the origin, looking along x with z up.
    static void LookAlongX();
    /// The direction `polar` degrees off x, at `around` degrees from right through up.
    static Point Direction(double polar, double around);
    /// Middle of the light within `radius` pixels of a place; a place far away when there is none.
    static std::array<double, 2> LightNear(const Picture_st& picture, double x, double y, int radius);
    static int Channel(const Picture_st& picture, int x, int y, int c);
    static void SetBackground(float r, float g, float b);
    static void Repaint();
    static wxNotebook* OptionBook(); ///< the lower book of pages

    TempDir_cls mDir;
    std::vector<float> mRadii; ///< of what ShowParticles shows, by turns; none: all 1
    wxSize mSize;
};
