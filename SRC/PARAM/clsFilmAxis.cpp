#include "PARAM/clsFilmAxis.h"

#include <algorithm>
#include <cmath>

int FilmAxis_cls::msFrameNumber = 100;
int FilmAxis_cls::msAnimInterp = 1;
double FilmAxis_cls::msResolution = 0.01;
double FilmAxis_cls::msCurrentDoubleIndex = 0.0;

void FilmAxis_cls::SetFrameNumber(int frames, int stepsPerFrame) {
    msFrameNumber = frames;
    msAnimInterp = std::max(stepsPerFrame, 1);
    msResolution = frames < 1 ? 1.0 : 1.0 / frames / msAnimInterp;
}

double FilmAxis_cls::Quantize(double doubleIndex, unsigned n) {
    if (n == kFilmGrid) n = msFrameNumber > 0 ? unsigned(msFrameNumber) : 0;
    const double halves = doubleIndex * n * 2;
    if (n == 0 || !(std::fabs(halves) < 1e15)) return 0.0;
    return double((static_cast<long long>(halves) + 1) / 2) / n;
}
