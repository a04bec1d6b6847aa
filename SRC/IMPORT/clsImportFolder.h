// The folder of an import: its numbered snapshots in the layout of the project, and who made them.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

struct ImportSnapshot_st;
class ImportRanges_cls;

/// A file that can't be written, with the reason.
class ImportWriteError_cls : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class ImportFolder_cls {
public:
    explicit ImportFolder_cls(const std::string& path) : mPath(path) {}

    /// Before anything is written: empty, or why the folder can't be used. `note` tells how the files come
    /// about; an import is taken up by one of the same note only.
    std::string Check(bool bResume, const std::string& note) const;
    /// Make the folder and leave the note. Throws ImportWriteError_cls.
    void Begin(const std::string& note) const;

    /// ImportColumn bits of all its snapshots.
    void SetColumns(unsigned columns);
    unsigned GetColumns() const { return mColumns; }
    /// Codes of a record's items, "0 1 6".
    std::string GetBody() const;

    std::string GetName(int index) const;
    /// Is it there, whole, of this number and time? Then its ranges are added, and `pNewIDs` tells whether it
    /// has IDs that stand for longer ones.
    bool IsWhole(int index, const ImportSnapshot_st& snap, float time, ImportRanges_cls* pRanges,
                 bool* pNewIDs) const;
    /// Columns that the snapshot hasn't are 0. Throws ImportWriteError_cls.
    void Write(int index, const ImportSnapshot_st& snap, float time);
    /// Put a file of text there. Throws ImportWriteError_cls.
    void WriteText(const std::string& name, const std::string& text) const;
    /// Name of the project.
    std::string GetProjectName() const;

private:
    std::string PathOf(const std::string& name) const { return mPath + "/" + name; }
    size_t GetRecordWords() const;
    void Pack(const ImportSnapshot_st& snap, size_t begin, size_t end);

    std::string mPath;
    unsigned mColumns = 0;
    std::vector<unsigned> mBuffer;
};
