#include "IMPORT/clsHdf5Snapshot.h"

#include <algorithm>
#include <climits>

#include "IMPORT/clsHdf5File.h"

namespace {

const std::string kHeader = "Header";
const std::string kMasses = "Masses";

std::string GroupOf(int type) { return "PartType" + std::to_string(type); }

/// How many particles of each type this file has.
std::vector<size_t> ReadCounts(const Hdf5File_cls& file, const std::string& path) {
    if (!file.Has(kHeader)) throw ImportError_cls(path + ": the group Header is missing");
    std::vector<size_t> counts;
    for (const double count : file.ReadAttribute(kHeader, "NumPart_ThisFile")) {
        if (!(count >= 0 && count <= INT_MAX))
            throw ImportError_cls(path + ": NumPart_ThisFile makes no sense");
        counts.push_back(static_cast<size_t>(count));
    }
    if (counts.empty()) throw ImportError_cls(path + ": NumPart_ThisFile is missing");
    return counts;
}

/// The parts of a snapshot in `parts` files: "snap_005.0.hdf5" and so on.
std::vector<std::string> NameParts(const std::string& path, int parts) {
    const size_t dot = path.rfind('.');
    const size_t before = dot == std::string::npos || dot == 0 ? std::string::npos : path.rfind('.', dot - 1);
    const bool bNumber = before != std::string::npos && before + 1 < dot &&
                         path.find_first_not_of("0123456789", before + 1) == dot;
    if (!bNumber)
        throw ImportError_cls(path + ": is one of " + std::to_string(parts) + " files, but has no number");
    std::vector<std::string> files;
    for (int i = 0; i < parts; ++i)
        files.push_back(path.substr(0, before + 1) + std::to_string(i) + path.substr(dot));
    return files;
}

} // namespace

Hdf5Snapshot_cls::Hdf5Snapshot_cls(const std::string& path, const ImportChoice_st& choice)
    : mChoice(choice), mFiles({path}) {
    const Hdf5File_cls file(path);
    ReadCounts(file, path);
    const std::vector<double> parts = file.ReadAttribute(kHeader, "NumFilesPerSnapshot");
    if (!parts.empty() && parts[0] > 1 && parts[0] < 100000)
        mFiles = NameParts(path, static_cast<int>(parts[0]));
}

// A column that some type has is one of the snapshot; the others have 0 there.
void Hdf5Snapshot_cls::FindColumns(const Hdf5File_cls& file, const std::string& group) {
    const auto choose = [&](const std::string& role, const std::vector<std::string>& usual,
                            std::string* pName) {
        const std::string* pChosen = mChoice.Find(role);
        for (const std::string& name : pChosen ? std::vector<std::string>{*pChosen} : usual)
            if (pName->empty() && !name.empty() && file.Has(group + "/" + name)) *pName = name;
    };
    choose("radius", {"SmoothingLength", "SmoothingLengths"}, &mRadius);
    choose("value", {"Density", "Densities", "InternalEnergy", "InternalEnergies", kMasses}, &mValue);
    const std::string* pValue = mChoice.Find("value");
    if (pValue && *pValue == kMasses && !file.ReadAttribute(kHeader, "MassTable").empty()) mValue = kMasses;
    if (!mRadius.empty()) mColumns |= IMPORT_RADIUS;
    if (!mValue.empty()) mColumns |= IMPORT_VALUE;
    if (file.Has(group + "/Velocities")) mColumns |= IMPORT_VEL;
    if (file.Has(group + "/ParticleIDs")) mColumns |= IMPORT_ID;
}

bool Hdf5Snapshot_cls::NextHead(ImportSnapshot_st* pSnap) {
    if (mbDone) return false;
    mbDone = true;
    pSnap->mBox = ImportBox_st();
    pSnap->mNumber = 0;
    pSnap->mbTypesFromOne = false;
    double total = 0;
    for (const std::string& path : mFiles) {
        const Hdf5File_cls file(path);
        const std::vector<size_t> counts = ReadCounts(file, path);
        for (size_t type = 0; type < counts.size() && type < kTypes; ++type) {
            pSnap->mNumber += static_cast<long long>(counts[type]);
            if (counts[type] > 0) FindColumns(file, GroupOf(static_cast<int>(type)));
        }
        if (&path != &mFiles.front()) continue;
        const std::vector<double> time = file.ReadAttribute(kHeader, "Time");
        pSnap->mbTime = !time.empty();
        if (pSnap->mbTime) pSnap->mTime = time[0];
        const std::vector<double> box = file.ReadAttribute(kHeader, "BoxSize");
        pSnap->mBox.mbThere = !box.empty() && box[0] > 0;
        pSnap->mBox.mbSure = false;
        for (size_t k = 0; k < 3 && pSnap->mBox.mbThere; ++k)
            pSnap->mBox.mEdge[k][k] = box.size() == 3 ? box[k] : box[0];
        for (const double count : file.ReadAttribute(kHeader, "NumPart_Total"))
            total += count;
    }
    if (pSnap->mNumber > INT_MAX)
        throw ImportError_cls(mFiles[0] + ": more particles than a snapshot can have");
    // High words of large totals stand elsewhere.
    if (total > 0 && total < 4e9 && total != static_cast<double>(pSnap->mNumber))
        throw ImportError_cls(mFiles[0] + ": the files hold " + std::to_string(pSnap->mNumber) + " of " +
                              std::to_string(static_cast<long long>(total)) + " particles");
    const std::string* pValue = mChoice.Find("value");
    if (pValue && !pValue->empty() && mValue.empty() && pSnap->mNumber > 0)
        throw ImportError_cls(mFiles[0] + ": no type has a dataset " + *pValue);
    pSnap->mColumns = mColumns;
    return true;
}

void Hdf5Snapshot_cls::ReadGroup(const Hdf5File_cls& file, int type, size_t rows, size_t first,
                                 ImportSnapshot_st* pSnap) const {
    const std::string group = GroupOf(type) + "/";
    file.ReadFloats(group + "Coordinates", rows, 3, pSnap->mPos.data() + 3 * first);
    std::fill_n(pSnap->mType.data() + first, rows, type);
    const auto read = [&](const std::string& name, unsigned column, size_t width, float* pOut) {
        if (!(mColumns & column)) return;
        if (file.Has(group + name))
            file.ReadFloats(group + name, rows, width, pOut + width * first);
        else
            std::fill_n(pOut + width * first, width * rows, 0.0f);
    };
    read("Velocities", IMPORT_VEL, 3, pSnap->mVel.data());
    read(mRadius, IMPORT_RADIUS, 1, pSnap->mRadius.data());
    read(mValue, IMPORT_VALUE, 1, pSnap->mValue.data());
    if (mValue == kMasses && !file.Has(group + kMasses)) { // of equal ones the header tells one
        const std::vector<double> masses = file.ReadAttribute(kHeader, "MassTable");
        if (static_cast<size_t>(type) < masses.size())
            std::fill_n(pSnap->mValue.data() + first, rows,
                        static_cast<float>(masses[static_cast<size_t>(type)]));
    }
    if (!(mColumns & IMPORT_ID)) return;
    if (file.Has(group + "ParticleIDs"))
        file.ReadIntegers(group + "ParticleIDs", rows, pSnap->mID.data() + first);
    else
        std::fill_n(pSnap->mID.data() + first, rows, 0LL);
}

// Before memory is taken for what a few bytes claim.
void Hdf5Snapshot_cls::CheckData() const {
    for (const std::string& path : mFiles) {
        const Hdf5File_cls file(path);
        const std::vector<size_t> counts = ReadCounts(file, path);
        for (size_t type = 0; type < counts.size() && type < kTypes; ++type) {
            const std::string group = GroupOf(static_cast<int>(type)) + "/";
            if (counts[type] == 0) continue;
            file.Check(group + "Coordinates", counts[type], 3);
            for (const std::string& name :
                 {std::string("Velocities"), mRadius, mValue, std::string("ParticleIDs")})
                if (!name.empty() && file.Has(group + name))
                    file.Check(group + name, counts[type], name == "Velocities" ? 3 : 1);
        }
    }
}

void Hdf5Snapshot_cls::Look(const std::string& path, const ImportChoice_st& choice) {
    Hdf5Snapshot_cls source(path, choice);
    ImportSnapshot_st snap;
    source.NextHead(&snap);
    source.CheckData();
}

void Hdf5Snapshot_cls::ReadBody(ImportSnapshot_st* pSnap) {
    CheckData();
    pSnap->MakeRoom();
    size_t first = 0;
    for (const std::string& path : mFiles) {
        const Hdf5File_cls file(path);
        const std::vector<size_t> counts = ReadCounts(file, path);
        for (size_t type = 0; type < counts.size() && type < kTypes; ++type) {
            if (counts[type] == 0) continue;
            ReadGroup(file, static_cast<int>(type), counts[type], first, pSnap);
            first += counts[type];
        }
    }
}
