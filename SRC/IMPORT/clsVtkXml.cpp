#include "IMPORT/clsVtkXml.h"

#include <expat.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <filesystem>

#include "IMPORT/ImportText.h"
#include "IMPORT/clsByteFile.h"

namespace {

constexpr size_t kPiece = size_t(1) << 16;
constexpr size_t kDeepest = 100;
constexpr size_t kMostFiles = 1000000;
constexpr long long kMostTuples = 1ll << 34;
constexpr long long kMostComponents = 10000;
const uint16_t kOrder = 1;

bool IsLittleEndian() { return *reinterpret_cast<const unsigned char*>(&kOrder) == 1; }

std::string Find(const char** pAttributes, const char* name) {
    for (; *pAttributes; pAttributes += 2)
        if (std::strcmp(*pAttributes, name) == 0) return pAttributes[1];
    return std::string();
}

bool FindNumber(const char** pAttributes, const char* name, long long least, long long most,
                long long* pNumber) {
    const std::string text = Find(pAttributes, name);
    if (text.empty()) return true; // the default stays
    return ReadNumber(Trim(text), pNumber) && *pNumber >= least && *pNumber <= most;
}

} // namespace

/// The library's calls, back to the object.
struct VtkXmlHandlers_st {
    static void Start(void* pThis, const char* name, const char** pAttributes) {
        auto* pXml = static_cast<VtkXml_cls*>(pThis);
        if (pXml->mWrong.empty()) pXml->Begin(name, pAttributes);
    }
    static void End(void* pThis, const char* name) {
        auto* pXml = static_cast<VtkXml_cls*>(pThis);
        if (pXml->mWrong.empty()) pXml->End(name);
    }
    /// Only there names could be given to texts that grow without end.
    static void Doctype(void* pThis, const char*, const char*, const char*, int) {
        static_cast<VtkXml_cls*>(pThis)->Wrong("has a document type, which no such file has");
    }
};

void VtkXml_cls::Wrong(const std::string& text) {
    if (mWrong.empty()) mWrong = text;
    XML_StopParser(mpParser, XML_FALSE);
}

void VtkXml_cls::TakeRoot(const char** pAttributes) {
    const std::string type = Find(pAttributes, "type");
    const std::vector<std::string> kTypes = {"PolyData", "UnstructuredGrid", "PPolyData", "PUnstructuredGrid",
                                             "Collection"};
    if (std::find(kTypes.begin(), kTypes.end(), type) == kTypes.end())
        return Wrong("\"" + type.substr(0, 40) + "\" is no data set of points");
    mLayout.mbCollection = type == "Collection";
    mbSwap = (Find(pAttributes, "byte_order") == "BigEndian") == IsLittleEndian();
    mbWideHead = Find(pAttributes, "header_type") == "UInt64";
    mCompressor = Find(pAttributes, "compressor");
}

// A collection's has a time; a parallel one's is a part.
void VtkXml_cls::TakeFile(const char** pAttributes) {
    VtkLayout_st::File_st file;
    const std::string name = Find(pAttributes, mLayout.mbCollection ? "file" : "Source");
    if (name.empty() || mLayout.mFiles.size() >= kMostFiles) return Wrong("names no file, or too many");
    file.mPath = (std::filesystem::path(mPath).parent_path() / name).string();
    file.mbTime = ReadNumber(Trim(Find(pAttributes, "timestep")), &file.mTime);
    mLayout.mFiles.push_back(file);
}

void VtkXml_cls::TakePiece(const char** pAttributes) {
    mPieces.emplace_back();
    if (!FindNumber(pAttributes, "NumberOfPoints", 0, INT_MAX, &mPieces.back().mPoints))
        Wrong("NumberOfPoints makes no sense, or is more than a snapshot can have");
}

void VtkXml_cls::TakeArray(const char** pAttributes) {
    if (mpInline) return Wrong("has an array within an array");
    const std::string& parent = mOpen.back();
    const bool bField = parent == "FieldData";
    std::vector<FoundArray_st>* pList = nullptr;
    if (bField) pList = &mFields;
    if (!mPieces.empty() && parent == "Points") pList = &mPieces.back().mPos;
    if (!mPieces.empty() && parent == "PointData") pList = &mPieces.back().mData;
    if (!pList) return;
    FoundArray_st found;
    VtkArray_st& array = found.mArray;
    array.mName = parent == "Points" ? parent : Find(pAttributes, "Name");
    long long components = 1;
    array.mTuples = bField ? 1 : mPieces.back().mPoints;
    if (!FindNumber(pAttributes, "NumberOfComponents", 0, kMostComponents, &components) ||
        (bField && !FindNumber(pAttributes, "NumberOfTuples", 0, kMostTuples, &array.mTuples)) ||
        !FindNumber(pAttributes, "offset", 0, LLONG_MAX, &found.mOffset))
        return Wrong(array.mName + ": its numbers of components or its offset make no sense");
    array.mComponents = static_cast<size_t>(std::max(components, 1ll));
    const std::string type = Find(pAttributes, "type");
    if (!FindNumberKind(type, &array.mKind))
        found.mWrong = "\"" + type.substr(0, 40) + "\" is no kind of number";
    found.mFormat = Find(pAttributes, "format");
    array.mBegin = XML_GetCurrentByteIndex(mpParser) + XML_GetCurrentByteCount(mpParser);
    pList->push_back(found);
    if (found.mFormat != "appended") mpInline = &pList->back();
}

void VtkXml_cls::TakeAppended(const char** pAttributes) {
    mbRaw = Find(pAttributes, "encoding") != "base64";
    mAppended = XML_GetCurrentByteIndex(mpParser) + XML_GetCurrentByteCount(mpParser);
    XML_StopParser(mpParser, XML_FALSE);
}

void VtkXml_cls::Begin(const std::string& name, const char** pAttributes) {
    if (mOpen.size() >= kDeepest) return Wrong("has elements in too many elements");
    if (mOpen.empty() && name != "VTKFile") return Wrong("is XML, but not of VTK");
    if (mOpen.empty())
        TakeRoot(pAttributes);
    else if (name == "Piece" && Find(pAttributes, "Source").empty())
        TakePiece(pAttributes);
    else if (name == "Piece" || (name == "DataSet" && mLayout.mbCollection))
        TakeFile(pAttributes);
    else if (name == "DataArray")
        TakeArray(pAttributes);
    else if (name == "AppendedData")
        return TakeAppended(pAttributes);
    mOpen.push_back(name);
}

void VtkXml_cls::End(const std::string& name) {
    if (name == "DataArray" && mpInline) {
        mpInline->mArray.mEnd = XML_GetCurrentByteIndex(mpParser);
        mpInline = nullptr;
    }
    mOpen.pop_back();
}

void VtkXml_cls::Parse() {
    std::vector<char> piece(kPiece);
    mFile.Seek(0);
    for (bool bMore = true; bMore && mAppended < 0;) {
        const size_t count = mFile.Read(piece.data(), piece.size());
        bMore = count == piece.size();
        const bool bGood =
            XML_Parse(mpParser, piece.data(), static_cast<int>(count), !bMore) == XML_STATUS_OK;
        if (!mWrong.empty()) mFile.Fail(mWrong);
        if (!bGood && mAppended < 0)
            mFile.Fail("line " + std::to_string(XML_GetCurrentLineNumber(mpParser)) +
                       " is no XML: " + XML_ErrorString(XML_GetErrorCode(mpParser)));
    }
}

VtkArray_st VtkXml_cls::Settle(const FoundArray_st& found) const {
    VtkArray_st array = found.mArray;
    if (!found.mWrong.empty()) mFile.Fail(array.mName + ": " + found.mWrong);
    const bool bAppended = found.mFormat == "appended";
    array.mbSwap = mbSwap;
    array.mbWideHead = mbWideHead;
    array.mCoding = bAppended                   ? (mbRaw ? VtkCoding::Raw : VtkCoding::Base64)
                    : found.mFormat == "binary" ? VtkCoding::Base64
                                                : VtkCoding::Letters;
    array.mbCompressed = array.mCoding != VtkCoding::Letters && !mCompressor.empty();
    if (array.mbCompressed && mCompressor != "vtkZLibDataCompressor")
        mFile.Fail("is compressed by " + mCompressor.substr(0, 60) +
                   ", of which nothing is known; write it with zlib");
    if (!bAppended) return array;
    if (mAppended < 0) mFile.Fail(array.mName + " should stand in AppendedData, which is missing");
    if (found.mOffset > mFile.GetMostBytes()) mFile.Fail(array.mName + ": its offset lies beyond the file");
    array.mBegin = mAppended + found.mOffset;
    array.mEnd = mFile.GetMostBytes();
    return array;
}

void VtkXml_cls::Settle() {
    if (mAppended >= 0) { // behind blanks and a mark
        mFile.Seek(mAppended);
        if (!mFile.TakeIfNext("_")) mFile.Fail("AppendedData should begin with _");
        mAppended = mFile.Tell();
    }
    for (const FoundPiece_st& found : mPieces) {
        VtkPiece_st piece;
        piece.mPoints = found.mPoints;
        if (piece.mPoints == 0) continue;
        if (found.mPos.size() != 1 || found.mPos[0].mArray.mComponents != 3)
            mFile.Fail("a piece should have one array of points with three components");
        piece.mPos = Settle(found.mPos[0]);
        for (const FoundArray_st& array : found.mData)
            if (array.mWrong.empty() && array.mArray.mComponents <= kMostVtkComponents)
                piece.mData.push_back(Settle(array));
        mLayout.mPieces.push_back(piece);
    }
    for (const FoundArray_st& found : mFields) {
        const std::string name = LowerCase(found.mArray.mName);
        if ((name != "timevalue" && name != "time") || found.mArray.CountNumbers() != 1) continue;
        NumberTarget_st target;
        target.mpDoubles = &mLayout.mTime;
        ReadVtkArray(&mFile, Settle(found), 0, {target});
        mLayout.mbTime = true;
    }
}

VtkLayout_st VtkXml_cls::Read() {
    mpParser = XML_ParserCreate(nullptr);
    if (!mpParser) mFile.Fail("memory is too short to read it");
    XML_SetUserData(mpParser, this);
    XML_SetElementHandler(mpParser, VtkXmlHandlers_st::Start, VtkXmlHandlers_st::End);
    XML_SetStartDoctypeDeclHandler(mpParser, VtkXmlHandlers_st::Doctype);
    try {
        Parse();
    } catch (...) {
        XML_ParserFree(mpParser);
        throw;
    }
    XML_ParserFree(mpParser);
    if (mLayout.mFiles.empty()) Settle();
    return mLayout;
}
