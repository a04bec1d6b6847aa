#include "GL/DRAW/clsPovParticles.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <string_view>
#include <unordered_set>

#include "COMMON/OnThreads.h"
#include "GL/DRAW/DrawListFilter.h"
#include "GL/DRAW/clsArrayAndIndex.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsSnapData.h"
#include "POVRAY/TEXT/PovNumber.h"

namespace {

using Text = PovSerialize_cls;
constexpr int kFewParticles = 20000; // that aren't worth a thread
constexpr size_t kMostLine = 8 * 3 * kMostFixed;
constexpr size_t kLineSlack = 2; // that other lines may be longer than the first
constexpr int kColorDecimals = 3;

char* PutText(char* p, const char* text) {
    const size_t length = std::strlen(text);
    std::memcpy(p, text, length);
    return p + length;
}

char* PutVector(char* p, const float* v, int decimals) {
    for (int i = 0; i < 3; ++i) {
        *p++ = i == 0 ? '<' : ',';
        p = PutFixed(p, v[i], decimals);
    }
    *p++ = '>';
    return p;
}

bool IsFinite(const float* v) { return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]); }

/// One line alone.
bool IsSingle(const std::vector<const std::string*>& lines) {
    const std::string& first = *lines.front();
    return lines.size() == 1 && first.find('\n') + 1 == first.size();
}

uint64_t HashText(std::string_view text) { return std::hash<std::string_view>()(text); }

/// Sums of it tell sets apart, in whatever order.
uint64_t MixPrint(uint64_t hash) {
    hash ^= hash >> 32;
    hash *= 0xD6E8FEB86659FD93ull;
    return hash ^ (hash >> 32);
}

} // namespace

PovParticles_cls::List_st PovParticles_cls::GetDrawnList(GLAttribute_cls* const* ppAttribute) {
    const DrawOption_cls& option = *ppAttribute[0]->mpCDrawOption;
    const DrawListFilter_cls* filter = GLDrawData_cls::mspCFilterCtrlBooleanLink;
    List_st list;
    list.mpEntries = GLDrawData_cls::mspIndexAndZ;
    list.mNumber = GLDrawData_cls::msDownsizedAtFBO0;
    list.mStep = option.GetDownSizing();
    list.mbFaded = filter && filter->IsBooleanChangeConstantColor();
    list.mbClasses = option.IsClassified();
    return list;
}

PovParticles_cls::PovParticles_cls(SnapData_cls& snap, GLAttribute_cls* const* ppAttribute,
                                   const List_st& list, const PovTextOptions_st& options)
    : mSnap(snap), mList(list), mOptions(options) {
    const int sets = list.mbClasses ? kParticleClasses : 1;
    for (int k = 0; k < sets; ++k)
        TakeSet(mSets[k], *ppAttribute[k]);
}

int PovParticles_cls::GetClass(int particle) const {
    return mList.mbClasses && mSnap.mpType ? GetParticleClass(mSnap.mpType[particle]) : 0;
}

bool PovParticles_cls::IsDrawn(const ArrayAndIndex_cls& entry, int* pClass, float* pRadius) const {
    *pClass = GetClass(entry.mIndex);
    const Set_st& set = mSets[*pClass];
    if (!set.mbDrawn || entry.mAlpha == 0.0f || !IsFinite(mSnap.mpPos[entry.mIndex])) return false;
    *pRadius = set.mbConstantRadius ? set.mRadius : std::fabs(set.mRadius * mSnap.mpRadius[entry.mIndex]);
    return std::isfinite(*pRadius) && *pRadius > 0.0f;
}

int PovParticles_cls::GetDecimals(float stickRadius) const {
    constexpr float kNone = std::numeric_limits<float>::max();
    if (mOptions.mDigits > 0) return std::clamp(mOptions.mDigits, 3, kMostDecimals);
    float smallest = stickRadius > 0.0f ? stickRadius : kNone;
    float low[3] = {kNone, kNone, kNone}, high[3] = {-kNone, -kNone, -kNone};
    for (int i = 0; i < mList.mNumber; ++i) {
        int index;
        float radius;
        if (!IsDrawn(mList.mpEntries[i], &index, &radius)) continue;
        smallest = std::min(smallest, radius);
    }
    for (int i = 0; i < mSnap.mNumber; i += std::max(mSnap.mStep, 1)) {
        const float* const place = mSnap.mpPos[i];
        if (!IsFinite(place)) continue;
        for (int k = 0; k < 3; ++k) {
            low[k] = std::min(low[k], place[k]);
            high[k] = std::max(high[k], place[k]);
        }
    }
    double extent = 0.0;
    for (int k = 0; k < 3; ++k)
        extent = std::max(extent, static_cast<double>(high[k]) - static_cast<double>(low[k]));
    return GetNeededDecimals(static_cast<double>(smallest), std::max(extent, 0.0));
}

double PovParticles_cls::GetPovBytes(double enough) const {
    constexpr double kBytesOfSphere = 520.0;
    constexpr double kBytesOfTexture = 1160.0;
    const double ofTexture = kBytesOfTexture * (mOptions.mbFastColoring ? 1.0 : 3.0);
    const double most = mList.mNumber * (kBytesOfSphere + ofTexture);
    if (most <= enough) return mOptions.mbGroupMaterials ? mList.mNumber * kBytesOfSphere : most;
    const auto [spheres, materials] = CountDrawn();
    const size_t textures = mOptions.mbGroupMaterials ? materials : spheres;
    return static_cast<double>(spheres) * kBytesOfSphere + static_cast<double>(textures) * ofTexture;
}

std::pair<size_t, size_t> PovParticles_cls::CountDrawn() const {
    std::unordered_set<PovMaterial_st, PovMaterialHash_st> materials;
    size_t spheres = 0;
    for (int i = 0; i < mList.mNumber; ++i) {
        int index;
        float radius;
        if (!IsDrawn(mList.mpEntries[i], &index, &radius)) continue;
        ++spheres;
        if (mOptions.mbGroupMaterials) materials.insert(GetMaterial(index, mList.mpEntries[i], radius));
    }
    return {spheres, materials.size()};
}

std::string PovParticles_cls::GetMacro(int index, const PovText_cls& pov) const {
    const Set_st& set = mSets[index];
    std::string text = "#macro SP" + std::to_string(index) + "(VPos";
    if (!set.mbConstantRadius) text += ",Radi";
    if (!set.mbConstantColor) text += ",FilterAlpha";
    text += ")\nsphere{ VPos,";
    text +=
        set.mbConstantRadius ? Text::PovOutF(static_cast<double>(set.mRadius), pov.GetDecimals(6)) : " Radi";
    return text + "\n" + pov.GetStrPovTextureColor("\t", set.mSurface, !set.mbConstantColor) + "}\n#end\n";
}

// Each particle tells its colours: ambient, diffuse, specular and opacity.
std::string PovParticles_cls::GetColorMacro(int index, const PovText_cls& pov) const {
    std::string text =
        "#macro SP" + std::to_string(index) + "(VPos,Radi,Amb,Dif,Spec,Opac)\nsphere{ VPos, Radi\n";
    const std::string roughness = Text::PovOutF(static_cast<double>(PovText_cls::kRoughness));
    if (pov.GetOptions().mbFastColoring)
        text +=
            "\ttexture {\n\t\tpigment {rgb Dif transmit 1-Opac}\n\t\tfinish { ambient Amb diffuse 1 specular "
            "vlength(Spec)/max(vlength(Dif),1e-6) metallic roughness " +
            roughness + "}\n\t}\n";
    else
        text +=
            "\ttexture {\n\t\taverage\n\t\ttexture_map {\n"
            "\t\t\t\t[pigment {rgb Amb transmit 1-Opac} finish { ambient 3 diffuse 0 specular 0}]\n"
            "\t\t\t\t[pigment {rgb Dif transmit 1-Opac} finish { ambient 0 diffuse 3 specular 0}]\n"
            "\t\t\t\t[pigment {rgb Spec transmit 1-Opac} finish { ambient 0 diffuse 0 specular 3 metallic "
            "roughness " +
            roughness + "}]\n\t\t\t}\n\t\t}\n";
    return text + "}\n#end\n";
}

// A macro's own radius has three more than coordinates, so a sphere that stands for its call has them, too.
int PovParticles_cls::GetRadiusDecimals(int index, int decimals) const {
    return mSets[index].mbConstantRadius ? std::min(decimals + 3, kMostDecimals) : decimals;
}

char* PovParticles_cls::PutCall(char* p, int index, const ArrayAndIndex_cls& entry, float radius,
                                int decimals) const {
    const Set_st& set = mSets[index];
    p = PutText(p, "SP");
    *p++ = static_cast<char>('0' + index);
    *p++ = '(';
    p = PutVector(p, mSnap.mpPos[entry.mIndex], decimals);
    if (!set.mbConstantRadius || set.mbOwnColors) {
        *p++ = ',';
        p = PutFixed(p, radius, GetRadiusDecimals(index, decimals));
    }
    if (set.mbOwnColors) {
        const PovMaterial_st material = GetMaterial(index, entry, radius);
        for (int layer = 0; layer < 3; ++layer) {
            float color[3];
            for (int c = 0; c < 3; ++c)
                color[c] = static_cast<float>(material.mColors[3 * layer + c]) / 255.0f;
            *p++ = ',';
            p = PutVector(p, color, kColorDecimals);
        }
        *p++ = ',';
        p = PutFixed(p, static_cast<float>(material.mAlpha) / 1000.0f, kColorDecimals);
    } else if (!set.mbConstantColor) {
        *p++ = ',';
        p = PutFixed(p, entry.mAlpha, kColorDecimals);
    }
    return PutText(p, ")\n");
}

char* PovParticles_cls::PutSphere(char* p, int index, const ArrayAndIndex_cls& entry, float radius,
                                  int decimals) const {
    p = PutText(p, "sphere{");
    p = PutVector(p, mSnap.mpPos[entry.mIndex], decimals);
    *p++ = ',';
    p = PutFixed(p, radius, GetRadiusDecimals(index, decimals));
    return PutText(p, "}\n");
}

void PovParticles_cls::WriteSlice(int first, int end, int decimals, Slice_st* pSlice) const {
    PovGroups_cls groups(&pSlice->mGroups);
    const bool bGroup = mOptions.mbGroupMaterials;
    for (int i = first; i < end; ++i) {
        const ArrayAndIndex_cls& entry = mList.mpEntries[i];
        int index;
        float radius;
        if (!IsDrawn(entry, &index, &radius)) continue;
        const PovMaterial_st material = bGroup ? GetMaterial(index, entry, radius) : PovMaterial_st();
        std::string& lines = groups.Get(material).mLines;
        char line[kMostLine];
        const char* const behind = bGroup ? PutSphere(line, index, entry, radius, decimals)
                                          : PutCall(line, index, entry, radius, decimals);
        const auto length = static_cast<size_t>(behind - line);
        if (pSlice->mbPrint)
            pSlice->mPrint += MixPrint(HashText({line, length}) ^ PovMaterialHash_st()(material));
        // Most often all are of one group, and its lines as long as the first one.
        if (lines.empty() && pSlice->mGroups.size() == 1)
            lines.reserve((length + kLineSlack) * static_cast<size_t>(end - first));
        lines.append(line, length);
    }
}

// POV-Ray warns of a union of one.
void PovParticles_cls::AppendGroup(std::string* pText, const std::vector<const std::string*>& lines,
                                   const std::string& texture) {
    if (IsSingle(lines)) {
        const std::string& first = *lines.front();
        pText->append(first, 0, first.size() - 2); // the brace that ends it
        *pText += "\n" + texture + "}\n";
        return;
    }
    *pText += "union{\n";
    for (const std::string* text : lines)
        *pText += *text;
    *pText += texture + "}\n";
}

void PovParticles_cls::Append(std::string* pText, const PovText_cls& pov, uint64_t* pPrint,
                              bool bInPlace) const {
    const int decimals = pov.GetDecimals(3);
    Slice_st slices[kSlices];
    for (Slice_st& slice : slices)
        slice.mbPrint = pPrint != nullptr;
    const auto place = [this](int k) {
        return static_cast<int>(static_cast<long long>(mList.mNumber) * k / kSlices);
    };
    const auto write = [&](int k) { WriteSlice(place(k), place(k + 1), decimals, &slices[k]); };
    if (mList.mNumber < kFewParticles)
        for (int k = 0; k < kSlices; ++k)
            write(k);
    else
        OnThreads(kSlices, write);

    std::string macros; // or the textures, where the lines are of materials
    for (int k = 0; k < kParticleClasses; ++k)
        if (mSets[k].mbDrawn && !mOptions.mbGroupMaterials)
            macros += mSets[k].mbOwnColors ? GetColorMacro(k, pov) : GetMacro(k, pov);
    *pText += macros + (bInPlace ? "union{\n" : "#declare PARTICLES=\nunion{\n");
    uint64_t print = HashText(macros);
    size_t bytes = pText->size();
    for (const Slice_st& slice : slices) {
        print += slice.mPrint;
        for (const PovGroup_st& group : slice.mGroups)
            bytes += group.mLines.size();
    }
    pText->reserve(bytes + bytes / 16);
    if (mOptions.mbGroupMaterials)
        print += AppendGroups(pText, slices, pov);
    else
        for (const Slice_st& slice : slices)
            for (const PovGroup_st& group : slice.mGroups)
                *pText += group.mLines;
    *pText += bInPlace ? "}\n" : "};\n\n";
    if (pPrint) *pPrint = print;
}

// All of one material need no union of their own.
uint64_t PovParticles_cls::AppendGroups(std::string* pText, const Slice_st (&slices)[kSlices],
                                        const PovText_cls& pov) const {
    std::vector<PovGroup_st> all; // without text: where each material comes first
    PovGroups_cls groups(&all);
    std::unordered_map<PovMaterial_st, std::vector<const std::string*>, PovMaterialHash_st> lines;
    for (const Slice_st& slice : slices)
        for (const PovGroup_st& group : slice.mGroups) {
            groups.Get(group.mMaterial);
            lines[group.mMaterial].push_back(&group.mLines);
        }
    uint64_t print = 0;
    for (const PovGroup_st& group : all) {
        const std::string texture = pov.GetStrPovTextureColor("\t", GetSurface(group.mMaterial));
        print += MixPrint(HashText(texture) ^ PovMaterialHash_st()(group.mMaterial));
        const std::vector<const std::string*>& ofGroup = lines[group.mMaterial];
        if (all.size() > 1 || IsSingle(ofGroup)) {
            AppendGroup(pText, ofGroup, texture);
            continue;
        }
        for (const std::string* text : ofGroup)
            *pText += *text;
        *pText += texture;
    }
    return print;
}
