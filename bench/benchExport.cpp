// Exported files against their limit, measured in the same run: write(2) of the same bytes from one small
// buffer (counter "ratio", ours / limit), for text also fprintf of each item (counter "speedup"). The files
// stay in the page cache.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "PDATA/SnapshotWriter.h"
#include "PDATA/clsArrayPool.h"
#include "PDATA/clsGrammerBase.h"

namespace {

constexpr int kNumber = 1000000;
constexpr int kRounds = 5;

double Seconds(const std::chrono::steady_clock::time_point& since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

template <class WORK>
double Best(const WORK& work) {
    double best = 1e9;
    for (int round = 0; round < kRounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        work();
        best = std::min(best, Seconds(start));
    }
    return best;
}

/// A million particles and a name for their file.
class Particles_cls {
public:
    Particles_cls() {
        const char* dir = std::getenv("TMPDIR");
        mPath = std::string(dir ? dir : "/tmp") + "/morentis_bench_export" + std::to_string(getpid());
        ParticleArrays_st& arrays = mSource.mArrays;
        if (!mPool.AllocateParticles(kNumber, true, &arrays)) std::abort();
        std::mt19937 random(3);
        std::uniform_real_distribution<float> value(-100, 100);
        for (int i = 0; i < kNumber; ++i) {
            for (int c = 0; c < 3; ++c) {
                arrays.mpPos[i][c] = value(random);
                arrays.mpVel[i][c] = value(random) / 50;
            }
            arrays.mpRadius[i] = 0.5f;
            arrays.mpDRadius[i] = arrays.mpDValue1[i] = 0.0f;
            arrays.mpValue1[i] = value(random);
            arrays.mpType[i] = static_cast<unsigned char>(i % 4);
            arrays.mpID[i] = i + 1;
        }
        mSource.mNumber = kNumber;
    }
    ~Particles_cls() {
        unlink(mPath.c_str());
        mPool.FreeParticles(&mSource.mArrays);
    }
    Particles_cls(const Particles_cls&) = delete;
    Particles_cls& operator=(const Particles_cls&) = delete;

    SnapshotSource_st mSource;
    std::string mPath;

private:
    ArrayPool_cls mPool;
};

// The limit: so many bytes from a buffer in the cache into a new file.
void WriteBytes(const std::string& path, long long length) {
    static const std::vector<char> sBuffer(256 << 10, 'x');
    unlink(path.c_str());
    const int file = open(path.c_str(), O_WRONLY | O_CREAT, 0666);
    for (long long done = 0; done < length;) {
        const auto piece = std::min<long long>(length - done, static_cast<long long>(sBuffer.size()));
        if (write(file, sBuffer.data(), static_cast<size_t>(piece)) != piece) std::abort();
        done += piece;
    }
    close(file);
}

void PrintItems(const std::string& path, const ParticleArrays_st& a) {
    FILE* file = fopen(path.c_str(), "w");
    const auto d = [](float value) { return static_cast<double>(value); };
    for (int i = 0; i < kNumber; ++i) {
        fprintf(file, "%f %f %f ", d(a.mpPos[i][0]), d(a.mpPos[i][1]), d(a.mpPos[i][2]));
        fprintf(file, "%f %f %f ", d(a.mpVel[i][0]), d(a.mpVel[i][1]), d(a.mpVel[i][2]));
        fprintf(file, "%f ", d(a.mpRadius[i]));
        fprintf(file, "%d ", a.mpID[i]);
        fprintf(file, "%d ", a.mpType[i]);
        fprintf(file, "%f ", d(a.mpValue1[i]));
        fprintf(file, "\n");
    }
    fclose(file);
}

void Run(benchmark::State& state, bool bText, double dt) {
    Particles_cls particles;
    particles.mSource.mDT = dt;
    const GrammerBase_cls grammar("DataExport");
    const wxString path = wxString::FromUTF8(particles.mPath.c_str());
    for (auto unused : state) {
        const double ours = Best([&] {
            unlink(particles.mPath.c_str());
            SnapshotWriter_cls writer(path, grammar, bText, particles.mSource);
            if (writer.Write() != SnapshotWriter_cls::State::Written) std::abort();
        });
        struct stat facts {};
        stat(particles.mPath.c_str(), &facts);
        const double limit = Best([&] { WriteBytes(particles.mPath, facts.st_size); });
        state.counters["ours_ms"] = ours * 1e3;
        state.counters["limit_ms"] = limit * 1e3;
        state.counters["ratio"] = ours / limit;
        if (!bText) continue;
        const auto start = std::chrono::steady_clock::now();
        PrintItems(particles.mPath, particles.mSource.mArrays);
        state.counters["speedup"] = Seconds(start) / ours;
    }
}

void ExportBinary(benchmark::State& state) { Run(state, false, 0.0); }
void ExportBinaryFraction(benchmark::State& state) { Run(state, false, 0.25); }
void ExportText(benchmark::State& state) { Run(state, true, 0.0); }

BENCHMARK(ExportBinary)->Unit(benchmark::kMillisecond);
BENCHMARK(ExportBinaryFraction)->Unit(benchmark::kMillisecond);
BENCHMARK(ExportText)->Unit(benchmark::kMillisecond);

} // namespace
