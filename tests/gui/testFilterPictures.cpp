// Where copies and the data box put the particles of a view, what films make of filters, and who else knows
// of them: messages, fits of views, the Info page, exports.
#include <cmath>
#include <ctime>
#include <fstream>
#include <functional>
#include <thread>
#include <utility>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsShortcut.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/clsUpdateStatusBar.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "FilterPictures.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewFitCtrl.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "PictureTest.h"
#include "RunFilm.h"
#include "TIME/clsTimeCtrl.h"

namespace {

const int kCores = std::max(1, int(std::thread::hardware_concurrency())); // OpenGL may work on all of them

class FilterPictures : public PictureTest {
protected:
    using Values = FilterScope_cls::Values;

    void SetUp() override {
        PictureTest::SetUp();
        mLooks = Drawing().Serialize();
        ASSERT_TRUE(SizeView(480, 400));
    }
    void TearDown() override {
        Hub()->mpCFilters->ClearFilters();
        Hub()->mpCPeriodicBoundary->SetToDefault();
        Hub()->mpCDrawOption->mClassify.mValue = 1;
        Canvas(0)->mShowItems.mValue = Canvas(0)->mShowMessage.mValue = false;
        std::wistringstream lines(mLooks.ToStdWstring());
        for (std::wstring line; std::getline(lines, line);)
            Drawing().ReadStrLine(lines, line);
        PictureTest::TearDown();
    }
    static GLSequence_cls& Drawing() {
        return GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence());
    }
    void Show(const std::vector<Point>& points) {
        ShowParticles(points, 5);
        LookAlongX();
        Repaint();
    }
    FilterCopyData_cls& AddCopies(std::array<int, 3> from, std::array<int, 3> to) {
        FilterCopyData_cls& data = *mFilters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData();
        for (size_t k = 0; k < 3; ++k) {
            data.mCMin[k].mValue = from[k];
            data.mCMax[k].mValue = to[k];
        }
        return data;
    }
    FilterDataBoxData_cls& AddBox(const Values& t, const Values& r, const Values& s, const Values& a) {
        FilterDataBoxData_cls& box = *mFilters.Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
        mFilters.Set(box.mpCTranslate, t);
        mFilters.Set(box.mpCRotate, r);
        mFilters.Set(box.mpCScale, s);
        mFilters.Set(box.mpCAnchor.get(), a);
        return box;
    }
    /// Dots at these places and nothing else.
    void ExpectDots(const std::vector<Point>& places) {
        Repaint();
        const Picture_st picture = Grab(0);
        int near = 0;
        for (const Point& place : places) {
            const double at[3] = {place[0], place[1], place[2]};
            double x = 0, y = 0;
            ASSERT_TRUE(ProjectToWindow(0, at, &x, &y));
            const auto light = LightNear(picture, x, y, 8);
            EXPECT_NEAR(light[0], x, 1.5) << place[0] << " " << place[1] << " " << place[2];
            EXPECT_NEAR(light[1], y, 1.5);
            for (int py = int(y) - 8; py <= int(y) + 8; ++py)
                for (int px = int(x) - 8; px <= int(x) + 8; ++px)
                    near += picture.Brightness(px, py) > 40;
        }
        EXPECT_EQ(picture.CountLit(40), near) << "elsewhere is nothing";
    }
    /// Turned by the z axis, then about an anchor, moved, and all that scaled.
    static Point Boxed(const Point& p, const Values& t, double degrees, const Values& s, const Values& a) {
        const double c = std::cos(degrees * M_PI / 180), n = std::sin(degrees * M_PI / 180);
        const double x = p[0] - a[0], y = p[1] - a[1];
        return {s[0] * (c * x - n * y + a[0] + t[0]), s[1] * (n * x + c * y + a[1] + t[1]),
                s[2] * (p[2] + t[2])};
    }
    void SetAttribute(unsigned drawType, unsigned quality, float radius) {
        GLAttribute_cls& attribute =
            *GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()).mpCGLAttribute[0];
        attribute.mDrawType.mValue = drawType;
        attribute.mDrawQuality.mValue = quality;
        attribute.mRadiusType.mValue = 1;
        attribute.mRadiusFactorForConst.mValue = radius;
        std::fill_n(attribute.mAmbient.mConstantColor.mValue, 4, 1.0f); // bright all over
    }

    /// Paints until the window breathes for the third time, does that, and keeps the abort button pressed.
    struct Aborted_st {
        double mWork = 0.0;   ///< processor time from there to the end, seconds
        double mBreath = 0.0; ///< the longest between two breaths before
    };
    static Aborted_st AbortAPaint(const std::function<void()>& act = {}) {
        Aborted_st result;
        int breaths = 0;
        std::clock_t last = std::clock();
        const auto connected = UpdateStatusBar_cls::Connect([&] {
            if (++breaths > 3) return GbAbort.store(true);
            const std::clock_t now = std::clock();
            result.mBreath = std::max(result.mBreath, double(now - last) / CLOCKS_PER_SEC);
            last = now;
            if (breaths < 3) return;
            if (act) act();
            GbAbort.store(true);
        });
        Repaint();
        UpdateStatusBar_cls::Connect(connected);
        result.mWork = double(std::clock() - last) / CLOCKS_PER_SEC;
        EXPECT_GE(breaths, 3) << "the paint was too short to be stopped";
        GbAbort.store(false);
        return result;
    }
    static void ExpectSoon(const Aborted_st& aborted) {
        std::printf("aborted: %.3f s of work, breaths every %.3f s of it\n", aborted.mWork, aborted.mBreath);
        // Waiting for others on the machine is no work; OpenGL may do it on all cores.
        EXPECT_LT(aborted.mWork, 0.5 * kCores);
        EXPECT_LT(aborted.mBreath, 0.5 * kCores);
    }

    FilterScope_cls mFilters{*Hub()->mpCFilters};
    wxString mLooks;
};

TEST_F(FilterPictures, CopiesStandInTheirCells) {
    Show({{20, 1, -1}});
    Hub()->mpCPeriodicBoundary->ReadStrLine("PeriodicBaseVector1=0 3 0");
    Hub()->mpCPeriodicBoundary->ReadStrLine("PeriodicBaseVector2=1 0.5 2");
    FilterCopyData_cls& copies = AddCopies({0, -1, 0}, {1, 1, 2});
    ExpectDots({{20, -2, -1}, {20, 1, -1}, {21, -1.5, 1}, {21, 1.5, 1}});
    Canvas(0)->mShowMessage.mValue = true;
    Repaint();
    EXPECT_TRUE(Canvas(0)->GetMessageText().Contains(":PNum=1*4=4:"));
    Canvas(0)->mShowMessage.mValue = false;
    copies.mCValid.mValue = false;
    ExpectDots({{20, 1, -1}});
    copies.mCValid.mValue = true;
    copies.mCMax[1].mValue = -1;
    ExpectDots({});
    copies.mCMax[1].mValue = -5;
    ExpectDots({});
    // A second one has no effect.
    copies.mCMax[1].mValue = 0;
    AddCopies({0, 0, 0}, {5, 5, 5});
    ExpectDots({{20, -2, -1}, {21, -1.5, 1}});
}

TEST_F(FilterPictures, CopiesAreThinnedAlikeAndOnce) {
    Show({{20, 0, 0}, {20, 1, 0}, {20, 0, 2}});
    Hub()->mpCPeriodicBoundary->ReadStrLine("PeriodicBaseVector1=0 3 0");
    AddCopies({0, -1, 0}, {1, 2, 1});
    // The region is one of the data, whatever cell they are drawn in.
    mFilters.AddCut(0, 0, 0.0f, {20, 0, 1}, {2, 1, 4});
    ExpectDots({{20, 0, 0}, {20, 0, 2}, {20, 3, 0}, {20, 3, 2}, {20, -3, 0}, {20, -3, 2}});
    for (const unsigned classify : {0u, 1u}) {
        Hub()->mpCDrawOption->mClassify.mValue = classify;
        ExpectDots({{20, 0, 0}, {20, 0, 2}, {20, 3, 0}, {20, 3, 2}, {20, -3, 0}, {20, -3, 2}});
    }
}

TEST_F(FilterPictures, TheBoxMovesTheDataAboutItsAnchor) {
    const std::vector<Point> points = {{20, 1, -1}, {22, -1, 1}};
    Show(points);
    const Values t = {1, 0.5, -0.5}, a = {21, 1, 0};
    for (const Values& s : {Values{1, 1, 1}, {1.1, 0.5, 2}, {1, -1, 1}, {1, 1, 0}}) {
        FilterDataBoxData_cls& box = AddBox(t, {0, 0, 30}, s, a);
        std::vector<Point> moved;
        for (const Point& p : points)
            moved.push_back(Boxed(p, t, 30, s, a));
        for (const unsigned type : {0u, 1u, 2u}) {
            if (type != 0 && s[2] == 0) continue; // flat
            SetAttribute(type, 0, 0.09f);
            ExpectDots(moved);
        }
        // Copies stand within the box.
        SetAttribute(0, 0, 1);
        Hub()->mpCPeriodicBoundary->ReadStrLine("PeriodicBaseVector2=0 0 2.5");
        AddCopies({0, 0, 0}, {1, 1, 2});
        for (const Point& p : points)
            moved.push_back(Boxed({p[0], p[1], p[2] + 2.5}, t, 30, s, a));
        if (s[2] != 0 && s[2] != 2) ExpectDots(moved);
        box.mCValid.mValue = false;
        Hub()->mpCFilters->GetWorld().ClearFilters();
        ExpectDots(points);
        Hub()->mpCFilters->ClearFilters();
    }
}

// A box twice as large shows the data twice as large, spheres and sprites of every quality included; a
// mirrored one shows their other side.
TEST_F(FilterPictures, ParticlesGrowWithTheirBox) {
    Show({{20, 0, 0}});
    for (const auto& [type, quality] : {std::pair(1u, 0u), {1u, 1u}, {2u, 1u}, {2u, 3u}}) {
        SetAttribute(type, quality, 2.0f);
        Repaint();
        const int plain = Grab(0).CountLit(40);
        ASSERT_GT(plain, 200);
        const Values back = {0, 0, 0};
        for (const Values& s : {Values{2, 2, 2}, {1, 2, 2}, {1, 2, 1}, {1, -1, 1}, {-1, 1, 1}}) {
            // The middle stays where it was.
            AddBox({20 / s[0] - 20, 0, 0}, {0, 0, 0}, s, back);
            Repaint();
            EXPECT_NEAR(Grab(0).CountLit(40), plain * std::fabs(s[1] * s[2]),
                        0.12 * plain * std::fabs(s[1] * s[2]))
                << type << " " << quality << " scale " << s[0] << " " << s[1] << " " << s[2];
            Hub()->mpCFilters->ClearFilters();
        }
    }
}

TEST_F(FilterPictures, ScalesThatAreNoneDrawNothingAndHarmNothing) {
    Show({{20, 0, 0}});
    for (const double odd : {1e31, 1e300, -1e300}) { // a curve takes no others
        FilterDataBoxData_cls& box = AddBox({0, 0, 0}, {0, 0, 0}, {1, odd, 1}, {0, 0, 0});
        for (const unsigned type : {0u, 1u, 2u}) {
            SetAttribute(type, 3, 1.0f);
            ExpectDots({});
        }
        mFilters.Set(box.mpCScale, {0, 0, 0});
        for (const unsigned type : {1u, 2u}) {
            SetAttribute(type, 3, 1.0f);
            Repaint();
        }
        Hub()->mpCFilters->ClearFilters();
    }
    SetAttribute(0, 0, 1);
    ExpectDots({{20, 0, 0}});
}

TEST_F(FilterPictures, FramesOfFiltersAreShownWithTheItems) {
    Show({{20, 0, 0}});
    Hub()->mpCDrawOption->mClassify.mValue = 1;
    Canvas(0)->mShowItems.mValue = true;
    Repaint();
    const int without = Grab(0).CountLit(40);
    FilterBooleanData_cls& cut = mFilters.AddCut(1, 0, 0.0f, {20, 0, 0}, {2, 2, 2});
    Repaint();
    const Picture_st picture = Grab(0);
    EXPECT_GT(picture.CountLit(40), without);
    const double corner[3] = {19, 1, 1};
    double x = 0, y = 0;
    ASSERT_TRUE(ProjectToWindow(0, corner, &x, &y));
    EXPECT_TRUE(picture.IsLit(x, y, 3, 40)) << "a corner of the region";
    cut.mCValid.mValue = false;
    Repaint();
    EXPECT_TRUE(Grab(0).IsLit(x, y, 3, 40)) << "also of one that doesn't act";
    cut.mpCObjectGroup->mbVisible = false;
    Repaint();
    EXPECT_FALSE(Grab(0).IsLit(x, y, 3, 40));
    Hub()->mpCFilters->ClearFilters();
    // The box's frame stands where place and anchor say, and the anchor's cross in it.
    FilterDataBoxData_cls& box = AddBox({1, 0, 0}, {0, 0, 0}, {2, 2, 2}, {18, 1.5, 0});
    Repaint();
    const double boxCorner[3] = {18, 2.5, 1}, cross[3] = {19, 1.6, 0};
    ASSERT_TRUE(ProjectToWindow(0, boxCorner, &x, &y));
    EXPECT_TRUE(Grab(0).IsLit(x, y, 3, 40));
    ASSERT_TRUE(ProjectToWindow(0, cross, &x, &y));
    EXPECT_TRUE(Grab(0).IsLit(x, y, 3, 40)) << "the anchor's cross";
    box.mCValid.mValue = false;
    Repaint();
    EXPECT_FALSE(Grab(0).IsLit(x, y, 3, 40));
    Canvas(0)->mShowItems.mValue = false;
}

TEST_F(FilterPictures, AGreatManyCopiesAreAskedForOnce) {
    Show({{20, 0, 0}});
    mAnswers = {false, false, true};
    FilterCopyData_cls& copies = AddCopies({0, 0, 0}, {100, 100, 100});
    Canvas(0)->mShowMessage.mValue = true;
    Repaint();
    ASSERT_TRUE(PumpUntil([this] { return WasTold("1000000 copies"); }));
    ASSERT_TRUE(Settle());
    Repaint();
    Repaint();
    EXPECT_EQ(mVMessages.size(), 1u) << "the answer was no";
    EXPECT_TRUE(Canvas(0)->GetMessageText().Contains("1000000 copies are not drawn"));
    EXPECT_TRUE(Canvas(0)->GetMessageText().Contains(":PNum=1*1:")) << "what is drawn is counted";
    Canvas(0)->mShowMessage.mValue = false;
    ExpectDots({{20, 0, 0}});
    // Who comes back to the number is asked again.
    copies.mCValid.mValue = false;
    Repaint();
    copies.mCValid.mValue = true;
    Repaint();
    ASSERT_TRUE(PumpUntil([this] { return mVMessages.size() == 2u; }));
    ASSERT_TRUE(Settle());
    // Nothing that could be drawn, so that many copies take no time.
    mFilters.AddCut(0, 0, 0.0f, {-1, 0, 0}, {0, 0, 0});
    copies.mCMax[2].mValue = 11;
    Repaint();
    ASSERT_TRUE(PumpUntil([this] { return WasTold("110000 copies"); }));
    ASSERT_TRUE(Settle(60000));
    EXPECT_EQ(mVMessages.size(), 3u);
}

// The window lives on while copies are drawn, and the abort button stops them all: after half a second of
// work.
TEST_F(FilterPictures, AbortStopsCopiesAtOnce) {
    std::vector<Point> points(20000);
    for (size_t i = 0; i < points.size(); ++i)
        points[i] = {20, 0.0001 * double(i), 0};
    Show(points);
    AddCopies({0, 0, 0}, {400, 100, 1});
    for (const auto& [type, quality] : {std::pair(0u, 0u), {1u, 0u}, {2u, 0u}, {2u, 3u}}) {
        SCOPED_TRACE(testing::Message() << type << " " << quality);
        SetAttribute(type, quality, 0.1f);
        ExpectSoon(AbortAPaint());
    }
}

// What they draw isn't taken away under their hands: commands of that kind wait for the paint.
TEST_F(FilterPictures, CommandsDuringAPaintComeBehindIt) {
    std::vector<Point> points(20000);
    for (size_t i = 0; i < points.size(); ++i)
        points[i] = {20, 0.0001 * double(i), 0};
    Show(points);
    AddCopies({0, 0, 0}, {400, 100, 1});
    FilterStick_cls& stick = mFilters.Add<FilterStick_cls>(FILTER_STICK);
    Hub()->mpCFilters->SelectFilter(&stick, true);
    FilterCtrl_cls& objects = Hub()->mpCFilters->GetObject();
    // Keys as well as the menu.
    bool bDone = false;
    const auto set = [&bDone](bool b) { return new CommandCall_cls([&bDone, b] { bDone = b; }, 0); };
    GCUndoList.PushNewCommand(set(true), set(false));
    GCUndoList.ExecCurrent();
    AbortAPaint([&bDone] {
        EXPECT_TRUE(Shortcut_cls(Frame()).ProcShortcutKey(2, 'Z'));
        EXPECT_TRUE(bDone);
    });
    ASSERT_TRUE(PumpUntil([&bDone] { return !bDone; }));
    AbortAPaint([&objects] {
        for (const int id : {ID_FILTER_DELETE, ID_FILTER_GRID}) {
            wxCommandEvent command(wxEVT_MENU, id);
            EXPECT_TRUE(Frame()->ProcessWindowEvent(command));
        }
        ASSERT_EQ(objects.GetCount(), 1);
        EXPECT_EQ(objects.GetPCFilter(0)->GetType(), FILTER_STICK);
    });
    Hub()->mpCFilters->GetWorld().ClearFilters();
    ASSERT_TRUE(PumpUntil([&objects] { return objects.GetPCFilter(0)->GetType() == FILTER_GRID; }));
    EXPECT_EQ(objects.GetCount(), 1);
    GCUndoList.Clear();
}

TEST_F(FilterPictures, AbortStopsCopiesOfMeshes) {
    Show({{20, 0, 0}});
    constexpr int kRows = 300;
    std::ofstream obj(mDir / "sheet.obj");
    for (int y = 0; y <= kRows; ++y)
        for (int z = 0; z <= kRows; ++z)
            obj << "v 20 " << 4.0 * y / kRows - 2 << " " << 4.0 * z / kRows - 2 << "\n";
    for (int y = 0; y < kRows; ++y)
        for (int z = 1; z <= kRows; ++z) {
            const int first = y * (kRows + 1) + z;
            obj << "f " << first << " " << first + 1 << " " << first + kRows + 2 << " " << first + kRows + 1
                << "\n";
        }
    obj.close();
    FilterObjectData_cls& mesh = *mFilters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
    mesh.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
    mesh.mCImportPath.mStrValue = mDir / "sheet.obj";
    AddCopies({0, 0, 0}, {40, 10, 1});
    ExpectSoon(AbortAPaint());
}

TEST_F(FilterPictures, FittedViewsHoldWhatFiltersLeave) {
    Show({{20, 0, 0}, {20, 50, 0}, {21, 1, 1}});
    mFilters.AddCut(1, 0, 0.0f, {20, 50, 0}, {2, 2, 2});
    Hub()->mpCPeriodicBoundary->ReadStrLine("PeriodicBaseVector2=0 0 6");
    AddCopies({0, 0, -1}, {1, 1, 1});
    AddBox({0, 0, 0}, {0, 0, 90}, {1, 1, 1}, {0, 0, 0});
    Frame()->GetPCViewFit()->Fit(*Canvas(0));
    // The corners of the boxed data: x from -1 to 0, y from 20 to 21, z from -6 to 1.
    EXPECT_NEAR(Shared().msCAnchorPos[0], -0.5, 1e-3);
    EXPECT_NEAR(Shared().msCAnchorPos[1], 20.5, 1e-3);
    EXPECT_NEAR(Shared().msCAnchorPos[2], -2.5, 1e-3);
    ExpectDots({{0, 20, 0}, {-1, 21, 1}, {0, 20, -6}, {-1, 21, -5}});
}

TEST_F(FilterPictures, ThePageTellsWhereAParticleStands) {
    Show({{20, 1, -1}});
    AddBox({0, 0, 0}, {0, 0, 90}, {1, 2, 1}, {0, 0, 0});
    Repaint();
    const auto drawn = Hub()->mpCInformation->GetDrawnValues(GLDrawData_cls::mspCSnapShot, 0);
    EXPECT_NEAR(drawn.mPos[0], -1, 1e-3);
    EXPECT_NEAR(drawn.mPos[1], 40, 1e-3);
    EXPECT_NEAR(drawn.mPos[2], -1, 1e-3);
}

TEST_F(FilterPictures, ExportsAreFilteredOnlyWhereTicked) {
    Show({{20, 0, 0}, {20, 2, 0}, {20, 0, 3}, {20, 4, 0}});
    mFilters.AddCut(0, 0, 0.3f, {20, 0, 2}, {2, 1, 6});
    DataExporter_cls& exporter = *Hub()->mpCDataExporter;
    const wxString settings = exporter.Serialize();
    exporter.CopyFromLoader();
    exporter.mCItemDataType.mValue = 1;
    exporter.SetHeaderGrammer({1});
    exporter.SetBodyGrammer({6});
    const auto write = [&](const std::string& name) {
        exporter.mCLastSavedFile.mStrValue = wxString::FromUTF8(mDir / (name + "%04d.txt"));
        exporter.AdoptTypedPath();
        exporter.mbExporting = true;
        Menu(ID_EXPORT_DATA_BEGIN);
        EXPECT_TRUE(PumpUntil([&] { return !exporter.mbExporting; }, 20000));
        std::ifstream file(mDir / (name + "0000.txt"));
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    exporter.mCInitNum.mValue = 0;
    EXPECT_EQ(write("all"), "4\n0 \n1 \n2 \n3 \n");
    exporter.mCFiltered.mValue = true;
    EXPECT_EQ(write("kept"), "2\n0 \n2 \n");
    Hub()->mpCDrawOption->mDownSizing.mValue = 2;
    mFilters.AddCut(1, 0, 0.0f, {20, 0, 3}, {1, 1, 1});
    EXPECT_EQ(write("few"), "1\n0 \n");
    Hub()->mpCDrawOption->mDownSizing.mValue = 1;
    std::wistringstream lines(settings.ToStdWstring());
    for (std::wstring line; std::getline(lines, line);)
        exporter.ReadStrLine(line);
}

class FilterFilms : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* folder : {"whole", "slices", "plain", "many", "data"})
            std::filesystem::create_directory(mFolder.mPath / folder);
    }
    ChildRun_st Film(const std::string& lines, const std::string& out, std::vector<std::string> words) {
        const std::string project = mFolder.MakeProject(out + ".mrp", lines);
        words.insert(words.end(), {"--output", mFolder / (out + "/f%04d.png"), project});
        return RunFilm(words);
    }
    static std::string Blocks(FilterLists_cls& lists) {
        return lists.Serialize().ToStdString() + "PeriodicBaseVector1=0 1 0\n";
    }
    FilmFolder_cls mFolder;
};

// A cut that sweeps through the film with key frames, a turning box and copies, and all that filters add.
TEST_F(FilterFilms, SlicesAreThoseOfOneRun) {
    FilterLists_cls lists;
    std::string blocks;
    std::ofstream(mFolder / "sheet0002.obj") << "v 0 0 0\nv 0 1 0\nv 0 0 1\nf 1 2 3\n";
    {
        FilterScope_cls filters(lists);
        FilterBooleanData_cls& cut = filters.AddCut(0, 0, 0.2f, {0, 0, 0}, {1, 100, 100});
        FilterDataBoxData_cls& box = *filters.Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
        filters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData()->mCMax[1].mValue = 2;
        FilterObjectData_cls& mesh = *filters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
        mesh.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
        mesh.mCImportPath.mStrValue = "sheet%04d.obj";
        filters.Add<FilterObject_cls>(FILTER_OBJECT);
        filters.Add<FilterGrid_cls>(FILTER_GRID);
        filters.Add<FilterFog_cls>(FILTER_FOG);
        FilterStickData_cls& stick = *filters.Add<FilterStick_cls>(FILTER_STICK).GetPCData();
        stick.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
        stick.mCCritA.mValue = 0.03f;
        stick.mCStickWidth.mValue = 1;
        for (const double time : {0.0, 1.0}) {
            const double place[3] = {time - 0.5, 0, 0}, turn[3] = {0, 0, 90 * time};
            SceneObj_cls::SetKeyAt(cut.mpCTranslate, place, time);
            SceneObj_cls::SetKeyAt(box.mpCRotate, turn, time);
        }
        blocks = Blocks(lists);
    }
    ASSERT_EQ(Film(blocks, "whole", {"--quiet"}).mStatus, 0);
    ASSERT_EQ(Film(blocks, "slices", {"--quiet", "--frames", "3-4"}).mStatus, 0);
    ASSERT_EQ(Film(blocks, "slices", {"--quiet", "--frames", "0-2"}).mStatus, 0);
    const auto whole = mFolder.ReadAll("whole");
    EXPECT_EQ(whole.size(), 5u);
    EXPECT_TRUE(mFolder.ReadAll("slices") == whole);
    ASSERT_EQ(Film("", "plain", {"--quiet", "--frames", "2"}).mStatus, 0);
    EXPECT_FALSE(mFolder.ReadAll("plain").at("f0002.png") == whole.at("f0002.png"));
}

TEST_F(FilterFilms, ManyCopiesAreToldAndDrawnAndDataStayWhole) {
    FilterLists_cls lists;
    std::string blocks;
    {
        FilterScope_cls filters(lists);
        filters.AddCut(1, 0, 0.0f, {0, 0, 0}, {1e9, 1e9, 1e9});
        filters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData()->mCMax[0].mValue = 100001;
        blocks = Blocks(lists);
    }
    const ChildRun_st run = Film(blocks + "DataExportFiltered=1\n", "many",
                                 {"--quiet", "--frames", "0", "--export-data", mFolder / "data/d%04d.bin"});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_NE(run.mErr.find("100001 times"), std::string::npos) << run.mErr;
    EXPECT_EQ(mFolder.ReadAll("many").size(), 1u);
    EXPECT_GT(mFolder.ReadAll("data").at("d0000.bin").size(), 1000u) << "filters have no part in that";
}

} // namespace
