// Tables with a header line, between commas, semicolons or tabs. Rows of one time are a snapshot.
#pragma once

#include "IMPORT/ParticleSource.h"
#include "IMPORT/clsLineReader.h"
#include "IMPORT/clsRowParser.h"

class CsvReader_cls : public ParticleSource_cls {
public:
    CsvReader_cls(const std::string& path, const ImportChoice_st& choice);
    bool NextHead(ImportSnapshot_st* pSnap) override;
    /// How many rows there are is known at their end alone, so the head's reading has done it.
    void ReadBody(ImportSnapshot_st*) override {}

private:
    /// Fields of the next row that has some; false at the end of the file.
    bool NextRow();
    void Reserve(size_t rows, ImportSnapshot_st* pSnap) const;

    LineReader_cls mReader;
    RowParser_cls mParser;
    char mSeparator = ',';
    std::vector<std::string_view> mFields;
    bool mbFirst = true;
    double mLastTime = 0; ///< of the snapshot before
};

/// The separator of a header line; 0: there is none.
char FindCsvSeparator(std::string_view line);
