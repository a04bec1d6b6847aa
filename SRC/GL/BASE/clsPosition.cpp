#include "GL/BASE/clsPosition.h"

#include <algorithm>

void Position_cls::Set(double x, double y, double z) {
    mPos[0] = x;
    mPos[1] = y;
    mPos[2] = z;
}

void Position_cls::Set(const double* p) { Set(p[0], p[1], p[2]); }

bool Position_cls::operator==(const Position_cls& other) const {
    return std::equal(mPos, mPos + 3, other.mPos);
}
