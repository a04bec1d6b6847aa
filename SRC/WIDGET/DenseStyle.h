// The compact look of fields, buttons and tabs.
#pragma once

class wxWindow;

/// Shrink the toolkit's generous paddings for the whole program, once; colours stay the theme's. Needs
/// the display. Where the toolkit doesn't let us, everything is merely taller.
void InstallDenseStyle();

/// Height of a row's field in logical pixels, the same for all kinds.
constexpr int kFieldHeight = 24;

/// Of an icon alone: keep hardly any room beside it, for rows that are short of it.
void MakeNarrow(wxWindow* pButton);
