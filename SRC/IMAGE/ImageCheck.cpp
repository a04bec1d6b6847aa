#include "IMAGE/ImageCheck.h"

#include <string>

#include <wx/image.h>
#include <wx/log.h>
#include <wx/mstream.h>

#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"

namespace {

constexpr size_t kLargestPicture = size_t(4) << 30;

/// The reader fills up with grey what is missing at the end.
bool IsCutJPEG(const std::string& bytes) {
    return bytes.compare(0, 2, "\xff\xd8") == 0 && bytes.compare(bytes.size() - 2, 2, "\xff\xd9") != 0;
}

/// This one's reader takes what is missing for black. Bytes 2 to 5 tell how long the file is.
bool IsCutBMP(const std::string& bytes) {
    if (bytes.size() < 6 || bytes.compare(0, 2, "BM") != 0) return false;
    size_t length = 0;
    for (size_t k = 4; k > 0; --k)
        length = length << 8 | static_cast<unsigned char>(bytes[1 + k]);
    return length > bytes.size();
}

/// A picture that covers everything may still be stored with alpha; the reader forgets it.
bool IsStoredWithAlpha(const std::string& bytes, const wxImage& image) {
    constexpr size_t kColorType = 25; // of a PNG
    if (bytes.compare(0, 4, "\x89PNG") == 0 && bytes.size() > kColorType) return (bytes[kColorType] & 4) != 0;
    return image.HasAlpha();
}

} // namespace

bool IsWholeImage(const wxString& path, int w, int h, bool bAlpha) {
    std::string bytes;
    if (ReadWholeFile(path, kLargestPicture, &bytes) != ReadFileResult::Ok || bytes.size() < 16) return false;
    const wxLogNull quiet;
    const wxString ending = SplitPath_cls(path).mStrExt.Mid(1).Lower();
    const wxImageHandler* pReader = wxImage::FindHandler(ending, wxBITMAP_TYPE_ANY);
    wxMemoryInputStream stream(bytes.data(), bytes.size());
    wxImage image;
    if (!pReader || !image.LoadFile(stream, pReader->GetType())) return false;
    return image.GetWidth() == w && image.GetHeight() == h && IsStoredWithAlpha(bytes, image) == bAlpha &&
           !IsCutJPEG(bytes) && !IsCutBMP(bytes);
}
