// XYZ files, plain and extended: a line with the number, a comment with Lattice= and Properties=, then a line
// an atom. Several frames a file.
#pragma once

#include "IMPORT/ParticleSource.h"
#include "IMPORT/clsLineReader.h"
#include "IMPORT/clsRowParser.h"

class XyzReader_cls : public ParticleSource_cls {
public:
    XyzReader_cls(const std::string& path, const ImportChoice_st& choice);
    bool NextHead(ImportSnapshot_st* pSnap) override;
    void ReadBody(ImportSnapshot_st* pSnap) override;

private:
    void ReadComment(std::string_view comment, ImportSnapshot_st* pSnap);
    void SetProperties(const std::string& properties);

    LineReader_cls mReader;
    ImportChoice_st mChoice;
    RowParser_cls mParser;
    std::string mProperties;
    long long mRowsLeft = 0;
};

/// The values of a comment's key=value pairs, keys in lower case; quotes and brackets are taken away.
std::map<std::string, std::string> ReadXyzComment(std::string_view comment);
