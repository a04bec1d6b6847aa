// What a program without a window of its own on the screen wants of the toolkit.
#pragma once

class wxWindow;

/// Give a window, and those around it, their place in the X server without showing them. False when the
/// toolkit doesn't.
bool RealizeWindow(wxWindow* pWindow);

/// Keep the toolkit's warnings about windows that have no size yet to itself.
void SilenceToolkit();
