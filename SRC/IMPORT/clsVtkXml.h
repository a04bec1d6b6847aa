// VTK's XML files: poly data and unstructured grids, whole, in pieces of other files, or a collection of
// them.
#pragma once

#include <string>
#include <vector>

#include "IMPORT/VtkArray.h"

class ByteFile_cls;
struct XML_ParserStruct;

class VtkXml_cls {
public:
    /// `path`: names of other files are seen from its folder.
    VtkXml_cls(ByteFile_cls* pFile, const std::string& path) : mFile(*pFile), mPath(path) {}
    /// Where all arrays of the points are, or which files hold them. Throws ImportError_cls.
    VtkLayout_st Read();

private:
    friend struct VtkXmlHandlers_st;

    struct FoundArray_st {
        VtkArray_st mArray;
        std::string mFormat;   ///< ascii, binary or appended
        long long mOffset = 0; ///< of appended ones
        std::string mWrong;    ///< why it can't be read
    };
    struct FoundPiece_st {
        long long mPoints = 0;
        std::vector<FoundArray_st> mPos;
        std::vector<FoundArray_st> mData;
    };

    void Parse();
    void Begin(const std::string& name, const char** pAttributes);
    void End(const std::string& name);
    void TakeRoot(const char** pAttributes);
    void TakeArray(const char** pAttributes);
    void TakePiece(const char** pAttributes);
    void TakeFile(const char** pAttributes);
    /// The appended bytes begin behind this tag, which ends the text.
    void TakeAppended(const char** pAttributes);
    VtkArray_st Settle(const FoundArray_st& found) const;
    void Settle();
    void Wrong(const std::string& text);

    ByteFile_cls& mFile;
    std::string mPath;
    XML_ParserStruct* mpParser = nullptr;
    std::vector<std::string> mOpen; ///< names of the elements around the present place
    bool mbSwap = false;
    bool mbWideHead = false;
    std::string mCompressor;
    bool mbRaw = true;        ///< what is appended is no base64
    long long mAppended = -1; ///< where it begins
    std::vector<FoundPiece_st> mPieces;
    std::vector<FoundArray_st> mFields;
    FoundArray_st* mpInline = nullptr; ///< whose numbers stand here
    std::string mWrong;
    VtkLayout_st mLayout;
};
