// The text form of project and configure files: bytes to lines and back, within bounds that keep any file,
// however wrong, from holding the program.
#pragma once

#include <istream>
#include <streambuf>
#include <string>
#include <vector>

#include <wx/string.h>

/// Larger files are no projects. A hundred curves of ten thousand keys each stay within it.
constexpr size_t kLargestProject = size_t(64) << 20;
/// Longer lines are passed over: they hold no setting.
constexpr size_t kLongestProjectLine = size_t(1) << 20;

/// UTF-8, with or without a mark at its start. Bytes that are none are carried through to EncodeProject.
std::wstring DecodeProject(const std::string& bytes);
std::string EncodeProject(const wxString& text);

/// A stream over a text that lives longer; copies nothing.
class TextStream_cls : private std::wstreambuf, public std::wistream {
    using Position = std::wstreambuf::pos_type;
    using Offset = std::wstreambuf::off_type;

public:
    explicit TextStream_cls(const std::wstring& text) : std::wistream(this) {
        wchar_t* begin = const_cast<wchar_t*>(text.data()); // a stream buffer that is only read from
        setg(begin, begin, begin + text.size());
    }

protected:
    // Who finds that the lines behind his belong to others goes back.
    Position seekoff(Offset off, std::ios_base::seekdir dir, std::ios_base::openmode) override {
        const Offset size = egptr() - eback();
        const Offset base = dir == std::ios_base::beg   ? 0
                            : dir == std::ios_base::cur ? gptr() - eback()
                                                        : size;
        const Offset to = base + off;
        if (to < 0 || to > size) return Position(Offset(-1));
        setg(eback(), eback() + to, egptr());
        return Position(to);
    }
    Position seekpos(Position pos, std::ios_base::openmode mode) override {
        return seekoff(Offset(pos), std::ios_base::beg, mode);
    }
};

/// Lines with values that are no numbers or have no end ("nan", "inf"), which readers leave as they were.
int CountNoNumbers(const std::wstring& text);

/// The paths of the data as they stand in a project's text; empty ones are left out.
std::vector<wxString> ListProjectData(const std::wstring& text);

/// Any project says which data it has, were it none.
bool IsProjectText(const std::wstring& text);

/// The next line without its end, of Windows too; false at the end of the text.
bool NextProjectLine(std::wistream& stream, wxString* pLine);
