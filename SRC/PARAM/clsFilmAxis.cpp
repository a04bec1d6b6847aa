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
