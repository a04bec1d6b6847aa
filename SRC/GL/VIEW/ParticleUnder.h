// The particle that a view shows at a place of its window.
#pragma once

#include <array>

#include <wx/gdicmn.h>

#include "PDATA/ParticleName.h"

class FilterLists_cls;
class SnapData_cls;
class ViewHost_cls;
class ViewPick_cls;

/// Among the particles that were drawn last, as they were drawn, by ParticlePicker_cls. No particle where
/// none is under the place, or none is in memory.
ParticleName_st FindParticleUnder(const ViewPick_cls& pick, ViewHost_cls& host, wxPoint place);

/// Is this particle of the snapshot on the screen drawn in such a cell: does its class have a look, and do
/// filters and copies have it?
bool IsParticleDrawn(ViewHost_cls& host, const SnapData_cls& snap, int index, const std::array<int, 3>& cell);

/// Where filters put a place of the data in the scene at the box's present time, in that cell of the copies;
/// without a filter that makes them it stands where it is. The lists may be null. False where it stands
/// nowhere.
bool PlaceParticle(FilterLists_cls* pFilters, const std::array<int, 3>& cell, const float* pPos,
                   double out[3]);
