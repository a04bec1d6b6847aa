// What must be refreshed after an edit, as a bit mask, and the menu events that it turns into.
#pragma once

enum UpdateBit : long long {
    UPDATE_ATTRIB = 1,
    UPDATE_GL = 2,
    UPDATE_TL = 4,
    UPDATE_IMGSEQ = 8,
    UPDATE_CAM_CONF = 16,
    UPDATE_COLOR = 32,
    UPDATE_EXPORTER = 64,
    UPDATE_DRAW_OPTIONS = 128,
    UPDATE_LIGHT = 256,
    UPDATE_EXPOSURE = 512,
    UPDATE_STEREO = 1024,
    UPDATE_FILTER_RESIZE = 2048,
    UPDATE_FILTER_REFRESH = 4096,
    UPDATE_SNAPDATA = 8192, ///< the draw-time snapshot is rebuilt
    UPDATE_TEXTURE = 16384,
};

/// Post one menu event for each bit of the mask, time lines first.
void PostUpdateEvents(long long mask);
