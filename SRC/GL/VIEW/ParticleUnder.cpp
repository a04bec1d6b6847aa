#include "GL/VIEW/ParticleUnder.h"

#include <algorithm>

#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterLists.h"
#include "GL/DRAW/DrawListFilter.h"
#include "GL/DRAW/DrawnCloud.h"
#include "GL/DRAW/PlaceMatrix.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsParticlePicker.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewPick.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSequence.h"

namespace {

/// Null: none acts.
const FilterCopy_cls* GetCopies(FilterLists_cls* pFilters) {
    return pFilters ? pFilters->GetWorld().GetPCCopy() : nullptr;
}

/// Null as well where the user doesn't want so many.
const FilterCopy_cls* GetDrawnCopies(ViewHost_cls& host) {
    const FilterCopy_cls* copies = GetCopies(host.GetPCFilters());
    return copies && host.MayDrawCopies(copies->GetNumber()) ? copies : nullptr;
}

ParticlePicker_cls::Shifts_t GetShifts(const FilterCopy_cls* copies) {
    if (!copies) return {{0, 0, 0}};
    ParticlePicker_cls::Shifts_t shifts;
    for (long long copy = 0; copy < copies->GetNumber(); ++copy)
        shifts.push_back(copies->GetVTranslate(copy));
    return shifts;
}

/// The snapshot on the screen, as far as it is still there.
const SnapData_cls* GetDrawn() {
    const SnapData_cls* snap = GLDrawData_cls::mspCSnapShot;
    const bool bThere = snap && snap->mbAllocated && snap->mpCBlock && snap->mTime == snap->mTime;
    return bThere && snap->mpCBlock->mbAllocated ? snap : nullptr;
}

} // namespace

ParticleName_st FindParticleUnder(const ViewPick_cls& pick, ViewHost_cls& host, wxPoint place) {
    const SnapData_cls* snap = GetDrawn();
    if (!snap) return {};
    FilterLists_cls* filters = host.GetPCFilters();
    double matrix[16];
    FilterDataBoxData_cls* box = filters ? filters->GetObject().GetPCDataBox() : nullptr;
    if (box && !box->GetMatrix(matrix)) return {};
    const GLSequence_cls& drawing = GLSequence_cls::Of(*host.GetPCActiveFileSequence());
    const PickCloud_st cloud = MakePickCloud(*snap, drawing.mpCGLAttribute, pick.GetPixelsOfBuffer(),
                                             GLDrawData_cls::msCurrentDoubleIndex);
    const FilterCopy_cls* copies = GetDrawnCopies(host);
    PickedParticle_st nearest;
    for (const PickRay_st& ray : pick.GetRays(place)) {
        const PickedParticle_st hit =
            ParticlePicker_cls(cloud, ray, box ? matrix : nullptr, GetShifts(copies)).Find();
        if (hit.mIndex >= 0 && (nearest.mIndex < 0 || hit.mDepth < nearest.mDepth)) nearest = hit;
    }
    return NameParticle(*snap->mpCBlock, nearest.mIndex,
                        copies ? copies->GetCell(nearest.mCopy) : std::array<int, 3>{0, 0, 0});
}

bool IsParticleDrawn(ViewHost_cls& host, const SnapData_cls& snap, int index,
                     const std::array<int, 3>& cell) {
    const GLSequence_cls& drawing = GLSequence_cls::Of(*host.GetPCActiveFileSequence());
    const PickCloud_st cloud =
        MakePickCloud(snap, drawing.mpCGLAttribute, 1.0, GLDrawData_cls::msCurrentDoubleIndex);
    if (index < 0 || index >= cloud.mNumber || index / std::max(cloud.mStep, 1LL) >= cloud.CountListed() ||
        !cloud.IsSeen(index))
        return false;
    const FilterCopy_cls* copies = GetDrawnCopies(host);
    if (copies ? !copies->HasCell(cell) : cell != std::array<int, 3>{0, 0, 0}) return false;
    if (!cloud.mpCFilter) return true;
    DrawList_t list;
    list.push_back({index, 0.0f, 1.0f});
    cloud.mpCFilter->Thin(list, cloud.mNumber, cloud.mpPos, cloud.mTime);
    return !list.empty();
}

bool PlaceParticle(FilterLists_cls* pFilters, const std::array<int, 3>& cell, const float* pPos,
                   double out[3]) {
    float place[3] = {0, 0, 0};
    if (const FilterCopy_cls* copies = GetCopies(pFilters)) copies->GetCellPlace(cell, place);
    for (int i = 0; i < 3; ++i)
        place[i] += pPos[i];
    for (int i = 0; i < 3; ++i)
        out[i] = double(place[i]);
    FilterDataBoxData_cls* box = pFilters ? pFilters->GetObject().GetPCDataBox() : nullptr;
    double matrix[16];
    if (!box) return true;
    if (!box->GetMatrix(matrix)) return false;
    PlacePoint(matrix, place, out);
    return true;
}
