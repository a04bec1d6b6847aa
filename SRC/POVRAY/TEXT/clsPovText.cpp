#include "POVRAY/TEXT/clsPovText.h"

#include <algorithm>
#include <cmath>

#include <wx/filename.h>

#include "POVRAY/TEXT/PovNumber.h"

namespace {

using Text = PovSerialize_cls;
constexpr int kColorDecimals = 4;
// A point to look at that is nearer POV-Ray takes for the camera's own place, and refuses it.
constexpr double kNearest = 1.5e-5;
constexpr double kFarthest = 1e30;
enum Layer { AMBIENT = 0, DIFFUSE, SPECULAR, LAYERS };

/// "rgb <...>", with transmission where there is any.
std::string PigmentOf(const PovText_cls::Surface_st& surface, int layer, bool bFilterAlpha) {
    const float* const color = surface.mColors[layer];
    const char* const word = surface.mbFiltered ? "rgbf " : "rgbt ";
    if (!bFilterAlpha)
        return color[3] == 1.0f ? Text::PovOut3f("rgb ", color, kColorDecimals)
                                : Text::PovOut4fRGBTfromRGBA(word, color, kColorDecimals);
    std::string text = word;
    for (int c = 0; c < 3; ++c)
        text += (c == 0 ? "<" : ",") + Text::PovOutF(static_cast<double>(color[c]), kColorDecimals);
    return text + ",1-" + Text::PovOutF(static_cast<double>(color[3]), kColorDecimals) + "*FilterAlpha>";
}

double LengthOf(const float* color) {
    return std::hypot(static_cast<double>(color[0]), static_cast<double>(color[1]),
                      static_cast<double>(color[2]));
}

/// Between what is written of two coordinates.
double GetShownDistance(double a, double b, int decimals) {
    const double steps = std::pow(10.0, decimals);
    return std::fabs(std::round(a * steps) - std::round(b * steps)) / steps;
}

/// The finish of one of the averaged layers, which are LAYERS times as bright for that.
std::string GetStrPovTextureFinish(int layer, const PovText_cls::Surface_st& surface) {
    static const char* const kFinishes[LAYERS] = {"ambient 3 diffuse 0 specular 0",
                                                  "ambient 0 diffuse 3 specular 0",
                                                  "ambient 0 diffuse 0 specular 3 metallic roughness "};
    std::string text = surface.mNormal.empty() ? "} " : "}\n" + surface.mNormal;
    text += std::string("finish { ") + kFinishes[layer];
    if (layer == SPECULAR) text += Text::PovOutF(static_cast<double>(PovText_cls::kRoughness));
    return text + surface.mFinish + "}]";
}

} // namespace

void PovText_cls::SetDecimals(int decimals) { mMoreDecimals = std::clamp(decimals, 3, kMostDecimals) - 3; }

std::string PovText_cls::GetStrPovTextureColor(const std::string& indent, const Surface_st& surface,
                                               bool bFilterAlpha) const {
    return mOptions.mbFastColoring ? GetStrPovTextureFastColor(indent, surface, bFilterAlpha)
                                   : GetStrPovTextureGLColor(indent, surface, bFilterAlpha);
}

std::string PovText_cls::GetStrPovTextureFastColor(const std::string& indent, const Surface_st& surface,
                                                   bool bFilterAlpha) {
    const double diffuse = LengthOf(surface.mColors[DIFFUSE]);
    const double specular = diffuse > 0.0 ? LengthOf(surface.mColors[SPECULAR]) / diffuse : 0.0;
    std::string text = indent + "texture {\n";
    text += indent + "\tpigment {" + PigmentOf(surface, DIFFUSE, bFilterAlpha) + "}\n";
    text += PovOut3f(indent + "\tfinish { ambient ", surface.mColors[AMBIENT], kColorDecimals);
    text += " diffuse 1 specular " + PovOutF(specular * static_cast<double>(surface.mSpecularFactor));
    if (bFilterAlpha) text += "*FilterAlpha ";
    text += " metallic roughness " + PovOutF(static_cast<double>(kRoughness)) + surface.mFinish + "}\n";
    return text + indent + "}\n";
}

std::string PovText_cls::GetStrPovTextureGLColor(const std::string& indent, const Surface_st& surface,
                                                 bool bFilterAlpha) {
    std::string text = indent + "texture {\n" + indent + "\taverage\n" + indent + "\ttexture_map {\n";
    for (int layer = 0; layer < LAYERS; ++layer)
        text += indent + "\t\t\t[pigment {" + PigmentOf(surface, layer, bFilterAlpha) +
                GetStrPovTextureFinish(layer, surface) + "\n";
    return text + indent + "\t\t}\n" + indent + "\t}\n";
}

// A second declaration takes the place of the first, which is right for square pictures alone.
std::string PovText_cls::GetStrPovCameraAngle(const PovCamera_st& camera) const {
    std::string text = "#declare CameraAngle=\n";
    if (camera.mbFishEye)
        text += PovOutF(camera.mAngle);
    else
        text +=
            "180 * atan2( tan (pi*" + PovOutF(camera.mAngle) + "/180) * image_width / image_height, 1) / pi";
    text += ";\n#if (CameraAngle < 0)\n#declare CameraAngle = CameraAngle+180;\n#end\n\n";
    if (!mOptions.mbLikeView || (camera.mbFishEye && !camera.mbOrtho)) return text;
    // A perspective view's angle is that of the height. The longer side of an orthographic one is as long as
    // the anchor is far, and POV-Ray's as long as what a perspective one shows at look_at, twice as far away.
    if (camera.mbOrtho)
        return text + "#declare CameraAngle = 2*degrees(atan2(min(1,image_width/image_height),4));\n";
    return text + "#declare CameraAngle = 2*degrees(atan2(" +
           PovOutF(std::tan(camera.mAngle * M_PI / 360.0), 9) + "*image_width/image_height,1));\n";
}

std::string PovText_cls::GetStrPovCamera(const PovCamera_st& camera) const {
    const int decimals = GetDecimals(5);
    double way = 2.0 * camera.mDistance;
    double lookAt[3];
    bool bNear;
    do {
        bNear = true;
        for (int i = 0; i < 3; ++i) {
            lookAt[i] = camera.mPos[i] + way * camera.mFront[i];
            bNear = bNear && !(GetShownDistance(lookAt[i], camera.mPos[i], decimals) > kNearest);
        }
        way = std::max(10.0 * way, 1e-4);
    } while (bNear && way < kFarthest);
    const char* const kind = camera.mbOrtho ? "orthographic" : camera.mbFishEye ? "fisheye" : "perspective";
    std::string text = std::string("camera {\n\t") + kind + "\n";
    text += PovOut3d("\tlocation", camera.mPos, decimals) + "\n";
    text += PovOut3d("\tlook_at", lookAt, decimals) + "\n";
    text += PovOut3d("\tsky", camera.mUp, 8) + "\n";
    return text + "\tangle CameraAngle\n\n\tright -x*image_width/image_height\n}\n";
}

std::string PovText_cls::GetStrPovPhotonSetting(double opacity, double reflectMin, double reflectMax,
                                                bool bNoTarget) const {
    if (mOptions.mPhotonsType == 0) return std::string();
    const auto word = [](bool bOn) { return bOn ? "on " : "off "; };
    const bool bReflection = !(reflectMin < 0.1 && reflectMax < 0.2);
    const bool bRefraction = !(opacity > 0.8);
    return std::string("\tphotons{ target ") + word(!bNoTarget && (bReflection || bRefraction)) +
           "reflection " + word(bReflection) + "refraction " + word(bRefraction) + "collect " +
           word(!(opacity < 0.1)) + "}\n";
}

std::string PovText_cls::GetStrPovParticleObject(const std::string& name) const {
    const std::string indent(static_cast<size_t>(mIndentDepth), '\t');
    std::string text = indent + "object {\n" + indent + "\t" + name + "\n";
    if (!mStrObjectTransform.empty()) text += indent + "\t" + mStrObjectTransform + "\n";
    return text + indent + "}\n";
}

std::string PovText_cls::GetStrRelativePath(const wxString& path) const {
    wxFileName name(path);
    name.MakeAbsolute();
    if (!mOptions.mbFileAbsolute) name.MakeRelativeTo(mOptions.mStrWorkDir);
    return name.GetFullPath(wxPATH_UNIX).utf8_string();
}
