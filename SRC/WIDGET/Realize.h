// Windows that the X server knows although they aren't on the screen.
#pragma once

class wxWindow;

/// Give a window, and those around it, their place in the X server without showing them. False when the
/// toolkit doesn't.
bool RealizeWindow(wxWindow* pWindow);
