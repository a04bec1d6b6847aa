// The importer as a program against what the same bytes cost at the least, measured in the same run. HDF5
// snapshots: H5Dread of all datasets and write(2) of them to a file, which is the work of "h5dump -b"
// (counter "ratio", ours / limit), and H5Dread alone ("bare"). Text: read(2) and write(2). All files lie in
// the page cache.
#include <hdf5.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
constexpr size_t kParticles = 3000000;
constexpr int kRounds = 5;
const char* const kNames[] = {"Coordinates", "Velocities", "ParticleIDs", "Density"};

double Seconds(const std::chrono::steady_clock::time_point& since) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

/// A folder for the length of one benchmark.
class BenchFolder_cls {
public:
    BenchFolder_cls() {
        const char* dir = std::getenv("TMPDIR");
        mPath = std::string(dir ? dir : "/tmp") + "/morentis_bench_XXXXXX";
        if (!mkdtemp(mPath.data())) std::abort();
    }
    ~BenchFolder_cls() { fs::remove_all(mPath); }
    BenchFolder_cls(const BenchFolder_cls&) = delete;
    BenchFolder_cls& operator=(const BenchFolder_cls&) = delete;
    std::string mPath;
};

template <class T>
void AddData(hid_t file, const std::string& name, hid_t type, hsize_t width, const std::vector<T>& values) {
    const hsize_t sizes[2] = {values.size() / width, width};
    const hid_t space = H5Screate_simple(width > 1 ? 2 : 1, sizes, nullptr);
    const hid_t data = H5Dcreate2(file, name.c_str(), type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
    H5Dwrite(data, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
    H5Dclose(data);
    H5Sclose(space);
}

/// Numbers of `T` with IDs in ascending order, or in none.
template <class T>
void WriteSnapshot(const std::string& path, hid_t type, bool bSorted) {
    std::mt19937 random(1);
    std::vector<T> numbers(3 * kParticles);
    for (T& number : numbers)
        number = std::uniform_real_distribution<T>(0, 8)(random);
    std::vector<unsigned> ids(kParticles);
    for (size_t i = 0; i < ids.size(); ++i)
        ids[i] = static_cast<unsigned>(i);
    if (!bSorted) std::shuffle(ids.begin(), ids.end(), random);
    const hid_t file = H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
    for (const char* group : {"Header", "PartType0"})
        H5Gclose(H5Gcreate2(file, group, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
    const hsize_t six = 6;
    const int counts[6] = {int(kParticles), 0, 0, 0, 0, 0};
    const hid_t space = H5Screate_simple(1, &six, nullptr);
    const hid_t count = H5Acreate_by_name(file, "Header", "NumPart_ThisFile", H5T_NATIVE_INT, space,
                                          H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
    H5Awrite(count, H5T_NATIVE_INT, counts);
    H5Aclose(count);
    H5Sclose(space);
    AddData(file, "PartType0/Coordinates", type, 3, numbers);
    AddData(file, "PartType0/Velocities", type, 3, numbers);
    AddData(file, "PartType0/ParticleIDs", H5T_NATIVE_UINT, 1, ids);
    numbers.resize(kParticles);
    AddData(file, "PartType0/Density", type, 1, numbers);
    H5Fclose(file);
}

/// All datasets as they are stored; `pOut`: where they are written, null: nowhere.
void ReadBare(const std::string& path, std::ofstream* pOut) {
    const hid_t file = H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    std::vector<char> bytes;
    for (const char* name : kNames) {
        const hid_t data = H5Dopen2(file, ("PartType0/" + std::string(name)).c_str(), H5P_DEFAULT);
        const hid_t type = H5Dget_type(data);
        bytes.resize(static_cast<size_t>(H5Dget_storage_size(data)));
        H5Dread(data, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, bytes.data());
        benchmark::DoNotOptimize(bytes.data());
        if (pOut) pOut->write(bytes.data(), static_cast<long>(bytes.size()));
        H5Tclose(type);
        H5Dclose(data);
    }
    H5Fclose(file);
}

void ReadPlain(const std::string& path, std::ofstream* pOut) {
    std::vector<char> bytes(1 << 18);
    std::ifstream file(path, std::ios::binary);
    while (file.read(bytes.data(), static_cast<long>(bytes.size())) || file.gcount() > 0)
        if (pOut) pOut->write(bytes.data(), file.gcount());
}

void Import(const std::string& path, const std::string& output) {
    const pid_t pid = fork();
    if (pid == 0) {
        execl(MORENTIS_IMPORT, MORENTIS_IMPORT, "--quiet", "--output", output.c_str(), path.c_str(), nullptr);
        _exit(126);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    if (status != 0) std::abort();
}

/// Ours and the limit in turn, the best of each.
template <class READ>
void Measure(benchmark::State& state, const std::string& folder, const std::string& path, const READ& read) {
    const auto bytes = static_cast<double>(fs::file_size(path));
    double ours = 1e9;
    double limit = 1e9;
    double bare = 1e9;
    for (auto _ : state) {
        for (int round = 0; round < kRounds; ++round) {
            auto start = std::chrono::steady_clock::now();
            read(path, nullptr);
            bare = std::min(bare, Seconds(start));
            start = std::chrono::steady_clock::now();
            {
                std::ofstream out(folder + "/copy", std::ios::binary);
                read(path, &out);
            }
            limit = std::min(limit, Seconds(start));
            fs::remove(folder + "/copy");
            start = std::chrono::steady_clock::now();
            Import(path, folder + "/out");
            ours = std::min(ours, Seconds(start));
            fs::remove_all(folder + "/out");
        }
    }
    state.counters["MB/s"] = bytes / ours / 1e6;
    state.counters["limit MB/s"] = bytes / limit / 1e6;
    state.counters["ratio"] = limit / ours;
    state.counters["bare"] = bare / ours;
}

void ImportHdf5(benchmark::State& state) {
    const BenchFolder_cls folder;
    const std::string path = folder.mPath + "/s.hdf5";
    if (state.range(0) == 32)
        WriteSnapshot<float>(path, H5T_NATIVE_FLOAT, state.range(1) == 1);
    else
        WriteSnapshot<double>(path, H5T_NATIVE_DOUBLE, state.range(1) == 1);
    Measure(state, folder.mPath, path, ReadBare);
}
BENCHMARK(ImportHdf5)
    ->ArgNames({"bits", "sorted"})
    ->ArgsProduct({{32, 64}, {1, 0}})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

void ImportText(benchmark::State& state) {
    const BenchFolder_cls folder;
    const std::string path = folder.mPath + "/a.dump";
    constexpr int kAtoms = 500000;
    std::string text = "ITEM: TIMESTEP\n0\nITEM: NUMBER OF ATOMS\n" + std::to_string(kAtoms) +
                       "\nITEM: BOX BOUNDS pp pp pp\n0 8\n0 8\n0 8\nITEM: ATOMS id type x y z\n";
    std::mt19937 random(1);
    std::uniform_real_distribution<double> place(0, 8);
    for (int i = 1; i <= kAtoms; ++i)
        text += std::to_string(i) + " 1 " + std::to_string(place(random)) + " " +
                std::to_string(place(random)) + " " + std::to_string(place(random)) + "\n";
    std::ofstream(path) << text;
    Measure(state, folder.mPath, path, ReadPlain);
}
BENCHMARK(ImportText)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
