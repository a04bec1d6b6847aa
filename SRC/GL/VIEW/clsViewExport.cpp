// The export of data: while it runs, a paint of the view writes its frame in place of drawing it, and the
// window keeps its last picture.
#include "GL/VIEW/clsMainGLCanvas.h"

#include "APP/clsFrameMain.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsPDataSequence.h"

void MainGLCanvas_cls::StartExportDataProcess(DataExporter_cls* pExporter) {
    mpCDataExporter = pExporter;
    pExporter->mExportedCount = 0;
    pExporter->mLastFrame = -1;
    MarkStale();
}

void MainGLCanvas_cls::StopExportDataProcess() {
    if (!mpCDataExporter) return;
    mpCDataExporter->ExportFinish();
    mpCDataExporter = nullptr;
    MarkStale(); // the picture shows another frame
}

// A large file takes many paints, so that the window's events get their turn.
void MainGLCanvas_cls::ExportFrame() {
    PDataSequence_cls* pSequence = mpCFrame->GetPCActiveFileSequence();
    const bool bClosed = pSequence->GetStrPath().empty();
    const bool bDone =
        bClosed || pSequence->ExportData(mpCDataExporter, mMoment.dataFrame, mMoment.dt, mFrameFrame);
    if (!bDone) {
        MarkStale();
        return;
    }
    mPaintedFrame = mFrameFrame;
    mPaintedStep = mFrameStep;
    mPaintedBlurFactor = mFrameBlurFactor;
    if (bClosed || mpCDataExporter->IsRunComplete()) mpCFrame->CallAfter(&FrameMain_cls::EndExport);
}
