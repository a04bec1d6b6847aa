// Drawing billboards and spheres against bare OpenGL programs: same context, same off-screen buffer,
// finished both. DrawBillboards: the bare one owns the same quads in buffer objects; DrawSpheres: it draws
// instances of the same mesh whose places and materials stand in a buffer. Counter "ratio" is ours over
// theirs. DrawSpheresExact: ray-cast spheres against a display list a sphere: counter "speedup" for the mesh
// of "High", which comes nearest in looks and takes their place where rays can't be cast, "speedupMiddle" and
// "speedupLow" for the coarser ones; "cpuMs" is what all threads worked, which says more on a busy machine.
// DrawAlternating: two classes of particles by
// turns against the same drawn as if each were alone, counter "ratio".
#include <benchmark/benchmark.h>

#include <epoxy/gl.h>

#include <functional>
#include <vector>

#include "BenchContext.h"
#include "BenchScene.h"
#include "GL/BASE/clsShaderCtrl.h"
#include "GL/BASE/clsSphere.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsSnapData.h"
#include "PDATA/clsPDataBlock.h"

namespace {

struct Case {
    int number;
    unsigned drawType;
    unsigned quality;
    unsigned shader;
    float radius; ///< pixels
    bool bCurve;  ///< colours and materials by value
};

/// What sets the second class of particles apart from the first.
struct Other {
    unsigned drawType;
    unsigned quality;
    unsigned blend;
};

class Scene : BenchScene_cls {
public:
    /// With `pOther` every second particle belongs to the second class.
    explicit Scene(const Case& what, const Other* pOther = nullptr)
        : BenchScene_cls(what.number,
                         [&](PDataBlock_cls& block, int i, float random) {
                             block.mpRadius[i] = what.radius * kPixel;
                             block.mpValue1[i] = random;
                             block.mpType[i] = static_cast<unsigned char>(pOther ? i % 2 : 0);
                         }),
          mCase(what) {
        for (GLAttribute_cls* a : mpAttribute) {
            a->mDrawType.mValue = what.drawType;
            a->mDrawQuality.mValue = what.quality;
            a->mShaderType.mValue = what.shader;
            for (ColorCurve_cls* pCurve : {&a->mColor, &a->mAmbient, &a->mDiffuse, &a->mSpecular})
                pCurve->mbUseColorCurve.mValue = what.bCurve;
        }
        if (pOther) {
            mAttribute[1]->mDrawType.mValue = pOther->drawType;
            mAttribute[1]->mDrawQuality.mValue = pOther->quality;
            mAttribute[1]->mBlendType.mValue = pOther->blend;
            mAttribute[1]->mRadiusFactor.mValue = 0.8f;
        }
        MakeDrawn();
    }
    ~Scene() {
        if (mBuffer[0] != 0) glDeleteBuffers(3, mBuffer);
        if (mList != 0) glDeleteLists(mList, 1);
    }

    double TimeOurs() {
        return TimeLit([this] { mDraw.GLDrawSequential(0, mDrawn.get(), mpAttribute); });
    }
    double TimeLit(const std::function<void()>& draw) {
        const Took_st took = Time(
            [] {
                glEnable(GL_LIGHTING);
                SetLights();
            },
            draw);
        mWork = took.work;
        return took.wall;
    }

    double GetLastWork() const { return mWork; } ///< seconds that all threads worked

    // What the bare programs do.
    void MakeQuads();
    void DrawQuads();
    void MakeInstances();
    void DrawInstances();
    void MakeList(int level);
    void DrawLists(int number);

private:
    static void SetLights() {
        const float from[4] = {0.5f, 0.5f, 0.7f, 0.0f};
        const float white[4] = {1, 1, 1, 0};
        glEnable(GL_LIGHT0);
        glLightfv(GL_LIGHT0, GL_POSITION, from);
        for (const GLenum color : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR})
            glLightfv(GL_LIGHT0, color, white);
    }

    Case mCase;
    double mWork = 0.0;
    GLuint mBuffer[3] = {0, 0, 0};
    GLuint mList = 0;
};

GLuint Upload(GLuint buffer, const std::vector<float>& data) {
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(data.size() * sizeof(float)), data.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    return buffer;
}

void Scene::MakeQuads() {
    static const float kCorners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    std::vector<float> places, colors, coords;
    for (int i = 0; i < mCase.number; ++i)
        for (const float* corner : kCorners) {
            const float* p = mDrawn->mpPos[i];
            const float r = mDrawn->mpRadius[i];
            places.insert(places.end(), {p[0] + r * corner[0], p[1] + r * corner[1], p[2]});
            colors.insert(colors.end(), mDrawn->mpColor[i], mDrawn->mpColor[i] + 4);
            coords.insert(coords.end(), {corner[0] > 0 ? 1.0f : 0.0f, corner[1] > 0 ? 1.0f : 0.0f});
        }
    glGenBuffers(3, mBuffer);
    Upload(mBuffer[0], places);
    Upload(mBuffer[1], colors);
    Upload(mBuffer[2], coords);
}

void Scene::DrawQuads() {
    glDisable(GL_LIGHTING);
    glDepthMask(GL_FALSE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_2D);
    mpAttribute[0]->BindTexture();
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer[0]);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer[1]);
    glColorPointer(4, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer[2]);
    glTexCoordPointer(2, GL_FLOAT, 0, nullptr);
    glDrawArrays(GL_QUADS, 0, 4 * mCase.number);
    glPopClientAttrib();
}

void Scene::MakeInstances() {
    std::vector<float> data;
    for (int i = 0; i < mCase.number; ++i) {
        const float* p = mDrawn->mpPos[i];
        data.insert(data.end(), {p[0], p[1], p[2], mDrawn->mpRadius[i]});
        float color[4];
        for (ColorCurve_cls* pCurve :
             {&mpAttribute[0]->mAmbient, &mpAttribute[0]->mDiffuse, &mpAttribute[0]->mSpecular}) {
            pCurve->GetColor4fScaled(color, mDrawn->mpValue1[i]);
            data.insert(data.end(), color, color + 4);
        }
    }
    glGenBuffers(3, mBuffer);
    Upload(mBuffer[0], data);
}

void Scene::DrawInstances() {
    glDepthMask(GL_TRUE);
    glEnable(GL_BLEND);
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 20.0f);
    GpCSphere->BeginArrays(int(mCase.quality) + 1);
    GLAttribute_cls::mspCShaderCtrl->BeginSpheres(mCase.shader, 1, false);
    glBindBuffer(GL_ARRAY_BUFFER, mBuffer[0]);
    const unsigned places[4] = {ShaderCtrl_cls::ATTRIBUTE_SPHERE, ShaderCtrl_cls::ATTRIBUTE_AMBIENT,
                                ShaderCtrl_cls::ATTRIBUTE_DIFFUSE, ShaderCtrl_cls::ATTRIBUTE_SPECULAR};
    for (size_t k = 0; k < 4; ++k) {
        glEnableVertexAttribArray(places[k]);
        glVertexAttribPointer(places[k], 4, GL_FLOAT, GL_FALSE, 64, static_cast<char*>(nullptr) + 16 * k);
        glVertexAttribDivisor(places[k], 1);
    }
    GpCSphere->DrawInstances(mCase.number);
    for (const unsigned place : places) {
        glVertexAttribDivisor(place, 0);
        glDisableVertexAttribArray(place);
    }
    GpCSphere->EndArrays();
    glUseProgram(0);
}

void Scene::MakeList(int level) {
    if (mList != 0) glDeleteLists(mList, 1);
    mList = glGenLists(1);
    glNewList(mList, GL_COMPILE);
    const Sphere_cls::Mesh_st& mesh = Sphere_cls::GetMesh(level);
    glBegin(GL_TRIANGLES);
    for (const unsigned short index : mesh.mIndices) {
        glNormal3fv(&mesh.mVertices[index * 3u]);
        glVertex3fv(&mesh.mVertices[index * 3u]);
    }
    glEnd();
    glEndList();
}

void Scene::DrawLists(int number) {
    glDepthMask(GL_TRUE);
    glEnable(GL_NORMALIZE);
    for (int i = 0; i < number; ++i) {
        const float* p = mDrawn->mpPos[i];
        const float r = mDrawn->mpRadius[i];
        glPushMatrix();
        glTranslatef(p[0], p[1], p[2]);
        glScalef(r, r, r);
        glCallList(mList);
        glPopMatrix();
    }
}

void DrawAlternating(benchmark::State& state, Case what, Other other) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    std::vector<double> mixed, alone;
    {
        Scene scene(what, &other);
        scene.TimeOurs();
        for (auto _ : state)
            for (int round = 0; round < 3; ++round)
                mixed.push_back(scene.TimeOurs());
        state.counters["cpuMs"] = scene.GetLastWork() * 1e3;
    }
    Case second = what;
    second.drawType = other.drawType;
    second.quality = other.quality;
    Scene first(what);
    Scene rest(second);
    for (int round = 0; round < 3; ++round)
        alone.push_back((first.TimeOurs() + rest.TimeOurs()) / 2.0);
    state.counters["oursMs"] = Median(mixed) * 1e3;
    state.counters["aloneMs"] = Median(alone) * 1e3;
    state.counters["ratio"] = Median(mixed) / Median(alone);
}

/// Both in turn, `rounds` times after one of each to warm up.
void Compare(benchmark::State& state, Scene& scene, int rounds, const std::function<void()>& bare) {
    scene.TimeOurs();
    scene.TimeLit(bare);
    std::vector<double> ours, theirs;
    for (auto _ : state)
        for (int round = 0; round < rounds; ++round) {
            theirs.push_back(scene.TimeLit(bare));
            ours.push_back(scene.TimeOurs());
        }
    state.counters["bareMs"] = Median(theirs) * 1e3;
    state.counters["oursMs"] = Median(ours) * 1e3;
    state.counters["ratio"] = Median(ours) / Median(theirs);
}

void DrawBillboards(benchmark::State& state, Case what) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    Scene scene(what);
    scene.MakeQuads();
    Compare(state, scene, 3, [&] { scene.DrawQuads(); });
}

void DrawSpheres(benchmark::State& state, Case what) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    Scene scene(what);
    scene.MakeInstances();
    Compare(state, scene, 1, [&] { scene.DrawInstances(); });
}

void DrawSpheresExact(benchmark::State& state, Case what) {
    if (!MakeBenchContext()) return state.SkipWithError("no display");
    Scene scene(what);
    // Against the meshes of "Low", "Middle" and "High"; the last is what is drawn where rays can't be cast.
    // Each is timed as it goes on and on: right after one of its own kind.
    constexpr int kPart = 20;
    std::vector<double> ours, work, lists[3];
    const auto drawLists = [&] { scene.DrawLists(what.number / kPart); };
    for (auto _ : state) {
        for (int round = 0; round < 5; ++round) {
            scene.TimeOurs();
            ours.push_back(scene.TimeOurs());
            work.push_back(scene.GetLastWork());
            for (int level = 1; level <= (round < 2 ? 3 : 1); ++level) {
                scene.MakeList(level);
                scene.TimeLit(drawLists);
                lists[level - 1].push_back(kPart * scene.TimeLit(drawLists));
            }
        }
    }
    const double time = Median(ours);
    state.counters["oursMs"] = time * 1e3;
    state.counters["cpuMs"] = Median(work) * 1e3;
    state.counters["speedupLow"] = Median(lists[0]) / time;
    state.counters["speedupMiddle"] = Median(lists[1]) / time;
    state.counters["speedup"] = Median(lists[2]) / time;
}

#define DRAW_CASE(what, name, ...)                                                                           \
    BENCHMARK_CAPTURE(what, name, Case{__VA_ARGS__})                                                         \
        ->Name(#name)                                                                                        \
        ->Iterations(1)                                                                                      \
        ->Unit(benchmark::kMillisecond)

// Number, draw type, quality, shader, radius in pixels, by value.
DRAW_CASE(DrawBillboards, DrawBillboards, 1000000, 1, 0, 0, 2.0f, true);
DRAW_CASE(DrawBillboards, DrawBillboards8px, 100000, 1, 0, 0, 4.0f, true);
DRAW_CASE(DrawSpheres, DrawSpheres, 1000000, 2, 0, 0, 2.0f, true);
DRAW_CASE(DrawSpheres, DrawSpheresPhong, 100000, 2, 0, 2, 4.0f, true);
DRAW_CASE(DrawSpheresExact, DrawSpheresExact, 1000000, 2, 3, 0, 1.0f, false);
DRAW_CASE(DrawSpheresExact, DrawSpheresExact100k, 100000, 2, 3, 0, 1.0f, false);
DRAW_CASE(DrawSpheresExact, DrawSpheresExact100k4px, 100000, 2, 3, 0, 2.0f, false);
DRAW_CASE(DrawSpheresExact, DrawSpheresExact100k8px, 100000, 2, 3, 0, 4.0f, false);
DRAW_CASE(DrawSpheresExact, DrawSpheresExactByValue, 1000000, 2, 3, 0, 1.0f, true);

#define ALTERNATING_CASE(name, what, ...)                                                                    \
    BENCHMARK_CAPTURE(DrawAlternating, name, what, Other{__VA_ARGS__})                                       \
        ->Name(#name)                                                                                        \
        ->Iterations(1)                                                                                      \
        ->Unit(benchmark::kMillisecond)

// Draw type, quality and blending of the second class.
constexpr Case kSprites = {1000000, 1, 0, 0, 2.0f, true};
constexpr Case kMeshes = {100000, 2, 0, 0, 2.0f, true};
constexpr Case kExact = {100000, 2, 3, 0, 1.0f, true};
ALTERNATING_CASE(AlternatingSprites, kSprites, 1, 0, 0);
ALTERNATING_CASE(AlternatingSpritesBlend, kSprites, 1, 0, 1);
ALTERNATING_CASE(AlternatingMeshes, kMeshes, 2, 0, 0);
ALTERNATING_CASE(AlternatingMeshesQuality, kMeshes, 2, 1, 0);
ALTERNATING_CASE(AlternatingExact, kExact, 2, 3, 0);
ALTERNATING_CASE(AlternatingExactBlend, kExact, 2, 3, 1);
ALTERNATING_CASE(AlternatingSpritesExact, (Case{100000, 1, 0, 0, 2.0f, true}), 2, 3, 0);

} // namespace
