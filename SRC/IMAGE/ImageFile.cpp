#include "IMAGE/ImageFile.h"

#include <string>

#include <wx/image.h>
#include <wx/intl.h>
#include <wx/log.h>
#include <wx/mstream.h>

#include "COMMON/SafeFile.h"
#include "COMMON/clsSplitPath.h"

namespace {

// What the compressor does: the fast way gives up about nothing on pictures of points.
constexpr int kFastLevel = 1;
constexpr int kRunLengths = 3; // strategy
constexpr int kSmallLevel = 9;
constexpr int kDefaultStrategy = 0;
constexpr int kLZW = 5; // TIFF

wxImageHandler* FindWriter(const wxString& path) {
    const wxString ending = SplitPath_cls(path).mStrExt.Mid(1);
    return ending.empty() ? nullptr : wxImage::FindHandler(ending.Lower(), wxBITMAP_TYPE_ANY);
}

void SetOptions(wxImage& image, const ImageFormat_st& format) {
    image.SetOption(wxIMAGE_OPTION_QUALITY, format.mJPEGQuality);
    image.SetOption(wxIMAGE_OPTION_PNG_COMPRESSION_LEVEL, format.mbSmallestPNG ? kSmallLevel : kFastLevel);
    image.SetOption(wxIMAGE_OPTION_PNG_COMPRESSION_STRATEGY,
                    format.mbSmallestPNG ? kDefaultStrategy : kRunLengths);
    image.SetOption(wxIMAGE_OPTION_TIFF_COMPRESSION, kLZW);
}

} // namespace

wxString GetWritableImageEndings() {
    wxString text;
    for (const wxObject* pObject : wxImage::GetHandlers())
        text += (text.empty() ? "" : ", ") + static_cast<const wxImageHandler*>(pObject)->GetExtension();
    return text;
}

bool IsImageEndingWritable(const wxString& path) { return FindWriter(path) != nullptr; }

wxString WriteImageFile(const wxImage& image, const wxString& path, const ImageFormat_st& format) {
    const wxLogNull quiet; // the reason goes back to the caller
    wxImageHandler* pWriter = FindWriter(path);
    if (!pWriter)
        return wxString::Format(_("no picture can be written with this ending (there are %s)"),
                                GetWritableImageEndings());
    wxImage picture = image; // shares the pixels
    SetOptions(picture, format);
    wxMemoryOutputStream stream;
    if (!picture.SaveFile(stream, pWriter->GetType())) return _("the picture can't be put into this format");
    std::string bytes(stream.GetSize(), '\0');
    stream.CopyTo(bytes.data(), bytes.size());
    return WriteFileSafely(path, bytes, format.mbForceToDisk ? ToDisk::Force : ToDisk::Later);
}
