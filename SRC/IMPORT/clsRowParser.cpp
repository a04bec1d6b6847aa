#include "IMPORT/clsRowParser.h"

#include <algorithm>
#include <climits>

#include "IMPORT/ImportText.h"

namespace {

// Names that programs give; compared in lower case.
const std::vector<std::string> kVel[3] = {{"vx", "velocity_x", "vel_x", "velocity:0", "velocities:0", "u"},
                                          {"vy", "velocity_y", "vel_y", "velocity:1", "velocities:1", "v"},
                                          {"vz", "velocity_z", "vel_z", "velocity:2", "velocities:2", "w"}};
const std::vector<std::string> kRadius = {"radius", "r", "rad", "smoothinglength", "hsml", "diameter"};
const std::vector<std::string> kID = {"id", "ids", "particleid", "particleids", "index"};
const std::vector<std::string> kType = {"type",   "species", "class",   "element",
                                        "v_type", "c_type",  "z_number"};
const std::vector<std::string> kTime = {"time", "t", "timestep", "step"};
const std::vector<std::string> kValue = {"value1",      "value", "density", "rho", "c_pe",
                                         "temperature", "temp",  "energy",  "pe",  "pressure",
                                         "charge",      "q",     "mass",    "m"};

const char* const kPositions[][3] = {
    {"x", "y", "z"},
    {"xs", "ys", "zs"},
    {"xu", "yu", "zu"},
    {"xsu", "ysu", "zsu"},
    {"pos:0", "pos:1", "pos:2"},
    {"points:0", "points:1", "points:2"},
    {"pos_x", "pos_y", "pos_z"},
    {"position_x", "position_y", "position_z"},
};

std::string Listed(const std::vector<std::string>& names) {
    std::string all;
    for (const std::string& name : names)
        all += (all.empty() ? "" : ", ") + name;
    return all;
}

// Worked out in double and rounded once.
void PlaceInBox(const ImportBox_st& box, const double* pShares, float* pPos) {
    for (size_t axis = 0; axis < 3; ++axis) {
        double place = box.mOrigin[axis];
        for (size_t k = 0; k < 3; ++k)
            place += pShares[k] * box.mEdge[k][axis];
        pPos[axis] = static_cast<float>(place);
    }
}

} // namespace

int RowParser_cls::FindRole(const ImportChoice_st& choice, const std::string& role,
                            const std::vector<std::string>& usual) const {
    if (const std::string* pName = choice.Find(role)) {
        if (pName->empty()) return -1;
        const auto found = std::find(mNames.begin(), mNames.end(), *pName);
        if (found == mNames.end())
            throw ImportError_cls("there is no column \"" + *pName + "\" for " + role + "; there are " +
                                  Listed(mNames));
        return static_cast<int>(found - mNames.begin());
    }
    for (const std::string& name : usual)
        for (size_t i = 0; i < mNames.size(); ++i)
            if (LowerCase(mNames[i]) == name) return static_cast<int>(i);
    return -1;
}

// What was worked out for each atom is rather of interest than its place in a list.
int RowParser_cls::FindValue(const ImportChoice_st& choice) const {
    const int found = FindRole(choice, "value", kValue);
    if (found >= 0 || choice.Find("value")) return found;
    for (size_t i = 0; i < mNames.size(); ++i)
        if (StartsWith(mNames[i], "c_") || StartsWith(mNames[i], "v_") || StartsWith(mNames[i], "f_"))
            return static_cast<int>(i);
    return -1;
}

// A share of the box, whoever chose the column.
bool RowParser_cls::IsScaled(size_t axis) const {
    if (mPos[axis] < 0) return false;
    const std::string name = LowerCase(mNames[static_cast<size_t>(mPos[axis])]);
    return name.size() >= 2 && name.size() <= 3 && name[0] >= 'x' && name[0] <= 'z' && name[1] == 's' &&
           (name.size() == 2 || name[2] == 'u');
}

void RowParser_cls::FindPosition(const ImportChoice_st& choice) {
    static const char* const kAxes[] = {"x", "y", "z"};
    for (const auto& names : kPositions) {
        for (int axis = 0; axis < 3; ++axis)
            mPos[axis] = FindRole(choice, kAxes[axis], {names[axis]});
        mPosition = IsScaled(0) && IsScaled(1) && IsScaled(2) ? Position::Scaled : Position::Plain;
        if (mPos[0] >= 0 && mPos[1] >= 0) break;
    }
    if (mPosition == Position::Plain && (IsScaled(0) || IsScaled(1) || IsScaled(2)) && mPos[0] >= 0 &&
        mPos[1] >= 0)
        throw ImportError_cls("some of the positions are scaled, others aren't; name them with --columns "
                              "x=NAME,y=NAME,z=NAME");
    // Two dimensions are a flat set.
    if (mPos[0] < 0 || mPos[1] < 0)
        throw ImportError_cls("no columns with positions (x, y, z); there are " + Listed(mNames) +
                              "; name them with --columns x=NAME,y=NAME,z=NAME");
}

void RowParser_cls::SetColumns(const std::vector<std::string>& names, const ImportChoice_st& choice) {
    mNames = names;
    mpTypeNames = choice.mpTypeNames;
    FindPosition(choice);
    mVel[0] = FindRole(choice, "vx", kVel[0]);
    mVel[1] = FindRole(choice, "vy", kVel[1]);
    mVel[2] = FindRole(choice, "vz", kVel[2]);
    mRadius = FindRole(choice, "radius", kRadius);
    mbDiameter = mRadius >= 0 && LowerCase(mNames[static_cast<size_t>(mRadius)]) == "diameter";
    mID = FindRole(choice, "id", kID);
    mType = FindRole(choice, "type", kType);
    mTime = FindRole(choice, "time", kTime);
    mValue = FindValue(choice);
    mColumns = (mVel[0] >= 0 && mVel[1] >= 0 ? IMPORT_VEL : 0u) | (mRadius >= 0 ? IMPORT_RADIUS : 0u) |
               (mID >= 0 ? IMPORT_ID : 0u) | (mType >= 0 ? IMPORT_TYPE : 0u) |
               (mValue >= 0 ? IMPORT_VALUE : 0u);
}

template <class T>
std::string RowParser_cls::Take(const std::vector<std::string_view>& fields, int column, T* pValue) const {
    const auto k = static_cast<size_t>(column);
    if (ReadNumber(fields[k], pValue)) return std::string();
    return "\"" + std::string(fields[k].substr(0, 40)) + "\" in column " + mNames[k] + " is no number";
}

std::string RowParser_cls::TakeType(std::string_view text, int* pType) {
    long long number = 0;
    if (ReadNumber(text, &number)) {
        *pType = static_cast<int>(std::clamp<long long>(number, INT_MIN, INT_MAX));
        return std::string();
    }
    if (text.empty()) return "the type is empty";
    auto found = mpTypeNames->find(text);
    if (found == mpTypeNames->end())
        found = mpTypeNames->emplace(std::string(text), static_cast<int>(mpTypeNames->size())).first;
    *pType = found->second;
    return std::string();
}

// What is missing is 0; the first fault counts.
std::string RowParser_cls::ParseRow(const std::vector<std::string_view>& fields, size_t i,
                                    ImportSnapshot_st* pSnap) {
    if (fields.size() < mNames.size())
        return "has " + std::to_string(fields.size()) + " of " + std::to_string(mNames.size()) + " columns";
    std::string wrong;
    const auto take = [&](int column, auto* pValue) {
        if (wrong.empty() && column >= 0) wrong = Take(fields, column, pValue);
    };
    if (mPosition == Position::Scaled) {
        double shares[3] = {0, 0, 0};
        for (size_t k = 0; k < 3; ++k)
            take(mPos[k], &shares[k]);
        PlaceInBox(pSnap->mBox, shares, &pSnap->mPos[3 * i]);
    }
    for (size_t axis = 0; axis < 3; ++axis) {
        if (mPosition == Position::Plain) {
            pSnap->mPos[3 * i + axis] = 0.0f;
            take(mPos[axis], &pSnap->mPos[3 * i + axis]);
        }
        if (!(mColumns & IMPORT_VEL)) continue;
        pSnap->mVel[3 * i + axis] = 0.0f;
        take(mVel[axis], &pSnap->mVel[3 * i + axis]);
    }
    if (mRadius >= 0) take(mRadius, &pSnap->mRadius[i]);
    if (mbDiameter) pSnap->mRadius[i] *= 0.5f;
    if (mID >= 0) take(mID, &pSnap->mID[i]);
    if (mValue >= 0) take(mValue, &pSnap->mValue[i]);
    if (mType >= 0 && wrong.empty()) wrong = TakeType(fields[static_cast<size_t>(mType)], &pSnap->mType[i]);
    return wrong;
}
