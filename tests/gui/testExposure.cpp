// Exposure of known colours, pictures that add up, the page, and broken shader files.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <wx/notebook.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/EventIds.h"
#include "GL/BASE/clsFBO.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/WideImageSize.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsOverlay.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GoldenPicture.h"
#include "IMAGE/clsImageIO.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PictureTest.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsNumField.h"

namespace {

class Exposure : public PictureTest {
protected:
    // Software rendering: light is the same in a quarter of the side that users get.
    Exposure() { GWideImageSize /= 4; }
    ~Exposure() override { GWideImageSize *= 4; }
    static Exposure_cls* Settings() { return Hub()->mpCExposure; }
    static void Set(const wxString& lines) {
        for (const wxString& line : wxSplit(lines, ';'))
            Settings()->ReadStrLine("Exposure" + line);
    }
    /// The middle of view 0 when the whole background has this colour.
    static std::array<int, 3> Show(float r, float g, float b) {
        SetBackground(r, g, b);
        Repaint();
        const Picture_st picture = Grab(0);
        const int x = picture.mW / 2, y = picture.mH / 2;
        return {Channel(picture, x, y, 0), Channel(picture, x, y, 1), Channel(picture, x, y, 2)};
    }
    /// The middle of an image as its file has it, and of what is written on top of it.
    struct Image_st {
        std::array<float, 4> mMiddle{};
        std::array<float, 4> mLegend{};
        wxSize mSize;
        int mCount = 0;
    };
    static std::array<float, 4> Read(const FBO_cls& buffer, int x, int y) {
        // One pixel of sixteen million.
        GLint texture = 0;
        buffer.BindTexture();
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &texture);
        std::array<float, 4> pixel{};
        glGetTextureSubImage(GLuint(texture), 0, x, y, 0, 1, 1, 1, GL_RGBA, GL_FLOAT, sizeof pixel,
                             pixel.data());
        return pixel;
    }
    /// The half float that is nearest to a number from 0 to 1.
    static std::uint16_t HalfOf(float light) {
        if (light < 1.0f / 16384.0f) return 0;
        int exponent = 0;
        const float fraction = std::frexp(light, &exponent); // 0.5 to below 1
        return std::uint16_t((exponent + 14) * 1024 + std::lround((2.0f * fraction - 1.0f) * 1024.0f));
    }
    static void Request(Image_st* pImage) {
        Canvas(0)->RequestImage([pImage](const ImageBuffers_st& buffers, wxSize clip) {
            const FBO_cls& image = *buffers.mpColor;
            pImage->mMiddle = Read(image, image.GetWidth() / 2, image.GetHeight() / 2);
            if (buffers.mColorBytes)
                for (float& light : pImage->mMiddle)
                    light = float((*buffers.mColorBytes)[HalfOf(light)]) / 255.0f;
            if (buffers.mpOverlay) pImage->mLegend = Read(*buffers.mpOverlay, clip.x - kInside, kInside);
            pImage->mSize = wxSize(image.GetWidth(), image.GetHeight());
            ++pImage->mCount;
        });
    }
    static constexpr int kInside = 50; ///< pixels from the lower right corner: in the legend
};

TEST_F(Exposure, KnownColoursComeOutAsTheyMust) {
    const struct {
        const char* mSettings;
        std::array<float, 3> mIn;
        std::array<double, 3> mOut;
    } cases[] = {
        {"Level=0 1", {0.5f, 0.25f, 1.0f}, {0.5, 0.25, 1.0}},
        {"Level=0.25 0.75", {0.5f, 0.2f, 0.8f}, {0.5, 0.0, 1.0}},
        {"Level=0 0.5", {0.25f, 0.125f, 0.5f}, {0.5, 0.25, 1.0}},
        {"Level=1 0", {0.25f, 0.0f, 1.0f}, {0.75, 1.0, 0.0}},
        {"Level=0.5 0.5", {0.75f, 0.25f, 0.6f}, {1.0, 0.0, 1.0}},
        {"Level=0 1;Gamma=2", {0.25f, 0.5f, 1.0f}, {0.5, std::sqrt(0.5), 1.0}},
        {"Level=0 1;Gamma=0.5", {0.5f, 0.0f, 1.0f}, {0.25, 0.0, 1.0}},
        {"Level=0 1;Gamma=0", {0.5f, 0.0f, 1.0f}, {0.0, 0.0, 1.0}},
        {"Level=0 2;Gamma=2", {0.5f, 0.125f, 1.0f}, {0.5, 0.25, std::sqrt(0.5)}},
        {"Gamma=1;HueOffset=120", {0.8f, 0.2f, 0.1f}, {0.1, 0.8, 0.2}},
        {"HueOffset=-120", {0.8f, 0.2f, 0.1f}, {0.2, 0.1, 0.8}},
        {"HueOffset=60", {1.0f, 0.0f, 0.0f}, {1.0, 1.0, 0.0}},
        {"HueOffset=180", {0.4f, 0.4f, 0.4f}, {0.4, 0.4, 0.4}},
        {"HueOffset=0;Saturation=-100", {1.0f, 0.0f, 0.0f}, {0.2126, 0.2126, 0.2126}},
        {"Saturation=-50", {0.0f, 1.0f, 0.0f}, {0.3576, 0.8576, 0.3576}},
        {"Saturation=100", {0.6f, 0.5f, 0.5f}, {0.67874, 0.47874, 0.47874}},
    };
    for (const auto& item : cases) {
        Set("Level=0 1;Gamma=1;HueOffset=0;Saturation=0");
        Set(item.mSettings);
        const std::array<int, 3> shown = Show(item.mIn[0], item.mIn[1], item.mIn[2]);
        for (size_t c = 0; c < 3; ++c)
            EXPECT_NEAR(shown[c], 255.0 * item.mOut[c], 1.5) << item.mSettings << ", channel " << c;
    }
    EXPECT_TRUE(Settings()->IsEnabled()) << Settings()->GetStatus();
}

TEST_F(Exposure, LightThatTheScreenCannotShowIsKept) {
    ASSERT_TRUE(SizeView(480, 400));
    LookAlongX();
    ShowParticles({{4, 0, 0}, {4, 0, 0}, {4, 0, 0}}, 40);
    std::wistringstream none;
    GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence())
        .mpCGLAttribute[0]
        ->ReadStrLine(none, "SEQ0TYPE0BlendType=1");
    EXPECT_EQ(Show(0, 0, 0)[0], 255);
    Set("Level=0 4");
    EXPECT_NEAR(Show(0, 0, 0)[0], 255.0 * 3 / 4, 1.5) << "three particles that add up";
    Set("Level=2 4");
    EXPECT_NEAR(Show(0, 0, 0)[0], 255.0 / 2, 1.5);
}

TEST_F(Exposure, WideViewsAreExposedToo) {
    Set("Level=0 0.5");
    Canvas(0)->mGLPersAngle.mValue = 180.0f;
    for (const int geometry : {2, 3}) {
        Canvas(0)->SetGeometry(geometry);
        EXPECT_NEAR(Show(0.25f, 0.25f, 0.25f)[0], 128, 2) << geometry;
        const Picture_st picture = Grab(0);
        EXPECT_EQ(Channel(picture, 2, 2, 0), 0) << "the black around it stays black";
    }
}

TEST_F(Exposure, StepsOfAMotionBlurAddUpToTheirMean) {
    MotionBlurCtrl_cls& blur = Hub()->mpCTimeCtrl->mCMotionBlur;
    Set("Level=0 0.5");
    for (const int geometry : {0, 2}) {
        Canvas(0)->SetGeometry(geometry);
        Canvas(0)->mGLPersAngle.mValue = geometry == 2 ? 180.0f : 35.0f;
        blur.mBlurSteps = geometry == 2 ? 2 : 4;
        blur.mbBlur = true;
        blur.mBlurStep = 0;
        const float light[4] = {0.4f, 0.1f, 0.0f, 0.3f};
        double mean = 0.0;
        Image_st image;
        SetBackground(light[0], 0, 0);
        Request(&image);
        for (int step = 0; step < blur.mBlurSteps; ++step) {
            EXPECT_EQ(image.mCount, 0) << "not before the last step";
            blur.mBlurStep = step;
            Show(light[step], 0, 0);
            mean += 2.0 * double(light[step]) / blur.mBlurSteps;
        }
        blur.mbBlur = false;
        blur.mBlurStep = 0;
        EXPECT_EQ(image.mCount, 1) << geometry;
        EXPECT_NEAR(double(image.mMiddle[0]), mean, 2e-3) << geometry;
        EXPECT_EQ(image.mMiddle[1], 0.0f);
        if (geometry == 2) {
            const wxSize window = Canvas(0)->GetPixelSize();
            EXPECT_EQ(std::max(image.mSize.x, image.mSize.y), GWideImageSize) << "in the shape of the window";
            EXPECT_NEAR(double(image.mSize.x) / image.mSize.y, double(window.x) / window.y, 1e-3);
        } else {
            EXPECT_EQ(image.mSize, wxSize(Shared().GetFBOSize(), Shared().GetFBOSize()));
        }
        // The next image starts clean.
        Image_st next;
        SetBackground(0.25f, 0, 0);
        Request(&next);
        ASSERT_TRUE(PumpUntil([&next] { return next.mCount == 1; }));
        EXPECT_NEAR(double(next.mMiddle[0]), 0.5, 3e-3);
        EXPECT_NEAR(Show(0.25f, 0, 0)[0], 128, 2) << "and the window is as before";
    }
    blur.mBlurSteps = 4;
}

TEST_F(Exposure, AnImageComesWithWhatIsWrittenOnTop) {
    ShowParticles({{100, 0, 0}}, 1);
    Hub()->mpCOverlay->mShowLegend.mValue[0] = true;
    GLAttribute_cls& attribute =
        *GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()).mpCGLAttribute[0];
    const float color[4] = {0.2f, 0.4f, 0.6f, 0.5f};
    std::copy_n(color, 4, attribute.mColor.mConstantColor.mValue);
    Image_st image;
    Request(&image);
    ASSERT_TRUE(PumpUntil([&image] { return image.mCount == 1; }));
    for (size_t c = 0; c < 4; ++c)
        EXPECT_NEAR(image.mLegend[c], color[c], 0.005f) << "as it is, with its alpha, channel " << c;
    EXPECT_EQ(image.mMiddle[2], 0.0f) << "and not in the image itself";
    Hub()->mpCOverlay->mShowLegend.mValue[0] = false;
}

TEST_F(Exposure, ThePageChangesThePictureUndoably) {
    SetBackground(0.25f, 0.25f, 0.25f);
    Repaint();
    OptionBook()->SetSelection(2);
    Settle();
    NumField_cls* gamma = FindField(Frame()->GetPCTopHalf(), "Above 1 brightens");
    NumField_cls* level = FindField(Frame()->GetPCTopHalf(), "Light that is shown black");
    ASSERT_TRUE(gamma && level);
    TypeInto(gamma, "2");
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Settings()->mGamma.mValue, 2.0f);
    EXPECT_NEAR(Channel(Grab(0), 50, 50, 0), 128, 1.5);
    TypeInto(level, "0.125");
    EXPECT_EQ(Settings()->mLevel.mValue[0], 0.125);
    ClickOn(FindByLabel(Frame()->GetPCTopHalf(), "Default"));
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(Settings()->IsNeutral());
    EXPECT_EQ(gamma->GetValue(), 1.0);
    EXPECT_NEAR(Channel(Grab(0), 50, 50, 0), 64, 1.5);
    Menu(ID_UNDO);
    EXPECT_EQ(Settings()->mGamma.mValue, 2.0f) << "the button is one step";
    EXPECT_EQ(Settings()->mLevel.mValue[0], 0.125);
    EXPECT_EQ(gamma->GetValue(), 2.0);
    Menu(ID_UNDO);
    Menu(ID_UNDO);
    EXPECT_TRUE(Settings()->IsNeutral());
    OptionBook()->SetSelection(0);
    GCUndoList.Clear();
}

TEST_F(Exposure, BrokenAndMissingShaderFilesAreTold) {
    // The working directory comes first among the places of run-time files.
    const std::filesystem::path here = std::filesystem::current_path();
    std::filesystem::create_directories(mDir.mPath / "GL");
    std::filesystem::current_path(mDir.mPath);
    std::filesystem::copy_file(Root() + "GL/exposure.vert", "GL/exposure.vert");
    std::ofstream("GL/exposure.frag") << "#version 120\nvoid main() { gl_FragColor = nothing; }\n";
    Canvas(0)->SetCurrent(*Canvas(0)->GetContext());
    {
        Exposure_cls broken;
        broken.ReadStrLine("ExposureGamma=2");
        broken.Initialize();
        EXPECT_FALSE(broken.IsEnabled());
        EXPECT_TRUE(broken.GetStatus() == "GL/exposure.frag is broken") << broken.GetStatus();
        broken.Begin();
        GLint program = 0;
        glGetIntegerv(GL_CURRENT_PROGRAM, &program);
        EXPECT_EQ(program, 0);
        broken.End();
        Settle();
        EXPECT_TRUE(WasTold("Compile error in fragment shader.\n"));
        EXPECT_TRUE(WasTold("nothing")) << "the driver's words";
        EXPECT_TRUE(WasTold("\nGL/exposure.frag"));
    }
    std::filesystem::remove("GL/exposure.frag");
    std::filesystem::create_directory("GL/exposure.frag");
    {
        Exposure_cls missing;
        missing.Initialize();
        EXPECT_FALSE(missing.IsEnabled());
        EXPECT_TRUE(
            WasTold("The shader file GL/exposure.frag can't be read. Pictures are shown without exposure."));
    }
    std::filesystem::current_path(here);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(Exposure, PicturesAreThoseThatWereLookedAt) {
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    Shared().msCFBOSizeIndex.mValue = 1;
    ResetViews();
    Canvas(0)->mShowMessage.mValue = Canvas(0)->mShowItems.mValue = false;
    SetBackground(0.3f, 0.1f, 0.1f);
    Canvas(0)->mCamera.GetPCCameraPosition()->Set(-9, -7, 5);
    ASSERT_TRUE(SizeView(400, 320));
    Set("Level=0.05 0.8;Gamma=1.6;HueOffset=75;Saturation=40");
    Repaint();
    EXPECT_TRUE(IsGolden("exposure", Grab(0)));
}

} // namespace
