// Objects and sticks of filters in a view: where they stand, in which copies, and files that aren't there.
#include <cmath>
#include <fstream>
#include <limits>
#include <utility>

#include <wx/filefn.h>
#include <wx/image.h>
#include <wx/statusbr.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/Globals.h"
#include "COMMON/UpdateBits.h"
#include "FILTER/clsBondFollower.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "IMAGE/clsImageIO.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "PictureTest.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kSide = 400;

class ObjectsSticks : public PictureTest {
protected:
    void SetUp() override {
        PictureTest::SetUp();
        mTell = Hub()->mpCFilters->mHooks.mTell;
        Hub()->mpCFilters->mHooks.mTell = [this](const wxString& text) { mTold += text + "\n"; };
        ShowParticles({{10, -1, 0}, {10, 1, 0}, {10, 1, 2.2}}, 1);
        ASSERT_TRUE(SizeView(kSide, kSide));
        LookAlongX();
    }
    void TearDown() override {
        Hub()->ClearFilters();
        Hub()->mpCFilters->mHooks.mTell = mTell;
        Hub()->mpCPeriodicBoundary->SetToDefault();
        PictureTest::TearDown();
    }
    template <class FILTER>
    static FILTER& Add(FilterType type) {
        FilterCtrl_cls& list = Hub()->mpCFilters->Get(GetFilterKind(type).mList);
        list.AddFilterCommand(type);
        return static_cast<FILTER&>(*list.GetPCFilter(list.GetCount() - 1));
    }
    static void Place(FilterData_cls& data, const Point& place, const Point& scale) {
        data.mpCTranslate->SetKeyFrame(place.data(), true, 0.0);
        data.mpCScale->SetKeyFrame(scale.data(), true, 0.0);
    }
    /// Is there light within two pixels of a point of the scene, which lies before the eye?
    static bool IsLit(const Picture_st& picture, const Point& p) {
        const double scale = kSide / 2.0 / std::tan(35.0 / 2.0 * M_PI / 180.0);
        const int x = int(kSide / 2.0 - scale * p[1] / p[0]), y = int(kSide / 2.0 - scale * p[2] / p[0]);
        for (int dy = -2; dy <= 2; ++dy)
            for (int dx = -2; dx <= 2; ++dx)
                for (int c = 0; c < 3; ++c)
                    if (Channel(picture, x + dx, y + dy, c) > 20) return true;
        return false;
    }
    static Picture_st Look() {
        Repaint();
        return Grab(0);
    }
    std::string Write(const std::string& name, const std::string& text) {
        std::ofstream(mDir / name) << text;
        return mDir / name;
    }
    /// Cells of 5 along y, copies 0 and 1.
    static void CopyAlongY() {
        PeriodicBoundary_cls& box = *Hub()->mpCPeriodicBoundary;
        box.mCPeriodicSize.mValue[1] = 1.0f;
        const float vector[3] = {0, 1.4f, 0};
        std::copy_n(vector, 3, box.mCPeriodicBaseVector0.mValue);
        Add<FilterCopy_cls>(FILTER_COPY).GetPCData()->mCMax[0].mValue = 2;
    }

    std::function<void(const wxString&)> mTell;
    wxString mTold;
};

TEST_F(ObjectsSticks, ShapesFillTheirUnitBoxes) {
    FilterObjectData_cls& data = *Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    Place(data, {12, 0, -1}, {1, 1.5, 1});
    for (const unsigned type : {FilterObjectData_cls::BOX, FilterObjectData_cls::SPHERE}) {
        for (const unsigned shader : {0u, 1u, 2u, 3u}) {
            SCOPED_TRACE(testing::Message() << type << " " << shader);
            data.mCObjectType.mValue = type;
            data.mCTexture.mCShaderType.mValue = shader;
            const Picture_st picture = Look();
            EXPECT_TRUE(IsLit(picture, {12, 0, -1}));
            EXPECT_TRUE(IsLit(picture, {12, 0.65, -1}));
            EXPECT_TRUE(IsLit(picture, {12, -0.65, -1}));
            EXPECT_FALSE(IsLit(picture, {12, 0.95, -1}));
            EXPECT_FALSE(IsLit(picture, {12, 0, -1.7}));
            // Only a box has corners.
            EXPECT_EQ(IsLit(picture, {12, 0.68, -1.43}), type == FilterObjectData_cls::BOX);
        }
    }
    data.mCValid.mValue = false;
    EXPECT_FALSE(IsLit(Look(), {12, 0, -1}));
}

TEST_F(ObjectsSticks, MeshesStandInEachCopyAndShapesOnce) {
    FilterObjectData_cls& box = *Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    Place(box, {12, -1, -1.5}, {0.3, 0.3, 0.3});
    FilterObjectData_cls& mesh = *Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    Place(mesh, {12, -1, 1}, {1, 1, 1});
    mesh.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
    Write("plate0000.obj", "v 0 -0.3 -0.3\nv 0 0.3 -0.3\nv 0 0.3 0.3\nv 0 -0.3 0.3\nf 1 4 3 2\n");
    mesh.mCImportPath.mStrValue = mDir / "plate%04d.obj";
    Picture_st picture = Look();
    EXPECT_TRUE(IsLit(picture, {12, -1, 1}));
    EXPECT_FALSE(IsLit(picture, {12, 0.4, 1}));
    CopyAlongY();
    picture = Look();
    EXPECT_TRUE(IsLit(picture, {12, -1, 1}));
    EXPECT_TRUE(IsLit(picture, {12, 0.4, 1}));
    EXPECT_TRUE(IsLit(picture, {12, -1, -1.5}));
    EXPECT_FALSE(IsLit(picture, {12, 0.4, -1.5}));
    // Its matrix stretches the mesh and leaves the box alone.
    mesh.mCArrayVector[2].mValue[2] = box.mCArrayVector[2].mValue[2] = 3.0f;
    picture = Look();
    EXPECT_TRUE(IsLit(picture, {12, -1, 1.8}));
    EXPECT_FALSE(IsLit(picture, {12, -1, -1.9}));
    EXPECT_TRUE(mTold.empty()) << mTold;
    mesh.mCImportPath.mStrValue = mDir / "nothing%n%s.obj";
    EXPECT_FALSE(IsLit(Look(), {12, -1, 1}));
    Look();
    EXPECT_EQ(mTold.Freq('\n'), 1) << mTold;
}

TEST_F(ObjectsSticks, SticksJoinThePairsOfTheirRule) {
    FilterStickData_cls& data = *Add<FilterStick_cls>(FILTER_STICK).GetPCData();
    data.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
    for (const unsigned type : {FilterStickData_cls::LINE, FilterStickData_cls::CYLINDER}) {
        SCOPED_TRACE(type);
        data.mCStickType.mValue = type;
        data.mCStickRadius.mValue = 0.2f;
        data.mCCritA.mValue = 2.1f;
        Picture_st picture = Look();
        EXPECT_TRUE(IsLit(picture, {10, 0.3, 0}));
        EXPECT_FALSE(IsLit(picture, {10, 1, 1.1}));
        data.mCCritA.mValue = 1.9f;
        EXPECT_FALSE(IsLit(Look(), {10, 0.3, 0}));
        data.mCCritA.mValue = 2.1f;
        data.mCValid.mValue = false;
        EXPECT_FALSE(IsLit(Look(), {10, 0.3, 0}));
        data.mCValid.mValue = true;
    }
}

TEST_F(ObjectsSticks, SticksFromFilesCrossToTheNextCopy) {
    FilterStickData_cls& data = *Add<FilterStick_cls>(FILTER_STICK).GetPCData();
    data.mCStickPath.mStrValue = Write("bonds.txt", "0 2 1 1.0\n");
    // Without a neighbour the stick that leaves isn't drawn.
    EXPECT_FALSE(IsLit(Look(), {10, 0.7, 1.1}));
    CopyAlongY();
    Picture_st picture = Look();
    // From (-1, 0) of copy 0 to (1, 2.2) of copy 1, which is 1.4 farther along y; not from copy 1.
    EXPECT_TRUE(IsLit(picture, {10, 0.7, 1.1}));
    EXPECT_FALSE(IsLit(picture, {10, 2.1, 1.1}));
    data.mCStickPath.mStrValue = Write("other.txt", "0 99\n");
    EXPECT_FALSE(IsLit(Look(), {10, 0.7, 1.1}));
    data.mCStickPath.mStrValue = mDir / "gone.bond";
    Look();
    EXPECT_TRUE(mTold.Contains("gone.bond")) << mTold;
}

TEST_F(ObjectsSticks, OddNumbersHarmNothing) {
    FilterObjectData_cls& object = *Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    FilterStickData_cls& sticks = *Add<FilterStick_cls>(FILTER_STICK).GetPCData();
    sticks.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    for (const double scale : {0.0, -1.0, 1e300, -1e300, 1e-300})
        for (const unsigned type : {0u, 1u, 2u, 3u, 4u, 4000000000u}) {
            Place(object, {12, 0, -1}, {scale, 1, 1});
            object.mCObjectType.mValue = type;
            object.mCTexture.mCShaderType.mValue = type;
            EXPECT_TRUE(IsLit(Look(), {10, -1, 0})) << "the particles stay " << type << " " << scale;
        }
    object.mCValid.mValue = false;
    for (const float number : {0.0f, -2.1f, nan, inf, -inf, 1e38f})
        for (const unsigned type : {0u, 1u, 7u}) {
            SCOPED_TRACE(testing::Message() << number << " " << type);
            sticks.mCStickType.mValue = type;
            sticks.mCStickRadius.mValue = number;
            sticks.mCStickWidth.mValue = number > 0 ? 1000000 : -5;
            for (const unsigned crit : {0u, 1u, 2u, 9u}) {
                sticks.mCCritType.mValue = crit;
                sticks.mCCritA.mValue = 1.0f;
                sticks.mCCritB.mValue = sticks.mCKeepUntil.mValue = number;
                EXPECT_TRUE(Look().mW > 0);
                std::swap(sticks.mCCritA.mValue, sticks.mCCritB.mValue);
                EXPECT_TRUE(Look().mW > 0);
            }
        }
    sticks.mCStickType.mValue = 0;
    sticks.mCStickWidth.mValue = 5;
    sticks.mCCritType.mValue = 0;
    sticks.mCCritA.mValue = -2.1f; // of squares the sign is lost
    EXPECT_TRUE(IsLit(Look(), {10, 0.3, 0}));
}

/// Snapshots of two particles beside each other, all but the first one, which ShowParticles writes.
void WriteFrames(const std::string& folder, int number, const std::function<float(int)>& getDistance) {
    for (int k = 1; k < number; ++k) {
        char name[32];
        std::snprintf(name, sizeof name, "/dots%04d.bin", k);
        std::ofstream file(folder + name, std::ios::binary);
        const auto put = [&file](const auto& value) {
            file.write(reinterpret_cast<const char*>(&value), sizeof value);
        };
        put(float(k));
        put(2);
        for (const int side : {-1, 1}) {
            const float head[7] = {10, float(side) * getDistance(k) / 2.0f, 0, 0, 0, 0, 1};
            put(head);
            put(side);
            put(0);
            put(0.0f);
        }
    }
}

TEST_F(ObjectsSticks, KeptBondsComeAfterAJumpAndAbortStopsThem) {
    constexpr int kFrames = 400;
    // Near in frame 1 alone, and kept from then on.
    WriteFrames(mDir.mPath.string(), kFrames, [](int k) { return k == 1 ? 0.9f : 1.2f; });
    ShowParticles({{10, -0.6, 0}, {10, 0.6, 0}}, 1);
    LookAlongX();
    FilterStickData_cls& data = *Add<FilterStick_cls>(FILTER_STICK).GetPCData();
    data.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
    data.mCCritA.mValue = 1.0f;
    TimeCtrl_cls& time = *Hub()->mpCTimeCtrl;
    const auto goTo = [&time](int frame) {
        time.SetFrameNative(frame, UPDATE_TL | UPDATE_GL);
        Frame()->RefreshGL();
    };
    const auto isBound = [] { return IsLit(Grab(0), {10, 0, 0}); };
    goTo(kFrames - 2);
    EXPECT_TRUE(Settle());
    EXPECT_FALSE(isBound());
    data.mCKeepUntil.mValue = 1.5f;
    Repaint();
    const BondFollower_cls& bonds = *Hub()->mpCFilters->mpCBonds;
    EXPECT_TRUE(PumpUntil([&] { return bonds.GetStatus().StartsWith("Following bonds: frame"); }));
    EXPECT_TRUE(PumpUntil([&] { return bonds.GetStatus().empty() && isBound(); }));
    EXPECT_LT(Hub()->mpCPDataSeqCtrl->GetLoadedFrameNumber(), kFrames / 2) << "read beside the store";
    // A step on is at once.
    goTo(kFrames - 1);
    EXPECT_TRUE(Settle());
    EXPECT_TRUE(isBound());
    goTo(0);
    EXPECT_TRUE(Settle());
    EXPECT_FALSE(isBound());

    data.mCCritA.mValue = 1.01f; // all anew
    goTo(kFrames - 1);
    EXPECT_TRUE(PumpUntil([&] { return !bonds.GetStatus().empty(); }));
    GbAbort = true;
    EXPECT_TRUE(PumpUntil([&] { return bonds.GetStatus().EndsWith("stopped"); }));
    EXPECT_TRUE(Settle());
    EXPECT_EQ(Frame()->GetStatusBar()->GetStatusText(0), bonds.GetStatus());
    EXPECT_FALSE(isBound());
    goTo(5);
    EXPECT_TRUE(PumpUntil([&] { return bonds.GetStatus().empty() && isBound(); }));
}

TEST_F(ObjectsSticks, PicturesThatAreWrittenWaitForTheirBonds) {
    WriteFrames(mDir.mPath.string(), 100, [](int k) { return k == 1 ? 0.9f : 1.2f; });
    ShowParticles({{10, -0.6, 0}, {10, 0.6, 0}}, 1);
    LookAlongX();
    FilterStickData_cls& data = *Add<FilterStick_cls>(FILTER_STICK).GetPCData();
    data.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
    data.mCKeepUntil.mValue = 1.5f;
    Hub()->mpCTimeCtrl->SetFrameNative(99, UPDATE_TL | UPDATE_GL);
    const std::string path = mDir / "kept.png";
    Canvas(0)->RequestImage(
        [&path](const ImageBuffers_st& buffers, wxSize size) {
            GCImgIO.SaveImageFromTexture(buffers, size.x, size.y, path);
        },
        wxSize(101, 101));
    Frame()->RefreshGL();
    EXPECT_TRUE(PumpUntil([&path] { return wxFileExists(path); }));
    GCImgIO.Finish();
    const wxImage image(path);
    ASSERT_TRUE(image.IsOk());
    EXPECT_GT(image.GetRed(50, 50), 60);
}

} // namespace
