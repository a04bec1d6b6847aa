#include "GL/BASE/TagObject.h"

#include <cmath>

#include <epoxy/gl.h>

Tags FindInWindow(const Tags& tags) {
    double model[16], projection[16];
    GLint viewport[4];
    glGetDoublev(GL_MODELVIEW_MATRIX, model);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    const auto multiply = [](const double* m, const double* v, double* out) {
        for (int row = 0; row < 4; ++row)
            out[row] = m[row] * v[0] + m[row + 4] * v[1] + m[row + 8] * v[2] + m[row + 12] * v[3];
    };
    Tags seen;
    for (TagObject_cls tag : tags) {
        const double place[4] = {double(tag.mPos[0]), double(tag.mPos[1]), double(tag.mPos[2]), 1.0};
        double eye[4], clip[4];
        multiply(model, place, eye);
        multiply(projection, eye, clip);
        const auto isInside = [&clip](int k) { return std::abs(clip[k]) <= clip[3]; };
        if (!(clip[3] > 0.0) || !isInside(0) || !isInside(1) || !isInside(2)) continue;
        for (int k = 0; k < 3; ++k)
            tag.mWindow[k] = (clip[k] / clip[3] + 1.0) / 2.0;
        tag.mWindow[0] = tag.mWindow[0] * viewport[2] + viewport[0];
        tag.mWindow[1] = tag.mWindow[1] * viewport[3] + viewport[1];
        seen.push_back(tag);
    }
    return seen;
}
