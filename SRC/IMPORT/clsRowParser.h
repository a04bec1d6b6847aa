// Rows of a table to particles: for all formats that are tables of text.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "IMPORT/clsColumnRoles.h"

class RowParser_cls {
public:
    /// As ColumnRoles_cls::SetColumns.
    void SetColumns(const std::vector<std::string>& names, const ImportChoice_st& choice);
    unsigned GetColumns() const { return mRoles.GetColumns(); }
    /// Are positions shares of the box, so that it must be there?
    bool AreScaled() const { return mRoles.AreScaled(); }
    size_t GetCount() const { return mRoles.GetNames().size(); }
    /// Column of the time; -1: none.
    int GetTimeColumn() const { return mRoles.GetTime(); }

    /// One row as particle `i`; empty, or what is wrong with it. There may be more fields than columns.
    std::string ParseRow(const std::vector<std::string_view>& fields, size_t i, ImportSnapshot_st* pSnap);

private:
    template <class T>
    std::string Take(const std::vector<std::string_view>& fields, int column, T* pValue) const;
    std::string TakeType(std::string_view text, int* pType);

    ColumnRoles_cls mRoles;
    std::shared_ptr<TypeNames> mpTypeNames;
};
