// PovParticles: the text of 1,000,000 spheres against writing the same bytes to a file, counter "ratio", ours
// / limit. ReadMesh2: our reader of 1,000,000 triangles against `cat` of the file plus a copy of what it
// gives. By turns in one run; the best counts.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "FourAttributes.h"
#include "BenchTimes.h"
#include "GL/DRAW/clsArrayAndIndex.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsPovParticles.h"
#include "GL/DRAW/clsSnapData.h"
#include "MESH/Mesh2Reader.h"
#include "MESH/MeshFile.h"
#include "MESH/PovMeshText.h"
#include "MESH/clsPovObjectMesh.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"

namespace {

using Clock = std::chrono::steady_clock;

template <class JOB>
double Time(const JOB& job) {
    const Clock::time_point begin = Clock::now();
    job();
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

std::string MakePath() {
    const char* dir = std::getenv("TMPDIR");
    std::string path = std::string(dir ? dir : "/tmp") + "/morentis_bench_XXXXXX";
    close(mkstemp(path.data()));
    return path;
}

void WriteBytes(const std::string& path, const std::string& text) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    for (size_t at = 0; at < text.size();) {
        const ssize_t wrote = write(file, text.data() + at, text.size() - at);
        if (wrote <= 0) std::abort();
        at += size_t(wrote);
    }
    close(file);
}

void PovParticles(benchmark::State& state) {
    constexpr int kNumber = 1000000;
    FourAttributes_st attributes;
    for (GLAttribute_cls* one : attributes.mp) {
        one->mDrawType.mValue = DRAW_SPHERE;
        one->mRadiusType.mValue = state.range(0) == 1 ? RADIUS_CONSTANT : RADIUS_OF_DATA;
        one->mRadiusFactorForConst.mValue = 0.5f;
    }
    PDataSnap_cls holder(nullptr, 0);
    PDataBlock_cls& block = *holder.mpCBlock;
    if (!block.Allocate(kNumber)) std::abort();
    std::mt19937 random(3);
    std::uniform_real_distribution<float> side(-50, 50);
    for (int i = 0; i < kNumber; ++i) {
        for (float& v : block.mpPos[i])
            v = side(random);
        block.mpRadius[i] = 0.5f;
    }
    SnapData_cls snap(&block, attributes.mp, 0.0, 1);
    std::vector<ArrayAndIndex_cls> entries;
    for (int i = 0; i < kNumber; ++i)
        entries.push_back({i, 0.0f, 1.0f});
    PovTextOptions_st options;
    options.mbGroupMaterials = state.range(0) == 2;
    PovParticles_cls::List_st list;
    list.mpEntries = entries.data();
    list.mNumber = kNumber;
    double ours = 1e9, limit = 1e9, work = 1e9;
    const std::string path = MakePath();
    for (auto _ : state) {
        std::string text;
        const double before = GetWork();
        ours = std::min(ours, Time([&] {
                            const PovParticles_cls particles(snap, attributes.mp, list, options);
                            PovText_cls pov(options);
                            pov.SetDecimals(particles.GetDecimals());
                            particles.Append(&text, pov);
                            WriteBytes(path, text);
                        }));
        work = std::min(work, GetWork() - before);
        limit = std::min(limit, Time([&] { WriteBytes(path, text); }));
        state.counters["MB"] = double(text.size()) / 1e6;
    }
    unlink(path.c_str());
    state.counters["ours_ms"] = ours * 1000;
    state.counters["limit_ms"] = limit * 1000;
    state.counters["work_ms"] = work * 1000;
    state.counters["ratio"] = ours / limit;
}
BENCHMARK(PovParticles)
    ->ArgName("macro0_const1_grouped2")
    ->Arg(0)
    ->Arg(1)
    ->Arg(2)
    ->Iterations(7)
    ->Unit(benchmark::kMillisecond);

extern "C" char** environ;

void Cat(const std::string& path) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    std::string name = "cat", file = path;
    char* arguments[] = {name.data(), file.data(), nullptr};
    pid_t child = 0;
    if (posix_spawnp(&child, "cat", &actions, nullptr, arguments, environ) != 0) std::abort();
    int status = 0;
    waitpid(child, &status, 0);
    posix_spawn_file_actions_destroy(&actions);
}

void ReadMesh2Bench(benchmark::State& state) {
    constexpr int kWide = 1000, kHigh = 500;
    std::vector<float> vertex, normal;
    std::vector<int> face;
    std::mt19937 random(9);
    std::uniform_real_distribution<float> side(-1, 1);
    for (int y = 0; y <= kHigh; ++y)
        for (int x = 0; x <= kWide; ++x) {
            for (const float v : {float(x) * 0.01f, float(y) * 0.01f, side(random)})
                vertex.push_back(v);
            for (const float v : {side(random), side(random), 1.0f})
                normal.push_back(v);
        }
    for (int y = 0; y < kHigh; ++y)
        for (int x = 0; x < kWide; ++x) {
            const int a = y * (kWide + 1) + x, b = a + 1, c = a + kWide + 1, d = c + 1;
            for (const int corner : {a, b, d, a, d, c})
                face.push_back(corner);
        }
    const std::string path = MakePath();
    WriteBytes(path, GetMesh2FormatRef("bench", {vertex.data(), vertex.size() / 3, normal.data(), face.data(),
                                                 face.size() / 3}));
    double ours = 1e9, limit = 1e9;
    for (auto _ : state) {
        PovObjectMesh_cls mesh;
        ours = std::min(ours, Time([&] {
                            MeshSource_cls source(wxString::FromUTF8(path));
                            if (!ReadMesh2(source, &mesh).empty()) std::abort();
                        }));
        MeshFloats places, normals;
        MeshInts corners;
        limit = std::min(limit, Time([&] {
                             Cat(path);
                             places = mesh.mvVertex;
                             normals = mesh.mvNormal;
                             corners = mesh.mvFaceVertex;
                         }));
        benchmark::DoNotOptimize(corners.data());
    }
    unlink(path.c_str());
    state.counters["ours_ms"] = ours * 1000;
    state.counters["limit_ms"] = limit * 1000;
    state.counters["ratio"] = ours / limit;
}
BENCHMARK(ReadMesh2Bench)->Name("ReadMesh2")->Iterations(21)->Unit(benchmark::kMillisecond);

} // namespace
