#include "GL/VIEW/clsViewExport.h"

#include "GL/VIEW/clsViewHost.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsPDataSequence.h"

void ViewExport_cls::Start(DataExporter_cls* pExporter) {
    mpCDataExporter = pExporter;
    pExporter->mExportedCount = 0;
    pExporter->mLastFrame = -1;
}

bool ViewExport_cls::Stop() {
    if (!mpCDataExporter) return false;
    mpCDataExporter->ExportFinish();
    mpCDataExporter = nullptr;
    return true;
}

// A large file takes many paints, so that the window's events get their turn.
bool ViewExport_cls::ExportFrame(int frame) {
    PDataSequence_cls* pSequence = mContext.mHost.GetPCActiveFileSequence();
    const bool bClosed = pSequence->GetStrPath().empty();
    const bool bDone = bClosed || pSequence->ExportData(mpCDataExporter, mContext.mMoment.dataFrame,
                                                        mContext.mMoment.dt, frame);
    if (bDone && (bClosed || mpCDataExporter->IsRunComplete())) mContext.mHost.EndExport();
    return bDone;
}
