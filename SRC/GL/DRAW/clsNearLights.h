// Which spheres are so small beside the distance to the lights that one place stands for all of a sphere.
#pragma once

#include <vector>

#include "GL/DRAW/clsViewScale.h"

class NearLights_cls {
public:
    /// Of the first `number` lights that are set; needs a current context.
    explicit NearLights_cls(int number);

    /// For `count` spheres whether light needs no more than what GL/Exact.frag reckons from their middles, to
    /// less than a quarter of 1 / 255 of each light's strength: by the distance to near ones, and not at
    /// the edge of a cone.
    void FindSmall(const ViewScale_cls::Silhouettes_st& balls, int count, unsigned char* pSmall) const;

private:
    struct Light_st {
        float place[3]; ///< eye coordinates
        float along[3]; ///< axis of a spot's cone
        float edge;     ///< cosine at the cone's edge; below -1 for none
    };
    std::vector<Light_st> mVLights;
};
