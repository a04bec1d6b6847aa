#include "FILTER/clsFilterStick.h"

#include <algorithm>
#include <cmath>

#include <wx/stopwatch.h>

#include "COMMON/FramePath.h"
#include "FILTER/clsFilterCtrl.h"
#include "GL/DRAW/clsDrawProgress.h"
#include "PDATA/clsPeriodicBoundary.h"

namespace {

StickCell_st CellOf(const PeriodicBoundary_cls& box) {
    StickCell_st cell;
    cell.mType = box.mCPeriodicType.mValue;
    const ConfItemFLOATARRAY_cls* const bases[3] = {&box.mCPeriodicBaseVector0, &box.mCPeriodicBaseVector1,
                                                    &box.mCPeriodicBaseVector2};
    std::copy_n(box.mCPeriodicSize.mValue, 3, cell.mSize);
    for (int k = 0; k < 3; ++k)
        std::copy_n(bases[k]->mValue, 3, cell.mBase[k]);
    return cell;
}

} // namespace

FilterStickData_cls::FilterStickData_cls() : FilterData_cls(false, true) {
    mCConfItemList.Add(&mCStickType, "StickType=", "0");
    mCConfItemList.Add(&mCStickRadius, "StickRadius=", "0.5");
    mCConfItemList.Add(&mCStickWidth, "StickWidth=", "10");
    mCConfItemList.Add(&mCCalcType, "CalcType=", "0");
    mCConfItemList.Add(&mCStickPath, "StickPath=", "NONE");
    mCConfItemList.Add(&mCCritType, "CritType=", "0");
    mCConfItemList.Add(&mCCritA, "CritA=", "1");
    mCConfItemList.Add(&mCCritB, "CritB=", "2");
    mCConfItemList.Add(&mCSpecType, "SpecType=", "0");
    mCConfItemList.Add(&mCSpecA, "SpecA=", "0");
    mCConfItemList.Add(&mCSpecB, "SpecB=", "1");
    mCTexture.AddTo(&mCConfItemList);
    AddOptional(&mCAcross, "AcrossFaces=", "0");
    AddOptional(&mCKeepUntil, "KeepUntil=", "0");
}

void FilterStickData_cls::CopySettings(FilterStickData_cls& other) {
    mCConfItemList.CopyListComponentFromP(&other.mCConfItemList);
    mCAcross = other.mCAcross;
    mCKeepUntil = other.mCKeepUntil;
    mStrFolder = other.mStrFolder;
}

void FilterStick_cls::OnRemoved() {
    mSticks.ClearList();
    mHistory.Clear();
}

StickRule_st FilterStick_cls::GetRule() const {
    const FilterStickData_cls& data = *GetPCData();
    StickRule_st rule;
    rule.mCritType = int(data.mCCritType.mValue);
    rule.mA = data.mCCritA.mValue;
    rule.mB = data.mCCritB.mValue;
    rule.mSpecType = int(data.mCSpecType.mValue);
    rule.mSpecA = data.mCSpecA.mValue;
    rule.mSpecB = data.mCSpecB.mValue;
    rule.mbAcross = data.mCAcross.mValue;
    if (KeepsBonds()) rule.mKeepUntil = data.mCKeepUntil.mValue;
    return rule;
}

StickCell_st FilterStick_cls::GetCell() const {
    const PeriodicBoundary_cls* box = mpCFilterCtrl ? mpCFilterCtrl->GetPCPeriodic() : nullptr;
    return box ? CellOf(*box) : StickCell_st();
}

bool FilterStick_cls::KeepsBonds() const {
    const FilterStickData_cls& data = *GetPCData();
    // Signs of distances are lost in their squares.
    return data.mCValid.mValue && data.mCCalcType.mValue == FilterStickData_cls::CALCULATE &&
           data.mCCritType.mValue == STICK_STEP &&
           std::fabs(data.mCKeepUntil.mValue) > std::fabs(data.mCCritA.mValue);
}

int FilterStick_cls::GetNeededFrame(int firstFrame, int frame) {
    const StickRule_st rule = GetRule();
    mHistory.Set(rule, rule.mbAcross ? GetCell() : StickCell_st(), firstFrame);
    return mHistory.GetNeededFrame(frame);
}

void FilterStick_cls::AddFrame(int frame, const StickParticles_st& particles,
                               const std::function<bool()>& isStopped) {
    mHistory.mIsStopped = isStopped;
    TellIfAny(mHistory.AddFrame(frame, particles));
    mHistory.mIsStopped = nullptr;
}

void FilterStick_cls::TellIfAny(const wxString& told) const {
    if (!told.empty()) mpCFilterCtrl->Tell(GetPCData()->mCName.mStrValue + ": " + told);
}

wxString FilterStick_cls::MakeList(const StickParticles_st& particles, int frame, int filmFrame) {
    FilterStickData_cls& data = *GetPCData();
    if (data.mCCalcType.mValue == FilterStickData_cls::CALCULATE) {
        const bool bKeeps = KeepsBonds();
        return mSticks.CalcFromData(particles, bKeeps ? filmFrame : frame, GetRule(), GetCell(),
                                    bKeeps ? &mHistory : nullptr);
    }
    data.mLastFrame = frame;
    const wxString& path = data.mCStickPath.mStrValue;
    if (path.empty() || path == kNoPath) {
        mSticks.ClearList();
        mbBrokenFile = false;
        return wxString();
    }
    const wxString file = FramePath_cls(path, data.mStrFolder).GetFile(frame);
    if (mSticks.IsFromFile(file)) return wxString();
    const wxString told = mSticks.ReadListFromFile(file);
    mbBrokenFile = !told.empty();
    return told.empty() ? told : file + ": " + told;
}

bool FilterStick_cls::HasBrokenFile() const {
    const FilterStickData_cls& data = *GetPCData();
    return data.mCValid.mValue && data.mCCalcType.mValue != FilterStickData_cls::CALCULATE && mbBrokenFile;
}

bool FilterStick_cls::Prepare(const StickParticles_st& particles, int frame, int filmFrame) {
    if (!GetPCData()->mCValid.mValue) return true;
    if (KeepsBonds() && mHistory.GetNeededFrame(filmFrame) >= 0) {
        mSticks.ClearList();
        return false;
    }
    // Long searches let the window breathe, and the user stop them.
    constexpr long kBreathMillis = 200;
    DrawProgress_cls progress(1);
    wxStopWatch watch;
    mSticks.mIsStopped = [&] {
        if (watch.Time() < kBreathMillis) return false;
        watch.Start();
        return !progress.Report(0);
    };
    TellIfAny(MakeList(particles, frame, filmFrame));
    mSticks.mIsStopped = nullptr;
    mSticks.CheckValidity(&particles.mCount);
    mSticks.SetPPeriodicBoundary(GetCell());
    return true;
}

bool FilterStick_cls::GLDrawStick(const StickParticles_st& particles, unsigned copyMask) {
    const FilterStickData_cls& data = *GetPCData();
    if (!data.mCValid.mValue) return true;
    float colors[3][4];
    data.mCTexture.GetAlphaInfo(colors);
    StickStyle_st style;
    style.mType = data.mCStickType.mValue;
    style.mAlpha = colors[0][3];
    style.mRadius = data.mCStickRadius.mValue;
    style.mWidth = data.mCStickWidth.mValue;
    style.mShininess = data.mCTexture.mCShininess.mValue;
    return mGLSticks.Draw(mSticks, particles, style, copyMask);
}
