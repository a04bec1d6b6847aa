// Meshes of 1,000,000 triangles. ReadObj: our reader against `cat` of the file plus a copy of what it gives
// (counter "ratio", ours / limit) and against assimp without any step behind its reader (counter "speedup",
// assimp / ours). DrawMesh: drawing against a bare OpenGL program with the same triangles in buffers of its
// own, counter "ratio". All by turns in one run; the best counts for reading, the median for drawing.
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include <assimp/Importer.hpp>
#include <assimp/scene.h>

#include "BenchContext.h"
#include "BenchTimes.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLMesh.h"
#include "MESH/MeshCorners.h"
#include "MESH/MeshFile.h"
#include "MESH/ObjReader.h"
#include "MESH/clsPovObjectMesh.h"

namespace {

constexpr int kWide = 1000, kHigh = 500; // squares of two triangles

using Clock = std::chrono::steady_clock;

double Seconds(const Clock::time_point& since) {
    return std::chrono::duration<double>(Clock::now() - since).count();
}

/// A hilly field, as programs write it: six digits behind the point.
std::string MakeObj(bool bNormals) {
    std::string text;
    char line[200];
    const auto add = [&text, &line](int length) { text.append(line, static_cast<size_t>(length)); };
    for (int y = 0; y <= kHigh; ++y)
        for (int x = 0; x <= kWide; ++x)
            add(std::snprintf(line, sizeof line, "v %.6f %.6f %.6f\n", x * 0.004 - 2, y * 0.008 - 2,
                              0.1 * std::sin(x * 0.1) * std::cos(y * 0.07)));
    for (int y = 0; bNormals && y <= kHigh; ++y)
        for (int x = 0; x <= kWide; ++x)
            add(std::snprintf(line, sizeof line, "vn %.4f %.4f %.4f\n", 0.2 * std::sin(x * 0.1),
                              0.2 * std::cos(y * 0.1), 0.97));
    for (int y = 0; y < kHigh; ++y)
        for (int x = 0; x < kWide; ++x) {
            const int a = y * (kWide + 1) + x + 1, b = a + 1, c = a + kWide + 1, d = c + 1;
            if (bNormals)
                add(std::snprintf(line, sizeof line, "f %d//%d %d//%d %d//%d\nf %d//%d %d//%d %d//%d\n", a, a,
                                  b, b, d, d, a, a, d, d, c, c));
            else
                add(std::snprintf(line, sizeof line, "f %d %d %d\nf %d %d %d\n", a, b, d, a, d, c));
        }
    return text;
}

/// A file for the length of one benchmark.
class ObjFile_cls {
public:
    explicit ObjFile_cls(const std::string& text) {
        const char* dir = std::getenv("TMPDIR");
        mPath = std::string(dir ? dir : "/tmp") + "/morentis_bench_XXXXXX.obj";
        const int file = mkstemps(mPath.data(), 4);
        if (write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) std::abort();
        close(file);
    }
    ~ObjFile_cls() { unlink(mPath.c_str()); }
    ObjFile_cls(const ObjFile_cls&) = delete;
    ObjFile_cls& operator=(const ObjFile_cls&) = delete;
    std::string mPath;
};

double TimeCat(const std::string& path) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    std::string name = "cat", file = path;
    char* const arguments[] = {name.data(), file.data(), nullptr};
    pid_t child = 0;
    int status = 1;
    const auto start = Clock::now();
    if (posix_spawnp(&child, "cat", &actions, nullptr, arguments, environ) != 0) std::abort();
    waitpid(child, &status, 0);
    const double time = Seconds(start);
    posix_spawn_file_actions_destroy(&actions);
    return status == 0 ? time : 1e9;
}

double TimeAssimp(const std::string& path, size_t triangles) {
    Assimp::Importer importer;
    const auto start = Clock::now();
    const aiScene* const pScene = importer.ReadFile(path, 0);
    const double time = Seconds(start);
    if (!pScene || pScene->mNumMeshes != 1 || pScene->mMeshes[0]->mNumFaces != triangles) std::abort();
    return time;
}

void ReadObjFile(benchmark::State& state, bool bNormals) {
    const ObjFile_cls file(MakeObj(bNormals));
    const wxString path(file.mPath);
    double ours = 1e9, cat = 1e9, copy = 1e9, assimp = 1e9;
    for (auto unused : state)
        for (int round = 0; round < 7; ++round) {
            cat = std::min(cat, TimeCat(file.mPath));
            PovObjectMesh_cls mesh;
            auto start = Clock::now();
            if (!mesh.ReadMeshFromFile(path).empty()) std::abort();
            ours = std::min(ours, Seconds(start));
            start = Clock::now();
            const PovObjectMesh_cls copied = mesh;
            copy = std::min(copy, Seconds(start));
            if (copied.GetTriangleNumber() != 2 * kWide * kHigh) std::abort();
            if (round < 2) assimp = std::min(assimp, TimeAssimp(file.mPath, copied.GetTriangleNumber()));
        }
    state.counters["oursMs"] = ours * 1e3;
    state.counters["catMs"] = cat * 1e3;
    state.counters["copyMs"] = copy * 1e3;
    state.counters["assimpMs"] = assimp * 1e3;
    state.counters["ratio"] = ours / (cat + copy);
    state.counters["speedup"] = assimp / ours;
}

/// What a program of its own would do with the same triangles.
class BareMesh_cls {
public:
    explicit BareMesh_cls(const MeshCorners_st& corners)
        : mNumber(static_cast<GLsizei>(corners.mvIndex.size())) {
        glGenBuffers(3, mBuffer);
        Fill(GL_ARRAY_BUFFER, mBuffer[0], corners.mvVertex.data(), corners.mvVertex.size() * sizeof(float));
        Fill(GL_ARRAY_BUFFER, mBuffer[1], corners.mvNormal.data(), corners.mvNormal.size() * sizeof(float));
        Fill(GL_ELEMENT_ARRAY_BUFFER, mBuffer[2], corners.mvIndex.data(),
             corners.mvIndex.size() * sizeof(int));
    }
    ~BareMesh_cls() { glDeleteBuffers(3, mBuffer); }
    BareMesh_cls(const BareMesh_cls&) = delete;
    BareMesh_cls& operator=(const BareMesh_cls&) = delete;

    void Draw() const {
        glEnableClientState(GL_VERTEX_ARRAY);
        glEnableClientState(GL_NORMAL_ARRAY);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[0]);
        glVertexPointer(3, GL_FLOAT, 0, nullptr);
        glBindBuffer(GL_ARRAY_BUFFER, mBuffer[1]);
        glNormalPointer(GL_FLOAT, 0, nullptr);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mBuffer[2]);
        glDrawElements(GL_TRIANGLES, mNumber, GL_UNSIGNED_INT, nullptr);
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
        glDisableClientState(GL_VERTEX_ARRAY);
        glDisableClientState(GL_NORMAL_ARRAY);
    }

private:
    static void Fill(GLenum target, GLuint buffer, const void* pData, size_t bytes) {
        glBindBuffer(target, buffer);
        glBufferData(target, static_cast<GLsizeiptr>(bytes), pData, GL_STATIC_DRAW);
        glBindBuffer(target, 0);
    }

    GLuint mBuffer[3] = {};
    GLsizei mNumber;
};

double TimeDraw(FBO_cls& target, unsigned shader, const std::function<void()>& draw) {
    const FBOScope_cls scope(target, true);
    PositionAndDirection_cls camera;
    camera.Set(0, 0, 4);
    GLPerspective_cls perspective(1024, 1024);
    perspective.SetPerspectiveOnGL(camera);
    perspective.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glEnable(GL_LIGHTING);
    glEnable(GL_NORMALIZE);
    const float from[4] = {0.5f, 0.5f, 0.7f, 0.0f};
    glEnable(GL_LIGHT0);
    glLightfv(GL_LIGHT0, GL_POSITION, from);
    glFinish();
    const auto start = Clock::now();
    GLAttribute_cls::mspCShaderCtrl->BeginShader(shader, 1);
    draw();
    GLAttribute_cls::mspCShaderCtrl->EndShader(int(shader));
    glFinish();
    return Seconds(start);
}

void DrawMesh(benchmark::State& state, unsigned shader, bool bCornerNormals) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    GLAttribute_cls::InitializeShader(nullptr, true);
    PovObjectMesh_cls mesh;
    const MeshText_st text = MakeMeshText(MakeObj(bCornerNormals));
    MeshSource_cls source(text);
    if (!ReadObj(source, &mesh).empty()) std::abort();
    if (bCornerNormals) { // two normals a vertex
        for (size_t i = 0; i < mesh.mvFaceNormal.size(); i += 3)
            if (i % 2 == 0) mesh.mvFaceNormal[i] = mesh.mvFaceNormal[i + 1];
        mesh.ChangeContent();
    }
    FBO_cls target(1024, 1024);
    target.MakeFBO(false);
    const BareMesh_cls bare(MakeMeshCorners(mesh));
    GLMesh_cls drawn;
    std::vector<double> ours, theirs;
    const auto drawOurs = [&] { drawn.Draw(mesh); };
    const auto drawBare = [&] { bare.Draw(); };
    TimeDraw(target, shader, drawOurs);
    TimeDraw(target, shader, drawBare);
    for (auto unused : state)
        for (int round = 0; round < 9; ++round) {
            theirs.push_back(TimeDraw(target, shader, drawBare));
            ours.push_back(TimeDraw(target, shader, drawOurs));
        }
    state.counters["oursMs"] = Median(ours) * 1e3;
    state.counters["bareMs"] = Median(theirs) * 1e3;
    state.counters["ratio"] = Median(ours) / Median(theirs);
}

BENCHMARK_CAPTURE(ReadObjFile, plain, false)
    ->Name("ReadObj/plain")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_CAPTURE(ReadObjFile, normals, true)
    ->Name("ReadObj/normals")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK_CAPTURE(DrawMesh, fixed, 0u, false)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(DrawMesh, phong, 2u, false)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(DrawMesh, phong_corner_normals, 2u, true)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
