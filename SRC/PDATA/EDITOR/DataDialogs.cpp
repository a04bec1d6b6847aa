#include "PDATA/EDITOR/DataDialogs.h"

#include "PDATA/EDITOR/clsDataExporterGUI.h"
#include "PDATA/EDITOR/clsDataLoaderGUI.h"
#include "PDATA/EDITOR/clsPeriodicBoundaryGUI.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPeriodicBoundary.h"

void LinkDataDialogs(DataLoader_cls& loader, DataExporter_cls& exporter, PeriodicBoundary_cls& periodic) {
    loader.mDialogHooks.mMake = [&loader](wxWindow* pParent) {
        return new DataLoaderGUI_cls(pParent, &loader);
    };
    loader.mDialogHooks.mOpen = [](DataLoaderGUI_cls* pDialog) { pDialog->OpenWindow(); };
    exporter.mMakeDialog = [&exporter](wxWindow* pParent) {
        return new DataExporterGUI_cls(pParent, &exporter);
    };
    exporter.mShowRun = [&exporter] {
        if (auto* dialog = static_cast<DataExporterGUI_cls*>(exporter.GetPCDialog())) dialog->ShowRun();
    };
    periodic.mMakeDialog = [&periodic](wxWindow* pParent) {
        return new PeriodicBoundaryGUI_cls(pParent, &periodic);
    };
}
