#include "COMMON/UpdateBits.h"

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"

namespace {

struct BitAndEvent_st {
    long long mBit;
    int mId;
};

// The order in which the parts of the window are refreshed.
constexpr BitAndEvent_st kEvents[] = {
    {UPDATE_TL, ID_REFRESH_TL},
    {UPDATE_ATTRIB, ID_REFRESH_ATTRIB},
    {UPDATE_GL, ID_REFRESH_GL},
    {UPDATE_IMGSEQ, ID_REFRESH_IMGSEQ},
    {UPDATE_CAM_CONF, ID_REFRESH_CAM_CONF},
    {UPDATE_COLOR, ID_REFRESH_COLOR},
    {UPDATE_EXPORTER, ID_REFRESH_EXPORTER},
    {UPDATE_DRAW_OPTIONS, ID_REFRESH_DRAW_OPTIONS},
    {UPDATE_LIGHT, ID_REFRESH_LIGHT},
    {UPDATE_EXPOSURE, ID_REFRESH_EXPOSURE},
    {UPDATE_STEREO, ID_REFRESH_STEREO},
    {UPDATE_FILTER_RESIZE, ID_FILTER_RESIZE},
    {UPDATE_FILTER_REFRESH, ID_FILTER_REFRESH},
    {UPDATE_TEXTURE, ID_REFRESH_TEXTURE},
};

} // namespace

void PostUpdateEvents(long long mask) {
    if (mask & UPDATE_SNAPDATA) GbSnapDataRefresh.store(true);
    for (const BitAndEvent_st& entry : kEvents)
        if (mask & entry.mBit) PostMenuEvent(entry.mId);
}
