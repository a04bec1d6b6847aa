// Objects and sticks of filters in a view: where they stand, in which copies, and files that aren't there.
#include <cmath>
#include <fstream>

#include "APP/clsMain.h"
#include "COLORCURVE/clsColorCurve.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "PictureTest.h"

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

} // namespace
