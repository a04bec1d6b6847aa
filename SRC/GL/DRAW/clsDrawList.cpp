#include "GL/DRAW/clsDrawList.h"

#include <algorithm>
#include <cmath>

namespace {

float GetPlaneKey(const float* p, const DrawListOrder& order) {
    const double depth = p[0] * order.cameraDir[0] + p[1] * order.cameraDir[1] + p[2] * order.cameraDir[2];
    return static_cast<float>(-depth);
}

double GetSquaredDistance(const float* p, const DrawListOrder& order) {
    const double x = p[0] - order.cameraPos[0];
    const double y = p[1] - order.cameraPos[1];
    const double z = p[2] - order.cameraPos[2];
    return x * x + y * y + z * z;
}

template <class KEY>
void Fill(std::vector<ArrayAndIndex_cls>& list, int number, int step, KEY key) {
    list.resize(static_cast<size_t>(number));
    for (int i = 0; i < number; ++i)
        list[static_cast<size_t>(i)] = {i * step, key(i * step), 1.0f};
}

} // namespace

void MakeDrawList(std::vector<ArrayAndIndex_cls>& list, int count, int step, const float (*pPos)[3],
                  const DrawListOrder& order) {
    list.clear();
    if (count <= 0) return;
    step = std::max(step, 1);
    const int all = (count - 1) / step + 1;
    const int full = count / step;
    if (order.sortOrder == 1 && order.planeDepth == 1)
        Fill(list, full, step, [&](int i) { return GetPlaneKey(pPos[i], order); });
    else if (order.sortOrder == 1)
        Fill(list, full, step,
             [&](int i) { return static_cast<float>(-GetSquaredDistance(pPos[i], order)); });
    else if (order.sortOrder == 2)
        Fill(list, all, step, [&](int i) { return static_cast<float>(GetSquaredDistance(pPos[i], order)); });
    else
        Fill(list, all, step, [](int) { return 0.0f; });
    if (order.sortOrder == 1 || order.sortOrder == 2) SortDrawList(list);
}

void SortDrawList(std::vector<ArrayAndIndex_cls>& list) {
    const auto middle = std::partition(list.begin(), list.end(),
                                       [](const ArrayAndIndex_cls& e) { return !std::isnan(e.mKey); });
    std::sort(list.begin(), middle, [](const ArrayAndIndex_cls& a, const ArrayAndIndex_cls& b) {
        return a.mKey < b.mKey || (a.mKey == b.mKey && a.mIndex < b.mIndex);
    });
    std::sort(middle, list.end(),
              [](const ArrayAndIndex_cls& a, const ArrayAndIndex_cls& b) { return a.mIndex < b.mIndex; });
}
