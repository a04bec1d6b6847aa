// Windows that the X server knows before they are on the screen, or without ever being there.
#pragma once

class wxWindow;

/// Give a window, and those around it, their place in the X server without showing them. False when the
/// toolkit doesn't.
bool RealizeWindow(wxWindow* pWindow);
/// Give a top-level window the size that it asks for, before it is first shown. The toolkit asks the window
/// manager for the width of the frame first and meanwhile lets the X server have the window with 2 x 1
/// pixels; where that is still so when the answer comes, all that is in it is laid out in them, with
/// complaints about each book and bar.
void SetFirstSize(wxWindow* pTopLevel);
