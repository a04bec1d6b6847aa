// Base of tests of where filters put the particles of a view, and of how long that may take.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <thread>
#include <vector>

#include "APP/clsMain.h"
#include "COMMON/Globals.h"
#include "COMMON/clsUpdateStatusBar.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FilterPictures.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "PictureTest.h"

class FilterPictureTest : public PictureTest {
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
        const int cores = std::max(1, int(std::thread::hardware_concurrency()));
        EXPECT_LT(aborted.mWork, 0.5 * cores);
        EXPECT_LT(aborted.mBreath, 0.5 * cores);
    }

    FilterScope_cls mFilters{*Hub()->mpCFilters};
    wxString mLooks;
};
