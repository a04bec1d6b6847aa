#include "IMPORT/clsHdf5File.h"

#include <hdf5.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "IMPORT/Hdf5Held.h"
#include "IMPORT/ParticleSource.h"
#include "IMPORT/clsHdf5Data.h"

namespace {

constexpr hssize_t kMostValues = 1000; // of an attribute
constexpr hsize_t kMostLinks = 10000;  // of a group

// A pipe would hold us until somebody writes.
std::string WhyNotPlain(const std::string& path) {
    struct stat facts {};
    if (stat(path.c_str(), &facts) != 0) return std::strerror(errno);
    return S_ISREG(facts.st_mode) ? "" : "is no plain file";
}

} // namespace

bool Hdf5File_cls::IsHdf5(const std::string& path) {
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    if (!WhyNotPlain(path).empty()) return false;
    return H5Fis_hdf5(path.c_str()) > 0;
}

Hdf5File_cls::Hdf5File_cls(const std::string& path) : mPath(path) {
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr); // the library would write pages of its own
    const std::string wrong = WhyNotPlain(path);
    if (!wrong.empty()) Fail(wrong);
    mFile = H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT);
    if (mFile < 0) Fail("can't be opened as HDF5, or is cut off");
}

Hdf5File_cls::~Hdf5File_cls() {
    if (mFile >= 0) H5Fclose(mFile);
}

void Hdf5File_cls::Fail(const std::string& text) const { throw ImportError_cls(mPath + ": " + text); }

bool Hdf5File_cls::Has(const std::string& name) const {
    for (size_t slash = name.find('/'); slash != std::string::npos; slash = name.find('/', slash + 1))
        if (H5Lexists(mFile, name.substr(0, slash).c_str(), H5P_DEFAULT) <= 0) return false;
    return H5Lexists(mFile, name.c_str(), H5P_DEFAULT) > 0;
}

bool Hdf5File_cls::IsGroup(const std::string& name) const {
    if (!Has(name)) return false;
    const Hdf5Held_cls object(H5Oopen(mFile, name.c_str(), H5P_DEFAULT), H5Oclose);
    return object >= 0 && H5Iget_type(object) == H5I_GROUP;
}

std::vector<std::string> Hdf5File_cls::ListGroup(const std::string& name) const {
    const Hdf5Held_cls group(H5Gopen2(mFile, name.c_str(), H5P_DEFAULT), H5Gclose);
    H5G_info_t info{};
    if (group < 0 || H5Gget_info(group, &info) < 0) Fail(name + " is no group");
    std::vector<std::string> names;
    for (hsize_t i = 0; i < std::min(info.nlinks, kMostLinks); ++i) {
        char link[256] = "";
        const ssize_t length =
            H5Lget_name_by_idx(group, ".", H5_INDEX_NAME, H5_ITER_INC, i, link, sizeof link, H5P_DEFAULT);
        if (length > 0 && length < ssize_t(sizeof link)) names.emplace_back(link);
    }
    return names;
}

std::vector<double> Hdf5File_cls::ReadAttribute(const std::string& group, const std::string& name) const {
    if (H5Aexists_by_name(mFile, group.c_str(), name.c_str(), H5P_DEFAULT) <= 0) return {};
    const Hdf5Held_cls attribute(
        H5Aopen_by_name(mFile, group.c_str(), name.c_str(), H5P_DEFAULT, H5P_DEFAULT), H5Aclose);
    const Hdf5Held_cls space(H5Aget_space(attribute), H5Sclose);
    const hssize_t count = H5Sget_simple_extent_npoints(space);
    if (count < 0 || count > kMostValues) Fail("attribute " + name + " can't be read");
    std::vector<double> values(static_cast<size_t>(count));
    if (count > 0 && H5Aread(attribute, H5T_NATIVE_DOUBLE, values.data()) < 0)
        Fail("attribute " + name + " holds no numbers");
    return values;
}

// Of a fixed length, or of any.
std::vector<std::string> Hdf5File_cls::ReadWords(const std::string& group, const std::string& name) const {
    constexpr size_t kLongest = 1000;
    if (H5Aexists_by_name(mFile, group.c_str(), name.c_str(), H5P_DEFAULT) <= 0) return {};
    const Hdf5Held_cls attribute(
        H5Aopen_by_name(mFile, group.c_str(), name.c_str(), H5P_DEFAULT, H5P_DEFAULT), H5Aclose);
    const Hdf5Held_cls space(H5Aget_space(attribute), H5Sclose);
    const Hdf5Held_cls stored(H5Aget_type(attribute), H5Tclose);
    const hssize_t count = H5Sget_simple_extent_npoints(space);
    if (H5Tget_class(stored) != H5T_STRING || count < 1 || count > kMostValues) return {};
    std::vector<std::string> words;
    if (H5Tis_variable_str(stored) > 0) {
        const Hdf5Held_cls type(H5Tget_native_type(stored, H5T_DIR_DEFAULT), H5Tclose);
        std::vector<char*> texts(static_cast<size_t>(count));
        if (H5Aread(attribute, type, texts.data()) < 0) return {};
        for (char* text : texts) {
            words.emplace_back(text ? text : "");
            H5free_memory(text);
        }
        return words;
    }
    const size_t size = H5Tget_size(stored);
    if (size == 0 || size > kLongest) return {};
    std::vector<char> bytes(size * static_cast<size_t>(count));
    if (H5Aread(attribute, stored, bytes.data()) < 0) return {};
    for (size_t i = 0; i < static_cast<size_t>(count); ++i)
        words.emplace_back(bytes.data() + i * size, strnlen(bytes.data() + i * size, size));
    return words;
}

void Hdf5File_cls::Check(const std::string& name, size_t rows, size_t width) const {
    Hdf5Data_cls(*this, name, false).Need(rows, width);
}

void Hdf5File_cls::ReadFloats(const std::string& name, size_t rows, size_t width, float* pOut) const {
    const Hdf5Data_cls data(*this, name, false);
    data.Need(rows, width);
    data.ReadFloats(0, pOut);
}

void Hdf5File_cls::ReadIntegers(const std::string& name, size_t rows, long long* pOut) const {
    const Hdf5Data_cls data(*this, name, false);
    data.Need(rows, 1);
    data.ReadIntegers(0, pOut);
}
