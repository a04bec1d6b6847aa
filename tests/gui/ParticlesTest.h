// Snapshots of a few particles, and clicks on them.
#pragma once

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "FILTER/clsFilterLists.h"
#include "GL/BASE/clsPreference.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsInformationGUI.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewPick.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PictureTest.h"
#include "SCENE/clsStereoGram.h"
#include "TIME/clsTimeCtrl.h"

struct ParticleDot_st {
    float x, y, z;
    int id;
    float radius = 1.0f;
};

/// The eye in the origin looks along x: y goes to the left, z up.
class ParticlesTest : public PictureTest {
protected:
    static constexpr int kW = 480, kH = 320;

    void SetUp() override {
        PictureTest::SetUp();
        Frame()->GetPCPreference()->SetToDefaultMouse(0);
        Hub()->mpCParticles->End();
        Shared().msCFBOSizeIndex.mValue = 1;
        ASSERT_TRUE(SizeView(kW, kH));
        Canvas(0)->mGLPersAngle.mValue = 40.0f;
        OptionBook()->SetSelection(0);
    }
    void TearDown() override {
        Hub()->mpCParticles->Reset();
        Hub()->mpCStereoGram->Reset();
        Hub()->mpCFilters->ClearFilters();
        Hub()->mpCTimeCtrl->SetAnimInterpNative(1);
        for (GLAttribute_cls* attribute : Look().mpCGLAttribute)
            attribute->mDrawType.mValue = DRAW_POINT;
        PictureTest::TearDown();
    }
    static GLSequence_cls& Look() {
        return GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence());
    }
    static const ParticleWatch_cls& Watch() { return *Hub()->mpCParticles; }
    static int Picked() { return Watch().IsPicked() ? Watch().GetName().mID : -1; }
    /// Snapshots at times 0, 1 and so on.
    void ShowRun(const std::vector<std::vector<ParticleDot_st>>& run, int pointSize = 3) {
        ShowParticles({{1, 0, 0}}, pointSize); // for the looks
        for (size_t k = 0; k < run.size(); ++k) {
            char name[32];
            std::snprintf(name, sizeof name, "run%04d.bin", int(k));
            std::ofstream file(mDir / name, std::ios::binary);
            const auto put = [&file](const auto& value) {
                file.write(reinterpret_cast<const char*>(&value), sizeof value);
            };
            put(float(k));
            put(int(run[k].size()));
            for (const ParticleDot_st& dot : run[k]) {
                const float head[7] = {dot.x, dot.y, dot.z, 0.5f, 0.25f, 0.125f, dot.radius};
                put(head);
                put(dot.id);
                put(0);
                put(7.0f);
            }
        }
        ASSERT_TRUE(OpenAndPaint(mDir / "run0000.bin"));
        LookAlongX();
        Repaint();
    }
    static void GoTo(int frame, int step = 0) {
        Hub()->mpCTimeCtrl->SetFrameNative(frame, 0);
        Hub()->mpCTimeCtrl->SetInterpStepNative(step, 0);
        Repaint();
    }
    /// Where a view shows a place, so many pixels beside it.
    static wxPoint At(const Point& place, int right = 0, int down = 0, int view = 0) {
        double at[2] = {9, 9};
        EXPECT_TRUE(Canvas(view)->GetPick().Project(place.data(), at));
        const wxSize size = Canvas(view)->GetClientSize();
        return wxPoint(int(std::floor((at[0] + 1.0) * size.x / 2.0)) + right,
                       int(std::floor((1.0 - at[1]) * size.y / 2.0)) + down);
    }
    static int PickAt(wxPoint point, int view = 0) {
        Hold(WXK_CONTROL, true);
        Click(Canvas(view), point);
        Hold(WXK_CONTROL, false);
        Settle();
        return Picked();
    }
    /// Pixels of the mark's colour within a square around a place.
    static int CountMark(const Picture_st& picture, wxPoint middle, int reach) {
        int count = 0;
        for (int y = middle.y - reach; y <= middle.y + reach; ++y)
            for (int x = middle.x - reach; x <= middle.x + reach; ++x)
                count += Channel(picture, x, y, 0) > Channel(picture, x, y, 2) + 60;
        return count;
    }
    std::string Project() {
        EXPECT_TRUE(Hub()->SaveProjectFile(mDir / "now.mrp", true));
        std::ostringstream text;
        text << std::ifstream(mDir / "now.mrp").rdbuf();
        return text.str();
    }
    static InformationGUI_cls* Page() { return Hub()->mpCInformation->mpCGUI; }
    static bool PageSays(const wxString& text) { return FindByLabel(Page(), text) != nullptr; }
};
