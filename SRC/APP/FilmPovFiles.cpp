#include "APP/FilmPovFiles.h"

#include <cmath>

#include <wx/image.h>
#include <wx/log.h>

#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"
#include "IMAGE/ImageCheck.h"
#include "IMAGE/ImageFile.h"
#include "POVRAY/PictureHead.h"

namespace {

constexpr size_t kChannels = 4;
constexpr size_t kMostBytes = size_t(1) << 32; // of a picture

/// Colours count by how much of them is there.
class Sum_cls {
public:
    bool Add(const wxImage& image) {
        if (mSums.empty()) {
            mSize = image.GetSize();
            mbAlpha = image.HasAlpha();
            mSums.assign(size_t(mSize.x) * size_t(mSize.y) * kChannels, 0.0f);
        }
        if (image.GetSize() != mSize || image.HasAlpha() != mbAlpha) return false;
        const unsigned char* color = image.GetData();
        const unsigned char* alpha = image.GetAlpha();
        for (size_t i = 0; i < mSums.size() / kChannels; ++i) {
            const float weight = alpha ? float(alpha[i]) : 255.0f;
            for (size_t c = 0; c < 3; ++c)
                mSums[i * kChannels + c] += float(color[i * 3 + c]) * weight;
            mSums[i * kChannels + 3] += weight;
        }
        ++mNumber;
        return true;
    }
    wxImage GetMean() const {
        wxImage image(mSize, false);
        if (mbAlpha) image.SetAlpha();
        for (size_t i = 0; i < mSums.size() / kChannels; ++i) {
            const float weight = mSums[i * kChannels + 3];
            for (size_t c = 0; c < 3; ++c)
                image.GetData()[i * 3 + c] =
                    weight > 0.0f ? static_cast<unsigned char>(std::lround(mSums[i * kChannels + c] / weight))
                                  : static_cast<unsigned char>(0);
            if (mbAlpha)
                image.GetAlpha()[i] = static_cast<unsigned char>(std::lround(weight / float(mNumber)));
        }
        return image;
    }

private:
    wxSize mSize;
    bool mbAlpha = false;
    int mNumber = 0;
    std::vector<float> mSums;
};

} // namespace

wxString AveragePictures(const std::vector<wxString>& pictures, const wxString& path) {
    const wxLogNull quiet;
    Sum_cls sum;
    for (const wxString& picture : pictures) {
        wxImage image;
        if (!image.LoadFile(picture)) return picture + " can't be read";
        if (!sum.Add(image)) return picture + " is of another size than the picture before it";
    }
    return WriteImageFile(sum.GetMean(), path, ImageFormat_st());
}

bool IsWholePovPicture(const wxString& path, int w, int h, bool bAlpha) {
    const wxString ending = SplitPath_cls(path).mStrExt;
    if (ending == ".png" || ending == ".jpg") return IsWholeImage(path, w, h, bAlpha);
    std::string bytes;
    if (ReadWholeFile(path, kMostBytes, &bytes) != ReadFileResult::Ok) return false;
    const PictureHead_st head = ReadWholePicture(bytes);
    return head.mW == w && head.mH == h && head.mbAlpha == bAlpha;
}
