// Ground for tests of a view's parts without a window: a clock, the paths, and settings of panels.
#pragma once

#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewCamera.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewSettings.h"
#include "ParamTest.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"

/// A program without data.
class TestHost : public ViewHost_cls {
public:
    TimeCtrl_cls* GetPCTimeCtrl() const override { return &mTime; }
    PDataSeqCtrl_cls* GetPCDataSeqCtrl() const override { return nullptr; }
    PDataSequence_cls* GetPCActiveFileSequence() const override { return nullptr; }
    CameraPath_cls* GetPCCameraPath() const override { return &mCamera; }
    AnchorPath_cls* GetPCAnchorPath() const override { return &mAnchor; }
    LightSRCCtrl_cls* GetPCLightSRCCtrl() const override { return nullptr; }
    FilterLists_cls* GetPCFilters() const override { return nullptr; }
    MainGLCanvas_cls* GetPCGLCanvas(int) const override { return nullptr; }
    bool IsTheFrameReady(int) const override { return true; }
    void PrepareTheFrame(int) override {}
    void TellPresent() const override {}
    void PrepareFramesAhead(int) override {}
    void EndExport() override {}
    void ReconnectCameraPathGUI() override {}
    void OnExtraFrameClosed() override {}

    mutable TimeCtrl_cls mTime{nullptr};
    mutable CameraPath_cls mCamera;
    mutable AnchorPath_cls mAnchor;
};

class ViewTest : public ParamTest {
protected:
    /// As a paint does it.
    void PlaceCamera() {
        mCamera.EvaluatePaths(mHost.mTime.GetDoubleIndex());
        mCamera.UpdateCameraPos();
    }

    TestHost mHost;
    SharedView_cls mShared{nullptr, nullptr, nullptr};
    ViewSettings_cls mView{mHost, 0};
    ViewCamera_cls mCamera{mView, mShared, mHost};
};
