#include "IMPORT/clsColumnRoles.h"

#include <algorithm>

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

} // namespace

int ColumnRoles_cls::FindRole(const ImportChoice_st& choice, const std::string& role,
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
int ColumnRoles_cls::FindValue(const ImportChoice_st& choice) const {
    const int found = FindRole(choice, "value", kValue);
    if (found >= 0 || choice.Find("value")) return found;
    for (size_t i = 0; i < mNames.size(); ++i)
        if (StartsWith(mNames[i], "c_") || StartsWith(mNames[i], "v_") || StartsWith(mNames[i], "f_"))
            return static_cast<int>(i);
    return -1;
}

// A share of the box, whoever chose the column.
bool ColumnRoles_cls::IsScaled(size_t axis) const {
    if (mPos[axis] < 0) return false;
    const std::string name = LowerCase(mNames[static_cast<size_t>(mPos[axis])]);
    return name.size() >= 2 && name.size() <= 3 && name[0] >= 'x' && name[0] <= 'z' && name[1] == 's' &&
           (name.size() == 2 || name[2] == 'u');
}

void ColumnRoles_cls::FindPosition(const ImportChoice_st& choice) {
    static const char* const kAxes[] = {"x", "y", "z"};
    for (const auto& names : kPositions) {
        for (int axis = 0; axis < 3; ++axis)
            mPos[axis] = FindRole(choice, kAxes[axis], {names[axis]});
        mbScaled = IsScaled(0) && IsScaled(1) && IsScaled(2);
        if (mPos[0] >= 0 && mPos[1] >= 0) break;
    }
    if (!mbScaled && (IsScaled(0) || IsScaled(1) || IsScaled(2)) && mPos[0] >= 0 && mPos[1] >= 0)
        throw ImportError_cls("some of the positions are scaled, others aren't; name them with --columns "
                              "x=NAME,y=NAME,z=NAME");
    // Two dimensions are a flat set.
    if (mPos[0] < 0 || mPos[1] < 0)
        throw ImportError_cls("no columns with positions (x, y, z); there are " + Listed(mNames) +
                              "; name them with --columns x=NAME,y=NAME,z=NAME");
}

void ColumnRoles_cls::SetColumns(const std::vector<std::string>& names, const ImportChoice_st& choice) {
    mNames = names;
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

void AddColumnNames(const std::string& name, size_t count, std::vector<std::string>* pNames) {
    static const char* const kAxes[] = {"x", "y", "z"};
    static const std::vector<std::string> kPos = {"pos", "positions", "position"};
    static const std::vector<std::string> kSpeed = {"velo", "vel", "velocities", "velocity", "v", "u"};
    const std::string lower = LowerCase(name);
    const auto isOne = [&](const std::vector<std::string>& names) {
        return (count == 2 || count == 3) && std::find(names.begin(), names.end(), lower) != names.end();
    };
    const bool bPos = isOne(kPos);
    const bool bVel = isOne(kSpeed);
    for (size_t k = 0; k < count; ++k) {
        if (bPos || bVel)
            pNames->push_back(std::string(bVel ? "v" : "") + kAxes[k]);
        else
            pNames->push_back(count == 1 ? name : name + ":" + std::to_string(k));
    }
}
