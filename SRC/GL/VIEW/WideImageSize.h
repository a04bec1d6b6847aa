// How large the images of wide views are drawn before they are brought to their size.
#pragma once

/// Longer side, in pixels, of a fisheye's or panorama's image, whatever the faces' size: 4096. A variable for
/// tests that draw many of them.
extern int GWideImageSize;
