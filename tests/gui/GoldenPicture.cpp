#include "GoldenPicture.h"

#include <cstdlib>
#include <filesystem>

#include <wx/image.h>

namespace {

constexpr double kMeanLimit = 1.5;
constexpr int kFarOff = 48;
constexpr double kFarShare = 0.01;

wxImage ToImage(const Picture_st& picture) {
    wxImage image(picture.mW, picture.mH);
    std::copy(picture.mRGB.begin(), picture.mRGB.end(), image.GetData());
    return image;
}

std::string SaveBeside(const std::string& name, const wxImage& image) {
    const char* folder = std::getenv("MORENTIS_GUI_PICTURES");
    const std::filesystem::path place = folder ? folder : std::filesystem::temp_directory_path();
    const std::string path = (place / ("golden_" + name + ".png")).string();
    image.SaveFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG);
    return path;
}

} // namespace

::testing::AssertionResult IsGolden(const std::string& name, const Picture_st& picture) {
    const wxImage actual = ToImage(picture);
    const wxString path =
        wxString::FromUTF8(std::string(MORENTIS_TEST_ROOT) + "/tests/golden/" + name + ".png");
    if (std::getenv("MORENTIS_WRITE_GOLDEN")) {
        actual.SaveFile(path, wxBITMAP_TYPE_PNG);
        return ::testing::AssertionSuccess();
    }
    wxImage golden;
    if (!golden.LoadFile(path)) return ::testing::AssertionFailure() << path << " can't be read";
    if (golden.GetSize() != actual.GetSize()) {
        return ::testing::AssertionFailure() << name << " is " << picture.mW << " x " << picture.mH
                                             << ", not " << golden.GetWidth() << " x " << golden.GetHeight();
    }
    const int pixels = picture.mW * picture.mH;
    wxImage difference(picture.mW, picture.mH);
    double sum = 0.0;
    int far = 0;
    for (int i = 0; i < pixels; ++i) {
        int largest = 0;
        for (int c = 0; c < 3; ++c) {
            const int off = std::abs(int(golden.GetData()[3 * i + c]) - int(actual.GetData()[3 * i + c]));
            difference.GetData()[3 * i + c] = static_cast<unsigned char>(std::min(4 * off, 255));
            sum += off;
            largest = std::max(largest, off);
        }
        far += largest > kFarOff;
    }
    const double mean = sum / (3.0 * pixels);
    if (mean <= kMeanLimit && far <= kFarShare * pixels) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << name << ": " << mean << " of 255 off on average, " << far << " of " << pixels
           << " pixels far off; " << SaveBeside(name, actual) << ", "
           << SaveBeside(name + "_difference", difference);
}
