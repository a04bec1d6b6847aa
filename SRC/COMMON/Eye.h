// Which eye a picture is for.
#pragma once

enum Eye { EYE_NONE = 0, EYE_LEFT = 1, EYE_RIGHT = 2 }; ///< EYE_NONE: one picture for both
