#include "GL/BASE/clsHitTest.h"

#include <algorithm>
#include <cmath>

#include "COMMON/clsMyVector.h"

namespace {

constexpr int kShare = 50; // of the buffer's width
constexpr int kPlanes = 6;

/// How far a place is inside of the plane 0 to 5: right and left, upper and lower, far and near.
double GetInside(const std::array<double, 4>& p, int plane) {
    const double along = p[size_t(plane / 2)];
    return plane % 2 == 0 ? p[3] - along : p[3] + along;
}

std::array<double, 4> Between(const std::array<double, 4>& a, const std::array<double, 4>& b, double t) {
    std::array<double, 4> out;
    for (size_t i = 0; i < 4; ++i)
        out[i] = a[i] + t * (b[i] - a[i]);
    return out;
}

bool IsFinite(const std::array<double, 4>& p) {
    return std::all_of(p.begin(), p.end(), [](double v) { return std::isfinite(v); });
}

} // namespace

PickRegion_st PickRegion_st::Of(double mouseX, double mouseY, double aspect, int size) {
    const double side = std::max(size, 1);
    PickRegion_st region;
    region.mMiddle[0] = 2.0 * mouseX - 1.0;
    region.mMiddle[1] = (1.0 - 2.0 * mouseY) / aspect;
    region.mHalf[0] = double(size / kShare) / side;
    region.mHalf[1] = double(size / kShare) * aspect / side;
    return region;
}

HitTest_cls::HitTest_cls(const double* pView, const double* pProjection, double pixelsAcross)
    : MarkPainter_cls(pProjection, pixelsAcross), mVMatrices(1) {
    std::copy_n(pView, 16, mVMatrices.back().begin());
}

void HitTest_cls::StartHitTest(const PickRegion_st& region) {
    mRegion = region;
    mbHit = false;
    mVNames.clear();
    mVVHits.clear();
}

void HitTest_cls::EndHitTest() { Record(); }

int HitTest_cls::GetFirstObject() const {
    return mVVHits.empty() || mVVHits.front().empty() ? -1 : mVVHits.front().front();
}

int HitTest_cls::GetFirstObjectSub() const {
    return mVVHits.empty() || mVVHits.front().size() < 2 ? -1 : mVVHits.front()[1];
}

void HitTest_cls::Record() {
    if (mbHit) mVVHits.push_back(mVNames);
    mbHit = false;
}

void HitTest_cls::PushName(int name) {
    Record();
    mVNames.push_back(name);
}

void HitTest_cls::PopName() {
    Record();
    mVNames.pop_back();
}

void HitTest_cls::Multiply(const double* pMatrix) {
    Matrix& top = mVMatrices.back();
    const Matrix old = top;
    for (size_t column = 0; column < 4; ++column)
        for (size_t row = 0; row < 4; ++row) {
            top[4 * column + row] = 0.0;
            for (size_t k = 0; k < 4; ++k)
                top[4 * column + row] += old[4 * k + row] * pMatrix[4 * column + k];
        }
}

void HitTest_cls::DoTranslate(const double* pWay) {
    const double matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, pWay[0], pWay[1], pWay[2], 1};
    Multiply(matrix);
}

void HitTest_cls::DoRotate(double degrees, const double* pAxis) {
    double matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    for (int column = 0; column < 3; ++column)
        MyVector::RotateAround(matrix + 4 * column, pAxis, degrees);
    Multiply(matrix);
}

void HitTest_cls::DoScale(const double* pFactors) {
    const double matrix[16] = {pFactors[0], 0, 0, 0, 0, pFactors[1], 0, 0, 0, 0, pFactors[2], 0, 0, 0, 0, 1};
    Multiply(matrix);
}

void HitTest_cls::GetModelView(double out[16]) const { std::copy_n(mVMatrices.back().begin(), 16, out); }

// The projection, and behind it the region in place of the picture.
HitTest_cls::Clip HitTest_cls::ToClip(const Point& point) const {
    const Matrix& view = mVMatrices.back();
    const double place[4] = {double(point[0]), double(point[1]), double(point[2]), 1.0};
    Clip eye{}, clip{};
    for (size_t row = 0; row < 4; ++row)
        for (size_t k = 0; k < 4; ++k)
            eye[row] += view[4 * k + row] * place[k];
    for (size_t row = 0; row < 4; ++row)
        for (size_t k = 0; k < 4; ++k)
            clip[row] += mProjection[4 * k + row] * eye[k];
    for (size_t i = 0; i < 2; ++i)
        clip[i] = (clip[i] - mRegion.mMiddle[i] * clip[3]) / mRegion.mHalf[i];
    return clip;
}

bool HitTest_cls::IsSegmentHit(const Clip& a, const Clip& b) {
    if (!IsFinite(a) || !IsFinite(b)) return false;
    double from = 0.0, to = 1.0;
    for (int plane = 0; plane < kPlanes; ++plane) {
        const double first = GetInside(a, plane), last = GetInside(b, plane);
        if (first < 0.0 && last < 0.0) return false;
        if (first < 0.0) from = std::max(from, first / (first - last));
        if (last < 0.0) to = std::min(to, first / (first - last));
    }
    return from <= to;
}

bool HitTest_cls::IsTriangleHit(const Clip& a, const Clip& b, const Clip& c) {
    std::vector<Clip> left = {a, b, c};
    if (!std::all_of(left.begin(), left.end(), IsFinite)) return false;
    for (int plane = 0; plane < kPlanes && !left.empty(); ++plane) {
        std::vector<Clip> next;
        for (size_t i = 0; i < left.size(); ++i) {
            const Clip& here = left[i];
            const Clip& there = left[(i + 1) % left.size()];
            const double first = GetInside(here, plane), last = GetInside(there, plane);
            if (first >= 0.0) next.push_back(here);
            if ((first < 0.0) != (last < 0.0)) next.push_back(Between(here, there, first / (first - last)));
        }
        left = std::move(next);
    }
    return !left.empty();
}

void HitTest_cls::Draw(Shape shape, const Point* pPoints, int number) {
    if (mbHit || number < 1 || mVNames.empty() || !(mRegion.mHalf[0] > 0.0)) return;
    std::vector<Clip> clip;
    for (int i = 0; i < number; ++i)
        clip.push_back(ToClip(pPoints[i]));
    const size_t count = clip.size();
    switch (shape) {
    case Shape::Points:
        for (const Clip& p : clip)
            mbHit = mbHit || IsSegmentHit(p, p);
        break;
    case Shape::Lines:
        for (size_t i = 0; i + 1 < count; i += 2)
            mbHit = mbHit || IsSegmentHit(clip[i], clip[i + 1]);
        break;
    case Shape::Fan:
        for (size_t i = 1; i + 1 < count; ++i)
            mbHit = mbHit || IsTriangleHit(clip[0], clip[i], clip[i + 1]);
        break;
    case Shape::Strip:
    case Shape::Loop:
        for (size_t i = 0; i + 1 < count; ++i)
            mbHit = mbHit || IsSegmentHit(clip[i], clip[i + 1]);
        if (shape == Shape::Loop) mbHit = mbHit || IsSegmentHit(clip.back(), clip.front());
        break;
    }
}
