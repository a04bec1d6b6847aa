// Objects and sticks of the Object list as text of a scene for POV-Ray.
#include <algorithm>

#include "COLORCURVE/clsColorCurve.h"
#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "POVRAY/TEXT/clsPovText.h"

namespace {

using Text = PovSerialize_cls;

std::string OpeningOf(unsigned type) {
    switch (type) {
    case FilterObjectData_cls::BOX:
        return "box { <-0.5, -0.5, -0.5>, <0.5, 0.5, 0.5>";
    case FilterObjectData_cls::PLANE:
        return "polygon { 4, <-0.5, -0.5, 0>, <0.5, -0.5, 0>, <0.5, 0.5, 0>, <-0.5, 0.5, 0>";
    default:
        return "sphere { <0, 0, 0>, 0.5";
    }
}

PovText_cls::Surface_st SurfaceOf(const FilterObjectData_cls& data) {
    PovText_cls::Surface_st surface;
    for (size_t k = 0; k < 3; ++k)
        data.mvpCColorCurve[k]->GetColor4fNormal(surface.mColors[k], 0.0f);
    data.mCTexture.GetAlphaInfo(surface.mColors);
    surface.mFinish = data.mCTexture.GetStrPovFinishOptions();
    surface.mNormal = data.mCTexture.GetStrPovNormal();
    surface.mbFiltered = data.mCTexture.mCTransmitType.mValue == SceneObjTexture_cls::TRANSMIT_FILTERED;
    return surface;
}

} // namespace

bool FilterObject_cls::HasPovMesh() const {
    const FilterObjectData_cls& data = *GetPCData();
    return data.mCValid.mValue && data.mCObjectType.mValue == FilterObjectData_cls::IMPORT;
}

void FilterObject_cls::AppendPovInclude(std::string* pText, const PovText_cls& pov,
                                        std::set<std::string>* pUsed) {
    if (HasPovMesh()) mMesh.AppendPovInclude(pText, pov, pUsed);
}

size_t FilterObject_cls::GetPovTriangles() const { return HasPovMesh() ? mMesh.GetTriangleNumber() : 0; }

std::string FilterObject_cls::GetStrPovMatrix() const {
    double rows[3][3];
    for (int k = 0; k < 3; ++k)
        for (int i = 0; i < 3; ++i)
            rows[k][i] = double(GetPCData()->mCArrayVector[k].mValue[i]);
    return Text::PovOutRows("\tmatrix<", rows, 6) + "0,0,0>";
}

std::string FilterObject_cls::GetStrPovRealObject(double time, const std::string& extra, bool bPerCopy,
                                                  const std::string& indent, const PovText_cls& pov) const {
    const FilterObjectData_cls& data = *GetPCData();
    const unsigned type = data.mCObjectType.mValue;
    if (!data.mCValid.mValue || type > FilterObjectData_cls::IMPORT) return std::string();
    if ((type == FilterObjectData_cls::IMPORT) != bPerCopy) return std::string();
    std::string text = data.mCTexture.GetStrPovFunction();
    text += bPerCopy ? "object {\n\t" + mMesh.mStrPovName + "\n" + GetStrPovMatrix() + "\n"
                     : indent + OpeningOf(type) + "\n";
    text += pov.GetStrPovTextureColor(indent + "\t", SurfaceOf(data));
    const std::string interior = data.mCTexture.GetStrPovInteriorOptions();
    if (!interior.empty()) text += indent + "\tinterior {" + interior + "}\n";
    if (pov.GetOptions().mbFastColoring) text += data.mCTexture.GetStrPovNormal();
    text += pov.GetStrPovPhotonSetting(1.0, double(data.mCTexture.mCReflectMin.mValue),
                                       double(data.mCTexture.mCReflectMax.mValue), false);
    text += data.GetStrPovModelview(time, indent, pov.GetDecimals(4));
    if (!extra.empty()) text += indent + "\t" + extra + "\n";
    return text + indent + "}\n";
}

std::string FilterStick_cls::GetStrPovCylinderMacro(const PovText_cls& pov) const {
    const FilterStickData_cls& data = *GetPCData();
    const bool bWeights = !mSticks.IsConstantFactor();
    float colors[3][4];
    data.mCTexture.GetAlphaInfo(colors);
    const std::string alpha = Text::PovOutF(double(colors[0][3]));
    std::string text = data.mCTexture.GetStrPovFunction();
    text += bWeights ? "#macro CY(VPos0,VPos1,Factor)\n" : "#macro CY(VPos0,VPos1)\n";
    text += "cylinder{ VPos0,VPos1," + Text::PovOutF(double(data.mCStickRadius.mValue), pov.GetDecimals(6)) +
            " open\n\ttexture {\n";
    text += bWeights ? "\t\tpigment {rgbt <1,1,1,1-" + alpha + "*Factor>}\n"
                     : "\t\tpigment {rgbt <0.8,0.8,0.8,1-" + alpha + ">}\n";
    text += std::string("\t\tfinish { ambient <0.2,0.16,0.04> diffuse 1 specular ") +
            (bWeights ? "Factor" : "1") + " metallic roughness 0.024336" +
            data.mCTexture.GetStrPovFinishOptions() + "}\n";
    text += data.mCTexture.GetStrPovNormal();
    return text + "\t}\n\tinterior {" + data.mCTexture.GetStrPovInteriorOptions() + "}\n}\n#end\n";
}

void FilterStick_cls::GetStrPovSticksRef(std::string* pText, const float (*pPos)[3], int step,
                                         const PovText_cls& pov, bool bAgain) const {
    if (GetPCData()->mCValid.mValue) mSticks.AppendPovSticks(pText, pPos, step, pov.GetDecimals(3), bAgain);
}

void FilterCtrl_cls::AppendPovInclude(std::string* pText, const PovText_cls& pov) {
    std::set<std::string> used;
    for (const auto& filter : mlpCFilter)
        if (filter->GetType() == FILTER_OBJECT)
            static_cast<FilterObject_cls&>(*filter).AppendPovInclude(pText, pov, &used);
}

size_t FilterCtrl_cls::GetPovTriangles() const {
    size_t triangles = 0;
    for (const auto& filter : mlpCFilter)
        if (filter->GetType() == FILTER_OBJECT)
            triangles += static_cast<const FilterObject_cls&>(*filter).GetPovTriangles();
    return triangles;
}

std::string FilterCtrl_cls::GetStrPovRealObject(double time, bool bPerCopy, const std::string& extra,
                                                const PovText_cls& pov) const {
    const std::string indent(size_t(pov.mIndentDepth), '\t');
    std::string text;
    for (const auto& filter : mlpCFilter)
        if (filter->GetType() == FILTER_OBJECT)
            text += static_cast<const FilterObject_cls&>(*filter).GetStrPovRealObject(time, extra, bPerCopy,
                                                                                      indent, pov);
    return text;
}

std::string FilterCtrl_cls::GetStrPovRealGrids(double time, const PovText_cls& pov) const {
    std::string text;
    for (const auto& filter : mlpCFilter)
        if (filter->GetType() == FILTER_GRID)
            text += static_cast<const FilterGrid_cls&>(*filter).GetStrPovRealGrid(time, pov);
    return text;
}
