#include "IMPORT/clsVtkReader.h"

#include <algorithm>
#include <climits>
#include <set>

#include "IMPORT/ImportText.h"
#include "IMPORT/clsByteFile.h"
#include "IMPORT/clsVtkLegacy.h"
#include "IMPORT/clsVtkXml.h"

namespace {

const char* const kLegacy = "# vtk DataFile";

VtkLayout_st ReadLayout(ByteFile_cls* pFile, const std::string& path) {
    std::string line;
    pFile->NextLine(&line);
    pFile->Seek(0);
    return StartsWith(line, kLegacy) ? VtkLegacy_cls(pFile).Read() : VtkXml_cls(pFile, path).Read();
}

/// Names of the columns that an array makes.
std::vector<std::string> ColumnsOf(const VtkArray_st& array, bool bPos) {
    if (bPos) return {"x", "y", "z"};
    std::vector<std::string> names;
    AddColumnNames(array.mName, array.mComponents, &names);
    return names;
}

} // namespace

/// A file of a snapshot.
struct VtkReader_cls::Part_st {
    explicit Part_st(const std::string& path) : mPath(path), mFile(path) {}
    std::string mPath;
    ByteFile_cls mFile;
    std::vector<VtkPiece_st> mPieces;
};

bool VtkReader_cls::IsVtk(const std::string& begin) {
    return StartsWith(begin, kLegacy) || StartsWith(begin, "<?xml") || StartsWith(begin, "<VTKFile");
}

// A collection is read here, all others when their turn comes.
VtkReader_cls::VtkReader_cls(const std::string& path, const ImportChoice_st& choice)
    : mPath(path), mChoice(choice) {
    std::vector<File_st> files;
    {
        ByteFile_cls file(path);
        char begin[16] = "";
        file.Read(begin, sizeof begin - 1);
        file.Seek(0);
        if (!IsVtk(begin)) file.Fail("is no file of VTK");
        if (begin[0] == '<') {
            const VtkLayout_st layout = VtkXml_cls(&file, path).Read();
            if (layout.mbCollection) files = layout.mFiles;
            if (layout.mbCollection && files.empty()) file.Fail("this collection names no file");
        }
    }
    if (files.empty()) {
        mSteps.push_back({{path, false, 0.0}});
        return;
    }
    std::stable_sort(files.begin(), files.end(),
                     [](const File_st& a, const File_st& b) { return a.mTime < b.mTime; });
    for (const File_st& file : files) {
        if (mSteps.empty() || mSteps.back().back().mTime != file.mTime) mSteps.emplace_back();
        mSteps.back().push_back(file);
    }
}

VtkReader_cls::~VtkReader_cls() = default;

// A collection itself may get further snapshots without a change of those that it has.
std::vector<std::string> VtkReader_cls::GetFiles() const {
    std::vector<std::string> files;
    for (const auto& part : mParts)
        files.push_back(part->mPath);
    return files;
}

// A collection's files may name others, which may not.
void VtkReader_cls::AddPart(const std::string& path, int depth) {
    auto part = std::make_unique<Part_st>(path);
    VtkLayout_st layout = ReadLayout(&part->mFile, path);
    if (layout.mbCollection || (!layout.mFiles.empty() && depth > 0))
        part->mFile.Fail("should hold points, but names files");
    part->mPieces = std::move(layout.mPieces);
    if (layout.mbTime && !mbTime) mTime = layout.mTime;
    mbTime = mbTime || layout.mbTime;
    mParts.push_back(std::move(part));
    for (const File_st& file : layout.mFiles)
        AddPart(file.mPath, depth + 1);
}

void VtkReader_cls::FindRoles() {
    std::vector<std::string> names = {"x", "y", "z"};
    std::set<std::string> known(names.begin(), names.end());
    for (const auto& part : mParts)
        for (const VtkPiece_st& piece : part->mPieces)
            for (const VtkArray_st& array : piece.mData)
                for (const std::string& name : ColumnsOf(array, false))
                    if (known.insert(name).second) names.push_back(name);
    try {
        mRoles.SetColumns(names, mChoice);
    } catch (const ImportError_cls& error) {
        throw ImportError_cls(mPath + ": " + error.what());
    }
}

bool VtkReader_cls::NextHead(ImportSnapshot_st* pSnap) {
    if (mStep == mSteps.size()) return false;
    const std::vector<File_st>& files = mSteps[mStep++];
    mParts.clear();
    mbTime = files[0].mbTime;
    mTime = files[0].mTime;
    for (const File_st& file : files)
        AddPart(file.mPath, 0);
    FindRoles();
    long long points = 0;
    for (const auto& part : mParts)
        for (const VtkPiece_st& piece : part->mPieces)
            points += std::min<long long>(piece.mPoints, INT_MAX);
    if (points > INT_MAX) throw ImportError_cls(mPath + ": more points than a snapshot can have");
    pSnap->mBox = ImportBox_st();
    pSnap->mbTypesFromOne = false;
    pSnap->mbTime = mbTime;
    pSnap->mTime = mTime;
    pSnap->mNumber = points;
    pSnap->mColumns = mRoles.GetColumns();
    return true;
}

// Places for the points from `first` on, with the columns that go there.
std::vector<VtkReader_cls::Wanted_st> VtkReader_cls::ListWanted(ImportSnapshot_st* pSnap) const {
    std::vector<Wanted_st> all;
    const auto add = [&](int column) {
        all.emplace_back();
        if (column >= 0) all.back().mName = mRoles.GetNames()[static_cast<size_t>(column)];
        return &all.back().mTarget;
    };
    const auto addFloats = [&](int column, float* pFloats, size_t stride) {
        NumberTarget_st* pTarget = add(column);
        pTarget->mpFloats = pFloats;
        pTarget->mStride = stride;
    };
    const unsigned columns = pSnap->mColumns;
    for (size_t axis = 0; axis < 3; ++axis) {
        addFloats(mRoles.GetPos(axis), pSnap->mPos.data() + axis, 3);
        if (columns & IMPORT_VEL) addFloats(mRoles.GetVel(axis), pSnap->mVel.data() + axis, 3);
    }
    if (columns & IMPORT_RADIUS) addFloats(mRoles.GetRadius(), pSnap->mRadius.data(), 1);
    if (columns & IMPORT_VALUE) addFloats(mRoles.GetValue(), pSnap->mValue.data(), 1);
    if (columns & IMPORT_ID) add(mRoles.GetID())->mpIntegers = pSnap->mID.data();
    if (columns & IMPORT_TYPE) add(mRoles.GetType())->mpTypes = pSnap->mType.data();
    return all;
}

// Arrays in their order in the file, which may be packed. What this piece lacks is 0.
void VtkReader_cls::ReadPiece(Part_st* pPart, const VtkPiece_st& piece, size_t first,
                              ImportSnapshot_st* pSnap) const {
    std::vector<Wanted_st> wanted = ListWanted(pSnap);
    std::vector<const VtkArray_st*> arrays = {&piece.mPos};
    for (const VtkArray_st& array : piece.mData)
        arrays.push_back(&array);
    std::vector<std::pair<const VtkArray_st*, std::vector<NumberTarget_st>>> reads;
    for (const VtkArray_st* pArray : arrays) {
        const std::vector<std::string> columns = ColumnsOf(*pArray, pArray == &piece.mPos);
        std::vector<NumberTarget_st> targets;
        for (Wanted_st& one : wanted) {
            const auto found = std::find(columns.begin(), columns.end(), one.mName);
            if (one.mbDone || found == columns.end()) continue;
            targets.push_back(one.mTarget);
            targets.back().mComponent = static_cast<size_t>(found - columns.begin());
            one.mbDone = true;
        }
        if (!targets.empty()) reads.emplace_back(pArray, targets);
    }
    std::sort(reads.begin(), reads.end(),
              [](const auto& a, const auto& b) { return a.first->mBegin < b.first->mBegin; });
    for (const auto& [pArray, targets] : reads)
        ReadVtkArray(&pPart->mFile, *pArray, first, targets);
    for (const Wanted_st& one : wanted)
        if (!one.mbDone) FillTarget(one.mTarget, first, static_cast<size_t>(piece.mPoints));
}

void VtkReader_cls::ReadBody(ImportSnapshot_st* pSnap) {
    for (const auto& part : mParts) {
        for (const VtkPiece_st& piece : part->mPieces) {
            CheckVtkArray(part->mFile, piece.mPos);
            for (const VtkArray_st& array : piece.mData)
                CheckVtkArray(part->mFile, array);
        }
    }
    pSnap->MakeRoom();
    size_t first = 0;
    for (const auto& part : mParts) {
        for (const VtkPiece_st& piece : part->mPieces) {
            ReadPiece(part.get(), piece, first, pSnap);
            first += static_cast<size_t>(piece.mPoints);
        }
    }
    for (size_t i = 0; i < pSnap->mRadius.size() && mRoles.IsDiameter(); ++i)
        pSnap->mRadius[i] *= 0.5f;
}
