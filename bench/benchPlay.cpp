// A film that is cached: what stands between two pictures but drawing them. The counter "ready_ms" is the
// longest wait for data of any frame, which is 0 when nothing is read any more; "frame_ms" the median time to
// the draw-time snapshot, of which "limit_ms" is a plain copy of as many bytes.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <wx/init.h>

#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"

namespace {

constexpr int kParticles = 1000000;
constexpr int kSnapshots = 100;
constexpr int kSteps = 2; // pictures a snapshot
constexpr long kNeededMB = 7000;

double Seconds(const std::chrono::steady_clock::time_point& since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

/// One snapshot under a hundred names, gone with the object.
class Film_cls {
public:
    Film_cls() {
        std::string folder = (std::filesystem::temp_directory_path() / "morentis_film_XXXXXX").string();
        mFolder = mkdtemp(folder.data());
        std::vector<char> bytes(8 + size_t(kParticles) * 40);
        const float time = 0.0f;
        std::memcpy(bytes.data(), &time, 4);
        std::memcpy(bytes.data() + 4, &kParticles, 4);
        for (int i = 0; i < kParticles; ++i) {
            const float x = static_cast<float>(i % 1000);
            const float numbers[7] = {x, x * 0.5f, static_cast<float>(i / 1000), 1, 2, 3, 0.1f};
            char* pRecord = bytes.data() + 8 + size_t(i) * 40;
            std::memcpy(pRecord, numbers, 28);
            std::memcpy(pRecord + 28, &i, 4);
            const int type = i % 2;
            std::memcpy(pRecord + 32, &type, 4);
            std::memcpy(pRecord + 36, &x, 4);
        }
        std::ofstream((mFolder / "film0000.bin").string(), std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        for (int i = 1; i < kSnapshots; ++i) {
            char name[32];
            std::snprintf(name, sizeof name, "film%04d.bin", i);
            std::filesystem::create_symlink(mFolder / "film0000.bin", mFolder / name);
        }
    }
    ~Film_cls() { std::filesystem::remove_all(mFolder); }
    Film_cls(const Film_cls&) = delete;
    Film_cls& operator=(const Film_cls&) = delete;

    std::filesystem::path mFolder;
};

void PlayCached(benchmark::State& state) {
    if (sysconf(_SC_AVPHYS_PAGES) / 1024 * (sysconf(_SC_PAGESIZE) / 1024) < kNeededMB) {
        state.SkipWithError("needs 7 GB of free memory");
        return;
    }
    const wxInitializer initializer; // for the reader thread
    if (!initializer.IsOk()) {
        state.SkipWithError("needs a display");
        return;
    }
    const Film_cls film;
    DrawOption_cls option;
    DataLoader_cls loader(nullptr);
    loader.mCItemInterpolateType.mValue = 0;
    PDataBlock_cls::mspCDataLoaderLink = &loader;
    PDataSeqCtrl_cls store(GLSequence_cls::GetMaker(&option), true);
    store.mLimitMB = 1 << 20;
    store.OpenDataFile((film.mFolder / "film0000.bin").string());
    PDataSequence_cls& sequence = *store.GetPCActiveFileSequence();
    GLAttribute_cls** ppAttribute = GLSequence_cls::Of(sequence).mpCGLAttribute;
    const std::vector<double> fractions = {0.0, 1.0 / kSteps};
    for (int i = 0; i < kSnapshots; ++i)
        sequence.PrepareIndex(i, 0.5, false, true);
    ppAttribute[0]->mColor.mbUseColorCurve.mValue = true;
    std::vector<char> from(size_t(kParticles) * 41);
    std::vector<char> to(size_t(kParticles) * 36);
    for (auto _ : state) {
        double longest = 0.0;
        std::vector<double> frames;
        std::vector<double> copies;
        for (int i = 0; i < kSnapshots; ++i)
            for (const double fraction : fractions) {
                const auto start = std::chrono::steady_clock::now();
                sequence.PrepareIndex(i, fraction, false, false);
                if (!sequence.IsTheIndexReady(i, fraction, false)) state.SkipWithError("not cached");
                longest = std::max(longest, Seconds(start));
                const SnapData_cls snap(sequence.mpCSnap[i]->mpCBlock, ppAttribute, fraction, 1);
                frames.push_back(Seconds(start));
                const auto copyStart = std::chrono::steady_clock::now();
                std::memcpy(to.data(), from.data(), to.size());
                benchmark::DoNotOptimize(to.data());
                copies.push_back(Seconds(copyStart));
            }
        const auto median = [](std::vector<double>& times) {
            std::nth_element(times.begin(), times.begin() + std::ptrdiff_t(times.size() / 2), times.end());
            return times[times.size() / 2] * 1e3;
        };
        state.counters["ready_ms"] = longest * 1e3;
        state.counters["frame_ms"] = median(frames);
        state.counters["limit_ms"] = median(copies);
    }
    store.ClearData(-2, -2, true);
    PDataBlock_cls::mspCDataLoaderLink = nullptr;
}
BENCHMARK(PlayCached)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
