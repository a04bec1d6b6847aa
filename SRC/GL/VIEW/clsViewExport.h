// The export of data: while it runs, a paint of the view writes its frame in place of drawing it, and the
// window keeps its last picture.
#pragma once

#include "GL/VIEW/clsViewContext.h"

class DataExporter_cls;

class ViewExport_cls {
public:
    explicit ViewExport_cls(const ViewContext_st& context) : mContext(context) {}

    void Start(DataExporter_cls* pExporter);
    /// False when none was running.
    bool Stop();
    bool IsRunning() const { return mpCDataExporter != nullptr; }
    /// Write on at the film's `frame`, for a moment; true when the frame is written.
    bool ExportFrame(int frame);

private:
    void TakeKept(int frame);

    ViewContext_st mContext;
    DataExporter_cls* mpCDataExporter = nullptr;
    int mKeptFrame = -1; ///< of the film: the exporter knows what filters keep of it
};
