// Repainting tree and strips at 1600 x 600 into a bitmap, as paint events do, while rows scroll and the time
// zooms: 200 curves of 50 keys. Needs a display. Limit: 8 ms, half a frame of a 60 Hz screen; `ratio` is the
// time over it.
#include <ctime>
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>
#include <wx/dcmemory.h>
#include <wx/frame.h>

#include "PARAM/clsParamGroup.h"
#include "StartToolkit.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/clsParamGUICtrl.h"
#include "WIDGET/TIMELINE/clsParamStrips.h"
#include "WIDGET/TIMELINE/clsParamTree.h"

namespace {

constexpr double kLimit = 8.0;
constexpr int kGroups = 50;
constexpr int kKeys = 50;
constexpr int kFrames = 1000;
const wxString kSuffixes[] = {"Red", "Green", "Blue", "Alpha"};

std::unique_ptr<ParamGroup_cls> MakeGroup(int number) {
    auto group =
        std::make_unique<ParamGroup_cls>(wxString::Format("Group %d", number), 4, kSuffixes, 0, true);
    unsigned seed = unsigned(number) + 1;
    for (Parameters_cls& param : group->mVParams) {
        std::vector<KeyFrame_cls> keys(kKeys);
        for (int i = 0; i < kKeys; ++i) {
            seed = seed * 1664525u + 1013904223u;
            const double random = double(seed >> 8) / double(1 << 24);
            keys[size_t(i)].Set((i + random) / kKeys, seed % KeyFrame_cls::INTERP_COUNT, i % 4 ? random : 0.5,
                                0.0, 1.0, seed % 7 == 0);
        }
        param.ExecCommandSetKeys(keys);
    }
    return group;
}

/// Argument: frames shown of 1000.
void TimelineRepaint(benchmark::State& state) {
    if (!StartToolkit()) {
        state.SkipWithError("no display");
        return;
    }
    TimeCtrl_cls clock(nullptr);
    clock.SetMaxFrameNative(kFrames);
    clock.SetWAMaxNative(kFrames);
    clock.SetAAMaxNative(kFrames);
    clock.SetWAMinNative(100);
    const int shown = int(state.range(0));
    const wxSize size(1600, 600);
    auto* frame = new wxFrame(nullptr, wxID_ANY, "Time line", wxDefaultPosition, size);
    auto* lines = new ParamGUICtrl_cls(frame, &clock);
    lines->SetSize(size);
    std::vector<std::unique_ptr<ParamGroup_cls>> groups;
    for (int i = 0; i < kGroups; ++i) {
        groups.push_back(MakeGroup(i));
        lines->AddParamGroup(groups.back().get());
    }
    lines->HideAndShow();
    lines->RecheckSize();
    const wxSize tree = lines->GetPCTree()->GetClientSize();
    const wxSize strips = lines->GetPCStrips()->GetClientSize();
    wxBitmap left(tree);
    wxBitmap right(strips);
    double seconds = 0.0;
    int round = 0;
    for (auto _ : state) {
        // Other rows and another place in the film each time.
        lines->ScrollTo(37 * round % 4000);
        const int first = 61 * round % (kFrames - shown + 1);
        clock.SetAAMinNative(first);
        clock.SetAAMaxNative(first + shown);
        clock.SetFrameNative(first + shown / 2, 0);
        ++round;
        const std::clock_t start = std::clock();
        {
            wxMemoryDC dc(left);
            lines->GetPCTree()->Draw(dc, tree);
        }
        {
            wxMemoryDC dc(right);
            lines->GetPCStrips()->Draw(dc, strips);
        }
        seconds += double(std::clock() - start) / CLOCKS_PER_SEC;
    }
    state.counters["ms"] = seconds * 1e3 / double(state.iterations());
    state.counters["ratio"] = state.counters["ms"] / kLimit;
    delete frame;
}

BENCHMARK(TimelineRepaint)->ArgName("frames")->Arg(1000)->Arg(250)->Arg(50)->Unit(benchmark::kMillisecond);

} // namespace
