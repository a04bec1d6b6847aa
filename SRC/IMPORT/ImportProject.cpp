#include "IMPORT/ImportProject.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <iterator>

#include "IMPORT/clsImportRanges.h"

namespace {

constexpr double kExtent = 1.8; // longest edge of the scaled data, which the first camera sees whole
constexpr double kInside = 0.1; // so far beyond a box, in edges, particles still count as in it
constexpr double kManyDecades = 1000.0;
constexpr int kShortFilm = 100; // snapshots; fewer are over too soon at one a step
// Sand, blue, vermilion, green: told apart on black, also with weak colour vision.
const char* const kColors[] = {"0.93 0.75 0.46 1", "0.36 0.66 0.92 1", "0.92 0.42 0.26 1",
                               "0.45 0.78 0.52 1"};
// A point's edge in pixels, by how many there are.
const std::pair<long long, int> kPointSizes[] = {{3000, 14}, {30000, 10}, {300000, 6}, {3000000, 3}};

enum InterpolateType { LINEAR = 0, NO_INTERPOLATION = 2 };
enum VariableNumber { CONSTANT = 0, VARIABLE = 1 };

__attribute__((format(printf, 2, 3))) void Put(std::string* pText, const char* format, ...) {
    char line[400];
    va_list values;
    va_start(values, format);
    std::vsnprintf(line, sizeof line, format, values);
    va_end(values);
    *pText += line;
    *pText += '\n';
}

/// Where the data stand, in their own lengths.
struct Place_st {
    double mCenter[3] = {0, 0, 0};
    double mScale = 1.0;
    double mSpacing = 1.0; ///< mean distance of neighbours, scaled
    bool mbInBox = false;
};

// A tilted or cubic box around its origin.
void BoundBox(const ImportBox_st& box, double (*pBounds)[2]) {
    for (int axis = 0; axis < 3; ++axis) {
        pBounds[axis][0] = pBounds[axis][1] = box.mOrigin[axis];
        for (const auto& edge : box.mEdge)
            pBounds[axis][edge[axis] < 0 ? 0 : 1] += edge[axis];
    }
}

Place_st FindPlace(const ImportFacts_st& facts, const ImportRanges_cls& ranges) {
    Place_st place;
    double data[3][2] = {};
    double box[3][2] = {};
    const bool bData = ranges.GetBounds(data);
    BoundBox(facts.mBox, box);
    place.mbInBox = facts.mBox.mbThere;
    for (int axis = 0; axis < 3; ++axis) {
        const double slack = kInside * (box[axis][1] - box[axis][0]);
        // A box of two dimensions is flat.
        if (!(box[axis][1] > box[axis][0]) && axis < 2) place.mbInBox = false;
        if (bData && (data[axis][0] < box[axis][0] - slack || data[axis][1] > box[axis][1] + slack))
            place.mbInBox = false;
    }
    const auto& bounds = place.mbInBox ? box : data;
    double longest = 0.0;
    double volume = 1.0;
    int dimensions = 0;
    for (int axis = 0; axis < 3; ++axis) {
        place.mCenter[axis] = 0.5 * (bounds[axis][0] + bounds[axis][1]);
        const double edge = bounds[axis][1] - bounds[axis][0];
        longest = std::max(longest, edge);
        if (edge > 0) volume *= edge;
        dimensions += edge > 0;
    }
    if (longest > 0 && std::isfinite(longest)) place.mScale = kExtent / longest;
    // Few digits, so that the window's six decimals keep it.
    if (place.mScale < 0.001) {
        const double unit = std::pow(10.0, std::floor(std::log10(place.mScale)) - 1.0);
        place.mScale = std::floor(place.mScale / unit) * unit;
    }
    if (dimensions > 0 && facts.mMostParticles > 0)
        place.mSpacing = place.mScale * std::pow(volume / double(facts.mMostParticles), 1.0 / dimensions);
    return place;
}

void PutLoader(const ImportFacts_st& facts, const Place_st& place, bool bLogarithm, std::string* pText) {
    const bool bIDs = (facts.mColumns & IMPORT_ID) != 0 && facts.mbUniqueIDs;
    Put(pText, "DataLoadDataType=0");
    Put(pText, "DataLoadGrammerHead=0 1");
    Put(pText, "DataLoadGrammerBody=%s", facts.mBody.c_str());
    // Velocities and times of other programs have units of their own.
    Put(pText, "InterpolateType=%d", bIDs || facts.mbSameNumber ? LINEAR : NO_INTERPOLATION);
    // The window's own sorting by ID would leave all columns but the positions where they are.
    Put(pText, "VariableNumber=%d", bIDs && !facts.mbSameIDs ? VARIABLE : CONSTANT);
    Put(pText, "LoaderTranslate=%.9g %.9g %.9g", 0.0 - place.mCenter[0], 0.0 - place.mCenter[1],
        0.0 - place.mCenter[2]);
    Put(pText, "LoaderScale=%.9g", place.mScale);
    Put(pText, "LoaderScaleValue1=1");
    Put(pText, "LoaderLogarithm=%d", bLogarithm ? 1 : 0);
}

void PutViews(const ImportFacts_st& facts, bool bValues, std::string* pText) {
    Put(pText, "PreviewPanelType=0");
    Put(pText, "OverLayShowLegend=%d 0 0 0", bValues ? 1 : 0);
    for (int panel = 0; panel < 4; ++panel) {
        Put(pText, "Panel%dGLDepthMin=0.05", panel);
        Put(pText, "Panel%dGLDepthMax=500", panel);
        Put(pText, "Panel%dGLOrthoScale=3.6", panel);
    }
    const int last = std::max(facts.mSnapshots - 1, 0);
    Put(pText, "TimeMaxFrame=%d", last);
    Put(pText, "TimeWorkAreaMin=0");
    Put(pText, "TimeWorkAreaMax=%d", last);
    Put(pText, "TimeActiveAreaMin=0");
    Put(pText, "TImeActiveAreaMax=%d", last);
    Put(pText, "TimeAnimInterp=%d", facts.mSnapshots < kShortFilm ? 10 : 1);
    Put(pText, "Classify=1");
}

void PutLooks(const ImportFacts_st& facts, const Place_st& place, const float* pRange, std::string* pText) {
    int size = 2;
    for (const auto& [most, pixels] : kPointSizes)
        if (size == 2 && facts.mMostParticles <= most) size = pixels;
    for (int type = 0; type < 4; ++type) {
        Put(pText, "SEQ0TYPE%dPointSize=%d", type, size);
        Put(pText, "SEQ0TYPE%dRadiusType=%d", type, facts.mColumns & IMPORT_RADIUS ? 0 : 1);
        Put(pText, "SEQ0TYPE%dRadiusFactorForConst=%.6g", type, 0.5 * place.mSpacing);
        Put(pText, "SEQ0TYPE%dColUseColorCurve=%d", type, pRange ? 1 : 0);
        for (const char* part : {"Col", "Diffuse", "Specular"})
            Put(pText, "SEQ0TYPE%d%sConstantColor=%s", type, part, kColors[type]);
        if (!pRange) continue;
        Put(pText, "SEQ0TYPE%dColDependType=0", type);
        Put(pText, "SEQ0TYPE%dColScalingMin=%.9g", type, double(pRange[0]));
        Put(pText, "SEQ0TYPE%dColScalingMax=%.9g", type, double(pRange[1]));
    }
}

// Edges in scaled coordinates.
void PutBox(const ImportFacts_st& facts, const Place_st& place, std::string* pText) {
    const ImportBox_st& box = facts.mBox;
    const bool bUse = box.mbThere && (box.mbSure || place.mbInBox);
    // There is no way for a wire: rather long ways across than short ones through a wall.
    const bool bFlat = box.mbPeriodic[0] && box.mbPeriodic[1];
    Put(pText, "PeriodicType=%d", !bUse || !bFlat ? 0 : box.mbPeriodic[2] ? 2 : 1);
    Put(pText, "PeriodicSize=1 1 1");
    const bool bThick = std::any_of(std::begin(box.mEdge[2]), std::end(box.mEdge[2]),
                                    [](double length) { return length != 0.0; });
    if (bUse && !bThick) Put(pText, "PeriodicBaseVector2=0 0 1");
    for (int k = 0; k < (bThick ? 3 : 2) && bUse; ++k)
        Put(pText, "PeriodicBaseVector%d=%.9g %.9g %.9g", k, place.mScale * box.mEdge[k][0],
            place.mScale * box.mEdge[k][1], place.mScale * box.mEdge[k][2]);
}

} // namespace

std::string MakeImportProject(const ImportFacts_st& facts, const ImportRanges_cls& ranges) {
    const Place_st place = FindPlace(facts, ranges);
    const bool bValues = (facts.mColumns & IMPORT_VALUE) != 0 && ranges.HasValues();
    float range[2] = {ranges.GetLeastValue(), ranges.GetMostValue()};
    const bool bLogarithm = bValues && range[0] > 0.0f && range[1] / range[0] > kManyDecades;
    for (float& end : range)
        if (bLogarithm) end = std::log10(end);
    if (bValues && !(range[1] > range[0])) range[1] = range[0] + 1.0f;
    std::string text;
    PutLoader(facts, place, bLogarithm, &text);
    PutViews(facts, bValues, &text);
    Put(&text, "DataSequence0=0");
    Put(&text, "%s", facts.mFirst.c_str());
    PutLooks(facts, place, bValues ? range : nullptr, &text);
    PutBox(facts, place, &text);
    return text;
}
