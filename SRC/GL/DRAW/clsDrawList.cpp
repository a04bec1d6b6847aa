#include "GL/DRAW/clsDrawList.h"

#include <algorithm>

#include "GL/DRAW/DrawListFilter.h"
#include "GL/DRAW/PlaceMatrix.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsZSort.h"

namespace {

double GetSquaredDistance(const float* p, const DrawListOrder& order) {
    double way[3] = {double(p[0]), double(p[1]), double(p[2])};
    if (order.pPlace) PlacePoint(order.pPlace, p, way);
    for (int i = 0; i < 3; ++i)
        way[i] -= order.cameraPos[i];
    return way[0] * way[0] + way[1] * way[1] + way[2] * way[2];
}

template <class KEY>
void Fill(DrawList_t& list, int number, int step, KEY key) {
    list.resize(static_cast<size_t>(number));
    for (int i = 0; i < number; ++i)
        list[static_cast<size_t>(i)] = {i * step, key(i * step), 1.0f};
}

} // namespace

bool IsListThinned(unsigned sortOrder) { return sortOrder != SORT_NEAR_FIRST; }

long long GetListLength(long long count, long long step, unsigned sortOrder) {
    if (count <= 0) return 0;
    step = std::max(step, 1LL);
    return sortOrder == SORT_FAR_FIRST ? count / step : (count - 1) / step + 1;
}

void MakeDrawList(DrawList_t& list, int count, int step, const float (*pPos)[3], const DrawListOrder& order,
                  DrawListFilter_cls* pFilter, double time) {
    list.clear();
    if (count <= 0) return;
    step = std::max(step, 1);
    const auto length = static_cast<int>(GetListLength(count, step, order.sortOrder));
    if (order.sortOrder == SORT_FAR_FIRST) {
        list.resize(static_cast<size_t>(length));
        ZSort_cls::ZSortPrepare(list.data(), count, step, pPos, order.cameraPos, order.cameraDir,
                                order.planeDepth ? ZSort_cls::PLANE_DEPTH : ZSort_cls::EYE_DISTANCE,
                                order.pPlace);
    } else if (order.sortOrder == SORT_NEAR_FIRST)
        Fill(list, length, step,
             [&](int i) { return static_cast<float>(GetSquaredDistance(pPos[i], order)); });
    else
        Fill(list, length, step, [](int) { return 0.0f; });
    if (pFilter && IsListThinned(order.sortOrder)) pFilter->Thin(list, count, pPos, time);
    if (order.sortOrder == SORT_FAR_FIRST || order.sortOrder == SORT_NEAR_FIRST)
        ZSort_cls::ZSortParallel(list);
}
