// Pictures on their way into a file: size, overlay, alpha, format.
#include "IMAGE/clsThreadSave.h"

#include <array>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <wx/image.h>

#include "IMAGE/BoxFilter.h"
#include "IMAGE/HalfFloat.h"
#include "IMAGE/ImageFile.h"
#include "WIDGET/clsImgSizeTemplate.h"
#include "TempFolder.h"

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<unsigned char>;

Bytes MakeNoise(int w, int h, int channels, unsigned seed) {
    Bytes bytes(size_t(w) * size_t(h) * size_t(channels));
    std::mt19937 random(seed);
    for (unsigned char& byte : bytes)
        byte = static_cast<unsigned char>(random());
    return bytes;
}

/// The rule, pixel by pixel: the mean of the source under a target pixel.
double MeanUnder(const Bytes& source, int srcW, int srcH, double x0, double y0, double x1, double y1, int c) {
    x1 = std::min(x1, srcW - 0.001);
    y1 = std::min(y1, srcH - 0.001);
    const auto cover = [](int i, double a, double b) {
        return std::max(0.0, std::min(b, i + 1.0) - std::max(a, double(i)));
    };
    double sum = 0.0, weights = 0.0;
    for (int y = int(y0); y <= int(y1); ++y)
        for (int x = int(x0); x <= int(x1); ++x) {
            const double weight = cover(x, x0, x1) * cover(y, y0, y1);
            sum += weight * source[(size_t(y) * size_t(srcW) + size_t(x)) * 3 + size_t(c)];
            weights += weight;
        }
    return sum / weights;
}

TEST(BoxFilter, MeansOfTheMiddleAtAnySize) {
    const int sizes[][3] = {{64, 32, 18},  {64, 18, 32}, {64, 64, 64}, {64, 7, 5},   {64, 1, 1},
                            {64, 100, 75}, {64, 200, 3}, {64, 3, 200}, {37, 24, 24}, {5, 128, 128}};
    for (const auto& size : sizes) {
        const int side = size[0], w = size[1], h = size[2];
        SCOPED_TRACE(std::to_string(side) + " to " + std::to_string(w) + "x" + std::to_string(h));
        const Bytes source = MakeNoise(side, side, 3, unsigned(w * 1000 + h));
        Bytes target(size_t(w) * size_t(h) * 3, 1);
        ResampleMiddle(source.data(), side, side, target.data(), w, h);
        const double scale = double(side) / std::max(w, h);
        const double offX = w >= h ? 0.0 : (1.0 - double(w) / h) / 2.0 * side;
        const double offY = w >= h ? (1.0 - double(h) / w) / 2.0 * side : 0.0;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                for (int c = 0; c < 3; ++c) {
                    const double mean = MeanUnder(source, side, side, offX + x * scale, offY + y * scale,
                                                  offX + (x + 1) * scale, offY + (y + 1) * scale, c);
                    const int got = target[(size_t(y) * size_t(w) + size_t(x)) * 3 + size_t(c)];
                    // Cut to whole numbers; right at one, both are right.
                    ASSERT_LE(got, mean + 0.01) << x << " " << y;
                    ASSERT_GT(got + 1, mean - 0.01) << x << " " << y;
                }
    }
}

TEST(BoxFilter, APictureThatIsntSquareIsTakenWhole) {
    const int srcW = 64, srcH = 37, w = 12, h = 7; // of the same shape, but for a rounding
    const Bytes source = MakeNoise(srcW, srcH, 3, 7);
    Bytes target(size_t(w) * size_t(h) * 3, 1);
    ResampleMiddle(source.data(), srcW, srcH, target.data(), w, h);
    const double acrossX = double(srcW) / w, acrossY = double(srcH) / h;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const double mean = MeanUnder(source, srcW, srcH, x * acrossX, y * acrossY, (x + 1) * acrossX,
                                          (y + 1) * acrossY, 1);
            EXPECT_NEAR(target[(size_t(y) * size_t(w) + size_t(x)) * 3 + 1], mean, 1.01) << x << " " << y;
        }
}

TEST(BoxFilter, AnEvenPictureStaysAsItIs) {
    for (const int value : {0, 1, 77, 200, 255})
        for (const int w : {1, 7, 30, 97}) {
            const Bytes source(size_t(64) * 64 * 3, static_cast<unsigned char>(value));
            Bytes target(size_t(w) * 50 * 3);
            ResampleMiddle(source.data(), 64, 64, target.data(), w, 50);
            EXPECT_EQ(target, Bytes(target.size(), static_cast<unsigned char>(value)));
        }
}

TEST(HalfFloat, EveryPatternIsTheNearestByte) {
    for (unsigned pattern = 0; pattern < 0x10000; ++pattern) {
        const int exponent = (pattern >> 10) & 31;
        double value = exponent == 0 ? (pattern & 1023) / 16777216.0
                                     : (1.0 + (pattern & 1023) / 1024.0) * std::pow(2.0, exponent - 15);
        const bool bNumber = exponent < 31 || (pattern & 1023) == 0;
        if (pattern & 0x8000) value = -value;
        const double wanted = bNumber ? std::round(std::clamp(value, 0.0, 1.0) * 255.0) : 0.0;
        ASSERT_EQ(GetPlainBytes()[pattern], int(wanted)) << pattern;
    }
}

TEST(ImgSize, ListAndNumbersBelongTogether) {
    const std::vector<wxString> labels = ImgSizeTemplate_cls::GetLabels();
    ASSERT_EQ(labels.size(), 14u);
    EXPECT_EQ(labels[0], "Custom");
    for (int i = 1; i < 14; ++i) {
        int w = 0, h = 0;
        EXPECT_FALSE(ImgSizeTemplate_cls::SetGeometry(i, &w, &h));
        EXPECT_EQ(labels[size_t(i)], wxString::Format("%dx%d", w, h));
        EXPECT_EQ(ImgSizeTemplate_cls::SetIndexFromGeometry(w, h), i);
    }
    int w = 5, h = 6;
    EXPECT_TRUE(ImgSizeTemplate_cls::SetGeometry(0, &w, &h));
    EXPECT_TRUE(ImgSizeTemplate_cls::SetGeometry(99, &w, &h));
    EXPECT_EQ(w * 10 + h, 56);
    EXPECT_EQ(ImgSizeTemplate_cls::SetIndexFromGeometry(641, 480), 0);
}

class ThreadSave : public ::testing::Test {
protected:
    /// A half float for each byte that it becomes.
    static std::array<std::uint16_t, 256> MakeHalves() {
        std::array<std::uint16_t, 256> halves{};
        for (std::uint16_t half = 0; half <= 0x3c00; ++half)
            halves[GetPlainBytes()[half]] = half;
        return halves;
    }
    void SetUp() override {
        if (!wxImage::FindHandler(wxBITMAP_TYPE_PNG)) wxInitAllImageHandlers();
    }

    static void Put(PixelBuffer_cls* pBuffer, int w, int h, int channels, const Bytes& bytes) {
        ASSERT_TRUE(pBuffer->Allocate(w, h, channels));
        std::memcpy(pBuffer->Get(), bytes.data(), bytes.size());
    }
    SavePicture_st Make(const std::string& name, int w, int h, const Bytes& source) const {
        SavePicture_st picture;
        picture.mWXStrFilename = mFolder + "/" + name;
        picture.mW = picture.mSrcW = w;
        picture.mH = picture.mSrcH = h;
        picture.mbQuiet = true;
        Put(&picture.mSource, w, h, 3, source);
        return picture;
    }
    /// The reason of a failure, empty for none.
    static wxString Save(SavePicture_st picture) {
        std::atomic<bool> bDone{false};
        ThreadSave_cls thread(std::move(picture), bDone);
        EXPECT_EQ(thread.Run(), wxTHREAD_NO_ERROR);
        thread.Wait();
        EXPECT_TRUE(bDone.load());
        return thread.GetError();
    }
    wxImage Load(const std::string& name) const { return wxImage(mFolder + "/" + name); }

    TempFolder_cls mTemp;
    const std::string mFolder = mTemp.GetPath();
};

TEST_F(ThreadSave, FormatsFollowTheEndingAndTheTopRowIsGLsLast) {
    Bytes source(size_t(16) * 8 * 3, 40);
    std::fill_n(source.begin(), 16 * 3, static_cast<unsigned char>(200)); // GL's first row
    for (const std::string ending : {"png", "PNG", "tif", "tiff", "bmp", "jpg", "JPEG"}) {
        SCOPED_TRACE(ending);
        ASSERT_EQ(Save(Make("a." + ending, 16, 8, source)), "");
        const wxImage image = Load("a." + ending);
        ASSERT_TRUE(image.IsOk());
        EXPECT_EQ(image.GetSize(), wxSize(16, 8));
        EXPECT_NEAR(image.GetRed(3, 7), 200, 12);
        EXPECT_NEAR(image.GetRed(3, 1), 40, 12);
    }
    ASSERT_EQ(Save(Make("plain", 16, 8, source)), "");
    EXPECT_TRUE(Load("plain.png").IsOk());
}

TEST_F(ThreadSave, ATransparentTiffTellsThatItsColoursAreStraight) {
    wxImage image(3, 2);
    image.SetAlpha();
    ASSERT_EQ(WriteImageFile(image, mFolder + "/a.tif", ImageFormat_st()), "");
    std::ifstream file(mFolder + "/a.tif", std::ios::binary);
    const Bytes bytes(std::istreambuf_iterator<char>(file), {});
    const auto number = [&](size_t at) {
        return bytes.at(0) == 'I' ? bytes.at(at) | bytes.at(at + 1) << 8
                                  : bytes.at(at) << 8 | bytes.at(at + 1);
    };
    const size_t directory =
        size_t(bytes.at(0) == 'I' ? number(4) | number(6) << 16 : number(6) | number(4) << 16);
    int marks = 0;
    for (int i = 0; i < number(directory); ++i) {
        const size_t entry = directory + 2 + size_t(i) * 12;
        if (number(entry) != 338) continue; // ExtraSamples
        ++marks;
        EXPECT_EQ(number(entry + 8), 2) << "unassociated alpha";
    }
    EXPECT_EQ(marks, 1);
}

TEST_F(ThreadSave, WhatCantBeWrittenSaysWhyAndLeavesNothing) {
    const Bytes source(size_t(4) * 4 * 3, 9);
    EXPECT_TRUE(Save(Make("a.xyz", 4, 4, source)).Contains("png"));
    EXPECT_FALSE(Save(Make("nowhere/a.png", 4, 4, source)).empty());
    EXPECT_EQ(std::distance(fs::directory_iterator(mFolder), fs::directory_iterator()), 0);
}

TEST_F(ThreadSave, TheSmallestFileHoldsTheSamePicture) {
    const Bytes noise = MakeNoise(64, 64, 3, 5);
    Bytes smooth(noise.size());
    for (size_t i = 0; i < smooth.size(); ++i)
        smooth[i] = static_cast<unsigned char>(i / 3 % 64 * 3 + i / 192);
    for (const Bytes& source : {noise, smooth}) {
        SavePicture_st small = Make("small.png", 64, 64, source);
        small.mFormat.mbSmallestPNG = true;
        ASSERT_EQ(Save(std::move(small)), "");
        ASSERT_EQ(Save(Make("fast.png", 64, 64, source)), "");
        EXPECT_LE(fs::file_size(mFolder + "/small.png"), fs::file_size(mFolder + "/fast.png"));
        EXPECT_EQ(0, std::memcmp(Load("small.png").GetData(), Load("fast.png").GetData(), source.size()));
    }
}

TEST_F(ThreadSave, OverlayLiesOverThePicture) {
    const Bytes source(size_t(8) * 4 * 3, 100);
    Bytes overlay(size_t(8) * 4 * 4, 0);
    for (size_t x = 0; x < 8; ++x) { // GL's first row: a ramp of cover
        overlay[x * 4] = 255;
        overlay[x * 4 + 3] = static_cast<unsigned char>(x * 36);
    }
    for (const bool bSideBySide : {false, true}) {
        SavePicture_st picture = Make("o.png", 8, 4, source);
        Put(&picture.mOverlay, 8, 4, 4, overlay);
        picture.mHalves = bSideBySide ? HALVES_BESIDE : HALVES_NONE;
        ASSERT_EQ(Save(std::move(picture)), "");
        const wxImage image = Load("o.png");
        for (int x = 0; x < 8; ++x) {
            const double a = (bSideBySide ? x % 4 * 2 : x) * 36 / 255.0;
            EXPECT_EQ(image.GetRed(x, 3), int(255 * a + 100 * (1 - a) + 1e-4)) << x;
            EXPECT_EQ(image.GetGreen(x, 3), int(100 * (1 - a) + 1e-4)) << x;
            EXPECT_EQ(image.GetRed(x, 0), 100);
        }
    }
}

TEST_F(ThreadSave, TwoEyesStandInOneFile) {
    Bytes left(size_t(4) * 2 * 3, 50), right(size_t(4) * 2 * 3, 90), overlay(size_t(4) * 2 * 4, 0);
    left[0] = right[0] = 200; // GL's first row is the lowest one
    for (const size_t i : {4u, 7u})
        overlay[i] = 255; // the second pixel of that row is red
    for (const Halves halves : {HALVES_BESIDE, HALVES_ABOVE}) {
        SavePicture_st picture = Make("two.png", 4, 2, left);
        Put(&picture.mRightSource, 4, 2, 3, right);
        Put(&picture.mOverlay, 4, 2, 4, overlay);
        picture.mHalves = halves;
        ASSERT_EQ(Save(std::move(picture)), "");
        const wxImage image = Load("two.png");
        const bool bAbove = halves == HALVES_ABOVE;
        ASSERT_EQ(image.GetSize(), bAbove ? wxSize(4, 4) : wxSize(8, 2));
        const wxPoint other = bAbove ? wxPoint(0, 2) : wxPoint(4, 0);
        EXPECT_EQ(image.GetRed(2, 0), 50) << "the left eye is the upper one";
        EXPECT_EQ(image.GetRed(other.x + 2, other.y), 90);
        for (const wxPoint at : {wxPoint(0, 0), other}) {
            EXPECT_EQ(image.GetRed(at.x, at.y + 1), 200);
            EXPECT_EQ(image.GetRed(at.x + 1, at.y + 1), 255) << "what lies on top, in each";
            EXPECT_EQ(image.GetGreen(at.x + 1, at.y + 1), 0);
        }
    }
    // Squeezed on top of each other: every second row of the overlay, in both.
    Bytes rows(size_t(2) * 4 * 4, 0);
    for (const size_t i : {16u, 19u})
        rows[i] = 255; // in the third row
    SavePicture_st picture = Make("above.png", 2, 4, Bytes(size_t(2) * 4 * 3, 50));
    Put(&picture.mOverlay, 2, 4, 4, rows);
    picture.mHalves = HALVES_ABOVE;
    ASSERT_EQ(Save(std::move(picture)), "");
    const wxImage image = Load("above.png");
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(image.GetRed(0, y), y % 2 == 0 ? 255 : 50) << y;
}

// From left to right: nothing, a solid grey, half of red, light added to the background.
TEST_F(ThreadSave, CoverComesFromThePicturesOverBlackAndWhite) {
    const Bytes black = {0, 0, 0, 90, 90, 90, 100, 0, 0, 60, 30, 0};
    const Bytes white = {255, 255, 255, 90, 90, 90, 227, 127, 127, 255, 255, 255};
    SavePicture_st picture = Make("t.png", 4, 1, black);
    Put(&picture.mOnBlack, 4, 1, 3, black);
    Put(&picture.mOnWhite, 4, 1, 3, white);
    ASSERT_EQ(Save(std::move(picture)), "");
    const wxImage image = Load("t.png");
    ASSERT_TRUE(image.HasAlpha());
    const int alpha[4] = {0, 255, 128, 60};
    for (int x = 0; x < 4; ++x) {
        EXPECT_EQ(image.GetAlpha(x, 0), alpha[x]);
        // Over black the file shows what the scene shows over black.
        const double a = alpha[x] / 255.0;
        EXPECT_NEAR(image.GetRed(x, 0) * a, black[size_t(x) * 3], 0.6);
        EXPECT_NEAR(image.GetGreen(x, 0) * a, black[size_t(x) * 3 + 1], 0.6);
    }
    EXPECT_EQ(image.GetRed(2, 0), 199); // and over white what it shows there
    EXPECT_NEAR(image.GetRed(2, 0) * alpha[2] / 255.0 + 255 - alpha[2], 227, 1);
}

TEST_F(ThreadSave, HalfFloatsOfAnySizeBecomeTheFile) {
    const std::uint16_t half = 0x3800; // 0.5
    SavePicture_st picture;
    picture.mWXStrFilename = mFolder + "/h.png";
    picture.mW = 6;
    picture.mH = 4;
    picture.mSrcW = picture.mSrcH = 16;
    picture.mbHalfFloat = picture.mbQuiet = true;
    ASSERT_TRUE(picture.mSource.Allocate(16, 16, 8));
    for (size_t i = 0; i < 16 * 16 * 4; ++i)
        std::memcpy(picture.mSource.Get() + 2 * i, &half, 2);
    ASSERT_EQ(Save(std::move(picture)), "");
    const wxImage image = Load("h.png");
    EXPECT_EQ(image.GetSize(), wxSize(6, 4));
    EXPECT_EQ(image.GetBlue(5, 3), 128);
}

// The part of a square that a picture shows is enough for it, whatever the rounding of its edges.
TEST_F(ThreadSave, HalfFloatsOfThePartThatIsShownAreEnough) {
    const int sizes[][3] = {{2048, 640, 480}, {2048, 480, 640}, {1000, 999, 7}, {999, 640, 360}, {64, 3, 200},
                            {97, 97, 97},     {64, 32, 32},     {64, 32, 18},   {64, 18, 32}};
    const std::array<std::uint16_t, 256> halves = MakeHalves();
    for (const auto& size : sizes) {
        const int side = size[0], w = size[1], h = size[2];
        SavePicture_st picture;
        picture.mWXStrFilename = mFolder + "/e.png";
        picture.mW = w;
        picture.mH = h;
        picture.mSrcW = picture.mSrcH = side;
        picture.mPart = GetMiddleOfSquare(side, w, h);
        picture.mbHalfFloat = picture.mbQuiet = true;
        Bytes bytes = MakeNoise(side, side, 3, 5);
        std::fill_n(bytes.begin() + side * side, side * side,
                    static_cast<unsigned char>(7)); // as backgrounds
        ASSERT_TRUE(picture.mSource.Allocate(picture.mPart.mW, picture.mPart.mH, 8));
        auto* pHalf = reinterpret_cast<std::uint16_t*>(picture.mSource.Get());
        for (int y = picture.mPart.mY; y < picture.mPart.mY + picture.mPart.mH; ++y)
            for (int x = picture.mPart.mX; x < picture.mPart.mX + picture.mPart.mW; ++x, pHalf += 4) {
                for (size_t c = 0; c < 3; ++c)
                    pHalf[c] = halves[bytes[(size_t(y) * size_t(side) + size_t(x)) * 3 + c]];
                pHalf[3] = 0x7e00; // no number, and nobody asks
            }
        Bytes expected = bytes;
        expected.resize(size_t(w) * size_t(h) * 3);
        if (w != side || h != side) ResampleMiddle(bytes.data(), side, side, expected.data(), w, h);
        ASSERT_EQ(Save(std::move(picture)), "");
        const wxImage image = Load("e.png").Mirror(false);
        EXPECT_EQ(0, std::memcmp(image.GetData(), expected.data(), expected.size())) << side << " " << w;
    }
}

TEST_F(ThreadSave, WithoutPixelsThereIsNoFile) {
    SavePicture_st picture;
    picture.mWXStrFilename = mFolder + "/n.png";
    picture.mW = picture.mH = 4;
    EXPECT_FALSE(Save(std::move(picture)).empty());
    EXPECT_FALSE(fs::exists(mFolder + "/n.png"));
}

} // namespace
