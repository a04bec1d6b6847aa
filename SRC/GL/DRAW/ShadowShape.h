// Where the shadow of a sphere lies: a cylinder along the light's direction, or the part of a cone behind a
// light that stands near. Coordinates are the spheres'.
#pragma once

struct ShadowShape_st {
    /// The circles at both ends.
    struct Ends_st {
        float place[2][3];
        float radius[2];
    };

    bool bNear = false;         ///< the light has a place
    float light[3] = {0, 0, 0}; ///< place, or direction of length 1
    float axes[3][3] = {};      ///< of a far light: away from it, and across
    float start = 0.0f;         ///< behind the circle on which the light touches a sphere, radii of it
    float length = 0.0f;        ///< from there

    /// `pLight`: as `light`, which stands, with the axes, from then on.
    void SetLight(bool bHasPlace, const double* pLight);
    /// Of a sphere at `pPos`. One that holds the light throws none: false.
    bool GetEnds(const float* pPos, float radius, Ends_st& ends) const;
    /// Two directions at right angles to this one of length 1, and to each other.
    static void MakeAcross(const float* pAway, float* pSide, float* pUp);
};
