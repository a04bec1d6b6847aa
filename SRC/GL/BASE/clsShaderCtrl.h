// The shaders of lit spheres and objects, shared by all views. Their sources are run-time files (GL/*.vert,
// GL/*.frag) that work on the lights, materials and fog of the fixed pipeline.
//
// Each shader comes in several forms: for plain vertices; for a sphere's mesh that is repeated at many
// places; and, made by other files, for spheres that are met by the rays of the pixels. The latter two are
// compiled anew for each kind of scene, as lights and fog that a shader knows beforehand cost a fraction.
// A form that this OpenGL refuses is missing and its Begin says so; the caller falls back.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class ShaderProgram_cls;
class wxString;
class wxWindow;

class ShaderCtrl_cls {
public:
    enum Type : unsigned { TYPE_ORIGINAL = 0, TYPE_GOURAUD, TYPE_PHONG, TYPE_CARTOON };
    static constexpr int kProgramNumber = 3; ///< Gouraud, Phong, Cartoon

    /// Places of the vertex attributes of spheres.
    enum Attribute : unsigned {
        ATTRIBUTE_BALL = 0, ///< centre and radius of a ray-cast sphere
        ATTRIBUTE_AMBIENT = 6,
        ATTRIBUTE_DIFFUSE = 7,
        ATTRIBUTE_SPHERE = 11, ///< centre and radius of a mesh
        ATTRIBUTE_SPECULAR = 12,
        ATTRIBUTE_FIRST = 11, ///< an end of a stick, and what alpha is multiplied by
        ATTRIBUTE_ALONG = 12  ///< from there to the other end, and the radius
    };

    /// The picture plane of ray-cast spheres.
    struct Rays_st {
        float viewport[4] = {0, 0, 1, 1};
        float scale[2] = {1, 1}; ///< window coordinates to the plane at depth 1, or of a parallel view
        float offset[2] = {0, 0};
        float depthRange[2] = {-0.001f, -1e30f}; ///< nearest and farthest z, eye coordinates
        float depthMap[2] = {0, 0};              ///< depth is a + b / z, in a parallel view a + b * z
        float modelScale = 1.0f;                 ///< of the model-view matrix
        bool bPerspective = true;
    };

    ShaderCtrl_cls();
    ~ShaderCtrl_cls();
    ShaderCtrl_cls(const ShaderCtrl_cls&) = delete;
    ShaderCtrl_cls& operator=(const ShaderCtrl_cls&) = delete;

    /// Make the three programs. A file that can't be read or linked is told, and the process ends with
    /// exit(1). With `bEnable` false, or an OpenGL without shaders, every Begin does nothing. All need a
    /// current context.
    void InitializeShader(wxWindow* pParent, bool bEnable);

    /// Plain vertices from here on go through a shader that sums the first `lightNumber` lights. Type 0 is
    /// the fixed pipeline.
    void BeginShader(unsigned type, int lightNumber);
    void EndShader(int type);
    /// A sphere's mesh by ATTRIBUTE_SPHERE and the materials. With `bEachBlends` the alpha of a sphere's
    /// ambient colour says whether it covers (1) or adds (0), for a blend function of one and one minus the
    /// source's alpha. False: not here.
    bool BeginSpheres(unsigned type, int lightNumber, bool bEachBlends);
    /// Cylinders by ATTRIBUTE_FIRST and ATTRIBUTE_ALONG, lit as by the fixed pipeline with the material of
    /// glMaterial; a vertex is cosine and sine of its place around, and 0 or 1 for the end. False: not here.
    bool BeginSticks();
    /// Ray-cast spheres; with `bMaterials` each has its own, else that of glMaterial. Those that reach the
    /// plane of the eye or that near or far plane cut need `bNear`. `bEachBlends` is for those with
    /// materials. False: not here.
    /// With `bSmall` all of them are so small beside the distance to near lights that these may be worked out
    /// once a sphere (IsLitBySphere).
    bool BeginExact(unsigned type, int lightNumber, bool bMaterials, bool bEachBlends, bool bNear,
                    bool bSmall, const Rays_st& rays);
    /// Does `bSmall` matter with the lights that are set?
    static bool IsLitBySphere(unsigned type, int lightNumber);
    /// How many lights that are set a shader of this type sums.
    static int GetLights(unsigned type, int lightNumber);
    /// Ray-cast spheres at all?
    bool HasExact();

    bool mbEnabled = false;
    ConfItemList_cls mCConfItemList;
    ConfItemFLOAT_cls mCCartoonBoldness; ///< of the outline, 0 to 1

    /// Cylinders that are the shadows of spheres, by ATTRIBUTE_SPHERE. A vertex is the corner in radii or,
    /// with `bNear`, cosine and sine of its place around and 0 or 1 for the end; then `pLight` is the light's
    /// place among the spheres, and shadows lead from `start` to `reach` radii behind the circle on which it
    /// touches them. Without OpenGL's depth clamp (`bClamped`) the shader does its work, as volumes are not
    /// to be cut by the far plane. False: not here.
    bool BeginShadows(bool bNear, const float* pLight, float start, float reach, bool bClamped);

    /// What leads from a pixel to the spheres whose shadows may lie there.
    struct Lookup_st {
        bool bNear = false; ///< of a light that has a place
        float turn[9] = {}; ///< eye coordinates to those of the blocks, column by column
        float eye[3] = {0, 0, 0}, light[3] = {0, 0, 0}; ///< in the latter
        float perBlock[3] = {1, 1, 1};                  ///< one over the edges of a block
        float start = 0.0f, reach = 0.0f;               ///< where shadows begin and end, radii
    };
    /// Pixels of vertices on the screen (-1 to 1) that show something in a shadow; all others are left out.
    /// Depths are in texture unit 0, starts of blocks in 1, spheres in 2. False: not here.
    bool BeginShadowLookup(const Lookup_st& lookup, const Rays_st& rays);

private:
    struct Source_st {
        std::string mVertex;
        std::string mFragment;
    };
    using Program = std::unique_ptr<ShaderProgram_cls>;

    void MakeShader(size_t index, const char* vertexFile, const char* fragmentFile);
    void ShowLog(const wxString& file, const std::string& log) const;
    using Forms = std::map<std::string, Program>; ///< by their defines
    void SetSceneUniforms(const ShaderProgram_cls& program, unsigned type, int lightNumber,
                          const char* suffix) const;
    bool IsSingleShadowLight(int lightNumber) const;
    const ShaderProgram_cls* GetForm(Forms& forms, const Source_st& source, const std::string& defines,
                                     const std::vector<std::pair<unsigned, const char*>>& attributes);
    const Source_st& GetExactSource(bool bNear);

    std::array<Program, kProgramNumber> mPrograms;
    std::array<Source_st, kProgramNumber> mSources;
    std::array<Forms, kProgramNumber> mSpheres;
    std::array<Forms, 2> mExact; ///< plain and near
    Forms mShadows;
    Forms mLookups;
    bool mbExactRead = false;
    std::array<Source_st, 2> mExactSources;
    Source_st mShadowSource;
    Source_st mLookupSource;
};

/// The text of a shader's file; empty, with the reason on stderr, when it can't be read.
std::string readShaderSource(const wxString& path);
