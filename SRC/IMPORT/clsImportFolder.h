// The folder of an import: its numbered snapshots in the layout of the project, and who made them.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "IMPORT/clsImportNote.h"

class ImportRanges_cls;
class IDPrint_cls;
struct ImportSnapshot_st;

/// A file that can't be written, with the reason.
class ImportWriteError_cls : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class ImportFolder_cls {
public:
    explicit ImportFolder_cls(const std::string& path) : mPath(path) {}

    /// Before anything is written: empty, or why the folder can't be used. `options` tell how the files come
    /// about; an import is taken up by one of the same options only.
    std::string Check(bool bResume, const std::string& options);
    /// Make the folder and leave the note. Throws ImportWriteError_cls.
    void Begin();
    /// Take away what Begin has made, where nothing came of it.
    void Undo() const;
    ImportNote_cls& GetNote() { return mNote; }

    /// ImportColumn bits of all its snapshots.
    void SetColumns(unsigned columns);
    unsigned GetColumns() const { return mColumns; }
    /// Codes of a record's items, "0 1 6".
    std::string GetBody() const;

    std::string GetName(int index) const;
    /// Is it there, made of this source (HashSource), whole, of this number and time? Then its ranges are
    /// added, `pIDs` gets its IDs, and `pNewIDs` tells whether some of them stand for longer ones.
    bool IsWhole(int index, const ImportSnapshot_st& snap, float time, uint64_t source,
                 ImportRanges_cls* pRanges, IDPrint_cls* pIDs, bool* pNewIDs) const;
    /// Columns that the snapshot hasn't are 0. Throws ImportWriteError_cls.
    void Write(int index, const ImportSnapshot_st& snap, float time, uint64_t source);
    /// Leave the note as it is now. Throws ImportWriteError_cls.
    void WriteNote();
    /// The name under which the project stands: one that was changed since it was written is the user's, and
    /// stays. Throws ImportWriteError_cls.
    std::string WriteProject(const std::string& text);
    /// Name of the project.
    std::string GetProjectName() const;

private:
    void WriteText(const std::string& name, const std::string& text) const;
    std::string PathOf(const std::string& name) const { return mPath + "/" + name; }
    size_t GetRecordWords() const;
    void NoteSnapshot(int index, uint64_t source);
    void Pack(const ImportSnapshot_st& snap, size_t begin, size_t end);

    std::string mPath;
    unsigned mColumns = 0;
    std::vector<unsigned> mBuffer;
    ImportNote_cls mNote;
    bool mbMade = false;   ///< the folder is ours
    long mNoteWritten = 0; ///< seconds of a clock
};
