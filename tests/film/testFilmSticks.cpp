// Films with filters, by closed forms: who is in a region and where a box and copies put it, how much fog is
// in front of it, which pixel a shape covers, which bond a frame and a copy show, and that a slice of a film
// is that of the whole one.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>

#include <gtest/gtest.h>
#include <wx/image.h>

#include "FILTER/clsFilterBoolean.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFiltering.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "COLORCURVE/clsColorCurve.h"
#include "PARAM/clsParameters.h"
#include "RunFilm.h"

namespace {

namespace fs = std::filesystem;
using Place = std::array<float, 3>;

constexpr int kW = 160, kH = 120;
constexpr double kWidth = 8.0; ///< of what the pictures show, in units of the data

/// Seen along the z axis, parallel, in units of the data, with particles of a pixel.
const char* const kLooks = "LoaderTranslate=0 0 0\nLoaderScale=1\nPanel0DisplayMode=6\nPanel0GLGeometry=1\n"
                           "Panel0GLOrthoScale=8\nPanel0ShowMessage=0\nSEQ0TYPE0PointSize=1\n"
                           "SEQ0TYPE0BlendType=0\nOverLayShowLegend=0 0 0 0\n";

class FilmSticks : public ::testing::Test {
protected:
    FilmSticks() : mbUndo(std::exchange(Parameters_cls::msbUndoCommandMake, false)) {}
    ~FilmSticks() override { Parameters_cls::msbUndoCommandMake = mbUndo; }

    template <class FILTER>
    FILTER& Add(int type) {
        FilterCtrl_cls& list = mLists.Get(GetFilterKind(type).mList);
        auto& filter = static_cast<FILTER&>(*list.AddFilter(type));
        filter.GetPCData()->InitNew();
        return filter;
    }
    static void Set(ParamGroup_cls* pGroup, const std::array<double, 3>& values) {
        pGroup->SetKeyFrame(values.data(), true, 0.0);
    }
    FilterStickData_cls& AddSticks(float a) {
        FilterStickData_cls& data = *Add<FilterStick_cls>(FILTER_STICK).GetPCData();
        data.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
        data.mCCritA.mValue = a;
        data.mCStickWidth.mValue = 5;
        return data;
    }
    /// The next snapshot of the film.
    void Write(const std::vector<Place>& places) {
        char name[16];
        std::snprintf(name, sizeof name, "d%04d.bin", mSnapshots);
        std::ofstream file(mFolder / name, std::ios::binary);
        const auto put = [&file](const auto& value) {
            file.write(reinterpret_cast<const char*>(&value), sizeof value);
        };
        put(float(mSnapshots++));
        put(int(places.size()));
        for (size_t i = 0; i < places.size(); ++i) {
            const float head[7] = {places[i][0], places[i][1], places[i][2], 0, 0, 0, 1};
            put(head);
            put(int(i));
            put(0);
            put(0.0f);
        }
    }
    /// Two particles, so far apart along x.
    void WriteApart(const std::vector<float>& distances) {
        for (const float d : distances)
            Write({{-d / 2, 0, 0}, {d / 2, 0, 0}});
    }
    ChildRun_st Film(const std::string& out, const std::string& lines, std::vector<std::string> words = {},
                     int status = 0) {
        fs::create_directories(mFolder.mPath / out);
        const std::string project = mFolder.MakeProject(
            "film.mrp", kLooks + mLists.Serialize().ToStdString() + lines, mFolder / "d0000.bin");
        words.insert(words.end(), {"--output", mFolder / (out + "/f%04d.png"), project});
        ChildRun_st run = RunFilm(words);
        EXPECT_EQ(run.mStatus, status) << run.mErr;
        return run;
    }
    /// Of a picture at this place, all channels together.
    int Light(const std::string& picture, double x, double y) {
        if (mName != picture) mImage.LoadFile(wxString(mFolder / picture));
        mName = picture;
        const int px = int(kW / 2.0 + x * kW / kWidth), py = int(kH / 2.0 - y * kW / kWidth);
        return mImage.GetRed(px, py) + mImage.GetGreen(px, py) + mImage.GetBlue(px, py);
    }
    bool IsLit(const std::string& picture, double x, double y) { return Light(picture, x, y) > 60; }
    /// B where a frame's picture has light in the middle.
    std::string Middles(const std::string& folder) {
        std::string seen;
        for (const auto& [name, bytes] : mFolder.ReadAll(folder))
            seen += IsLit(folder + "/" + name, 0.0, 0.0) ? 'B' : '.';
        return seen;
    }

    FilmFolder_cls mFolder;
    FilterLists_cls mLists;
    int mSnapshots = 0;

private:
    bool mbUndo;
    wxString mName;
    wxImage mImage;
};

TEST_F(FilmSticks, KeptBondsAreThoseOfTheWholeFilmInEachSlice) {
    WriteApart({1.6f, 0.9f, 1.1f, 1.4f, 1.6f, 1.1f, 0.9f});
    const std::string length = "TimeMaxFrame=6\nTimeWorkAreaMax=6\n";
    FilterStickData_cls& sticks = AddSticks(1.0f);
    Film("plain", length);
    EXPECT_EQ(Middles("plain"), ".B....B");
    sticks.mCKeepUntil.mValue = 1.5f;
    Film("whole", length);
    EXPECT_EQ(Middles("whole"), ".BBB..B");
    for (const char* part : {"4-6", "3", "0-2"})
        Film("slices", length, {"--frames", part});
    EXPECT_TRUE(mFolder.ReadAll("slices") == mFolder.ReadAll("whole"));
    // Work areas begin anew, and steps between frames have the bonds of the frame before.
    Film("late", length + "TimeWorkAreaMin=2\n");
    EXPECT_EQ(Middles("late"), "....B");
    const std::string steps = length + "TimeAnimInterp=4\nInterpolateType=0\n";
    Film("steps", steps);
    EXPECT_EQ(Middles("steps").substr(0, 14), "....BBBBBBBBBB");
    for (const char* part : {"3-6", "0-2"})
        Film("parts", steps, {"--frames", part});
    EXPECT_TRUE(mFolder.ReadAll("parts") == mFolder.ReadAll("steps"));
    // Every file is looked at, also where nothing of it is drawn: a missing one changes nothing.
    fs::remove(mFolder.mPath / "d0002.bin");
    Film("gap", length, {"--frames", "3"});
    EXPECT_EQ(Middles("gap"), "B");
}

TEST_F(FilmSticks, AFrameWithoutParticlesHasNoBonds) {
    WriteApart({0.9f});
    Write({});
    WriteApart({0.9f});
    AddSticks(1.0f);
    Film("gap", "TimeMaxFrame=2\nTimeWorkAreaMax=2\n");
    EXPECT_EQ(Middles("gap"), "B.B");
}

TEST_F(FilmSticks, BondsAcrossFacesJoinTheCopies) {
    Write({{-0.9f, 1, 0}, {0.9f, 1, 0}, {0, -0.9f, 0}});
    FilterStickData_cls& sticks = AddSticks(0.5f);
    auto& copies = *Add<FilterCopy_cls>(FILTER_COPY).GetPCData();
    copies.mCMin[0].mValue = -1;
    copies.mCMax[0].mValue = 2; // three along x
    const std::string box =
        "TimeMaxFrame=0\nTimeWorkAreaMax=0\nPeriodicType=2\nPeriodicSize=1 1 1\n"
        "PeriodicBaseVector0=2 0 0\nPeriodicBaseVector1=0 2 0\nPeriodicBaseVector2=0 0 9\n";
    Film("plain", box);
    for (const double x : {-3.0, -1.0, 1.0, 3.0})
        EXPECT_FALSE(IsLit("plain/f0000.png", x, 1.0)) << x;
    sticks.mCAcross.mValue = true;
    Film("joined", box);
    // From each copy into the next; the last one along x has none.
    for (const double x : {-3.0, -1.0, 1.0, 3.0})
        EXPECT_EQ(IsLit("joined/f0000.png", x, 1.0), std::abs(x) == 1.0) << x;
}

TEST_F(FilmSticks, ShapesCoverTheirUnitsAndMeshesStandInEachCopy) {
    Write({{50, 50, 0}});
    const std::string box =
        "TimeMaxFrame=0\nTimeWorkAreaMax=0\nPeriodicSize=1 1 1\nPeriodicBaseVector0=4 0 0\n";
    FilterObjectData_cls& shape = *Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    Set(shape.mpCTranslate, {-1, 1, 0});
    Set(shape.mpCScale, {2, 1, 1});
    FilterObjectData_cls& mesh = *Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    mesh.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
    mesh.mCImportPath.mStrValue = mFolder / "triangle%02d.obj";
    std::ofstream(mFolder / "triangle00.obj") << "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
    Set(mesh.mpCTranslate, {-1, -1.5, 0});
    Add<FilterCopy_cls>(FILTER_COPY).GetPCData()->mCMax[0].mValue = 2;
    struct Shape_st {
        unsigned mType;
        bool mbCorners;
    };
    for (const Shape_st& kind :
         {Shape_st{FilterObjectData_cls::BOX, true}, Shape_st{FilterObjectData_cls::PLANE, true},
          Shape_st{FilterObjectData_cls::SPHERE, false}}) {
        SCOPED_TRACE(kind.mType);
        shape.mCObjectType.mValue = kind.mType;
        const std::string name = "shape" + std::to_string(kind.mType);
        Film(name, box);
        const std::string picture = name + "/f0000.png";
        EXPECT_TRUE(IsLit(picture, -1, 1));
        EXPECT_TRUE(IsLit(picture, -1.9, 1));
        EXPECT_TRUE(IsLit(picture, -1, 1.4));
        EXPECT_EQ(IsLit(picture, -1.9, 1.4), kind.mbCorners);
        EXPECT_FALSE(IsLit(picture, -2.1, 1));
        EXPECT_FALSE(IsLit(picture, -1, 1.6));
        EXPECT_FALSE(IsLit(picture, 3, 1)) << "shapes stand once";
        for (const double copy : {0.0, 4.0}) {
            EXPECT_TRUE(IsLit(picture, copy - 0.8, -1.3));
            EXPECT_FALSE(IsLit(picture, copy - 0.3, -0.8));
        }
    }
}

TEST_F(FilmSticks, ParticlesAreCutPickedPlacedCopiedAndFogged) {
    std::vector<Place> places;
    for (int x = -3; x <= 2; ++x)
        places.push_back({float(x), 0, 0});
    Write(places);
    FilterBooleanData_cls& cut = *Add<FilterBoolean_cls>(FILTER_BOOLEAN).GetPCData();
    cut.mCBorderFactor.mValue = 0.0f;
    Set(cut.mpCScale, {5, 2, 2});
    FilterFilteringData_cls& pick = *Add<FilterFiltering_cls>(FILTER_FILTERING).GetPCData();
    pick.mCFilteringType.mValue = FilterFilteringData_cls::HIDE;
    pick.mCFilteringString.mStrValue = "3";
    Set(Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData()->mpCTranslate, {0.5, -1, 0});
    Add<FilterCopy_cls>(FILTER_COPY).GetPCData()->mCMax[1].mValue = 2;
    const std::string looks = "TimeMaxFrame=0\nTimeWorkAreaMax=0\nSEQ0TYPE0PointSize=5\n";
    Film("placed", looks + "PeriodicSize=1 1 1\nPeriodicBaseVector1=0 2 0\n");
    for (const double y : {-1.0, 1.0})
        for (int x = -3; x <= 2; ++x)
            EXPECT_EQ(IsLit("placed/f0000.png", x + 0.5, y), x != -3 && x != 0) << x << " " << y;
    EXPECT_FALSE(IsLit("placed/f0000.png", 1.0, 0.0));
    for (FilterData_cls* data : {static_cast<FilterData_cls*>(&cut), static_cast<FilterData_cls*>(&pick)})
        data->mCValid.mValue = false;
    // Steps of fifty away from the eye: each is as much darker.
    mLists.ClearFilters();
    mSnapshots = 0;
    Write({{-2, 0, -100}, {0, 0, -50}, {2, 0, 0}});
    FilterFogData_cls& fog = *Add<FilterFog_cls>(FILTER_FOG).GetPCData();
    const double density[2] = {0.02, 1.0};
    fog.mpCFogParam->SetKeyFrame(density, true, 0.0);
    std::fill_n(fog.mpCColor->mConstantColor.mValue, 3, 0.0f);
    Film("fog", looks);
    std::array<double, 3> light{};
    for (int k = 0; k < 3; ++k)
        light[size_t(k)] = Light("fog/f0000.png", 2.0 * k - 2.0, 0.0);
    EXPECT_NEAR(light[0] / light[1], std::exp(-1.0), 0.03);
    EXPECT_NEAR(light[1] / light[2], std::exp(-1.0), 0.03);
    // A flat grid of two by two.
    mLists.ClearFilters();
    FilterGridData_cls& grid = *Add<FilterGrid_cls>(FILTER_GRID).GetPCData();
    grid.mCGridLineNum.mValue = 2;
    grid.mCGridCoord.mValue = false;
    std::fill_n(grid.mpCColor->mConstantColor.mValue, 4, 1.0f);
    Film("grid", looks);
    const auto isLine = [this](double x, double y) {
        bool bLit = false;
        for (const double pixels : {-0.05, 0.0, 0.05})
            bLit = bLit || IsLit("grid/f0000.png", x + pixels, y + pixels);
        return bLit;
    };
    for (const double across : {-1.0, 0.0, 1.0})
        EXPECT_TRUE(isLine(0.6, across) && isLine(across, 0.6)) << across;
    EXPECT_FALSE(isLine(0.5, 0.5));
    EXPECT_FALSE(isLine(1.5, 1.0));
}

// A box that turns, copies, steps of a blur and a clear background at once.
TEST_F(FilmSticks, ParticlesByTheProcessorAreThoseOfOpenGL) {
    for (const float shift : {0.0f, 0.6f}) {
        std::vector<Place> places;
        for (int i = 0; i < 40; ++i)
            places.push_back({float(i % 8) - 3.5f + shift, float(i / 8) - 3.5f, 0.3f * float(i % 5)});
        Write(places);
    }
    FilterDataBoxData_cls& box = *Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
    Set(box.mpCRotate, {0, 0, 20});
    Set(box.mpCScale, {0.8, 0.8, 0.8});
    Add<FilterCopy_cls>(FILTER_COPY).GetPCData()->mCMax[1].mValue = 2;
    const std::string lines =
        "TimeMaxFrame=1\nTimeWorkAreaMax=1\nTimeAnimInterp=2\nTimeUseMotionBlur=1\nImgSequenceBlurLength=1\n"
        "ImgSequenceBlurSteps=2\nPeriodicSize=1 1 1\nPeriodicBaseVector1=0 4.5 0\nClassify=0\n"
        "SEQ0TYPE0RadiusType=1\nSEQ0TYPE0RadiusFactorForConst=0.35\nSEQ0TYPE0AlphaFactro=1\n"
        "SEQ0TYPE0DrawQuality=3\n";
    for (const char* kind : {"0\nSEQ0TYPE0PointSize=9\n", "1\nSEQ0TYPE0DrawQuality=0\n", "2\n"}) {
        wxImage images[2];
        for (int way = 0; way < 2; ++way) {
            const std::string name = way == 0 ? "gl" : "cpu";
            const ChildRun_st run = Film(name, lines + "SEQ0TYPE0DrawType=" + kind,
                                         {"--transparent", "--frames", "0", "--draw", name});
            EXPECT_NE(run.mOut.find(way == 0 ? "OpenGL" : "processor"), std::string::npos) << run.mOut;
            ASSERT_TRUE(images[way].LoadFile(wxString(mFolder / (name + "/f0000.png"))));
            ASSERT_TRUE(images[way].HasAlpha());
        }
        double sum = 0.0;
        int half = 0, clear = 0, far = 0;
        for (int i = 0; i < kW * kH; ++i) {
            const int alpha = images[0].GetAlpha()[i];
            half += alpha > 20 && alpha < 235;
            clear += alpha == 0;
            int most = std::abs(alpha - images[1].GetAlpha()[i]);
            for (int k = 0; k < 3; ++k)
                most =
                    std::max(most, std::abs(images[0].GetData()[3 * i + k] - images[1].GetData()[3 * i + k]) *
                                       alpha / 255);
            sum += most;
            far += most > 3;
        }
        EXPECT_LE(sum / (kW * kH), 0.3) << kind;
        EXPECT_LE(far, kW * kH / 500) << kind;
        EXPECT_GT(half, 200) << kind << ": no blur";
        EXPECT_GT(clear, 1000) << kind;
    }
}

TEST_F(FilmSticks, AFrameHasItsOwnFilesAndMissingOnesCount) {
    WriteApart({1, 1, 1});
    const std::string length = "TimeMaxFrame=2\nTimeWorkAreaMax=2\n";
    FilterStickData_cls& sticks = AddSticks(0.0f);
    sticks.mCCalcType.mValue = FilterStickData_cls::LOAD_FILE;
    sticks.mCStickPath.mStrValue = mFolder / "sticks%d.txt";
    for (const int frame : {0, 1, 2})
        std::ofstream(mFolder / ("sticks" + std::to_string(frame) + ".txt"))
            << (frame == 1 ? "0 1\n" : "0 0\n");
    Film("own", length);
    EXPECT_EQ(Middles("own"), ".B.");
    FilterObjectData_cls& mesh = *Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    mesh.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
    mesh.mCImportPath.mStrValue = mFolder / "mesh%d.obj";
    for (const char* name : {"mesh0.obj", "mesh2.obj"})
        std::ofstream(mFolder / name) << "v -1 -1 0\nv 1 -1 0\nv 0 1 0\nf 1 2 3\n";
    fs::remove(mFolder.mPath / "sticks2.txt");
    // Told, written all the same, and no success.
    const ChildRun_st run = Film("some", length, {}, 3);
    EXPECT_NE(run.mErr.find("mesh1.obj"), std::string::npos) << run.mErr;
    EXPECT_NE(run.mErr.find("sticks2.txt"), std::string::npos) << run.mErr;
    EXPECT_NE(run.mErr.find("damaged data are in frames 1, 2;"), std::string::npos) << run.mErr;
    EXPECT_EQ(Middles("some"), "BBB");
    Film("ok", length, {"--damaged", "ok"});
    mesh.mCValid.mValue = sticks.mCValid.mValue = false;
    Film("off", length);
}

} // namespace
