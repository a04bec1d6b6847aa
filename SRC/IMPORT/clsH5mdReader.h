// HDF5 trajectories of the H5MD layout: groups of /particles, with elements that are fixed or have frames.
#pragma once

#include <map>
#include <memory>

#include "IMPORT/ParticleSource.h"
#include "IMPORT/clsColumnRoles.h"

class H5mdElement_cls;
class Hdf5File_cls;

class H5mdReader_cls : public ParticleSource_cls {
public:
    H5mdReader_cls(const std::string& path, const ImportChoice_st& choice);
    ~H5mdReader_cls() override;
    bool NextHead(ImportSnapshot_st* pSnap) override;
    void ReadBody(ImportSnapshot_st* pSnap) override;
    /// Has the file this layout? Throws ImportError_cls.
    static bool IsH5md(const std::string& path);
    /// All that a reader will look at, but for the numbers. Throws ImportError_cls.
    static void Look(const std::string& path, const ImportChoice_st& choice);

private:
    struct Group_st;

    void AddGroups();
    void AddElements(Group_st* pGroup) const;
    void FindRoles();
    void ReadBox(double step, ImportSnapshot_st* pSnap) const;
    void CountRows(Group_st* pGroup) const;
    size_t NoteAbsent(const Group_st& group, size_t first);
    void ReadGroup(const Group_st& group, size_t first, ImportSnapshot_st* pSnap);
    void ReadFloats(const Group_st& group, const int* pColumns, size_t count, float* pOut) const;
    void ReadIntegers(const Group_st& group, int column, long long* pOut) const;
    void ReadTypes(const Group_st& group, int* pOut);
    template <class COLUMN>
    void DropAbsent(size_t width, COLUMN* pColumn) const;

    std::unique_ptr<Hdf5File_cls> mpFile;
    ImportChoice_st mChoice;
    std::vector<std::unique_ptr<Group_st>> mGroups;
    ColumnRoles_cls mRoles;
    size_t mFrame = 0;         ///< the next one
    double mStep = 0;          ///< of the frame whose head was read
    size_t mRows = 0;          ///< of the frame, those of absent particles too
    std::vector<char> mAbsent; ///< flags of rows; empty: all are there
};
