// Pictures: whether they carry a project, and those that only POV-Ray writes.
#include "FuzzFile.h"
#include "FuzzTargets.h"
#include "IMAGE/PictureOrigin.h"
#include "POVRAY/LikeDrawn.h"
#include "POVRAY/LinearPicture.h"
#include "POVRAY/PictureHead.h"

void FuzzPicture(const std::string& bytes) {
    const FuzzFile_cls file(bytes);
    PictureOrigin_st origin;
    wxString reason;
    const OriginFound found = ReadPictureOrigin(file.GetPath(), &origin, &reason);
    Promise((found == OriginFound::Broken) == !reason.empty(), "what is broken says why");
    Promise(found != OriginFound::Whole ||
                (!origin.mProject.empty() && origin.mProject.size() <= bytes.size() * 1100),
            "a project has a text, and no bomb goes off");
    Promise(LikeDrawn(bytes).size() <= bytes.size(), "only what is beside the picture goes");
}

void FuzzLinear(const std::string& bytes) {
    constexpr long long kMostPixels = 1 << 16;
    const FuzzFile_cls file(bytes);
    const wxImage image = ReadLinearPicture(file.GetPath(), kMostPixels);
    if (image.IsOk())
        Promise((long long)(image.GetWidth()) * image.GetHeight() <= kMostPixels,
                "a picture keeps in bounds");
    const PictureHead_st head = ReadWholePicture(bytes);
    Promise(head.mW >= 0 && head.mH >= 0, "a picture has a size or none");
    Promise(LikeDrawn(bytes).size() <= bytes.size(), "only what is beside the picture goes");
}
