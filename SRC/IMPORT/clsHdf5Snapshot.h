// HDF5 snapshots of N-body and SPH codes: groups PartType0 to PartType5, in one file or several.
#pragma once

#include "IMPORT/ParticleSource.h"

class Hdf5File_cls;

class Hdf5Snapshot_cls : public ParticleSource_cls {
public:
    /// `path`: the file, or any part of a snapshot in several.
    Hdf5Snapshot_cls(const std::string& path, const ImportChoice_st& choice);
    bool NextHead(ImportSnapshot_st* pSnap) override;
    void ReadBody(ImportSnapshot_st* pSnap) override;
    /// All that a reader will look at, but for the numbers. Throws ImportError_cls.
    static void Look(const std::string& path, const ImportChoice_st& choice);
    std::vector<std::string> GetFiles() const override { return mFiles; }

private:
    static constexpr int kTypes = 6;

    void CheckData() const;
    void FindColumns(const Hdf5File_cls& file, const std::string& group);
    void ReadGroup(const Hdf5File_cls& file, int type, size_t rows, size_t first,
                   ImportSnapshot_st* pSnap) const;

    ImportChoice_st mChoice;
    std::vector<std::string> mFiles;
    unsigned mColumns = IMPORT_TYPE;
    std::string mRadius; ///< name of a dataset
    std::string mValue;
    bool mbDone = false;
};
