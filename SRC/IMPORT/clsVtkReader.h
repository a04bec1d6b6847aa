// Points of VTK files: legacy and XML, one snapshot a file; pieces in files of their own, and collections.
#pragma once

#include <memory>

#include "IMPORT/ParticleSource.h"
#include "IMPORT/VtkArray.h"
#include "IMPORT/clsColumnRoles.h"

class VtkReader_cls : public ParticleSource_cls {
public:
    VtkReader_cls(const std::string& path, const ImportChoice_st& choice);
    ~VtkReader_cls() override;
    bool NextHead(ImportSnapshot_st* pSnap) override;
    void ReadBody(ImportSnapshot_st* pSnap) override;
    std::vector<std::string> GetFiles() const override;
    /// Do a file's first letters show one of these formats?
    static bool IsVtk(const std::string& begin);

private:
    using File_st = VtkLayout_st::File_st;
    struct Part_st;
    /// A column of the snapshot, and the file's that goes there.
    struct Wanted_st {
        std::string mName; ///< empty: none
        NumberTarget_st mTarget;
        bool mbDone = false;
    };

    void AddPart(const std::string& path, int depth);
    void FindRoles();
    void ReadPiece(Part_st* pPart, const VtkPiece_st& piece, size_t first, ImportSnapshot_st* pSnap) const;
    std::vector<Wanted_st> ListWanted(ImportSnapshot_st* pSnap) const;

    std::string mPath;
    ImportChoice_st mChoice;
    std::vector<std::vector<File_st>> mSteps; ///< files of each snapshot
    size_t mStep = 0;                         ///< the next one
    std::vector<std::unique_ptr<Part_st>> mParts;
    bool mbTime = false;
    double mTime = 0;
    ColumnRoles_cls mRoles;
};
