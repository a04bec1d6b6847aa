// A picture in memory into a file whose ending names the format.
#pragma once

#include <wx/string.h>

#include "IMAGE/PictureOrigin.h"

class wxImage;

struct ImageFormat_st {
    int mJPEGQuality = 95;      ///< 0 to 100
    bool mbSmallestPNG = false; ///< take the time for small PNG files
    bool mbForceToDisk = false; ///< wait until the disk has it
    ImageOrigin_st mOrigin;     ///< PNG and TIFF files carry it
};

/// Endings that can be written, for messages: "png, jpg, ...".
wxString GetWritableImageEndings();

/// Written beside and renamed, so that a name always stands for a whole picture. May run in any thread.
/// A picture that nobody else holds isn't copied.
/// \return empty on success, else the reason.
wxString WriteImageFile(wxImage picture, const wxString& path, const ImageFormat_st& format);
