// A place in space.
#pragma once

class Position_cls {
public:
    double mPos[3] = {0, 0, 0};

    Position_cls() = default;
    Position_cls(double x, double y, double z) { Set(x, y, z); }

    void Set(double x, double y, double z);
    void Set(const double* p);
    bool operator==(const Position_cls& other) const;
    bool operator!=(const Position_cls& other) const { return !(*this == other); }
};
