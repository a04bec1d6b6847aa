// A mutating driver. Its inputs are made from shipped examples, malformed files and small files of each
// format; those that reach something new, where the code tells that, are seeds as well from then on.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>

#include "COMMON/MsgBox.h"
#include "FuzzTargets.h"
#include "MeshInputs.h"
#include "Mutator.h"
#include "ProjectInputs.h"
#include "Seeds.h"
#include "Trace.h"

namespace {

using Folders = std::vector<std::string>;
constexpr size_t kLongestKept = 1 << 16;
constexpr size_t kMostKept = 20000;
constexpr unsigned kPatience = 120; ///< seconds that an input may take

struct Target_st {
    const char* mName;
    void (*mpTake)(const std::string& bytes);
    Folders mFolders;     ///< of seeds
    unsigned mMadeOf = 0; ///< one of so many inputs is a changed seed, the others are made whole; 0: all are
    bool mbPictures = false; ///< pictures are seeds, too
};

const std::vector<Target_st>& GetTargets() {
    static const Folders kAll = {"tests/data/bad", "examples", "tests/data/small"};
    static const std::vector<Target_st> kTargets = {
        {"snapshot", FuzzSnapshot, kAll},
        {"guess", FuzzGuess, kAll},
        {"project", FuzzProject, kAll, 200},
        {"configure", FuzzConfigure, kAll, 200},
        {"obj", FuzzObj, {"tests/data/fuzz/obj"}, 3},
        {"mesh2", FuzzMesh2, {"tests/data/fuzz/mesh2"}, 3},
        {"stl", FuzzStl, {"tests/data/fuzz/stl"}},
        {"ply", FuzzPly, {"tests/data/fuzz/ply"}},
        {"glb", FuzzGlb, {"tests/data/fuzz/glb"}},
        {"bond", FuzzBond, {"tests/data/fuzz/bond"}},
        {"sticks", FuzzSticks, {"tests/data/fuzz/sticks"}},
        {"record", FuzzRecord, {"tests/data/fuzz/record"}},
        {"xyz", FuzzXyz, {"tests/data/fuzz/xyz"}},
        {"dump", FuzzDump, {"tests/data/fuzz/dump", "tests/data/bad/lammps"}},
        {"csv", FuzzCsv, {"tests/data/fuzz/csv"}},
        {"vtk", FuzzVtk, {"tests/data/fuzz/vtk"}},
        {"hdf5", FuzzHdf5, {"tests/data/fuzz/hdf5"}},
        {"h5md", FuzzH5md, {"tests/data/fuzz/h5md"}},
        {"note", FuzzNote, {"tests/data/fuzz/note"}},
        {"picture", FuzzPicture, {}, 0, true},
        {"linear", FuzzLinear, {"tests/data/fuzz/linear"}},
    };
    return kTargets;
}

struct Options_st {
    const Target_st* mpTarget = nullptr;
    long mRuns = 1000;
    double mSeconds = 1e9;
    unsigned mSeed = 1;
    const char* mpKeep = nullptr;  ///< a file that has the input at work
    const char* mpInput = nullptr; ///< a file to take, and no others
};

Options_st ReadOptions(int argc, char** argv) {
    Options_st options;
    for (int i = 1; i < argc; ++i) {
        for (const Target_st& target : GetTargets())
            if (std::strcmp(argv[i], target.mName) == 0) options.mpTarget = &target;
        if (i + 1 == argc) break;
        if (std::strcmp(argv[i], "--runs") == 0) options.mRuns = std::atol(argv[++i]);
        if (std::strcmp(argv[i], "--seconds") == 0) options.mSeconds = std::atof(argv[++i]);
        if (std::strcmp(argv[i], "--seed") == 0) options.mSeed = unsigned(std::atol(argv[++i]));
        if (std::strcmp(argv[i], "--keep") == 0) options.mpKeep = argv[++i];
        if (std::strcmp(argv[i], "--input") == 0) options.mpInput = argv[++i];
    }
    return options;
}

std::string MakeInput(const Target_st& target, const std::vector<std::string>& seeds, std::mt19937& random) {
    static const ProjectInputs_cls sProjects;
    // Few of a format with an order of lines are a whole file with a few bytes changed; most of those would
    // not reach what a line does.
    if (target.mMadeOf > 0 && random() % target.mMadeOf != 0) {
        if (target.mpTake == FuzzObj) return MakeObjInput(random);
        if (target.mpTake == FuzzMesh2) return MakeMesh2Input(random);
        return sProjects.Make(random);
    }
    std::string bytes = seeds[random() % seeds.size()];
    if (random() % 10 == 0) bytes = Splice(bytes, seeds[random() % seeds.size()], random);
    for (auto k = random() % 8; k > 0; --k)
        MutateOnce(bytes, random);
    return bytes;
}

/// For whoever looks for what ended us.
void Keep(const Options_st& options, const std::string& bytes) {
    if (!options.mpKeep) return;
    std::ofstream(options.mpKeep, std::ios::binary) << bytes;
}

int TakeFile(const Options_st& options) {
    std::ifstream file(options.mpInput, std::ios::binary);
    options.mpTarget->mpTake({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    return file.is_open() ? 0 : 2;
}

void Fuzz(const Options_st& options, std::vector<std::string> seeds) {
    std::mt19937 random(options.mSeed);
    const size_t given = seeds.size();
    const auto start = std::chrono::steady_clock::now();
    std::chrono::duration<double> seconds{};
    long run = 0;
    for (; run < options.mRuns && seconds.count() < options.mSeconds; ++run) {
        const std::string bytes =
            size_t(run) < given ? seeds[size_t(run)] : MakeInput(*options.mpTarget, seeds, random);
        Keep(options, bytes);
        alarm(kPatience);
        BeginTrace();
        options.mpTarget->mpTake(bytes);
        if (EndTrace() && size_t(run) >= given && bytes.size() <= kLongestKept && seeds.size() < kMostKept)
            seeds.push_back(bytes);
        seconds = std::chrono::steady_clock::now() - start;
    }
    std::printf("%s: %ld inputs taken in %.1f s, %zu of them new seeds\n", options.mpTarget->mName, run,
                seconds.count(), seeds.size() - given);
}

} // namespace

int main(int argc, char** argv) {
    const wxInitializer initializer;
    wxLog::EnableLogging(false);
    SetMessageHandler([](MessageKind, const wxString&, const wxString&) { return true; });
    const Options_st options = ReadOptions(argc, argv);
    if (!options.mpTarget || !initializer.IsOk()) {
        std::fprintf(stderr, "usage: morentis_fuzz TARGET [--runs N] [--seconds S] [--seed S] [--keep FILE] "
                             "[--input FILE]\ntargets:");
        for (const Target_st& target : GetTargets())
            std::fprintf(stderr, " %s", target.mName);
        std::fprintf(stderr, "\n");
        return 2;
    }
    if (options.mpInput) return TakeFile(options);
    std::vector<std::string> seeds = ReadSeeds(options.mpTarget->mFolders);
    if (options.mpTarget->mbPictures) seeds = MakePictures();
    if (seeds.empty()) return 2;
    Fuzz(options, std::move(seeds));
    return 0;
}
