// From where a view looks at the scene.
#pragma once

/// The numbers stand in files, and the entries of the controls stand in this order.
enum DisplayMode {
    DISPLAY_FREE = 0, ///< a camera that the mouse moves
    DISPLAY_TO_PLUS_X,
    DISPLAY_TO_MINUS_X,
    DISPLAY_TO_PLUS_Y,
    DISPLAY_TO_MINUS_Y,
    DISPLAY_TO_PLUS_Z,
    DISPLAY_TO_MINUS_Z,
    DISPLAY_PATH, ///< through the camera path
    DISPLAY_COPY  ///< as view 0; the Extra Panel's alone
};

inline bool IsAxisMode(int mode) { return mode >= DISPLAY_TO_PLUS_X && mode <= DISPLAY_TO_MINUS_Z; }
