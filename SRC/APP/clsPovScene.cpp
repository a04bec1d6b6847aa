#include "APP/clsPovScene.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <new>
#include <string_view>
#include <utility>

#include <wx/intl.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/MsgBox.h"
#include "COMMON/SafeFile.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterStick.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsPovParticles.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "PDATA/clsPDataSequence.h"
#include "POVRAY/TEXT/PovNumber.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "SCENE/clsCameraPath.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

double GPovMachineBytes = 0.0;

namespace {

constexpr double kMemoryShare = 0.8; // of the machine's that a renderer may have unasked
double GAllowedBytes = 0.0;          // that the user has been asked about

bool WriteScene(const wxString& path, const std::string& text) {
    const wxString reason = WriteFileSafely(path, text, ToDisk::Later);
    if (!reason.empty()) Notice("pov-ray", wxString::Format(_("%s could not be written: %s."), path, reason));
    return reason.empty();
}

// A limit of addresses is the renderer's, too.
double GetMachineBytes() {
    if (GPovMachineBytes > 0.0) return GPovMachineBytes;
    const double machine =
        static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
    rlimit limit = {RLIM_INFINITY, RLIM_INFINITY};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return machine;
    return std::min(machine, static_cast<double>(limit.rlim_cur));
}

} // namespace

PovScene_cls::PovScene_cls(Main_cls& main, MainGLCanvas_cls* pCanvas)
    : mMain(main), mCanvas(pCanvas ? *pCanvas : *main.mpCFrameMain->GetPCOutputCanvas()),
      mFilters(*main.mpCFilters), mTime(main.mpCTimeCtrl->GetDoubleIndex()),
      mText(main.mpCPovRayCtrl->GetTextOptions()) {
    TakeParticles();
    TakeCopies();
    const int digits = mText.GetOptions().mDigits;
    if (mpCParticles)
        mText.SetDecimals(mpCParticles->GetDecimals(mStickRadius));
    else if (digits > 0)
        mText.SetDecimals(std::clamp(digits, 3, kMostDecimals));
}

PovScene_cls::~PovScene_cls() = default;

// The draw-time snapshot may be another frame's while the data of this one are missing.
void PovScene_cls::TakeParticles() {
    const TimeCtrl_cls& time = *mMain.mpCTimeCtrl;
    PDataSequence_cls& sequence = *mMain.mpCFrameMain->GetPCActiveFileSequence();
    const int frame = static_cast<int>(time.GetRemappedIndexDouble(-1, -1));
    const double step = time.GetRemappedIndex(-1) - frame + time.GetRemappedInterpStepDouble(-1, -1);
    SnapData_cls* const snap = GLDrawData_cls::mspCSnapShot;
    if (!snap || !snap->mbAllocated || !mCanvas.mShowData.mValue) return;
    if (!snap->IsOf(sequence.GetPCBlock(frame), sequence.GetDT(frame, step), snap->mStep)) return;
    mpCSnap = snap;
    GLAttribute_cls* const* const attributes = GLSequence_cls::Of(sequence).mpCGLAttribute;
    mpCParticles = std::make_unique<PovParticles_cls>(
        *snap, attributes, PovParticles_cls::GetDrawnList(attributes), mText.GetOptions());
    TakeSticks();
}

// A list may be another frame's still.
void PovScene_cls::TakeSticks() {
    for (const FilterStick_cls* stick : mFilters.GetObject().GetVpCSticks()) {
        if (!stick->GetSticks().Fits(mpCSnap->mNumber)) continue;
        const float radius = std::fabs(stick->GetPCData()->mCStickRadius.mValue);
        if (mStickLists == 0 || radius < mStickRadius) mStickRadius = radius;
        mSticks += static_cast<double>(stick->GetSticks().GetNumber());
        ++mStickLists;
    }
}

// As views do: a number that the user doesn't want counts as no copies at all.
void PovScene_cls::TakeCopies() {
    mpCCopies = mFilters.GetWorld().GetPCCopy();
    if (mpCCopies && !mMain.mpCFrameMain->MayDrawCopies(mpCCopies->GetNumber())) mpCCopies = nullptr;
    if (mpCCopies) mCopies = mpCCopies->GetNumber();
}

// POV-Ray keeps a copy of every sphere and stick for each place that it is referred from, but a mesh once.
double PovScene_cls::GetPovBytes(double enough) const {
    constexpr double kBytesOfStick = 2460.0;
    constexpr double kBytesOfTriangle = 220.0;
    const auto copies = static_cast<double>(std::max(mCopies, 1LL));
    const double bytes = static_cast<double>(mFilters.GetObject().GetPovTriangles()) * kBytesOfTriangle +
                         mSticks * copies * kBytesOfStick;
    if (!mpCParticles) return bytes;
    return bytes + copies * mpCParticles->GetPovBytes((enough - bytes) / copies);
}

wxString PovScene_cls::GetMemoryQuestion() const {
    constexpr double kGigabyte = 1073741824.0;
    const double machine = GetMachineBytes();
    const double bytes = GetPovBytes(kMemoryShare * machine);
    if (bytes <= kMemoryShare * machine || bytes <= GAllowedBytes) return wxString();
    return wxString::Format(
        _("POV-Ray will need about %.1f GB of memory for this scene; this machine has %.1f GB."),
        bytes / kGigabyte, machine / kGigabyte);
}

void PovScene_cls::AllowMemory() const {
    GAllowedBytes = 1.1 * GetPovBytes(kMemoryShare * GetMachineBytes());
}

// Of two eyes a picture shows what lies between them, unless the view shows one alone.
PovCamera_st PovScene_cls::GetCamera() const {
    PositionAndDirection_cls at = mCanvas.mCamera.mCCamPos;
    const StereoGram_cls* stereo = mMain.mpCStereoGram;
    if (stereo && !stereo->IsStereo() && !mCanvas.IsAlongAxis())
        stereo->ModifyByStereogram(&at, stereo->GetStereoEye(0));
    PovCamera_st camera;
    camera.mbFishEye = mCanvas.IsFishEye();
    camera.mbOrtho = !mCanvas.mCGLPerspective.mbPerspective && mCanvas.GetMultiPanelMode() == 0;
    if (camera.mbFishEye && mCanvas.IsCameraLinked())
        at.RotateYPR(0.0, double(mCanvas.GetPLinkedCameraPath()->mCFishEyeOffset.mValue), 0.0);
    std::copy_n(at.mPos, 3, camera.mPos);
    std::copy_n(at.mFront, 3, camera.mFront);
    std::copy_n(at.mUp, 3, camera.mUp);
    camera.mAngle = mCanvas.mCGLPerspective.mAngle;
    const double distance = mCanvas.mCamera.mCCamPos.GetDistanceToAnc();
    if (distance > 0.0) camera.mDistance = distance;
    return camera;
}

// Views have OpenGL's own ambient light, and that of the first light, which fades with it: here as it is
// where the camera looks.
double PovScene_cls::GetAmbientLight() const {
    constexpr double kSurroundings = 0.2;
    const int first = mMain.mpCLightSRCCtrl->GetFirstValidLight();
    if (first < 0) return kSurroundings;
    const LightSRC_cls& light = mMain.mpCLightSRCCtrl->GetLight(first);
    if (light.mCFade.mValue == LightSRC_cls::FADE_NONE || light.mCType.mValue == LightSRC_cls::TYPE_PARALLEL)
        return kSurroundings + 1.0;
    float place[4];
    mMain.mpCLightSRCCtrl->GetPosition(first, mTime, place);
    const PositionAndDirection_cls& camera = mCanvas.mCamera.mCCamPos;
    double way = 0.0;
    for (size_t i = 0; i < 3; ++i)
        way = std::hypot(way, double(place[i]) - camera.mAnc[i]);
    way /= std::max(double(light.mCFadeDistance.mValue), 1e-6);
    return kSurroundings + 1.0 / (1.0 + (light.mCFade.mValue == LightSRC_cls::FADE_POWER1 ? way : way * way));
}

std::string PovScene_cls::GetStrPovLikeView() const {
    if (!mText.GetOptions().mbLikeView) return std::string();
    std::string text = "global_settings { assumed_gamma 1";
    const PovRadiosity_cls& radiosity = mMain.mpCPovRayCtrl->mCRadiosity;
    if (radiosity.mType.mValue == 0 || !radiosity.mZeroAmbient.mValue)
        text += " ambient_light rgb " + PovSerialize_cls::PovOutG(GetAmbientLight());
    return text + " }\n";
}

// Behind a picture that shows what is behind it there is nothing.
std::string PovScene_cls::GetStrPovBackground() const {
    const FilterFog_cls* fog = mFilters.GetWorld().GetPCFog();
    const std::string fogText = fog ? fog->GetStrPovFog(mTime) : std::string();
    if (!fogText.empty() || !mText.GetOptions().mbLikeView ||
        mMain.mpCPovRayCtrl->mCFormat.mOutputAlpha.mValue)
        return fogText;
    float color[4];
    mMain.mpCFrameMain->GetPCSharedView()->mspCClrCurveBG->GetColor4fScaled(color, 0.0f);
    if (fog) fog->MixClearColor(mTime, color); // it has no density
    return PovSerialize_cls::PovOut3f("background {rgb ", color, 4) + "}\n";
}

void PovScene_cls::AppendData(std::string* pText, uint64_t* pPrint) const {
    mpCParticles->Append(pText, mText, pPrint, IsInPlace());
    const size_t particles = pText->size();
    bool bAgain = false;
    for (FilterStick_cls* stick : mFilters.GetObject().GetVpCSticks()) {
        if (!stick->GetSticks().Fits(mpCSnap->mNumber)) continue;
        *pText += stick->GetStrPovCylinderMacro(mText);
        stick->GetStrPovSticksRef(pText, mpCSnap->mpPos, mpCSnap->mStep, mText, bAgain);
        bAgain = true;
    }
    if (pPrint && IsInPlace()) ++*pPrint; // another text
    if (pPrint) *pPrint ^= std::hash<std::string_view>()(std::string_view(*pText).substr(particles));
}

// Declared they take the memory of all particles once more, which one copy can do without.
bool PovScene_cls::IsInPlace() const { return mText.GetOptions().mbGroupMaterials && !mpCCopies; }

bool PovScene_cls::HasCommonScene() const {
    return mpCParticles && mText.GetOptions().mbCommonScene &&
           mMain.mpCFrameMain->GetPCActiveFileSequence()->GetSeqLength() == 1;
}

bool PovScene_cls::OutputPovRayCommonScene(const wxString& path) {
    if (!HasCommonScene()) return true;
    std::string text;
    PovRayCtrl_cls& ctrl = *mMain.mpCPovRayCtrl;
    AppendData(&text, &ctrl.mCommonScenePrint);
    return ctrl.mbCommonSceneWritten = WriteScene(path, text);
}

// One snapshot may look otherwise all the same: filters and attributes have keys.
bool PovScene_cls::AppendDataReference(std::string* pText, const wxString& includeName,
                                       const wxString& path) {
    if (!HasCommonScene()) {
        AppendData(pText, nullptr);
        return true;
    }
    const PovRayCtrl_cls& ctrl = *mMain.mpCPovRayCtrl;
    if (ctrl.mbCommonSceneWritten) {
        const size_t before = pText->size();
        uint64_t print = 0;
        AppendData(pText, &print);
        if (print != ctrl.mCommonScenePrint) return true;
        pText->resize(before);
    } else if (!OutputPovRayCommonScene(path)) {
        return false;
    }
    *pText += "#include \"" + includeName.utf8_string() + "\"\n";
    return true;
}

std::string PovScene_cls::GetStrPovCopyLoopRef() {
    std::string text;
    for (long long copy = 0; copy < mCopies; ++copy) {
        if (mpCCopies) mText.mStrObjectTransform = mpCCopies->GetStrPovTranslate(copy, mText.GetDecimals(8));
        if (!IsInPlace()) text += mText.GetStrPovParticleObject("PARTICLES");
        if (mStickLists == 0) continue;
        text += mText.GetStrPovParticleObject("STICKS0");
        const int mask = mpCCopies ? mpCCopies->GetBitBoundary(copy) : 0;
        for (int k = 1; k < 8; ++k)
            if ((k & mask) == k) text += mText.GetStrPovParticleObject("STICKS" + std::to_string(k));
    }
    mText.mStrObjectTransform.clear();
    return text;
}

// Grids stand in the data's box here, though they don't in views, unless the picture is to be the view's.
std::string PovScene_cls::GetStrPovCopyLoopRefObject() {
    const FilterCtrl_cls& objects = mFilters.GetObject();
    std::string text;
    for (long long copy = 0; copy < mCopies; ++copy) {
        const std::string extra =
            mpCCopies ? mpCCopies->GetStrPovTranslate(copy, mText.GetDecimals(8)) : std::string();
        text += objects.GetStrPovRealObject(mTime, true, extra, mText);
    }
    text += objects.GetStrPovRealObject(mTime, false, std::string(), mText);
    if (!mText.GetOptions().mbLikeView) text += objects.GetStrPovRealGrids(mTime, mText);
    return text;
}

template <class WRITE>
std::string PovScene_cls::InDataBox(const WRITE& write) {
    const FilterDataBoxData_cls* box = mFilters.GetObject().GetPCDataBox();
    mText.mIndentDepth = box ? 1 : 0;
    const std::string text = write();
    mText.mIndentDepth = 0;
    if (!box || text.empty()) return text;
    return "union {\n" + text + box->GetStrPovModelview(mTime, "", mText.GetDecimals(4)) + "}\n";
}

bool PovScene_cls::OutputPovRayPov(const wxString& povPath, const wxString& includeName,
                                   const wxString& commonScenePath) {
    try {
        return WriteFrame(povPath, includeName, commonScenePath);
    } catch (const std::bad_alloc&) {
        Notice("pov-ray", wxString::Format(_("%s could not be written: %s."), povPath,
                                           _("there is not enough memory for it")));
        return false;
    }
}

bool PovScene_cls::WriteFrame(const wxString& povPath, const wxString& includeName,
                              const wxString& commonScenePath) {
    const PovCamera_st camera = GetCamera();
    std::string text = mMain.mpCPovRayCtrl->GetStrPovGlobal().utf8_string();
    text += GetStrPovLikeView();
    text += mText.GetStrPovCameraAngle(camera) + mText.GetStrPovCamera(camera);
    text += mMain.mpCLightSRCCtrl->GetStrPovLights(mTime, mText.GetDecimals(0));
    text += GetStrPovBackground();
    std::string references;
    if (mpCParticles) {
        std::string data;
        if (!AppendDataReference(&data, includeName, commonScenePath)) return false;
        if (!IsInPlace()) text += std::exchange(data, std::string());
        references = InDataBox([this, &data] { return data + GetStrPovCopyLoopRef(); });
    }
    FilterCtrl_cls& objects = mFilters.GetObject();
    objects.AppendPovInclude(&text, mText);
    text += references;
    if (objects.IsObjectExist()) {
        text += InDataBox([this] { return GetStrPovCopyLoopRefObject(); });
        if (mText.GetOptions().mbLikeView) text += objects.GetStrPovRealGrids(mTime, mText);
    }
    return WriteScene(povPath, text);
}
