// The wire box that shows where a filter is.
#pragma once

#include <string>

class FilterData_cls;
class MarkPainter_cls;

/// Green, or sand-coloured and with handles while the filter is selected; nothing where its line is hidden on
/// the time lines.
void DrawFilterFrame(MarkPainter_cls& painter, const FilterData_cls& data, double time);

/// Where a filter stands at a time, or where a hand holds it: it is scaled, turned about y, then x, then z,
/// and moved.
struct FilterPlacement_st {
    FilterPlacement_st(const FilterData_cls& data, double time);

    /// Onto the current OpenGL matrix.
    void Multiply() const;
    void Multiply(MarkPainter_cls& painter) const;
    /// A point of the filter in the scene.
    void Transform(float* p) const;
    /// The same as a line of a scene for POV-Ray.
    std::string GetStrPovMatrix(int decimals) const;

    double mPlace[3];
    double mAngles[3]; ///< degrees
    double mScale[3];
};

// Pieces of the frame, for filters that have one of their own.

/// The frame's colour for this filter becomes current.
void SetFrameColor(MarkPainter_cls& painter, const FilterData_cls& data);
/// From -0.5 to 0.5, in the current colour.
void DrawUnitBox(MarkPainter_cls& painter);
