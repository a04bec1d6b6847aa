// Sticks. StickPairs: 100,000 particles with about 578,000 pairs; counter "ratio" is ours over sorting the
// particles by cubes alone, "speedup" the plain loop over all pairs of 20,000 particles over ours.
// ReadBond: 10,000,000 pairs, counter "ratio" is ours over read(2) of the same bytes into one small buffer;
// "fresh": into memory that wasn't used before. DrawSticks: 1,000,000 cylinders against a bare OpenGL program
// that draws instances from a buffer, counter "ratio". All in turn in the same run.
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <epoxy/gl.h>
#include <fcntl.h>
#include <unistd.h>

#include "BOND/BondFile.h"
#include "BOND/clsPairFinder.h"
#include "BOND/clsPairGrid.h"
#include "BOND/clsPovObjectSticks.h"
#include "BenchContext.h"
#include "BenchTimes.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSticks.h"

namespace {

using Places_t = std::vector<std::array<float, 3>>;

double Seconds(const std::function<void()>& job) {
    const auto start = std::chrono::steady_clock::now();
    job();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Evenly in a cube in which each has 11.6 others within a distance of 1.
Places_t MakePlaces(size_t number) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> side(0.0f, std::cbrt(float(number) / 2.86f));
    Places_t places(number);
    for (auto& p : places)
        p = {side(random), side(random), side(random)};
    return places;
}

StickParticles_st GetParticles(const Places_t& places) {
    StickParticles_st particles;
    particles.mpPos = reinterpret_cast<const float(*)[3]>(places.data());
    particles.mCount = static_cast<int>(places.size());
    return particles;
}

double TimePairs(const Places_t& places, StickList_st* pList) {
    const StickParticles_st particles = GetParticles(places);
    const StickRule_st rule;
    const StickCell_st cell;
    return Seconds([&] {
        PairFinder_cls finder(particles, rule, cell);
        if (finder.Find(pList) != PairEnd::Whole) std::abort();
    });
}

double TimeSort(const Places_t& places) {
    const StickParticles_st particles = GetParticles(places);
    return Seconds([&] {
        const PairGrid_cls grid(particles, StickRule_st(), 1.0, 2);
        benchmark::DoNotOptimize(grid.GetNumber());
    });
}

// The plain way.
double TimeLoop(const Places_t& places, StickList_st* pList) {
    pList->Clear();
    return Seconds([&] {
        const size_t number = places.size();
        for (size_t i = 0; i < number; ++i)
            for (size_t j = i + 1; j < number; ++j) {
                const float x = places[j][0] - places[i][0], y = places[j][1] - places[i][1],
                            z = places[j][2] - places[i][2];
                if (!(1.0f > x * x + y * y + z * z)) continue;
                pList->mvIndexA.push_back(static_cast<unsigned>(i));
                pList->mvIndexB.push_back(static_cast<unsigned>(j));
                pList->mvBit.push_back(0);
                pList->mvFactor.push_back(1.0f);
            }
    });
}

void StickPairs(benchmark::State& state) {
    const Places_t places = MakePlaces(100000), few = MakePlaces(20000);
    StickList_st list, fewList, loopList;
    std::vector<double> ours, sort, oursFew, loop;
    TimePairs(places, &list);
    for (auto _ : state)
        for (int round = 0; round < 7; ++round) {
            ours.push_back(TimePairs(places, &list));
            sort.push_back(TimeSort(places));
            oursFew.push_back(TimePairs(few, &fewList));
            if (round < 3) loop.push_back(TimeLoop(few, &loopList));
        }
    if (fewList.mvIndexA != loopList.mvIndexA || fewList.mvIndexB != loopList.mvIndexB)
        return state.SkipWithError("other pairs than those of the plain loop");
    state.counters["pairs"] = double(list.GetNumber());
    state.counters["oursMs"] = Median(ours) * 1e3;
    state.counters["sortMs"] = Median(sort) * 1e3;
    state.counters["loopMs"] = Median(loop) * 1e3;
    state.counters["ratio"] = Median(ours) / Median(sort);
    state.counters["speedup"] = Median(loop) / Median(oursFew);
}
BENCHMARK(StickPairs)->Iterations(1)->Unit(benchmark::kMillisecond);

constexpr int kFilePairs = 10000000;

/// A ".bond" file for the length of the benchmark.
class BondFile_cls {
public:
    BondFile_cls() {
        const char* dir = std::getenv("TMPDIR");
        mPath = std::string(dir ? dir : "/tmp") + "/morentis_bench_XXXXXX.bond";
        const int file = mkstemps(mPath.data(), 5);
        std::string head("bond\0\0\0\0\0", 9);
        head.append(reinterpret_cast<const char*>(&kFilePairs), 4);
        std::vector<unsigned> piece(2 * 10000);
        std::mt19937 random(1);
        for (unsigned& index : piece)
            index = static_cast<unsigned>(random() % 1000000);
        if (write(file, head.data(), head.size()) != ssize_t(head.size())) std::abort();
        for (int i = 0; i < kFilePairs / 10000; ++i)
            if (write(file, piece.data(), piece.size() * 4) != ssize_t(piece.size() * 4)) std::abort();
        close(file);
    }
    ~BondFile_cls() { unlink(mPath.c_str()); }
    BondFile_cls(const BondFile_cls&) = delete;
    BondFile_cls& operator=(const BondFile_cls&) = delete;
    std::string mPath;
};

double TimeRead(const std::string& path) {
    static std::vector<char> sBuffer(256 << 10);
    return Seconds([&] {
        const int file = open(path.c_str(), O_RDONLY);
        while (read(file, sBuffer.data(), sBuffer.size()) > 0) {
        }
        close(file);
    });
}

void ReadBond(benchmark::State& state) {
    const BondFile_cls file;
    const wxString path = wxString::FromUTF8(file.mPath);
    std::vector<double> ours, fresh, limit;
    PovObjectSticks_cls used;
    const auto time = [&](PovObjectSticks_cls* pSticks) {
        return Seconds([&] {
            if (!pSticks->ReadListFromFile(path).empty() || pSticks->GetNumber() != size_t(kFilePairs))
                std::abort();
        });
    };
    for (auto _ : state)
        for (int round = 0; round < 7; ++round) {
            limit.push_back(TimeRead(file.mPath));
            {
                PovObjectSticks_cls sticks;
                fresh.push_back(time(&sticks));
            }
            used.ClearList(); // keeps its memory, as from frame to frame
            ours.push_back(time(&used));
        }
    ours.erase(ours.begin());
    state.counters["oursMs"] = Median(ours) * 1e3;
    state.counters["freshMs"] = Median(fresh) * 1e3;
    state.counters["limitMs"] = Median(limit) * 1e3;
    state.counters["ratio"] = Median(ours) / Median(limit);
    state.counters["ratioFresh"] = Median(fresh) / Median(limit);
}
BENCHMARK(ReadBond)->Iterations(1)->Unit(benchmark::kMillisecond);

constexpr int kSize = 2048;
constexpr size_t kCylinders = 1000000;

class Scene {
public:
    Scene() : mTarget(kSize, kSize) {
        GLAttribute_cls::InitializeShader(nullptr, true);
        std::mt19937 random(7);
        std::uniform_real_distribution<float> side(-1.0f, 1.0f);
        for (size_t i = 0; i < kCylinders; ++i) {
            const std::array<float, 3> p = {side(random), side(random), side(random)};
            mPlaces.push_back(p);
            mPlaces.push_back(
                {p[0] + 0.01f * side(random), p[1] + 0.01f * side(random), p[2] + 0.01f * side(random)});
            mList.mvIndexA.push_back(unsigned(2 * i));
            mList.mvIndexB.push_back(unsigned(2 * i + 1));
            mList.mvBit.push_back(0);
            mList.mvFactor.push_back(1.0f);
        }
        const int count = int(mPlaces.size());
        mList.CheckValidity(&count);
        mStyle.mType = STICK_CYLINDER;
        mStyle.mRadius = 0.0015f;
        mTarget.MakeFBO(false);
        MakeInstances();
    }
    ~Scene() { glDeleteBuffers(2, mBuffer); }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    double TimeOurs() {
        return Time([&] { mDrawer.Draw(mList, GetParticles(mPlaces), mStyle, 0); });
    }
    double TimeBare() {
        return Time([&] { DrawInstances(); });
    }

private:
    void MakeInstances() {
        std::vector<float> corners, data;
        for (size_t k = 0; k < 26; ++k)
            corners.insert(corners.end(), {PovObjectSticks_cls::maCircleCos[k / 2],
                                           PovObjectSticks_cls::maCircleSin[k / 2], float(k % 2)});
        for (size_t i = 0; i < mPlaces.size(); i += 2) {
            const auto &a = mPlaces[i], &b = mPlaces[i + 1];
            data.insert(data.end(),
                        {a[0], a[1], a[2], 1.0f, b[0] - a[0], b[1] - a[1], b[2] - a[2], mStyle.mRadius});
        }
        glGenBuffers(2, mBuffer);
        for (const int k : {0, 1}) {
            const std::vector<float>& from = k == 0 ? corners : data;
            glBindBuffer(GL_ARRAY_BUFFER, mBuffer[k]);
            glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(from.size() * sizeof(float)), from.data(),
                         GL_STATIC_DRAW);
        }
        glBindBuffer(GL_ARRAY_BUFFER, 0);
    }
    void DrawInstances() const {
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        glEnableClientState(GL_VERTEX_ARRAY);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[0]);
        glVertexPointer(3, GL_FLOAT, 0, nullptr);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[1]);
        GLAttribute_cls::mspCShaderCtrl->BeginSticks();
        const unsigned places[2] = {ShaderCtrl_cls::ATTRIBUTE_FIRST, ShaderCtrl_cls::ATTRIBUTE_ALONG};
        for (size_t k = 0; k < 2; ++k) {
            glEnableVertexAttribArray(places[k]);
            glVertexAttribPointer(places[k], 4, GL_FLOAT, GL_FALSE, 32, static_cast<char*>(nullptr) + 16 * k);
            glVertexAttribDivisor(places[k], 1);
        }
        glDrawArraysInstanced(GL_TRIANGLE_STRIP, 0, 26, GLsizei(kCylinders));
        for (const unsigned place : places) {
            glVertexAttribDivisor(place, 0);
            glDisableVertexAttribArray(place);
        }
        glPopClientAttrib();
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glUseProgram(0);
    }
    double Time(const std::function<void()>& draw) {
        const FBOScope_cls target(mTarget, true);
        PositionAndDirection_cls camera;
        camera.Set(0, 0, 4);
        GLPerspective_cls perspective(kSize, kSize);
        perspective.SetPerspectiveOnGL(camera);
        perspective.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
        glEnable(GL_CULL_FACE);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_LIGHTING);
        const float from[4] = {0.5f, 0.5f, 0.7f, 0.0f}, white[4] = {1, 1, 1, 0};
        glEnable(GL_LIGHT0);
        glLightfv(GL_LIGHT0, GL_POSITION, from);
        for (const GLenum color : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR}) {
            glLightfv(GL_LIGHT0, color, white);
            glMaterialfv(GL_FRONT_AND_BACK, color, white);
        }
        glFinish();
        return Seconds([&] {
            draw();
            glFinish();
        });
    }

    Places_t mPlaces;
    PovObjectSticks_cls mList;
    StickStyle_st mStyle;
    GLSticks_cls mDrawer;
    FBO_cls mTarget;
    GLuint mBuffer[2] = {0, 0};
};

void DrawSticks(benchmark::State& state) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    Scene scene;
    scene.TimeOurs();
    scene.TimeBare();
    std::vector<double> ours, bare;
    for (auto _ : state)
        for (int round = 0; round < 3; ++round) {
            bare.push_back(scene.TimeBare());
            ours.push_back(scene.TimeOurs());
        }
    state.counters["bareMs"] = Median(bare) * 1e3;
    state.counters["oursMs"] = Median(ours) * 1e3;
    state.counters["ratio"] = Median(ours) / Median(bare);
}
BENCHMARK(DrawSticks)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
