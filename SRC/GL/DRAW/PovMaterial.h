// Particles of one material as text, gathered while a list is gone through.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <unordered_map>
#include <vector>

/// Of which attribute, in which colours: in steps that no picture of eight bits shows.
struct PovMaterial_st {
    unsigned char mSet = 0;
    unsigned char mColors[9] = {}; ///< RGB of ambient, diffuse, specular, 0 to 255; 0 where all are alike
    unsigned short mAlpha = 1000;  ///< opacity, or where all are alike its weight, in thousandths

    bool operator==(const PovMaterial_st& o) const { return std::memcmp(this, &o, sizeof o) == 0; }
};

struct PovMaterialHash_st {
    size_t operator()(const PovMaterial_st& material) const {
        uint64_t low;
        uint32_t high;
        static_assert(sizeof material == sizeof low + sizeof high, "no gaps, which have no value");
        std::memcpy(&low, &material, sizeof low);
        std::memcpy(&high, reinterpret_cast<const char*>(&material) + sizeof low, sizeof high);
        const uint64_t mixed = (low ^ (uint64_t(high) << 29)) * 0x9E3779B97F4A7C15ull;
        return static_cast<size_t>(mixed ^ (mixed >> 31));
    }
};

struct PovGroup_st {
    PovMaterial_st mMaterial;
    std::string mLines;
};

/// Where the group of a material stands, made when it is first asked for.
class PovGroups_cls {
public:
    explicit PovGroups_cls(std::vector<PovGroup_st>* pGroups) : mpGroups(pGroups) {}

    PovGroup_st& Get(const PovMaterial_st& material) {
        if (mLast < mpGroups->size() && (*mpGroups)[mLast].mMaterial == material) return (*mpGroups)[mLast];
        const auto [place, bNew] = mPlaces.try_emplace(material, mpGroups->size());
        if (bNew) mpGroups->push_back({material, std::string()});
        mLast = place->second;
        return (*mpGroups)[mLast];
    }

private:
    std::vector<PovGroup_st>* mpGroups;
    std::unordered_map<PovMaterial_st, size_t, PovMaterialHash_st> mPlaces;
    size_t mLast = 0;
};
