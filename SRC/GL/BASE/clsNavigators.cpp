#include "GL/BASE/clsNavigators.h"

#include <cmath>

#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/clsCone.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLButton.h"
#include "GL/BASE/clsGLGuides.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsPositionAndDirection.h"

int Navigators_cls::msManipulatorMode = GLGuides_cls::TRANSLATE;
std::array<std::unique_ptr<GLButton_cls>, 3> Navigators_cls::msCGLBTN;

namespace {

struct Button_st {
    int mMode;
    int mY;
    const char* mFile;
};

constexpr Button_st kButtons[3] = {{GLGuides_cls::SCALE, 4, "ICONS/Scale.png"},
                                   {GLGuides_cls::ROTATE, 28, "ICONS/Rotation.png"},
                                   {GLGuides_cls::TRANSLATE, 52, "ICONS/Translation.png"}};

constexpr int kBuffer = 256; // pixels of the axes' picture
constexpr double kAngle = 15.0;
constexpr double kDistance = 6.0;

} // namespace

Navigators_cls::Navigators_cls() = default;

Navigators_cls::~Navigators_cls() = default;

void Navigators_cls::RotationMode() { msManipulatorMode = GLGuides_cls::ROTATE; }

void Navigators_cls::TranslationMode() { msManipulatorMode = GLGuides_cls::TRANSLATE; }

void Navigators_cls::ScaleMode() { msManipulatorMode = GLGuides_cls::SCALE; }

void Navigators_cls::InitializeStaticMembers() {
    for (size_t i = 0; i < msCGLBTN.size(); ++i) {
        msCGLBTN[i] = std::make_unique<GLButton_cls>(GLButton_cls::FROM_LEFT, 4, kButtons[i].mY);
        msCGLBTN[i]->MakeTextureFromImage(FindRuntimeFile(kButtons[i].mFile));
    }
}

void Navigators_cls::DestructStaticMembers() {
    for (auto& button : msCGLBTN)
        button.reset();
}

bool Navigators_cls::CheckGLButton(int x, int y, int w) {
    for (size_t i = 0; i < msCGLBTN.size(); ++i) {
        if (!msCGLBTN[i] || !msCGLBTN[i]->IsMouseOnButton(x, y, w)) continue;
        msManipulatorMode = kButtons[i].mMode;
        return true;
    }
    return false;
}

bool Navigators_cls::UpdateStatus(int x, int y, int w) {
    bool bChanged = false;
    for (const auto& button : msCGLBTN)
        bChanged = (button && button->UpdateStatus(x, y, w)) || bChanged;
    return bChanged;
}

void Navigators_cls::DrawButton(int w, int h, double scale) {
    for (size_t i = 0; i < msCGLBTN.size(); ++i)
        if (msCGLBTN[i]) msCGLBTN[i]->DrawButton(w, h, scale, msManipulatorMode == kButtons[i].mMode);
}

// x is red, y green, z blue.
void Navigators_cls::ShowArrow() {
    static const GLfloat kLine[2][3] = {{0, 0, 0}, {1, 0, 0}};
    for (int axis = 0; axis < 3; ++axis) {
        const GLMatrixScope_cls matrix;
        if (axis == 1) glRotated(90.0, 0, 0, 1);
        if (axis == 2) glRotated(-90.0, 0, 1, 0);
        glColor4f(axis == 0 ? 1.0f : 0.1f, axis == 1 ? 1.0f : 0.1f, axis == 2 ? 1.0f : 0.1f, 1.0f);
        {
            const GLClientScope_cls client;
            glEnableClientState(GL_VERTEX_ARRAY);
            glVertexPointer(3, GL_FLOAT, 0, kLine);
            glDrawArrays(GL_LINES, 0, 2);
        }
        glTranslated(0.6, 0.0, 0.0);
        glScaled(0.4, 0.4, 0.4);
        Cone_cls::Draw();
    }
}

void Navigators_cls::Show(const PositionAndDirection_cls& camera, int w, int h, double scale) {
    if (!mpCFBO) {
        mpCFBO = std::make_unique<FBO_cls>(kBuffer, kBuffer);
        mpCFBO->SetDepth(8);
        mpCFBO->MakeFBO(true);
    }
    const GLAttribScope_cls attributes;
    {
        const FBOScope_cls target(*mpCFBO, true);
        const GLMatrixScope_cls projection(GL_PROJECTION);
        const GLMatrixScope_cls model;
        PositionAndDirection_cls eye = camera;
        for (int i = 0; i < 3; ++i)
            eye.mPos[i] = -kDistance * camera.mFront[i];
        const GLPerspective_cls perspective(kBuffer, kBuffer, kAngle, 0.03, 5000);
        perspective.SetPerspectiveOnGL(eye);
        perspective.SetModelOrProjectionViewOnGL(eye, GL_MODELVIEW);
        glEnable(GL_DEPTH_TEST);
        glDisable(GL_LIGHTING);
        glDisable(GL_TEXTURE_2D);
        glDisable(GL_BLEND);
        glLineWidth(5.0f);
        glTranslated(-0.25, -0.25, -0.25);
        ShowArrow();
    }
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glColor4f(1, 1, 1, 1);
    const auto px = [scale](int units) { return static_cast<int>(std::lround(units * scale)); };
    mpCFBO->DrawOnScreen2D(w, h, px(64), px(64), px(32), px(16), true);
}
