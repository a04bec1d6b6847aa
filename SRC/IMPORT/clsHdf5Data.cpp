#include "IMPORT/clsHdf5Data.h"

#include <hdf5.h>

#include <algorithm>
#include <vector>

#include "IMPORT/Hdf5Held.h"

static_assert(sizeof(hid_t) == sizeof(Hdf5File_cls::Handle), "handles go through our header as numbers");

namespace {

constexpr double kLibraryCache = 1 << 19;
constexpr double kMostCache = 256 << 20;
constexpr double kMostDeflated = 1100;    // bytes that one compressed byte can stand for
constexpr size_t kPieceNumbers = 1 << 16; // rows of doubles on their way to floats
constexpr hsize_t kMostSize = 1ull << 40; // of any dimension; products of three fit a double

} // namespace

Hdf5Data_cls::Hdf5Data_cls(const Hdf5File_cls& file, const std::string& name, bool bFrames)
    : mFile(file), mName(name), mbFrames(bFrames) {
    if (!file.Has(name)) file.Fail(name + " is missing");
    mData = H5Dopen2(file.GetHandle(), name.c_str(), H5P_DEFAULT);
    if (mData < 0) file.Fail(name + " is no dataset");
    const Hdf5Held_cls space(H5Dget_space(mData), H5Sclose);
    const Hdf5Held_cls type(H5Dget_type(mData), H5Tclose);
    const Hdf5Held_cls list(H5Dget_create_plist(mData), H5Pclose);
    mRank = H5Sget_simple_extent_ndims(space);
    const int first = mbFrames ? 0 : 1; // of mSizes
    hsize_t sizes[3] = {1, 1, 1};
    if (mRank >= 0 && mRank <= 3 - first) H5Sget_simple_extent_dims(space, sizes, nullptr);
    const bool bShape =
        mRank <= 3 - first && mRank >= (mbFrames ? 1 : 0) && *std::max_element(sizes, sizes + 3) < kMostSize;
    if (!bShape) { // the destructor doesn't run
        H5Dclose(mData);
        file.Fail(name + " has dimensions of which nothing is known");
    }
    for (int k = 0; k < mRank; ++k)
        mSizes[first + k] = static_cast<size_t>(sizes[k]);
    const bool bElsewhere = H5Pget_layout(list) == H5D_VIRTUAL; // its bytes are other datasets'
    const double stored = static_cast<double>(H5Dget_storage_size(mData));
    const size_t bytes = H5Tget_size(type);
    mbStored = bElsewhere || static_cast<double>(GetRows()) * static_cast<double>(GetWidth() * bytes) <=
                                 kMostDeflated * stored;
    MakeCache(list, bytes);
}

Hdf5Data_cls::~Hdf5Data_cls() { H5Dclose(mData); }

// Room for one chunk, and the next, or for all chunks that a frame lies in, where they hold other frames,
// too: what didn't fit would be unpacked anew for each piece and frame. The library's own cache holds 1 MB.
void Hdf5Data_cls::MakeCache(Handle list, size_t bytes) {
    hsize_t chunk[3] = {1, 1, 1};
    if (H5Pget_layout(list) != H5D_CHUNKED || H5Pget_chunk(list, 3, chunk) < 1) return;
    double wanted = 2.0 * static_cast<double>(chunk[0] * chunk[1] * chunk[2] * bytes);
    double chunks = 2;
    if (mbFrames && chunk[0] > 1 && mRank > 1) {
        chunks = static_cast<double>(GetRows() / chunk[1] + 1) *
                 static_cast<double>(mRank > 2 ? GetWidth() / chunk[2] + 1 : 1);
        wanted *= 0.5 * chunks;
    }
    if (wanted <= 2 * kLibraryCache || wanted > kMostCache * 2) return;
    const Hdf5Held_cls access(H5Pcreate(H5P_DATASET_ACCESS), H5Pclose);
    H5Pset_chunk_cache(access, 521 + 10 * static_cast<size_t>(chunks), static_cast<size_t>(wanted), 1.0);
    const hid_t better = H5Dopen2(mFile.GetHandle(), mName.c_str(), access);
    if (better < 0) return;
    H5Dclose(mData);
    mData = better;
}

bool Hdf5Data_cls::HasNumbers() const {
    const Hdf5Held_cls type(H5Dget_type(mData), H5Tclose);
    const H5T_class_t kind = H5Tget_class(type);
    return kind == H5T_FLOAT || kind == H5T_INTEGER || kind == H5T_ENUM;
}

bool Hdf5Data_cls::GetFillNumber(long long* pNumber) const {
    const Hdf5Held_cls list(H5Dget_create_plist(mData), H5Pclose);
    H5D_fill_value_t kind = H5D_FILL_VALUE_UNDEFINED;
    return H5Pfill_value_defined(list, &kind) >= 0 && kind == H5D_FILL_VALUE_USER_DEFINED &&
           H5Pget_fill_value(list, H5T_NATIVE_LLONG, pNumber) >= 0;
}

void Hdf5Data_cls::Need(size_t rows, size_t width) const {
    if (GetRows() != rows || GetWidth() != width)
        mFile.Fail(mName + " should have " + std::to_string(rows) + " x " + std::to_string(width) +
                   " numbers");
    if (!mbStored) mFile.Fail(mName + " was never written, or not all of it");
}

void Hdf5Data_cls::ReadRows(Handle type, size_t frame, size_t begin, size_t count, void* pOut) const {
    const hsize_t starts[3] = {frame, begin, 0};
    const hsize_t counts[3] = {1, count, GetWidth()};
    const int first = mbFrames ? 0 : 1;
    const bool bAll = GetFrames() == 1 && count == GetRows();
    const Hdf5Held_cls space(H5Dget_space(mData), H5Sclose);
    if (!bAll &&
        H5Sselect_hyperslab(space, H5S_SELECT_SET, starts + first, nullptr, counts + first, nullptr) < 0)
        mFile.Fail(mName + " can't be read");
    const hsize_t number = count * GetWidth();
    const Hdf5Held_cls here(H5Screate_simple(1, &number, nullptr), H5Sclose);
    // Everything at once goes without a selection, which some filters' readers are slower with.
    if (H5Dread(mData, type, bAll ? hid_t(H5S_ALL) : hid_t(here), bAll ? hid_t(H5S_ALL) : hid_t(space),
                H5P_DEFAULT, pOut) < 0)
        mFile.Fail(mName + " can't be read");
}

void Hdf5Data_cls::ReadFloats(size_t frame, float* pOut) const {
    if (GetRows() == 0) return;
    const Hdf5Held_cls type(H5Dget_type(mData), H5Tclose);
    if (H5Tget_class(type) == H5T_FLOAT && H5Tget_size(type) <= sizeof(float))
        return ReadRows(H5T_NATIVE_FLOAT, frame, 0, GetRows(), pOut);
    std::vector<double> piece(std::min(kPieceNumbers, GetRows()) * GetWidth());
    for (size_t begin = 0; begin < GetRows(); begin += kPieceNumbers) {
        const size_t count = std::min(kPieceNumbers, GetRows() - begin);
        ReadRows(H5T_NATIVE_DOUBLE, frame, begin, count, piece.data());
        for (size_t i = 0; i < count * GetWidth(); ++i)
            *pOut++ = static_cast<float>(piece[i]);
    }
}

void Hdf5Data_cls::ReadDoubles(size_t frame, double* pOut) const {
    if (GetRows() > 0) ReadRows(H5T_NATIVE_DOUBLE, frame, 0, GetRows(), pOut);
}

void Hdf5Data_cls::ReadIntegers(size_t frame, long long* pOut) const {
    const Hdf5Held_cls type(H5Dget_type(mData), H5Tclose);
    const bool bUnsigned = H5Tget_class(type) == H5T_INTEGER && H5Tget_sign(type) == H5T_SGN_NONE;
    if (GetRows() > 0) ReadRows(bUnsigned ? H5T_NATIVE_ULLONG : H5T_NATIVE_LLONG, frame, 0, GetRows(), pOut);
}
