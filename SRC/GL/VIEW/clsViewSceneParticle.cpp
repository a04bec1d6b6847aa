// What a view shows of the picked particle.
#include "GL/VIEW/clsViewScene.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include <GL/freeglut.h>

#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLStrings2D.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/ParticleUnder.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewSettings.h"
#include "PDATA/clsPDataSequence.h"

namespace {

// Units of the screen.
constexpr double kRing = 9.0;
constexpr double kTextRight = 15.0;
constexpr double kTextDown = 5.0;
constexpr double kTextHeight = 18.0; // of the font
constexpr double kPad = 4.0;
constexpr double kLine = 1.2;
constexpr double kRim = 3.6;

constexpr int kRingPoints = 36;

/// Around a place of a square buffer of `size` pixels.
void DrawRing(const double* pMiddle, double radius, int size) {
    GLfloat points[kRingPoints][2];
    for (int i = 0; i < kRingPoints; ++i) {
        const double angle = 2.0 * M_PI * i / kRingPoints;
        points[i][0] = static_cast<GLfloat>(pMiddle[0] + radius * std::cos(angle));
        points[i][1] = static_cast<GLfloat>(pMiddle[1] + radius * std::sin(angle));
    }
    GLPerspective_cls::Push2DMatrix(size, size);
    {
        const GLClientScope_cls client;
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(2, GL_FLOAT, 0, points);
        glDrawArrays(GL_LINE_LOOP, 0, kRingPoints);
    }
    GLPerspective_cls::Pop2DMatrix();
}

double GetTextWidth(const wxString& text) {
    constexpr double kStrokeHeight = 152.4;
    double width = 0.0;
    for (const wxUniChar c : text)
        width +=
            glutStrokeWidth(GLUT_STROKE_ROMAN, c.GetValue() < 128 ? static_cast<int>(c.GetValue()) : '?');
    return width * kTextHeight / kStrokeHeight;
}

/// Darkens what lies behind the name; a unit of the screen is `pixel` of the buffer's.
void DrawTextBox(double x, double y, double width, double pixel, int size) {
    const GLdouble left = x - kPad * pixel, right = x + (width + kPad) * pixel;
    const GLdouble low = y - kPad * pixel, high = y + (0.8 * kTextHeight + kPad) * pixel;
    const GLdouble corners[4][2] = {{left, low}, {right, low}, {right, high}, {left, high}};
    const GLAttribScope_cls attributes;
    const GLClientScope_cls client;
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDisable(GL_CULL_FACE);
    glColor4f(0.0f, 0.0f, 0.0f, 0.7f);
    GLPerspective_cls::Push2DMatrix(size, size);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_DOUBLE, 0, corners);
    glDrawArrays(GL_QUADS, 0, 4);
    GLPerspective_cls::Pop2DMatrix();
}

} // namespace

/// The present frame's; null where its particles aren't drawn.
const SnapData_cls* ViewScene_cls::GetDrawnSnap() const {
    const SnapData_cls* snap = GLDrawData_cls::mspCSnapShot;
    if (!snap || !snap->mbAllocated || !mContext.mMoment.bData || !mContext.mSettings.mShowData.mValue)
        return nullptr;
    const PDataBlock_cls* block =
        mContext.mHost.GetPCActiveFileSequence()->GetPCBlock(mContext.mMoment.dataFrame);
    return snap->IsOf(block, mContext.mMoment.dt, snap->mStep) ? snap : nullptr;
}

// Light with a dark rim: seen on any background.
void ViewScene_cls::DrawPicked() {
    const ParticleWatch_cls* watch = mContext.mShared.mspCParticles;
    const ViewMoment_st& moment = mContext.mMoment;
    if (!watch || !watch->IsMarked(moment.bWritten)) return;
    const SnapData_cls* snap = GetDrawnSnap();
    double place[3];
    if (!snap || !watch->GetPlace(*snap, place)) return;
    const int index = watch->FindIn(*snap->mpCBlock, snap->mSerial);
    if (!IsParticleDrawn(mContext.mHost, *snap, index, watch->GetName().mCell)) return;
    const TagObject_cls tag = {watch->GetText(), {float(place[0]), float(place[1]), float(place[2])}};
    const Tags seen = FindInWindow({tag});
    if (seen.empty()) return;
    const double* middle = seen.front().mWindow;
    const GLAttribScope_cls attributes;
    for (const GLenum what : {GL_DEPTH_TEST, GL_FOG, GL_LIGHTING, GL_TEXTURE_2D, GL_BLEND})
        glDisable(what);
    const double pixel = moment.fboSize / std::max(moment.pixelsAcross, 1.0);
    const double x = middle[0] + kTextRight * pixel, y = middle[1] - kTextDown * pixel;
    GLStrings2D_cls strings;
    strings.SetWindowGeometry(moment.fboSize, moment.fboSize);
    DrawTextBox(x, y, GetTextWidth(tag.mText), pixel, moment.fboSize);
    for (const bool bRim : {true, false}) {
        glLineWidth(std::max(float((bRim ? kRim : kLine) * pixel), bRim ? 3.0f : 1.0f));
        bRim ? glColor3f(0.0f, 0.0f, 0.0f) : glColor3f(1.0f, 0.9f, 0.4f);
        DrawRing(middle, kRing * pixel, moment.fboSize);
    }
    strings.DrawStrokes(GLStrings2D_cls::Font::Helvetica18, tag.mText, x, y, pixel);
}

// As thick as the lines of the scene, in pictures, too.
void ViewScene_cls::DrawTrail() {
    ParticleWatch_cls* watch = mContext.mShared.mspCParticles;
    if (!watch || !watch->mbTrail) return;
    const GLClientScope_cls client;
    SetLineWidth();
    glColor3f(1.0f, 0.75f, 0.2f);
    glEnableClientState(GL_VERTEX_ARRAY);
    for (const std::vector<ParticleWatch_cls::Point_st>& line : watch->GetTrail()) {
        glVertexPointer(3, GL_FLOAT, 0, line.data());
        glDrawArrays(GL_LINE_STRIP, 0, static_cast<GLsizei>(line.size()));
    }
}
