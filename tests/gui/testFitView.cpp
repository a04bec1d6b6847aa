// "Fit View" from each of its places, its step of the undo list, and the first picture of new data.
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>

#include <wx/button.h>
#include <wx/notebook.h>
#include <wx/stattext.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/BASE/clsPreference.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewFitCtrl.h"
#include "GuiTest.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/GrammarItems.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"

namespace {

struct Place_st {
    double p[3];
    int type = 0;
};

class FitView : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        mLoader = Data().Serialize();
        Data().SetHeaderGrammer({HEAD_NUMBER});
        Data().SetBodyGrammer({BODY_TYPE, BODY_XYZ});
        Data().mCItemDataType.mValue = 1;
        Hub()->mpCDrawOption->mClassify.mValue = 1;
        ResetPlanes();
        Frame()->GetPCPreference()->mCFitFirst.mValue = true;
        Frame()->GetPCViewFit()->NoteUntouched();
        GCUndoList.Clear();
    }
    void TearDown() override {
        Frame()->GetPCPreference()->mCFitFirst.mValue = false;
        std::wistringstream lines(mLoader.ToStdWstring());
        for (std::wstring line; std::getline(lines, line);)
            Data().ReadStrLine(line);
        ResetPlanes();
        ResetViews();
        GCUndoList.Clear();
        GuiTest::TearDown();
    }
    static DataLoader_cls& Data() { return *Hub()->mpCDataLoader; }
    static void ResetPlanes() {
        for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
            Canvas(view)->mGLDepthMin.mValue = 0.03f;
            Canvas(view)->mGLDepthMax.mValue = 5000.0f;
        }
    }
    void Open(const std::vector<Place_st>& places) {
        const std::string path = mDir / "places0.txt";
        std::ofstream file(path);
        file << places.size() << "\n";
        file.precision(9);
        for (const Place_st& place : places)
            file << place.type << " " << place.p[0] << " " << place.p[1] << " " << place.p[2] << "\n";
        file.close();
        ASSERT_TRUE(OpenAndPaint(path));
        ASSERT_EQ(Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()->GetParticleNumber(0),
                  int(places.size()));
    }
    /// The corners of a cube.
    static std::vector<Place_st> Cube(double width, double x = 0, double y = 0, double z = 0) {
        std::vector<Place_st> places;
        for (int k = 0; k < 8; ++k)
            places.push_back({{x + (k & 1 ? 0.5 : -0.5) * width, y + (k & 2 ? 0.5 : -0.5) * width,
                               z + (k & 4 ? 0.5 : -0.5) * width}});
        return places;
    }
    /// How far from the middle of a view's window the places lie at most, in half sides; each is lit there.
    static double Filled(int view, const std::vector<Place_st>& places) {
        const Picture_st picture = Grab(view);
        double most = 0.0;
        for (const Place_st& place : places) {
            double x = 0, y = 0;
            if (!ProjectToWindow(view, place.p, &x, &y)) return -1.0;
            EXPECT_TRUE(picture.IsLit(x, y, 6, 60)) << "view " << view << " at " << x << ", " << y;
            most = std::max({most, std::fabs(x / picture.mW * 2 - 1), std::fabs(y / picture.mH * 2 - 1)});
        }
        return most;
    }
    static std::string Camera(int view) {
        std::ostringstream text;
        text.precision(17);
        const MainGLCanvas_cls& canvas = *Canvas(view);
        for (const double v : Canvas(view)->mCamera.GetFreeCamera().mPos)
            text << v << " ";
        for (int i = 0; i < 3; ++i)
            text << Shared().msCAnchorPos[i] << " " << Shared().msCAnchorPosOrtho[i] << " ";
        text << canvas.mGLOrthoScale.mValue << " " << canvas.mGLDepthMin.mValue << " "
             << canvas.mGLDepthMax.mValue;
        return text.str();
    }

    TempDir_cls mDir;
    wxString mLoader;
};

} // namespace

TEST_F(FitView, TheFirstPictureShowsDataOfAnySizeAndPlaceInEveryView) {
    Menu(ID_VIEW_PANEL_TYPE_3);
    const double far[3] = {1e6, -1e6, 5e5};
    for (const auto& cube : {Cube(1.0, 30, -7, 2), Cube(1e-9), Cube(1e9), Cube(50, far[0], far[1], far[2])}) {
        Open(cube);
        for (int view = 0; view < 4; ++view) {
            const double filled = Filled(view, cube);
            EXPECT_GT(filled, 0.9) << view << ": " << cube[1].p[0];
            EXPECT_LT(filled, 0.951) << view << ": " << cube[1].p[0];
        }
        Snap("fitview_first");
    }
    // A view that shows another of its cameras later is fitted in that, too.
    const auto cube = Cube(4.0, 100, 0, 0);
    Open(cube);
    Canvas(0)->ChooseDisplayMode(DISPLAY_TO_PLUS_Z);
    Settle();
    EXPECT_LT(Filled(0, cube), 0.951);
    EXPECT_GT(Filled(0, cube), 0.5);
}

TEST_F(FitView, CamerasThatAreSomebodysWorkStay) {
    Open(Cube(1.0, 30));
    Wheel(Canvas(0), Middle(Canvas(0)), 1);
    const std::string moved = Camera(0);
    Open(Cube(7.0, -200));
    EXPECT_EQ(Camera(0), moved) << "moved by hand";
    ResetViews();
    Frame()->GetPCViewFit()->NoteUntouched();
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_text/lj_melt_text.mrp"));
    const std::string project = Camera(0);
    Data().SetHeaderGrammer({HEAD_NUMBER});
    Data().SetBodyGrammer({BODY_TYPE, BODY_XYZ});
    Data().mCItemDataType.mValue = 1;
    Open(Cube(7.0, -200));
    EXPECT_EQ(Camera(0), project) << "a project's";
    Frame()->GetPCViewFit()->NoteUntouched();
    Frame()->GetPCPreference()->mCFitFirst.mValue = false;
    Open(Cube(9.0, 300));
    EXPECT_EQ(Camera(0), project) << "not wanted";
}

TEST_F(FitView, EachPlaceOfTheCommandFitsTheActiveViewInOneStep) {
    Frame()->GetPCPreference()->mCFitFirst.mValue = false;
    const auto cube = Cube(1e5, 3e5, 0, 0);
    Open(cube);
    GCUndoList.Clear();
    const std::string before = Camera(0);
    Canvas(0)->SetFocus();
    const std::function<void()> ways[] = {
        [] { Key(WXK_HOME); },
        [] { Menu(ID_FIT_VIEW); },
        [] { ClickOn(FindByTip(Frame()->GetPCGLCanvasCtrl(0), "Fit View")); },
        [] {
            ClickPopup(Canvas(0), Middle(Canvas(0)), {WXK_UP, WXK_RETURN});
        },
    };
    for (const auto& way : ways) {
        way();
        Settle();
        EXPECT_NEAR(Filled(0, cube), 0.95, 0.002);
        EXPECT_LE(double(Canvas(0)->mGLDepthMax.mValue) / double(Canvas(0)->mGLDepthMin.mValue), 2e6);
        EXPECT_NE(Camera(0), before);
        ASSERT_TRUE(GCUndoList.IsUndoable());
        Menu(ID_FIT_VIEW); // there is nothing left to do
        Menu(ID_UNDO);
        EXPECT_EQ(Camera(0), before);
        EXPECT_FALSE(GCUndoList.IsUndoable());
    }
    Menu(ID_REDO);
    EXPECT_NEAR(Filled(0, cube), 0.95, 0.002);
}

TEST_F(FitView, OnlyWhatIsDrawnCounts) {
    auto places = Cube(2.0);
    places.push_back({{500, 0, 0}, 1});
    Open(places);
    GLAttribute_cls& second =
        *GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()).mpCGLAttribute[1];
    second.mDrawType.mValue = DRAW_HIDE;
    Menu(ID_FIT_VIEW);
    EXPECT_NEAR(Filled(0, Cube(2.0)), 0.95, 0.002);
    second.mDrawType.mValue = DRAW_POINT;
    Menu(ID_REFRESH_GL);
}

TEST_F(FitView, OtherViewsOfTheAnchorFollowAndLinkedOnesHaveNoCameraOfTheirOwn) {
    Menu(ID_VIEW_PANEL_TYPE_3);
    Frame()->GetPCPreference()->mCFitFirst.mValue = false;
    const auto cube = Cube(0.5, 40, 20, 0);
    Open(cube);
    Canvas(1)->SetThisToBeActiveGL();
    Menu(ID_FIT_VIEW);
    EXPECT_NEAR(Filled(1, cube), 0.95, 0.002);
    const double middle[3] = {40, 20, 0};
    double x = 0, y = 0;
    ASSERT_TRUE(ProjectToWindow(2, middle, &x, &y));
    EXPECT_NEAR(x, Canvas(2)->GetClientSize().x / 2.0, 1.0) << "an axis view beside it, of its own scale";
    EXPECT_EQ(Shared().msCAnchorPos[0], 0.0) << "the free views' anchor is another";
    Canvas(1)->ChooseDisplayMode(DISPLAY_PATH);
    Settle();
    const std::string linked = Camera(1);
    Menu(ID_FIT_VIEW);
    EXPECT_EQ(Camera(1), linked);
    Menu(ID_VIEW_PANEL_TYPE_0);
    EXPECT_TRUE(FindByTip(Frame()->GetPCGLCanvasCtrl(0), "Fit View")->IsEnabled());
    Canvas(0)->ChooseDisplayMode(DISPLAY_PATH);
    EXPECT_FALSE(FindByTip(Frame()->GetPCGLCanvasCtrl(0), "Fit View")->IsEnabled());
}

TEST_F(FitView, PagesTellHowManyTheyDrawAndLeadToTheClassThatHasMost) {
    std::vector<Place_st> places = Cube(1.0);
    for (Place_st& place : places)
        place.type = 2;
    places[0].type = 1;
    Open(places);
    auto* book = dynamic_cast<wxNotebook*>(wxWindow::FindWindowById(ID_NOTEBOOK_ATTRIB, Frame()));
    ASSERT_TRUE(book);
    book->SetSelection(1);
    Settle();
    EXPECT_TRUE(FindByLabel(book, "1"));
    book->SetSelection(0);
    Settle();
    EXPECT_TRUE(FindByLabel(book, "none of this class"));
    Snap("fitview_empty_class");
    wxWindow* most = FindByTip(book, "To the page of the class");
    ASSERT_TRUE(most);
    EXPECT_EQ(most->GetLabel(), "Attrib 2");
    ClickOn(most);
    Settle();
    EXPECT_EQ(book->GetSelection(), 2);
    EXPECT_TRUE(FindByLabel(book, "7"));
    EXPECT_FALSE(FindByTip(book, "To the page of the class"));
    Hub()->mpCDrawOption->mClassify.mValue = 0;
    Menu(ID_REFRESH_GL);
    EXPECT_TRUE(FindByLabel(book, "none: the first page draws all"));
    book->SetSelection(0);
    Settle();
    EXPECT_TRUE(FindByLabel(book, "8"));
    Hub()->mpCDrawOption->mClassify.mValue = 1;
    Menu(ID_REFRESH_GL);
}
