// The snapshot readers against their limits, measured in the same run: for binary files read(2) of the
// same bytes into one small buffer (counter "ratio", ours / limit), for text files sscanf of each line
// (counter "speedup", sscanf / ours). The files lie in the page cache.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include "PDATA/SnapshotBody.h"
#include "PDATA/clsArrayPool.h"

namespace {

constexpr int kBinaryNumber = 10000000;
constexpr int kTextNumber = 1000000;
constexpr int kRounds = 5;

double Seconds(const std::chrono::steady_clock::time_point& since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

/// A file for the length of one benchmark.
class TempFile_cls {
public:
    TempFile_cls() {
        const char* dir = std::getenv("TMPDIR");
        mPath = std::string(dir ? dir : "/tmp") + "/morentis_bench_XXXXXX";
        mFile = mkstemp(mPath.data());
    }
    ~TempFile_cls() {
        close(mFile);
        unlink(mPath.c_str());
    }
    TempFile_cls(const TempFile_cls&) = delete;
    TempFile_cls& operator=(const TempFile_cls&) = delete;
    void Write(const void* bytes, size_t length) const {
        if (write(mFile, bytes, length) != static_cast<ssize_t>(length)) std::abort();
    }
    std::string mPath;

private:
    int mFile;
};

void WriteBinary(const TempFile_cls& file) {
    std::vector<float> records(10 * 10000);
    std::mt19937 random(1);
    const int head[2] = {0, kBinaryNumber};
    file.Write(head, sizeof head);
    for (float& value : records)
        value = std::uniform_real_distribution<float>(-10, 10)(random);
    for (int i = 0; i < kBinaryNumber / 10000; ++i)
        file.Write(records.data(), records.size() * sizeof(float));
}

// The limit: every byte once through one small buffer.
double TimeRead(const std::string& path) {
    static std::vector<char> sBuffer(256 << 10);
    const int file = open(path.c_str(), O_RDONLY);
    const auto start = std::chrono::steady_clock::now();
    while (read(file, sBuffer.data(), sBuffer.size()) > 0) {
    }
    const double time = Seconds(start);
    close(file);
    return time;
}

SnapshotBody_st MakeJob(const std::string& path, int number, bool bText, std::vector<int> body,
                        const ParticleArrays_st& arrays) {
    SnapshotBody_st job;
    job.mPath = path;
    job.mDataType = bText ? 1 : 0;
    job.mBody = std::move(body);
    job.mbDefaultBody = job.mBody == std::vector<int>{0, 1, 5, 6, 7, 8};
    job.mHeaderBytes = 8;
    job.mHeaderLines = 2;
    job.mNumber = number;
    job.mArrays = arrays;
    return job;
}

double TimeBody(const SnapshotBody_st& job) {
    const auto start = std::chrono::steady_clock::now();
    ReadSnapshotBody(job);
    return Seconds(start);
}

// Ours and the limit in turn, the best of each counts.
void RunBinary(benchmark::State& state, const std::vector<int>& body, bool bFresh) {
    const TempFile_cls file;
    WriteBinary(file);
    ArrayPool_cls pool(bFresh ? 0 : size_t(1) << 30);
    double ours = 1e9, limit = 1e9;
    ParticleArrays_st arrays;
    for (auto unused : state) {
        for (int round = 0; round < kRounds; ++round) {
            limit = std::min(limit, TimeRead(file.mPath));
            if (!arrays.mpPos && !pool.AllocateParticles(kBinaryNumber, true, &arrays)) std::abort();
            ours = std::min(ours, TimeBody(MakeJob(file.mPath, kBinaryNumber, false, body, arrays)));
            if (bFresh) pool.FreeParticles(&arrays);
            arrays.mZeroBits = 0;
        }
    }
    pool.FreeParticles(&arrays);
    state.counters["ours_ms"] = ours * 1e3;
    state.counters["limit_ms"] = limit * 1e3;
    state.counters["ratio"] = ours / limit;
}

void ReadBinaryDefault(benchmark::State& state) { RunBinary(state, {0, 1, 5, 6, 7, 8}, false); }
void ReadBinaryGeneral(benchmark::State& state) { RunBinary(state, {6, 0, 2, 1, 8, 7}, false); }
void ReadBinaryFresh(benchmark::State& state) { RunBinary(state, {0, 1, 5, 6, 7, 8}, true); }

std::string MakeText() {
    std::string text = "0.5\n" + std::to_string(kTextNumber) + "\n";
    std::mt19937 random(2);
    const auto number = [&random] { return std::uniform_real_distribution<double>(-100, 100)(random); };
    char line[256];
    for (int i = 0; i < kTextNumber; ++i) {
        const int length = std::snprintf(line, sizeof line, "%.8f %.8f %.8f %.7g %.7g %.7g %.6f %d %d %.9g\n",
                                         number(), number(), number(), number() / 50, number() / 50,
                                         number() / 50, 0.5, i + 1, i % 4, number());
        text.append(line, static_cast<size_t>(length));
    }
    return text;
}

// The plain way: sscanf of each line.
double TimeScan(const std::string& text, const ParticleArrays_st& arrays) {
    const auto start = std::chrono::steady_clock::now();
    const char* line = text.c_str();
    std::string copy;
    for (int i = -2; i < kTextNumber; ++i) {
        const char* end = std::strchr(line, '\n');
        copy.assign(line, end);
        line = end + 1;
        if (i < 0) continue;
        int type = 0;
        float(*pos)[3] = arrays.mpPos + i;
        float(*vel)[3] = arrays.mpVel + i;
        std::sscanf(copy.c_str(), "%f %f %f %f %f %f %f %d %d %f", *pos, *pos + 1, *pos + 2, *vel, *vel + 1,
                    *vel + 2, arrays.mpRadius + i, arrays.mpID + i, &type, arrays.mpValue1 + i);
        arrays.mpType[i] = static_cast<unsigned char>(type);
    }
    return Seconds(start);
}

bool IsSame(const ParticleArrays_st& a, const ParticleArrays_st& b, size_t number) {
    return std::memcmp(a.mpPos, b.mpPos, 12 * number) == 0 &&
           std::memcmp(a.mpVel, b.mpVel, 12 * number) == 0 &&
           std::memcmp(a.mpRadius, b.mpRadius, 4 * number) == 0 &&
           std::memcmp(a.mpID, b.mpID, 4 * number) == 0 &&
           std::memcmp(a.mpValue1, b.mpValue1, 4 * number) == 0 &&
           std::memcmp(a.mpType, b.mpType, number) == 0;
}

void ReadText(benchmark::State& state) {
    const TempFile_cls file;
    const std::string text = MakeText();
    file.Write(text.data(), text.size());
    ArrayPool_cls pool;
    ParticleArrays_st arrays, plain;
    if (!pool.AllocateParticles(kTextNumber, true, &arrays) ||
        !pool.AllocateParticles(kTextNumber, true, &plain))
        std::abort();
    arrays.mZeroBits = 0;
    double ours = 1e9, scan = 1e9;
    for (auto unused : state) {
        for (int round = 0; round < kRounds; ++round)
            ours =
                std::min(ours, TimeBody(MakeJob(file.mPath, kTextNumber, true, {0, 1, 5, 6, 7, 8}, arrays)));
        for (int round = 0; round < 3; ++round)
            scan = std::min(scan, TimeScan(text, plain));
    }
    if (!IsSame(arrays, plain, kTextNumber)) state.SkipWithError("the numbers differ from sscanf's");
    pool.FreeParticles(&arrays);
    pool.FreeParticles(&plain);
    state.counters["ours_ms"] = ours * 1e3;
    state.counters["sscanf_ms"] = scan * 1e3;
    state.counters["speedup"] = scan / ours;
}

BENCHMARK(ReadBinaryDefault)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadBinaryGeneral)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadBinaryFresh)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadText)->Unit(benchmark::kMillisecond);

} // namespace
