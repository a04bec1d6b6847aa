#include "IMPORT/clsH5mdReader.h"

#include <algorithm>
#include <climits>

#include "IMPORT/clsH5mdElement.h"
#include "IMPORT/clsHdf5File.h"

namespace {

const std::string kParticles = "particles";
constexpr size_t kMostWidth = 9; // numbers of one particle in an element: a tensor
constexpr size_t kMostAxes = 3;

} // namespace

struct H5mdReader_cls::Group_st {
    const H5mdElement_cls* Find(const std::string& name) const {
        const auto found = mElements.find(name);
        return found == mElements.end() ? nullptr : found->second.get();
    }
    std::string mName;
    std::map<std::string, std::unique_ptr<H5mdElement_cls>> mElements;
    /// Names of columns, with the element and the part of it.
    std::map<std::string, std::pair<const H5mdElement_cls*, size_t>> mColumns;
    size_t mRows = 0; ///< 0 while its positions haven't begun
};

bool H5mdReader_cls::IsH5md(const std::string& path) {
    const Hdf5File_cls file(path);
    return file.IsGroup("h5md") || (file.IsGroup(kParticles) && !file.Has("Header"));
}

void H5mdReader_cls::Look(const std::string& path, const ImportChoice_st& choice) {
    H5mdReader_cls reader(path, choice);
    ImportSnapshot_st snap;
    reader.NextHead(&snap);
}

H5mdReader_cls::H5mdReader_cls(const std::string& path, const ImportChoice_st& choice)
    : mpFile(std::make_unique<Hdf5File_cls>(path)), mChoice(choice) {
    AddGroups();
    try {
        FindRoles();
    } catch (const ImportError_cls& error) {
        mpFile->Fail(error.what());
    }
}

H5mdReader_cls::~H5mdReader_cls() = default;

// Others are parts of a group "all".
void H5mdReader_cls::AddGroups() {
    if (!mpFile->IsGroup(kParticles)) mpFile->Fail("the group " + kParticles + " is missing");
    const std::vector<std::string> all = mpFile->ListGroup(kParticles);
    const std::string* pChosen = mChoice.Find("group");
    const bool bAll = !pChosen && std::find(all.begin(), all.end(), "all") != all.end();
    std::string names;
    for (const std::string& name : all) {
        if (!mpFile->Has(kParticles + "/" + name + "/position")) continue;
        names += (names.empty() ? "" : ", ") + name;
        if (pChosen ? name != *pChosen : bAll && name != "all") continue;
        mGroups.push_back(std::make_unique<Group_st>());
        mGroups.back()->mName = name;
        AddElements(mGroups.back().get());
    }
    if (names.empty()) mpFile->Fail("no group in " + kParticles + " has positions");
    if (mGroups.empty())
        mpFile->Fail("there is no group \"" + *pChosen + "\" with positions; there are " + names);
}

void H5mdReader_cls::AddElements(Group_st* pGroup) const {
    const std::string path = kParticles + "/" + pGroup->mName;
    const H5mdElement_cls& pos =
        *(pGroup->mElements["position"] = std::make_unique<H5mdElement_cls>(*mpFile, path + "/position"));
    pos.GetData().Need(pos.GetData().GetRows(), pos.GetData().GetWidth()); // all of it is there
    for (const std::string& name : mpFile->ListGroup(path)) {
        if (name == "position" || name == "box" || name == "image") continue;
        const bool bGroup = mpFile->IsGroup(path + "/" + name);
        if (bGroup && !mpFile->Has(path + "/" + name + "/value")) continue;
        auto element = std::make_unique<H5mdElement_cls>(*mpFile, path + "/" + name);
        const Hdf5Data_cls& data = element->GetData();
        if (data.HasNumbers() && data.GetWidth() <= kMostWidth && data.GetRows() == pos.GetData().GetRows())
            pGroup->mElements[name] = std::move(element);
    }
    for (const auto& [name, element] : pGroup->mElements) {
        const size_t width = element->GetData().GetWidth();
        if (name == "position" && width > kMostAxes)
            mpFile->Fail(path + "/position has more than three dimensions");
        std::vector<std::string> columns;
        AddColumnNames(name, width, &columns);
        for (size_t k = 0; k < columns.size(); ++k)
            pGroup->mColumns[columns[k]] = {element.get(), k};
    }
}

// What one of the groups has is a column of all.
void H5mdReader_cls::FindRoles() {
    std::vector<std::string> names;
    for (const auto& group : mGroups)
        for (const auto& column : group->mColumns)
            if (std::find(names.begin(), names.end(), column.first) == names.end())
                names.push_back(column.first);
    mRoles.SetColumns(names, mChoice);
    for (const auto& group : mGroups) {
        for (const int column :
             {mRoles.GetVel(0), mRoles.GetRadius(), mRoles.GetID(), mRoles.GetType(), mRoles.GetValue()}) {
            const auto found =
                column < 0 ? group->mColumns.end() : group->mColumns.find(names[static_cast<size_t>(column)]);
            if (found == group->mColumns.end()) continue;
            const Hdf5Data_cls& data = found->second.first->GetData();
            data.Need(data.GetRows(), data.GetWidth());
        }
    }
}

// Vectors of the first group's box: edges of a cuboid, or rows of a matrix.
void H5mdReader_cls::ReadBox(double step, ImportSnapshot_st* pSnap) const {
    pSnap->mBox = ImportBox_st();
    const std::string path = kParticles + "/" + mGroups[0]->mName + "/box";
    if (!mpFile->Has(path + "/edges")) return;
    const H5mdElement_cls edges(*mpFile, path + "/edges");
    const size_t axes = edges.GetData().GetRows();
    const size_t width = edges.GetData().GetWidth();
    const long frame = edges.FindFrame(step);
    if (axes < 1 || axes > kMostAxes || (width != 1 && width != axes))
        mpFile->Fail(path + "/edges must have as many numbers as there are axes, or their square");
    if (frame < 0 || edges.GetFrames() == 0) return;
    edges.GetData().Need(axes, width);
    double numbers[kMostAxes * kMostAxes] = {};
    edges.GetData().ReadDoubles(static_cast<size_t>(frame), numbers);
    ImportBox_st& box = pSnap->mBox;
    box.mbThere = true;
    for (size_t k = 0; k < axes; ++k) {
        for (size_t i = 0; i < axes; ++i)
            box.mEdge[k][i] = width == axes && axes > 1 ? numbers[k * axes + i] : k == i ? numbers[k] : 0.0;
        if (!(box.mEdge[k][k] > 0 && box.mEdge[k][k] < 1e300)) box.mbThere = false;
    }
    const std::vector<std::string> boundary = mpFile->ReadWords(path, "boundary");
    for (size_t k = 0; k < kMostAxes; ++k)
        box.mbPeriodic[k] =
            k < axes && (k < boundary.size() ? boundary[k] == "periodic"
                                             : boundary.size() == 1 && boundary[0] == "periodic");
}

void H5mdReader_cls::CountRows(Group_st* pGroup) const {
    const H5mdElement_cls& pos = *pGroup->Find("position");
    pGroup->mRows = pos.FindFrame(mStep) < 0 || pos.GetFrames() == 0 ? 0 : pos.GetData().GetRows();
    if (pGroup->mRows > INT_MAX) mpFile->Fail("more particles than a snapshot can have");
}

// Where particles come and go, IDs of a number of the writer's choice stand for none.
size_t H5mdReader_cls::NoteAbsent(const Group_st& group, size_t first) {
    const H5mdElement_cls* pID = group.Find("id");
    long long absent = 0;
    if (!pID || group.mRows == 0 || !pID->GetData().GetFillNumber(&absent)) return 0;
    const long frame = pID->GetFrames() > 0 ? pID->FindFrame(mStep) : -1;
    if (frame < 0 || pID->GetData().GetWidth() != 1) return 0;
    pID->GetData().Need(group.mRows, 1);
    std::vector<long long> ids(group.mRows);
    pID->GetData().ReadIntegers(static_cast<size_t>(frame), ids.data());
    const size_t count = static_cast<size_t>(std::count(ids.begin(), ids.end(), absent));
    if (count > 0) mAbsent.resize(first + group.mRows, 0);
    for (size_t i = 0; i < ids.size() && count > 0; ++i)
        mAbsent[first + i] = ids[i] == absent;
    return count;
}

// Frames are those of the first group's positions.
bool H5mdReader_cls::NextHead(ImportSnapshot_st* pSnap) {
    const H5mdElement_cls& pos = *mGroups[0]->Find("position");
    if (mFrame >= pos.GetFrames()) return false;
    mStep = pos.GetStep(mFrame);
    pSnap->mTime = mStep;
    pos.GetTime(mFrame, &pSnap->mTime);
    pSnap->mbTime = true;
    pSnap->mbTypesFromOne = false;
    ReadBox(mStep, pSnap);
    size_t number = 0;
    mRows = 0;
    mAbsent.clear();
    for (const auto& group : mGroups) {
        CountRows(group.get());
        number += group->mRows - NoteAbsent(*group, mRows);
        mRows += group->mRows;
    }
    if (mRows > INT_MAX) mpFile->Fail("more particles than a snapshot can have");
    pSnap->mNumber = static_cast<long long>(number);
    pSnap->mColumns = mRoles.GetColumns() | (mGroups.size() > 1 ? IMPORT_TYPE : 0u);
    ++mFrame;
    return true;
}

// Columns that are parts of one element, in their order and all of it, come at once.
void H5mdReader_cls::ReadFloats(const Group_st& group, const int* pColumns, size_t count, float* pOut) const {
    std::pair<const H5mdElement_cls*, size_t> parts[kMostAxes] = {};
    bool bWhole = true;
    for (size_t k = 0; k < count; ++k) {
        const auto found = pColumns[k] < 0
                               ? group.mColumns.end()
                               : group.mColumns.find(mRoles.GetNames()[static_cast<size_t>(pColumns[k])]);
        if (found != group.mColumns.end()) parts[k] = found->second;
        bWhole = bWhole && parts[k].first && parts[k].first == parts[0].first && parts[k].second == k &&
                 parts[k].first->GetData().GetWidth() == count;
    }
    const auto frameOf = [this](const H5mdElement_cls* pElement) {
        return pElement && pElement->GetFrames() > 0 ? pElement->FindFrame(mStep) : -1;
    };
    if (bWhole && frameOf(parts[0].first) >= 0)
        return parts[0].first->GetData().ReadFloats(static_cast<size_t>(frameOf(parts[0].first)), pOut);
    std::vector<float> rows;
    const H5mdElement_cls* pRead = nullptr;
    for (size_t k = 0; k < count; ++k) {
        const long frame = frameOf(parts[k].first);
        if (frame < 0) {
            for (size_t i = 0; i < group.mRows; ++i)
                pOut[count * i + k] = 0.0f;
            continue;
        }
        const size_t width = parts[k].first->GetData().GetWidth();
        rows.resize(width * group.mRows);
        if (pRead != parts[k].first)
            parts[k].first->GetData().ReadFloats(static_cast<size_t>(frame), rows.data());
        pRead = parts[k].first;
        for (size_t i = 0; i < group.mRows; ++i)
            pOut[count * i + k] = rows[width * i + parts[k].second];
    }
}

void H5mdReader_cls::ReadIntegers(const Group_st& group, int column, long long* pOut) const {
    const auto found = group.mColumns.find(mRoles.GetNames()[static_cast<size_t>(column)]);
    const H5mdElement_cls* pElement = found == group.mColumns.end() ? nullptr : found->second.first;
    const long frame = pElement && pElement->GetFrames() > 0 ? pElement->FindFrame(mStep) : -1;
    if (pElement && pElement->GetData().GetWidth() != 1)
        mpFile->Fail(found->first + " should be one number a particle");
    if (frame >= 0)
        pElement->GetData().ReadIntegers(static_cast<size_t>(frame), pOut);
    else
        std::fill_n(pOut, group.mRows, 0LL);
}

// Of several groups that don't all tell species, each is a type of its own.
void H5mdReader_cls::ReadTypes(const Group_st& group, int* pOut) {
    const int column = mRoles.GetType();
    const auto has = [&](const auto& other) {
        return column >= 0 && other->mColumns.count(mRoles.GetNames()[static_cast<size_t>(column)]) > 0;
    };
    if (std::all_of(mGroups.begin(), mGroups.end(), has)) {
        std::vector<long long> types(group.mRows);
        ReadIntegers(group, column, types.data());
        for (const long long type : types)
            *pOut++ = static_cast<int>(std::clamp<long long>(type, INT_MIN, INT_MAX));
        return;
    }
    const auto named =
        mChoice.mpTypeNames->emplace(group.mName, static_cast<int>(mChoice.mpTypeNames->size()));
    std::fill_n(pOut, group.mRows, named.first->second);
}

void H5mdReader_cls::ReadGroup(const Group_st& group, size_t first, ImportSnapshot_st* pSnap) {
    const int pos[3] = {mRoles.GetPos(0), mRoles.GetPos(1), mRoles.GetPos(2)};
    const int vel[3] = {mRoles.GetVel(0), mRoles.GetVel(1), mRoles.GetVel(2)};
    const int radius = mRoles.GetRadius();
    const int value = mRoles.GetValue();
    ReadFloats(group, pos, 3, pSnap->mPos.data() + 3 * first);
    if (pSnap->mColumns & IMPORT_VEL) ReadFloats(group, vel, 3, pSnap->mVel.data() + 3 * first);
    if (radius >= 0) ReadFloats(group, &radius, 1, pSnap->mRadius.data() + first);
    for (size_t i = first; i < first + group.mRows && mRoles.IsDiameter(); ++i)
        pSnap->mRadius[i] *= 0.5f;
    if (value >= 0) ReadFloats(group, &value, 1, pSnap->mValue.data() + first);
    if (mRoles.GetID() >= 0) ReadIntegers(group, mRoles.GetID(), pSnap->mID.data() + first);
    if (pSnap->mColumns & IMPORT_TYPE) ReadTypes(group, pSnap->mType.data() + first);
}

void H5mdReader_cls::ReadBody(ImportSnapshot_st* pSnap) {
    const long long number = pSnap->mNumber;
    pSnap->mNumber = static_cast<long long>(mRows);
    pSnap->MakeRoom();
    size_t first = 0;
    for (const auto& group : mGroups) {
        if (group->mRows > 0) ReadGroup(*group, first, pSnap);
        first += group->mRows;
    }
    pSnap->mNumber = number;
    if (mAbsent.empty()) return;
    mAbsent.resize(mRows, 0);
    DropAbsent(1, &pSnap->mRadius);
    DropAbsent(1, &pSnap->mValue);
    DropAbsent(1, &pSnap->mID);
    DropAbsent(1, &pSnap->mType);
    DropAbsent(3, &pSnap->mVel);
    DropAbsent(3, &pSnap->mPos);
}

template <class COLUMN>
void H5mdReader_cls::DropAbsent(size_t width, COLUMN* pColumn) const {
    if (pColumn->empty()) return;
    size_t out = 0;
    for (size_t i = 0; i < width * mRows; ++i)
        if (!mAbsent[i / width]) (*pColumn)[out++] = (*pColumn)[i];
    pColumn->resize(out);
}
