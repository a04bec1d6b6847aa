// What the processor must know of a scene to draw its particles: the state of the fixed pipeline as plain
// numbers. Eye coordinates are those of OpenGL: the view goes along -z.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// Camera and viewport of one pass.
struct TileView_st {
    float model[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}; ///< column by column
    float projection[16] = {};
    float both[16] = {}; ///< projection * model
    int width = 1, height = 1;
    // Derived.
    float modelScale = 1.0f; ///< lengths in the eye's coordinates of a length of 1
    float scale[2] = {1, 1}; ///< pixels to the plane at depth 1, or of a parallel view
    float offset[2] = {0, 0};
    float zRange[2] = {-0.001f, -1e30f}; ///< nearest and farthest z
    float depthMap[2] = {0, 0};          ///< depth is a + b / z, in a parallel view a + b * z
    bool bPerspective = true;

    /// False where matrices have other forms: a straight perspective or parallel view from depth 0 to 1 on
    /// the one hand, turns, shifts and one scale without a mirror on the other.
    bool Set(const float* pModel, const float* pProjection, int w, int h);
};

/// A light as OpenGL keeps it.
struct TileLight_st {
    float place[4] = {0, 0, 1, 0}; ///< eye coordinates; the last is 0 for a direction
    float ambient[3] = {0, 0, 0}, diffuse[3] = {1, 1, 1}, specular[3] = {1, 1, 1};
    float fades[3] = {1, 0, 0}; ///< constant, linear, quadratic attenuation
    bool bSpot = false;
    float along[3] = {0, 0, -1}; ///< of a spot
    float cosCutoff = -1.0f;
    float exponent = 0.0f;
};

struct TileFog_st {
    enum Mode { NONE, EXP, EXP2, LINEAR };
    Mode mode = NONE;
    float density = 1.0f, start = 0.0f, end = 1.0f;
    float color[3] = {0, 0, 0};
};

/// A billboard's picture: the nearest texel counts, and it repeats.
struct TileTexture_st {
    int width = 0, height = 0;    ///< 0: plain squares
    std::vector<uint32_t> texels; ///< red in the lowest byte, then green, blue, alpha; bottom row first
    std::vector<uint8_t> alphas;  ///< of the same
    bool bWhite = false;          ///< only alpha differs
    /// `pRGBA`: four bytes a texel.
    void Set(const unsigned char* pRGBA, int w, int h);
};

/// How the particles of one class are drawn.
struct TileLook_st {
    enum Kind : uint8_t { HIDDEN, POINT, SPRITE, SPHERE };
    enum Blend : uint8_t { COVERS, ADDS, OVERWRITES };
    Kind kind = HIDDEN;
    Blend blend = COVERS;
    bool bMultiplied = false; ///< colours come multiplied by alpha, so alpha blends once instead of squared
    bool bTest = true;        ///< hidden by what is nearer
    bool bWrite = false;      ///< hides what is farther
    float size = 1.0f;        ///< edge of a point, pixels
    bool bFacing = false;     ///< sprites face the eye instead of lying in the plane of the view
    // Of spheres.
    bool bCartoon = false;
    bool bMaterials = false; ///< each brings its own, else these
    float ambient[4] = {0, 0, 0, 1}, diffuse[4] = {1, 1, 1, 1}, specular[4] = {0, 0, 0, 1};
};

struct TileScene_st {
    static constexpr int kLooks = 4;
    TileView_st view;
    TileFog_st fog;
    std::vector<TileLight_st> lights;
    float around[3] = {0.2f, 0.2f, 0.2f}; ///< light of the model
    float boldness = 0.3f;                ///< of the outline of cartoon spheres
    bool bLoneShadowLight = false;        ///< cartoon spheres are black where it doesn't reach
    bool bPlainLight = false;             ///< of far lights alone, without fog; TileDraw_cls finds it
    TileTexture_st texture;
    TileLook_st look[kLooks];
};

/// What a run of the list holds, in its order; who fills it leaves out what isn't drawn at all.
struct TileRun_st {
    static constexpr int kRoom = 2048;
    int count = 0;
    float x[kRoom], y[kRoom], z[kRoom]; ///< places in data coordinates
    float radius[kRoom];                ///< of a sprite: half its edge
    uint8_t look[kRoom];                ///< which TileLook_st
    float color[kRoom][4];              ///< of points and sprites, RGBA
    float (*pMaterial)[12] = nullptr;   ///< of spheres with bMaterials: ambient, diffuse, specular RGBA
};

/// Where particles come from.
class TileSource_cls {
public:
    virtual ~TileSource_cls() = default;
    virtual long long GetNumber() const = 0;
    /// Particles first to first + count - 1 of the list (count at most kRoom); from several threads at once.
    virtual void Fill(long long first, int count, TileRun_st& out) const = 0;
};
