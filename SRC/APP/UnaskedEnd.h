// Ends of the program that nobody asked for: a signal, the end of the session, a lost display, an exit from
// deep within. Crashes are none of them: then the last minute's recovery project is what there is.
#pragma once

#include <functional>

/// From now on `lastWords` runs, once, before such an end. Needs a running application object. It must not
/// touch the display.
void WatchUnaskedEnds(std::function<void()> lastWords);
/// The program goes down by itself.
void ForgetUnaskedEnds();
/// Say them now, if they were not said yet.
void SayLastWords();
