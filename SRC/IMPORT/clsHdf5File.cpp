#include "IMPORT/clsHdf5File.h"

#include <hdf5.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "IMPORT/ParticleSource.h"

static_assert(sizeof(hid_t) == sizeof(Hdf5File_cls::Handle), "handles go through our header as numbers");

namespace {

constexpr double kLibraryCache = 1 << 19;
constexpr double kMostCache = 256 << 20;
constexpr double kMostDeflated = 1100;     // bytes that one compressed byte can stand for
constexpr hsize_t kPieceNumbers = 1 << 16; // doubles on their way to floats

// A pipe would hold us until somebody writes.
std::string WhyNotPlain(const std::string& path) {
    struct stat facts {};
    if (stat(path.c_str(), &facts) != 0) return std::strerror(errno);
    return S_ISREG(facts.st_mode) ? "" : "is no plain file";
}

/// Closes what it holds.
class Held_cls {
public:
    Held_cls(hid_t id, herr_t (*pClose)(hid_t)) : mID(id), mpClose(pClose) {}
    ~Held_cls() {
        if (mID >= 0) mpClose(mID);
    }
    Held_cls(const Held_cls&) = delete;
    Held_cls& operator=(const Held_cls&) = delete;
    operator hid_t() const { return mID; }

private:
    hid_t mID;
    herr_t (*mpClose)(hid_t);
};

/// The dataset, opened with room for one chunk: pieces of one that didn't fit would each unpack it anew. The
/// library's own cache holds 1 MB.
hid_t WithChunkCache(hid_t file, hid_t data, hid_t list, const std::string& name, size_t rowBytes) {
    hsize_t chunk[2] = {0, 0};
    if (H5Pget_layout(list) != H5D_CHUNKED || H5Pget_chunk(list, 2, chunk) < 1) return data;
    const double wanted = static_cast<double>(chunk[0]) * static_cast<double>(rowBytes);
    if (wanted <= kLibraryCache || wanted > kMostCache) return data;
    const Held_cls access(H5Pcreate(H5P_DATASET_ACCESS), H5Pclose);
    H5Pset_chunk_cache(access, 521, static_cast<size_t>(2 * wanted), 1.0); // one, and the next
    H5Dclose(data);
    return H5Dopen2(file, name.c_str(), access);
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

std::vector<double> Hdf5File_cls::ReadAttribute(const std::string& group, const std::string& name) const {
    if (H5Aexists_by_name(mFile, group.c_str(), name.c_str(), H5P_DEFAULT) <= 0) return {};
    const Held_cls attribute(H5Aopen_by_name(mFile, group.c_str(), name.c_str(), H5P_DEFAULT, H5P_DEFAULT),
                             H5Aclose);
    const Held_cls space(H5Aget_space(attribute), H5Sclose);
    const hssize_t count = H5Sget_simple_extent_npoints(space);
    if (count < 0 || count > 1000) Fail("attribute " + name + " can't be read");
    std::vector<double> values(static_cast<size_t>(count));
    if (count > 0 && H5Aread(attribute, H5T_NATIVE_DOUBLE, values.data()) < 0)
        Fail("attribute " + name + " holds no numbers");
    return values;
}

Hdf5File_cls::Handle Hdf5File_cls::Open(const std::string& name, size_t rows, size_t width) const {
    if (!Has(name)) Fail(name + " is missing");
    hid_t data = H5Dopen2(mFile, name.c_str(), H5P_DEFAULT);
    if (data < 0) Fail(name + " is no dataset");
    const Held_cls space(H5Dget_space(data), H5Sclose);
    hsize_t sizes[2] = {0, 1};
    const int rank = H5Sget_simple_extent_ndims(space);
    if (rank == 1 || rank == 2) H5Sget_simple_extent_dims(space, sizes, nullptr);
    const Held_cls type(H5Dget_type(data), H5Tclose);
    const Held_cls list(H5Dget_create_plist(data), H5Pclose);
    const bool bElsewhere = H5Pget_layout(list) == H5D_VIRTUAL; // its bytes are other datasets'
    const double stored = static_cast<double>(H5Dget_storage_size(data));
    const double needed = static_cast<double>(rows) * static_cast<double>(width * H5Tget_size(type));
    const bool bShape = (rank == 1 || rank == 2) && sizes[0] == rows && sizes[1] == width;
    if (bShape && (bElsewhere || needed <= kMostDeflated * stored)) {
        data = WithChunkCache(mFile, data, list, name, width * H5Tget_size(type));
        if (data < 0) Fail(name + " is no dataset");
        return data;
    }
    H5Dclose(data);
    if (bShape) Fail(name + " was never written, or not all of it");
    Fail(name + " should have " + std::to_string(rows) + " x " + std::to_string(width) + " numbers");
}

void Hdf5File_cls::Check(const std::string& name, size_t rows, size_t width) const {
    H5Dclose(Open(name, rows, width));
}

void Hdf5File_cls::ReadFloats(const std::string& name, size_t rows, size_t width, float* pOut) const {
    const Held_cls data(Open(name, rows, width), H5Dclose);
    const Held_cls type(H5Dget_type(data), H5Tclose);
    if (H5Tget_class(type) == H5T_FLOAT && H5Tget_size(type) <= sizeof(float)) {
        if (H5Dread(data, H5T_NATIVE_FLOAT, H5S_ALL, H5S_ALL, H5P_DEFAULT, pOut) < 0)
            Fail(name + " can't be read");
        return;
    }
    const Held_cls space(H5Dget_space(data), H5Sclose);
    const int rank = H5Sget_simple_extent_ndims(space);
    std::vector<double> piece(kPieceNumbers * width);
    for (hsize_t begin = 0; begin < rows; begin += kPieceNumbers) {
        const hsize_t start[2] = {begin, 0};
        const hsize_t count[2] = {std::min<hsize_t>(kPieceNumbers, rows - begin), width};
        const Held_cls here(H5Screate_simple(rank, count, nullptr), H5Sclose);
        if (H5Sselect_hyperslab(space, H5S_SELECT_SET, start, nullptr, count, nullptr) < 0 ||
            H5Dread(data, H5T_NATIVE_DOUBLE, here, space, H5P_DEFAULT, piece.data()) < 0)
            Fail(name + " can't be read");
        for (size_t i = 0; i < count[0] * width; ++i)
            *pOut++ = static_cast<float>(piece[i]);
    }
}

// Large numbers without sign keep their bits.
void Hdf5File_cls::ReadIntegers(const std::string& name, size_t rows, long long* pOut) const {
    const Held_cls data(Open(name, rows, 1), H5Dclose);
    const Held_cls type(H5Dget_type(data), H5Tclose);
    const bool bUnsigned = H5Tget_class(type) == H5T_INTEGER && H5Tget_sign(type) == H5T_SGN_NONE;
    if (H5Dread(data, bUnsigned ? H5T_NATIVE_ULLONG : H5T_NATIVE_LLONG, H5S_ALL, H5S_ALL, H5P_DEFAULT, pOut) <
        0)
        Fail(name + " can't be read");
}
