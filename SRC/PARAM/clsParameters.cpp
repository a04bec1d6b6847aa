#include "PARAM/clsParameters.h"

double Parameters_cls::msCurrentDoubleIndex = 0.0;
double Parameters_cls::msResolution = 0.01;

void Parameters_cls::SetFrameNumber(int frames, int stepsPerFrame) {
    // A film of length 0 has one frame; its resolution is the whole axis.
    msResolution = 1.0 / (frames > 0 ? frames : 1) / (stepsPerFrame > 0 ? stepsPerFrame : 1);
}
