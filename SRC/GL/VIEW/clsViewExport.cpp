#include "GL/VIEW/clsViewExport.h"

#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsViewHost.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"

void ViewExport_cls::Start(DataExporter_cls* pExporter) {
    mpCDataExporter = pExporter;
    pExporter->mExportedCount = 0;
    pExporter->mLastFrame = -1;
    mKeptFrame = -1;
}

bool ViewExport_cls::Stop() {
    if (!mpCDataExporter) return false;
    mpCDataExporter->ExportFinish();
    mpCDataExporter = nullptr;
    return true;
}

// Once a frame: the file is of one choice, whatever is edited while it is written.
void ViewExport_cls::TakeKept(int frame) {
    if (!mpCDataExporter->mCFiltered.mValue || mKeptFrame == frame) return;
    const PDataSequence_cls& sequence = *mContext.mHost.GetPCActiveFileSequence();
    const int index = mContext.mMoment.dataFrame;
    if (!sequence.GetSnap(index)->IsItLoaded()) return;
    PDataSnap_cls::WaitInterpolator();
    mpCDataExporter->mpKept =
        GLSequence_cls::Of(sequence).GetKept(index, mContext.mMoment.dt, mContext.mMoment.doubleIndex);
    mKeptFrame = frame;
}

// A large file takes many paints, so that the window's events get their turn.
bool ViewExport_cls::ExportFrame(int frame) {
    PDataSequence_cls* pSequence = mContext.mHost.GetPCActiveFileSequence();
    const bool bClosed = pSequence->GetStrPath().empty();
    if (!bClosed) TakeKept(frame);
    const bool bDone = bClosed || pSequence->ExportData(mpCDataExporter, mContext.mMoment.dataFrame,
                                                        mContext.mMoment.dt, frame);
    if (bDone && (bClosed || mpCDataExporter->IsRunComplete())) mContext.mHost.EndExport();
    return bDone;
}
