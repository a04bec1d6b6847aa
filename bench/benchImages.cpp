// Taking pictures out of OpenGL and putting them into files: what a film costs beside its drawing.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include <wx/filename.h>
#include <wx/image.h>

#include "BenchContext.h"
#include "GL/BASE/clsFBO.h"
#include "IMAGE/BoxFilter.h"
#include "IMAGE/HalfFloat.h"
#include "IMAGE/ImageFile.h"

namespace {

constexpr int kSize = 2048;
constexpr size_t kNumbers = size_t(kSize) * kSize * 3;

template <class WORK>
double TimeMillis(WORK work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void Draw(FBO_cls& buffer) {
    buffer.MakeFBO(false);
    const FBOScope_cls target(buffer, true);
    glClearColor(0.2f, 0.4f, 0.6f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glFinish();
}

double TimeRead(FBO_cls& buffer, GLenum type, void* pPixels) {
    Draw(buffer);
    return TimeMillis([&] {
        buffer.BindTexture();
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, type, pPixels);
    });
}

// A 2048 by 2048 picture out of OpenGL. "speedup": against letting OpenGL make bytes of it.
void TakePicture(benchmark::State& state) {
    if (!MakeBenchContext()) {
        state.SkipWithError("no display");
        return;
    }
    FBO_cls buffer(kSize, kSize);
    std::vector<std::uint16_t> half(kNumbers);
    std::vector<unsigned char> bytes(kNumbers);
    double ours = 0.0;
    double bare = 0.0;
    for (auto _ : state) {
        const double now = TimeRead(buffer, GL_HALF_FLOAT, half.data()) + TimeMillis([&] {
                               ConvertHalfPixels(half.data(), bytes.data(), kNumbers / 4, GetPlainBytes());
                           });
        bare += TimeRead(buffer, GL_UNSIGNED_BYTE, bytes.data());
        ours += now;
        state.SetIterationTime(now / 1000.0);
    }
    state.counters["speedup"] = bare / ours;
}
BENCHMARK(TakePicture)->UseManualTime()->Unit(benchmark::kMillisecond);

// 2048 by 2048 to 1280 by 720. "ratio": against streaming the source's bytes into floats once.
void ResamplePicture(benchmark::State& state) {
    std::vector<unsigned char> source(kNumbers, 77);
    std::vector<float> floats(kNumbers);
    std::vector<unsigned char> target(size_t(1280) * 720 * 3);
    double ours = 0.0;
    double bare = 0.0;
    for (auto _ : state) {
        const double now =
            TimeMillis([&] { ResampleMiddle(source.data(), kSize, kSize, target.data(), 1280, 720); });
        bare += TimeMillis([&] {
            for (size_t i = 0; i < kNumbers; ++i)
                floats[i] = float(source[i]);
            benchmark::DoNotOptimize(floats.data());
        });
        ours += now;
        state.SetIterationTime(now / 1000.0);
    }
    state.counters["ratio"] = ours / bare;
}
BENCHMARK(ResamplePicture)->UseManualTime()->Unit(benchmark::kMillisecond);

/// Soft spots on black, as films of particles are.
wxImage MakeSpots(int w, int h) {
    wxImage image(w, h, true);
    std::mt19937 random(7);
    std::uniform_int_distribution<int> x(4, w - 5), y(4, h - 5), light(60, 255);
    for (int spot = 0; spot < 20000; ++spot) {
        const int cx = x(random), cy = y(random), c = light(random);
        for (int dy = -2; dy <= 2; ++dy)
            for (int dx = -2; dx <= 2; ++dx) {
                const auto v = static_cast<unsigned char>(c / (1 + dx * dx + dy * dy));
                image.SetRGB(cx + dx, cy + dy, v, v, static_cast<unsigned char>(v / 2));
            }
    }
    return image;
}

// A 1920 by 1080 PNG of 20,000 soft spots: fast (0), smallest (1). "MB" of the file; "speedup" against the
// toolkit's own settings.
void WritePNG(benchmark::State& state) {
    if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG)) wxImage::AddHandler(new wxPNGHandler);
    const wxImage image = MakeSpots(1920, 1080);
    const wxString path = wxFileName::CreateTempFileName("morentis_bench") + ".png";
    ImageFormat_st format;
    format.mbSmallestPNG = state.range(0) == 1;
    double ours = 0.0;
    double bare = 0.0;
    for (auto _ : state) {
        const double now = TimeMillis([&] { WriteImageFile(image, path, format); });
        bare += TimeMillis([&] { image.SaveFile(path + "2.png"); });
        ours += now;
        state.SetIterationTime(now / 1000.0);
    }
    state.counters["speedup"] = bare / ours;
    state.counters["MB"] = wxFileName::GetSize(path).ToDouble() / 1e6;
    wxRemoveFile(path);
    wxRemoveFile(path + "2.png");
}
BENCHMARK(WritePNG)->DenseRange(0, 1)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
