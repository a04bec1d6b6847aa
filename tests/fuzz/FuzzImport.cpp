// Other programs' files, each as the importer takes it: head, body, head, ... to the end or the first
// mistake.
#include <algorithm>
#include <exception>
#include <new>

#include "FuzzFile.h"
#include "FuzzTargets.h"
#include "IMPORT/OpenSource.h"
#include "IMPORT/ParticleSource.h"

namespace {

constexpr int kMostSnapshots = 20; // of one input

void CheckBody(const ImportSnapshot_st& snap) {
    const auto number = size_t(snap.mNumber);
    Promise(snap.mPos.size() == 3 * number, "a place a particle");
    const auto has = [&](unsigned bit, size_t size, size_t width) {
        if (snap.mColumns & bit) Promise(size == width * number, "a value a particle");
    };
    has(IMPORT_VEL, snap.mVel.size(), 3);
    has(IMPORT_RADIUS, snap.mRadius.size(), 1);
    has(IMPORT_VALUE, snap.mValue.size(), 1);
    has(IMPORT_ID, snap.mID.size(), 1);
    has(IMPORT_TYPE, snap.mType.size(), 1);
    Promise(snap.mOrder.empty() || snap.mOrder.size() == number, "all particles have a place in the order");
    for (const unsigned place : snap.mOrder)
        Promise(place < number, "the order is one of these particles");
}

void TakeAll(const std::string& path, const std::string& format, size_t bytes) {
    try {
        const auto source = OpenImportSource(path, format, ImportChoice_st());
        ImportSnapshot_st snap;
        for (int k = 0; k < kMostSnapshots && source->NextHead(&snap); ++k) {
            Promise(snap.mNumber >= 0, "particles are counted from 0");
            // Only HDF5 and VTK may say more than they hold: values that were never written, packed ones.
            if (format.find("h5") == std::string::npos && format != "hdf5" && format != "vtk")
                Promise(size_t(snap.mNumber) <= std::max<size_t>(bytes, 1), "no more particles than bytes");
            source->ReadBody(&snap);
            CheckBody(snap);
            source->GetFiles();
        }
    } catch (const ImportError_cls& error) {
        Promise(error.what()[0] != '\0', "what can't be read says why");
    } catch (const std::bad_alloc&) { // told by the importer
    }
}

void Take(const std::string& bytes, const char* format) {
    const FuzzFile_cls file(bytes);
    TakeAll(file.GetName(), format, bytes.size());
}

} // namespace

void FuzzXyz(const std::string& bytes) { Take(bytes, "xyz"); }
void FuzzDump(const std::string& bytes) { Take(bytes, "dump"); }
void FuzzCsv(const std::string& bytes) { Take(bytes, "csv"); }
void FuzzVtk(const std::string& bytes) { Take(bytes, "vtk"); }
void FuzzHdf5(const std::string& bytes) { Take(bytes, "hdf5"); }
void FuzzH5md(const std::string& bytes) { Take(bytes, "h5md"); }
