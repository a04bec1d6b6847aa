// Repainting the graph at 1600 x 600 into a bitmap, as a paint event does. Needs a display. Limit: 8 ms,
// half a frame of a 60 Hz screen; `ratio` is the time over it.
#include <cmath>
#include <ctime>
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>

#include "PARAM/clsParamGroup.h"
#include "StartToolkit.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsGraphPanel.h"

namespace {

constexpr double kLimit = 8.0;

/// Waves with keys of all kinds. `curves` spread over the height, or all over the whole of it.
std::unique_ptr<ParamGroup_cls> MakeGroup(int curves, int keys, bool bWild) {
    std::vector<wxString> names;
    for (int c = 0; c < curves; ++c)
        names.push_back(wxString::Format("c%d", c));
    auto group = std::make_unique<ParamGroup_cls>("Bench", curves, names.data(), 0, true);
    unsigned seed = 1;
    for (int c = 0; c < curves; ++c) {
        std::vector<KeyFrame_cls> list(static_cast<size_t>(keys));
        for (int i = 0; i < keys; ++i) {
            seed = seed * 1664525u + 1013904223u;
            const double random = double(seed >> 8) / double(1 << 24);
            const double wave = 0.1 * std::sin(0.3 * i + c) + 0.01 * random + double(c) / curves;
            list[size_t(i)].Set(double(i) / (keys - 1), unsigned(i / 4 + c) % KeyFrame_cls::INTERP_COUNT,
                                bWild ? random : wave, 0.0, 1.0, false);
        }
        group->mVParams[size_t(c)].ExecCommandSetKeys(list);
    }
    return group;
}

/// Arguments: curves, keys of each, and whether each goes over the whole height from key to key.
void GraphRepaint(benchmark::State& state) {
    if (!StartToolkit()) {
        state.SkipWithError("no display");
        return;
    }
    const auto group = MakeGroup(int(state.range(0)), int(state.range(1)), state.range(2) != 0);
    TimeCtrl_cls clock(nullptr);
    const int frames = std::max(int(state.range(1)), 1000);
    clock.SetMaxFrameNative(frames);
    clock.SetWAMaxNative(frames);
    clock.SetAAMaxNative(frames);
    clock.SetFrameNative(frames / 3, 0);
    const wxSize size(1600, 600);
    auto* frame = new wxFrame(nullptr, wxID_ANY, "Graph", wxDefaultPosition, size);
    auto* panel = new GraphPanel_cls(frame, &clock);
    panel->SetSize(size);
    std::vector<Parameters_cls*> curves;
    for (Parameters_cls& param : group->mVParams)
        curves.push_back(&param);
    panel->SetCurves(curves);
    wxBitmap bitmap(size);
    double seconds = 0.0;
    for (auto _ : state) {
        wxMemoryDC dc(bitmap);
        const std::clock_t start = std::clock();
        panel->Draw(dc, size);
        seconds += double(std::clock() - start) / CLOCKS_PER_SEC;
    }
    state.counters["ms"] = seconds * 1e3 / double(state.iterations());
    state.counters["ratio"] = state.counters["ms"] / kLimit;
    delete frame;
}

BENCHMARK(GraphRepaint)
    ->ArgNames({"curves", "keys", "wild"})
    ->Args({3, 20, 0})
    ->Args({8, 10000, 0})
    ->Args({8, 10000, 1})
    ->Args({200, 50, 0})
    ->Args({200, 50, 1})
    ->Unit(benchmark::kMillisecond);

} // namespace
