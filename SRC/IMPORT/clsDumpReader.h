// LAMMPS-style dumps: any columns, one or many time steps a file, any box, text or gzipped.
#pragma once

#include "IMPORT/ParticleSource.h"
#include "IMPORT/clsLineReader.h"
#include "IMPORT/clsRowParser.h"

class DumpReader_cls : public ParticleSource_cls {
public:
    DumpReader_cls(const std::string& path, const ImportChoice_st& choice);
    bool NextHead(ImportSnapshot_st* pSnap) override;
    void ReadBody(ImportSnapshot_st* pSnap) override;

private:
    std::string_view NeedLine(const char* what);
    void ReadBounds(std::string_view words, ImportSnapshot_st* pSnap);

    LineReader_cls mReader;
    ImportChoice_st mChoice;
    RowParser_cls mParser;
    std::string mNames; ///< the columns that mParser knows
    long long mRowsLeft = 0;
};
