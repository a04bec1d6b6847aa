// Ctrl-C and a scheduler's word end an import with whole files only.
#pragma once

/// Thrown between two pieces of work once the end was asked for.
class ImportStop_cls {};

/// From now on the first of SIGINT, SIGTERM and SIGHUP only asks for the end; a second one ends at once.
/// One that was ignored at the start, as under nohup, stays so.
void CatchStopSignals();
/// The signal that asked, else 0.
int GetStopSignal();
/// Throws ImportStop_cls when the end was asked for.
void ThrowIfStopped();
