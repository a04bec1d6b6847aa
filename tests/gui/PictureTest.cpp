#include "PictureTest.h"

#include <cmath>
#include <fstream>
#include <sstream>

#include <wx/notebook.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/EventIds.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsOverlay.h"
#include "GL/VIEW/clsSharedView.h"
#include "PDATA/clsDataLoader.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"

void PictureTest::SetUp() {
    GuiTest::SetUp();
    mSize = Frame()->GetSize();
    Hub()->mpCDataLoader->SetToDefault(); // a project opened before may have moved and scaled the data
    ResetViews();
    HideAllButData(0);
}

void PictureTest::TearDown() {
    Hub()->mpCExposure->ReadStrLine("ExposureLevel=0 1");
    Hub()->mpCExposure->ReadStrLine("ExposureGamma=1");
    Hub()->mpCExposure->ReadStrLine("ExposureHueOffset=0");
    Hub()->mpCExposure->ReadStrLine("ExposureSaturation=0");
    SetBackground(0, 0, 0);
    Canvas(0)->mGLPersAngle.mValue = 35.0f;
    Canvas(0)->mDistortion.mValue = Canvas(0)->mFisheyeGrid.mValue = false;
    Frame()->SetSize(mSize);
    GuiTest::TearDown();
}

bool PictureTest::SizeView(int w, int h) {
    for (int tries = 0; tries < 5; ++tries) {
        const wxSize now = Canvas(0)->GetClientSize();
        if (now == wxSize(w, h)) break;
        const wxSize frame = Frame()->GetSize() + wxSize(w, h) - now;
        Frame()->SetSize(frame);
        PumpUntil([&frame] { return Frame()->GetSize() == frame; }, 2000);
        Settle();
    }
    Repaint();
    return PumpUntil([w, h] {
        const Picture_st picture = Grab(0);
        return picture.mW == w && picture.mH == h;
    });
}

void PictureTest::ShowParticles(const std::vector<Point>& points, int size) {
    const std::string path = mDir / "dots0000.bin";
    {
        std::ofstream file(path, std::ios::binary);
        const auto put = [&file](const auto& value) {
            file.write(reinterpret_cast<const char*>(&value), sizeof value);
        };
        put(0.0f);
        put(int(points.size()));
        for (size_t i = 0; i < points.size(); ++i) {
            const float radius = mRadii.empty() ? 1.0f : mRadii[i % mRadii.size()];
            const float head[7] = {
                float(points[i][0]), float(points[i][1]), float(points[i][2]), 0, 0, 0, radius};
            put(head);
            put(int(i));
            put(0);
            put(0.0f);
        }
    }
    for (const wxString line :
         {"ColConstantColor=1 1 1 1", "ColUseColorCurve=0", "DrawType=0", "BlendType=0"}) {
        std::wistringstream none;
        GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence())
            .mpCGLAttribute[0]
            ->ReadStrLine(none, "SEQ0TYPE0" + line);
    }
    GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence())
        .mpCGLAttribute[0]
        ->mPointSize.mValue = size;
    ASSERT_TRUE(OpenAndPaint(path));
}

void PictureTest::LookAlongX() {
    const double front[3] = {1, 0, 0}, up[3] = {0, 0, 1};
    MainGLCanvas_cls* canvas = Canvas(0);
    std::copy_n(front, 3, Shared().msCAnchorPos);
    PositionAndDirection_cls* camera = canvas->mCamera.GetPCCameraPosition();
    camera->Set(0, 0, 0);
    camera->Setv(front, up);
    camera->SetAncPos(front);
}

PictureTest::Point PictureTest::Direction(double polar, double around) {
    const double p = polar * M_PI / 180.0, a = around * M_PI / 180.0;
    return {std::cos(p), -std::sin(p) * std::cos(a), std::sin(p) * std::sin(a)};
}

std::array<double, 2> PictureTest::LightNear(const Picture_st& picture, double x, double y, int radius) {
    double sum = 0.0, sumX = 0.0, sumY = 0.0;
    for (int py = int(y) - radius; py <= int(y) + radius; ++py)
        for (int px = int(x) - radius; px <= int(x) + radius; ++px) {
            const double light = picture.Brightness(px, py);
            sum += light;
            sumX += light * (px + 0.5);
            sumY += light * (py + 0.5);
        }
    if (sum < 100.0) return {-1e9, -1e9};
    return {sumX / sum, sumY / sum};
}

int PictureTest::Channel(const Picture_st& picture, int x, int y, int c) {
    return picture.mRGB[3 * (size_t(y) * size_t(picture.mW) + size_t(x)) + size_t(c)];
}

void PictureTest::SetBackground(float r, float g, float b) {
    float* color = Shared().mspCClrCurveBG->mConstantColor.mValue;
    color[0] = r;
    color[1] = g;
    color[2] = b;
}

void PictureTest::Repaint() { Menu(ID_REFRESH_GL); }

wxNotebook* PictureTest::OptionBook() {
    return dynamic_cast<wxNotebook*>(wxWindow::FindWindowById(ID_NOTEBOOK_OPTION, Frame()));
}
