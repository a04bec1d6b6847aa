#include "IMAGE/ImageFile.h"

#include <string>

#include <wx/image.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/mstream.h>

#include "COMMON/SafeFile.h"
#include "COMMON/WorkTimes.h"
#include "COMMON/clsSplitPath.h"
#include "IMAGE/PictureOrigin.h"
#include "IMAGE/PngPack.h"

namespace {

// Of PNG files: on pictures of particles guessing filters costs the most time and often gains nothing.
constexpr int kFastLevel = 1;
constexpr int kSmallLevel = 9;
constexpr int kNoFilter = 8; // as the library numbers them
constexpr int kAllFilters = 0xf8;
constexpr int kPieceBytes = 65536;
// Of TIFF files.
constexpr int kLZW = 5;
constexpr size_t kTiffEntryBytes = 12;
constexpr size_t kExtraSamples = 338;
constexpr int kUnassociatedAlpha = 2;

wxImageHandler* FindWriter(const wxString& path) {
    const wxString ending = SplitPath_cls(path).mStrExt.Mid(1);
    return ending.empty() ? nullptr : wxImage::FindHandler(ending.Lower(), wxBITMAP_TYPE_ANY);
}

bool Encode(wxImage& picture, wxBitmapType type, std::string* pBytes) {
    wxMemoryOutputStream stream;
    if (!picture.SaveFile(stream, type)) return false;
    pBytes->resize(stream.GetSize());
    stream.CopyTo(pBytes->data(), pBytes->size());
    return true;
}

bool EncodePNG(wxImage& picture, bool bSmallest, std::string* pBytes) {
    const bool bPacked = !picture.HasMask() && !picture.HasPalette() &&
                         PackPNG(picture.GetData(), picture.HasAlpha() ? picture.GetAlpha() : nullptr,
                                 picture.GetWidth(), picture.GetHeight(), pBytes);
    if (bPacked && !bSmallest) return true;
    picture.SetOption(wxIMAGE_OPTION_PNG_COMPRESSION_BUFFER_SIZE, kPieceBytes);
    picture.SetOption(wxIMAGE_OPTION_PNG_COMPRESSION_LEVEL, bSmallest ? kSmallLevel : kFastLevel);
    bool bDone = bPacked;
    for (const int filter : {kNoFilter, kAllFilters}) {
        std::string bytes;
        picture.SetOption(wxIMAGE_OPTION_PNG_FILTER, filter);
        if (Encode(picture, wxBITMAP_TYPE_PNG, &bytes) && (!bDone || bytes.size() < pBytes->size())) {
            pBytes->swap(bytes);
            bDone = true;
        }
        if (!bSmallest) break;
    }
    return bDone;
}

/// The library leaves open what a TIFF's fourth sample is. Ours is alpha that the colours aren't multiplied
/// by.
void MarkStraightAlpha(std::string* pBytes) {
    std::string& bytes = *pBytes;
    if (bytes.size() < 8) return;
    const bool bLittle = bytes[0] == 'I';
    const auto number = [&](size_t at, int length) {
        size_t value = 0;
        for (int k = 0; k < length && at + size_t(k) < bytes.size(); ++k) {
            const size_t byte = static_cast<unsigned char>(bytes[at + size_t(bLittle ? length - 1 - k : k)]);
            value = value << 8 | byte;
        }
        return value;
    };
    const size_t directory = number(4, 4);
    if (directory + 2 > bytes.size()) return;
    const size_t count = number(directory, 2);
    for (size_t i = 0; i < count; ++i) {
        const size_t entry = directory + 2 + i * kTiffEntryBytes;
        if (entry + kTiffEntryBytes > bytes.size() || number(entry, 2) != kExtraSamples) continue;
        bytes[entry + (bLittle ? 8 : 9)] = char(kUnassociatedAlpha);
    }
}

void AddOrigin(const ImageOrigin_st& origin, wxBitmapType type, std::string* pBytes) {
    if (!origin.mpPack) return;
    if (type == wxBITMAP_TYPE_PNG) origin.mpPack->AddToPNG(origin.mFrame, pBytes);
    if (type == wxBITMAP_TYPE_TIFF) origin.mpPack->AddToTIFF(origin.mFrame, pBytes);
}

} // namespace

wxString GetWritableImageEndings() {
    wxString text;
    for (const wxObject* pObject : wxImage::GetHandlers())
        text += (text.empty() ? "" : ", ") + static_cast<const wxImageHandler*>(pObject)->GetExtension();
    return text;
}

wxString WriteImageFile(wxImage picture, const wxString& path, const ImageFormat_st& format) {
    const wxLogNull quiet; // the reason goes back to the caller
    wxImageHandler* pWriter = FindWriter(path);
    if (!pWriter)
        return wxString::Format(_("no picture can be written with this ending (there are %s)"),
                                GetWritableImageEndings());
    picture.SetOption(wxIMAGE_OPTION_QUALITY, format.mJPEGQuality);
    picture.SetOption(wxIMAGE_OPTION_TIFF_COMPRESSION, kLZW);
    std::string bytes;
    const auto pack = [&] {
        const WorkScope_cls work(Work::Pack);
        return pWriter->GetType() == wxBITMAP_TYPE_PNG ? EncodePNG(picture, format.mbSmallestPNG, &bytes)
                                                       : Encode(picture, pWriter->GetType(), &bytes);
    };
    if (!pack()) return _("the picture can't be put into this format");
    if (pWriter->GetType() == wxBITMAP_TYPE_TIFF) MarkStraightAlpha(&bytes);
    AddOrigin(format.mOrigin, pWriter->GetType(), &bytes);
    const WorkScope_cls work(Work::Write);
    return WriteFileSafely(path, bytes, format.mbForceToDisk ? ToDisk::Force : ToDisk::Later);
}
