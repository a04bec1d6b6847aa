// Where copies and the data box put the particles of a view, and who else knows of filters: messages, fits of
// views, the Info page, exports.
#include <fstream>
#include <functional>
#include <utility>

#include "APP/clsFrameMain.h"
#include "APP/clsShortcut.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "FilterPictureTest.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLDrawData.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewFitCtrl.h"
#include "PARAM/clsCommandCall.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsDataExporter.h"
#include "PDATA/clsPDataSequence.h"
#include "TIME/clsTimeCtrl.h"

namespace {

using FilterPictures = FilterPictureTest;

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
    for (const auto& [type, quality] : {std::pair(0u, 0u), {2u, 3u}}) {
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

} // namespace
