// A light source in scenes for POV-Ray.
#include "SCENE/clsLightSRC.h"

namespace {
constexpr float kFar = 1000.0f; // where parallel light comes from, in lengths of its direction
constexpr double kSoftRim = 1.2;
constexpr unsigned kFineQuality = 6;
} // namespace

std::string LightSRC_cls::GetStrPovAttenuation() const {
    const int fade = mCFade.mValue;
    if (fade != FADE_POWER1 && fade != FADE_POWER2) return std::string();
    return "\tfade_distance " + PovOutG(static_cast<double>(mCFadeDistance.mValue)) + "\n\tfade_power " +
           (fade == FADE_POWER1 ? "1" : "2") + "\n";
}

std::string LightSRC_cls::GetStrPovAreaLight(float factor) const {
    const float size = mCLightAreaSize.mValue * (mCType.mValue == TYPE_PARALLEL ? factor : 1.0f);
    const unsigned quality = mCLightAreaQuality.mValue;
    const std::string side = GetShortString(static_cast<double>(size));
    const std::string lamps = GetShortString(static_cast<double>(quality));
    return "\tarea_light \tx * " + side + ", y * " + side + "," + lamps + "," + lamps +
           (quality > 1 ? "\n\tcircular orient\n" : "\n") +
           (quality < kFineQuality ? "\tadaptive 1\n" : "\tadaptive 2\n");
}

std::string LightSRC_cls::GetStrPovLight(double time, int moreDecimals) {
    if (!mCVisible.mValue) return std::string();
    const bool bParallel = mCType.mValue == TYPE_PARALLEL;
    const int decimals = 8 + moreDecimals;
    float place[4], angles[2], color[4];
    GetLightInfo(time, place, angles, bParallel, nullptr);
    GetLightColor(time, color);
    if (bParallel)
        for (int i = 0; i < 3; ++i)
            place[i] *= kFar;
    std::string text = PovOut3f("light_source {\n\t", place, decimals) + "\n";
    text += PovOut3f("\tcolor", color, 8) + "\n";
    if (!mCCastShadow.mValue) text += "\tshadowless\n";
    if (mCType.mValue == TYPE_SPOT) {
        const std::array<double, 3> from = GetDirectionInWorld(time);
        float aim[3];
        for (size_t i = 0; i < 3; ++i)
            aim[i] = place[i] - static_cast<float>(from[i]);
        text += PovOut3f("\tspotlight\n\tpoint_at", aim, decimals) + "\n";
        text += wxString::Format("\tradius %d\n\tfalloff ", mCSpotAngle.mValue).utf8_string() +
                PovOutG(mCSpotAngle.mValue * kSoftRim) + "\n";
    }
    if (bParallel) text += "\tparallel\n\tpoint_at <0, 0, 0>\n";
    text += GetStrPovAttenuation();
    if (mCLightArea.mValue) text += GetStrPovAreaLight(kFar);
    return text + "}\n";
}
