#include "Seeds.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <wx/image.h>
#include <wx/mstream.h>

#include "IMAGE/PictureOrigin.h"

namespace {

constexpr size_t kLongestSeed = 20000;

} // namespace

std::vector<std::string> ReadSeeds(const std::vector<std::string>& folders) {
    const std::string root = MORENTIS_TEST_ROOT;
    std::vector<std::filesystem::path> paths;
    for (const std::string& folder : folders)
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root + "/" + folder))
            if (entry.is_regular_file()) paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end()); // the same inputs everywhere
    std::vector<std::string> seeds;
    for (const auto& path : paths) {
        std::ifstream file(path, std::ios::binary);
        std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        bytes.resize(std::min(bytes.size(), kLongestSeed));
        seeds.push_back(bytes);
    }
    return seeds;
}

std::vector<std::string> MakePictures() {
    wxInitAllImageHandlers();
    std::vector<std::string> pictures;
    PictureOrigin_st origin;
    origin.mProject = "DataSequence0=0\nmelt0000.bin\n";
    origin.mSoftware = "Morentis 1";
    for (const wxBitmapType type : {wxBITMAP_TYPE_PNG, wxBITMAP_TYPE_TIFF}) {
        wxMemoryOutputStream stream;
        if (!wxImage(2, 2).SaveFile(stream, type)) continue;
        std::string bytes(stream.GetSize(), '\0');
        stream.CopyTo(bytes.data(), bytes.size());
        for (const size_t more : {0, 2000}) { // short texts and compressed ones
            origin.mProject += std::string(more, 'x');
            const OriginPack_cls pack(origin);
            pictures.push_back(bytes);
            if (type == wxBITMAP_TYPE_PNG)
                pack.AddToPNG("1+1/2", &pictures.back());
            else
                pack.AddToTIFF("1+1/2", &pictures.back());
        }
    }
    return pictures;
}
