// Which column means what, by the names that programs give: for all formats whose columns have names.
#pragma once

#include <string>
#include <vector>

#include "IMPORT/ParticleSource.h"

/// Columns by their index in the list of names; -1: there is none.
class ColumnRoles_cls {
public:
    /// Find the columns by their names and what was chosen; throws ImportError_cls (without a file) when
    /// there is no position, or nothing of a chosen name. Parts of a vector are "velocity:0" and so on.
    void SetColumns(const std::vector<std::string>& names, const ImportChoice_st& choice);

    const std::vector<std::string>& GetNames() const { return mNames; }
    /// ImportColumn bits of what is there.
    unsigned GetColumns() const { return mColumns; }
    /// Are positions shares of the box?
    bool AreScaled() const { return mbScaled; }
    int GetPos(size_t axis) const { return mPos[axis]; }
    int GetVel(size_t axis) const { return mVel[axis]; }
    int GetRadius() const { return mRadius; }
    /// The column of the radius holds twice that.
    bool IsDiameter() const { return mbDiameter; }
    int GetID() const { return mID; }
    int GetType() const { return mType; }
    int GetValue() const { return mValue; }
    int GetTime() const { return mTime; }

private:
    int FindRole(const ImportChoice_st& choice, const std::string& role,
                 const std::vector<std::string>& usual) const;
    int FindValue(const ImportChoice_st& choice) const;
    bool IsScaled(size_t axis) const;
    void FindPosition(const ImportChoice_st& choice);

    std::vector<std::string> mNames;
    unsigned mColumns = 0;
    bool mbScaled = false;
    int mPos[3] = {-1, -1, -1};
    int mVel[3] = {-1, -1, -1};
    int mRadius = -1;
    bool mbDiameter = false;
    int mID = -1;
    int mType = -1;
    int mValue = -1;
    int mTime = -1;
};

/// Names of the `count` parts of a vector, behind those that are there: positions and velocities get those
/// that tables have (x, vx), others "force:0" and so on; a single one keeps its name.
void AddColumnNames(const std::string& name, size_t count, std::vector<std::string>* pNames);
