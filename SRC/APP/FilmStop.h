// Signals that end a film between two frames, so that no half one is left.
#pragma once

/// From now on the first SIGINT, SIGTERM or SIGHUP asks for the end; the next one ends the process at once.
void WatchFilmStop();
bool IsFilmStopped();
/// End as the sender expects, if there was one.
void EndAsStopped();
