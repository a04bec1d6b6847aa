#include "GL/VIEW/DrawCopies.h"

#include "FILTER/clsFilterCopy.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawProgress.h"

namespace {

constexpr float kCostCall = 2000.0f; // of a copy without anything in it, nanoseconds
constexpr int kTold = 2000000;       // steps of the whole; told in percent

/// The loops inside of a copy tell how far all of them are.
class PartScope_cls {
public:
    PartScope_cls(long long part, long long parts) { DrawProgress_cls::SetPart(part, parts); }
    ~PartScope_cls() { DrawProgress_cls::SetPart(0, 1); }
    PartScope_cls(const PartScope_cls&) = delete;
    PartScope_cls& operator=(const PartScope_cls&) = delete;
};

} // namespace

void DrawCopies(const FilterCopy_cls* pCopy, long long number, float cost,
                const std::function<void(long long copy)>& draw) {
    if (!pCopy) {
        draw(0);
        return;
    }
    DrawProgress_cls progress(kTold);
    for (long long copy = 0; copy < number; ++copy) {
        {
            const PartScope_cls part(copy, number);
            const GLMatrixScope_cls matrix;
            pCopy->GLTranslate(copy);
            draw(copy);
        }
        if (DrawProgress_cls::WasCut()) return;
        if (!progress.AddCost(cost + kCostCall)) continue;
        const double share = static_cast<double>(copy + 1) / static_cast<double>(number);
        if (!progress.Report(static_cast<int>(share * kTold))) return;
    }
}
