#include "IMPORT/clsCsvReader.h"

#include <algorithm>
#include <climits>

#include "IMPORT/ImportText.h"

char FindCsvSeparator(std::string_view line) {
    char best = 0;
    long most = 0;
    for (const char c : {',', ';', '\t'}) {
        const long count = std::count(line.begin(), line.end(), c);
        if (count <= most) continue;
        best = c;
        most = count;
    }
    return best;
}

CsvReader_cls::CsvReader_cls(const std::string& path, const ImportChoice_st& choice) : mReader(path) {
    std::string_view line;
    do
        if (!mReader.Next(&line)) mReader.Fail("the file has no header line");
    while (Trim(line).empty());
    if (StartsWith(line, "\xef\xbb\xbf")) line.remove_prefix(3);
    if (StartsWith(line, "#")) line.remove_prefix(1);
    mSeparator = FindCsvSeparator(line);
    if (mSeparator == 0) mReader.Fail("a header line with commas, semicolons or tabs should stand here");
    SplitFields(line, mSeparator, &mFields);
    try {
        mParser.SetColumns(std::vector<std::string>(mFields.begin(), mFields.end()), choice);
    } catch (const ImportError_cls& error) {
        mReader.Fail(error.what());
    }
    if (mParser.AreScaled())
        mReader.Fail("positions are scaled, but there is no box; name others with --columns x=NAME,...");
}

bool CsvReader_cls::NextRow() {
    std::string_view line;
    do
        if (!mReader.Next(&line)) return false;
    while (Trim(line).empty() || line.front() == '#');
    SplitFields(line, mSeparator, &mFields);
    if (mFields.size() != mParser.GetCount())
        mReader.Fail("has " + std::to_string(mFields.size()) + " columns, the header " +
                     std::to_string(mParser.GetCount()));
    return true;
}

// By half as much again, and only as rows come.
void CsvReader_cls::Reserve(size_t rows, ImportSnapshot_st* pSnap) const {
    const unsigned columns = pSnap->mColumns;
    pSnap->mPos.resize(3 * rows);
    pSnap->mVel.resize(columns & IMPORT_VEL ? 3 * rows : 0);
    pSnap->mRadius.resize(columns & IMPORT_RADIUS ? rows : 0);
    pSnap->mValue.resize(columns & IMPORT_VALUE ? rows : 0);
    pSnap->mID.resize(columns & IMPORT_ID ? rows : 0);
    pSnap->mType.resize(columns & IMPORT_TYPE ? rows : 0);
}

bool CsvReader_cls::NextHead(ImportSnapshot_st* pSnap) {
    constexpr size_t kFirstRows = 1024;
    pSnap->mBox = ImportBox_st();
    pSnap->mbTime = mParser.GetTimeColumn() >= 0;
    pSnap->mColumns = mParser.GetColumns();
    pSnap->mbTypesFromOne = false;
    size_t rows = 0;
    size_t room = 0;
    while (NextRow()) {
        double time = 0;
        if (pSnap->mbTime) {
            const std::string_view text = mFields[static_cast<size_t>(mParser.GetTimeColumn())];
            if (!ReadNumber(text, &time)) mReader.Fail("\"" + std::string(text) + "\" is no time");
            if (rows > 0 && time != pSnap->mTime) {
                mReader.Back();
                break;
            }
            pSnap->mTime = time;
        }
        if (rows == room) Reserve(room = std::max(kFirstRows, room + room / 2), pSnap);
        const std::string wrong = mParser.ParseRow(mFields, rows, pSnap);
        if (!wrong.empty()) mReader.Fail(wrong);
        if (++rows > INT_MAX) mReader.Fail("these are more particles than a snapshot can have");
    }
    // A table without rows is a snapshot without particles; behind others it is the end.
    if (rows == 0 && !mbFirst) return false;
    if (rows == 0) pSnap->mbTime = false;
    if (pSnap->mbTime && !mbFirst && !(pSnap->mTime > mLastTime))
        mReader.Fail("the rows must be sorted by time");
    mLastTime = pSnap->mTime;
    mbFirst = false;
    Reserve(rows, pSnap);
    pSnap->mNumber = static_cast<long long>(rows);
    return true;
}
