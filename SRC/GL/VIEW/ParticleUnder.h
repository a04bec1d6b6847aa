// The particle that a view shows at a place of its window.
#pragma once

#include <vector>

#include <wx/gdicmn.h>

#include "PDATA/ParticleName.h"

class FilterLists_cls;
class ViewHost_cls;
class ViewPick_cls;

/// Among the particles that were drawn last, as they were drawn, by ParticlePicker_cls. No particle where
/// none is under the place, or none is in memory.
ParticleName_st FindParticleUnder(const ViewPick_cls& pick, ViewHost_cls& host, wxPoint place);

/// Where filters put a place of the data in the scene at the box's present time, in its copy; both may be
/// null. False where it stands nowhere.
bool PlaceParticle(FilterLists_cls* pFilters, long long copy, const float* pPos, double out[3]);
