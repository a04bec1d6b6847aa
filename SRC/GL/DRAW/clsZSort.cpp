#include "GL/DRAW/clsZSort.h"

#include <algorithm>
#include <cstdint>
#include <thread>

#include "COMMON/DataLoops.h"
#include "COMMON/OnThreads.h"
#include "GL/DRAW/FloatOrder.h"
#include "GL/DRAW/PlaceMatrix.h"
#include "GL/DRAW/clsDepthSort.h"

namespace {

using Entry = ArrayAndIndex_cls;

constexpr int kMaxThreads = 4;
constexpr int kThreadShare = 50000; // entries below which another thread doesn't pay
constexpr int kFewEntries = 3000;   // below, the comparison sort is faster

int ThreadsFor(int number) {
    const int cores = std::max(int(std::thread::hardware_concurrency()), 1);
    return std::clamp(number / kThreadShare, 1, std::min(cores, kMaxThreads));
}

/// First entry of the k-th of `count` even shares.
int ShareBegin(int number, int k, int count) { return int(int64_t(number) * k / count); }

void SortFew(DrawList_t& list) {
    std::stable_sort(list.begin(), list.end(), [](const Entry& a, const Entry& b) {
        return OrderOfFloat(a.mKey) < OrderOfFloat(b.mKey);
    });
}

struct Eye {
    double mX, mY, mZ;
};

MORENTIS_DATA_LOOP void PlaneKeys(Entry* pList, int first, int end, int step, const float (*pPos)[3],
                                  Eye dir) {
    for (int i = first; i < end; ++i) {
        const float* p = pPos[size_t(i) * size_t(step)];
        const double depth = p[0] * dir.mX + p[1] * dir.mY + p[2] * dir.mZ;
        pList[i] = {i * step, float(-depth), 1.0f};
    }
}

MORENTIS_DATA_LOOP void DistanceKeys(Entry* pList, int first, int end, int step, const float (*pPos)[3],
                                     Eye eye) {
    for (int i = first; i < end; ++i) {
        const float* p = pPos[size_t(i) * size_t(step)];
        const double x = p[0] - eye.mX;
        const double y = p[1] - eye.mY;
        const double z = p[2] - eye.mZ;
        pList[i] = {i * step, float(-(x * x + y * y + z * z)), 1.0f};
    }
}

/// Of places that a matrix has moved.
void PlacedKeys(Entry* pList, int first, int end, int step, const float (*pPos)[3], Eye eye,
                const double* pPlace) {
    for (int i = first; i < end; ++i) {
        double p[3];
        PlacePoint(pPlace, pPos[size_t(i) * size_t(step)], p);
        const double x = p[0] - eye.mX;
        const double y = p[1] - eye.mY;
        const double z = p[2] - eye.mZ;
        pList[i] = {i * step, float(-(x * x + y * y + z * z)), 1.0f};
    }
}

} // namespace

int ZSort_cls::ZSortPrepare(ArrayAndIndex_cls* pList, int count, int step, const float (*pPos)[3],
                            const double* cameraPos, const double* cameraDir, int mode,
                            const double* pPlace) {
    const int number = count / step;
    const int threads = ThreadsFor(number);
    const double* from = mode == PLANE_DEPTH ? cameraDir : cameraPos;
    const Eye eye = {from[0], from[1], from[2]};
    OnThreads(threads, [=](int k) {
        const int first = ShareBegin(number, k, threads);
        const int end = ShareBegin(number, k + 1, threads);
        if (mode == PLANE_DEPTH)
            PlaneKeys(pList, first, end, step, pPos, eye);
        else if (pPlace)
            PlacedKeys(pList, first, end, step, pPos, eye, pPlace);
        else
            DistanceKeys(pList, first, end, step, pPos, eye);
    });
    return number;
}

void ZSort_cls::ZSortParallel(DrawList_t& list) {
    if (list.size() < size_t(kFewEntries))
        SortFew(list);
    else
        DepthSort_cls::Sort(list, ThreadsFor(int(list.size())));
}
