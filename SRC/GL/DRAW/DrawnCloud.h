// What of a snapshot's particles is drawn and how large, for whoever places a camera.
#pragma once

#include "GL/BASE/ViewFit.h"

class DrawListFilter_cls;
class GLAttribute_cls;
class SnapData_cls;
struct ParticleArrays_st;
struct PickCloud_st;

/// The particles of these arrays (places, and types and radii where there are any) as the draw options and
/// the attributes have them drawn: hidden classes and those that downsizing leaves out don't count, points
/// have no size. Refers to the arrays.
FitCloud_st MakeDrawnCloud(const ParticleArrays_st& arrays, long long number,
                           const GLAttribute_cls* const* ppAttribute);

/// What clicks find of a snapshot as it was drawn; a pixel of the off-screen buffer is so many of the window.
/// Refers to its arrays.
PickCloud_st MakePickCloud(const SnapData_cls& snap, const GLAttribute_cls* const* ppAttribute,
                           double pixelsOfBuffer, double time);

/// Leave what a filter keeps at double index `time`; the cloud has arrays of its own then.
void ThinCloud(FitCloud_st& cloud, DrawListFilter_cls& filter, double time);
