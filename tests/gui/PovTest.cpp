#include "PovTest.h"

#include <algorithm>
#include <cmath>

std::vector<PovTest::Spot_st> PovTest::FindSpots(const wxImage& image, int level) {
    const int w = image.GetWidth(), h = image.GetHeight();
    std::vector<bool> seen(size_t(w) * size_t(h));
    const auto take = [&](int x, int y) {
        if (x < 0 || y < 0 || x >= w || y >= h) return false;
        const size_t at = size_t(y) * size_t(w) + size_t(x);
        const bool bNew = !seen[at] && GreyAt(image, x, y) > level;
        if (bNew) seen[at] = true;
        return bNew;
    };
    std::vector<Spot_st> spots;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            if (!take(x, y)) continue;
            Spot_st spot = {0, 0, x, x, y, y, 0};
            std::vector<wxPoint> open = {{x, y}};
            while (!open.empty()) {
                const wxPoint p = open.back();
                open.pop_back();
                spot.mX += p.x + 0.5;
                spot.mY += p.y + 0.5;
                ++spot.mCount;
                spot.mLeft = std::min(spot.mLeft, p.x);
                spot.mRight = std::max(spot.mRight, p.x);
                spot.mTop = std::min(spot.mTop, p.y);
                spot.mBottom = std::max(spot.mBottom, p.y);
                for (const wxPoint& q :
                     {p + wxPoint(1, 0), p - wxPoint(1, 0), p + wxPoint(0, 1), p - wxPoint(0, 1)})
                    if (take(q.x, q.y)) open.push_back(q);
            }
            spot.mX /= spot.mCount;
            spot.mY /= spot.mCount;
            if (spot.mCount > 3) spots.push_back(spot);
        }
    return spots;
}

void PovTest::ExpectSameSpots(const wxImage& view, const wxImage& rendered, size_t number) {
    const std::vector<Spot_st> a = FindSpots(view);
    std::vector<Spot_st> b = FindSpots(rendered);
    EXPECT_EQ(a.size(), number) << "in the view";
    EXPECT_EQ(b.size(), number) << "rendered";
    for (const Spot_st& spot : a) {
        if (b.empty()) return;
        const auto distance = [&spot](const Spot_st& o) {
            return std::hypot(o.mX - spot.mX, o.mY - spot.mY);
        };
        const auto found = std::min_element(b.begin(), b.end(), [&](const Spot_st& p, const Spot_st& q) {
            return distance(p) < distance(q);
        });
        EXPECT_LE(distance(*found), 1.0)
            << "at " << spot.mX << ", " << spot.mY << " and " << found->mX << ", " << found->mY;
        EXPECT_NEAR(found->mLeft, spot.mLeft, 2);
        EXPECT_NEAR(found->mRight, spot.mRight, 2);
        EXPECT_NEAR(found->mTop, spot.mTop, 2);
        EXPECT_NEAR(found->mBottom, spot.mBottom, 2);
        b.erase(found);
    }
}

double PovTest::GetSimilarity(const wxImage& a, const wxImage& b) {
    constexpr int kSide = 8;
    constexpr double kC1 = 0.01 * 255 * 0.01 * 255, kC2 = 0.03 * 255 * 0.03 * 255;
    double sum = 0.0;
    int windows = 0;
    for (int y = 0; y + kSide <= a.GetHeight(); y += kSide / 2)
        for (int x = 0; x + kSide <= a.GetWidth(); x += kSide / 2) {
            double ma = 0, mb = 0, aa = 0, bb = 0, ab = 0;
            for (int j = 0; j < kSide; ++j)
                for (int i = 0; i < kSide; ++i) {
                    const double p = GreyAt(a, x + i, y + j), q = GreyAt(b, x + i, y + j);
                    ma += p;
                    mb += q;
                    aa += p * p;
                    bb += q * q;
                    ab += p * q;
                }
            const double n = kSide * kSide;
            ma /= n;
            mb /= n;
            const double va = aa / n - ma * ma, vb = bb / n - mb * mb, cov = ab / n - ma * mb;
            sum += (2 * ma * mb + kC1) * (2 * cov + kC2) / ((ma * ma + mb * mb + kC1) * (va + vb + kC2));
            ++windows;
        }
    return sum / windows;
}
