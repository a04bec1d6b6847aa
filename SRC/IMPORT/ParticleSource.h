// What every format gives: one snapshot after the other, as columns.
#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "COMMON/BigAllocator.h"

/// What is wrong with the input, in one line that names the file.
class ImportError_cls : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Columns besides the position, as bits.
enum ImportColumn : unsigned {
    IMPORT_VEL = 1,
    IMPORT_RADIUS = 2,
    IMPORT_ID = 4,
    IMPORT_TYPE = 8,
    IMPORT_VALUE = 16
};

/// In the source's lengths.
struct ImportBox_st {
    bool mbThere = false;
    bool mbSure =
        true; ///< the file says that it is periodic; else that depends on whether the particles lie in it
    double mOrigin[3] = {0, 0, 0};
    double mEdge[3][3] = {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}};
    bool mbPeriodic[3] = {true, true, true};
};

struct ImportSnapshot_st {
    template <class T>
    using Column = std::vector<T, BigAllocator_cls<T>>;

    /// Give each column that is there room for mNumber particles; their contents are undefined.
    void MakeRoom();

    long long mNumber = 0;
    bool mbTime = false;
    double mTime = 0.0;
    ImportBox_st mBox;
    unsigned mColumns = 0;       ///< ImportColumn
    bool mbTypesFromOne = false; ///< types count from 1 unless there is a 0
    Column<float> mPos;          ///< three each
    Column<float> mVel;          ///< three each
    Column<float> mRadius;
    Column<float> mValue;
    Column<long long> mID; ///< 64 bits, with or without sign
    Column<int> mType;
    /// Where the particles stand in all columns but mID, in the order of IDs; empty: as they are.
    Column<unsigned> mOrder;
};

/// Words that types are, of all files of an import, with their numbers: in the order in which they appear.
using TypeNames = std::map<std::string, int, std::less<>>;

/// What the user chose. Copies share the names of types.
struct ImportChoice_st {
    /// Role (x, y, z, vx, vy, vz, radius, id, type, value, time) to the file's name for it; empty: none.
    std::map<std::string, std::string> mColumns;
    std::shared_ptr<TypeNames> mpTypeNames = std::make_shared<TypeNames>();
    /// The name for a role; null: not chosen.
    const std::string* Find(const std::string& role) const;
};

/// One file, or several that make one snapshot. All calls throw ImportError_cls for what can't be read.
class ParticleSource_cls {
public:
    virtual ~ParticleSource_cls() = default;
    /// Go on to the next snapshot: all but its columns' contents. A body that wasn't read is passed over.
    /// False at the end.
    virtual bool NextHead(ImportSnapshot_st* pSnap) = 0;
    /// The columns of the snapshot whose head was read.
    virtual void ReadBody(ImportSnapshot_st* pSnap) = 0;
    /// All files of the snapshot whose head was read, where it is in several; empty: the one that was named.
    virtual std::vector<std::string> GetFiles() const { return {}; }
};
