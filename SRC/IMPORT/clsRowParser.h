// Which column of a table means what, and its rows to particles: for all formats that are tables of text.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "IMPORT/ParticleSource.h"

class RowParser_cls {
public:
    /// How a position is given.
    enum class Position { Plain, Scaled };

    /// Find the columns by their names and what was chosen; throws ImportError_cls (without a file) when
    /// there is no position, or nothing of a chosen name.
    void SetColumns(const std::vector<std::string>& names, const ImportChoice_st& choice);
    unsigned GetColumns() const { return mColumns; }
    Position GetPosition() const { return mPosition; }
    size_t GetCount() const { return mNames.size(); }
    /// Column of the time; -1: none.
    int GetTimeColumn() const { return mTime; }

    /// One row as particle `i`; empty, or what is wrong with it. There may be more fields than columns.
    std::string ParseRow(const std::vector<std::string_view>& fields, size_t i, ImportSnapshot_st* pSnap);

private:
    int FindRole(const ImportChoice_st& choice, const std::string& role,
                 const std::vector<std::string>& usual) const;
    int FindValue(const ImportChoice_st& choice) const;
    bool IsScaled(size_t axis) const;
    void FindPosition(const ImportChoice_st& choice);
    template <class T>
    std::string Take(const std::vector<std::string_view>& fields, int column, T* pValue) const;
    std::string TakeType(std::string_view text, int* pType);

    std::vector<std::string> mNames;
    unsigned mColumns = 0;
    Position mPosition = Position::Plain;
    int mPos[3] = {-1, -1, -1};
    int mVel[3] = {-1, -1, -1};
    int mRadius = -1;
    bool mbDiameter = false;
    int mID = -1;
    int mType = -1;
    int mValue = -1;
    int mTime = -1;
    std::shared_ptr<TypeNames> mpTypeNames;
};
