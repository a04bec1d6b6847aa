// How texts are taken apart, wherever they come from: lines end at a line feed, a carriage return in front of
// it belongs to the end; words stand between blanks. Readers of particles, projects, meshes and the guesses
// at formats all go by it. (What stands behind a key's "=" is the business of CONFITEM.)
#pragma once

#include <istream>
#include <string>
#include <vector>

/// Blanks and what ends a line, as C's isspace has them in the C locale.
constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
/// Blanks within a line; the carriage return is one of them.
constexpr bool IsLineBlank(char c) { return IsBlank(c) && c != '\n'; }

/// What stands between the blanks of a line.
std::vector<std::string> SplitWords(const std::string& line);
/// The first of them, empty when there is none.
std::string FirstWord(const std::string& line);
/// Lines without their line feeds, at most `most`; carriage returns stay, as blanks at the end. Without
/// `bWhole` the text is only the start of one, and its last line is left out unless it has its end.
std::vector<std::string> SplitLines(const std::string& text, size_t most, bool bWhole);

/// The next line of a stream without its end; false at the end of the stream. Lines with more than `longest`
/// characters are passed over: they are no text.
bool ReadTextLine(std::wistream& stream, std::wstring* pLine, size_t longest = std::wstring::npos);
