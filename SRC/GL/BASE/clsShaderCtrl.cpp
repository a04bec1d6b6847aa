#include "GL/BASE/clsShaderCtrl.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <epoxy/gl.h>

#include <wx/intl.h>

#include "COMMON/MsgBox.h"
#include "COMMON/RuntimeFiles.h"
#include "GL/BASE/clsShaderProgram.h"

namespace {

const char* const kNames[ShaderCtrl_cls::kProgramNumber] = {"Gouraud", "Phong", "Cartoon"};

const ShaderProgram_cls::Attributes kMeshAttributes = {{ShaderCtrl_cls::ATTRIBUTE_SPHERE, "sphere"},
                                                       {ShaderCtrl_cls::ATTRIBUTE_AMBIENT, "ambient"},
                                                       {ShaderCtrl_cls::ATTRIBUTE_DIFFUSE, "diffuse"},
                                                       {ShaderCtrl_cls::ATTRIBUTE_SPECULAR, "specular"}};
const ShaderProgram_cls::Attributes kStickAttributes = {{ShaderCtrl_cls::ATTRIBUTE_FIRST, "first"},
                                                        {ShaderCtrl_cls::ATTRIBUTE_ALONG, "along"}};
const ShaderProgram_cls::Attributes kShadowAttributes = {{ShaderCtrl_cls::ATTRIBUTE_SPHERE, "sphere"}};
const ShaderProgram_cls::Attributes kExactAttributes = {{ShaderCtrl_cls::ATTRIBUTE_BALL, "sphere"},
                                                        {ShaderCtrl_cls::ATTRIBUTE_AMBIENT, "ambient"},
                                                        {ShaderCtrl_cls::ATTRIBUTE_DIFFUSE, "diffuse"},
                                                        {ShaderCtrl_cls::ATTRIBUTE_SPECULAR, "specular"}};

int GetFogMode() {
    if (!glIsEnabled(GL_FOG)) return 0;
    GLint mode = 0;
    glGetIntegerv(GL_FOG_MODE, &mode);
    return mode == GL_EXP ? 1 : mode == GL_EXP2 ? 2 : 3;
}

/// One past the last light that is on: the fixed pipeline needs no number.
int CountLights() {
    GLint most = 8;
    glGetIntegerv(GL_MAX_LIGHTS, &most);
    for (int i = most; i > 0; --i)
        if (glIsEnabled(GL_LIGHT0 + static_cast<GLenum>(i - 1))) return i;
    return 0;
}

bool AreFacesTwoSided() {
    GLboolean bTwo = GL_FALSE; // no capability that glIsEnabled knows
    glGetBooleanv(GL_LIGHT_MODEL_TWO_SIDE, &bTwo);
    return bTwo != GL_FALSE;
}

/// All of the first `number` lights are far away, and none is a spot.
bool AreLightsParallel(int number) {
    for (int i = 0; i < number; ++i) {
        const GLenum light = GL_LIGHT0 + static_cast<GLenum>(i);
        float place[4];
        float cutoff = 180.0f;
        glGetLightfv(light, GL_POSITION, place);
        glGetLightfv(light, GL_SPOT_CUTOFF, &cutoff);
        if (place[3] != 0.0f || cutoff <= 90.0f) return false;
    }
    return true;
}

/// What a shader may know beforehand of the scene.
std::string GetSceneDefines(int lightNumber) {
    std::string defines = "#define LIGHT_NUMBER " + std::to_string(lightNumber) + "\n#define FOG " +
                          std::to_string(GetFogMode()) + "\n";
    if (AreLightsParallel(lightNumber)) defines += "#define PARALLEL\n";
    return defines;
}

/// All of the first `number` lights are grey, and no spot is weaker beside its axis.
bool AreLightsGrey(int number) {
    for (int i = 0; i < number; ++i) {
        const GLenum light = GL_LIGHT0 + static_cast<GLenum>(i);
        float color[3][4];
        float exponent = 0.0f;
        glGetLightfv(light, GL_AMBIENT, color[0]);
        glGetLightfv(light, GL_DIFFUSE, color[1]);
        glGetLightfv(light, GL_SPECULAR, color[2]);
        glGetLightfv(light, GL_SPOT_EXPONENT, &exponent);
        bool bGrey = exponent == 0.0f && color[1][0] == color[2][0];
        for (const float* c : color)
            bGrey = bGrey && c[0] == c[1] && c[0] == c[2];
        if (!bGrey) return false;
    }
    return true;
}

/// So many lights of so many floats can be handed from a sphere to its pixels, besides `other` floats.
bool HasRoomForLights(int number, int light, int other) {
    constexpr int kMost = 7; // of the scene
    static const int sRoom = [] {
        GLint room = 0;
        glGetIntegerv(GL_MAX_VARYING_FLOATS, &room);
        return room;
    }();
    return number <= kMost && other + light * number <= sRoom;
}

std::string GetExactDefines(unsigned type, int lightNumber, bool bMaterials, bool bEachBlends,
                            bool bPerspective, bool bSmall) {
    std::string defines = GetSceneDefines(lightNumber);
    const bool bCartoon = type == ShaderCtrl_cls::TYPE_CARTOON;
    const bool bFar = !bCartoon && AreLightsParallel(lightNumber) &&
                      HasRoomForLights(lightNumber, 12, bEachBlends ? 20 : 16);
    const bool bNear = bSmall && !bFar && ShaderCtrl_cls::IsLitBySphere(type, lightNumber);
    if (bCartoon) defines += "#define CARTOON\n";
    if (bFar) defines += "#define FAR_LIGHTS\n";
    if (bNear) defines += "#define NEAR_LIGHTS\n";
    if ((!bFar && !bNear) || GetFogMode() != 0) defines += "#define BALL\n";
    if (bMaterials) defines += "#define MATERIALS\n";
    if (bEachBlends) defines += "#define EACH_BLENDS\n";
    if (bPerspective) defines += "#define PERSPECTIVE\n";
    return defines;
}

/// Directions to far lights, and those half way to a viewer in front, of length 1.
void SetLightDirections(const ShaderProgram_cls& program, int number) {
    const int place = program.GetUniform("lightTo");
    if (place < 0) return;
    std::array<float, 24> to = {};
    std::array<float, 24> between = {};
    const auto normalize = [](float* v) {
        const float length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
        for (int k = 0; k < 3 && length > 0.0f; ++k)
            v[k] /= length;
    };
    for (int i = 0; i < std::min(number, 8); ++i) {
        float position[4];
        glGetLightfv(GL_LIGHT0 + static_cast<GLenum>(i), GL_POSITION, position);
        float* pTo = &to[static_cast<size_t>(i) * 3];
        float* pBetween = &between[static_cast<size_t>(i) * 3];
        std::copy_n(position, 3, pTo);
        normalize(pTo);
        std::copy_n(pTo, 3, pBetween);
        pBetween[2] += 1.0f;
        normalize(pBetween);
    }
    glUniform3fv(place, 8, to.data());
    glUniform3fv(program.GetUniform("lightBetween"), 8, between.data());
}

void SetInt(const ShaderProgram_cls& program, const char* name, int value) {
    const int place = program.GetUniform(name);
    if (place >= 0) glUniform1i(place, value);
}

void SetFloat(const ShaderProgram_cls& program, const char* name, float value) {
    const int place = program.GetUniform(name);
    if (place >= 0) glUniform1f(place, value);
}

/// The program's own shaders are a part of it: it doesn't run without them.
[[noreturn]] void EndForShader(const wxString& what) {
    MsgBoxExit(what + "\n" + _("The program ends. Put its folder GL back in its place, or install it again."),
               "!!", 1);
}

} // namespace

std::string readShaderSource(const wxString& path) {
    const std::string name(path.utf8_str());
    std::FILE* pFile = std::fopen(name.c_str(), "rb");
    if (!pFile) {
        std::perror(name.c_str());
        return {};
    }
    std::string text;
    char piece[4096];
    size_t got = 0;
    while ((got = std::fread(piece, 1, sizeof piece, pFile)) > 0)
        text.append(piece, got);
    const bool bBad = std::ferror(pFile) != 0;
    std::fclose(pFile);
    if (bBad || text.empty()) {
        std::fprintf(stderr, "Could not read file: %s.\n", name.c_str());
        return {};
    }
    return text;
}

ShaderCtrl_cls::ShaderCtrl_cls() { mCConfItemList.Add(&mCCartoonBoldness, "CartoonBoldness=", "0.3"); }

ShaderCtrl_cls::~ShaderCtrl_cls() = default;

void ShaderCtrl_cls::InitializeShader(wxWindow* /*pParent*/, bool bEnable) {
    mbEnabled = bEnable && HasShaders();
    if (!mbEnabled) return;
    MakeShader(0, "GL/Gouraud.vert", "GL/Gouraud.frag");
    MakeShader(1, "GL/Phong.vert", "GL/Phong.frag");
    MakeShader(2, "GL/Cartoon.vert", "GL/Cartoon.frag");
    glUseProgram(0);
}

void ShaderCtrl_cls::MakeShader(size_t index, const char* vertexFile, const char* fragmentFile) {
    Source_st& source = mSources[index];
    mPrograms[index] = std::make_unique<ShaderProgram_cls>();
    for (const bool bVertex : {true, false}) {
        const wxString path = FindRuntimeFile(bVertex ? vertexFile : fragmentFile);
        std::string& text = bVertex ? source.mVertex : source.mFragment;
        text = readShaderSource(path);
        if (text.empty()) EndForShader(wxString::Format(_("The shader file %s can't be read."), path));
    }
    ShaderProgram_cls& program = *mPrograms[index];
    if (program.Make(source.mVertex, source.mFragment)) return;
    // Only the first pair's compile status counts; for the others the link tells.
    const ShaderProgram_cls& first = *mPrograms[0];
    if (!first.mbVertexCompiled) ShowLog(vertexFile, program.GetLog());
    if (!first.mbFragmentCompiled) ShowLog(fragmentFile, program.GetLog());
    wxString text = wxString::Format(_("The shader of %s and %s can't be linked."), vertexFile, fragmentFile);
    if (first.mbVertexCompiled && first.mbFragmentCompiled)
        text += "\n" + wxString::FromUTF8(program.GetLog());
    EndForShader(text);
}

// The same words for both kinds of shader.
void ShaderCtrl_cls::ShowLog(const wxString& file, const std::string& log) const {
    MsgBox("Compile error in fragment shader.\n" + wxString::FromUTF8(log) + "\n" + file, "!!");
}

// One light alone, without ambient light: the pass that adds a light with shadows.
bool ShaderCtrl_cls::IsSingleShadowLight(int lightNumber) const {
    float ambient[4];
    glGetLightfv(GL_LIGHT0, GL_AMBIENT, ambient);
    return lightNumber == 1 && ambient[0] == 0.0f;
}

void ShaderCtrl_cls::SetSceneUniforms(const ShaderProgram_cls& program, unsigned type, int lightNumber,
                                      const char* suffix) const {
    SetInt(program, (std::string("lightNumber") + suffix).c_str(), lightNumber);
    SetInt(program, "fogMode", GetFogMode());
    if (type != TYPE_CARTOON) return;
    SetInt(program, (std::string("shadowVolumeMode") + suffix).c_str(),
           IsSingleShadowLight(lightNumber) ? 0 : 1);
    SetFloat(program, (std::string("boldness") + suffix).c_str(), mCCartoonBoldness.mValue);
}

void ShaderCtrl_cls::BeginShader(unsigned type, int lightNumber) {
    if (!mbEnabled) return;
    glUseProgram(0);
    if (type < TYPE_GOURAUD || type > TYPE_CARTOON) return;
    const ShaderProgram_cls& program = *mPrograms[type - 1];
    if (AreFacesTwoSided()) glEnable(GL_VERTEX_PROGRAM_TWO_SIDE);
    glUseProgram(program.mProgram);
    SetSceneUniforms(program, type, lightNumber, kNames[type - 1]);
}

void ShaderCtrl_cls::EndShader(int /*type*/) {
    if (!mbEnabled) return;
    glDisable(GL_VERTEX_PROGRAM_TWO_SIDE);
    glUseProgram(0);
}

const ShaderProgram_cls* ShaderCtrl_cls::GetForm(Forms& forms, const Source_st& source,
                                                 const std::string& defines,
                                                 const ShaderProgram_cls::Attributes& attributes) {
    if (source.mVertex.empty() || source.mFragment.empty()) return nullptr;
    Program& program = forms[defines];
    if (!program) {
        program = std::make_unique<ShaderProgram_cls>();
        if (!program->Make(source.mVertex, source.mFragment, defines, attributes))
            std::printf("A shader was refused:\n%s\n", program->GetLog().c_str());
    }
    const bool bGood =
        attributes.empty() ? program->IsMade() : program->HasAttribute(attributes.front().second);
    return bGood ? program.get() : nullptr;
}

bool ShaderCtrl_cls::BeginSpheres(unsigned type, int lightNumber, bool bEachBlends) {
    if (!mbEnabled) return false;
    // The fixed pipeline lights vertices, as Gouraud's does.
    const bool bFixed = type < TYPE_GOURAUD || type > TYPE_CARTOON;
    const size_t index = bFixed ? 0 : type - 1;
    const int lights = bFixed ? CountLights() : lightNumber;
    std::string defines = "#define SPHERES\n" + GetSceneDefines(lights);
    if (bEachBlends) defines += "#define EACH_BLENDS\n";
    const ShaderProgram_cls* pProgram = GetForm(mSpheres[index], mSources[index], defines, kMeshAttributes);
    if (!pProgram) return false;
    glUseProgram(pProgram->mProgram);
    SetSceneUniforms(*pProgram, type, lights, kNames[index]);
    return true;
}

bool ShaderCtrl_cls::BeginSticks() {
    if (!mbEnabled) return false;
    const int lights = CountLights();
    const ShaderProgram_cls* pProgram =
        GetForm(mSpheres[0], mSources[0], "#define STICKS\n" + GetSceneDefines(lights), kStickAttributes);
    if (!pProgram) return false;
    if (AreFacesTwoSided()) glEnable(GL_VERTEX_PROGRAM_TWO_SIDE);
    glUseProgram(pProgram->mProgram);
    SetSceneUniforms(*pProgram, TYPE_ORIGINAL, lights, kNames[0]);
    return true;
}

const ShaderCtrl_cls::Source_st& ShaderCtrl_cls::GetExactSource(bool bNear) {
    if (!mbExactRead) {
        mbExactRead = true;
        mExactSources = {{{readShaderSource(FindRuntimeFile("GL/Exact.vert")),
                           readShaderSource(FindRuntimeFile("GL/Exact.frag"))},
                          {readShaderSource(FindRuntimeFile("GL/ExactNear.vert")),
                           readShaderSource(FindRuntimeFile("GL/ExactNear.frag"))}}};
    }
    return mExactSources[bNear ? 1 : 0];
}

bool ShaderCtrl_cls::HasExact() {
    if (!mbEnabled) return false;
    const std::string defines = GetExactDefines(TYPE_ORIGINAL, CountLights(), false, false, true, false);
    return GetForm(mExact[0], GetExactSource(false), defines, kExactAttributes) &&
           GetForm(mExact[1], GetExactSource(true), defines, kExactAttributes);
}

int ShaderCtrl_cls::GetLights(unsigned type, int lightNumber) {
    const bool bFixed = type < TYPE_GOURAUD || type > TYPE_CARTOON;
    return bFixed ? CountLights() : lightNumber;
}

bool ShaderCtrl_cls::IsLitBySphere(unsigned type, int lightNumber) {
    const int lights = GetLights(type, lightNumber);
    return type != TYPE_CARTOON && lights > 0 && !AreLightsParallel(lights) && AreLightsGrey(lights) &&
           HasRoomForLights(lights, 8, 32);
}

bool ShaderCtrl_cls::BeginExact(unsigned type, int lightNumber, bool bMaterials, bool bEachBlends, bool bNear,
                                bool bSmall, const Rays_st& rays) {
    if (!mbEnabled) return false;
    const int lights = GetLights(type, lightNumber);
    const std::string defines =
        GetExactDefines(type, lights, bMaterials, bEachBlends, rays.bPerspective, bSmall && !bNear);
    const ShaderProgram_cls* pProgram =
        GetForm(mExact[bNear ? 1 : 0], GetExactSource(bNear), defines, kExactAttributes);
    if (!pProgram) return false;
    glUseProgram(pProgram->mProgram);
    SetSceneUniforms(*pProgram, type, lights, "");
    glUniform4fv(pProgram->GetUniform("viewport"), 1, rays.viewport);
    glUniform2fv(pProgram->GetUniform("rayScale"), 1, rays.scale);
    glUniform2fv(pProgram->GetUniform("rayOffset"), 1, rays.offset);
    glUniform2fv(pProgram->GetUniform("depthRange"), 1, rays.depthRange);
    glUniform2fv(pProgram->GetUniform("depthMap"), 1, rays.depthMap);
    SetFloat(*pProgram, "scale", rays.modelScale);
    SetLightDirections(*pProgram, lights);
    return true;
}

bool ShaderCtrl_cls::BeginShadows(bool bNear, const float* pLight, float start, float reach, bool bClamped) {
    if (!mbEnabled) return false;
    if (mShadows.empty())
        mShadowSource = {readShaderSource(FindRuntimeFile("GL/Shadow.vert")),
                         readShaderSource(FindRuntimeFile("GL/Shadow.frag"))};
    const std::string defines =
        std::string(bNear ? "#define NEAR_LIGHT\n" : "") + (bClamped ? "" : "#define NO_CLAMP\n");
    const ShaderProgram_cls* pProgram = GetForm(mShadows, mShadowSource, defines, kShadowAttributes);
    if (!pProgram) return false;
    glUseProgram(pProgram->mProgram);
    if (bNear) glUniform3fv(pProgram->GetUniform("light"), 1, pLight);
    if (bNear) SetFloat(*pProgram, "start", start);
    if (bNear) SetFloat(*pProgram, "reach", reach);
    return true;
}

bool ShaderCtrl_cls::BeginShadowLookup(const Lookup_st& lookup, const Rays_st& rays) {
    static const bool sbHere = epoxy_gl_version() >= 31 && epoxy_has_gl_extension("GL_EXT_gpu_shader4");
    if (!mbEnabled || !sbHere) return false;
    if (mLookups.empty())
        mLookupSource = {readShaderSource(FindRuntimeFile("GL/ShadowLookup.vert")),
                         readShaderSource(FindRuntimeFile("GL/ShadowLookup.frag"))};
    std::string defines = lookup.bNear ? "#define NEAR_LIGHT\n" : "";
    if (rays.bPerspective) defines += "#define PERSPECTIVE\n";
    const ShaderProgram_cls* pProgram = GetForm(mLookups, mLookupSource, defines, {});
    if (!pProgram) return false;
    glUseProgram(pProgram->mProgram);
    SetInt(*pProgram, "depths", 0);
    SetInt(*pProgram, "ranges", 1);
    SetInt(*pProgram, "spheres", 2);
    glUniform4fv(pProgram->GetUniform("viewport"), 1, rays.viewport);
    glUniform2fv(pProgram->GetUniform("rayScale"), 1, rays.scale);
    glUniform2fv(pProgram->GetUniform("rayOffset"), 1, rays.offset);
    glUniform2fv(pProgram->GetUniform("depthMap"), 1, rays.depthMap);
    glUniformMatrix3fv(pProgram->GetUniform("turn"), 1, GL_FALSE, lookup.turn);
    glUniform3fv(pProgram->GetUniform("eye"), 1, lookup.eye);
    glUniform3fv(pProgram->GetUniform("light"), 1, lookup.light);
    glUniform3fv(pProgram->GetUniform("perBlock"), 1, lookup.perBlock);
    SetFloat(*pProgram, "start", lookup.start);
    SetFloat(*pProgram, "reach", lookup.reach);
    return true;
}
