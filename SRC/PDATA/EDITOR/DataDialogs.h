// Brings loader, exporter and periodic box together with their dialogs, of which they know nothing.
#pragma once

class DataExporter_cls;
class DataLoader_cls;
class PeriodicBoundary_cls;

/// Fill the hooks of all three, which must outlive their dialogs' use.
void LinkDataDialogs(DataLoader_cls& loader, DataExporter_cls& exporter, PeriodicBoundary_cls& periodic);
