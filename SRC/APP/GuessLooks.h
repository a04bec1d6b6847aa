// What a guess at a file changes outside of the loader: looks of particles, and the dialogs that show it.
#pragma once

class Main_cls;

/// Let guesses reach the active sequence's attributes and the dialogs; until UnlinkGuess.
void LinkGuess(Main_cls* pMain);
void UnlinkGuess();
