// Grids as solids of a scene for POV-Ray: thin boxes for lines, tori for circles.
#pragma once

#include <string>

#include "POVRAY/TEXT/clsPovSerialize.h"

/// Steps that aren't numbers, or are more than a grid in a view has, give the lines that it has there.
class PovObjectGrid_cls : public PovSerialize_cls {
public:
    enum Shape : unsigned { FLAT_XY = 0, FLAT_YZ = 1, FLAT_XZ = 2, CUBIC = 3, CIRCLE = 4 };
    struct Span_st {
        double mMin;
        double mMax;
        int mNumber;       ///< of steps; 0 or less: steps are 1 long
        double mWidth;     ///< half of a line's thickness
        int mDecimals = 6; ///< of coordinates
    };

    // A union of all lines. `ending` is what stands in front of its closing brace.
    static std::string GetStrPovBasicGridX(const Span_st& span, double position, const std::string& ending);
    static std::string GetStrPovBasicGridY(const Span_st& span, double position, const std::string& ending);
    static std::string GetStrPovBasicGridZ(const Span_st& span, double position, const std::string& ending);
    static std::string GetStrPovBasicGridCubic(const Span_st& span, const std::string& ending);
    /// Circles around z.
    static std::string GetStrPovGridCircular(const Span_st& span, const std::string& ending);
    /// The surface of all of them, which throw no shadows. `color`: RGBA.
    static std::string GetStrPovTexture(const float* color);
};
