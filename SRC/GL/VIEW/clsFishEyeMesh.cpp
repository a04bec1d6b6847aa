// The meshes that put the faces together; no OpenGL here.
#include "GL/VIEW/clsFishEye.h"

#include <algorithm>
#include <cmath>

#include "GL/BASE/clsPositionAndDirection.h"

namespace {

// Pictures made with these numbers stay what they were.
constexpr double kHalfPi = 1.5708;
constexpr double kPi = 3.1415;

constexpr int kDomeCells = 80;     // along each side of a face
constexpr int kStripCells = 40;    // along each side of a face
constexpr double kOverlap = 0.001; // faces meet without a gap
const double kRoot2 = std::sqrt(2.0);

/// A point of a dome's face as seen from the eye: x to the right, y up, z forward.
void GetFacePoint(int face, double column, double row, double p[3]) {
    const double sign = face == 3 ? -1.0 : 1.0;
    switch (face) {
    case 0:
        p[0] = kRoot2 * (column - 1.0) + kOverlap;
        p[1] = 2.0 * row - 1.0;
        p[2] = kRoot2 * column;
        break;
    case 1:
        p[0] = kRoot2 * column;
        p[1] = 2.0 * row - 1.0;
        p[2] = kRoot2 * (1.0 - column);
        break;
    default:
        p[0] = kRoot2 * (row + column - 1.0);
        p[1] = sign;
        p[2] = sign * kRoot2 * (column - row);
        break;
    }
}

FishEye_cls::Vertex_st MakeDomeVertex(int face, double column, double row, double angle) {
    double p[3];
    GetFacePoint(face, column, row, p);
    const double length = std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]);
    const double polar = kHalfPi - std::asin(std::clamp(p[2] / length, -1.0, 1.0));
    const double radius = polar / kPi * 180.0 / angle;
    const double azimuth = std::atan2(p[1], p[0]);
    return {{float(column), float(row)},
            {float(radius * std::cos(azimuth)), float(radius * std::sin(azimuth))}};
}

/// Degrees of a strip's face in the middle of its picture.
double GetStripYaw(int face) {
    static const double kYaw[FishEye_cls::kFaces] = {-45.0, 45.0, -135.0, 135.0};
    return kYaw[face];
}

FishEye_cls::Vertex_st MakeStripVertex(int face, int column, double row, double angle) {
    const double across = double(column) / kStripCells - 0.5;
    const double radians = std::atan2(across, 0.5);
    double longitude = radians * 180.0 / M_PI;
    if (column == 0) longitude = -45.0 - kOverlap;
    if (column == kStripCells) longitude = 45.0 + kOverlap;
    const double height = std::atan2(row - 0.5, 0.5 / std::cos(radians)) * 180.0 / M_PI;
    return {{float(column) / float(kStripCells), float(row)},
            {float((longitude + GetStripYaw(face)) / (2.0 * angle)), float(height / (2.0 * angle))}};
}

} // namespace

double FishEye_cls::LimitAngle(double angle) {
    return std::isfinite(angle) ? std::clamp(angle, 1.0, 360.0) : 180.0;
}

int FishEye_cls::GetStripLength(int mode) {
    return 2 * ((mode == MODE_PANORAMA ? kStripCells : kDomeCells) + 1);
}

double FishEye_cls::GetStripHalfHeight(double angle) { return 0.196 * 180.0 / (2.0 * LimitAngle(angle)); }

void FishEye_cls::TurnToFace(int face, int mode, PositionAndDirection_cls* pCamera) {
    if (mode == MODE_FLAT) return;
    const bool bLeft = face % 2 == 0;
    if (mode == MODE_PANORAMA && face >= 2) {
        pCamera->RotateYaw(bLeft ? 135.0 : -135.0);
        return;
    }
    pCamera->RotateYaw(bLeft ? 45.0 : -45.0);
    if (face >= 2) pCamera->RotatePitch(bLeft ? -90.0 : 90.0);
}

std::vector<FishEye_cls::Vertex_st> FishEye_cls::MakeFaceMesh(int face, int mode, double angle) {
    angle = LimitAngle(angle);
    std::vector<Vertex_st> mesh;
    const int cells = mode == MODE_PANORAMA ? kStripCells : kDomeCells;
    mesh.reserve(size_t(cells) * size_t(GetStripLength(mode)));
    for (int strip = 0; strip < cells; ++strip)
        for (int along = 0; along <= cells; ++along)
            for (int side = 0; side < 2; ++side) {
                // A dome's strips are rows of the face, a panorama's its columns.
                if (mode == MODE_PANORAMA)
                    mesh.push_back(MakeStripVertex(face, strip + side, double(along) / cells, angle));
                else
                    mesh.push_back(
                        MakeDomeVertex(face, double(along) / cells, double(strip + side) / cells, angle));
            }
    return mesh;
}
