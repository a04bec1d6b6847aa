// Projects: every object that reads lines of one, but for those that need a window.
#include <algorithm>
#include <cstdio>
#include <limits>
#include <string>

#include <wx/arrstr.h>

#include "APP/ProjectText.h"
#include "APP/clsRecentFiles.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterLists.h"
#include "FuzzTargets.h"
#include "GL/BASE/clsPreference.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsShadowVolume.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsOverlay.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "IMAGE/clsImgSequence.h"
#include "PARAM/clsParamGroup.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

namespace {

const wxString kTime[] = {"Time"};

/// What a project sets, in the order of its blocks. Made once: the store alone has 40,000 slots.
struct Settings_st {
    DataLoader_cls mLoader{nullptr};
    DataExporter_cls mExporter{&mLoader};
    TimeCtrl_cls mTime{nullptr};
    ParamGroup_cls mRemap{"Time Remap", 1, kTime, 0, true};
    DrawOption_cls mOption;
    Overlay_cls mOverlay;
    Exposure_cls mExposure;
    PDataSeqCtrl_cls mStore{GLSequence_cls::GetMaker(&mOption), false};
    PeriodicBoundary_cls mPeriodic;
    CameraPath_cls mCamera;
    AnchorPath_cls mAnchor;
    LightSRCCtrl_cls mLights;
    StereoGram_cls mStereo;
    PovRayCtrl_cls mPov;
    FilterLists_cls mFilters;
    Preference_cls mPreference;
    SharedView_cls mViews{&mOverlay, &mExposure, nullptr};
    ImgSequence_cls mImages{&mTime};
    ParticleWatch_cls mWatch{mStore, mTime, mFilters, mPeriodic};

    void Read(const std::wstring& text) {
        mFilters.ClearFilters(); // as opening a project does
        TextStream_cls stream(text);
        wxString line;
        while (NextProjectLine(stream, &line)) {
            mLoader.ReadStrLine(line);
            mExporter.ReadStrLine(line);
            mTime.ReadStrLine(stream, line);
            mRemap.ReadStrLine(stream, line);
            mOption.ReadStrLine(line);
            mOverlay.ReadStrLine(line);
            mExposure.ReadStrLine(line);
            mStore.ReadStrLine(stream, line);
            mPeriodic.ReadStrLine(line);
            mCamera.ReadStrLine(stream, line);
            mAnchor.ReadStrLine(stream, line);
            mLights.ReadStrLine(stream, line);
            mStereo.ReadStrLine(stream, line);
            mPov.ReadStrLine(line);
            mFilters.ReadStrLine(stream, line);
            mPreference.ReadStrLine(line);
            mViews.ReadStrLineStaticMember(stream, line);
            ShadowVolume_cls::ReadStrLineStaticMember(line);
            mImages.ReadStrLine(line);
            mWatch.ReadStrLine(line);
        }
    }
    wxString Write() {
        return mLoader.Serialize() + mExporter.Serialize() + mTime.Serialize() + mRemap.Serialize() +
               mOption.Serialize() + mOverlay.Serialize() + mExposure.Serialize() + mStore.Serialize() +
               mPeriodic.Serialize() + mCamera.Serialize() + mAnchor.Serialize() + mLights.Serialize() +
               mStereo.Serialize() + mPov.Serialize() + mFilters.Serialize() + mPreference.Serialize() +
               mViews.SerializeStaticMember() + ShadowVolume_cls::SerializeStaticMember() +
               mImages.Serialize() + mWatch.Serialize();
    }
};

void CheckCurves(ParamGroup_cls& group) {
    for (Parameters_cls& curve : group.mVParams) {
        for (int i = 1; i < curve.GetKeyNumber(); ++i)
            Promise(!(curve.GetKeyFrameDoubleIndex(i) < curve.GetKeyFrameDoubleIndex(i - 1)),
                    "keys stand in order");
        for (const double t : {-0.5, 0.0, 0.3, 0.999, 2.0})
            curve.GetInterpolatedValue(t);
        // Straight pieces go to the name: the text grows with the square of the keys.
        if (curve.GetKeyNumber() < 100) curve.GetStrExpression("x");
    }
    std::vector<bool> tags(101, false);
    for (const Parameters_cls& curve : group.mVParams)
        curve.CheckSnippingTag(&tags);
}

/// Texts of settings may hold the key of another one: then a line is taken twice, as the format has it.
bool HoldsKey(Settings_st& settings) {
    if (settings.mLoader.mCItemLastOpened.mStrValue.Contains("=")) return true;
    for (const wxString& line : wxSplit(settings.mFilters.Serialize(), '\n', '\0'))
        if (line.Freq('=') > 1) return true;
    for (const PDataSequence_cls* sequence : settings.mStore.mpCSequence)
        for (const GLAttribute_cls* attribute : GLSequence_cls::Of(*sequence).mpCGLAttribute)
            if (attribute->mTexFileBillboard.mStrValue.Contains("=")) return true;
    return false;
}

/// What the filters do with particles, some at odd places, and where they put them.
void CheckFilters(FilterLists_cls& filters, const PeriodicBoundary_cls& periodic) {
    constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
    static const float kPlaces[5][3] = {
        {0, 0, 0}, {1, -2, 3}, {kNone, 0, 0}, {1e30f, 0, 0}, {0.5f, 0.5f, -0.5f}};
    DrawList_t list;
    for (int i = 0; i < 5; ++i)
        list.push_back({i, 0.0f, 1.0f});
    filters.GetBoolean().Thin(list, 5, kPlaces, 0.4);
    for (const ArrayAndIndex_cls& entry : list)
        Promise(entry.mAlpha > 0.0f && entry.mIndex >= 0 && entry.mIndex < 5, "what is kept has a weight");
    filters.mpCPeriodic = &periodic;
    if (const FilterCopy_cls* copies = filters.GetWorld().GetPCCopy())
        for (const long long copy : {0LL, 1LL, 77LL}) {
            if (copy >= copies->GetNumber()) break;
            const size_t size = copies->GetVTranslate(copy).size();
            Promise(size == 3 || !copies->GetPCData()->mCValid.mValue, "a copy stands somewhere");
            const int mask = copies->GetBitBoundary(copy);
            Promise(mask >= 0 && mask < 8, "three neighbours");
        }
    float place[3] = {1, 2, 3};
    if (FilterDataBoxData_cls* box = filters.GetObject().GetPCDataBox()) box->PlaceNow(place);
}

void CheckSame(const wxString& first, const wxString& second) {
    if (first == second) return;
    const wxArrayString left = wxSplit(first, '\n', '\0');
    const wxArrayString right = wxSplit(second, '\n', '\0');
    for (size_t i = 0; i < std::min(left.size(), right.size()); ++i)
        if (left[i] != right[i])
            std::fprintf(stderr, "%s\n%s\n", left[i].utf8_str().data(), right[i].utf8_str().data());
    Promise(false, "what is written is read as it was");
}

} // namespace

void FuzzConfigure(const std::string& bytes) {
    RecentFiles_cls recent;
    const std::wstring text = DecodeProject(bytes);
    TextStream_cls stream(text);
    std::string others;
    wxString line;
    while (NextProjectLine(stream, &line))
        if (!recent.ReadStrLine(line)) others += EncodeProject(line + "\n");
    for (const auto kind : {RecentFiles_cls::Projects, RecentFiles_cls::Data}) {
        Promise(recent.Get(kind).size() <= RecentFiles_cls::kMost, "a menu has a digit a line");
        for (const wxString& path : recent.Get(kind))
            RecentFiles_cls::MakeLabel(0, path);
    }
    RecentFiles_cls again;
    for (const wxString& written : wxSplit(recent.Serialize(), '\n', '\0'))
        again.ReadStrLine(written);
    Promise(again.Serialize() == recent.Serialize(), "paths are read as they were");
    FuzzProject(others);
}

void FuzzProject(const std::string& bytes) {
    static Settings_st sSettings;
    static unsigned sRun = 0;
    sSettings.Read(DecodeProject(bytes));
    const TimeCtrl_cls& time = sSettings.mTime;
    Promise(time.GetAnimStep() > 0 && time.GetAnimInterp() > 0 && time.GetMaxFrame() >= 0,
            "the clock can tick");
    sSettings.mTime.CheckWorkingArea();
    Promise(time.GetWAMin() <= time.GetWAMax() && time.GetWAMax() <= time.GetMaxFrame(),
            "the areas are in order");
    Promise(sSettings.mOption.GetDownSizing() > 0, "the draw list can be filled");
    sSettings.mLoader.GetHeaderByte();
    float box[3];
    sSettings.mPeriodic.GetBoundaryVector(box, 0);
    CheckFilters(sSettings.mFilters, sSettings.mPeriodic);
    CheckCurves(sSettings.mRemap);
    for (ParamGroup_cls* group :
         {sSettings.mCamera.mpCTranslate, sSettings.mCamera.mpCRotate, sSettings.mAnchor.mpCTranslate})
        CheckCurves(*group);
    if (sRun++ % 64 == 0 && !HoldsKey(sSettings)) {
        const wxString first = sSettings.Write();
        sSettings.Read(DecodeProject(EncodeProject(first)));
        CheckSame(first, sSettings.Write());
    }
    if (sRun % 512 == 0) sSettings.mStore.ClearData(-2, -2, true);
}
