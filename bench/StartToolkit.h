#pragma once

/// The widget toolkit without a window of ours, once a run. False without a display.
bool StartToolkit();
