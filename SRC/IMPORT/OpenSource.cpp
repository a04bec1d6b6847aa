#include "IMPORT/OpenSource.h"

#include <algorithm>
#include <filesystem>

#include "IMPORT/Hdf5Guard.h"
#include "IMPORT/ImportText.h"
#include "IMPORT/clsCsvReader.h"
#include "IMPORT/clsDumpReader.h"
#include "IMPORT/clsH5mdReader.h"
#include "IMPORT/clsHdf5File.h"
#include "IMPORT/clsHdf5Snapshot.h"
#include "IMPORT/clsVtkReader.h"
#include "IMPORT/clsXyzReader.h"

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Digits by what they say, all else by the letters.
bool IsBefore(const std::string& a, const std::string& b) {
    size_t i = 0;
    size_t k = 0;
    while (i < a.size() && k < b.size()) {
        if (!IsDigit(a[i]) || !IsDigit(b[k])) {
            if (a[i] != b[k]) return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[k]);
            ++i;
            ++k;
            continue;
        }
        const auto take = [](const std::string& text, size_t* pPlace) {
            size_t end = *pPlace;
            while (end < text.size() && IsDigit(text[end]))
                ++end;
            std::string digits = text.substr(*pPlace, end - *pPlace);
            digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
            *pPlace = end;
            return digits;
        };
        const std::string one = take(a, &i);
        const std::string other = take(b, &k);
        if (one.size() != other.size()) return one.size() < other.size();
        if (one != other) return one < other;
    }
    return a.size() - i < b.size() - k;
}

template <class READER>
std::unique_ptr<ParticleSource_cls> OpenHdf5(const std::string& path, const ImportChoice_st& choice) {
    LookFirst(path, [&] {
        READER::Look(path, choice);
        return true;
    });
    return std::make_unique<READER>(path, choice);
}

} // namespace

std::vector<std::string> OrderImportFiles(const std::vector<std::string>& files) {
    std::vector<std::string> ordered;
    for (const std::string& file : files) { // "./a" is "a"; but "b/../a" is another where b is a link
        const std::filesystem::path path(file);
        const bool bUp = std::find(path.begin(), path.end(), "..") != path.end();
        ordered.push_back(bUp ? file : path.lexically_normal().string());
    }
    std::stable_sort(ordered.begin(), ordered.end(), IsBefore);
    ordered.erase(std::unique(ordered.begin(), ordered.end()), ordered.end());
    return ordered;
}

std::string GuessImportFormat(const std::string& path) {
    if (Hdf5File_cls::IsHdf5(path))
        return LookFirst(path, [&] { return H5mdReader_cls::IsH5md(path); }) ? "h5md" : "hdf5";
    LineReader_cls reader(path);
    std::string_view line;
    std::string first;
    while (first.empty() && reader.Next(&line))
        first = std::string(Trim(line.substr(0, 1000)));
    if (StartsWith(first, "ITEM:")) return "dump";
    if (VtkReader_cls::IsVtk(first)) return "vtk";
    long long number = 0;
    if (ReadNumber(first, &number)) return "xyz";
    if (FindCsvSeparator(first) != 0) return "csv";
    throw ImportError_cls(path + ": no known format; name one with --from");
}

std::unique_ptr<ParticleSource_cls> OpenImportSource(const std::string& path, const std::string& format,
                                                     const ImportChoice_st& choice) {
    const std::string kind = format.empty() ? GuessImportFormat(path) : format;
    if (kind == "dump") return std::make_unique<DumpReader_cls>(path, choice);
    if (kind == "hdf5") return OpenHdf5<Hdf5Snapshot_cls>(path, choice);
    if (kind == "h5md") return OpenHdf5<H5mdReader_cls>(path, choice);
    if (kind == "xyz") return std::make_unique<XyzReader_cls>(path, choice);
    if (kind == "csv") return std::make_unique<CsvReader_cls>(path, choice);
    if (kind == "vtk") return std::make_unique<VtkReader_cls>(path, choice);
    throw ImportError_cls(path + ": this format can't be read");
}
