// The wire box that shows where a filter is.
#pragma once

class FilterData_cls;

/// Green, or sand-coloured while the filter is selected; nothing where its line is hidden on the time lines.
/// Needs a current OpenGL context with the camera in the model-view matrix.
void DrawFilterFrame(const FilterData_cls& data, double time);

// Pieces of it, for filters that place their frame in their own way.

/// The frame's colour for this filter becomes current.
void SetFrameColor(const FilterData_cls& data);
/// Turn about z, then x, then y by the rotation's values in degrees.
void RotateZXY(const double angles[3]);
/// From -0.5 to 0.5, in the current colour.
void DrawUnitBox();
