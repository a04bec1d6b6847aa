#include "GL/VIEW/clsViewScene.h"

#include <algorithm>
#include <cmath>

#include "COLORCURVE/clsColorCurve.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLMarkPainter.h"
#include "GL/BASE/clsGLState.h"
#include "GL/BASE/clsGLStrings2D.h"
#include "GL/BASE/clsGrid.h"
#include "GL/VIEW/clsFishEye.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewCamera.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewSettings.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsStereoGram.h"

double ViewScene_cls::GetGridUnit(double distance) {
    double unit = 0.0001;
    while (distance > unit * 10.0 && unit < 1e30)
        unit *= 10.0;
    return unit;
}

ViewScene_cls::ViewScene_cls(const ViewContext_st& context) : mContext(context) {}
ViewScene_cls::~ViewScene_cls() = default;

void ViewScene_cls::DrawOnFBO() {
    FishEye_cls& faces = *mContext.mShared.mspCFishEyeCtrl;
    const double gridUnit = GetGridUnit(mContext.mMoment.distanceToAnchor);
    const int mode = mContext.mSettings.GetMultiPanelMode();
    mShadows = CountShadows();
    StereoGram_cls* stereo = mContext.mShared.mspCStereogramLink;
    if (stereo) stereo->UpdateCurrent(mContext.mMoment.doubleIndex);
    PrepareObjects();
    for (int face = 0; face < FishEye_cls::GetFaceNumber(mode); ++face) {
        mContext.mMoment.face = face;
        mCFaceCam = mContext.mCamera.mCCamPos;
        if (stereo) stereo->ModifyByStereogram(&mCFaceCam, mContext.mMoment.eye);
        ModifyByDomeTilt(&mCFaceCam);
        faces.MakeFishEyeProcessFH(face, &mCFaceCam, &mContext.mCGLPerspective, mode);
        DrawFace(gridUnit);
        faces.MakeFishEyeProcessLH(face);
    }
    mpCLight.reset();
}

void ViewScene_cls::ModifyByDomeTilt(PositionAndDirection_cls* pCamera) const {
    const ViewSettings_cls& settings = mContext.mSettings;
    const bool bPath = settings.GetDisplayMode() == DISPLAY_PATH || settings.GetDisplayMode() == DISPLAY_COPY;
    if (!bPath || !settings.IsFishEye()) return;
    pCamera->RotateYPR(0.0, double(settings.GetPLinkedCameraPath()->mCFishEyeOffset.mValue), 0.0);
}

// Into the face that is begun.
void ViewScene_cls::DrawFace(double gridUnit) {
    const GLAttribScope_cls attributes;
    mVCTags.clear();
    Clear();
    mbBlank = true;
    SetLights();
    SetLineWidth();
    DrawDataMain();
    CheckGLErrors("data");
    AddShadowedLights();
    CheckGLErrors("lights with shadows");
    DrawOtherObjects(gridUnit);
    CheckGLErrors("other objects");
    DrawTags();
    CheckGLErrors("tags");
    DrawPicked();
    CheckGLErrors("mark of the picked particle");
}

// Fog that there is takes the background's place.
void ViewScene_cls::Clear() {
    mContext.mShared.SetGLBGColor(0, mContext.mMoment.plainGrey);
    float background[4];
    glGetFloatv(GL_COLOR_CLEAR_VALUE, background);
    FilterLists_cls* filters = mContext.mHost.GetPCFilters();
    const FilterFog_cls* fog = filters ? filters->GetWorld().GetPCFog() : nullptr;
    if (fog) fog->SetGLClearColor(mContext.mMoment.doubleIndex, background);
    FBO_cls::ClearTarget(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
}

// As large as their share of the picture, whatever the buffer's size.
void ViewScene_cls::DrawTags() {
    constexpr double kUsualBuffer = 1024.0;
    using Font = GLStrings2D_cls::Font;
    if (mVCTags.empty()) return;
    const SharedView_cls& shared = mContext.mShared;
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_FOG);
    float color[4];
    shared.mspCClrCurveTag->GetColor4fScaled(color, 0.0f);
    glColor4fv(color);
    const int size = mContext.mMoment.fboSize;
    const double factor = size / kUsualBuffer;
    glLineWidth(std::max(float(factor), 1.0f));
    GLStrings2D_cls strings;
    strings.SetWindowGeometry(size, size);
    const auto font = Font(std::min(shared.msCTagFontIndex.mValue, unsigned(Font::Times24)));
    for (const TagObject_cls& tag : FindInWindow(mVCTags))
        strings.DrawStrokes(font, tag.mText, tag.mWindow[0], tag.mWindow[1], factor);
}

float ViewScene_cls::GetLineWidth() const {
    const float width =
        mContext.mShared.msCLineWidth.mValue * FBO_cls::GetLineWidthFactor(mContext.mMoment.fboSize);
    return width > 0.0f ? width : 1.0f;
}

void ViewScene_cls::SetLineWidth() { glLineWidth(GetLineWidth()); }

void ViewScene_cls::DrawOtherObjects(double gridUnit) {
    glPointSize(6);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glDepthMask(GL_TRUE);
    if (mContext.mSettings.mShowGrid.mValue) {
        glColor3f(0.3f, 0.3f, 0.3f);
        SetLineWidth();
        Grid_cls::DrawGridFlat(gridUnit, 3);
    }
    DrawTrail();
    if (mContext.mSettings.mShowItems.mValue) DrawItems();
    if (FilterLists_cls* filters = mContext.mHost.GetPCFilters()) {
        SetLineWidth();
        filters->GetObject().GLDrawRealGrid(mContext.mMoment.doubleIndex, &mVCTags);
    }
    glDisable(GL_DEPTH_TEST);
    if (mContext.mSettings.mShowItems.mValue) DrawAnchor();
}

// Frames of filters last; a list that holds none of those draws nothing.
void ViewScene_cls::DrawItems() {
    const ViewMoment_st& moment = mContext.mMoment;
    double projection[16];
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    GLMarkPainter_cls painter(projection, moment.pixelsAcross, GetLineWidth(),
                              float(moment.fboSize / moment.pixelsAcross));
    painter.mbHandles = moment.bHandles;
    SetLineWidth();
    DrawCameraPath(painter);
    mContext.mHost.GetPCLightSRCCtrl()->GLDraw(painter);
    if (FilterLists_cls* filters = mContext.mHost.GetPCFilters()) {
        filters->GetBoolean().GLDraw(painter, moment.doubleIndex);
        filters->GetObject().GLDraw(painter, moment.doubleIndex);
    }
}

void ViewScene_cls::PickItems(MarkPainter_cls& painter) const {
    if (const LightSRCCtrl_cls* lights = mContext.mHost.GetPCLightSRCCtrl()) lights->GLDraw(painter);
    DrawCameraPath(painter);
    if (FilterLists_cls* filters = mContext.mHost.GetPCFilters()) {
        filters->GetBoolean().GLDraw(painter, mContext.mMoment.doubleIndex);
        filters->GetObject().GLDraw(painter, mContext.mMoment.doubleIndex);
    }
}

// Not for the eye that looks through that camera, which would sit in its own path.
void ViewScene_cls::DrawCameraPath(MarkPainter_cls& painter) const {
    const CameraPath_cls& camera = *mContext.mSettings.GetPLinkedCameraPath();
    const PositionAndDirection_cls& eye = mContext.mCamera.mCCamPos;
    const bool bInside =
        eye.Position_cls::operator==(camera.mCCurrent) && eye.Direction_cls::operator==(camera.mCCurrent);
    if (bInside) return;
    camera.GLDraw(painter);
    if (!painter.IsPick() && camera.mCVisible.mValue && mContext.mShared.mspCStereogramLink)
        mContext.mShared.mspCStereogramLink->DrawFocus(camera.mCCurrent);
    mContext.mSettings.GetPLinkedAnchorPath()->GLDraw(painter);
}

void ViewScene_cls::DrawAnchor() {
    static const GLfloat kCross[6][3] = {{-1, 0, 0}, {1, 0, 0}, {0, -1, 0}, {0, 1, 0}, {0, 0, -1}, {0, 0, 1}};
    const double* anchor = mContext.mCamera.GetPCAnchorPosition();
    const double size = 0.02 * mContext.mMoment.distanceToAnchor;
    const GLMatrixScope_cls matrix;
    const GLClientScope_cls client;
    glTranslated(anchor[0], anchor[1], anchor[2]);
    glScaled(size, size, size);
    glColor3f(0.2f, 1.0f, 1.0f);
    SetLineWidth();
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, kCross);
    glDrawArrays(GL_LINES, 0, 6);
}
