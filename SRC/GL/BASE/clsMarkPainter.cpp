#include "GL/BASE/clsMarkPainter.h"

#include <algorithm>

MarkPainter_cls::MarkPainter_cls(const double* pProjection, double pixelsAcross)
    : mPixelsAcross(std::max(pixelsAcross, 1.0)) {
    std::copy_n(pProjection, 16, mProjection);
}

void MarkPainter_cls::Translate(const double* pWay) { DoTranslate(pWay); }

void MarkPainter_cls::Rotate(double degrees, int axis) {
    double along[3] = {0, 0, 0};
    along[axis] = 1.0;
    DoRotate(degrees, along);
}

void MarkPainter_cls::Scale(const double* pFactors) { DoScale(pFactors); }

double MarkPainter_cls::GetDepth(const double place[3]) const {
    double view[16];
    GetModelView(view);
    return -(view[2] * place[0] + view[6] * place[1] + view[10] * place[2] + view[14]);
}

double MarkPainter_cls::GetPixel(const double place[3]) const {
    const double w = mProjection[15] - mProjection[11] * GetDepth(place);
    const double across = mProjection[0];
    if (!(w > 0.0) || !(across > 0.0)) return 0.0;
    return 2.0 * w / (across * mPixelsAcross);
}
