// The fixed work of a picture, without particles: a face of 2048 by 2048 is cleared as far as a picture of
// the given size shows it, read, and made into that picture's bytes. Counters: milliseconds of each stage;
// "ratio": of all of them to filling and copying the shown pixels once in memory.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <vector>

#include "BenchContext.h"
#include "GL/BASE/clsFBO.h"
#include "IMAGE/BoxFilter.h"
#include "IMAGE/HalfFloat.h"

namespace {

constexpr int kFace = 2048;

template <class WORK>
double TimeMillis(WORK work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void EmptyFrame(benchmark::State& state) {
    if (!MakeBenchContext()) {
        state.SkipWithError("no display");
        return;
    }
    const int w = int(state.range(0)), h = int(state.range(1));
    FBO_cls face(kFace, kFace);
    face.MakeFBO(false);
    face.SetShown(GetMiddleOfSquare(kFace, w, h));
    const ShownPart_st part = face.GetShown();
    const size_t pixels = size_t(part.mW) * size_t(part.mH);
    std::vector<std::uint16_t> light(pixels * 4), filled(pixels * 4);
    std::vector<unsigned char> picture(size_t(w) * size_t(h) * 3);
    double clear = 0.0, read = 0.0, resample = 0.0, bare = 0.0;
    for (auto _ : state) {
        const double before = clear + read + resample;
        clear += TimeMillis([&] {
            const FBOScope_cls target(face, true);
            glFinish();
        });
        read += TimeMillis([&] { face.ReadShown(GL_RGBA, GL_HALF_FLOAT, light.data()); });
        resample += TimeMillis(
            [&] { ResampleHalves(light.data(), part, kFace, kFace, GetPlainBytes(), picture.data(), w, h); });
        bare += TimeMillis([&] {
            std::memset(filled.data(), 1, pixels * 8);
            std::memcpy(light.data(), filled.data(), pixels * 8);
            benchmark::DoNotOptimize(light.data());
        });
        state.SetIterationTime((clear + read + resample - before) / 1000.0);
    }
    const auto mean = [&state](double sum) { return sum / double(state.iterations()); };
    state.counters["clear_ms"] = mean(clear);
    state.counters["read_ms"] = mean(read);
    state.counters["resample_ms"] = mean(resample);
    state.counters["ratio"] = (clear + read + resample) / bare;
}
BENCHMARK(EmptyFrame)->Args({1280, 720})->Args({1920, 1080})->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
