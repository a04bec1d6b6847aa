#include "GL/VIEW/clsViewPov.h"

#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsViewHost.h"

// What is written doesn't hang on what was painted before.
void ViewPov_cls::StartExportPovStringProcess() {
    mbExportPov = true;
    mCanvas.MarkStale();
    mCanvas.RefreshEX();
}

void ViewPov_cls::StopExportPovStringProcess() {
    if (!mbExportPov) return;
    mbExportPov = false;
    mCanvas.MarkStale(); // the window shows what the hand may move again
    mCanvas.RefreshEX();
    if (mHost.mOnPovRunStopped) mHost.mOnPovRunStopped();
}

void ViewPov_cls::OnShown() {
    if (mbExportPov && mHost.mOnPovFrameDrawn) mHost.mOnPovFrameDrawn();
}
