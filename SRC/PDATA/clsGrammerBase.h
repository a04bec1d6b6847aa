// The record grammar: what stands in a snapshot file's head and in each particle's record, as two short
// lists of codes. Drives the readers and the exporter.
#pragma once

#include <vector>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "PDATA/GrammarItems.h"

/// How numbers stand in the files: values of mCItemDataType, as projects hold them.
enum DataType { DATA_BINARY = 0, DATA_TEXT = 1 };

class GrammerBase_cls : public ConfItemList_cls {
public:
    static constexpr int kMaxItem = 16; ///< items in a list at most

    /// The keys begin with `prefix`, such as "DataLoad".
    explicit GrammerBase_cls(const wxString& prefix);
    GrammerBase_cls(const GrammerBase_cls&) = delete; // the list holds pointers to the items
    GrammerBase_cls& operator=(const GrammerBase_cls&) = delete;

    bool IsText() const { return mCItemDataType.mValue == DATA_TEXT; }
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

    ConfItemINT_cls mCItemDataType; ///< a DataType
    ConfItemINTARRAY_cls mCItemHead;
    ConfItemINTARRAY_cls mCItemBody;
};
