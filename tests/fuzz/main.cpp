// A small mutating driver: takes the shipped examples and malformed files as seeds.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/mstream.h>

#include "COMMON/MsgBox.h"
#include "FuzzTargets.h"
#include "IMAGE/PictureOrigin.h"
#include "MeshInputs.h"
#include "ProjectInputs.h"

namespace {

constexpr size_t kLongestSeed = 20000;

std::vector<std::string> ReadSeeds() {
    const std::string root = MORENTIS_TEST_ROOT;
    std::vector<std::string> seeds;
    for (const char* folder : {"/tests/data/bad", "/examples", "/tests/data/small"})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root + folder)) {
            if (!entry.is_regular_file()) continue;
            std::ifstream file(entry.path(), std::ios::binary);
            std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            bytes.resize(std::min(bytes.size(), kLongestSeed));
            seeds.push_back(bytes);
        }
    return seeds;
}

/// One of each kind that carries a project.
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

void MutateOnce(std::string& bytes, std::mt19937& random) {
    static const char* const kTokens[] = {"-1",
                                          "2147483647",
                                          "99999999999",
                                          "nan",
                                          "inf",
                                          "1e400",
                                          "0x1p3",
                                          "\n",
                                          "\r\n",
                                          "\t",
                                          "=",
                                          " ",
                                          "-",
                                          "TimeAnimStep=",
                                          "DataLoadGrammerBody=",
                                          "DataSequence0=0\n",
                                          "\xff\xfe",
                                          "%s%n"};
    const size_t at = bytes.empty() ? 0 : random() % bytes.size();
    switch (random() % 6) {
    case 0:
        if (!bytes.empty()) bytes[at] = char(random());
        break;
    case 1:
        bytes.resize(at);
        break;
    case 2:
        bytes.insert(at, kTokens[random() % (sizeof kTokens / sizeof kTokens[0])]);
        break;
    case 3:
        bytes.erase(at, random() % 20);
        break;
    case 4:
        bytes.insert(at, bytes.substr(at / 2, random() % 200));
        break;
    default:
        if (bytes.size() >= 8) { // where binary heads keep their count
            const auto count = unsigned(random() >> (random() % 32));
            std::memcpy(&bytes[4 * (random() % 2)], &count, 4);
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    const wxInitializer initializer;
    wxLog::EnableLogging(false);
    SetMessageHandler([](MessageKind, const wxString&, const wxString&) { return true; });
    long runs = 1000;
    unsigned seed = 1;
    void (*target)(const std::string&) = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "snapshot") == 0) target = FuzzSnapshot;
        if (std::strcmp(argv[i], "guess") == 0) target = FuzzGuess;
        if (std::strcmp(argv[i], "project") == 0) target = FuzzProject;
        if (std::strcmp(argv[i], "mesh") == 0) target = FuzzMesh;
        if (std::strcmp(argv[i], "picture") == 0) target = FuzzPicture;
        if (std::strcmp(argv[i], "--runs") == 0 && i + 1 < argc) runs = std::atol(argv[++i]);
        if (std::strcmp(argv[i], "--seed") == 0 && i + 1 < argc) seed = unsigned(std::atol(argv[++i]));
    }
    const std::vector<std::string> seeds = target == FuzzPicture ? MakePictures() : ReadSeeds();
    if (!target || seeds.empty() || !initializer.IsOk()) {
        std::fprintf(stderr,
                     "usage: morentis_fuzz snapshot|guess|project|mesh|picture [--runs N] [--seed S]\n");
        return 2;
    }
    std::mt19937 random(seed);
    const ProjectInputs_cls projects;
    const auto start = std::chrono::steady_clock::now();
    for (long run = 0; run < runs; ++run) {
        std::string bytes;
        // Few inputs are a whole file with a few bytes changed; most of those would not reach what a line
        // does.
        if (target == FuzzProject && random() % 200 != 0) {
            bytes = projects.Make(random);
        } else if (target == FuzzMesh && random() % 50 != 0) {
            bytes = MakeMeshInput(random);
        } else {
            bytes = seeds[random() % seeds.size()];
            for (auto k = random() % 8; k > 0; --k)
                MutateOnce(bytes, random);
        }
        target(bytes);
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf("%ld inputs taken in %.1f s\n", runs, seconds.count());
    return 0;
}
