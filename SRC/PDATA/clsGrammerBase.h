// The record grammar: what stands in a snapshot file's head and in each particle's record, as two short
// lists of codes. Drives the readers and the exporter.
//
// Head codes (bytes in a binary file / lines in a text file):
//   0 Time float (4/1), 1 Number int (4/1), 2 Dummy (4/1), 3 Dummy*3 (12/3), 4 Dummy*10 (40/10)
// Body codes (bytes in a binary file / columns in a text file):
//   0 x y z (12/3), 1 Vx Vy Vz (12/3), 2 Dummy (4/1), 3 Dummy*3 (12/3), 4 Dummy*10 (40/10),
//   5 Radius float (4/1), 6 ID int (4/1), 7 Type int (4/1), 8 Value1 float (4/1)
// Binary numbers are little-endian and packed. Codes that aren't listed count nothing.
#pragma once

#include <vector>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

enum GrammerHeadCode { HEAD_TIME = 0, HEAD_NUMBER = 1, HEAD_DUMMY = 2, HEAD_DUMMY3 = 3, HEAD_DUMMY10 = 4 };

enum GrammerBodyCode {
    BODY_XYZ = 0,
    BODY_VXYZ = 1,
    BODY_DUMMY = 2,
    BODY_DUMMY3 = 3,
    BODY_DUMMY10 = 4,
    BODY_RADIUS = 5,
    BODY_ID = 6,
    BODY_TYPE = 7,
    BODY_VALUE1 = 8
};

class GrammerBase_cls : public ConfItemList_cls {
public:
    static constexpr int kMaxItem = 16; ///< items in a list at most

    /// The keys begin with `prefix`, such as "DataLoad".
    explicit GrammerBase_cls(const wxString& prefix);
    GrammerBase_cls(const GrammerBase_cls&) = delete; // the list holds pointers to the items
    GrammerBase_cls& operator=(const GrammerBase_cls&) = delete;

    bool IsItemExistHead(int code) const;
    bool IsItemExistBody(int code) const;
    /// The first 16 codes are taken.
    void SetHeaderGrammer(const std::vector<int>& codes);
    void SetBodyGrammer(const std::vector<int>& codes);
    std::vector<int> GetHeaderGrammer() const;
    std::vector<int> GetBodyGrammer() const;
    /// Size of a binary file's head.
    int GetHeaderByte() const;
    /// Lines of a text file's head that stand before the first particle.
    int GetHeaderLine() const;
    /// Size of a particle in a binary file.
    int GetRecordByte() const;
    /// Time and count.
    static std::vector<int> DefaultHead() { return {HEAD_TIME, HEAD_NUMBER}; }
    /// All that a particle has: 0 1 5 6 7 8.
    static std::vector<int> DefaultBody() {
        return {BODY_XYZ, BODY_VXYZ, BODY_RADIUS, BODY_ID, BODY_TYPE, BODY_VALUE1};
    }
    bool IsDefaultBody() const { return GetBodyGrammer() == DefaultBody(); }

    static int GetHeadItemByte(int code); ///< 0 for unknown codes
    static int GetHeadItemLine(int code);
    static int GetBodyItemByte(int code);

    ConfItemINT_cls mCItemDataType; ///< 0 binary, 1 text
    ConfItemINTARRAY_cls mCItemHead;
    ConfItemINTARRAY_cls mCItemBody;
};
